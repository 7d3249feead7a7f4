#include "SessionTest.h"

using Session = SessionTest;

// --- Start and end ------------------------------------------------------------------------------------

TEST_F(Session, StartLoadsTheNamedLibraryFromTheWorkDirectory)
{
    EXPECT_EQ(start(), 0);
    EXPECT_EQ(toolkit.count("ZR_Initalize(0," + workDir.string() + ",libZRToolkitV30-v3.4.2.20.so)"), 1);
    EXPECT_EQ(disk().m_pZRWrapCtx, session().m_pZRWrapCtx);
    EXPECT_EQ(memory().m_pZRWrapCtx, session().m_pZRWrapCtx);
    EXPECT_TRUE(session().m_bInit);
    EXPECT_EQ(session().m_nTKType, TOOLKIT_ZRTK);
}

TEST_F(Session, KoreanConfigurationIsTheDefaultWhateverTheDirectoryHolds)
{
    writeFile(workDir / "IssuerOid_Eng.conf", "[ISSUERNAME]\nyessignCA=English\n");
    writeFile(workDir / "IssuerOid.conf", "[ISSUERNAME]\nyessignCA=Korean\n");
    writeFlat(class1, "a");
    startOn(MEDIA_HARDDISK);
    ASSERT_EQ(CLP_LoadCertList(handle), 0);
    EXPECT_STREQ(info(0).szIssuerName, "Korean");
}

TEST_F(Session, EnglishSessionTakesTheEnglishConfiguration)
{
    CCertListProcInterface english;
    english.m_nLanguage = LANGUAGE_ENGLISH;
    copyText(english.m_szWorkDir, "/some");
    EXPECT_EQ(english.SetConfigPath(), 0);
    EXPECT_STREQ(english.m_szConfPath, "/some/IssuerOid_Eng.conf");
}

TEST_F(Session, NamedConfigurationIsUsedUnchanged)
{
    copyText(option.szConfigPath, "/some/where.conf");
    EXPECT_EQ(start(), 0);
    EXPECT_STREQ(disk().m_szConfigPath, "/some/where.conf");
    EXPECT_STREQ(memory().m_szConfigPath, "/some/where.conf");
}

TEST_F(Session, FailuresOfTheToolkitAreMapped)
{
    const std::pair<int, int> mapped[] = {{QG_ZRTK_NOT_LOADED, CLPERR_TOOLKIT_NOT_LOADED},
                                          {QG_GPKI_NOT_LOADED, CLPERR_TOOLKIT_NOT_LOADED},
                                          {QG_BAD_TOOLKIT_TYPE, CLPERR_NOT_STARTED},
                                          {QG_NO_WORK_DIRECTORY, CLPERR_NOT_STARTED},
                                          {4711, CLPERR_NOT_STARTED}};
    for (const auto& [code, expected] : mapped) {
        toolkit.failures["ZR_Initalize"] = code;
        EXPECT_EQ(start(), expected);
        ASSERT_TRUE(handle) << "the object stays for CLP_UnInitalize";
        EXPECT_EQ(disk().m_pZRWrapCtx, nullptr);
        EXPECT_FALSE(session().m_bInit);
    }
}

TEST_F(Session, MissingOptionLeavesAnObjectWithoutStores)
{
    EXPECT_EQ(CLP_Initalize(&handle, nullptr, nullptr), QG_BAD_ARGUMENT);
    ASSERT_TRUE(handle);
    EXPECT_EQ(CLP_Initalize(nullptr, &option, nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(session().GetDiskPointer(), nullptr);
    EXPECT_EQ(CP_ClearCertData(handle), 0);
}

TEST_F(Session, OperationsWithoutStoresAnswerThatThereIsNoContext)
{
    CLP_Initalize(&handle, nullptr, nullptr);
    int number = 0;
    char name[] = "NPKI";
    CERTINFO record{};
    DRIVEINFO drive{};
    char* buffer = nullptr;
    EXPECT_EQ(CLP_SetType(handle, &certOption), QG_NO_CONTEXT);
    EXPECT_EQ(CLP_SetMediaType(handle, 1, 0), QG_NO_CONTEXT);
    EXPECT_EQ(CLP_LoadCertList(handle), QG_NO_CONTEXT);
    EXPECT_EQ(CLP_GetCertCount(handle), 0);
    EXPECT_EQ(CLP_GetCertInfo(handle, 0, &record), QG_NO_CONTEXT);
    EXPECT_EQ(CLP_GetHashAlgInfo(handle, 0, &number), QG_NO_CONTEXT);
    EXPECT_EQ(CLP_GetDriveCount(handle, true, true, &number), QG_NO_CONTEXT);
    EXPECT_EQ(CLP_GetDrive(handle, &drive), QG_NO_CONTEXT);
    EXPECT_EQ(CLP_GetRemDriveCount(handle, &number), QG_NO_CONTEXT);
    EXPECT_EQ(CLP_GetRemDrive(handle, &drive), QG_NO_CONTEXT);
    EXPECT_EQ(CLP_LoadCertList_AddPath(handle, name, name), QG_NO_CONTEXT);
    EXPECT_EQ(CLP_LoadCertList_ClearOidInfo(handle), QG_NO_CONTEXT);
    EXPECT_EQ(CLP_DecryptPriKey(handle, 0, name), QG_NO_CONTEXT);
    EXPECT_EQ(CLP_GetPriKeyRandom(handle, 0, name, &buffer, &number), QG_NO_CONTEXT);
    EXPECT_EQ(CLP_SelectCert(handle, 0, name, &record), QG_NO_CONTEXT);
    EXPECT_EQ(CLP_ChangePassword(handle, 0, name, name), QG_NO_CONTEXT);
    EXPECT_EQ(CLP_VerifyVID(handle, 0, name, name), QG_NO_CONTEXT);
    ClearCertData(handle);
}

TEST_F(Session, OperationsAfterAFailedStartDoNotCrash)
{
    toolkit.failures["ZR_Initalize"] = QG_ZRTK_NOT_LOADED;
    ASSERT_EQ(start(), CLPERR_TOOLKIT_NOT_LOADED);
    CERTINFO record{};
    EXPECT_EQ(CLP_SetMediaType(handle, 1, 0), 0);
    EXPECT_EQ(CLP_LoadCertList(handle), CLPERR_NOTEXISTCERT);
    EXPECT_EQ(CLP_GetCertInfo(handle, 0, &record), QG_BAD_ARGUMENT);
}

TEST_F(Session, SecondStartReusesTheObjectAndKeepsContextAndPathsOfTheStores)
{
    ASSERT_EQ(start(), 0);
    void* const first = handle;
    void* const context = disk().m_pZRWrapCtx;
    const std::string configuration = disk().m_szConfigPath;
    const fs::path other = TestHome::scratch("other");
    copyText(option.szWorkDir, other.c_str());
    copyText(option.szConfigPath, "/other.conf");
    EXPECT_EQ(start(), 0);
    EXPECT_EQ(handle, first);
    EXPECT_EQ(disk().m_pZRWrapCtx, context);
    EXPECT_EQ(disk().m_szConfigPath, configuration);
    EXPECT_EQ(session().m_szWorkDir, other.string());
    EXPECT_STREQ(session().m_szConfPath, "/other.conf");
}

TEST_F(Session, EmptyValuesOfASecondStartKeepTheEarlier)
{
    copyText(option.szConfigPath, "/some/where.conf");
    copyText(option.szConfigData, "data");
    ASSERT_EQ(start(), 0);
    option.szConfigPath[0] = option.szConfigData[0] = option.szWorkDir[0] = '\0';
    EXPECT_EQ(start(), 0);
    EXPECT_STREQ(session().m_szConfPath, "/some/where.conf");
    EXPECT_STREQ(session().m_szConfData, "data");
    EXPECT_EQ(session().m_szWorkDir, workDir.string());
}

TEST_F(Session, EndingTwiceChangesNothingTheSecondTime)
{
    ASSERT_EQ(start(), 0);
    session().UnInitalize();
    EXPECT_EQ(session().GetDiskPointer(), nullptr);
    EXPECT_EQ(session().m_pZRWrapCtx, nullptr);
    EXPECT_TRUE(session().m_bInit);
    session().UnInitalize();
    EXPECT_EQ(toolkit.contexts, 0);
}

TEST_F(Session, ParsedConfigurationReachesTheStoresAndEndsWithTheSession)
{
    ASSERT_EQ(CLP_Initalize(&handle, nullptr, nullptr), QG_BAD_ARGUMENT);
    ASSERT_EQ(CUtil::INIReadData("[a]\nb=c\n", &session().m_piniFile), 0);
    ASSERT_EQ(start(), 0);
    EXPECT_EQ(disk().m_piniFile, session().m_piniFile);
    EXPECT_EQ(memory().m_piniFile, session().m_piniFile);
    session().UnInitalize();
    EXPECT_EQ(session().m_piniFile, nullptr) << "freed: the sanitizer would tell";
}

TEST_F(Session, TextsWithoutTerminatorAreCut)
{
    std::memset(&option, 'x', sizeof(option));
    option.nLibAPIType = TOOLKIT_ZRTK;
    EXPECT_EQ(start(), 0);
    EXPECT_EQ(std::strlen(session().m_szWorkDir), 1023u);
    EXPECT_EQ(std::strlen(session().m_szConfPath), 1023u);
    EXPECT_EQ(std::strlen(session().m_szConfData), 7999u);
    std::memset(&certOption, 0x01, sizeof(certOption)); // truth values stay 1
    EXPECT_EQ(CLP_SetType(handle, &certOption), 0);
    EXPECT_EQ(std::strlen(disk().m_stLoadCertOpt.szCertPolicyIDs), 9999u);
    EXPECT_EQ(std::strlen(session().m_szCertPolicyIDs), 2047u);
}

// --- Clearing -----------------------------------------------------------------------------------------

TEST_F(Session, ClearingDropsListsAndSecretsAndKeepsTheRest)
{
    writeFlat(class1, "a");
    startOn(MEDIA_HARDDISK);
    ASSERT_EQ(CLP_LoadCertList(handle), 0);
    ASSERT_EQ(setMemoryCert("cert", "key", "km", "km key"), 0);
    ASSERT_EQ(CLP_SetPFXInfo(handle, text("/a.pfx"), text("secret")), 0);
    copyText(session().m_szPINNumber, "1234");
    EXPECT_EQ(CP_ClearCertData(handle), 0);
    EXPECT_FALSE(disk().m_pstCertInfoList);
    EXPECT_FALSE(memory().m_pstCertInfoList);
    EXPECT_EQ(CLP_GetCertCount(handle), 1) << "the count stays";
    EXPECT_STREQ(session().m_szPFXPath, "/a.pfx");
    EXPECT_EQ(std::string(session().m_szPFXPassword, 1024), std::string(1024, '\0'));
    EXPECT_EQ(std::string(session().m_szPINNumber, 1024), std::string(1024, '\0'));
    EXPECT_EQ(std::string(session().m_szMemSignKey, 4096), std::string(4096, '\0'));
    EXPECT_EQ(std::string(session().m_szMemKmKey, 4096), std::string(4096, '\0'));
    EXPECT_EQ(session().m_nMemSignCertLen + session().m_nMemSignKeyLen + session().m_nMemKmCerLen +
                  session().m_nMemKmKeyLen,
              0);
    EXPECT_EQ(session().m_nMediaType, MEDIA_HARDDISK);
}

TEST_F(Session, ListIsNotReadableAfterClearingUntilTheNextLoad)
{
    writeFlat(class1, "a");
    startOn(MEDIA_HARDDISK);
    ASSERT_EQ(CLP_LoadCertList(handle), 0);
    ClearCertData(handle);
    CERTINFO record{};
    int number = 0;
    char* buffer = nullptr;
    EXPECT_EQ(CLP_GetCertInfo(handle, 0, &record), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_GetHashAlgInfo(handle, 0, &number), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_DecryptPriKey(handle, 0, text("pw")), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_GetPriKeyRandom(handle, 0, text("pw"), &buffer, &number), QG_BAD_ARGUMENT);
    EXPECT_EQ(session().GetCertData(0, &buffer, &number), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_LoadCertList(handle), 0);
    EXPECT_EQ(CLP_GetCertInfo(handle, 0, &record), 0);
}

// --- Filter -------------------------------------------------------------------------------------------

TEST_F(Session, ShorterPolicyKeepsTheTailOfTheOneBefore)
{
    ASSERT_EQ(start(), 0);
    ASSERT_EQ(setPolicies("1 2 3|7 8|"), 0);
    ASSERT_EQ(disk().m_nSetPolicyOIDCnt, 2);
    EXPECT_STREQ(disk().m_pstSetOid[0].szPolicyID, "1 2 3");
    EXPECT_STREQ(disk().m_pstSetOid[1].szPolicyID, "7 8 3");
    EXPECT_EQ(memory().m_pstSetOid, disk().m_pstSetOid);
}

TEST_F(Session, PolicyWithoutAClosingBarGivesNoEntry)
{
    ASSERT_EQ(start(), 0);
    ASSERT_EQ(setPolicies("1 2 3"), 0);
    EXPECT_EQ(session().m_nSetPolicyOIDCnt, 0);
    EXPECT_FALSE(session().m_pstSetOid);
    EXPECT_EQ(disk().m_pstSetOid, nullptr);
    ASSERT_EQ(setPolicies("1 2|3 4"), 0);
    EXPECT_EQ(disk().m_nSetPolicyOIDCnt, 1);
}

TEST_F(Session, FilterWithoutAPolicyKeepsTheEarlierOne)
{
    ASSERT_EQ(start(), 0);
    ASSERT_EQ(setPolicies("1 2 3|7 8|"), 0);
    for (int i = 0; i < 3; ++i) {
        ASSERT_EQ(CLP_SetType(handle, &certOption), 0);
        ASSERT_EQ(disk().m_nSetPolicyOIDCnt, 2);
        EXPECT_EQ(disk().m_pstSetOid, session().m_pstSetOid.get()) << "never the freed array";
        EXPECT_EQ(memory().m_pstSetOid, session().m_pstSetOid.get());
        EXPECT_STREQ(disk().m_pstSetOid[1].szPolicyID, "7 8 3");
    }
}

TEST_F(Session, PolicyWithoutEntriesAfterOneWithThemLiftsTheFilter)
{
    ASSERT_EQ(start(), 0);
    ASSERT_EQ(setPolicies("1 2 3|"), 0);
    ASSERT_EQ(setPolicies("9"), 0);
    EXPECT_EQ(disk().m_nSetPolicyOIDCnt, 0);
}

TEST_F(Session, LongPoliciesAreCutToTheirEntries)
{
    ASSERT_EQ(start(), 0);
    ASSERT_EQ(setPolicies((std::string(1500, '1') + "|" + std::string(100, '2') + "|").c_str()), 0);
    ASSERT_EQ(disk().m_nSetPolicyOIDCnt, 2);
    EXPECT_EQ(std::string(disk().m_pstSetOid[0].szPolicyID), std::string(79, '1'));
    EXPECT_EQ(std::string(disk().m_pstSetOid[1].szPolicyID), std::string(79, '2'));
}

TEST_F(Session, TextPast2047BytesTakesNoPartInTheFilterArray)
{
    ASSERT_EQ(start(), 0);
    std::string policies;
    for (int i = 0; i < 600; ++i)
        policies += "1 2 3|";
    ASSERT_EQ(setPolicies(policies.c_str()), 0);
    EXPECT_EQ(disk().m_nSetPolicyOIDCnt, 2047 / 6);
    EXPECT_EQ(std::strlen(disk().m_stLoadCertOpt.szCertPolicyIDs), 3600u);
}

TEST_F(Session, FilterFieldsReachBothStores)
{
    ASSERT_EQ(start(), 0);
    certOption.nCertUsageType = 2;
    certOption.bCDROMHide = certOption.bExpiredCertHide = certOption.bTokenBSCertHide = true;
    certOption.nSMCardType = 3;
    certOption.nPhoneType = 4;
    certOption.nUbikeyVersion = 5;
    copyText(certOption.szUbikeyWParam, "w");
    copyText(certOption.szUbikeylParam, "l");
    copyText(certOption.szCertSerial, "s");
    copyText(certOption.szCertKmSerial, "k");
    copyText(certOption.szCertDN, "d");
    copyText(certOption.szIssuerDN, "i");
    ASSERT_EQ(CLP_SetType(handle, &certOption), 0);
    for (const LOADCERTOPT* taken : {&disk().m_stLoadCertOpt, &memory().m_stLoadCertOpt}) {
        EXPECT_EQ(taken->nCertCAType, 7);
        EXPECT_EQ(taken->nCertUsageType, 2);
        EXPECT_TRUE(taken->bCDROMHide && taken->bExpiredCertHide);
        EXPECT_STREQ(taken->szCertSerial, "s");
        EXPECT_STREQ(taken->szCertKmSerial, "");
        EXPECT_STREQ(taken->szCertDN, "d");
        EXPECT_STREQ(taken->szIssuerDN, "i");
    }
    EXPECT_TRUE(session().m_bCDROMHide && session().m_bHideBriskSeal);
    EXPECT_EQ(session().m_nSMCardType, 3);
    EXPECT_EQ(session().m_nPhoneType, 4);
    EXPECT_EQ(session().m_nUbikeyVersion, 5);
    EXPECT_STREQ(session().m_szUbikeyWParam, "w");
    EXPECT_STREQ(session().m_szUbikeylParam, "l");
    const LOADCERTOPT empty{};
    LOADCERTOPT next = empty;
    ASSERT_EQ(CLP_SetType(handle, &next), 0);
    EXPECT_STREQ(disk().m_stLoadCertOpt.szCertSerial, "s");
    EXPECT_EQ(disk().m_stLoadCertOpt.nCertUsageType, 0);
}

TEST_F(Session, MissingFilterIsRefused)
{
    ASSERT_EQ(start(), 0);
    EXPECT_EQ(CLP_SetType(handle, nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(session().SetLoadCertType(nullptr), QG_BAD_ARGUMENT);
}

// --- Drives and medium --------------------------------------------------------------------------------

TEST_F(Session, DrivesAreCountedAndListed)
{
    writeFile(mtab, "/dev/sdb1 /media/usb0 vfat rw 0 0\n");
    ASSERT_EQ(start(), 0);
    int count = -1;
    EXPECT_EQ(CLP_GetDriveCount(handle, false, false, &count), 0);
    EXPECT_EQ(count, 1);
    DRIVEINFO drives[1] = {};
    EXPECT_EQ(CLP_GetDrive(handle, drives), 0);
    EXPECT_STREQ(drives[0].szDrive, "");
    EXPECT_EQ(CLP_GetRemDriveCount(handle, &count), 0);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(CLP_GetRemDrive(handle, drives), 0);
    EXPECT_STREQ(drives[0].szDrive, "/media/usb0");
}

TEST_F(Session, DriveOutputsThatAreNullAreRefused)
{
    ASSERT_EQ(start(), 0);
    EXPECT_EQ(CLP_GetDriveCount(handle, true, true, nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_GetRemDriveCount(handle, nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_GetDrive(handle, nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_GetRemDrive(handle, nullptr), QG_BAD_ARGUMENT);
}

TEST_F(Session, RefusedMediumLeavesTheEarlierInForce)
{
    startOn(MEDIA_MEMORY);
    copyText(session().m_szPINNumber, "1234");
    for (const int medium : {3, 4, 5, 7})
        EXPECT_EQ(CLP_SetMediaType(handle, medium, 0), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_SetMediaType(handle, MEDIA_HARDDISK, -1), QG_BAD_ARGUMENT);
    EXPECT_EQ(session().m_nMediaType, MEDIA_MEMORY);
    EXPECT_STREQ(session().m_szPINNumber, "1234");
    EXPECT_EQ(CLP_SetMediaType(handle, 99, 3), 0);
    EXPECT_STREQ(session().m_szPINNumber, "");
    EXPECT_EQ(session().m_nSubIndex, 3);
    EXPECT_EQ(CLP_LoadCertList(handle), QG_BAD_ARGUMENT);
}

TEST_F(Session, MediumReachesItsStore)
{
    startOn(MEDIA_PFX);
    EXPECT_EQ(memory().m_nMediaType, MEDIA_PFX);
    EXPECT_EQ(CLP_SetMediaType(handle, MEDIA_MEMORY, 0), 0);
    EXPECT_EQ(memory().m_nMediaType, MEDIA_MEMORY);
    disk().m_nMediaType = MEDIA_REMOVABLE;
    EXPECT_EQ(CLP_SetMediaType(handle, MEDIA_HARDDISK, 0), 0);
    EXPECT_EQ(disk().m_nMediaType, MEDIA_HARDDISK);
}

TEST_F(Session, RemovableMediumNeedsTheDriveInTheList)
{
    const fs::path drive = TestHome::scratch("stick");
    writeFlat(drive / "GPKI/Certificate/class2", "a");
    writeFile(mtab, "/dev/sdb1 " + drive.string() + " vfat rw 0 0\n");
    startOn(MEDIA_HARDDISK);
    EXPECT_EQ(CLP_SetMediaType(handle, MEDIA_REMOVABLE, 0), QG_BAD_ARGUMENT);
    EXPECT_EQ(session().m_nMediaType, MEDIA_HARDDISK);
    int count = 0;
    ASSERT_EQ(CLP_GetRemDriveCount(handle, &count), 0);
    EXPECT_EQ(CLP_SetMediaType(handle, MEDIA_REMOVABLE, 1), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_SetMediaType(handle, MEDIA_REMOVABLE, 0), 0);
    EXPECT_EQ(CLP_SetMediaType(handle, MEDIA_REMOVABLE, 1000000), QG_BAD_ARGUMENT);
    ASSERT_EQ(CLP_LoadCertList(handle), 0);
    EXPECT_EQ(info(0).szDriveInfo, drive.string());
    EXPECT_EQ(info(0).nMediaType, MEDIA_REMOVABLE);
}
