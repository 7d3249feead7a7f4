#include "Programs.h"
#include "TestHome.h"
#include "TokenTest.h"
#include "quillgate/algorithms.h"

using qgtk::Code;

class KeyUse : public TokenTest
{
protected:
    void SetUp() override
    {
        TokenTest::SetUp();
        makeOpenToken();
    }

    int generate(int algorithm, int type, const std::string& id)
    {
        BinString given(library, id);
        return token("GenKeyPair", algorithm, type, &given);
    }

    int verify(const std::string& id, const std::string& data, const std::string& signature)
    {
        BinString key(library, id);
        BinString given(library, data);
        BinString value(library, signature);
        return token("Verify", &key, &given, &value);
    }

    std::string run(const std::string& command) { return runIn(tokens, command).output; }

    /** The public key as openssl takes it; identifiers are one letter here. */
    void exportPublic(char id)
    {
        pkcs11Tool(std::string("--token-label first --read-object --type pubkey -o public.der --id ") +
                   std::to_string(id / 16) + std::to_string(id % 16));
    }

    std::string opensslVerifies(const std::string& signature, const std::string& options)
    {
        writeFile(tokens + "/data", "data");
        writeFile(tokens + "/signature", signature);
        return run("openssl dgst " + options + " -verify public.der -keyform DER -signature signature data");
    }
};
INSTANTIATE_ZR_SIDE(KeyUse);

namespace {

constexpr const char* verified = "Verified OK\n";

} // namespace

TEST_P(KeyUse, RsaSignaturesAreOthersToo)
{
    ASSERT_EQ(generate(QG_KEYPAIR_RSA2048, QG_TOKEN_SIGNING, "A"), 0);
    exportPublic('A');
    const std::string old = read("Sign", "A", "data");
    EXPECT_EQ(opensslVerifies(old, "-sha256"), verified);
    EXPECT_EQ(verify("A", "data", old), 0);
    EXPECT_EQ(verify("A", "Data", old), number(Code::SignatureWrong));
    EXPECT_EQ(verify("A", "data", "short"), number(Code::SignatureWrong));
    ASSERT_EQ(call("CRYPT_SetRSAVersion", int(QG_RSA_V2)), 0);
    EXPECT_EQ(verify("A", "data", old), number(Code::SignatureWrong));
    const std::string pss = read("Sign", "A", "data");
    EXPECT_EQ(opensslVerifies(pss, "-sha256 -sigopt rsa_padding_mode:pss"), verified);
    EXPECT_EQ(verify("A", "data", pss), 0);
    ASSERT_EQ(call("API_SetHashAlgo", int(QG_HASH_SHA512)), 0);
    EXPECT_EQ(opensslVerifies(read("Sign", "A", "data"), "-sha512 -sigopt rsa_padding_mode:pss"), verified);
    ASSERT_EQ(call("API_SetHashAlgo", int(QG_HASH_SHA3_256)), 0);
    EXPECT_EQ(read("Sign", "A", "data"), refused(Code::AlgorithmCodeUnknown));
}

TEST_P(KeyUse, CurvesSignInTheCommonForm)
{
    ASSERT_EQ(generate(QG_KEYPAIR_P256, QG_TOKEN_SIGNING, "A"), 0);
    ASSERT_EQ(generate(QG_KEYPAIR_P521, QG_TOKEN_SIGNING, "B"), 0);
    for (const char id : {'A', 'B'}) {
        const std::string name(1, id);
        exportPublic(id);
        const std::string signature = read("Sign", name, "data");
        EXPECT_EQ(opensslVerifies(signature, "-sha256"), verified) << id;
        EXPECT_EQ(verify(name, "data", signature), 0);
        EXPECT_EQ(verify(name, "Data", signature), number(Code::SignatureWrong));
        EXPECT_EQ(verify(name, "data", "text"), number(Code::SignatureWrong));
    }
    EXPECT_EQ(verify("A", "data", read("Sign", "B", "data")), number(Code::SignatureWrong));
    EXPECT_EQ(read("Encrypt", "A", "data"), refused(Code::KeyUnsuitable));
    EXPECT_EQ(read("Decrypt", "A", "data"), refused(Code::KeyUnsuitable));
}

TEST_P(KeyUse, EncryptsAndDecrypts)
{
    ASSERT_EQ(generate(QG_KEYPAIR_RSA2048, QG_TOKEN_MANAGEMENT, "A"), 0);
    exportPublic('A');
    const std::string ours = read("Encrypt", "A", "data");
    EXPECT_EQ(ours.size(), 256U);
    EXPECT_EQ(read("Decrypt", "A", ours), "data");
    writeFile(tokens + "/plain", "from openssl");
    run("openssl pkeyutl -encrypt -pubin -inkey public.der -keyform DER -in plain -out theirs");
    EXPECT_EQ(read("Decrypt", "A", readFile(tokens + "/theirs")), "from openssl");
    std::string damaged = ours;
    damaged[100] = static_cast<char>(damaged[100] ^ 1);
    EXPECT_EQ(read("Decrypt", "A", damaged), refused(Code::NotDecryptable));
    EXPECT_EQ(read("Decrypt", "A", "short"), refused(Code::NotDecryptable));
    EXPECT_EQ(read("Encrypt", "A", std::string(246, 'x')), refused(Code::DataLength));
    EXPECT_EQ(read("Decrypt", "A", read("Encrypt", "A", std::string(245, 'x'))), std::string(245, 'x'));
    EXPECT_EQ(read("Sign", "A", "data"), refused(Code::KeyUnsuitable));
    EXPECT_EQ(read("Decrypt", "A", ours), "data") << "no failure leaves the session busy";
    ASSERT_EQ(call("CRYPT_SetRSAVersion", int(QG_RSA_V2)), 0);
    ASSERT_EQ(call("API_SetHashAlgo", int(QG_HASH_SHA1)), 0);
    const std::string oaep = read("Encrypt", "A", "data");
    EXPECT_EQ(read("Decrypt", "A", oaep), "data");
    run("openssl pkeyutl -encrypt -pubin -inkey public.der -keyform DER -pkeyopt rsa_padding_mode:oaep -in "
        "plain "
        "-out theirs");
    EXPECT_EQ(read("Decrypt", "A", readFile(tokens + "/theirs")), "from openssl");
}

TEST_P(KeyUse, WhatCannotBeIsRefused)
{
    EXPECT_EQ(generate(1024, QG_TOKEN_SIGNING, "A"), number(Code::AlgorithmCodeUnknown));
    EXPECT_EQ(generate(QG_KEYPAIR_P256, 3, "A"), number(Code::BadArgument));
    EXPECT_EQ(generate(QG_KEYPAIR_P256, QG_TOKEN_SIGNING, ""), number(Code::BadArgument));
    ASSERT_EQ(generate(QG_KEYPAIR_P256, QG_TOKEN_SIGNING, "A"), 0);
    EXPECT_EQ(generate(QG_KEYPAIR_P256, QG_TOKEN_SIGNING, "A"), number(Code::TokenObjectExists));
    for (const char* operation : {"Sign", "Encrypt", "Decrypt"}) {
        EXPECT_EQ(read(operation, "B", "data"), refused(Code::TokenObjectMissing)) << operation;
        EXPECT_EQ(read(operation, "A", ""), refused(Code::BadArgument)) << operation;
        EXPECT_EQ(read(operation, "", "data"), refused(Code::BadArgument)) << operation;
    }
    EXPECT_EQ(verify("B", "data", "signature"), number(Code::TokenObjectMissing));
    EXPECT_EQ(verify("A", "data", ""), number(Code::BadArgument));
    ASSERT_EQ(token("Logout"), 0);
    EXPECT_EQ(generate(QG_KEYPAIR_P256, QG_TOKEN_SIGNING, "B"), number(Code::TokenLoggedOut));
    EXPECT_EQ(read("Sign", "A", "data"), refused(Code::TokenLoggedOut));
    EXPECT_EQ(read("Decrypt", "A", "data"), refused(Code::TokenLoggedOut));
    ASSERT_EQ(token("CloseSession"), 0);
    for (const char* operation : {"Sign", "Encrypt", "Decrypt"})
        EXPECT_EQ(read(operation, "A", "data"), refused(Code::NoTokenSession)) << operation;
    EXPECT_EQ(generate(QG_KEYPAIR_P256, QG_TOKEN_SIGNING, "B"), number(Code::NoTokenSession));
}
