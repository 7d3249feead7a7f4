#pragma once

#include "toolkit/core/PrivateKey.h"

namespace qgtk {

/**
 * The protection behind the number that callers give for a key's encryption, always PBES2 with PBKDF2 and
 * HMAC-SHA-256: 64 AES-256, which every program reads; 48 SEED, which every program of the Korean PKIs reads;
 * 224 ARIA-256. Throws AlgorithmCodeUnknown.
 */
KeyProtection protectionOfCode(int symAlg, int iterations);

/** Throws AlgorithmCodeUnknown unless the number is one of a hash: 1 SHA-1, 4 SHA-256, 5 SHA-512. */
void checkHashCode(int hashAlg);

} // namespace qgtk
