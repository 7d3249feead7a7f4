#include "CryptoTest.h"
#include "samplepki/Authority.h"

using qgtk::Code;

namespace {

constexpr int sha1 = QG_HASH_SHA1;
constexpr int sha256 = QG_HASH_SHA256;
constexpr int sha512 = QG_HASH_SHA512;

struct DigestName
{
    int number;
    const char* name;
};
constexpr DigestName digests[] = {{sha1, "sha1"},
                                  {sha256, "sha256"},
                                  {QG_HASH_SHA384, "sha384"},
                                  {sha512, "sha512"},
                                  {QG_HASH_SHA3_256, "sha3-256"}};

} // namespace

class Signature : public CryptoTest
{
protected:
    std::string sign(const Pair& pair, int hash, const std::string& data)
    {
        return give("CRYPT_Sign", pair.publicKey, pair.privateKey, hash, data);
    }
    int verify(const std::string& publicKey, int hash, const std::string& data, const std::string& signature)
    {
        return tell("CRYPT_Verify", publicKey, hash, data, signature);
    }
    int signFile(const Pair& pair, int hash, const std::string& data, const std::string& signature)
    {
        return tell(isZrtk() ? "CRYPT_SignFile" : "CRYPT_Sign_File", pair.publicKey, pair.privateKey, hash,
                    text(data), text(signature));
    }
    int verifyFile(const std::string& publicKey, int hash, const std::string& data,
                   const std::string& signature)
    {
        return tell(isZrtk() ? "CRYPT_VerifyFile" : "CRYPT_Verify_File", publicKey, hash, text(data),
                    text(signature));
    }
    /** Signs with openssl dgst and further options. */
    std::string opensslSignature(const Pair& pair, const DigestName& digest, const std::string& data,
                                 const std::vector<std::string>& options = {})
    {
        std::vector<std::string> command = {
            "dgst",  std::string("-") + digest.name,  "-keyform", "DER",
            "-sign", file("signer", pair.privateKey), "-out",     at("theirs")};
        command.insert(command.end(), options.begin(), options.end());
        command.push_back(file("signed", data));
        openssl(command);
        return readFile(at("theirs"));
    }
    /** Has openssl verify; its answer. */
    std::string opensslVerdict(const Pair& pair, const DigestName& digest, const std::string& data,
                               const std::string& signature, const std::vector<std::string>& options = {})
    {
        std::vector<std::string> command = {
            "dgst",    std::string("-") + digest.name,   "-keyform",   "DER",
            "-verify", file("verifier", pair.publicKey), "-signature", file("ours", signature)};
        command.insert(command.end(), options.begin(), options.end());
        command.push_back(file("signed", data));
        return openssl(command);
    }
};
INSTANTIATE_BOTH_SIDES(Signature);

class PssSignature : public Signature
{
protected:
    void SetUp() override
    {
        Signature::SetUp();
        ASSERT_EQ(call("CRYPT_SetRSAVersion", QG_RSA_V2 + 0), 0);
    }
    const std::vector<std::string> pss = {"-sigopt", "rsa_padding_mode:pss"};
};
INSTANTIATE_TEST_SUITE_P(Zrtk, PssSignature, testing::Values(zrtkSide));

TEST_P(Signature, OpenSslVerifiesAndIsVerified)
{
    const std::string data = noise(200000);
    for (const Pair* pair : {&rsaPair(), &ecPair()}) {
        for (const DigestName& digest : digests) {
            EXPECT_EQ(opensslVerdict(*pair, digest, data, sign(*pair, digest.number, data)), "Verified OK\n")
                << digest.name;
            EXPECT_EQ(verify(pair->publicKey, digest.number, data, opensslSignature(*pair, digest, data)), 0)
                << digest.name;
        }
    }
}

TEST_P(Signature, Version15IsTheSameEachTime)
{
    EXPECT_EQ(sign(rsaPair(), sha256, "data"), opensslSignature(rsaPair(), {sha256, "sha256"}, "data"));
}

TEST_P(Signature, FilesAndByteStringsAreSignedAlike)
{
    for (const Pair* pair : {&rsaPair(), &ecPair()}) {
        const std::string data = noise(300000);
        const std::string path = file("data", data);
        ASSERT_EQ(signFile(*pair, sha256, path, at("signature")), 0);
        const std::string signature = readFile(at("signature"));
        EXPECT_EQ(verify(pair->publicKey, sha256, data, signature), 0);
        EXPECT_EQ(opensslVerdict(*pair, {sha256, "sha256"}, data, signature), "Verified OK\n");
        EXPECT_EQ(verifyFile(pair->publicKey, sha256, path, at("signature")), 0);
        EXPECT_EQ(verifyFile(pair->publicKey, sha256, path,
                             file("theirs", opensslSignature(*pair, {sha256, "sha256"}, data))),
                  0);
        EXPECT_EQ(verifyFile(pair->publicKey, sha256, file("data", data + "x"), at("signature")),
                  number(Code::SignatureWrong));
        EXPECT_EQ(verifyFile(pair->publicKey, sha512, path, at("signature")), number(Code::SignatureWrong));
    }
}

TEST_P(Signature, ACertificateDoesForItsKey)
{
    using namespace samplepki;
    Authority root = Authority::root(nameFromText("cn=r,o=o,c=kr"), KeyPool::key(KeyKind::Rsa2048, 0));
    const std::string certificate =
        root.issue({nameFromText("cn=n,c=kr"), KeyPool::key(KeyKind::Rsa2048, 1)});
    const Pair pair{KeyPool::key(KeyKind::Rsa2048, 1).privateKeyInfo(), certificate};
    const std::string signature = sign(pair, sha256, "data");
    EXPECT_EQ(verify(certificate, sha256, "data", signature), 0);
    EXPECT_EQ(verify(root.certificate(), sha256, "data", signature), number(Code::SignatureWrong));
}

TEST_P(Signature, KeysMustBeOfOnePair)
{
    EXPECT_EQ(ask("CRYPT_Sign", rsaPair().publicKey, ecPair().privateKey, sha256, std::string("data")).code,
              number(Code::KeyMismatch));
    EXPECT_EQ(
        signFile({ecPair().privateKey, rsaPair().publicKey}, sha256, file("data", "x"), at("signature")),
        number(Code::KeyMismatch));
    EXPECT_FALSE(std::filesystem::exists(at("signature")));
}

TEST_P(Signature, AlteredDataSignaturesAndHashesAreRefused)
{
    for (const Pair* pair : {&rsaPair(), &ecPair()}) {
        const std::string signature = sign(*pair, sha256, "data");
        EXPECT_EQ(verify(pair->publicKey, sha256, "Data", signature), number(Code::SignatureWrong));
        EXPECT_EQ(verify(pair->publicKey, sha512, "data", signature), number(Code::SignatureWrong));
        EXPECT_EQ(verify(pair->publicKey, sha256, "data", signature + "x"), number(Code::SignatureWrong));
        EXPECT_EQ(verify(pair->publicKey, sha256, "data", noise(256)), number(Code::SignatureWrong));
        for (std::size_t i = 0; i < signature.size(); ++i) {
            std::string altered = signature;
            altered[i] = static_cast<char>(altered[i] ^ 1);
            EXPECT_EQ(verify(pair->publicKey, sha256, "data", altered), number(Code::SignatureWrong)) << i;
            EXPECT_EQ(verify(pair->publicKey, sha256, "data", signature.substr(0, i)),
                      number(i == 0 ? Code::BadArgument : Code::SignatureWrong));
        }
    }
}

TEST_P(Signature, ForgedPaddingOfASmallExponentIsRefused)
{
    // A cube root whose cube begins like a signature passes where what follows the digest is not looked at.
    const Pair pair = opensslPair({"-algorithm", "RSA", "-pkeyopt", "rsa_keygen_pubexp:3"});
    const std::string right = sign(pair, sha256, "data");
    EXPECT_EQ(verify(pair.publicKey, sha256, "data", right), 0);
    const std::string digest = give("CRYPT_Hash", sha256, std::string("data"));
    const std::string block = unhex("0001ff003031300d060960864801650304020105000420") + digest;
    const std::string forged =
        give("CRYPT_AsymEncrypt", QG_KEY_PRIVATE + 0, pair.privateKey,
             unhex("3031300d060960864801650304020105000420") + digest + std::string(8, '\0'));
    EXPECT_EQ(verify(pair.publicKey, sha256, "data", forged), number(Code::SignatureWrong));
    EXPECT_EQ(verify(pair.publicKey, sha256, "data", block), number(Code::SignatureWrong));
}

TEST_P(Signature, OnlyKeysThatSignDo)
{
    const Pair agreement = opensslPair({"-algorithm", "X25519"});
    EXPECT_EQ(ask("CRYPT_Sign", agreement.publicKey, agreement.privateKey, sha256, std::string("data")).code,
              number(Code::KeyUnsuitable));
    EXPECT_EQ(verify(agreement.publicKey, sha256, "data", "signature"), number(Code::KeyUnsuitable));
}

TEST_P(PssSignature, OpenSslVerifiesAndIsVerified)
{
    const std::string data = noise(100000);
    for (const DigestName& digest : digests) {
        std::vector<std::string> exact = pss;
        exact.insert(exact.end(), {"-sigopt", "rsa_pss_saltlen:digest"});
        EXPECT_EQ(opensslVerdict(rsaPair(), digest, data, sign(rsaPair(), digest.number, data), exact),
                  "Verified OK\n")
            << digest.name;
        EXPECT_EQ(verify(rsaPair().publicKey, digest.number, data,
                         opensslSignature(rsaPair(), digest, data, exact)),
                  0);
    }
    std::vector<std::string> longest = pss;
    longest.insert(longest.end(), {"-sigopt", "rsa_pss_saltlen:max"});
    EXPECT_EQ(verify(rsaPair().publicKey, sha256, data,
                     opensslSignature(rsaPair(), {sha256, "sha256"}, data, longest)),
              0)
        << "a salt of any length";
}

TEST_P(PssSignature, VersionsDoNotPassForEachOther)
{
    const std::string pssSignature = sign(rsaPair(), sha256, "data");
    EXPECT_NE(sign(rsaPair(), sha256, "data"), pssSignature) << "salted";
    ASSERT_EQ(call("CRYPT_SetRSAVersion", QG_RSA_V15 + 0), 0);
    const std::string old = sign(rsaPair(), sha256, "data");
    EXPECT_EQ(verify(rsaPair().publicKey, sha256, "data", old), 0);
    EXPECT_EQ(verify(rsaPair().publicKey, sha256, "data", pssSignature), number(Code::SignatureWrong));
    ASSERT_EQ(call("CRYPT_SetRSAVersion", QG_RSA_V2 + 0), 0);
    EXPECT_EQ(verify(rsaPair().publicKey, sha256, "data", old), number(Code::SignatureWrong));
    for (const int unknown : {0, 3, -1, 15})
        EXPECT_EQ(call("CRYPT_SetRSAVersion", unknown), number(Code::AlgorithmCodeUnknown));
    EXPECT_EQ(verify(rsaPair().publicKey, sha256, "data", pssSignature), 0) << "the setting stayed";
}

TEST_P(PssSignature, EllipticCurvesSignAsBefore)
{
    EXPECT_EQ(opensslVerdict(ecPair(), {sha256, "sha256"}, "data", sign(ecPair(), sha256, "data")),
              "Verified OK\n");
}
