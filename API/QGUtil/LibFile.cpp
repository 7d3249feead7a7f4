#include "LibFile.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <new>
#include <optional>
#include <string_view>
#include <utility>

#include "BoundedText.h"
#include "OpenFile.h"

namespace {

constexpr std::size_t lineLimit = 4094;          // characters in a node; longer lines are split
constexpr off_t profileLimit = 4L * 1024 * 1024; // bytes; no configuration comes near it

bool isSpace(char character)
{
    return character == ' ' || (character >= '\t' && character <= '\r');
}

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && isSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

/** A node and the joined pieces as its text in one block; null when memory ran out. */
ConfigProfileS* newNode(std::initializer_list<std::string_view> pieces)
{
    std::size_t size = 1;
    for (std::string_view piece : pieces)
        size += piece.size();
    void* block = ::operator new(sizeof(ConfigProfileS) + size, std::nothrow);
    if (!block)
        return nullptr;
    char* text = static_cast<char*>(block) + sizeof(ConfigProfileS);
    joinText(text, size, pieces);
    return new (block) ConfigProfileS{text, nullptr};
}

/** Appends lines to a list, which it owns until it is taken. */
class ListBuilder
{
public:
    ListBuilder() = default;
    ~ListBuilder() { _FreeConfigProfile(m_first); }
    ListBuilder(const ListBuilder&) = delete;
    ListBuilder& operator=(const ListBuilder&) = delete;

    bool add(std::string_view line)
    {
        *m_end = newNode({line});
        if (!*m_end)
            return false;
        m_end = &(*m_end)->pNext;
        return true;
    }

    /** Gives the list away, with one node that has no text when nothing was added; null without memory. */
    ConfigProfileS* take()
    {
        if (!m_first && add({}))
            m_first->pcData = nullptr;
        return std::exchange(m_first, nullptr);
    }

private:
    ConfigProfileS* m_first = nullptr;
    ConfigProfileS** m_end = &m_first;
};

/** As _DecodeConfigProfile, from a text in memory; null when memory ran out. */
ConfigProfileS* decodeText(std::string_view text)
{
    ListBuilder list;
    while (!text.empty()) {
        const std::size_t length = std::min({text.find('\n'), text.size() - 1, lineLimit - 1}) + 1;
        if (!list.add(text.substr(0, length)))
            return nullptr;
        text.remove_prefix(length);
    }
    return list.take();
}

/** True when "[", the name and "]" stand one behind the other anywhere in the line. */
bool holdsHeader(const char* line, std::string_view name)
{
    const char* bracket = line ? std::strchr(line, '[') : nullptr;
    for (; bracket; bracket = std::strchr(bracket + 1, '[')) {
        if (std::strncmp(bracket + 1, name.data(), name.size()) == 0 && bracket[1 + name.size()] == ']')
            return true;
    }
    return false;
}

/** The text of a node up to its line feed, behind the first "="; empty for a line without one. */
std::string_view valueOf(const char* line)
{
    const char* equals = std::strchr(line, '=');
    if (!equals)
        return {};
    return trimmed({equals + 1, std::strcspn(equals + 1, "\n")});
}

/** Walks the lines behind a section's header until the key, the next "[" or the end. */
std::optional<std::string_view> findValue(const ConfigProfileS* start, const char* key)
{
    for (const ConfigProfileS* node = start->pNext; node; node = node->pNext) {
        const bool comment = _IsCommentLine(node->pcData) == 1;
        if (!comment && std::strchr(node->pcData, '['))
            return std::nullopt;
        if (!comment && _FindConfigProfileKey(node->pcData, key) == 1)
            return valueOf(node->pcData);
    }
    return std::nullopt;
}

struct FreeProfile
{
    void operator()(ConfigProfileS* profile) const { _FreeConfigProfile(profile); }
};

/** Answers a query from the text of the whole file. */
INT queryText(std::string_view text, const char* section, const char* key, const char* fallback, char* out,
              std::size_t size)
{
    const std::unique_ptr<ConfigProfileS, FreeProfile> profile(decodeText(text));
    if (!profile)
        return -2;
    ConfigProfileS* start = nullptr;
    if (_FindConfigProfileSection(&start, profile.get(), section) != 0)
        return -3;
    const std::optional<std::string_view> value = findValue(start, key);
    if (!value)
        return 0;
    // Cut behind the trim, so that a text that is too long begins as the whole text does.
    return static_cast<INT>(joinText(out, size, {value->empty() ? std::string_view(fallback) : *value}));
}

} // namespace

INT FileGetPrivateProfileString(const CHAR* szAppName, const CHAR* szKeyName, const CHAR* szDefault,
                                CHAR* szReturnedString, INT nSize, const CHAR* szFileName)
{
    if (!szReturnedString || nSize <= 0)
        return 0;
    const auto size = static_cast<std::size_t>(nSize);
    std::memset(szReturnedString, 0, size);
    if (!szAppName || !szKeyName || !szFileName)
        return 0;
    OpenFile file(szFileName, O_RDONLY);
    if (!file.isRegular() || file.bytes() > profileLimit)
        return 0;
    const auto bytes = static_cast<std::size_t>(file.bytes());
    const std::unique_ptr<char[]> text(new (std::nothrow) char[bytes + 1]);
    if (!text)
        return -2;
    const long length = file.read(text.get(), bytes);
    if (length < 0)
        return 0;
    return queryText({text.get(), static_cast<std::size_t>(length)}, szAppName, szKeyName,
                     szDefault ? szDefault : "", szReturnedString, size);
}

INT FileGetPrivateProfileInt(const CHAR* szAppName, const CHAR* szKeyName, INT /*nDefault*/,
                             const CHAR* szFileName)
{
    CHAR text[1024] = {};
    const INT length = FileGetPrivateProfileString(szAppName, szKeyName, "", text, 1023, szFileName);
    return length < 0 ? length : static_cast<INT>(std::strtol(text, nullptr, 10));
}

LONG StrTrimString(CHAR* szStr)
{
    if (szStr && *szStr) {
        const std::string_view text(szStr);
        // Nothing but white space: zeroed over its length. Else moved to the front and terminated.
        const std::string_view kept = trimmed(text);
        if (kept.empty())
            std::memset(szStr, 0, text.size());
        else
            copyText(szStr, kept.size() + 1, kept.data());
    }
    return 1;
}

INT _DecodeConfigProfile(ConfigProfileS** ppoProfileOut, FILE* fp)
{
    ListBuilder list;
    char line[lineLimit + 1];
    bool complete = true;
    while (complete && std::fgets(line, sizeof(line), fp))
        complete = list.add(line);
    *ppoProfileOut = complete ? list.take() : nullptr;
    return *ppoProfileOut ? 0 : -1;
}

INT _FindConfigProfileSection(ConfigProfileS** ppoStartProfile, ConfigProfileS* poCurProfile,
                              const CHAR* szAppName)
{
    if (!poCurProfile)
        return -1;
    for (; poCurProfile; poCurProfile = poCurProfile->pNext) {
        *ppoStartProfile = poCurProfile;
        if (holdsHeader(poCurProfile->pcData, szAppName) && _IsCommentLine(poCurProfile->pcData) == 0)
            break;
    }
    return 0;
}

INT _FindConfigProfileKey(const CHAR* szData, const CHAR* szKeyName)
{
    const char* equals = szData ? std::strchr(szData, '=') : nullptr;
    if (!equals)
        return 0;
    return trimmed({szData, static_cast<std::size_t>(equals - szData)}) == szKeyName ? 1 : 0;
}

INT _IsCommentLine(const CHAR* szData)
{
    while (szData && isSpace(*szData))
        ++szData;
    return szData && *szData == '#' ? 1 : 0;
}

INT _IsInvalidLine(const CHAR* szData)
{
    if (!szData || _IsCommentLine(szData) == 1)
        return 1;
    return std::strlen(szData) == 1 || !std::strchr(szData, '=') ? 1 : 0;
}

INT _InsertNewKeyAndValue(ConfigProfileS* poCurProfile, const CHAR* szKeyName, const CHAR* szString)
{
    ConfigProfileS* node = newNode({szKeyName, "=", szString, "\n"});
    if (!node)
        return -1;
    node->pNext = poCurProfile->pNext;
    poCurProfile->pNext = node;
    return 0;
}

INT _WriteProfileToFile(ConfigProfileS* poProfile, FILE* fp)
{
    for (; poProfile; poProfile = poProfile->pNext) {
        // A full disk stays full: trying the line again, as this once did, would never end.
        if (poProfile->pcData && std::fputs(poProfile->pcData, fp) < 0)
            return -1;
    }
    return 0;
}

INT _FreeConfigProfile(ConfigProfileS* poProfile)
{
    while (poProfile) {
        ConfigProfileS* next = poProfile->pNext;
        ::operator delete(poProfile);
        poProfile = next;
    }
    return 0;
}
