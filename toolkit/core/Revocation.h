#pragma once

#include "toolkit/core/IssuerSearch.h"
#include "toolkit/core/PathValidation.h"

namespace qgtk {

/** The text and number of a revocation. */
RevocationEntry revocationEntry(const ASN1_TIME* time, int reason);

/** The revocation list that covers a certificate, as servers have it, unverified. Throws as Network::fetch.
 */
Bytes fetchRevocationList(Context& context, ServerAccess& servers, X509* certificate);

/**
 * Looks certificates of a validated path up in revocation lists, those that the context was given and those
 * that servers have. Throws CertRevoked, the Crl codes and, when no list could be had, why the last server
 * gave none. What is found about the first certificate goes into entry before that.
 */
void checkRevocationLists(Context& context, ServerAccess& servers, const X509Stack& path,
                          RevocationEntry& entry);

} // namespace qgtk
