#include "VerificationTest.h"

void VerificationTest::trust(const samplepki::Bytes& certificate)
{
    BinString anchor(library, certificate);
    ASSERT_EQ(call("CERT_AddTrustedCert", &anchor), 0);
}

void VerificationTest::know(const samplepki::Bytes& certificates)
{
    if (certificates.empty())
        return;
    BinString list(library, certificates);
    ASSERT_EQ(call(isZrtk() ? "CERT_SetCaPubs" : "API_SetCaPubs", &list), 0);
}

void VerificationTest::look(Source source, bool wholeChain)
{
    const int range = wholeChain ? 0 : 1;
    char* none = nullptr;
    if (isZrtk()) {
        const int check = source == Source::None ? 0 : source == Source::Crl ? 2 : 1;
        ASSERT_EQ(call("CERT_SetVerifyEnv1", range, check, false, none), 0);
    } else {
        const int check = source == Source::None ? 0 : source == Source::Crl ? 1 : 2;
        ASSERT_EQ(call("CERT_SetVerifyEnv", range, check, false, none, none), 0);
    }
}

int VerificationTest::verify(const samplepki::Bytes& certificate, const std::string& policies,
                             int certificateType)
{
    BinString asked(library, certificate);
    BINSTR* none = nullptr;
    char* list = policies.empty() ? nullptr : text(policies);
    if (isZrtk())
        return call("CERT_Verify", &asked, certificateType, list, false, none, none);
    return call("CERT_Verify", &asked, certificateType, list, static_cast<char*>(nullptr), false, none, none);
}
