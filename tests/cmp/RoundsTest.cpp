// What must hold over many exchanges: nothing grows, nothing secret stays, contexts don't meet.

#include <thread>

#include "CmpTest.h"
#include "FreedScan.h"
#include "MemoryGrowth.h"
#include "RawFile.h"
#include "samplepki/Extensions.h"

using namespace samplepki;
using qgtk::Code;

/** One server of "openssl cmp" for all rounds, which gives the holder's own certificate. */
class CmpRounds : public CmpTest
{
protected:
    void SetUp() override
    {
        CmpTest::SetUp();
        BinString list(library, authority.pki.ca.certificate());
        ASSERT_EQ(call("CERT_SetCaPubs", &list), 0);
    }

    static const KeyPair& curveKey(unsigned number) { return KeyPool::key(KeyKind::EcP256, number); }

    Bytes holderCertificate()
    {
        return authority.pki.ca.issue(
            {.subject = nameFromText(leafName), .key = curveKey(0), .serial = "77"});
    }

    Bytes serverCertificate()
    {
        Request wanted{.subject = nameFromText("cn=CMP,o=Sample,c=KR"), .key = curveKey(1)};
        wanted.extras = {{"extendedKeyUsage", der::sequence({der::oid("cmcRA")}), false}};
        return authority.pki.ca.issue(wanted);
    }

    std::vector<std::string> command()
    {
        return {"openssl",        "cmp",
                "-port",          std::to_string(port),
                "-srv_trusted",   file("root", pem(authority.pki.root.certificate(), "CERTIFICATE")),
                "-srv_untrusted", file("ca", pem(authority.pki.ca.certificate(), "CERTIFICATE")),
                "-srv_cert",      file("server", pem(serverCertificate(), "CERTIFICATE")),
                "-srv_key",       file("key", pem(curveKey(1).privateKeyInfo(), "PRIVATE KEY")),
                "-rsp_cert",      file("issued", pem(certificate, "CERTIFICATE"))};
    }

    int revoke(const Bytes& key)
    {
        BinString types(library, std::string("\x04\x01\x01")), certificates(library, certificate),
            keys(library, key);
        return call("CMP_CertRevoke2", text("127.0.0.1"), port, 5, &types, &certificates, &keys);
    }

    int renew()
    {
        BinString signCertificate(library, certificate), key(library, curveKey(0).privateKeyInfo());
        BINSTR* none = nullptr;
        return call("CMP_CertUpdate", text("127.0.0.1"), port, false, text(idNumber),
                    text(authority.authorityFile), &signCertificate, &key, none, none, none);
    }

    const int port = freePort();
    const Bytes certificate = holderCertificate();
};
INSTANTIATE_ZR_SIDE(CmpRounds);

TEST_P(CmpRounds, LeaveNothing)
{
    const ServerProgram server(command(), port);
    Records records(library);
    memory_growth::expectNone(
        [&] {
            EXPECT_EQ(revoke(curveKey(0).privateKeyInfo()), 0);
            EXPECT_EQ(revoke(curveKey(1).privateKeyInfo()), number(Code::KeyMismatch));
            EXPECT_EQ(renew(), 0);
            EXPECT_EQ(request("127.0.0.1", port, records), number(Code::CmpRefused));
        },
        memory_growth::rounds() / 5);
    EXPECT_TRUE(records.areUntouched());
}

TEST_P(CmpRounds, ContextsOnThreadsDoNotMeet)
{
    const ServerProgram server(command(), port);
    const auto work = [&] {
        void* own = nullptr;
        EXPECT_EQ(library.callBare("API_Init", &own, text(workDirectory)), 0);
        BinString list(library, authority.pki.ca.certificate());
        EXPECT_EQ(library.callBare("CERT_SetCaPubs", own, &list), 0);
        for (int i = 0; i < 5; ++i) {
            BinString signCertificate(library, certificate), key(library, curveKey(0).privateKeyInfo());
            BINSTR* none = nullptr;
            EXPECT_EQ(library.callBare("CMP_CertRevoke", own, text("127.0.0.1"), port, 5, &signCertificate,
                                       &key, none, none),
                      0);
        }
        EXPECT_EQ(library.callBare("API_Finish", own), 0);
    };
    curveKey(0);
    std::thread other(work);
    work();
    other.join();
}

TEST_P(CmpRounds, CodesAndKeysAreTheCallersAlone)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer maps terabytes and keeps freed memory";
#endif
    // Made by another process, and read by the server itself: it is nowhere else in this one.
    runProgram({"openssl", "rand", "-hex", "-out", at("code"), "16"});
    authority.secret = "file:" + at("code");
    RawFile code(at("code"));
    code.text()[32] = '\0'; // behind it is the end of the line
    MemoryScan scan;
    scan.add("code", {code.text() + lostWhenFreed, 32 - lostWhenFreed});
    FreedScan freed;
    freed.add(code.text(), 32);
    BINSTR signCertificate = {};
    BINSTR signKey = {};
    BINSTR* none = nullptr;
    const auto ask = [&](int at) {
        return call("CMP_CertRequest", text("127.0.0.1"), at, text(reference), code.text(), text(idNumber),
                    text(authority.authorityFile), &signCertificate, &signKey, none, none, none);
    };
    ASSERT_EQ(ask(authority.port()), 0) << errorText();
    EXPECT_EQ(ask(freePort()), number(Code::ServerUnreachable));
    // The private number stands at a fixed place of the key.
    constexpr std::size_t place = 36;
    constexpr std::size_t length = 32;
    scan.add("key", {reinterpret_cast<const char*>(signKey.pData) + place, length});
    EXPECT_THAT(scan.find(), testing::SizeIs(2)) << "one of each";
    EXPECT_EQ(library.callBare("BINSTR_Delete", &signKey), 0);
    EXPECT_EQ(library.callBare("BINSTR_Delete", &signCertificate), 0);
    code.wipe();
    EXPECT_THAT(scan.find(), testing::IsEmpty());
    EXPECT_EQ(freed.hits(), 0U);
}
