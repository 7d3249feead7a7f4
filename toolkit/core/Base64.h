#pragma once

#include <string>

#include "toolkit/core/Bytes.h"

namespace qgtk {

/** Base64 of some bytes, in one line. */
std::string base64Encode(ByteView bytes);

/** Bytes of a Base64 text; white space anywhere is passed over. Throws Base64Damaged, for an empty text too.
 */
SecretBytes base64Decode(ByteView text);

} // namespace qgtk
