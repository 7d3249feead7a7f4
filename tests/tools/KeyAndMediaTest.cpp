// Keys, key files and media trees of samplepki.

#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Command.h"
#include "TestHome.h"
#include "samplepki/Media.h"
#include "toolkit/core/PrivateKey.h"

namespace fs = std::filesystem;
using namespace samplepki;
using testing::EndsWith;
using testing::HasSubstr;

namespace {

constexpr const char* password = "Passw0rd!test";

/** The public key out of a key file that the openssl program opened. */
CommandResult openssl(const fs::path& file, const std::string& pass)
{
    return runCommand({"openssl", "pkey", "-inform", "der", "-in", file.string(), "-passin", "pass:" + pass,
                       "-provider", "legacy", "-provider", "default", "-pubout", "-outform", "der"});
}

TEST(KeyPairs, ThePrivateKeyInfoCarriesTheRandomValueToItsLastBit)
{
    const Bytes random = fromHex("0102030405060708090a0b0c0d0e0f1011120000");
    EXPECT_THAT(KeyPool::key().withRandom(random).privateKeyInfo(),
                EndsWith(fromHex("a0273025060a2a831a8c9a440a0101033117031500") + random));
}

TEST(KeyPairs, AKeyWithoutARandomValueHasNoAttributes)
{
    const Bytes with = KeyPool::key().privateKeyInfo();
    const Bytes without = KeyPool::key().withRandom({}).privateKeyInfo();
    EXPECT_EQ(with.size(), without.size() + 41);
}

TEST(KeyPairs, ThePoolGivesTheSameKeyAgain)
{
    EXPECT_EQ(KeyPool::key().get(), KeyPool::key().get());
    EXPECT_NE(KeyPool::key().get(), KeyPool::key(KeyKind::Rsa2048, 1).get());
}

TEST(KeyFiles, OpensslOpensEveryPbes2Form)
{
    const KeyPair& key = KeyPool::key();
    for (const auto cipher : {KeyCipher::Seed, KeyCipher::Aria128, KeyCipher::Aria192, KeyCipher::Aria256,
                              KeyCipher::Aes128, KeyCipher::Aes192, KeyCipher::Aes256, KeyCipher::TripleDes})
        for (const char* hash : {"SHA1", "SHA256"}) {
            const fs::path file = TestHome::scratch("keys") / "a.key";
            writeFile(file, encryptKeyFile(key.privateKeyInfo(), password, {cipher, hash, 2048}));
            EXPECT_EQ(toHex(openssl(file, password).output), toHex(key.publicKeyInfo()));
            EXPECT_NE(openssl(file, "wrong").status, 0);
        }
}

TEST(KeyFiles, TheOldestFormsHaveOneAlgorithmAndNoOther)
{
    const Bytes plain = KeyPool::key().privateKeyInfo();
    for (const auto& [cipher, oid] : {std::pair(KeyCipher::SeedPbkdf1, "1.2.410.200004.1.15"),
                                      std::pair(KeyCipher::SeedFixedVector, "1.2.410.200004.1.4")}) {
        const Bytes file = encryptKeyFile(plain, password, {.cipher = cipher});
        EXPECT_THAT(toHex(file.substr(0, 24)), HasSubstr(toHex(der::oid(oid))));
        const qgtk::SecretBytes opened = qgtk::decryptKey(qgtk::Crypto(), qgtk::bytesOf(file), password);
        EXPECT_EQ(toHex(qgtk::textOf(opened)), toHex(plain));
    }
}

Holder holder(bool withKm)
{
    const FilePair pair{"certificate", "key"};
    return {pair, withKm ? std::optional(pair) : std::nullopt};
}

std::set<std::string> filesBelow(const fs::path& directory)
{
    std::set<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(directory))
        if (entry.is_regular_file())
            names.insert(fs::relative(entry.path(), directory).string());
    return names;
}

using Files = std::set<std::string>;

TEST(Media, AnNpkiHolderHasADirectoryOfItsOwn)
{
    const fs::path root = TestHome::scratch("media");
    EXPECT_EQ(writeNpkiHolder(root, "yessign", "cn=a", holder(false)), root / "NPKI/yessign/USER/cn=a");
    EXPECT_EQ(filesBelow(root),
              (Files{"NPKI/yessign/USER/cn=a/signCert.der", "NPKI/yessign/USER/cn=a/signPri.key"}));
}

TEST(Media, KeyManagementFilesStandBesideTheSigningFiles)
{
    const fs::path root = TestHome::scratch("media");
    writeNpkiHolder(root, "KICA", "cn=a", holder(true), Spelling::Lower);
    EXPECT_EQ(filesBelow(root),
              (Files{"npki/KICA/user/cn=a/kmcert.der", "npki/KICA/user/cn=a/kmpri.key",
                     "npki/KICA/user/cn=a/signcert.der", "npki/KICA/user/cn=a/signpri.key"}));
}

TEST(Media, GpkiPairsLieFlat)
{
    const fs::path root = TestHome::scratch("media");
    writeGpkiPairs(root, "class2", "850홍길동001", holder(true), Spelling::Upper);
    const std::string stem = "GPKI/CERTIFICATE/class2/850홍길동001";
    EXPECT_EQ(filesBelow(root),
              (Files{stem + "_sig.cer", stem + "_sig.key", stem + "_env.cer", stem + "_env.key"}));
}

TEST(Media, MpkiHasBothForms)
{
    const fs::path root = TestHome::scratch("media");
    writeMpkiPairs(root, "a", holder(false));
    writeMpkiHolder(root, "b", holder(false), Spelling::Upper);
    EXPECT_EQ(filesBelow(root), (Files{"MPKI/User/a_sig.cer", "MPKI/User/a_sig.key",
                                       "MPKI/USER/b/SIGNCERT.DER", "MPKI/USER/b/SIGNPRI.KEY"}));
}

TEST(Media, NobodyElseReadsTheFiles)
{
    const fs::path directory = writeMpkiPairs(TestHome::scratch("media"), "a", holder(false));
    EXPECT_EQ(fs::status(directory).permissions(), fs::perms(0700));
    EXPECT_EQ(fs::status(directory / "a_sig.key").permissions(), fs::perms(0600));
}

TEST(Media, AFileThatCantBeWrittenIsReported)
{
    const fs::path root = TestHome::scratch("media");
    writeFile(root / "NPKI", "a file where a directory belongs");
    EXPECT_THROW(writeNpkiHolder(root, "yessign", "cn=a", holder(false)), fs::filesystem_error);
}

TEST(Media, ManyHoldersHaveNamesAndSerialNumbersOfTheirOwn)
{
    const fs::path root = TestHome::scratch("media");
    writeManyHolders(root, "yessign", 200, true);
    std::set<std::string> certificates;
    for (const auto& entry : fs::directory_iterator(root / "NPKI/yessign/USER"))
        certificates.insert(readFile(entry.path() / "signCert.der"));
    EXPECT_EQ(certificates.size(), 200U);
    EXPECT_EQ(filesBelow(root).size(), 800U);
}

} // namespace
