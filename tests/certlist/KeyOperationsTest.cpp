#include "SessionTest.h"

namespace {

/** A session with one GPKI certificate whose keys are under "pw". */
class KeyOperations : public SessionTest
{
protected:
    void load(const std::string& signKey = "pw:R:random", const std::string& kmKey = "pw:km key")
    {
        writeFlat(class1, "a", signKey, kmKey);
        startOn(MEDIA_HARDDISK);
        ASSERT_EQ(CLP_LoadCertList(handle), 0);
    }

    void loadMemory(const std::string& key = "R:random")
    {
        startOn(MEDIA_MEMORY);
        ASSERT_EQ(setMemoryCert("cert", key), 0);
        ASSERT_EQ(CLP_LoadCertList(handle), 0);
    }

    int decryptData(const char* password, int index = 0)
    {
        return CLP_DecryptPriKeyData(handle, index, const_cast<char*>(password), &sign, &signLength, &km,
                                     &kmLength);
    }
    int random(const char* password, int index = 0)
    {
        return CLP_GetPriKeyRandom(handle, index, const_cast<char*>(password), &sign, &signLength);
    }
    int check(const char* password, const std::string& key)
    {
        return CLP_CheckPassword(handle, const_cast<char*>(password), text(key), size(key));
    }

    char* sign = nullptr;
    char* km = nullptr;
    int signLength = -1;
    int kmLength = -1;
};

} // namespace

TEST_F(KeyOperations, KeysAreHandedOut)
{
    load();
    EXPECT_EQ(decryptData("pw"), 0);
    EXPECT_EQ(signLength, 8);
    EXPECT_EQ(sign[signLength], '\0');
    EXPECT_EQ(take(sign, signLength), "R:random");
    EXPECT_EQ(take(km, kmLength), "km key");
}

TEST_F(KeyOperations, MissingKmKeyLeavesItsOutputsAlone)
{
    load("pw:key", "");
    EXPECT_EQ(decryptData("pw"), 0);
    take(sign, signLength);
    EXPECT_EQ(km, nullptr);
    EXPECT_EQ(kmLength, -1);
}

TEST_F(KeyOperations, FailedDecryptionHandsNothingOut)
{
    load("pw:key", "other:km");
    EXPECT_EQ(decryptData("wrong"), CLPERR_WRONG_PASSWORD);
    EXPECT_EQ(decryptData("pw"), CLPERR_KM_PASSWORD);
    EXPECT_EQ(sign, nullptr);
    EXPECT_EQ(km, nullptr);
}

TEST_F(KeyOperations, DataFormRefusesOtherMediaAndBadArguments)
{
    load();
    EXPECT_EQ(decryptData("pw", -1), QG_BAD_ARGUMENT);
    EXPECT_EQ(decryptData("pw", 1), QG_BAD_ARGUMENT);
    EXPECT_EQ(decryptData(""), QG_BAD_ARGUMENT);
    EXPECT_EQ(decryptData(nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_DecryptPriKeyData(handle, 0, text("pw"), nullptr, nullptr, nullptr, nullptr),
              QG_BAD_ARGUMENT);
    for (const int medium : {0, 5, 6, 8}) {
        session().m_nMediaType = medium;
        EXPECT_EQ(decryptData("pw"), CLPERR_MEDIUM_NOT_ALLOWED);
    }
}

TEST_F(KeyOperations, OutputsMayBeMissingForWhatThereIsNot)
{
    load("pw:key", "");
    EXPECT_EQ(CLP_DecryptPriKeyData(handle, 0, text("pw"), &sign, &signLength, nullptr, nullptr), 0);
    EXPECT_EQ(take(sign, signLength), "key");
    EXPECT_EQ(CLP_GetPriKeyRandom(handle, 0, text("pw"), nullptr, nullptr), CLPERR_NO_KEY_RANDOM);
    EXPECT_EQ(CLP_GetPriKeyRandom(handle, 0, text("wrong"), nullptr, nullptr), CLPERR_WRONG_PASSWORD);
    EXPECT_EQ(CLP_SetMediaType(handle, MEDIA_MEMORY, 0), 0);
    EXPECT_EQ(CLP_GetPriKeyRandom(handle, 0, nullptr, nullptr, nullptr), 0);
}

TEST_F(KeyOperations, OutputsMustBeThereForWhatIsHandedOut)
{
    load();
    EXPECT_EQ(CLP_DecryptPriKeyData(handle, 0, text("pw"), &sign, &signLength, nullptr, nullptr),
              QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_DecryptPriKeyData(handle, 0, text("pw"), &sign, &signLength, &km, nullptr),
              QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_DecryptPriKeyData(handle, 0, text("pw"), &sign, nullptr, &km, &kmLength), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_GetPriKeyRandom(handle, 0, text("pw"), nullptr, &signLength), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_GetPriKeyRandom(handle, 0, text("pw"), &sign, nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(sign, nullptr) << "neither key is handed out without the other";
    EXPECT_EQ(km, nullptr);
}

TEST_F(KeyOperations, ShortFormOpensIntoTheList)
{
    load();
    EXPECT_EQ(CLP_DecryptPriKey(handle, 0, text("pw")), 0);
    EXPECT_EQ(bytes(info(0).szSignKey, info(0).nSignKeyLen), "R:random");
    EXPECT_STREQ(info(0).szCertPassword, "pw");
    EXPECT_EQ(CLP_DecryptPriKey(handle, -1, text("pw")), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_DecryptPriKey(handle, 1, text("pw")), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_DecryptPriKey(handle, 0, text("")), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_DecryptPriKey(handle, 0, nullptr), QG_BAD_ARGUMENT);
}

TEST_F(KeyOperations, ShortFormSucceedsWithoutWorkOnMediaOfPlainKeys)
{
    loadMemory();
    for (const int medium : {MEDIA_PFX, MEDIA_MEMORY, MEDIA_NONE}) {
        session().m_nMediaType = medium;
        EXPECT_EQ(CLP_DecryptPriKey(handle, 0, text("any")), 0);
        EXPECT_EQ(CLP_DecryptPriKey(handle, 0, nullptr), 0);
        EXPECT_EQ(session().GetPriKeyRandom(0, nullptr), 0);
        EXPECT_EQ(random(nullptr), 0);
    }
    EXPECT_EQ(toolkit.count("PriKeyDecrypt"), 0);
    EXPECT_EQ(sign, nullptr);
    session().m_nMediaType = MEDIA_SERVICE_MEMORY;
    EXPECT_EQ(session().GetPriKeyRandom(0, nullptr), QG_BAD_ARGUMENT);
    session().m_nMediaType = MEDIA_SMARTCARD;
    EXPECT_EQ(session().DecryptPriKey(0, nullptr), QG_BAD_ARGUMENT);
}

TEST_F(KeyOperations, RandomIsHandedOut)
{
    load();
    EXPECT_EQ(random("pw"), 0);
    EXPECT_EQ(sign[signLength], '\0');
    EXPECT_EQ(take(sign, signLength), "random");
    EXPECT_EQ(session().GetPriKeyRandom(0, text("pw")), 0);
    EXPECT_EQ(random("wrong"), CLPERR_WRONG_PASSWORD);
    EXPECT_EQ(random("pw", -1), QG_BAD_ARGUMENT);
    EXPECT_EQ(random("pw", 1), QG_BAD_ARGUMENT);
    EXPECT_EQ(random(""), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_GetPriKeyRandom(handle, 0, text("pw"), nullptr, &signLength), QG_BAD_ARGUMENT);
}

TEST_F(KeyOperations, KeyWithoutRandomIsTold)
{
    load("pw:key");
    EXPECT_EQ(random("pw"), CLPERR_NO_KEY_RANDOM);
    EXPECT_EQ(sign, nullptr);
    toolkit.failures["VIDGetRandomFromPriKey"] = 9;
    EXPECT_EQ(random("pw"), CLPERR_KEY_RANDOM_READ);
}

TEST_F(KeyOperations, SelectionGivesRecordKeysAndRandomInOneCall)
{
    load();
    CERTINFO record{};
    EXPECT_EQ(CLP_SelectCert(handle, 0, text("pw"), &record), 0);
    EXPECT_EQ(bytes(record.szSignKey, record.nSignKeyLen), "R:random");
    EXPECT_EQ(bytes(record.szKmKey, record.nKmKeyLen), "km key");
    EXPECT_EQ(bytes(record.szKeyRandom, record.nKeyRandomLen), "random");
    EXPECT_STREQ(record.szSubjectCN, "holder");
}

TEST_F(KeyOperations, KmKeyThatRefusesThePasswordDoesNotStopASelection)
{
    load("pw:R:random", "other:km");
    CERTINFO record{};
    EXPECT_EQ(CLP_SelectCert(handle, 0, text("pw"), &record), 0);
    EXPECT_EQ(record.nKmKeyLen, 0);
    EXPECT_EQ(record.nKeyRandomLen, 6);
}

TEST_F(KeyOperations, FailedSelectionCopiesNothing)
{
    load("pw:key");
    CERTINFO record{};
    EXPECT_EQ(CLP_SelectCert(handle, 0, text("wrong"), &record), CLPERR_WRONG_PASSWORD);
    EXPECT_EQ(CLP_SelectCert(handle, 0, text("pw"), &record), CLPERR_NO_KEY_RANDOM);
    EXPECT_EQ(CLP_SelectCert(handle, 0, text(""), &record), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_SelectCert(handle, 3, text("pw"), &record), QG_BAD_ARGUMENT);
    EXPECT_EQ(record.nSignCertLen, 0);
    toolkit.failures["PriKeyDecrypt"] = 4711;
    EXPECT_EQ(CLP_SelectCert(handle, 0, text("pw"), &record), 4711);
}

TEST_F(KeyOperations, MemorySelectionTakesAnEmptyPasswordButNotNull)
{
    loadMemory();
    CERTINFO record{};
    EXPECT_EQ(CLP_SelectCert(handle, 0, nullptr, &record), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_SelectCert(handle, 0, text(""), &record), 0);
    EXPECT_EQ(bytes(record.szKeyRandom, record.nKeyRandomLen), "random");
    session().m_nMediaType = MEDIA_PFX;
    EXPECT_EQ(CLP_SelectCert(handle, 0, text(""), &record), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_SelectCert(handle, 0, text("any"), &record), 0);
}

TEST_F(KeyOperations, PasswordChangeReachesTheFiles)
{
    load();
    EXPECT_EQ(CLP_ChangePassword(handle, 0, text("pw"), text("new")), 0);
    EXPECT_EQ(readFile(class1 / "a_sig.key"), "new:R:random");
    EXPECT_EQ(decryptData("pw"), CLPERR_WRONG_PASSWORD);
    EXPECT_EQ(decryptData("new"), 0);
    take(sign, signLength);
    take(km, kmLength);
}

TEST_F(KeyOperations, PasswordChangeChecksMediumThenArguments)
{
    load();
    for (const int medium : {4, 5, 6, 7, 8}) {
        session().m_nMediaType = medium;
        EXPECT_EQ(CLP_ChangePassword(handle, 0, text(""), text("")), CLPERR_MEDIUM_NOT_ALLOWED);
    }
    for (const int medium : {0, -1, 3, 9}) {
        session().m_nMediaType = medium;
        EXPECT_EQ(CLP_ChangePassword(handle, 0, text("pw"), text("new")), QG_BAD_ARGUMENT);
    }
    session().m_nMediaType = MEDIA_HARDDISK;
    EXPECT_EQ(CLP_ChangePassword(handle, -1, text("pw"), text("new")), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_ChangePassword(handle, 0, text(""), text("new")), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_ChangePassword(handle, 0, text("pw"), nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_ChangePassword(handle, 1, text("pw"), text("new")), QG_BAD_ARGUMENT);
}

TEST_F(KeyOperations, PasswordOfAKeyInMemoryIsChecked)
{
    ASSERT_EQ(start(), 0);
    EXPECT_EQ(check("pw", "pw:key"), 0);
    EXPECT_EQ(check("wrong", "pw:key"), CLPERR_KEY_DECRYPT) << "not told apart from a damaged key";
    EXPECT_STREQ(session().m_szErrMsg, "toolkit says no");
    EXPECT_EQ(check("", "pw:key"), QG_BAD_ARGUMENT);
    EXPECT_EQ(check(nullptr, "pw:key"), QG_BAD_ARGUMENT);
    EXPECT_EQ(check("pw", ""), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_CheckPassword(handle, text("pw"), nullptr, 4), QG_BAD_ARGUMENT);
    EXPECT_EQ(session().CheckPassword(nullptr, nullptr, 0), QG_BAD_ARGUMENT);
}

TEST_F(KeyOperations, IdentityCheckFollowsTheMedium)
{
    load();
    const auto verify = [&](const char* number, const char* password, int index = 0) {
        return CLP_VerifyVID(handle, index, const_cast<char*>(number), const_cast<char*>(password));
    };
    EXPECT_EQ(verify("123", "pw"), 0);
    EXPECT_EQ(verify("123", "wrong"), CLPERR_WRONG_PASSWORD);
    EXPECT_EQ(verify("123", ""), QG_BAD_ARGUMENT);
    EXPECT_EQ(verify("", "pw"), QG_BAD_ARGUMENT);
    EXPECT_EQ(verify("123", "pw", -1), QG_BAD_ARGUMENT);
    toolkit.failures["VIDVerify"] = 9;
    EXPECT_EQ(verify("123", "pw"), CLPERR_VID_VERIFY);
    session().m_nMediaType = MEDIA_USIM;
    EXPECT_EQ(verify("123", "pw"), QG_MEDIUM_UNSUPPORTED);
    session().m_nMediaType = MEDIA_SMARTCARD;
    EXPECT_EQ(verify("123", "pw"), QG_BAD_ARGUMENT);
    session().m_nMediaType = MEDIA_MEMORY;
    EXPECT_EQ(verify("123", "any"), 0);
    EXPECT_EQ(verify("123", ""), QG_BAD_ARGUMENT);
}
