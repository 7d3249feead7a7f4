#include "toolkit/core/Identity.h"
#include "KeySamples.h"
#include "ToolkitLibrary.h"
#include "samplepki/Authority.h"
#include "toolkit/core/CertificateText.h"

using namespace samplepki;
using qgtk::Code;

namespace {

/** A certificate whose identity value is made with a number, a random value and a hash. */
Bytes identified(const std::string& numberText, const Bytes& random, const std::string& hash)
{
    Authority root = Authority::root(nameFromText("cn=r,o=o,c=kr"), KeyPool::key(KeyKind::Rsa2048, 0));
    Request request{nameFromText("cn=a,o=o,c=kr"), KeyPool::key(KeyKind::Rsa2048, 1).withRandom(random)};
    request.identity = Identity{"홍길동", numberText, hash};
    return root.issue(request);
}

const Bytes vectorRandom = samplepki::fromHex("0102030405060708090a0b0c0d0e0f1011121314");
constexpr const char* vectorNumber = "1234561234567";

} // namespace

class IdentityOperation : public ToolkitTest
{
protected:
    int verify(const Bytes& certificate, const Bytes& random, const std::string& idNumber)
    {
        BinString cert(library, certificate);
        BinString value(library, random);
        return call("VID_Verify", &cert, &value, text(idNumber));
    }
};
INSTANTIATE_BOTH_SIDES(IdentityOperation);

TEST_P(IdentityOperation, NumberAndRandomValueBelongToTheCertificate)
{
    for (const char* hash : {"SHA256", "SHA1"}) {
        const Bytes certificate = identified(vectorNumber, vectorRandom, hash);
        EXPECT_EQ(verify(certificate, vectorRandom, vectorNumber), 0) << hash;
        EXPECT_EQ(verify(certificate, vectorRandom, "123456-1234567"), 0) << "separators do not count";
        EXPECT_EQ(verify(certificate, vectorRandom, "1234561234568"), number(Code::IdentityMismatch));
        EXPECT_EQ(verify(certificate, Bytes(20, 'x'), vectorNumber), number(Code::IdentityMismatch));
        EXPECT_EQ(verify(certificate, vectorRandom, ""), number(Code::BadArgument));
    }
}

TEST_P(IdentityOperation, ARandomValueThatEndsInZeroBytesWorks)
{
    const Bytes random = samplepki::fromHex("0102030405060708090a0b0c0d0e0f1011120000");
    EXPECT_EQ(verify(identified(vectorNumber, random, "SHA256"), random, vectorNumber), 0);
}

TEST_P(IdentityOperation, CertificatesWithoutAnIdentityValueAreTold)
{
    Authority root = Authority::root(nameFromText("cn=r,o=o,c=kr"), KeyPool::key(KeyKind::Rsa2048, 0));
    EXPECT_EQ(verify(root.certificate(), vectorRandom, vectorNumber), number(Code::NoIdentity));
    EXPECT_EQ(verify("no certificate", vectorRandom, vectorNumber), number(Code::CertDamaged));
}

TEST_P(IdentityOperation, AnUnknownHashIsTold)
{
    Bytes certificate = identified(vectorNumber, vectorRandom, "SHA256");
    // The hash of the identity value becomes one that nobody knows.
    const Bytes sha256 = der::sequence({der::oid("2.16.840.1.101.3.4.2.1")});
    const std::size_t place = certificate.find(sha256);
    ASSERT_NE(place, Bytes::npos);
    certificate[place + sha256.size() - 1] = '\x7f';
    EXPECT_EQ(verify(certificate, vectorRandom, vectorNumber), number(Code::IdentityHashUnknown));
}

class ZrtkIdentity : public ToolkitTest
{};
INSTANTIATE_TEST_SUITE_P(Zrtk, ZrtkIdentity, testing::Values(zrtkSide));

TEST_P(ZrtkIdentity, HashesAreThePublishedVectors)
{
    for (const auto& [hash, wanted] :
         {std::pair{"SHA256", "e0f59cfe934ab10f8d82a4cc7f82ef0b809dff34b3ae8163ea43e7ec08b68721"},
          {"SHA1", "95746b62c7d43fd312c17b3f1205eb3a5a8b1de0"}}) {
        BinString certificate(library, identified("9", "9", hash));
        BinString random(library, vectorRandom);
        BinString result(library);
        ASSERT_EQ(call("VID_HashOfIDN_R", &certificate, &random, text(vectorNumber), &result), 0);
        EXPECT_EQ(samplepki::toHex(result.bytes()), wanted);
    }
}
