/* Servers that misbehave, and arguments of no use. */

#include <openssl/err.h>

#include "CmpTest.h"
#include "TimeStampServer.h"

using qgtk::Code;
using samplepki::Bytes;

class CmpServers : public CmpTest
{
protected:
    /** Gives servers a second. */
    void hurry() { restartWith("CONNECT_TIMEOUT=1\nTOTAL_TIMEOUT=1\nLANGUAGE=ENG\nCMP_KEY=256"); }

    /** The code of a request, which must fail and leave its outputs as they were. */
    int codeAt(int port, const std::string& host = "127.0.0.1")
    {
        Records records(library);
        const int code = request(host, port, records);
        EXPECT_TRUE(records.areUntouched());
        EXPECT_NE(errorText(), "");
        return code;
    }

    static std::function<void(int)> saying(const std::string& reply)
    {
        return [reply](int client) {
            readHttpBody(client);
            answerAndEnd(client, reply);
        };
    }
};
INSTANTIATE_ZR_SIDE(CmpServers);

TEST_P(CmpServers, ThatMisbehaveAreTold)
{
    const RawServer stalling([](int) {});
    const RawServer dripping(drip);
    const RawServer closing(saying(""));
    const RawServer cut(saying(httpReply("\x30\x82\x10\x01 and so on").substr(0, 40)));
    const RawServer failing(saying(httpReply("no", "500 Internal Error")));
    const RawServer talking(saying(httpReply("<html>hello</html>")));
    const RawServer other(saying(httpReply(authority.pki.ca.certificate())));
    const RawServer mail(saying("220 mail.example.com ESMTP\r\n"));
    EXPECT_EQ(codeAt(closing.port()), number(Code::ServerRefused));
    EXPECT_NE(codeAt(cut.port()), 0);
    EXPECT_EQ(codeAt(failing.port()), number(Code::ServerRefused));
    EXPECT_EQ(codeAt(talking.port()), number(Code::ReplyDamaged));
    EXPECT_EQ(codeAt(other.port()), number(Code::ReplyDamaged));
    EXPECT_EQ(codeAt(mail.port()), number(Code::ServerRefused));
    EXPECT_EQ(codeAt(freePort()), number(Code::ServerUnreachable));
    EXPECT_EQ(codeAt(0, "ftp://127.0.0.1/"), number(Code::UrlRefused));
    EXPECT_EQ(codeAt(0), number(Code::BadArgument));
    EXPECT_EQ(codeAt(65536), number(Code::BadArgument));
    hurry();
    EXPECT_EQ(codeAt(stalling.port()), number(Code::ServerTimeout));
    EXPECT_EQ(codeAt(dripping.port()), number(Code::ServerTimeout));
}

TEST_P(CmpServers, ThatMisbehaveOverTcpAreTold)
{
    constexpr char finalResponse = 5;
    const RawServer stalling([](int) {});
    const RawServer talking([](int client) {
        readStampMessage(client);
        answerAndEnd(client, stampMessage("hello", finalResponse));
    });
    ASSERT_EQ(call("CMP_SetProtocol", QG_CMP_TCP + 0), 0);
    EXPECT_EQ(codeAt(talking.port()), number(Code::ReplyDamaged));
    EXPECT_EQ(codeAt(freePort()), number(Code::ServerUnreachable));
    EXPECT_EQ(codeAt(0), number(Code::BadArgument));
    hurry();
    ASSERT_EQ(call("CMP_SetProtocol", QG_CMP_TCP + 0), 0);
    EXPECT_EQ(codeAt(stalling.port()), number(Code::ServerTimeout));
}

TEST_P(CmpServers, ThatAskForMorePatienceThanThereIsAreNotWaitedFor)
{
    hurry();
    authority.options = [](std::size_t) {
        return std::vector<std::string>{"-poll_count", "9", "-check_after", "600"};
    };
    EXPECT_EQ(codeAt(authority.port()), number(Code::ServerTimeout));
}

TEST_P(CmpServers, AnAnswerToAnotherRequestIsNotTaken)
{
    std::string first;
    const RawServer replaying([&](int client) {
        readHttpBody(client);
        answerAndEnd(client, first);
    });
    const RawServer echoing([&](int client) { answerAndEnd(client, httpReply(readHttpBody(client))); });
    EXPECT_EQ(codeAt(echoing.port()), number(Code::ReplyDamaged));
    Records records(library);
    ASSERT_EQ(request(authority, records), 0) << errorText();
    first = httpReply(authority.lastReply());
    EXPECT_EQ(codeAt(replaying.port()), number(Code::ReplyDamaged));
}

TEST_P(CmpServers, ChangedAnswersAreNotBelieved)
{
    int place = 40;
    const RawServer changing([&](int client) {
        std::string reply = authority.handle(readHttpBody(client));
        reply[reply.size() - static_cast<std::size_t>(place)] ^= 1;
        answerAndEnd(client, httpReply(reply));
    });
    for (place = 20; place < 400; place += 97)
        EXPECT_NE(codeAt(changing.port()), 0) << place;
    const std::string whole = authority.lastReply();
    std::string reply;
    const RawServer cutting([&](int client) {
        readHttpBody(client);
        answerAndEnd(client, httpReply(reply));
    });
    for (const std::string& wrong : {std::string(), whole.substr(0, 1), whole.substr(0, whole.size() / 2),
                                     whole.substr(0, whole.size() - 1), whole + "x", noise(2000),
                                     Bytes("\x30\x80\x00\x00", 4), Bytes("\x30\x84\x7f\xff\xff\xff", 6)}) {
        reply = wrong;
        const int code = codeAt(cutting.port());
        EXPECT_THAT(code, testing::AnyOf(number(Code::ReplyDamaged), number(Code::ServerRefused),
                                         number(Code::ReplyTooLarge)))
            << wrong.size();
    }
}

TEST_P(CmpServers, AreNotAskedWithArgumentsOfNoUse)
{
    Records records(library);
    char* none = nullptr;
    BINSTR* nothing = nullptr;
    const std::string file = authority.authorityFile;
    const auto ask = [&](char* host, char* number, char* code, char* id, char* authorityPath,
                         BINSTR* certificate, BINSTR* manageKey) {
        return call("CMP_CertRequest", host, authority.port(), number, code, id, authorityPath, certificate,
                    &records.signKey, &records.manageCertificate, manageKey, &records.authorities);
    };
    char* const host = text("127.0.0.1");
    char* const ref = text(reference);
    char* const code = text(secretCode);
    char* const id = text(idNumber);
    const int bad = number(Code::BadArgument);
    BINSTR* const first = &records.signCertificate;
    BINSTR* const last = &records.manageKey;
    EXPECT_EQ(ask(none, ref, code, id, text(file), first, last), bad);
    EXPECT_EQ(ask(text(""), ref, code, id, text(file), first, last), bad);
    EXPECT_EQ(ask(host, none, code, id, text(file), first, last), bad);
    EXPECT_EQ(ask(host, text(""), code, id, text(file), first, last), bad);
    EXPECT_EQ(ask(host, ref, none, id, text(file), first, last), bad);
    EXPECT_EQ(ask(host, ref, text(""), id, text(file), first, last), bad);
    EXPECT_EQ(ask(host, text(std::string(70000, 'x')), code, id, text(file), first, last), bad);
    EXPECT_EQ(ask(host, ref, code, none, text(file), first, last), bad);
    EXPECT_EQ(ask(host, ref, code, text(" - "), text(file), first, last), bad);
    EXPECT_EQ(ask(host, ref, code, id, none, first, last), bad);
    EXPECT_EQ(ask(host, ref, code, id, text(file + ".not"), first, last), number(Code::FileMissing));
    EXPECT_EQ(ask(host, ref, code, id, text(file), nothing, last), bad);
    EXPECT_EQ(ask(host, ref, code, id, text(file), first, nothing), bad);
    for (const std::string& wrong :
         {std::string("x"), noise(300), authority.pki.ca.certificate().substr(0, 99)}) {
        writeFile(file, wrong);
        EXPECT_EQ(ask(host, ref, code, id, text(file), first, last), number(Code::CertDamaged));
    }
    EXPECT_TRUE(records.areUntouched());
    EXPECT_TRUE(authority.bodies().empty());
}

TEST_P(CmpServers, TheHostsErrorsStay)
{
    ERR_clear_error();
    ERR_raise_data(ERR_LIB_USER, 17, "of the host");
    const unsigned long error = ERR_peek_error();
    Records records(library);
    EXPECT_EQ(request(authority, records), 0);
    EXPECT_EQ(request(authority, records, "wrong"), number(Code::CmpSecretWrong));
    EXPECT_EQ(ERR_get_error(), error);
    EXPECT_EQ(ERR_get_error(), 0U);
}
