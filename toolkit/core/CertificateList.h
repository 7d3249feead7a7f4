#pragma once

#include "toolkit/core/Certificate.h"

namespace qgtk {

/**
 * Cuts a list of certificates in one byte string into its parts: DER certificates, one behind the other, so
 * that a single certificate is a list of one. Throws CertListDamaged for bytes that are no certificate or end
 * within one.
 */
std::vector<ByteView> splitCertificateList(ByteView list);

/** The list with a certificate behind it. Throws CertListDamaged. */
Bytes appendCertificate(ByteView list, ByteView certificate);

} // namespace qgtk
