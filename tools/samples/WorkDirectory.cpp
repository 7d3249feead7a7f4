#include "WorkDirectory.h"

#include <string>

#include "samplepki/Media.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* name = "work";

void copyPrivate(const fs::path& source, const fs::path& target)
{
    fs::copy_file(source, target);
    fs::permissions(target, fs::perms::owner_read | fs::perms::owner_write);
}

} // namespace

fs::path defaultWorkDirectory()
{
    const fs::path program = fs::read_symlink("/proc/self/exe");
    const fs::path installed = program.parent_path().parent_path() / "share/quillgate/workdir";
    return fs::exists(installed) ? installed : fs::path(QUILLGATE_WORKDIR);
}

void writeWorkDirectory(const fs::path& source, const fs::path& parent)
{
    samplepki::makePrivateDirectory(parent / name);
    for (const auto& entry : fs::directory_iterator(source))
        copyPrivate(entry.path(), parent / name / entry.path().filename());
    // The service puts a backslash between directory and file, which makes one file name of both.
    for (const char* file : {"ZRCToolkitV30.conf", "gpkiapi.conf"})
        fs::create_symlink(fs::path(name) / file, parent / (std::string(name) + "\\" + file));
}
