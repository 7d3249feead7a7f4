#pragma once

#include "toolkit/core/Ocsp.h"

namespace qgtk {

/** What nCertType asks of the given certificate. */
enum class CertificateUse : int
{
    Any = 0,
    Listed = 1, /**< what the list service passes: any, too */
    Signature = 2,
    Envelope = 3,
    Authority = 4
};

/** What one verification asks besides the context's settings. */
struct VerifyRequest
{
    CertificateUse use = CertificateUse::Any;
    std::string_view policies;     /**< see policiesOf */
    RequestSigner signer;          /**< of requests to responders */
    std::string configurationFile; /**< where directories are named; empty: the context's */
};

/** nCertType as a use. Throws BadArgument. */
CertificateUse certificateUseOf(int certificateType);

/**
 * Dotted policies out of a text: separated by commas, semicolons or bars, the numbers of one by dots or
 * blanks, as the getters write them. Throws BadArgument.
 */
std::vector<std::string> policiesOf(std::string_view text);

/**
 * The path of a certificate up to a root that the context trusts, which comes last. Throws NoTrustedRoot, the
 * codes of a path and UsageRefused.
 */
X509Stack validPath(Context& context, ServerAccess& servers, ByteView certificate,
                    const VerifyRequest& request);

/**
 * Verifies a certificate up to a root that the context trusts, by the context's settings. Returns when all is
 * well; throws the verdict otherwise, see Code.
 */
void verifyCertificate(Context& context, ByteView certificate, const VerifyRequest& request);

/**
 * Looks one certificate up in its issuer's revocation list, having verified its path. Throws as
 * verifyCertificate; entry is set before CertRevoked is thrown.
 */
void checkStatusByCrl(Context& context, ByteView certificate, RevocationEntry& entry);

/** A responder to ask, empty: the certificate's own, and the file that names directories, as above. */
struct ResponderChoice
{
    std::string url;
    std::string configurationFile = {};
};

/** The same at a status responder, with who it is. */
void checkStatusByOcsp(Context& context, ByteView certificate, const ResponderChoice& responder,
                       const RequestSigner& signer, OcspAnswer& answer);

} // namespace qgtk
