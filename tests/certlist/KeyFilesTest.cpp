#include "BoundedText.h"
#include "StoreTest.h"

namespace {

/** A GPKI certificate with both keys under "pw". */
class KeyFiles : public DiskTest
{
protected:
    KeyFiles() { load("pw:R:random", "pw:km key"); }

    void load(const std::string& sign, const std::string& km)
    {
        TestHome::reset();
        writeFlat(class1, "a", sign, km);
        EXPECT_EQ(store.LoadCertList(), 0);
    }

    CERTINFO& record() { return *store.record(0); }
    static std::string bytes(const char* data, int length) { return {data, static_cast<size_t>(length)}; }
    int decrypt(const char* password, int index = 0)
    {
        return store.DecryptPriKey(index, const_cast<char*>(password));
    }
    int random(const char* password, int index = 0)
    {
        return store.GetPrikeyRandom(index, const_cast<char*>(password));
    }
    int change(const char* from, const char* to)
    {
        return store.ChangePassword(0, const_cast<char*>(from), const_cast<char*>(to));
    }

    /** The data form; keeps what was handed out until the test ends. */
    int decryptData(const char* password)
    {
        return store.DecryptPriKey(0, const_cast<char*>(password), &signKey, &signLength, &kmKey, &kmLength);
    }
    ~KeyFiles() override
    {
        void* buffers[] = {signKey, kmKey};
        for (void*& buffer : buffers)
            store.MemFree(&buffer);
    }

    char* signKey = nullptr;
    char* kmKey = nullptr;
    int signLength = -1;
    int kmLength = -1;
};

} // namespace

TEST_F(KeyFiles, BothKeysOpenIntoTheRecord)
{
    EXPECT_EQ(decrypt("pw"), 0);
    EXPECT_EQ(bytes(record().szSignKey, record().nSignKeyLen), "R:random");
    EXPECT_EQ(bytes(record().szKmKey, record().nKmKeyLen), "km key");
    EXPECT_STREQ(record().szCertPassword, "pw");
}

TEST_F(KeyFiles, WrongPasswordAfterARightOneIsTakenAndKept)
{
    ASSERT_EQ(decrypt("pw"), 0);
    EXPECT_EQ(decrypt("wrong"), 0);
    EXPECT_STREQ(record().szCertPassword, "wrong");
    EXPECT_EQ(toolkit.count("PriKeyDecrypt(wrong"), 0);
}

TEST_F(KeyFiles, RecordWithoutKmKeyEndsAfterTheSigningKey)
{
    load("pw:key", "");
    EXPECT_EQ(decrypt("pw"), 0);
    EXPECT_EQ(toolkit.count("PriKeyDecrypt"), 1);
    EXPECT_EQ(record().nKmKeyLen, 0);
}

TEST_F(KeyFiles, KmKeyThatRefusesThePasswordLeavesTheSigningKeyOpen)
{
    load("pw:key", "other:km");
    EXPECT_EQ(decrypt("pw"), CLPERR_KM_PASSWORD);
    EXPECT_EQ(bytes(record().szSignKey, record().nSignKeyLen), "key");
    EXPECT_EQ(record().nKmKeyLen, 0);
    EXPECT_EQ(decryptData("pw"), CLPERR_KM_PASSWORD);
    EXPECT_EQ(bytes(signKey, signLength), "key");
    EXPECT_EQ(kmKey, nullptr);
}

TEST_F(KeyFiles, CodesOfTheToolkitAreMapped)
{
    const std::pair<int, int> mapped[] = {
        {2004, CLPERR_WRONG_PASSWORD}, {2000, CLPERR_KEY_DECRYPT}, {2001, CLPERR_KEY_DECRYPT}, {1234, 1234}};
    for (const auto& [code, expected] : mapped) {
        toolkit.failures["PriKeyDecrypt"] = code;
        EXPECT_EQ(decrypt("pw"), expected);
        EXPECT_EQ(random("pw"), expected);
        EXPECT_EQ(decryptData("pw"), expected);
        EXPECT_EQ(record().nSignKeyLen, 0);
        EXPECT_STREQ(record().szCertPassword, "");
        EXPECT_STREQ(store.m_szErrMsg, "toolkit says no");
    }
}

TEST_F(KeyFiles, CodesOfTheKmKeyAreMapped)
{
    const std::pair<int, int> mapped[] = {
        {2004, CLPERR_KM_PASSWORD}, {2000, CLPERR_KEY_DECRYPT}, {2001, CLPERR_KEY_DECRYPT}, {1234, 1234}};
    ASSERT_EQ(decrypt("pw"), 0);
    for (const auto& [code, expected] : mapped) {
        record().nKmKeyLen = 0;
        toolkit.failures["PriKeyDecrypt"] = code;
        EXPECT_EQ(decrypt("pw"), expected);
    }
}

TEST_F(KeyFiles, DataFormOpensAnewAndHandsOutTerminatedCopies)
{
    ASSERT_EQ(decrypt("pw"), 0);
    EXPECT_EQ(decryptData("wrong"), CLPERR_WRONG_PASSWORD);
    EXPECT_EQ(decryptData("pw"), 0);
    EXPECT_EQ(bytes(signKey, signLength + 1), std::string("R:random\0", 9));
    EXPECT_EQ(bytes(kmKey, kmLength + 1), std::string("km key\0", 7));
    EXPECT_NE(signKey, record().szSignKey);
}

TEST_F(KeyFiles, DataFormLeavesThePasswordAlone)
{
    EXPECT_EQ(decryptData("pw"), 0);
    EXPECT_STREQ(record().szCertPassword, "");
}

TEST_F(KeyFiles, KeyThatDoesNotFitIsRefusedAndNeverCut)
{
    size_t size = 4096;
    toolkit.decrypt = [&](const auto&, const auto&) {
        return std::string(size, 'k');
    };
    EXPECT_EQ(decrypt("pw"), 0);
    EXPECT_EQ(record().nSignKeyLen, 4096);
    record().nSignKeyLen = 0;
    size = 4097;
    EXPECT_EQ(decrypt("pw"), CLPERR_KEY_DECRYPT);
    EXPECT_EQ(decryptData("pw"), CLPERR_KEY_DECRYPT);
    EXPECT_EQ(random("pw"), CLPERR_KEY_DECRYPT);
    EXPECT_EQ(record().nSignKeyLen, 0);
    EXPECT_EQ(signKey, nullptr);
}

TEST_F(KeyFiles, PasswordIsKeptUpTo2047Bytes)
{
    const std::string longPassword(3000, 'p');
    toolkit.decrypt = [](const auto&, const auto&) {
        return std::string("key");
    };
    EXPECT_EQ(decrypt(longPassword.c_str()), 0);
    EXPECT_EQ(std::strlen(record().szCertPassword), 2047u);
    EXPECT_EQ(record().szCertPassword[0], 'p');
}

TEST_F(KeyFiles, EmptyPasswordIsNotKept)
{
    toolkit.decrypt = [](const auto&, const auto&) {
        return std::string("key");
    };
    EXPECT_EQ(decrypt(""), 0);
    EXPECT_STREQ(record().szCertPassword, "");
}

TEST_F(KeyFiles, IndexOutsideTheListIsRefused)
{
    for (const int index : {-1, 1, 1 << 30}) {
        EXPECT_EQ(decrypt("pw", index), QG_BAD_ARGUMENT);
        EXPECT_EQ(random("pw", index), QG_BAD_ARGUMENT);
        EXPECT_EQ(store.ChangePassword(index, signKey, signKey), QG_BAD_ARGUMENT);
        EXPECT_EQ(store.VerifyVID(index, signKey), QG_BAD_ARGUMENT);
    }
    store.m_pstCertInfoList.reset(); // the count stays, as after a clearing
    EXPECT_EQ(decrypt("pw"), QG_BAD_ARGUMENT);
    EXPECT_EQ(random("pw"), QG_BAD_ARGUMENT);
}

TEST_F(KeyFiles, NullArgumentsAreRefused)
{
    EXPECT_EQ(decrypt(nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(random(nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(change(nullptr, "x"), QG_BAD_ARGUMENT);
    EXPECT_EQ(change("x", nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(store.DecryptPriKey(0, mtab.string().data(), nullptr, nullptr, nullptr, nullptr),
              QG_BAD_ARGUMENT);
}

TEST_F(KeyFiles, RandomComesOutOfTheSigningKey)
{
    EXPECT_EQ(random("pw"), 0);
    EXPECT_EQ(bytes(record().szKeyRandom, record().nKeyRandomLen), "random");
    EXPECT_EQ(bytes(record().szSignKey, record().nSignKeyLen), "R:random");
    EXPECT_EQ(record().nKmKeyLen, 0);
}

TEST_F(KeyFiles, KeyWithoutRandomIsTold)
{
    load("pw:key", "");
    EXPECT_EQ(random("pw"), CLPERR_NO_KEY_RANDOM);
    toolkit.failures["VIDGetRandomFromPriKey"] = 3501;
    EXPECT_EQ(random("pw"), CLPERR_KEY_RANDOM_READ);
}

TEST_F(KeyFiles, RandomThatDoesNotFitIsRefused)
{
    load("pw:R:" + std::string(1024, 'r'), "");
    EXPECT_EQ(random("pw"), 0);
    EXPECT_EQ(record().nKeyRandomLen, 1024);
    load("pw:R:" + std::string(1025, 'r'), "");
    EXPECT_EQ(random("pw"), CLPERR_KEY_RANDOM_READ);
    EXPECT_EQ(record().nKeyRandomLen, 0);
}

TEST_F(KeyFiles, IdentityIsVerifiedWithCertificateAndRandom)
{
    char number[] = "1234561234567";
    ASSERT_EQ(random("pw"), 0);
    EXPECT_EQ(store.VerifyVID(0, number), 0);
    EXPECT_EQ(toolkit.count("VIDVerify(cert a,random,1234561234567)"), 1);
    toolkit.failures["VIDVerify"] = 3502;
    EXPECT_EQ(store.VerifyVID(0, number), CLPERR_VID_VERIFY);
    EXPECT_EQ(store.VerifyVID(0, nullptr), QG_BAD_ARGUMENT);
}

// --- Changing the password ----------------------------------------------------------------------------

TEST_F(KeyFiles, PasswordChangesInBothFilesAndInTheRecord)
{
    EXPECT_EQ(change("pw", "new"), 0);
    EXPECT_EQ(readFile(class1 / "a_sig.key"), "new:R:random");
    EXPECT_EQ(readFile(class1 / "a_env.key"), "new:km key");
    EXPECT_EQ(bytes(record().szEncSignKey, record().nEncSignKeyLen), "new:R:random");
    EXPECT_EQ(bytes(record().szEncKmKey, record().nEncKmKeyLen), "new:km key");
    EXPECT_EQ(record().nSignKeyLen, 0);
}

TEST_F(KeyFiles, WrongOldPasswordLeavesAllFiles)
{
    EXPECT_EQ(change("wrong", "new"), CLPERR_WRONG_PASSWORD);
    EXPECT_EQ(readFile(class1 / "a_sig.key"), "pw:R:random");
    EXPECT_EQ(readFile(class1 / "a_env.key"), "pw:km key");
    EXPECT_EQ(toolkit.count("MediaDiskWriteFile"), 0);
}

TEST_F(KeyFiles, FailureOnTheKmKeyLeavesTheSigningKeyChanged)
{
    load("pw:key", "other:km");
    EXPECT_EQ(change("pw", "new"), CLPERR_WRONG_PASSWORD);
    EXPECT_EQ(readFile(class1 / "a_sig.key"), "new:key");
    EXPECT_EQ(readFile(class1 / "a_env.key"), "other:km");
}

TEST_F(KeyFiles, OtherFailuresOfAChangeHaveTheirCodes)
{
    toolkit.failures["PriKeyChangePasswd"] = 2000;
    EXPECT_EQ(change("pw", "new"), CLPERR_CHANGE_PASSWORD);
    toolkit.failures = {{"MediaDiskWriteFile", 1101}};
    EXPECT_EQ(change("pw", "new"), CLPERR_FILE_WRITE);
    EXPECT_EQ(bytes(record().szEncSignKey, record().nEncSignKeyLen), "pw:R:random");
    toolkit.failures.clear();
    fs::remove(class1 / "a_sig.key");
    EXPECT_EQ(change("pw", "new"), CLPERR_FILE_READ);
}

TEST_F(KeyFiles, ChangeWithoutAKmFileTellsThatItCannotBeRead)
{
    load("pw:key", "");
    EXPECT_EQ(change("pw", "new"), CLPERR_FILE_READ) << "a GPKI record always names the file";
    EXPECT_EQ(readFile(class1 / "a_sig.key"), "new:key");
}

TEST_F(KeyFiles, NewKeyThatDoesNotFitTheRecordIsNotWritten)
{
    load("pw:" + std::string(4090, 'k'), "");
    EXPECT_EQ(change("pw", "longer password"), CLPERR_CHANGE_PASSWORD);
    EXPECT_EQ(readFile(class1 / "a_sig.key").compare(0, 3, "pw:"), 0);
}

TEST_F(KeyFiles, WritingAFileRefusesNothingToWrite)
{
    char data[] = "data";
    const std::string path = (home / "file").string();
    EXPECT_EQ(store.WriteFile(nullptr, 4, std::string(path).data()), QG_BAD_ARGUMENT);
    EXPECT_EQ(store.WriteFile(data, 0, std::string(path).data()), QG_BAD_ARGUMENT);
    EXPECT_EQ(store.WriteFile(data, 4, std::string(path).data()), 0);
    EXPECT_EQ(readFile(path), "data");
    toolkit.failures["MediaDiskWriteFile"] = 1101;
    EXPECT_EQ(store.WriteFile(data, 4, std::string(path).data()), CLPERR_FILE_WRITE);
}

// --- Choice of the key algorithm ----------------------------------------------------------------------

namespace {

class KeyAlgorithm : public DiskTest
{
protected:
    int algorithm(const char* policy, const char* keyLength, const char* unit)
    {
        toolkit.texts["CertGetPolicyID"] = policy;
        toolkit.texts["CertGetPubKeyInfo.length"] = keyLength;
        toolkit.texts["CertGetSubjectName"] = std::string("cn=a,ou=") + unit + ",c=kr";
        char cert[] = "cert";
        int code = 0;
        EXPECT_EQ(store.GetPrikeyAlg(cert, 4, &code), 0);
        return code;
    }
};

} // namespace

TEST_F(KeyAlgorithm, FollowsPolicyKeyLengthAndUnit)
{
    for (const char* office : {"1 2 410 100001 2 1", "1 2 410 200004 8 1", "1 2 410 100001 5 3 1"}) {
        EXPECT_EQ(algorithm(office, "2048 BITS", "people"), 64);
        EXPECT_EQ(algorithm(office, "1024 Bits", "PEOPLE"), 48);
        EXPECT_EQ(algorithm(office, "1024 Bits", "server"), 224);
    }
    EXPECT_EQ(algorithm("1 2 410 200005 1", "2048 Bits", "server"), 48);
}

TEST_F(KeyAlgorithm, OnlyTheHeadOfThePolicyTextTakesPart)
{
    EXPECT_EQ(algorithm((std::string(40, '9') + "1 2 410 100001").c_str(), "2048 Bits", "x"), 48);
    EXPECT_GE(toolkit.count("CertGetPolicyID(40)"), 1);
    EXPECT_GE(toolkit.count("CertGetSubjectName(1024)"), 1);
}

TEST_F(KeyAlgorithm, FailuresHaveTheirCodes)
{
    char cert[] = "cert";
    int code = 7;
    EXPECT_EQ(store.GetPrikeyAlg(nullptr, 4, &code), QG_BAD_ARGUMENT);
    EXPECT_EQ(store.GetPrikeyAlg(cert, 0, &code), QG_BAD_ARGUMENT);
    toolkit.failures = {{"CertLoad", 1}};
    EXPECT_EQ(store.GetPrikeyAlg(cert, 4, &code), CLPERR_CERT_LOAD);
    for (const char* getter : {"CertGetPolicyID", "CertGetSubjectName", "CertGetPubKeyInfo"}) {
        toolkit.failures = {{getter, 1}};
        EXPECT_EQ(store.GetPrikeyAlg(cert, 4, &code), CLPERR_CERT_FIELD);
        EXPECT_EQ(toolkit.loaded, 0);
    }
    EXPECT_EQ(code, 7);
}

TEST_F(KeyAlgorithm, FreeingNothingIsRefused)
{
    void* nothing = nullptr;
    EXPECT_EQ(store.MemFree(&nothing), QG_BAD_ARGUMENT);
    EXPECT_EQ(store.MemFree(nullptr), QG_BAD_ARGUMENT);
}
