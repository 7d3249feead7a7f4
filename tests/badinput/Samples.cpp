#include "Samples.h"

#include "Bench.h"
#include "MessageTest.h"
#include "PfxSamples.h"
#include "Rows.h"
#include "StatusAnswer.h"
#include "TimeStampServer.h"

using namespace argument;
using namespace samplepki;

namespace {

constexpr const char* now = "";

TimeStampServer& stampServer()
{
    static const std::string directory = TestHome::scratch("bad-input-tsa");
    static TimeStampServer server = [] {
        Request wanted{.subject = nameFromText("cn=TSA,o=Sample,c=KR"), .key = testKey(3)};
        wanted.extras = {{"extendedKeyUsage", der::sequence({der::oid("timeStamping")}), true}};
        return TimeStampServer(directory, StampTransport::Tcp, messagePki().ca.issue(wanted),
                               testKey(3).privateKeyInfo());
    }();
    return server;
}

/** Readers of its names and key take it, and those of all its extensions don't. */
Sample withDamagedExtension(const KeyPair& pair)
{
    Request wanted{.subject = nameFromText(leafName), .key = pair};
    wanted.extras = {{"subjectAltName", "no names"}};
    return {Kind::Certificate, messagePki().ca.issue(wanted)};
}

/** What is there before any operation. */
void addHolders(Samples& s)
{
    s.certificate = {Kind::Certificate, hong().certificate};
    s.key = {Kind::PlainKey, hong().key};
    s.publicKey = {Kind::PublicKey, testKey(2).publicKeyInfo()};
    s.otherCertificate = {Kind::Certificate, kim().certificate};
    s.otherKey = {Kind::PlainKey, kim().key};
    s.authority = {Kind::Certificate, messagePki().ca.certificate()};
    s.root = {Kind::Certificate, messagePki().root.certificate()};
    s.damagedExtension = withDamagedExtension(testKey(2));
    s.otherDamagedExtension = withDamagedExtension(testKey(3));
    s.withResponder = {
        Kind::Certificate,
        messagePki().ca.issue({.subject = nameFromText(leafName), .key = testKey(2), .ocspUrl = nobodysUrl})};
    s.certificates = {Kind::CertificateList, hong().certificate + kim().certificate};
    s.authorities = {Kind::CertificateList, s.authority.bytes + s.root.bytes};
    s.curveKey = {Kind::PlainKey, KeyPool::key(KeyKind::EcP256, 0).privateKeyInfo()};
    s.otherCurvePublic = {Kind::PublicKey, KeyPool::key(KeyKind::EcP256, 1).publicKeyInfo()};
    s.identified = {Kind::Certificate, sampleHolder().signing.certificate};
    s.identifiedRoot = {Kind::Certificate, sampleHolder().root};
    s.identifiedAuthority = {Kind::CertificateList, sampleHolder().issuer};
    s.identifiedKey = {Kind::PlainKey, sampleHolder().signing.key};
    s.rootList = {Kind::RevocationList, messagePki().root.revocationList()};
    s.authorityList = {Kind::RevocationList, messagePki().ca.revocationList()};
    s.text = {Kind::Value, Samples::content};
    s.symmetricKey = {Kind::Value, noise(32)};
    s.initialValue = {Kind::Value, noise(16)};
}

void addMessages(Samples& s, const Bench& zrtk)
{
    const Argument data = in(s.text);
    const Argument own = in(s.certificate);
    const Argument key = in(s.key);
    const Argument cipher = number(QG_CIPHER_AES256);
    const auto sign = [&](int option) {
        return zrtk.give("CMSMakeSignedData", {number(option), own, key, data, fixed(now), out()});
    };
    s.signature = {Kind::Value, zrtk.give("CRYPTSign", {own, key, number(QG_HASH_SHA256), data, out()})};
    s.signedData = {Kind::SignedData, sign(0)};
    s.detachedData = {Kind::DetachedData, sign(QG_CMS_DETACHED)};
    s.envelopedData = {Kind::EnvelopedData,
                       zrtk.give("CMSMakeEnvelopedData", {number(0), own, data, cipher, out()})};
    s.signedAndEnveloped = {
        Kind::SignedAndEnvelopedData,
        zrtk.give("CMSMakeSignedAndEnvData", {number(0), own, key, own, data, cipher, out()})};
    const std::filesystem::path directory = TestHome::scratch("bad-input-envelope");
    writeFile(directory / "content", Samples::content);
    zrtk.run("CMSMakeEnvelopedDataFile", {own, fixed(directory / "content"), cipher,
                                          fixed(directory / "envelope"), fixed(directory / "encrypted")});
    s.envelopeBeside = {Kind::EnvelopedData, readFile(directory / "envelope")};
    s.encryptedBeside = {Kind::Value, readFile(directory / "encrypted")};
    s.letter = {Kind::EnvelopedData, zrtk.give("WPKIEncryptData", {own, data, cipher, own, key, out()})};
    zrtk.run("CRYPTSetKeyAndIV", {cipher, in(s.symmetricKey), in(s.initialValue)});
    s.encryptedData = {Kind::EncryptedData, zrtk.give("CMSMakeEncryptedData",
                                                      {number(0), {Argument::Number}, data, cipher, out()})};
    s.cipherText = {Kind::Value, zrtk.give("CRYPTEncrypt", {data, out()})};
    s.encryptedBytes = {Kind::Value,
                        zrtk.give("CRYPTAsymEncrypt", {number(QG_KEY_PUBLIC), own, data, out()})};
    s.mac = {Kind::Value,
             zrtk.give("CRYPTGenMAC", {number(QG_HASH_SHA256), fixed(Samples::password), data, out()})};
}

void addKeysAndLists(Samples& s, const Bench& zrtk)
{
    s.encryptedKey = {
        Kind::EncryptedKey,
        zrtk.give("PriKeyEncrypt", {number(QG_CIPHER_AES256), fixed(Samples::password), in(s.key), out()})};
    s.identityRandom = {Kind::Value, zrtk.give("VIDGetRandomFromPriKey", {in(s.identifiedKey), out()})};
    s.pfx = {Kind::Pfx, zrtk.give("PFXExport", {number(0),
                                                fixed(Samples::password),
                                                in(s.certificate),
                                                in(s.key),
                                                {Argument::Number},
                                                {Argument::Number},
                                                out()})};
    const auto listOf = [&](const std::string& first, const std::string& second) {
        const std::string one = zrtk.give("UTILAddObject", {any(first), exchanged({Kind::ObjectList, {}})});
        return zrtk.give("UTILAddObject", {any(second), exchanged({Kind::ObjectList, one})});
    };
    s.objects = {Kind::ObjectList, listOf("first", "second")};
    s.keys = {Kind::ObjectList, listOf(s.key.bytes, s.otherKey.bytes)};
    s.pairTypes = {Kind::ObjectList, listOf("\x01", "\x02")};
    s.base64 = {Kind::Base64Text, zrtk.give("Base64Encode", {any(s.certificate.bytes), out()})};
    s.pem = {Kind::PemText, zrtk.give("PEMEncode", {number(QG_PEM_CERTIFICATE), in(s.certificate), out()})};
}

std::string stampOf(const Bench& bench, const std::string& data, Samples& s)
{
    s.stampRequest = {Kind::StampRequest,
                      bench.give("TSPMakeReqMsg", {any(data), number(QG_HASH_SHA256), fixed(""), number(0),
                                                   in(s.certificate), in(s.key), out()})};
    s.stampResponse = {Kind::StampResponse, stampResponseTo(s.stampRequest.bytes)};
    return bench.give("TSPSendAndRecv2", {in(s.stampResponse), {Argument::Number}, out()});
}

void addProtocols(Samples& s, const Bench& gpki)
{
    trustAuthorities(gpki, s);
    s.statusRequest = {
        Kind::StatusRequest,
        gpki.give("OCSPMakeOCSPReq", {in(s.certificate), number(0), in(s.certificate), in(s.key), out()})};
    s.statusResponse = {Kind::StatusResponse,
                        answerGood(s.statusRequest.bytes, {s.authority.bytes, testKey(1)})};
    gpki.run("CMSProcessSignedData", {number(0), in(s.signedData), out(), buffer()});
    const std::string signature = gpki.give("CMSGetTBTData", {number(0), out()});
    s.signatureStamp = {Kind::StampToken, stampOf(gpki, signature, s)};
    s.stampToken = {Kind::StampToken, stampOf(gpki, Samples::content, s)};
    s.challenge = {Kind::Challenge, gpki.give("SIGEAMakeChallenge", {exchanged({Kind::Value, "any"})})};
    s.challengeAnswer = {
        Kind::ChallengeResponse,
        gpki.give("SIGEAMakeResponse", {in(s.challenge), in(s.certificate), in(s.key), out()})};
}

} // namespace

const Samples& Samples::get()
{
    static const Samples samples = [] {
        Samples made;
        addHolders(made);
        const Bench zrtk(zrtkSide, Level::Flat);
        addMessages(made, zrtk);
        addKeysAndLists(made, zrtk);
        const Bench gpki(gpkiSide, Level::Flat);
        addProtocols(made, gpki);
        return made;
    }();
    return samples;
}

std::vector<const Sample*> Samples::all()
{
    const Samples& s = get();
    return {&s.damagedExtension,
            &s.otherDamagedExtension,
            &s.certificate,
            &s.otherCertificate,
            &s.otherKey,
            &s.certificates,
            &s.key,
            &s.publicKey,
            &s.encryptedKey,
            &s.signature,
            &s.signedData,
            &s.detachedData,
            &s.envelopedData,
            &s.encryptedData,
            &s.signedAndEnveloped,
            &s.pfx,
            &s.authorityList,
            &s.statusRequest,
            &s.statusResponse,
            &s.stampRequest,
            &s.stampResponse,
            &s.stampToken,
            &s.challenge,
            &s.challengeAnswer,
            &s.objects,
            &s.base64,
            &s.pem,
            &s.text,
            &s.symmetricKey};
}

std::string stampResponseTo(const std::string& request)
{
    return stampServer().responseTo(request);
}
