#pragma once

#include <memory>

#include <openssl/types.h>

#include "samplepki/Der.h"

namespace samplepki {

enum class KeyKind
{
    Rsa1024,
    Rsa2048,
    Rsa4096,
    EcP256,
};

/**
 * A key pair and the random value that the identity value of its certificate is made with. Copies share the
 * key, so that handing one around is cheap. These are throw-away keys of samples: nothing is wiped.
 */
class KeyPair
{
public:
    /** Makes a new key with a random value of 20 bytes. RSA takes from 0.1 to some seconds: tests take
     * KeyPool::key. */
    static KeyPair generate(KeyKind kind);

    /** The same key with another random value; an empty one leaves the attribute out of privateKeyInfo(). */
    KeyPair withRandom(const Bytes& random) const;

    /** The random value; empty when the key carries none. */
    const Bytes& random() const { return m_random; }

    /** Plain PKCS#8 PrivateKeyInfo in DER, with the attribute id-randomNum when there is a random value. */
    Bytes privateKeyInfo() const;

    /** SubjectPublicKeyInfo in DER. */
    const Bytes& publicKeyInfo() const { return m_publicKeyInfo; }

    /** SHA-1 of the public key's BIT STRING: the usual key identifier, 20 bytes. */
    const Bytes& identifier() const { return m_identifier; }

    /** The key itself, borrowed. */
    EVP_PKEY* get() const { return m_key.get(); }

private:
    std::shared_ptr<EVP_PKEY> m_key;
    Bytes m_publicKeyInfo;
    Bytes m_identifier;
    Bytes m_random;
};

/** Keys that live as long as the process, so that a test of twenty certificates generates a few. */
class KeyPool
{
public:
    /** The key of a kind and number; made at the first call, the same one ever after. Not for several
     * threads. */
    static const KeyPair& key(KeyKind kind = KeyKind::Rsa2048, unsigned number = 0);
};

} // namespace samplepki
