#include "toolkit/core/Media.h"

#include <sys/stat.h>
#include <unistd.h>

#include "toolkit/core/Errors.h"
#include "toolkit/core/FilePlace.h"
#include "toolkit/core/FileStream.h"

namespace qgtk {

SecretBytes readFile(const std::string& path, std::size_t limit)
{
    FileSource file(path);
    if (file.length() > limit)
        throw Failure(Code::FileTooLarge, path);
    SecretBytes bytes(file.length());
    bytes.resize(file.read(bytes));
    if (bytes.empty())
        throw Failure(Code::FileEmpty, path);
    return bytes;
}

void writeFile(const std::string& path, ByteView bytes)
{
    FileTarget file(path);
    file.write(bytes);
    file.commit();
}

void deleteFile(const std::string& path)
{
    struct stat status = {};
    if (::lstat(path.c_str(), &status) != 0)
        throw Failure(Code::FileMissing, path);
    if (!S_ISREG(status.st_mode) && !S_ISLNK(status.st_mode))
        throw Failure(Code::FileNotRegular, path);
    if (::unlink(path.c_str()) != 0)
        throw Failure(Code::FileNotDeleted, path);
    flushDirectory(directoryOf(path));
}

} // namespace qgtk
