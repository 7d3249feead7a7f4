#include "samplepki/Authority.h"

#include <memory>
#include <stdexcept>

#include <openssl/asn1.h>
#include <openssl/core_names.h>
#include <openssl/evp.h>

namespace samplepki {

namespace {

constexpr int daysOfYear = 365;
constexpr std::time_t secondsOfDay = 86400;

void require(bool done)
{
    if (!done)
        throw std::runtime_error("a certificate can't be signed");
}

/** Signs with a key and a hash, and tells the AlgorithmIdentifier that belongs to both. */
class Signer
{
public:
    Signer(const KeyPair& key, const std::string& digest) : m_context(EVP_MD_CTX_new(), &EVP_MD_CTX_free)
    {
        require(EVP_DigestSignInit_ex(m_context.get(), &m_keyContext, digest.c_str(), nullptr, nullptr,
                                      key.get(), nullptr) == 1);
    }

    Bytes algorithm() const
    {
        Bytes out(128, '\0');
        OSSL_PARAM parameters[] = {
            OSSL_PARAM_construct_octet_string(OSSL_SIGNATURE_PARAM_ALGORITHM_ID, out.data(), out.size()),
            OSSL_PARAM_construct_end()};
        require(EVP_PKEY_CTX_get_params(m_keyContext, parameters) == 1);
        out.resize(parameters[0].return_size);
        return out;
    }

    Bytes sign(const Bytes& data) const
    {
        const auto* bytes = reinterpret_cast<const unsigned char*>(data.data());
        std::size_t length = 0;
        require(EVP_DigestSign(m_context.get(), nullptr, &length, bytes, data.size()) == 1);
        Bytes out(length, '\0');
        require(EVP_DigestSign(m_context.get(), reinterpret_cast<unsigned char*>(out.data()), &length, bytes,
                               data.size()) == 1);
        out.resize(length);
        return out;
    }

private:
    std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> m_context;
    EVP_PKEY_CTX* m_keyContext = nullptr;
};

/** UTCTime until 2049, GeneralizedTime from then on. */
Bytes encodeTime(std::time_t time)
{
    const std::unique_ptr<ASN1_TIME, decltype(&ASN1_TIME_free)> value(ASN1_TIME_set(nullptr, time),
                                                                      &ASN1_TIME_free);
    if (!value)
        throw std::invalid_argument("a time that no certificate can hold");
    const std::string_view text(reinterpret_cast<const char*>(ASN1_STRING_get0_data(value.get())),
                                static_cast<std::size_t>(ASN1_STRING_length(value.get())));
    return der::element(static_cast<unsigned char>(ASN1_STRING_type(value.get())), text);
}

Bytes encodeValidity(const Validity& validity)
{
    return der::sequence({encodeTime(validity.notBefore), encodeTime(validity.notAfter)});
}

/** One revoked certificate: its number, when, and why. */
Bytes encodeRevocation(const std::string& serial, const ListRequest& request)
{
    const Bytes reason = der::element(0x0A, Bytes(1, static_cast<char>(request.reason))); // ENUMERATED
    return der::sequence({der::bigInteger(fromHex(serial)), encodeTime(request.validity.notBefore),
                          encodeExtensions({{"CRLReason", reason}})});
}

} // namespace

Validity Validity::days(int from, int until)
{
    const std::time_t now = std::time(nullptr);
    return {now + from * secondsOfDay, now + until * secondsOfDay};
}

Authority::Authority(const Name& subject, const KeyPair& key)
    : m_subject(subject), m_key(key), m_issuer(encodeName(subject)), m_serial("\x01")
{}

Authority Authority::root(const Name& subject, const KeyPair& key)
{
    Authority authority(subject, key);
    const Validity validity = Validity::days(-10 * daysOfYear, 10 * daysOfYear);
    authority.m_certificate = authority.issue({.subject = subject,
                                               .key = key,
                                               .validity = validity,
                                               .serial = toHex(authority.m_serial),
                                               .keyUsage = AuthorityUse,
                                               .extras = {basicConstraintsExtension()}});
    return authority;
}

Authority Authority::intermediate(const Name& subject, const KeyPair& key)
{
    return intermediate(
        {.subject = subject, .key = key, .validity = Validity::days(-5 * daysOfYear, 5 * daysOfYear)});
}

Authority Authority::intermediate(Request request)
{
    request.keyUsage = AuthorityUse;
    request.extras.push_back(basicConstraintsExtension());
    Authority authority(request.subject, request.key);
    authority.m_issuer = encodeName(m_subject);
    authority.m_serial = nextSerial(request);
    request.serial = toHex(authority.m_serial);
    authority.m_certificate = issue(request);
    return authority;
}

Bytes Authority::nextSerial(const Request& request)
{
    return request.serial.empty() ? der::integer(m_nextSerial++).substr(2) : fromHex(request.serial);
}

std::vector<Extension> Authority::extensions(const Request& request) const
{
    std::vector<Extension> list;
    if (request.keyIdentifiers) {
        list.push_back(authorityKeyExtension(m_key.identifier(), m_issuer, m_serial));
        list.push_back(subjectKeyExtension(request.key.identifier()));
    }
    if (request.keyUsage)
        list.push_back(keyUsageExtension(request.keyUsage));
    if (!request.policies.empty())
        list.push_back(policiesExtension(request.policies));
    if (request.identity || !request.rfc822Name.empty())
        list.push_back(subjectAltNameExtension(
            request.rfc822Name, request.identity ? &*request.identity : nullptr, request.key.random()));
    if (!request.crlPoints.empty())
        list.push_back(crlPointsExtension(request.crlPoints));
    if (!request.ocspUrl.empty() || !request.issuersUrl.empty())
        list.push_back(infoAccessExtension(request.ocspUrl, request.issuersUrl));
    list.insert(list.end(), request.extras.begin(), request.extras.end());
    return list;
}

Bytes Authority::issue(const Request& request)
{
    const Signer signer(m_key, request.digest);
    const Bytes body = der::sequence(
        {der::context(0, der::integer(2)), der::bigInteger(nextSerial(request)), signer.algorithm(),
         encodeName(m_subject), encodeValidity(request.validity), encodeName(request.subject),
         request.key.publicKeyInfo(), der::context(3, encodeExtensions(extensions(request)))});
    return der::sequence({body, signer.algorithm(), der::bitString(signer.sign(body))});
}

Bytes Authority::revocationList(const ListRequest& request) const
{
    const Signer signer(m_key, "SHA256");
    Bytes entries;
    for (const std::string& serial : request.serials)
        entries += encodeRevocation(serial, request);
    const Bytes extensions = encodeExtensions(
        {authorityKeyExtension(m_key.identifier(), m_issuer, m_serial), {"crlNumber", der::integer(1)}});
    const Bytes body = der::sequence(
        {der::integer(1), signer.algorithm(), encodeName(m_subject), encodeTime(request.validity.notBefore),
         encodeTime(request.validity.notAfter),
         entries.empty() ? Bytes() : der::element(der::Sequence, entries), der::context(0, extensions)});
    return der::sequence({body, signer.algorithm(), der::bitString(signer.sign(body))});
}

} // namespace samplepki
