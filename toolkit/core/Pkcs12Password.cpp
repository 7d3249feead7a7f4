#include "toolkit/core/Pkcs12Password.h"

#include <algorithm>

#include "toolkit/core/TextConversion.h"

namespace qgtk {

namespace {

constexpr const char* utf8 = "UTF-8";
constexpr const char* utf16 = "UTF-16BE";
constexpr const char* korean = "CP949";

bool isAscii(std::string_view text)
{
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

SecretBytes secretOf(ByteView bytes)
{
    return {bytes.begin(), bytes.end()};
}

/** Each byte as a character of its own. */
SecretBytes widened(ByteView bytes)
{
    SecretBytes wide;
    wide.reserve(2 * bytes.size() + 2);
    for (const std::uint8_t byte : bytes) {
        wide.push_back(0);
        wide.push_back(byte);
    }
    wide.insert(wide.end(), 2, 0);
    return wide;
}

SecretBytes terminated(const SecretBytes& text)
{
    SecretBytes wide;
    wide.reserve(text.size() + 2);
    wide.assign(text.begin(), text.end());
    wide.insert(wide.end(), 2, 0);
    return wide;
}

/** A text in the encodings that programs take a password in. */
struct PasswordText
{
    SecretBytes wide;
    SecretBytes utf8;
    std::optional<SecretBytes> korean; /**< nothing when EUC-KR lacks a character of it */
};

/** The password as a text of a charset; nothing when it is none. */
std::optional<PasswordText> textIn(const char* charset, std::string_view password)
{
    const std::optional<SecretBytes> wide = convertText(utf16, charset, bytesOf(password));
    if (!wide)
        return std::nullopt;
    std::optional<SecretBytes> narrow = convertText(utf8, utf16, *wide);
    if (!narrow)
        return std::nullopt;
    return PasswordText{terminated(*wide), std::move(*narrow), convertText(korean, utf16, *wide)};
}

bool hasHangul(const PasswordText& text)
{
    for (std::size_t i = 0; i + 1 < text.wide.size(); i += 2) {
        const unsigned unit = static_cast<unsigned>(text.wide[i]) << 8 | text.wide[i + 1];
        const bool isSyllable = unit >= 0xAC00 && unit <= 0xD7A3;
        const bool isLetter = unit >= 0x3131 && unit <= 0x318E;
        if (isSyllable || isLetter)
            return true;
    }
    return false;
}

/** What a password that is not ASCII can mean, likeliest first. */
std::vector<PasswordText> textsOf(std::string_view password)
{
    std::vector<PasswordText> texts;
    for (const char* charset : {utf8, korean})
        if (std::optional<PasswordText> text = textIn(charset, password))
            texts.push_back(std::move(*text));
    if (texts.size() == 2 && !hasHangul(texts[0]) && hasHangul(texts[1]))
        std::swap(texts[0], texts[1]);
    return texts;
}

void addOnce(std::vector<PasswordReading>& readings, PasswordReading reading)
{
    const auto isSame = [&](const PasswordReading& known) {
        return known.wide == reading.wide && known.narrow == reading.narrow;
    };
    if (std::ranges::none_of(readings, isSame))
        readings.push_back(std::move(reading));
}

} // namespace

std::vector<PasswordReading> passwordReadings(std::string_view password)
{
    const ByteView bytes = bytesOf(password);
    std::vector<PasswordReading> readings;
    if (password.empty())
        readings = {{widened({}), {}}, {{}, {}}};
    else if (isAscii(password))
        readings = {{widened(bytes), secretOf(bytes)}};
    else {
        for (const PasswordText& text : textsOf(password)) {
            addOnce(readings, {text.wide, text.utf8});
            addOnce(readings, {widened(text.utf8), text.utf8});
            if (!text.korean)
                continue;
            addOnce(readings, {text.wide, *text.korean});
            addOnce(readings, {widened(*text.korean), *text.korean});
        }
        addOnce(readings, {widened(bytes), secretOf(bytes)});
    }
    const std::size_t usual = readings.size();
    for (std::size_t i = 0; i < usual; ++i)
        addOnce(readings, {readings[i].wide, readings[i].wide});
    return readings;
}

PasswordReading writtenReading(std::string_view password)
{
    return std::move(passwordReadings(password).front());
}

} // namespace qgtk
