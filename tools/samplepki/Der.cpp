#include "samplepki/Der.h"

#include <memory>
#include <stdexcept>

#include <iconv.h>
#include <openssl/objects.h>

namespace samplepki {

namespace {

Bytes lengthBytes(std::size_t length)
{
    if (length < 0x80)
        return {static_cast<char>(length)};
    Bytes digits;
    for (; length > 0; length >>= 8)
        digits.insert(digits.begin(), static_cast<char>(length & 0xFF));
    return static_cast<char>(0x80 | digits.size()) + digits;
}

int hexDigit(char digit)
{
    constexpr std::string_view digits = "0123456789abcdef";
    const auto value = digits.find(static_cast<char>(digit >= 'A' && digit <= 'F' ? digit + 32 : digit));
    if (value == std::string_view::npos)
        throw std::invalid_argument("not a hexadecimal digit");
    return static_cast<int>(value);
}

} // namespace

Bytes der::element(unsigned char tag, std::string_view content)
{
    Bytes out(1, static_cast<char>(tag));
    out += lengthBytes(content.size());
    return out.append(content);
}

Bytes der::element(unsigned char tag, std::initializer_list<std::string_view> parts)
{
    Bytes content;
    for (const auto part : parts)
        content.append(part);
    return element(tag, content);
}

Bytes der::sequence(std::initializer_list<std::string_view> parts)
{
    return element(Sequence, parts);
}

Bytes der::context(unsigned number, std::string_view content, bool constructed)
{
    return element(static_cast<unsigned char>((constructed ? 0xA0 : 0x80) | number), content);
}

Bytes der::oid(const std::string& text)
{
    const std::unique_ptr<ASN1_OBJECT, decltype(&ASN1_OBJECT_free)> object(OBJ_txt2obj(text.c_str(), 0),
                                                                           &ASN1_OBJECT_free);
    if (!object)
        throw std::invalid_argument("not an object identifier: " + text);
    const auto* content = reinterpret_cast<const char*>(OBJ_get0_data(object.get()));
    return element(Oid, std::string_view(content, OBJ_length(object.get())));
}

Bytes der::integer(std::uint64_t value)
{
    Bytes bigEndian;
    for (; value > 0; value >>= 8)
        bigEndian.insert(bigEndian.begin(), static_cast<char>(value & 0xFF));
    return bigInteger(bigEndian);
}

Bytes der::bigInteger(std::string_view bigEndian)
{
    while (!bigEndian.empty() && bigEndian.front() == 0)
        bigEndian.remove_prefix(1);
    // A set top bit would read as a minus sign; zero itself has one byte.
    const bool padded = bigEndian.empty() || (static_cast<unsigned char>(bigEndian.front()) & 0x80);
    return element(Integer, {padded ? std::string_view("\0", 1) : std::string_view(), bigEndian});
}

Bytes der::bitString(std::string_view bytes)
{
    return element(BitString, {std::string_view("\0", 1), bytes});
}

Bytes fromHex(std::string_view hex)
{
    const std::string even = (hex.size() % 2 ? "0" : "") + std::string(hex);
    Bytes out;
    for (std::size_t i = 0; i < even.size(); i += 2)
        out += static_cast<char>(hexDigit(even[i]) * 16 + hexDigit(even[i + 1]));
    return out;
}

std::string toHex(std::string_view bytes)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string out;
    for (const char c : bytes)
        (out += digits[static_cast<unsigned char>(c) >> 4]) += digits[static_cast<unsigned char>(c) & 15];
    return out;
}

Bytes convertText(std::string_view text, const char* from, const char* to)
{
    const std::unique_ptr<void, decltype(&iconv_close)> converter(iconv_open(to, from), &iconv_close);
    Bytes out(text.size() * 4 + 4, '\0');
    char* input = const_cast<char*>(text.data());
    char* output = out.data();
    std::size_t inputLeft = text.size();
    std::size_t outputLeft = out.size();
    if (iconv(converter.get(), &input, &inputLeft, &output, &outputLeft) == static_cast<std::size_t>(-1))
        throw std::invalid_argument("text can't be converted to " + std::string(to));
    out.resize(out.size() - outputLeft);
    return out;
}

} // namespace samplepki
