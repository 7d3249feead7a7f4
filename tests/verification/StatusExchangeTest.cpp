/* Status requests in steps, and validation services: made, sent to responders, verified and told. */

#include <future>

#include "PublishedPki.h"
#include "StatusAnswer.h"
#include "quillgate/toolkit_protocol.h"

using namespace samplepki;
using qgtk::Code;
using testing::HasSubstr;

namespace {

constexpr const char* idNumber = "1234561234567";
const Bytes keyRandom = fromHex("0102030405060708090a0b0c0d0e0f1011121314");

} // namespace

class StatusExchange : public PublishedPki
{
protected:
    void SetUp() override
    {
        PublishedPki::SetUp();
        prepare(Source::Crl, false);
    }

    Bytes certificateWith(const std::string& serial, const std::string& url = {})
    {
        Request wanted = TestPki::leaf();
        wanted.serial = serial;
        wanted.ocspUrl = url;
        return m_ca->issue(wanted);
    }

    int make(const Bytes& certificates, bool sign = false, const Bytes& signer = {}, const Bytes& key = {})
    {
        BinString list(library, certificates);
        BinString signerCertificate(library, signer);
        BinString signerKey(library, key);
        BinString result(library, "before");
        const int code = call("OCSP_MakeOCSPReq", &list, sign, &signerCertificate, &signerKey, &result);
        request = result.bytes();
        return code;
    }

    int send(const std::string& url, const Bytes& certificate, const Bytes& bytes)
    {
        BinString asked(library, certificate);
        BinString message(library, bytes);
        BinString result(library, "before");
        const int code = call("OCSP_SendAndRecv", text(url), &asked, &message, &result);
        response = result.bytes();
        return code;
    }

    int verifyResponse(const Bytes& asked, const Bytes& answered)
    {
        BinString requestBytes(library, asked);
        BinString responseBytes(library, answered);
        BinString signer(library, "before");
        const int code = isZrtk() ? call("OCSP_VerifyResMsg", &requestBytes, &responseBytes, &signer)
                                  : call("OCSP_VerifyResMsg", &requestBytes, &responseBytes, &count, &signer);
        responder = signer.bytes();
        return code;
    }

    /** All three steps. */
    int exchange(const Bytes& certificates, const std::string& url)
    {
        EXPECT_EQ(make(certificates), 0) << errorText();
        EXPECT_EQ(send(url, certificates, request), 0) << errorText();
        return verifyResponse(request, response);
    }

    Responder responderFor(const std::string& index)
    {
        return {index, m_ca->certificate(), m_ca->certificate(), testKey(1).privateKeyInfo()};
    }

    int verifyByService(const std::string& settings, const Bytes& der)
    {
        const std::string file = workDirectory + "/service.conf";
        writeFile(file, settings);
        BinString certificate(library, der);
        BinString asker(library, pki.root.certificate());
        return call("CERT_VerifyByIVS", text(file), &certificate, &asker);
    }

    Bytes request;
    Bytes response;
    Bytes responder;
    int count = -7;
};
INSTANTIATE_BOTH_SIDES(StatusExchange);

TEST_P(StatusExchange, AGoodCertificateIsGood)
{
    const Responder server = responderFor(indexOf("77", false));
    EXPECT_EQ(exchange(certificateWith("77"), server.url()), 0) << errorText();
    EXPECT_EQ(responder, m_ca->certificate());
    EXPECT_EQ(count, isZrtk() ? -7 : 1);
}

TEST_P(StatusExchange, AnEmptyAddressAsksTheCertificatesOwnResponder)
{
    const Responder server = responderFor(indexOf("77", false));
    EXPECT_EQ(exchange(certificateWith("77", server.url()), ""), 0) << errorText();
    EXPECT_EQ(send("", certificateWith("77"), request), number(Code::OcspMissing));
    EXPECT_EQ(send("", "no certificate", request), number(Code::CertDamaged));
    EXPECT_EQ(response, "before");
}

TEST_P(StatusExchange, StatusesAreToldInTheRequestsOrder)
{
    const Responder server = responderFor(indexOf("77", false) + indexOf("78", true));
    const int code =
        exchange(certificateWith("78") + certificateWith("77") + certificateWith("79"), server.url());
    if (isZrtk()) {
        EXPECT_EQ(code, number(Code::CertRevoked));
        EXPECT_EQ(responder, "before");
        EXPECT_EQ(exchange(certificateWith("77") + certificateWith("79"), server.url()),
                  number(Code::OcspUnknown));
        return;
    }
    ASSERT_EQ(code, 0) << errorText();
    ASSERT_EQ(count, 3);
    const int states[] = {QG_STATUS_REVOKED, QG_STATUS_GOOD, QG_STATUS_UNKNOWN};
    for (int i = 0; i < count; ++i) {
        int state = -7;
        int reason = -7;
        char date[25] = "x";
        EXPECT_EQ(call("OCSP_GetCertStatus", i, &state, +date, &reason), 0);
        EXPECT_EQ(state, states[i]) << i;
        EXPECT_STREQ(date, i == 0 ? "2026-01-01 09:00:00" : "");
        EXPECT_EQ(reason, i == 0 ? 1 : -1);
    }
    int state = -7;
    for (const int outside : {-1, 3})
        EXPECT_EQ(call("OCSP_GetCertStatus", outside, &state, static_cast<char*>(nullptr),
                       static_cast<int*>(nullptr)),
                  number(Code::OcspNoStatus));
    EXPECT_EQ(state, -7);
    EXPECT_NE(verifyResponse(request, "no response"), 0);
    EXPECT_EQ(call("OCSP_GetCertStatus", 0, &state, static_cast<char*>(nullptr), static_cast<int*>(nullptr)),
              number(Code::OcspNoStatus))
        << "statuses of an earlier response are gone";
}

TEST_P(StatusExchange, RequestsAreSignedWhenAsked)
{
    const Bytes certificate = certificateWith("77");
    const Bytes key = testKey(2).privateKeyInfo();
    EXPECT_EQ(make(certificate, true, certificate, key), 0) << errorText();
    EXPECT_TRUE(isSignedBy(request, certificate));
    EXPECT_EQ(make(certificate, false, certificate, key), 0);
    EXPECT_FALSE(isSignedBy(request, certificate));
    EXPECT_EQ(make(certificate, true, authority(), key), number(Code::KeyMismatch));
    EXPECT_EQ(make(certificate, true, certificate, "no key"), number(Code::KeyNotPlain));
    EXPECT_EQ(make(certificate, true, "no certificate", key), number(Code::CertDamaged));
    EXPECT_EQ(request, "before");
}

TEST_P(StatusExchange, AResponseAnswersItsOwnRequestAlone)
{
    const Bytes certificate = certificateWith("77");
    ASSERT_EQ(make(certificate), 0);
    const Bytes first = request;
    ASSERT_EQ(make(certificate), 0);
    const StatusAnswer byAuthority{m_ca->certificate(), testKey(1)};
    EXPECT_EQ(verifyResponse(first, answerGood(first, byAuthority)), 0) << errorText();
    EXPECT_EQ(verifyResponse(request, answerGood(first, byAuthority)), number(Code::OcspUntrusted));
    const StatusAnswer byHolder{certificate, testKey(2)};
    EXPECT_EQ(verifyResponse(first, answerGood(first, byHolder)), number(Code::OcspUntrusted));
    StatusAnswer old = byAuthority;
    old.from -= 200'000;
    old.until = old.from + 1'000;
    EXPECT_EQ(verifyResponse(first, answerGood(first, old)), number(Code::OcspOutdated));
    EXPECT_EQ(responder, "before");
}

TEST_P(StatusExchange, WithoutATrustedRootNoResponseIsBelieved)
{
    const Bytes certificate = certificateWith("77");
    ASSERT_EQ(make(certificate), 0);
    const Bytes answer = answerGood(request, {m_ca->certificate(), testKey(1)});
    restartWith("LANGUAGE=ENG");
    EXPECT_EQ(verifyResponse(request, answer), number(Code::IssuerMissing));
    know(authority());
    EXPECT_EQ(make(certificate), 0);
    EXPECT_EQ(verifyResponse(request, answerGood(request, {m_ca->certificate(), testKey(1)})),
              number(Code::NoTrustedRoot));
}

TEST_P(StatusExchange, BadInputIsToldAndChangesNothing)
{
    const Bytes certificate = certificateWith("77");
    ASSERT_EQ(make(certificate), 0);
    const Bytes good = request;
    const Bytes answer = answerGood(good, {m_ca->certificate(), testKey(1)});
    for (const Bytes& bytes : damagedForms(good, answer)) {
        EXPECT_EQ(send("http://127.0.0.1:1/", certificate, bytes), number(Code::OcspRequestDamaged));
        EXPECT_EQ(response, "before");
        EXPECT_EQ(verifyResponse(bytes, answer), number(Code::OcspRequestDamaged));
    }
    for (const Bytes& bytes : damagedForms(answer, good)) {
        EXPECT_EQ(verifyResponse(good, bytes), number(Code::ReplyDamaged));
        EXPECT_EQ(responder, "before");
    }
    for (const Bytes& bytes : damagedForms(certificate, good)) {
        EXPECT_EQ(make(bytes), number(Code::CertListDamaged));
        EXPECT_EQ(request, "before");
    }
    EXPECT_EQ(make(Authority::root(nameFromText("cn=x,c=KR"), testKey(4)).issue(TestPki::leaf())),
              number(Code::IssuerMissing));
    BINSTR* none = nullptr;
    BinString output(library, "before");
    EXPECT_EQ(call("OCSP_MakeOCSPReq", none, false, none, none, &output), number(Code::BadArgument));
    EXPECT_EQ(call("OCSP_SendAndRecv", static_cast<char*>(nullptr), none, none, &output),
              number(Code::BadArgument));
    EXPECT_EQ(output.bytes(), "before");
    EXPECT_EQ(
        library.callBare("OCSP_MakeOCSPReq", static_cast<void*>(nullptr), none, false, none, none, &output),
        number(Code::NoContext));
    EXPECT_EQ(count, -7);
}

TEST_P(StatusExchange, ServersThatMisbehaveAreTold)
{
    const RawServer stalling([](int) {});
    const RawServer dripping(drip);
    const RawServer closing([](int client) { answerAndEnd(client, ""); });
    const RawServer another([](int client) { answerAndEnd(client, "220 mail ready\r\n"); });
    const RawServer talking([](int client) {
        readHttpBody(client);
        answerAndEnd(client, httpReply("<html>"));
    });
    const RawServer echoing([](int client) { answerAndEnd(client, httpReply(readHttpBody(client))); });
    const RawServer refusing([](int client) {
        readHttpBody(client);
        answerAndEnd(client, httpReply(fromHex("30030a0106"))); // OCSPResponse: unauthorized
    });
    const Bytes certificate = certificateWith("77");
    ASSERT_EQ(make(certificate), 0);
    const Bytes good = request;
    const auto codeAt = [&](const std::string& url) {
        return send(url, certificate, good);
    };
    EXPECT_EQ(codeAt(stalling.url("http")), number(Code::ServerTimeout));
    EXPECT_EQ(codeAt(dripping.url("http")), number(Code::ServerTimeout));
    EXPECT_EQ(codeAt(closing.url("http")), number(Code::ServerRefused));
    EXPECT_EQ(codeAt(another.url("http")), number(Code::ServerRefused));
    EXPECT_EQ(codeAt("http://127.0.0.1:" + std::to_string(freePort())), number(Code::ServerUnreachable));
    EXPECT_EQ(codeAt("ldap://127.0.0.1/x"), number(Code::UrlRefused));
    EXPECT_EQ(codeAt(talking.url("http")), number(Code::ReplyDamaged));
    EXPECT_EQ(codeAt(echoing.url("http")), number(Code::ReplyDamaged));
    EXPECT_EQ(response, "before");
    EXPECT_EQ(codeAt(refusing.url("http")), 0) << errorText();
    EXPECT_EQ(verifyResponse(good, response), number(Code::OcspRefused));
}

TEST_P(StatusExchange, TwoContextsOnTwoThreadsDoNotMeet)
{
    const Bytes certificate = certificateWith("77");
    const Bytes known = authority();
    const StatusAnswer answer{m_ca->certificate(), testKey(1)};
    const auto run = [&] {
        void* own = nullptr;
        EXPECT_EQ(library.callBare("API_Init", &own, text(workDirectory)), 0);
        BinString root(library, pki.root.certificate());
        BinString issuers(library, known);
        EXPECT_EQ(library.callBare("CERT_AddTrustedCert", own, &root), 0);
        EXPECT_EQ(library.callBare(isZrtk() ? "CERT_SetCaPubs" : "API_SetCaPubs", own, &issuers), 0);
        for (int i = 0; i < 20; ++i) {
            BINSTR* none = nullptr;
            BinString list(library, certificate);
            BinString made(library);
            EXPECT_EQ(library.callBare("OCSP_MakeOCSPReq", own, &list, false, none, none, &made), 0);
            BinString given(library, answerGood(made.bytes(), answer));
            int answers = 0;
            EXPECT_EQ(isZrtk() ? library.callBare("OCSP_VerifyResMsg", own, &made, &given, none)
                               : library.callBare("OCSP_VerifyResMsg", own, &made, &given, &answers, none),
                      0);
        }
        EXPECT_EQ(library.callBare("API_Finish", own), 0);
    };
    const std::future<void> other = std::async(std::launch::async, run);
    run();
    other.wait();
}

TEST_P(StatusExchange, TheServiceThatAFileNamesVerifies)
{
    const Responder server = responderFor(indexOf("77", false) + indexOf("78", true));
    const std::string settings = "[OPEN_TOOLKIT]\nIVS_URL=" + server.url() + "\n";
    EXPECT_EQ(verifyByService(settings, certificateWith("77")), 0) << errorText();
    EXPECT_EQ(verifyByService(settings, certificateWith("78")), number(Code::CertRevoked));
    EXPECT_EQ(verifyByService(settings, certificateWith("79")), number(Code::OcspUnknown));
    EXPECT_EQ(verifyByService(settings, "no certificate"), number(Code::CertDamaged));
    EXPECT_EQ(verifyByService("[OPEN_TOOLKIT]\n", certificateWith("77")), number(Code::ServiceMissing));
    EXPECT_THAT(errorText(), HasSubstr("The configuration names no validation service (1335)"));
    const RawServer stalling([](int) {});
    EXPECT_EQ(verifyByService("[OPEN_TOOLKIT]\nIVS_URL=" + stalling.url("http"), certificateWith("77")),
              number(Code::ServerTimeout));
    BinString certificate(library, certificateWith("77"));
    BinString noCertificate(library, "x");
    EXPECT_EQ(call("CERT_VerifyByIVS", text("/nowhere"), &certificate, &certificate),
              number(Code::FileMissing));
    EXPECT_EQ(call("CERT_VerifyByIVS", text(""), &certificate, &certificate), number(Code::BadArgument));
    EXPECT_EQ(call("CERT_VerifyByIVS", text("/nowhere"), &certificate, &noCertificate),
              number(Code::CertDamaged));
}

TEST_P(StatusExchange, TheServiceIsAskedOfWhoHoldsTheNumber)
{
    const Responder server = responderFor(indexOf("77", false) + indexOf("78", true));
    const std::string file = workDirectory + "/service.conf";
    writeFile(file, "[OPEN_TOOLKIT]\nIVS_URL=" + server.url() + "\n");
    const auto codeFor = [&](const std::string& serial, const std::string& stated) {
        Request holder = TestPki::leaf();
        holder.key = testKey(2).withRandom(keyRandom);
        holder.serial = serial;
        holder.identity = Identity{"홍길동", idNumber, "SHA256"};
        BinString certificate(library, m_ca->issue(holder));
        BinString random(library, keyRandom);
        BinString asker(library, pki.root.certificate());
        return call("VID_VerifyByIVS", text(file), &certificate, &random, text(stated), &asker);
    };
    EXPECT_EQ(codeFor("77", idNumber), 0) << errorText();
    EXPECT_EQ(codeFor("77", "1234561234568"), number(Code::IdentityMismatch));
    EXPECT_EQ(codeFor("78", idNumber), number(Code::CertRevoked));
}

/** The main toolkit's form in one call. */
class ZrtkStatusExchange : public StatusExchange
{};
INSTANTIATE_TEST_SUITE_P(Zrtk, ZrtkStatusExchange, testing::Values(zrtkSide));

TEST_P(ZrtkStatusExchange, OneCallChecksOneCertificate)
{
    const Responder server = responderFor(indexOf("77", false) + indexOf("78", true));
    const auto check = [&](const Bytes& der, const std::string& url) {
        BinString certificate(library, der);
        BINSTR* none = nullptr;
        return call("OCSP_CheckCertStatus", text(url), &certificate, false, none, none);
    };
    EXPECT_EQ(check(certificateWith("77"), server.url()), 0) << errorText();
    EXPECT_EQ(check(certificateWith("78"), server.url()), number(Code::CertRevoked));
    EXPECT_EQ(check(certificateWith("77"), ""), number(Code::OcspMissing));
    EXPECT_EQ(check("no certificate", server.url()), number(Code::CertDamaged));
}
