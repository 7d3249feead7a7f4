#include "ToolkitSession.h"

namespace {

class Selection : public ToolkitSession
{
protected:
    int select(const std::string& password, CERTINFO& record, int index = 0)
    {
        return CLP_SelectCert(handle, index, text(password), &record);
    }

    /** Lists one holder with this key file form and opens its key. */
    void expectKeyOpens(const samplepki::KeyFileForm& form)
    {
        TestHome::reset();
        writeHolder({.sign = pair(request(), "Passw0rd!", form)});
        ASSERT_EQ(load(), 0);
        CERTINFO record{};
        EXPECT_EQ(select("wrong", record), CLPERR_WRONG_PASSWORD);
        ASSERT_EQ(select("Passw0rd!", record), 0);
        EXPECT_EQ(bytes(record.szSignKey, record.nSignKeyLen), key().privateKeyInfo());
    }
};

/** The same road on the government PKI library. */
class GovernmentSelection : public ToolkitSession
{
protected:
    GovernmentSelection() : ToolkitSession(TOOLKIT_GPKI) {}
};

} // namespace

TEST_F(Selection, RecordHoldsWhatTheCertificateSays)
{
    samplepki::Request asked = request("hong");
    asked.validity = {StoppedClock::local(2025, 1, 2, 3, 4, 5), StoppedClock::local(2030, 6, 7, 8, 9, 10)};
    asked.serial = "0A1B2C";
    asked.policies = {{.oid = "1.2.410.200005.1.1.1", .notice = "notice", .cps = "http://cps"}};
    asked.crlPoints = {"ldap://crl/ou=dp1,o=yessign,c=kr?certificateRevocationList"};
    asked.ocspUrl = "http://ocsp:4612";
    const fs::path folder = writeHolder({.sign = pair(asked), .km = pair(request("hong km", 1))});
    const StoppedClock clock(2026, 11, 20);
    ASSERT_EQ(load(), 0);
    const CERTINFO record = info();
    EXPECT_STREQ(record.szVersion, "V3");
    EXPECT_STREQ(record.szSerialNumber, "0a1b2c");
    EXPECT_STREQ(record.szAlgorithm, "sha256WithRSAEncryption");
    EXPECT_STREQ(record.szSubjectDN, "cn=hong,ou=people,o=yessign,c=kr");
    EXPECT_STREQ(record.szSubjectCN, "hong");
    EXPECT_STREQ(record.szIssuerCN, "yessignCA Class 2");
    EXPECT_STREQ(record.szIssuerName, "yessignCA Class 2");
    EXPECT_STREQ(record.szCertPolicyIDS, "1 2 410 200005 1 1 1");
    EXPECT_STREQ(record.szDivision, "1.2.410.200005.1.1.1");
    EXPECT_STREQ(record.szPubKeyLen, "2048 Bits");
    EXPECT_STREQ(record.szBefore, "2025-01-02 03:04:05");
    EXPECT_STREQ(record.szAfterDay, "2030-06-07");
    EXPECT_NE(std::strstr(record.szKeyUsage, "digitalSignature"), nullptr);
    EXPECT_NE(std::strstr(record.szCrlDp, "ldap://crl"), nullptr);
    EXPECT_NE(std::strstr(record.szCertPolicy, "notice"), nullptr);
    EXPECT_NE(std::strstr(record.szAIA, "http://ocsp:4612"), nullptr);
    EXPECT_STRNE(record.szAuthKeyID, "");
    EXPECT_STRNE(record.szSubKeyID, "");
    EXPECT_EQ(record.nCertState, CERTSTATE_VALID);
    EXPECT_GT(record.nKmCertLen, 0);
    EXPECT_EQ(fs::path(record.szSignCertPath).parent_path(), folder);
    int hash = 0;
    EXPECT_EQ(CLP_GetHashAlgInfo(handle, 0, &hash), 0);
    EXPECT_EQ(hash, 4);
}

TEST_F(Selection, IssuerAndPurposeAreNamedByTheWorkDirectory)
{
    writeFile(workDir / "IssuerOid.conf", "[ISSUERNAME]\nyessignCA Class 2=\xB1\xDD\xC0\xB6\n" // 금융
                                          "[OID]\n1.2.410.200005.1.1.1=\xB0\xB3\xC0\xCE\n");   // 개인
    samplepki::Request asked = request();
    asked.policies = {{.oid = "1.2.410.200005.1.1.1"}};
    writeHolder({.sign = pair(asked)});
    ASSERT_EQ(load(), 0);
    EXPECT_STREQ(info().szIssuerName, "\xB1\xDD\xC0\xB6");
    EXPECT_STREQ(info().szDivision, "\xB0\xB3\xC0\xCE");
}

TEST_F(Selection, KoreanNamesComeInEucKr)
{
    writeHolder({.sign = pair(request("홍길동"))}, "holder");
    ASSERT_EQ(load(), 0);
    EXPECT_STREQ(info().szSubjectCN, "\xC8\xAB\xB1\xE6\xB5\xBF");
}

TEST_F(Selection, AllThreeTreesAreListed)
{
    const samplepki::Holder holder = {.sign = pair(request("a")), .km = pair(request("a km", 1))};
    samplepki::writeGpkiPairs(home, "class1", "a", holder);
    samplepki::writeGpkiPairs(home, "class2", "b", holder, samplepki::Spelling::Upper);
    samplepki::writeNpkiHolder(home, "SignKorea", "c", holder, samplepki::Spelling::Lower);
    samplepki::writeMpkiPairs(home, "flat", holder);
    samplepki::writeMpkiHolder(home, "d", holder);
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(CLP_GetCertCount(handle), 5);
}

TEST_F(Selection, PolicyFilterTakesTheToolkitsForm)
{
    samplepki::Request asked = request();
    asked.policies = {{.oid = "1.2.410.100001.5.3"}};
    writeHolder({.sign = pair(asked)});
    asked.policies.push_back({.oid = "1.2.3.4"});
    writeHolder({.sign = pair(asked)}, "two");
    copyText(filter.szCertPolicyIDs, "1 2 410 100001 5 3|");
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(CLP_GetCertCount(handle), 1) << "a certificate with two policies does not match";
}

TEST_F(Selection, KeysOpenInEveryFormOfTheField)
{
    using samplepki::KeyCipher;
    for (const KeyCipher cipher :
         {KeyCipher::Seed, KeyCipher::Aria128, KeyCipher::Aria192, KeyCipher::Aria256, KeyCipher::Aes128,
          KeyCipher::Aes192, KeyCipher::Aes256, KeyCipher::TripleDes, KeyCipher::SeedPbkdf1,
          KeyCipher::SeedFixedVector})
        expectKeyOpens({.cipher = cipher});
    expectKeyOpens({.cipher = samplepki::KeyCipher::Aria256, .hash = "SHA256"});
}

TEST_F(Selection, SelectionHandsOverBothKeysAndTheRandom)
{
    writeHolder({.sign = pair(request()), .km = pair(request("km", 1))});
    ASSERT_EQ(load(), 0);
    CERTINFO record{};
    ASSERT_EQ(select("pw", record), 0);
    EXPECT_EQ(bytes(record.szSignKey, record.nSignKeyLen), key(0).privateKeyInfo());
    EXPECT_EQ(bytes(record.szKmKey, record.nKmKeyLen), key(1).privateKeyInfo());
    EXPECT_EQ(bytes(record.szKeyRandom, record.nKeyRandomLen), key(0).random());
    EXPECT_STREQ(record.szCertPassword, "pw");
}

TEST_F(Selection, TwoPasswordsAreToldBySignAndKmKey)
{
    writeHolder({.sign = pair(request(), "one"), .km = pair(request("km", 1), "two")});
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(CLP_DecryptPriKey(handle, 0, text("two")), CLPERR_WRONG_PASSWORD);
    EXPECT_EQ(CLP_DecryptPriKey(handle, 0, text("one")), CLPERR_KM_PASSWORD);
    CERTINFO record{};
    EXPECT_EQ(select("one", record), 0);
    EXPECT_EQ(record.nKmKeyLen, 0);
}

TEST_F(Selection, KeyWithoutRandomIsTold)
{
    samplepki::Request asked = request();
    asked.key = key().withRandom("");
    writeHolder({.sign = pair(asked)});
    ASSERT_EQ(load(), 0);
    char* random = nullptr;
    int length = 0;
    EXPECT_EQ(CLP_GetPriKeyRandom(handle, 0, text("pw"), &random, &length), CLPERR_NO_KEY_RANDOM);
    EXPECT_EQ(random, nullptr);
}

TEST_F(Selection, IdentityNumberIsProved)
{
    samplepki::Request asked = request();
    asked.identity = samplepki::Identity{.realName = "hong", .number = "1234561234567"};
    writeHolder({.sign = pair(asked)});
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(CLP_VerifyVID(handle, 0, text("1234561234567"), text("pw")), 0);
    EXPECT_EQ(CLP_VerifyVID(handle, 0, text("1234561234568"), text("pw")), CLPERR_VID_VERIFY);
    EXPECT_EQ(CLP_VerifyVID(handle, 0, text("1234561234567"), text("no")), CLPERR_WRONG_PASSWORD);
}

TEST_F(Selection, PasswordIsChangedOnDiskForBothKeys)
{
    writeHolder({.sign = pair(request()), .km = pair(request("km", 1))});
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(CLP_ChangePassword(handle, 0, text("wrong"), text("new")), CLPERR_WRONG_PASSWORD);
    ASSERT_EQ(CLP_ChangePassword(handle, 0, text("pw"), text("new")), 0);
    ASSERT_EQ(load(), 0);
    CERTINFO record{};
    EXPECT_EQ(select("pw", record), CLPERR_WRONG_PASSWORD);
    ASSERT_EQ(select("new", record), 0);
    EXPECT_EQ(bytes(record.szKmKey, record.nKmKeyLen), key(1).privateKeyInfo());
    EXPECT_EQ(bytes(record.szKeyRandom, record.nKeyRandomLen), key(0).random()) << "survives the change";
}

TEST_F(Selection, LongAndKoreanPasswordsOpenTheKey)
{
    for (const std::string& password :
         {std::string(1023, 'p'), std::string(1024, 'p'), std::string("\xBE\xCF\xC8\xA3")}) {
        TestHome::reset();
        writeHolder({.sign = pair(request(), password)});
        ASSERT_EQ(load(), 0);
        CERTINFO record{};
        EXPECT_EQ(select(password, record), 0);
        EXPECT_EQ(record.szCertPassword, password);
    }
}

TEST_F(Selection, EncryptedKeyInMemoryIsChecked)
{
    start();
    const std::string file = samplepki::encryptKeyFile(key().privateKeyInfo(), "pw");
    EXPECT_EQ(CLP_CheckPassword(handle, text("pw"), text(file), size(file)), 0);
    EXPECT_EQ(CLP_CheckPassword(handle, text("no"), text(file), size(file)), CLPERR_KEY_DECRYPT);
    EXPECT_EQ(CLP_CheckPassword(handle, text("pw"), text("not a key"), 9), CLPERR_KEY_DECRYPT);
}

TEST_F(Selection, MemoryCertificateIsSelected)
{
    const std::string cert = authority().issue(request("hong"));
    const std::string plain = key().privateKeyInfo();
    start(MEDIA_MEMORY);
    ASSERT_EQ(
        CLP_SetMemoryCert(handle, text(cert), size(cert), text(plain), size(plain), nullptr, 0, nullptr, 0),
        0);
    ASSERT_EQ(CLP_LoadCertList(handle), 0);
    ASSERT_EQ(CLP_GetCertCount(handle), 1);
    CERTINFO record{};
    ASSERT_EQ(select("", record), 0);
    EXPECT_STREQ(record.szSubjectCN, "hong");
    EXPECT_EQ(bytes(record.szSignKey, record.nSignKeyLen), plain);
    EXPECT_EQ(bytes(record.szKeyRandom, record.nKeyRandomLen), key().random());
    EXPECT_EQ(record.nCertState, CERTSTATE_VALID_1024);
}

TEST_F(Selection, SessionWithoutItsToolkitIsTold)
{
    fs::remove(workDir / "libZRToolkitV30-v3.4.2.20.so");
    EXPECT_EQ(CLP_Initalize(&handle, &option, nullptr), CLPERR_TOOLKIT_NOT_LOADED);
    CLP_UnInitalize(handle);
    handle = nullptr;
    option.szWorkDir[0] = '\0';
    EXPECT_EQ(CLP_Initalize(&handle, &option, nullptr), CLPERR_NOT_STARTED);
    CLP_UnInitalize(handle);
    handle = nullptr;
    option.nLibAPIType = 2;
    EXPECT_EQ(CLP_Initalize(&handle, &option, nullptr), CLPERR_NOT_STARTED);
}

TEST_F(GovernmentSelection, RunsOnTheGovernmentLibrary)
{
    writeHolder({.sign = pair(request()), .km = pair(request("km", 1))});
    ASSERT_EQ(load(), 0);
    CERTINFO record{};
    ASSERT_EQ(CLP_SelectCert(handle, 0, text("pw"), &record), 0);
    EXPECT_EQ(bytes(record.szSignKey, record.nSignKeyLen), key(0).privateKeyInfo());
    EXPECT_STREQ(record.szSubjectDN, "cn=hong,ou=people,o=yessign,c=kr");
}
