#include "samplepki/Extensions.h"

#include <stdexcept>

#include <openssl/evp.h>

namespace samplepki {

namespace {

constexpr const char* identifyDataOid = "1.2.410.200004.10.1.1";
constexpr const char* vidOid = "1.2.410.200004.10.1.1.1";

/** Numbers of the GeneralName choices in use. */
enum GeneralName : unsigned
{
    OtherName = 0,
    Rfc822Name = 1,
    DirectoryName = 4,
    Uri = 6,
};

Bytes uri(const std::string& address)
{
    return der::context(Uri, address, false);
}

Bytes digest(const std::string& hash, const Bytes& data)
{
    Bytes out(EVP_MAX_MD_SIZE, '\0');
    std::size_t length = 0;
    if (EVP_Q_digest(nullptr, hash.c_str(), nullptr, data.data(), data.size(),
                     reinterpret_cast<unsigned char*>(out.data()), &length) != 1)
        throw std::invalid_argument("no such hash: " + hash);
    out.resize(length);
    return out;
}

Bytes noticeQualifier(const std::string& text)
{
    const Bytes notice = der::sequence({der::element(der::BmpString, convertText(text, "UTF-8", "UCS-2BE"))});
    return der::sequence({der::oid("id-qt-unotice"), notice});
}

Bytes cpsQualifier(const std::string& address)
{
    return der::sequence({der::oid("id-qt-cps"), der::element(der::Ia5String, address)});
}

Bytes encodePolicy(const Policy& policy)
{
    Bytes qualifiers;
    if (!policy.notice.empty())
        qualifiers += noticeQualifier(policy.notice);
    if (!policy.cps.empty())
        qualifiers += cpsQualifier(policy.cps);
    const Bytes list = qualifiers.empty() ? Bytes() : der::element(der::Sequence, qualifiers);
    return der::sequence({der::oid(policy.oid), list});
}

Bytes accessDescription(const char* method, const std::string& address)
{
    return address.empty() ? Bytes() : der::sequence({der::oid(method), uri(address)});
}

/** otherName with the real name and the identity value, the value's hash algorithm without parameters. */
Bytes identityName(const Identity& identity, const Bytes& random)
{
    const Bytes value = der::element(der::OctetString, identityValue(identity.number, random, identity.hash));
    const Bytes vid = der::sequence({der::sequence({der::oid(identity.hash)}), der::context(0, value)});
    const Bytes userInfo = der::sequence({der::sequence({der::oid(vidOid), vid})});
    const Bytes data = der::sequence({der::element(der::Utf8String, identity.realName), userInfo});
    return der::context(OtherName, der::oid(identifyDataOid) + der::context(0, data));
}

Bytes encodeExtension(const Extension& extension)
{
    const Bytes critical = extension.critical ? der::element(der::Boolean, "\xFF") : Bytes();
    return der::sequence(
        {der::oid(extension.oid), critical, der::element(der::OctetString, extension.value)});
}

} // namespace

Extension keyUsageExtension(unsigned usage)
{
    Bytes bits;
    unsigned unused = 0;
    for (unsigned bit = 0; bit < 9; ++bit) {
        if (!(usage & (1U << bit)))
            continue;
        bits.resize(bit / 8 + 1, '\0');
        bits[bit / 8] = static_cast<char>(bits[bit / 8] | (0x80 >> (bit % 8)));
        unused = 7 - bit % 8;
    }
    return {"keyUsage", der::element(der::BitString, {Bytes(1, static_cast<char>(unused)), bits}), true};
}

Extension basicConstraintsExtension()
{
    return {"basicConstraints", der::sequence({der::element(der::Boolean, "\xFF")}), true};
}

Extension policiesExtension(const std::vector<Policy>& policies)
{
    Bytes list;
    for (const auto& policy : policies)
        list += encodePolicy(policy);
    return {"certificatePolicies", der::element(der::Sequence, list), true};
}

Extension crlPointsExtension(const std::vector<std::string>& urls)
{
    Bytes points;
    for (const auto& url : urls)
        points += der::sequence({der::context(0, der::context(0, uri(url)))});
    return {"crlDistributionPoints", der::element(der::Sequence, points)};
}

Extension infoAccessExtension(const std::string& ocsp, const std::string& issuers)
{
    return {"authorityInfoAccess",
            der::sequence({accessDescription("OCSP", ocsp), accessDescription("caIssuers", issuers)})};
}

Extension subjectKeyExtension(const Bytes& identifier)
{
    return {"subjectKeyIdentifier", der::element(der::OctetString, identifier)};
}

Extension authorityKeyExtension(const Bytes& identifier, const Bytes& issuerName, const Bytes& serial)
{
    const Bytes issuer = der::context(1, der::context(DirectoryName, issuerName));
    const Bytes number =
        der::bigInteger(serial).replace(0, 1, "\x82"); // [2] IMPLICIT in place of INTEGER's tag
    return {"authorityKeyIdentifier", der::sequence({der::context(0, identifier, false), issuer, number})};
}

Extension subjectAltNameExtension(const std::string& rfc822Name, const Identity* identity,
                                  const Bytes& random)
{
    const Bytes mail = rfc822Name.empty() ? Bytes() : der::context(Rfc822Name, rfc822Name, false);
    return {"subjectAltName", der::sequence({mail, identity ? identityName(*identity, random) : Bytes()})};
}

Bytes identityValue(const std::string& number, const Bytes& random, const std::string& hash)
{
    const Bytes content = der::sequence({der::element(der::PrintableString, number), der::bitString(random)});
    return digest(hash, digest(hash, content));
}

Bytes encodeExtensions(const std::vector<Extension>& extensions)
{
    Bytes list;
    for (const auto& extension : extensions)
        list += encodeExtension(extension);
    return der::element(der::Sequence, list);
}

} // namespace samplepki
