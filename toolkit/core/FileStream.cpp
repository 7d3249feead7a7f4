#include "toolkit/core/FileStream.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "toolkit/core/Errors.h"
#include "toolkit/core/FilePlace.h"

namespace qgtk {

namespace {

Code codeOfOpen(int error)
{
    if (error == ENOENT || error == ENOTDIR)
        return Code::FileMissing;
    return error == ENXIO ? Code::FileNotRegular : Code::FileUnreadable;
}

int openForReading(const std::string& path)
{
    return ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
}

bool writeFully(int descriptor, ByteView bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
        if (count == 0 || (count < 0 && errno != EINTR))
            return false;
        bytes = bytes.subspan(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    return true;
}

/** Throws FileNotRegular when something else than a file or a link has the name. */
const std::string& checkedTarget(const std::string& path)
{
    struct stat status = {};
    if (::lstat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode) && !S_ISLNK(status.st_mode))
        throw Failure(Code::FileNotRegular, path);
    return path;
}

/** Makes a directory ready for a file and opens a temporary one in it. Negative on failure. */
int openBeside(const std::string& directory, std::string& name)
{
    makeDirectories(directory);
    removeLeftovers(directory);
    return openTemporary(directory, name);
}

} // namespace

Descriptor::~Descriptor()
{
    if (m_number >= 0)
        ::close(m_number);
}

FileSource::FileSource(std::string path) : m_path(std::move(path)), m_file(openForReading(m_path))
{
    if (!m_file)
        throw Failure(codeOfOpen(errno), m_path);
    struct stat status = {};
    if (::fstat(m_file.number(), &status) != 0)
        throw Failure(Code::FileUnreadable, m_path);
    if (!S_ISREG(status.st_mode))
        throw Failure(Code::FileNotRegular, m_path);
    m_length = static_cast<std::size_t>(status.st_size);
}

std::size_t FileSource::read(std::span<std::uint8_t> target)
{
    return fill(target, [&](std::span<std::uint8_t> rest) {
        return ::read(m_file.number(), rest.data(), rest.size());
    });
}

std::size_t FileSource::readAt(std::size_t place, std::span<std::uint8_t> target) const
{
    return fill(target, [&](std::span<std::uint8_t> rest) {
        const std::size_t done = target.size() - rest.size();
        return ::pread(m_file.number(), rest.data(), rest.size(), static_cast<off_t>(place + done));
    });
}

template <typename Read>
std::size_t FileSource::fill(std::span<std::uint8_t> target, Read&& readSome) const
{
    std::span<std::uint8_t> rest = target;
    while (!rest.empty()) {
        const ssize_t count = readSome(rest);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            throw Failure(Code::FileUnreadable, m_path);
        if (count == 0)
            break;
        rest = rest.subspan(static_cast<std::size_t>(count));
    }
    return target.size() - rest.size();
}

FileTarget::FileTarget(std::string path)
    : m_path(std::move(path)), m_directory(directoryOf(checkedTarget(m_path))),
      m_file(openBeside(m_directory, m_temporary))
{
    if (!m_file)
        fail();
}

FileTarget::~FileTarget()
{
    if (!m_placed)
        ::unlink(m_temporary.c_str());
}

void FileTarget::write(ByteView bytes)
{
    if (!writeFully(m_file.number(), bytes))
        fail();
}

void FileTarget::commit()
{
    m_placed = ::fsync(m_file.number()) == 0 && ::rename(m_temporary.c_str(), m_path.c_str()) == 0;
    if (!m_placed)
        fail();
    flushDirectory(m_directory);
}

void FileTarget::fail() const
{
    throw Failure(Code::FileNotWritten, m_path);
}

} // namespace qgtk
