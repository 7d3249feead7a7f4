#pragma once

#include <string>

#include "toolkit/core/Bytes.h"

namespace qgtk {

/** Owner of a file descriptor. */
class Descriptor
{
public:
    explicit Descriptor(int number) : m_number(number) {}
    ~Descriptor();
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int number() const { return m_number; }
    explicit operator bool() const { return m_number >= 0; }

private:
    int m_number;
};

/**
 * A regular file of any length, read from its beginning; links to one are followed. Never blocks on a FIFO or
 * a device.
 */
class FileSource
{
public:
    /** Throws FileMissing, FileUnreadable, FileNotRegular, each with the path. */
    explicit FileSource(std::string path);

    /** Bytes that the file had when it was opened. */
    std::size_t length() const { return m_length; }

    /** Fills the buffer, or as much of it as is left; 0 behind the end. Throws FileUnreadable. */
    std::size_t read(std::span<std::uint8_t> target);

    /** Reads bytes at a place, as many as are there, and leaves the place of read alone. Throws
     * FileUnreadable. */
    std::size_t readAt(std::size_t place, std::span<std::uint8_t> target) const;

private:
    template <typename Read>
    std::size_t fill(std::span<std::uint8_t> target, Read&& readSome) const;

    std::string m_path;
    Descriptor m_file;
    std::size_t m_length = 0;
};

/**
 * A file that is written whole or not at all, at whatever point the process or the machine stops: a temporary
 * file beside it takes its place when all is written and flushed, and is gone when commit was not reached.
 * Missing directories are made for the owner alone, and so is the file. Temporary files that killed writers
 * left in the directory are removed.
 */
class FileTarget
{
public:
    /** Throws FileNotRegular (something else than a file or a link has the name), FileNotWritten, each with
     * the path. */
    explicit FileTarget(std::string path);
    ~FileTarget();
    FileTarget(const FileTarget&) = delete;
    FileTarget& operator=(const FileTarget&) = delete;

    /** Throws FileNotWritten. */
    void write(ByteView bytes);

    /** Flushes the bytes to the medium and gives the file its name. Throws FileNotWritten. */
    void commit();

private:
    [[noreturn]] void fail() const;

    std::string m_path;
    std::string m_directory; // with its slash; empty for a bare name
    std::string m_temporary;
    Descriptor m_file;
    bool m_placed = false;
};

} // namespace qgtk
