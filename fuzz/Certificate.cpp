// Certificates: every field as a text, the view of all, and what verification reads of them.

#include "Material.h"
#include "Target.h"
#include "toolkit/core/CertificateList.h"
#include "toolkit/core/CertificateView.h"
#include "toolkit/core/Identity.h"
#include "toolkit/core/KeyObjects.h"
#include "toolkit/core/Verification.h"

using namespace qgtk;

namespace {

constexpr CertificateGetter getters[] = {
    commonNameOf,        subjectOf,      issuerOf,    serialOf,           signatureAlgorithmOf,
    signatureOf,         notBeforeOf,    notAfterOf,  validityOf,         publicKeyAlgorithmOf,
    publicKeyLengthOf,   publicKeyOf,    keyUsageOf,  extendedKeyUsageOf, basicConstraintsOf,
    policyConstraintsOf, policyOf,       policyIdsOf, subjectAltNameOf,   issuerAltNameOf,
    authorityKeyIdOf,    subjectKeyIdOf, crlPointsOf, crlUrlsOf,          authorityAccessOf,
};

/** A caller's buffer, smaller than most texts. */
void readInto(const std::string& text)
{
    char buffer[40];
    copyCut(text, sizeof(buffer), buffer);
}

void readFields(Context& context, ByteView der)
{
    const Certificate certificate(der);
    for (const CertificateGetter getter : getters)
        attempt([&] { readInto(getter(certificate, context.charset())); });
    attempt([&] { certificateView(certificate, context.charset()); });
    attempt([&] { remainingDays(certificate); });
    attempt([&] { keyOfCertificate(context.crypto(), certificate); });
    attempt([&] { verifyIdentity(context.crypto(), certificate, bytesOf("random"), "1234561234567"); });
}

void readAsOpenSsl(Context& context, ByteView der)
{
    const X509Handle certificate = decodeX509(context.crypto(), der);
    subjectText(certificate.get(), context.charset());
    issuerDirectoryName(certificate.get());
    serviceUrls(certificate.get(), NID_ad_OCSP);
    crlUrls(certificate.get());
    crlEntries(certificate.get());
}

} // namespace

void fuzz(ByteView input)
{
    static Context context("");
    static const bool trusting = (trustAuthorities(context), true);
    expect(trusting);
    attempt([&] { readFields(context, input); });
    attempt([&] { readAsOpenSsl(context, input); });
    attempt([&] { verifyCertificate(context, input, {}); });
    attempt([&] {
        const std::vector<ByteView> list = splitCertificateList(input);
        expect(splitCertificateList(appendCertificate(input, material("root"))).size() == list.size() + 1);
    });
}
