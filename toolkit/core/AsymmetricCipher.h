#pragma once

#include "toolkit/core/KeyObjects.h"
#include "toolkit/core/RsaScheme.h"

namespace qgtk {

/** How RSA encrypts. */
struct EncryptionForm
{
    RsaScheme rsa;
    const char* oaepDigest; /**< OpenSSL's name; for the label and the mask of OAEP */
};

/** Encrypts with a public RSA key. Throws KeyUnsuitable (no RSA key), DataLength (too long for the key). */
SecretBytes encryptFor(const Crypto& crypto, const KeyHandle& publicKey, const EncryptionForm& form,
                       ByteView data);

/**
 * Decrypts with the private key. Throws KeyUnsuitable, NotDecryptable: one code for every fault of the data,
 * so that it tells no more than that. Whoever decrypts for strangers by version 1.5 must not tell them even
 * that: each answer is a step towards the content (RFC 8017, section 7.2).
 */
SecretBytes decryptWith(const Crypto& crypto, const KeyHandle& privateKey, const EncryptionForm& form,
                        ByteView data);

/**
 * Encrypts with a private RSA key: the padding of a signature (RFC 8017, section 9.2) around the bare data.
 * Throws KeyUnsuitable, DataLength, NotSupported for version 2, which has no such form.
 */
SecretBytes encryptWithPrivate(const Crypto& crypto, const KeyHandle& privateKey, const EncryptionForm& form,
                               ByteView data);

/** Takes that off again with the public key. Throws KeyUnsuitable, NotDecryptable, NotSupported. */
SecretBytes decryptWithPublic(const Crypto& crypto, const KeyHandle& publicKey, const EncryptionForm& form,
                              ByteView data);

} // namespace qgtk
