/* Time stamps: requested, fetched over TCP and HTTP from "openssl ts", verified, read. */

#include <array>
#include <future>

#include "PublishedPki.h"
#include "TimeStampServer.h"
#include "quillgate/algorithms.h"

using namespace samplepki;
using qgtk::Code;
using testing::HasSubstr;
using testing::MatchesRegex;

namespace {

constexpr const char* content = "what is stamped";
constexpr const char* contentHash = "1db8eae50d1da1e143ed5e564a7c86de5affe7d638b99f24f2fbbcb684e6e86a";
constexpr char finalResponse = 5;

} // namespace

class TimeStamps : public PublishedPki
{
protected:
    void SetUp() override
    {
        PublishedPki::SetUp();
        prepare(Source::None);
    }

    /** The certificate of a server, for these purposes. */
    Bytes serverCertificate(const std::string& purpose = "timeStamping")
    {
        Request wanted{.subject = nameFromText("cn=TSA,o=Sample,c=KR"), .key = testKey(3)};
        wanted.extras = {{"extendedKeyUsage", der::sequence({der::oid(purpose)}), true}};
        return m_ca->issue(wanted);
    }

    TimeStampServer serverBy(StampTransport transport, const Bytes& certificate)
    {
        return {TestHome::scratch("tsa").string(), transport, certificate, testKey(3).privateKeyInfo()};
    }

    int make(const Bytes& data, int hash = QG_HASH_SHA256, const std::string& policy = {}, bool sign = false)
    {
        BinString input(library, data);
        BINSTR* none = nullptr;
        BinString output(library, "before");
        const int code = call("TSP_MakeReqMsg", &input, hash, text(policy), sign, none, none, &output);
        request = output.bytes();
        return code;
    }

    int send(const std::string& host, int port, const Bytes& bytes)
    {
        BinString input(library, bytes);
        BinString output(library, "before");
        const int code = call("TSP_SendAndRecv", text(host), port, &input, &output);
        response = output.bytes();
        return code;
    }

    int verifyResponse(const Bytes& bytes)
    {
        BinString input(library, bytes);
        BinString certificate(library, "before");
        BinString output(library, "before");
        const int code = call("TSP_VerifyResMsg", &input, &certificate, &output);
        signer = certificate.bytes();
        token = output.bytes();
        return code;
    }

    int verifyToken(const Bytes& data, const Bytes& bytes)
    {
        BinString input(library, data);
        BinString stamp(library, bytes);
        return call("TSP_VerifyToken", &input, &stamp);
    }

    /** A verified token over the content. */
    void stamp(const TimeStampServer& server)
    {
        ASSERT_EQ(make(content), 0) << errorText();
        ASSERT_EQ(verifyResponse(server.responseTo(request)), 0) << errorText();
    }

    Bytes request;
    Bytes response;
    Bytes signer;
    Bytes token;
};
INSTANTIATE_BOTH_SIDES(TimeStamps);

TEST_P(TimeStamps, AreFetchedOverTcpAndHttp)
{
    const Bytes certificate = serverCertificate();
    for (const StampTransport transport : {StampTransport::Tcp, StampTransport::Http}) {
        const TimeStampServer server = serverBy(transport, certificate);
        const bool overTcp = transport == StampTransport::Tcp;
        ASSERT_EQ(make(content), 0) << errorText();
        ASSERT_EQ(send(overTcp ? "127.0.0.1" : server.url(), overTcp ? server.port() : 0, request), 0)
            << errorText();
        EXPECT_EQ(verifyResponse(response), 0) << errorText();
        EXPECT_EQ(signer, certificate);
        EXPECT_EQ(verifyToken(content, token), 0) << errorText();
        EXPECT_EQ(verifyToken("something else", token), number(Code::StampOfOther));
    }
}

TEST_P(TimeStamps, AnotherProgramReadsTheRequestAndVerifiesTheToken)
{
    const TimeStampServer server = serverBy(StampTransport::Tcp, serverCertificate());
    stamp(server);
    const std::string at = TestHome::scratch("check").string() + "/";
    writeFile(at + "data", content);
    writeFile(at + "token", token);
    writeFile(at + "root", pem(pki.root.certificate(), "CERTIFICATE"));
    writeFile(at + "authority", pem(m_ca->certificate(), "CERTIFICATE"));
    EXPECT_EQ(runProgram({"openssl", "ts", "-verify", "-data", at + "data", "-in", at + "token", "-token_in",
                          "-CAfile", at + "root", "-untrusted", at + "authority"}),
              0);
}

TEST_P(TimeStamps, HashAndPolicyAreThoseAskedFor)
{
    const TimeStampServer server = serverBy(StampTransport::Tcp, serverCertificate());
    for (const int hash : {QG_HASH_SHA1, QG_HASH_SHA512, QG_HASH_CONTEXT}) {
        ASSERT_EQ(make(content, hash, "1.2.3.4.5"), 0);
        EXPECT_EQ(verifyResponse(server.responseTo(request)), 0) << errorText();
        EXPECT_EQ(verifyToken(content, token), 0);
    }
    ASSERT_EQ(make(content, QG_HASH_SHA256, "1.2.3.4.6"), 0);
    EXPECT_EQ(verifyResponse(server.responseTo(request)), number(Code::StampRefused));
    ASSERT_EQ(make(content, QG_HASH_SHA384), 0);
    EXPECT_EQ(verifyResponse(server.responseTo(request)), number(Code::StampRefused));
    EXPECT_EQ(make(content, 99), number(Code::AlgorithmCodeUnknown));
    EXPECT_EQ(make(content, QG_HASH_SHA256, "no policy"), number(Code::BadArgument));
    EXPECT_EQ(make(content, QG_HASH_SHA256, "", true), number(Code::NotSupported));
    EXPECT_EQ(request, "before");
}

TEST_P(TimeStamps, AResponseAnswersItsOwnRequestAlone)
{
    const TimeStampServer server = serverBy(StampTransport::Tcp, serverCertificate());
    ASSERT_EQ(make(content), 0);
    const Bytes first = server.responseTo(request);
    ASSERT_EQ(make(content), 0);
    EXPECT_EQ(verifyResponse(first), number(Code::StampOfOther)) << "another nonce";
    EXPECT_EQ(token, "before");
    EXPECT_EQ(signer, "before");
    restartWith("LANGUAGE=ENG");
    EXPECT_EQ(verifyResponse(first), number(Code::StampNotRequested));
}

TEST_P(TimeStamps, SignersNeedThePurpose)
{
    stamp(serverBy(StampTransport::Tcp, serverCertificate()));
    const std::string at = TestHome::scratch("again").string() + "/";
    writeFile(at + "token", token);
    writeFile(at + "key", pem(testKey(3).privateKeyInfo(), "PRIVATE KEY"));
    ASSERT_EQ(runProgram({"openssl", "cms", "-verify", "-noverify", "-inform", "DER", "-in", at + "token",
                          "-out", at + "info"}),
              0);
    const auto signedAgain = [&](const Bytes& certificate) {
        writeFile(at + "signer", pem(certificate, "CERTIFICATE"));
        EXPECT_EQ(
            runProgram({"openssl",  "cms",       "-sign",   "-binary",        "-nodetach",
                        "-cades",   "-md",       "sha256",  "-econtent_type", "1.2.840.113549.1.9.16.1.4",
                        "-in",      at + "info", "-signer", at + "signer",    "-inkey",
                        at + "key", "-outform",  "DER",     "-out",           at + "made"}),
            0);
        return readFile(at + "made");
    };
    EXPECT_EQ(verifyToken(content, signedAgain(serverCertificate())), 0) << errorText();
    EXPECT_EQ(verifyToken(content, signedAgain(serverCertificate("emailProtection"))),
              number(Code::StampUntrusted));
}

TEST_P(TimeStamps, SignersNeedATrustedPath)
{
    stamp(serverBy(StampTransport::Tcp, serverCertificate()));
    const Bytes good = token;
    Authority stranger = Authority::root(nameFromText("cn=Stranger,c=KR"), testKey(4));
    Request wanted{.subject = nameFromText("cn=TSA,c=KR"), .key = testKey(3)};
    wanted.extras = {{"extendedKeyUsage", der::sequence({der::oid("timeStamping")}), true}};
    const TimeStampServer strange = serverBy(StampTransport::Tcp, stranger.issue(wanted));
    ASSERT_EQ(make(content), 0);
    EXPECT_EQ(verifyResponse(strange.responseTo(request)), number(Code::IssuerMissing));
    restartWith("LANGUAGE=ENG");
    EXPECT_EQ(verifyToken(content, good), number(Code::NoTrustedRoot));
}

TEST_P(TimeStamps, AChangedTokenIsNotBelieved)
{
    stamp(serverBy(StampTransport::Tcp, serverCertificate()));
    Bytes changed = token;
    changed.back() = static_cast<char>(changed.back() ^ 1); // in the signature, which comes last
    EXPECT_EQ(verifyToken(content, changed), number(Code::StampUntrusted));
}

TEST_P(TimeStamps, BadInputIsToldAndChangesNothing)
{
    const TimeStampServer server = serverBy(StampTransport::Tcp, serverCertificate());
    stamp(server);
    const Bytes goodToken = token;
    const Bytes goodResponse = server.responseTo(request);
    const Bytes goodRequest = request;
    for (const Bytes& bytes : damagedForms(goodToken, goodResponse))
        EXPECT_EQ(verifyToken(content, bytes), number(Code::StampDamaged));
    for (const Bytes& bytes : damagedForms(goodResponse, goodRequest)) {
        EXPECT_EQ(verifyResponse(bytes), number(Code::ReplyDamaged));
        EXPECT_EQ(token, "before");
        EXPECT_EQ(signer, "before");
    }
    for (const Bytes& bytes : damagedForms(goodRequest, goodResponse)) {
        EXPECT_EQ(send("127.0.0.1", server.port(), bytes), number(Code::StampRequestDamaged));
        EXPECT_EQ(response, "before");
    }
    for (const int port : {-1, 0, 65536})
        EXPECT_EQ(send("127.0.0.1", port, goodRequest), number(Code::BadArgument));
    EXPECT_EQ(send("", 1, goodRequest), number(Code::BadArgument));
    BINSTR* none = nullptr;
    EXPECT_EQ(call("TSP_VerifyToken", none, none), number(Code::BadArgument));
    EXPECT_EQ(call("TSP_VerifyResMsg", none, none, none), number(Code::BadArgument));
    EXPECT_EQ(library.callBare("TSP_VerifyToken", static_cast<void*>(nullptr), none, none),
              number(Code::NoContext));
}

TEST_P(TimeStamps, ServersThatMisbehaveAreTold)
{
    const auto readAndSay = [](const std::string& bytes) {
        return [bytes](int client) {
            readStampMessage(client);
            answerAndEnd(client, bytes);
        };
    };
    const RawServer stalling([](int) {});
    const RawServer dripping(drip);
    const RawServer closing(readAndSay(""));
    const RawServer cut(readAndSay(stampMessage("0123456789", finalResponse).substr(0, 8)));
    const RawServer refusing(readAndSay(stampMessage("no", 6)));
    const RawServer polling(readAndSay(stampMessage("0000", 1)));
    const RawServer talking(readAndSay(stampMessage("hello", finalResponse)));
    const RawServer endless(readAndSay("\x7f\xff\xff\xff\x05"));
    ASSERT_EQ(make(content), 0);
    const Bytes good = request;
    const auto codeAt = [&](int port) {
        return send("127.0.0.1", port, good);
    };
    EXPECT_EQ(codeAt(stalling.port()), number(Code::ServerTimeout));
    EXPECT_NE(codeAt(dripping.port()), 0);
    EXPECT_EQ(codeAt(closing.port()), number(Code::ServerRefused));
    EXPECT_EQ(codeAt(cut.port()), number(Code::ServerRefused));
    EXPECT_EQ(codeAt(refusing.port()), number(Code::ServerRefused));
    EXPECT_EQ(codeAt(polling.port()), number(Code::ReplyDamaged));
    EXPECT_EQ(codeAt(talking.port()), number(Code::ReplyDamaged));
    EXPECT_EQ(codeAt(endless.port()), number(Code::ReplyTooLarge));
    EXPECT_EQ(codeAt(freePort()), number(Code::ServerUnreachable));
    EXPECT_EQ(send(stalling.url("http"), 0, good), number(Code::ServerTimeout));
    EXPECT_EQ(send(stalling.url("https"), 0, good), number(Code::UrlRefused));
    EXPECT_EQ(response, "before");
}

TEST_P(TimeStamps, TwoContextsOnTwoThreadsDoNotMeet)
{
    stamp(serverBy(StampTransport::Tcp, serverCertificate()));
    const Bytes stamped = token;
    const auto run = [&] {
        void* own = nullptr;
        EXPECT_EQ(library.callBare("API_Init", &own, text(workDirectory)), 0);
        BinString root(library, pki.root.certificate());
        BinString issuers(library, m_ca->certificate());
        EXPECT_EQ(library.callBare("CERT_AddTrustedCert", own, &root), 0);
        EXPECT_EQ(library.callBare(isZrtk() ? "CERT_SetCaPubs" : "API_SetCaPubs", own, &issuers), 0);
        for (int i = 0; i < 20; ++i) {
            BinString data(library, content);
            BinString stampBytes(library, stamped);
            EXPECT_EQ(library.callBare("TSP_VerifyToken", own, &data, &stampBytes), 0);
        }
        EXPECT_EQ(library.callBare("API_Finish", own), 0);
    };
    const std::future<void> other = std::async(std::launch::async, run);
    run();
    other.wait();
}

TEST_P(TimeStamps, FieldsAreRead)
{
    const Bytes certificate = serverCertificate();
    stamp(serverBy(StampTransport::Tcp, certificate));
    std::array<std::array<char, 256>, 8> texts = {};
    const auto at = [&](std::size_t i) {
        return texts[i].data();
    };
    BinString stampBytes(library, token);
    BinString server(library);
    const auto read = [&](BinString& bytes, int size) {
        return isZrtk()
                   ? call("TSP_GetTokenInfo", &bytes, size, at(2), at(3), at(4), at(5), at(6), at(7), &server)
                   : call("TSP_GetTokenInfo", &bytes, size, at(0), at(1), at(2), at(3), at(4), at(5), at(6),
                          at(7));
    };
    ASSERT_EQ(read(stampBytes, 256), 0) << errorText();
    EXPECT_STREQ(at(0), isZrtk() ? "" : "TSA");
    EXPECT_STREQ(at(1), isZrtk() ? "" : "cn=TSA,o=Sample,c=KR");
    EXPECT_STREQ(at(2), "1.2.3.4.1");
    EXPECT_STREQ(at(3), "sha256");
    EXPECT_STREQ(at(4), contentHash);
    EXPECT_STREQ(at(5), "0a12") << "the next number behind the one in the server's file";
    EXPECT_THAT(at(6), MatchesRegex("20..-..-.. ..:..:.."));
    EXPECT_THAT(at(7), MatchesRegex("[0-9a-f]+"));
    EXPECT_EQ(server.bytes(), isZrtk() ? certificate : "");
    EXPECT_EQ(read(stampBytes, 5), 0);
    EXPECT_STREQ(at(4), std::string(contentHash).substr(0, 4).c_str());
    EXPECT_EQ(library.callBare("BINSTR_Delete", &server), 0);
    EXPECT_EQ(read(stampBytes, 0), number(Code::BadArgument));
    BinString none(library, "no token");
    EXPECT_EQ(read(none, 256), number(Code::StampDamaged));
    EXPECT_STREQ(at(2), "1.2.") << "a failure changes nothing";
    EXPECT_EQ(server.bytes(), "");
}

/** What the main toolkit alone has. */
class ZrtkTimeStamps : public TimeStamps
{};
INSTANTIATE_TEST_SUITE_P(Zrtk, ZrtkTimeStamps, testing::Values(zrtkSide));

TEST_P(ZrtkTimeStamps, OneCallStampsDataOrAFile)
{
    const TimeStampServer server = serverBy(StampTransport::Tcp, serverCertificate());
    const std::string file = workDirectory + "/data";
    writeFile(file, content);
    BinString data(library, content);
    BinString stampOfData(library);
    BinString stampOfFile(library);
    BINSTR* none = nullptr;
    char* host = text("127.0.0.1");
    EXPECT_EQ(call("TSP_TimeStampData", host, server.port(), +QG_HASH_SHA256, text(""), &data, false, none,
                   none, &stampOfData),
              0)
        << errorText();
    EXPECT_EQ(call("TSP_TimeStampFile", host, server.port(), +QG_HASH_SHA256, text(""), text(file), false,
                   none, none, &stampOfFile),
              0)
        << errorText();
    EXPECT_EQ(call("TSP_VerifyToken2", text(file), &stampOfData), 0);
    EXPECT_EQ(verifyToken(content, stampOfFile.bytes()), 0);
    writeFile(file, "something else");
    EXPECT_EQ(call("TSP_VerifyToken2", text(file), &stampOfData), number(Code::StampOfOther));
    EXPECT_EQ(call("TSP_VerifyToken2", text("/nowhere"), &stampOfData), number(Code::FileMissing));
}

class GpkiTimeStamps : public TimeStamps
{};
INSTANTIATE_TEST_SUITE_P(Gpki, GpkiTimeStamps, testing::Values(gpkiSide));

TEST_P(GpkiTimeStamps, TheSecondFormTellsWhoSigned)
{
    const Bytes certificate = serverCertificate();
    stamp(serverBy(StampTransport::Tcp, certificate));
    BinString data(library, content);
    BinString other(library, "something else");
    BinString stampBytes(library, token);
    BinString server(library, "before");
    EXPECT_EQ(call("TSP_VerifyToken2", &other, &stampBytes, &server), number(Code::StampOfOther));
    EXPECT_EQ(server.bytes(), "before");
    EXPECT_EQ(call("TSP_VerifyToken2", &data, &stampBytes, &server), 0) << errorText();
    EXPECT_EQ(server.bytes(), certificate);
}
