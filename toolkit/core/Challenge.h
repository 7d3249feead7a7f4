#pragma once

#include "toolkit/core/CmsSigned.h"

namespace qgtk {

/*
 * Proof that somebody holds the key of a certificate, now. A challenge is a fixed label and 32 random bytes;
 * the response is a signed message (CMS) that carries the challenge. The label keeps a responder from being
 * made to sign something else. The context that made a challenge takes one right response to it.
 */

/** A fresh challenge. A context keeps the last thousand that are not answered. */
Bytes makeChallenge(Context& context);

/** The response to a challenge. Throws ChallengeDamaged, and as signMessage. */
Bytes answerChallenge(Context& context, const RequestSigner& signer, ByteView challenge);

/**
 * Checks a response against its challenge and the certificate of who is to answer. Throws ChallengeDamaged,
 * ChallengeUnknown (not made by this context, or answered before), ResponseOther, ResponseForeign, and as
 * verifyMessage.
 */
void checkResponse(Context& context, int options, ByteView response, ByteView challenge,
                   ByteView certificate);

} // namespace qgtk
