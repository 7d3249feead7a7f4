#pragma once

#include "toolkit/core/OcspMessages.h"

namespace qgtk {

/** A responder's verdict, when it is a good one or a revocation. */
struct OcspAnswer
{
    RevocationEntry entry;
    Bytes responder; /**< DER of the certificate that signed the answer */
};

/**
 * Asks a responder about one certificate of a validated path, by its place on it; an empty address asks the
 * certificate's own responder. Only the issuer, or who holds its certificate for signing answers, is
 * believed. What it says of the certificate goes into answer. Throws CertRevoked, the Ocsp codes and those of
 * Network::post.
 */
void checkByResponder(Context& context, Network& network, const X509Stack& path, int place,
                      const std::string& url, const RequestSigner& signer, OcspAnswer& answer);

} // namespace qgtk
