#include "toolkit/core/Pkcs12Pairs.h"

#include <algorithm>

#include "toolkit/core/CertificateText.h"
#include "toolkit/core/KeyObjects.h"
#include "toolkit/core/RsaPair.h"

namespace qgtk {

namespace {

/** A key that a function decodes; null when it is of an unknown kind. */
template <typename Decode>
KeyHandle nullWhenUnknown(Decode&& decode)
{
    try {
        return decode();
    } catch (const Failure&) {
        return nullptr;
    }
}

/** Finds the key of a certificate. Keys are decoded once, when the first certificate asks. */
class KeyFinder
{
public:
    KeyFinder(const Crypto& crypto, const std::vector<PfxKey>& keys) : m_crypto(crypto), m_keys(keys) {}

    /** The key that fits; null when none does. */
    const PfxKey* keyOf(const Certificate& certificate)
    {
        bool isCertain = true;
        for (const PfxKey& key : m_keys) {
            const std::optional<bool> answer = rsaPairFits(certificate, key.plain);
            if (answer.value_or(false))
                return &key;
            isCertain = isCertain && answer.has_value();
        }
        return isCertain ? nullptr : decodedKeyOf(certificate);
    }

private:
    const PfxKey* decodedKeyOf(const Certificate& certificate)
    {
        const KeyHandle publicKey = nullWhenUnknown([&] { return keyOfCertificate(m_crypto, certificate); });
        if (!publicKey)
            return nullptr;
        decode();
        for (std::size_t i = 0; i < m_keys.size(); ++i)
            if (m_decoded[i] && EVP_PKEY_eq(m_decoded[i].get(), publicKey.get()) == 1)
                return &m_keys[i];
        return nullptr;
    }

    void decode()
    {
        if (m_decoded.size() == m_keys.size())
            return;
        for (const PfxKey& key : m_keys)
            m_decoded.push_back(nullWhenUnknown([&] { return privateKeyFrom(m_crypto, key.plain); }));
    }

    const Crypto& m_crypto;
    const std::vector<PfxKey>& m_keys;
    std::vector<KeyHandle> m_decoded;
};

bool claimsAuthority(const Certificate& certificate)
{
    using Constraints = Handle<BASIC_CONSTRAINTS, BASIC_CONSTRAINTS_free>;
    try {
        const auto constraints = extensionOf<Constraints>(certificate, NID_basic_constraints);
        if (constraints && constraints->ca)
            return true;
    } catch (const Failure&) {
        return false;
    }
    return std::ranges::equal(certificate.issuerDer(), certificate.subjectDer());
}

bool hasKeyById(const PfxCertificate& certificate, const std::vector<PfxKey>& keys)
{
    return !certificate.localKeyId.empty() &&
           std::ranges::find(keys, certificate.localKeyId, &PfxKey::localKeyId) != keys.end();
}

bool maySign(const Certificate& certificate, Charset& charset)
{
    const std::string usage = keyUsageOf(certificate, charset);
    return usage.empty() || usage.find("digitalSignature") != std::string::npos ||
           usage.find("nonRepudiation") != std::string::npos;
}

} // namespace

PfxLists sortPfx(const Crypto& crypto, const PfxContents& contents)
{
    PfxLists lists;
    KeyFinder finder(crypto, contents.keys);
    for (const PfxCertificate& entry : contents.certificates) {
        const Certificate certificate(entry.der);
        const bool isIssuer =
            claimsAuthority(certificate) && !hasKeyById(entry, contents.keys) && !finder.keyOf(certificate);
        (isIssuer ? lists.authorities : lists.holders).push_back(entry.der);
    }
    for (const PfxKey& key : contents.keys)
        lists.keys.push_back(key.plain);
    return lists;
}

PfxHolder holderOf(const Crypto& crypto, const PfxContents& contents, Charset& charset)
{
    PfxHolder holder;
    KeyFinder finder(crypto, contents.keys);
    for (const PfxCertificate& entry : contents.certificates) {
        const Certificate certificate(entry.der);
        PfxPair& place = maySign(certificate, charset) ? holder.signing : holder.management;
        if (!place.key.empty())
            continue;
        if (const PfxKey* key = finder.keyOf(certificate))
            place = {entry.der, key->plain};
    }
    require(!holder.signing.key.empty() || !holder.management.key.empty(), Code::PfxNoPair);
    return holder;
}

} // namespace qgtk
