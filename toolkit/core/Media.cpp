#include "toolkit/core/Media.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "toolkit/core/Errors.h"

namespace qgtk {

namespace {

constexpr mode_t directoryMode = S_IRWXU;
constexpr mode_t fileMode = S_IRUSR | S_IWUSR;

/** Owner of a descriptor. */
class Descriptor
{
public:
    explicit Descriptor(int number) : m_number(number) {}
    ~Descriptor()
    {
        if (m_number >= 0)
            ::close(m_number);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int number() const { return m_number; }
    explicit operator bool() const { return m_number >= 0; }

private:
    int m_number;
};

[[noreturn]] void fail(Code code, const std::string& path)
{
    throw Failure(code, path);
}

Code codeOfOpen(int error)
{
    if (error == ENOENT || error == ENOTDIR)
        return Code::FileMissing;
    return error == ENXIO ? Code::FileNotRegular : Code::FileUnreadable;
}

/** Reads until the end or until the buffer is full. Negative on failure. */
ssize_t readFully(int descriptor, std::span<std::uint8_t> target)
{
    std::size_t total = 0;
    while (total < target.size()) {
        const ssize_t count = ::read(descriptor, target.data() + total, target.size() - total);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return count < 0 ? count : static_cast<ssize_t>(total);
        total += static_cast<std::size_t>(count);
    }
    return static_cast<ssize_t>(total);
}

bool writeFully(int descriptor, ByteView bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR)
            return false;
        bytes = bytes.subspan(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    return true;
}

/** The directory part of a path, with its slash; empty for a bare name. */
std::string directoryOf(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

/** Makes the missing directories of a path. What can't be made shows when the file is. */
void makeDirectories(const std::string& directory)
{
    for (std::size_t slash = directory.find('/', 1); slash != std::string::npos;
         slash = directory.find('/', slash + 1)) {
        const std::string step = directory.substr(0, slash);
        // The mode again, since the umask takes bits from the first. A medium without modes refuses.
        if (::mkdir(step.c_str(), directoryMode) == 0)
            (void)!::chmod(step.c_str(), directoryMode);
    }
}

/** A temporary file beside a target, which is gone again unless it took the target's place. */
class TemporaryFile
{
public:
    explicit TemporaryFile(const std::string& directory)
        : m_path(directory + ".qgtk-XXXXXX"), m_descriptor(::mkostemp(m_path.data(), O_CLOEXEC))
    {}
    ~TemporaryFile()
    {
        if (m_descriptor && !m_placed)
            ::unlink(m_path.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    bool fill(ByteView bytes) const
    {
        if (!m_descriptor)
            return false;
        (void)!::fchmod(m_descriptor.number(), fileMode);
        return writeFully(m_descriptor.number(), bytes) && ::fsync(m_descriptor.number()) == 0;
    }

    bool place(const std::string& target)
    {
        m_placed = ::rename(m_path.c_str(), target.c_str()) == 0;
        return m_placed;
    }

private:
    std::string m_path;
    Descriptor m_descriptor;
    bool m_placed = false;
};

/** Makes a rename lasting. Media that can't flush a directory have done what they can. */
void flushDirectory(const std::string& directory)
{
    const char* name = directory.empty() ? "." : directory.c_str();
    const Descriptor descriptor(::open(name, O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor)
        (void)!::fsync(descriptor.number());
}

} // namespace

SecretBytes readFile(const std::string& path, std::size_t limit)
{
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    if (!file)
        fail(codeOfOpen(errno), path);
    struct stat status = {};
    if (::fstat(file.number(), &status) != 0)
        fail(Code::FileUnreadable, path);
    if (!S_ISREG(status.st_mode))
        fail(Code::FileNotRegular, path);
    if (static_cast<std::size_t>(status.st_size) > limit)
        fail(Code::FileTooLarge, path);
    SecretBytes bytes(static_cast<std::size_t>(status.st_size));
    const ssize_t count = readFully(file.number(), bytes);
    if (count < 0)
        fail(Code::FileUnreadable, path);
    if (count == 0)
        fail(Code::FileEmpty, path);
    bytes.resize(static_cast<std::size_t>(count));
    return bytes;
}

void writeFile(const std::string& path, ByteView bytes)
{
    const std::string directory = directoryOf(path);
    struct stat status = {};
    if (::lstat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode) && !S_ISLNK(status.st_mode))
        fail(Code::FileNotRegular, path);
    makeDirectories(directory);
    TemporaryFile temporary(directory);
    if (!temporary.fill(bytes) || !temporary.place(path))
        fail(Code::FileNotWritten, path);
    flushDirectory(directory);
}

void deleteFile(const std::string& path)
{
    struct stat status = {};
    if (::lstat(path.c_str(), &status) != 0)
        fail(Code::FileMissing, path);
    if (!S_ISREG(status.st_mode) && !S_ISLNK(status.st_mode))
        fail(Code::FileNotRegular, path);
    if (::unlink(path.c_str()) != 0)
        fail(Code::FileNotDeleted, path);
}

} // namespace qgtk
