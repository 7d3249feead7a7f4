#pragma once

#include "toolkit/core/CmsSigned.h"

namespace qgtk {

/**
 * Messages of the pair with an identifier on the token of the context's session. What needs the private key
 * is done there; the certificate is the token's. They throw NoTokenSession, TokenLoggedOut,
 * TokenObjectMissing (key or certificate), KeyMismatch, KeyUnsuitable (what the key is not made for),
 * NotSupported (what the token lacks), TokenRemoved, ModuleFailed, and as the operations below.
 */

/** As signMessage. */
Bytes signMessageOnToken(Context& context, ByteView id, const SigningForm& form, ByteView content);

/** As openEnvelope. */
SecretBytes openEnvelopeOnToken(Context& context, ByteView id, ByteView message);

/** As signAndEnvelope. */
Bytes signAndEnvelopeOnToken(Context& context, ByteView id, const SigningForm& form, ByteView recipients,
                             int cipher, ByteView content);

/** As openSignedEnvelope. */
SecretBytes openSignedEnvelopeOnToken(Context& context, ByteView id, ByteView message, int options);

} // namespace qgtk
