// Signed messages: what we sign others verify, what others sign we verify, and nothing else passes.
// The fixture's functions are MakeSignedData, MakeSignedDataWithAddSigner, ProcessSignedData
// (ProcessSignedData2) and GetSignerCert (GetSigner).

#include "MessageTest.h"

using qgtk::Code;
using testing::HasSubstr;

class SignedMessage : public MessageTest
{
protected:
    /** A DER message that openssl signs. */
    std::string signedByOpenssl(const Holder& holder, std::vector<std::string> arguments)
    {
        arguments.insert(arguments.begin(), {"cms", "-sign", "-binary", "-in", file("content", content),
                                             "-outform", "DER", "-signer", holder.certificateFile, "-inkey",
                                             holder.keyFile, "-out", at("message")});
        openssl(arguments);
        return readFile(at("message"));
    }

    /** Whether certtool verifies a message. */
    CommandResult certtool(const std::string& message, const std::string& detached = {})
    {
        std::vector<std::string> arguments = {"certtool", "--p7-verify",       "--inder",
                                              "--infile", file("p7", message), "--load-ca-certificate",
                                              rootFile()};
        if (!detached.empty())
            arguments.insert(arguments.end(), {"--load-data", file("data", detached)});
        return run(arguments);
    }
};
INSTANTIATE_BOTH_SIDES(SignedMessage);

TEST_P(SignedMessage, OpensslVerifiesEachHashAndKey)
{
    for (const int hash : {QG_HASH_SHA1, QG_HASH_SHA224, QG_HASH_SHA256, QG_HASH_SHA384, QG_HASH_SHA512}) {
        ASSERT_EQ(call("API_SetHashAlgo", hash), 0);
        for (const Holder* holder : {&hong(), &ecHong()}) {
            const Answer message = sign(*holder, content);
            ASSERT_EQ(message.code, 0) << hash;
            EXPECT_EQ(cms(message.bytes, verifyOptions()), content) << hash;
            const Verified verified = verify(message.bytes);
            EXPECT_EQ(verified.code, 0) << hash;
            EXPECT_EQ(verified.content, content);
            EXPECT_EQ(verified.signers, 1);
            EXPECT_EQ(signerCertificate(0).bytes, holder->certificate);
        }
    }
}

TEST_P(SignedMessage, HasSha3WithRsaAlone)
{
    for (const int hash : {QG_HASH_SHA3_256, QG_HASH_SHA3_384, QG_HASH_SHA3_512}) {
        ASSERT_EQ(call("API_SetHashAlgo", hash), 0);
        const std::string message = sign(hong(), content).bytes;
        EXPECT_EQ(cms(message, verifyOptions()), content);
        EXPECT_EQ(verify(message).code, 0);
        EXPECT_EQ(sign(ecHong(), content).code, number(Code::KeyUnsuitable))
            << "OpenSSL has no name for both";
    }
}

TEST_P(SignedMessage, CerttoolVerifiesIt)
{
    for (const Holder* holder : {&hong(), &ecHong()}) {
        const CommandResult attached = certtool(sign(*holder, content).bytes);
        EXPECT_EQ(attached.status, 0) << attached.output;
        setOptions(QG_CMS_DETACHED);
        const CommandResult detached = certtool(sign(*holder, content).bytes, content);
        EXPECT_EQ(detached.status, 0) << detached.output;
        EXPECT_NE(certtool(sign(*holder, content).bytes, "Another letter").status, 0);
        setOptions(0);
    }
}

TEST_P(SignedMessage, WithoutItsContentIsVerifiedAgainstIt)
{
    setOptions(QG_CMS_DETACHED);
    const std::string message = sign(hong(), content).bytes;
    EXPECT_EQ(message.find("A letter"), std::string::npos);
    EXPECT_EQ(cms(message, verifyOptions({"-content", file("content", content)})), content);
    EXPECT_EQ(verify(message, content).code, 0);
    EXPECT_EQ(verify(message, content + "!").code, number(Code::SignatureWrong));
    EXPECT_EQ(verify(message).code, number(Code::ContentMissing));
}

TEST_P(SignedMessage, OfOpensslIsVerified)
{
    const std::vector<std::vector<std::string>> forms = {
        {"-nodetach"},
        {"-nodetach", "-md", "sha512"},
        {"-nodetach", "-noattr"},
        {"-nodetach", "-keyid"},
        {"-nodetach", "-stream"},
        {"-nodetach", "-nosmimecap", "-certfile", rootFile()},
    };
    for (const auto& form : forms) {
        for (const Holder* holder : {&hong(), &ecHong()}) {
            const Verified verified = verify(signedByOpenssl(*holder, form));
            EXPECT_EQ(verified.code, 0) << testing::PrintToString(form);
            EXPECT_EQ(verified.content, content);
            EXPECT_EQ(signerCertificate(0).bytes, holder->certificate);
        }
    }
    const std::string pss = signedByOpenssl(hong(), {"-nodetach", "-keyopt", "rsa_padding_mode:pss"});
    EXPECT_EQ(verify(pss).code, 0);
    EXPECT_EQ(verify(signedByOpenssl(hong(), {}), content).code, 0) << "without its content";
}

TEST_P(SignedMessage, OfCerttoolIsVerified)
{
    for (const Holder* holder : {&hong(), &ecHong()}) {
        for (const std::string form : {"--p7-sign", "--p7-detached-sign"}) {
            const CommandResult made =
                run({"certtool", form, "--load-certificate", holder->certificateFile, "--load-privkey",
                     holder->keyFile, "--infile", file("content", content), "--outder", "--outfile",
                     at("message")});
            ASSERT_EQ(made.status, 0) << made.output;
            const bool detached = form == "--p7-detached-sign";
            EXPECT_EQ(verify(readFile(at("message")), detached ? content : "").code, 0) << form;
            EXPECT_EQ(signerCertificate(0).bytes, holder->certificate);
        }
    }
}

TEST_P(SignedMessage, MayNameTheKeysAlgorithmOrTheSignatures)
{
    std::string message = sign(hong(), content).bytes;
    // rsaEncryption, and sha256WithRSAEncryption in its place: both are in the field.
    const std::string plain = unhex("06092a864886f70d010101");
    const std::string combined = unhex("06092a864886f70d01010b");
    const std::size_t place = message.rfind(plain);
    ASSERT_NE(place, std::string::npos);
    EXPECT_EQ(verify(message).code, 0);
    message.replace(place, combined.size(), combined);
    EXPECT_EQ(verify(message).code, 0);
    EXPECT_EQ(cms(message, verifyOptions()), content);
}

TEST_P(SignedMessage, TakesMoreSigners)
{
    std::string message = sign(hong(), content).bytes;
    message = addSigner(ecKim(), message).bytes;
    ASSERT_EQ(call("API_SetHashAlgo", QG_HASH_SHA512 + 0), 0);
    message = addSigner(kim(), message).bytes;
    EXPECT_EQ(cms(message, verifyOptions()), content);
    EXPECT_EQ(certtool(message).status, 0);
    const Verified verified = verify(message);
    EXPECT_EQ(verified.code, 0);
    EXPECT_EQ(verified.signers, 3);
    std::vector<std::string> signers;
    for (int i = 0; i < 3; ++i)
        signers.push_back(signerCertificate(i).bytes);
    EXPECT_THAT(signers,
                testing::UnorderedElementsAre(hong().certificate, kim().certificate, ecKim().certificate));
    EXPECT_EQ(signerCertificate(3).code, number(Code::MessageIndex));
    EXPECT_EQ(signerCertificate(-1).code, number(Code::MessageIndex));
}

TEST_P(SignedMessage, TakesTheSameSignerAgain)
{
    const Answer message = addSigner(hong(), sign(hong(), content).bytes);
    ASSERT_EQ(message.code, 0);
    EXPECT_EQ(verify(message.bytes).signers, 2);
    EXPECT_EQ(cms(message.bytes, verifyOptions()), content);
}

TEST_P(SignedMessage, WithSeveralSignersOfOpensslIsVerifiedAndTakesAnother)
{
    const std::string message = signedByOpenssl(
        hong(), {"-nodetach", "-signer", ecHong().certificateFile, "-inkey", ecHong().keyFile});
    EXPECT_EQ(verify(message).signers, 2);
    const Answer more = addSigner(kim(), message);
    ASSERT_EQ(more.code, 0);
    EXPECT_EQ(verify(more.bytes).signers, 3);
    EXPECT_EQ(cms(more.bytes, verifyOptions()), content);
}

TEST_P(SignedMessage, WithoutItsContentTakesMoreSignersOfTheSameHash)
{
    setOptions(QG_CMS_DETACHED);
    const std::string message = sign(hong(), content).bytes;
    const Answer more = addSigner(kim(), message);
    ASSERT_EQ(more.code, 0);
    EXPECT_EQ(verify(more.bytes, content).signers, 2);
    ASSERT_EQ(call("API_SetHashAlgo", QG_HASH_SHA384 + 0), 0);
    EXPECT_EQ(addSigner(kim(), message).code, number(Code::ContentMissing));
}

TEST_P(SignedMessage, ThatWasAlteredTakesNoSigner)
{
    std::string message = sign(hong(), content).bytes;
    message[message.find("letter")] = 'b';
    EXPECT_EQ(addSigner(kim(), message).code, number(Code::SignatureWrong));
    EXPECT_EQ(addSigner(kim(), envelope(hong().certificate, content, QG_CIPHER_AES256).bytes).code,
              number(Code::MessageKind));
}

TEST_P(SignedMessage, ThatWasAlteredIsRefusedAndForgotten)
{
    const std::string message = sign(hong(), content).bytes;
    ASSERT_EQ(verify(message).code, 0);
    std::string altered = message;
    altered[altered.find("letter")] = 'b';
    EXPECT_EQ(verify(altered).code, number(Code::SignatureWrong));
    EXPECT_THAT(errorText(), HasSubstr("cn=Hong,o=Sample,c=KR"));
    EXPECT_EQ(signerCertificate(0).code, number(Code::MessageIndex));
    altered = message;
    altered.back() ^= 1; // of the signature
    EXPECT_EQ(verify(altered).code, number(Code::SignatureWrong));
}

TEST_P(SignedMessage, WhoseAttributesNameAnotherTypeIsRefused)
{
    // The type of the content, id-data, becomes id-signedData outside of the signed attributes.
    std::string message = sign(hong(), content).bytes;
    const std::string type = unhex("06092a864886f70d010701");
    const std::size_t place = message.find(type);
    ASSERT_NE(place, std::string::npos);
    message[place + type.size() - 1] = 2;
    EXPECT_EQ(verify(message).code, number(Code::SignatureWrong));
}

TEST_P(SignedMessage, TellsWhenItWasSigned)
{
    const Answer message = sign(hong(), content, "2024-02-29 23:59:58");
    ASSERT_EQ(verify(message.bytes).code, 0);
    EXPECT_EQ(signTime(0), "2024-02-29 23:59:58");
    const CommandResult printed = run({"openssl", "cms", "-cmsout", "-print", "-noout", "-inform", "DER",
                                       "-in", file("message", message.bytes)});
    EXPECT_THAT(printed.output, HasSubstr("Feb 29 14:59:58 2024 GMT"))
        << "the same instant as it is in Seoul";
    EXPECT_EQ(sign(hong(), content, "yesterday").code, number(Code::BadTime));

    setOptions(QG_CMS_NO_ATTRIBUTES);
    ASSERT_EQ(verify(sign(hong(), content).bytes).code, 0);
    EXPECT_EQ(signTime(0), "") << "nothing but the content is signed";
}

TEST_P(SignedMessage, MayHaveNoAttributes)
{
    setOptions(QG_CMS_NO_ATTRIBUTES);
    for (const Holder* holder : {&hong(), &ecHong()}) {
        const std::string message = sign(*holder, content).bytes;
        EXPECT_EQ(cms(message, verifyOptions()), content);
        EXPECT_EQ(verify(message).code, 0);
    }
}

TEST_P(SignedMessage, MayLeaveTheCertificateToTheVerifier)
{
    setOptions(QG_CMS_NO_CERTIFICATES);
    const std::string message = sign(hong(), content).bytes;
    EXPECT_EQ(verify(message).code, number(Code::SignerCertMissing));
    ASSERT_EQ(load(hong().certificate), 0);
    EXPECT_EQ(verify(message).code, 0) << "it is loaded";
    ASSERT_EQ(call("CERT_Unload"), 0);
    ASSERT_EQ(tell(isZrtk() ? "CERT_SetCaPubs" : "API_SetCaPubs", kim().certificate + hong().certificate), 0);
    EXPECT_EQ(verify(message).code, 0) << "it is in the list";
}

TEST_P(SignedMessage, MayBringItsAuthorities)
{
    const std::string authorities = messagePki().ca.certificate() + messagePki().root.certificate();
    ASSERT_EQ(tell(isZrtk() ? "CERT_SetCaPubs" : "API_SetCaPubs", authorities), 0);
    setOptions(QG_CMS_AUTHORITIES);
    const std::string message = sign(hong(), content).bytes;
    const CommandResult printed = run(
        {"openssl", "pkcs7", "-print_certs", "-noout", "-inform", "DER", "-in", file("message", message)});
    for (const char* name : {"CN = Hong", "CN = Test CA 1", "CN = Test RootCA 1"})
        EXPECT_THAT(printed.output, HasSubstr(name));
    ASSERT_EQ(verify(message).code, 0);
    if (isZrtk())
        return;
    const std::string brought = give("CMS_GetSignerCaPubs");
    int count = 0;
    EXPECT_EQ(tell("CERT_GetCertCount", brought, &count), 0);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(brought.size(), authorities.size());
}

TEST_P(SignedMessage, IsVerifiedWithItsSignersCertificateWhenAsked)
{
    const std::string authorities = messagePki().ca.certificate();
    const std::string setList = isZrtk() ? "CERT_SetCaPubs" : "API_SetCaPubs";
    ASSERT_EQ(tell(setList, authorities), 0);
    setOptions(QG_CMS_AUTHORITIES);
    const std::string message = sign(hong(), content).bytes;
    ASSERT_EQ(call(isZrtk() ? "CERT_FreeCaPubs" : "API_FreeCaPubs"), 0);
    setOptions(QG_CMS_VERIFY_SIGNER);
    EXPECT_EQ(verify(message).code, number(Code::NoTrustedRoot));
    EXPECT_EQ(signerCertificate(0).code, number(Code::MessageIndex));
    ASSERT_EQ(tell("CERT_AddTrustedCert", messagePki().root.certificate()), 0);
    if (isZrtk()) {
        ASSERT_EQ(call("CERT_SetVerifyEnv1", 0, 0, false, text("")), 0);
    } else {
        ASSERT_EQ(call("CERT_SetVerifyEnv", 0, 0, false, text(""), text("")), 0);
    }
    EXPECT_EQ(verify(message).code, 0) << "the authority between is in the message";
    EXPECT_EQ(verify(message).content, content);
}

TEST_P(SignedMessage, OptionsThatThereAreNoneOfAreRefused)
{
    if (isZrtk()) {
        EXPECT_EQ(call("CMS_SetOption", 1024), number(Code::NotSupported));
        EXPECT_EQ(ask("CMS_MakeSignedData", 1024, hong().certificate, hong().key, content, text("")).code,
                  number(Code::NotSupported));
    } else {
        setOptions(1024);
        EXPECT_EQ(sign(hong(), content).code, number(Code::NotSupported));
    }
}

TEST_P(SignedMessage, NeedsTheKeyOfTheCertificate)
{
    EXPECT_EQ(sign({hong().certificate, kim().key, {}, {}}, content).code, number(Code::KeyMismatch));
    EXPECT_EQ(sign({hong().certificate, "no key", {}, {}}, content).code, number(Code::KeyNotPlain));
    EXPECT_EQ(sign({"no certificate", hong().key, {}, {}}, content).code, number(Code::CertDamaged));
}

TEST_P(SignedMessage, OfOneSignerIsVerifiedInOneStep)
{
    const std::string message = sign(ecHong(), content, "2024-02-29 23:59:58").bytes;
    const auto expectContent = [&](const std::string& operation, auto... time) {
        BinString data(library);
        BinString certificate(library);
        Passed<std::string> input(message);
        EXPECT_EQ(call(operation, input.get(), &data, &certificate, time...), 0);
        EXPECT_EQ(data.bytes(), content);
        EXPECT_EQ(certificate.bytes(), ecHong().certificate);
    };
    if (isZrtk()) {
        expectContent("UNI_VerifySignData");
        expectContent("WPKI_VerifyData");
        return;
    }
    std::string time(50, '#');
    expectContent("CMS_ProcessSignedData", time.data());
    EXPECT_EQ(std::string(time.c_str()), "2024-02-29 23:59:58");
    expectContent("WCMS_ProcessSignedContent", time.data());
}
