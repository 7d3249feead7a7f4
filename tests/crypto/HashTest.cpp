#include "CryptoTest.h"

using qgtk::Code;

namespace {

struct HashCase
{
    int number;
    const char* name; /**< of openssl */
    const char* digestOfAbc;
};

/** FIPS 180-4 and FIPS 202: "abc". */
const HashCase hashes[] = {
    {QG_HASH_SHA1, "sha1", "a9993e364706816aba3e25717850c26c9cd0d89d"},
    {QG_HASH_SHA224, "sha224", "23097d223405d8228642a477bda255b32aadbce4bda0b3f7e36c9da7"},
    {QG_HASH_SHA256, "sha256", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
    {QG_HASH_SHA384, "sha384",
     "cb00753f45a35e8bb5a03d699ac65007272c32ab0eded1631a8b605a43ff5bed8086072ba1e7cc2358baeca134c825a7"},
    {QG_HASH_SHA512, "sha512",
     "ddaf35a193617abacc417349ae20413112e6fa4e89a97ea20a9eeee64b55d39a"
     "2192992a274fc1a836ba3c23a3feebbd454d4423643ce80e2a9ac94fa54ca49f"},
    {QG_HASH_SHA3_256, "sha3-256", "3a985da74fe225b2045c172d6bd390bd855f086e3e9d525b46bfe24511431532"},
    {QG_HASH_SHA3_384, "sha3-384",
     "ec01498288516fc926459f58e2c6ad8df9b473cb0fc08c2596da7cf0e49be4b298d88cea927ac7f539f1edf228376d25"},
    {QG_HASH_SHA3_512, "sha3-512",
     "b751850b1a57168a5693cd924b6b096e08f621827444f70d884f5d0240d2712e"
     "10e116e9192af3c91a7ec57647e3934057340b4cf408d5a56592f8274eec53f0"},
};

struct MacCase
{
    int number;
    std::string key;
    std::string data;
    const char* mac;
};

/** RFC 4231, test cases 1, 2 and 6, and RFC 2202, test cases 1 and 2 of SHA-1. */
std::vector<MacCase> macs()
{
    const std::string key1(20, '\x0b');
    const std::string key6(131, '\xaa');
    const std::string data2 = "what do ya want for nothing?";
    return {
        {QG_HASH_SHA1, key1, "Hi There", "b617318655057264e28bc0b6fb378c8ef146be00"},
        {QG_HASH_SHA1, "Jefe", data2, "effcdf6ae5eb2fa2d27416d5f184df9c259a7c79"},
        {QG_HASH_SHA224, key1, "Hi There", "896fb1128abbdf196832107cd49df33f47b4b1169912ba4f53684b22"},
        {QG_HASH_SHA256, key1, "Hi There",
         "b0344c61d8db38535ca8afceaf0bf12b881dc200c9833da726e9376c2e32cff7"},
        {QG_HASH_SHA256, "Jefe", data2, "5bdcc146bf60754e6a042426089575c75a003f089d2739839dec58b964ec3843"},
        {QG_HASH_SHA256, key6, "Test Using Larger Than Block-Size Key - Hash Key First",
         "60e431591ee0b67f0d8a26aacbf5b77f8e0bc6213728c5140546040f0ee37f54"},
        {QG_HASH_SHA384, key1, "Hi There",
         "afd03944d84895626b0825f4ab46907f15f9dadbe4101ec682aa034c7cebc59cfaea9ea9076ede7f4af152e8b2fa9cb6"},
        {QG_HASH_SHA512, key1, "Hi There",
         "87aa7cdea5ef619d4ff0b4241a1d6cb02379f4e2ce4ec2787ad0b30545e17cde"
         "daa833b7d6b8a702038b274eaea3f4e4be9d914eeb61f1702e696c203a126854"},
        {QG_HASH_SHA512, "Jefe", data2,
         "164b7a7bfcf819e2e395fbe73b56e0a387bd64222e831fd610270cd7ea250554"
         "9758bf75c05a994a6d034f65f8f0e6fdcaeab1a34d4a6b4b636e070a38bce737"},
    };
}

} // namespace

class Hash : public CryptoTest
{};
INSTANTIATE_BOTH_SIDES(Hash);

class ZrtkHash : public CryptoTest
{};
INSTANTIATE_TEST_SUITE_P(Zrtk, ZrtkHash, testing::Values(zrtkSide));

TEST_P(Hash, DigestsArePublishedOnes)
{
    for (const HashCase& hash : hashes)
        EXPECT_EQ(hex(give("CRYPT_Hash", hash.number, std::string("abc"))), hash.digestOfAbc) << hash.name;
}

TEST_P(Hash, DigestsOfAnyLengthAreOpenSsls)
{
    for (const std::size_t length :
         {std::size_t{1}, std::size_t{131072}, std::size_t{131073}, std::size_t{1000000}}) {
        const std::string data = noise(length);
        const std::string path = file("data", data);
        for (const HashCase& hash : hashes) {
            const std::string digest = hex(give("CRYPT_Hash", hash.number, data));
            EXPECT_THAT(openssl({"dgst", std::string("-") + hash.name, "-r", path}),
                        testing::StartsWith(digest));
        }
    }
}

TEST_P(Hash, ZeroIsTheHashOfTheContext)
{
    EXPECT_EQ(give("CRYPT_Hash", QG_HASH_CONTEXT + 0, std::string("abc")),
              give("CRYPT_Hash", QG_HASH_SHA256 + 0, std::string("abc")));
    ASSERT_EQ(call("API_SetHashAlgo", QG_HASH_SHA512 + 0), 0);
    EXPECT_EQ(give("CRYPT_Hash", QG_HASH_CONTEXT + 0, std::string("abc")),
              give("CRYPT_Hash", QG_HASH_SHA512 + 0, std::string("abc")));
}

TEST_P(Hash, NumbersOfNoHashAreRefused)
{
    for (const int number32 : {-1, 2, 3, 11, 256}) {
        EXPECT_EQ(ask("CRYPT_Hash", number32, std::string("abc")).code, number(Code::AlgorithmCodeUnknown));
        EXPECT_EQ(ask("CRYPT_GenMAC", number32, text("key"), std::string("abc")).code,
                  number(Code::AlgorithmCodeUnknown));
    }
}

TEST_P(Hash, MacsArePublishedOnesAndVerify)
{
    for (const MacCase& mac : macs()) {
        const std::string made = give("CRYPT_GenMAC", mac.number, text(mac.key), mac.data);
        EXPECT_EQ(hex(made), mac.mac) << mac.number;
        EXPECT_EQ(tell("CRYPT_VerifyMAC", mac.number, text(mac.key), mac.data, made), 0);
    }
}

TEST_P(Hash, WrongMacsAreRefused)
{
    const std::string data = "data";
    const std::string mac = give("CRYPT_GenMAC", QG_HASH_SHA256 + 0, text("key"), data);
    const auto verify = [&](const char* key, const std::string& given) {
        return tell("CRYPT_VerifyMAC", QG_HASH_SHA256 + 0, text(key), data, given);
    };
    EXPECT_EQ(verify("key", mac), 0);
    EXPECT_EQ(verify("Key", mac), number(Code::MacWrong));
    EXPECT_EQ(verify("", mac), number(Code::MacWrong));
    EXPECT_EQ(verify("key", mac.substr(0, 31)), number(Code::MacWrong)) << "part of a code is none";
    EXPECT_EQ(verify("key", mac + mac), number(Code::MacWrong));
    for (std::size_t i = 0; i < mac.size(); ++i) {
        std::string altered = mac;
        altered[i] ^= 1;
        EXPECT_EQ(verify("key", altered), number(Code::MacWrong));
    }
}

TEST_P(Hash, MissingAndEmptyKeysOfMacsAreTheSame)
{
    const std::string empty = give("CRYPT_GenMAC", QG_HASH_SHA256 + 0, text(""), std::string("abc"));
    EXPECT_EQ(give("CRYPT_GenMAC", QG_HASH_SHA256 + 0, static_cast<char*>(nullptr), std::string("abc")),
              empty);
    EXPECT_EQ(hex(empty), "fd7adb152c05ef80dccf50a1fa4c05d5a3ec6da95575fc312ae7c5d091836351");
}

TEST_P(ZrtkHash, DigestsOfFiles)
{
    for (const std::size_t length :
         {std::size_t{0}, std::size_t{1}, std::size_t{131072}, std::size_t{3000000}}) {
        const std::string path = file("data", noise(length));
        for (const HashCase& hash : hashes) {
            const std::string digest = hex(give("CRYPT_HashFile", hash.number, text(path)));
            EXPECT_THAT(openssl({"dgst", std::string("-") + hash.name, "-r", path}),
                        testing::StartsWith(digest));
        }
    }
}

TEST_P(ZrtkHash, FilesThatCannotBeReadHaveTheirCodes)
{
    const int sha256 = QG_HASH_SHA256;
    EXPECT_EQ(ask("CRYPT_HashFile", sha256, text(at("none"))).code, number(Code::FileMissing));
    EXPECT_EQ(ask("CRYPT_HashFile", sha256, text(directory.string())).code, number(Code::FileNotRegular));
    EXPECT_EQ(ask("CRYPT_HashFile", sha256, text("/dev/zero")).code, number(Code::FileNotRegular));
    EXPECT_EQ(ask("CRYPT_HashFile", sha256, text("")).code, number(Code::BadArgument));
    EXPECT_EQ(ask("CRYPT_HashFile", sha256, static_cast<char*>(nullptr)).code, number(Code::BadArgument));
}

TEST_P(ZrtkHash, KeysOfMacsMayHoldZeroBytes)
{
    const std::string key("k\0ey", 4);
    const std::string mac = give("CRYPT_GenMAC2", QG_HASH_SHA256 + 0, key, std::string("abc"));
    EXPECT_THAT(
        openssl({"dgst", "-sha256", "-mac", "HMAC", "-macopt", "hexkey:" + hex(key), file("data", "abc")}),
        testing::HasSubstr(hex(mac)));
    for (const MacCase& known : macs())
        EXPECT_EQ(hex(give("CRYPT_GenMAC2", known.number, known.key, known.data)), known.mac);
}
