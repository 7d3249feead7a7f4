#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "KeySamples.h"
#include "toolkit/core/KeyProtection.h"
#include "toolkit/core/KeyRandom.h"
#include "toolkit/core/Oid.h"

using namespace qgtk;

namespace {

constexpr const char* password = "Passw0rd!test";

/** Runs an operation and gives the code that it fails with. */
template <typename Operation>
Code codeOf(Operation operation)
{
    try {
        operation();
    } catch (const Failure& failure) {
        return failure.code();
    }
    return Code::Ok;
}

AlgorithmHandle algorithmFromHex(const std::string& hex)
{
    return decodeDer<AlgorithmHandle>(d2i_X509_ALGOR, fromHex(hex));
}

/** Decrypts with the key and initial value that an AlgorithmIdentifier leads to. */
std::string decryptWith(const std::string& algorithmHex, const std::string& cipherHex)
{
    const AlgorithmHandle algorithm = algorithmFromHex(algorithmHex);
    const CipherSetup setup = setupFromAlgorithm(testCrypto(), algorithm.get(), password, 10'000);
    const CipherRun run(EVP_CIPHER_CTX_new());
    EVP_DecryptInit_ex2(run.get(), setup.cipher.get(), setup.key.data(), setup.iv.data(), nullptr);
    const Bytes cipherText = fromHex(cipherHex);
    std::string plain(cipherText.size() + 32, '\0');
    auto* target = reinterpret_cast<unsigned char*>(plain.data());
    int body = 0;
    int tail = 0;
    EVP_DecryptUpdate(run.get(), target, &body, cipherText.data(), static_cast<int>(cipherText.size()));
    if (EVP_DecryptFinal_ex(run.get(), target + body, &tail) != 1)
        return "padding";
    plain.resize(static_cast<std::size_t>(body + tail));
    return plain;
}

KeyProtection protectionOf(KeyScheme scheme, KeyCipher cipher, KeyPrf prf)
{
    return {scheme, cipher, prf, 2048, 8};
}

std::vector<KeyProtection> everyProtection()
{
    std::vector<KeyProtection> all{protectionOf(KeyScheme::Pbkdf1Seed, KeyCipher::Seed, KeyPrf::Sha1),
                                   protectionOf(KeyScheme::Pbkdf1SeedOld, KeyCipher::Seed, KeyPrf::Sha1)};
    for (const KeyCipher cipher :
         {KeyCipher::Seed, KeyCipher::Aria128, KeyCipher::Aria192, KeyCipher::Aria256, KeyCipher::Aes128,
          KeyCipher::Aes192, KeyCipher::Aes256, KeyCipher::TripleDes})
        for (const KeyPrf prf :
             {KeyPrf::Sha1, KeyPrf::Sha224, KeyPrf::Sha256, KeyPrf::Sha384, KeyPrf::Sha512})
            all.push_back(protectionOf(KeyScheme::Pbes2, cipher, prf));
    return all;
}

} // namespace

TEST(KeyForm, Pbkdf1SeedOpensTheWorkedExample)
{
    EXPECT_EQ(decryptWith("301a06082a831a8c9a44010f300e0408010203040506070802020800",
                          "b49794397d660c68b2abb5b67608a57306923fba08dc4e059f87092ccfd90778"),
              "NPKI worked example");
}

TEST(KeyForm, OldSeedOpensTheWorkedExample)
{
    EXPECT_EQ(decryptWith("301a06082a831a8c9a440104300e0408010203040506070802020800",
                          "0640e9cc3a78ad82c28c1e84a39293b2f0b8979663ea2c06769d55485b63966b"),
              "NPKI worked example");
}

TEST(KeyForm, Pbkdf2DerivesTheWorkedKeys)
{
    // PBES2 with SEED over the same salt and count; without and with a function named.
    const std::string salt = "0408010203040506070802020800";
    const std::string iv = "041000000000000000000000000000000000";
    const auto sha1 = algorithmFromHex("304b06092a864886f70d01050d303e301b06092a864886f70d01050c300e" + salt +
                                       "301f06082a831a8c9a4401040413" + std::string(38, '0'));
    ASSERT_TRUE(sha1);
    EXPECT_EQ(codeOf([&] { setupFromAlgorithm(testCrypto(), sha1.get(), password, 10'000); }),
              Code::KeyParameters)
        << "an initial value of 19 bytes";
    const auto plain = algorithmFromHex("304806092a864886f70d01050d303b301b06092a864886f70d01050c300e" +
                                        salt + "301c06082a831a8c9a440104" + iv);
    ASSERT_TRUE(plain);
    EXPECT_EQ(toHex(setupFromAlgorithm(testCrypto(), plain.get(), password, 10'000).key),
              "8bf4946b758dc22fca4f2f007cfa35b1");
    const auto sha256 =
        algorithmFromHex("305606092a864886f70d01050d3049302906092a864886f70d01050c301c" + salt +
                         "300c06082a864886f70d02090500" + "301c06082a831a8c9a440104" + iv);
    ASSERT_TRUE(sha256);
    EXPECT_EQ(toHex(setupFromAlgorithm(testCrypto(), sha256.get(), password, 10'000).key),
              "f7d013c732d79b053444301ceb6359df");
}

class EveryKeyForm : public testing::TestWithParam<KeyProtection>
{};

TEST_P(EveryKeyForm, OpensByteForByteWithItsPasswordAlone)
{
    const Bytes sealed = encryptKey(testCrypto(), rsaKeyWithRandom(), password, GetParam());
    EXPECT_EQ(decryptKey(testCrypto(), sealed, password), rsaKeyWithRandom());
    EXPECT_EQ(codeOf([&] { decryptKey(testCrypto(), sealed, "passw0rd!test"); }), Code::WrongPassword);
}

INSTANTIATE_TEST_SUITE_P(AllSchemesAndCiphers, EveryKeyForm, testing::ValuesIn(everyProtection()));

TEST(KeyRandom, KeepsTheLastZeroByte)
{
    EXPECT_EQ(toHex(keyRandom(rsaKeyWithRandom())), "0102030405060708090a0b0c0d0e0f1011121300");
    EXPECT_EQ(codeOf([] { keyRandom(rsaKey()); }), Code::NoKeyRandom);
    EXPECT_EQ(codeOf([] { keyRandom(fromHex("3003020100")); }), Code::KeyNotPlain);
}
