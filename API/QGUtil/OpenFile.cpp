#include "OpenFile.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

OpenFile::OpenFile(const char* path, int flags)
    : m_descriptor(open(path, flags | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0666))
{
    if (m_descriptor >= 0 && fstat(m_descriptor, &m_status) != 0)
        m_status = {};
}

OpenFile::~OpenFile()
{
    if (m_descriptor >= 0)
        close(m_descriptor);
}

long OpenFile::read(char* data, std::size_t size)
{
    std::size_t done = 0;
    while (done < size) {
        const ssize_t count = ::read(m_descriptor, data + done, size - done);
        if (count == 0)
            break;
        if (count < 0 && errno != EINTR)
            return -1;
        if (count > 0)
            done += static_cast<std::size_t>(count);
    }
    return static_cast<long>(done);
}

bool OpenFile::write(const char* data, std::size_t size)
{
    while (size > 0) {
        const ssize_t count = ::write(m_descriptor, data, size);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        data += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}
