#pragma once

#include "toolkit/core/KeyObjects.h"

namespace qgtk {

/** Ways to agree on a secret. */
enum class Agreement
{
    EllipticCurve, /**< ECDH (SEC 1, 3.3.1): the common point's x, as long as the curve's field */
    FiniteField    /**< DH (RFC 2631, 2.1.2): the common number, as long as the prime */
};

/**
 * The secret that the holders of two pairs have in common, as it is: a key is yet to be derived from it. The
 * other's key is validated. Throws KeyUnsuitable: not the way's kind of key, of other groups, or no valid
 * public key.
 */
SecretBytes agreedSecret(const Crypto& crypto, Agreement way, const KeyHandle& privateKey,
                         const KeyHandle& publicKey);

} // namespace qgtk
