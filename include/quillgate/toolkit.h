#ifndef QUILLGATE_TOOLKIT_H
#define QUILLGATE_TOOLKIT_H

/*
 * Toolkit access: one flat set of functions over the two cryptographic libraries that are loaded at run time.
 *
 * Rules for all of them:
 * - The first parameter is the context of ZR_Initalize; null answers 10001.
 * - Arguments are tested before the side is looked at: a bad argument answers 10003 or 10004, as each
 * function says, also on a side that does not offer the operation. "Without x" means: x is null, or for a
 * byte string null, without bytes or of length 0. Arguments that are not named go to the library untested.
 * - A side that does not offer the operation, and a library that lacks it, answer 10005. While the library is
 * not loaded every call answers 20011 (ZR side) or 20012 (GPKI side). Any other number is the library's own.
 * - An output BINSTR* is zeroed and passed to ZR_BINSTR_Create by the caller, filled by the library, and
 * released with ZR_BINSTR_Delete. An output without a size parameter is the caller's promise that it is large
 * enough.
 * - Text passes byte for byte, nothing is converted. A context belongs to one thread at a time.
 */

#include "quillgate/algorithms.h"
#include "quillgate/returncodes.h"
#include "quillgate/toolkit_certificate.h"
#include "quillgate/toolkit_crypto.h"
#include "quillgate/toolkit_frame.h"
#include "quillgate/toolkit_key.h"
#include "quillgate/toolkit_media.h"
#include "quillgate/toolkit_message.h"
#include "quillgate/toolkit_protocol.h"
#include "quillgate/toolkit_token.h"
#include "quillgate/toolkit_utility.h"

#endif
