#pragma once

#include <openssl/ocsp.h>

#include "toolkit/core/OwnContext.h"
#include "toolkit/core/PrivateKey.h"
#include "toolkit/core/Revocation.h"

namespace qgtk {

using OcspAnswerHandle = Handle<OCSP_BASICRESP, OCSP_BASICRESP_free>;
using OcspCertIdHandle = Handle<OCSP_CERTID, OCSP_CERTID_free>;
using OcspRequestHandle = Handle<OCSP_REQUEST, OCSP_REQUEST_free>;
using OcspResponseHandle = Handle<OCSP_RESPONSE, OCSP_RESPONSE_free>;

/** Media type of a request that is posted (RFC 6960, appendix A.1). */
inline constexpr const char* ocspRequestType = "application/ocsp-request";

/** Who signs a request; null certificate: nobody. */
struct RequestSigner
{
    X509Handle certificate;
    KeyHandle key;
};

/** Decodes a signer's certificate and plain private key. Throws CertDamaged, KeyNotPlain, KeyMismatch. */
RequestSigner requestSigner(const Crypto& crypto, ByteView certificate, ByteView plainKey);

/** What responders know a certificate by: hashes of its issuer's name and key, and its serial number. */
OcspCertIdHandle ocspCertId(const Crypto& crypto, X509* certificate, X509* issuer);

/** A request about certificates, with a nonce, signed when there is a signer. An OwnContext must be there. */
OcspRequestHandle makeOcspRequest(const Crypto& crypto, const std::vector<OcspCertIdHandle>& ids,
                                  const RequestSigner& signer);

/** The answer in a response, unverified. Throws ReplyDamaged, OcspRefused. */
OcspAnswerHandle openOcspResponse(ByteView der);

/**
 * Checks an answer's signature, the signer's right to answer, and that the answer is no one else's: path is
 * the validated one of the certificate or of its issuer. The result is whether the answer was made for this
 * very request: a responder that leaves the nonce out answers from its store. Throws OcspUntrusted. An
 * OwnContext must be there.
 */
bool checkOcspAnswer(Context& context, const X509Stack& path, OCSP_REQUEST* request, OCSP_BASICRESP* answer);

/** DER of the certificate that signed an answer; empty when it is neither in the answer nor on the path. */
Bytes ocspResponder(OCSP_BASICRESP* answer, const X509Stack& path);

/** Reads a checked answer. Throws OcspOutdated. */
OcspStatus ocspStatus(OCSP_BASICRESP* answer, OCSP_CERTID* id, bool isFresh);

/** Throws CertRevoked or OcspUnknown for anything but a good certificate. */
void requireGood(const OcspStatus& status);

} // namespace qgtk
