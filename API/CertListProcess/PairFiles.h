#pragma once

#include <array>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <vector>

/**
 * The files of a directory that can belong to a flat pair, in the order of the file system: those whose paths
 * hold one of the endings in any letter case. A walk reads them once for all holders of the directory.
 */
class PairFiles
{
public:
    /** Endings in the order of HolderPaths::File. */
    static constexpr const char* ENDINGS[] = {"_sig.cer", "_sig.key", "_env.cer", "_env.key"};

    /** One output of a search: NUL-terminated in its size. */
    struct Output
    {
        char* text;
        std::size_t size;
    };

    /** Reads the directory, whose path ends in a slash; one that can't be opened has no files. */
    explicit PairFiles(const char* directory);

    bool isOf(const char* directory) const { return m_directory == directory; }

    /**
     * Puts the path of each file that holds the holder's name anywhere, in any letter case, into the outputs
     * of its endings. A later file replaces an earlier one.
     */
    void find(const char* holder, const std::array<Output, 4>& outputs) const;

private:
    struct File
    {
        std::string path;
        std::array<bool, 4> endings;
    };

    std::string m_directory;
    std::vector<File> m_files;
};
