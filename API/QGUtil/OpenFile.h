#pragma once

#include <cstddef>
#include <sys/stat.h>

/**
 * An open file, closed at the end of the scope.
 *
 * Opening never waits: a FIFO, a socket or a terminal that stands where a file is looked for is opened
 * without blocking, seen by its type, and left alone. The descriptor is not inherited by child processes.
 */
class OpenFile
{
public:
    /** Opens with the flags of open(2); a new file gets mode 0666 less the umask, as with fopen. */
    OpenFile(const char* path, int flags);
    ~OpenFile();
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    /** True for an open regular file, of which bytes() then is the size. */
    bool isRegular() const { return m_descriptor >= 0 && S_ISREG(m_status.st_mode); }

    /** True for an open character device, as "/dev/null". */
    bool isDevice() const { return m_descriptor >= 0 && S_ISCHR(m_status.st_mode); }

    /** Size in bytes at the time of opening. */
    off_t bytes() const { return m_status.st_size; }

    /** Reads up to `size` bytes; returns how many there were, or -1. */
    long read(char* data, std::size_t size);

    /** Writes all bytes; false when that fails. */
    bool write(const char* data, std::size_t size);

private:
    int m_descriptor = -1;
    struct stat m_status
    {};
};
