// Wireless messages: the same standard, with the keys of elliptic curves in mind, and the sender inside.

#include "MessageTest.h"

using qgtk::Code;

class WirelessMessage : public MessageTest
{
protected:
    Answer signed_(const Holder& holder)
    {
        return isZrtk() ? ask("WPKI_SignData", holder.certificate, holder.key, content)
                        : ask("WCMS_MakeSignedContent", holder.certificate, holder.key, content, text(""));
    }

    /** An envelope; the sender is of one side alone. */
    Answer sealed(const Holder& recipient, const Holder& sender)
    {
        const int cipher = QG_CIPHER_SEED;
        return isZrtk() ? ask("WPKI_EncryptData", recipient.certificate, content, cipher, sender.certificate,
                              sender.key)
                        : ask("WCMS_MakeWapEnvelopedData", recipient.certificate, content, cipher);
    }

    Answer opened(const Holder& holder, const std::string& message)
    {
        return ask(isZrtk() ? "WPKI_DecryptData" : "WCMS_ProcessWapEnvelopedData", holder.certificate,
                   holder.key, message);
    }
};
INSTANTIATE_BOTH_SIDES(WirelessMessage);

/** Wireless messages of the side that knows their sender. */
class SentMessage : public WirelessMessage
{};
INSTANTIATE_ONE_SIDE(SentMessage, zrtkSide);

TEST_P(WirelessMessage, IsSigned)
{
    for (const Holder* holder : {&ecHong(), &hong()}) {
        const Answer message = signed_(*holder);
        ASSERT_EQ(message.code, 0);
        EXPECT_EQ(cms(message.bytes, verifyOptions()), content);
        BinString data(library);
        BinString certificate(library);
        Passed<std::string> input(message.bytes);
        EXPECT_EQ(isZrtk() ? call("WPKI_VerifyData", input.get(), &data, &certificate)
                           : call("WCMS_ProcessSignedContent", input.get(), &data, &certificate,
                                  static_cast<char*>(nullptr)),
                  0);
        EXPECT_EQ(data.bytes(), content);
        EXPECT_EQ(certificate.bytes(), holder->certificate);
    }
}

TEST_P(WirelessMessage, IsEncrypted)
{
    for (const Holder* recipient : {&ecKim(), &kim()}) {
        const Answer message = sealed(*recipient, ecHong());
        ASSERT_EQ(message.code, 0);
        EXPECT_EQ(opened(*recipient, message.bytes).bytes, content);
        EXPECT_EQ(opened(hong(), message.bytes).code, number(Code::NotRecipient));
        const std::string inside =
            cms(message.bytes,
                {"-decrypt", "-binary", "-recip", recipient->certificateFile, "-inkey", recipient->keyFile});
        if (isZrtk())
            EXPECT_EQ(cms(inside, verifyOptions()), content) << "a signed message in an envelope";
        else
            EXPECT_EQ(inside, content);
    }
}

TEST_P(SentMessage, TellsItsSender)
{
    const std::string message = sealed(ecKim(), ecHong()).bytes;
    ASSERT_EQ(opened(ecKim(), message).code, 0);
    EXPECT_EQ(signerCertificate(0).bytes, ecHong().certificate);
    const std::string unsigned_ = envelope(ecKim().certificate, content, QG_CIPHER_SEED).bytes;
    EXPECT_EQ(opened(ecKim(), unsigned_).code, number(Code::MessageDamaged)) << "nobody answers for it";
    const std::string letter = sign(hong(), content).bytes;
    const std::string altered =
        envelope(ecKim().certificate, letter.substr(0, letter.size() - 1) + "x", QG_CIPHER_SEED).bytes;
    EXPECT_EQ(opened(ecKim(), altered).code, number(Code::SignatureWrong));
    setOptions(QG_CMS_DETACHED);
    const std::string empty =
        envelope(ecKim().certificate, sign(hong(), content).bytes, QG_CIPHER_SEED).bytes;
    EXPECT_EQ(opened(ecKim(), empty).code, number(Code::ContentMissing));
}

TEST_P(SentMessage, VerifiesCertificates)
{
    EXPECT_EQ(tell("WPKI_VerifyCert", ecHong().certificate), number(Code::NoTrustedRoot));
    ASSERT_EQ(tell("CERT_AddTrustedCert", messagePki().root.certificate()), 0);
    ASSERT_EQ(tell("CERT_SetCaPubs", messagePki().ca.certificate()), 0);
    ASSERT_EQ(call("CERT_SetVerifyEnv1", 0, 0, false, text("")), 0);
    EXPECT_EQ(tell("WPKI_VerifyCert", ecHong().certificate), 0);
    EXPECT_EQ(tell("WPKI_VerifyCert", std::string("no certificate")), number(Code::CertDamaged));
}

TEST_P(SentMessage, OpensOneStepEnvelopes)
{
    const std::string message = envelope(ecKim().certificate, content, QG_CIPHER_SEED).bytes;
    EXPECT_EQ(ask("UNI_DecryptEnvData", ecKim().certificate, ecKim().key, message).bytes, content);
    const Answer forOne = ask("CMS_EncryptData", 0, hong().certificate, content, QG_CIPHER_AES256 + 0);
    EXPECT_EQ(ask("UNI_DecryptEnvData", hong().certificate, hong().key, forOne.bytes).bytes, content);
}
