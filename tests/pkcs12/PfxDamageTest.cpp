// Files that are cut, changed, too costly or put together by hand.

#include <openssl/hmac.h>
#include <random>

#include "PfxBytes.h"
#include "PfxSamples.h"
#include "toolkit/core/KeyProtection.h"
#include "toolkit/core/KeyRandom.h"
#include "toolkit/core/Pkcs12Encryption.h"

using qgtk::Code;
using testing::ElementsAre;
using namespace std::string_literals;
namespace der = samplepki::der;

namespace {

constexpr const char* tripleDes = "1.2.840.113549.1.12.1.3";
constexpr const char* md2Des = "1.2.840.113549.1.5.1";
const std::string sha1 = der::sequence({der::oid("1.3.14.3.2.26"), der::element(der::Null, "")});

const qgtk::Crypto& crypto()
{
    static const qgtk::Crypto context;
    return context;
}

std::string string(qgtk::ByteView bytes)
{
    return std::string(qgtk::textOf(bytes));
}

/** A key that says it is sealed with an iteration count. */
std::string sealedWith(const std::string& count, const char* algorithm = tripleDes)
{
    return pfx::sealedKey(der::sequence(
        {pfx::algorithm(algorithm, count), der::element(der::OctetString, std::string(16, 'x'))}));
}

/** Bags in an encrypted content that the password "p" opens. */
std::string encryptedWith(const std::vector<std::string>& bags)
{
    qgtk::KeyProtection protection;
    protection.iterations = 1;
    const qgtk::AlgorithmHandle algorithm = makeAlgorithm(crypto(), protection);
    qgtk::Bytes cipherText;
    EXPECT_TRUE(runPbe(crypto(), algorithm.get(), qgtk::writtenReading("p"), true,
                       qgtk::bytesOf(pfx::safe(bags)), cipherText));
    return pfx::encrypted(string(qgtk::encodeDer<qgtk::Bytes>(i2d_X509_ALGOR, algorithm.get())),
                          string(cipherText));
}

} // namespace

class PfxDamage : public PfxTest
{
protected:
    void SetUp() override { restartWith("KEY_ITERATIONS=1"); }

    /** The code of a file without a check, of these contents. */
    int codeOf(const std::vector<std::string>& contents) { return import(pfx::file(contents), "p", 16).code; }

    const SampleHolder& holder = sampleHolder();
    const std::string certificateBag = pfx::certificate(holder.signing.certificate);
    const std::string keyBag = pfx::key(holder.signing.key);
};
INSTANTIATE_ZR_SIDE(PfxDamage);

TEST_P(PfxDamage, FileCutAtEveryByteIsDamaged)
{
    const std::string whole = exportPairs("p", {holder.signing, holder.management});
    ASSERT_EQ(import(whole, "p").code, 0);
    for (std::size_t length = 1; length < whole.size(); ++length)
        for (const int mode : {0, 16})
            ASSERT_EQ(import(whole.substr(0, length), "p", mode).code, 4500) << length;
    EXPECT_EQ(import(whole + "more", "p").code, 0) << "bytes behind a file do not count";
}

TEST_P(PfxDamage, ChangedBytesAreFoundByTheCheck)
{
    restartWith("KEY_ITERATIONS=1\nMAX_ITERATIONS=1000");
    std::mt19937 random(20260101);
    for (const int option : {0, 1}) {
        const std::string whole = exportPairs("p", {holder.signing, holder.management}, option);
        for (int i = 0; i < 2000; ++i) {
            std::string changed = whole;
            changed[random() % whole.size()] ^= static_cast<char>(1U << random() % 8);
            const Contents contents = import(changed, "p", 0);
            if (contents.code == 0) {
                ASSERT_THAT(contents.keys, ElementsAre(holder.signing.key, holder.management.key)) << i;
                ASSERT_EQ(contents.certificates[0], holder.signing.certificate) << i;
            }
        }
    }
}

TEST_P(PfxDamage, ChangedBytesOfAnUncheckedFileAreReadOrRefused)
{
    restartWith("KEY_ITERATIONS=1\nMAX_ITERATIONS=1000");
    std::mt19937 random(20260102);
    const std::string whole = pfx::file({pfx::plain({certificateBag, keyBag, sealedWith("\x01")}),
                                         encryptedWith({certificateBag, pfx::nested({keyBag})})});
    int refused = 0;
    for (int i = 0; i < 4000; ++i) {
        std::string changed = whole;
        for (unsigned flips = 1 + random() % 3; flips > 0; --flips)
            changed[random() % whole.size()] ^= static_cast<char>(1U << random() % 8);
        refused += import(changed, "p", 16).code != 0 ? 1 : 0;
    }
    EXPECT_GT(refused, 0);
}

TEST_P(PfxDamage, ListsNeedNotPair)
{
    const std::string twoAndOne = pfx::file({pfx::plain(
        {certificateBag, pfx::certificate(holder.management.certificate), pfx::key(holder.management.key)})});
    Contents contents = import(twoAndOne, "p", 16);
    EXPECT_EQ(contents.code, 0);
    EXPECT_THAT(contents.certificates,
                ElementsAre(holder.signing.certificate, holder.management.certificate));
    EXPECT_THAT(contents.keys, ElementsAre(holder.management.key));
    const std::string otherOrder =
        pfx::file({pfx::plain({pfx::key(holder.management.key), keyBag}),
                   pfx::plain({certificateBag, pfx::certificate(holder.management.certificate)})});
    contents = import(otherOrder, "p", 16);
    EXPECT_THAT(contents.certificates,
                ElementsAre(holder.signing.certificate, holder.management.certificate));
    EXPECT_THAT(contents.keys, ElementsAre(holder.management.key, holder.signing.key));
    const std::string keysAlone = pfx::file({pfx::plain({keyBag})});
    EXPECT_TRUE(import(keysAlone, "p", 16).certificates.empty());
    BinString file(library, keysAlone);
    BinString certificate(library, "kept");
    BinString key(library);
    BinString authorities(library);
    EXPECT_EQ(call("PFX_Import", text("p"), &file, &certificate, &key, &authorities),
              number(Code::PfxNoPair));
    EXPECT_EQ(certificate.bytes(), "kept");
}

TEST_P(PfxDamage, AuthorityWithItsOwnKeyIsAHolder)
{
    const samplepki::KeyPair& rootKey = samplepki::KeyPool::key(samplepki::KeyKind::Rsa2048, 0);
    const Contents contents =
        import(pfx::file({pfx::plain({pfx::certificate(holder.root), pfx::certificate(holder.issuer),
                                      pfx::key(rootKey.privateKeyInfo())})}),
               "p", 16);
    EXPECT_THAT(contents.certificates, ElementsAre(holder.root));
    EXPECT_THAT(contents.authorities, ElementsAre(holder.issuer));
}

TEST_P(PfxDamage, MissingCheckIsToldApart)
{
    const std::string unchecked = pfx::file({pfx::plain({certificateBag, keyBag})});
    EXPECT_EQ(import(unchecked, "p").code, number(Code::PfxNoMac));
    EXPECT_EQ(import(unchecked, "p", 16).code, 0);
    EXPECT_EQ(import(pfx::file({encryptedWith({certificateBag})}), "wrong", 16).code, 4505);
}

TEST_P(PfxDamage, AbsurdCountsAreRefusedAtOnce)
{
    const struct
    {
        std::string count;
        Code code;
    } cases[] = {{"\0"s, Code::PfxAlgorithm},
                 {"\xff"s, Code::PfxAlgorithm},
                 {"\0\x80\0\0\0"s, Code::PfxTooCostly},
                 {"\x7f\xff\xff\xff"s, Code::PfxTooCostly},
                 {"\x4c\x4b\x41"s, Code::PfxTooCostly},
                 {std::string(40, '\x7f'), Code::PfxTooCostly},
                 {std::string(40, '\x80'), Code::PfxAlgorithm}};
    for (const auto& [count, code] : cases) {
        const std::string mac = pfx::mac(sha1, std::string(20, 'm'), "12345678", count);
        EXPECT_EQ(import(pfx::file({pfx::plain({certificateBag})}, mac), "p").code, number(code))
            << samplepki::toHex(count);
        EXPECT_EQ(codeOf({pfx::plain({sealedWith(count)})}), number(code)) << samplepki::toHex(count);
        EXPECT_EQ(codeOf({pfx::plain({pfx::nested({sealedWith(count)})})}), number(code));
        EXPECT_EQ(codeOf({encryptedWith({sealedWith(count)})}), number(code));
        EXPECT_EQ(codeOf({pfx::encrypted(pfx::algorithm(tripleDes, count), "12345678")}), number(code));
    }
    EXPECT_EQ(codeOf({pfx::plain({sealedWith("\x01")})}), 4505) << "all in order but the password";
}

TEST_P(PfxDamage, ManyBagsTogetherAreRefusedAtOnce)
{
    const std::string twoMillion = sealedWith("\x1e\x84\x80");
    const std::string dear = sealedWith("\x4c\x4b\x40"); // 5,000,000
    EXPECT_EQ(codeOf({pfx::plain({twoMillion, twoMillion, twoMillion})}), number(Code::PfxTooCostly));
    EXPECT_EQ(codeOf({pfx::plain({dear}), pfx::plain({sealedWith("\x01")})}), number(Code::PfxTooCostly));
    EXPECT_EQ(codeOf({encryptedWith({dear, sealedWith("\x01")})}), number(Code::PfxTooCostly));
    const std::string mac = pfx::mac(sha1, std::string(20, 'm'), "12345678", "\x01");
    EXPECT_EQ(import(pfx::file({pfx::plain({dear})}, mac), "p").code, number(Code::PfxTooCostly));
    EXPECT_EQ(codeOf({pfx::plain(std::vector<std::string>(900, sealedWith("\x27\x10")))}),
              number(Code::PfxTooCostly));
    EXPECT_EQ(codeOf({pfx::plain(std::vector<std::string>(1000, pfx::bag("1.2.3", der::sequence({}))))}), 0);
    EXPECT_EQ(codeOf({pfx::plain(std::vector<std::string>(1001, pfx::bag("1.2.3", der::sequence({}))))}),
              number(Code::PfxTooCostly));
    EXPECT_EQ(codeOf({pfx::plain({sealedWith("\x19\x6e\x6b", md2Des)})}), number(Code::PfxTooCostly))
        << "1,666,667 rounds of MD2, each as dear as three";
    restartWith("MAX_ITERATIONS=3");
    EXPECT_EQ(codeOf({pfx::plain({sealedWith("\x01", md2Des)})}), 4505);
    EXPECT_EQ(codeOf({pfx::plain({sealedWith("\x02"), sealedWith("\x02")})}), number(Code::PfxTooCostly))
        << "as configured";
    EXPECT_EQ(codeOf({pfx::plain({sealedWith("\x02"), sealedWith("\x01")})}), 4505);
}

TEST_P(PfxDamage, NestedSafesAreReadToADepth)
{
    std::string bag = keyBag;
    for (int depth = 1; depth <= 12; ++depth) {
        bag = pfx::nested({bag});
        EXPECT_EQ(codeOf({pfx::plain({bag})}), depth < 8 ? 0 : 4500) << depth;
    }
}

TEST_P(PfxDamage, SizeIsRefusedBeforeAnythingElse)
{
    EXPECT_EQ(import(std::string(100U << 20, '\x30'), "p").code, number(Code::FileTooLarge));
    EXPECT_EQ(import(std::string((1U << 20) + 1, '\x30'), "p").code, number(Code::FileTooLarge));
    EXPECT_EQ(import(std::string(1U << 20, '\x30'), "p").code, 4500);
}

TEST_P(PfxDamage, WhatOtherOperationsGiveIsNoFile)
{
    for (const std::string& other :
         {holder.signing.certificate, holder.signing.key, listOf({holder.issuer, holder.root}),
          listOf({"text"}), "text"s, std::string(4096, '\0'),
          string(qgtk::encryptKey(crypto(), qgtk::bytesOf(holder.signing.key), "p", {}))})
        EXPECT_EQ(import(other, "p", 16).code, 4500);
}

TEST_P(PfxDamage, StrangeContentsHaveTheirCodes)
{
    const std::string enveloped =
        der::sequence({der::oid("1.2.840.113549.1.7.2"), der::context(0, der::sequence({}))});
    EXPECT_NE(codeOf({enveloped}), 0);
    EXPECT_EQ(codeOf({pfx::plain({pfx::certificate("certificate")})}), 4500);
    EXPECT_EQ(codeOf({pfx::plain({pfx::key(der::sequence({der::integer(0)}))})}), 4500);
    EXPECT_EQ(codeOf({pfx::plain({pfx::sealedKey(holder.signing.key)})}), 4500);
    EXPECT_EQ(codeOf({pfx::encrypted(pfx::algorithm("1.2.3.4", "\x01"), "12345678")}),
              number(Code::PfxAlgorithm));
    EXPECT_EQ(codeOf({pfx::encrypted(pfx::algorithm(tripleDes, "\x01", ""), "12345678")}),
              number(Code::PfxAlgorithm));
    EXPECT_EQ(codeOf({pfx::encrypted(pfx::algorithm(tripleDes, "\x01", std::string(1025, 's')), "12345678")}),
              number(Code::PfxAlgorithm));
    EXPECT_EQ(codeOf({pfx::encrypted(der::sequence({der::oid(tripleDes)}), "12345678")}),
              number(Code::PfxAlgorithm));
    EXPECT_EQ(codeOf({pfx::encrypted(pfx::algorithm(tripleDes, "\x01"), "")}), 4505);
    const std::string mac =
        pfx::mac(der::sequence({der::oid("1.2.3.4"), der::element(der::Null, "")}), "x", "12345678", "\x01");
    EXPECT_EQ(import(pfx::file({pfx::plain({certificateBag})}, mac), "p").code, number(Code::PfxAlgorithm));
    EXPECT_EQ(codeOf({}), 0) << "an empty file is sound";
}

TEST_P(PfxDamage, KoreanKeySchemesAreRead)
{
    for (const qgtk::KeyScheme scheme :
         {qgtk::KeyScheme::Pbkdf1Seed, qgtk::KeyScheme::Pbkdf1SeedOld, qgtk::KeyScheme::Pbes2}) {
        const qgtk::KeyProtection protection{scheme, qgtk::KeyCipher::Seed, qgtk::KeyPrf::Sha1, 2048, 8};
        const std::string sealed =
            string(qgtk::encryptKey(crypto(), qgtk::bytesOf(holder.signing.key), eucKr("비밀"), protection));
        for (const std::string& typed : {"비밀"s, eucKr("비밀")})
            EXPECT_THAT(
                import(pfx::file({pfx::plain({certificateBag, pfx::sealedKey(sealed)})}), typed, 16).keys,
                ElementsAre(holder.signing.key));
    }
}

TEST_P(PfxDamage, RandomValueOfABagGoesIntoTheKey)
{
    const samplepki::KeyPair bare = samplepki::KeyPool::key(samplepki::KeyKind::Rsa2048, 2).withRandom("");
    const std::string random = samplepki::fromHex("0102030405060708090a0b0c0d0e0f1011121300");
    const std::string attribute =
        der::sequence({der::oid("1.2.410.200004.10.1.1.3"), der::element(der::Set, der::bitString(random))});
    Contents contents =
        import(pfx::file({pfx::plain({pfx::key(bare.privateKeyInfo(), attribute)})}), "p", 16);
    ASSERT_EQ(contents.keys.size(), 1U);
    EXPECT_EQ(string(qgtk::keyRandom(qgtk::bytesOf(contents.keys[0]))), random);
    const std::string other =
        der::sequence({der::oid("1.2.410.200004.10.1.1.3"), der::element(der::Set, der::bitString("other"))});
    contents = import(pfx::file({pfx::plain({pfx::key(holder.signing.key, other)})}), "p", 16);
    EXPECT_THAT(contents.keys, ElementsAre(holder.signing.key)) << "its own value stays";
}

TEST_P(PfxDamage, KeyWhoseOwnRandomValueIsOfNoUseComesAsItIs)
{
    const samplepki::KeyPair bare = samplepki::KeyPool::key(samplepki::KeyKind::Rsa2048, 2).withRandom("");
    const std::string key = string(qgtk::withKeyRandom(qgtk::bytesOf(bare.privateKeyInfo()), {}));
    const std::string attribute = der::sequence(
        {der::oid("1.2.410.200004.10.1.1.3"), der::element(der::Set, der::bitString("random"))});
    const Contents contents = import(pfx::file({pfx::plain({pfx::key(key, attribute)})}), "p", 16);
    EXPECT_EQ(contents.code, 0);
    EXPECT_THAT(contents.keys, ElementsAre(key));
}

TEST_P(PfxDamage, Pbmac1IsChecked)
{
    const std::vector<std::string> contents = {pfx::plain({certificateBag, keyBag})};
    const std::string checked = pfx::checkedBytes(contents);
    const std::string password = "비밀";
    unsigned char key[32];
    unsigned char value[32];
    unsigned length = 0;
    const auto* salt = reinterpret_cast<const unsigned char*>("12345678");
    ASSERT_EQ(PKCS5_PBKDF2_HMAC(password.data(), static_cast<int>(password.size()), salt, 8, 2048,
                                EVP_sha256(), sizeof key, key),
              1);
    HMAC(EVP_sha256(), key, sizeof key, reinterpret_cast<const unsigned char*>(checked.data()),
         checked.size(), value, &length);
    const std::string hmacSha256 =
        der::sequence({der::oid("1.2.840.113549.2.9"), der::element(der::Null, "")});
    const auto algorithm = [&](std::uint64_t iterations) {
        const std::string derivation =
            der::sequence({der::oid("1.2.840.113549.1.5.12"),
                           der::sequence({der::element(der::OctetString, "12345678"),
                                          der::integer(iterations), der::integer(32), hmacSha256})});
        return der::sequence({der::oid("1.2.840.113549.1.5.14"), der::sequence({derivation, hmacSha256})});
    };
    const std::string stored(reinterpret_cast<const char*>(value), length);
    const std::string file = pfx::file(contents, pfx::mac(algorithm(2048), stored, "NOT USED", "\x01"));
    EXPECT_EQ(import(file, password).code, 0);
    EXPECT_EQ(import(file, eucKr(password)).code, 0);
    EXPECT_EQ(import(file, "wrong").code, 4505);
    EXPECT_EQ(
        import(pfx::file(contents, pfx::mac(algorithm(5'000'001), stored, "NOT USED", "\x01")), password)
            .code,
        number(Code::PfxTooCostly));
}

TEST_P(PfxDamage, NullAndEmptyAreRefusedAndOutputsStay)
{
    BINSTR null = {};
    unsigned char byte = 0;
    BINSTR negative{&byte, -1};
    BinString certificate(library, holder.signing.certificate);
    BinString key(library, holder.signing.key);
    BinString out[3] = {BinString(library, "a"), BinString(library, "b"), BinString(library, "c")};
    for (BINSTR* bad : {static_cast<BINSTR*>(nullptr), &null, &negative}) {
        EXPECT_EQ(call("PFX_Export", 0, text("p"), bad, &key, &out[0]), number(Code::BadArgument));
        EXPECT_EQ(call("PFX_Export", 0, text("p"), &certificate, bad, &out[0]), number(Code::BadArgument));
        EXPECT_EQ(call("PFX_Export2", text("p"), &certificate, &key, bad, &out[0]),
                  number(Code::BadArgument));
        EXPECT_EQ(call("PFX_ExportMultiPair", 0, text("p"), bad, &key, &out[0]), number(Code::BadArgument));
        EXPECT_EQ(call("PFX_ExportMultiPair", 0, text("p"), &certificate, bad, &out[0]),
                  number(Code::BadArgument));
        EXPECT_EQ(call("PFX_Import", text("p"), bad, &out[0], &out[1], &out[2]), number(Code::BadArgument));
        EXPECT_EQ(call("PFX_ImportMultiPair", text("p"), bad, &out[0], &out[1], &out[2]),
                  number(Code::BadArgument));
        EXPECT_EQ(call("PFX_ImportMultiPair2", 0, text("p"), bad, &out[0], &out[1], &out[2]),
                  number(Code::BadArgument));
    }
    BinString file(library, exportOne("p", holder.signing));
    auto* none = static_cast<BINSTR*>(nullptr);
    EXPECT_EQ(call("PFX_ImportMultiPair", text("p"), &file, &out[0], &out[1], none),
              number(Code::BadArgument));
    EXPECT_EQ(call("PFX_Import", text("p"), &file, none, &out[1], &out[2]), number(Code::BadArgument));
    EXPECT_EQ(call("PFX_Export", 0, text("p"), &certificate, &key, none), number(Code::BadArgument));
    EXPECT_EQ(call("PFX_ImportMultiPair", text("wrong"), &file, &out[0], &out[1], &out[2]), 4505);
    EXPECT_EQ(out[0].bytes() + out[1].bytes() + out[2].bytes(), "abc");
}
