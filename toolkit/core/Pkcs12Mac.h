#pragma once

#include "toolkit/core/Crypto.h"
#include "toolkit/core/Pkcs12Password.h"
#include "toolkit/core/Pkcs12Structures.h"
#include <optional>

namespace qgtk {

/** The iterations that a PFX file's integrity check asks for. Throws PfxAlgorithm, PfxTooCostly. */
std::int64_t macIterations(const MacParts* mac);

/**
 * The reading of a password under which the check of a PFX file's content comes out right, by its number;
 * nothing when none does. The check is RFC 7292's with any digest that OpenSSL has, or PBMAC1 (RFC 9579).
 * Throws PfxAlgorithm.
 */
std::optional<std::size_t> verifyMac(const Crypto& crypto, const MacParts* mac, ByteView content,
                                     const std::vector<PasswordReading>& readings);

/** Makes the check of a content with a fresh salt. The digest is by OpenSSL's name. */
void makeMac(const Crypto& crypto, PfxParts* pfx, ByteView content, const PasswordReading& password,
             const char* digest, int iterations);

} // namespace qgtk
