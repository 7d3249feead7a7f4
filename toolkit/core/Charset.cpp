#include "toolkit/core/Charset.h"

#include <algorithm>
#include <cstring>

#include "toolkit/core/Errors.h"
#include "toolkit/core/Handles.h"

namespace qgtk {

namespace {

/** What iconv_open answers when it fails. */
const auto noConverter = iconv_t(-1);

bool isAscii(std::string_view text)
{
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool isBetween(char c, unsigned low, unsigned high)
{
    const auto byte = static_cast<unsigned char>(c);
    return byte >= low && byte <= high;
}

/** Bytes of the character that a UTF-8 text begins with; 0 when they are none. */
std::size_t utf8CharacterLength(std::string_view text)
{
    unsigned long character = 0;
    const int length = UTF8_getc(reinterpret_cast<const unsigned char*>(text.data()),
                                 static_cast<int>(std::min<std::size_t>(text.size(), 6)), &character);
    return length > 0 ? static_cast<std::size_t>(length) : 0;
}

bool isUtf8(std::string_view text)
{
    while (!text.empty()) {
        const std::size_t length = utf8CharacterLength(text);
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

bool isEucKr(std::string_view text)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (isBetween(text[i], 0, 0x7F))
            continue;
        if (i + 1 == text.size() || !isBetween(text[i], 0xA1, 0xFE) || !isBetween(text[i + 1], 0xA1, 0xFE))
            return false;
        ++i;
    }
    return true;
}

bool isControl(char c)
{
    return isBetween(c, 0, 0x1F) || c == 0x7F;
}

/** EUC-KR text whose broken bytes and control characters are replaced. */
std::string cleaned(std::string_view text)
{
    std::string result(text);
    for (std::size_t i = 0; i < result.size();) {
        const std::size_t length = eucKrCharacterLength(text.substr(i));
        if (length == 1 && (isControl(text[i]) || !isBetween(text[i], 0, 0x7F)))
            result[i] = '?';
        i += length;
    }
    return result;
}

} // namespace

std::size_t eucKrCharacterLength(std::string_view text)
{
    if (text.size() < 2 || !isBetween(text[0], 0x81, 0xFE))
        return text.empty() ? 0 : 1;
    const char next = text[1];
    const bool pair = isBetween(next, 0x81, 0xFE) || isBetween(next, 'A', 'Z') || isBetween(next, 'a', 'z');
    return pair ? 2 : 1;
}

Charset::~Charset()
{
    if (m_toEucKr != noConverter)
        iconv_close(m_toEucKr);
}

bool Charset::open()
{
    if (!m_tried)
        m_toEucKr = iconv_open("CP949", "UTF-8");
    m_tried = true;
    return m_toEucKr != noConverter;
}

/** Converts as far as it goes. Returns the number of bytes of the source that were used. */
std::size_t Charset::convertRun(std::string_view utf8, std::string& result)
{
    // No character grows: two bytes at most from two or more.
    std::string converted(utf8.size(), '\0');
    char* source = const_cast<char*>(utf8.data());
    char* target = converted.data();
    std::size_t sourceLeft = utf8.size();
    std::size_t targetLeft = converted.size();
    iconv(m_toEucKr, nullptr, nullptr, nullptr, nullptr);
    iconv(m_toEucKr, &source, &sourceLeft, &target, &targetLeft);
    result.append(converted, 0, converted.size() - targetLeft);
    return utf8.size() - sourceLeft;
}

std::string Charset::fromUtf8(std::string_view utf8)
{
    if (isAscii(utf8))
        return cleaned(utf8);
    std::string result;
    while (!utf8.empty()) {
        if (open())
            utf8.remove_prefix(convertRun(utf8, result));
        if (utf8.empty())
            break;
        // The character at which the converter stopped, or, without one, whichever comes.
        const bool ascii = isBetween(utf8.front(), 0, 0x7F);
        result += ascii ? utf8.front() : '?';
        utf8.remove_prefix(std::max<std::size_t>(1, utf8CharacterLength(utf8)));
    }
    return cleaned(result);
}

std::string Charset::fromAsn1(const ASN1_STRING* string)
{
    const int type = ASN1_STRING_type(string);
    if (type == V_ASN1_BMPSTRING || type == V_ASN1_UNIVERSALSTRING) {
        unsigned char* utf8 = nullptr;
        const int length = ASN1_STRING_to_UTF8(&utf8, string);
        const Handle<unsigned char,
                     [](unsigned char* text) {
                         OPENSSL_free(text);
                     }>
            owner(utf8);
        return length > 0 ? fromUtf8(textOf({utf8, static_cast<std::size_t>(length)})) : std::string();
    }
    const std::string_view bytes = textOf(contentOf(string));
    // Old certificates have EUC-KR in fields of every type. A field that claims UTF-8 is believed first.
    const bool asEucKr = type == V_ASN1_UTF8STRING ? !isUtf8(bytes) : isEucKr(bytes) || !isUtf8(bytes);
    return asEucKr ? cleaned(bytes) : fromUtf8(bytes);
}

void copyCut(std::string_view text, int size, char* buffer)
{
    require(buffer != nullptr && size > 0, Code::BadArgument);
    const auto room = static_cast<std::size_t>(size) - 1;
    std::size_t length = 0;
    while (length < text.size()) {
        const std::size_t character = eucKrCharacterLength(text.substr(length));
        if (length + character > room)
            break;
        length += character;
    }
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
}

void copyWhole(std::string_view text, int size, char* buffer)
{
    const bool fits = text.size() < static_cast<std::size_t>(std::max(size, 0));
    copyCut(fits ? text : std::string_view(), size, buffer);
    require(fits, Code::BufferTooSmall);
}

} // namespace qgtk
