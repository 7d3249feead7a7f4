#include <map>

#include "Programs.h"
#include "TestHome.h"
#include "TokenTest.h"
#include "toolkit/core/Crypto.h"
#include "toolkit/core/KeyRandom.h"

using qgtk::Code;

class Pair : public TokenTest
{
protected:
    void SetUp() override
    {
        TokenTest::SetUp();
        makeToken("first");
        ASSERT_EQ(open(slots().front()), 0);
    }

    int write(const SamplePair& pair)
    {
        BinString certificate(library, pair.certificate);
        BinString key(library, pair.key);
        return token("WriteCertAndPriKey", &certificate, &key);
    }

    int count()
    {
        int found = -1;
        EXPECT_EQ(token("GetCertCnt", &found), 0);
        return found;
    }

    struct Info
    {
        int code = -1;
        int type = 77;
        std::string name;
        std::string id;
    };
    Info info(int index)
    {
        Info result;
        BinString name(library);
        BinString id(library);
        result.code = token("GetCertInfo", index, &result.type, &name, &id);
        result.name = name.bytes();
        result.id = id.bytes();
        return result;
    }

    /** The identifier of a written pair. */
    std::string idOf(const SamplePair& pair)
    {
        for (int index = 0; index < count(); ++index)
            if (read("ReadCert", info(index).id) == pair.certificate)
                return info(index).id;
        return "no such certificate";
    }

    /** What an operation on an identifier gives; its code when it fails. */
    std::string read(const std::string& operation, const std::string& id)
    {
        BinString given(library, id);
        BinString result(library, "as it was");
        const int code = token(operation, &given, &result);
        if (code == 0)
            return result.bytes();
        EXPECT_EQ(result.bytes(), "as it was");
        return "code " + std::to_string(code);
    }

    int erase(const std::string& id)
    {
        BinString given(library, id);
        return token("DeleteCertAndPriKey", &given);
    }

    /** pkcs11-tool as the user. */
    std::string asUser(const std::string& arguments)
    {
        return pkcs11Tool(std::string("--token-label first --login --pin ") + userPin + " " + arguments);
    }

    std::string run(const std::string& command) { return runIn(tokens, command).output; }

    static std::string hex(const std::string& bytes)
    {
        std::string text;
        for (const unsigned char byte : bytes) {
            constexpr const char* digits = "0123456789abcdef";
            text += digits[byte / 16];
            text += digits[byte % 16];
        }
        return text;
    }
};
INSTANTIATE_BOTH_SIDES(Pair);

namespace {

std::string refused(Code code)
{
    return "code " + std::to_string(number(code));
}

} // namespace

TEST_P(Pair, OthersReadWhatIsWritten)
{
    ASSERT_EQ(write(sampleHolder().signing), 0);
    const std::string id = hex(idOf(sampleHolder().signing));
    EXPECT_THAT(asUser("--list-objects"),
                testing::AllOf(
                    testing::HasSubstr("Certificate Object"), testing::HasSubstr("Private Key Object; RSA"),
                    testing::HasSubstr("Public Key Object; RSA"), testing::HasSubstr("random " + id),
                    testing::HasSubstr("sensitive"), testing::Not(testing::HasSubstr("extractable"))));
    asUser("--read-object --type cert --id " + id + " -o read.der");
    EXPECT_EQ(readFile(tokens + "/read.der"), sampleHolder().signing.certificate);
    writeFile(tokens + "/data", "data");
    asUser("--sign --mechanism SHA256-RSA-PKCS --id " + id + " -i data -o signature");
    run("openssl x509 -inform DER -in read.der -noout -pubkey > public.pem");
    EXPECT_EQ(run("openssl dgst -sha256 -verify public.pem -signature signature data"), "Verified OK\n");
}

TEST_P(Pair, OfAnEllipticCurveIsWrittenToo)
{
    run("openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -keyout key.pem -subj "
        "/CN=curve "
        "-outform DER -out certificate.der; openssl pkcs8 -topk8 -nocrypt -in key.pem -outform DER -out "
        "key.der; "
        "openssl pkey -in key.pem -pubout -out public.pem");
    const SamplePair pair{readFile(tokens + "/certificate.der"), readFile(tokens + "/key.der")};
    ASSERT_EQ(write(pair), 0);
    const std::string id = idOf(pair);
    EXPECT_EQ(info(0).type, QG_TOKEN_SIGNING);
    EXPECT_EQ(read("ReadRandomForVID", id), refused(Code::NoKeyRandom));
    writeFile(tokens + "/data", "data");
    run("openssl dgst -sha256 -binary -out digest data");
    asUser("--sign --mechanism ECDSA --signature-format openssl --id " + hex(id) + " -i digest -o signature");
    EXPECT_EQ(run("openssl dgst -sha256 -verify public.pem -signature signature data"), "Verified OK\n");
}

TEST_P(Pair, CertificatesAreListed)
{
    EXPECT_EQ(count(), 0);
    ASSERT_EQ(write(sampleHolder().signing), 0);
    ASSERT_EQ(write(sampleHolder().management), 0);
    ASSERT_EQ(count(), 2);
    std::map<int, std::string> certificates;
    for (int index = 0; index < 2; ++index) {
        const Info found = info(index);
        EXPECT_EQ(found.code, 0);
        certificates[found.type] = read("ReadCert", found.id);
        ASSERT_EQ(load(certificates[found.type]), 0);
        EXPECT_EQ(found.name, get("CERT_GetSubjectName"));
    }
    EXPECT_EQ(certificates[QG_TOKEN_SIGNING], sampleHolder().signing.certificate);
    EXPECT_EQ(certificates[QG_TOKEN_MANAGEMENT], sampleHolder().management.certificate);
    for (const int index : {-1, 2}) {
        const Info none = info(index);
        EXPECT_EQ(none.code, number(Code::CertListIndex));
        EXPECT_EQ(none.type, 77);
        EXPECT_EQ(none.name, "");
    }
}

TEST_P(Pair, TheRandomValueComesBackToTheUserAlone)
{
    ASSERT_EQ(write(sampleHolder().signing), 0);
    const std::string id = idOf(sampleHolder().signing);
    const qgtk::SecretBytes random = qgtk::keyRandom(qgtk::bytesOf(sampleHolder().signing.key));
    EXPECT_EQ(read("ReadRandomForVID", id), qgtk::textOf(random));
    EXPECT_EQ(read("ReadRandomForVID", "other"), refused(Code::TokenObjectMissing));
    ASSERT_EQ(token("Logout"), 0);
    EXPECT_EQ(read("ReadRandomForVID", id), refused(Code::TokenLoggedOut));
    EXPECT_EQ(read("ReadCert", id), sampleHolder().signing.certificate) << "which is no secret";
}

TEST_P(Pair, IsDeletedAsAWhole)
{
    ASSERT_EQ(write(sampleHolder().signing), 0);
    ASSERT_EQ(write(sampleHolder().management), 0);
    const std::string id = idOf(sampleHolder().signing);
    ASSERT_EQ(token("Logout"), 0);
    EXPECT_EQ(erase(id), number(Code::TokenLoggedOut));
    ASSERT_EQ(token("Login", text(userPin)), 0);
    EXPECT_EQ(erase(id), 0);
    EXPECT_EQ(erase(id), number(Code::TokenObjectMissing));
    EXPECT_EQ(read("ReadCert", id), refused(Code::TokenObjectMissing));
    EXPECT_THAT(asUser("--list-objects"),
                testing::AllOf(testing::Not(testing::HasSubstr(hex(id))),
                               testing::HasSubstr(hex(idOf(sampleHolder().management)))));
    EXPECT_EQ(write(sampleHolder().signing), 0) << "there is room for it again";
}

TEST_P(Pair, WhatIsRefusedLeavesNothingOnTheToken)
{
    const SampleHolder& holder = sampleHolder();
    EXPECT_EQ(write({holder.signing.certificate, holder.management.key}), number(Code::KeyMismatch));
    EXPECT_EQ(write({holder.signing.certificate, "text"}), number(Code::KeyNotPlain));
    EXPECT_EQ(write({"text", holder.signing.key}), number(Code::CertDamaged));
    EXPECT_EQ(write({"", holder.signing.key}), number(Code::BadArgument));
    EXPECT_EQ(write({holder.signing.certificate, ""}), number(Code::BadArgument));
    ASSERT_EQ(token("Logout"), 0);
    EXPECT_EQ(write(holder.signing), number(Code::TokenLoggedOut));
    ASSERT_EQ(token("Login", text(userPin)), 0);
    EXPECT_THAT(asUser("--list-objects"), testing::Not(testing::HasSubstr("Object")));
    ASSERT_EQ(write(holder.signing), 0);
    EXPECT_EQ(write(holder.signing), number(Code::TokenObjectExists));
    EXPECT_EQ(count(), 1);
}

TEST_P(Pair, MissingArgumentsAndSessionsChangeNothing)
{
    ASSERT_EQ(write(sampleHolder().signing), 0);
    BinString id(library, idOf(sampleHolder().signing));
    BinString result(library, "as it was");
    int type = 77;
    const BINSTR none = {};
    const int bad = number(Code::BadArgument);
    EXPECT_EQ(token("GetCertCnt", nullptr), bad);
    EXPECT_EQ(token("GetCertInfo", 0, nullptr, &result, &result), bad);
    EXPECT_EQ(token("GetCertInfo", 0, &type, nullptr, &result), bad);
    EXPECT_EQ(token("GetCertInfo", 0, &type, &result, nullptr), bad);
    EXPECT_EQ(token("ReadCert", nullptr, &result), bad);
    EXPECT_EQ(token("ReadCert", &none, &result), bad);
    EXPECT_EQ(token("ReadCert", &id, nullptr), bad);
    EXPECT_EQ(token("ReadRandomForVID", &none, &result), bad);
    EXPECT_EQ(token("ReadRandomForVID", &id, nullptr), bad);
    EXPECT_EQ(token("DeleteCertAndPriKey", nullptr), bad);
    EXPECT_EQ(token("DeleteCertAndPriKey", &none), bad);
    ASSERT_EQ(token("CloseSession"), 0);
    const int closed = number(Code::NoTokenSession);
    EXPECT_EQ(token("GetCertCnt", &type), closed);
    EXPECT_EQ(token("GetCertInfo", 0, &type, &result, &result), closed);
    EXPECT_EQ(token("ReadCert", &id, &result), closed);
    EXPECT_EQ(token("ReadRandomForVID", &id, &result), closed);
    EXPECT_EQ(token("WriteCertAndPriKey", &id, &id), closed);
    EXPECT_EQ(erase("id"), closed);
    EXPECT_EQ(type, 77);
    EXPECT_EQ(result.bytes(), "as it was");
}
