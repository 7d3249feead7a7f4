#include "DirectoryReader.h"

#include <fcntl.h>
#include <sys/stat.h>

#include "BoundedText.h"

bool DirectoryReader::isDirectory() const
{
    if (m_entry->d_type != DT_UNKNOWN)
        return m_entry->d_type == DT_DIR;
    struct stat status
    {};
    return fstatat(dirfd(m_directory), m_entry->d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
           S_ISDIR(status.st_mode);
}

bool DirectoryReader::isDots() const
{
    const std::string_view name = m_entry->d_name;
    return name == "." || name == "..";
}

bool joinPath(char* path, std::size_t size, std::initializer_list<std::string_view> pieces)
{
    std::size_t length = 0;
    for (const std::string_view piece : pieces)
        length += piece.size();
    if (length < size)
        return joinText(path, size, pieces), true;
    if (size > 0)
        path[0] = '\0';
    return false;
}
