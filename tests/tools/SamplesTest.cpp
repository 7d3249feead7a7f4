// What quillgate-samples writes, read back with openssl, certtool and the toolkit's core.

#include <algorithm>
#include <memory>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <openssl/x509.h>

#include "SampleRun.h"
#include "TestHome.h"
#include "samplepki/Extensions.h"
#include "toolkit/core/KeyRandom.h"

namespace fs = std::filesystem;
using samplepki::Bytes;
using testing::AnyOf;
using testing::HasSubstr;

namespace {

using Certificate = std::unique_ptr<X509, decltype(&X509_free)>;
using Key = std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)>;

Certificate parse(const fs::path& file)
{
    const std::string bytes = readFile(file);
    const auto* position = reinterpret_cast<const unsigned char*>(bytes.data());
    return {d2i_X509(nullptr, &position, static_cast<long>(bytes.size())), &X509_free};
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
        auto plain = openKey(keyOf(file), defaultPassword);
        if (plain.empty())
            plain = openKey(keyOf(file), std::string(defaultPassword) + "-km");
        ASSERT_FALSE(plain.empty()) << file;
        const Bytes key = publicKey(plain);
        EXPECT_THAT(readFile(file), HasSubstr(key)) << file;
    }
}

TEST_F(Samples, OneHolderHasTwoPasswords)
{
    const auto files = homeFiles({"kmpri.key"});
    EXPECT_EQ(std::count_if(files.begin(), files.end(),
                            [](const auto& file) { return openKey(file, defaultPassword).empty(); }),
              1);
    EXPECT_THAT(result.output, HasSubstr("quillgate1!, key management quillgate1!-km"));
}

TEST_F(Samples, OneHolderHasNoKeyRandom)
{
    std::size_t without = 0;
    for (const auto& file : signingCertificates())
        try {
            qgtk::keyRandom(openKey(keyOf(file), defaultPassword));
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
        const auto random = qgtk::keyRandom(openKey(keyOf(file), defaultPassword));
        const Bytes value = samplepki::identityValue(row.identity, Bytes(qgtk::textOf(random)));
        EXPECT_THAT(readFile(file), HasSubstr(value)) << row.name;
    }
}

} // namespace
