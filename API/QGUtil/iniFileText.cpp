#include "iniFile.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <unordered_map>

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

/**
 * Puts lines into the object. It keeps the folded names beside it, each with its first place: the look-ups of
 * the class go through all names, which would make a text of n lines cost n * n.
 */
class CIniFile::Reader
{
public:
    explicit Reader(CIniFile& ini);

    /** Takes one line. The first of the four marks alone decides what it is: "a[b]=c" is a section. */
    void take(const std::string& line);

private:
    using Places = std::unordered_map<std::string, std::size_t>;

    void takeSection(const std::string& line, std::size_t bracket);
    void takeValue(const std::string& name, const std::string& value);
    void takeComment(const std::string& comment);
    std::size_t addSection(const std::string& name);
    Places& placesIn(std::size_t section);

    CIniFile& m_ini;
    Places m_sections;
    std::vector<std::optional<Places>> m_values; /**< by section, for those that values were added to */
    std::optional<std::size_t> m_current;        /**< first section of the current name */
};

CIniFile::Reader::Reader(CIniFile& ini) : m_ini(ini), m_values(ini.names.size())
{
    for (std::size_t i = 0; i < ini.names.size(); ++i)
        m_sections.try_emplace(ini.CheckCase(ini.names[i]), i);
    if (const auto nameless = m_sections.find(""); nameless != m_sections.end())
        m_current = nameless->second;
}

void CIniFile::Reader::take(const std::string& line)
{
    const std::size_t mark = line.find_first_of(";#[=");
    if (mark == std::string::npos)
        return;
    if (line[mark] == '[')
        takeSection(line, mark);
    else if (line[mark] == '=')
        takeValue(line.substr(0, mark), line.substr(mark + 1));
    else
        takeComment(line.substr(mark + 1));
}

void CIniFile::Reader::takeSection(const std::string& line, std::size_t bracket)
{
    const std::size_t end = line.find_last_of(']');
    if (end == std::string::npos || end < bracket)
        return;
    m_current = addSection(line.substr(bracket + 1, end - bracket - 1));
}

/** Appends a section, also one of a name that is there, and gives the first place of the name. */
std::size_t CIniFile::Reader::addSection(const std::string& name)
{
    const std::size_t place = m_ini.AddKeyName(name);
    m_values.emplace_back();
    return m_sections.try_emplace(m_ini.CheckCase(name), place).first->second;
}

void CIniFile::Reader::takeValue(const std::string& name, const std::string& value)
{
    if (!m_current)
        m_current = addSection("");
    key& section = m_ini.keys[*m_current];
    const auto [place, isNew] = placesIn(*m_current).try_emplace(m_ini.CheckCase(name), section.names.size());
    if (!isNew) {
        section.values[place->second] = value;
        return;
    }
    section.names.push_back(name);
    section.values.push_back(value);
}

CIniFile::Reader::Places& CIniFile::Reader::placesIn(std::size_t section)
{
    std::optional<Places>& places = m_values[section];
    if (places)
        return *places;
    places.emplace();
    const std::vector<std::string>& valueNames = m_ini.keys[section].names;
    for (std::size_t i = 0; i < valueNames.size(); ++i)
        places->try_emplace(m_ini.CheckCase(valueNames[i]), i);
    return *places;
}

void CIniFile::Reader::takeComment(const std::string& comment)
{
    if (m_ini.names.empty())
        m_ini.HeaderComment(comment);
    else if (m_current)
        m_ini.keys[*m_current].comments.push_back(comment);
}

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
    Reader reader(*this);
    for (std::string line; std::getline(in, line);) {
        if (line.ends_with('\r'))
            line.pop_back();
        if (line.empty())
            continue;
        if (!isPrintable(line.front())) {
            std::printf("Failing on char %d\n", static_cast<signed char>(line.front()));
            return false;
        }
        reader.take(line);
    }
    return NumKeys() > 0;
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
