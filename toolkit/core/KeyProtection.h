#pragma once

#include "toolkit/core/PrivateKey.h"

namespace qgtk {

/** A cipher with all that it takes to run it. */
struct CipherSetup
{
    CipherHandle cipher;
    SecretBytes key;
    SecretBytes iv;
};

/**
 * Reads an AlgorithmIdentifier and derives key and initial value from the password. Throws as decryptKey.
 */
CipherSetup setupFromAlgorithm(const Crypto& crypto, const X509_ALGOR* algorithm, std::string_view password,
                               int maxIterations);

/**
 * Derives a key as an AlgorithmIdentifier of PBKDF2 says, with everything checked before any work is done.
 * Throws as decryptKey.
 */
SecretBytes derivePbkdf2(const Crypto& crypto, const X509_ALGOR* keyFunction, std::string_view password,
                         int maxIterations, int keyLength);

/** OpenSSL's name of the digest of an HMAC. Throws KeyAlgorithmUnknown. */
const char* hmacDigest(const ASN1_OBJECT* object);

/** Makes the AlgorithmIdentifier of a protection with fresh salt and initial value. Throws as encryptKey. */
AlgorithmHandle makeAlgorithm(const Crypto& crypto, const KeyProtection& protection);

/** The cipher that an AlgorithmIdentifier names. Throws KeyDamaged, KeyAlgorithmUnknown. */
KeyCipher cipherOfAlgorithm(const X509_ALGOR* algorithm);

} // namespace qgtk
