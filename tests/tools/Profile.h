#pragma once

#include <filesystem>
#include <string>
#include <vector>

/** One "key=value" line of a configuration file, in UTF-8. */
struct ProfileLine
{
    std::string section;
    std::string key;
    std::string value;
};

/** All lines of a configuration file in EUC-KR, in order, comments left out. Throws when it is not EUC-KR. */
std::vector<ProfileLine> readProfile(const std::filesystem::path& file);

/** The value that the library's own reader gives for a key, as bytes. */
std::string libraryValue(const std::filesystem::path& file, const char* section, const std::string& key);
