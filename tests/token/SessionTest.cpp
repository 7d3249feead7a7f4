#include <filesystem>
#include <thread>

#include "TestHome.h"
#include "TokenTest.h"

using qgtk::Code;
namespace fs = std::filesystem;

class Session : public TokenTest
{
protected:
    void SetUp() override
    {
        TokenTest::SetUp();
        makeToken("first");
    }
    unsigned long slot() { return slots().front(); }
};
INSTANTIATE_BOTH_SIDES(Session);

TEST_P(Session, TokensAreListedAndDescribed)
{
    // SoftHSM shows one more, blank, behind those that are made.
    const std::vector<unsigned long> found = slots();
    ASSERT_EQ(found.size(), 2U);
    PKCS11_TOKEN_INFO info = {};
    ASSERT_EQ(token("GetTokenInfo", found[0], &info), 0);
    EXPECT_EQ(std::string(reinterpret_cast<char*>(info.label), sizeof info.label),
              "first" + std::string(27, ' '));
    EXPECT_TRUE(info.flags & CKF_TOKEN_INITIALIZED);
    EXPECT_EQ(info.ulMinPinLen, 4U);
    ASSERT_EQ(token("GetTokenInfo", found[1], &info), 0);
    EXPECT_FALSE(info.flags & CKF_TOKEN_INITIALIZED);
}

TEST_P(Session, OpensOnceLogsInAndOutAndCloses)
{
    const unsigned long first = slot();
    EXPECT_EQ(open(first), 0);
    EXPECT_EQ(open(first), number(Code::TokenSessionOpen));
    EXPECT_EQ(token("Login", text(userPin)), number(Code::TokenLoggedIn));
    EXPECT_EQ(token("Logout"), 0);
    EXPECT_EQ(token("Logout"), number(Code::TokenLoggedOut));
    EXPECT_EQ(token("Login", text(userPin)), 0);
    EXPECT_EQ(token("CloseSession"), 0);
    EXPECT_EQ(token("CloseSession"), number(Code::NoTokenSession));
    EXPECT_EQ(token("Login", text(userPin)), number(Code::NoTokenSession));
    EXPECT_EQ(token("Logout"), number(Code::NoTokenSession));
    EXPECT_EQ(token("ChangePIN", text(userPin), text("654321")), number(Code::NoTokenSession));
    EXPECT_EQ(open(first), 0) << "closing has logged out";
}

TEST_P(Session, AWrongPinIsToldWithTheModulesOwnNumber)
{
    EXPECT_EQ(open(slot(), "999999"), number(Code::WrongPin));
    const std::string korean = qgtk::textOfCode(Code::WrongPin, qgtk::Language::Korean);
    EXPECT_EQ(errorText(), eucKr(korean) + " (5118): C_Login: CKR 0x000000A0");
    // The one side makes two steps of it and leaves the session, the other opens nothing.
    EXPECT_EQ(token("CloseSession"), isZrtk() ? number(Code::NoTokenSession) : 0);
    EXPECT_EQ(open(slot()), 0);
}

TEST_P(Session, ThePinIsChanged)
{
    ASSERT_EQ(open(slot()), 0);
    EXPECT_EQ(token("ChangePIN", text("999999"), text("654321")), number(Code::WrongPin));
    EXPECT_EQ(token("ChangePIN", text(userPin), text("1")), number(Code::PinRefused));
    EXPECT_EQ(token("ChangePIN", text(userPin), text("")), number(Code::PinRefused));
    EXPECT_EQ(token("ChangePIN", text(userPin), text("654321")), 0);
    EXPECT_EQ(token("CloseSession"), 0);
    EXPECT_EQ(open(slot()), number(Code::WrongPin));
    EXPECT_THAT(pkcs11Tool("--login --pin 654321 --list-objects"),
                testing::Not(testing::HasSubstr("failed")));
}

TEST_P(Session, MissingArgumentsChangeNothing)
{
    unsigned long list[QG_TOKEN_SLOTS] = {77};
    unsigned long count = 77;
    EXPECT_EQ(token("GetSlotList", list, nullptr), number(Code::BadArgument));
    EXPECT_EQ(token("GetSlotList", nullptr, &count), number(Code::BadArgument));
    EXPECT_EQ(list[0], 77U);
    EXPECT_EQ(count, 77U);
    EXPECT_EQ(token("GetTokenInfo", slot(), nullptr), number(Code::BadArgument));
    PKCS11_TOKEN_INFO info = {};
    info.flags = 77;
    EXPECT_EQ(token("GetTokenInfo", ~0UL, &info), number(Code::NoSlot));
    EXPECT_EQ(info.flags, 77U);
    EXPECT_EQ(open(~0UL), number(Code::NoSlot));
    EXPECT_EQ(open(slots()[1]), number(Code::TokenUninitialised));
    ASSERT_EQ(open(slot()), 0);
    EXPECT_EQ(token("Logout"), 0);
    EXPECT_EQ(token("Login", nullptr), number(Code::BadArgument));
    EXPECT_EQ(token("Login", text("")), number(Code::WrongPin));
    EXPECT_EQ(token("ChangePIN", nullptr, text("654321")), number(Code::BadArgument));
    EXPECT_EQ(token("ChangePIN", text(userPin), nullptr), number(Code::BadArgument));
}

TEST_P(Session, OfAForeignContextIsNone)
{
    ASSERT_EQ(open(slot()), 0);
    void* other = nullptr;
    ASSERT_EQ(library.callBare("API_Init", &other, text(workDirectory)), 0);
    std::swap(context, other);
    EXPECT_EQ(loadModule(), 0);
    EXPECT_EQ(token("Logout"), number(Code::NoTokenSession));
    EXPECT_EQ(token("CloseSession"), number(Code::NoTokenSession));
    std::swap(context, other);
    EXPECT_EQ(library.callBare("API_Finish", other), 0);
    EXPECT_EQ(token("Logout"), 0) << "the other's end left the session alone";
    EXPECT_EQ(library.callBare((isZrtk() ? "PKCS11_Logout" : "HSM_Logout"), other), number(Code::NoContext));
}

TEST_P(Session, OnOneTokenInTwoContextsLogsOutForItself)
{
    const unsigned long first = slot();
    ASSERT_EQ(open(first), 0);
    void* mine = context;
    context = nullptr;
    ASSERT_EQ(library.callBare("API_Init", &context, text(workDirectory)), 0);
    ASSERT_EQ(loadModule(), 0);
    EXPECT_EQ(open(first, "999999"), number(Code::WrongPin)) << "though the token has its user";
    token("CloseSession");
    ASSERT_EQ(open(first), 0);
    EXPECT_EQ(call("API_Finish"), 0);
    context = mine;
    EXPECT_EQ(token("ChangePIN", text(userPin), text("654321")), 0);
    EXPECT_EQ(token("Logout"), 0);
    EXPECT_EQ(token("Login", text("654321")), 0);
}

TEST_P(Session, TwoThreadsHaveOneEach)
{
    const unsigned long first = slot();
    const auto rounds = [&] {
        void* own = nullptr;
        int failures = library.callBare("API_Init", &own, text(workDirectory));
        const std::string family = isZrtk() ? "PKCS11_" : "HSM_";
        failures += library.callBare(isZrtk() ? "MEDIA_Load" : "STORAGE_Load", own, text(QGTK_SOFTHSM_FILE));
        for (int round = 0; round < 20; ++round) {
            if (isZrtk())
                failures += library.callBare(family + "OpenSessionWithSlotID", own, first, text(userPin), 0);
            else {
                failures += library.callBare(family + "OpenSession", own, first, 0);
                failures += library.callBare(family + "Login", own, text(userPin));
            }
            failures += library.callBare(family + "CloseSession", own);
        }
        return failures + library.callBare("API_Finish", own);
    };
    int other = -1;
    std::thread thread([&] { other = rounds(); });
    EXPECT_EQ(rounds(), 0);
    thread.join();
    EXPECT_EQ(other, 0);
}

TEST_P(Session, EndsWithItsModule)
{
    ASSERT_EQ(open(slot()), 0);
    EXPECT_EQ(call(isZrtk() ? "MEDIA_Load" : "STORAGE_Load", text("/none.so")),
              number(Code::ModuleNotLoaded));
    EXPECT_EQ(token("Logout"), 0) << "a failed load leaves the old module and its session";
    EXPECT_EQ(call(isZrtk() ? "MEDIA_Unload" : "STORAGE_Unload"), 0);
    EXPECT_EQ(token("CloseSession"), number(Code::NoTokenSession));
    unsigned long list[QG_TOKEN_SLOTS] = {};
    unsigned long count = 0;
    EXPECT_EQ(token("GetSlotList", list, &count), number(Code::NoModule));
}

TEST_P(Session, TheConfigurationNamesTheModuleWhenNoneIsLoaded)
{
    const unsigned long first = slot();
    restartWith(std::string("PKCS11_MODULE=") + QGTK_SOFTHSM_FILE);
    EXPECT_EQ(slot(), first);
    restartWith("PKCS11_MODULE=/none.so");
    EXPECT_EQ(open(first), number(Code::ModuleNotLoaded));
    restartWith("");
    EXPECT_EQ(open(first), number(Code::NoModule));
}

TEST_P(Session, OfAModuleThatFails)
{
    ASSERT_EQ(call(isZrtk() ? "MEDIA_Load" : "STORAGE_Load", text(QGTK_MODULE_FILE)), 0);
    unsigned long list[QG_TOKEN_SLOTS] = {};
    unsigned long count = 77;
    EXPECT_EQ(token("GetSlotList", list, &count), number(Code::ModuleUnsuitable));
    EXPECT_EQ(count, 77U);
}

TEST_P(Session, LeavesAModuleToTheHostThatMadeItReady)
{
    void* host = dlopen(QGTK_SOFTHSM_FILE, RTLD_NOW);
    ASSERT_NE(host, nullptr);
    CK_FUNCTION_LIST* functions = nullptr;
    reinterpret_cast<CK_C_GetFunctionList>(dlsym(host, "C_GetFunctionList"))(&functions);
    CK_C_INITIALIZE_ARGS arguments = {};
    arguments.flags = CKF_OS_LOCKING_OK;
    ASSERT_EQ(functions->C_Initialize(&arguments), CKR_OK);
    const unsigned long first = slot();
    ASSERT_EQ(open(first), 0);
    ToolkitTest::TearDown();
    CK_SESSION_HANDLE session = 0;
    EXPECT_EQ(functions->C_OpenSession(first, CKF_SERIAL_SESSION, nullptr, nullptr, &session), CKR_OK);
    CK_SESSION_INFO info = {};
    EXPECT_EQ(functions->C_GetSessionInfo(session, &info), CKR_OK);
    EXPECT_EQ(info.state, CKS_RO_PUBLIC_SESSION) << "our login went with us";
    EXPECT_EQ(functions->C_Finalize(nullptr), CKR_OK);
    dlclose(host);
}

TEST_P(Session, ThatIsStillOpenEndsWithTheProcess)
{
    const unsigned long first = slot();
    EXPECT_EXIT(std::exit(open(first)), testing::ExitedWithCode(0), "^$");
}

TEST_P(Session, OnATokenThatIsGone)
{
    ASSERT_EQ(open(slot()), 0);
    fs::remove_all(tokens);
    EXPECT_NE(token("ChangePIN", text(userPin), text("654321")), 0);
    EXPECT_EQ(token("CloseSession"), 0);
}

class Initialisation : public TokenTest
{};
INSTANTIATE_ZR_SIDE(Initialisation);

TEST_P(Initialisation, OfTheBlankTokenErasesNoOther)
{
    makeToken("first");
    ASSERT_EQ(token("InitToken", text("officer1"), text("user12")), 0);
    EXPECT_THAT(pkcs11Tool("--list-token-slots"),
                testing::AllOf(testing::HasSubstr("first"), testing::HasSubstr("Quillgate")));
    EXPECT_THAT(pkcs11Tool("--token-label Quillgate --login --pin user12 --list-objects"),
                testing::Not(testing::HasSubstr("failed")));
    EXPECT_THAT(pkcs11Tool(std::string("--token-label first --login --list-objects --pin ") + userPin),
                testing::Not(testing::HasSubstr("failed")));
}

TEST_P(Initialisation, OfANamedTokenNeedsItsOfficer)
{
    makeToken("first");
    const unsigned long first = slots().front();
    const auto initialise = [&](const char* officer, const std::string& label) {
        return token("InitTokenWithSlotID", first, text(officer), text("user12"), text(label));
    };
    EXPECT_EQ(initialise("wrong123", "again"), number(Code::WrongPin));
    EXPECT_EQ(initialise(officerPin, std::string(33, 'x')), number(Code::BadArgument));
    EXPECT_EQ(token("InitTokenWithSlotID", ~0UL, text(officerPin), text("user12"), text("x")),
              number(Code::NoSlot));
    EXPECT_EQ(token("InitTokenWithSlotID", first, nullptr, text("user12"), text("x")),
              number(Code::BadArgument));
    EXPECT_EQ(token("InitTokenWithSlotID", first, text(officerPin), nullptr, text("x")),
              number(Code::BadArgument));
    EXPECT_EQ(token("InitTokenWithSlotID", first, text(officerPin), text("user12"), nullptr),
              number(Code::BadArgument));
    EXPECT_EQ(token("InitToken", nullptr, text("user12")), number(Code::BadArgument));
    ASSERT_EQ(open(first), 0) << "all that was refused changed nothing";
    EXPECT_EQ(initialise(officerPin, "again"), number(Code::TokenSessionOpen));
    ASSERT_EQ(token("CloseSession"), 0);
    ASSERT_EQ(initialise(officerPin, "again"), 0);
    EXPECT_THAT(pkcs11Tool("--list-token-slots"),
                testing::AllOf(testing::HasSubstr("again"), testing::Not(testing::HasSubstr("first"))));
    EXPECT_EQ(open(first, "user12"), 0);
}

TEST_P(Initialisation, OpensByTheTokensPlace)
{
    makeToken("first");
    EXPECT_EQ(token("OpenSessionWithTokenName", text(userPin), 2), number(Code::NoSlot));
    EXPECT_EQ(token("OpenSessionWithTokenName", text(userPin), -1), number(Code::NoSlot));
    EXPECT_EQ(token("OpenSessionWithTokenName", text(userPin), 1), number(Code::TokenUninitialised));
    EXPECT_EQ(token("OpenSessionWithTokenName", nullptr, 0), number(Code::BadArgument));
    EXPECT_EQ(token("OpenSessionWithTokenName", text(userPin), 0), 0);
    EXPECT_EQ(token("CloseSession"), 0);
    EXPECT_EQ(token("OpenSessionWithSlotID", slots().front(), nullptr, 0), 0) << "without a PIN: no login";
    EXPECT_EQ(token("Logout"), number(Code::TokenLoggedOut));
}
