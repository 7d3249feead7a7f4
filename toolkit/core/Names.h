#pragma once

#include <openssl/x509.h>
#include <string>

#include "toolkit/core/Bytes.h"
#include "toolkit/core/Charset.h"

namespace qgtk {

/**
 * Text of a distinguished name, EUC-KR, leaf first: "cn=...,ou=...,o=...,c=kr", types in lower case, no
 * blanks.
 *
 * Values stand as they are: a comma or a plus sign inside one is not marked, since callers cut these texts at
 * commas and name directories after them. A type without a short name is given as its dotted identifier, the
 * values of one level are joined by '+'.
 */
std::string nameText(const X509_NAME* name, Charset& charset);

/** The same from a DER Name. Throws CertDamaged. */
std::string nameText(ByteView der, Charset& charset);

/** The common name nearest to the leaf; without one, the value of the leaf itself. Throws CertDamaged. */
std::string commonNameText(ByteView der, Charset& charset);

} // namespace qgtk
