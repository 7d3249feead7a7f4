#include "toolkit/core/CertificateText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "toolkit/core/Names.h"
#include "toolkit/core/Oid.h"

namespace qgtk {

namespace {

struct AlgorithmName
{
    std::string_view oid;
    const char* name;
};

/** National algorithms that OpenSSL has no name for. */
constexpr std::array nationalNames{
    AlgorithmName{"1.2.410.200004.1.1", "kcdsa"},
    AlgorithmName{"1.2.410.200004.1.8", "kcdsaWithHAS160"},
    AlgorithmName{"1.2.410.200004.1.9", "kcdsaWithSHA1"},
    AlgorithmName{"1.2.410.200004.1.20", "rsaWithHAS160"},
    AlgorithmName{"1.2.410.200004.1.21", "kcdsa1"},
};

std::string algorithmText(const X509_ALGOR* algorithm)
{
    const ASN1_OBJECT* object = nullptr;
    X509_ALGOR_get0(&object, nullptr, nullptr, algorithm);
    const int nid = OBJ_obj2nid(object);
    if (nid != NID_undef)
        return OBJ_nid2ln(nid);
    std::string oid = dottedOid(object);
    const auto row = std::ranges::find(nationalNames, oid, &AlgorithmName::oid);
    return row == nationalNames.end() ? oid : row->name;
}

} // namespace

std::string hexText(ByteView bytes)
{
    constexpr char digits[] = "0123456789abcdef";
    std::string text(bytes.size() * 2, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        text[2 * i] = digits[bytes[i] >> 4];
        text[2 * i + 1] = digits[bytes[i] & 15];
    }
    return text;
}

std::string timeText(std::time_t instant)
{
    std::tm local = {};
    localtime_r(&instant, &local);
    char text[64] = {};
    std::snprintf(text, sizeof(text), "%04d-%02d-%02d %02d:%02d:%02d", local.tm_year + 1900, local.tm_mon + 1,
                  local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec);
    return text;
}

std::time_t parseTimeText(const std::string& text)
{
    std::tm local = {};
    const char* end = strptime(text.c_str(), "%Y-%m-%d %H:%M:%S", &local);
    require(end && *end == '\0', Code::BadTime);
    local.tm_isdst = -1;
    return mktime(&local);
}

int remainingDays(const Certificate& certificate)
{
    constexpr double secondsADay = 86400;
    const double seconds = std::difftime(certificate.notAfter(), std::time(nullptr));
    return static_cast<int>(std::floor(seconds / secondsADay));
}

std::string commonNameOf(const Certificate& certificate, Charset& charset)
{
    return commonNameText(certificate.subjectDer(), charset);
}

std::string subjectOf(const Certificate& certificate, Charset& charset)
{
    return nameText(certificate.subjectDer(), charset);
}

std::string issuerOf(const Certificate& certificate, Charset& charset)
{
    return nameText(certificate.issuerDer(), charset);
}

std::string serialOf(const Certificate& certificate, Charset&)
{
    const ASN1_INTEGER* serial = certificate.serial();
    const bool negative = (ASN1_STRING_type(serial) & V_ASN1_NEG) != 0;
    return (negative ? "-" : "") + hexText(contentOf(serial));
}

std::string signatureAlgorithmOf(const Certificate& certificate, Charset&)
{
    return algorithmText(certificate.signatureAlgorithm());
}

std::string signatureOf(const Certificate& certificate, Charset&)
{
    return hexText(certificate.signature());
}

std::string notBeforeOf(const Certificate& certificate, Charset&)
{
    return timeText(certificate.notBefore());
}

std::string notAfterOf(const Certificate& certificate, Charset&)
{
    return timeText(certificate.notAfter());
}

std::string validityOf(const Certificate& certificate, Charset& charset)
{
    return notBeforeOf(certificate, charset) + " ~ " + notAfterOf(certificate, charset);
}

std::string publicKeyAlgorithmOf(const Certificate& certificate, Charset&)
{
    return algorithmText(certificate.publicKey().algorithm.get());
}

std::string publicKeyLengthOf(const Certificate& certificate, Charset&)
{
    return std::to_string(publicKeyBits(certificate.publicKey())) + " Bits";
}

std::string publicKeyOf(const Certificate& certificate, Charset&)
{
    return hexText(certificate.publicKey().bits);
}

} // namespace qgtk
