#include <array>
#include <cstdio>

#include "KeySamples.h"
#include "TestHome.h"
#include "ToolkitLibrary.h"
#include "samplepki/Authority.h"

using qgtk::Code;
using samplepki::KeyKind;
using samplepki::KeyPool;

namespace {

std::string string(qgtk::ByteView bytes)
{
    return std::string(qgtk::textOf(bytes));
}

/** A key encrypted by the core, as another program would have written it. */
std::string sealed(const qgtk::KeyProtection& protection, const std::string& password)
{
    return string(encryptKey(testCrypto(), rsaKeyWithRandom(), password, protection));
}

constexpr qgtk::KeyProtection seedProtection{qgtk::KeyScheme::Pbkdf1Seed, qgtk::KeyCipher::Seed,
                                             qgtk::KeyPrf::Sha1, 2048, 8};

/** Output of a shell command; its exit status is put behind it when it is not 0. */
std::string run(const std::string& command)
{
    std::string output;
    FILE* pipe = popen(("LD_PRELOAD= " + command + " 2>&1").c_str(), "r");
    std::array<char, 4096> buffer{};
    for (std::size_t count = 0; (count = fread(buffer.data(), 1, buffer.size(), pipe)) > 0;)
        output.append(buffer.data(), count);
    const int status = pclose(pipe);
    return status == 0 ? output : output + " status " + std::to_string(status);
}

} // namespace

class KeyOperation : public ToolkitTest
{
protected:
    std::string encrypt(int symAlg, const std::string& password, const std::string& plain)
    {
        BinString key(library, plain);
        BinString result(library);
        EXPECT_EQ(call("PRIKEY_Encrypt", symAlg, text(password), &key, &result), 0);
        return result.bytes();
    }
    int decrypt(const std::string& password, const std::string& encrypted, std::string* plain = nullptr)
    {
        BinString key(library, encrypted);
        BinString result(library);
        const int code = call("PRIKEY_Decrypt", text(password), &key, &result);
        if (plain)
            *plain = result.bytes();
        return code;
    }
    const std::string plainKey = string(rsaKeyWithRandom());
};
INSTANTIATE_BOTH_SIDES(KeyOperation);

TEST_P(KeyOperation, EveryAlgorithmCodeWritesItsCipherAndIsReadBack)
{
    for (const auto& [code, cipher] : {std::pair{64, qgtk::KeyCipher::Aes256},
                                       {48, qgtk::KeyCipher::Seed},
                                       {224, qgtk::KeyCipher::Aria256}}) {
        const std::string encrypted = encrypt(code, "비밀번호!", plainKey);
        EXPECT_EQ(qgtk::cipherOfKey(qgtk::bytesOf(encrypted)), cipher) << code;
        std::string plain;
        EXPECT_EQ(decrypt("비밀번호!", encrypted, &plain), 0);
        EXPECT_EQ(plain, plainKey) << "attributes and all";
    }
}

TEST_P(KeyOperation, UnknownAlgorithmCodesHaveTheirOwnCode)
{
    BinString key(library, plainKey);
    BinString result(library);
    for (const int code : {0, -1, 1, 65, 255})
        EXPECT_EQ(call("PRIKEY_Encrypt", code, text("p"), &key, &result), number(Code::AlgorithmCodeUnknown));
    EXPECT_EQ(result.bytes(), "");
}

TEST_P(KeyOperation, WrongPasswordIsTold)
{
    for (const std::string& encrypted : {encrypt(64, "right", plainKey), sealed(seedProtection, "right")}) {
        EXPECT_EQ(decrypt("right", encrypted), 0);
        EXPECT_EQ(decrypt("wrong", encrypted), 2004);
        EXPECT_EQ(decrypt("", encrypted), 2004);
        EXPECT_EQ(decrypt("right ", encrypted), 2004);
        EXPECT_EQ(decrypt(std::string(5000, 'x'), encrypted), 2004);
    }
}

TEST_P(KeyOperation, WrongPasswordsThatPassThePaddingAreStillWrong)
{
    // One in 256 decrypts to a sound padding; none of these is a key.
    qgtk::KeyProtection quick = seedProtection;
    quick.iterations = 1;
    const std::string encrypted = sealed(quick, "right");
    for (int i = 0; i < 2000; ++i)
        ASSERT_EQ(decrypt("wrong" + std::to_string(i), encrypted), 2004);
}

TEST_P(KeyOperation, PasswordsOfAnyLengthAreTakenAsBytes)
{
    for (const std::string& password : {std::string(), std::string(1023, 'k'), std::string(1024, 'k'),
                                        std::string(70000, 'k'), eucKr("한글비밀번호")}) {
        const std::string encrypted = encrypt(64, password, plainKey);
        EXPECT_EQ(decrypt(password, encrypted), 0) << password.size();
        EXPECT_EQ(decrypt(password + "x", encrypted), 2004) << password.size();
    }
    BinString key(library, plainKey);
    BinString result(library);
    EXPECT_EQ(call("PRIKEY_Encrypt", 64, static_cast<char*>(nullptr), &key, &result), 0)
        << "a null password is an empty one";
    EXPECT_EQ(decrypt("", result.bytes()), 0);
}

TEST_P(KeyOperation, ChangingThePasswordKeepsKeyAndCipher)
{
    BinString key(library, sealed(seedProtection, "old"));
    BinString changed(library);
    ASSERT_EQ(call("PRIKEY_ChangePasswd", text("old"), text("new"), &key, &changed), 0);
    EXPECT_EQ(qgtk::cipherOfKey(qgtk::bytesOf(changed.bytes())), qgtk::KeyCipher::Seed);
    std::string plain;
    EXPECT_EQ(decrypt("new", changed.bytes(), &plain), 0);
    EXPECT_EQ(plain, plainKey);
    EXPECT_EQ(decrypt("old", changed.bytes()), 2004);
    BinString untouched(library);
    EXPECT_EQ(call("PRIKEY_ChangePasswd", text("bad"), text("new"), &key, &untouched), 2004);
    EXPECT_EQ(untouched.bytes(), "");
}

TEST_P(KeyOperation, KeyAndCertificateOfAPair)
{
    using namespace samplepki;
    for (const KeyKind kind : {KeyKind::Rsa2048, KeyKind::EcP256}) {
        const KeyPair& pair = KeyPool::key(kind, 1);
        Authority root = Authority::root(nameFromText("cn=r,o=o,c=kr"), KeyPool::key(KeyKind::Rsa2048, 0));
        BinString certificate(library, root.issue({nameFromText("cn=a,o=o,c=kr"), pair}));
        BinString key(library, pair.privateKeyInfo());
        BinString other(library, KeyPool::key(KeyKind::Rsa2048, 0).privateKeyInfo());
        BinString noKey(library, "no key");
        EXPECT_EQ(call("PRIKEY_CheckKeyPair", &certificate, &key), 0);
        EXPECT_EQ(call("PRIKEY_CheckKeyPair", &certificate, &other), number(Code::KeyMismatch));
        EXPECT_EQ(call("PRIKEY_CheckKeyPair", &certificate, &noKey), number(Code::KeyNotPlain));
        EXPECT_EQ(call("PRIKEY_CheckKeyPair", &noKey, &key), number(Code::CertDamaged));
    }
}

TEST_P(KeyOperation, OnlyPlainKeysAreEncrypted)
{
    BinString noKey(library, "no key");
    BinString result(library);
    EXPECT_EQ(call("PRIKEY_Encrypt", 64, text("p"), &noKey, &result), number(Code::KeyNotPlain));
}

TEST_P(KeyOperation, RandomValueComesOutWhole)
{
    BinString key(library, plainKey);
    BinString random(library);
    EXPECT_EQ(call("VID_GetRandomFromPriKey", &key, &random), 0);
    EXPECT_EQ(toHex(qgtk::bytesOf(random.bytes())), "0102030405060708090a0b0c0d0e0f1011121300");
    BinString bare(library, string(rsaKey()));
    EXPECT_EQ(call("VID_GetRandomFromPriKey", &bare, &random), 3500);
    BinString encrypted(library, sealed(seedProtection, "p"));
    EXPECT_EQ(call("VID_GetRandomFromPriKey", &encrypted, &random), number(Code::KeyNotPlain));
}

TEST_P(KeyOperation, CostIsCappedByTheConfiguration)
{
    qgtk::KeyProtection protection;
    protection.iterations = 1000;
    std::string costly = sealed(protection, "p");
    const std::string count("\x02\x02\x03\xe8", 4);
    const std::size_t place = costly.find(count);
    ASSERT_NE(place, std::string::npos);
    costly.replace(place + 2, 2, std::string("\x7f\xff", 2));
    restartWith("MAX_ITERATIONS=1000");
    EXPECT_EQ(decrypt("p", sealed(protection, "p")), 0) << "the limit itself is allowed";
    EXPECT_EQ(decrypt("p", costly), number(Code::KeyTooCostly));
    EXPECT_THAT(errorText(), testing::HasSubstr("(2003)"));
}

TEST_P(KeyOperation, KeysOfOthersAreRead)
{
    const std::string directory = TestHome::scratch("keys").string();
    run("openssl genpkey -algorithm RSA -pkeyopt rsa_keygen_bits:2048 -out " + directory + "/k.pem");
    run("openssl pkcs8 -topk8 -nocrypt -in " + directory + "/k.pem -outform DER -out " + directory +
        "/plain.der");
    for (const char* cipher : {"seed-cbc", "aria-128-cbc", "aria-192-cbc", "aria-256-cbc", "aes-128-cbc",
                               "aes-192-cbc", "aes-256-cbc", "des3"})
        for (const char* prf : {"hmacWithSHA1", "hmacWithSHA256", "hmacWithSHA512"}) {
            const std::string out = run("openssl pkcs8 -topk8 -provider legacy -provider default -in " +
                                        directory + "/k.pem -v2 " + cipher + " -v2prf " + prf +
                                        " -passout pass:secret -outform DER -out " + directory + "/key.der");
            ASSERT_EQ(out, "") << cipher;
            std::string plain;
            EXPECT_EQ(decrypt("secret", readFile(directory + "/key.der"), &plain), 0) << cipher << prf;
            EXPECT_EQ(plain, readFile(directory + "/plain.der")) << cipher << prf;
        }
}

TEST_P(KeyOperation, OthersReadOurKeys)
{
    const std::string directory = TestHome::scratch("keys").string();
    writeFile(directory + "/plain.der", plainKey);
    const std::string wanted =
        run("openssl pkey -inform DER -in " + directory + "/plain.der -outform DER -pubout | sha256sum");
    for (const int code : {64, 48, 224}) {
        writeFile(directory + "/key.der", encrypt(code, "secret", plainKey));
        EXPECT_EQ(run("openssl pkcs8 -provider legacy -provider default -inform DER -in " + directory +
                      "/key.der -passin pass:secret -outform DER | openssl pkey -inform DER -pubout -outform "
                      "DER | sha256sum"),
                  wanted)
            << code;
    }
    writeFile(directory + "/key.der", encrypt(64, "secret", plainKey));
    EXPECT_EQ(run("certtool --inder --pkcs8 --password secret --key-info --infile " + directory +
                  "/key.der | grep -c 'Public Key Algorithm: RSA'"),
              "1\n");
}

TEST_P(KeyOperation, SettingsOfTheConfigurationFileHold)
{
    const auto iterations = [&] {
        const std::string encrypted = encrypt(64, "p", plainKey);
        return encrypted.find(std::string("\x02\x02\x10\x00", 4)) != std::string::npos;
    };
    EXPECT_FALSE(iterations());
    restartWith("  KEY_ITERATIONS = 4096  ");
    EXPECT_TRUE(iterations());
    EXPECT_EQ(call("API_SetConfFile", text(workDirectory + "/missing.conf")), number(Code::FileMissing));
    EXPECT_TRUE(iterations()) << "a file that is missing changes nothing";
    writeFile(workDirectory + "/other.conf", "[OPEN_TOOLKIT]\nKEY_ITERATIONS=2048\n");
    EXPECT_EQ(call("API_SetConfFile", text(workDirectory + "/other.conf")), 0);
    EXPECT_FALSE(iterations());
    EXPECT_EQ(call("API_SetConfFile", text("")), 0);
    EXPECT_TRUE(iterations()) << "the work directory's file again";
}

TEST_P(KeyOperation, UselessSettingsLeaveTheDefaults)
{
    for (const char* settings : {"MAX_ITERATIONS=0", "MAX_ITERATIONS=-5", "MAX_ITERATIONS=99999999999",
                                 "MAX_ITERATIONS=many", "MAX_ITERATIONS=", "\x01\x02\xff=\xfe"}) {
        restartWith(settings);
        EXPECT_EQ(decrypt("p", sealed(seedProtection, "p")), 0) << settings;
    }
}
