#pragma once

#include <string>

#include "toolkit/core/PrivateKey.h"

namespace qgtk {

/**
 * The protection behind the number that callers give for a key's encryption, always PBES2 with PBKDF2 and
 * HMAC-SHA-256: 64 AES-256, which every program reads; 48 SEED, which every program of the Korean PKIs reads;
 * 224 ARIA-256. Throws AlgorithmCodeUnknown.
 */
KeyProtection protectionOfCode(int symAlg, int iterations);

/** OpenSSL's name of a hash, by a number of quillgate/algorithms.h but 0. Throws AlgorithmCodeUnknown. */
const char* digestOfCode(int hashAlg);

/** OpenSSL's name of a cipher in a mode, by the sum of both numbers. Throws AlgorithmCodeUnknown. */
std::string cipherOfCode(int symAlg);

} // namespace qgtk
