// The context: choosing and loading a library, its failure texts, byte strings, and the end.

#include "Context.h"
#include "TestHome.h"
#include "WrapperAPI.h"

#include <array>
#include <cstring>
#include <dlfcn.h>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <sys/stat.h>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Side = RecordingToolkit::Side;

constexpr Side ZRTK = RecordingToolkit::ZRTK;
constexpr Side GPKI = RecordingToolkit::GPKI;

/** The bytes of a buffer that a call may have written. */
using Buffer = std::array<char, 64>;

Buffer filledBuffer()
{
    Buffer buffer;
    buffer.fill('#');
    return buffer;
}

std::string text(const Buffer& buffer)
{
    return {buffer.data(), buffer.size()};
}

std::string filled(std::string start)
{
    start.resize(Buffer().size(), '#');
    return start;
}

std::string zeros(std::size_t count)
{
    return std::string(count, '\0');
}

/** Whether this process has the library loaded. */
bool isLoaded(const std::string& path)
{
    void* handle = dlopen(path.c_str(), RTLD_LAZY | RTLD_NOLOAD);
    if (handle != nullptr)
        dlclose(handle);
    return handle != nullptr;
}

std::string pathOf(RecordingToolkit& toolkit)
{
    return std::string(toolkit.directory()) + "/" + toolkit.fileName();
}

/** What is abandoned on purpose is no leak to report. */
class IgnoredLeaks
{
public:
    IgnoredLeaks() { ignore(true); }
    ~IgnoredLeaks() { ignore(false); }
    IgnoredLeaks(const IgnoredLeaks&) = delete;
    IgnoredLeaks& operator=(const IgnoredLeaks&) = delete;

private:
    static void ignore([[maybe_unused]] bool on)
    {
#if defined(__SANITIZE_ADDRESS__)
        on ? __lsan_disable() : __lsan_enable();
#endif
    }
};

class Frame : public testing::TestWithParam<Side>
{
protected:
    static int type() { return GetParam() == ZRTK ? TOOLKIT_ZRTK : TOOLKIT_GPKI; }
    static int notLoaded() { return GetParam() == ZRTK ? QG_ZRTK_NOT_LOADED : QG_GPKI_NOT_LOADED; }
    static std::string operation(const std::string& name)
    {
        return (GetParam() == ZRTK ? "ZRTK_" : "GPKI_") + name;
    }
};

std::string sideName(const testing::TestParamInfo<Side>& info)
{
    return info.param == ZRTK ? "ZrSide" : "GpkiSide";
}

INSTANTIATE_TEST_SUITE_P(Sides, Frame, testing::Values(ZRTK, GPKI), sideName);

} // namespace

TEST(Initalize, RefusesAnApiTypeOtherThanZeroAndOneAndLeavesTheContextUntouched)
{
    char directory[] = "/tmp";
    for (const int type : {2, -1, 99}) {
        void* context = nullptr;
        EXPECT_EQ(ZR_Initalize(&context, type, directory, nullptr), QG_BAD_TOOLKIT_TYPE);
        EXPECT_EQ(context, nullptr);
    }
    EXPECT_EQ(CWrapperAPI().Initalize(2, directory, nullptr), QG_BAD_TOOLKIT_TYPE);
}

TEST(Initalize, RefusesANullOrEmptyDirectory)
{
    char empty[] = "";
    for (char* directory : {static_cast<char*>(nullptr), empty}) {
        void* context = nullptr;
        EXPECT_EQ(ZR_Initalize(&context, TOOLKIT_ZRTK, directory, nullptr), QG_NO_WORK_DIRECTORY);
        EXPECT_EQ(ZR_Initalize(&context, TOOLKIT_GPKI, directory, nullptr), QG_NO_WORK_DIRECTORY);
        EXPECT_EQ(context, nullptr);
        EXPECT_EQ(CWrapperAPI().Initalize(TOOLKIT_ZRTK, directory, nullptr), QG_NO_WORK_DIRECTORY);
    }
}

TEST(Initalize, TestsTheApiTypeBeforeTheDirectory)
{
    void* context = nullptr;
    EXPECT_EQ(ZR_Initalize(&context, 2, nullptr, nullptr), QG_BAD_TOOLKIT_TYPE);
}

TEST(Initalize, AnswersNoContextWithoutAPlaceForIt)
{
    char directory[] = "/tmp";
    EXPECT_EQ(ZR_Initalize(nullptr, TOOLKIT_ZRTK, directory, nullptr), QG_NO_CONTEXT);
}

TEST_P(Frame, InitOperationGetsThePlaceOfTheContextAndTheDirectory)
{
    RecordingToolkit toolkit(GetParam());
    std::string directory;
    toolkit.act(operation("API_Init"), [&directory](const Word* words) {
        directory = pointer<char>(words[1]);
        return 0;
    });
    void* context = nullptr;
    ASSERT_EQ(ZR_Initalize(&context, type(), toolkit.directory(), toolkit.fileName()), QG_OK);
    EXPECT_THAT(toolkit.operations(), ElementsAre(operation("API_Init")));
    EXPECT_EQ(directory, toolkit.directory());
    ZR_Finish(context);
}

TEST_P(Frame, ADirectoryWithoutTheLibraryAnswersNotLoadedAndTheContextExists)
{
    std::string directory = TestHome::scratch("empty");
    char fileName[] = "libZRToolkitV30-v3.4.2.20.so";
    void* context = nullptr;
    EXPECT_EQ(ZR_Initalize(&context, type(), directory.data(), fileName), notLoaded());
    ASSERT_NE(context, nullptr);
    Buffer buffer = filledBuffer();
    EXPECT_EQ(ZR_GetErrInfo(context, sizeof buffer, buffer.data()), notLoaded());
    EXPECT_EQ(ZR_GetErrInfo2(context, sizeof buffer, buffer.data()), QG_OK);
    EXPECT_EQ(text(buffer), filled(""));
    ZR_Finish(context);
}

TEST_P(Frame, WhatStandsInTheLibrarysPlaceAndIsNoFileAnswersNotLoadedAndNeverBlocks)
{
    const std::filesystem::path directory = TestHome::scratch("no library");
    char fileName[] = "libZRToolkitV30-v3.4.2.20.so";
    const std::filesystem::path library = directory / (GetParam() == ZRTK ? fileName : "libgpkiapi_v15.so");
    const std::function<void()> stands[] = {
        [&] { ASSERT_EQ(mkfifo(library.c_str(), 0600), 0); },
        [&] { std::filesystem::create_symlink("/dev/zero", library); },
        [&] { std::filesystem::create_symlink(library, library); },
        [&] { std::filesystem::create_directory(library); },
        [&] { writeFile(library, ""); },
        [&] { writeFile(library, "no library"); },
    };
    for (const auto& stand : stands) {
        std::filesystem::remove(library);
        stand();
        EXPECT_EQ(Context(GetParam(), std::string(directory).data(), fileName).result(), notLoaded());
    }
}

TEST_P(Frame, ALibraryWithoutTheInitOperationAnswersNotAvailable)
{
    RecordingToolkit toolkit(GetParam(), "empty");
    EXPECT_EQ(Context(toolkit).result(), QG_NOT_AVAILABLE);
}

TEST_P(Frame, AFailedInitialisationLeavesAContextThatTellsTheKeptText)
{
    RecordingToolkit toolkit(GetParam());
    toolkit.answer(operation("API_Init"), 1234);
    toolkit.tellError("no licence");
    void* context = nullptr;
    EXPECT_EQ(ZR_Initalize(&context, type(), toolkit.directory(), toolkit.fileName()), 1234);
    EXPECT_THAT(toolkit.operations(), ElementsAre(operation("API_Init"), operation("API_GetErrInfo")));
    Buffer buffer = filledBuffer();
    EXPECT_EQ(ZR_GetErrInfo2(context, sizeof buffer, buffer.data()), QG_OK);
    EXPECT_STREQ(buffer.data(), "no licence");
    ZR_Finish(context);
}

TEST(Initalize, ZrSideLoadsTheGivenFileName)
{
    RecordingToolkit toolkit(ZRTK);
    const std::filesystem::path directory = TestHome::scratch("named");
    std::filesystem::create_symlink(std::filesystem::path(toolkit.directory()) / toolkit.fileName(),
                                    directory / "other.so");
    std::string path = directory;
    char fileName[] = "other.so";
    EXPECT_EQ(Context(ZRTK, path.data(), fileName).result(), QG_OK);
    EXPECT_EQ(Context(ZRTK, path.data(), nullptr).result(), QG_ZRTK_NOT_LOADED);
}

TEST(Initalize, ZrSideFallsBackToItsDefaultFileName)
{
    RecordingToolkit toolkit(ZRTK);
    const std::filesystem::path directory = TestHome::scratch("default");
    std::filesystem::create_symlink(std::filesystem::path(toolkit.directory()) / toolkit.fileName(),
                                    directory / "libZRCToolkitV30.so");
    std::string path = directory;
    EXPECT_EQ(Context(ZRTK, path.data(), nullptr).result(), QG_OK);
}

TEST(Initalize, GpkiSideIgnoresTheGivenFileName)
{
    RecordingToolkit toolkit(GPKI);
    char fileName[] = "missing.so";
    EXPECT_EQ(Context(GPKI, toolkit.directory(), fileName).result(), QG_OK);
    EXPECT_EQ(Context(GPKI, toolkit.directory(), nullptr).result(), QG_OK);
}

TEST_P(Frame, AVeryLongDirectoryIsCutAndThenNotFound)
{
    RecordingToolkit toolkit(GetParam());
    std::string directory = std::string(toolkit.directory()) + std::string(5000, '/');
    EXPECT_EQ(Context(GetParam(), directory.data(), toolkit.fileName()).result(),
              GetParam() == ZRTK ? QG_ZRTK_NOT_LOADED : QG_OK);
    directory = "/" + std::string(5000, 'd');
    EXPECT_EQ(Context(GetParam(), directory.data(), toolkit.fileName()).result(), notLoaded());
}

TEST_P(Frame, ADirectoryIsKeptTo259Characters)
{
    RecordingToolkit toolkit(GetParam());
    std::string handedOn;
    toolkit.act(operation("API_Init"), [&handedOn](const Word* words) {
        handedOn = pointer<char>(words[1]);
        return 0;
    });
    // Slashes at its end keep a directory the same; the ZR side's path of 259 bytes has no room for more.
    std::string directory = toolkit.directory();
    const std::size_t size = GetParam() == ZRTK ? 258 - 1 - std::strlen(toolkit.fileName()) : 300;
    directory.resize(size, '/');
    Context context(GetParam(), directory.data(), toolkit.fileName());
    EXPECT_EQ(context.result(), QG_OK);
    EXPECT_EQ(handedOn.size(), std::min<std::size_t>(size, 259));
}

TEST(Initalize, ZrSidesPathHolds258Characters)
{
    RecordingToolkit toolkit(ZRTK);
    std::string directory = toolkit.directory();
    directory.resize(258 - 1 - std::strlen(toolkit.fileName()), '/');
    EXPECT_EQ(Context(ZRTK, directory.data(), toolkit.fileName()).result(), QG_OK);
    directory += '/';
    EXPECT_EQ(Context(ZRTK, directory.data(), toolkit.fileName()).result(), QG_ZRTK_NOT_LOADED);
}

TEST_P(Frame, ASecondInitialisationMakesANewWrapperAndAbandonsTheFirstWithItsLibrary)
{
    std::string directory = TestHome::scratch("empty");
    std::string path;
    void* context = nullptr;
    {
        RecordingToolkit toolkit(GetParam(), "bare");
        path = pathOf(toolkit);
        const IgnoredLeaks abandoned;
        ASSERT_EQ(ZR_Initalize(&context, type(), toolkit.directory(), toolkit.fileName()), QG_OK);
    }
    const void* first = context;
    EXPECT_EQ(ZR_Initalize(&context, type(), directory.data(), nullptr), notLoaded());
    EXPECT_EQ(context, first);
    EXPECT_EQ(CertUnLoad(context), notLoaded());
    ZR_Finish(context);
    EXPECT_TRUE(isLoaded(path));
}

TEST(Initalize, ASecondInitialisationCanChangeTheSide)
{
    RecordingToolkit zrtk(ZRTK);
    RecordingToolkit gpki(GPKI);
    void* context = nullptr;
    ASSERT_EQ(ZR_Initalize(&context, TOOLKIT_ZRTK, zrtk.directory(), zrtk.fileName()), QG_OK);
    ASSERT_EQ(ZR_Initalize(&context, TOOLKIT_GPKI, gpki.directory(), nullptr), QG_OK);
    EXPECT_EQ(CertUnLoad(context), QG_OK);
    EXPECT_EQ(gpki.operations().back(), "GPKI_CERT_Unload");
    ZR_Finish(context);
}

TEST(Initalize, TwoContextsAreIndependent)
{
    RecordingToolkit toolkit(ZRTK);
    Context first(toolkit);
    Context second(toolkit);
    toolkit.answer("ZRTK_CERT_Unload", 77);
    toolkit.tellError("first's text");
    EXPECT_EQ(CertUnLoad(first), 77);
    Buffer buffer = filledBuffer();
    EXPECT_EQ(ZR_GetErrInfo2(second, sizeof buffer, buffer.data()), QG_OK);
    EXPECT_EQ(text(buffer), filled(""));
}

TEST(Finish, IgnoresANullContext)
{
    ZR_Finish(nullptr);
}

TEST_P(Frame, FinishUnloadsTheLibraryWithoutItsFinishOperation)
{
    std::string path;
    void* context = nullptr;
    {
        RecordingToolkit toolkit(GetParam());
        path = pathOf(toolkit);
        ASSERT_EQ(ZR_Initalize(&context, type(), toolkit.directory(), toolkit.fileName()), QG_OK);
        toolkit.forget();
        void* other = nullptr;
        ASSERT_EQ(ZR_Initalize(&other, type(), toolkit.directory(), toolkit.fileName()), QG_OK);
        ZR_Finish(other);
        EXPECT_THAT(toolkit.operations(), ElementsAre(operation("API_Init")));
    }
    EXPECT_TRUE(isLoaded(path));
    ZR_Finish(context);
    EXPECT_FALSE(isLoaded(path));
}

TEST_P(Frame, FinishMethodsEndTheLibrarysContext)
{
    RecordingToolkit toolkit(GetParam());
    CWrapperAPI api;
    EXPECT_EQ(api.Finish(), QG_NO_CONTEXT);
    ASSERT_EQ(api.Initalize(type(), toolkit.directory(), toolkit.fileName()), QG_OK);
    toolkit.answer(operation("API_Finish"), 9);
    EXPECT_EQ(api.Finish(), 9);
    EXPECT_EQ(pointer<void>(toolkit.calls()[1].words[0]), toolkit.context());
    toolkit.answer(operation("API_Finish"), 0);
    EXPECT_EQ(api.Finish(), QG_OK);
    EXPECT_EQ(CertUnLoad(&api), QG_OK);
    EXPECT_EQ(pointer<void>(toolkit.calls().back().words[0]), nullptr) << "the ended context is forgotten";
}

TEST_P(Frame, GetErrInfoAsksTheLibraryAfreshAndGetErrInfo2DoesNot)
{
    RecordingToolkit toolkit(GetParam());
    Context context(toolkit);
    toolkit.answer(operation("CERT_Unload"), 77);
    toolkit.tellError("at the failure");
    EXPECT_EQ(CertUnLoad(context), 77);
    toolkit.tellError("asked again");
    toolkit.forget();
    Buffer kept = filledBuffer();
    EXPECT_EQ(ZR_GetErrInfo2(context, sizeof kept, kept.data()), QG_OK);
    EXPECT_STREQ(kept.data(), "at the failure");
    EXPECT_THAT(toolkit.calls(), IsEmpty());
    Buffer asked = filledBuffer();
    EXPECT_EQ(ZR_GetErrInfo(context, sizeof asked, asked.data()), QG_OK);
    EXPECT_STREQ(asked.data(), "asked again");
    EXPECT_THAT(toolkit.operations(), ElementsAre(operation("API_GetErrInfo")));
}

TEST_P(Frame, KeptTextOutlivesSuccessesAndGivesWayToTheNextFailure)
{
    RecordingToolkit toolkit(GetParam());
    Context context(toolkit);
    toolkit.answer(operation("CERT_Unload"), 77);
    toolkit.tellError("a first and long text");
    EXPECT_EQ(CertUnLoad(context), 77);
    toolkit.answer(operation("CERT_Unload"), 0);
    EXPECT_EQ(CertUnLoad(context), QG_OK);
    Buffer buffer = filledBuffer();
    EXPECT_EQ(ZR_GetErrInfo2(context, sizeof buffer, buffer.data()), QG_OK);
    EXPECT_STREQ(buffer.data(), "a first and long text");
    toolkit.answer(operation("CERT_Unload"), 78);
    toolkit.tellError("second");
    EXPECT_EQ(CertUnLoad(context), 78);
    EXPECT_EQ(ZR_GetErrInfo2(context, sizeof buffer, buffer.data()), QG_OK);
    EXPECT_STREQ(buffer.data(), "second");
}

TEST_P(Frame, AFailureWhoseTextTheLibraryDoesNotTellLeavesNoOlderTextToBeTakenForIts)
{
    RecordingToolkit toolkit(GetParam());
    Context context(toolkit);
    toolkit.answer(operation("CERT_Unload"), 77);
    toolkit.tellError("of the first failure");
    EXPECT_EQ(CertUnLoad(context), 77);
    toolkit.answer(operation("API_GetErrInfo"), 5);
    EXPECT_EQ(CertUnLoad(context), 77) << "not the number of the text";
    Buffer buffer = filledBuffer();
    EXPECT_EQ(ZR_GetErrInfo2(context, sizeof buffer, buffer.data()), QG_OK);
    EXPECT_EQ(text(buffer), filled(""));
}

TEST_P(Frame, RefusalsAndMissingOperationsLeaveTheKeptTextAlone)
{
    RecordingToolkit toolkit(GetParam(), "bare");
    Context context(toolkit);
    BINSTR bytes = {reinterpret_cast<unsigned char*>(toolkit.directory()), 3};
    toolkit.answer(operation("CERT_Load"), 77);
    toolkit.tellError("kept");
    EXPECT_EQ(CertLoad(context, &bytes), 77);
    toolkit.tellError("never asked for");
    EXPECT_EQ(CertLoad(context, nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(CertUnLoad(context), QG_NOT_AVAILABLE);
    Buffer buffer = filledBuffer();
    EXPECT_EQ(ZR_GetErrInfo2(context, sizeof buffer, buffer.data()), QG_OK);
    EXPECT_STREQ(buffer.data(), "kept");
}

TEST_P(Frame, GetErrInfoTellsTheLibrary2048BytesAndItsContext)
{
    RecordingToolkit toolkit(GetParam());
    Context context(toolkit);
    bool zeroed = false;
    toolkit.act(operation("API_GetErrInfo"), [&zeroed](const Word* words) {
        const std::string local(pointer<char>(words[2]), 2048);
        zeroed = local == zeros(2048);
        return 0;
    });
    Buffer buffer = filledBuffer();
    EXPECT_EQ(ZR_GetErrInfo(context, 5, buffer.data()), QG_OK);
    EXPECT_EQ(pointer<void>(toolkit.calls()[0].words[0]), toolkit.context());
    EXPECT_EQ(number(toolkit.calls()[0].words[1]), 2048);
    EXPECT_TRUE(zeroed);
}

TEST_P(Frame, GetErrInfoCopiesAtMostItsBoundAndAddsNoTerminator)
{
    RecordingToolkit toolkit(GetParam());
    Context context(toolkit);
    toolkit.tellError("a text of the library");
    Buffer buffer = filledBuffer();
    EXPECT_EQ(ZR_GetErrInfo(context, 10, buffer.data()), QG_OK);
    EXPECT_EQ(text(buffer), filled("a text of "));
    buffer = filledBuffer();
    EXPECT_EQ(ZR_GetErrInfo(context, 64, buffer.data()), QG_OK);
    EXPECT_EQ(text(buffer), filled(std::string("a text of the library") + '\0'));
}

TEST_P(Frame, GetErrInfoZeroesTheFirst8BytesWhateverTheBound)
{
    RecordingToolkit toolkit(GetParam());
    Context context(toolkit);
    toolkit.tellError("a text of the library");
    Buffer buffer = filledBuffer();
    EXPECT_EQ(ZR_GetErrInfo(context, 3, buffer.data()), QG_OK);
    EXPECT_EQ(text(buffer), filled("a t" + zeros(5)));
    toolkit.answer(operation("API_GetErrInfo"), 5);
    buffer = filledBuffer();
    EXPECT_EQ(ZR_GetErrInfo(context, 64, buffer.data()), 5);
    EXPECT_EQ(text(buffer), filled(zeros(8)));
}

TEST_P(Frame, GetErrInfoZeroesTheFirst8BytesEvenWhenTheOperationIsMissing)
{
    RecordingToolkit toolkit(GetParam(), "empty");
    Context context(toolkit);
    Buffer buffer = filledBuffer();
    EXPECT_EQ(ZR_GetErrInfo(context, 64, buffer.data()), QG_NOT_AVAILABLE);
    EXPECT_EQ(text(buffer), filled(zeros(8)));
}

TEST_P(Frame, GetErrInfoRefusesANullBufferWithTheSidesOwnCode)
{
    RecordingToolkit toolkit(GetParam());
    Context context(toolkit);
    EXPECT_EQ(ZR_GetErrInfo(context, 64, nullptr), GetParam() == ZRTK ? QG_BAD_ARGUMENT : QG_NO_MEMORY);
    EXPECT_THAT(toolkit.calls(), IsEmpty());
}

TEST_P(Frame, ErrorTextsWriteNothingForANegativeBound)
{
    RecordingToolkit toolkit(GetParam());
    Context context(toolkit);
    toolkit.tellError("a text of the library");
    toolkit.answer(operation("CERT_Unload"), 77);
    EXPECT_EQ(CertUnLoad(context), 77);
    for (const int bound : {-1, -2048}) {
        Buffer buffer = filledBuffer();
        EXPECT_EQ(ZR_GetErrInfo(context, bound, buffer.data()), QG_BAD_ARGUMENT);
        EXPECT_EQ(ZR_GetErrInfo2(context, bound, buffer.data()), QG_OK);
        EXPECT_EQ(text(buffer), filled(""));
    }
}

TEST_P(Frame, GetErrInfo2CopiesAtMostItsBoundAndAddsNoTerminator)
{
    RecordingToolkit toolkit(GetParam());
    Context context(toolkit);
    toolkit.tellError("a text of the library");
    toolkit.answer(operation("CERT_Unload"), 77);
    EXPECT_EQ(CertUnLoad(context), 77);
    Buffer buffer = filledBuffer();
    EXPECT_EQ(ZR_GetErrInfo2(context, 3, buffer.data()), QG_OK);
    EXPECT_EQ(text(buffer), filled("a t"));
    EXPECT_EQ(ZR_GetErrInfo2(context, 64, nullptr), QG_OK);
}

TEST_P(Frame, AFailureTextThatFillsTheWholeBufferStaysWithinIt)
{
    RecordingToolkit toolkit(GetParam());
    Context context(toolkit);
    toolkit.tellError(std::string(2048, 'e'));
    toolkit.answer(operation("CERT_Unload"), 77);
    EXPECT_EQ(CertUnLoad(context), 77);
    for (const auto ask : {ZR_GetErrInfo, ZR_GetErrInfo2}) {
        std::string buffer(5000, '#');
        EXPECT_EQ(ask(context, 5000, buffer.data()), QG_OK);
        EXPECT_EQ(buffer, std::string(2048, 'e') + std::string(2952, '#'));
    }
}

TEST(GetVersion, ZrSideClearsBothTextsAndDropsTheSecond)
{
    RecordingToolkit toolkit(ZRTK);
    Context context(toolkit);
    std::string second;
    toolkit.act("ZRTK_API_GetInfo", [&second](const Word* words) {
        second.assign(pointer<char>(words[2]), 1024);
        std::memset(pointer<char>(words[2]), 'i', 1024);
        return 0;
    });
    Buffer buffer = filledBuffer();
    EXPECT_EQ(ZR_GetVersion(context, 4, buffer.data()), QG_OK);
    EXPECT_EQ(text(buffer), filled(zeros(8)));
    EXPECT_EQ(second, zeros(1024));
    EXPECT_EQ(pointer<char>(toolkit.calls()[0].words[1]), buffer.data()) << "written straight by the library";
}

TEST(GetVersion, ZrSideRefusesANullTextAndGpkiSidePassesIt)
{
    RecordingToolkit zrtk(ZRTK);
    Context onZrtk(zrtk);
    EXPECT_EQ(ZR_GetVersion(onZrtk, 64, nullptr), QG_BAD_ARGUMENT);
    RecordingToolkit gpki(GPKI);
    Context onGpki(gpki);
    EXPECT_EQ(ZR_GetVersion(onGpki, 64, nullptr), QG_OK);
    EXPECT_EQ(number(gpki.calls()[0].words[1]), 64);
}

TEST(SetConfFile, ZrSideRejectsEveryPathAndPassesAnEmptyText)
{
    RecordingToolkit toolkit(ZRTK);
    Context context(toolkit);
    char path[] = "/etc/toolkit.conf";
    char empty[] = "";
    EXPECT_EQ(ZR_SetConfFile(context, path), QG_BAD_ARGUMENT);
    EXPECT_EQ(ZR_SetConfFile(context, nullptr), QG_BAD_ARGUMENT);
    EXPECT_THAT(toolkit.calls(), IsEmpty());
    EXPECT_EQ(ZR_SetConfFile(context, empty), QG_OK);
    EXPECT_THAT(toolkit.operations(), ElementsAre("ZRTK_API_SetConfFile"));
}

TEST(SetConfFile, GpkiSidePassesEveryPathThatIsNotNull)
{
    RecordingToolkit toolkit(GPKI);
    Context context(toolkit);
    char path[] = "/etc/toolkit.conf";
    char empty[] = "";
    EXPECT_EQ(ZR_SetConfFile(context, path), QG_OK);
    EXPECT_EQ(ZR_SetConfFile(context, empty), QG_OK);
    EXPECT_EQ(toolkit.calls().size(), 2U);
    EXPECT_EQ(ZR_SetConfFile(context, nullptr), QG_BAD_ARGUMENT);
}

TEST(ByteStrings, DeleteOfAnEmptyOneIsRefusedOnTheZrSideAndPassedOnTheGpkiSide)
{
    unsigned char byte = 1;
    for (BINSTR empty : {BINSTR{nullptr, 0}, BINSTR{nullptr, 3}, BINSTR{&byte, 0}}) {
        RecordingToolkit zrtk(ZRTK);
        EXPECT_EQ(ZR_BINSTR_Delete(Context(zrtk), &empty), QG_BAD_ARGUMENT);
        EXPECT_THAT(zrtk.calls(), IsEmpty());
        RecordingToolkit gpki(GPKI);
        EXPECT_EQ(ZR_BINSTR_Delete(Context(gpki), &empty), QG_OK);
        EXPECT_THAT(gpki.operations(), ElementsAre("GPKI_BINSTR_Delete"));
    }
}

TEST_P(Frame, SetDataRefusesALengthOfZero)
{
    RecordingToolkit toolkit(GetParam());
    Context context(toolkit);
    unsigned char byte = 1;
    BINSTR bytes = {};
    EXPECT_EQ(ZR_BINSTR_SetData(context, &byte, 0, &bytes), QG_BAD_ARGUMENT);
    EXPECT_THAT(toolkit.calls(), IsEmpty());
}

TEST_P(Frame, ByteStringOperationsTakeNoContext)
{
    RecordingToolkit toolkit(GetParam());
    Context context(toolkit);
    unsigned char byte = 1;
    BINSTR bytes = {&byte, 1};
    EXPECT_EQ(ZR_BINSTR_Create(context, &bytes), QG_OK);
    EXPECT_EQ(ZR_BINSTR_SetData(context, &byte, 1, &bytes), QG_OK);
    EXPECT_EQ(ZR_BINSTR_Delete(context, &bytes), QG_OK);
    EXPECT_EQ(pointer<BINSTR>(toolkit.calls()[0].words[0]), &bytes);
    EXPECT_EQ(pointer<unsigned char>(toolkit.calls()[1].words[0]), &byte);
    EXPECT_EQ(pointer<BINSTR>(toolkit.calls()[2].words[0]), &bytes);
}

TEST_P(Frame, EveryCallLooksItsOperationUpAgainAndKeepsNoOrder)
{
    RecordingToolkit toolkit(GetParam());
    Context context(toolkit);
    char uid[64] = {};
    EXPECT_EQ(CertGetUID(context, sizeof uid, uid), QG_OK) << "without a certificate loaded";
    EXPECT_EQ(CertUnLoad(context), QG_OK);
    EXPECT_EQ(CertGetUID(context, sizeof uid, uid), QG_OK);
    EXPECT_EQ(toolkit.calls().size(), 3U);
}
