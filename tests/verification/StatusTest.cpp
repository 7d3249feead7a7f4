/* Revocation in its corners: responders and lists asked directly, given, kept, stale or signed for. */

#include "PublishedPki.h"
#include "StatusAnswer.h"

using namespace samplepki;
using qgtk::Code;
using testing::HasSubstr;

namespace {

constexpr std::time_t minute = 60;
constexpr std::time_t day = 86'400;

/** A responder that answers what a test wants, and keeps the last request. */
class OwnResponder
{
public:
    StatusAnswer answer;
    Bytes request;

    std::string url() const { return m_server.url("http") + "/status"; }

private:
    RawServer m_server{[this](int client) {
        request = readHttpBody(client);
        answerAndEnd(client, httpReply(answerGood(request, answer)));
    }};
};

} // namespace

class Status : public PublishedPki
{
protected:
    void SetUp() override
    {
        PublishedPki::SetUp();
        prepare(Source::Ocsp, false);
    }

    /** Sets sources with whether replies are kept, for both sides' numbers of lists. */
    void keepReplies(bool kept)
    {
        char* none = nullptr;
        EXPECT_EQ(isZrtk() ? call("CERT_SetVerifyEnv1", 0, 2, kept, none)
                           : call("CERT_SetVerifyEnv", 0, 1, kept, none, none),
                  0);
    }

    /** Verifies with a signer of requests. */
    int verifySigned(const Bytes& certificate, const Bytes& signer, const Bytes& key)
    {
        BinString asked(library, certificate);
        BinString signerCertificate(library, signer);
        BinString signerKey(library, key);
        char* none = nullptr;
        return isZrtk() ? call("CERT_Verify", &asked, 1, none, true, &signerCertificate, &signerKey)
                        : call("CERT_Verify", &asked, 1, none, none, true, &signerCertificate, &signerKey);
    }

    /** A certificate of the authority's for another key, with these purposes. */
    Bytes delegate(const std::vector<Extension>& purposes)
    {
        Request request{.subject = nameFromText("cn=Responder,o=Sample,c=KR"), .key = testKey(4)};
        request.extras = purposes;
        return m_ca->issue(request);
    }

    StatusAnswer byAuthority() { return {m_ca->certificate(), testKey(1)}; }
};
INSTANTIATE_BOTH_SIDES(Status);

TEST_P(Status, AnswersHoldAsLongAsTheySay)
{
    OwnResponder responder;
    const Bytes certificate = leaf(files.url(caList), responder.url());
    const std::time_t now = std::time(nullptr);
    struct Row
    {
        const char* what;
        std::time_t from;
        std::optional<std::time_t> until;
        bool repeatsNonce;
        Code code;
    };
    for (const Row& row : {Row{"current", now, now + day, true, Code::Ok},
                           Row{"from a store", now - day, now + day, false, Code::Ok},
                           Row{"stale", now - 2 * day, now - day, true, Code::OcspOutdated},
                           Row{"stale and from a store", now - 2 * day, now - day, false, Code::OcspOutdated},
                           Row{"from the future", now + day, now + 2 * day, true, Code::OcspOutdated},
                           Row{"by a clock that is a little fast", now + minute, {}, true, Code::Ok},
                           Row{"made for the request, about an old list", now - 9 * day, {}, true, Code::Ok},
                           Row{"without an end, from a store", now - day / 2, {}, false, Code::Ok},
                           Row{"the same, old", now - 2 * day, {}, false, Code::OcspOutdated}}) {
        responder.answer = byAuthority();
        responder.answer.from = row.from;
        responder.answer.until = row.until;
        responder.answer.repeatsNonce = row.repeatsNonce;
        EXPECT_EQ(verify(certificate), number(row.code)) << row.what << ": " << errorText();
    }
}

TEST_P(Status, AnswersAreBelievedOfTheIssuerAndOfItsDelegateAlone)
{
    OwnResponder responder;
    const Bytes certificate = leaf(files.url(caList), responder.url());
    const Extension signsAnswers{"extendedKeyUsage", der::sequence({der::oid("OCSPSigning")}), false};
    const Extension another{"extendedKeyUsage", der::sequence({der::oid("clientAuth")}), false};
    responder.answer = {delegate({signsAnswers}), testKey(4)};
    EXPECT_EQ(verify(certificate), 0) << errorText();
    for (const Bytes& signer :
         {delegate({another}), delegate({}), pki.root.issue({nameFromText("cn=x,c=KR"), testKey(4)})}) {
        responder.answer = {signer, testKey(4)};
        EXPECT_EQ(verify(certificate), number(Code::OcspUntrusted));
    }
    responder.answer = {m_ca->certificate(), testKey(5)};
    EXPECT_NE(verify(certificate), 0) << "signed by another key in the issuer's name";
    responder.answer = byAuthority();
    responder.answer.repeatsNonce = false;
    responder.answer.hasOwnNonce = true;
    EXPECT_EQ(verify(certificate), number(Code::OcspUntrusted)) << "made for another request";
    responder.answer = byAuthority();
    responder.answer.aboutAnother = true;
    EXPECT_EQ(verify(certificate), number(Code::OcspUnknown));
    EXPECT_THAT(errorText(),
                HasSubstr("<wrenlib>The responder does not know the certificate (1331): cn=Hong"));
}

TEST_P(Status, RepliesThatAreNoAnswersAreTold)
{
    const RawServer refusing([](int client) {
        readHttpBody(client);
        answerAndEnd(client, httpReply(fromHex("30030a0106"))); // OCSPResponse: unauthorized
    });
    const RawServer talking([](int client) {
        readHttpBody(client);
        answerAndEnd(client, httpReply("<html>"));
    });
    EXPECT_EQ(verify(leaf(files.url(caList), refusing.url("http"))), number(Code::OcspRefused));
    EXPECT_NE(verify(leaf(files.url(caList), talking.url("http"))), 0);
    EXPECT_EQ(verify(leaf(files.url(caList), "ldap://127.0.0.1/x")), number(Code::UrlRefused));
}

TEST_P(Status, RequestsAreSignedWhenAsked)
{
    OwnResponder responder;
    responder.answer = byAuthority();
    const Bytes certificate = leaf(files.url(caList), responder.url());
    const Bytes key = testKey(2).privateKeyInfo();
    EXPECT_EQ(verifySigned(certificate, certificate, key), 0) << errorText();
    EXPECT_TRUE(isSignedBy(responder.request, certificate));
    EXPECT_EQ(verify(certificate), 0);
    EXPECT_FALSE(isSignedBy(responder.request, certificate)) << "unsigned without being asked";
    EXPECT_EQ(verifySigned(certificate, authority(), key), number(Code::KeyMismatch));
    EXPECT_EQ(verifySigned(certificate, "no certificate", key), number(Code::CertDamaged));
    EXPECT_EQ(verifySigned(certificate, certificate, "no key"), number(Code::KeyNotPlain));
}

TEST_P(Status, ListsAreKeptWhenAskedUntilTheSettingsComeAnew)
{
    int asked = 0;
    const Bytes list = m_ca->revocationList();
    const RawServer server([&](int client) {
        ++asked;
        answerAndEnd(client, httpReply(list));
    });
    const Bytes certificate = leaf(server.url("http") + "/list");
    for (const bool kept : {false, true, false}) {
        keepReplies(kept);
        asked = 0;
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(verify(certificate), 0) << errorText();
        EXPECT_EQ(asked, kept ? 1 : 3);
    }
}

TEST_P(Status, FailuresAreNotKept)
{
    const Bytes certificate = leaf(files.url("later.crl"));
    keepReplies(true);
    EXPECT_EQ(verify(certificate), number(Code::ServerRefused));
    publish("later.crl", m_ca->revocationList());
    EXPECT_EQ(verify(certificate), 0) << errorText();
}

TEST_P(Status, APointMayNameADirectoryEntry)
{
    const std::string entryName = "cn=Lists,o=Sample,c=KR";
    const DirectoryServer server(
        {{entryName, {{"certificateRevocationList;binary", m_ca->revocationList()}}},
         {caName, {{"certificateRevocationList;binary", pki.root.revocationList()}}}});
    restartWith("TOTAL_TIMEOUT=2\nLANGUAGE=ENG\n[VALIDATOIN_OPTION]\nCA_INFO_COUNT=1\n[CA_INFO1]\nDIR_URL=" +
                server.url());
    prepare(Source::Crl, false);
    const Bytes fullName = der::context(0, der::context(4, encodeName(nameFromText(entryName))));
    Request request = TestPki::leaf();
    request.extras = {{"crlDistributionPoints", der::sequence({der::sequence({der::context(0, fullName)})})}};
    EXPECT_EQ(verify(m_ca->issue(request)), 0) << errorText();
    request.extras.clear();
    EXPECT_EQ(verify(m_ca->issue(request)), number(Code::CrlMissing))
        << "the issuer's own entry, with another's list, is for certificates that name nothing";
}

/** Operations that the one library alone has. */
class ZrtkStatus : public Status
{
protected:
    int giveLists(const Bytes& arl, const Bytes& crl)
    {
        BinString authorities(library, arl);
        BinString others(library, crl);
        return call("CERT_SetVerifyEnv2", static_cast<char*>(nullptr), &authorities, &others);
    }
};
INSTANTIATE_TEST_SUITE_P(Zrtk, ZrtkStatus, testing::Values(zrtkSide));

TEST_P(ZrtkStatus, GivenListsStandInForFetchedOnes)
{
    prepare(Source::Crl);
    const std::string nowhere = "http://127.0.0.1:" + std::to_string(freePort()) + "/x";
    const Bytes certificate = leaf(nowhere);
    EXPECT_EQ(verify(certificate), number(Code::ServerUnreachable));
    const Bytes arl = pki.root.revocationList();
    EXPECT_EQ(giveLists(arl, m_ca->revocationList()), 0);
    EXPECT_EQ(verify(certificate), 0) << errorText();
    EXPECT_EQ(giveLists(arl, m_ca->revocationList({.serials = {"77"}})), 0);
    EXPECT_EQ(verify(certificate), number(Code::CertRevoked));
    EXPECT_EQ(giveLists(pki.root.revocationList({.serials = {"2"}}), m_ca->revocationList()), 0);
    EXPECT_EQ(verify(certificate), number(Code::CertRevoked));
    EXPECT_THAT(errorText(), HasSubstr("cn=Test CA 1"));
    EXPECT_EQ(giveLists(arl, Authority::root(nameFromText(caName), testKey(5)).revocationList()), 0);
    EXPECT_EQ(verify(certificate), number(Code::CrlSignature));
    EXPECT_EQ(giveLists(arl, m_ca->revocationList({.validity = Validity::days(-9, -1)})), 0);
    EXPECT_EQ(verify(certificate), number(Code::CrlExpired));
    EXPECT_EQ(giveLists("no list", {}), number(Code::CrlDamaged));
    EXPECT_EQ(verify(certificate), number(Code::CrlExpired)) << "a refused setting changes nothing";
    EXPECT_EQ(giveLists({}, pki.root.revocationList()), 0);
    EXPECT_EQ(verify(certificate), number(Code::ServerUnreachable)) << "another issuer's list covers nothing";
}

TEST_P(ZrtkStatus, TheSecondFormOfVerifyingNeedsNoConfiguration)
{
    prepare(Source::Crl);
    const auto verify2 = [&](const Bytes& der, const char* policies) {
        BinString certificate(library, der);
        return call("CERT_Verify2", &certificate, 1, text(policies), text("password"));
    };
    const Bytes certificate = leaf(files.url(caList));
    EXPECT_EQ(verify2(certificate, ""), 0) << errorText();
    EXPECT_EQ(verify2(certificate, "1.2.3.4"), number(Code::PolicyRefused));
    EXPECT_EQ(verify2("no certificate", ""), number(Code::CertDamaged));
    publish(caList, m_ca->revocationList({.serials = {"77"}}));
    EXPECT_EQ(verify2(certificate, ""), number(Code::CertRevoked));
    EXPECT_THAT(errorText(), HasSubstr("<wrenlib>The certificate is revoked (1320): cn=Hong"));
}

class GpkiStatus : public Status
{
protected:
    int checkByOcsp(const Bytes& der, const std::string& url, bool sign = false)
    {
        BinString certificate(library, der);
        BinString signer(library, sign ? der : Bytes());
        BinString key(library, sign ? testKey(2).privateKeyInfo() : Bytes());
        BinString answeredBy(library);
        const int code = call("CERT_CheckStatByOCSP", &certificate, sign, &signer, &key, text(url),
                              &answeredBy, +date, &reason);
        responder = answeredBy.bytes();
        return code;
    }

    char date[25] = "x";
    int reason = 7;
    Bytes responder;
};
INSTANTIATE_TEST_SUITE_P(Gpki, GpkiStatus, testing::Values(gpkiSide));

TEST_P(GpkiStatus, AResponderIsAskedDirectly)
{
    const Bytes key = testKey(1).privateKeyInfo();
    const Responder good(indexOf("77", false), m_ca->certificate(), m_ca->certificate(), key);
    const Responder revoked(indexOf("77", true), m_ca->certificate(), m_ca->certificate(), key);
    const Bytes certificate = leaf(files.url(caList), good.url());
    EXPECT_EQ(checkByOcsp(certificate, ""), 0) << errorText();
    EXPECT_STREQ(date, "");
    EXPECT_EQ(reason, -1);
    EXPECT_EQ(responder, m_ca->certificate());
    EXPECT_EQ(checkByOcsp(certificate, revoked.url()), number(Code::CertRevoked))
        << "the given address goes before the certificate's";
    EXPECT_STREQ(date, "2026-01-01 09:00:00") << "local time";
    EXPECT_EQ(reason, 1);
    EXPECT_EQ(responder, "") << "nothing but date and reason on a failure";
}

TEST_P(GpkiStatus, OutputsStayWhenNoVerdictIsHad)
{
    const Bytes certificate = leaf(files.url(caList));
    EXPECT_EQ(checkByOcsp(certificate, ""), number(Code::OcspMissing));
    EXPECT_EQ(checkByOcsp("no certificate", ""), number(Code::CertDamaged));
    EXPECT_STREQ(date, "x");
    EXPECT_EQ(reason, 7);
}

TEST_P(GpkiStatus, ADirectRequestIsSignedWhenAsked)
{
    OwnResponder own;
    own.answer = byAuthority();
    const Bytes certificate = leaf(files.url(caList), own.url());
    EXPECT_EQ(checkByOcsp(certificate, "", true), 0) << errorText();
    EXPECT_TRUE(isSignedBy(own.request, certificate));
}
