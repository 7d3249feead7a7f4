#include "toolkit/core/Configuration.h"

#include <charconv>
#include <map>
#include <sstream>

#include "toolkit/core/Media.h"

namespace qgtk {

namespace {

using Values = std::map<std::string, std::string, std::less<>>;
using Sections = std::map<std::string, Values, std::less<>>;

std::string trimmed(const std::string& text)
{
    constexpr const char* blanks = " \t\r";
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string::npos ? std::string()
                                      : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/** The keys of all sections of an INI text; the first of two equal keys counts. */
Sections sectionsOf(const std::string& text)
{
    Sections sections;
    Values* current = nullptr;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        line = trimmed(line);
        if (line.starts_with('['))
            current = line.ends_with(']') ? &sections[line.substr(1, line.size() - 2)] : nullptr;
        const std::size_t equals = line.find('=');
        if (current && equals != std::string::npos)
            current->emplace(trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
    }
    return sections;
}

/** A positive number, or the fallback. */
int numberOf(const Values& values, std::string_view key, int fallback)
{
    const auto found = values.find(key);
    if (found == values.end())
        return fallback;
    const std::string& text = found->second;
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool usable = error == std::errc() && end == text.data() + text.size() && number > 0;
    return usable ? number : fallback;
}

std::string textIn(const Values& values, std::string_view key)
{
    const auto found = values.find(key);
    return found == values.end() ? std::string() : found->second;
}

/** The keys of a list of directory entries. */
struct DirectoryKeys
{
    const char* count;
    const char* section;
    const char* name;
    const char* url;
};

/** Appends the entries that are there; a count beyond reason counts as none at all. */
void readDirectories(Sections& sections, const DirectoryKeys& keys, std::vector<DirectoryEntry>& entries)
{
    constexpr int most = 1000;
    const int count = numberOf(sections["VALIDATOIN_OPTION"], keys.count, 0);
    for (int i = 1; i <= count && count <= most; ++i) {
        const Values& values = sections[keys.section + std::to_string(i)];
        DirectoryEntry entry{textIn(values, keys.name), textIn(values, keys.url)};
        if (!entry.url.empty())
            entries.push_back(std::move(entry));
    }
}

/** Puts what a section says of CMP in the place of other values. */
void readCmp(const Values& values, CmpAuthority& authority)
{
    authority.keyPair = numberOf(values, "CMP_KEY", authority.keyPair);
    const std::string path = textIn(values, "CMP_PATH");
    if (!path.empty())
        authority.path = path.substr(path.starts_with('/') ? 1 : 0);
}

/** Reads the sections of authorities. */
void readCmpAuthorities(const Sections& sections, std::map<int, CmpAuthority>& authorities)
{
    constexpr std::string_view prefix = "CMP_CA";
    const CmpAuthority common = authorities[0];
    for (const auto& [name, values] : sections) {
        int number = 0;
        const char* const end = name.data() + name.size();
        if (!name.starts_with(prefix) ||
            std::from_chars(name.data() + prefix.size(), end, number).ptr != end || number <= 0)
            continue;
        readCmp(values, authorities.emplace(number, common).first->second);
    }
}

} // namespace

Configuration Configuration::read(const std::string& path)
{
    Configuration result;
    try {
        const SecretBytes bytes = readFile(path, maxObjectLength);
        Sections sections = sectionsOf(std::string(textOf(bytes)));
        const Values& values = sections["OPEN_TOOLKIT"];
        result.maxIterations = numberOf(values, "MAX_ITERATIONS", result.maxIterations);
        result.keyIterations = numberOf(values, "KEY_ITERATIONS", result.keyIterations);
        result.connectSeconds = numberOf(values, "CONNECT_TIMEOUT", result.connectSeconds);
        result.totalSeconds = numberOf(values, "TOTAL_TIMEOUT", result.totalSeconds);
        result.serviceUrl = textIn(values, "IVS_URL");
        if (textIn(values, "LANGUAGE") == "ENG")
            result.language = Language::English;
        result.tokenModule = textIn(values, "PKCS11_MODULE");
        readCmp(values, result.cmpAuthorities[0]);
        readCmpAuthorities(sections, result.cmpAuthorities);
        readDirectories(sections, {"CA_INFO_COUNT", "CA_INFO", "CA_DN", "DIR_URL"}, result.directories);
        readDirectories(sections, {"LDAP_INFO_COUNT", "LDAP_INFO", "DN", "URL"}, result.directories);
    } catch (const Failure&) {
        // Without a file the defaults hold; a work directory need not have one.
    }
    return result;
}

} // namespace qgtk
