#pragma once

#include <string>

#include "samplepki/Der.h"

namespace samplepki {

/** The ways in which key files of the field are encrypted. */
enum class KeyCipher
{
    Seed,    /**< PBES2, SEED-CBC */
    Aria128, /**< PBES2, ARIA-CBC */
    Aria192,
    Aria256,
    Aes128, /**< PBES2, AES-CBC */
    Aes192,
    Aes256,
    TripleDes,      /**< PBES2, DES-EDE3-CBC */
    SeedPbkdf1,     /**< pbeWithSHA1AndSEED-CBC: PBKDF1, the vector out of the derived key */
    SeedFixedVector /**< id-seedCBC as the encryption itself: PBKDF1 and a vector that is always the same */
};

/** How a key file is encrypted. The hash is PBKDF2's ("SHA1" or "SHA256"); the two oldest forms take SHA-1
 * alone. */
struct KeyFileForm
{
    KeyCipher cipher = KeyCipher::Seed;
    std::string hash = "SHA1";
    unsigned iterations = 2048;
};

/** Bytes of the salt, as the field has it. */
inline constexpr int saltSize = 8;

/**
 * Encrypts a PrivateKeyInfo as a key file: EncryptedPrivateKeyInfo in DER with a new salt. The password is
 * taken byte for byte. Throws std::invalid_argument for an unknown hash, and what qgtk::encryptKey throws.
 */
Bytes encryptKeyFile(const Bytes& privateKeyInfo, const std::string& password, const KeyFileForm& form = {});

} // namespace samplepki
