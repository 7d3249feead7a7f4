#pragma once

#include "toolkit/core/PrivateKey.h"

namespace qgtk {

/**
 * The random value R out of the attributes of a PrivateKeyInfo (DER). Throws KeyNotPlain, NoKeyRandom.
 */
SecretBytes keyRandom(ByteView plain);

/** The random value among some attributes; empty when there is none. */
SecretBytes randomAmong(const STACK_OF(X509_ATTRIBUTE) * attributes);

/**
 * Adds a random value to the attributes of a PrivateKeyInfo (DER), trailing zero bits kept. A key that has an
 * attribute of this kind, of use or not, stays as it is. Throws KeyNotPlain.
 */
SecretBytes withKeyRandom(ByteView plain, ByteView random);

} // namespace qgtk
