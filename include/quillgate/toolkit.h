#ifndef QUILLGATE_TOOLKIT_H
#define QUILLGATE_TOOLKIT_H

/**
 * @file
 * Toolkit access: all of its families.
 */

/**
 * @defgroup toolkit Toolkit access
 *
 * One flat set of functions over the two cryptographic libraries that are loaded at run time: the main
 * toolkit (the ZR side) and the government PKI library (the GPKI side).
 *
 * Rules for all of them:
 * - The first parameter is the context of ZR_Initalize. Both sides offer an operation unless it
 *   says "ZR side only" or "GPKI side only".
 * - Answers that all share: 0; 10001 for a null context; 10005 on a side that does not offer the
 *   operation and from a library that lacks it; 20011 (ZR side) or 20012 (GPKI side) while the
 *   library is not loaded; and any other number is the library's own, unchanged. A failure's text
 *   is kept for ZR_GetErrInfo2. On a refused argument, a missing operation or a missing library no
 *   output is touched, but for what ZR_GetErrInfo and ZR_GetVersion say.
 * - Arguments are tested first: a bad one answers 10003 or 10004, as each function says, whether or
 *   not the library is loaded or offers the operation. Tests "on the ZR side" or "on the GPKI side"
 *   come after that and on this side alone. "Without x" means: x is null, or for a byte string
 *   null, without bytes or of length 0; "at least 1 byte": or of a negative length. "A null x"
 *   looks at the pointer alone. Arguments that are not named go to the library untested.
 * - An output BINSTR* is zeroed and passed to ZR_BINSTR_Create by the caller, filled by the
 *   library, and released by the caller with ZR_BINSTR_Delete. An output without a size parameter
 *   is the caller's promise that it is large enough. Passwords and outputs called a secret are the
 *   caller's to wipe.
 * - Text passes byte for byte, nothing is converted. The open toolkit takes and gives EUC-KR, and
 *   paths as they are. "Plain PKCS#8" is a PrivateKeyInfo (RFC 5208). A list of certificates is DER
 *   certificates one behind the other.
 * - Numbers of algorithms, types and options are the library's. The named constants here are those
 *   of the open toolkit, whose own codes and forms of texts stand in docs/toolkit.md.
 * - A context belongs to one thread at a time.
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
