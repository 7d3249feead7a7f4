#pragma once

#include "toolkit/core/Crypto.h"

namespace qgtk {

/**
 * HMAC (RFC 2104) with OpenSSL's name of the hash; a key of any length, empty included. Throws
 * CryptoUnavailable.
 */
SecretBytes macOf(const Crypto& crypto, const char* digest, ByteView key, ByteView data);

/** Throws MacWrong unless mac is the whole code of the data; the time taken does not tell how much of it is.
 */
void checkMac(const Crypto& crypto, const char* digest, ByteView key, ByteView data, ByteView mac);

} // namespace qgtk
