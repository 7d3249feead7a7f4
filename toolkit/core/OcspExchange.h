#pragma once

#include "toolkit/core/Ocsp.h"

namespace qgtk {

/**
 * A request, DER, about the certificates of a list, with a nonce (RFC 6960). Their issuers are looked for as
 * for a path, and kept by the context for verifying the answer. Throws CertListDamaged, CertDamaged,
 * IssuerMissing.
 */
Bytes makeStatusRequest(Context& context, ByteView certificates, const RequestSigner& signer);

/**
 * Posts a request and gives the response, DER and unverified. An empty address asks the responder that the
 * certificate names; the certificate is not looked at otherwise. Throws OcspRequestDamaged, CertDamaged,
 * OcspMissing and the codes of Network::post.
 */
Bytes exchangeStatus(Context& context, const std::string& url, ByteView certificate, ByteView request);

/** What a response says, in the request's order. */
struct StatusReport
{
    std::vector<OcspStatus> statuses;
    Bytes responder; /**< DER of the certificate that signed the response */
};

/**
 * Verifies a response to a request. The issuer of the certificates is one of those that the context kept,
 * trusts or was given; its path must be valid up to a trusted root. Throws OcspRequestDamaged, ReplyDamaged,
 * IssuerMissing, the Ocsp codes and those of a path.
 */
StatusReport verifyStatusResponse(Context& context, ByteView request, ByteView response);

} // namespace qgtk
