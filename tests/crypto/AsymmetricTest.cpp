#include "CryptoTest.h"

using qgtk::Code;

namespace {

constexpr int publicKind = QG_KEY_PUBLIC;
constexpr int privateKind = QG_KEY_PRIVATE;

/** The most that fits an RSA-2048 key in version 1.5. */
constexpr std::size_t longest = 256 - 11;

} // namespace

class Asymmetric : public CryptoTest
{
protected:
    std::vector<std::string> pkeyutl(const char* operation, const Pair& pair, const std::string& data,
                                     const std::vector<std::string>& options = {}) const
    {
        const bool withPrivate =
            std::string("-encrypt") != operation && std::string("-verifyrecover") != operation;
        std::vector<std::string> command = {
            "pkeyutl",  operation,
            "-keyform", "DER",
            "-in",      file("in", data),
            "-out",     at("out"),
            "-inkey",   file("key", withPrivate ? pair.privateKey : pair.publicKey)};
        if (!withPrivate)
            command.push_back("-pubin");
        command.insert(command.end(), options.begin(), options.end());
        return command;
    }
    std::string opensslResult(const char* operation, const std::string& data,
                              const std::vector<std::string>& options = {}) const
    {
        openssl(pkeyutl(operation, rsaPair(), data, options));
        return readFile(at("out"));
    }
    std::string encrypt(const std::string& data)
    {
        return give("CRYPT_AsymEncrypt", publicKind, rsaPair().publicKey, data);
    }
    Answer decrypt(const std::string& data)
    {
        return ask("CRYPT_AsymDecrypt", privateKind, rsaPair().privateKey, data);
    }
};
INSTANTIATE_BOTH_SIDES(Asymmetric);

class Oaep : public Asymmetric
{
protected:
    void SetUp() override
    {
        Asymmetric::SetUp();
        ASSERT_EQ(call("CRYPT_SetRSAVersion", QG_RSA_V2 + 0), 0);
    }
    static std::vector<std::string> oaep(const std::string& digest)
    {
        return {"-pkeyopt", "rsa_padding_mode:oaep", "-pkeyopt", "rsa_oaep_md:" + digest};
    }
};
INSTANTIATE_TEST_SUITE_P(Zrtk, Oaep, testing::Values(zrtkSide));

TEST_P(Asymmetric, OpenSslDecryptsAndIsDecrypted)
{
    for (const std::size_t length : {std::size_t{1}, std::size_t{32}, longest}) {
        const std::string data = noise(length);
        EXPECT_EQ(opensslResult("-decrypt", encrypt(data)), data);
        EXPECT_EQ(decrypt(opensslResult("-encrypt", data)).bytes, data);
    }
    EXPECT_NE(encrypt("data"), encrypt("data")) << "padded with random bytes";
}

TEST_P(Asymmetric, PrivateKeysEncryptForWhoHasThePublicOne)
{
    const std::string data = noise(48);
    const std::string encrypted = give("CRYPT_AsymEncrypt", privateKind, rsaPair().privateKey, data);
    EXPECT_EQ(encrypted, opensslResult("-sign", data));
    EXPECT_EQ(opensslResult("-verifyrecover", encrypted), data);
    EXPECT_EQ(give("CRYPT_AsymDecrypt", publicKind, rsaPair().publicKey, encrypted), data);
}

TEST_P(Asymmetric, DataThatDoNotFitTheKeyAreRefused)
{
    for (const std::size_t length : {longest + 1, std::size_t{256}, std::size_t{100000}}) {
        EXPECT_EQ(ask("CRYPT_AsymEncrypt", publicKind, rsaPair().publicKey, noise(length)).code,
                  number(Code::DataLength));
        EXPECT_EQ(ask("CRYPT_AsymEncrypt", privateKind, rsaPair().privateKey, noise(length)).code,
                  number(Code::DataLength));
    }
}

TEST_P(Asymmetric, EveryFaultOfEncryptedDataIsTheSameCode)
{
    const std::string encrypted = encrypt("data");
    // Blocks of version 1.5 with each fault that its padding can have, encrypted as they are.
    const auto raw = [&](std::string block) {
        block.resize(256, 'x');
        return opensslResult("-encrypt", block, {"-pkeyopt", "rsa_padding_mode:none"});
    };
    const std::vector<std::string> faults = {raw(unhex("0102")),
                                             raw(unhex("0001")),
                                             raw(unhex("0002") + "short" + '\0'),
                                             raw(unhex("0002") + std::string(253, 'x')),
                                             noise(256).replace(0, 1, 1, '\0'),
                                             encrypted.substr(1),
                                             encrypted + "x",
                                             "x"};
    for (const std::string& fault : faults)
        EXPECT_EQ(decrypt(fault).code, number(Code::NotDecryptable)) << hex(fault);
    const Pair other = opensslPair({"-algorithm", "RSA"});
    EXPECT_EQ(ask("CRYPT_AsymDecrypt", privateKind, other.privateKey, encrypted).code,
              number(Code::NotDecryptable));
    EXPECT_EQ(ask("CRYPT_AsymDecrypt", publicKind, rsaPair().publicKey, encrypted).code,
              number(Code::NotDecryptable));
}

TEST_P(Asymmetric, OnlyRsaKeysOfTheNamedHalfDo)
{
    const std::string data = "data";
    EXPECT_EQ(ask("CRYPT_AsymEncrypt", publicKind, ecPair().publicKey, data).code,
              number(Code::KeyUnsuitable));
    EXPECT_EQ(ask("CRYPT_AsymDecrypt", privateKind, ecPair().privateKey, data).code,
              number(Code::KeyUnsuitable));
    EXPECT_EQ(ask("CRYPT_AsymEncrypt", publicKind, rsaPair().privateKey, data).code,
              number(Code::PublicKeyDamaged));
    EXPECT_EQ(ask("CRYPT_AsymDecrypt", privateKind, rsaPair().publicKey, data).code,
              number(Code::KeyNotPlain));
    for (const int unknown : {0, 3, -1}) {
        EXPECT_EQ(ask("CRYPT_AsymEncrypt", unknown, rsaPair().publicKey, data).code,
                  number(Code::AlgorithmCodeUnknown));
        EXPECT_EQ(ask("CRYPT_AsymDecrypt", unknown, rsaPair().privateKey, data).code,
                  number(Code::AlgorithmCodeUnknown));
    }
}

TEST_P(Oaep, OpenSslDecryptsAndIsDecryptedWithTheContextsHash)
{
    const std::pair<int, const char*> hashes[] = {
        {QG_HASH_SHA1, "sha1"}, {QG_HASH_SHA256, "sha256"}, {QG_HASH_SHA512, "sha512"}};
    for (const auto& [hash, name] : hashes) {
        ASSERT_EQ(call("API_SetHashAlgo", hash), 0);
        EXPECT_EQ(opensslResult("-decrypt", encrypt("data"), oaep(name)), "data");
        EXPECT_EQ(decrypt(opensslResult("-encrypt", "data", oaep(name))).bytes, "data");
    }
    EXPECT_EQ(decrypt(opensslResult("-encrypt", "data", oaep("sha1"))).code, number(Code::NotDecryptable))
        << "another hash";
}

TEST_P(Oaep, VersionsDoNotPassForEachOther)
{
    const std::string encrypted = encrypt("data");
    EXPECT_EQ(decrypt(opensslResult("-encrypt", "data")).code, number(Code::NotDecryptable));
    EXPECT_EQ(ask("CRYPT_AsymEncrypt", publicKind, rsaPair().publicKey, noise(256 - 2 * 32 - 1)).code,
              number(Code::DataLength));
    EXPECT_EQ(ask("CRYPT_AsymEncrypt", privateKind, rsaPair().privateKey, std::string("data")).code,
              number(Code::NotSupported));
    EXPECT_EQ(ask("CRYPT_AsymDecrypt", publicKind, rsaPair().publicKey, encrypted).code,
              number(Code::NotSupported));
    ASSERT_EQ(call("CRYPT_SetRSAVersion", QG_RSA_V15 + 0), 0);
    EXPECT_EQ(decrypt(encrypted).code, number(Code::NotDecryptable));
}
