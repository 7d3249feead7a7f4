#pragma once

#include <string_view>

#include "toolkit/core/Crypto.h"
#include "toolkit/core/Errors.h"

namespace qgtk {

/** Wipes the attribute values that are bit strings, as the random value is. */
void wipeAttributes(const STACK_OF(X509_ATTRIBUTE) * attributes);

/** Frees a key structure after wiping what OpenSSL would leave: the attributes hold the random value. */
void freePlainKey(PKCS8_PRIV_KEY_INFO* key);

using PlainKeyHandle = Handle<PKCS8_PRIV_KEY_INFO, freePlainKey>;

/** How the cipher's key and initial value come from the password. */
enum class KeyScheme
{
    Pbkdf1Seed,    /**< 1.2.410.200004.1.15: PBKDF1 with SHA-1, SEED, initial value derived too */
    Pbkdf1SeedOld, /**< 1.2.410.200004.1.4 as the scheme itself: the same with a fixed initial value */
    Pbes2          /**< 1.2.840.113549.1.5.13: PBKDF2 and one of the ciphers */
};

/** Ciphers of PBES2, all in CBC mode. */
enum class KeyCipher
{
    Seed,
    Aria128,
    Aria192,
    Aria256,
    Aes128,
    Aes192,
    Aes256,
    TripleDes
};

/** Pseudo-random functions of PBKDF2: HMAC with this digest. */
enum class KeyPrf
{
    Sha1,
    Sha224,
    Sha256,
    Sha384,
    Sha512
};

/** Iterations that keys of ours are written with: some 50 milliseconds. */
inline constexpr int defaultIterations = 200'000;

/** Iterations above which a key is refused unless the configuration says otherwise: seconds of work. */
inline constexpr int defaultMaxIterations = 5'000'000;

/** How a key is to be encrypted. */
struct KeyProtection
{
    KeyScheme scheme = KeyScheme::Pbes2;
    KeyCipher cipher = KeyCipher::Aes256; /**< PBES2 alone; the others are SEED */
    KeyPrf prf = KeyPrf::Sha256;          /**< PBES2 alone */
    int iterations = defaultIterations;   /**< at least 1 */
    int saltLength = 16;                  /**< bytes, 1 to 1024; the older schemes have 8 in the field */
};

/**
 * Opens an EncryptedPrivateKeyInfo (DER). The password is taken as raw bytes and may be empty.
 *
 * Returns the PrivateKeyInfo (DER) as it was encrypted, attributes and all, byte for byte. Throws KeyDamaged
 * (not such a structure, or cut), KeyAlgorithmUnknown, KeyParameters (salt, iteration count, key length or
 * initial value no writer would give), KeyTooCostly (before any work), WrongPassword (padding or content do
 * not come out right), CryptoUnavailable.
 */
SecretBytes decryptKey(const Crypto& crypto, ByteView encrypted, std::string_view password,
                       int maxIterations = defaultMaxIterations);

/**
 * Encrypts a PrivateKeyInfo (DER) with a fresh salt. Returns an EncryptedPrivateKeyInfo (DER). Throws
 * KeyNotPlain, KeyParameters (iterations or salt length out of range), CryptoUnavailable.
 */
Bytes encryptKey(const Crypto& crypto, ByteView plain, std::string_view password,
                 const KeyProtection& protection);

/** An EncryptedPrivateKeyInfo of what has been encrypted. Throws std::bad_alloc. */
EncryptedKeyHandle makeSealedKey(const X509_ALGOR* algorithm, ByteView cipherText);

/** The cipher that an EncryptedPrivateKeyInfo (DER) names. Throws KeyDamaged, KeyAlgorithmUnknown. */
KeyCipher cipherOfKey(ByteView encrypted);

/** Says whether the bytes hold a PrivateKeyInfo (DER). */
bool isPlainKey(ByteView bytes);

/** Decodes a PrivateKeyInfo. Throws KeyNotPlain. The handle wipes the key when it goes. */
PlainKeyHandle decodePlainKey(ByteView plain);

} // namespace qgtk
