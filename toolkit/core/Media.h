#pragma once

#include <string>

#include "toolkit/core/Bytes.h"

namespace qgtk {

/** Bytes that any file may have. */
inline constexpr std::size_t maxFileLength = 16U << 20;

/** Bytes that a certificate, key or configuration file may have. */
inline constexpr std::size_t maxObjectLength = 1U << 20;

/**
 * Reads a whole regular file; links to one are followed. Never blocks on a FIFO or a device. Throws
 * FileMissing, FileUnreadable, FileNotRegular, FileTooLarge, FileEmpty, each with the path.
 */
SecretBytes readFile(const std::string& path, std::size_t limit = maxFileLength);

/**
 * Writes a whole file or leaves what was there: a temporary file beside it, flushed, then renamed, at
 * whatever point the process or the machine stops. Missing directories are made for the owner alone, and so
 * is the file. Temporary files that a process left behind when it was killed are removed. Throws
 * FileNotRegular (something else than a file has the name), FileNotWritten, each with the path.
 */
void writeFile(const std::string& path, ByteView bytes);

/** Deletes a file or a link to one. Throws FileMissing, FileNotRegular, FileNotDeleted, each with the path.
 */
void deleteFile(const std::string& path);

} // namespace qgtk
