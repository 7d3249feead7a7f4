#pragma once

#include "toolkit/core/Charset.h"
#include "toolkit/core/Pkcs12Pairs.h"

namespace qgtk {

/** For whom a PFX file is written. */
enum class PfxProfile
{
    Strong,    /**< PBES2 with AES-256 and PBKDF2 with HMAC-SHA-256; integrity check with SHA-256 */
    Compatible /**< 3DES and an integrity check with SHA-1, for receivers of before 2010 */
};

/** The profile behind the option that callers give: 0 strong, 1 compatible. Throws NotSupported. */
PfxProfile profileOfOption(int option);

/**
 * Pairs each certificate of a list with the key that fits, wherever in their list keys stand. Throws
 * BadArgument when the lists are empty or not of one length, CertDamaged, KeyNotPlain, and KeyMismatch, also
 * for a key that fits no certificate: it would be lost.
 */
std::vector<PfxPair> matchPairs(const Crypto& crypto, const std::vector<ByteView>& certificates,
                                const std::vector<ByteView>& keys);

/**
 * Writes a PFX file of pairs that belong together, see matchPairs, and of certificates of issuers; one that
 * is in a pair already is left out. Certificates are encrypted too. Certificate and key of a pair have the
 * SHA-1 of the public key as localKeyID, as files of the field have it, and the holder's common name as
 * friendlyName. A key is encrypted as it stands, attributes and all. The password may be UTF-8 or EUC-KR, see
 * writtenReading.
 *
 * Throws CertDamaged, CryptoUnavailable.
 */
Bytes writePfx(const Crypto& crypto, Charset& charset, const std::vector<PfxPair>& pairs,
               const std::vector<ByteView>& authorities, std::string_view password, PfxProfile profile,
               int iterations);

} // namespace qgtk
