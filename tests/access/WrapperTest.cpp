// The wrappers without a flat function above them: operations of their own, and their own tests.

#include "Arguments.h"
#include "TestHome.h"
#include "WrapperAPI.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// NOLINTBEGIN(bugprone-macro-parentheses): the arguments are names and parameter lists
#define METHOD(wrapper, name, parameters, cell, tested)                                                      \
    [] {                                                                                                     \
        static_assert(std::is_same_v<decltype(&wrapper::name), int(wrapper::*) parameters>);                 \
        return Operation{#wrapper "::" #name,                                                                \
                         callMethod(&wrapper::name),                                                         \
                         parseParameters(#parameters),                                                       \
                         cell,                                                                               \
                         cell,                                                                               \
                         tested};                                                                            \
    }()
// NOLINTEND(bugprone-macro-parentheses)

std::vector<Operation> zrtkMethods()
{
    return {
        METHOD(CZRTKWrap, CertGetSubjectName_DERFormat, (BINSTR * pBinstr),
               "ZRTK_CERT_GetSubjectName_DERFormat", ""),
        METHOD(CZRTKWrap, CertGetPolicyConstraints, (int nAllocLen, char* pszPolicyConstraints),
               "ZRTK_CERT_GetPolicyConstraints", "pszPolicyConstraints"),
        METHOD(CZRTKWrap, CMSGetEnvDataRecCnt, (BINSTR * pEnvelopData, int* pnCnt),
               "ZRTK_CMS_GetEnvDataRecipCnt", "pEnvelopData"),
        METHOD(CZRTKWrap, CMSGetEnvDataRecipInfo,
               (int nIndex, int nAllocLen, char* pszIssuerName, char* pszSerialNum, char* pszSubjectKeyID),
               "ZRTK_CMS_GetEnvDataRecipInfo", ""),
        METHOD(CZRTKWrap, PKCS11OpenSession, (char* pszUserPIN), "ZRTK_PKCS11_OpenSession", "pszUserPIN"),
        METHOD(CZRTKWrap, OCSPCheckCertStatus,
               (char* pszOCSPUri, BINSTR* pBinCert, bool bSign, BINSTR* pBinMyCert, BINSTR* pBinMyPriKey),
               "ZRTK_OCSP_CheckCertStatus", "pszOCSPUri, pBinCert+, pBinMyCert+, pBinMyPriKey+"),
        METHOD(CZRTKWrap, CRYPTSignFile,
               (BINSTR * pBinPubKey, BINSTR * pBinPriKey, int nHashAlg, char* pszDataFilePath,
                char* pszSignatureFilePath),
               "ZRTK_CRYPT_SignFile", "pBinPubKey, pBinPriKey, pszDataFilePath, pszSignatureFilePath"),
    };
}

std::vector<Operation> gpkiMethods()
{
    return {
        METHOD(CGPKIWrap, GetInfo, (char* pszAPIInfo), "GPKI_API_GetInfo(ctx, 8, pszAPIInfo)", "pszAPIInfo"),
        METHOD(CGPKIWrap, CMSProcessSignedData,
               (BINSTR * pBinSignedData, BINSTR * pBinData, BINSTR * pBinignerCert, char* pszSignTime),
               "GPKI_CMS_ProcessSignedData", "pBinSignedData"),
        METHOD(CGPKIWrap, CMSMakeEnvelopedDataNoContentFile,
               (BINSTR * pBinCert, char* pszTBEDataFilePath, int nSymAlg, char* pBinEnvelopedDataFilePath,
                char* pszEncryptedContentFilePath),
               "GPKI_CMS_MakeEnvelopedData_NoContent_File",
               "pBinCert, pszTBEDataFilePath, pBinEnvelopedDataFilePath, pszEncryptedContentFilePath"),
        METHOD(CGPKIWrap, WCMSMakeSignedContent,
               (BINSTR * pBinCert, BINSTR * pBinKey, BINSTR * pBinTBSData, char* pszSignTime,
                BINSTR* pBinSignedContent),
               "GPKI_WCMS_MakeSignedContent", "pBinCert, pBinKey, pBinTBSData, pszSignTime"),
        METHOD(CGPKIWrap, WCMSProcessSignedContent,
               (BINSTR * pBinSignedContent, BINSTR * pBinData, BINSTR * pBinpSignerCert, char* pszSignTime),
               "GPKI_WCMS_ProcessSignedContent", "pBinSignedContent"),
        METHOD(CGPKIWrap, WCMSMakeWapEnvelopedData,
               (BINSTR * pBinRecCert, BINSTR * pBinTBEData, int nSymAlg, BINSTR* pBinpWapEnvelopedData),
               "GPKI_WCMS_MakeWapEnvelopedData", "pBinRecCert, pBinTBEData"),
        METHOD(CGPKIWrap, WCMSProcessWapEnvelopedData,
               (BINSTR * pBinCert, BINSTR * pBinPriKey, BINSTR * pBinpWapEnvelopedData, BINSTR * pBinData),
               "GPKI_WCMS_ProcessWapEnvelopedData", "pBinCert, pBinPriKey, pBinpWapEnvelopedData"),
        METHOD(CGPKIWrap, CryptSignFile,
               (BINSTR * pBinCert, BINSTR * pBinPriKey, int nHashAlg, char* pszDataFilePath,
                char* pszSignatureFilePath),
               "GPKI_CRYPT_Sign_File", "pBinCert, pBinPriKey, pszDataFilePath, pszSignatureFilePath"),
    };
}

void expectOneCall(RecordingToolkit& toolkit, const Operation& method, const Arguments& arguments)
{
    const ExpectedCall expected = expectedCalls(method, method.zrtk)[0];
    ASSERT_EQ(toolkit.calls().size(), 1U);
    EXPECT_EQ(toolkit.calls()[0].operation, expected.operation);
    for (std::size_t i = 0; i < expected.words.size(); ++i)
        expectWord(expected.words[i], toolkit.calls()[0].words[i], arguments, toolkit.context());
}

/** All that a method of a wrapper promises, over a loaded library, one without operations, and none. */
template <class Wrapper, class Load>
void expectMethodsKeepTheirPromises(RecordingToolkit::Side side, const std::vector<Operation>& methods,
                                    int notLoaded, Load load)
{
    RecordingToolkit toolkit(side);
    RecordingToolkit withoutOperations(side, "empty");
    Wrapper loaded;
    Wrapper lacking;
    Wrapper unloaded;
    ASSERT_EQ(load(loaded, toolkit), QG_OK);
    ASSERT_EQ(load(lacking, withoutOperations), QG_NOT_AVAILABLE);
    for (const Operation& method : methods) {
        SCOPED_TRACE(method.name);
        toolkit.forget();
        Arguments arguments(method);
        EXPECT_EQ(method.call(&loaded, arguments.words()), QG_OK);
        expectOneCall(toolkit, method, arguments);
        EXPECT_EQ(method.call(&lacking, arguments.words()), QG_NOT_AVAILABLE);
        EXPECT_EQ(method.call(&unloaded, arguments.words()), notLoaded);
        toolkit.answer(toolkit.calls()[0].operation, 77);
        EXPECT_EQ(method.call(&loaded, arguments.words()), 77);
        toolkit.forget();
        for (const TestedArgument& test : testsOf(method, Scope::Both))
            for (const Word value : refusedValues(test, arguments)) {
                Arguments spoilt(method);
                spoilt.set(test.name, value);
                EXPECT_EQ(method.call(&loaded, spoilt.words()), QG_BAD_ARGUMENT) << test.name;
                EXPECT_EQ(method.call(&unloaded, spoilt.words()), notLoaded);
                EXPECT_THAT(toolkit.calls(), IsEmpty());
            }
    }
}

} // namespace

TEST(ZrtkWrapper, OperationsWithoutAFlatFunctionKeepTheirPromises)
{
    expectMethodsKeepTheirPromises<CZRTKWrap>(RecordingToolkit::ZRTK, zrtkMethods(), QG_ZRTK_NOT_LOADED,
                                              [](CZRTKWrap& wrapper, RecordingToolkit& toolkit) {
                                                  return wrapper.Init(toolkit.directory(),
                                                                      toolkit.fileName());
                                              });
}

TEST(GpkiWrapper, OperationsWithoutAFlatFunctionKeepTheirPromises)
{
    expectMethodsKeepTheirPromises<CGPKIWrap>(
        RecordingToolkit::GPKI, gpkiMethods(), QG_GPKI_NOT_LOADED,
        [](CGPKIWrap& wrapper, RecordingToolkit& toolkit) { return wrapper.Init(toolkit.directory()); });
}

TEST(ZrtkWrapper, RefusesABufferWithItsOwnCodeBehindTheDispatchers)
{
    RecordingToolkit toolkit(RecordingToolkit::ZRTK);
    CZRTKWrap wrapper;
    ASSERT_EQ(wrapper.Init(toolkit.directory(), toolkit.fileName()), QG_OK);
    toolkit.forget();
    EXPECT_EQ(wrapper.CertGetUID(10, nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(wrapper.CertGetVersion(10, nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(wrapper.CertGetRemainDays(nullptr, nullptr), QG_BAD_ARGUMENT);
    char text[8] = {};
    EXPECT_EQ(wrapper.GetInfo(text, nullptr), QG_BAD_ARGUMENT);
    EXPECT_THAT(toolkit.calls(), IsEmpty());
}

TEST(ZrtkWrapper, TimeStampFileReachesTheLibraryForANullPathAlone)
{
    RecordingToolkit toolkit(RecordingToolkit::ZRTK);
    CZRTKWrap wrapper;
    ASSERT_EQ(wrapper.Init(toolkit.directory(), toolkit.fileName()), QG_OK);
    toolkit.forget();
    unsigned char byte = 1;
    BINSTR bytes = {&byte, 1};
    char text[] = "text";
    EXPECT_EQ(wrapper.TSPTimeStampFile(text, 1, 1, text, text, true, &bytes, &bytes, &bytes),
              QG_BAD_ARGUMENT);
    EXPECT_EQ(wrapper.TSPTimeStampFile(text, 1, 1, text, nullptr, true, &bytes, &bytes, &bytes), QG_OK);
    EXPECT_THAT(toolkit.operations(), ElementsAre("ZRTK_TSP_TimeStampFile"));
}

TEST(GpkiWrapper, IgnoresTheArgumentOfItsSecondConstructor)
{
    char text[] = "ignored";
    for (char* argument : {text, static_cast<char*>(nullptr)})
        EXPECT_EQ(CGPKIWrap(argument).CertUnLoad(), QG_GPKI_NOT_LOADED);
}

TEST(Wrappers, FinishAnswersNotLoadedWithoutALibrary)
{
    EXPECT_EQ(CZRTKWrap().Finish(), QG_ZRTK_NOT_LOADED);
    EXPECT_EQ(CGPKIWrap().Finish(), QG_GPKI_NOT_LOADED);
}
