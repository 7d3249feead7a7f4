// Saving and deleting on the open toolkit, with certificates that anybody may have made.

#include <sys/stat.h>

#include "ToolkitSession.h"

namespace {

using Names = std::vector<std::string>;

class ToolkitSave : public ToolkitSession
{
protected:
    ToolkitSave() { start(); }

    /** A subject whose values may hold what a text form can't say: types and values, leaf last. */
    static samplepki::Name subject(const std::string& commonName, const std::string& unit,
                                   const std::string& organisation)
    {
        return {{"C", "kr"}, {"O", organisation}, {"OU", unit}, {"CN", commonName}};
    }

    static samplepki::FilePair issued(const samplepki::Name& name, unsigned number = 0)
    {
        return pair({.subject = name, .key = key(number)});
    }

    int save(const samplepki::FilePair& sign, const samplepki::FilePair& km = {})
    {
        return CLP_SaveCert(handle, true, text("pw"), text(sign.certificate), size(sign.certificate),
                            text(sign.key), size(sign.key), text(km.certificate), size(km.certificate),
                            text(km.key), size(km.key));
    }

    int savePlain(const samplepki::FilePair& sign, const samplepki::KeyPair& own)
    {
        const std::string plain = own.privateKeyInfo();
        return CLP_SaveCert(handle, false, text("pw"), text(sign.certificate), size(sign.certificate),
                            text(plain), size(plain), nullptr, 0, nullptr, 0);
    }

    /** Files, and with a slash at their end directories, below a directory. */
    static Names below(const fs::path& directory)
    {
        Names names;
        for (const auto& entry : fs::recursive_directory_iterator(directory))
            names.push_back(fs::relative(entry.path(), directory).string() +
                            (entry.is_directory() ? "/" : ""));
        std::sort(names.begin(), names.end());
        return names;
    }

    static mode_t modeOf(const fs::path& path)
    {
        struct stat status
        {};
        EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
        return status.st_mode & 07777;
    }

    const std::string holder = "NPKI/yessign/User/cn=hong,ou=people,o=yessign,c=kr";
};

/** The toolkit of the government side. */
class GpkiToolkitSave : public ToolkitSave
{
protected:
    GpkiToolkitSave()
    {
        CLP_UnInitalize(handle);
        handle = nullptr;
        option.nLibAPIType = TOOLKIT_GPKI;
        start();
    }
};

} // namespace

TEST_F(ToolkitSave, SavedPairsAreListedAndOpen)
{
    EXPECT_EQ(save(pair(request()), pair(request("hong", 1))), 0);
    ASSERT_EQ(load(), 0);
    ASSERT_EQ(CLP_GetCertCount(handle), 1);
    EXPECT_EQ(info().szSignCertPath, (home / holder / "SignCert.der").string());
    EXPECT_EQ(CLP_DecryptPriKey(handle, 0, text("pw")), 0);
    const CERTINFO record = info();
    EXPECT_EQ(bytes(record.szSignKey, record.nSignKeyLen), key().privateKeyInfo());
    EXPECT_EQ(bytes(record.szKmKey, record.nKmKeyLen), key(1).privateKeyInfo());
}

TEST_F(ToolkitSave, PlainKeyIsEncryptedWithItsRandom)
{
    EXPECT_EQ(savePlain(pair(request()), key()), 0);
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(CLP_DecryptPriKey(handle, 0, text("wrong")), CLPERR_WRONG_PASSWORD);
    char* random = nullptr;
    int length = 0;
    ASSERT_EQ(CLP_GetPriKeyRandom(handle, 0, text("pw"), &random, &length), 0);
    EXPECT_EQ(bytes(random, length), key().random());
    void* address = random;
    CLP_MemFree(handle, &address);
}

TEST_F(ToolkitSave, KeyThatIsNoneLeavesItsCertificateBehind)
{
    const std::string certificate = pair(request()).certificate;
    EXPECT_EQ(CLP_SaveCert(handle, false, text("pw"), text(certificate), size(certificate), text("no key"), 6,
                           nullptr, 0, nullptr, 0),
              CLPERR_FILE_WRITE);
    EXPECT_TRUE(fs::exists(home / holder / "SignCert.der"));
    EXPECT_FALSE(fs::exists(home / holder / "SignPri.key"));
    EXPECT_EQ(load(), CLPERR_NOTEXISTCERT);
}

TEST_F(ToolkitSave, BytesThatAreNoCertificateAreTold)
{
    EXPECT_EQ(save({"no certificate", pair(request()).key}), CLPERR_CERT_LOAD);
    EXPECT_EQ(below(home), Names{});
}

TEST_F(ToolkitSave, FilesAndDirectoriesAreTheOwnersAloneWhateverTheUmask)
{
    for (const mode_t mask : {mode_t{0}, mode_t{0022}, mode_t{0777}}) {
        TestHome::reset();
        const mode_t before = umask(mask);
        const int code = save(pair(request()), pair(request("hong", 1)));
        EXPECT_EQ(umask(before), mask);
        ASSERT_EQ(code, 0);
        const Names made = below(home);
        EXPECT_EQ(made.size(), 8u);
        for (const std::string& name : made)
            EXPECT_EQ(modeOf(home / name), name.back() == '/' ? 0700u : 0600u) << name;
    }
}

TEST_F(ToolkitSave, ReplacedKeyFileBecomesTheOwnersAlone)
{
    ASSERT_EQ(save(pair(request())), 0);
    fs::permissions(home / holder / "SignPri.key", fs::perms::all);
    ASSERT_EQ(save(pair(request())), 0);
    EXPECT_EQ(modeOf(home / holder / "SignPri.key"), 0600u);
}

TEST_F(ToolkitSave, LinkInAFilesPlaceIsReplacedAndNotFollowed)
{
    ASSERT_EQ(save(pair(request())), 0);
    const fs::path key2 = home / holder / "SignPri.key";
    writeFile(home / "target", "another file");
    fs::remove(key2);
    fs::create_symlink(home / "target", key2);
    ASSERT_EQ(save(pair(request())), 0);
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(key2)));
    EXPECT_EQ(readFile(home / "target"), "another file");
}

TEST_F(ToolkitSave, DirectoryInAFilesPlaceIsLeft)
{
    fs::create_directories(home / holder / "SignPri.key");
    EXPECT_EQ(save(pair(request())), CLPERR_FILE_WRITE);
    EXPECT_TRUE(fs::is_directory(home / holder / "SignPri.key"));
}

// --- Foreign names ------------------------------------------------------------------------------------

TEST_F(ToolkitSave, ForeignNameNeverLeavesItsTreeAndWritesNothing)
{
    const fs::path around = home.parent_path();
    const Names before = below(around);
    for (const samplepki::Name& name :
         {subject("hong", "people", ".."), subject("hong", "people", "."),
          subject("hong", "people", "../../evil"), subject("hong", "people", "/tmp/evil"),
          subject("../../../evil", "people", "yessign"), subject("hong", "../../../../evil", "yessign"),
          subject("a/b", "people", "yessign"), subject("x=../../evil", "people", "yessign"),
          subject("hello=../../evil", "people", "yessign"), subject("hello=..", "people", "yessign"),
          subject("../../evil", "people", "Government of Korea"),
          subject("../evil", "server", "Government of Korea"),
          subject("/evil", "server", "Government of Korea"),
          subject("..", "people", "Government of Korea")}) {
        EXPECT_EQ(save(issued(name)), CLPERR_FILE_WRITE) << samplepki::nameText(name);
        EXPECT_EQ(below(around), before) << samplepki::nameText(name);
    }
}

TEST_F(ToolkitSave, NameWithoutUnitOrganisationOrCommonNameIsRefused)
{
    for (const char* name :
         {"ou=people,o=yessign,c=kr", "cn=hong,o=yessign,c=kr", "cn=hong,ou=people,c=kr"}) {
        EXPECT_EQ(save(issued(samplepki::nameFromText(name))), -1) << name;
        EXPECT_EQ(below(home), Names{});
    }
}

TEST_F(ToolkitSave, NameLongerThanAPathOrAFileNameIsRefusedAndNotShortened)
{
    // The whole subject is one file name, of at most 255 bytes; a path has at most 1023.
    const auto organised = [](size_t length) {
        samplepki::Name name = {{"C", "kr"}, {"O", "yessign"}};
        size_t left = length - std::string("cn=,ou=,o=yessign,c=kr").size();
        const size_t unit = left / 2;
        name.push_back({"OU", std::string(unit, 'u')});
        name.push_back({"CN", std::string(left - unit, 'n')});
        return name;
    };
    EXPECT_EQ(save(issued(organised(255))), 0);
    TestHome::reset();
    for (const size_t length : {256u, 900u, 1022u, 1023u}) {
        EXPECT_EQ(save(issued(organised(length))), CLPERR_FILE_WRITE) << length;
        for (const std::string& name : below(home))
            EXPECT_EQ(name.back(), '/') << "a file was written: " << name;
    }
    for (const size_t length : {1024u, 2000u, 5000u}) {
        EXPECT_NE(save(issued(organised(length))), 0) << length;
        EXPECT_EQ(save(issued(subject(std::string(length, 'n'), "people", "Government of Korea"))), -1)
            << "nothing behind the common name is left";
    }
    EXPECT_EQ(save(issued(subject(std::string(300, 'n'), "people", "Government of Korea"))),
              CLPERR_FILE_WRITE);
    EXPECT_FALSE(fs::exists(home.string() + "GPKI/Certificate/class2/" + std::string(247, 'n')));
}

TEST_F(ToolkitSave, KoreanNameHasItsBytesAsTheFileName)
{
    const auto name = samplepki::nameFromText("cn=홍길동()0010,ou=개인,o=yessign,c=kr");
    EXPECT_EQ(save(issued(name)), 0);
    ASSERT_EQ(load(), 0);
    EXPECT_STREQ(info().szSubjectDN, fs::path(info().szSignCertPath).parent_path().filename().c_str());
}

TEST_F(GpkiToolkitSave, SavesAndDeletesLikeTheOther)
{
    EXPECT_EQ(save(pair(request()), pair(request("hong", 1))), 0);
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(CLP_DeleteCert(handle, 0, text("wrong")), CLPERR_WRONG_PASSWORD);
    EXPECT_EQ(CLP_DeleteCert(handle, 0, text("pw")), 0);
    EXPECT_TRUE(fs::is_empty(home / holder));
    EXPECT_EQ(save(issued(subject("hong", "people", ".."))), CLPERR_FILE_WRITE);
}

// --- Deleting -----------------------------------------------------------------------------------------

TEST_F(ToolkitSave, WrongPasswordLeavesEveryFileByteForByte)
{
    const auto sign = pair(request());
    const auto km = pair(request("hong", 1));
    ASSERT_EQ(save(sign, km), 0);
    ASSERT_EQ(load(), 0);
    for (const char* password : {"wrong", "PW", "pw "}) {
        EXPECT_EQ(CLP_DeleteCert(handle, 0, text(password)), CLPERR_WRONG_PASSWORD);
        EXPECT_EQ(readFile(home / holder / "SignCert.der"), sign.certificate);
        EXPECT_EQ(readFile(home / holder / "SignPri.key"), sign.key);
        EXPECT_EQ(readFile(home / holder / "KmCert.der"), km.certificate);
        EXPECT_EQ(readFile(home / holder / "KmPri.key"), km.key);
    }
    EXPECT_EQ(CLP_DeleteCert(handle, 0, text("pw")), 0);
    EXPECT_TRUE(fs::is_empty(home / holder));
}

TEST_F(ToolkitSave, DamagedKeyIsNotDeletedWithAnyPassword)
{
    ASSERT_EQ(save(pair(request())), 0);
    writeFile(home / holder / "SignPri.key", "damaged");
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(CLP_DeleteCert(handle, 0, text("pw")), CLPERR_DELETE);
    EXPECT_EQ(below(home / holder), (Names{"SignCert.der", "SignPri.key"}));
}
