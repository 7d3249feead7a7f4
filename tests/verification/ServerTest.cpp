#include <sys/socket.h>

#include "PublishedPki.h"

using namespace samplepki;
using qgtk::Code;
using testing::HasSubstr;

class Server : public PublishedPki
{};
INSTANTIATE_BOTH_SIDES(Server);

TEST_P(Server, ListsGiveTheVerdict)
{
    prepare();
    const Bytes certificate = leaf(files.url(caList));
    EXPECT_EQ(verify(certificate), 0) << errorText();
    struct Row
    {
        Bytes list;
        Code code;
    };
    const Authority impostor = Authority::root(nameFromText(caName), testKey(5));
    for (const Row& row :
         {Row{m_ca->revocationList({.serials = {"76", "77"}}), Code::CertRevoked},
          Row{m_ca->revocationList({.validity = Validity::days(-9, -1)}), Code::CrlExpired},
          Row{m_ca->revocationList({.validity = Validity::days(1, 9)}), Code::CrlNotYetValid},
          Row{impostor.revocationList(), Code::CrlSignature},
          Row{pki.root.revocationList(), Code::CrlMissing}, Row{"no list", Code::ReplyDamaged}}) {
        publish(caList, row.list);
        EXPECT_EQ(verify(certificate), number(row.code));
        EXPECT_THAT(errorText(), testing::StartsWith(std::string("<wrenlib>") +
                                                     textOfCode(row.code, qgtk::Language::English)));
        EXPECT_THAT(errorText(), HasSubstr(": cn=Hong,o=Sample,c=KR"));
    }
}

TEST_P(Server, RevokedAuthoritiesSpoilTheWholeChainAlone)
{
    prepare();
    publish(rootList, pki.root.revocationList({.serials = {"2"}}));
    const Bytes certificate = leaf(files.url(caList));
    EXPECT_EQ(verify(certificate), number(Code::CertRevoked));
    EXPECT_THAT(errorText(), HasSubstr(": cn=Test CA 1,o=Sample,c=KR"));
    look(Source::Crl, false);
    EXPECT_EQ(verify(certificate), 0);
}

TEST_P(Server, AListTellsDateAndReason)
{
    prepare();
    const Bytes der = leaf(files.url(caList));
    BinString certificate(library, der);
    char date[25] = "x";
    int reason = 7;
    EXPECT_EQ(call("CERT_CheckStatByCRL", &certificate, +date, &reason), 0) << errorText();
    EXPECT_STREQ(date, "");
    EXPECT_EQ(reason, -1);
    publish(caList, m_ca->revocationList(
                        {.serials = {"77"}, .validity = {1'790'000'000, 1'990'000'000}, .reason = 4}));
    EXPECT_EQ(call("CERT_CheckStatByCRL", &certificate, +date, &reason), number(Code::CertRevoked))
        << errorText();
    EXPECT_STREQ(date, "2026-09-21 23:13:20");
    EXPECT_EQ(reason, 4);
    EXPECT_EQ(
        call("CERT_CheckStatByCRL", &certificate, static_cast<char*>(nullptr), static_cast<int*>(nullptr)),
        number(Code::CertRevoked));
}

TEST_P(Server, RespondersGiveTheVerdict)
{
    prepare(Source::Ocsp, false);
    const Bytes key = testKey(1).privateKeyInfo();
    const Responder good(indexOf("77", false), authority(), authority(), key);
    const Responder revoked(indexOf("77", true), authority(), authority(), key);
    const Responder unknown(indexOf("78", false), authority(), authority(), key);
    const Authority stranger = Authority::root(nameFromText("cn=Stranger,o=Sample,c=KR"), testKey(5));
    const Responder untrusted(indexOf("77", false), authority(), stranger.certificate(),
                              testKey(5).privateKeyInfo());
    EXPECT_EQ(verify(leaf(files.url(caList), good.url())), 0) << errorText();
    EXPECT_EQ(verify(leaf(files.url(caList), revoked.url())), number(Code::CertRevoked)) << errorText();
    EXPECT_EQ(verify(leaf(files.url(caList), unknown.url())), number(Code::OcspUnknown)) << errorText();
    EXPECT_EQ(verify(leaf(files.url(caList), untrusted.url())), number(Code::OcspUntrusted)) << errorText();
    EXPECT_EQ(verify(leaf(files.url(caList))), number(Code::OcspMissing)) << errorText();
}

TEST_P(Server, ServersThatDripEndWithTheTimeLimit)
{
    prepare();
    const std::string head = "HTTP/1.0 200 OK\r\nContent-Length: 100005\r\n\r\n" + fromHex("30830186a0");
    const RawServer http([&](int client) {
        answerWith(client, head);
        drip(client);
    });
    const RawServer ldap([](int client) {
        answerWith(client, fromHex("30830186a0"));
        drip(client);
    });
    const RawServer slowHead([](int client) { drip(client); });
    const auto start = std::chrono::steady_clock::now();
    for (const std::string& url : {http.url("http"), ldap.url("ldap"), slowHead.url("http")}) {
        EXPECT_EQ(verify(leaf(url + "/o=x")), number(Code::ServerTimeout)) << url;
        EXPECT_THAT(errorText(), HasSubstr("<wrenlib>The server does not answer in time (1402): cn=Hong"));
    }
    // The limit is 2 s each; without one the drops would go on for hours.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::minutes(1));
}

TEST_P(Server, AllThatOneVerificationAsksHasOneLimit)
{
    prepare();
    const RawServer silent([](int) {});
    Request request = TestPki::leaf();
    for (int i = 0; i < 50; ++i)
        request.crlPoints.push_back(silent.url("http") + "/" + std::to_string(i));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(verify(m_ca->issue(request)), number(Code::ServerTimeout));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30)) << "50 times 2 s otherwise";
}

TEST_P(Server, ServersThatDoNotServeAreTold)
{
    prepare();
    const RawServer silent([](int) {});
    const RawServer dripping(
        [](int client) { answerWith(client, "HTTP/1.0 200 OK\r\nContent-Length: 100\r\n\r\n0"); });
    const RawServer halfReply([](int client) { answerWith(client, "\x30\x84"); });
    const RawServer closing([](int client) { shutdown(client, SHUT_RDWR); });
    const std::string closed = "127.0.0.1:" + std::to_string(freePort()) + "/x";
    struct Row
    {
        std::string url;
        Code code;
    };
    for (const auto& [url, code] :
         {Row{"http://" + closed, Code::ServerUnreachable}, Row{"ldap://" + closed, Code::ServerUnreachable},
          Row{silent.url("http") + "/x", Code::ServerTimeout},
          Row{silent.url("ldap") + "/x", Code::ServerTimeout},
          Row{dripping.url("http") + "/x", Code::ServerTimeout},
          Row{halfReply.url("ldap") + "/o=x", Code::ServerTimeout},
          Row{closing.url("http") + "/x", Code::ServerRefused},
          Row{closing.url("ldap") + "/o=x", Code::ServerRefused},
          Row{files.url("missing.crl"), Code::ServerRefused}, Row{"https://127.0.0.1/x", Code::UrlRefused},
          Row{"file:///etc/passwd", Code::UrlRefused}, Row{"ldapi://%2ftmp%2fx/o=x", Code::UrlRefused},
          Row{"no address", Code::UrlRefused}}) {
        EXPECT_EQ(verify(leaf(url)), number(code)) << url << ": " << errorText();
        EXPECT_THAT(errorText(), HasSubstr(url)) << "the text names the address";
    }
}
