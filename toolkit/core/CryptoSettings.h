#pragma once

#include <optional>

#include "toolkit/core/RsaScheme.h"
#include "toolkit/core/SymmetricCipher.h"

namespace qgtk {

/** What a caller sets for the raw cryptography that follows. */
struct CryptoSettings
{
    std::optional<CipherKey> cipherKey; /**< of the symmetric operations */
    bool pads = true;                   /**< see CipherPass */
    RsaScheme rsa = RsaScheme::V15;
};

} // namespace qgtk
