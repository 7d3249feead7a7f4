#pragma once

#include "toolkit/core/IssuerSearch.h"

namespace qgtk {

/**
 * The certificates from a certificate to the self-signed one at its end, each signed by the next; nothing
 * else of them is checked. Issuers are the trusted ones, the context's list and what servers have, those of a
 * configuration file when one is given. Throws CertDamaged, IssuerMissing, PathTooLong.
 */
X509Stack certificatePath(Context& context, ByteView certificate, const std::string& configurationFile = {});

/** The issuer of a certificate, by name and signature, looked for as above. Throws IssuerMissing. */
X509Handle findIssuer(Context& context, IssuerSearch& issuers, X509* certificate);

/** A path as a list of DER certificates, one behind the other. */
Bytes pathBytes(const X509Stack& path);

/** Whether the second certificate stands on the path of the first, which may be the same one. */
bool isOnPath(Context& context, ByteView certificate, ByteView root);

/**
 * Compares two names given as texts: the letter case of values and the blanks around and between words do not
 * count. Throws NamesDiffer.
 */
void compareNames(std::string_view first, std::string_view second);

} // namespace qgtk
