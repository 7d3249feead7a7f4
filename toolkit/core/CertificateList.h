#pragma once

#include "toolkit/core/Certificate.h"

namespace qgtk {

/**
 * Cuts a list of certificates in one byte string into its parts. It is a list of objects, see ObjectList.h: a
 * single certificate is a list of one. Throws CertListDamaged for bytes that are no certificate or end within
 * one.
 */
std::vector<ByteView> splitCertificateList(ByteView list);

/** The list with a certificate behind it. Throws CertListDamaged. */
SecretBytes appendCertificate(ByteView list, ByteView certificate);

} // namespace qgtk
