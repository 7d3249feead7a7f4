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

/** Goes through a text line by line, as _DecodeConfigProfile would cut it into nodes, without making any. */
class Lines
{
public:
    explicit Lines(std::string_view text) : m_rest(text) {}

    /** Sets the next line, with its line feed and up to its first zero byte; false at the end. */
    bool next(std::string_view& line)
    {
        if (m_rest.empty())
            return false;
        const std::size_t length = std::min({m_rest.find('\n'), m_rest.size() - 1, lineLimit - 1}) + 1;
        line = m_rest.substr(0, length);
        line = line.substr(0, line.find('\0'));
        m_rest.remove_prefix(length);
        return true;
    }

private:
    std::string_view m_rest;
};

bool isComment(std::string_view line)
{
    while (!line.empty() && isSpace(line.front()))
        line.remove_prefix(1);
    return !line.empty() && line.front() == '#';
}

/** True when "[", the name and "]" stand one behind the other anywhere in the line. */
bool holdsHeader(std::string_view line, std::string_view name)
{
    for (std::size_t at = line.find('['); at != line.npos; at = line.find('[', at + 1)) {
        const std::string_view behind = line.substr(at + 1);
        if (behind.starts_with(name) && behind.substr(name.size()).starts_with(']'))
            return true;
    }
    return false;
}

bool hasKey(std::string_view line, std::string_view key)
{
    const std::size_t equals = line.find('=');
    return equals != line.npos && trimmed(line.substr(0, equals)) == key;
}

/** The text up to the line feed behind the first "=". */
std::string_view valueOf(std::string_view line)
{
    line.remove_prefix(line.find('=') + 1);
    return trimmed(line.substr(0, line.find('\n')));
}

/** Walks the lines behind a section's header until the key, the next "[" or the end. */
std::optional<std::string_view> findValue(std::string_view text, std::string_view section,
                                          std::string_view key)
{
    Lines lines(text);
    std::string_view line;
    bool inSection = false;
    while (!inSection && lines.next(line))
        inSection = holdsHeader(line, section) && !isComment(line);
    while (lines.next(line)) {
        const bool bracket = line.find('[') != line.npos;
        if (!bracket && !hasKey(line, key))
            continue;
        if (isComment(line))
            continue;
        return bracket ? std::nullopt : std::optional(valueOf(line));
    }
    return std::nullopt;
}

/** A helper's text argument; null counts as an empty one. */
std::string_view viewOf(const CHAR* text)
{
    return text ? std::string_view(text) : std::string_view();
}

} // namespace

ProfileText::ProfileText(const CHAR* file)
{
    if (!file)
        return;
    OpenFile profile(file, O_RDONLY);
    if (!profile.isRegular() || profile.bytes() > profileLimit)
        return;
    const auto bytes = static_cast<std::size_t>(profile.bytes());
    m_text.reset(new (std::nothrow) char[bytes + 1]);
    const long length = m_text ? profile.read(m_text.get(), bytes) : 0;
    m_length = length < 0 ? 0 : static_cast<std::size_t>(length);
    m_outOfMemory = !m_text;
}

INT ProfileText::string(const CHAR* section, const CHAR* key, const CHAR* fallback, CHAR* value,
                        INT size) const
{
    if (!value || size <= 0)
        return 0;
    std::memset(value, 0, static_cast<std::size_t>(size));
    if (!section || !key)
        return 0;
    if (m_outOfMemory)
        return -2;
    const auto found = findValue({m_text.get(), m_length}, section, key);
    if (!found)
        return 0;
    // Cut behind the trim, so that a text that is too long begins as the whole text does.
    return static_cast<INT>(
        joinText(value, static_cast<std::size_t>(size), {found->empty() ? viewOf(fallback) : *found}));
}

INT FileGetPrivateProfileString(const CHAR* szAppName, const CHAR* szKeyName, const CHAR* szDefault,
                                CHAR* szReturnedString, INT nSize, const CHAR* szFileName)
{
    return ProfileText(szFileName).string(szAppName, szKeyName, szDefault, szReturnedString, nSize);
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
        const std::string_view line = viewOf(poCurProfile->pcData);
        if (holdsHeader(line, szAppName) && !isComment(line))
            break;
    }
    return 0;
}

INT _FindConfigProfileKey(const CHAR* szData, const CHAR* szKeyName)
{
    return hasKey(viewOf(szData), szKeyName) ? 1 : 0;
}

INT _IsCommentLine(const CHAR* szData)
{
    return isComment(viewOf(szData)) ? 1 : 0;
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
