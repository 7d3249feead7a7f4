// What must hold over many calls on a token and at once: nothing of ours grows, contexts don't meet.
//
// SoftHSM itself keeps a few hundred bytes of every object that is deleted, as the secrets of agreements are,
// until it is ended. So each round ends it.

#include <thread>

#include "MemoryDirectory.h"
#include "MemoryGrowth.h"
#include "TokenTest.h"

using qgtk::Code;

class TokenRounds : public TokenTest
{
protected:
    void SetUp() override
    {
        // SoftHSM flushes what it writes to its medium, which is not what is looked at here.
        tokens = memory.path() / "tokens";
        std::filesystem::create_directory(tokens);
        TokenTest::SetUp();
        makeOpenToken();
        ASSERT_EQ(write({hong().certificate, hong().key}), 0);
        ASSERT_EQ(write({ecHong().certificate, ecHong().key}), 0);
        rsaId = idOf(hong().certificate);
        curveId = idOf(ecHong().certificate);
        sealed = envelope(hong().certificate + ecHong().certificate, content, QG_CIPHER_AES128).bytes;
        both = signAndEnvelope(ecKim(), hong().certificate, content, QG_CIPHER_AES128).bytes;
        slot = slots().front();
    }

    /** Many rounds, each on a module that is made ready and ended again. */
    void expectNoGrowth(const std::function<void()>& round)
    {
        memory_growth::expectNone(
            [&] {
                round();
                EXPECT_EQ(call("MEDIA_Unload"), 0);
                EXPECT_EQ(loadModule(), 0);
                EXPECT_EQ(open(slot), 0);
            },
            memory_growth::rounds() / 2);
    }

    const MemoryDirectory memory{"qgtk-tokens"};
    unsigned long slot = 0;
    std::string rsaId;
    std::string curveId;
    std::string sealed;
    std::string both;
};
INSTANTIATE_ZR_SIDE(TokenRounds);

TEST_P(TokenRounds, ReadingAndKeysLeaveNothing)
{
    const std::string encrypted = read("Encrypt", rsaId, content);
    const std::string random = give("VID_GetRandomFromPriKey", ecHong().key);
    expectNoGrowth([&] {
        EXPECT_EQ(count(), 2);
        EXPECT_EQ(info(0).code, 0);
        EXPECT_EQ(info(2).code, number(Code::CertListIndex));
        EXPECT_EQ(read("ReadCert", rsaId), hong().certificate);
        EXPECT_EQ(read("ReadCert", "none"), refused(Code::TokenObjectMissing));
        EXPECT_EQ(read("ReadRandomForVID", curveId), random);
        EXPECT_EQ(read("Decrypt", rsaId, encrypted), content);
        EXPECT_EQ(read("Decrypt", rsaId, content), refused(Code::NotDecryptable));
        EXPECT_NE(read("Sign", curveId, content), refused(Code::KeyUnsuitable));
    });
}

TEST_P(TokenRounds, MessagesLeaveNothing)
{
    expectNoGrowth([&] {
        EXPECT_EQ(verify(read("SignData", rsaId, content)).code, 0);
        EXPECT_EQ(verify(read("SignData", curveId, content)).code, 0);
        EXPECT_EQ(read("DecryptData", rsaId, sealed), content);
        EXPECT_EQ(read("DecryptData", curveId, sealed), content);
        EXPECT_EQ(read("DecryptData", rsaId, both), refused(Code::MessageKind));
        EXPECT_EQ(read("DecryptData", curveId, content), refused(Code::MessageDamaged));
        EXPECT_EQ(read("SignData", "none", content), refused(Code::TokenObjectMissing));
        EXPECT_EQ(ask("PKCS11_SignAndEnvData", curveId, hong().certificate, content).code, 0);
        BinString opened(library);
        Passed<std::string> id(rsaId);
        Passed<std::string> message(both);
        EXPECT_EQ(token("VerifyAndDecData", id.get(), message.get(), &opened, static_cast<BINSTR*>(nullptr)),
                  0);
    });
}

TEST_P(TokenRounds, SessionsAndPairsLeaveNothing)
{
    const std::string madeId = "A";
    expectNoGrowth([&] {
        Passed<std::string> id(rsaId);
        EXPECT_EQ(token("DeleteCertAndPriKey", id.get()), 0);
        EXPECT_EQ(write({hong().certificate, kim().key}), number(Code::KeyMismatch));
        EXPECT_EQ(write({hong().certificate, hong().key}), 0);
        EXPECT_EQ(write({hong().certificate, hong().key}), number(Code::TokenObjectExists));
        Passed<std::string> made(madeId);
        EXPECT_EQ(token("GenKeyPair", QG_KEYPAIR_P256 + 0, QG_TOKEN_SIGNING + 0, made.get()), 0);
        EXPECT_EQ(token("DeleteCertAndPriKey", made.get()), 0);
        EXPECT_EQ(token("Logout"), 0);
        EXPECT_EQ(token("Login", text("999999")), number(Code::WrongPin));
        EXPECT_EQ(read("SignData", rsaId, content), refused(Code::TokenLoggedOut));
        EXPECT_EQ(token("Login", text(userPin)), 0);
        EXPECT_EQ(token("ChangePIN", text(userPin), text("654321")), 0);
        EXPECT_EQ(token("ChangePIN", text("654321"), text(userPin)), 0);
    });
}

TEST_P(TokenRounds, TwoContextsOnTwoThreadsDoNotMeet)
{
    const auto work = [this](const std::string& id) {
        void* own = nullptr;
        ASSERT_EQ(library.callBare("API_Init", &own, text(workDirectory)), 0);
        ASSERT_EQ(library.callBare("MEDIA_Load", own, text(QGTK_SOFTHSM_FILE)), 0);
        ASSERT_EQ(library.callBare("PKCS11_OpenSessionWithSlotID", own, slot, text(userPin), 0), 0);
        Passed<std::string> key(id);
        Passed<std::string> data(content);
        Passed<std::string> message(sealed);
        for (int i = 0; i < memory_growth::rounds() / 10; ++i) {
            BinString signedMessage(library);
            BinString opened(library);
            BinString verified(library);
            int count = 0;
            EXPECT_EQ(library.callBare("PKCS11_SignData", own, key.get(), data.get(), &signedMessage), 0);
            EXPECT_EQ(library.callBare("CMS_ProcessSignedData", own, 0, &signedMessage, &verified, &count),
                      0);
            EXPECT_EQ(library.callBare("PKCS11_DecryptData", own, key.get(), message.get(), &opened), 0);
            EXPECT_EQ(opened.bytes(), content);
        }
        EXPECT_EQ(library.callBare("API_Finish", own), 0);
    };
    std::thread one(work, rsaId);
    std::thread other(work, curveId);
    one.join();
    other.join();
}
