// Messages whose signature is made elsewhere, as on a token.

#include "MessageTest.h"

using qgtk::Code;

class ComposedMessage : public MessageTest
{
protected:
    Answer bytesToSign(const Holder& holder, int options = 0)
    {
        return ask("CMS_MakeTBSData", options, holder.certificate, content, text("2024-02-29 23:59:58"));
    }

    /** What a token would do: openssl signs bytes with a key. */
    std::string signature(const Holder& holder, const std::string& bytes, const std::string& hash = "-sha256")
    {
        openssl({"dgst", hash, "-sign", holder.keyFile, "-out", at("signature"), file("bytes", bytes)});
        return readFile(at("signature"));
    }

    Answer compose(const std::string& made) { return ask("CMS_ComposeSignedData", made); }

    void expectGood(const std::string& message)
    {
        EXPECT_EQ(cms(message, verifyOptions()), content);
        EXPECT_EQ(verify(message).content, content);
    }
};
INSTANTIATE_ONE_SIDE(ComposedMessage, zrtkSide);

TEST_P(ComposedMessage, TakesASignatureFromElsewhere)
{
    for (const Holder* holder : {&hong(), &ecHong()}) {
        for (const int options : {0, QG_CMS_NO_ATTRIBUTES + 0}) {
            const Answer bytes = bytesToSign(*holder, options);
            ASSERT_EQ(bytes.code, 0);
            const Answer message = compose(signature(*holder, bytes.bytes));
            ASSERT_EQ(message.code, 0);
            expectGood(message.bytes);
            EXPECT_EQ(signTime(0), options == 0 ? "2024-02-29 23:59:58" : "");
            EXPECT_EQ(signerCertificate(0).bytes, holder->certificate);
        }
    }
}

TEST_P(ComposedMessage, TakesTheSignatureOfTheRawOperation)
{
    const std::string bytes = bytesToSign(hong()).bytes;
    const std::string made = give("CRYPT_Sign", hong().certificate, hong().key, QG_HASH_SHA256 + 0, bytes);
    expectGood(compose(made).bytes);
}

TEST_P(ComposedMessage, MayBeWithoutItsContentOrCertificate)
{
    const std::string bytes = bytesToSign(hong(), QG_CMS_DETACHED | QG_CMS_NO_CERTIFICATES).bytes;
    const Answer message = compose(signature(hong(), bytes));
    ASSERT_EQ(message.code, 0);
    EXPECT_EQ(message.bytes.find("A letter"), std::string::npos);
    EXPECT_EQ(verify(message.bytes, content).code, number(Code::SignerCertMissing));
    ASSERT_EQ(load(hong().certificate), 0);
    EXPECT_EQ(verify(message.bytes, content).code, 0);
}

TEST_P(ComposedMessage, TakesTheHashOfTheContext)
{
    ASSERT_EQ(call("API_SetHashAlgo", QG_HASH_SHA512 + 0), 0);
    const std::string bytes = bytesToSign(hong()).bytes;
    ASSERT_EQ(call("API_SetHashAlgo", QG_HASH_SHA256 + 0), 0);
    EXPECT_EQ(compose(signature(hong(), bytes, "-sha256")).code, number(Code::SignatureWrong))
        << "the message began with another hash";
    expectGood(compose(signature(hong(), bytes, "-sha512")).bytes);
}

TEST_P(ComposedMessage, RefusesAnyOtherSignatureAndWaitsOn)
{
    const std::string bytes = bytesToSign(hong()).bytes;
    EXPECT_EQ(compose(signature(kim(), bytes)).code, number(Code::SignatureWrong));
    EXPECT_EQ(compose(signature(hong(), bytes + "x")).code, number(Code::SignatureWrong));
    EXPECT_EQ(compose("no signature").code, number(Code::SignatureWrong));
    expectGood(compose(signature(hong(), bytes)).bytes);
    EXPECT_EQ(compose(signature(hong(), bytes)).code, number(Code::NothingPending))
        << "each is composed once";
}

TEST_P(ComposedMessage, NeedsBytesThatWereMade)
{
    EXPECT_EQ(compose("signature").code, number(Code::NothingPending));
    EXPECT_EQ(ask("CMS_MakeTBSData", 0, std::string("no certificate"), content, text("")).code,
              number(Code::CertDamaged));
    EXPECT_EQ(ask("CMS_MakeTBSData", 0, hong().certificate, content, text("soon")).code,
              number(Code::BadTime));
    EXPECT_EQ(compose("signature").code, number(Code::NothingPending));
}
