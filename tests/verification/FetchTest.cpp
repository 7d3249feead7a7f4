#include <csignal>
#include <sys/socket.h>

#include "Servers.h"
#include "VerificationTest.h"

using namespace samplepki;
using qgtk::Code;

namespace {

std::string redirectionTo(const std::string& url)
{
    return httpReply("", "302 Found", "Location: " + url + "\r\n");
}

/** The header of a DER sequence of 100 MiB, and some of it. */
const std::string hugeObject = samplepki::fromHex("308406400000") + std::string(1 << 20, '\0');

} // namespace

/** Objects asked for by their address, and paths whose issuers a directory has. */
class Fetch : public VerificationTest
{
protected:
    void SetUp() override { restartWith("CONNECT_TIMEOUT=1\nTOTAL_TIMEOUT=2\nLANGUAGE=ENG"); }

    int fetch(int dataType, const std::string& url)
    {
        BinString data(library);
        const int code =
            call(isZrtk() ? "ZRAP_GetDataByURL" : "LDAP_GetDataByURL", dataType, text(url), &data);
        fetched = code == 0 ? data.bytes() : std::string();
        return code;
    }

    std::vector<Entry> entries()
    {
        return {
            {rootName,
             {{"cACertificate;binary", pki.root.certificate()},
              {"authorityRevocationList;binary", rootList}}},
            {caName,
             {{"cACertificate;binary", pki.ca.certificate()}, {"certificateRevocationList;binary", caList}}}};
    }

    TestPki pki;
    const Bytes rootList = pki.root.revocationList();
    const Bytes caList = pki.ca.revocationList();
    std::string fetched;
};
INSTANTIATE_BOTH_SIDES(Fetch);

TEST_P(Fetch, ADirectoryGivesWhatItsAddressNames)
{
    const DirectoryServer directory(entries());
    EXPECT_EQ(fetch(1, directory.url() + "/" + rootName), 0) << "raw blanks, as the list service joins them";
    EXPECT_EQ(fetched, pki.root.certificate());
    EXPECT_EQ(fetch(1, directory.url() + "//" + rootName), 0) << "an address that ends in a slash";
    EXPECT_EQ(fetch(1, directory.url() + "/cn=Test%20CA%201,o=Sample,c=kr"), 0);
    EXPECT_EQ(fetched, pki.ca.certificate());
    EXPECT_EQ(fetch(3, directory.url() + "/" + caName), 0);
    EXPECT_EQ(fetched, caList);
    for (const char* attribute : {"?authorityRevocationList", "?authorityRevocationList;binary"})
        EXPECT_EQ(fetch(3, directory.url() + "/" + rootName + attribute), 0) << attribute;
    EXPECT_EQ(fetched, rootList);
    EXPECT_EQ(fetch(4, directory.url() + "/" + caName), number(Code::EntryMissing)) << "no such attribute";
    EXPECT_EQ(fetch(1, directory.url() + "/cn=Nobody,o=Sample,c=KR"), number(Code::EntryMissing));
    EXPECT_EQ(fetch(1, directory.url() + "/no name"), number(Code::UrlRefused));
    EXPECT_EQ(fetch(3, directory.url() + "/" + caName + "?cACertificate"), number(Code::ReplyDamaged));
    for (const int unknown : {0, 5, -1})
        EXPECT_EQ(fetch(unknown, directory.url() + "/" + rootName), number(Code::BadArgument));
}

TEST_P(Fetch, IssuersAndListsComeFromTheConfiguredDirectory)
{
    const DirectoryServer directory(entries());
    const std::string port = std::to_string(directory.port);
    restartWith("TOTAL_TIMEOUT=2\nLANGUAGE=ENG\n[VALIDATOIN_OPTION]\n" +
                std::string(isZrtk() ? "CA_INFO_COUNT=1\n[CA_INFO1]\nCA_DN="
                                     : "LDAP_INFO_COUNT=1\n[LDAP_INFO1]\nDN=") +
                rootName + (isZrtk() ? "\nDIR_URL=" : "\nURL=") + directory.url());
    trust(pki.root.certificate());
    const Bytes leaf = pki.ca.issue(TestPki::leaf());
    EXPECT_EQ(verify(leaf), 0) << errorText();
    BinString certificate(library, leaf);
    BinString list(library);
    EXPECT_EQ(call(isZrtk() ? "ZRAP_GetCRLByCert" : "LDAP_GetCRLByCert", &certificate, &list), 0);
    EXPECT_EQ(list.bytes(), caList);
}

TEST_P(Fetch, CountsOfNoUseNameNoDirectory)
{
    for (const char* count : {"-1", "99999999999999999999", "2000000000", "x", ""}) {
        restartWith(std::string("LANGUAGE=ENG\n[VALIDATOIN_OPTION]\nCA_INFO_COUNT=") + count +
                    "\nLDAP_INFO_COUNT=" + count + "\n[CA_INFO1]\nDIR_URL=ldap://127.0.0.1:1\n");
        trust(pki.root.certificate());
        EXPECT_EQ(verify(pki.ca.issue(TestPki::leaf())), number(Code::IssuerMissing)) << count;
    }
}

TEST_P(Fetch, IssuersComeFromTheAddressInTheCertificate)
{
    const std::string directory = TestHome::scratch("issuers").string();
    writeFile(directory + "/ca.cer", pki.ca.certificate());
    const FileServer files(directory);
    trust(pki.root.certificate());
    look(Source::None);
    Request request = TestPki::leaf();
    request.issuersUrl = files.url("ca.cer");
    EXPECT_EQ(verify(pki.ca.issue(request)), 0) << errorText();
    writeFile(directory + "/ca.cer", "no certificate");
    EXPECT_EQ(verify(pki.ca.issue(request)), number(Code::IssuerMissing));
}

TEST_P(Fetch, IssuersComeInAMessageOfSeveralCertificatesToo)
{
    const std::string directory = TestHome::scratch("issuers").string();
    std::string chain;
    for (const Bytes& der : {pki.root.certificate(), pki.ca.certificate()})
        chain += pem(der, "CERTIFICATE");
    writeFile(directory + "/chain.pem", chain);
    ASSERT_EQ(runProgram({"openssl", "crl2pkcs7", "-nocrl", "-certfile", directory + "/chain.pem", "-outform",
                          "DER", "-out", directory + "/chain.p7c"}),
              0);
    const FileServer files(directory);
    trust(pki.root.certificate());
    look(Source::None);
    Request request = TestPki::leaf();
    request.issuersUrl = files.url("chain.p7c");
    EXPECT_EQ(verify(pki.ca.issue(request)), 0) << errorText();
    EXPECT_EQ(fetch(1, files.url("chain.p7c")), 0);
    EXPECT_EQ(fetched, pki.root.certificate()) << "the first of them";
    EXPECT_EQ(fetch(3, files.url("chain.p7c")), number(Code::ReplyDamaged)) << "no list is in it";
    ASSERT_EQ(
        runProgram({"openssl", "crl2pkcs7", "-nocrl", "-outform", "DER", "-out", directory + "/none.p7c"}),
        0);
    EXPECT_EQ(fetch(1, files.url("none.p7c")), number(Code::ReplyDamaged)) << "nothing is in it";
}

TEST_P(Fetch, RedirectionsLeadToHttpAlone)
{
    const Bytes certificate = pki.root.certificate();
    const RawServer target([&](int client) { answerAndEnd(client, httpReply(certificate)); });
    const auto redirected = [&](const std::string& url) {
        const RawServer first([&](int client) { answerAndEnd(client, redirectionTo(url)); });
        return fetch(1, first.url("http") + "/a");
    };
    EXPECT_EQ(redirected(target.url("http") + "/b"), 0) << errorText();
    EXPECT_EQ(fetched, certificate);
    for (const char* refused :
         {"file:///etc/passwd", "https://127.0.0.1/x", "ldap://127.0.0.1/o=x", "gopher://x"})
        EXPECT_EQ(redirected(refused), number(Code::UrlRefused)) << refused;
    EXPECT_EQ(redirected("/again"), number(Code::ServerRefused)) << "round and round";
}

TEST_P(Fetch, RepliesOfAHundredMebibytesAreNotReadToTheirEnd)
{
    constexpr int mebibytes = 100;
    int sent = 0;
    const auto send = [&](int client, const std::string& head) {
        const std::string part(1 << 20, '\0');
        sent = 0;
        for (bool taken = answerWith(client, head); taken && sent < mebibytes; ++sent)
            taken = answerWith(client, part);
    };
    const std::string objectHead = hugeObject.substr(0, 6);
    for (const std::string& head : {"HTTP/1.0 200 OK\r\n\r\n" + objectHead,
                                    "HTTP/1.0 200 OK\r\nContent-Length: 104857606\r\n\r\n" + objectHead,
                                    std::string("HTTP/1.0 200 OK\r\n\r\n") + "no object at all"}) {
        {
            const RawServer server([&](int client) { send(client, head); });
            EXPECT_NE(fetch(3, server.url("http") + "/x"), 0);
        }
        EXPECT_LT(sent, mebibytes) << head;
    }
    {
        const RawServer server([&](int client) { send(client, objectHead); });
        EXPECT_EQ(fetch(3, server.url("ldap") + "/o=x"), number(Code::ReplyTooLarge)) << errorText();
    }
    EXPECT_LT(sent, mebibytes);
}

TEST_P(Fetch, RepliesBeyondTheLimitAreNotRead)
{
    const RawServer http([](int client) { answerAndEnd(client, httpReply(hugeObject)); });
    const RawServer ldap([](int client) { answerAndEnd(client, hugeObject); });
    EXPECT_EQ(fetch(3, http.url("http") + "/x"), number(Code::ReplyTooLarge)) << errorText();
    EXPECT_EQ(fetch(3, ldap.url("ldap") + "/o=x"), number(Code::ReplyTooLarge)) << errorText();
}

TEST_P(Fetch, RepliesOfAnotherKindAreRefused)
{
    for (const std::string& body : {std::string("<html>"), std::string(), samplepki::fromHex("3000"),
                                    pki.root.certificate() + "more"}) {
        const RawServer server([&](int client) { answerAndEnd(client, httpReply(body)); });
        const int code = fetch(1, server.url("http") + "/x");
        EXPECT_TRUE(code == number(Code::ReplyDamaged) || code == number(Code::ServerRefused)) << errorText();
        EXPECT_EQ(fetched, "");
    }
}

TEST_P(Fetch, HostsThatDoNotResolveAreTold)
{
    for (const char* scheme : {"http", "ldap"}) {
        const int code = fetch(1, std::string(scheme) + "://no-such-host.invalid/o=x");
        EXPECT_TRUE(code == number(Code::ServerUnreachable) || code == number(Code::ServerTimeout)) << code;
    }
    for (const char* url :
         {"", "ldap://", "http://", "ldap:///o=x", "://x", "ldap://[::1", "http://127.0.0.1:99999/"}) {
        EXPECT_NE(fetch(1, url), 0) << url;
    }
    EXPECT_NE(fetch(1, "ldap://127.0.0.1:1/" + std::string(100'000, 'x')), 0);
}

TEST_P(Fetch, SignalsStayAsTheyWere)
{
    const RawServer closing([](int client) { shutdown(client, SHUT_RDWR); });
    sigset_t before;
    pthread_sigmask(SIG_SETMASK, nullptr, &before);
    for (int i = 0; i < 5; ++i)
        EXPECT_NE(fetch(1, closing.url(i % 2 ? "http" : "ldap") + "/o=x"), 0);
    sigset_t after;
    sigset_t waiting;
    pthread_sigmask(SIG_SETMASK, nullptr, &after);
    sigpending(&waiting);
    EXPECT_EQ(sigismember(&before, SIGPIPE), sigismember(&after, SIGPIPE));
    EXPECT_EQ(sigismember(&waiting, SIGPIPE), 0);
}

class GpkiFetch : public Fetch
{};
INSTANTIATE_TEST_SUITE_P(Gpki, GpkiFetch, testing::Values(gpkiSide));

TEST_P(GpkiFetch, ACommonNameFindsItsEntry)
{
    const DirectoryServer directory(entries());
    BinString data(library);
    char name[1024] = {};
    const auto find = [&](const std::string& commonName, int dataType) {
        return call("LDAP_GetDataByCN", text("127.0.0.1"), directory.port, text(commonName), dataType, +name,
                    &data);
    };
    EXPECT_EQ(find("Test CA 1", 1), 0) << errorText();
    EXPECT_EQ(data.bytes(), pki.ca.certificate());
    EXPECT_STREQ(name, caName);
    EXPECT_EQ(find("*", 1), number(Code::EntryMissing)) << "no pattern";
    EXPECT_EQ(find("Nobody", 1), number(Code::EntryMissing));
    EXPECT_EQ(call("LDAP_GetDataByCN", text("127.0.0.1"), 70000, text("x"), 1, +name, &data),
              number(Code::BadArgument));
    EXPECT_EQ(call("LDAP_GetAnyDataByURL", text("cn"), text(directory.url() + "/" + caName), &data), 0);
    EXPECT_EQ(data.bytes(), "Test CA 1");
}

TEST_P(GpkiFetch, APathIsCollectedFromTheGivenFilesDirectory)
{
    const DirectoryServer directory(entries());
    const std::string file = TestHome::scratch("conf").string() + "/other.conf";
    writeFile(file, "[VALIDATOIN_OPTION]\nLDAP_INFO_COUNT=1\n[LDAP_INFO1]\nURL=" + directory.url() + "\n");
    const Bytes leaf = pki.ca.issue(TestPki::leaf());
    BinString certificate(library, leaf);
    BinString path(library);
    EXPECT_EQ(call("LDAP_GetCertPath", &certificate, text(file), &path), 0) << errorText();
    EXPECT_EQ(path.bytes(), leaf + pki.ca.certificate() + pki.root.certificate());
}

class ZrtkPath : public Fetch
{};
INSTANTIATE_TEST_SUITE_P(Zrtk, ZrtkPath, testing::Values(zrtkSide));

TEST_P(ZrtkPath, UtilitiesWalkThePath)
{
    const Bytes leaf = pki.ca.issue(TestPki::leaf());
    BinString certificate(library, leaf);
    BinString root(library, pki.root.certificate());
    BinString stranger(library, Authority::root(nameFromText(rootName), testKey(5)).certificate());
    BinString result(library);
    EXPECT_EQ(call("UTIL_GetCertPath", &certificate, &result), number(Code::IssuerMissing));
    know(pki.ca.certificate() + pki.root.certificate());
    EXPECT_EQ(call("UTIL_GetCertPath", &certificate, &result), 0) << errorText();
    EXPECT_EQ(result.bytes(), leaf + pki.ca.certificate() + pki.root.certificate());
    EXPECT_EQ(call("UTIL_GetRootCert", &certificate, &result), 0);
    EXPECT_EQ(result.bytes(), pki.root.certificate());
    bool trusted = false;
    EXPECT_EQ(call("UTIL_IsTrustCert", &certificate, &root, &trusted), 0);
    EXPECT_TRUE(trusted);
    EXPECT_EQ(call("UTIL_IsTrustCert", &certificate, &stranger, &trusted), 0);
    EXPECT_FALSE(trusted);
}

TEST_P(ZrtkPath, NamesAreComparedWithoutCaseAndBlanks)
{
    const auto compare = [&](const char* first, const char* second) {
        return call("UTIL_CompareDN", text(first), text(second));
    };
    EXPECT_EQ(compare("cn=A B,o=Sample,c=KR", "CN = a  b , O=sample,C=kr "), 0);
    EXPECT_EQ(compare("", ""), 0);
    EXPECT_EQ(compare("cn=A B,c=KR", "cn=AB,c=KR"), number(Code::NamesDiffer));
    EXPECT_EQ(compare("cn=A,c=KR", "c=KR,cn=A"), number(Code::NamesDiffer));
}
