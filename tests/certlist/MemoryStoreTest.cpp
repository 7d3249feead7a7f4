#include "BoundedText.h"
#include "StoreTest.h"

namespace {

/** The memory store with a toolkit that knows the certificate "cert". */
class MemoryStore : public testing::Test
{
protected:
    MemoryStore()
    {
        store.m_pZRWrapCtx = &context;
        store.m_nMediaType = MEDIA_MEMORY;
    }
    ~MemoryStore() override
    {
        EXPECT_EQ(toolkit.liveBytes, 0);
        EXPECT_EQ(toolkit.unwiped, 0);
        EXPECT_EQ(toolkit.loaded, 0);
    }

    int load(const std::string& cert = "cert", const std::string& key = "R:random",
             const std::string& kmCert = "", const std::string& kmKey = "")
    {
        return store.LoadCertList(data(cert), size(cert), data(key), size(key), data(kmCert), size(kmCert),
                                  data(kmKey), size(kmKey));
    }
    int loadWithPassword(const std::string& cert = "cert", const std::string& key = "R:random",
                         const std::string& kmCert = "", const std::string& kmKey = "")
    {
        return store.LoadCertList(password, data(cert), size(cert), data(key), size(key), data(kmCert),
                                  size(kmCert), data(kmKey), size(kmKey));
    }

    static char* data(const std::string& text)
    {
        return text.empty() ? nullptr : const_cast<char*>(text.data());
    }
    static int size(const std::string& text) { return static_cast<int>(text.size()); }
    CERTINFO& record() { return store.m_pstCertInfoList[0]; }
    static std::string bytes(const char* field, int length) { return {field, static_cast<size_t>(length)}; }
    bool recordIsZero()
    {
        const CERTINFO zero{};
        return std::memcmp(&record(), &zero, sizeof(zero)) == 0;
    }

    StoppedClock clock{2026, 11, 20};
    FakeToolkit toolkit;
    int context = 0;
    char password[3] = "pw";
    CLoadMemory store{1, TOOLKIT_ZRTK, nullptr};
};

} // namespace

TEST_F(MemoryStore, Medium6KeepsThePlainKeyAlone)
{
    EXPECT_EQ(load("cert", "key", "km cert", "km key"), 0);
    EXPECT_EQ(store.m_nCertCnt, 1);
    EXPECT_EQ(bytes(record().szSignCert, record().nSignCertLen), "cert");
    EXPECT_EQ(bytes(record().szSignKey, record().nSignKeyLen), "key");
    EXPECT_EQ(bytes(record().szKmCert, record().nKmCertLen), "km cert");
    EXPECT_EQ(bytes(record().szKmKey, record().nKmKeyLen), "km key");
    EXPECT_EQ(record().nEncSignKeyLen, 0);
    EXPECT_EQ(record().nEncKmKeyLen, 0);
    EXPECT_STREQ(record().szSubjectCN, "holder");
    EXPECT_STREQ(record().szSignCertPath, "");
}

TEST_F(MemoryStore, Medium8KeepsBothForms)
{
    store.m_nMediaType = MEDIA_PFX;
    EXPECT_EQ(loadWithPassword("cert", "key", "km cert", "km key"), 0);
    EXPECT_EQ(bytes(record().szSignKey, record().nSignKeyLen), "key");
    EXPECT_EQ(bytes(record().szEncSignKey, record().nEncSignKeyLen), "pw:key");
    EXPECT_EQ(bytes(record().szKmKey, record().nKmKeyLen), "km key");
    EXPECT_EQ(bytes(record().szEncKmKey, record().nEncKmKeyLen), "pw:km key");
    EXPECT_EQ(toolkit.count("PriKeyEncrypt(64,pw)"), 2);
    EXPECT_EQ(record().nMediaType, MEDIA_PFX);
}

TEST_F(MemoryStore, OtherMediaKeepTheKeysAsEncrypted)
{
    store.m_nMediaType = MEDIA_SERVICE_MEMORY;
    EXPECT_EQ(load("cert", "enc", "km cert", "km enc"), 0);
    EXPECT_EQ(record().nSignKeyLen, 0);
    EXPECT_EQ(bytes(record().szEncSignKey, record().nEncSignKeyLen), "enc");
    EXPECT_EQ(bytes(record().szEncKmKey, record().nEncKmKeyLen), "km enc");
}

TEST_F(MemoryStore, StatesAreThoseOfTheOldFamily)
{
    const std::pair<const char*, int> ends[] = {{"2026-12-21 12:00:01", CERTSTATE_VALID_1024},
                                                {"2026-12-15 12:00:00", CERTSTATE_RENEWAL_1024},
                                                {"2026-11-20 11:59:59", CERTSTATE_EXPIRED_1024}};
    for (const auto& [end, state] : ends) {
        toolkit.texts["CertGetValidity.to"] = end;
        EXPECT_EQ(load(), 0);
        EXPECT_EQ(record().nCertState, state);
        EXPECT_EQ(record().nCertVerifyState, state == CERTSTATE_EXPIRED_1024);
        EXPECT_EQ(record().nRemainDay, state == CERTSTATE_RENEWAL_1024 ? 25 : 0);
        EXPECT_EQ(record().nCertType, CERTTYPE_NONE);
    }
}

TEST_F(MemoryStore, HiddenExpiredCertificateLeavesTheRecordEmpty)
{
    toolkit.texts["CertGetValidity.to"] = "2026-11-20 11:59:59";
    store.m_stLoadCertOpt.bExpiredCertHide = true;
    EXPECT_EQ(load(), 0);
    EXPECT_EQ(store.m_nCertCnt, 0);
    EXPECT_TRUE(recordIsZero());
}

TEST_F(MemoryStore, SubjectAndIssuerFiltersRefuseEveryCertificate)
{
    copyText(store.m_stLoadCertOpt.szCertDN, toolkit.texts["CertGetSubjectName"].c_str());
    EXPECT_EQ(load(), 0);
    EXPECT_EQ(store.m_nCertCnt, 0);
    EXPECT_TRUE(recordIsZero());
    store.m_stLoadCertOpt = {};
    copyText(store.m_stLoadCertOpt.szIssuerDN, toolkit.texts["CertGetIssuerName"].c_str());
    EXPECT_EQ(load(), 0);
    EXPECT_EQ(store.m_nCertCnt, 0);
}

TEST_F(MemoryStore, SerialAndPolicyFiltersWorkAsOnDisk)
{
    copyText(store.m_stLoadCertOpt.szCertSerial, "0A1B");
    SETOID policy{};
    copyText(policy.szPolicyID, toolkit.texts["CertGetPolicyID"].c_str());
    store.m_pstSetOid = &policy;
    store.m_nSetPolicyOIDCnt = 1;
    EXPECT_EQ(load(), 0);
    EXPECT_EQ(store.m_nCertCnt, 1);
    copyText(policy.szPolicyID, "9");
    EXPECT_EQ(load(), 0);
    EXPECT_TRUE(recordIsZero());
    EXPECT_EQ(store.m_nCertCnt, 1) << "nothing sets the count back";
}

TEST_F(MemoryStore, PurposeComesFromTheHostsNames)
{
    store.m_mapOidList["1.2.410.200005.1.1.1"] = "mine";
    EXPECT_EQ(load(), 0);
    EXPECT_STREQ(record().szDivision, "mine");
}

TEST_F(MemoryStore, PolicyTextNeedsNoDistributionPoint)
{
    toolkit.texts["CertGetCRLDP"] = "";
    EXPECT_EQ(load(), 0);
    EXPECT_STREQ(record().szCertPolicy, "policy text");
}

TEST_F(MemoryStore, VersionIsRequiredHere)
{
    for (const char* getter :
         {"CertLoad", "CertGetVersion", "CertGetSerialNum", "CertGetValidity", "CertGetPubKeyInfo"}) {
        toolkit.failures = {{getter, 1234}};
        CERTINFO info{};
        info.szSignCert[0] = 'c';
        info.nSignCertLen = 1;
        EXPECT_EQ(store.ParsingCert(&info),
                  std::string(getter) == "CertLoad" ? CLPERR_CERT_LOAD : CLPERR_CERT_FIELD);
    }
    EXPECT_EQ(store.ParsingCert(nullptr), QG_BAD_ARGUMENT);
}

TEST_F(MemoryStore, UnreadableCertificateGivesZeroAndAnEmptyRecord)
{
    toolkit.failures = {{"CertLoad", 1234}};
    EXPECT_EQ(load(), 0);
    EXPECT_EQ(store.m_nCertCnt, 0);
    EXPECT_TRUE(recordIsZero());
}

TEST_F(MemoryStore, DemandedPairGivesOneRecordWithoutTexts)
{
    store.m_stLoadCertOpt.nCertUsageType = CERTUSAGE_KM_PAIR;
    EXPECT_EQ(load("cert", "key", "km cert", "km key"), 0);
    EXPECT_EQ(store.m_nCertCnt, 1);
    EXPECT_EQ(record().nMediaType, MEDIA_MEMORY);
    EXPECT_EQ(record().nKmCertLen, 0);
    EXPECT_STREQ(record().szVersion, "");
    EXPECT_STREQ(record().szSubjectDN, "");
    EXPECT_EQ(toolkit.count("CertLoad"), 0);
}

TEST_F(MemoryStore, MissingDemandedPairIsTold)
{
    store.m_stLoadCertOpt.nCertUsageType = CERTUSAGE_KM_PAIR;
    EXPECT_EQ(load("cert", "key"), CLPERR_NO_KM_PAIR);
    EXPECT_EQ(load("cert", "key", "km cert"), CLPERR_NO_KM_PAIR);
    EXPECT_EQ(loadWithPassword("cert", "key", "", "km key"), CLPERR_NO_KM_PAIR);
    EXPECT_TRUE(recordIsZero());
}

TEST_F(MemoryStore, HalfAPairIsTakenWhenNoneIsDemanded)
{
    EXPECT_EQ(load("cert", "key", "km cert"), 0);
    EXPECT_GT(record().nKmCertLen, 0);
    EXPECT_EQ(record().nKmKeyLen, 0);
}

TEST_F(MemoryStore, MissingCertificateOrKeyLeavesTheOldRecord)
{
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(load("", "key"), QG_BAD_ARGUMENT);
    EXPECT_EQ(load("cert", ""), QG_BAD_ARGUMENT);
    EXPECT_EQ(loadWithPassword("", ""), QG_BAD_ARGUMENT);
    EXPECT_STREQ(record().szSubjectCN, "holder");
}

TEST_F(MemoryStore, FailedEncryptionEndsTheLoadWithTheToolkitsNumber)
{
    store.m_nMediaType = MEDIA_PFX;
    toolkit.failures = {{"PriKeyEncrypt", 1234}};
    EXPECT_EQ(loadWithPassword(), 1234);
    EXPECT_TRUE(recordIsZero());
    EXPECT_EQ(store.m_nCertCnt, 0);
}

TEST_F(MemoryStore, ShortFormRefusesWhatDoesNotFit)
{
    const std::string fits(4095, 'x');
    const std::string tooLong(4096, 'x');
    EXPECT_EQ(load(fits, fits, fits, fits), 0);
    EXPECT_EQ(record().nKmKeyLen, 4095);
    EXPECT_EQ(load(tooLong, "key"), QG_BAD_ARGUMENT);
    EXPECT_EQ(load("cert", tooLong), QG_BAD_ARGUMENT);
    EXPECT_EQ(load("cert", "key", tooLong, "key"), QG_BAD_ARGUMENT);
    EXPECT_EQ(load("cert", "key", "cert", tooLong), QG_BAD_ARGUMENT);
    EXPECT_EQ(record().nSignCertLen, 4095) << "the old record stays";
}

TEST_F(MemoryStore, PasswordFormCutsTo4095Bytes)
{
    const std::string tooLong(5000, 'x');
    store.m_nMediaType = MEDIA_PFX;
    EXPECT_EQ(loadWithPassword(tooLong, tooLong, tooLong, tooLong), 0);
    EXPECT_EQ(record().nSignCertLen, 4095);
    EXPECT_EQ(record().nSignKeyLen, 4095);
    EXPECT_EQ(record().nEncSignKeyLen, 4095);
    EXPECT_EQ(record().nKmKeyLen, 4095);
    store.m_nMediaType = MEDIA_SERVICE_MEMORY;
    EXPECT_EQ(loadWithPassword("cert", "key", "km", tooLong), 0);
    EXPECT_LE(record().nEncKmKeyLen, 4096);
}

TEST_F(MemoryStore, RandomComesOutOfThePlainKey)
{
    EXPECT_EQ(store.GetPrikeyRandom(), QG_BAD_ARGUMENT);
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(store.GetPrikeyRandom(), 0);
    EXPECT_EQ(bytes(record().szKeyRandom, record().nKeyRandomLen), "random");
    ASSERT_EQ(load("cert", "key"), 0);
    EXPECT_EQ(store.GetPrikeyRandom(), CLPERR_NO_KEY_RANDOM);
}

TEST_F(MemoryStore, RandomOfAnEmptyKeyIsAskedOfTheToolkit)
{
    toolkit.failures = {{"CertLoad", 1}};
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(store.GetPrikeyRandom(), CLPERR_KEY_RANDOM_READ);
    EXPECT_EQ(toolkit.count("VIDGetRandomFromPriKey()"), 1);
}

TEST_F(MemoryStore, EncryptedKeysOpenWithThePassword)
{
    store.m_nMediaType = MEDIA_SERVICE_MEMORY;
    EXPECT_EQ(store.DecryptPriKey(password), QG_BAD_ARGUMENT);
    ASSERT_EQ(load("cert", "pw:key", "km", "pw:km key"), 0);
    EXPECT_EQ(store.DecryptPriKey(password), 0);
    EXPECT_EQ(bytes(record().szSignKey, record().nSignKeyLen), "key");
    EXPECT_EQ(bytes(record().szKmKey, record().nKmKeyLen), "km key");
    EXPECT_STREQ(record().szCertPassword, "pw");
}

TEST_F(MemoryStore, RefusedPasswordsHaveTheirCodes)
{
    store.m_nMediaType = MEDIA_SERVICE_MEMORY;
    ASSERT_EQ(load("cert", "pw:key", "km", "other:km key"), 0);
    EXPECT_EQ(store.DecryptPriKey(password), CLPERR_KM_PASSWORD);
    EXPECT_STREQ(record().szCertPassword, "") << "kept only when both opened";
    const std::pair<int, int> mapped[] = {
        {2004, CLPERR_WRONG_PASSWORD}, {2000, CLPERR_KEY_DECRYPT}, {2001, CLPERR_KEY_DECRYPT}, {1234, 1234}};
    for (const auto& [code, expected] : mapped) {
        toolkit.failures = {{"PriKeyDecrypt", code}};
        EXPECT_EQ(store.DecryptPriKey(password), expected);
    }
}

TEST_F(MemoryStore, IdentityIsVerified)
{
    char number[] = "123";
    EXPECT_EQ(store.VerifyVID(number), QG_BAD_ARGUMENT);
    ASSERT_EQ(load(), 0);
    ASSERT_EQ(store.GetPrikeyRandom(), 0);
    EXPECT_EQ(store.VerifyVID(number), 0);
    EXPECT_EQ(toolkit.count("VIDVerify(cert,random,123)"), 1);
    toolkit.failures = {{"VIDVerify", 1}};
    EXPECT_EQ(store.VerifyVID(number), CLPERR_VID_VERIFY);
    EXPECT_EQ(store.VerifyVID(nullptr), QG_BAD_ARGUMENT);
}

TEST_F(MemoryStore, CopyingWithoutARecordDoesNothing)
{
    CERTINFO info{};
    store.CopyCertInfo(&info);
    ASSERT_EQ(load(), 0);
    store.CopyCertInfo(nullptr);
    void* nothing = nullptr;
    EXPECT_EQ(store.MemFree(&nothing), QG_BAD_ARGUMENT);
}

TEST_F(MemoryStore, PinAndPasswordAreNotCopied)
{
    ASSERT_EQ(load(), 0);
    CERTINFO info{};
    copyText(info.szPinNumber, "1234");
    copyText(info.szCertPassword, "pw");
    copyText(info.szLibPath, "lib");
    copyText(info.szDriveInfo, "drive");
    store.CopyCertInfo(&info);
    EXPECT_STREQ(record().szPinNumber, "");
    EXPECT_STREQ(record().szCertPassword, "");
    EXPECT_STREQ(record().szLibPath, "lib");
    EXPECT_STREQ(record().szDriveInfo, "drive");
}
