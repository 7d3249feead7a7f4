// Keys, passwords and what they protect stand in memory only where the caller holds them.

#include <array>
#include <fcntl.h>
#include <openssl/crypto.h>
#include <unistd.h>

#include "CryptoTest.h"
#include "MemoryScan.h"

namespace {

/** Bytes of a file, read without a library's buffers in between and wiped at the end. */
class RawFile
{
public:
    explicit RawFile(const std::string& path)
    {
        const int descriptor = open(path.c_str(), O_RDONLY);
        m_length = read(descriptor, m_bytes.data(), m_bytes.size());
        close(descriptor);
    }
    ~RawFile() { wipe(); }
    RawFile(const RawFile&) = delete;
    RawFile& operator=(const RawFile&) = delete;

    void wipe() { OPENSSL_cleanse(m_bytes.data(), m_bytes.size()); }
    BINSTR record() { return {m_bytes.data(), static_cast<int>(m_length)}; }
    char* text() { return reinterpret_cast<char*>(m_bytes.data()); }
    std::size_t length() const { return static_cast<std::size_t>(m_length); }

private:
    std::array<unsigned char, 4096> m_bytes{};
    ssize_t m_length = 0;
};

/** Where part of some bytes stands. */
std::size_t countOf(const MemoryScan& scan)
{
    return scan.find().size();
}

constexpr std::size_t needleLength = 24;

/** A scan for part of what a record or file holds; the middle, where the private part of a key lies. */
MemoryScan scanFor(const char* name, const BINSTR& record)
{
    MemoryScan scan;
    const auto length = static_cast<std::size_t>(record.nLen);
    const std::size_t taken = std::min(length, needleLength);
    scan.add(name, reinterpret_cast<const char*>(record.pData) + (length - taken) / 2, taken);
    return scan;
}

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
        openssl({"genpkey", "-quiet", "-algorithm", "RSA", "-out", at("pem")});
        openssl({"pkcs8", "-topk8", "-nocrypt", "-in", at("pem"), "-outform", "DER", "-out", at("key")});
        openssl({"pkey", "-in", at("pem"), "-pubout", "-outform", "DER", "-out", at("half")});
        openssl({"genpkey", "-quiet", "-algorithm", "EC", "-pkeyopt", "group:P-256", "-out", at("ec.pem")});
        openssl({"pkcs8", "-topk8", "-nocrypt", "-in", at("ec.pem"), "-outform", "DER", "-out", at("ec")});
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
    EXPECT_EQ(countOf(scan), 2U) << "the caller's and the context's";
    BINSTR copy = {};
    BINSTR ivCopy = {};
    int algorithm = 0;
    EXPECT_EQ(call("CRYPT_GetKeyAndIV", &algorithm, &copy, &ivCopy), 0);
    EXPECT_EQ(countOf(scan), 3U);
    release(copy);
    release(ivCopy);
    EXPECT_EQ(call("CRYPT_ClearKeyAndIV"), 0);
    EXPECT_EQ(countOf(scan), 1U);
    ASSERT_EQ(call("CRYPT_SetKeyAndIV", QG_CIPHER_ARIA256 + 0, &keyRecord, ivArgument.get()), 0);
    key.wipe();
    EXPECT_EQ(countOf(scan), 1U);
    EXPECT_EQ(call("CRYPT_GenKeyAndIV", QG_CIPHER_ARIA256 + 0), 0);
    EXPECT_EQ(countOf(scan), 0U) << "another took its place";
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
    EXPECT_EQ(countOf(scan), 2U);
    release(decrypted);
    Passed<std::string> publicKey(rsaPair().publicKey);
    Passed<std::string> privateKey(rsaPair().privateKey);
    ASSERT_EQ(call("CRYPT_AsymEncrypt", QG_KEY_PUBLIC + 0, publicKey.get(), &plainRecord, &encrypted), 0);
    ASSERT_EQ(call("CRYPT_AsymDecrypt", QG_KEY_PRIVATE + 0, privateKey.get(), &encrypted, &decrypted), 0);
    EXPECT_EQ(countOf(scan), 2U);
    release(decrypted);
    ASSERT_EQ(call("BASE64_Encode", &plainRecord, &encrypted), 0);
    ASSERT_EQ(call("BASE64_Decode", &encrypted, &decrypted), 0);
    const MemoryScan textScan = scanFor("text", encrypted);
    EXPECT_EQ(countOf(textScan), 1U);
    release(encrypted);
    EXPECT_EQ(countOf(textScan), 0U);
    release(decrypted);
    EXPECT_EQ(countOf(scan), 1U);
}

TEST_P(CryptoSecrets, PasswordsOfCodesAreTheCallersAlone)
{
    openssl({"rand", "-hex", "-out", at("password"), "32"});
    RawFile password(at("password"));
    BINSTR record = password.record();
    const MemoryScan scan = scanFor("password", record);
    for (const int hash : {QG_HASH_SHA1, QG_HASH_SHA512})
        give("CRYPT_GenMAC", hash, password.text(), std::string("data"));
    EXPECT_EQ(countOf(scan), 1U);
    password.wipe();
    EXPECT_EQ(countOf(scan), 0U);
}

TEST_P(CryptoSecrets, PrivateKeysAreTheCallersAlone)
{
    RawFile key(at("key"));
    RawFile half(at("half"));
    BINSTR keyRecord = key.record();
    BINSTR halfRecord = half.record();
    const MemoryScan scan = scanFor("key", keyRecord);
    const std::string data = noise(100);
    Passed<std::string> dataArgument(data);
    BINSTR result = {};
    EXPECT_EQ(call("CRYPT_Sign", &halfRecord, &keyRecord, QG_HASH_SHA256 + 0, dataArgument.get(), &result),
              0);
    EXPECT_EQ(countOf(scan), 1U);
    EXPECT_NE(call("CRYPT_AsymDecrypt", QG_KEY_PRIVATE + 0, &keyRecord, dataArgument.get(), &result), 0);
    EXPECT_EQ(countOf(scan), 1U);
    release(result);
}

TEST_P(ZrtkCryptoSecrets, MadeKeysSecretsAndPemAreTheCallersAlone)
{
    BINSTR privateKey = {};
    BINSTR publicKey = {};
    for (const int kind : {QG_KEYPAIR_P256, QG_KEYPAIR_RSA2048}) {
        ASSERT_EQ(call("CRYPT_GenKeyPair", kind, &privateKey, &publicKey), 0);
        const MemoryScan made = scanFor("made key", privateKey);
        EXPECT_EQ(countOf(made), 1U) << kind;
        BINSTR pem = {};
        BINSTR again = {};
        ASSERT_EQ(call("PEM_Encode", QG_PEM_PRIVATE_KEY + 0, &privateKey, &pem), 0);
        const MemoryScan pemScan = scanFor("PEM", pem);
        ASSERT_EQ(call("PEM_Decode", &pem, &again), 0);
        EXPECT_EQ(countOf(pemScan), 1U);
        EXPECT_EQ(countOf(made), 2U);
        for (BINSTR* record : {&pem, &again, &privateKey})
            release(*record);
        EXPECT_EQ(countOf(pemScan) + countOf(made), 0U) << kind;
    }
    RawFile own(at("ec"));
    BINSTR ownRecord = own.record();
    BINSTR secret = {};
    const MemoryScan ownScan = scanFor("own half", ownRecord);
    ASSERT_EQ(call("CRYPT_GenKeyPair", QG_KEYPAIR_P256 + 0, &privateKey, &publicKey), 0);
    ASSERT_EQ(call("CRYPT_GenSharedKey", QG_AGREEMENT_ECDH + 0, &ownRecord, &publicKey, &secret), 0);
    const MemoryScan secretScan = scanFor("secret", secret);
    EXPECT_EQ(countOf(secretScan), 1U);
    EXPECT_EQ(countOf(ownScan), 1U);
    for (BINSTR* record : {&secret, &privateKey, &publicKey})
        release(*record);
    EXPECT_EQ(countOf(secretScan), 0U);
}
