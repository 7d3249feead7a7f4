#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <unistd.h>

/**
 * A directory of a test's own in memory, for tests of many writes: each is flushed to its medium, which is
 * slow on a disk. On a machine without such a place it lies among the temporary files. Gone with the object.
 */
class MemoryDirectory
{
public:
    explicit MemoryDirectory(std::string_view name)
        : m_path(place() / (std::string(name) + "-" + std::to_string(getpid())))
    {
        std::filesystem::create_directory(m_path);
    }
    ~MemoryDirectory()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    MemoryDirectory(const MemoryDirectory&) = delete;
    MemoryDirectory& operator=(const MemoryDirectory&) = delete;

    const std::filesystem::path& path() const { return m_path; }

private:
    static std::filesystem::path place()
    {
        const char* memory = "/dev/shm";
        return access(memory, W_OK | X_OK) == 0 ? memory : std::filesystem::temp_directory_path();
    }

    std::filesystem::path m_path;
};
