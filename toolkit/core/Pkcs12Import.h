#pragma once

#include <vector>

#include "toolkit/core/Crypto.h"
#include "toolkit/core/Errors.h"

namespace qgtk {

/** A certificate of a PFX file. */
struct PfxCertificate
{
    Bytes der;
    Bytes localKeyId; /**< empty when it has none */
};

/** A key of a PFX file. */
struct PfxKey
{
    SecretBytes plain; /**< PrivateKeyInfo as it was encrypted, byte for byte, attributes and all */
    Bytes localKeyId;  /**< empty when it has none */
};

/** What a PFX file holds, each in the file's order. */
struct PfxContents
{
    std::vector<PfxCertificate> certificates;
    std::vector<PfxKey> keys;
};

/** What is asked of a file that was written without an integrity check. */
enum class PfxIntegrity
{
    Required,   /**< it is refused */
    WhenPresent /**< it is read */
};

/** Bytes of a PFX file above which it is refused. */
inline constexpr std::size_t maxPfxLength = 1 << 20;

/**
 * Reads a PFX file (RFC 7292, DER or BER) with a password in UTF-8 or EUC-KR, see passwordReadings. A random
 * value among the attributes of a key's bag goes into the attributes of a key that has none. Revocation lists
 * and secrets are passed over.
 *
 * maxIterations is for the sum of all iteration counts of the file. It is checked before any work as far as
 * the counts are in the clear, and before any key is opened for those inside encrypted parts.
 *
 * Throws FileTooLarge, PfxDamaged, PfxAlgorithm, PfxTooCostly (also for more than 1,000 bags), PfxNoMac,
 * WrongPfxPassword (the integrity check fails; without one, nothing comes out right), CryptoUnavailable.
 */
PfxContents readPfx(const Crypto& crypto, ByteView file, std::string_view password, PfxIntegrity integrity,
                    int maxIterations);

} // namespace qgtk
