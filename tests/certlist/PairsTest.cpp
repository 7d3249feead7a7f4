// Writing, reading and deleting a holder's pairs.

#include <sys/stat.h>

#include "BoundedText.h"
#include "StoreTest.h"

namespace {

/** A buffer that the store hands out; given back at the end. */
struct Taken
{
    explicit Taken(CLoadDISK& owner) : store(owner) {}
    ~Taken()
    {
        void* bytes = data;
        store.MemFree(&bytes);
    }
    std::string bytes() const { return data ? std::string(data, static_cast<size_t>(length)) : "nothing"; }

    CLoadDISK& store;
    char* data = nullptr;
    int length = -1;
};

class Pairs : public DiskTest
{
protected:
    int write(bool encrypted, const char* password, const char* certFile, const char* keyFile)
    {
        return store.WriteCertNKey(encrypted, const_cast<char*>(password), 64, const_cast<char*>(certFile),
                                   const_cast<char*>(keyFile), cert, 4, key, 3);
    }
    int read(bool encrypted, int index)
    {
        return store.ReadCertNKey(encrypted, index, &signCert.data, &signCert.length, &signKey.data,
                                  &signKey.length, &kmCert.data, &kmCert.length, &kmKey.data, &kmKey.length);
    }
    int readFrom(const fs::path& certFile, const fs::path& keyFile)
    {
        return store.ReadCertNKeyFromPath(certFile.string().data(), keyFile.string().data(), &signCert.data,
                                          &signCert.length, &signKey.data, &signKey.length);
    }
    int erase(const char* password, int index = 0)
    {
        return store.DeleteCertNKey(index, const_cast<char*>(password));
    }
    /** Names below the home directory. */
    std::vector<std::string> files() const
    {
        std::vector<std::string> names;
        for (const auto& entry : fs::recursive_directory_iterator(home))
            if (entry.is_regular_file())
                names.push_back(fs::relative(entry.path(), home));
        std::sort(names.begin(), names.end());
        return names;
    }

    char cert[5] = "cert";
    char key[4] = "key";
    std::string certPath = home / "c";
    std::string keyPath = home / "k";
    Taken signCert{store};
    Taken signKey{store};
    Taken kmCert{store};
    Taken kmKey{store};
};

using Names = std::vector<std::string>;

} // namespace

// --- Writing ------------------------------------------------------------------------------------------

TEST_F(Pairs, PlainKeyIsEncryptedWithTheAlgorithmAndWritten)
{
    EXPECT_EQ(write(false, "pw", certPath.c_str(), keyPath.c_str()), 0);
    EXPECT_EQ(readFile(certPath), "cert");
    EXPECT_EQ(readFile(keyPath), "pw:key");
    EXPECT_EQ(toolkit.count("PriKeyEncrypt(64,pw)"), 1);
}

TEST_F(Pairs, EncryptedKeyIsWrittenAsItIsAndNeedsNoPassword)
{
    EXPECT_EQ(write(true, nullptr, certPath.c_str(), keyPath.c_str()), 0);
    EXPECT_EQ(readFile(keyPath), "key");
    EXPECT_EQ(toolkit.count("PriKey"), 0);
}

TEST_F(Pairs, WritingRefusesMissingArguments)
{
    EXPECT_EQ(write(false, nullptr, "/c", "/k"), QG_BAD_ARGUMENT);
    EXPECT_EQ(write(false, "", "/c", "/k"), QG_BAD_ARGUMENT);
    EXPECT_EQ(write(true, "", nullptr, "/k"), QG_BAD_ARGUMENT);
    EXPECT_EQ(write(true, "", "/c", nullptr), QG_BAD_ARGUMENT);
    char path[] = "/x";
    EXPECT_EQ(store.WriteCertNKey(true, nullptr, 64, path, path, nullptr, 4, key, 3), QG_BAD_ARGUMENT);
    EXPECT_EQ(store.WriteCertNKey(true, nullptr, 64, path, path, cert, 0, key, 3), QG_BAD_ARGUMENT);
    EXPECT_EQ(store.WriteCertNKey(true, nullptr, 64, path, path, cert, 4, nullptr, 3), QG_BAD_ARGUMENT);
    EXPECT_EQ(store.WriteCertNKey(true, nullptr, 64, path, path, cert, 4, key, 0), QG_BAD_ARGUMENT);
    EXPECT_EQ(toolkit.count("MediaDiskWriteFile"), 0);
}

TEST_F(Pairs, FailedCertificateLeavesTheKeyUnwritten)
{
    toolkit.failures = {{"MediaDiskWriteFile", 1105}};
    EXPECT_EQ(write(true, nullptr, certPath.c_str(), keyPath.c_str()), CLPERR_FILE_WRITE);
    EXPECT_EQ(files(), Names{});
}

TEST_F(Pairs, FailedKeyLeavesTheCertificateBehind)
{
    toolkit.failures = {{"MediaDiskWriteFile(" + keyPath + ",key)", 1105}};
    EXPECT_EQ(write(true, nullptr, certPath.c_str(), keyPath.c_str()), CLPERR_FILE_WRITE);
    EXPECT_EQ(files(), Names{"c"});
    toolkit.failures = {{"PriKeyEncrypt", 2006}};
    EXPECT_EQ(write(false, "pw", certPath.c_str(), keyPath.c_str()), CLPERR_FILE_WRITE);
    EXPECT_EQ(files(), Names{"c"});
}

// --- Reading a record ---------------------------------------------------------------------------------

TEST_F(Pairs, RecordIsReadOutInTheFormThatWasAskedFor)
{
    writeFlat(class1, "a", "pw:sign key", "pw:km key");
    ASSERT_EQ(store.LoadCertList(), 0);
    EXPECT_EQ(read(true, 0), 0);
    EXPECT_EQ(signCert.bytes() + "|" + signKey.bytes(), "cert a|pw:sign key");
    EXPECT_EQ(kmCert.bytes() + "|" + kmKey.bytes(), "km cert a|pw:km key");
    EXPECT_EQ(signCert.data[signCert.length], '\0') << "one byte more, zero";
    EXPECT_EQ(kmKey.data[kmKey.length], '\0');
}

TEST_F(Pairs, PlainKeysAreReadOutOnceTheyAreOpen)
{
    writeFlat(class1, "a", "pw:sign key", "pw:km key");
    ASSERT_EQ(store.LoadCertList(), 0);
    char password[] = "pw";
    ASSERT_EQ(store.DecryptPriKey(0, password), 0);
    EXPECT_EQ(read(false, 0), 0);
    EXPECT_EQ(signKey.bytes() + "|" + kmKey.bytes(), "sign key|km key");
}

TEST_F(Pairs, ClosedKeyIsReadOutEmpty)
{
    writeFlat(class1, "a");
    ASSERT_EQ(store.LoadCertList(), 0);
    EXPECT_EQ(read(false, 0), 0);
    EXPECT_EQ(signCert.bytes(), "cert a");
    EXPECT_EQ(signKey.length, 0);
    ASSERT_NE(signKey.data, nullptr) << "an empty buffer, and not none";
    EXPECT_EQ(signKey.data[0], '\0');
}

TEST_F(Pairs, RecordWithoutAKmCertificateLeavesItsOutputs)
{
    writeFlat(class1, "a");
    ASSERT_EQ(store.LoadCertList(), 0);
    EXPECT_EQ(read(true, 0), 0);
    EXPECT_EQ(kmCert.data, nullptr);
    EXPECT_EQ(kmCert.length, -1);
    EXPECT_EQ(kmKey.length, -1);
    Taken again{store};
    Taken key2{store};
    EXPECT_EQ(store.ReadCertNKey(true, 0, &again.data, &again.length, &key2.data, &key2.length, nullptr,
                                 nullptr, nullptr, nullptr),
              0);
}

TEST_F(Pairs, IndexOnePastTheListReadsAnEmptyRecord)
{
    writeFlat(class1, "a", "pw:key", "pw:km");
    writeFlat(class1, "b", "pw:key", "pw:km");
    ASSERT_EQ(store.LoadCertList(), 0);
    EXPECT_EQ(read(true, 2), 0);
    EXPECT_EQ(signCert.length + signKey.length, 0);
    EXPECT_NE(signCert.data, nullptr);
    EXPECT_EQ(kmCert.data, nullptr);
}

TEST_F(Pairs, IndexFurtherOutIsRefused)
{
    writeFlat(class1, "a");
    ASSERT_EQ(store.LoadCertList(), 0);
    for (const int index : {-1, 2, 1 << 30})
        EXPECT_EQ(read(true, index), QG_BAD_ARGUMENT);
    store.m_pstCertInfoList.reset(); // the count stays, as after a clearing
    EXPECT_EQ(read(true, 0), QG_BAD_ARGUMENT);
    EXPECT_EQ(signCert.data, nullptr);
}

TEST_F(Pairs, ListThatWasNeverLoadedHasNoRecord)
{
    EXPECT_EQ(read(true, 0), QG_BAD_ARGUMENT);
}

TEST_F(Pairs, MissingOutputsAreRefusedBeforeAnyIsMade)
{
    writeFlat(class1, "a", "pw:key", "pw:km");
    ASSERT_EQ(store.LoadCertList(), 0);
    EXPECT_EQ(store.ReadCertNKey(true, 0, &signCert.data, &signCert.length, nullptr, nullptr, &kmCert.data,
                                 &kmCert.length, &kmKey.data, &kmKey.length),
              QG_BAD_ARGUMENT);
    EXPECT_EQ(store.ReadCertNKey(true, 0, &signCert.data, &signCert.length, &signKey.data, &signKey.length,
                                 nullptr, nullptr, nullptr, nullptr),
              QG_BAD_ARGUMENT);
    EXPECT_EQ(signCert.data, nullptr);
}

// --- Reading files ------------------------------------------------------------------------------------

TEST_F(Pairs, FilesAreReadFromTheirPaths)
{
    writeFlat(class1, "a", "pw:sign key");
    EXPECT_EQ(readFrom(class1 / "a_sig.cer", class1 / "a_sig.key"), 0);
    EXPECT_EQ(signCert.bytes() + "|" + signKey.bytes(), "cert a|pw:sign key");
    EXPECT_EQ(signKey.data[signKey.length], '\0');
}

TEST_F(Pairs, FileThatIsMissingEmptyOrAFifoCannotBeRead)
{
    writeFlat(class1, "a", "pw:sign key");
    writeFile(class1 / "empty", "");
    ASSERT_EQ(mkfifo((class1 / "fifo").c_str(), 0600), 0);
    for (const char* name : {"none", "empty", "fifo"}) {
        EXPECT_EQ(readFrom(class1 / name, class1 / "a_sig.key"), CLPERR_FILE_READ) << name;
        EXPECT_EQ(readFrom(class1 / "a_sig.cer", class1 / name), CLPERR_FILE_READ) << name;
    }
    EXPECT_EQ(signCert.data, nullptr);
    EXPECT_EQ(store.ReadCertNKeyFromPath(nullptr, key, &signCert.data, &signCert.length, &signKey.data,
                                         &signKey.length),
              QG_BAD_ARGUMENT);
    EXPECT_EQ(store.ReadCertNKeyFromPath(cert, key, nullptr, nullptr, &signKey.data, &signKey.length),
              QG_BAD_ARGUMENT);
}

// --- Deleting -----------------------------------------------------------------------------------------

namespace {

/** A national holder with both pairs under "pw". */
class Deleting : public Pairs
{
protected:
    Deleting() { list("pw:key", "pw:km"); }

    void list(const std::string& sign, const std::string& km)
    {
        TestHome::reset();
        writeHolder(yessign / "kim", sign, km);
        EXPECT_EQ(store.LoadCertList(), 0);
    }
    static Names of(Names names)
    {
        for (std::string& name : names)
            name = "NPKI/yessign/User/kim/" + name;
        return names;
    }

    const Names all = of({"kmCert.der", "kmPri.key", "signCert.der", "signPri.key"});
};

} // namespace

TEST_F(Deleting, PasswordIsProvedOnBothKeysAndAllFilesGo)
{
    EXPECT_EQ(erase("pw"), 0);
    EXPECT_EQ(files(), Names{});
    const std::string folder = (yessign / "kim/").string();
    std::vector<std::string> deletions;
    for (const std::string& call : toolkit.calls)
        if (call.find("MediaDiskDelete") == 0)
            deletions.push_back(call);
    EXPECT_EQ(deletions, (Names{"MediaDiskDeletePriKey(1," + folder + "signPri.key)",
                                "MediaDiskDeleteCert(1," + folder + "signCert.der)",
                                "MediaDiskDeletePriKey(2," + folder + "kmPri.key)",
                                "MediaDiskDeleteCert(2," + folder + "kmCert.der)"}));
}

TEST_F(Deleting, WrongPasswordLeavesEveryFile)
{
    EXPECT_EQ(erase("wrong"), CLPERR_WRONG_PASSWORD);
    EXPECT_EQ(files(), all);
}

TEST_F(Deleting, KmKeyUnderAnotherPasswordStaysBehind)
{
    list("pw:key", "other:km");
    EXPECT_EQ(erase("pw"), CLPERR_WRONG_PASSWORD);
    EXPECT_EQ(files(), of({"kmCert.der", "kmPri.key"}));
}

TEST_F(Deleting, OtherFailuresOfTheToolkitHaveOneCode)
{
    toolkit.failures = {{"MediaDiskDeletePriKey", 2000}};
    EXPECT_EQ(erase("pw"), CLPERR_DELETE);
    EXPECT_EQ(files(), all);
    toolkit.failures = {{"MediaDiskDeleteCert", 1106}};
    EXPECT_EQ(erase("pw"), CLPERR_DELETE);
    EXPECT_EQ(files(), of({"kmCert.der", "kmPri.key", "signCert.der"})) << "no step is undone";
}

TEST_F(Deleting, FifoInTheKeysPlaceIsNotWaitedFor)
{
    fs::remove(yessign / "kim/signPri.key");
    ASSERT_EQ(mkfifo((yessign / "kim/signPri.key").c_str(), 0600), 0);
    EXPECT_EQ(erase("pw"), CLPERR_DELETE);
    EXPECT_EQ(toolkit.count("MediaDiskDelete"), 0);
}

TEST_F(Deleting, WithoutAPasswordTheFilesGoUnasked)
{
    EXPECT_EQ(store.DeleteCertNKey(0), 0);
    EXPECT_EQ(files(), Names{});
    EXPECT_EQ(toolkit.count("MediaDiskDelete"), 0);
}

TEST_F(Deleting, EmptyKeyPathLeavesTheCertificate)
{
    store.record(0)->szSignKeyPath[0] = '\0';
    EXPECT_EQ(store.DeleteCertNKey(0), 0);
    EXPECT_EQ(files(), of({"signCert.der", "signPri.key"}));
}

TEST_F(Deleting, EmptyKmPathLeavesTheKmPair)
{
    store.record(0)->szKmKeyPath[0] = '\0';
    EXPECT_EQ(store.DeleteCertNKey(0), 0);
    EXPECT_EQ(files(), of({"kmCert.der", "kmPri.key"}));
    list("pw:key", "pw:km");
    store.record(0)->szKmCertPath[0] = '\0';
    EXPECT_EQ(erase("pw"), 0);
    EXPECT_EQ(files(), of({"kmCert.der", "kmPri.key"}));
}

TEST_F(Deleting, FileThatIsGoneIsAFailureAndEndsTheWork)
{
    fs::remove(yessign / "kim/signCert.der");
    EXPECT_EQ(store.DeleteCertNKey(0), CLPERR_DELETE);
    EXPECT_EQ(files(), of({"kmCert.der", "kmPri.key", "signPri.key"}));
}

TEST_F(Deleting, RecordStaysInTheList)
{
    ASSERT_EQ(erase("pw"), 0);
    EXPECT_EQ(store.m_nCertCnt, 1);
    EXPECT_EQ(store.record(0)->szSignKeyPath, (yessign / "kim/signPri.key").string());
    EXPECT_EQ(erase("pw"), CLPERR_DELETE) << "its files are gone";
}

TEST_F(Deleting, HolderDirectoryStaysEmpty)
{
    ASSERT_EQ(erase("pw"), 0);
    EXPECT_TRUE(fs::is_directory(yessign / "kim"));
    EXPECT_TRUE(fs::is_empty(yessign / "kim"));
}

TEST_F(Deleting, HomeDirectoryIsTriedAndGoesOnlyWhenItIsEmpty)
{
    // Files that lie elsewhere, so that the home directory can be empty.
    const fs::path elsewhere = TestHome::scratch("elsewhere");
    const auto deleteAs = [&](int type) {
        list("pw:key", "");
        writeHolder(elsewhere, "pw:key");
        CERTINFO& record = *store.record(0);
        record.nCertType = type;
        copyText(record.szSignCertPath, (elsewhere / "signCert.der").c_str());
        copyText(record.szSignKeyPath, (elsewhere / "signPri.key").c_str());
        TestHome::reset();
        return store.DeleteCertNKey(0);
    };
    EXPECT_EQ(deleteAs(CERTTYPE_GPKI), 0);
    EXPECT_TRUE(fs::exists(home));
    for (const int type : {int(CERTTYPE_NPKI), 8}) {
        EXPECT_EQ(deleteAs(type), 0);
        EXPECT_FALSE(fs::exists(home)) << type;
        fs::create_directory(home);
    }
    list("pw:key", "");
    EXPECT_EQ(store.DeleteCertNKey(0), 0);
    EXPECT_TRUE(fs::exists(yessign)) << "a home directory is hardly ever empty";
}

TEST_F(Deleting, GovernmentRecordWithoutAKmPairFailsAfterItsFilesAreGone)
{
    TestHome::reset();
    writeFlat(class1, "a", "pw:key");
    ASSERT_EQ(store.LoadCertList(), 0);
    EXPECT_EQ(erase("pw"), CLPERR_DELETE) << "the record always names the other pair";
    EXPECT_EQ(files(), Names{});
    writeFlat(class1, "a", "pw:key");
    EXPECT_EQ(store.DeleteCertNKey(0), CLPERR_DELETE);
    EXPECT_EQ(files(), Names{});
}

TEST_F(Deleting, BadArgumentsAreRefused)
{
    for (const int index : {-1, 1, 1 << 30}) {
        EXPECT_EQ(erase("pw", index), QG_BAD_ARGUMENT);
        EXPECT_EQ(store.DeleteCertNKey(index), QG_BAD_ARGUMENT);
    }
    EXPECT_EQ(erase(nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(erase(""), QG_BAD_ARGUMENT);
    store.m_pstCertInfoList.reset();
    EXPECT_EQ(erase("pw"), QG_BAD_ARGUMENT);
    EXPECT_EQ(store.DeleteCertNKey(0), QG_BAD_ARGUMENT);
    EXPECT_EQ(files(), all);
}
