#pragma once

#include <string>

#include "toolkit/core/Certificate.h"
#include "toolkit/core/Charset.h"

namespace qgtk {

/**
 * Texts of a certificate's fields, EUC-KR, one function a field. Each throws CertDamaged when the field can't
 * be decoded; those of extensions give an empty text for an extension that is absent and throw
 * CertExtensionDamaged for one that can't be decoded.
 */
using CertificateGetter = std::string (*)(const Certificate& certificate, Charset& charset);

std::string commonNameOf(const Certificate& certificate, Charset& charset);
std::string subjectOf(const Certificate& certificate, Charset& charset);
std::string issuerOf(const Certificate& certificate, Charset& charset);

/** Serial number in lower-case hexadecimal, an even number of digits. */
std::string serialOf(const Certificate& certificate, Charset& charset);

/** "sha256WithRSAEncryption"; a dotted identifier for an algorithm without a name. */
std::string signatureAlgorithmOf(const Certificate& certificate, Charset& charset);

/** The signature in lower-case hexadecimal. */
std::string signatureOf(const Certificate& certificate, Charset& charset);

/** Local times "YYYY-MM-DD hh:mm:ss", and both as "start ~ end". */
std::string notBeforeOf(const Certificate& certificate, Charset& charset);
std::string notAfterOf(const Certificate& certificate, Charset& charset);
std::string validityOf(const Certificate& certificate, Charset& charset);

/** "rsaEncryption"; "2048 Bits"; the key's bit string in lower-case hexadecimal. */
std::string publicKeyAlgorithmOf(const Certificate& certificate, Charset& charset);
std::string publicKeyLengthOf(const Certificate& certificate, Charset& charset);
std::string publicKeyOf(const Certificate& certificate, Charset& charset);

/** Words as "digitalSignature, nonRepudiation". */
std::string keyUsageOf(const Certificate& certificate, Charset& charset);

/** Purposes as "TLS Web Server Authentication, ...", else dotted. */
std::string extendedKeyUsageOf(const Certificate& certificate, Charset& charset);

/** "CA: TRUE, pathLen: 0" or "CA: FALSE". */
std::string basicConstraintsOf(const Certificate& certificate, Charset& charset);

/** "requireExplicitPolicy: 0, inhibitPolicyMapping: 0", what is there of it. */
std::string policyConstraintsOf(const Certificate& certificate, Charset& charset);

/** A line for each policy, for its CPS address ("CPS: ...") and for its notice ("UserNotice: ..."). */
std::string policyOf(const Certificate& certificate, Charset& charset);

/** The policies as "1 2 410 200005 1 1 4", joined by ',' when there are several. */
std::string policyIdsOf(const Certificate& certificate, Charset& charset);

/** A line for each name, as "rfc822Name: a@b", "realName: ..." and "VID: sha256 <hexadecimal>". */
std::string subjectAltNameOf(const Certificate& certificate, Charset& charset);
std::string issuerAltNameOf(const Certificate& certificate, Charset& charset);

/** Lines "KeyID: ...", "Issuer: ...", "SerialNumber: ...", what is there of them. */
std::string authorityKeyIdOf(const Certificate& certificate, Charset& charset);

/** The identifier in lower-case hexadecimal. */
std::string subjectKeyIdOf(const Certificate& certificate, Charset& charset);

/** Addresses of the revocation lists, one a line; directory names among them unless only URLs are wanted. */
std::string crlPointsOf(const Certificate& certificate, Charset& charset);
std::string crlUrlsOf(const Certificate& certificate, Charset& charset);

/** Addresses of the authority's services, one a line, those of OCSP first. */
std::string authorityAccessOf(const Certificate& certificate, Charset& charset);

/** Lower-case hexadecimal. */
std::string hexText(ByteView bytes);

/** An instant as local time, "YYYY-MM-DD hh:mm:ss". */
std::string timeText(std::time_t instant);

/** The instant of such a text. Throws BadTime. */
std::time_t parseTimeText(const std::string& text);

/** Whole days from now to the end of a validity; below 0 when it has passed. */
int remainingDays(const Certificate& certificate);

} // namespace qgtk
