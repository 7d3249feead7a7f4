#pragma once

#include <dirent.h>
#include <initializer_list>
#include <string_view>

/** One directory, read entry by entry in the order of the file system and closed at the end of the scope. */
class DirectoryReader
{
public:
    /** Opens the directory. A path that can't be opened, or is none, has no entries. */
    explicit DirectoryReader(const char* path) : m_directory(opendir(path)) {}
    ~DirectoryReader()
    {
        if (m_directory)
            closedir(m_directory);
    }
    DirectoryReader(const DirectoryReader&) = delete;
    DirectoryReader& operator=(const DirectoryReader&) = delete;

    /** Goes to the next entry; false at the end. */
    bool next() { return m_directory && (m_entry = readdir(m_directory)) != nullptr; }

    /** Name of the entry, at most 255 bytes; valid until the next entry. */
    const char* name() const { return m_entry->d_name; }

    /** True for a directory; a symbolic link is none, whatever it leads to. */
    bool isDirectory() const;

    /** True for an entry that is known to be a regular file without asking further. */
    bool isKnownRegular() const { return m_entry->d_type == DT_REG; }

    /** True for "." and "..". */
    bool isDots() const;

private:
    DIR* m_directory;
    dirent* m_entry = nullptr;
};

/**
 * Writes the pieces of a path one behind the other. A path that does not fit leaves the target empty and
 * gives false: cut, it would name another file.
 */
bool joinPath(char* path, std::size_t size, std::initializer_list<std::string_view> pieces);

/** The same into an array, whose size is known. */
template <std::size_t N>
bool joinPath(char (&path)[N], std::initializer_list<std::string_view> pieces)
{
    return joinPath(path, N, pieces);
}
