#pragma once

#include "toolkit/core/Certificate.h"

namespace qgtk {

/**
 * Whether an RSA certificate and a plain RSA key (PrivateKeyInfo, DER) have modulus and exponent in common;
 * nothing when either is of another kind or not well formed. OpenSSL compares the same numbers, and takes a
 * millisecond to decode both keys. Throws KeyNotPlain.
 */
std::optional<bool> rsaPairFits(const Certificate& certificate, ByteView plainKey);

} // namespace qgtk
