// The texts of a certificate between CERT_Load and CERT_Unload. policyIds is GetCertPolicyID, on the main
// toolkit's side GetCertPolicy_PolicyID.

#include "ToolkitLibrary.h"

#include "samplepki/Authority.h"

using namespace samplepki;
using qgtk::Code;

namespace {

const Authority& root()
{
    static const Authority authority =
        Authority::root(nameFromText("cn=KISA RootCA 4,ou=Korea Certification Authority Central,o=KISA,c=KR"),
                        KeyPool::key(KeyKind::Rsa2048, 0));
    return authority;
}

Request holder(const std::string& name, StringType type = StringType::Utf8)
{
    Request request{nameFromText(name, type), KeyPool::key(KeyKind::Rsa2048, 1)};
    request.serial = "0A1b2C";
    return request;
}

Bytes issue(const Request& request)
{
    return Authority(root()).issue(request);
}

constexpr const char* koreanName = "cn=홍길동()001020304,ou=RA센터,ou=personal4IB,o=yessign,c=kr";

Extension extension(const std::string& oid, const Bytes& value)
{
    return {oid, value};
}

} // namespace

class CertificateText : public ToolkitTest
{};
INSTANTIATE_BOTH_SIDES(CertificateText);

TEST_P(CertificateText, NamesAreLeafFirstWithLowerCaseTypesInEucKr)
{
    ASSERT_EQ(load(issue(holder(koreanName))), 0);
    EXPECT_EQ(get("CERT_GetSubjectName"), eucKr(koreanName));
    EXPECT_EQ(get("CERT_GetIssuerName"),
              "cn=KISA RootCA 4,ou=Korea Certification Authority Central,o=KISA,c=KR");
    EXPECT_EQ(get("CERT_GetUID"), eucKr("홍길동()001020304"));
}

TEST_P(CertificateText, EveryStringTypeGivesTheSameKoreanText)
{
    for (const StringType type :
         {StringType::Utf8, StringType::Bmp, StringType::EucKrInUtf8, StringType::EucKrInT61}) {
        ASSERT_EQ(load(issue(holder(koreanName, type))), 0) << int(type);
        EXPECT_EQ(get("CERT_GetSubjectName"), eucKr(koreanName)) << int(type);
        EXPECT_EQ(get("CERT_GetUID"), eucKr("홍길동()001020304")) << int(type);
    }
    ASSERT_EQ(load(issue(holder("cn=HONG,o=yessign,c=kr", StringType::Printable))), 0);
    EXPECT_EQ(get("CERT_GetSubjectName"), "cn=HONG,o=yessign,c=kr");
}

TEST_P(CertificateText, CharactersThatEucKrLacksLoseNothingElse)
{
    // The second syllable is in CP949 alone, the emoji in neither.
    ASSERT_EQ(load(issue(holder("cn=가뷁😀나,o=yessign,c=kr"))), 0);
    EXPECT_EQ(get("CERT_GetUID"), eucKr("가뷁") + "?" + eucKr("나"));
    ASSERT_EQ(load(issue(holder("cn=가뷁😀나,o=yessign,c=kr", StringType::Utf8))), 0);
    EXPECT_EQ(get("CERT_GetSubjectName"), eucKr("cn=가뷁") + "?" + eucKr("나,o=yessign,c=kr"));
}

TEST_P(CertificateText, ValuesStandAsTheyAreButForControlCharacters)
{
    Request request = holder("cn=x,o=y,c=kr");
    request.subject = {{"C", "kr"}, {"O", "A, B + \"C\""}, {"CN", std::string("one\0two\nthree", 13)}};
    ASSERT_EQ(load(issue(request)), 0);
    EXPECT_EQ(get("CERT_GetSubjectName"), "cn=one?two?three,o=A, B + \"C\",c=kr");
}

TEST_P(CertificateText, NamesWithoutCommonNameOrWithUnknownTypes)
{
    Request request = holder("cn=x,o=y,c=kr");
    request.subject = {{"C", "kr"}, {"1.2.410.200004.99", "v"}, {"emailAddress", "a@b.kr"}};
    ASSERT_EQ(load(issue(request)), 0);
    EXPECT_EQ(get("CERT_GetSubjectName"), "email=a@b.kr,1.2.410.200004.99=v,c=kr");
    EXPECT_EQ(get("CERT_GetUID"), "a@b.kr");
}

TEST_P(CertificateText, PlainFields)
{
    ASSERT_EQ(load(issue(holder(koreanName))), 0);
    int version = 0;
    EXPECT_EQ(call("CERT_GetVersion", &version), 0);
    EXPECT_EQ(version, 3);
    EXPECT_EQ(get("CERT_GetSerialNum"), "0a1b2c");
    EXPECT_EQ(get("CERT_GetSignatureAlgorithm"), "sha256WithRSAEncryption");
    EXPECT_THAT(get("CERT_GetSignature"), testing::MatchesRegex("[0-9a-f]{512}"));
    EXPECT_EQ(get("CERT_GetKeyUsage"), "digitalSignature, nonRepudiation");
}

TEST_P(CertificateText, EveryKeyUsageHasItsWord)
{
    Request request = holder(koreanName);
    request.keyUsage = 0x1FF;
    ASSERT_EQ(load(issue(request)), 0);
    EXPECT_EQ(get("CERT_GetKeyUsage"),
              "digitalSignature, nonRepudiation, keyEncipherment, dataEncipherment, keyAgreement, "
              "keyCertSign, crlSign, encipherOnly, decipherOnly");
}

TEST_P(CertificateText, PoliciesWithTheirStatementAndNotice)
{
    Request request = holder(koreanName);
    request.policies = {
        {"1.2.410.200005.1.1.4", "이 인증서는 시험용 인증서입니다", "http://www.yessign.or.kr/cps.htm"}};
    ASSERT_EQ(load(issue(request)), 0);
    EXPECT_EQ(get(GetParam().policyIds), "1 2 410 200005 1 1 4");
    EXPECT_EQ(get("CERT_GetCertPolicy"),
              eucKr("1 2 410 200005 1 1 4\nUserNotice: 이 인증서는 시험용 인증서입니다\n"
                    "CPS: http://www.yessign.or.kr/cps.htm"));
}

TEST_P(CertificateText, TwoPoliciesDifferFromEitherAlone)
{
    Request request = holder(koreanName);
    request.policies = {{"1.2.410.200005.1.1.4"}, {"1.2.410.200005.1.1.1"}};
    ASSERT_EQ(load(issue(request)), 0);
    EXPECT_EQ(get(GetParam().policyIds), "1 2 410 200005 1 1 4,1 2 410 200005 1 1 1");
}

TEST_P(CertificateText, AddressesOneALine)
{
    Request request = holder(koreanName);
    const std::string ldap =
        "ldap://ds.yessign.or.kr:389/ou=dp18p395,ou=AccreditedCA,o=yessign,c=kr?certificateRevocationList";
    request.crlPoints = {ldap, "http://crl.example.kr/a.crl"};
    request.ocspUrl = "http://ocsp.yessign.org:4612";
    request.issuersUrl = "http://ca.example.kr/ca.der";
    ASSERT_EQ(load(issue(request)), 0);
    EXPECT_EQ(get("CERT_GetCRLDP"), ldap + "\nhttp://crl.example.kr/a.crl");
    EXPECT_EQ(get("CERT_GetAIA"), "http://ocsp.yessign.org:4612\nhttp://ca.example.kr/ca.der");
}

TEST_P(CertificateText, IdentityValueIsReadable)
{
    Request request = holder(koreanName);
    request.rfc822Name = "hong@example.kr";
    request.identity = Identity{"홍길동", "1234561234567"};
    const std::string value = toHex(identityValue("1234561234567", request.key.random()));
    ASSERT_EQ(load(issue(request)), 0);
    EXPECT_EQ(get("CERT_GetSubjectAltName"),
              eucKr("rfc822Name: hong@example.kr\nrealName: 홍길동\nVID: sha256 ") + value);
}

TEST_P(CertificateText, KeyIdentifiers)
{
    const Bytes der = issue(holder(koreanName));
    ASSERT_EQ(load(der), 0);
    EXPECT_EQ(get("CERT_GetSubKeyID"), toHex(KeyPool::key(KeyKind::Rsa2048, 1).identifier()));
    EXPECT_THAT(get("CERT_GetAuthKeyID"),
                testing::MatchesRegex("KeyID: " + toHex(root().key().identifier()) +
                                      "\nIssuer: cn=KISA RootCA 4,.*\nSerialNumber: [0-9a-f]+"));
}

TEST_P(CertificateText, AbsentExtensionsAreEmptyTexts)
{
    Request request = holder(koreanName);
    request.keyUsage = 0;
    request.keyIdentifiers = false;
    ASSERT_EQ(load(issue(request)), 0);
    for (const char* getter : {"CERT_GetKeyUsage", "CERT_GetBasicConstraints", "CERT_GetCertPolicy",
                               GetParam().policyIds, "CERT_GetExtKeyUsage", "CERT_GetSubjectAltName",
                               "CERT_GetAuthKeyID", "CERT_GetSubKeyID", "CERT_GetCRLDP", "CERT_GetAIA"})
        EXPECT_EQ(get(getter), "") << getter;
}

TEST_P(CertificateText, ConstraintsAndPurposes)
{
    ASSERT_EQ(load(root().certificate()), 0);
    EXPECT_THAT(get("CERT_GetBasicConstraints"), testing::StartsWith("CA: TRUE"));
    Request request = holder(koreanName);
    request.extras = {extension(
        "2.5.29.37", der::sequence({der::oid("1.3.6.1.5.5.7.3.2"), der::oid("1.2.410.200004.77")}))};
    ASSERT_EQ(load(issue(request)), 0);
    EXPECT_EQ(get("CERT_GetExtKeyUsage"), "TLS Web Client Authentication, 1.2.410.200004.77");
}

TEST_P(CertificateText, DamagedExtensionsHaveTheirOwnCode)
{
    Request request = holder(koreanName);
    request.keyUsage = 0;
    request.extras = {extension("2.5.29.15", "garbage"), extension("2.5.29.32", "\x30\x7f")};
    ASSERT_EQ(load(issue(request)), 0);
    EXPECT_EQ(get("CERT_GetKeyUsage"), "code " + std::to_string(number(Code::CertExtensionDamaged)));
    EXPECT_EQ(get(GetParam().policyIds), "code " + std::to_string(number(Code::CertExtensionDamaged)));
    EXPECT_EQ(get("CERT_GetUID"), eucKr("홍길동()001020304")) << "the rest is still there";
}

TEST_P(CertificateText, TextsAreCutBetweenCharactersAndAlwaysEnd)
{
    ASSERT_EQ(load(issue(holder(koreanName))), 0);
    const std::string whole = eucKr(koreanName);
    EXPECT_EQ(get("CERT_GetSubjectName", int(whole.size()) + 1), whole);
    EXPECT_EQ(get("CERT_GetSubjectName", 8), eucKr("cn=홍길"));
    EXPECT_EQ(get("CERT_GetSubjectName", 7), eucKr("cn=홍")) << "a syllable is never halved";
    EXPECT_EQ(get("CERT_GetSubjectName", 1), "");
    char untouched = '#';
    EXPECT_EQ(call("CERT_GetSubjectName", 0, &untouched), number(Code::BadArgument));
    EXPECT_EQ(call("CERT_GetSubjectName", -1, &untouched), number(Code::BadArgument));
    EXPECT_EQ(untouched, '#');
    EXPECT_EQ(call("CERT_GetSubjectName", 2048, static_cast<char*>(nullptr)), number(Code::BadArgument));
}

TEST_P(CertificateText, NothingLoadedHasItsOwnCode)
{
    EXPECT_EQ(get("CERT_GetUID"), "code " + std::to_string(number(Code::CertNotLoaded)));
    ASSERT_EQ(load(issue(holder(koreanName))), 0);
    EXPECT_EQ(call("CERT_Unload"), 0);
    EXPECT_EQ(call("CERT_Unload"), 0);
    EXPECT_EQ(get("CERT_GetUID"), "code " + std::to_string(number(Code::CertNotLoaded)));
}

TEST_P(CertificateText, RemainingDays)
{
    Request request = holder(koreanName);
    request.validity = Validity::days(-10, 25);
    request.validity.notAfter += 3600;
    BinString valid(library, issue(request));
    int days = 0;
    EXPECT_EQ(call("CERT_GetRemainDays", &valid, &days), 0);
    EXPECT_EQ(days, 25);
    request.validity = Validity::days(-10, -5);
    BinString expired(library, issue(request));
    EXPECT_EQ(call("CERT_GetRemainDays", &expired, &days), 0);
    EXPECT_LT(days, 0);
}

/** Getters whose names or arguments differ between the sides. */
class ZrtkCertificate : public ToolkitTest
{};
INSTANTIATE_TEST_SUITE_P(Zrtk, ZrtkCertificate, testing::Values(zrtkSide));

class GpkiCertificate : public ToolkitTest
{};
INSTANTIATE_TEST_SUITE_P(Gpki, GpkiCertificate, testing::Values(gpkiSide));

namespace {

/** 2026-01-02 03:04:05 UTC, noon in Seoul, to a year later. */
Request newYearHolder()
{
    Request request = holder(koreanName);
    request.validity = {1767323045, 1767323045 + 365 * 86400};
    return request;
}

} // namespace

TEST_P(ZrtkCertificate, ValidityIsLocalTime)
{
    ASSERT_EQ(load(issue(newYearHolder())), 0);
    char from[25] = {};
    char to[25] = {};
    EXPECT_EQ(call("CERT_GetValidity", from, to), 0);
    EXPECT_STREQ(from, "2026-01-02 12:04:05");
    EXPECT_STREQ(to, "2027-01-02 12:04:05");
}

TEST_P(GpkiCertificate, ValidityIsOneText)
{
    ASSERT_EQ(load(issue(newYearHolder())), 0);
    EXPECT_EQ(get("CERT_GetValidity", 50), "2026-01-02 12:04:05 ~ 2027-01-02 12:04:05");
    EXPECT_EQ(get("CERT_GetValidity", 24), "2026-01-02 12:04:05 ~ 2") << "still to be split at its '~'";
    EXPECT_EQ(get("CERT_GetValidity", 20), "code " + std::to_string(number(Code::BufferTooSmall)));
}

TEST_P(ZrtkCertificate, PublicKeyInTwoCalls)
{
    const KeyPair& key = KeyPool::key(KeyKind::Rsa2048, 1);
    ASSERT_EQ(load(issue(holder(koreanName))), 0);
    char algorithm[50] = {};
    char length[20] = {};
    std::string hex(2048, '\0');
    EXPECT_EQ(call("CERT_GetPubKey", 2048, algorithm, hex.data()), 0);
    EXPECT_STREQ(algorithm, "rsaEncryption");
    EXPECT_THAT(toHex(key.publicKeyInfo()), testing::EndsWith(hex.c_str()));
    BinString information(library);
    EXPECT_EQ(call("CERT_GetPubKey2", algorithm, length, &information), 0);
    EXPECT_STREQ(length, "2048 Bits");
    EXPECT_EQ(information.bytes(), key.publicKeyInfo());
}

TEST_P(GpkiCertificate, PublicKeyInThreeCalls)
{
    ASSERT_EQ(load(issue(holder(koreanName))), 0);
    EXPECT_EQ(get("CERT_GetPubKeyAlg", 50), "rsaEncryption");
    EXPECT_EQ(get("CERT_GetPubKeyLen", 20), "2048 Bits");
    EXPECT_THAT(toHex(KeyPool::key(KeyKind::Rsa2048, 1).publicKeyInfo()),
                testing::EndsWith(get("CERT_GetPubKey")));
}

TEST_P(GpkiCertificate, KeyLengthsOfOtherKeys)
{
    Request request = holder(koreanName);
    request.key = KeyPool::key(KeyKind::Rsa1024);
    ASSERT_EQ(load(issue(request)), 0);
    EXPECT_EQ(get("CERT_GetPubKeyLen"), "1024 Bits");
    request.key = KeyPool::key(KeyKind::EcP256);
    ASSERT_EQ(load(issue(request)), 0);
    EXPECT_EQ(get("CERT_GetPubKeyLen"), "256 Bits");
    EXPECT_EQ(get("CERT_GetPubKeyAlg"), "id-ecPublicKey");
}

TEST_P(ZrtkCertificate, RareExtensions)
{
    Request request = holder(koreanName);
    const Bytes name = encodeName(nameFromText("cn=crl1,o=yessign,c=kr"));
    const Bytes points = der::sequence({der::sequence({der::context(
        0, der::context(0, der::context(4, name) + der::context(6, "http://a/b.crl", false)))})});
    request.extras = {extension("2.5.29.18", der::sequence({der::context(6, "http://issuer.kr", false)})),
                      extension("2.5.29.36", der::sequence({der::context(0, Bytes(1, '\0'), false),
                                                            der::context(1, "\x02", false)})),
                      extension("2.5.29.31", points)};
    ASSERT_EQ(load(issue(request)), 0);
    EXPECT_EQ(get("CERT_GetIssuerAltName"), "URI: http://issuer.kr");
    EXPECT_EQ(get("CERT_GetPolicyConstraints"), "requireExplicitPolicy: 0, inhibitPolicyMapping: 2");
    EXPECT_EQ(get("CERT_GetCRLDP"), "cn=crl1,o=yessign,c=kr\nhttp://a/b.crl");
    EXPECT_EQ(get("CERT_GetCRLDP_URL"), "http://a/b.crl");
    BinString subject(library);
    EXPECT_EQ(call("CERT_GetSubjectName_DERFormat", &subject), 0);
    EXPECT_EQ(subject.bytes(), encodeName(request.subject));
}

TEST_P(GpkiCertificate, ListsGrowAndAreCheckedWhole)
{
    const Bytes first = issue(holder("cn=one,o=yessign,c=kr"));
    const Bytes second = issue(holder("cn=two,o=yessign,c=kr"));
    BinString list(library);
    BinString one(library, first);
    BinString two(library, second);
    ASSERT_EQ(call("CERT_AddCert", &one, &list), 0);
    ASSERT_EQ(call("CERT_AddCert", &two, &list), 0);
    EXPECT_EQ(list.bytes(), first + second);
    int count = 0;
    EXPECT_EQ(call("CERT_GetCertCount", &list, &count), 0);
    EXPECT_EQ(count, 2);
    BinString taken(library);
    EXPECT_EQ(call("CERT_GetCert", &list, 1, &taken), 0);
    EXPECT_EQ(taken.bytes(), second);
    EXPECT_EQ(call("CERT_GetCert", &list, 2, &taken), number(Code::CertListIndex));
    EXPECT_EQ(call("CERT_GetCert", &list, -1, &taken), number(Code::CertListIndex));
    BinString damaged(library, first + second.substr(0, second.size() - 1));
    EXPECT_EQ(call("CERT_GetCertCount", &damaged, &count), number(Code::CertListDamaged));
    EXPECT_EQ(call("CERT_GetCert", &damaged, 0, &taken), number(Code::CertListDamaged));
}
