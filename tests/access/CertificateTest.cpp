// Certificate, key and media operations that do more than forward, or forward oddly.

#include "Context.h"

#include <array>
#include <cstring>
#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr RecordingToolkit::Side ZRTK = RecordingToolkit::ZRTK;
constexpr RecordingToolkit::Side GPKI = RecordingToolkit::GPKI;

/** Has a text operation write a text and its terminator to its argument at a position. */
void writeText(RecordingToolkit& toolkit, const std::string& operation, int position, const std::string& text)
{
    toolkit.act(operation, [position, text](const Word* words) {
        std::memcpy(pointer<char>(words[position]), text.c_str(), text.size() + 1);
        return 0;
    });
}

/** Sets the version that both libraries write before they answer a result. */
void writeVersion(RecordingToolkit& toolkit, int version, int result)
{
    toolkit.act(std::string(toolkit.prefix()) + "_CERT_GetVersion", [=](const Word* words) {
        *pointer<int>(words[1]) = version;
        return result;
    });
}

/** Buffers of CertGetValidity, filled so that every written byte shows. */
struct Validity
{
    Validity()
    {
        from.fill('#');
        to.fill('#');
    }
    int get(void* context, int fromSize, int toSize)
    {
        return CertGetValidity(context, fromSize, from.data(), toSize, to.data());
    }
    std::string fromText() const { return {from.data(), from.size()}; }
    std::string toText() const { return {to.data(), to.size()}; }
    static std::string filled(std::string start)
    {
        start.resize(50, '#');
        return start;
    }
    std::array<char, 50> from;
    std::array<char, 50> to;
};

/** Has the library tell a validity. */
void writeValidity(RecordingToolkit& toolkit, const std::string& text)
{
    writeText(toolkit, "GPKI_CERT_GetValidity", 2, text);
}

using GpkiValidity = OnGpkiSide;
using GpkiPubKey = OnGpkiSide;
using ZrPubKey = OnZrSide;

class CertVersion : public testing::TestWithParam<RecordingToolkit::Side>
{};

INSTANTIATE_TEST_SUITE_P(Sides, CertVersion, testing::Values(ZRTK, GPKI));

} // namespace

TEST_P(CertVersion, IsWrittenInDigitsWithinItsBound)
{
    RecordingToolkit toolkit(GetParam());
    Context context(toolkit);
    writeVersion(toolkit, 1234, 0);
    char text[] = "########";
    EXPECT_EQ(CertGetVersion(context, 3, text), QG_OK);
    EXPECT_EQ(std::string(text, 8), std::string("12\0#####", 8));
    EXPECT_EQ(CertGetVersion(context, 8, text), QG_OK);
    EXPECT_STREQ(text, "1234");
}

TEST_P(CertVersion, IsWrittenThoughTheLibraryCallFailed)
{
    RecordingToolkit toolkit(GetParam());
    Context context(toolkit);
    char text[] = "########";
    writeVersion(toolkit, 3, 77);
    EXPECT_EQ(CertGetVersion(context, sizeof text, text), 77);
    EXPECT_STREQ(text, "3");
    toolkit.answer(std::string(toolkit.prefix()) + "_CERT_GetVersion", QG_NOT_AVAILABLE);
    EXPECT_EQ(CertGetVersion(context, sizeof text, text), QG_NOT_AVAILABLE);
    EXPECT_STREQ(text, "0");
}

TEST_P(CertVersion, IsNotWrittenWhenTheOperationIsMissing)
{
    RecordingToolkit toolkit(GetParam(), "bare");
    Context context(toolkit);
    char text[] = "########";
    EXPECT_EQ(CertGetVersion(context, sizeof text, text), QG_NOT_AVAILABLE);
    EXPECT_STREQ(text, "########");
}

TEST_P(CertVersion, IsNotWrittenIntoABufferWithoutRoom)
{
    RecordingToolkit toolkit(GetParam());
    Context context(toolkit);
    writeVersion(toolkit, 3, 0);
    char text[] = "########";
    for (const int size : {0, -1}) {
        EXPECT_EQ(CertGetVersion(context, size, text), QG_OK);
        EXPECT_STREQ(text, "########");
    }
}

TEST_F(OnZrSide, ValidityInABufferOf24BytesIsRefused)
{
    Validity validity;
    EXPECT_EQ(validity.get(context, 24, 50), QG_BAD_ARGUMENT);
    EXPECT_EQ(validity.get(context, 50, 24), QG_BAD_ARGUMENT);
    EXPECT_THAT(toolkit.calls(), IsEmpty());
    EXPECT_EQ(validity.get(context, 25, 25), QG_OK);
}

TEST_F(GpkiValidity, InABufferOf24BytesWorks)
{
    writeValidity(toolkit, "2024-01-01 00:00:00 ~ 2025-01-01 23:59:59");
    Validity validity;
    EXPECT_EQ(validity.get(context, 24, 24), QG_OK);
    EXPECT_EQ(validity.fromText(), Validity::filled("2024-01-01 00:00:00")) << "without a terminator";
    EXPECT_EQ(validity.toText(), Validity::filled(std::string("2025-01-01 23:59:59") + '\0'));
}

TEST_F(GpkiValidity, GivesTheLibraryAZeroedBufferOf1024BytesAtMost)
{
    bool zeroed = false;
    toolkit.act("GPKI_CERT_GetValidity", [&zeroed](const Word* words) {
        zeroed = std::string(pointer<char>(words[2]), 1024) == std::string(1024, '\0');
        return 77;
    });
    Validity validity;
    EXPECT_EQ(validity.get(context, 50, 50), 77);
    EXPECT_TRUE(zeroed);
    EXPECT_EQ(number(toolkit.calls()[0].words[1]), 50);
    toolkit.forget();
    EXPECT_EQ(validity.get(context, 100000, 50), 77);
    EXPECT_EQ(number(toolkit.calls()[0].words[1]), 1024);
    EXPECT_EQ(validity.fromText(), Validity::filled("")) << "a failure writes nothing";
}

TEST_F(GpkiValidity, WithoutASeparatorIsRefusedAndNothingIsWritten)
{
    for (const std::string& text : {std::string(), std::string("2024-01-01"), std::string(1024, '0')}) {
        toolkit.act("GPKI_CERT_GetValidity", [text](const Word* words) {
            std::memcpy(pointer<char>(words[2]), text.data(), text.size());
            return 0;
        });
        Validity validity;
        EXPECT_EQ(validity.get(context, 50, 50), QG_BAD_ARGUMENT);
        EXPECT_EQ(validity.fromText(), Validity::filled(""));
        EXPECT_EQ(validity.toText(), Validity::filled(""));
    }
}

TEST_F(GpkiValidity, LongerThanTheBuffersIsCut)
{
    writeValidity(toolkit, std::string(200, 'f') + " ~ " + std::string(200, 't'));
    Validity validity;
    EXPECT_EQ(validity.get(context, 10, 10), QG_OK);
    EXPECT_EQ(validity.fromText(), Validity::filled(std::string(10, 'f')));
    EXPECT_EQ(validity.toText(), Validity::filled(std::string(9, 't') + '\0'));
    Validity without;
    EXPECT_EQ(without.get(context, -1, -1), QG_OK);
    EXPECT_EQ(without.get(context, 0, 0), QG_OK);
    EXPECT_EQ(without.fromText(), Validity::filled(""));
    EXPECT_EQ(without.toText(), Validity::filled(""));
}

TEST_F(GpkiValidity, WithASeparatorAtItsEdgesStaysWithinTheText)
{
    for (const char* text : {"~", " ~", "~ ", " ~ "}) {
        writeValidity(toolkit, text);
        Validity validity;
        EXPECT_EQ(validity.get(context, 50, 50), QG_OK) << text;
        EXPECT_EQ(validity.fromText(), Validity::filled(""));
        EXPECT_EQ(validity.toText(), Validity::filled(std::string(1, '\0')));
    }
}

TEST_F(ZrPubKey, CopiesExactly49BytesOfTheAlgorithmAndLetsTheLibraryWriteTheLength)
{
    writeText(toolkit, "ZRTK_CERT_GetPubKey", 2, "rsa");
    writeText(toolkit, "ZRTK_CERT_GetPubKey2", 2, "2048 Bits");
    std::string algorithm(60, '#');
    char length[20] = {};
    char key[8] = {};
    EXPECT_EQ(CertGetPubKeyInfo(context, algorithm.data(), length, 8, key, &filledString), QG_OK);
    EXPECT_EQ(algorithm, "rsa" + std::string(46, '\0') + std::string(11, '#'));
    EXPECT_STREQ(length, "2048 Bits");
}

TEST_F(ZrPubKey, HandsTheKeyOutThroughSetDataAndReleasesItsOwnCopy)
{
    toolkit.act("ZRTK_CERT_GetPubKey2", [](const Word* words) {
        *pointer<BINSTR>(words[3]) = {derBytes, 2};
        return 0;
    });
    BINSTR keyInfo = {};
    char key[8] = {};
    EXPECT_EQ(CertGetPubKeyInfo(context, anyText, anyText, 8, key, &keyInfo), QG_OK);
    EXPECT_THAT(toolkit.operations(),
                ElementsAre("ZRTK_BINSTR_Create", "ZRTK_CERT_GetPubKey", "ZRTK_CERT_GetPubKey2",
                            "ZRTK_BINSTR_SetData", "ZRTK_BINSTR_Delete"));
    const RecordedCall& setData = toolkit.calls()[3];
    EXPECT_EQ(pointer<unsigned char>(setData.words[0]), derBytes);
    EXPECT_EQ(number(setData.words[1]), 2);
    EXPECT_EQ(pointer<BINSTR>(setData.words[2]), &keyInfo);
    EXPECT_EQ(toolkit.calls()[4].words[0], toolkit.calls()[0].words[0]);
}

TEST_F(ZrPubKey, ReleasesItsOwnCopyAfterAFailureTooAndAnswersTheFirstFailure)
{
    toolkit.act("ZRTK_CERT_GetPubKey2", [](const Word* words) {
        *pointer<BINSTR>(words[3]) = {derBytes, 2};
        return 78;
    });
    char key[8] = {};
    std::string algorithm(60, '#');
    EXPECT_EQ(CertGetPubKeyInfo(context, algorithm.data(), anyText, 8, key, &filledString), 78);
    EXPECT_EQ(toolkit.operations().back(), "ZRTK_BINSTR_Delete");
    EXPECT_EQ(algorithm, std::string(60, '#'));
    toolkit.answer("ZRTK_CERT_GetPubKey", 77);
    toolkit.forget();
    EXPECT_EQ(CertGetPubKeyInfo(context, algorithm.data(), anyText, 8, key, &filledString), 77);
    EXPECT_THAT(toolkit.operations(),
                ElementsAre("ZRTK_BINSTR_Create", "ZRTK_CERT_GetPubKey", "ZRTK_API_GetErrInfo"));
}

TEST_F(ZrPubKey, SurvivesALongAlgorithmNameAndNullOutputs)
{
    writeText(toolkit, "ZRTK_CERT_GetPubKey", 2, std::string(2000, 'a'));
    toolkit.act("ZRTK_CERT_GetPubKey2", [](const Word* words) {
        *pointer<BINSTR>(words[3]) = {derBytes, 2};
        return 0;
    });
    std::string algorithm(60, '#');
    char key[8] = {};
    EXPECT_EQ(CertGetPubKeyInfo(context, algorithm.data(), nullptr, 8, key, &filledString), QG_OK);
    EXPECT_EQ(algorithm, std::string(49, 'a') + std::string(11, '#'));
    EXPECT_EQ(CertGetPubKeyInfo(context, nullptr, nullptr, 8, key, &filledString), QG_BAD_ARGUMENT);
    EXPECT_EQ(CertGetPubKeyInfo(context, algorithm.data(), nullptr, 8, key, nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(toolkit.operations().back(), "ZRTK_BINSTR_Delete");
}

TEST_F(GpkiPubKey, CopiesExactly49And19BytesAndLeavesTheKeyInfoAlone)
{
    writeText(toolkit, "GPKI_CERT_GetPubKeyAlg", 2, "rsa");
    writeText(toolkit, "GPKI_CERT_GetPubKeyLen", 2, "2048 Bits");
    std::string algorithm(60, '#');
    std::string length(30, '#');
    char key[8] = {};
    BINSTR keyInfo = {derBytes, 7};
    EXPECT_EQ(CertGetPubKeyInfo(context, algorithm.data(), length.data(), 8, key, &keyInfo), QG_OK);
    EXPECT_EQ(algorithm, "rsa" + std::string(46, '\0') + std::string(11, '#'));
    EXPECT_EQ(length, "2048 Bits" + std::string(10, '\0') + std::string(11, '#'));
    EXPECT_TRUE(keyInfo.pData == derBytes && keyInfo.nLen == 7);
}

TEST_F(GpkiPubKey, StopsAtTheFirstStepThatFails)
{
    char key[8] = {};
    toolkit.answer("GPKI_CERT_GetPubKeyLen", 78);
    EXPECT_EQ(CertGetPubKeyInfo(context, anyText, anyText, 8, key, nullptr), 78);
    EXPECT_THAT(toolkit.operations(), ElementsAre("GPKI_BINSTR_Create", "GPKI_CERT_GetPubKeyAlg",
                                                  "GPKI_CERT_GetPubKeyLen", "GPKI_API_GetErrInfo"));
    toolkit.answer("GPKI_CERT_GetPubKeyAlg", 77);
    toolkit.forget();
    EXPECT_EQ(CertGetPubKeyInfo(context, anyText, anyText, 8, key, nullptr), 77);
    EXPECT_EQ(toolkit.calls().size(), 3U);
}

TEST_F(GpkiPubKey, RefusesNullOutputsThatThereIsATextFor)
{
    char key[8] = {};
    std::string room(60, '#');
    writeText(toolkit, "GPKI_CERT_GetPubKeyAlg", 2, "rsa");
    EXPECT_EQ(CertGetPubKeyInfo(context, nullptr, room.data(), 8, key, nullptr), QG_BAD_ARGUMENT);
    writeText(toolkit, "GPKI_CERT_GetPubKeyLen", 2, "2048 Bits");
    EXPECT_EQ(CertGetPubKeyInfo(context, room.data(), nullptr, 8, key, nullptr), QG_BAD_ARGUMENT);
}

TEST_F(OnZrSide, VidHashOfIdnrRefusesAnEmptyNumberAndVidVerifyPassesIt)
{
    char empty[] = "";
    EXPECT_EQ(VIDHashOfIDNR(context, &filledString, &filledString, empty, &filledString), QG_BAD_ARGUMENT);
    EXPECT_EQ(VIDVerify(context, &filledString, &filledString, empty), QG_OK);
    EXPECT_EQ(VIDVerify(context, &filledString, &filledString, nullptr), QG_BAD_ARGUMENT);
    EXPECT_THAT(toolkit.operations(), ElementsAre("ZRTK_VID_Verify"));
}

TEST_F(OnZrSide, MediaWinsReadCaPubsReachesTheOperationOfMediaWinsReadPrikey)
{
    EXPECT_EQ(MediaWinsReadCaPubs(context, 1, &filledString), QG_OK);
    EXPECT_EQ(MediaWinsReadPrikey(context, 1, &filledString), QG_OK);
    EXPECT_THAT(toolkit.operations(),
                ElementsAre("ZRTK_MEDIA_WINS_ReadPriKey", "ZRTK_MEDIA_WINS_ReadPriKey"));
}

TEST_F(OnZrSide, MediaWinsCertDnPassesTheLiteral8BetweenIndexAndType)
{
    int type = 0;
    EXPECT_EQ(MediaWinsCertDN(context, 5, &type, anyText, anyText), QG_OK);
    const Word* words = toolkit.calls()[0].words;
    EXPECT_EQ(number(words[1]), 5);
    EXPECT_EQ(number(words[2]), 8);
    EXPECT_EQ(pointer<int>(words[3]), &type);
}

TEST_F(OnZrSide, MediaDiskDeletePriKeyPassesPasswordAndPath)
{
    char password[] = "password";
    char path[] = "/path";
    EXPECT_EQ(MediaDiskDeletePriKey(context, password, 3, path), QG_OK);
    const Word* words = toolkit.calls()[0].words;
    EXPECT_EQ(pointer<char>(words[1]), password);
    EXPECT_EQ(pointer<char>(words[2]), path);
}

TEST_F(OnGpkiSide, MediaDiskDeletePriKeyPassesMediumPathPasswordAndType)
{
    char password[] = "password";
    char path[] = "/path";
    EXPECT_EQ(MediaDiskDeletePriKey(context, password, 3, path), QG_OK);
    const Word* words = toolkit.calls()[0].words;
    EXPECT_EQ(number(words[1]), 1);
    EXPECT_EQ(pointer<char>(words[2]), path);
    EXPECT_EQ(pointer<char>(words[3]), password);
    EXPECT_EQ(number(words[4]), 3);
}

TEST_F(OnZrSide, ListAndOcspOperationsTestTheirArgumentsBeforeTheyAnswerNotAvailable)
{
    int number = 0;
    BINSTR* ok = &filledString;
    EXPECT_EQ(CertAddCert(context, nullptr, ok), QG_BAD_ARGUMENT);
    EXPECT_EQ(CertAddCert(context, ok, ok), QG_NOT_AVAILABLE);
    EXPECT_EQ(CertGetCertCount(context, nullptr, &number), QG_BAD_ARGUMENT);
    EXPECT_EQ(CertGetCertCount(context, ok, &number), QG_NOT_AVAILABLE);
    EXPECT_EQ(CertGetCert(context, nullptr, 0, ok), QG_NO_MEMORY);
    EXPECT_EQ(CertGetCert(context, ok, 0, nullptr), QG_NOT_AVAILABLE);
    EXPECT_EQ(CertCheckStatByOCSP(context, ok, true, ok, ok, nullptr, ok, anyText, &number), QG_BAD_ARGUMENT);
    EXPECT_EQ(CertCheckStatByOCSP(context, ok, true, ok, ok, anyText, ok, anyText, &number),
              QG_NOT_AVAILABLE);
    EXPECT_THAT(toolkit.calls(), IsEmpty());
}

TEST_F(OnGpkiSide, OperationsOfTheZrSideAnswerNotAvailableAfterTheirTests)
{
    EXPECT_EQ(CertGetIssuerAltName(context, 4, nullptr), QG_NO_MEMORY);
    EXPECT_EQ(CertGetIssuerAltName(context, 4, anyText), QG_NOT_AVAILABLE);
    EXPECT_EQ(CertGetCRLDPURL(context, 4, nullptr), QG_NO_MEMORY);
    EXPECT_EQ(CertGetCRLDPURL(context, 4, anyText), QG_NOT_AVAILABLE);
    EXPECT_EQ(CertSetVerifyEnv2(context, nullptr, nullptr, nullptr), QG_NOT_AVAILABLE);
    EXPECT_EQ(CertVerify2(context, nullptr, 0, anyText, anyText), QG_BAD_ARGUMENT);
    EXPECT_EQ(CertVerify2(context, &filledString, 0, anyText, anyText), QG_NOT_AVAILABLE);
    EXPECT_EQ(MediaWinsWirteCert(context, nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(MediaWinsWirteCert(context, &filledString), QG_NOT_AVAILABLE);
    EXPECT_EQ(MediaWinsReadCert(context, 0, nullptr), QG_NOT_AVAILABLE);
    EXPECT_THAT(toolkit.calls(), IsEmpty());
}

TEST_F(OnZrSide, TextGettersAnswer10003FromTheDispatcher)
{
    EXPECT_EQ(CertGetUID(context, 4, nullptr), QG_NO_MEMORY);
    EXPECT_EQ(CertGetRemainDays(context, nullptr, nullptr), QG_NO_MEMORY);
    EXPECT_EQ(CertGetRemainDays(context, &filledString, nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(CertVerifyByIVS(context, nullptr, &filledString, &filledString), QG_NO_MEMORY);
    EXPECT_EQ(CertLoad(context, nullptr), QG_BAD_ARGUMENT);
}

TEST_F(OnZrSide, AWrongPasswordIsTheLibrarysOwnNumber)
{
    toolkit.answer("ZRTK_PRIKEY_Decrypt", TOOLKIT_WRONG_PASSWORD);
    EXPECT_EQ(PriKeyDecrypt(context, anyText, &filledString, &filledString), TOOLKIT_WRONG_PASSWORD);
}

TEST_F(OnZrSide, TextPassesByteForByte)
{
    char password[] = "\xB0\xA1\xFF\x80 pass"; // EUC-KR and bytes that are no text at all
    EXPECT_EQ(PriKeyDecrypt(context, password, &filledString, &filledString), QG_OK);
    EXPECT_EQ(pointer<char>(toolkit.calls()[0].words[1]), password);
}
