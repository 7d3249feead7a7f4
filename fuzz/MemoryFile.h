#pragma once

#include <string>
#include <sys/mman.h>
#include <unistd.h>

#include "toolkit/core/Bytes.h"

/** A file in memory that the product opens by its path. */
class MemoryFile
{
public:
    MemoryFile() : m_file(memfd_create("fuzz", MFD_CLOEXEC)) {}
    ~MemoryFile() { close(m_file); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    /** Puts bytes in the place of what the file holds; false when the system does not take them all. */
    bool fill(qgtk::ByteView bytes) const
    {
        return ftruncate(m_file, 0) == 0 &&
               pwrite(m_file, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size());
    }

    std::string path() const { return "/proc/self/fd/" + std::to_string(m_file); }

private:
    int m_file;
};
