#pragma once

#include <string>
#include <vector>

#include "toolkit/core/Charset.h"
#include "toolkit/core/Crypto.h"

namespace qgtk {

/** Releases a stack and one reference of each certificate in it. */
inline void freeX509Stack(STACK_OF(X509) * stack)
{
    sk_X509_pop_free(stack, X509_free);
}

using X509Stack = Handle<STACK_OF(X509), freeX509Stack>;

/**
 * A certificate as OpenSSL verifies it, in the toolkit's own library context. Throws CertDamaged, also for
 * names with EUC-KR bytes in a UTF8String, which OpenSSL can't compare.
 */
X509Handle decodeX509(const Crypto& crypto, ByteView der);

/** A revocation list, likewise. Throws CrlDamaged. */
CrlHandle decodeCrl(const Crypto& crypto, ByteView der);

/** Another reference to a certificate. */
X509Handle share(X509* certificate);

/** Puts a reference behind the others. */
void push(const X509Stack& stack, X509* certificate);

/** DER of a certificate. */
Bytes derOf(X509* certificate);

/** The subject's text, EUC-KR, leaf first. */
std::string subjectText(const X509* certificate, Charset& charset);

/** The issuer's name as directories take it: leaf first, UTF-8, special characters marked. */
std::string issuerDirectoryName(const X509* certificate);

/** Addresses of the services of a kind, NID_ad_OCSP or NID_ad_ca_issuers; none for a damaged extension. */
std::vector<std::string> serviceUrls(X509* certificate, int kind);

/** Addresses of the revocation lists, in the certificate's order; none for a damaged extension. */
std::vector<std::string> crlUrls(X509* certificate);

/** Names of directory entries that have the revocation lists, in the form of issuerDirectoryName. */
std::vector<std::string> crlEntries(X509* certificate);

/** Whether the certificate may be an issuer. */
bool isAuthority(X509* certificate);

} // namespace qgtk
