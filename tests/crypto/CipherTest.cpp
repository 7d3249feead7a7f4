#include <csignal>
#include <fstream>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "CryptoTest.h"

using qgtk::Code;

namespace {

struct Vector
{
    int algorithm;
    const char* key;
    const char* iv;
    const char* plain;
    const char* encrypted;
};

constexpr const char* zeroBlock = "00000000000000000000000000000000";
constexpr const char* desZeroBlock = "0000000000000000";
constexpr const char* nistIv = "000102030405060708090a0b0c0d0e0f";
constexpr const char* nistPlain = "6bc1bee22e409f96e93d7e117393172aae2d8a571e03ac9c9eb76fac45af8e51"
                                  "30c81c46a35ce411e5fbc1191a0a52eff69f2445df4f9b17ad2b417be66c3710";
constexpr const char* aes128Key = "2b7e151628aed2a6abf7158809cf4f3c";
constexpr const char* ariaPlain = "00112233445566778899aabbccddeeff";
constexpr const char* desKey = "0123456789abcdef23456789abcdef01456789abcdef0123";

/** RFC 4269, B; RFC 5794, A; SP 800-67, B (blocks of ECB: CBC with an initial value of zeros); SP 800-38A, F.
 */
const Vector vectors[] = {
    {QG_CIPHER_SEED, zeroBlock, zeroBlock, "000102030405060708090a0b0c0d0e0f",
     "5ebac6e0054e166819aff1cc6d346cdb"},
    {QG_CIPHER_SEED, "000102030405060708090a0b0c0d0e0f", zeroBlock, zeroBlock,
     "c11f22f20140505084483597e4370f43"},
    {QG_CIPHER_SEED, "4706480851e61be85d74bfb3fd956185", zeroBlock, "83a2f8a288641fb9a4e9a5cc2f131c7d",
     "ee54d13ebcae706d226bc3142cd40d4a"},
    {QG_CIPHER_SEED, "28dbc3bc49ffd87dcfa509b11d422be7", zeroBlock, "b41e6be2eba84a148e2eed84593c5ec7",
     "9b9b7bfcd1813cb95d0b3618f40f5122"},
    {QG_CIPHER_ARIA128, "000102030405060708090a0b0c0d0e0f", zeroBlock, ariaPlain,
     "d718fbd6ab644c739da95f3be6451778"},
    {QG_CIPHER_ARIA192, "000102030405060708090a0b0c0d0e0f1011121314151617", zeroBlock, ariaPlain,
     "26449c1805dbe7aa25a468ce263a9e79"},
    {QG_CIPHER_ARIA256, "000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f", zeroBlock,
     ariaPlain, "f92bd7c79fb72e2f2b8f80c1972d24fc"},
    {QG_CIPHER_3DES, desKey, desZeroBlock, "5468652071756663", "a826fd8ce53b855f"},
    {QG_CIPHER_3DES, desKey, desZeroBlock, "6b2062726f776e20", "cce21c8112256fe6"},
    {QG_CIPHER_3DES, desKey, desZeroBlock, "666f78206a756d70", "68d5c05dd9b6b900"},
    {QG_CIPHER_AES128, aes128Key, nistIv, nistPlain,
     "7649abac8119b246cee98e9b12e9197d5086cb9b507219ee95db113a917678b2"
     "73bed6b8e3c1743b7116e69e222295163ff1caa1681fac09120eca307586e1a7"},
    {QG_CIPHER_AES192, "8e73b0f7da0e6452c810f32b809079e562f8ead2522c6b7b", nistIv, nistPlain,
     "4f021db243bc633d7178183a9fa071e8b4d9ada9ad7dedf4e5e738763f69145a"
     "571b242012fb7ae07fa9baac3df102e008b0e27988598881d920a9e64f5615cd"},
    {QG_CIPHER_AES256, "603deb1015ca71be2b73aef0857d77811f352c073b6108d72d9810a30914dff4", nistIv, nistPlain,
     "f58c4c04d6e5f1ba779eabfb5f7bfbd69cfc4e967edb808d679f777bc6702c7d"
     "39f23369a9d9bacfa530e26304231461b2eb05e2c39be9fcda6c19078c6a9d1b"},
    {QG_CIPHER_AES128 + QG_MODE_CFB, aes128Key, nistIv, nistPlain,
     "3b3fd92eb72dad20333449f8e83cfb4ac8a64537a0b3a93fcde3cdad9f1ce58b"
     "26751f67a3cbb140b1808cf187a4f4dfc04b05357c5d1c0eeac4c66f9ff7f2e6"},
    {QG_CIPHER_AES128 + QG_MODE_OFB, aes128Key, nistIv, nistPlain,
     "3b3fd92eb72dad20333449f8e83cfb4a7789508d16918f03f53c52dac54ed825"
     "9740051e9c5fecf64344f7a82260edcc304c6528f659c77866a510d9c1d6ae5e"},
    {QG_CIPHER_AES128 + QG_MODE_CTR, aes128Key, "f0f1f2f3f4f5f6f7f8f9fafbfcfdfeff", nistPlain,
     "874d6191b620e3261bef6864990db6ce9806f66b7970fdff8617187bb9fffdff"
     "5ae4df3edbd5d35e5b4f09020db03eab1e031dda2fbe03d1792170a0f3009cee"},
};

struct CipherCase
{
    int algorithm;
    const char* name; /**< of openssl */
    std::size_t keyLength;
    std::size_t block;
};

const CipherCase ciphers[] = {
    {QG_CIPHER_SEED, "seed-cbc", 16, 16},
    {QG_CIPHER_SEED + QG_MODE_CFB, "seed-cfb", 16, 16},
    {QG_CIPHER_SEED + QG_MODE_OFB, "seed-ofb", 16, 16},
    {QG_CIPHER_ARIA128, "aria-128-cbc", 16, 16},
    {QG_CIPHER_ARIA192 + QG_MODE_CFB, "aria-192-cfb", 24, 16},
    {QG_CIPHER_ARIA256, "aria-256-cbc", 32, 16},
    {QG_CIPHER_ARIA256 + QG_MODE_CTR, "aria-256-ctr", 32, 16},
    {QG_CIPHER_AES128 + QG_MODE_OFB, "aes-128-ofb", 16, 16},
    {QG_CIPHER_AES192, "aes-192-cbc", 24, 16},
    {QG_CIPHER_AES256, "aes-256-cbc", 32, 16},
    {QG_CIPHER_AES256 + QG_MODE_CTR, "aes-256-ctr", 32, 16},
    {QG_CIPHER_3DES, "des-ede3-cbc", 24, 8},
    {QG_CIPHER_3DES + QG_MODE_CFB, "des-ede3-cfb", 24, 8},
    {QG_CIPHER_3DES + QG_MODE_OFB, "des-ede3-ofb", 24, 8},
};

/** The most memory that the process has occupied, in kilobytes. */
long peakKilobytes()
{
    const std::string status = readFile("/proc/self/status");
    return std::stol(status.substr(status.find("VmHWM:") + 6));
}

/** Begins to count anew; what is occupied now. */
long resetPeakKilobytes()
{
    std::ofstream("/proc/self/clear_refs") << "5";
    return peakKilobytes();
}

} // namespace

class Cipher : public CryptoTest
{
protected:
    int encryptFile(const std::string& plain, const std::string& encrypted)
    {
        return isZrtk() ? call("CRYPT_EncryptFile", text(plain), text(encrypted))
                        : call("CRYPT_Encrypt_File", text(plain), text(encrypted));
    }
    /** The sides take the paths in different orders. */
    int decryptFile(const std::string& encrypted, const std::string& plain)
    {
        return isZrtk() ? call("CRYPT_DecryptFile", text(encrypted), text(plain))
                        : call("CRYPT_Decrypt_File", text(plain), text(encrypted));
    }
    std::vector<std::string> opensslEnc(const CipherCase& cipher, const std::string& key,
                                        const std::string& iv, bool encrypts, const std::string& in,
                                        const std::string& out) const
    {
        return {"enc",
                encrypts ? "-e" : "-d",
                "-provider",
                "legacy",
                "-provider",
                "default",
                std::string("-") + cipher.name,
                "-K",
                hex(key),
                "-iv",
                hex(iv),
                "-in",
                in,
                "-out",
                out};
    }
};
INSTANTIATE_BOTH_SIDES(Cipher);

class ZrtkCipher : public CryptoTest
{};
INSTANTIATE_TEST_SUITE_P(Zrtk, ZrtkCipher, testing::Values(zrtkSide));

TEST_P(Cipher, PublishedVectorsBothWays)
{
    for (const Vector& vector : vectors) {
        setKey(vector.algorithm, vector.key, vector.iv);
        const std::string encrypted = give("CRYPT_Encrypt", unhex(vector.plain));
        // A whole block of padding follows in CBC.
        EXPECT_THAT(hex(encrypted), testing::StartsWith(vector.encrypted)) << vector.algorithm;
        EXPECT_EQ(hex(give("CRYPT_Decrypt", encrypted)), vector.plain) << vector.algorithm;
    }
}

TEST_P(ZrtkCipher, WithoutPaddingTheVectorsAreAll)
{
    ASSERT_EQ(call("CRYPT_SetPaddingType", QG_PADDING_NONE + 0), 0);
    for (const Vector& vector : vectors) {
        setKey(vector.algorithm, vector.key, vector.iv);
        EXPECT_EQ(hex(give("CRYPT_Encrypt", unhex(vector.plain))), vector.encrypted);
        EXPECT_EQ(hex(give("CRYPT_Decrypt", unhex(vector.encrypted))), vector.plain);
    }
}

TEST_P(ZrtkCipher, WithoutPaddingOnlyWholeBlocksPass)
{
    setKey(QG_CIPHER_AES256, std::string(64, '1'), zeroBlock);
    ASSERT_EQ(call("CRYPT_SetPaddingType", QG_PADDING_NONE + 0), 0);
    EXPECT_EQ(ask("CRYPT_Encrypt", noise(17)).code, number(Code::DataLength));
    EXPECT_EQ(ask("CRYPT_Decrypt", noise(17)).code, number(Code::NotDecryptable));
    ASSERT_EQ(call("CRYPT_SetPaddingType", QG_PADDING_PKCS7 + 0), 0);
    EXPECT_EQ(ask("CRYPT_Encrypt", noise(17)).bytes.size(), 32U);
    for (const int unknown : {-1, 2, 99})
        EXPECT_EQ(call("CRYPT_SetPaddingType", unknown), number(Code::AlgorithmCodeUnknown));
}

TEST_P(Cipher, OpenSslReadsWhatIsEncryptedAndTheOtherWay)
{
    for (const CipherCase& cipher : ciphers) {
        const std::string key = noise(cipher.keyLength, 3);
        const std::string iv = noise(cipher.block, 4);
        setKey(cipher.algorithm, hex(key), hex(iv));
        for (const std::size_t length :
             {std::size_t{1}, std::size_t{16}, std::size_t{4097}, std::size_t{131072 + 5}}) {
            const std::string plain = noise(length);
            const std::string path = file("plain", plain);
            openssl(opensslEnc(cipher, key, iv, true, path, at("theirs")));
            const std::string encrypted = give("CRYPT_Encrypt", plain);
            EXPECT_EQ(encrypted, readFile(at("theirs"))) << cipher.name << length;
            EXPECT_EQ(give("CRYPT_Decrypt", readFile(at("theirs"))), plain) << cipher.name << length;
            EXPECT_EQ(encryptFile(path, at("ours")), 0);
            EXPECT_EQ(readFile(at("ours")), encrypted) << cipher.name << length;
            EXPECT_EQ(decryptFile(at("theirs"), at("again")), 0);
            EXPECT_EQ(readFile(at("again")), plain) << cipher.name << length;
        }
    }
}

TEST_P(Cipher, MadeKeysHaveTheCiphersLengthsAndAreFresh)
{
    for (const CipherCase& cipher : ciphers) {
        int algorithm = 0;
        BinString key(library);
        BinString iv(library);
        BinString otherKey(library);
        BinString otherIv(library);
        ASSERT_EQ(call("CRYPT_GenKeyAndIV", cipher.algorithm), 0);
        ASSERT_EQ(call("CRYPT_GetKeyAndIV", &algorithm, &key, &iv), 0);
        EXPECT_EQ(algorithm, cipher.algorithm);
        EXPECT_EQ(key.bytes().size(), cipher.keyLength) << cipher.name;
        EXPECT_EQ(iv.bytes().size(), cipher.block) << cipher.name;
        const std::string encrypted = give("CRYPT_Encrypt", std::string("text"));
        ASSERT_EQ(call("CRYPT_GenKeyAndIV", cipher.algorithm), 0);
        ASSERT_EQ(call("CRYPT_GetKeyAndIV", &algorithm, &otherKey, &otherIv), 0);
        EXPECT_NE(key.bytes(), otherKey.bytes());
        EXPECT_NE(iv.bytes(), otherIv.bytes());
        ASSERT_EQ(tell("CRYPT_SetKeyAndIV", algorithm, key.bytes(), iv.bytes()), 0);
        EXPECT_EQ(give("CRYPT_Decrypt", encrypted), "text");
    }
}

TEST_P(Cipher, NothingGoesWithoutAKey)
{
    int algorithm = 7;
    BinString key(library, "k");
    BinString iv(library, "i");
    const std::string path = file("plain", "text");
    const auto expectNoKey = [&] {
        EXPECT_EQ(ask("CRYPT_Encrypt", std::string("text")).code, number(Code::NoCipherKey));
        EXPECT_EQ(ask("CRYPT_Decrypt", std::string("text")).code, number(Code::NoCipherKey));
        EXPECT_EQ(encryptFile(path, at("out")), number(Code::NoCipherKey));
        EXPECT_EQ(decryptFile(path, at("out")), number(Code::NoCipherKey));
        EXPECT_EQ(call("CRYPT_GetKeyAndIV", &algorithm, &key, &iv), number(Code::NoCipherKey));
    };
    expectNoKey();
    EXPECT_EQ(call("CRYPT_ClearKeyAndIV"), 0);
    ASSERT_EQ(call("CRYPT_GenKeyAndIV", QG_CIPHER_SEED + 0), 0);
    EXPECT_EQ(call("CRYPT_ClearKeyAndIV"), 0);
    expectNoKey();
    EXPECT_EQ(algorithm, 7);
    EXPECT_EQ(key.bytes() + iv.bytes(), "ki");
    EXPECT_FALSE(std::filesystem::exists(at("out")));
}

TEST_P(Cipher, KeysOfWrongLengthsAreRefusedAndTheOldOneStays)
{
    setKey(QG_CIPHER_AES256, std::string(64, '1'), zeroBlock);
    const std::string before = give("CRYPT_Encrypt", std::string("text"));
    for (const CipherCase& cipher : ciphers) {
        const auto set = [&](std::size_t keyLength, std::size_t ivLength) {
            return tell("CRYPT_SetKeyAndIV", cipher.algorithm, noise(keyLength), noise(ivLength));
        };
        for (const std::size_t keyLength : {std::size_t{1}, cipher.keyLength - 1, cipher.keyLength + 1})
            EXPECT_EQ(set(keyLength, cipher.block), number(Code::CipherKeyLength)) << cipher.name;
        for (const std::size_t ivLength : {std::size_t{1}, cipher.block - 1, cipher.block + 1})
            EXPECT_EQ(set(cipher.keyLength, ivLength), number(Code::CipherKeyLength)) << cipher.name;
        EXPECT_EQ(set(cipher.keyLength, 0), number(Code::BadArgument));
    }
    EXPECT_EQ(give("CRYPT_Encrypt", std::string("text")), before);
}

TEST_P(Cipher, NumbersOfNoCipherAreRefusedAndTheOldKeyStays)
{
    setKey(QG_CIPHER_AES256, std::string(64, '1'), zeroBlock);
    const std::string before = give("CRYPT_Encrypt", std::string("text"));
    for (const int unknown : {-1, 0, 1, 16, 52, 68, 112, 240, 256, -64, QG_CIPHER_SEED + QG_MODE_CTR,
                              QG_CIPHER_3DES + QG_MODE_CTR}) {
        EXPECT_EQ(call("CRYPT_GenKeyAndIV", unknown), number(Code::AlgorithmCodeUnknown)) << unknown;
        EXPECT_EQ(tell("CRYPT_SetKeyAndIV", unknown, noise(16), noise(16)),
                  number(Code::AlgorithmCodeUnknown));
    }
    EXPECT_EQ(give("CRYPT_Encrypt", std::string("text")), before);
}

TEST_P(Cipher, DamagedDataAreOneCodeAndLeaveEverything)
{
    setKey(QG_CIPHER_ARIA256, std::string(64, '2'), zeroBlock);
    const std::string encrypted = give("CRYPT_Encrypt", noise(1000));
    const std::string target = file("target", "as it was");
    // The last byte of this block is the padding's length.
    std::string altered = encrypted;
    altered[altered.size() - 17] = static_cast<char>(altered[altered.size() - 17] ^ 0x40);
    for (const std::string& damaged :
         {altered, encrypted.substr(0, 999), encrypted.substr(1), std::string("x")}) {
        EXPECT_EQ(ask("CRYPT_Decrypt", damaged).code, number(Code::NotDecryptable));
        EXPECT_EQ(decryptFile(file("damaged", damaged), target), number(Code::NotDecryptable));
        EXPECT_EQ(readFile(target), "as it was");
    }
    std::filesystem::remove(at("damaged"));
    std::filesystem::remove(target);
    EXPECT_TRUE(std::filesystem::is_empty(directory)) << "a temporary file was left";
}

TEST_P(Cipher, FilesMayBeTheirOwnTargetAndBelongToTheOwner)
{
    setKey(QG_CIPHER_SEED, std::string(32, '3'), zeroBlock);
    const std::string plain = noise(300000);
    const std::string path = file("file", plain);
    EXPECT_EQ(encryptFile(path, path), 0);
    EXPECT_EQ(readFile(path), give("CRYPT_Encrypt", plain));
    struct stat status = {};
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600U);
    EXPECT_EQ(decryptFile(path, path), 0);
    EXPECT_EQ(readFile(path), plain);
}

TEST_P(Cipher, AnEmptyFileIsEncryptedToo)
{
    setKey(QG_CIPHER_SEED, std::string(32, '3'), zeroBlock);
    EXPECT_EQ(encryptFile(file("empty", ""), at("encrypted")), 0);
    EXPECT_EQ(readFile(at("encrypted")).size(), 16U) << "a block of padding";
    EXPECT_EQ(decryptFile(at("encrypted"), at("again")), 0);
    EXPECT_EQ(readFile(at("again")), "");
    EXPECT_EQ(decryptFile(at("empty"), at("again")), number(Code::NotDecryptable));
}

TEST_P(Cipher, FilesThatCannotBeReadOrWrittenHaveTheirCodes)
{
    setKey(QG_CIPHER_SEED, std::string(32, '3'), zeroBlock);
    const std::string path = file("plain", "text");
    ASSERT_EQ(mkfifo(at("fifo").c_str(), 0600), 0);
    EXPECT_EQ(encryptFile(at("none"), at("out")), number(Code::FileMissing));
    EXPECT_EQ(encryptFile(at("fifo"), at("out")), number(Code::FileNotRegular)) << "and never blocks";
    EXPECT_EQ(encryptFile(path, at("fifo")), number(Code::FileNotRegular));
    EXPECT_EQ(encryptFile(path, directory.string()), number(Code::FileNotRegular));
    EXPECT_EQ(encryptFile(path, "/proc/none/out"), number(Code::FileNotWritten));
    EXPECT_EQ(encryptFile("", at("out")), number(Code::BadArgument));
    EXPECT_EQ(encryptFile(path, ""), number(Code::BadArgument));
    EXPECT_FALSE(std::filesystem::exists(at("out")));
}

TEST_P(Cipher, TheInputMayBeTheOutput)
{
    setKey(QG_CIPHER_SEED, std::string(32, '3'), zeroBlock);
    BinString data(library, "text");
    EXPECT_EQ(call("CRYPT_Encrypt", &data, &data), 0);
    EXPECT_EQ(data.bytes().size(), 16U);
    EXPECT_EQ(call("CRYPT_Decrypt", &data, &data), 0);
    EXPECT_EQ(data.bytes(), "text");
}

TEST_P(Cipher, LargeFilesAreNotHeldInMemory)
{
    constexpr std::uintmax_t length = 64U << 20;
    constexpr long limitKilobytes = 4096;
    setKey(QG_CIPHER_AES256, std::string(64, '1'), zeroBlock);
    const std::string path = file("large", "x");
    std::filesystem::resize_file(path, length);
    const long before = resetPeakKilobytes();
    EXPECT_EQ(encryptFile(path, at("encrypted")), 0);
    EXPECT_EQ(decryptFile(at("encrypted"), at("again")), 0);
    EXPECT_LT(peakKilobytes(), before + limitKilobytes);
    EXPECT_EQ(std::filesystem::file_size(at("encrypted")), length + 16);
    EXPECT_EQ(std::filesystem::file_size(at("again")), length);
}

TEST_P(Cipher, AFullMediumLeavesTheOldFileAndNothingElse)
{
    setKey(QG_CIPHER_SEED, std::string(32, '3'), zeroBlock);
    const std::string plain = file("plain", noise(300000));
    const std::string target = file("target", "as it was");
    const pid_t child = fork();
    if (child == 0) {
        const rlimit limit{100000, 100000};
        signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &limit);
        _exit(encryptFile(plain, target) == number(Code::FileNotWritten) ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(readFile(target), "as it was");
    std::filesystem::remove(plain);
    std::filesystem::remove(target);
    EXPECT_TRUE(std::filesystem::is_empty(directory));
}
