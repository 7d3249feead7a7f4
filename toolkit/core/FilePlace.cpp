#include "toolkit/core/FilePlace.h"

#include <cerrno>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "toolkit/core/FileStream.h"

namespace qgtk {

namespace {

constexpr mode_t directoryMode = S_IRWXU;
constexpr mode_t fileMode = S_IRUSR | S_IWUSR;

/** Names of temporary files: no listing of certificates takes a file of such a name. */
constexpr std::string_view temporaryPattern = ".qgtk-XXXXXX";
constexpr std::string_view temporaryBeginning = ".qgtk-";

/** Tries of a writer whose temporary file another process takes for one of a writer that is gone. */
constexpr int claimTries = 10;

const char* nameOf(const std::string& directory)
{
    return directory.empty() ? "." : directory.c_str();
}

bool isTemporary(std::string_view name)
{
    return name.starts_with(temporaryBeginning) && name.size() == temporaryPattern.size();
}

/**
 * Takes the lock of a temporary file that was just made. False when another process was quicker and has
 * removed the file. A medium without locks knows no writers that are gone either.
 */
bool claim(int descriptor)
{
    if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        return false;
    struct stat status = {};
    return ::fstat(descriptor, &status) == 0 && status.st_nlink > 0;
}

void removeUnlessLocked(const std::string& path)
{
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat status = {};
    if (file && ::fstat(file.number(), &status) == 0 && S_ISREG(status.st_mode) &&
        ::flock(file.number(), LOCK_EX | LOCK_NB) == 0)
        ::unlink(path.c_str());
}

struct DirectoryCloser
{
    void operator()(DIR* directory) const { ::closedir(directory); }
};

} // namespace

std::string directoryOf(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

void makeDirectories(const std::string& directory)
{
    for (std::size_t slash = directory.find('/', 1); slash != std::string::npos;
         slash = directory.find('/', slash + 1)) {
        const std::string step = directory.substr(0, slash);
        if (::mkdir(step.c_str(), directoryMode) != 0)
            continue;
        // The mode again, since the umask takes bits from the first. A medium without modes refuses.
        (void)!::chmod(step.c_str(), directoryMode);
        flushDirectory(directoryOf(step));
    }
}

void flushDirectory(const std::string& directory)
{
    const Descriptor descriptor(::open(nameOf(directory), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor)
        (void)!::fsync(descriptor.number());
}

int openTemporary(const std::string& directory, std::string& name)
{
    for (int attempt = 0; attempt < claimTries; ++attempt) {
        name = directory + std::string(temporaryPattern);
        const int descriptor = ::mkostemp(name.data(), O_CLOEXEC);
        if (descriptor < 0)
            return descriptor;
        if (claim(descriptor)) {
            (void)!::fchmod(descriptor, fileMode);
            return descriptor;
        }
        ::unlink(name.c_str());
        ::close(descriptor);
    }
    return -1;
}

void removeLeftovers(const std::string& directory)
{
    const std::unique_ptr<DIR, DirectoryCloser> names(::opendir(nameOf(directory)));
    while (const dirent* entry = names ? ::readdir(names.get()) : nullptr) {
        if (isTemporary(entry->d_name))
            removeUnlessLocked(directory + entry->d_name);
    }
}

} // namespace qgtk
