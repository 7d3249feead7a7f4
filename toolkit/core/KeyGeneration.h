#pragma once

#include "toolkit/core/Crypto.h"

namespace qgtk {

/** Both halves of a new pair, DER. */
struct GeneratedPair
{
    SecretBytes privateKey; /**< PrivateKeyInfo */
    Bytes publicKey;        /**< SubjectPublicKeyInfo */
};

/** Makes a pair by its number in quillgate/algorithms.h. Throws AlgorithmCodeUnknown, CryptoUnavailable. */
GeneratedPair generatePair(const Crypto& crypto, int algorithm);

} // namespace qgtk
