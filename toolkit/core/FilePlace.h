#pragma once

#include <string>

namespace qgtk {

/* Where files are written: directories, and the temporary files that take a target's place. */

/** The directory part of a path, with its slash; empty for a bare name, which is in the current directory. */
std::string directoryOf(const std::string& path);

/** Makes the missing directories of a path for the owner alone. What can't be made shows when the file is. */
void makeDirectories(const std::string& directory);

/** Makes what was done to a directory's names lasting. Media that can't flush one have done what they can. */
void flushDirectory(const std::string& directory);

/**
 * Makes a temporary file in a directory, for the owner alone, and gives its name. It is locked as long as the
 * descriptor is open, which says that its writer lives. Negative on failure, with no file.
 */
int openTemporary(const std::string& directory, std::string& name);

/** Removes the temporary files of writers that are gone: killed before they could do so themselves. */
void removeLeftovers(const std::string& directory);

} // namespace qgtk
