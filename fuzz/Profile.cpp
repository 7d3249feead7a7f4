// Language packs and configuration files: the reader, and the editing of their lines.

#include <cstdio>
#include <cstring>

#include "LibFile.h"
#include "MemoryFile.h"
#include "Target.h"

namespace {

void ask(const char* path)
{
    char value[16];
    for (const char* key : {"TITLE", "LONG_KEY", ""}) {
        const int length =
            FileGetPrivateProfileString("UserInterface", key, "default", value, sizeof(value), path);
        expect(length >= 0 && static_cast<std::size_t>(length) == std::strlen(value));
        FileGetPrivateProfileInt("UserInterface", key, 0, path);
    }
}

void edit(const char* path)
{
    FILE* file = std::fopen(path, "r");
    expect(file != nullptr);
    ConfigProfileS* lines = nullptr;
    expect(_DecodeConfigProfile(&lines, file) == 0);
    std::fclose(file);
    ConfigProfileS* section = nullptr;
    expect(_FindConfigProfileSection(&section, lines, "UserInterface") == 0);
    expect(_InsertNewKeyAndValue(section, "KEY", "value") == 0);
    for (ConfigProfileS* line = lines; line; line = line->pNext) {
        _FindConfigProfileKey(line->pcData, "TITLE");
        _IsCommentLine(line->pcData);
        _IsInvalidLine(line->pcData);
        StrTrimString(line->pcData);
    }
    _FreeConfigProfile(lines);
}

} // namespace

void fuzz(qgtk::ByteView input)
{
    static const MemoryFile file;
    expect(file.fill(input));
    const std::string path = file.path();
    ask(path.c_str());
    edit(path.c_str());
}
