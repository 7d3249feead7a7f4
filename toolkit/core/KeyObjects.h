#pragma once

#include "toolkit/core/Certificate.h"
#include "toolkit/core/Crypto.h"

namespace qgtk {

using KeyRun = Handle<EVP_PKEY_CTX, EVP_PKEY_CTX_free>;

/** The key of a certificate. Throws CertPublicKeyUnknown. */
KeyHandle keyOfCertificate(const Crypto& crypto, const Certificate& certificate);

/**
 * A public key, given as a certificate or a SubjectPublicKeyInfo (DER). Throws PublicKeyDamaged,
 * CertPublicKeyUnknown.
 */
KeyHandle publicKeyFrom(const Crypto& crypto, ByteView certificateOrKey);

/** A private key, given as a plain PrivateKeyInfo (DER). Throws KeyNotPlain. */
KeyHandle privateKeyFrom(const Crypto& crypto, ByteView plain);

/** Throws KeyMismatch unless both are halves of one pair. */
void requirePair(const KeyHandle& publicKey, const KeyHandle& privateKey);

/** What an operation with a key runs in. */
KeyRun runWith(const Crypto& crypto, const KeyHandle& key);

} // namespace qgtk
