#pragma once

#include "toolkit/core/Bytes.h"

namespace qgtk {

/** Base64 of some bytes, in one line. Wiped like them, since they may be a key. */
SecretBytes base64Encode(ByteView bytes);

/** Bytes of a Base64 text; white space anywhere is passed over. Throws Base64Damaged, for an empty text too.
 */
SecretBytes base64Decode(ByteView text);

} // namespace qgtk
