#include "samplepki/KeyPair.h"

#include <map>
#include <stdexcept>

#include <openssl/evp.h>
#include <openssl/rand.h>
#include <openssl/sha.h>
#include <openssl/x509.h>

namespace samplepki {

namespace {

constexpr int randomSize = 20;
constexpr const char* randomNumOid = "1.2.410.200004.10.1.1.3";

EVP_PKEY* generateKey(KeyKind kind)
{
    switch (kind) {
    case KeyKind::Rsa1024:
        return EVP_RSA_gen(1024);
    case KeyKind::Rsa2048:
        return EVP_RSA_gen(2048);
    case KeyKind::Rsa4096:
        return EVP_RSA_gen(4096);
    case KeyKind::EcP256:
        return EVP_EC_gen("P-256");
    }
    return nullptr;
}

Bytes newRandom()
{
    Bytes random(randomSize, '\0');
    if (RAND_bytes(reinterpret_cast<unsigned char*>(random.data()), randomSize) != 1)
        throw std::runtime_error("no random bytes");
    return random;
}

/** DER by one of OpenSSL's i2d functions. */
template <typename Object>
Bytes encoded(int (*encode)(Object*, unsigned char**), Object* object)
{
    unsigned char* bytes = nullptr;
    const int length = encode(object, &bytes);
    if (length <= 0)
        throw std::runtime_error("a key can't be encoded");
    const std::unique_ptr<unsigned char, void (*)(unsigned char*)> owner(
        bytes, [](unsigned char* p) { OPENSSL_free(p); });
    return {reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length)};
}

/**
 * The element [0] of a PrivateKeyInfo. Written by hand: OpenSSL's attribute functions drop the trailing zero
 * bits of the BIT STRING, and an identity made with such a random value would never verify.
 */
Bytes randomAttributes(const Bytes& random)
{
    const Bytes values = der::element(der::Set, der::bitString(random));
    return der::context(0, der::sequence({der::oid(randomNumOid), values}));
}

/** The content of a SEQUENCE: what follows its tag and length. */
std::string_view sequenceContent(const Bytes& sequence)
{
    const auto first = static_cast<unsigned char>(sequence[1]);
    return std::string_view(sequence).substr(first < 0x80 ? 2 : 2 + (first & 0x7F));
}

/** SHA-1 of the BIT STRING of a SubjectPublicKeyInfo. */
Bytes keyIdentifier(const Bytes& publicKeyInfo)
{
    const auto* position = reinterpret_cast<const unsigned char*>(publicKeyInfo.data());
    const std::unique_ptr<X509_PUBKEY, decltype(&X509_PUBKEY_free)> key(
        d2i_X509_PUBKEY(nullptr, &position, static_cast<long>(publicKeyInfo.size())), &X509_PUBKEY_free);
    const unsigned char* bits = nullptr;
    int length = 0;
    if (!key || !X509_PUBKEY_get0_param(nullptr, &bits, &length, nullptr, key.get()))
        throw std::runtime_error("a public key can't be read");
    Bytes digest(SHA_DIGEST_LENGTH, '\0');
    SHA1(bits, static_cast<std::size_t>(length), reinterpret_cast<unsigned char*>(digest.data()));
    return digest;
}

} // namespace

KeyPair KeyPair::generate(KeyKind kind)
{
    KeyPair pair;
    pair.m_key.reset(generateKey(kind), &EVP_PKEY_free);
    if (!pair.m_key)
        throw std::runtime_error("a key can't be generated");
    pair.m_publicKeyInfo = encoded<const EVP_PKEY>(&i2d_PUBKEY, pair.get());
    pair.m_identifier = keyIdentifier(pair.m_publicKeyInfo);
    pair.m_random = newRandom();
    return pair;
}

KeyPair KeyPair::withRandom(const Bytes& random) const
{
    KeyPair pair = *this;
    pair.m_random = random;
    return pair;
}

Bytes KeyPair::privateKeyInfo() const
{
    const std::unique_ptr<PKCS8_PRIV_KEY_INFO, decltype(&PKCS8_PRIV_KEY_INFO_free)> info(
        EVP_PKEY2PKCS8(get()), &PKCS8_PRIV_KEY_INFO_free);
    Bytes plain = encoded<const PKCS8_PRIV_KEY_INFO>(&i2d_PKCS8_PRIV_KEY_INFO, info.get());
    if (m_random.empty())
        return plain;
    return der::element(der::Sequence, {sequenceContent(plain), randomAttributes(m_random)});
}

const KeyPair& KeyPool::key(KeyKind kind, unsigned number)
{
    static std::map<std::pair<KeyKind, unsigned>, KeyPair> keys;
    const auto id = std::pair(kind, number);
    const auto found = keys.find(id);
    return found != keys.end() ? found->second : keys.emplace(id, KeyPair::generate(kind)).first->second;
}

} // namespace samplepki
