// Saving and deleting through the session and the exported functions.

#include "SessionTest.h"

namespace {

const char* const YESSIGN = "cn=kim,ou=personal,o=yessign,c=kr";

class Save : public SessionTest
{
protected:
    Save() { toolkit.texts["CertGetSubjectName"] = YESSIGN; }

    int save(bool encrypted, const char* password, const std::string& signKey, const std::string& kmCert = "",
             const std::string& kmKey = "")
    {
        return CLP_SaveCert(handle, encrypted, const_cast<char*>(password), text(cert), size(cert),
                            text(signKey), size(signKey), kmCert.empty() ? nullptr : text(kmCert),
                            size(kmCert), text(kmKey), size(kmKey));
    }

    fs::path useDrive()
    {
        const fs::path drive = TestHome::scratch("usb");
        writeFile(mtab, "/dev/sdb1 " + drive.string() + " vfat rw 0 0\n");
        int count = 0;
        EXPECT_EQ(start(), 0);
        EXPECT_EQ(CLP_GetRemDriveCount(handle, &count), 0);
        EXPECT_EQ(CLP_SetType(handle, &certOption), 0);
        EXPECT_EQ(CLP_SetMediaType(handle, MEDIA_REMOVABLE, 0), 0);
        return drive;
    }

    std::string cert = "cert kim";
    fs::path folder = yessign / YESSIGN;
};

} // namespace

TEST_F(Save, PlainKeysAreEncryptedAndBothPairsWritten)
{
    startOn(MEDIA_HARDDISK);
    EXPECT_EQ(save(false, "pw", "key", "km cert", "km key"), 0);
    EXPECT_EQ(readFile(folder / "SignCert.der"), cert);
    EXPECT_EQ(readFile(folder / "SignPri.key"), "pw:key");
    EXPECT_EQ(readFile(folder / "KmCert.der"), "km cert");
    EXPECT_EQ(readFile(folder / "KmPri.key"), "pw:km key");
    EXPECT_EQ(toolkit.count("PriKeyEncrypt(64,pw)"), 2);
}

TEST_F(Save, EncryptedKeyIsPassedOnUnopened)
{
    startOn(MEDIA_HARDDISK);
    EXPECT_EQ(save(true, "whatever", "pw:key"), 0);
    EXPECT_EQ(readFile(folder / "SignPri.key"), "pw:key");
    EXPECT_EQ(toolkit.count("PriKey"), 0);
}

TEST_F(Save, WithoutAKmCertificateOnePairIsWritten)
{
    startOn(MEDIA_HARDDISK);
    EXPECT_EQ(save(false, "pw", "key"), 0);
    EXPECT_EQ(save(false, "pw", "key", "", "km key"), 0);
    EXPECT_EQ(save(false, "pw", "key", "km cert", ""), 0);
    EXPECT_FALSE(fs::exists(folder / "KmCert.der"));
    EXPECT_FALSE(fs::exists(folder / "KmPri.key"));
}

TEST_F(Save, NegativeKmLengthsAreNone)
{
    startOn(MEDIA_HARDDISK);
    EXPECT_EQ(CLP_SaveCert(handle, true, text("pw"), text("cert"), 4, text("key"), 3, text("km"), -1,
                           text("km"), -9),
              0);
    EXPECT_FALSE(fs::exists(folder / "KmCert.der"));
}

TEST_F(Save, SavedCertificateIsListedAfterTheNextLoad)
{
    startOn(MEDIA_HARDDISK);
    EXPECT_EQ(CLP_LoadCertList(handle), CLPERR_NOTEXISTCERT);
    EXPECT_EQ(save(false, "pw", "key"), 0);
    EXPECT_EQ(CLP_GetCertCount(handle), 0);
    EXPECT_EQ(CLP_LoadCertList(handle), 0);
    EXPECT_EQ(info(0).szSignKeyPath, (folder / "SignPri.key").string());
    EXPECT_EQ(CLP_DecryptPriKey(handle, 0, text("pw")), 0);
}

TEST_F(Save, NationalCertificateOnADriveIsNotListedAgain)
{
    const fs::path drive = useDrive();
    EXPECT_EQ(save(false, "pw", "key"), 0);
    EXPECT_EQ(readFile(drive / "NPKI/yessign/User" / YESSIGN / "SignPri.key"), "pw:key");
    EXPECT_FALSE(fs::exists(TestHome::path() / "NPKI"));
    fs::create_directories(TestHome::path() / "NPKI/yessign/User");
    EXPECT_EQ(CLP_LoadCertList(handle), CLPERR_NOTEXISTCERT) << "a listing looks for NPKI/NPKI on a drive";
}

TEST_F(Save, GovernmentCertificateOnADriveIsListedAndDeleted)
{
    const fs::path drive = useDrive();
    for (const char* unit : {"people", "server"}) {
        toolkit.texts["CertGetSubjectName"] =
            std::string("cn=kim,ou=") + unit + ",o=Government of Korea,c=kr";
        EXPECT_EQ(save(false, "pw", "key", "km cert", "km key"), 0);
        ASSERT_EQ(CLP_LoadCertList(handle), 0);
        const std::string place = std::strcmp(unit, "people") == 0 ? "class2" : "class1";
        EXPECT_EQ(info(0).szSignKeyPath, (drive / "GPKI/Certificate" / place / "kim_sig.key").string());
        EXPECT_EQ(CLP_DeleteCert(handle, 0, text("pw")), 0);
        EXPECT_EQ(CLP_LoadCertList(handle), CLPERR_NOTEXISTCERT);
    }
}

TEST_F(Save, HardDiskBecomesTheStoresMedium)
{
    startOn(MEDIA_HARDDISK);
    disk().m_nMediaType = MEDIA_REMOVABLE;
    EXPECT_EQ(save(true, "pw", "key"), 0);
    EXPECT_EQ(disk().m_nMediaType, MEDIA_HARDDISK);
}

TEST_F(Save, MediaThatAreNoneAreRefused)
{
    startOn(MEDIA_HARDDISK);
    for (const int medium : {5, 6, 7, 8}) {
        session().m_nMediaType = medium;
        EXPECT_EQ(save(false, "", "key"), CLPERR_MEDIUM_NOT_ALLOWED) << medium;
    }
    for (const int medium : {3, 4}) {
        session().m_nMediaType = medium;
        EXPECT_EQ(save(true, "pw", "pw:key"), QG_BAD_ARGUMENT) << "no PIN";
        EXPECT_EQ(toolkit.count("PriKeyDecrypt"), 0);
    }
    EXPECT_FALSE(fs::exists(TestHome::path() / "NPKI"));
}

TEST_F(Save, OtherMediaOpenTheKeysBeforeTheyAreRefused)
{
    startOn(MEDIA_HARDDISK);
    copyText(session().m_szPINNumber, "1234");
    for (const int medium : {0, 3, 4, 99}) {
        toolkit.calls.clear();
        session().m_nMediaType = medium;
        EXPECT_EQ(save(true, "pw", "pw:key", "km cert", "pw:km"), QG_BAD_ARGUMENT) << medium;
        EXPECT_EQ(toolkit.count("PriKeyDecrypt(pw,pw:key)") + toolkit.count("PriKeyDecrypt(pw,pw:km)"), 2);
        EXPECT_EQ(save(true, "wrong", "pw:key"), CLPERR_KEY_DECRYPT);
        EXPECT_EQ(save(true, "pw", "pw:key", "km cert", "other:km"), CLPERR_KEY_DECRYPT);
        EXPECT_EQ(save(true, "pw", ""), CLPERR_KEY_DECRYPT) << "no key to open";
        EXPECT_EQ(save(false, "pw", "key"), QG_BAD_ARGUMENT);
    }
    session().m_nMediaType = MEDIA_SMARTCARD;
    EXPECT_EQ(save(true, nullptr, "pw:key"), QG_BAD_ARGUMENT);
    EXPECT_EQ(save(true, "", "pw:key"), QG_BAD_ARGUMENT);
}

TEST_F(Save, DiskNeedsAPasswordAlsoForEncryptedKeys)
{
    startOn(MEDIA_HARDDISK);
    for (const bool encrypted : {true, false}) {
        EXPECT_EQ(save(encrypted, "", "key"), QG_BAD_ARGUMENT);
        EXPECT_EQ(save(encrypted, nullptr, "key"), QG_BAD_ARGUMENT);
    }
    EXPECT_FALSE(fs::exists(TestHome::path() / "NPKI"));
}

TEST_F(Save, EmptyCertificateOrKeyIsRefused)
{
    startOn(MEDIA_HARDDISK);
    EXPECT_EQ(save(true, "pw", ""), QG_BAD_ARGUMENT);
    toolkit.failures = {{"CertLoad()", QG_BAD_ARGUMENT}}; // as the toolkit refuses an empty one
    cert.clear();
    EXPECT_EQ(save(true, "pw", "key"), CLPERR_CERT_LOAD);
    EXPECT_FALSE(fs::exists(TestHome::path() / "NPKI"));
}

TEST_F(Save, CertificateWithoutAPlaceHasItsCodes)
{
    startOn(MEDIA_HARDDISK);
    toolkit.texts["CertGetSubjectName"] = "cn=kim,o=yessign,c=kr";
    EXPECT_EQ(save(true, "pw", "key"), -1);
    toolkit.texts["CertGetSubjectName"] = "cn=kim,ou=a,o=..,c=kr";
    EXPECT_EQ(save(true, "pw", "key"), CLPERR_FILE_WRITE);
    toolkit.texts["CertGetSubjectName"] = "cn=kim,ou=a,o=Zarvane,c=kr";
    EXPECT_EQ(save(true, "pw", "key"), CLPERR_FILE_WRITE) << "there is no path to write to";
    toolkit.failures = {{"CertGetSubjectName", 9}};
    EXPECT_EQ(save(true, "pw", "key"), CLPERR_CERT_FIELD);
    EXPECT_TRUE(fs::is_empty(TestHome::path()));
}

TEST_F(Save, FailureOnTheKmPairLeavesTheSigningPair)
{
    startOn(MEDIA_HARDDISK);
    toolkit.failures = {{"MediaDiskWriteFile(" + (folder / "KmPri.key").string() + ",pw:km key)", 1105}};
    EXPECT_EQ(save(false, "pw", "key", "km cert", "km key"), CLPERR_FILE_WRITE);
    EXPECT_EQ(readFile(folder / "SignPri.key"), "pw:key");
    EXPECT_TRUE(fs::exists(folder / "KmCert.der")) << "no step is undone";
    EXPECT_FALSE(fs::exists(folder / "KmPri.key"));
}

TEST_F(Save, SessionWithoutStoresIsTold)
{
    option.nLibAPIType = 7;
    toolkit.failures["ZR_Initalize"] = QG_BAD_TOOLKIT_TYPE;
    EXPECT_EQ(start(), CLPERR_NOT_STARTED);
    CCertListProcInterface bare;
    char some[] = "some";
    EXPECT_EQ(bare.SaveCert(true, some, 4, some, 4, nullptr, 0, nullptr, 0, some), QG_NO_CONTEXT);
    EXPECT_EQ(bare.DeleteCert(0, some), QG_NO_CONTEXT);
    EXPECT_EQ(bare.ExportPFX(0, some, some), QG_NO_CONTEXT);
    EXPECT_EQ(bare.m_nRtn, QG_NO_CONTEXT);
}

// --- Paths without a slash ----------------------------------------------------------------------------

namespace {

/** What a listing finds of a government certificate, and which files were written, in the home directory and
 * beside it. */
class SaveGovernment : public Save
{
protected:
    SaveGovernment()
    {
        fs::remove_all(beside);
        startOn(MEDIA_HARDDISK);
    }
    ~SaveGovernment() override { fs::remove_all(beside); }

    int saveAs(const char* unit)
    {
        toolkit.texts["CertGetSubjectName"] =
            std::string("cn=kim,ou=") + unit + ",o=Government of Korea,c=kr";
        return save(false, "pw", "key", "km cert", "km key");
    }

    fs::path beside = TestHome::path().string() + "GPKI"; // ".../home" becomes ".../homeGPKI"
    fs::path class2 = TestHome::path() / "GPKI/Certificate/class2";
};

} // namespace

TEST_F(SaveGovernment, OfficesFilesLandBesideTheHomeAndAreNotListed)
{
    EXPECT_EQ(saveAs("server"), 0);
    for (const char* name : {"kim_sig.cer", "kim_sig.key", "kim_env.cer", "kim_env.key"})
        EXPECT_TRUE(fs::exists(beside / "Certificate/class2" / name)) << name;
    EXPECT_FALSE(fs::exists(TestHome::path() / "GPKI"));
    EXPECT_EQ(CLP_LoadCertList(handle), CLPERR_NOTEXISTCERT);
}

TEST_F(SaveGovernment, HoldersCertificateIsWhereAListingLooksButItsKeyIsNot)
{
    EXPECT_EQ(saveAs("people"), 0);
    EXPECT_TRUE(fs::exists(class2 / "kim_sig.cer"));
    EXPECT_TRUE(fs::exists(class2 / "kim_env.cer"));
    EXPECT_TRUE(fs::exists(beside / "Certificate/class2/kim_sig.key"));
    EXPECT_TRUE(fs::exists(beside / "Certificate/class2/kim_env.key"));
    EXPECT_EQ(CLP_LoadCertList(handle), CLPERR_NOTEXISTCERT) << "a certificate without its key is none";
    fs::copy(beside / "Certificate/class2/kim_sig.key", class2 / "kim_sig.key");
    EXPECT_EQ(CLP_LoadCertList(handle), 0);
    EXPECT_EQ(CLP_GetCertCount(handle), 1);
    EXPECT_EQ(CLP_DecryptPriKey(handle, 0, text("pw")), 0);
}

TEST_F(SaveGovernment, SavingOverAListedHolderLeavesItsOldKeyInTheList)
{
    writeFlat(class2, "kim", "old:key");
    EXPECT_EQ(saveAs("people"), 0);
    EXPECT_EQ(CLP_LoadCertList(handle), 0);
    EXPECT_EQ(readFile(class2 / "kim_sig.cer"), cert);
    EXPECT_EQ(readFile(class2 / "kim_sig.key"), "old:key");
}

// --- Deleting -----------------------------------------------------------------------------------------

namespace {

class Delete : public SessionTest
{
protected:
    Delete()
    {
        writeHolder(yessign / "kim", "pw:key", "pw:km");
        startOn(MEDIA_HARDDISK);
        EXPECT_EQ(CLP_LoadCertList(handle), 0);
    }

    size_t files() const
    {
        return static_cast<size_t>(std::distance(fs::directory_iterator(yessign / "kim"), {}));
    }
};

} // namespace

TEST_F(Delete, PasswordIsProvedFirst)
{
    EXPECT_EQ(CLP_DeleteCert(handle, 0, text("wrong")), CLPERR_WRONG_PASSWORD);
    EXPECT_EQ(files(), 4u);
    EXPECT_EQ(CLP_DeleteCert(handle, 0, text("pw")), 0);
    EXPECT_EQ(files(), 0u);
    EXPECT_EQ(CLP_GetCertCount(handle), 1) << "until the next load";
    EXPECT_EQ(CLP_LoadCertList(handle), CLPERR_NOTEXISTCERT);
}

TEST_F(Delete, EmptyPasswordRemovesTheFilesUnasked)
{
    EXPECT_EQ(CLP_DeleteCert(handle, 0, text("")), 0);
    EXPECT_EQ(files(), 0u);
    writeHolder(yessign / "kim", "pw:key", "pw:km");
    EXPECT_EQ(CLP_DeleteCert(handle, 0, nullptr), 0);
    EXPECT_EQ(files(), 0u);
    EXPECT_EQ(toolkit.count("MediaDiskDelete"), 0);
}

TEST_F(Delete, IndexOutsideTheListIsRefused)
{
    for (const int index : {-1, 1, 1 << 30}) {
        EXPECT_EQ(CLP_DeleteCert(handle, index, text("pw")), QG_BAD_ARGUMENT);
        EXPECT_EQ(CLP_DeleteCert(handle, index, nullptr), QG_BAD_ARGUMENT);
    }
    CP_ClearCertData(handle);
    EXPECT_EQ(CLP_DeleteCert(handle, 0, text("pw")), QG_BAD_ARGUMENT);
    EXPECT_EQ(files(), 4u);
}

TEST_F(Delete, FollowsTheMedium)
{
    for (const int medium : {5, 6, 7, 8}) {
        session().m_nMediaType = medium;
        EXPECT_EQ(CLP_DeleteCert(handle, 0, text("pw")), CLPERR_MEDIUM_NOT_ALLOWED) << medium;
        EXPECT_EQ(session().DeleteCert(-1, text("pw")), CLPERR_MEDIUM_NOT_ALLOWED) << "ahead of the index";
    }
    session().m_nMediaType = MEDIA_SMARTCARD;
    EXPECT_EQ(CLP_DeleteCert(handle, 0, text("")), QG_BAD_ARGUMENT);
    for (const int medium : {0, 3, 4, 99}) {
        session().m_nMediaType = medium;
        EXPECT_EQ(CLP_DeleteCert(handle, 0, text("pw")), 0) << "and nothing is done";
    }
    EXPECT_EQ(files(), 4u);
}
