// Modules that answer oddly, and that several have at once.

#include <dlfcn.h>

#include "TokenTest.h"

using qgtk::Code;

namespace {

constexpr CK_ULONG unavailable = CK_UNAVAILABLE_INFORMATION;
constexpr CK_ULONG terabyte = 1UL << 40;

} // namespace

/** A session on a token with the pair of hong(), by a module that looks and answers as it is told. */
class SpiedModule : public TokenTest
{
protected:
    void SetUp() override
    {
        TokenTest::SetUp();
        makeOpenToken();
        ASSERT_EQ(write({hong().certificate, hong().key}), 0);
        id = idOf(hong().certificate);
        ASSERT_EQ(loadSpied(), 0);
        spy = spyInModule();
        ASSERT_EQ(open(slots().front()), 0);
    }

    int loadSpied() { return call(isZrtk() ? "MEDIA_Load" : "STORAGE_Load", text(QGTK_SPY_FILE)); }

    std::string signedContent() { return verify(read("SignData", id, content)).content; }

    std::shared_ptr<TokenSpy> spy;
    std::string id;
};
INSTANTIATE_BOTH_SIDES(SpiedModule);

TEST_P(SpiedModule, NeedNotKnowTheLengthOfAResultAhead)
{
    for (const CK_ULONG length : {unavailable, terabyte, 1UL}) {
        spy->measure = length;
        EXPECT_EQ(signedContent(), content) << length;
    }
    spy->claim = unavailable;
    EXPECT_EQ(read("SignData", id, content), refused(Code::ModuleFailed));
    if (isZrtk()) {
        EXPECT_EQ(read("Sign", id, content), refused(Code::ModuleFailed));
    }
    spy->claim = 0;
    EXPECT_EQ(signedContent(), content) << "no failure leaves the session busy";
}

TEST_P(SpiedModule, MayNotGiveAttributesOfAnyLength)
{
    for (const CK_ULONG length : {unavailable, terabyte}) {
        spy->attributeMeasure = length;
        EXPECT_EQ(read("ReadCert", id), refused(Code::ModuleFailed)) << length;
        spy->attributeMeasure = 0;
        spy->attributeClaim = length;
        EXPECT_EQ(read("ReadCert", id), refused(Code::ModuleFailed)) << length;
        spy->attributeClaim = 0;
    }
    EXPECT_EQ(read("ReadCert", id), hong().certificate);
}

TEST_P(SpiedModule, MayFindATokenWhileItListsThem)
{
    const std::size_t before = slots().size();
    spy->plugs = true;
    EXPECT_EQ(slots().size(), before);
}

TEST_P(SpiedModule, KeepsNoPartOfAPairThatItHasNoRoomFor)
{
    Passed<std::string> given(id);
    ASSERT_EQ(token("DeleteCertAndPriKey", given.get()), 0);
    for (spy->room = 0; spy->room < 4;) {
        const unsigned room = spy->room;
        EXPECT_EQ(write(sampleHolder().signing), number(Code::TokenFull)) << room;
        EXPECT_THAT(asUser("--list-objects"), testing::Not(testing::HasSubstr("Object"))) << room;
        spy->room = room + 1;
    }
    EXPECT_EQ(write(sampleHolder().signing), 0);
    EXPECT_EQ(spy->room, 0U);
}

TEST_P(SpiedModule, ThatSomebodyElseHasEndedIsToldAndUsedAnew)
{
    const std::shared_ptr<void> module(dlopen(QGTK_SPY_FILE, RTLD_NOW), dlclose);
    CK_FUNCTION_LIST* functions = nullptr;
    reinterpret_cast<CK_C_GetFunctionList>(dlsym(module.get(), "C_GetFunctionList"))(&functions);
    ASSERT_EQ(functions->C_Finalize(nullptr), CKR_OK);
    EXPECT_EQ(read("SignData", id, content), refused(Code::TokenRemoved));
    EXPECT_EQ(read("ReadCert", id), refused(Code::TokenRemoved));
    ASSERT_EQ(loadSpied(), 0);
    ASSERT_EQ(open(slots().front()), 0);
    EXPECT_EQ(signedContent(), content);
}

TEST_P(SpiedModule, TheLoginOfOneContextIsNotTheOthers)
{
    void* const mine = context;
    context = nullptr;
    ASSERT_EQ(library.callBare("API_Init", &context, text(workDirectory)), 0);
    ASSERT_EQ(loadSpied(), 0);
    const unsigned long slot = slots().front();
    ASSERT_EQ(isZrtk() ? token("OpenSessionWithSlotID", slot, static_cast<char*>(nullptr), 0)
                       : token("OpenSession", slot, 0),
              0);
    EXPECT_EQ(read("SignData", id, content), refused(Code::TokenLoggedOut));
    EXPECT_EQ(read("ReadRandomForVID", id), refused(Code::TokenLoggedOut));
    EXPECT_EQ(write({kim().certificate, kim().key}), number(Code::TokenLoggedOut));
    EXPECT_EQ(read("ReadCert", id), hong().certificate) << "which everybody may";
    ASSERT_EQ(token("Login", text(userPin)), 0);
    EXPECT_EQ(signedContent(), content);
    ASSERT_EQ(token("Logout"), 0);
    EXPECT_EQ(read("SignData", id, content), refused(Code::TokenLoggedOut));
    EXPECT_EQ(call("API_Finish"), 0);
    context = mine;
    EXPECT_EQ(signedContent(), content);
}

TEST_P(SpiedModule, AKeyThatWantsThePinAtEachUseIsToldAndLeavesTheSessionFree)
{
    ASSERT_EQ(token("CloseSession"), 0);
    ASSERT_THAT(asUser("--keypairgen --key-type EC:prime256v1 --usage-sign --always-auth --id 4242"),
                testing::HasSubstr("always authenticate"));
    certify("BB");
    ASSERT_EQ(open(slots().front()), 0);
    EXPECT_EQ(read("SignData", "BB", content), refused(Code::TokenLoggedOut));
    EXPECT_EQ(signedContent(), content);
}

/** The other interface's library beside the one, in the same process. */
class SharedModule : public SpiedModule
{
protected:
    void SetUp() override
    {
        SpiedModule::SetUp();
        ASSERT_EQ(other.callBare("API_Init", &foreign, text(workDirectory)), 0);
    }

    void TearDown() override
    {
        if (foreign) {
            EXPECT_EQ(other.callBare("API_Finish", foreign), 0);
        }
        foreign = nullptr;
        SpiedModule::TearDown();
    }

    void openForeign()
    {
        const unsigned long slot = slots().front();
        ASSERT_EQ(other.callBare(isZrtk() ? "STORAGE_Load" : "MEDIA_Load", foreign, text(QGTK_SPY_FILE)), 0);
        char* const noPin = nullptr;
        ASSERT_EQ(isZrtk() ? other.callBare("HSM_OpenSession", foreign, slot, 0)
                           : other.callBare("PKCS11_OpenSessionWithSlotID", foreign, slot, noPin, 0),
                  0);
    }

    int unload() { return call(isZrtk() ? "MEDIA_Unload" : "STORAGE_Unload"); }
    int unloadForeign() { return other.callBare(isZrtk() ? "STORAGE_Unload" : "MEDIA_Unload", foreign); }

    /** The code of reading a certificate by the other library. */
    int readForeign()
    {
        BinString certificate(other);
        Passed<std::string> given(id);
        return other.callBare(isZrtk() ? "HSM_ReadCert" : "PKCS11_ReadCert", foreign, given.get(),
                              &certificate);
    }

    const ToolkitLibrary other{isZrtk() ? gpkiSide : zrtkSide};
    void* foreign = nullptr;
};
INSTANTIATE_BOTH_SIDES(SharedModule);

TEST_P(SharedModule, IsNotEndedUnderSessionsThatItTellsOf)
{
    spy->counts = true;
    openForeign();
    ASSERT_EQ(unload(), 0);
    EXPECT_EQ(spy->ends, 0U);
    EXPECT_EQ(readForeign(), 0);
    EXPECT_EQ(unloadForeign(), 0);
    EXPECT_EQ(spy->ends, 0U) << "who has not made it ready does not end it";
    ASSERT_EQ(loadSpied(), 0);
    EXPECT_EQ(slots().size(), 2U);
    ASSERT_EQ(unload(), 0);
    EXPECT_EQ(spy->ends, 1U);
}

TEST_P(SharedModule, ThatDoesNotTellIsEndedByWhoMadeItReady)
{
    openForeign();
    ASSERT_EQ(unload(), 0);
    EXPECT_EQ(spy->ends, 1U);
    EXPECT_EQ(readForeign(), number(Code::TokenRemoved));
    EXPECT_EQ(unloadForeign(), 0);
    ASSERT_EQ(loadSpied(), 0);
    openForeign();
    EXPECT_EQ(readForeign(), 0);
}
