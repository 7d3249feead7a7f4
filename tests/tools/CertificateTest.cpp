// What samplepki issues, read back by programs that are not ours: openssl and GnuTLS' certtool.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Command.h"
#include "TestHome.h"
#include "samplepki/Authority.h"

using namespace samplepki;
using testing::HasSubstr;
using testing::Not;

namespace {

/** An issuer below a root, and a request for a holder of its own key. */
class Certificates : public testing::Test
{
protected:
    std::string write(const std::string& name, const Bytes& bytes)
    {
        writeFile(directory / name, bytes);
        return (directory / name).string();
    }

    std::string opensslText(const Bytes& certificate)
    {
        return runCommand({"openssl", "x509", "-inform", "der", "-in", write("a.der", certificate), "-noout",
                           "-text", "-nameopt", "utf8,sep_comma_plus"})
            .output;
    }

    std::string certtoolText(const Bytes& certificate)
    {
        const auto result =
            runCommand({"certtool", "--inder", "--infile", write("a.der", certificate), "-i"});
        EXPECT_EQ(result.status, 0) << result.output;
        return result.output;
    }

    std::string pemFile(const std::string& name, const Bytes& certificate)
    {
        const std::string pem = (directory / (name + ".pem")).string();
        runCommand({"openssl", "x509", "-inform", "der", "-in", write(name, certificate), "-out", pem});
        return pem;
    }

    std::string verified(const Bytes& certificate, const Authority& authority)
    {
        return runCommand({"openssl", "verify", "-CAfile", pemFile("root", root.certificate()), "-untrusted",
                           pemFile("issuer", authority.certificate()), pemFile("leaf", certificate)})
            .output;
    }

    std::filesystem::path directory = TestHome::scratch("certificates");
    Authority root = Authority::root(nameFromText("cn=Sample Root,ou=Central,o=KISA,c=KR"), KeyPool::key());
    Authority issuer = root.intermediate(nameFromText("cn=yessignCA Class 1,ou=AccreditedCA,o=yessign,c=kr"),
                                         KeyPool::key(KeyKind::Rsa2048, 1));
    Request request{.subject = nameFromText("cn=홍길동()0010041,ou=HNB,ou=personal4IB,o=yessign,c=kr"),
                    .key = KeyPool::key(KeyKind::Rsa2048, 2)};
};

TEST_F(Certificates, AHoldersCertificateVerifiesUpToTheRoot)
{
    EXPECT_THAT(verified(issuer.issue(request), issuer), HasSubstr(": OK"));
}

TEST_F(Certificates, AnEllipticIssuerSignsToo)
{
    Authority elliptic =
        root.intermediate(nameFromText("cn=EC CA,o=yessign,c=kr"), KeyPool::key(KeyKind::EcP256));
    EXPECT_THAT(verified(elliptic.issue(request), elliptic), HasSubstr(": OK"));
}

TEST_F(Certificates, EachKeyKindIsReadByOpenssl)
{
    const std::pair<KeyKind, const char*> kinds[] = {{KeyKind::Rsa1024, "(1024 bit)"},
                                                     {KeyKind::Rsa2048, "(2048 bit)"},
                                                     {KeyKind::Rsa4096, "(4096 bit)"},
                                                     {KeyKind::EcP256, "prime256v1"}};
    for (const auto& [kind, text] : kinds) {
        request.key = KeyPool::key(kind);
        EXPECT_THAT(opensslText(issuer.issue(request)), HasSubstr(text));
    }
}

TEST_F(Certificates, TheSignatureTakesTheHashAskedFor)
{
    for (const auto& [digest, name] : {std::pair("SHA1", "sha1With"), std::pair("SHA256", "sha256With"),
                                       std::pair("SHA512", "sha512With")}) {
        request.digest = digest;
        EXPECT_THAT(opensslText(issuer.issue(request)), HasSubstr(std::string(name) + "RSAEncryption"));
    }
}

TEST_F(Certificates, NamesAreReadInEachStringTypeThatHasAStandard)
{
    for (const auto type : {StringType::Utf8, StringType::Bmp}) {
        request.subject = nameFromText("cn=홍길동,o=은행,c=kr", type);
        EXPECT_THAT(opensslText(issuer.issue(request)), HasSubstr("Subject: C=kr,O=은행,CN=홍길동"));
        certtoolText(issuer.issue(request));
    }
    request.subject = nameFromText("cn=HONG,o=BANK,c=kr", StringType::Printable);
    EXPECT_THAT(opensslText(issuer.issue(request)), HasSubstr("Subject: C=kr,O=BANK,CN=HONG"));
}

TEST_F(Certificates, EucKrBytesStandInTheNameUnderEitherTag)
{
    const Bytes hong = "\xC8\xAB\xB1\xE6\xB5\xBF"; // 홍길동
    request.subject = nameFromText("cn=홍길동,c=kr", StringType::EucKrInUtf8);
    EXPECT_THAT(issuer.issue(request), HasSubstr("\x0C\x06" + hong));
    request.subject = nameFromText("cn=홍길동,c=kr", StringType::EucKrInT61);
    EXPECT_THAT(issuer.issue(request), HasSubstr("\x14\x06" + hong));
}

TEST_F(Certificates, ATextThatTheStringTypeCantHoldIsRefused)
{
    request.subject = nameFromText("cn=홍길동,c=kr", StringType::Printable);
    EXPECT_THROW(issuer.issue(request), std::invalid_argument);
}

TEST_F(Certificates, TheExtensionsAreThoseAskedFor)
{
    request.policies = {
        {"1.2.410.200005.1.1.1", "이 인증서는 공인인증서입니다", "http://www.yessign.or.kr/cps.htm"},
        {"1.2.410.200005.1.1.4"}};
    request.crlPoints = {
        "ldap://host:6020/ou=dp18p395,ou=AccreditedCA,o=yessign,c=kr?certificateRevocationList"};
    request.ocspUrl = "http://ocsp.example:4612";
    request.issuersUrl = "http://ca.example/ca.der";
    const std::string text = opensslText(issuer.issue(request));
    for (const char* line :
         {"Policy: 1.2.410.200005.1.1.1", "CPS: http://www.yessign.or.kr/cps.htm",
          "Policy: 1.2.410.200005.1.1.4",
          "URI:ldap://host:6020/ou=dp18p395,ou=AccreditedCA,o=yessign,c=kr?certificateRevocationList",
          "OCSP - URI:http://ocsp.example:4612", "CA Issuers - URI:http://ca.example/ca.der",
          "Key Usage: critical\n                Digital Signature, Non Repudiation", "Subject Key Identifier",
          "DirName:/C=KR/O=KISA/OU=Central/CN=Sample Root"})
        EXPECT_THAT(text, HasSubstr(line));
}

TEST_F(Certificates, TheUserNoticeIsABmpString)
{
    request.policies = {{"1.2.410.200005.1.1.1", "시험"}};
    EXPECT_THAT(issuer.issue(request),
                HasSubstr(Bytes("\x1E\x04\xC2\xDC\xD5\xD8"))); // 시험, two bytes a letter
}

TEST_F(Certificates, AnythingLeftOutIsNotInTheCertificate)
{
    request.keyUsage = 0;
    request.keyIdentifiers = false;
    const std::string text = opensslText(issuer.issue(request));
    for (const char* name :
         {"Key Usage", "Key Identifier", "Policies", "Alternative Name", "CRL Distribution"})
        EXPECT_THAT(text, Not(HasSubstr(name)));
}

TEST_F(Certificates, EachKeyUsageBitHasItsPlace)
{
    const char* names[] = {"Digital Signature", "Non Repudiation", "Key Encipherment",
                           "Data Encipherment", "Key Agreement",   "Certificate Sign",
                           "CRL Sign",          "Encipher Only",   "Decipher Only"};
    for (unsigned bit = 0; bit < std::size(names); ++bit) {
        request.keyUsage = 1U << bit;
        EXPECT_THAT(opensslText(issuer.issue(request)),
                    HasSubstr(std::string("Key Usage: critical\n                ") + names[bit] + "\n"));
    }
}

TEST_F(Certificates, TheAlternativeNameHoldsMailAndIdentity)
{
    request.rfc822Name = "hong@example.kr";
    request.identity = Identity{"홍길동", "7001011234567"};
    EXPECT_THAT(opensslText(issuer.issue(request)),
                HasSubstr("email:hong@example.kr, othername: 1.2.410.200004.10.1.1"));
    const Bytes value = identityValue("7001011234567", request.key.random());
    EXPECT_THAT(issuer.issue(request), HasSubstr("\xA0\x22\x04\x20" + value));
}

// Known values, computed apart from this code.
TEST(Identity, TheValueIsTheHashOfTheHash)
{
    const Bytes random = fromHex("0102030405060708090a0b0c0d0e0f1011121314");
    EXPECT_EQ(toHex(identityValue("1234561234567", random)),
              "e0f59cfe934ab10f8d82a4cc7f82ef0b809dff34b3ae8163ea43e7ec08b68721");
    EXPECT_EQ(toHex(identityValue("1234561234567", random, "SHA1")),
              "95746b62c7d43fd312c17b3f1205eb3a5a8b1de0");
}

TEST_F(Certificates, TheSerialNumberIsTheOneGivenOrTheNext)
{
    request.serial = "ff00ff";
    EXPECT_THAT(opensslText(issuer.issue(request)), HasSubstr("(0xff00ff)"));
    request.serial.clear();
    EXPECT_NE(issuer.issue(request), issuer.issue(request));
}

TEST_F(Certificates, TheValidityIsKeptToTheSecond)
{
    request.validity = {946684800, 2524608000}; // the second one is the first that needs GeneralizedTime
    EXPECT_THAT(opensslText(issuer.issue(request)), AllOf(HasSubstr("Not Before: Jan  1 00:00:00 2000 GMT"),
                                                          HasSubstr("Not After : Jan  1 00:00:00 2050 GMT")));
    certtoolText(issuer.issue(request));
}

TEST_F(Certificates, AnExtraExtensionStandsAsItWasGiven)
{
    request.extras = {{"1.2.3.4", Bytes("\x05\x00", 2), true}};
    EXPECT_THAT(opensslText(issuer.issue(request)), HasSubstr("1.2.3.4: critical"));
}

TEST(Names, TheTextFormAndTheNameAreOneAnother)
{
    const std::string text = "cn=홍길동()001,ou=personal4IB,o=yessign,c=kr";
    EXPECT_EQ(nameText(nameFromText(text)), text);
    EXPECT_EQ(commonName(nameFromText(text)), "홍길동()001");
    EXPECT_THROW(nameFromText("홍길동"), std::invalid_argument);
}

} // namespace
