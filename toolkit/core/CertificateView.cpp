#include "toolkit/core/CertificateView.h"

#include <array>

namespace qgtk {

namespace {

struct FieldRow
{
    const char* name;
    CertificateGetter text;
};

std::string versionOf(const Certificate& certificate, Charset&)
{
    return std::to_string(certificate.version());
}

constexpr std::array fieldRows{
    FieldRow{"Version", versionOf},
    FieldRow{"Serial Number", serialOf},
    FieldRow{"Signature Algorithm", signatureAlgorithmOf},
    FieldRow{"Issuer", issuerOf},
    FieldRow{"Validity", validityOf},
    FieldRow{"Subject", subjectOf},
    FieldRow{"Public Key Algorithm", publicKeyAlgorithmOf},
    FieldRow{"Public Key Length", publicKeyLengthOf},
    FieldRow{"Key Usage", keyUsageOf},
    FieldRow{"Extended Key Usage", extendedKeyUsageOf},
    FieldRow{"Basic Constraints", basicConstraintsOf},
    FieldRow{"Certificate Policies", policyOf},
    FieldRow{"Subject Alternative Name", subjectAltNameOf},
    FieldRow{"Authority Key Identifier", authorityKeyIdOf},
    FieldRow{"Subject Key Identifier", subjectKeyIdOf},
    FieldRow{"CRL Distribution Points", crlPointsOf},
    FieldRow{"Authority Information Access", authorityAccessOf},
};

} // namespace

std::string certificateView(const Certificate& certificate, Charset& charset)
{
    std::string view;
    for (const FieldRow& row : fieldRows) {
        const std::string text = row.text(certificate, charset);
        if (!text.empty())
            view.append(row.name).append(": ").append(text).append("\n");
    }
    return view;
}

} // namespace qgtk
