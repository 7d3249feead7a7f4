#pragma once

#include "toolkit/core/Bytes.h"

namespace qgtk {

/**
 * PEM (RFC 7468) of one DER structure, with a label by its number in quillgate/algorithms.h and lines of 64
 * characters that end in a line feed. Throws AlgorithmCodeUnknown, PemContent.
 */
SecretBytes pemEncode(int type, ByteView der);

/**
 * The content of the first PEM block of a text, whatever its label; text around it is passed over. Throws
 * PemDamaged, also for the encrypted form that has header lines.
 */
SecretBytes pemDecode(ByteView text);

} // namespace qgtk
