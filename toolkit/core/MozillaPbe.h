#pragma once

#include "toolkit/core/KeyProtection.h"

namespace qgtk {

/** Says whether Mozilla's library has a form of its own of an encryption: PBES1 with DES, and MD2 or SHA-1.
 */
bool hasMozillaForm(const X509_ALGOR* algorithm);

/** Says whether that form is the only one that is read: the one with MD2. */
bool isMozillaOnly(const X509_ALGOR* algorithm);

/**
 * Key and initial value of such an encryption. Mozilla's library departs from RFC 8018, 6.1, in two things:
 * the password is the wide form of PasswordReading, and the initial value is the end of the digest, not what
 * follows the key. With MD2, whose digest is as long as both, the second makes no difference; OpenSSL has no
 * MD2 any more.
 *
 * salt and iterations are those of the parameters, checked before. Throws CryptoUnavailable.
 */
CipherSetup mozillaSetup(const Crypto& crypto, const X509_ALGOR* algorithm, ByteView widePassword,
                         ByteView salt, int iterations);

} // namespace qgtk
