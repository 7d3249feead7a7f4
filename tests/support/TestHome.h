#pragma once

#include <filesystem>
#include <string>

/**
 * A home directory of the test process's own.
 *
 * The library asks getpwuid for the home directory. libnss_wrapper, preloaded by ctest, answers from a
 * password file that this class writes, once a process: it caches the file, so the path stays the same for
 * the life of the process and reset() empties the directory between tests. Everything is removed at exit.
 */
class TestHome
{
public:
    /** Makes the directory and the password file at the first call. Throws when libnss_wrapper is missing. */
    static const std::filesystem::path& path();

    /** Removes everything. For a process that ends by _exit; any other does it by itself. */
    static void remove();

    /** Empties the home directory. */
    static void reset();

    /** A fresh, empty directory beside the home directory, removed at exit. */
    static std::filesystem::path scratch(const std::string& name);
};

/** Writes bytes to a file, making its directories. Throws on failure. */
void writeFile(const std::filesystem::path& path, const std::string& bytes);

/** Reads a whole file. Throws on failure. */
std::string readFile(const std::filesystem::path& path);
