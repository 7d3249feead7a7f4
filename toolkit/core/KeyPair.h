#pragma once

#include "toolkit/core/Certificate.h"
#include "toolkit/core/Crypto.h"

namespace qgtk {

/**
 * Checks that a certificate and a plain private key (PrivateKeyInfo, DER) belong together. Throws
 * KeyMismatch, KeyNotPlain, CertPublicKeyUnknown.
 */
void checkKeyPair(const Crypto& crypto, const Certificate& certificate, ByteView plainKey);

} // namespace qgtk
