#pragma once

#include <ctime>
#include <openssl/cms.h>
#include <string>

#include "toolkit/core/Handles.h"

namespace qgtk {

/** Adds the signed attribute that tells when a signer signed. Throws std::bad_alloc. */
void addSigningTime(CMS_SignerInfo* info, std::time_t time);

/** Adds the signed attributes that bind a signature to a content (RFC 5652, section 11). Throws
 * std::bad_alloc. */
void addContentAttributes(CMS_SignerInfo* info, const ASN1_OBJECT* contentType, ByteView digest);

/** The text of an attribute's value that is a time, local; empty when it is none. */
std::string timeOf(const ASN1_TYPE* value);

/** When a signer signed; empty when the message doesn't tell. */
std::string signTimeOf(const CMS_SignerInfo* info);

/** Throws SignatureWrong when signed attributes are there and name another type of content than the message.
 */
void requireContentType(const CMS_SignerInfo* info, const ASN1_OBJECT* contentType);

/**
 * A signer's attributes as they are signed: a SET, DER. Throws std::bad_alloc.
 */
Bytes signedAttributes(const CMS_SignerInfo* info);

/** The time stamp token of a signer, DER; empty when there is none. */
Bytes timeStampOf(const CMS_SignerInfo* info);

/** Gives a signer a time stamp token in place of what it has. Throws std::bad_alloc. */
void setTimeStamp(CMS_SignerInfo* info, ByteView token);

} // namespace qgtk
