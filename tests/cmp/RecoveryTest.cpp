/* Keys that an authority gives back: OpenSSL's server knows no such messages, so that they are made here. */

#include <openssl/crmf.h>

#include "CmpTest.h"
#include "FreedScan.h"
#include "MemoryGrowth.h"
#include "Programs.h"
#include "RawFile.h"
#include "samplepki/Extensions.h"

using namespace samplepki;
using qgtk::Code;
using testing::HasSubstr;

namespace {

/** What a response is to say. */
struct Response
{
    int status = 0;
    std::vector<Bytes> pairs; /**< CertifiedKeyPair, DER */
    std::string secret = secretCode;
    bool otherNonce = false;
    bool otherTransaction = false;
};

Bytes macBy(const Bytes& parameters, const Bytes& covered, const std::string& secret)
{
    using ParametersHandle = qgtk::Handle<OSSL_CRMF_PBMPARAMETER, OSSL_CRMF_PBMPARAMETER_free>;
    const auto decoded =
        qgtk::decodeDer<ParametersHandle>(d2i_OSSL_CRMF_PBMPARAMETER, qgtk::bytesOf(parameters));
    const auto* key = reinterpret_cast<const unsigned char*>(secret.data());
    unsigned char* mac = nullptr;
    std::size_t length = 0;
    OSSL_CRMF_pbm_new(nullptr, nullptr, decoded.get(), reinterpret_cast<const unsigned char*>(covered.data()),
                      covered.size(), key, secret.size(), &mac, &length);
    const Bytes bytes(mac, mac + length);
    OPENSSL_free(mac);
    return bytes;
}

/** Whether a request is for recovery, has the secret's MAC and proves the possession of its key. */
bool isSound(const Bytes& request)
{
    using MessagesHandle = qgtk::Handle<OSSL_CRMF_MSGS, OSSL_CRMF_MSGS_free>;
    const Element header = at(request, {0, 0});
    const Element body = at(request, {0, 1});
    const Bytes parameters = at(tagged(header.content, 0xA1).content, {0, 1}).whole;
    const Bytes mac = macBy(parameters, der::sequence({header.whole, body.whole}), secretCode);
    const auto messages = qgtk::decodeDer<MessagesHandle>(d2i_OSSL_CRMF_MSGS, qgtk::bytesOf(body.content));
    return bodyOf(request) == KeyRecovery && at(request, {0, 2, 0}).content == Bytes(1, '\0') + mac &&
           messages && OSSL_CRMF_MSGS_verify_popo(messages.get(), 0, 0, nullptr, nullptr) == 1;
}

/** A field of a header behind version, sender and recipient, whose tags the fields have too. */
Element fieldOf(const Element& header, unsigned char tag)
{
    Bytes fields;
    const std::vector<Element> all = elementsOf(header.content);
    for (std::size_t i = 3; i < all.size(); ++i)
        fields += all[i].whole;
    return tagged(fields, tag);
}

Bytes responseTo(const Bytes& request, const Response& response)
{
    const Element header = at(request, {0, 0});
    const Element algorithm = tagged(header.content, 0xA1);
    Bytes nonce = fieldOf(header, 0xA5).content;
    Bytes transaction = fieldOf(header, 0xA4).content;
    nonce.back() = static_cast<char>(nonce.back() ^ (response.otherNonce ? 1 : 0));
    transaction.back() = static_cast<char>(transaction.back() ^ (response.otherTransaction ? 1 : 0));
    const Bytes answered = der::sequence(
        {der::integer(2), at(header.whole, {0, 2}).whole, at(header.whole, {0, 1}).whole, algorithm.whole,
         der::context(4, transaction), der::context(5, der::element(der::OctetString, "0123456789abcdef")),
         der::context(6, nonce)});
    Bytes pairs;
    for (const Bytes& pair : response.pairs)
        pairs += pair;
    const Bytes status = der::sequence({der::integer(static_cast<std::uint64_t>(response.status))});
    const Bytes history = pairs.empty() ? Bytes() : der::context(2, der::sequence({pairs}));
    const Bytes body = der::context(KeyRecovered, der::sequence({status, history}));
    const Bytes mac =
        macBy(at(algorithm.content, {0, 1}).whole, der::sequence({answered, body}), response.secret);
    return der::sequence({answered, body, der::context(0, der::bitString(mac))});
}

} // namespace

class CmpRecoveries : public CmpTest
{
protected:
    const Issued signing = issued(2, SigningUse, "77");
    const Issued management = issued(5, EnvelopeUse, "78");

    /** A key as the authority keeps it: encrypted by openssl for the holder of a certificate. */
    Bytes encrypted(const std::string& key, const std::string& receiver)
    {
        const std::string cipherKey = noise(32);
        const std::string initial = noise(16, 2);
        openssl({"enc", "-aes-256-cbc", "-K", hex(cipherKey), "-iv", hex(initial), "-in", file("plain", key),
                 "-out", at("value")});
        openssl({"pkeyutl", "-encrypt", "-certin", "-inkey", file("receiver", pem(receiver, "CERTIFICATE")),
                 "-in", file("cipher", cipherKey), "-out", at("cipherKey")});
        return encryptedValue(initial);
    }

    /** EncryptedValue of the files that openssl has written, by AES-256. */
    Bytes encryptedValue(const Bytes& initial)
    {
        const Bytes algorithm = der::oid("2.16.840.1.101.3.4.1.42") + der::element(der::OctetString, initial);
        return der::sequence({der::element(0xA1, algorithm),
                              der::element(0x82, Bytes(1, '\0') + readFile(at("cipherKey"))),
                              der::bitString(readFile(at("value")))});
    }

    /** A pair that openssl has made and encrypted: nothing of its key, nor of what that is encrypted with,
     * was ever in this process. */
    Bytes foreignPair()
    {
        const TestPki& pki = authority.pki;
        file("holder", pem(signing.certificate, "CERTIFICATE"));
        file("ca", pem(pki.ca.certificate(), "CERTIFICATE"));
        file("caKey", pem(testKey(1).privateKeyInfo(), "PRIVATE KEY"));
        const std::string initial = noise(16);
        const Outcome made = runIn(
            at(""), "set -e; openssl rand -out cipher 32\n"
                    "openssl genpkey -algorithm EC -pkeyopt ec_paramgen_curve:P-256 | openssl pkcs8 -topk8 "
                    "-nocrypt -outform DER -out kept\n"
                    "openssl pkey -inform DER -in kept -pubout -out public\n"
                    "openssl x509 -new -subj /C=KR/O=Sample/CN=Hong -force_pubkey public -CA ca -CAkey caKey "
                    "-outform DER -out made\n"
                    "openssl enc -aes-256-cbc -K $(od -An -v -tx1 cipher | tr -d ' \\n') -iv " +
                        hex(initial) +
                        " -in kept -out value\n"
                        "openssl pkeyutl -encrypt -certin -inkey holder -in cipher -out cipherKey");
        EXPECT_EQ(made.status, 0) << made.output;
        return pairOf(readFile(at("made")), encryptedValue(initial));
    }

    static Bytes pairOf(const std::string& certificate, const Bytes& key)
    {
        return der::sequence({der::context(0, certificate), key.empty() ? Bytes() : der::context(0, key)});
    }

    Bytes wholePair()
    {
        return pairOf(management.certificate, encrypted(management.key, signing.certificate));
    }

    /** The code of a recovery from an authority that answers so. */
    int recover(const Response& response, const std::string& signKey = {})
    {
        bool sound = false;
        const RawServer server([&](int client) {
            const Bytes request = readHttpBody(client);
            sound = isSound(request);
            answerAndEnd(client, httpReply(responseTo(request, response)));
        });
        const int code = recoverAt(server.port(), signKey);
        EXPECT_TRUE(sound);
        return code;
    }

    int recoverAt(int port, const std::string& signKey = {})
    {
        BinString certificate(library, signing.certificate);
        BinString key(library, signKey.empty() ? signing.key : signKey);
        BinString manageCertificate(library, "before"), manageKey(library, "before");
        const int code = call("CMP_CertRecovery", text("127.0.0.1"), port, text(reference), text(secretCode),
                              &certificate, &key, &manageCertificate, &manageKey);
        recoveredCertificate = manageCertificate.bytes();
        recoveredKey = manageKey.bytes();
        if (code != 0) {
            EXPECT_EQ(recoveredCertificate + recoveredKey, "beforebefore");
        }
        return code;
    }

    std::string recoveredCertificate;
    std::string recoveredKey;
};
INSTANTIATE_ZR_SIDE(CmpRecoveries);

TEST_P(CmpRecoveries, GiveTheKeyBack)
{
    ASSERT_EQ(recover({.pairs = {wholePair()}}), 0) << errorText();
    EXPECT_EQ(recoveredCertificate, management.certificate);
    EXPECT_EQ(recoveredKey, management.key) << "byte for byte, with its random value";
}

TEST_P(CmpRecoveries, GiveTheNewestOfSeveral)
{
    Request old{.subject = nameFromText(leafName), .key = testKey(4), .keyUsage = EnvelopeUse};
    old.validity = Validity::days(-1000, -300);
    const Bytes oldPair =
        pairOf(authority.pki.ca.issue(old), encrypted(testKey(4).privateKeyInfo(), signing.certificate));
    const Bytes keyless = pairOf(issued(6, EnvelopeUse, "79").certificate, {});
    ASSERT_EQ(recover({.pairs = {oldPair, wholePair(), oldPair, keyless}}), 0) << errorText();
    EXPECT_EQ(recoveredKey, management.key);
}

TEST_P(CmpRecoveries, AnswersOfNoUseAreTold)
{
    const Bytes whole = wholePair();
    EXPECT_EQ(recover({}), number(Code::CmpKeyMissing));
    EXPECT_EQ(recover({.pairs = {pairOf(management.certificate, {})}}), number(Code::CmpKeyMissing));
    EXPECT_EQ(recover({.status = 2, .pairs = {whole}}), number(Code::CmpRefused));
    EXPECT_THAT(errorText(), HasSubstr("rejection"));
    EXPECT_EQ(recover({.pairs = {whole}, .secret = "another"}), number(Code::CmpUntrusted));
    EXPECT_EQ(recover({.pairs = {whole}, .otherNonce = true}), number(Code::ReplyDamaged));
    EXPECT_EQ(recover({.pairs = {whole}, .otherTransaction = true}), number(Code::ReplyDamaged));
    const Bytes ours = encrypted(management.key, signing.certificate);
    EXPECT_EQ(recover({.pairs = {pairOf(signing.certificate, ours)}}), number(Code::CmpCertificateOther));
    Request other{.subject = nameFromText("cn=Kim,o=Sample,c=KR"), .key = testKey(5)};
    EXPECT_EQ(recover({.pairs = {pairOf(authority.pki.ca.issue(other), ours)}}),
              number(Code::CmpCertificateOther))
        << "somebody else's";
    const Bytes theirs = encrypted(management.key, management.certificate);
    EXPECT_NE(recover({.pairs = {pairOf(management.certificate, theirs)}}), 0) << "encrypted for another key";
    EXPECT_EQ(recover({.pairs = {pairOf(management.certificate, der::sequence({der::integer(1)}))}}),
              number(Code::ReplyDamaged));
}

TEST_P(CmpRecoveries, AServerThatKnowsThemNotRefuses)
{
    EXPECT_EQ(recoverAt(authority.port()), number(Code::CmpRefused));
    EXPECT_EQ(authority.bodies(), std::vector<int>{KeyRecovery});
    EXPECT_THAT(errorText(), HasSubstr("unexpected pkibody"));
    authority.secret = "another";
    EXPECT_EQ(recoverAt(authority.port()), number(Code::CmpSecretWrong));
}

TEST_P(CmpRecoveries, PairsOfNoUseAreNotSent)
{
    EXPECT_EQ(recoverAt(authority.port(), management.key), number(Code::KeyMismatch));
    EXPECT_EQ(recoverAt(authority.port(), noise(99)), number(Code::KeyNotPlain));
    EXPECT_EQ(recoverAt(0), number(Code::BadArgument));
    BINSTR* none = nullptr;
    BinString certificate(library, signing.certificate), key(library, signing.key), output(library);
    EXPECT_EQ(call("CMP_CertRecovery", text("127.0.0.1"), authority.port(), text(reference), text(secretCode),
                   &certificate, &key, &output, none),
              number(Code::BadArgument));
    EXPECT_EQ(call("CMP_CertRecovery", text("127.0.0.1"), authority.port(), text(""), text(secretCode),
                   &certificate, &key, &output, &output),
              number(Code::BadArgument));
    EXPECT_TRUE(authority.bodies().empty());
}

TEST_P(CmpRecoveries, LeaveNothing)
{
    Response response{.pairs = {wholePair()}};
    const RawServer server([&](int client) {
        const Bytes request = readHttpBody(client);
        answerAndEnd(client, httpReply(responseTo(request, response)));
    });
    memory_growth::expectNone(
        [&] {
            response.status = 0;
            EXPECT_EQ(recoverAt(server.port()), 0);
            response.status = 2;
            EXPECT_EQ(recoverAt(server.port()), number(Code::CmpRefused));
        },
        memory_growth::rounds() / 5);
}

TEST_P(CmpRecoveries, TheKeyIsTheCallersAlone)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer maps terabytes and keeps freed memory";
#endif
    const Response response{.pairs = {foreignPair()}};
    RawFile cipherKey(at("cipher"));
    FreedScan freed;
    freed.add(cipherKey.text(), cipherKey.length());
    const RawServer server([&](int client) {
        const Bytes request = readHttpBody(client);
        answerAndEnd(client, httpReply(responseTo(request, response)));
    });
    BinString certificate(library, signing.certificate);
    BinString key(library, signing.key);
    BinString manageCertificate(library);
    BINSTR recovered = {};
    ASSERT_EQ(call("CMP_CertRecovery", text("127.0.0.1"), server.port(), text(reference), text(secretCode),
                   &certificate, &key, &manageCertificate, &recovered),
              0)
        << errorText();
    MemoryScan scan;
    // The private number stands at a fixed place of the key.
    constexpr std::size_t place = 36;
    constexpr std::size_t length = 32;
    scan.add("key", {reinterpret_cast<const char*>(recovered.pData) + place, length});
    scan.add("key of the cipher", {cipherKey.text() + lostWhenFreed, cipherKey.length() - lostWhenFreed});
    EXPECT_THAT(scan.find(), testing::SizeIs(2)) << "one of each";
    cipherKey.wipe();
    EXPECT_EQ(library.callBare("BINSTR_Delete", &recovered), 0);
    EXPECT_THAT(scan.find(), testing::IsEmpty());
    EXPECT_EQ(freed.hits(), 0U);
}
