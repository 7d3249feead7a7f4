#pragma once

#include "toolkit/core/DataInput.h"
#include "toolkit/core/KeyObjects.h"
#include "toolkit/core/RsaScheme.h"

namespace qgtk {

/** How a signature is made. */
struct SignatureForm
{
    const char* digest; /**< OpenSSL's name */
    RsaScheme rsa;      /**< PSS has the hash for its mask too and a salt of the digest's length */
};

/**
 * Signs data with an RSA or elliptic curve key (ECDSA, DER). Throws KeyUnsuitable (a key that signs nothing,
 * or is too short for the hash), and as DataInput does.
 */
Bytes signData(const Crypto& crypto, const KeyHandle& key, const SignatureForm& form, const DataInput& data);

/** Throws SignatureWrong unless the signature is the data's; PSS with a salt of any length. Else as signData.
 */
void verifyData(const Crypto& crypto, const KeyHandle& key, const SignatureForm& form, const DataInput& data,
                ByteView signature);

} // namespace qgtk
