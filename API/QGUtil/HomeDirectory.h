#pragma once

/**
 * The home directory of the process's user as getpwuid knows it; the variable HOME plays no role. Costs a
 * look-up in the user database, so it does not belong in a loop.
 *
 * @param path receives the path, at most 1023 bytes; untouched on failure
 * @return false when the user has no entry or the entry names no directory
 */
bool homeDirectory(char (&path)[1024]);
