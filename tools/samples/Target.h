#pragma once

#include <filesystem>

/**
 * The directory that the samples go to. Everything is written below a hidden directory first and moved into
 * its place at the end, so that an error leaves the target as it was found.
 */
class Target
{
public:
    /**
     * Makes the directory when it is not there. Throws std::runtime_error when it already holds certificates
     * or keys, at any depth, and std::filesystem::filesystem_error when it can't be read or written.
     */
    explicit Target(const std::filesystem::path& directory);

    /** Removes what was not published, and the directory itself when it was made here and stays empty. */
    ~Target();

    Target(const Target&) = delete;
    Target& operator=(const Target&) = delete;

    /** Where to write. */
    const std::filesystem::path& staging() const { return m_staging; }

    /** Moves what was written into the directory: all of it, or nothing when a name is taken (then it
     * throws). */
    void publish();

private:
    std::filesystem::path m_directory;
    std::filesystem::path m_staging;
    bool m_made;
};
