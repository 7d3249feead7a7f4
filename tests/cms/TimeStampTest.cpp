// Time stamp tokens in messages, as openssl's authority issues them.

#include "MessageTest.h"
#include "samplepki/Der.h"

using qgtk::Code;

namespace {

const char* const configuration = "[tsa]\n"
                                  "serial = serial\n"
                                  "default_policy = 1.2.3.4\n"
                                  "digests = sha1, sha256, sha384, sha512\n"
                                  "signer_digest = sha256\n";

} // namespace

class MessageTimeStamp : public MessageTest
{
protected:
    /** A token over bytes. */
    std::string token(const std::string& bytes, const std::string& hash = "-sha256")
    {
        using namespace samplepki;
        const KeyPair& pair = KeyPool::key(KeyKind::Rsa2048, 3);
        const Bytes purpose = der::sequence({der::oid("1.3.6.1.5.5.7.3.8")});
        const Bytes certificate = messagePki().ca.issue({.subject = nameFromText("cn=TSA,o=Sample,c=KR"),
                                                         .key = pair,
                                                         .extras = {{"2.5.29.37", purpose, true}}});
        const std::string signer = file("tsa.pem", pem(certificate, "CERTIFICATE"));
        file("serial", "01\n");
        const std::string settings = "serial = " + at("serial");
        std::string text = configuration;
        text.replace(text.find("serial = serial"), 15, settings);
        openssl({"ts", "-query", "-data", file("stamped", bytes), hash, "-cert", "-out", at("query")});
        openssl({"ts", "-reply", "-config", file("ts.conf", text), "-section", "tsa", "-queryfile",
                 at("query"), "-signer", signer, "-inkey", kim().keyFile, "-token_out", "-out", at("token")});
        return readFile(at("token"));
    }

    /** What is to be stamped of a signer of the message. */
    std::string toStamp(const std::string& message, int index)
    {
        EXPECT_EQ(verify(message).code, 0);
        return give("CMS_GetTBTData", index);
    }

    Answer stamp(const std::string& message, int index, const std::string& stampToken)
    {
        return ask("CMS_SetTimeStampToken", message, index, stampToken);
    }
};
INSTANTIATE_ONE_SIDE(MessageTimeStamp, gpkiSide);

TEST_P(MessageTimeStamp, IsPutIntoTheMessageAndRead)
{
    const std::string message = addSigner(ecHong(), sign(hong(), content).bytes).bytes;
    const std::string made = token(toStamp(message, 1));
    EXPECT_EQ(ask("CMS_GetTimeStampToken", 1).code, number(Code::TokenMissing));
    const Answer stamped = stamp(message, 1, made);
    ASSERT_EQ(stamped.code, 0);
    ASSERT_EQ(verify(stamped.bytes).code, 0);
    EXPECT_EQ(give("CMS_GetTimeStampToken", 1), made);
    EXPECT_EQ(ask("CMS_GetTimeStampToken", 0).code, number(Code::TokenMissing));
    EXPECT_EQ(cms(stamped.bytes, verifyOptions()), content);
    const CommandResult printed = run({"openssl", "cms", "-cmsout", "-print", "-noout", "-inform", "DER",
                                       "-in", file("message", stamped.bytes)});
    EXPECT_THAT(printed.output, testing::HasSubstr("id-smime-aa-timeStampToken"));
}

TEST_P(MessageTimeStamp, TakesThePlaceOfTheOneBefore)
{
    const std::string message = sign(hong(), content).bytes;
    const std::string bytes = toStamp(message, 0);
    const std::string first = token(bytes);
    const std::string second = token(bytes, "-sha512");
    const std::string stamped = stamp(stamp(message, 0, first).bytes, 0, second).bytes;
    ASSERT_EQ(verify(stamped).code, 0);
    EXPECT_EQ(give("CMS_GetTimeStampToken", 0), second);
    EXPECT_EQ(stamped.find(first), std::string::npos);
}

TEST_P(MessageTimeStamp, MustBeOfTheSignersSignature)
{
    const std::string message = addSigner(ecHong(), sign(hong(), content).bytes).bytes;
    const std::string made = token(toStamp(message, 1));
    EXPECT_EQ(stamp(message, 0, made).code, number(Code::TokenForeign));
    EXPECT_EQ(stamp(message, 2, made).code, number(Code::MessageIndex));
    EXPECT_EQ(stamp(message, -1, made).code, number(Code::MessageIndex));
    EXPECT_EQ(stamp(message, 0, message).code, number(Code::TokenDamaged)) << "a message is no token";
    EXPECT_EQ(stamp(message, 1, made.substr(0, made.size() - 1)).code, number(Code::TokenDamaged));
    EXPECT_EQ(stamp(message, 1, made + "x").code, number(Code::TokenDamaged));
    EXPECT_EQ(stamp("no message", 1, made).code, number(Code::MessageDamaged));
    EXPECT_EQ(stamp(envelope(hong().certificate, content, QG_CIPHER_SEED).bytes, 0, made).code,
              number(Code::MessageKind));
}

TEST_P(MessageTimeStamp, IsOfTheLastMessageThatWasVerified)
{
    for (const char* operation : {"CMS_GetTBTData", "CMS_GetTimeStampToken"})
        EXPECT_EQ(ask(operation, 0).code, number(Code::MessageIndex));
    EXPECT_EQ(ask("CMS_GetSignerCaPubs").code, number(Code::MessageIndex));
}
