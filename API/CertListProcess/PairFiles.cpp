#include "PairFiles.h"

#include <algorithm>
#include <cstring>

#include "DirectoryReader.h"

PairFiles::PairFiles(const char* directory) : m_directory(directory)
{
    DirectoryReader reader(directory);
    while (reader.next()) {
        char path[1024];
        if (reader.isDirectory() || !joinPath(path, {directory, reader.name()}))
            continue;
        std::array<bool, 4> endings{};
        std::ranges::transform(ENDINGS, endings.begin(),
                               [&](const char* ending) { return strcasestr(path, ending) != nullptr; });
        if (std::ranges::count(endings, true) > 0)
            m_files.push_back({path, endings});
    }
}

void PairFiles::find(const char* holder, const std::array<Output, 4>& outputs) const
{
    for (const File& file : m_files) {
        if (!strcasestr(file.path.c_str(), holder))
            continue;
        for (std::size_t i = 0; i < outputs.size(); ++i) {
            if (file.endings[i])
                joinPath(outputs[i].text, outputs[i].size, {file.path});
        }
    }
}
