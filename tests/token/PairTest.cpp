#include <map>

#include "Programs.h"
#include "TestHome.h"
#include "TokenTest.h"
#include "toolkit/core/Crypto.h"
#include "toolkit/core/KeyRandom.h"

using qgtk::Code;

class TokenPair : public TokenTest
{
protected:
    void SetUp() override
    {
        TokenTest::SetUp();
        makeOpenToken();
    }

    int erase(const std::string& id)
    {
        BinString given(library, id);
        return token("DeleteCertAndPriKey", &given);
    }

    std::string run(const std::string& command) { return runIn(tokens, command).output; }
};
INSTANTIATE_BOTH_SIDES(TokenPair);

TEST_P(TokenPair, OthersReadWhatIsWritten)
{
    ASSERT_EQ(write(sampleHolder().signing), 0);
    const std::string id = hex(idOf(sampleHolder().signing.certificate));
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

TEST_P(TokenPair, OfAnEllipticCurveIsWrittenToo)
{
    run("openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -keyout key.pem -subj "
        "/CN=curve "
        "-outform DER -out certificate.der; openssl pkcs8 -topk8 -nocrypt -in key.pem -outform DER -out "
        "key.der; "
        "openssl pkey -in key.pem -pubout -out public.pem");
    const SamplePair pair{readFile(tokens + "/certificate.der"), readFile(tokens + "/key.der")};
    ASSERT_EQ(write(pair), 0);
    const std::string id = idOf(pair.certificate);
    EXPECT_EQ(info(0).type, QG_TOKEN_SIGNING);
    EXPECT_EQ(read("ReadRandomForVID", id), refused(Code::NoKeyRandom));
    writeFile(tokens + "/data", "data");
    run("openssl dgst -sha256 -binary -out digest data");
    asUser("--sign --mechanism ECDSA --signature-format openssl --id " + hex(id) + " -i digest -o signature");
    EXPECT_EQ(run("openssl dgst -sha256 -verify public.pem -signature signature data"), "Verified OK\n");
}

TEST_P(TokenPair, CertificatesAreListed)
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

TEST_P(TokenPair, TheRandomValueComesBackToTheUserAlone)
{
    ASSERT_EQ(write(sampleHolder().signing), 0);
    const std::string id = idOf(sampleHolder().signing.certificate);
    const qgtk::SecretBytes random = qgtk::keyRandom(qgtk::bytesOf(sampleHolder().signing.key));
    EXPECT_EQ(read("ReadRandomForVID", id), qgtk::textOf(random));
    EXPECT_EQ(read("ReadRandomForVID", "other"), refused(Code::TokenObjectMissing));
    ASSERT_EQ(token("Logout"), 0);
    EXPECT_EQ(read("ReadRandomForVID", id), refused(Code::TokenLoggedOut));
    EXPECT_EQ(read("ReadCert", id), sampleHolder().signing.certificate) << "which is no secret";
}

TEST_P(TokenPair, IsDeletedAsAWhole)
{
    ASSERT_EQ(write(sampleHolder().signing), 0);
    ASSERT_EQ(write(sampleHolder().management), 0);
    const std::string id = idOf(sampleHolder().signing.certificate);
    ASSERT_EQ(token("Logout"), 0);
    EXPECT_EQ(erase(id), number(Code::TokenLoggedOut));
    ASSERT_EQ(token("Login", text(userPin)), 0);
    EXPECT_EQ(erase(id), 0);
    EXPECT_EQ(erase(id), number(Code::TokenObjectMissing));
    EXPECT_EQ(read("ReadCert", id), refused(Code::TokenObjectMissing));
    EXPECT_THAT(asUser("--list-objects"),
                testing::AllOf(testing::Not(testing::HasSubstr(hex(id))),
                               testing::HasSubstr(hex(idOf(sampleHolder().management.certificate)))));
    EXPECT_EQ(write(sampleHolder().signing), 0) << "there is room for it again";
}

TEST_P(TokenPair, WhatIsRefusedLeavesNothingOnTheToken)
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

TEST_P(TokenPair, MissingArgumentsAndSessionsChangeNothing)
{
    ASSERT_EQ(write(sampleHolder().signing), 0);
    BinString id(library, idOf(sampleHolder().signing.certificate));
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
