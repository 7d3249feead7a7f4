// What must hold over many calls and at once: nothing grows, nothing secret stays, contexts don't meet.

#include <thread>

#include "MemoryDirectory.h"
#include "MemoryGrowth.h"
#include "MessageTest.h"

namespace {

/** Signing with RSA takes a millisecond: a part of the rounds shows as well what grows. */
int slowRounds()
{
    return memory_growth::rounds() / 2;
}

} // namespace

class MessageRounds : public MessageTest
{
protected:
    void SetUp() override
    {
        MessageTest::SetUp();
        ASSERT_EQ(tell("CRYPT_SetKeyAndIV", QG_CIPHER_AES256 + 0, noise(32), noise(16)), 0);
        signedMessage = sign(ecHong(), content).bytes;
        sealed = envelope(ecHong().certificate, content, QG_CIPHER_SEED).bytes;
        both = signAndEnvelope(ecHong(), hong().certificate, content, QG_CIPHER_AES128).bytes;
    }

    std::string path(const char* name) const { return memory.path() / name; }

    /** The operations flush each file to its medium, which is not what is looked at here. */
    const MemoryDirectory memory{"qgtk-messages"};
    std::string signedMessage;
    std::string sealed;
    std::string both;
};
INSTANTIATE_BOTH_SIDES(MessageRounds);

TEST_P(MessageRounds, ReadingAndSigningWithCurvesLeaveNothing)
{
    std::string damaged = signedMessage;
    damaged.back() ^= 1;
    memory_growth::expectNone([&] {
        EXPECT_EQ(verify(signedMessage).code, 0);
        EXPECT_NE(verify(damaged).code, 0);
        EXPECT_NE(verify(sealed).code, 0);
        signerCertificate(0);
        EXPECT_EQ(sign(ecHong(), content).code, 0);
        if (isZrtk()) {
            int count = 0;
            EXPECT_EQ(tell("CMS_GetEnvDataRecipCnt", sealed, &count), 0);
        }
    });
}

TEST_P(MessageRounds, EncryptingUnderAKeyLeavesNothing)
{
    memory_growth::expectNone([&] {
        BinString message(library);
        Passed<std::string> data(content);
        EXPECT_EQ(isZrtk()
                      ? call("CMS_EncryptData", 0, static_cast<BINSTR*>(nullptr), data.get(), 0, &message)
                      : call("CMS_MakeEncryptedData", data.get(), &message),
                  0);
        EXPECT_EQ(ask("CMS_ProcessEncryptedData", noise(32), message.bytes()).bytes, content);
        EXPECT_NE(ask("CMS_ProcessEncryptedData", content, message.bytes()).code, 0);
    });
}

TEST_P(MessageRounds, EnvelopesLeaveNothing)
{
    memory_growth::expectNone(
        [&] {
            EXPECT_EQ(open(ecHong(), sealed).bytes, content);
            EXPECT_NE(open(ecKim(), sealed).code, 0);
            EXPECT_NE(open(ecHong(), signedMessage).code, 0);
            EXPECT_EQ(openSigned(hong(), both).bytes, content);
            EXPECT_NE(openSigned(kim(), both).code, 0);
            EXPECT_EQ(envelope(hong().certificate + ecHong().certificate, content, QG_CIPHER_ARIA192).code,
                      0);
            EXPECT_EQ(signAndEnvelope(ecHong(), hong().certificate, content, QG_CIPHER_3DES).code, 0);
        },
        slowRounds());
}

TEST_P(MessageRounds, SignersAndOwnOperationsLeaveNothing)
{
    memory_growth::expectNone(
        [&] {
            EXPECT_EQ(verify(addSigner(ecKim(), signedMessage).bytes).signers, 2);
            if (isZrtk()) {
                const std::string bytes = give("CMS_MakeTBSData", 0, ecHong().certificate, content, text(""));
                EXPECT_NE(ask("CMS_ComposeSignedData", content).code, 0);
                give("CMS_ComposeSignedData",
                     give("CRYPT_Sign", ecHong().certificate, ecHong().key, QG_HASH_SHA256 + 0, bytes));
                const std::string message = give("WPKI_EncryptData", ecKim().certificate, content,
                                                 QG_CIPHER_SEED + 0, ecHong().certificate, ecHong().key);
                give("WPKI_DecryptData", ecKim().certificate, ecKim().key, message);
                return;
            }
            const std::string asked = give("SIGEA_MakeChallenge");
            const std::string response =
                give("SIGEA_MakeResponse", asked, ecHong().certificate, ecHong().key);
            EXPECT_EQ(tell("SIGEA_VerifyResponse", response, asked, ecHong().certificate), 0);
            EXPECT_NE(tell("SIGEA_VerifyResponse", response, asked, ecHong().certificate), 0);
            EXPECT_NE(ask("CMS_SetTimeStampToken", signedMessage, 0, signedMessage).code, 0);
        },
        slowRounds());
}

TEST_P(MessageRounds, FilesLeaveNothing)
{
    writeFile(path("source"), content);
    memory_growth::expectNone(
        [&] {
            EXPECT_EQ(signFile(ecHong(), path("source"), path("signed"), true), 0);
            EXPECT_EQ(verifyFile(path("signed"), path("content"), true), 0);
            EXPECT_EQ(signFile(ecHong(), path("source"), path("bare"), false), 0);
            EXPECT_EQ(verifyFile(path("bare"), path("source"), false), 0);
            EXPECT_NE(verifyFile(path("bare"), path("signed"), false), 0);
            EXPECT_EQ(envelopeFile(ecHong().certificate, path("source"), QG_CIPHER_SEED, path("sealed")), 0);
            EXPECT_EQ(openFile(ecHong(), path("sealed"), path("content")), 0);
            EXPECT_NE(openFile(ecKim(), path("sealed"), path("content")), 0);
            EXPECT_NE(openFile(ecHong(), path("source"), path("content")), 0);
            EXPECT_EQ(envelopeFiles(ecHong().certificate, path("source"), QG_CIPHER_AES128, path("sealed"),
                                    path("encrypted")),
                      0);
            EXPECT_EQ(openFiles(ecHong(), path("sealed"), path("encrypted"), path("content")), 0);
        },
        slowRounds());
}

TEST_P(MessageRounds, TwoContextsOnTwoThreadsDoNotMeet)
{
    const auto work = [this](const Holder& holder) {
        void* own = nullptr;
        ASSERT_EQ(library.callBare("API_Init", &own, text(workDirectory)), 0);
        Passed<std::string> certificate(holder.certificate);
        Passed<std::string> key(holder.key);
        const std::string letter = noise(1000);
        Passed<std::string> data(letter);
        for (int i = 0; i < 200; ++i) {
            BinString message(library);
            BinString envelopeBytes(library);
            BinString again(library);
            BinString plain(library);
            const int cipher = QG_CIPHER_SEED;
            int count = 0;
            const bool zrtk = isZrtk();
            EXPECT_EQ(zrtk ? library.callBare("CMS_MakeSignedData", own, 0, certificate.get(), key.get(),
                                              data.get(), text(""), &message)
                           : library.callBare("CMS_MakeSignedData", own, certificate.get(), key.get(),
                                              data.get(), text(""), &message),
                      0);
            EXPECT_EQ(zrtk ? library.callBare("CMS_ProcessSignedData", own, 0, &message, &plain, &count)
                           : library.callBare("CMS_ProcessSignedData2", own, &message, &plain, &count),
                      0);
            EXPECT_EQ(plain.bytes(), letter);
            EXPECT_EQ(zrtk ? library.callBare("CMS_MakeEnvelopedData", own, 0, certificate.get(), &message,
                                              cipher, &envelopeBytes)
                           : library.callBare("CMS_MakeEnvelopedData", own, certificate.get(), &message,
                                              cipher, &envelopeBytes),
                      0);
            EXPECT_EQ(library.callBare("CMS_ProcessEnvelopedData", own, certificate.get(), key.get(),
                                       &envelopeBytes, &again),
                      0);
            EXPECT_EQ(again.bytes(), message.bytes());
        }
        EXPECT_EQ(library.callBare("API_Finish", own), 0);
    };
    std::thread one(work, hong());
    std::thread other(work, ecHong());
    one.join();
    other.join();
}
