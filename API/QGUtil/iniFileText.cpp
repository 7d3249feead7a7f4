#include "iniFile.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

/** False for a FIFO, a device or a directory, which would block or never end; true for no file at all. */
bool isFileOrMissing(const std::string& path)
{
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    return std::filesystem::is_regular_file(status) || !std::filesystem::exists(status);
}

bool isPrintable(char character)
{
    return character >= ' ' && character <= '~';
}

void writeComments(std::ostream& out, const std::vector<std::string>& comments)
{
    for (const std::string& comment : comments)
        out << ';' << comment << "\r\n";
}

} // namespace

bool CIniFile::ReadFile()
{
    std::ifstream in;
    if (isFileOrMissing(path))
        in.open(path);
    return in.is_open() && readLines(in);
}

bool CIniFile::ReadString(const char* text)
{
    std::istringstream in(text ? text : "");
    return readLines(in);
}

bool CIniFile::readLines(std::istream& in)
{
    std::string keyname;
    for (std::string line; std::getline(in, line);) {
        if (line.ends_with('\r'))
            line.pop_back();
        if (line.empty())
            continue;
        if (!isPrintable(line.front())) {
            std::printf("Failing on char %d\n", static_cast<signed char>(line.front()));
            return false;
        }
        readLine(line, keyname);
    }
    return NumKeys() > 0;
}

/** The first of the four marks alone decides what the line is: "a[b]=c" is a section, "x;y=z" a comment. */
void CIniFile::readLine(const std::string& line, std::string& keyname)
{
    const std::size_t mark = line.find_first_of(";#[=");
    if (mark == std::string::npos)
        return;
    if (line[mark] == '[')
        readSection(line, mark, keyname);
    else if (line[mark] == '=')
        SetValue(keyname, line.substr(0, mark), line.substr(mark + 1));
    else
        readComment(line.substr(mark + 1), keyname);
}

void CIniFile::readSection(const std::string& line, std::size_t bracket, std::string& keyname)
{
    const std::size_t end = line.find_last_of(']');
    if (end == std::string::npos || end < bracket)
        return;
    keyname = line.substr(bracket + 1, end - bracket - 1);
    AddKeyName(keyname);
}

void CIniFile::readComment(const std::string& comment, const std::string& keyname)
{
    if (names.empty())
        HeaderComment(comment);
    else
        KeyComment(keyname, comment);
}

bool CIniFile::WriteFile() const
{
    std::ofstream out;
    if (isFileOrMissing(path))
        out.open(path);
    if (!out.is_open())
        return false;
    writeComments(out, comments);
    if (!comments.empty())
        out << "\r\n";
    for (std::size_t i = 0; i < keys.size(); ++i) {
        out << '[' << names[i] << "]\r\n";
        writeComments(out, keys[i].comments);
        for (std::size_t j = 0; j < keys[i].names.size(); ++j)
            out << keys[i].names[j] << '=' << keys[i].values[j] << "\r\n";
        out << "\r\n";
    }
    return static_cast<bool>(out.flush());
}
