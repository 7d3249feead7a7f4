// Keys, passwords and what they protect stand in memory only where the caller holds them.

#include <cstdlib>
#include <memory>

#include "CryptoTest.h"
#include "RawFile.h"

namespace {

/** What OpenSSL decodes Base64 in. Who allocates as much behind it gets that memory as it was left. */
constexpr std::size_t decodingStateSize = 96;

} // namespace

class CryptoSecrets : public CryptoTest
{
protected:
    void SetUp() override
    {
#ifdef __SANITIZE_ADDRESS__
        GTEST_SKIP() << "the sanitizer maps terabytes and keeps freed memory";
#endif
        CryptoTest::SetUp();
        // Made by another process: nothing of it was ever in this one.
        openssl({"rand", "-out", at("random"), "32"});
    }
    void release(BINSTR& record)
    {
        EXPECT_EQ(library.callBare("BINSTR_Delete", &record), 0);
    }
};
INSTANTIATE_BOTH_SIDES(CryptoSecrets);

class ZrtkCryptoSecrets : public CryptoSecrets
{};
INSTANTIATE_TEST_SUITE_P(Zrtk, ZrtkCryptoSecrets, testing::Values(zrtkSide));

TEST_P(CryptoSecrets, TheCiphersKeyIsGoneWhenItIsCleared)
{
    RawFile key(at("random"));
    BINSTR keyRecord = key.record();
    const MemoryScan scan = scanFor("key", keyRecord);
    const std::string iv(16, 'i');
    Passed<std::string> ivArgument(iv);
    ASSERT_EQ(call("CRYPT_SetKeyAndIV", QG_CIPHER_AES256 + 0, &keyRecord, ivArgument.get()), 0);
    EXPECT_EQ(give("CRYPT_Decrypt", give("CRYPT_Encrypt", noise(300000))), noise(300000));
    EXPECT_THAT(scan.find(), testing::SizeIs(2)) << "the caller's and the context's";
    BINSTR copy = {};
    BINSTR ivCopy = {};
    int algorithm = 0;
    EXPECT_EQ(call("CRYPT_GetKeyAndIV", &algorithm, &copy, &ivCopy), 0);
    EXPECT_THAT(scan.find(), testing::SizeIs(3));
    release(copy);
    release(ivCopy);
    EXPECT_EQ(call("CRYPT_ClearKeyAndIV"), 0);
    EXPECT_THAT(scan.find(), testing::SizeIs(1));
    ASSERT_EQ(call("CRYPT_SetKeyAndIV", QG_CIPHER_ARIA256 + 0, &keyRecord, ivArgument.get()), 0);
    key.wipe();
    EXPECT_THAT(scan.find(), testing::SizeIs(1));
    EXPECT_EQ(call("CRYPT_GenKeyAndIV", QG_CIPHER_ARIA256 + 0), 0);
    EXPECT_THAT(scan.find(), testing::SizeIs(0)) << "another took its place";
}

TEST_P(CryptoSecrets, DecryptedDataAreTheCallersAlone)
{
    RawFile plain(at("random"));
    BINSTR plainRecord = plain.record();
    const MemoryScan scan = scanFor("data", plainRecord);
    BINSTR encrypted = {};
    BINSTR decrypted = {};
    ASSERT_EQ(call("CRYPT_GenKeyAndIV", QG_CIPHER_SEED + 0), 0);
    ASSERT_EQ(call("CRYPT_Encrypt", &plainRecord, &encrypted), 0);
    ASSERT_EQ(call("CRYPT_Decrypt", &encrypted, &decrypted), 0);
    EXPECT_THAT(scan.find(), testing::SizeIs(2));
    release(decrypted);
    Passed<std::string> publicKey(rsaPair().publicKey);
    Passed<std::string> privateKey(rsaPair().privateKey);
    ASSERT_EQ(call("CRYPT_AsymEncrypt", QG_KEY_PUBLIC + 0, publicKey.get(), &plainRecord, &encrypted), 0);
    ASSERT_EQ(call("CRYPT_AsymDecrypt", QG_KEY_PRIVATE + 0, privateKey.get(), &encrypted, &decrypted), 0);
    EXPECT_THAT(scan.find(), testing::SizeIs(2));
    release(decrypted);
    ASSERT_EQ(call("BASE64_Encode", &plainRecord, &encrypted), 0);
    ASSERT_EQ(call("BASE64_Decode", &encrypted, &decrypted), 0);
    const std::unique_ptr<void, decltype(&std::free)> freed(std::malloc(decodingStateSize), std::free);
    const MemoryScan textScan = scanFor("text", encrypted);
    EXPECT_THAT(textScan.find(), testing::SizeIs(1));
    release(encrypted);
    EXPECT_THAT(textScan.find(), testing::SizeIs(0));
    release(decrypted);
    EXPECT_THAT(scan.find(), testing::SizeIs(1));
}

TEST_P(CryptoSecrets, PasswordsOfCodesAreTheCallersAlone)
{
    openssl({"rand", "-hex", "-out", at("password"), "32"});
    RawFile password(at("password"));
    BINSTR record = password.record();
    const MemoryScan scan = scanFor("password", record);
    for (const int hash : {QG_HASH_SHA1, QG_HASH_SHA512})
        give("CRYPT_GenMAC", hash, password.text(), std::string("data"));
    EXPECT_THAT(scan.find(), testing::SizeIs(1));
    password.wipe();
    EXPECT_THAT(scan.find(), testing::SizeIs(0));
}

// OpenSSL itself leaves what it decodes private keys from, and encodes them in, to the allocator: of keys
// only their texts are looked for.
TEST_P(ZrtkCryptoSecrets, SecretsAndPemAreTheCallersAlone)
{
    BINSTR privateKey = {};
    BINSTR publicKey = {};
    BINSTR pem = {};
    BINSTR again = {};
    BINSTR secret = {};
    ASSERT_EQ(call("CRYPT_GenKeyPair", QG_KEYPAIR_RSA2048 + 0, &privateKey, &publicKey), 0);
    ASSERT_EQ(call("PEM_Encode", QG_PEM_PRIVATE_KEY + 0, &privateKey, &pem), 0);
    const MemoryScan pemScan = scanFor("PEM", pem);
    ASSERT_EQ(call("PEM_Decode", &pem, &again), 0);
    EXPECT_THAT(pemScan.find(), testing::SizeIs(1));
    release(pem);
    EXPECT_THAT(pemScan.find(), testing::IsEmpty());
    Passed<std::string> own(ecPair().privateKey);
    ASSERT_EQ(call("CRYPT_GenKeyPair", QG_KEYPAIR_P256 + 0, &privateKey, &publicKey), 0);
    ASSERT_EQ(call("CRYPT_GenSharedKey", QG_AGREEMENT_ECDH + 0, own.get(), &publicKey, &secret), 0);
    const MemoryScan secretScan = scanFor("secret", secret);
    EXPECT_THAT(secretScan.find(), testing::SizeIs(1));
    for (BINSTR* record : {&again, &secret, &privateKey, &publicKey})
        release(*record);
    EXPECT_THAT(secretScan.find(), testing::IsEmpty());
}
