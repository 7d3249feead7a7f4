// quillgate-samples as a user runs it: what it writes is read back with openssl, certtool and the toolkit's
// core.

#include <algorithm>
#include <memory>
#include <set>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <openssl/pkcs12.h>
#include <openssl/x509.h>

#include "Command.h"
#include "TestHome.h"
#include "samplepki/Extensions.h"
#include "toolkit/core/KeyRandom.h"

namespace fs = std::filesystem;
using samplepki::Bytes;
using testing::AnyOf;
using testing::HasSubstr;

namespace {

constexpr const char* defaultPassword = "quillgate1!";
using Certificate = std::unique_ptr<X509, decltype(&X509_free)>;
using Key = std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)>;

CommandResult samples(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), QUILLGATE_SAMPLES);
    return runCommand(arguments);
}

/** The names below a directory, relative, sorted. */
std::set<std::string> namesBelow(const fs::path& directory)
{
    std::set<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(directory))
        names.insert(fs::relative(entry.path(), directory).string());
    return names;
}

std::string lower(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return tolower(c); });
    return text;
}

bool endsWith(const fs::path& file, std::initializer_list<const char*> endings)
{
    return std::any_of(endings.begin(), endings.end(),
                       [&](const char* ending) { return lower(file.string()).ends_with(ending); });
}

Certificate parse(const fs::path& file)
{
    const std::string bytes = readFile(file);
    const auto* position = reinterpret_cast<const unsigned char*>(bytes.data());
    return {d2i_X509(nullptr, &position, static_cast<long>(bytes.size())), &X509_free};
}

/** The key file that belongs to a certificate file, in the same spelling. */
fs::path keyOf(const fs::path& certificate)
{
    static const std::pair<const char*, const char*> pairs[] = {
        {"signCert.der", "signPri.key"}, {"kmCert.der", "kmPri.key"},     {"_sig.cer", "_sig.key"},
        {"_env.cer", "_env.key"},        {"signcert.der", "signpri.key"}, {"SIGNCERT.DER", "SIGNPRI.KEY"}};
    for (const auto& [from, to] : pairs)
        if (certificate.string().ends_with(from))
            return certificate.string().substr(0, certificate.string().size() - std::string(from).size()) +
                   to;
    return {};
}

/** The plain key of a key file; empty when the password is wrong. */
qgtk::SecretBytes open(const fs::path& keyFile, const std::string& password)
try {
    return qgtk::decryptKey(qgtk::Crypto(), qgtk::bytesOf(readFile(keyFile)), password);
} catch (const qgtk::Failure&) {
    return {};
}

Bytes publicKey(const qgtk::SecretBytes& plain)
{
    const Key key(EVP_PKCS82PKEY(qgtk::decodePlainKey(plain).get()), &EVP_PKEY_free);
    unsigned char* der = nullptr;
    const int length = i2d_PUBKEY(key.get(), &der);
    const Bytes bytes(reinterpret_cast<char*>(der), static_cast<std::size_t>(length));
    OPENSSL_free(der);
    return bytes;
}

/** The texts of a line that two blanks or more stand between. */
std::vector<std::string> split(const std::string& line)
{
    std::vector<std::string> texts;
    for (std::size_t start = 0; start < line.size();) {
        const auto end = std::min(line.find("  ", start), line.size());
        texts.push_back(line.substr(start, end - start));
        start = std::min(line.find_first_not_of(' ', end), line.size());
    }
    return texts;
}

/** A line of the printed table. */
struct Row
{
    std::string name, state, password, key, form, identity, place;
};

/** One run of the program for all tests that only look at its results. */
class Samples : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        directory = TestHome::scratch("samples") / "new";
        result = samples({directory.string()});
    }

    void SetUp() override { ASSERT_EQ(result.status, 0) << result.output; }

    static std::vector<fs::path> homeFiles(std::initializer_list<const char*> endings)
    {
        std::vector<fs::path> files;
        for (const auto& entry : fs::recursive_directory_iterator(directory / "home"))
            if (entry.is_regular_file() && endsWith(entry.path(), endings))
                files.push_back(entry.path());
        return files;
    }

    static std::vector<fs::path> certificates() { return homeFiles({".der", ".cer"}); }
    static std::vector<fs::path> signingCertificates() { return homeFiles({"signcert.der", "_sig.cer"}); }

    /** The printed table: lines of seven columns, two blanks or more between them. */
    static std::vector<Row> rows()
    {
        std::vector<Row> list;
        std::istringstream text(result.output);
        for (std::string line; std::getline(text, line);) {
            const auto columns = split(line);
            if (columns.size() == 7 && columns[6].starts_with("home/"))
                list.push_back(
                    {columns[0], columns[1], columns[2], columns[3], columns[4], columns[5], columns[6]});
        }
        return list;
    }

    /** The signing certificate of a printed line. */
    static fs::path signingCertificate(const Row& row)
    {
        const fs::path flat = directory / row.place / (row.name + "_sig.cer");
        for (const auto& file : signingCertificates())
            if (file == flat ||
                (file.parent_path() == directory / row.place && endsWith(file, {"signcert.der"})))
                return file;
        return {};
    }

    static inline fs::path directory;
    static inline CommandResult result;
};

TEST_F(Samples, PrintsALineForEachHolder)
{
    EXPECT_GE(rows().size(), 12U);
    EXPECT_EQ(rows().size(), signingCertificates().size());
    for (const auto& row : rows())
        EXPECT_FALSE(signingCertificate(row).empty()) << row.name;
}

TEST_F(Samples, CoversTheTreesInSeveralSpellings)
{
    for (const char* tree : {"NPKI/yessign/USER", "NPKI/YESSIGN/USER", "NPKI/KICA/USER",
                             "NPKI/SignKorea/USER", "NPKI/signGATE/USER", "npki/kica/user",
                             "GPKI/Certificate/class2", "gpki/certificate/class1", "MPKI/User"})
        EXPECT_TRUE(fs::is_directory(directory / "home" / tree)) << tree;
}

TEST_F(Samples, HasBothFormsOfMpki)
{
    const auto files = homeFiles({"_sig.cer", "signcert.der"});
    const auto below = [&](const fs::path& file) {
        return file.parent_path() == directory / "home/MPKI/User";
    };
    const auto holder = [&](const fs::path& file) {
        return file.parent_path().parent_path() == directory / "home/MPKI/User";
    };
    EXPECT_EQ(std::count_if(files.begin(), files.end(), below), 1);
    EXPECT_EQ(std::count_if(files.begin(), files.end(), holder), 1);
}

TEST_F(Samples, HasKeyManagementPairsForGpki)
{
    EXPECT_EQ(homeFiles({"_env.cer"}).size(), 4U); // three of GPKI, one of MPKI
    EXPECT_EQ(homeFiles({"_env.key"}).size(), 4U);
}

TEST_F(Samples, EveryCertificateVerifiesUpToARoot)
{
    std::string roots;
    std::string issuers;
    for (const auto& entry : fs::directory_iterator(directory / "ca")) {
        const auto pem =
            runCommand({"openssl", "x509", "-inform", "der", "-in", entry.path().string()}).output;
        (entry.path().string().find("Root") != std::string::npos ? roots : issuers) += pem;
    }
    const fs::path scratch = TestHome::scratch("verify");
    writeFile(scratch / "roots.pem", roots);
    writeFile(scratch / "issuers.pem", issuers);
    for (const auto& file : certificates()) {
        writeFile(scratch / "leaf.pem",
                  runCommand({"openssl", "x509", "-inform", "der", "-in", file.string()}).output);
        EXPECT_EQ(runCommand({"openssl", "verify", "-no_check_time", "-CAfile", scratch / "roots.pem",
                              "-untrusted", scratch / "issuers.pem", scratch / "leaf.pem"})
                      .status,
                  0)
            << file;
    }
}

TEST_F(Samples, CerttoolReadsEveryCertificate)
{
    for (const auto& file : certificates())
        EXPECT_EQ(runCommand({"certtool", "--inder", "--infile", file.string(), "-i"}).status, 0) << file;
}

TEST_F(Samples, TheIssuersAreThoseOfTheField)
{
    std::string names;
    for (const auto& entry : fs::directory_iterator(directory / "ca"))
        names += runCommand({"openssl", "x509", "-inform", "der", "-in", entry.path().string(), "-noout",
                             "-subject"})
                     .output;
    EXPECT_EQ(std::distance(fs::directory_iterator(directory / "ca"), {}), 7);
    for (const char* part : {"O = yessign", "O = KICA", "O = Government of Korea"})
        EXPECT_THAT(names, HasSubstr(part));
}

TEST_F(Samples, EveryKeyFileOpensWithAPrintedPasswordAndBelongsToItsCertificate)
{
    for (const auto& file : certificates()) {
        auto plain = open(keyOf(file), defaultPassword);
        if (plain.empty())
            plain = open(keyOf(file), std::string(defaultPassword) + "-km");
        ASSERT_FALSE(plain.empty()) << file;
        const Bytes key = publicKey(plain);
        EXPECT_THAT(readFile(file), HasSubstr(key)) << file;
    }
}

TEST_F(Samples, OneHolderHasTwoPasswords)
{
    const auto files = homeFiles({"kmpri.key"});
    EXPECT_EQ(std::count_if(files.begin(), files.end(),
                            [](const auto& file) { return open(file, defaultPassword).empty(); }),
              1);
    EXPECT_THAT(result.output, HasSubstr("quillgate1!, key management quillgate1!-km"));
}

TEST_F(Samples, OneHolderHasNoKeyRandom)
{
    std::size_t without = 0;
    for (const auto& file : signingCertificates())
        try {
            qgtk::keyRandom(open(keyOf(file), defaultPassword));
        } catch (const qgtk::Failure&) {
            ++without;
        }
    EXPECT_EQ(without, 1U);
}

TEST_F(Samples, SomeHoldersHaveNoKeyManagement)
{
    const auto holders = homeFiles({"signcert.der"});
    EXPECT_GT(std::count_if(holders.begin(), holders.end(),
                            [](const auto& file) { return !fs::exists(file.parent_path() / "kmCert.der"); }),
              0);
}

TEST_F(Samples, TheStatesAreThosePrinted)
{
    std::set<std::string> states;
    for (const auto& row : rows()) {
        const Certificate certificate = parse(signingCertificate(row));
        int days = 0;
        int seconds = 0;
        ASSERT_EQ(ASN1_TIME_diff(&days, &seconds, nullptr, X509_get0_notAfter(certificate.get())), 1);
        const std::string state = days < 0 ? "expired" : days < 30 ? "about to expire" : "valid";
        EXPECT_EQ(row.state, state) << row.name;
        states.insert(state);
    }
    EXPECT_EQ(states.size(), 3U);
}

TEST_F(Samples, TheKeysAreThosePrinted)
{
    std::set<std::string> kinds;
    for (const auto& row : rows()) {
        const Certificate certificate = parse(signingCertificate(row));
        const EVP_PKEY* key = X509_get0_pubkey(certificate.get());
        const std::string kind =
            EVP_PKEY_is_a(key, "EC") ? "EC P-256" : "RSA-" + std::to_string(EVP_PKEY_get_bits(key));
        EXPECT_TRUE(row.key.starts_with(kind)) << row.name;
        kinds.insert(kind);
    }
    EXPECT_EQ(kinds, (std::set<std::string>{"EC P-256", "RSA-2048", "RSA-4096"}));
}

TEST_F(Samples, TheKeyFilesHaveEveryAlgorithmOfTheField)
{
    const auto files = homeFiles({".key"});
    const auto occurs = [&](const Bytes& oid) {
        return std::any_of(files.begin(), files.end(),
                           [&](const auto& file) { return readFile(file).find(oid) != std::string::npos; });
    };
    for (const char* oid :
         {"1.2.410.200004.1.15", "1.2.410.200004.1.4", "1.2.410.200046.1.1.2", "1.2.410.200046.1.1.7",
          "1.2.410.200046.1.1.12", "2.16.840.1.101.3.4.1.2", "2.16.840.1.101.3.4.1.22",
          "2.16.840.1.101.3.4.1.42", "1.2.840.113549.3.7", "1.2.840.113549.1.5.13", "1.2.840.113549.2.9"})
        EXPECT_TRUE(occurs(samplepki::der::oid(oid))) << oid;
}

TEST_F(Samples, TheCertificatesCarryWhatTheFieldHas)
{
    for (const auto& file : signingCertificates()) {
        const auto text =
            runCommand({"openssl", "x509", "-inform", "der", "-in", file.string(), "-noout", "-text"}).output;
        for (const char* part : {"Certificate Policies: critical\n                Policy: 1.2.410.",
                                 "User Notice", "CPS: ", "URI:ldap://", "othername: 1.2.410.200004.10.1.1",
                                 "Subject Key Identifier", "Digital Signature, Non Repudiation"})
            EXPECT_THAT(text, HasSubstr(part)) << file;
        EXPECT_THAT(text, AnyOf(HasSubstr("OCSP - URI:http://"), HasSubstr("MPKI"))) << file;
    }
}

TEST_F(Samples, ThePrintedIdentityNumberBelongsToCertificateAndKey)
{
    for (const auto& row : rows()) {
        if (row.key.find("no random value") != std::string::npos)
            continue;
        const fs::path file = signingCertificate(row);
        const auto random = qgtk::keyRandom(open(keyOf(file), defaultPassword));
        const Bytes value = samplepki::identityValue(row.identity, Bytes(qgtk::textOf(random)));
        EXPECT_THAT(readFile(file), HasSubstr(value)) << row.name;
    }
}

TEST_F(Samples, NobodyElseReadsAnything)
{
    for (const auto& entry : fs::recursive_directory_iterator(directory)) {
        if (entry.is_symlink())
            continue;
        const auto mode = fs::perms(entry.is_directory() ? 0700 : 0600);
        EXPECT_EQ(entry.status().permissions(), mode) << entry.path();
    }
    EXPECT_EQ(fs::status(directory).permissions(), fs::perms(0700));
}

TEST_F(Samples, TheWorkDirectoryIsComplete)
{
    std::set<std::string> expected;
    for (const auto& entry : fs::directory_iterator(QUILLGATE_WORKDIR))
        expected.insert(entry.path().filename().string());
    EXPECT_EQ(namesBelow(directory / "work"), expected);
    for (const char* name :
         {"KOR.ini", "ENG.ini", "IssuerOid.conf", "IssuerOid_Eng.conf", "ZRCToolkitV30.conf", "gpkiapi.conf",
          "zrapilog.ini", "libZRToolkitV30-v3.4.2.20.so", "libgpkiapi_v15.so"})
        EXPECT_TRUE(expected.contains(name)) << name;
    for (const char* name : {"ZRCToolkitV30.conf", "gpkiapi.conf"})
        EXPECT_EQ(readFile(directory.string() + "/work\\" + name), readFile(directory / "work" / name));
}

TEST_F(Samples, ADirectoryThatHoldsCertificatesIsRefused)
{
    const auto before = namesBelow(directory);
    const auto again = samples({directory.string()});
    EXPECT_EQ(again.status, 1);
    EXPECT_THAT(again.output, HasSubstr("there are certificates or keys already"));
    EXPECT_EQ(namesBelow(directory), before);
}

TEST(SamplesProgram, RefusesASingleKeyDeepBelow)
{
    const fs::path directory = TestHome::scratch("taken");
    writeFile(directory / "a/b/SIGNPRI.KEY", "key");
    EXPECT_EQ(samples({directory.string()}).status, 1);
    EXPECT_EQ(namesBelow(directory), (std::set<std::string>{"a", "a/b", "a/b/SIGNPRI.KEY"}));
}

TEST(SamplesProgram, LeavesNothingBehindWhenANameIsTaken)
{
    const fs::path directory = TestHome::scratch("taken");
    writeFile(directory / "work", "mine");
    const auto result = samples({directory.string()});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.output, HasSubstr("the name is taken"));
    EXPECT_EQ(namesBelow(directory), std::set<std::string>{"work"});
    EXPECT_EQ(readFile(directory / "work"), "mine");
}

TEST(SamplesProgram, RemovesTheDirectoryThatItMadeWhenItFails)
{
    const fs::path directory = TestHome::scratch("failing");
    fs::create_directories(directory / "workdir/a directory that is not copied");
    const auto result =
        samples({(directory / "new").string(), "--workdir", (directory / "workdir").string()});
    EXPECT_EQ(result.status, 1) << result.output;
    EXPECT_FALSE(fs::exists(directory / "new"));
}

TEST(SamplesProgram, TakesAPasswordAndANumberOfDays)
{
    const fs::path directory = TestHome::scratch("chosen");
    ASSERT_EQ(samples({directory.string(), "--password", "비밀 번호", "--days", "200"}).status, 0);
    const fs::path file = directory / "home/GPKI/Certificate/class2/850성춘향001_sig.cer";
    EXPECT_FALSE(open(keyOf(file), "비밀 번호").empty());
    const Certificate certificate = parse(file);
    int days = 0;
    int seconds = 0;
    ASN1_TIME_diff(&days, &seconds, X509_get0_notBefore(certificate.get()),
                   X509_get0_notAfter(certificate.get()));
    EXPECT_EQ(days, 30 + 200); // valid since thirty days ago
}

TEST(SamplesProgram, ExplainsItself)
{
    const auto help = samples({"--help"});
    EXPECT_EQ(help.status, 0);
    for (const char* option : {"--password", "--days", "--workdir", "Refuses"})
        EXPECT_THAT(help.output, HasSubstr(option));
}

TEST(SamplesProgram, RefusesOptionsThatMakeNoSense)
{
    const std::string directory = (TestHome::scratch("options") / "new").string();
    EXPECT_NE(samples({}).status, 0);
    EXPECT_NE(samples({directory, "--days", "5"}).status, 0);
    EXPECT_NE(samples({directory, "--password", ""}).status, 0);
    EXPECT_NE(samples({directory, "--workdir", "/nonexistent"}).status, 0);
    EXPECT_FALSE(fs::exists(directory));
}

} // namespace
