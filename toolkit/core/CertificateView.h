#pragma once

#include "toolkit/core/CertificateText.h"

namespace qgtk {

/**
 * What a person may want to know of a certificate, EUC-KR: a line "Name: value" a field, each ending in a
 * line feed. Fields that the certificate lacks are left out; those of several lines go on behind their name.
 * Throws as the fields' own functions.
 */
std::string certificateView(const Certificate& certificate, Charset& charset);

} // namespace qgtk
