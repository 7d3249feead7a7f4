#pragma once

#include "toolkit/core/CmsObjects.h"

namespace qgtk {

/**
 * A signed message with a time stamp token (RFC 3161, appendix A) for one of its signers, in place of what
 * the signer has. The signatures are not verified. Throws MessageKind, MessageIndex, TokenDamaged,
 * TokenForeign (the token is not over this signer's signature), CryptoUnavailable.
 */
Bytes withTimeStamp(const Crypto& crypto, ByteView message, int index, ByteView token);

} // namespace qgtk
