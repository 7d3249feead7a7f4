#include "samplepki/Name.h"

#include <algorithm>
#include <cctype>
#include <sstream>
#include <stdexcept>

namespace samplepki {

namespace {

struct Encoding
{
    unsigned char tag;
    const char* charset;
};

/** Tag and bytes of each StringType, in the order of the enumeration. */
constexpr Encoding encodings[] = {
    {der::Utf8String, "UTF-8"},  {der::PrintableString, "ASCII"}, {der::BmpString, "UCS-2BE"},
    {der::Utf8String, "EUC-KR"}, {der::T61String, "EUC-KR"},
};

template <typename Fold>
std::string folded(std::string text, Fold fold)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [fold](unsigned char c) { return static_cast<char>(fold(c)); });
    return text;
}

std::string lower(const std::string& text)
{
    return folded(text, [](int c) { return std::tolower(c); });
}

/** OpenSSL knows the short types in capitals ("OU"), the long ones as they are ("serialNumber"). */
Bytes typeOid(const std::string& type)
{
    return der::oid(type.size() <= 2 ? folded(type, [](int c) { return std::toupper(c); }) : type);
}

Bytes encodePart(const NamePart& part)
{
    const Encoding& encoding = encodings[static_cast<std::size_t>(part.stringType)];
    const Bytes value = der::element(encoding.tag, convertText(part.value, "UTF-8", encoding.charset));
    return der::element(der::Set, der::sequence({typeOid(part.type), value}));
}

} // namespace

Name nameFromText(const std::string& text, StringType stringType)
{
    Name name;
    std::istringstream parts(text);
    for (std::string part; std::getline(parts, part, ',');) {
        const auto equals = part.find('=');
        if (equals == std::string::npos)
            throw std::invalid_argument("a name's part without '=': " + part);
        const std::string type = part.substr(0, equals);
        name.push_back(
            {type, part.substr(equals + 1), lower(type) == "c" ? StringType::Printable : stringType});
    }
    std::reverse(name.begin(), name.end());
    return name;
}

std::string nameText(const Name& name)
{
    std::string text;
    for (auto part = name.rbegin(); part != name.rend(); ++part)
        text += (text.empty() ? "" : ",") + lower(part->type) + "=" + part->value;
    return text;
}

std::string commonName(const Name& name)
{
    const auto found =
        std::find_if(name.rbegin(), name.rend(), [](const auto& part) { return lower(part.type) == "cn"; });
    return found == name.rend() ? std::string() : found->value;
}

Bytes encodeName(const Name& name)
{
    Bytes content;
    for (const auto& part : name)
        content += encodePart(part);
    return der::element(der::Sequence, content);
}

} // namespace samplepki
