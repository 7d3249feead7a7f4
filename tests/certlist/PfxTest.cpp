// PFX files through the session and the exported functions.

#include "SessionTest.h"

namespace {

class Pfx : public SessionTest
{
protected:
    void writePfx(const Texts& certs, const Texts& keys)
    {
        writeFile(path, toolkit.pfxByUsages(certs, keys));
    }

    int loadPfx(const char* password = "pw")
    {
        if (!handle)
            startOn(MEDIA_PFX);
        EXPECT_EQ(CLP_SetPFXInfo(handle, text(path), const_cast<char*>(password)), 0);
        return CLP_LoadCertList(handle);
    }

    /** Four outputs, as the list functions hand them out. */
    struct Outputs
    {
        char* data[4] = {};
        int length[4] = {-1, -1, -1, -1};
    };

    template <typename Call>
    Texts taken(Call call, int expected = 0)
    {
        Outputs out;
        EXPECT_EQ(call(out), expected);
        Texts texts;
        for (size_t i = 0; i < 4; ++i)
            texts.push_back(out.data[i] ? take(out.data[i], out.length[i]) : "");
        return texts;
    }

    auto importer(const char* password = "pw")
    {
        return [this, password](Outputs& out) {
            return session().ImportPFX(path.data(), const_cast<char*>(password), &out.data[0], &out.length[0],
                                       &out.data[1], &out.length[1], &out.data[2], &out.length[2],
                                       &out.data[3], &out.length[3]);
        };
    }

    auto getter(const char* password = "pw")
    {
        return [this, password](Outputs& out) {
            return session().GetCertPKCS12(path.data(), const_cast<char*>(password), &out.data[0],
                                           &out.length[0], &out.data[1], &out.length[1], &out.data[2],
                                           &out.length[2], &out.data[3], &out.length[3]);
        };
    }

    int exportData(bool encrypted, const std::string& signCert, const std::string& signKey,
                   const std::string& kmCert = "", const std::string& kmKey = "", const char* password = "pw")
    {
        return session().ExportDataPFX(encrypted, const_cast<char*>(password), path.data(), text(signCert),
                                       size(signCert), text(signKey), size(signKey), text(kmCert),
                                       size(kmCert), text(kmKey), size(kmKey));
    }

    void forget() { CertUnLoad(nullptr); } // what unpacking leaves to the next load

    std::string path = TestHome::path() / "a.pfx";
};

} // namespace

// --- Medium 8 -----------------------------------------------------------------------------------------

TEST_F(Pfx, FileIsListedWithPlainAndEncryptedKeys)
{
    writePfx({"keyEncipherment b", "digitalSignature a"}, {"R:random a", "km b"});
    EXPECT_EQ(loadPfx(), 0);
    EXPECT_EQ(CLP_GetCertCount(handle), 1);
    const CERTINFO record = info(0);
    EXPECT_EQ(bytes(record.szSignCert, record.nSignCertLen), "digitalSignature a");
    EXPECT_EQ(bytes(record.szSignKey, record.nSignKeyLen), "R:random a");
    EXPECT_EQ(bytes(record.szEncSignKey, record.nEncSignKeyLen), "pw:R:random a");
    EXPECT_EQ(bytes(record.szKmCert, record.nKmCertLen), "keyEncipherment b");
    EXPECT_EQ(bytes(record.szKmKey, record.nKmKeyLen), "km b");
    EXPECT_EQ(record.nMediaType, MEDIA_PFX);
    EXPECT_EQ(record.nCertType, CERTTYPE_NONE);
    EXPECT_STREQ(record.szSignCertPath, "");
}

TEST_F(Pfx, FileWithOnePairIsListedWithoutTheOther)
{
    writePfx({"digitalSignature a"}, {"key a"});
    EXPECT_EQ(loadPfx(), 0);
    EXPECT_EQ(info(0).nKmCertLen, 0);
}

TEST_F(Pfx, FailureLeavesTheMemoryStoreAlone)
{
    writePfx({"digitalSignature a"}, {"key a"});
    ASSERT_EQ(loadPfx(), 0);
    memory().m_nMediaType = MEDIA_MEMORY;
    EXPECT_EQ(loadPfx("wrong"), CLPERR_WRONG_PASSWORD);
    toolkit.importFailures = {{0, 9}, {16, 9}};
    EXPECT_EQ(loadPfx(), CLPERR_PFX_IMPORT);
    toolkit.importFailures.clear();
    toolkit.failures = {{"CertLoad", 9}};
    EXPECT_EQ(loadPfx(), CLPERR_CERT_LOAD);
    toolkit.failures = {{"CertGetKeyUsage", 9}};
    EXPECT_EQ(loadPfx(), CLPERR_CERT_FIELD);
    toolkit.failures.clear();
    forget();
    writePfx({"digitalSignature a", "keyEncipherment b"}, {"key a"});
    EXPECT_EQ(loadPfx(), CLPERR_NOTEXISTCERT);
    path = "";
    toolkit.failures = {{"MediaDiskReadFile", 1000}};
    EXPECT_EQ(loadPfx(), CLPERR_WRONG_PASSWORD) << "no file was named";
    EXPECT_EQ(memory().m_nMediaType, MEDIA_MEMORY);
    EXPECT_EQ(CLP_GetCertCount(handle), 1);
    EXPECT_STREQ(info(0).szSubjectDN, memory().m_pstCertInfoList[0].szSubjectDN) << "the earlier list stays";
}

TEST_F(Pfx, FileWithoutASigningPairIsRefusedByTheStore)
{
    writePfx({"keyEncipherment b"}, {"key b"});
    EXPECT_EQ(loadPfx(), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_GetCertCount(handle), 0);
    forget();
}

TEST_F(Pfx, ListedKeysNeedNoPasswordAndCanBeExportedAgain)
{
    writePfx({"digitalSignature a"}, {"key a"});
    ASSERT_EQ(loadPfx(), 0);
    const std::string copy = TestHome::path() / "copy.pfx";
    EXPECT_EQ(CLP_ExportPFX(handle, 0, text("other"), text(copy)), 0);
    EXPECT_EQ(readFile(copy), FakeToolkit::pfx("other", {"digitalSignature a"}, {"key a"}));
    EXPECT_EQ(toolkit.count("PriKeyDecrypt"), 0);
}

// --- Unpacking for a caller ---------------------------------------------------------------------------

TEST_F(Pfx, BothReadersHandPairsOut)
{
    ASSERT_EQ(start(), 0);
    writePfx({"digitalSignature a", "keyEncipherment b"}, {"key a", "key b"});
    const Texts expected = {"digitalSignature a", "key a", "keyEncipherment b", "key b"};
    EXPECT_EQ(taken(getter()), expected);
    EXPECT_EQ(taken(importer()), expected);
    writePfx({"digitalSignature a"}, {"key a"});
    EXPECT_EQ(taken(getter()), (Texts{"digitalSignature a", "key a", "", ""}));
    EXPECT_EQ(taken(importer()), (Texts{"digitalSignature a", "key a", "", ""}));
    writePfx({"keyEncipherment b"}, {"key b"});
    EXPECT_EQ(taken(getter()), (Texts{"", "", "keyEncipherment b", "key b"}));
    forget();
}

TEST_F(Pfx, BothReadersPassTheStoresCodeOnAndHandNothingOut)
{
    ASSERT_EQ(start(), 0);
    writePfx({"digitalSignature a", "keyEncipherment lost"}, {"key a", "key c"});
    EXPECT_EQ(taken(getter("wrong"), CLPERR_WRONG_PASSWORD), NOTHING);
    EXPECT_EQ(taken(importer("wrong"), CLPERR_WRONG_PASSWORD), NOTHING);
    EXPECT_EQ(taken(getter(), 2007), NOTHING) << "a last certificate without a key";
    EXPECT_EQ(taken(importer(), 2007), NOTHING);
    forget();
}

TEST_F(Pfx, ImportNeedsAPathAndOutputsForWhatItFinds)
{
    ASSERT_EQ(start(), 0);
    writePfx({"digitalSignature a"}, {"key a"});
    char* out = nullptr;
    int length = 0;
    EXPECT_EQ(
        session().ImportPFX(nullptr, text("pw"), &out, &length, &out, &length, &out, &length, &out, &length),
        QG_BAD_ARGUMENT);
    EXPECT_EQ(
        session().ImportPFX(text(""), text("pw"), &out, &length, &out, &length, &out, &length, &out, &length),
        QG_BAD_ARGUMENT);
    EXPECT_EQ(toolkit.count("MediaDiskReadFile"), 0);
    EXPECT_EQ(session().ImportPFX(text(path), text("pw"), &out, &length, nullptr, nullptr, nullptr, nullptr,
                                  nullptr, nullptr),
              QG_BAD_ARGUMENT);
    EXPECT_EQ(
        session().ImportPFX(text(path), nullptr, &out, &length, &out, &length, &out, &length, &out, &length),
        CLPERR_PFX_IMPORT);
    EXPECT_EQ(out, nullptr);
    forget();
}

// --- Exporting a listed certificate -------------------------------------------------------------------

TEST_F(Pfx, ListedCertificateIsPackedUnderItsPassword)
{
    writeHolder(yessign / "kim", "pw:key kim", "pw:km key");
    startOn(MEDIA_HARDDISK);
    ASSERT_EQ(CLP_LoadCertList(handle), 0);
    EXPECT_EQ(CLP_ExportPFX(handle, 0, text("pw"), text(path)), 0);
    EXPECT_EQ(readFile(path), FakeToolkit::pfx("pw", {"cert kim", "km cert kim"}, {"key kim", "km key"}));
}

TEST_F(Pfx, CertificateWithoutAKmPairIsPackedAlone)
{
    writeHolder(yessign / "kim", "pw:key kim");
    startOn(MEDIA_HARDDISK);
    ASSERT_EQ(CLP_LoadCertList(handle), 0);
    EXPECT_EQ(CLP_ExportPFX(handle, 0, text("pw"), text(path)), 0);
    EXPECT_EQ(readFile(path), FakeToolkit::pfx("pw", {"cert kim"}, {"key kim"}));
}

TEST_F(Pfx, KeysThatDoNotOpenAreNotExported)
{
    writeHolder(yessign / "kim", "pw:key kim", "other:km key");
    startOn(MEDIA_HARDDISK);
    ASSERT_EQ(CLP_LoadCertList(handle), 0);
    EXPECT_EQ(CLP_ExportPFX(handle, 0, text("wrong"), text(path)), CLPERR_WRONG_PASSWORD);
    EXPECT_EQ(CLP_ExportPFX(handle, 0, text("pw"), text(path)), CLPERR_KM_PASSWORD);
    EXPECT_FALSE(fs::exists(path));
}

TEST_F(Pfx, KeyThatIsOpenLetsAWrongPasswordProtectTheFile)
{
    writeHolder(yessign / "kim", "pw:key kim");
    startOn(MEDIA_HARDDISK);
    ASSERT_EQ(CLP_LoadCertList(handle), 0);
    ASSERT_EQ(CLP_DecryptPriKey(handle, 0, text("pw")), 0);
    EXPECT_EQ(CLP_ExportPFX(handle, 0, text("wrong"), text(path)), 0);
    EXPECT_EQ(readFile(path), FakeToolkit::pfx("wrong", {"cert kim"}, {"key kim"}));
}

TEST_F(Pfx, ExportRefusesBadArguments)
{
    writeHolder(yessign / "kim", "pw:key kim");
    startOn(MEDIA_HARDDISK);
    ASSERT_EQ(CLP_LoadCertList(handle), 0);
    EXPECT_EQ(CLP_ExportPFX(handle, 0, text(""), text(path)), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_ExportPFX(handle, 0, text("pw"), text("")), QG_BAD_ARGUMENT);
    for (const int index : {1, 1 << 30})
        EXPECT_EQ(CLP_ExportPFX(handle, index, text("pw"), text(path)), QG_BAD_ARGUMENT);
    EXPECT_EQ(session().ExportPFX(0, nullptr, text(path)), QG_BAD_ARGUMENT);
    EXPECT_EQ(session().ExportPFX(0, text("pw"), nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(session().ExportPFX(-1, text("pw"), text(path)), QG_BAD_ARGUMENT);
    CP_ClearCertData(handle);
    EXPECT_EQ(CLP_ExportPFX(handle, 0, text("pw"), text(path)), QG_BAD_ARGUMENT);
    EXPECT_FALSE(fs::exists(path));
}

TEST_F(Pfx, MediumWithoutAStoreHasNothingToExport)
{
    startOn(MEDIA_MEMORY);
    EXPECT_EQ(CLP_ExportPFX(handle, 0, text("pw"), text(path)), QG_BAD_ARGUMENT) << "no record";
    session().m_nMediaType = 99;
    EXPECT_EQ(CLP_ExportPFX(handle, 0, text("pw"), text(path)), CLPERR_PFX_EXPORT) << "an empty record";
    EXPECT_FALSE(fs::exists(path));
}

TEST_F(Pfx, MemoryCertificateIsExportedWithThePlainKeyItHas)
{
    startOn(MEDIA_MEMORY);
    ASSERT_EQ(setMemoryCert("cert a", "key a", "cert b", "key b"), 0);
    ASSERT_EQ(CLP_LoadCertList(handle), 0);
    EXPECT_EQ(CLP_ExportPFX(handle, 0, text("pw"), text(path)), 0);
    EXPECT_EQ(readFile(path), FakeToolkit::pfx("pw", {"cert a", "cert b"}, {"key a", "key b"}));
}

TEST_F(Pfx, FileThatCannotBeWrittenIsToldByTheExport)
{
    writeHolder(yessign / "kim", "pw:key kim");
    startOn(MEDIA_HARDDISK);
    ASSERT_EQ(CLP_LoadCertList(handle), 0);
    toolkit.failures = {{"MediaDiskWriteFile", 1105}};
    EXPECT_EQ(CLP_ExportPFX(handle, 0, text("pw"), text(path)), CLPERR_PFX_EXPORT);
}

// --- Exporting what the caller holds ------------------------------------------------------------------

TEST_F(Pfx, GivenPairsArePackedAsTheyAre)
{
    ASSERT_EQ(start(), 0);
    EXPECT_EQ(exportData(false, "cert a", "key a", "cert b", "key b"), 0);
    EXPECT_EQ(readFile(path), FakeToolkit::pfx("pw", {"cert a", "cert b"}, {"key a", "key b"}));
    EXPECT_EQ(exportData(false, "cert a", "key a"), 0);
    EXPECT_EQ(readFile(path), FakeToolkit::pfx("pw", {"cert a"}, {"key a"}));
    EXPECT_EQ(toolkit.count("PriKeyDecrypt"), 0);
}

TEST_F(Pfx, GivenKeysThatAreEncryptedAreOpenedFirst)
{
    ASSERT_EQ(start(), 0);
    EXPECT_EQ(exportData(true, "cert a", "pw:key a", "cert b", "pw:key b"), 0);
    EXPECT_EQ(readFile(path), FakeToolkit::pfx("pw", {"cert a", "cert b"}, {"key a", "key b"}));
    fs::remove(path);
    EXPECT_EQ(exportData(true, "cert a", "other:key a"), CLPERR_KEY_DECRYPT);
    EXPECT_EQ(exportData(true, "cert a", "pw:key a", "cert b", "other:key b"), CLPERR_KEY_DECRYPT);
    EXPECT_FALSE(fs::exists(path));
}

TEST_F(Pfx, GivenKeyOfALengthThatIsNoneIsLeftOut)
{
    ASSERT_EQ(start(), 0);
    char some[] = "cert a";
    EXPECT_EQ(session().ExportDataPFX(true, text("pw"), text(path), some, 6, text("pw:key a"), 8, some, 6,
                                      some, -1),
              0);
    EXPECT_EQ(readFile(path), FakeToolkit::pfx("pw", {"cert a"}, {"key a"}));
}

TEST_F(Pfx, ExportOfGivenPairsRefusesWhatIsMissing)
{
    ASSERT_EQ(start(), 0);
    EXPECT_EQ(exportData(false, "cert a", "key a", "", "", ""), QG_BAD_ARGUMENT);
    EXPECT_EQ(exportData(false, "cert a", "key a", "", "", nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(exportData(false, "", "key a"), QG_BAD_ARGUMENT);
    EXPECT_EQ(exportData(false, "cert a", ""), QG_BAD_ARGUMENT);
    char some[] = "some";
    EXPECT_EQ(session().ExportDataPFX(false, some, some, nullptr, 4, some, 4, some, 4, some, 4),
              QG_BAD_ARGUMENT);
    EXPECT_EQ(session().ExportDataPFX(false, some, some, some, 4, nullptr, 4, some, 4, some, 4),
              QG_BAD_ARGUMENT);
    EXPECT_EQ(session().ExportDataPFX(false, some, nullptr, some, 4, some, 4, some, 4, some, 4),
              QG_BAD_ARGUMENT);
    EXPECT_EQ(session().ExportDataPFX(false, some, text(""), some, 4, some, 4, some, 4, some, 4),
              QG_BAD_ARGUMENT);
    path.clear();
    EXPECT_EQ(exportData(false, "cert a", "key a"), QG_BAD_ARGUMENT);
    EXPECT_EQ(toolkit.count("PFXExport"), 0);
}

TEST_F(Pfx, FailedPackingIsToldByTheExportOfGivenPairs)
{
    ASSERT_EQ(start(), 0);
    toolkit.failures = {{"PFXExport", 9}};
    EXPECT_EQ(exportData(false, "cert a", "key a"), CLPERR_PFX_EXPORT);
}
