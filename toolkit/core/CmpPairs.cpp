#include "toolkit/core/CmpPairs.h"

#include <algorithm>

#include "toolkit/core/CmpRecoveryMessage.h"
#include "toolkit/core/KeyGeneration.h"
#include "toolkit/core/KeyRandom.h"

namespace qgtk {

namespace {

OpenPair openPair(const Crypto& crypto, const CmpPair& pair)
{
    OpenPair open{pair.purpose, decodeX509(crypto, pair.certificate), privateKeyFrom(crypto, pair.key),
                  pair.key};
    requirePair(keyOfCertificate(crypto, Certificate(pair.certificate)), open.key);
    return open;
}

/** A plain key of the configured kind, with a random value. */
SecretBytes freshKey(Context& context)
{
    const Crypto& crypto = context.crypto();
    return withKeyRandom(generatePair(crypto, configuredKeyKind(context)).privateKey, freshRandom(crypto));
}

/** A key's random value; empty when it has none. */
SecretBytes randomOf(ByteView key)
{
    return randomAmong(PKCS8_pkey_get0_attrs(decodePlainKey(key).get()));
}

/** Puts pairs into the order in which their old ones were given: who signs was moved behind the others. */
void restoreOrder(std::vector<CmpPair>& pairs, const std::vector<CmpPair>& given)
{
    auto signer = std::ranges::find(given, PairPurpose::Signing, &CmpPair::purpose);
    const auto place = signer == given.end() ? 0 : signer - given.begin();
    std::rotate(pairs.begin() + place, pairs.end() - 1, pairs.end());
}

/** The newest of the pairs that have a key. Throws CmpKeyMissing. */
const RecoveredPair& newestPair(const std::vector<RecoveredPair>& pairs)
{
    const RecoveredPair* newest = nullptr;
    for (const RecoveredPair& pair : pairs) {
        const bool isNewer = !newest || Certificate(pair.certificate).notBefore() >
                                            Certificate(newest->certificate).notBefore();
        if (!pair.encryptedKey.empty() && isNewer)
            newest = &pair;
    }
    require(newest != nullptr, Code::CmpKeyMissing);
    return *newest;
}

/** Throws CmpCertificateOther unless a pair is one, and the holder's. */
void requireRecovered(const Crypto& crypto, X509* holder, ByteView certificate, ByteView key)
{
    const X509Handle decoded = decodeX509(crypto, certificate);
    const bool isHolders =
        X509_NAME_cmp(X509_get_subject_name(decoded.get()), X509_get_subject_name(holder)) == 0;
    require(isHolders && isPlainKey(key), Code::CmpCertificateOther);
    const KeyHandle open = keyOfCertificate(crypto, Certificate(certificate));
    require(EVP_PKEY_eq(privateKeyFrom(crypto, key).get(), open.get()) == 1, Code::CmpCertificateOther);
}

} // namespace

std::vector<OpenPair> openPairs(const Crypto& crypto, const std::vector<CmpPair>& pairs)
{
    require(!pairs.empty(), Code::BadArgument);
    std::vector<OpenPair> open;
    open.reserve(pairs.size());
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

CmpPair issueFor(const Crypto& crypto, CmpIssuing& issuing, PairPurpose purpose, std::string_view idNumber,
                 SecretBytes key, X509* old)
{
    const SecretBytes random = randomOf(key);
    Bytes certificate = issuing.request({purpose, idNumber, random, old}, privateKeyFrom(crypto, key));
    return {purpose, std::move(certificate), std::move(key)};
}

CmpResult requestPairs(Context& context, const CmpApplication& application, const CmpSecret& secret,
                       const std::vector<PairPurpose>& purposes)
{
    require(!purposes.empty(), Code::BadArgument);
    const Crypto& crypto = context.crypto();
    const X509Handle authority = authorityOf(crypto, application);
    CmpExchange exchange(context, application.server, secret, {});
    exchange.setAuthority(share(authority.get()));
    CmpIssuing issuing(crypto, exchange);
    CmpResult result;
    for (const PairPurpose purpose : purposes)
        result.pairs.push_back(
            issueFor(crypto, issuing, purpose, application.idNumber, freshKey(context), nullptr));
    result.authorities = issuing.finish(authority.get());
    return result;
}

CmpResult updatePairs(Context& context, const CmpApplication& application, bool newKeys,
                      const std::vector<CmpPair>& pairs)
{
    const Crypto& crypto = context.crypto();
    const X509Handle authority = authorityOf(crypto, application);
    const std::vector<OpenPair> open = openPairs(crypto, pairs);
    CmpExchange exchange(context, application.server, {}, signerOf(open));
    exchange.setAuthority(share(authority.get()));
    CmpIssuing issuing(crypto, exchange);
    CmpResult result;
    for (const OpenPair& pair : open) {
        SecretBytes key =
            newKeys ? freshKey(context) : SecretBytes(pair.plainKey.begin(), pair.plainKey.end());
        result.pairs.push_back(issueFor(crypto, issuing, pair.purpose, application.idNumber, std::move(key),
                                        pair.certificate.get()));
    }
    result.authorities = issuing.finish(authority.get());
    restoreOrder(result.pairs, pairs);
    return result;
}

void revokePairs(Context& context, const CmpServer& server, int reason, const std::vector<CmpPair>& pairs)
{
    requireReason(reason);
    const std::vector<OpenPair> open = openPairs(context.crypto(), pairs);
    CmpExchange exchange(context, server, {}, signerOf(open));
    std::vector<X509*> certificates;
    certificates.reserve(open.size());
    for (const OpenPair& pair : open)
        certificates.push_back(pair.certificate.get());
    exchange.revokeAll(certificates, reason);
}

CmpPair recoverPair(Context& context, const CmpServer& server, const CmpSecret& secret,
                    const CmpPair& signing)
{
    const Crypto& crypto = context.crypto();
    const CmpSigner holder = signerOf(openPairs(crypto, {signing}));
    require(EVP_PKEY_is_a(holder.key.get(), "RSA") == 1, Code::KeyUnsuitable);
    CmpExchange exchange(context, server, secret, {});
    const RecoveryContent content = recoveryContent(exchange.recover(holder));
    constexpr int grantedWithMods = 1;
    if (content.status < 0 || content.status > grantedWithMods)
        throw Failure(Code::CmpRefused, context.charset().fromUtf8(content.statusText));
    const RecoveredPair& pair = newestPair(content.pairs);
    SecretBytes key = openEncryptedValue(crypto, pair.encryptedKey, holder.key.get());
    requireRecovered(crypto, holder.certificate.get(), pair.certificate, key);
    return {PairPurpose::Management, pair.certificate, std::move(key)};
}

} // namespace qgtk
