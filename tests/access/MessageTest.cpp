// Message, protocol, token and utility operations that forward oddly.

#include "Context.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

BINSTR* const ok = &filledString;

int stampFile(void* context, char* path)
{
    return TSPTimeStampFile(context, anyText, 80, 4, anyText, path, false, ok, ok, ok);
}

} // namespace

TEST_F(OnZrSide, TimeStampFileNeverReachesTheLibrary)
{
    EXPECT_EQ(stampFile(context, anyText), QG_BAD_ARGUMENT);
    EXPECT_EQ(stampFile(context, nullptr), QG_BAD_ARGUMENT);
    char empty[] = "";
    EXPECT_EQ(stampFile(context, empty), QG_BAD_ARGUMENT);
    EXPECT_THAT(toolkit.calls(), IsEmpty());
}

TEST_F(OnGpkiSide, TimeStampFileDemandsThePathAndAnswersNotAvailable)
{
    EXPECT_EQ(stampFile(context, anyText), QG_NOT_AVAILABLE);
    EXPECT_EQ(stampFile(context, nullptr), QG_BAD_ARGUMENT);
}

TEST_F(OnGpkiSide, TimeStampToken2WritesATokenAndTimeStampToken1ReadsOne)
{
    EXPECT_EQ(CMSGetTimeStampToken2(context, ok, 1, ok, nullptr), QG_OK);
    EXPECT_EQ(CMSGetTimeStampToken1(context, 1, nullptr), QG_OK);
    EXPECT_THAT(toolkit.operations(),
                ElementsAre("GPKI_CMS_SetTimeStampToken", "GPKI_CMS_GetTimeStampToken"));
}

TEST_F(OnGpkiSide, CmpTimeStampAndPairListsAnswerNotAvailableAfterTheirTests)
{
    EXPECT_EQ(CMPSetProtocol(context, 1), QG_NOT_AVAILABLE);
    EXPECT_EQ(CMPCertCertRevoke(context, nullptr, 1, 1, ok, ok, ok, ok), QG_BAD_ARGUMENT);
    EXPECT_EQ(CMPCertCertRevoke(context, anyText, 1, 1, ok, ok, ok, ok), QG_NOT_AVAILABLE);
    EXPECT_EQ(TSPTimeStampData(context, anyText, 1, 1, anyText, nullptr, true, ok, ok, ok), QG_BAD_ARGUMENT);
    EXPECT_EQ(TSPTimeStampData(context, anyText, 1, 1, anyText, ok, true, ok, ok, ok), QG_NOT_AVAILABLE);
    EXPECT_EQ(PFXExport2(context, 0, anyText, ok, ok, nullptr, ok), QG_BAD_ARGUMENT);
    EXPECT_EQ(PFXExport2(context, 0, anyText, ok, ok, ok, ok), QG_NOT_AVAILABLE);
    EXPECT_EQ(PFXExportMultiPair(context, 0, anyText, ok, nullptr, ok), QG_BAD_ARGUMENT);
    EXPECT_EQ(PFXExportMultiPair(context, 0, anyText, ok, ok, ok), QG_NOT_AVAILABLE);
    EXPECT_EQ(PFXImportMultiPair2(context, 0, nullptr, anyText, ok, ok, nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(PFXImportMultiPair2(context, 0, nullptr, anyText, ok, ok, ok), QG_NOT_AVAILABLE);
    EXPECT_THAT(toolkit.calls(), IsEmpty());
}

TEST_F(OnZrSide, SignerAndOcspOperationsOfTheGpkiSideAnswerNotAvailableAfterTheirTests)
{
    int number = 0;
    EXPECT_EQ(CMSGetSignerCaPubs(context, nullptr), QG_NOT_AVAILABLE);
    EXPECT_EQ(CMSGetTBTData(context, 0, nullptr), QG_NOT_AVAILABLE);
    EXPECT_EQ(CMSGetTimeStampToken1(context, 0, nullptr), QG_NOT_AVAILABLE);
    EXPECT_EQ(CMSGetTimeStampToken2(context, ok, 0, nullptr, ok), QG_BAD_ARGUMENT);
    EXPECT_EQ(CMSGetTimeStampToken2(context, ok, 0, ok, ok), QG_NOT_AVAILABLE);
    EXPECT_EQ(OCSPGetCertStatus(context, 0, &number, anyText, &number), QG_NOT_AVAILABLE);
    EXPECT_THAT(toolkit.calls(), IsEmpty());
}

TEST_F(OnZrSide, ExportMultiPair2SharesTheOperationOfTheFirstFormWithItsOwnArguments)
{
    BINSTR caPubs = filledString;
    EXPECT_EQ(PFXExportMultiPair(context, 7, anyText, ok, ok, ok), QG_OK);
    EXPECT_EQ(PFXExportMultiPair2(context, 7, anyText, ok, ok, &caPubs, ok), QG_OK);
    EXPECT_THAT(toolkit.operations(), ElementsAre("ZRTK_PFX_ExportMultiPair", "ZRTK_PFX_ExportMultiPair"));
    EXPECT_EQ(number(toolkit.calls()[0].words[1]), 7);
    EXPECT_EQ(pointer<char>(toolkit.calls()[1].words[1]), anyText);
    EXPECT_EQ(pointer<BINSTR>(toolkit.calls()[1].words[4]), &caPubs);
}

TEST_F(OnZrSide, ImportMultiPairSwapsContainerAndPassword)
{
    EXPECT_EQ(PFXImportMultiPair(context, ok, anyText, ok, ok, ok), QG_OK);
    EXPECT_EQ(PFXImportMultiPair2(context, 7, ok, anyText, ok, ok, ok), QG_OK);
    EXPECT_EQ(pointer<char>(toolkit.calls()[0].words[1]), anyText);
    EXPECT_EQ(pointer<BINSTR>(toolkit.calls()[0].words[2]), ok);
    EXPECT_EQ(number(toolkit.calls()[1].words[1]), 7);
    EXPECT_EQ(pointer<char>(toolkit.calls()[1].words[2]), anyText);
    EXPECT_EQ(pointer<BINSTR>(toolkit.calls()[1].words[3]), ok);
}

TEST_F(OnGpkiSide, ARefusedPinLeavesTheSessionOpenAndAnswersTheLoginsNumber)
{
    toolkit.answer("GPKI_HSM_Login", 160);
    EXPECT_EQ(PKCS11OpenSessionWithSlotID(context, 3, anyText, 2), 160);
    EXPECT_THAT(toolkit.operations(),
                ElementsAre("GPKI_HSM_OpenSession", "GPKI_HSM_Login", "GPKI_API_GetErrInfo"))
        << "nothing closes the session";
}

TEST_F(OnGpkiSide, ANullPinOpensTheSessionWithoutLoggingIn)
{
    EXPECT_EQ(PKCS11OpenSessionWithSlotID(context, 3, nullptr, 2), QG_OK);
    EXPECT_THAT(toolkit.operations(), ElementsAre("GPKI_HSM_OpenSession"));
}

TEST_F(OnGpkiSide, AFailedOpeningIsAnsweredAtOnce)
{
    toolkit.answer("GPKI_HSM_OpenSession", 3);
    EXPECT_EQ(PKCS11OpenSessionWithSlotID(context, 3, anyText, 2), 3);
    EXPECT_THAT(toolkit.operations(), ElementsAre("GPKI_HSM_OpenSession", "GPKI_API_GetErrInfo"));
}

TEST_F(OnZrSide, OpenSessionPassesANullPinOn)
{
    EXPECT_EQ(PKCS11OpenSessionWithSlotID(context, 3, nullptr, 2), QG_OK);
    EXPECT_THAT(toolkit.operations(), ElementsAre("ZRTK_PKCS11_OpenSessionWithSlotID"));
}

TEST_F(OnZrSide, GenRandomRefusesALengthOfZero)
{
    EXPECT_EQ(CRYPTGenRandom(context, 0, ok), QG_BAD_ARGUMENT);
    EXPECT_THAT(toolkit.calls(), IsEmpty());
}

TEST_F(OnGpkiSide, GenRandomPassesALengthOfZero)
{
    EXPECT_EQ(CRYPTGenRandom(context, 0, ok), QG_OK);
    EXPECT_THAT(toolkit.operations(), ElementsAre("GPKI_CRYPT_GenRandom"));
}

TEST(DecryptFile, SwapsItsPathsOnTheGpkiSideAlone)
{
    char cipher[] = "cipher";
    char plain[] = "plain";
    RecordingToolkit gpki(RecordingToolkit::GPKI);
    EXPECT_EQ(CRYPTDecryptFile(Context(gpki), cipher, plain), QG_OK);
    EXPECT_EQ(pointer<char>(gpki.calls()[0].words[1]), plain);
    EXPECT_EQ(pointer<char>(gpki.calls()[0].words[2]), cipher);
    RecordingToolkit zrtk(RecordingToolkit::ZRTK);
    EXPECT_EQ(CRYPTDecryptFile(Context(zrtk), cipher, plain), QG_OK);
    EXPECT_EQ(pointer<char>(zrtk.calls()[0].words[1]), cipher);
}

TEST_F(OnZrSide, ViewCertPassesTheLiteral8)
{
    EXPECT_EQ(UNIViewCert(context, ok, anyText), QG_OK);
    EXPECT_EQ(number(toolkit.calls()[0].words[2]), 8);
    EXPECT_EQ(pointer<char>(toolkit.calls()[0].words[3]), anyText);
}

TEST_F(OnGpkiSide, TokenKeyHashFilePemWirelessUniAndUtilAnswerNotAvailableAfterTheirTests)
{
    EXPECT_EQ(PKCS11GenKeyPair(context, 1, 1, nullptr), QG_NOT_AVAILABLE);
    EXPECT_EQ(CRYPTHashFile(context, 1, nullptr, ok), QG_BAD_ARGUMENT);
    EXPECT_EQ(CRYPTHashFile(context, 1, anyText, ok), QG_NOT_AVAILABLE);
    EXPECT_EQ(PEMEncode(context, 1, nullptr, ok), QG_BAD_ARGUMENT);
    EXPECT_EQ(PEMEncode(context, 1, ok, ok), QG_NOT_AVAILABLE);
    EXPECT_EQ(PEMDecode(context, ok, ok), QG_NOT_AVAILABLE);
    EXPECT_EQ(WPKIVerifyCert(context, nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(WPKIVerifyCert(context, ok), QG_NOT_AVAILABLE);
    EXPECT_EQ(UNIViewCert(context, nullptr, anyText), QG_BAD_ARGUMENT);
    EXPECT_EQ(UNIViewCert(context, ok, anyText), QG_NOT_AVAILABLE);
    EXPECT_EQ(UTILCompareDN(context, anyText, nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(UTILCompareDN(context, anyText, anyText), QG_NOT_AVAILABLE);
    EXPECT_THAT(toolkit.calls(), IsEmpty());
}

TEST_F(OnZrSide, ChallengeAndDirectoryOperationsAnswerNotAvailableAfterTheirTests)
{
    BINSTR empty = {};
    EXPECT_EQ(SIGEAMakeChallenge(context, &empty), QG_BAD_ARGUMENT) << "an output that must hold data";
    EXPECT_EQ(SIGEAMakeChallenge(context, ok), QG_NOT_AVAILABLE);
    EXPECT_EQ(SIGEAVerifyResponse(context, ok, ok, nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(SIGEAVerifyResponse(context, ok, ok, ok), QG_NOT_AVAILABLE);
    EXPECT_EQ(LDAPGetDataByCN(context, anyText, 389, nullptr, 0, anyText, ok), QG_BAD_ARGUMENT);
    EXPECT_EQ(LDAPGetDataByCN(context, anyText, 389, anyText, 0, anyText, ok), QG_NOT_AVAILABLE);
    EXPECT_EQ(LDAPGetAnyDataByURL(context, anyText, nullptr, ok), QG_BAD_ARGUMENT);
    EXPECT_EQ(LDAPGetCertPath(context, ok, anyText, ok), QG_NOT_AVAILABLE);
    EXPECT_THAT(toolkit.calls(), IsEmpty());
}
