#pragma once

#include "toolkit/core/CmpPairs.h"

namespace qgtk {

/** A pair by its identifier on the token of the context's session. */
struct TokenPairId
{
    PairPurpose purpose;
    SecretBytes id;
};

/*
 * The exchanges of CmpPairs.h with pairs that are on the token. New ones are made there, with an identifier
 * of 20 random bytes unless one is given; their certificates are written beside them. A failure leaves
 * nothing new on the token. They throw as those do, and NoTokenSession, TokenLoggedOut, TokenObjectMissing,
 * TokenObjectExists, and as the token fails.
 */

/** As requestPairs; gives the identifiers. */
std::vector<TokenPairId> requestTokenPairs(Context& context, const CmpApplication& application,
                                           const CmpSecret& secret, const std::vector<PairPurpose>& purposes);

/**
 * As updatePairs. New pairs stand beside the old ones, which may still have to decrypt; with the same keys,
 * the new certificates replace the old ones. Gives the identifiers, in the order given.
 */
std::vector<TokenPairId> updateTokenPairs(Context& context, const CmpApplication& application, bool newKeys,
                                          const std::vector<TokenPairId>& pairs);

/**
 * As updatePairs, of pairs that are not on the token: with new keys that are made on it, else the keys are
 * written to it. Each stands there under the identifier of its purpose.
 */
void movePairsToToken(Context& context, const CmpApplication& application, bool newKeys,
                      const std::vector<CmpPair>& pairs, const std::vector<TokenPairId>& ids);

/** As revokePairs. The pairs stay on the token. */
void revokeTokenPairs(Context& context, const CmpServer& server, int reason,
                      const std::vector<TokenPairId>& pairs);

} // namespace qgtk
