/* Status requests, validation services and time stamps over and over: nothing grows. */

#include "MemoryGrowth.h"
#include "PublishedPki.h"
#include "StatusAnswer.h"
#include "TimeStampServer.h"
#include "quillgate/algorithms.h"

using namespace samplepki;

namespace {

constexpr const char* content = "what is stamped in each round";
constexpr const char* idNumber = "1234561234567";

/** Each round verifies some paths, a millisecond for each signature: fewer rounds show as well what grows. */
int slowRounds()
{
    return memory_growth::rounds() / 5;
}

} // namespace

class ExchangeRounds : public PublishedPki
{
protected:
    void SetUp() override
    {
        PublishedPki::SetUp();
        prepare(Source::None);
        Request holder = TestPki::leaf();
        holder.key = testKey(2).withRandom(keyRandom);
        holder.identity = Identity{"홍길동", idNumber};
        certificate = m_ca->issue(holder);
    }

    Bytes request(bool sign)
    {
        BinString asked(library, certificate);
        BinString signer(library, certificate);
        BinString key(library, testKey(2).privateKeyInfo());
        BinString made(library);
        EXPECT_EQ(call("OCSP_MakeOCSPReq", &asked, sign, &signer, &key, &made), 0);
        return made.bytes();
    }

    int verify(const Bytes& asked, const Bytes& answered)
    {
        BinString requestBytes(library, asked);
        BinString responseBytes(library, answered);
        BinString signer(library);
        int count = 0;
        return isZrtk() ? call("OCSP_VerifyResMsg", &requestBytes, &responseBytes, &signer)
                        : call("OCSP_VerifyResMsg", &requestBytes, &responseBytes, &count, &signer);
    }

    StatusAnswer byAuthority() { return {m_ca->certificate(), testKey(1)}; }

    const Bytes keyRandom = fromHex("0102030405060708090a0b0c0d0e0f1011121314");
    Bytes certificate;
};
INSTANTIATE_BOTH_SIDES(ExchangeRounds);

TEST_P(ExchangeRounds, StatusesLeaveNothing)
{
    memory_growth::expectNone(
        [&] {
            const Bytes first = request(true);
            const Bytes answer = answerGood(first, byAuthority());
            EXPECT_EQ(verify(first, answer), 0);
            EXPECT_NE(verify(request(false), answer), 0);
            EXPECT_NE(verify(first, answer.substr(0, answer.size() / 2)), 0);
            EXPECT_NE(verify(answer, first), 0);
        },
        slowRounds());
}

TEST_P(ExchangeRounds, ValidationServicesLeaveNothing)
{
    const StatusAnswer good = byAuthority();
    const RawServer service(
        [&](int client) { answerAndEnd(client, httpReply(answerGood(readHttpBody(client), good))); });
    const std::string file = workDirectory + "/service.conf";
    writeFile(file, "[OPEN_TOOLKIT]\nIVS_URL=" + service.url("http") + "\n");
    memory_growth::expectNone(
        [&] {
            BinString holder(library, certificate);
            BinString random(library, keyRandom);
            BinString wrong(library, "wrong");
            BinString asker(library, pki.root.certificate());
            EXPECT_EQ(call("CERT_VerifyByIVS", text(file), &holder, &asker), 0) << errorText();
            EXPECT_EQ(call("VID_VerifyByIVS", text(file), &holder, &random, text(idNumber), &asker), 0);
            EXPECT_NE(call("VID_VerifyByIVS", text(file), &holder, &wrong, text(idNumber), &asker), 0);
        },
        slowRounds());
}

TEST_P(ExchangeRounds, TimeStampsLeaveNothing)
{
    Request wanted{.subject = nameFromText("cn=TSA,o=Sample,c=KR"), .key = testKey(3)};
    wanted.extras = {{"extendedKeyUsage", der::sequence({der::oid("timeStamping")}), true}};
    const TimeStampServer server(TestHome::scratch("tsa").string(), StampTransport::Http, m_ca->issue(wanted),
                                 testKey(3).privateKeyInfo());
    BinString data(library, content);
    const auto make = [&] {
        BINSTR* none = nullptr;
        BinString made(library);
        EXPECT_EQ(call("TSP_MakeReqMsg", &data, QG_HASH_SHA256 + 0, text(""), false, none, none, &made), 0);
        return made.bytes();
    };
    const Bytes request = make();
    const Bytes response = server.responseTo(request);
    const RawServer replay([&](int client) {
        readHttpBody(client);
        answerAndEnd(client, httpReply(response));
    });
    memory_growth::expectNone(
        [&] {
            BinString asked(library, request);
            BinString answered(library);
            BinString signer(library);
            BinString token(library);
            EXPECT_EQ(call("TSP_SendAndRecv", text(replay.url("http")), 0, &asked, &answered), 0);
            EXPECT_EQ(call("TSP_VerifyResMsg", &answered, &signer, &token), 0) << errorText();
            EXPECT_EQ(call("TSP_VerifyToken", &data, &token), 0);
            EXPECT_NE(call("TSP_VerifyToken", &asked, &token), 0);
            EXPECT_NE(call("TSP_VerifyToken", &data, &answered), 0);
            make();
            EXPECT_NE(call("TSP_VerifyResMsg", &answered, &signer, &token), 0) << "of another request";
        },
        slowRounds());
}
