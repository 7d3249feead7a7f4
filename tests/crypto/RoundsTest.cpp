// What must hold over many calls and at once: nothing grows, nothing secret stays, contexts don't meet.

#include <thread>

#include "CryptoTest.h"
#include "MemoryDirectory.h"
#include "MemoryGrowth.h"

class Rounds : public CryptoTest
{
protected:
    /** One round of every operation, each right and wrong. */
    void everyOperation()
    {
        const int sha256 = QG_HASH_SHA256;
        const std::string data = "data of a round";
        const std::string digest = give("CRYPT_Hash", sha256, data);
        const std::string mac = give("CRYPT_GenMAC", sha256, text("key"), data);
        EXPECT_EQ(tell("CRYPT_VerifyMAC", sha256, text("key"), data, mac), 0);
        EXPECT_NE(tell("CRYPT_VerifyMAC", sha256, text("kex"), data, mac), 0);
        give("CRYPT_GenRandom", 20);
        EXPECT_EQ(give("BASE64_Decode", give("BASE64_Encode", digest)), digest);
        EXPECT_NE(ask("BASE64_Decode", std::string("=")).code, 0);
        EXPECT_EQ(call("CRYPT_GenKeyAndIV", QG_CIPHER_SEED + 0), 0);
        int algorithm = 0;
        BinString key(library);
        BinString iv(library);
        EXPECT_EQ(call("CRYPT_GetKeyAndIV", &algorithm, &key, &iv), 0);
        EXPECT_EQ(tell("CRYPT_SetKeyAndIV", algorithm, key.bytes(), iv.bytes()), 0);
        EXPECT_NE(tell("CRYPT_SetKeyAndIV", algorithm, key.bytes(), data), 0);
        EXPECT_EQ(give("CRYPT_Decrypt", give("CRYPT_Encrypt", data)), data);
        EXPECT_NE(ask("CRYPT_Decrypt", data).code, 0);
        EXPECT_EQ(call("CRYPT_ClearKeyAndIV"), 0);
    }
    void everyKeyOperation(const Pair& rsa, bool wrongToo)
    {
        const int sha256 = QG_HASH_SHA256;
        const std::string data = "data of a round";
        for (const Pair* pair : {&rsa, &ecPair()}) {
            const std::string signature = give("CRYPT_Sign", pair->publicKey, pair->privateKey, sha256, data);
            EXPECT_EQ(tell("CRYPT_Verify", pair->publicKey, sha256, data, signature), 0);
            if (wrongToo) {
                EXPECT_NE(tell("CRYPT_Verify", pair->publicKey, sha256, signature, signature), 0);
            }
        }
        const std::string encrypted = give("CRYPT_AsymEncrypt", QG_KEY_PUBLIC + 0, rsa.publicKey, data);
        EXPECT_EQ(give("CRYPT_AsymDecrypt", QG_KEY_PRIVATE + 0, rsa.privateKey, encrypted), data);
        if (wrongToo) {
            EXPECT_NE(ask("CRYPT_AsymDecrypt", QG_KEY_PRIVATE + 0, rsa.privateKey, data).code, 0);
            EXPECT_NE(ask("CRYPT_Sign", rsa.publicKey, data, sha256, data).code, 0);
        }
    }
    void everyFileOperation()
    {
        const bool zrtk = isZrtk();
        const std::string plain = memory.path() / "plain";
        const std::string out = memory.path() / "out";
        writeFile(plain, "data of a round");
        EXPECT_EQ(call("CRYPT_GenKeyAndIV", QG_CIPHER_ARIA256 + 0), 0);
        EXPECT_EQ(call(zrtk ? "CRYPT_EncryptFile" : "CRYPT_Encrypt_File", text(plain), text(out)), 0);
        EXPECT_EQ(zrtk ? call("CRYPT_DecryptFile", text(out), text(out))
                       : call("CRYPT_Decrypt_File", text(out), text(out)),
                  0);
        EXPECT_NE(zrtk ? call("CRYPT_DecryptFile", text(plain), text(out))
                       : call("CRYPT_Decrypt_File", text(out), text(plain)),
                  0);
        EXPECT_EQ(tell(zrtk ? "CRYPT_SignFile" : "CRYPT_Sign_File", ecPair().publicKey, ecPair().privateKey,
                       QG_HASH_SHA256 + 0, text(plain), text(out)),
                  0);
        EXPECT_EQ(tell(zrtk ? "CRYPT_VerifyFile" : "CRYPT_Verify_File", ecPair().publicKey,
                       QG_HASH_SHA256 + 0, text(plain), text(out)),
                  0);
        if (zrtk)
            give("CRYPT_HashFile", QG_HASH_SHA1 + 0, text(plain));
    }
    void everyOperationOfZrtk()
    {
        BinString privateKey(library);
        BinString publicKey(library);
        EXPECT_EQ(call("CRYPT_GenKeyPair", QG_KEYPAIR_P256 + 0, &privateKey, &publicKey), 0);
        give("CRYPT_GenSharedKey", QG_AGREEMENT_ECDH + 0, privateKey.bytes(), ecPair().publicKey);
        EXPECT_EQ(give("PEM_Decode", give("PEM_Encode", QG_PEM_PUBLIC_KEY + 0, publicKey.bytes())),
                  publicKey.bytes());
        EXPECT_NE(ask("PEM_Decode", publicKey.bytes()).code, 0);
        give("CRYPT_GenMAC2", QG_HASH_SHA512 + 0, publicKey.bytes(), publicKey.bytes());
        EXPECT_EQ(call("CRYPT_SetPaddingType", QG_PADDING_PKCS7 + 0), 0);
        EXPECT_EQ(call("CRYPT_SetRSAVersion", QG_RSA_V15 + 0), 0);
        EXPECT_EQ(call("CRYPT_SetEnvChangeIV"), 0);
    }

    /** The operations flush each file to its medium, which is not what is looked at here. */
    const MemoryDirectory memory{"qgtk-rounds"};
};
INSTANTIATE_BOTH_SIDES(Rounds);

TEST_P(Rounds, OperationsOnBytesLeaveNothing)
{
    memory_growth::expectNone([this] { everyOperation(); });
}

TEST_P(Rounds, OperationsWithKeysLeaveNothing)
{
    // A short key: what is left behind does not depend on it, the time does.
    const Pair rsa = opensslPair({"-algorithm", "RSA", "-pkeyopt", "rsa_keygen_bits:1024"});
    int round = 0;
    memory_growth::expectNone([&] { everyKeyOperation(rsa, ++round % 10 == 0); });
}

TEST_P(Rounds, OperationsOnFilesLeaveNothing)
{
    memory_growth::expectNone([this] { everyFileOperation(); });
}

TEST_P(Rounds, OperationsOfOneSideLeaveNothing)
{
    if (!isZrtk())
        GTEST_SKIP() << "the other side has none of its own";
    memory_growth::expectNone([this] { everyOperationOfZrtk(); });
}

TEST_P(Rounds, TwoContextsOnTwoThreadsDoNotMeet)
{
    const auto work = [this](int algorithm, const std::string& key) {
        void* own = nullptr;
        ASSERT_EQ(library.callBare("API_Init", &own, text(workDirectory)), 0);
        Passed<std::string> keyArgument(key);
        const std::string iv(16, 'i');
        Passed<std::string> ivArgument(iv);
        ASSERT_EQ(library.callBare("CRYPT_SetKeyAndIV", own, algorithm, keyArgument.get(), ivArgument.get()),
                  0);
        const std::string data = noise(1000);
        Passed<std::string> plain(data);
        std::string first;
        for (int i = 0; i < 300; ++i) {
            BinString encrypted(library);
            BinString again(library);
            BinString signature(library);
            Passed<std::string> publicKey(rsaPair().publicKey);
            Passed<std::string> privateKey(rsaPair().privateKey);
            EXPECT_EQ(library.callBare("CRYPT_Encrypt", own, plain.get(), &encrypted), 0);
            EXPECT_EQ(library.callBare("CRYPT_Decrypt", own, &encrypted, &again), 0);
            EXPECT_EQ(again.bytes(), data);
            EXPECT_EQ(library.callBare("CRYPT_Sign", own, publicKey.get(), privateKey.get(), 4, plain.get(),
                                       &signature),
                      0);
            EXPECT_EQ(library.callBare("CRYPT_Verify", own, publicKey.get(), 4, plain.get(), &signature), 0);
            if (i == 0)
                first = encrypted.bytes();
            EXPECT_EQ(encrypted.bytes(), first);
        }
        EXPECT_EQ(library.callBare("API_Finish", own), 0);
    };
    rsaPair();
    std::thread one(work, QG_CIPHER_SEED + 0, std::string(16, 'a'));
    std::thread other(work, QG_CIPHER_AES256 + 0, std::string(32, 'b'));
    one.join();
    other.join();
}
