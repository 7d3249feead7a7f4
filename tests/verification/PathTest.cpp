#include <algorithm>
#include <iterator>

#include "VerificationTest.h"
#include "toolkit/core/Verification.h"

using namespace samplepki;
using qgtk::Code;
using testing::HasSubstr;

namespace {

constexpr const char* policy = "1.2.410.200005.1.1.4";
constexpr const char* otherPolicy = "1.2.410.200005.1.1.5";

/** One path and its verdict. */
struct PathCase
{
    std::string name;
    Bytes leaf;
    std::vector<Bytes> known;
    std::vector<Bytes> trusted;
    Code code;
    std::string policies = {};
    bool othersJudge = true; /**< whether the other programs look at what the case is about */
    Bytes list = {};         /**< the issuer's revocation list */
};

Authority otherRoot()
{
    return Authority::root(nameFromText("cn=Other RootCA,o=Sample,c=KR"), testKey(5));
}

/** An issuer of any rights by a certificate that was issued for its name and key. */
Authority issuerLike(const Request& request)
{
    return Authority::root(request.subject, request.key);
}

PathCase nonCaIssuer(TestPki& pki)
{
    const Bytes issuer = pki.ca.issue(TestPki::leaf());
    Request below{.subject = nameFromText("cn=Below,o=Sample,c=KR"), .key = testKey(3)};
    below.keyIdentifiers = false;
    return {"an issuer that is no authority",
            issuerLike(TestPki::leaf()).issue(below),
            {pki.ca.certificate(), issuer},
            {pki.root.certificate()},
            Code::IssuerNotCa};
}

/** An authority's certificate with an extension of its own, and a leaf below it. */
PathCase constrained(TestPki& pki, const std::string& name, const std::vector<Extension>& extensions,
                     Code code)
{
    Request request{.subject = nameFromText("cn=Constrained CA,o=Sample,c=KR"), .key = testKey(3)};
    request.keyUsage = AuthorityUse;
    request.extras = extensions;
    Request below = TestPki::leaf();
    below.keyIdentifiers = false;
    return {
        name, issuerLike(request).issue(below), {pki.root.issue(request)}, {pki.root.certificate()}, code};
}

Extension permittedNames(const char* name)
{
    const Bytes subtree = der::sequence({der::context(4, encodeName(nameFromText(name)))});
    return {"nameConstraints", der::sequence({der::context(0, subtree)}), true};
}

PathCase pathLength(TestPki& pki)
{
    const Extension noneBelow{"basicConstraints",
                              der::sequence({der::element(der::Boolean, "\xFF"), der::integer(0)}), true};
    Request request{.subject = nameFromText("cn=Last CA,o=Sample,c=KR"), .key = testKey(3)};
    request.keyUsage = AuthorityUse;
    request.extras = {noneBelow};
    Authority last = issuerLike(request);
    Request below{.subject = nameFromText("cn=One too many,o=Sample,c=KR"), .key = testKey(4)};
    below.keyIdentifiers = false;
    Authority tooMany = last.intermediate(below);
    return {"an authority below the last one",
            tooMany.issue(TestPki::leaf()),
            {pki.root.issue(request), tooMany.certificate()},
            {pki.root.certificate()},
            Code::PathTooLong};
}

PathCase longPath(TestPki& pki)
{
    PathCase result{"a path of six certificates", {}, {}, {pki.root.certificate()}, Code::Ok};
    std::vector<Authority> authorities{pki.root};
    for (unsigned i = 0; i < 4; ++i) {
        const Name name = nameFromText("cn=CA " + std::to_string(i) + ",o=Sample,c=KR");
        authorities.push_back(authorities.back().intermediate(name, testKey(3 + i % 2)));
        result.known.insert(result.known.begin(), authorities.back().certificate());
    }
    result.leaf = authorities.back().issue(TestPki::leaf());
    return result;
}

/** Two authorities of one name, which only their keys tell apart. */
PathCase namesakes(TestPki& pki, bool rightOneFirst)
{
    const auto make = [&](unsigned key) {
        Request request{.subject = nameFromText(caName), .key = testKey(key)};
        request.keyIdentifiers = false;
        return pki.root.intermediate(request);
    };
    Authority right = make(3);
    const Authority wrong = make(4);
    Request request = TestPki::leaf();
    request.keyIdentifiers = false;
    PathCase result{"two authorities of one name",
                    right.issue(request),
                    {wrong.certificate(), right.certificate()},
                    {pki.root.certificate()},
                    Code::Ok};
    result.othersJudge = false;
    if (rightOneFirst)
        std::swap(result.known[0], result.known[1]);
    return result;
}

/** Two authorities that certify each other, and perhaps one of them is certified by the root too. */
PathCase crossLoop(TestPki& pki, bool rooted)
{
    const Name a = nameFromText("cn=Cross A,o=Sample,c=KR");
    const Name b = nameFromText("cn=Cross B,o=Sample,c=KR");
    const auto certificateBy = [](Authority& issuer, const Name& name, unsigned key) {
        Request request{.subject = name, .key = testKey(key)};
        request.keyIdentifiers = false;
        return issuer.intermediate(request).certificate();
    };
    Authority crossA = Authority::root(a, testKey(3));
    Authority crossB = Authority::root(b, testKey(4));
    Request request = TestPki::leaf();
    request.keyIdentifiers = false;
    PathCase result{rooted ? "cross certificates with a way out" : "a loop of cross certificates",
                    crossA.issue(request),
                    {certificateBy(crossB, a, 3), certificateBy(crossA, b, 4)},
                    {pki.root.certificate()},
                    rooted ? Code::Ok : Code::IssuerMissing};
    result.othersJudge = !rooted;
    if (rooted)
        result.known.push_back(certificateBy(pki.root, b, 4));
    return result;
}

/** Leaf and authority with policies. */
PathCase withPolicy(TestPki& pki, const std::string& asked, Code code)
{
    Request authority{.subject = nameFromText("cn=Policy CA,o=Sample,c=KR"), .key = testKey(3)};
    authority.policies = {{policy}};
    Authority ca = pki.root.intermediate(authority);
    Request request = TestPki::leaf();
    request.policies = {{policy}};
    PathCase result{"policy " + asked, ca.issue(request), {ca.certificate()}, {pki.root.certificate()}, code};
    result.policies = asked;
    return result;
}

Bytes withBrokenSignature(Bytes certificate)
{
    certificate.back() = static_cast<char>(certificate.back() ^ 1);
    return certificate;
}

std::vector<PathCase> cases()
{
    TestPki pki;
    const Bytes good = pki.ca.issue(TestPki::leaf());
    const Bytes& root = pki.root.certificate();
    const Bytes& ca = pki.ca.certificate();
    Request expired = TestPki::leaf();
    expired.validity = Validity::days(-30, -1);
    Request early = TestPki::leaf();
    early.validity = Validity::days(1, 30);
    Request critical = TestPki::leaf();
    critical.extras = {{"1.2.3.4.5", der::integer(1), true}};
    const Extension authority = basicConstraintsExtension();
    return {
        {"good", good, {ca}, {root}, Code::Ok},
        {"an authority", ca, {}, {root}, Code::Ok},
        {"the root itself", root, {}, {root}, Code::Ok},
        {"several roots", good, {ca}, {otherRoot().certificate(), root}, Code::Ok},
        {"expired", pki.ca.issue(expired), {ca}, {root}, Code::CertExpired},
        {"not valid yet", pki.ca.issue(early), {ca}, {root}, Code::CertNotYetValid},
        {"changed signature", withBrokenSignature(good), {ca}, {root}, Code::CertSignature},
        {"intermediate missing", good, {}, {root}, Code::IssuerMissing},
        {"root missing", good, {ca}, {otherRoot().certificate()}, Code::IssuerMissing},
        {"root not trusted", good, {ca, root}, {otherRoot().certificate()}, Code::RootNotTrusted},
        {"nothing trusted", good, {ca, root}, {}, Code::NoTrustedRoot},
        {"unknown critical extension", pki.ca.issue(critical), {ca}, {root}, Code::CriticalExtension},
        nonCaIssuer(pki),
        pathLength(pki),
        constrained(pki, "a permitted name", {authority, permittedNames("o=Sample,c=KR")}, Code::Ok),
        constrained(pki, "a name that is not permitted", {authority, permittedNames("o=Other,c=KR")},
                    Code::NameRefused),
        constrained(pki, "an issuer that does not say what it is", {}, Code::IssuerNotCa),
        longPath(pki),
        namesakes(pki, true),
        namesakes(pki, false),
        crossLoop(pki, false),
        crossLoop(pki, true),
        withPolicy(pki, policy, Code::Ok),
        withPolicy(pki, "1 2 410 200005 1 1 5, 1 2 410 200005 1 1 4", Code::Ok),
        withPolicy(pki, otherPolicy, Code::PolicyRefused),
    };
}

/** The good path with revocation lists of its authority's. */
std::vector<PathCase> listCases()
{
    TestPki pki;
    const Authority impostor = Authority::root(nameFromText(caName), testKey(5));
    const Bytes leaf = pki.ca.issue(TestPki::leaf());
    const auto row = [&](const char* name, const Bytes& list, Code code) {
        return PathCase{name, leaf, {pki.ca.certificate()}, {pki.root.certificate()}, code, {}, true, list};
    };
    return {
        row("a list without it", pki.ca.revocationList({.serials = {"76"}}), Code::Ok),
        row("a list with it", pki.ca.revocationList({.serials = {"76", "77"}}), Code::CertRevoked),
        row("an old list", pki.ca.revocationList({.validity = Validity::days(-9, -1)}), Code::CrlExpired),
        row("a list of tomorrow", pki.ca.revocationList({.validity = Validity::days(1, 9)}),
            Code::CrlNotYetValid),
        row("a list by another key", impostor.revocationList(), Code::CrlSignature),
    };
}

/** The verdicts of independent programs on the same certificates. */
bool opensslAccepts(const PathCase& path, const std::string& directory)
{
    std::vector<std::string> command{"openssl", "verify", "-no-CApath", "-no-CAstore"};
    for (const auto& [option, list] : {std::pair{"-CAfile", &path.trusted}, {"-untrusted", &path.known}}) {
        std::string all;
        for (const Bytes& der : *list)
            all += pem(der, "CERTIFICATE");
        writeFile(directory + "/" + option, all);
        if (!all.empty())
            command.insert(command.end(), {option, directory + "/" + option});
    }
    if (!path.list.empty()) {
        writeFile(directory + "/list.pem", pem(path.list, "X509 CRL"));
        command.insert(command.end(), {"-crl_check", "-CRLfile", directory + "/list.pem"});
    }
    for (const std::string& asked : qgtk::policiesOf(path.policies))
        command.insert(command.end(), {"-explicit_policy", "-policy", asked});
    writeFile(directory + "/leaf.pem", pem(path.leaf, "CERTIFICATE"));
    command.push_back(directory + "/leaf.pem");
    return runProgram(command) == 0;
}

/** GnuTLS looks neither at constraints of directory names nor at policies, and takes no notice of bad lists.
 */
bool certtoolPassesOver(Code code)
{
    constexpr Code passedOver[] = {Code::NameRefused, Code::PolicyRefused, Code::CrlExpired,
                                   Code::CrlNotYetValid, Code::CrlSignature};
    return std::ranges::find(passedOver, code) != std::end(passedOver);
}

bool certtoolAccepts(const PathCase& path, const std::string& directory)
{
    std::string chain = pem(path.leaf, "CERTIFICATE");
    for (const Bytes& der : path.known)
        chain += pem(der, "CERTIFICATE");
    std::string anchors;
    for (const Bytes& der : path.trusted)
        anchors += pem(der, "CERTIFICATE");
    writeFile(directory + "/chain.pem", chain);
    writeFile(directory + "/anchors.pem", anchors);
    std::vector<std::string> command{"certtool",
                                     "--verify",
                                     "--load-ca-certificate",
                                     directory + "/anchors.pem",
                                     "--infile",
                                     directory + "/chain.pem"};
    if (!path.list.empty()) {
        writeFile(directory + "/list.pem", pem(path.list, "X509 CRL"));
        command.insert(command.end(), {"--load-crl", directory + "/list.pem"});
    }
    return runProgram(command) == 0;
}

} // namespace

class Path : public VerificationTest
{
protected:
    void giveList(const Bytes& list)
    {
        if (list.empty())
            return;
        BinString given(library, list);
        ASSERT_EQ(call("CERT_SetVerifyEnv2", text(""), static_cast<BINSTR*>(nullptr), &given), 0);
    }

    int verdict(const PathCase& path)
    {
        restartWith("TOTAL_TIMEOUT=1\nLANGUAGE=ENG");
        Bytes known;
        for (const Bytes& der : path.known)
            known += der;
        know(known);
        for (const Bytes& der : path.trusted)
            trust(der);
        look(path.list.empty() ? Source::None : Source::Crl, false);
        giveList(path.list);
        return verify(path.leaf, path.policies);
    }
};
INSTANTIATE_BOTH_SIDES(Path);

TEST_P(Path, EveryVerdictIsNamed)
{
    for (const PathCase& path : cases()) {
        EXPECT_EQ(verdict(path), number(path.code)) << path.name << ": " << errorText();
        if (path.code == Code::Ok)
            continue;
        const std::string expected = std::string("<wrenlib>") +
                                     textOfCode(path.code, qgtk::Language::English) + " (" +
                                     std::to_string(number(path.code)) + "): cn=";
        EXPECT_THAT(errorText(), testing::StartsWith(expected)) << path.name;
    }
}

class ListedPath : public Path
{};
INSTANTIATE_TEST_SUITE_P(Zrtk, ListedPath,
                         testing::Values(zrtkSide)); // which alone takes lists from its caller

TEST_P(ListedPath, EveryVerdictIsNamed)
{
    for (const PathCase& path : listCases())
        EXPECT_EQ(verdict(path), number(path.code)) << path.name << ": " << errorText();
}

TEST(OtherPrograms, GiveTheSameVerdicts)
{
    const std::string directory = TestHome::scratch("verdicts").string();
    std::vector<PathCase> all = cases();
    std::ranges::move(listCases(), std::back_inserter(all));
    for (const PathCase& path : all) {
        const bool good = path.code == Code::Ok;
        if (!path.othersJudge || path.trusted.empty())
            continue;
        EXPECT_EQ(opensslAccepts(path, directory), good) << path.name;
        if (!certtoolPassesOver(path.code)) {
            EXPECT_EQ(certtoolAccepts(path, directory), good) << path.name;
        }
    }
}

TEST_P(Path, TextsAreKoreanUnlessEnglishIsSet)
{
    TestPki pki;
    restartWith("TOTAL_TIMEOUT=1");
    trust(pki.root.certificate());
    ASSERT_EQ(verify(pki.ca.issue(TestPki::leaf())), number(Code::IssuerMissing));
    EXPECT_EQ(errorText(),
              "<wrenlib>" + eucKr("발급자 인증서를 찾을 수 없습니다") + " (1303): cn=Hong,o=Sample,c=KR")
        << "the text goes to a person";
}

TEST_P(Path, UseOfTheKeyIsLookedAtWhenItIsAskedFor)
{
    TestPki pki;
    trust(pki.root.certificate());
    know(pki.ca.certificate());
    look(Source::None);
    Request envelope = TestPki::leaf();
    envelope.keyUsage = EnvelopeUse;
    const Bytes signing = pki.ca.issue(TestPki::leaf());
    const Bytes enveloping = pki.ca.issue(envelope);
    for (const int any : {0, 1}) {
        EXPECT_EQ(verify(signing, {}, any), 0);
        EXPECT_EQ(verify(pki.ca.certificate(), {}, any), 0);
    }
    EXPECT_EQ(verify(signing, {}, 2), 0);
    EXPECT_EQ(verify(enveloping, {}, 2), number(Code::UsageRefused));
    EXPECT_EQ(verify(enveloping, {}, 3), 0);
    EXPECT_EQ(verify(signing, {}, 3), number(Code::UsageRefused));
    EXPECT_EQ(verify(pki.ca.certificate(), {}, 4), 0);
    EXPECT_EQ(verify(signing, {}, 4), number(Code::UsageRefused));
    for (const int unknown : {-1, 5})
        EXPECT_EQ(verify(signing, {}, unknown), number(Code::BadArgument));
}

TEST_P(Path, AReferenceTimeIsLookedAtInPlaceOfNow)
{
    TestPki pki;
    trust(pki.root.certificate());
    know(pki.ca.certificate());
    look(Source::None);
    Request past = TestPki::leaf();
    past.validity = {1'700'000'000, 1'700'100'000};
    const Bytes certificate = pki.ca.issue(past);
    char* none = nullptr;
    const auto setTime = [&](const char* time) {
        return isZrtk() ? call("CERT_SetVerifyEnv2", text(time), static_cast<BINSTR*>(nullptr),
                               static_cast<BINSTR*>(nullptr))
                        : call("CERT_SetVerifyEnv", 0, 0, false, text(time), none);
    };
    EXPECT_EQ(verify(certificate), number(Code::CertExpired));
    EXPECT_EQ(setTime("2023-11-15 12:00:00"), 0);
    EXPECT_EQ(verify(certificate), 0);
    EXPECT_EQ(setTime("yesterday"), number(Code::BadTime));
    EXPECT_EQ(verify(certificate), 0) << "a refused setting changes nothing";
}

TEST_P(Path, ArgumentsOfNoUseAreRefused)
{
    TestPki pki;
    trust(pki.root.certificate());
    look(Source::None);
    EXPECT_EQ(verify("no certificate"), number(Code::CertDamaged));
    EXPECT_EQ(verify(""), number(Code::BadArgument));
    EXPECT_EQ(verify(pki.ca.certificate(), "no policy"), number(Code::BadArgument));
    BinString damaged(library, "no certificate");
    BinString leaf(library, pki.ca.issue(TestPki::leaf()));
    EXPECT_EQ(call("CERT_AddTrustedCert", &damaged), number(Code::CertDamaged));
    EXPECT_EQ(call("CERT_AddTrustedCert", &leaf), number(Code::IssuerNotCa));
    EXPECT_EQ(call("CERT_AddTrustedCert", static_cast<BINSTR*>(nullptr)), number(Code::BadArgument));
    char* none = nullptr;
    for (const auto& [range, check] : {std::pair{-1, 0}, {2, 0}, {0, -1}, {0, 4}})
        EXPECT_EQ(isZrtk() ? call("CERT_SetVerifyEnv1", range, check, false, none)
                           : call("CERT_SetVerifyEnv", range, check, false, none, none),
                  number(Code::BadArgument));
}
