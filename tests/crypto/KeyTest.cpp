#include <climits>

#include "CryptoTest.h"

using qgtk::Code;

namespace {

/** SubjectPublicKeyInfo and PrivateKeyInfo of a curve around a point and a number, all in hexadecimal. */
struct CurveForm
{
    const char* publicHead;
    const char* privateHead;
};
constexpr CurveForm p256{"3059301306072a8648ce3d020106082a8648ce3d03010703420004",
                         "3041020100301306072a8648ce3d020106082a8648ce3d030107042730250201010420"};
constexpr CurveForm p384{"3076301006072a8648ce3d020106052b8104002203620004",
                         "304e020100301006072a8648ce3d020106052b81040022043730350201010430"};

struct Agreement
{
    CurveForm form;
    const char* x;
    const char* y;
    const char* number;
    const char* secret;
};

/** NIST CAVS 14.1, ECC CDH primitive, COUNT = 0 of both curves. */
const Agreement agreements[] = {
    {p256, "700c48f77f56584c5cc632ca65640db91b6bacce3a4df6b42ce7cc838833d287",
     "db71e509e3fd9b060ddb20ba5c51dcc5948d46fbf640dfe0441782cab85fa4ac",
     "7d7dc5f71eb29ddaf80d6214632eeae03d9058af1fb6d22ed80badb62bc1a534",
     "46fc62106420ff012e54a434fbdd2d25ccc5852060561e68040dd7778997bd7b"},
    {p384, "a7c76b970c3b5fe8b05d2838ae04ab47697b9eaf52e764592efda27fe7513272734466b400091adbf2d68c58e0c50066",
     "ac68f19f2e1cb879aed43a9969b91a0839c4c38a49749b661efedf243451915ed0905a32b060992b468c64766fc8437a",
     "3cc3122a68f0d95027ad38c067916ba0eb8c38894d22e1b15618b6818a661774ad463b205da88cf699ab4d43c9cf98a1",
     "5f9d29dc5e31a163060356213669c8ce132e22f57c9a04f40ba7fcead493b457e5621e766c40a2e3d4d6a04b25e533f1"},
};

constexpr int ecdh = QG_AGREEMENT_ECDH;
constexpr int dh = QG_AGREEMENT_DH;

} // namespace

class Random : public CryptoTest
{};
INSTANTIATE_BOTH_SIDES(Random);

class Key : public CryptoTest
{
protected:
    Pair generate(int algorithm)
    {
        BinString privateKey(library);
        BinString publicKey(library);
        EXPECT_EQ(call("CRYPT_GenKeyPair", algorithm, &privateKey, &publicKey), 0) << algorithm;
        return {privateKey.bytes(), publicKey.bytes()};
    }
    /** What openssl prints about a private key. */
    std::string described(const std::string& privateKey, bool check) const
    {
        std::vector<std::string> command = {"pkey", "-inform", "DER", "-in", file("key", privateKey),
                                            "-text"};
        if (check)
            command.push_back("-check");
        return openssl(command);
    }
};
INSTANTIATE_TEST_SUITE_P(Zrtk, Key, testing::Values(zrtkSide));

TEST_P(Random, BytesOfTheLengthAskedForAndNeverTheSame)
{
    for (const int length : {1, 20, 4096, 16 << 20})
        EXPECT_EQ(give("CRYPT_GenRandom", length).size(), static_cast<std::size_t>(length));
    EXPECT_NE(give("CRYPT_GenRandom", 32), give("CRYPT_GenRandom", 32));
    for (const int length : {0, -1, (16 << 20) + 1, INT_MAX, INT_MIN})
        EXPECT_EQ(ask("CRYPT_GenRandom", length).code, number(Code::BadArgument)) << length;
}

TEST_P(Key, MadePairsAreWhatOpenSslTakesThemFor)
{
    const std::pair<int, const char*> kinds[] = {
        {QG_KEYPAIR_RSA2048, "2048 bit"}, {QG_KEYPAIR_RSA3072, "3072 bit"}, {QG_KEYPAIR_RSA4096, "4096 bit"},
        {QG_KEYPAIR_P256, "P-256"},       {QG_KEYPAIR_P384, "P-384"},       {QG_KEYPAIR_P521, "P-521"}};
    for (const auto& [algorithm, words] : kinds) {
        const Pair pair = generate(algorithm);
        const bool check = algorithm <= QG_KEYPAIR_RSA2048; // the primes of longer keys take seconds
        const std::string text = described(pair.privateKey, check);
        EXPECT_EQ(text.find("Key is valid") != std::string::npos, check) << words;
        EXPECT_THAT(text, testing::HasSubstr(words));
        openssl(
            {"pkey", "-inform", "DER", "-in", at("key"), "-pubout", "-outform", "DER", "-out", at("half")});
        EXPECT_EQ(readFile(at("half")), pair.publicKey) << words;
    }
}

TEST_P(Key, OtherSizesAreRefusedAndGiveNothing)
{
    for (const int algorithm : {0, 1, -1, 512, 1024, 2047, 255, 257}) {
        BinString privateKey(library, "as");
        BinString publicKey(library, "was");
        EXPECT_EQ(call("CRYPT_GenKeyPair", algorithm, &privateKey, &publicKey),
                  number(Code::AlgorithmCodeUnknown));
        EXPECT_EQ(privateKey.bytes() + publicKey.bytes(), "aswas");
    }
    BinString privateKey(library, "as");
    EXPECT_EQ(call("CRYPT_GenKeyPair", QG_KEYPAIR_P256 + 0, &privateKey, static_cast<BINSTR*>(nullptr)),
              number(Code::BadArgument));
    EXPECT_EQ(privateKey.bytes(), "as") << "half a pair is none";
}

TEST_P(Key, SecretsOfEllipticCurvesArePublishedOnes)
{
    for (const Agreement& agreement : agreements) {
        const std::string publicKey =
            unhex(std::string(agreement.form.publicHead) + agreement.x + agreement.y);
        const std::string privateKey = unhex(std::string(agreement.form.privateHead) + agreement.number);
        EXPECT_EQ(hex(give("CRYPT_GenSharedKey", ecdh, privateKey, publicKey)), agreement.secret);
    }
}

TEST_P(Key, BothHoldersAndOpenSslAgree)
{
    const Pair ours = generate(QG_KEYPAIR_P256);
    const Pair& theirs = ecPair();
    const std::string secret = give("CRYPT_GenSharedKey", ecdh, ours.privateKey, theirs.publicKey);
    EXPECT_EQ(give("CRYPT_GenSharedKey", ecdh, theirs.privateKey, ours.publicKey), secret);
    openssl({"pkeyutl", "-derive", "-inkey", file("private", theirs.privateKey), "-keyform", "DER",
             "-peerkey", file("peer", ours.publicKey), "-peerform", "DER", "-out", at("secret")});
    EXPECT_EQ(readFile(at("secret")), secret);
}

TEST_P(Key, SecretsOfFiniteFieldsAreAsLongAsThePrime)
{
    const std::vector<std::string> group = {"-algorithm", "DH", "-pkeyopt", "group:ffdhe2048"};
    const Pair ours = opensslPair(group);
    const Pair theirs = opensslPair(group);
    const std::string secret = give("CRYPT_GenSharedKey", dh, ours.privateKey, theirs.publicKey);
    EXPECT_EQ(secret.size(), 256U);
    EXPECT_EQ(give("CRYPT_GenSharedKey", dh, theirs.privateKey, ours.publicKey), secret);
    openssl({"pkeyutl", "-derive", "-pkeyopt", "dh_pad:1", "-inkey", file("private", ours.privateKey),
             "-keyform", "DER", "-peerkey", file("peer", theirs.publicKey), "-peerform", "DER", "-out",
             at("secret")});
    EXPECT_EQ(readFile(at("secret")), secret);
}

TEST_P(Key, KeysOfOtherKindsAndGroupsDoNotAgree)
{
    const Pair other = generate(QG_KEYPAIR_P384);
    const auto agree = [&](int way, const std::string& privateKey, const std::string& publicKey) {
        return ask("CRYPT_GenSharedKey", way, privateKey, publicKey).code;
    };
    EXPECT_EQ(agree(ecdh, ecPair().privateKey, other.publicKey), number(Code::KeyUnsuitable));
    EXPECT_EQ(agree(ecdh, rsaPair().privateKey, rsaPair().publicKey), number(Code::KeyUnsuitable));
    EXPECT_EQ(agree(ecdh, ecPair().privateKey, rsaPair().publicKey), number(Code::KeyUnsuitable));
    EXPECT_EQ(agree(dh, ecPair().privateKey, ecPair().publicKey), number(Code::KeyUnsuitable));
    for (const int unknown : {0, 3, -1})
        EXPECT_EQ(agree(unknown, ecPair().privateKey, ecPair().publicKey),
                  number(Code::AlgorithmCodeUnknown));
    // A point that is not on the curve would tell about the private key.
    std::string offCurve = ecPair().publicKey;
    offCurve.back() = static_cast<char>(offCurve.back() ^ 1);
    EXPECT_EQ(agree(ecdh, ecPair().privateKey, offCurve), number(Code::PublicKeyDamaged));
}
