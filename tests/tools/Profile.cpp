#include "Profile.h"

#include <sstream>

#include "LibFile.h"
#include "TestHome.h"
#include "samplepki/Der.h"

std::vector<ProfileLine> readProfile(const std::filesystem::path& file)
{
    std::vector<ProfileLine> lines;
    std::string section;
    std::istringstream text(samplepki::convertText(readFile(file), "EUC-KR", "UTF-8"));
    for (std::string line; std::getline(text, line);) {
        const auto equals = line.find('=');
        if (line.starts_with('['))
            section = line.substr(1, line.find(']') - 1);
        else if (!line.starts_with('#') && equals != std::string::npos)
            lines.push_back({section, line.substr(0, equals), line.substr(equals + 1)});
    }
    return lines;
}

std::string libraryValue(const std::filesystem::path& file, const char* section, const std::string& key)
{
    char value[1024];
    FileGetPrivateProfileString(section, key.c_str(), "", value, sizeof(value), file.c_str());
    return value;
}
