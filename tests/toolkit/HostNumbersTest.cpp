// The numbers that the host headers name are those that the toolkit understands.

#include <gtest/gtest.h>

#include "quillgate/toolkit.h"
#include "toolkit/core/Network.h"
#include "toolkit/core/Verification.h"
#include "toolkit/core/VerifySettings.h"

using namespace qgtk;

TEST(HostNumbers, CertificateTypesAskForWhatTheirNamesSay)
{
    EXPECT_EQ(certificateUseOf(QG_VERIFY_ANY), CertificateUse::Listed);
    EXPECT_EQ(certificateUseOf(QG_VERIFY_SIGNING), CertificateUse::Signature);
    EXPECT_EQ(certificateUseOf(QG_VERIFY_ENCRYPTION), CertificateUse::Envelope);
    EXPECT_EQ(certificateUseOf(QG_VERIFY_AUTHORITY), CertificateUse::Authority);
}

TEST(HostNumbers, RangesAreThePathAndTheCertificateAlone)
{
    EXPECT_TRUE(wholeChainOf(QG_RANGE_PATH));
    EXPECT_FALSE(wholeChainOf(QG_RANGE_CERTIFICATE));
}

TEST(HostNumbers, DataTypesAreTheDirectorysAttributes)
{
    EXPECT_EQ(objectKindOf(QG_DATA_CA_CERTIFICATE), ObjectKind::AuthorityCertificate);
    EXPECT_EQ(objectKindOf(QG_DATA_USER_CERTIFICATE), ObjectKind::UserCertificate);
    EXPECT_EQ(objectKindOf(QG_DATA_CRL), ObjectKind::Crl);
    EXPECT_EQ(objectKindOf(QG_DATA_ARL), ObjectKind::AuthorityCrl);
}
