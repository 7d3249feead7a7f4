#include "Util.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>

#include "Binary.h"
#include "BoundedText.h"

namespace {

/** Adds `offset` to each byte from `first` to its 26th follower. */
void foldCase(LPBYTE text, BYTE first, int offset)
{
    for (; text && *text; ++text) {
        if (*text >= first && *text < first + 26)
            *text = static_cast<BYTE>(*text + offset);
    }
}

/** Joins what strtok leaves between the delimiters. */
int removeAll(char* in, const char* delimiters, char* out)
{
    if (!in || !out)
        return 0;
    std::size_t length = 0;
    char* state = nullptr;
    for (char* token = strtok_r(in, delimiters, &state); token;
         token = strtok_r(nullptr, delimiters, &state)) {
        const std::size_t part = std::strlen(token);
        std::memmove(out + length, token, part);
        length += part;
    }
    out[length] = '\0';
    return static_cast<int>(length);
}

std::size_t occurrences(std::string_view text, std::string_view what)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(what); at != text.npos; at = text.find(what, at + what.size()))
        ++count;
    return count;
}

/** Writes the text with every `before` replaced; `out` has room for exactly the result. */
void replaceInto(char* out, std::string_view text, std::string_view before, std::string_view after)
{
    while (!text.empty()) {
        const std::size_t at = std::min(text.find(before), text.size());
        out += text.copy(out, at);
        if (at == text.size())
            return;
        out += after.copy(out, after.size());
        text.remove_prefix(at + before.size());
    }
}

/** A text made by ReplaceAll; no buffer when memory ran out. */
struct Replaced
{
    std::unique_ptr<char[]> text;
    std::size_t size;
};

Replaced replaceAll(std::string_view text, std::string_view before, std::string_view after)
{
    const std::size_t count = occurrences(text, before);
    const std::size_t size = text.size() - count * before.size() + count * after.size();
    Replaced result{std::unique_ptr<char[]>(new (std::nothrow) char[size + 1]), size};
    if (result.text)
        replaceInto(result.text.get(), text, before, after);
    return result;
}

} // namespace

void CUtil::ToLower(LPBYTE lpStr)
{
    foldCase(lpStr, 'A', 'a' - 'A');
}

void CUtil::ToUpper(LPBYTE lpStr)
{
    foldCase(lpStr, 'a', 'A' - 'a');
}

int CUtil::TrimData(char* In, char* Out)
{
    return removeAll(In, "\t\r\n", Out);
}

int CUtil::TrimDataSpace(char* In, char* Out)
{
    return removeAll(In, " ", Out);
}

void CUtil::ReplaceData(const char* In, const char* before, const char* after, char* Out)
{
    if (!In || !before || !after || !Out)
        return;
    for (; *In; ++In)
        *Out++ = *In == *before ? *after : *In;
}

int CUtil::ReplaceAll(const char* pData, const char* pOlds, const char* pNews, int nLen, char* pszOutData)
{
    if (!pData || !pOlds || !*pOlds || !pNews || !pszOutData)
        return -1;
    const Replaced result = replaceAll(pData, pOlds, pNews);
    if (result.text && nLen > 0)
        copyField(pszOutData, static_cast<std::size_t>(nLen) - 1, {result.text.get(), result.size});
    return 0;
}

int CUtil::ReplaceAll(const char* pData, const char* pOlds, const char* pNews, CBinary* binyOut)
{
    if (!pData || !pOlds || !*pOlds || !pNews || !binyOut)
        return -1;
    const Replaced result = replaceAll(pData, pOlds, pNews);
    if (result.text)
        binyOut->set(result.text.get(), static_cast<int>(result.size));
    return 0;
}

char* CUtil::WtoA(wchar_t* /*pwszData*/)
{
    return nullptr;
}

wchar_t* CUtil::AtoW(char* /*pszData*/)
{
    return nullptr;
}

int CUtil::GetSystemError()
{
    return errno;
}
