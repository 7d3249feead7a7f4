#include <gmock/gmock.h>

#include "SessionTest.h"

using testing::ElementsAre;

namespace {

/** The exported functions: guards, stubs and log lines. */
class ClpFamily : public SessionTest
{
protected:
    /** Starts with logging on and an empty log. */
    void startLogging()
    {
        switchLogOn();
        ASSERT_EQ(start(), 0);
        fs::remove(logPath());
    }

    /** The lines that a call writes, with the handle's address as "H". */
    template <typename Call>
    std::vector<std::string> linesOf(Call call)
    {
        fs::remove(logPath());
        call();
        std::vector<std::string> lines = logLines();
        char address[32];
        std::snprintf(address, sizeof(address), "%p", handle);
        for (std::string& line : lines) {
            if (const size_t at = line.find(address); at != std::string::npos)
                line.replace(at, std::strlen(address), "H");
        }
        return lines;
    }

    /** The pair of lines that nearly every function has. */
    static auto framed(const std::string& name, int code)
    {
        return ElementsAre("[[ " + name + "() Start...  (Context : H) ]]",
                           "[[ " + name + "() End...  (" + std::to_string(code) + ") ]]");
    }
};

/** Every function with a handle, all other arguments null or 0. */
const std::vector<std::pair<const char*, std::function<int(void*)>>> WORKING = {
    {"CLP_SetType",
     [](void* h) {
         return CLP_SetType(h, nullptr);
     }},
    {"CLP_SetMediaType",
     [](void* h) {
         return CLP_SetMediaType(h, 0, 0);
     }},
    {"CLP_SetPFXInfo",
     [](void* h) {
         return CLP_SetPFXInfo(h, nullptr, nullptr);
     }},
    {"CLP_SetMemoryCert",
     [](void* h) {
         return CLP_SetMemoryCert(h, nullptr, 0, nullptr, 0, nullptr, 0, nullptr, 0);
     }},
    {"CLP_LoadCertList_ClearPath",
     [](void* h) {
         return CLP_LoadCertList_ClearPath(h, nullptr);
     }},
    {"CLP_LoadCertList_AddPath",
     [](void* h) {
         return CLP_LoadCertList_AddPath(h, nullptr, nullptr);
     }},
    {"CLP_LoadCertList_ClearOidInfo",
     [](void* h) {
         return CLP_LoadCertList_ClearOidInfo(h);
     }},
    {"CLP_LoadCertList_OidInfo",
     [](void* h) {
         return CLP_LoadCertList_OidInfo(h, nullptr, nullptr);
     }},
    {"CLP_GetRemDriveCount",
     [](void* h) {
         return CLP_GetRemDriveCount(h, nullptr);
     }},
    {"CLP_GetRemDrive",
     [](void* h) {
         return CLP_GetRemDrive(h, nullptr);
     }},
    {"CLP_LoadCertList",
     [](void* h) {
         return CLP_LoadCertList(h);
     }},
    {"CLP_GetCertCount",
     [](void* h) {
         return CLP_GetCertCount(h);
     }},
    {"CLP_GetCertInfo",
     [](void* h) {
         return CLP_GetCertInfo(h, 0, nullptr);
     }},
    {"CLP_GetHashAlgInfo",
     [](void* h) {
         return CLP_GetHashAlgInfo(h, 0, nullptr);
     }},
    {"CLP_DecryptPriKey",
     [](void* h) {
         return CLP_DecryptPriKey(h, 0, nullptr);
     }},
    {"CLP_DecryptPriKeyData",
     [](void* h) {
         return CLP_DecryptPriKeyData(h, 0, nullptr, nullptr, nullptr, nullptr, nullptr);
     }},
    {"CLP_GetPriKeyRandom",
     [](void* h) {
         return CLP_GetPriKeyRandom(h, 0, nullptr, nullptr, nullptr);
     }},
    {"CLP_SelectCert",
     [](void* h) {
         return CLP_SelectCert(h, 0, nullptr, nullptr);
     }},
    {"CLP_ChangePassword",
     [](void* h) {
         return CLP_ChangePassword(h, 0, nullptr, nullptr);
     }},
    {"CLP_CheckPassword",
     [](void* h) {
         return CLP_CheckPassword(h, nullptr, nullptr, 0);
     }},
    {"CLP_VerifyCert",
     [](void* h) {
         return CLP_VerifyCert(h, 0, 0, nullptr);
     }},
    {"CLP_VerifyVID",
     [](void* h) {
         return CLP_VerifyVID(h, 0, nullptr, nullptr);
     }},
    {"CLP_SaveCert",
     [](void* h) {
         return CLP_SaveCert(h, false, nullptr, nullptr, 0, nullptr, 0, nullptr, 0, nullptr, 0);
     }},
    {"CLP_ExportPFX",
     [](void* h) {
         return CLP_ExportPFX(h, 0, nullptr, nullptr);
     }},
    {"CLP_DeleteCert",
     [](void* h) {
         return CLP_DeleteCert(h, 0, nullptr);
     }},
    {"CLP_SearchFileList",
     [](void* h) {
         return CLP_SearchFileList(h, nullptr, nullptr);
     }},
    {"CLP_GetSearchFileCount",
     [](void* h) {
         return CLP_GetSearchFileCount(h, 0, nullptr);
     }},
    {"CLP_GetSearchFileName",
     [](void* h) {
         return CLP_GetSearchFileName(h, 0, 0, 0, nullptr);
     }},
};

/** The functions that this platform does not have, with the name in their lines. */
const std::vector<std::pair<const char*, std::function<int(void*)>>> UNAVAILABLE = {
    {"CLP_SetBriskSealInfo",
     [](void* h) {
         return CLP_SetBriskSealInfo(h, false, nullptr, nullptr, 0);
     }},
    {"CLP_GetCertInfo",
     [](void* h) {
         return CLP_GetBSCertInfo(h, nullptr, 0, nullptr);
     }},
    {"CLP_GetPKCS11DeviceCount",
     [](void* h) {
         return CLP_GetPKCS11DeviceCount(h, nullptr);
     }},
    {"CLP_GetPKCS11DeviceInfo",
     [](void* h) {
         return CLP_GetPKCS11DeviceInfo(h, nullptr);
     }},
    {"CLP_VerifyPKCS11Signature",
     [](void* h) {
         return CLP_VerifyPKCS11Signature(h, 0);
     }},
    {"CLP_SetBriskSealInfo",
     [](void* h) {
         return CLP_ClosePKCS11(h);
     }},
    {"CLP_GetSMCardListCount",
     [](void* h) {
         return CLP_GetSMCardListCount(h, nullptr);
     }},
    {"CLP_GetSMCardListInfo",
     [](void* h) {
         return CLP_GetSMCardListInfo(h, nullptr);
     }},
    {"CLP_SetPINNumber",
     [](void* h) {
         return CLP_SetPINNumber(h, nullptr);
     }},
    {"CLP_ExportDataPFX",
     [](void* h) {
         return CLP_ExportDataPFX(h, false, nullptr, nullptr, nullptr, 0, nullptr, 0, nullptr, 0, nullptr, 0);
     }},
};

int importPfx(void* handle)
{
    return CLP_ImportPFX(handle, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                         nullptr, nullptr);
}

} // namespace

TEST_F(ClpFamily, NullHandleIsToldByEveryWorkingFunction)
{
    for (const auto& [name, call] : WORKING)
        EXPECT_EQ(call(nullptr), CLPERR_NO_HANDLE) << name;
    EXPECT_EQ(CLP_GetDriveCount(nullptr, true, true, nullptr), CLPERR_NO_HANDLE);
    EXPECT_EQ(CLP_GetDrive(nullptr, nullptr), CLPERR_NO_HANDLE);
    EXPECT_EQ(CP_ClearCertData(nullptr), CLPERR_NO_HANDLE);
    ClearCertData(nullptr);
    CLP_UnInitalize(nullptr);
}

TEST_F(ClpFamily, NullArgumentsNeverCrash)
{
    ASSERT_EQ(start(), 0);
    for (const auto& [name, call] : WORKING)
        call(handle);
    for (const int medium : {1, 6, 8, 99}) {
        session().m_nMediaType = medium;
        for (const auto& [name, call] : WORKING)
            call(handle);
    }
}

TEST_F(ClpFamily, EveryWorkingFunctionFramesItsResult)
{
    startLogging();
    for (const auto& [name, call] : WORKING) {
        int code = 0;
        const auto lines = linesOf([&] { code = call(handle); });
        EXPECT_THAT(lines, framed(name, code));
    }
}

TEST_F(ClpFamily, GuardsComeBeforeTheWork)
{
    ASSERT_EQ(start(), 0);
    session().m_nMediaType = MEDIA_PFX; // where the work itself would answer something else
    char some[] = "x";
    EXPECT_EQ(CLP_SaveCert(handle, true, some, some, 0, some, 0, nullptr, 0, nullptr, 0),
              CLPERR_MEDIUM_NOT_ALLOWED);
    EXPECT_EQ(CLP_SaveCert(handle, true, some, some, -1, some, 0, nullptr, 0, nullptr, 0), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_SaveCert(handle, true, some, some, 1, some, -1, nullptr, 0, nullptr, 0), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_SaveCert(handle, true, some, nullptr, 1, some, 1, nullptr, 0, nullptr, 0), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_SaveCert(handle, true, some, some, 1, nullptr, 1, nullptr, 0, nullptr, 0), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_DeleteCert(handle, 0, nullptr), CLPERR_MEDIUM_NOT_ALLOWED);
    EXPECT_EQ(CLP_DeleteCert(handle, -1, nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_ExportPFX(handle, -1, some, some), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_ExportPFX(handle, 0, nullptr, some), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_ExportPFX(handle, 0, some, nullptr), QG_BAD_ARGUMENT);
}

TEST_F(ClpFamily, UnavailableFunctionsAnswerWhateverTheHandle)
{
    startLogging();
    for (const auto& [name, call] : UNAVAILABLE) {
        EXPECT_EQ(call(nullptr), QG_NOT_AVAILABLE) << name;
        EXPECT_THAT(linesOf([&] { EXPECT_EQ(call(handle), QG_NOT_AVAILABLE); }),
                    framed(name, QG_NOT_AVAILABLE));
    }
    EXPECT_EQ(CLP_SetBSCertType(nullptr, nullptr), QG_NOT_AVAILABLE);
    EXPECT_EQ(importPfx(nullptr), QG_NOT_AVAILABLE);
}

TEST_F(ClpFamily, ImportWritesOneLine)
{
    startLogging();
    EXPECT_THAT(linesOf([&] { importPfx(handle); }),
                ElementsAre("[[ CLP_ImportPFX() Start...  (Context : H) ]]"));
}

TEST_F(ClpFamily, OddLogTextsStayAsTheyAre)
{
    startLogging();
    int count = 0;
    DRIVEINFO drive{};
    EXPECT_THAT(linesOf([&] { CLP_SetBSCertType(handle, nullptr); }),
                ElementsAre("[[ CLP_SetBSCertType() Start...  (Context : H) ]]",
                            "[[ CLP_UnInitalize() End... (10005) ]]"));
    EXPECT_THAT(linesOf([&] { CLP_GetDriveCount(handle, true, true, &count); }),
                framed("CLP_GetRemDriveCount", 0));
    EXPECT_THAT(linesOf([&] { CLP_GetDrive(handle, &drive); }), framed("CLP_GetRemDrive", 0));
    EXPECT_THAT(linesOf([&] { CP_ClearCertData(handle); }),
                ElementsAre("[[ CP_ClearData() Start...  (Context : H) ]]", "[[ CP_ClearData() End...  ]]"));
    EXPECT_THAT(linesOf([&] { ClearCertData(handle); }),
                ElementsAre("[[ CLP_ChangePassword() Start...  (Context : H) ]]",
                            "[[ CLP_ChangePassword() End...  ]]"));
}

TEST_F(ClpFamily, StartAndEndHaveLinesOfTheirOwn)
{
    startLogging();
    EXPECT_THAT(linesOf([&] { start(); }),
                ElementsAre("[[ CLP_Initalize() Start... (Context : H) ]]", "[[ CLP_Initalize() End... "));
    EXPECT_THAT(linesOf([&] { CLP_Initalize(&handle, nullptr, nullptr); }),
                ElementsAre("[[ CLP_Initalize() End... "));
    EXPECT_THAT(linesOf([&] { CLP_UnInitalize(nullptr); }),
                ElementsAre("[[ CLP_Initalize() Start...  (Context : (nil)) ]]"));
    EXPECT_THAT(linesOf([&] { CLP_UnInitalize(handle); }),
                ElementsAre("[[ CLP_Initalize() Start...  (Context : H) ]]", "[[ CLP_UnInitalize() End... "));
    handle = nullptr;
}

TEST_F(ClpFamily, NoLogWithoutAPath)
{
    ASSERT_EQ(start(), 0);
    CLP_GetCertCount(handle);
    EXPECT_STREQ(szLogFilePath, "");
    EXPECT_TRUE(fs::is_empty(workDir));
}

TEST_F(ClpFamily, LogPathOfTheLastStartWins)
{
    startLogging();
    EXPECT_EQ(szLogFilePath, logPath().string());
    fs::remove(workDir / "zrapilog.ini");
    ASSERT_EQ(start(), 0);
    EXPECT_STREQ(szLogFilePath, "");
    EXPECT_EQ(disk().m_szLogFilePath, logPath().string()) << "the stores keep the first";
}

TEST_F(ClpFamily, CountOfANullHandleReadsAsItsCode)
{
    EXPECT_EQ(CLP_GetCertCount(nullptr), CLPERR_NO_HANDLE);
}

// --- Buffers ------------------------------------------------------------------------------------------

TEST_F(ClpFamily, FreeingNothingIsRefusedWithBothLines)
{
    startLogging();
    void* nothing = nullptr;
    int code = 0;
    EXPECT_THAT(linesOf([&] { code = CLP_MemFree(handle, &nothing); }),
                framed("CLP_MemFree", QG_BAD_ARGUMENT));
    EXPECT_EQ(code, QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_MemFree(handle, nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_MemFree(nullptr, &nothing), QG_BAD_ARGUMENT);
}

TEST_F(ClpFamily, FreeingDoesNotLookAtTheHandle)
{
    void* buffer = new char[100]();
    EXPECT_EQ(CLP_MemFree(nullptr, &buffer), 0);
    EXPECT_EQ(buffer, nullptr);
}

TEST_F(ClpFamily, SessionFreesBuffersToo)
{
    ASSERT_EQ(start(), 0);
    void* buffer = new char[10]();
    EXPECT_EQ(session().MemFree(&buffer), 0);
    EXPECT_EQ(session().MemFree(&buffer), QG_BAD_ARGUMENT);
    EXPECT_EQ(session().m_nRtn, QG_BAD_ARGUMENT);
}

// --- Options of the load ------------------------------------------------------------------------------

TEST_F(ClpFamily, PfxInfoReplacesBothTexts)
{
    ASSERT_EQ(start(), 0);
    EXPECT_EQ(CLP_SetPFXInfo(handle, text("/a.pfx"), text("a long password")), 0);
    EXPECT_EQ(CLP_SetPFXInfo(handle, text(std::string(2000, 'p')), text("short")), 0);
    EXPECT_EQ(std::strlen(session().m_szPFXPath), 1023u);
    EXPECT_EQ(bytes(session().m_szPFXPassword, 16), std::string("short\0\0\0\0\0\0\0\0\0\0\0", 16));
    EXPECT_EQ(CLP_SetPFXInfo(handle, nullptr, nullptr), 0);
    EXPECT_STREQ(session().m_szPFXPath, "");
    EXPECT_STREQ(session().m_szPFXPassword, "");
}

TEST_F(ClpFamily, DirectoryNamesReachTheListOfTheirKind)
{
    ASSERT_EQ(start(), 0);
    const std::pair<const char*, CLoadDISK::Names CLoadDISK::*> kinds[] = {
        {"gpki", &CLoadDISK::m_vtGPKIDirectory},
        {"NPKI", &CLoadDISK::m_vtNPKIDirectory},
        {"MpKi", &CLoadDISK::m_vtMPKIDirectory},
        {"PPKI", &CLoadDISK::m_vtPRIVATEDirectory}};
    for (const auto& [kind, names] : kinds) {
        EXPECT_EQ(CLP_LoadCertList_AddPath(handle, text(kind), text("a")), 0);
        EXPECT_EQ(CLP_LoadCertList_AddPath(handle, text(kind), text("a")), 0);
        EXPECT_THAT(disk().*names, ElementsAre("a", "a")) << "doubles are kept";
        EXPECT_EQ(CLP_LoadCertList_ClearPath(handle, text(kind)), 0);
        EXPECT_TRUE((disk().*names).empty());
    }
    EXPECT_EQ(CLP_LoadCertList_AddPath(handle, text("XPKI"), text("a")), 0);
    EXPECT_EQ(CLP_LoadCertList_ClearPath(handle, text("XPKI")), 0);
    EXPECT_EQ(CLP_LoadCertList_AddPath(handle, text("GPKI"), nullptr), QG_BAD_ARGUMENT);
}

TEST_F(ClpFamily, DirectoryNamesSurviveALoad)
{
    writeHolder(TestHome::path() / "NPKI/mine/User/h");
    startOn(MEDIA_HARDDISK);
    EXPECT_EQ(CLP_LoadCertList(handle), CLPERR_NOTEXISTCERT);
    ASSERT_EQ(CLP_LoadCertList_AddPath(handle, text("npki"), text("MINE")), 0);
    EXPECT_EQ(CLP_LoadCertList(handle), 0);
    EXPECT_EQ(CLP_LoadCertList(handle), 0);
}

TEST_F(ClpFamily, LastPurposeNameWinsInBothStores)
{
    ASSERT_EQ(start(), 0);
    EXPECT_EQ(CLP_LoadCertList_OidInfo(handle, text("1.2"), text("first")), 0);
    EXPECT_EQ(CLP_LoadCertList_OidInfo(handle, text("1.2"), text("second")), 0);
    EXPECT_EQ(disk().m_mapOidList["1.2"], "second");
    EXPECT_EQ(memory().m_mapOidList["1.2"], "second");
    EXPECT_EQ(CLP_LoadCertList_OidInfo(handle, text("1.2"), nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_LoadCertList_ClearOidInfo(handle), 0);
    EXPECT_TRUE(disk().m_mapOidList.empty());
    EXPECT_TRUE(memory().m_mapOidList.empty());
}

TEST_F(ClpFamily, PurposeNamesTakeEffectWithTheNextLoad)
{
    writeFlat(class1, "a");
    startOn(MEDIA_HARDDISK);
    ASSERT_EQ(CLP_LoadCertList(handle), 0);
    ASSERT_EQ(CLP_LoadCertList_OidInfo(handle, text("1.2.410.200005.1.1.1"), text("mine")), 0);
    EXPECT_STREQ(info(0).szDivision, "1.2.410.200005.1.1.1");
    ASSERT_EQ(CLP_LoadCertList(handle), 0);
    EXPECT_STREQ(info(0).szDivision, "mine");
}
