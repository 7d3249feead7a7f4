#include <cstdlib>

#include "Memory.h"
#include "Rows.h"
#include "TestHome.h"
#include "quillgate/algorithms.h"
#include "quillgate/toolkit_token.h"
#include "samplepki/KeyPair.h"

using namespace argument;

namespace {

constexpr const char* officerPin = "87654321";
constexpr const char* userPin = "123456";

/** Identifiers of the pairs of both holders. */
std::string ownId()
{
    return samplepki::KeyPool::key(samplepki::KeyKind::Rsa2048, 2).identifier();
}
std::string otherId()
{
    return samplepki::KeyPool::key(samplepki::KeyKind::Rsa2048, 3).identifier();
}

/** A directory for SoftHSM's tokens, which it is told of by the environment. */
void makeTokenDirectory()
{
    static const MemoryDirectory directory("bad-input-tokens");
    const std::string configuration = directory.path() / "softhsm.conf";
    writeFile(configuration,
              "directories.tokendir = " + directory.path().string() + "\nobjectstore.backend = file\n");
    setenv("SOFTHSM2_CONF", configuration.c_str(), 1);
}

unsigned long firstSlot(const Bench& bench)
{
    unsigned long slots[QG_TOKEN_SLOTS] = {};
    unsigned long count = 0;
    const Operation& operation = operationCalled("PKCS11GetSlotList");
    EXPECT_EQ(bench.call(operation, {reinterpret_cast<Word>(slots), reinterpret_cast<Word>(&count)}), 0);
    return slots[0];
}

Argument word(unsigned long value)
{
    return {Argument::Number, {}, Tolerance::Unread, value};
}

/** A session on a token. */
void open(const Bench& bench)
{
    const Operation& closing = operationCalled("PKCS11CloseSession");
    bench.call(closing, {}); // there is none in a fresh context
    bench.run("MediaLoad", {fixed(QGTK_SOFTHSM_FILE)});
    const unsigned long slot = firstSlot(bench);
    if (bench.isZrtk() || bench.level() == Level::Flat)
        bench.run("PKCS11OpenSessionWithSlotID", {word(slot), fixed(userPin), number(0)});
    else {
        bench.run("GPKI_HSM_OpenSession", {word(slot), number(0)});
        bench.run("PKCS11Login", {fixed(userPin)});
    }
}

/** Makes the token, with the first holder's pair on it, once a process. */
void makeToken(const Samples& s)
{
    static const bool made = [&] {
        makeTokenDirectory();
        const Bench maker(zrtkSide, Level::Flat);
        maker.run("MediaLoad", {fixed(QGTK_SOFTHSM_FILE)});
        maker.run("PKCS11InitToken", {fixed(officerPin), fixed(userPin)});
        open(maker);
        maker.run("PKCS11WriteCertAndPriKey", {own(s.certificate), own(s.key)});
        return true;
    }();
    static_cast<void>(made);
}

/** A session on the token, with the other holder's pair on it or not. */
void openToken(const Bench& bench, const Samples& s, bool withOther = false)
{
    makeToken(s);
    open(bench);
    Memory id(bench, {in(otherId())});
    bench.call(operationCalled("PKCS11DeleteCertAndPriKey"), id.words());
    if (withOther)
        bench.run("PKCS11WriteCertAndPriKey", {in(s.otherCertificate), in(s.otherKey)});
}

void addPairs(std::vector<Row>& rows)
{
    for (const char* operation : {"PKCS11ReadCert", "PKCS11ReadRandomForVID"})
        rows.push_back({operation, [](auto& b, auto& s) -> RightCall {
                            openToken(b, s);
                            return {in(ownId()), out()};
                        }});
    rows.push_back({"PKCS11WriteCertAndPriKey", [](auto& b, auto& s) -> RightCall {
                        openToken(b, s);
                        return {in(s.otherCertificate), in(s.otherKey)};
                    }});
    rows.push_back({"PKCS11DeleteCertAndPriKey", [](auto& b, auto& s) -> RightCall {
                        openToken(b, s, true);
                        return {in(otherId())};
                    }});
    rows.push_back({"PKCS11GenKeyPair", [](auto& b, auto& s) -> RightCall {
                        openToken(b, s); // takes away what the call before has made
                        return {number(QG_KEYPAIR_P256), number(QG_TOKEN_SIGNING), chosen(otherId())};
                    }});
}

void addKeyUse(std::vector<Row>& rows)
{
    for (const char* operation : {"PKCS11Sign", "PKCS11Encrypt", "PKCS11SignData", "PKCS11SignDataNoContent"})
        rows.push_back({operation, [](auto& b, auto& s) -> RightCall {
                            openToken(b, s);
                            return {in(ownId()), any(s.content), out()};
                        }});
    rows.push_back({"PKCS11Verify", [](auto& b, auto& s) -> RightCall {
                        openToken(b, s);
                        return {in(ownId()), in(s.text), in(s.signature)};
                    }});
    rows.push_back({"PKCS11Decrypt", [](auto& b, auto& s) -> RightCall {
                        openToken(b, s);
                        return {in(ownId()), in(s.encryptedBytes), out()};
                    }});
    rows.push_back({"PKCS11DecryptData", [](auto& b, auto& s) -> RightCall {
                        openToken(b, s);
                        return {in(ownId()), in(s.envelopedData), out()};
                    }});
    rows.push_back({"PKCS11SignAndEnvData", [](auto& b, auto& s) -> RightCall {
                        openToken(b, s);
                        return {in(ownId()), in(s.certificates), any(s.content), out()};
                    }});
    rows.push_back({"PKCS11VerifyAndDecData", [](auto& b, auto& s) -> RightCall {
                        openToken(b, s);
                        return {in(ownId()), in(s.signedAndEnveloped), out(), out(Optional)};
                    }});
    rows.push_back({"PKCS11VerifySignatureValue", [](auto&, auto& s) -> RightCall {
                        return {file(s.text), in(s.certificate), in(s.signature)};
                    }});
}

void addCmp(std::vector<Row>& rows)
{
    rows.push_back({"PKCS11CMPCertRequest", [](auto& b, auto& s) -> RightCall {
                        openToken(b, s);
                        return {unreachable,
                                {noHost, noPort, anyText(), anyText(), anyText(s.idNumber), file(s.authority),
                                 out(), out(Optional)}};
                    }});
    rows.push_back({"PKCS11CMPCertUpdate", [](auto& b, auto& s) -> RightCall {
                        openToken(b, s, true);
                        return {unreachable,
                                {noHost, noPort, number(0), anyText(s.idNumber), file(s.authority),
                                 exchanged({Kind::Value, ownId()}),
                                 exchanged({Kind::Value, otherId()}, Optional)}};
                    }});
    rows.push_back({"PKCS11CMPCertUpdate2", [](auto& b, auto& s) -> RightCall {
                        openToken(b, s);
                        return {unreachable,
                                {noHost, noPort, number(0), number(0), anyText(s.idNumber), file(s.authority),
                                 own(s.certificate), own(s.key), in(s.otherCertificate), in(s.otherKey),
                                 chosen("first"), chosen("second")}};
                    }});
    rows.push_back(
        {"PKCS11CMPCertRevoke", [](auto& b, auto& s) -> RightCall {
             openToken(b, s, true);
             trustAuthorities(b, s);
             return {unreachable, {noHost, noPort, number(0), in(ownId()), in(otherId(), Optional)}};
         }});
}

} // namespace

void addTokenRows(std::vector<Row>& rows)
{
    addPairs(rows);
    addKeyUse(rows);
    addCmp(rows);
}
