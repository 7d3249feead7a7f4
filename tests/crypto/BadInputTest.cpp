// What no caller should hand in, to every operation that takes bytes: an answer with a code, the outputs as
// they were.

#include <functional>

#include "CryptoTest.h"

using qgtk::Code;

class BadInput : public CryptoTest
{
protected:
    void SetUp() override
    {
        CryptoTest::SetUp();
        setKey(QG_CIPHER_AES256, std::string(64, '1'), std::string(32, '0'));
    }

    /** An operation on bytes, by what it takes. */
    struct Operation
    {
        std::string name;
        std::function<int(BINSTR*)> run;
    };

    /** Every operation with its byte strings one by one in turn, the others being good. */
    std::vector<Operation> operations();

    std::string data = "data";
    std::string signature = noise(256);
};
INSTANTIATE_BOTH_SIDES(BadInput);

std::vector<BadInput::Operation> BadInput::operations()
{
    const auto output = [this](const std::string& name, auto... arguments) {
        BinString result(library, "as it was");
        const int code = call(name, arguments..., &result);
        if (code != 0) {
            EXPECT_EQ(result.bytes(), "as it was") << name;
        }
        return code;
    };
    const auto good = [](const std::string& bytes) {
        return BINSTR{reinterpret_cast<unsigned char*>(const_cast<char*>(bytes.data())),
                      static_cast<int>(bytes.size())};
    };
    const int sha256 = QG_HASH_SHA256;
    std::vector<Operation> list = {{"Hash",
                                    [=](BINSTR* in) {
                                        return output("CRYPT_Hash", sha256, in);
                                    }},
                                   {"MAC",
                                    [=](BINSTR* in) {
                                        return output("CRYPT_GenMAC", sha256, text("k"), in);
                                    }},
                                   {"Encrypt",
                                    [=](BINSTR* in) {
                                        return output("CRYPT_Encrypt", in);
                                    }},
                                   {"Decrypt",
                                    [=](BINSTR* in) {
                                        return output("CRYPT_Decrypt", in);
                                    }},
                                   {"Base64",
                                    [=](BINSTR* in) {
                                        return output("BASE64_Encode", in);
                                    }},
                                   {"Base64 back",
                                    [=](BINSTR* in) {
                                        return output("BASE64_Decode", in);
                                    }},
                                   {"verified code",
                                    [=, this](BINSTR* in) {
                                        BINSTR good1 = good(data);
                                        return call("CRYPT_VerifyMAC", sha256, text("k"), &good1, in);
                                    }},
                                   {"key",
                                    [=, this](BINSTR* in) {
                                        BINSTR iv = good(signature);
                                        return call("CRYPT_SetKeyAndIV", QG_CIPHER_AES256 + 0, in, &iv);
                                    }},
                                   {"signer's public key",
                                    [=, this](BINSTR* in) {
                                        BINSTR key = good(rsaPair().privateKey);
                                        BINSTR signedData = good(data);
                                        return output("CRYPT_Sign", in, &key, sha256, &signedData);
                                    }},
                                   {"signer's private key",
                                    [=, this](BINSTR* in) {
                                        BINSTR key = good(rsaPair().publicKey);
                                        BINSTR signedData = good(data);
                                        return output("CRYPT_Sign", &key, in, sha256, &signedData);
                                    }},
                                   {"verifier's key",
                                    [=, this](BINSTR* in) {
                                        BINSTR signedData = good(data);
                                        BINSTR value = good(signature);
                                        return call("CRYPT_Verify", in, sha256, &signedData, &value);
                                    }},
                                   {"signature",
                                    [=, this](BINSTR* in) {
                                        BINSTR key = good(rsaPair().publicKey);
                                        BINSTR signedData = good(data);
                                        return call("CRYPT_Verify", &key, sha256, &signedData, in);
                                    }},
                                   {"public key",
                                    [=, this](BINSTR* in) {
                                        BINSTR plain = good(data);
                                        return output("CRYPT_AsymEncrypt", QG_KEY_PUBLIC + 0, in, &plain);
                                    }},
                                   {"private key",
                                    [=, this](BINSTR* in) {
                                        BINSTR encrypted = good(signature);
                                        return output("CRYPT_AsymDecrypt", QG_KEY_PRIVATE + 0, in,
                                                      &encrypted);
                                    }},
                                   {"encrypted", [=](BINSTR* in) {
                                        BINSTR key = good(rsaPair().privateKey);
                                        return output("CRYPT_AsymDecrypt", QG_KEY_PRIVATE + 0, &key, in);
                                    }}};
    if (!isZrtk())
        return list;
    list.push_back({"PEM", [=](BINSTR* in) {
                        return output("PEM_Encode", QG_PEM_CMS + 0, in);
                    }});
    list.push_back({"PEM back", [=](BINSTR* in) {
                        return output("PEM_Decode", in);
                    }});
    list.push_back({"own half", [=](BINSTR* in) {
                        BINSTR key = good(ecPair().publicKey);
                        return output("CRYPT_GenSharedKey", QG_AGREEMENT_ECDH + 0, in, &key);
                    }});
    list.push_back({"other's half", [=](BINSTR* in) {
                        BINSTR key = good(ecPair().privateKey);
                        return output("CRYPT_GenSharedKey", QG_AGREEMENT_ECDH + 0, &key, in);
                    }});
    list.push_back({"MAC's key", [=, this](BINSTR* in) {
                        BINSTR authenticated = good(data);
                        return output("CRYPT_GenMAC2", sha256, in, &authenticated);
                    }});
    return list;
}

TEST_P(BadInput, NullAndEmptyByteStringsAreRefused)
{
    unsigned char byte = 'x';
    for (const Operation& operation : operations()) {
        BINSTR empty = {};
        BINSTR withoutLength = {&byte, 0};
        BINSTR negative = {&byte, -1};
        BINSTR withoutBytes = {nullptr, 5};
        EXPECT_EQ(operation.run(nullptr), number(Code::BadArgument)) << operation.name;
        for (BINSTR* input : {&empty, &withoutLength, &negative, &withoutBytes})
            EXPECT_EQ(operation.run(input), number(Code::BadArgument)) << operation.name;
    }
}

TEST_P(BadInput, AnythingElseAnswersWithACodeAndLeavesTheOutput)
{
    // Keys, their beginnings, what other operations give, and noise.
    std::vector<std::string> inputs = {rsaPair().privateKey,
                                       rsaPair().publicKey,
                                       ecPair().privateKey,
                                       ecPair().publicKey,
                                       give("BASE64_Encode", rsaPair().publicKey),
                                       give("CRYPT_Encrypt", rsaPair().privateKey),
                                       std::string(100000, '\0'),
                                       std::string(5000, '0'),
                                       std::string("0\x84\x7f\xff\xff\xff", 6)};
    for (const std::string* whole : {&rsaPair().privateKey, &ecPair().publicKey, &ecPair().privateKey})
        for (std::size_t length = 1; length < whole->size(); length += 1 + length / 3)
            inputs.push_back(whole->substr(0, length));
    for (unsigned seed = 0; seed < 20; ++seed)
        inputs.push_back(noise(1 + seed * seed * 5, seed));
    for (const Operation& operation : operations()) {
        for (const std::string& bytes : inputs) {
            BINSTR input = {reinterpret_cast<unsigned char*>(const_cast<char*>(bytes.data())),
                            static_cast<int>(bytes.size())};
            const int code = operation.run(&input);
            EXPECT_NE(code, number(Code::Internal)) << operation.name;
            EXPECT_NE(code, number(Code::OutOfMemory)) << operation.name;
        }
    }
}

TEST_P(BadInput, KeysWithBytesAlteredNeverBreakAnything)
{
    const std::string data16 = noise(16);
    for (const Pair* pair : {&rsaPair(), &ecPair()}) {
        const std::size_t step = pair->privateKey.size() / 25 + 1;
        for (std::size_t i = 0; i < pair->privateKey.size(); i += step) {
            Pair altered = *pair;
            altered.privateKey[i] = static_cast<char>(altered.privateKey[i] ^ 0x81);
            ask("CRYPT_Sign", pair->publicKey, altered.privateKey, QG_HASH_SHA256 + 0, data16);
            ask("CRYPT_AsymDecrypt", QG_KEY_PRIVATE + 0, altered.privateKey, signature);
        }
        for (std::size_t i = 0; i < pair->publicKey.size(); i += 5) {
            Pair altered = *pair;
            altered.publicKey[i] = static_cast<char>(altered.publicKey[i] ^ 0x81);
            EXPECT_NE(tell("CRYPT_Verify", altered.publicKey, QG_HASH_SHA256 + 0, data16, signature), 0);
        }
    }
}

TEST_P(BadInput, MissingOutputsAreRefused)
{
    const auto none = static_cast<BINSTR*>(nullptr);
    EXPECT_EQ(tell("CRYPT_Hash", QG_HASH_SHA256 + 0, data, none), number(Code::BadArgument));
    EXPECT_EQ(tell("CRYPT_Encrypt", data, none), number(Code::BadArgument));
    EXPECT_EQ(tell("CRYPT_GenRandom", 5, none), number(Code::BadArgument));
    EXPECT_EQ(tell("CRYPT_Sign", rsaPair().publicKey, rsaPair().privateKey, QG_HASH_SHA256 + 0, data, none),
              number(Code::BadArgument));
    BinString key(library, "as it was");
    int algorithm = 7;
    EXPECT_EQ(call("CRYPT_GetKeyAndIV", &algorithm, &key, none), number(Code::BadArgument));
    EXPECT_EQ(call("CRYPT_GetKeyAndIV", static_cast<int*>(nullptr), &key, &key), number(Code::BadArgument));
    EXPECT_EQ(key.bytes(), "as it was");
    EXPECT_EQ(algorithm, 7);
}

TEST_P(BadInput, AnythingButAContextIsRefused)
{
    int other = 0;
    BinString result(library);
    for (void* handle : {static_cast<void*>(nullptr), static_cast<void*>(&other)}) {
        EXPECT_EQ(library.callBare("CRYPT_GenRandom", handle, 5, &result), number(Code::NoContext));
        EXPECT_EQ(library.callBare("CRYPT_GenKeyAndIV", handle, 64), number(Code::NoContext));
        EXPECT_EQ(library.callBare("CRYPT_ClearKeyAndIV", handle), number(Code::NoContext));
    }
}
