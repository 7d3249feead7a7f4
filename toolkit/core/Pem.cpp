#include "toolkit/core/Pem.h"

#include <algorithm>
#include <array>
#include <openssl/asn1.h>
#include <string>
#include <string_view>

#include "quillgate/algorithms.h"
#include "toolkit/core/Base64.h"
#include "toolkit/core/Errors.h"

namespace qgtk {

namespace {

struct LabelRow
{
    int type;
    std::string_view label;
};

constexpr std::array labelRows{
    LabelRow{QG_PEM_CERTIFICATE, "CERTIFICATE"},
    LabelRow{QG_PEM_PRIVATE_KEY, "PRIVATE KEY"},
    LabelRow{QG_PEM_ENCRYPTED_PRIVATE_KEY, "ENCRYPTED PRIVATE KEY"},
    LabelRow{QG_PEM_PUBLIC_KEY, "PUBLIC KEY"},
    LabelRow{QG_PEM_CERTIFICATE_REQUEST, "CERTIFICATE REQUEST"},
    LabelRow{QG_PEM_CRL, "X509 CRL"},
    LabelRow{QG_PEM_CMS, "CMS"},
    LabelRow{QG_PEM_PKCS7, "PKCS7"},
};

constexpr std::string_view begin = "-----BEGIN ";
constexpr std::string_view dashes = "-----";
constexpr std::size_t lineLength = 64;

std::string_view labelOf(int type)
{
    const auto row = std::ranges::find(labelRows, type, &LabelRow::type);
    require(row != labelRows.end(), Code::AlgorithmCodeUnknown);
    return row->label;
}

/** Everything that has a label is a SEQUENCE of a known length. */
bool isOneSequence(ByteView der)
{
    const unsigned char* content = der.data();
    long length = 0;
    int tag = 0;
    int tagClass = 0;
    const int form = ASN1_get_object(&content, &length, &tag, &tagClass, static_cast<long>(der.size()));
    return form == V_ASN1_CONSTRUCTED && tag == V_ASN1_SEQUENCE && tagClass == V_ASN1_UNIVERSAL &&
           content + length == der.data() + der.size();
}

void append(SecretBytes& text, std::string_view more)
{
    const ByteView bytes = bytesOf(more);
    text.insert(text.end(), bytes.begin(), bytes.end());
}

void appendLine(SecretBytes& text, std::string_view line)
{
    append(text, line);
    append(text, "\n");
}

/** Looks for a mark from a place on. Throws PemDamaged when it does not come. */
std::size_t placeOf(std::string_view text, std::string_view mark, std::size_t from)
{
    const std::size_t place = text.find(mark, from);
    require(place != std::string_view::npos, Code::PemDamaged);
    return place;
}

} // namespace

SecretBytes pemEncode(int type, ByteView der)
{
    const std::string label(labelOf(type));
    require(isOneSequence(der), Code::PemContent);
    const SecretBytes body = base64Encode(der);
    SecretBytes text;
    text.reserve(body.size() + body.size() / lineLength + 2 * (label.size() + begin.size() + lineLength));
    appendLine(text, "-----BEGIN " + label + "-----");
    for (std::string_view rest = textOf(body); !rest.empty();
         rest.remove_prefix(std::min(rest.size(), lineLength)))
        appendLine(text, rest.substr(0, lineLength));
    appendLine(text, "-----END " + label + "-----");
    return text;
}

SecretBytes pemDecode(ByteView bytes)
{
    const std::string_view text = textOf(bytes);
    const std::size_t label = placeOf(text, begin, 0) + begin.size();
    const std::size_t labelEnd = placeOf(text, dashes, label);
    const std::size_t body = labelEnd + dashes.size();
    const std::string end = "-----END " + std::string(text.substr(label, labelEnd - label)) + "-----";
    const std::size_t bodyEnd = placeOf(text, end, body);
    try {
        return base64Decode(bytes.subspan(body, bodyEnd - body));
    } catch (const Failure&) {
        throw Failure(Code::PemDamaged);
    }
}

} // namespace qgtk
