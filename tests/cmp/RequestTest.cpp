/* First certificates, from the server of "openssl cmp". */

#include "CmpTest.h"
#include "samplepki/Extensions.h"

using qgtk::Code;
using samplepki::Bytes;
using testing::ElementsAre;
using testing::HasSubstr;

class CmpRequests : public CmpTest
{
protected:
    void expectPair(BinString& certificate, BinString& key)
    {
        EXPECT_EQ(call("PRIKEY_CheckKeyPair", &certificate, &key), 0);
        BinString random(library);
        EXPECT_EQ(call("VID_GetRandomFromPriKey", &key, &random), 0);
        EXPECT_EQ(random.bytes().size(), 20U);
        EXPECT_EQ(call("VID_Verify", &certificate, &random, text(idNumber)), 0);
        EXPECT_EQ(call("VID_Verify", &certificate, &random, text("990101-1234568")),
                  number(Code::IdentityMismatch));
    }
};
INSTANTIATE_ZR_SIDE(CmpRequests);

TEST_P(CmpRequests, GiveBothPairs)
{
    Records records(library);
    ASSERT_EQ(request(authority, records), 0) << errorText();
    EXPECT_THAT(authority.bodies(),
                ElementsAre(InitialRequest, CertificateConfirm, InitialRequest, CertificateConfirm));
    expectPair(records.signCertificate, records.signKey);
    expectPair(records.manageCertificate, records.manageKey);
    EXPECT_THAT(textOf(records.signCertificate.bytes()), HasSubstr("Digital Signature, Non Repudiation\n"));
    EXPECT_THAT(textOf(records.manageCertificate.bytes()), HasSubstr("Key Agreement\n"));
    EXPECT_THAT(textOf(records.manageCertificate.bytes()), HasSubstr("NIST CURVE: P-256"));
    EXPECT_EQ(records.authorities.bytes(), authority.pki.ca.certificate());
    openssl({"verify", "-partial_chain", "-trusted",
             file("ca.pem", pem(authority.pki.ca.certificate(), "CERTIFICATE")),
             file("sign.pem", pem(records.signCertificate.bytes(), "CERTIFICATE"))});
}

TEST_P(CmpRequests, AskForTheSigningPairAloneWhenThereAreNoRecordsForTheOther)
{
    Records records(library);
    BINSTR* none = nullptr;
    ASSERT_EQ(call("CMP_CertRequest", text("127.0.0.1"), authority.port(), text(reference), text(secretCode),
                   text(""), text(authority.authorityFile), &records.signCertificate, &records.signKey, none,
                   none, none),
              0);
    EXPECT_THAT(authority.bodies(), ElementsAre(InitialRequest, CertificateConfirm));
    EXPECT_EQ(call("PRIKEY_CheckKeyPair", &records.signCertificate, &records.signKey), 0);
    EXPECT_EQ(textOf(records.signCertificate.bytes()).find("Alternative Name"), std::string::npos);
}

TEST_P(CmpRequests, GiveListsOfTheKindsAskedFor)
{
    const auto ask = [&](BinString& types, BinString& certificates, BinString& keys) {
        BinString authorities(library);
        return call("CMP_CertRequest2", text("127.0.0.1"), authority.port(), text(reference),
                    text(secretCode), text(idNumber), text(authority.authorityFile), &types, &certificates,
                    &keys, &authorities);
    };
    const std::string signing("\x04\x01\x01");
    const std::string management("\x04\x01\x02");
    BinString all(library), certificates(library), keys(library);
    ASSERT_EQ(ask(all, certificates, keys), 0) << errorText();
    EXPECT_EQ(all.bytes(), signing + management);
    for (int i = 0; i < 2; ++i) {
        BinString certificate(library), key(library);
        ASSERT_EQ(call("UTIL_GetObject", &certificates, i, &certificate), 0);
        ASSERT_EQ(call("UTIL_GetObject", &keys, i, &key), 0);
        expectPair(certificate, key);
    }
    BinString some(library, management), one(library), key(library);
    ASSERT_EQ(ask(some, one, key), 0) << errorText();
    EXPECT_EQ(some.bytes(), management);
    expectPair(one, key);
    BinString wrong(library, std::string("\x04\x01\x03")), before(library, "before"), same(library, "before");
    EXPECT_EQ(ask(wrong, before, same), number(Code::BadArgument));
    EXPECT_EQ(before.bytes() + same.bytes(), "beforebefore");
}

TEST_P(CmpRequests, AWrongCodeIsTold)
{
    Records records(library);
    EXPECT_EQ(request(authority, records, "code 0816"), number(Code::CmpSecretWrong));
    EXPECT_THAT(errorText(), HasSubstr("wrong pbm value"));
    EXPECT_TRUE(records.areUntouched());
}

TEST_P(CmpRequests, AnAnswerWithoutTheSecretIsNotBelieved)
{
    Records records(library);
    authority.options = [](std::size_t) {
        return std::vector<std::string>{"-send_unprotected"};
    };
    EXPECT_EQ(request(authority, records), number(Code::CmpUntrusted));
    EXPECT_TRUE(records.areUntouched());
}

TEST_P(CmpRequests, RefusalsAreToldInTheServersWords)
{
    Records records(library);
    const std::vector<std::string> refusal{"-pkistatus", "2", "-failure", "2", "-statusstring", "not today"};
    authority.options = [&](std::size_t) {
        return refusal;
    };
    EXPECT_EQ(request(authority, records), number(Code::CmpRefused));
    EXPECT_THAT(errorText(), testing::AllOf(HasSubstr("not today"), HasSubstr("badRequest")));
    authority.options = [](std::size_t) {
        return std::vector<std::string>{"-send_error"};
    };
    EXPECT_EQ(request(authority, records), number(Code::CmpRefused));
    authority.options = [](std::size_t) {
        return std::vector<std::string>{"-pkistatus", "3"};
    };
    EXPECT_NE(request(authority, records), 0);
    EXPECT_TRUE(records.areUntouched());
}

TEST_P(CmpRequests, TheFirstCertificateIsGivenBackWhenTheSecondIsRefused)
{
    Records records(library);
    authority.options = [](std::size_t transaction) {
        return transaction == 1 ? std::vector<std::string>{"-pkistatus", "2"} : std::vector<std::string>{};
    };
    EXPECT_EQ(request(authority, records), number(Code::CmpRefused));
    EXPECT_TRUE(records.areUntouched());
    EXPECT_THAT(authority.bodies(),
                ElementsAre(InitialRequest, CertificateConfirm, InitialRequest, Revocation));
}

TEST_P(CmpRequests, ServersMayWantToBeAskedAgain)
{
    Records records(library);
    authority.options = [](std::size_t) {
        return std::vector<std::string>{"-poll_count", "2", "-check_after", "0"};
    };
    EXPECT_EQ(request(authority, records), 0) << errorText();
}

TEST_P(CmpRequests, CertificatesOfOtherKeysAreRefused)
{
    Records records(library);
    authority.bend = [](Asked& asked) {
        asked.publicKey = testKey(7).publicKeyInfo();
    };
    EXPECT_EQ(request(authority, records), number(Code::CmpCertificateOther));
    EXPECT_THAT(authority.bodies(), ElementsAre(InitialRequest, CertificateConfirm)) << "the server is told";
    EXPECT_TRUE(records.areUntouched());
}

TEST_P(CmpRequests, CertificatesOfOtherAuthoritiesAreRefused)
{
    Records records(library);
    samplepki::Authority other = authority.pki.root.intermediate(samplepki::nameFromText(caName), testKey(8));
    authority.issuer = &other;
    EXPECT_EQ(request(authority, records), number(Code::CmpCertificateOther));
    EXPECT_TRUE(records.areUntouched());
}

TEST_P(CmpRequests, CertificatesOfOtherPeopleAreRefused)
{
    Records records(library);
    authority.bend = [](Asked& asked) {
        const samplepki::Identity other{.realName = "Kim", .number = "9901011234568"};
        asked.extensions = samplepki::encodeExtensions(
            {samplepki::subjectAltNameExtension({}, &other, testKey(2).random())});
    };
    EXPECT_EQ(request(authority, records), number(Code::IdentityMismatch));
    EXPECT_TRUE(records.areUntouched());
}

TEST_P(CmpRequests, TravelOverTcpToo)
{
    TestAuthority old(CmpTransport::Tcp);
    old.secret = secretCode;
    Records records(library);
    ASSERT_EQ(call("CMP_SetProtocol", QG_CMP_TCP + 0), 0);
    EXPECT_EQ(request(old, records), 0) << errorText();
    expectPair(records.signCertificate, records.signKey);
    ASSERT_EQ(call("CMP_SetProtocol", QG_CMP_HTTP + 0), 0);
    EXPECT_EQ(request(authority, records), 0) << errorText();
    EXPECT_EQ(call("CMP_SetProtocol", 2), number(Code::NotSupported));
    EXPECT_EQ(call("CMP_SetProtocol", -1), number(Code::NotSupported));
}

TEST_P(CmpRequests, TheConfigurationSaysPathAndKindOfKeys)
{
    restartWith(
        "CMP_KEY=256\nCMP_PATH=/general\n[CMP_CA7]\nCMP_PATH=pki/x\nCMP_KEY=384\n[CMP_CA8]\nCMP_KEY=1");
    Records records(library);
    ASSERT_EQ(request(authority, records), 0) << errorText();
    EXPECT_THAT(authority.head(), testing::StartsWith("POST /general HTTP"));
    ASSERT_EQ(call("CMP_SetCA", 7), 0);
    ASSERT_EQ(request(authority, records), 0) << errorText();
    EXPECT_THAT(authority.head(), testing::StartsWith("POST /pki/x HTTP"));
    EXPECT_THAT(textOf(records.signCertificate.bytes()), HasSubstr("P-384"));
    EXPECT_EQ(call("CMP_SetCA", 9), number(Code::NotSupported));
    ASSERT_EQ(request(authority.url() + "/own", 0, records), 0) << errorText();
    EXPECT_THAT(authority.head(), testing::StartsWith("POST /own HTTP"));
    ASSERT_EQ(call("CMP_SetCA", 8), 0);
    EXPECT_EQ(request(authority, records), number(Code::AlgorithmCodeUnknown));
    ASSERT_EQ(call("CMP_SetCA", 0), 0);
    restartWith("");
    ASSERT_EQ(request(authority, records), 0) << errorText();
    EXPECT_THAT(textOf(records.manageCertificate.bytes()),
                testing::AllOf(HasSubstr("2048 bit"), HasSubstr("Key Encipherment, Data Encipherment\n")));
}
