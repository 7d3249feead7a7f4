#include <gmock/gmock.h>

#include "SessionTest.h"
#include "SystemLog.h"

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

namespace {

/** Lines of the session and the stores in the system log, without their time stamp. */
class Trace : public SessionTest
{
protected:
    Trace()
    {
        switchLogOn();
        writeFlat(class1, "a", "pw:R:random", "pw:km");
        startOn(MEDIA_HARDDISK);
    }

    std::vector<std::string> load()
    {
        return systemLogOf([this] { CLP_LoadCertList(handle); });
    }
};

} // namespace

TEST_F(Trace, LoadIsFramedByItsLayers)
{
    const auto lines = load();
    EXPECT_EQ(lines.front(), "CCertListProcInterface::LoadCertList() Start...");
    EXPECT_EQ(lines.back(), "CCertListProcInterface::LoadCertList() End... : 0");
    for (const char* line :
         {"CLoadDISK::LoadCertList() Start...", "CLoadDISK::GetDirectoryCount() Start...",
          "CLoadDISK::GPKIFindDirectory() End... : 0", "CLoadDISK::GetCertDirectory() End... : 0",
          "CLoadDISK::GetGPKICertList() Start...", "CLoadDISK::ParsingCert() Start...",
          "CLoadDISK::ParsingCert() End... : 0", "CLoadDISK::CopyCertInfo() Start...",
          "CLoadDISK::LoadCertList() End... : 0"})
        EXPECT_THAT(lines, Contains(line));
    EXPECT_THAT(lines,
                Contains("CLoadDISK::ParsingCert()  >> szSignCertPath : " + (class1 / "a_sig.cer").string()));
    EXPECT_THAT(lines,
                Contains("CLoadDISK::ParsingCert()  >> szKmKeyPath : " + (class1 / "a_env.key").string()));
}

TEST_F(Trace, NoLineOfTheStoresReachesTheFile)
{
    load();
    for (const std::string& line : logLines())
        EXPECT_EQ(line.compare(0, 3, "[[ "), 0) << line;
}

TEST_F(Trace, NpkiWalkEndsUnderItsNeighboursName)
{
    char last[1024];
    int count = 0;
    EXPECT_THAT(
        systemLogOf([&] { disk().NPKIFindDirectory(true, text("/nowhere"), 1024, last, &count); }),
        ElementsAre("CLoadDISK::NPKIFindDirectory() Start...", "CLoadDISK::GPKIFindDirectory() End... : 0"));
}

TEST_F(Trace, DriveOperationsShareTheRemovableTexts)
{
    DRIVEINFO drive{};
    int count = 0;
    EXPECT_THAT(systemLogOf([&] { session().GetDriveCount(true, true, &count); }),
                ElementsAre("CCertListProcInterface::GetRemDriveCount() Start...",
                            "CLoadDISK::GetRemDriveList() Start...",
                            "CLoadDISK::GetRemDriveList() End... : 0", "RemDrive Count : 1",
                            "CCertListProcInterface::GetRemDriveCount() End... : 0"));
    EXPECT_THAT(systemLogOf([&] { session().GetDriveList(&drive); }),
                ElementsAre("CCertListProcInterface::GetRemDriveList() Start...",
                            "CLoadDISK::GetRemDriveInfo() Start...",
                            "CLoadDISK::GetRemDriveInfo() End... : 0",
                            "CCertListProcInterface::GetRemDriveCount() End... : 0"));
}

TEST_F(Trace, PolicyParsingLogsUnderOtherNames)
{
    copyText(session().m_szCertPolicyIDs, "1 2|3|");
    EXPECT_THAT(systemLogOf([&] { session().ParsingPolicyIDS(true); }),
                ElementsAre("CLoadDISK::ParsingPolicyIDS() Start...",
                            "CLoadDISK::SetIssuerNameList() End...Count : 2"));
}

TEST_F(Trace, RefusedStartIsToldWithTheToolkitsNumber)
{
    toolkit.failures["ZR_Initalize"] = QG_ZRTK_NOT_LOADED;
    EXPECT_THAT(systemLogOf([&] { session().Inialize(0, nullptr); }),
                ElementsAre("CCertListProcInterface::Inialize() Start...",
                            "CCertListProcInterface::Inialize() >> ZR_Initalize() : 20011",
                            "CCertListProcInterface::Inialize() End... : 30003"));
}

TEST_F(Trace, FailedToolkitCallIsToldWithItsText)
{
    toolkit.failures["CertGetUID"] = 1234;
    EXPECT_THAT(load(), Contains("CLoadDISK::ParsingCert() >> CertGetUID() : 1234 (toolkit says no)"));
    toolkit.failures = {{"PriKeyDecrypt", 2004}};
    EXPECT_THAT(systemLogOf([&] { disk().DecryptPriKey(0, text("pw")); }), Not(Contains("")));
}

TEST_F(Trace, FiltersTellWhyACertificateIsLeftOut)
{
    LOADCERTOPT& filter = disk().m_stLoadCertOpt;
    copyText(filter.szCertSerial, "77");
    EXPECT_THAT(load(), Contains("CLoadDISK::ParsingCert() >> CLPERR_PASS(Check SerialNumber pass...)"));
    filter.szCertSerial[0] = '\0';
    copyText(filter.szCertDN, "cn=x");
    EXPECT_THAT(load(), Contains("CLoadDISK::ParsingCert() >> CLPERR_PASS(DN Check pass)"));
    filter.szCertDN[0] = '\0';
    filter.bExpiredCertHide = true;
    toolkit.texts["CertGetValidity.to"] = "2026-01-01 00:00:00";
    EXPECT_THAT(load(), Contains("CLoadDISK::ParsingCert() >> CLPERR_PASS(ExpiredCertHide pass)"));
    filter.bExpiredCertHide = false;
    SETOID policy{};
    disk().m_pstSetOid = &policy;
    disk().m_nSetPolicyOIDCnt = 1;
    EXPECT_THAT(load(), Contains("CLoadDISK::ParsingCert() >> CheckPolicyID() check pass : 0"));
    disk().m_pstSetOid = nullptr;
    EXPECT_THAT(systemLogOf([] {}), ElementsAre());
}

TEST_F(Trace, MemoryStoreKeepsItsOddTags)
{
    ASSERT_EQ(CLP_SetMediaType(handle, MEDIA_MEMORY, 0), 0);
    ASSERT_EQ(setMemoryCert("cert", "key"), 0);
    LOADCERTOPT& filter = memory().m_stLoadCertOpt;
    copyText(filter.szCertSerial, "77");
    EXPECT_THAT(load(), Contains("CLoadDISK::ParsingCert() >> CLPERR_PASS(Check SerialNumber pass)"));
    filter.szCertSerial[0] = '\0';
    toolkit.failures = {{"CertGetValidity", 9}};
    EXPECT_THAT(load(), Contains("CLoadDISK::ParsingCert() >> CertGetValidity()(9)"));
    toolkit.failures = {{"CertGetVersion", 9}};
    EXPECT_THAT(load(), Contains("CLoadMemory::ParsingCert() >> CertGetVersion() : 9 (toolkit says no)"));
    toolkit.failures = {{"VIDGetRandomFromPriKey", 9}, {"PriKeyDecrypt", 9}, {"VIDVerify", 9}};
    load();
    EXPECT_THAT(systemLogOf([&] { memory().GetPrikeyRandom(); }),
                Contains("CLoadSMCard::GetPrikeyRandom() >> VIDGetRandomFromPriKey() : 9 (toolkit says no)"));
    EXPECT_THAT(systemLogOf([&] { memory().DecryptPriKey(text("pw")); }),
                Contains("CLoadSMCard::DecryptPriKey() >> PriKeyDecrypt() : 9 (toolkit says no)"));
    EXPECT_THAT(systemLogOf([&] { memory().VerifyVID(text("1")); }),
                Contains("CLoadDISK::VerifyVID() >> VIDVerify() : 9 (toolkit says no)"));
}

TEST_F(Trace, MemoryStoreTellsARefusedPolicyWithTheLastText)
{
    ASSERT_EQ(CLP_SetMediaType(handle, MEDIA_MEMORY, 0), 0);
    ASSERT_EQ(setMemoryCert("cert", "key"), 0);
    SETOID policy{};
    memory().m_pstSetOid = &policy;
    memory().m_nSetPolicyOIDCnt = 1;
    EXPECT_THAT(load(), Contains("CLoadMemory::ParsingCert() >> CheckPolicyID() check pass : 0 ()"));
    memory().m_pstSetOid = nullptr;
}

TEST_F(Trace, FailedEncryptionOfAMemoryKeyIsTold)
{
    ASSERT_EQ(CLP_SetMediaType(handle, MEDIA_PFX, 0), 0);
    toolkit.failures = {{"PriKeyEncrypt", 9}};
    EXPECT_THAT(systemLogOf([&] {
                    memory().LoadCertList(text("pw"), text("cert"), 4, text("key"), 3, nullptr, 0, nullptr,
                                          0);
                }),
                Contains("CLoadMemory::LoadCertList >> PriKeyEncrypt() : 9 (toolkit says no)"));
}

TEST_F(Trace, KeyOperationsKeepTheirTags)
{
    load();
    toolkit.failures = {{"PriKeyChangePasswd", 9}};
    EXPECT_THAT(systemLogOf([&] { disk().ChangePassword(0, text("pw"), text("new")); }),
                Contains("CLoadDISK::ChangePassword() >> PriKeyChangePasswd() : 9 (toolkit says no)"));
    toolkit.failures = {{"MediaDiskWriteFile", 9}};
    const auto lines = systemLogOf([&] { disk().ChangePassword(0, text("pw"), text("new")); });
    EXPECT_THAT(lines, Contains("CLoadDISK::WriteFile() >> MediaDiskWriteFile() : 9 (toolkit says no)"));
    EXPECT_THAT(lines,
                Contains("CLoadDISK::ChangePassword() >> MediaDiskReadFile() : 30201 (toolkit says no)"));
    toolkit.failures.clear();
    writeFile(class1 / "a_env.key", "other:km");
    EXPECT_THAT(systemLogOf([&] { disk().ChangePassword(0, text("pw"), text("new")); }),
                Contains("CLoadDISK::ChangePassword() >> MediaDiskDeletePriKey() : 2004 (toolkit says no)"));
    toolkit.failures = {{"CertLoad", 9}};
    int algorithm = 0;
    EXPECT_THAT(systemLogOf([&] { disk().GetPrikeyAlg(text("cert"), 4, &algorithm); }),
                Contains("CLoadSMCard::GetPrikeyAlg() >> CertLoad() : 9 (toolkit says no)"));
}

TEST_F(Trace, PasswordCheckFailsUnderAnotherMembersName)
{
    EXPECT_THAT(
        systemLogOf([&] { session().CheckPassword(text("pw"), text("other:key"), 9); }),
        Contains("CCertListProcInterface::ExportDataPFX() >> PriKeyDecrypt() : 2004 (toolkit says no)"));
}

TEST_F(Trace, SavingKeepsItsTags)
{
    const auto save = [&](bool encrypted) {
        return systemLogOf([&] {
            session().SaveCert(encrypted, text("cert"), 4, text("other:key"), 9, nullptr, 0, nullptr, 0,
                               text("pw"));
        });
    };
    toolkit.failures = {{"CertGetSubjectName", 9}};
    EXPECT_THAT(save(true),
                ElementsAre("CCertListProcInterface::SaveCert() Start...",
                            "CLoadDISK::MakeCertPath() Start...",
                            "CLoadDISK::ParsingCert() >> CertGetSubjectName() : 9 (toolkit says no)",
                            "CLoadDISK::MakeCertPath() End... : 30015",
                            "CCertListProcInterface::SaveCert() End... : 30015"));
    toolkit.failures = {{"CertGetPubKeyInfo", 9}};
    EXPECT_THAT(save(true),
                Contains("CLoadDISK::ParsingCert() >> CertGetPubKeyInfo() : 9 (toolkit says no)"));
    toolkit.failures = {{"CertLoad", 9}};
    EXPECT_THAT(save(true), Contains("CLoadDISK::MakeCertPath() >> CertLoad() : 9 (toolkit says no)"));
    toolkit.failures = {{"MediaDiskWriteFile", 9}};
    EXPECT_THAT(save(true),
                Contains("CLoadDISK::WriteCertNKey() >> MediaDiskWriteFile() : 9 (toolkit says no)"));
    toolkit.failures = {{"PriKeyEncrypt", 9}};
    EXPECT_THAT(save(false), Contains("CLoadDISK::WriteCertNKey() >> PriKeyEncrypt() : 9 (toolkit says no)"));
    toolkit.failures.clear();
    session().m_nMediaType = 99;
    EXPECT_THAT(save(true),
                Contains("CCertListProcInterface::SaveCert() >> PriKeyDecrypt() : 2004(toolkit says no)"));
}

TEST_F(Trace, DeletingHasNoEndLine)
{
    load();
    const auto begins = [](const std::string& line) {
        return line.compare(0, 28, "CLoadDISK::DeleteCertNKey() ") == 0;
    };
    const auto deletionOf = [&](const char* password) {
        std::vector<std::string> lines;
        for (const std::string& line : systemLogOf([&] { session().DeleteCert(0, text(password)); }))
            if (begins(line))
                lines.push_back(line);
        return lines;
    };
    EXPECT_THAT(
        deletionOf("wrong"),
        ElementsAre("CLoadDISK::DeleteCertNKey() Start...",
                    "CLoadDISK::DeleteCertNKey() >> MediaDiskDeletePriKey() : 2004 (toolkit says no)"));
    toolkit.failures = {{"MediaDiskDeleteCert", 9}};
    EXPECT_THAT(deletionOf("pw"),
                ElementsAre("CLoadDISK::DeleteCertNKey() Start...",
                            "CLoadDISK::DeleteCertNKey() >> MediaDiskDeleteCert() : 9 (toolkit says no)"));
    EXPECT_THAT(deletionOf(""), ElementsAre("CLoadDISK::DeleteCertNKey() Start...",
                                            "CLoadDISK::DeleteCertNKey() >> remove() : 2"))
        << "the key is gone already";
    EXPECT_THAT(systemLogOf([&] { disk().DeleteCertNKey(-1); }),
                ElementsAre("CLoadDISK::DeleteCertNKey() Start..."));
}

TEST_F(Trace, ReadingPairsTellsWhatWasEmpty)
{
    writeFile(class1 / "empty", "");
    char* out = nullptr;
    int length = 0;
    const std::string path = class1 / "empty";
    EXPECT_THAT(systemLogOf([&] {
                    disk().ReadCertNKeyFromPath(text(path), text(path), &out, &length, &out, &length);
                }),
                ElementsAre("CLoadDISK::ReadCertNKeyFromPath() Start...",
                            "CLoadDISK::ReadCertNKeyFromPath() >> Cert&Key data is null",
                            "CLoadDISK::ReadCertNKeyFromPath() End... : 30013"));
}

TEST_F(Trace, PfxOperationsKeepTheirTags)
{
    const std::string path = workDir / "a.pfx";
    char* out[4] = {};
    int length[4] = {};
    const auto import = [&] {
        return systemLogOf([&] {
            session().ImportPFX(text(path), text("pw"), &out[0], &length[0], &out[1], &length[1], &out[2],
                                &length[2], &out[3], &length[3]);
        });
    };
    EXPECT_THAT(import(),
                ElementsAre("CCertListProcInterface::ImportPFX() Start...", "CLoadDISK::GetPKCS12() Start...",
                            "CLoadDISK::GetPKCS12() >> MediaDiskReadFile() : 1100 (toolkit says no)",
                            "CLoadDISK::GetPKCS12() End... : 30011",
                            "CCertListProcInterface::SaveCert() End... : 30011"));
    writeFile(path, FakeToolkit::pfx("pw", {"cert a", "cert b"}, {"key a"}));
    EXPECT_THAT(import(), Contains("CLoadDISK::GetPKCS12() >> CLPERR_NOTEXISTCERT"));
    writeFile(path, FakeToolkit::pfx("pw", {"cert a"}, {"key a"}));
    const auto lines = import();
    EXPECT_THAT(lines, Contains("CLoadDISK::MemFree() End... : 0").Times(2)) << "the store's two buffers";
    take(out[0], length[0]);
    take(out[1], length[1]);
    toolkit.failures = {{"PFXExport", 9}};
    EXPECT_THAT(systemLogOf([&] {
                    session().ExportDataPFX(false, text("pw"), text(path), text("cert"), 4, text("key"), 3,
                                            nullptr, 0, nullptr, 0);
                }),
                Contains("CLoadDISK::MakePKCS12() >> PFXExport() : 9 (toolkit says no)"));
    toolkit.failures = {{"MediaDiskWriteFile", 9}};
    EXPECT_THAT(systemLogOf([&] {
                    session().ExportDataPFX(false, text("pw"), text(path), text("cert"), 4, text("key"), 3,
                                            nullptr, 0, nullptr, 0);
                }),
                Contains("CLoadDISK::MakePKCS12() >> MediaDiskWriteFile() : 9 (toolkit says no)"));
    EXPECT_THAT(
        systemLogOf([&] {
            session().ExportDataPFX(true, text("pw"), text(path), text("cert"), 4, text("x:key"), 5, nullptr,
                                    0, nullptr, 0);
        }),
        Contains("CCertListProcInterface::ExportDataPFX() >> PriKeyDecrypt() : 2004 (toolkit says no)"));
    CertUnLoad(nullptr); // what unpacking leaves to the next load
}

TEST_F(Trace, EmptyListIsTold)
{
    TestHome::reset();
    EXPECT_THAT(load(), Contains("CLoadDISK::LoadCertList() >> CLPERR_NOTEXISTCERT"));
}

TEST_F(Trace, CountIsTold)
{
    EXPECT_THAT(systemLogOf([&] { session().GetCertCount(); }), ElementsAre("Cert Count : 0"));
}
