#include "toolkit/core/CmpPairs.h"

#include <algorithm>

#include "toolkit/core/CertificatePath.h"
#include "toolkit/core/KeyGeneration.h"
#include "toolkit/core/KeyOperations.h"
#include "toolkit/core/KeyRandom.h"

namespace qgtk {

namespace {

constexpr std::size_t randomLength = 20;
constexpr int cessationOfOperation = 5;

/** A pair as the exchanges take it. */
struct OpenPair
{
    PairPurpose purpose;
    X509Handle certificate;
    KeyHandle key;
    ByteView plainKey;
};

OpenPair openPair(const Crypto& crypto, const CmpPair& pair)
{
    OpenPair open{pair.purpose, decodeX509(crypto, pair.certificate), privateKeyFrom(crypto, pair.key),
                  pair.key};
    requirePair(keyOfCertificate(crypto, Certificate(pair.certificate)), open.key);
    return open;
}

/** All pairs, who signs last. */
std::vector<OpenPair> openPairs(const Crypto& crypto, const std::vector<CmpPair>& pairs)
{
    require(!pairs.empty(), Code::BadArgument);
    std::vector<OpenPair> open;
    for (const CmpPair& pair : pairs)
        open.push_back(openPair(crypto, pair));
    auto signer = std::ranges::find(open, PairPurpose::Signing, &OpenPair::purpose);
    if (signer == open.end())
        signer = open.begin();
    std::rotate(signer, signer + 1, open.end());
    return open;
}

CmpSigner signerOf(const std::vector<OpenPair>& pairs)
{
    const OpenPair& last = pairs.back();
    EVP_PKEY_up_ref(last.key.get());
    return {share(last.certificate.get()), KeyHandle(last.key.get())};
}

X509Handle readAuthority(Context& context, const std::string& path)
{
    return decodeX509(context.crypto(), readCertificateFile(path));
}

SecretBytes freshKey(Context& context)
{
    const Crypto& crypto = context.crypto();
    const int kind = context.configuration().cmpAuthority(context.cmp.authority).keyPair;
    SecretBytes random(randomLength);
    crypto.random(random);
    return withKeyRandom(generatePair(crypto, kind).privateKey, random);
}

/** A key's random value; empty when it has none. */
SecretBytes randomOf(ByteView key)
{
    return randomAmong(PKCS8_pkey_get0_attrs(decodePlainKey(key).get()));
}

/** Gathers what is issued, and gives it back unless all has been. */
class Issuing
{
public:
    Issuing(Context& context, CmpExchange& exchange) : m_context(context), m_exchange(exchange) {}
    Issuing(const Issuing&) = delete;
    Issuing& operator=(const Issuing&) = delete;
    ~Issuing()
    {
        for (const X509Handle& certificate : m_issued)
            withdraw(certificate.get());
    }

    /** Requests a certificate for a key. */
    void request(PairPurpose purpose, SecretBytes key, std::string_view idNumber, X509* old)
    {
        const Crypto& crypto = m_context.crypto();
        const SecretBytes random = randomOf(key);
        const CmpSubject subject{purpose, idNumber, random, old};
        CmpWish wish;
        wish.key = privateKeyFrom(crypto, key);
        wish.extensions = wishedExtensions(crypto, subject, wish.key);
        wish.old = old ? share(old) : nullptr;
        wish.accept = [&](X509* certificate) {
            requireIdentity(crypto, subject, certificate);
        };
        CmpIssued issued = m_exchange.request(wish);
        m_result.pairs.push_back({purpose, derOf(issued.certificate.get()), std::move(key)});
        m_issued.push_back(std::move(issued.certificate));
        for (const Bytes& authority : issued.authorities)
            add(authority);
    }

    /** Everything; the authority's own certificate is added when none came. */
    CmpResult finish(X509* authority)
    {
        if (m_authorities.empty())
            add(derOf(authority));
        for (const Bytes& der : m_authorities)
            m_result.authorities.insert(m_result.authorities.end(), der.begin(), der.end());
        m_issued.clear();
        return std::move(m_result);
    }

private:
    void add(const Bytes& authority)
    {
        if (std::ranges::find(m_authorities, authority) == m_authorities.end())
            m_authorities.push_back(authority);
    }

    /** Whoever has no key for a certificate does not want it; what comes of it does not matter any more. */
    void withdraw(X509* certificate) noexcept
    {
        try {
            m_exchange.revoke(certificate, cessationOfOperation);
        } catch (...) {
        }
    }

    Context& m_context;
    CmpExchange& m_exchange;
    CmpResult m_result;
    std::vector<X509Handle> m_issued;
    std::vector<Bytes> m_authorities;
};

/** Puts pairs into the order in which their old ones were given: who signs was moved behind the others. */
void restoreOrder(std::vector<CmpPair>& pairs, const std::vector<CmpPair>& given)
{
    auto signer = std::ranges::find(given, PairPurpose::Signing, &CmpPair::purpose);
    const auto place = signer == given.end() ? 0 : signer - given.begin();
    std::rotate(pairs.begin() + place, pairs.end() - 1, pairs.end());
}

} // namespace

CmpResult requestPairs(Context& context, const CmpApplication& application, const CmpSecret& secret,
                       const std::vector<PairPurpose>& purposes)
{
    require(!purposes.empty() && !secret.reference.empty() && !secret.code.empty(), Code::BadArgument);
    X509Handle authority = readAuthority(context, application.authorityFile);
    CmpExchange exchange(context, application.server, secret, {});
    exchange.setAuthority(share(authority.get()));
    Issuing issuing(context, exchange);
    for (const PairPurpose purpose : purposes)
        issuing.request(purpose, freshKey(context), application.idNumber, nullptr);
    return issuing.finish(authority.get());
}

CmpResult updatePairs(Context& context, const CmpApplication& application, bool newKeys,
                      const std::vector<CmpPair>& pairs)
{
    X509Handle authority = readAuthority(context, application.authorityFile);
    const std::vector<OpenPair> open = openPairs(context.crypto(), pairs);
    CmpExchange exchange(context, application.server, {}, signerOf(open));
    exchange.setAuthority(share(authority.get()));
    Issuing issuing(context, exchange);
    for (const OpenPair& pair : open) {
        SecretBytes key =
            newKeys ? freshKey(context) : SecretBytes(pair.plainKey.begin(), pair.plainKey.end());
        issuing.request(pair.purpose, std::move(key), application.idNumber, pair.certificate.get());
    }
    CmpResult result = issuing.finish(authority.get());
    restoreOrder(result.pairs, pairs);
    return result;
}

void revokePairs(Context& context, const CmpServer& server, int reason, const std::vector<CmpPair>& pairs)
{
    constexpr int mostReason = 10;
    constexpr int unassignedReason = 7;
    require(reason >= -1 && reason <= mostReason && reason != unassignedReason, Code::BadArgument);
    std::vector<OpenPair> open = openPairs(context.crypto(), pairs);
    CmpExchange exchange(context, server, {}, signerOf(open));
    IssuerSearch search(context, exchange.servers());
    exchange.setAuthority(findIssuer(context, search, open.back().certificate.get()));
    std::erase_if(open, [&](const OpenPair& pair) {
        return &pair != &open.back() && X509_cmp(pair.certificate.get(), open.back().certificate.get()) == 0;
    });
    for (const OpenPair& pair : open)
        exchange.revoke(pair.certificate.get(), reason);
}

} // namespace qgtk
