// Other programs read our files and we read theirs: openssl, GnuTLS' certtool, NSS' pk12util.

#include <cstdio>

#include "MemoryGrowth.h"
#include "PfxSamples.h"
#include "Programs.h"
#include "TestHome.h"
#include "toolkit/core/KeyPair.h"
#include "toolkit/core/KeyRandom.h"

namespace {

const std::string ascii = "pass-Word1";
const std::string korean = "비밀번호-가1";
const std::string name = "홍길동()0010";

const qgtk::Crypto& crypto()
{
    static const qgtk::Crypto context;
    return context;
}

/** A directory with the sample holder's files. */
const std::string& directory()
{
    static const std::string path = [] {
        const std::filesystem::path made = TestHome::scratch("exchange");
        const SampleHolder& holder = sampleHolder();
        writeFile(made / "cert.pem", pemOf(holder.signing.certificate, "CERTIFICATE"));
        writeFile(made / "key.pem", pemOf(holder.signing.key, "PRIVATE KEY"));
        writeFile(made / "chain.pem",
                  pemOf(holder.issuer, "CERTIFICATE") + pemOf(holder.root, "CERTIFICATE"));
        return made.string();
    }();
    return path;
}

bool fits(const std::string& certificate, const std::string& key)
{
    try {
        qgtk::checkKeyPair(crypto(), qgtk::Certificate(qgtk::bytesOf(certificate)), qgtk::bytesOf(key));
        return true;
    } catch (const qgtk::Failure&) {
        return false;
    }
}

const char* randomIn(const std::string& key)
{
    try {
        qgtk::keyRandom(qgtk::bytesOf(key));
        return "kept";
    } catch (const qgtk::Failure&) {
        return "lost";
    }
}

} // namespace

class Exchange : public PfxTest
{
protected:
    static void SetUpTestSuite()
    {
        std::printf("%-10s %-18s %-44s %-8s %s\n", "program", "direction", "form", "password",
                    "random value");
    }

    static void print(const char* program, const char* direction, const std::string& form,
                      const std::string& password, const char* random)
    {
        const char* kind = password.empty() ? "empty" : password == ascii ? "ASCII" : "Korean";
        std::printf("%-10s %-18s %-44s %-8s %s\n", program, direction, form.c_str(), kind, random);
    }

    static std::string quoted(const std::string& word) { return "'" + word + "'"; }

    static void run(const std::string& command)
    {
        const Outcome outcome = runIn(directory(), command);
        ASSERT_EQ(outcome.status, 0) << command << "\n" << outcome.output;
    }

    /** A file of both pairs, with the chain in the strong profile. */
    std::string ours(const std::string& password, int option)
    {
        if (option != 0)
            return exportPairs(password, {holder.signing, holder.management}, option);
        BinString certificates(library, listOf({holder.signing.certificate, holder.management.certificate}));
        BinString keys(library, listOf({holder.signing.key, holder.management.key}));
        BinString authorities(library, listOf({holder.issuer, holder.root}));
        BinString pfx(library);
        EXPECT_EQ(call("PFX_ExportMultiPair", text(password), &certificates, &keys, &authorities, &pfx), 0);
        return pfx.bytes();
    }

    /** Holds what another program read out of ours(). */
    void expectOurs(const std::vector<std::string>& certificates, const std::vector<std::string>& keys,
                    int option) const
    {
        using testing::Contains;
        EXPECT_THAT(certificates, Contains(holder.signing.certificate));
        EXPECT_THAT(certificates, Contains(holder.management.certificate));
        if (option == 0) {
            EXPECT_THAT(certificates, Contains(holder.issuer));
            EXPECT_THAT(certificates, Contains(holder.root));
        }
        ASSERT_EQ(keys.size(), 2U);
        EXPECT_TRUE(fits(holder.signing.certificate, keys[0]) || fits(holder.signing.certificate, keys[1]));
        EXPECT_TRUE(fits(holder.management.certificate, keys[0]) ||
                    fits(holder.management.certificate, keys[1]));
    }

    /** Reads a file that another program made of the holder's signing pair, in UTF-8 and in EUC-KR. */
    void expectTheirs(const char* program, const std::string& form, const std::string& password,
                      std::size_t authorities, int mode = 0)
    {
        const std::string pfx = readFile(std::filesystem::path(directory()) / "their.p12");
        const char* random = "";
        // The others' files cost a second each time.
        std::vector<std::string> typings = {eucKr(password)};
        if (std::string(program) == "openssl")
            typings.push_back(password);
        for (const std::string& typed : typings) {
            const Contents contents = import(pfx, typed, mode);
            ASSERT_EQ(contents.code, 0) << program << " " << form << " " << password;
            ASSERT_EQ(contents.keys.size(), 1U);
            EXPECT_THAT(contents.certificates, testing::ElementsAre(holder.signing.certificate));
            EXPECT_TRUE(fits(holder.signing.certificate, contents.keys[0]));
            EXPECT_EQ(contents.authorities.size(), authorities);
            random = randomIn(contents.keys[0]);
        }
        print(program, "to Quillgate", form, password, random);
        if (mode == 0 && std::string(program) == "openssl") {
            EXPECT_EQ(import(pfx, password + "x").code, 4505) << form;
        }
    }

    /** The forms that are tried: with a sanitizer's allocator the other programs' hundred thousands of
     * iterations take so long that a third must do there. The same code of ours reads all. */
    static std::vector<std::string> tried(const std::vector<std::string>& forms)
    {
        constexpr std::size_t step = memory_growth::sanitized ? 3 : 1;
        std::vector<std::string> chosen;
        for (std::size_t i = 0; i < forms.size(); i += step)
            chosen.push_back(forms[i]);
        return chosen;
    }

    /** A fresh database of NSS. */
    static void makeDatabase() { run("rm -rf db && mkdir db && certutil -N -d sql:db --empty-password"); }

    const SampleHolder& holder = sampleHolder();
};
INSTANTIATE_ZR_SIDE(Exchange);

TEST_P(Exchange, OpensslReadsOurs)
{
    for (const int option : {0, 1}) {
        for (const std::string& password : {ascii, korean, std::string()}) {
            writeFile(std::filesystem::path(directory()) / "our.p12", ours(password, option));
            const Outcome read =
                runIn(directory(), "openssl pkcs12 -in our.p12 -nodes -passin pass:" + quoted(password));
            ASSERT_EQ(read.status, 0) << read.output;
            const std::vector<std::string> keys = pemBlocks(read.output, "PRIVATE KEY");
            expectOurs(pemBlocks(read.output, "CERTIFICATE"), keys, option);
            EXPECT_THAT(read.output, testing::HasSubstr("friendlyName: M8\xd9()0010"))
                << "openssl prints the second byte of each character";
            EXPECT_THAT(read.output, testing::HasSubstr("localKeyID: "));
            print("openssl", "from Quillgate", option == 0 ? "strong" : "compatible", password,
                  randomIn(keys[0]));
        }
    }
}

TEST_P(Exchange, CerttoolReadsOurs)
{
    for (const int option : {0, 1}) {
        for (const std::string& password : {ascii, korean, std::string()}) {
            writeFile(std::filesystem::path(directory()) / "our.p12", ours(password, option));
            const std::string word = password.empty() ? "--empty-password" : "--password " + quoted(password);
            const Outcome read = runIn(directory(), "certtool --p12-info --inder --infile our.p12 " + word);
            ASSERT_EQ(read.status, 0) << read.output;
            std::vector<std::string> keys;
            for (const std::string& sealed : pemBlocks(read.output, "ENCRYPTED PRIVATE KEY")) {
                writeFile(std::filesystem::path(directory()) / "sealed.pem",
                          pemOf(sealed, "ENCRYPTED PRIVATE KEY"));
                const Outcome opened =
                    runIn(directory(), "certtool --key-info --infile sealed.pem " + word +
                                           " | openssl pkcs8 -topk8 -nocrypt -in /dev/stdin");
                for (const std::string& plain : pemBlocks(opened.output, "PRIVATE KEY"))
                    keys.push_back(plain);
            }
            expectOurs(pemBlocks(read.output, "CERTIFICATE"), keys, option);
            EXPECT_THAT(read.output, testing::HasSubstr("Friendly name: " + name));
            print("certtool", "from Quillgate", option == 0 ? "strong" : "compatible", password, "");
        }
    }
}

TEST_P(Exchange, Pk12utilReadsOursAndGivesItBack)
{
    for (const int option : {0, 1}) {
        for (const std::string& password : {ascii, korean}) {
            writeFile(std::filesystem::path(directory()) / "our.p12",
                      exportOne(password, holder.signing, option));
            makeDatabase();
            run("pk12util -i our.p12 -d sql:db -W " + quoted(password));
            const Outcome listed = runIn(directory(), "certutil -L -d sql:db");
            EXPECT_THAT(listed.output, testing::HasSubstr(name)) << "the name";
            print("pk12util", "from Quillgate", option == 0 ? "strong" : "compatible", password, "");
        }
    }
    run("rm -f their.p12; pk12util -o their.p12 -d sql:db -n " + quoted(name) + " -W " + quoted(korean));
    expectTheirs("pk12util", "given back", korean, 0);
    writeFile(std::filesystem::path(directory()) / "our.p12", ours(ascii, 0));
    makeDatabase();
    run("pk12util -i our.p12 -d sql:db -W " + ascii);
    EXPECT_THAT(runIn(directory(), "certutil -L -d sql:db").output, testing::HasSubstr("yessignCA"))
        << "the chain";
    const std::string keys = runIn(directory(), "certutil -K -d sql:db").output;
    EXPECT_THAT(keys, testing::AllOf(testing::HasSubstr("< 0> rsa"), testing::HasSubstr("< 1> rsa")))
        << "both pairs";
}

TEST_P(Exchange, WeReadWhatOpensslWrites)
{
    const std::string make =
        "openssl pkcs12 -export -in cert.pem -inkey key.pem -certfile chain.pem -name holder "
        "-provider default -provider legacy -out their.p12 ";
    std::vector<std::string> forms = {
        "", "-descert", "-legacy", "-noiter -nomaciter", "-keypbe NONE -certpbe NONE", "-certpbe NONE"};
    for (const char* pbe :
         {"PBE-SHA1-3DES",    "PBE-SHA1-2DES", "PBE-SHA1-RC2-128", "PBE-SHA1-RC2-40",  "PBE-SHA1-RC4-128",
          "PBE-SHA1-RC4-40",  "PBE-MD5-DES",   "PBE-SHA1-DES",     "PBE-MD5-RC2-64",   "PBE-SHA1-RC2-64",
          "aes-128-cbc",      "aes-192-cbc",   "aes-256-cbc",      "camellia-128-cbc", "camellia-192-cbc",
          "camellia-256-cbc", "aria-128-cbc",  "aria-192-cbc",     "aria-256-cbc",     "seed-cbc",
          "des-cbc",          "des-ede3-cbc",  "rc2-cbc",          "rc2-64-cbc",       "rc2-40-cbc",
          "bf-cbc",           "cast5-cbc",     "idea-cbc",         "aes-256-cfb",      "aes-256-ofb"})
        forms.push_back(std::string("-keypbe ") + pbe + " -certpbe " + pbe);
    for (const char* digest :
         {"md5", "sha1", "sha224", "sha384", "sha512", "sha3-256", "ripemd160", "sm3", "whirlpool"})
        forms.push_back(std::string("-macalg ") + digest);
    for (const std::string& form : forms) {
        for (const std::string& password : {ascii, korean}) {
            const Outcome made =
                runIn(directory(), "rm -f their.p12; " + make + form + " -passout pass:" + quoted(password));
            if (made.status != 0) {
                print("openssl", "writes it not", form, password, "");
                continue;
            }
            expectTheirs("openssl", form, password, 2);
        }
    }
}

TEST_P(Exchange, WeReadFilesThatOpensslWroteInEucKr)
{
    for (const char* form : {"", "-keypbe PBE-SHA1-3DES -certpbe PBE-SHA1-3DES -macalg sha1"}) {
        run("rm -f their.p12; openssl pkcs12 -export -in cert.pem -inkey key.pem -out their.p12 -passout "
            "pass:" +
            quoted(eucKr(korean)) + " " + form);
        expectTheirs("openssl", std::string("in EUC-KR ") + form, korean, 0);
    }
}

TEST_P(Exchange, WeReadFilesOfOpensslWithoutPasswordOrCheck)
{
    for (const char* form :
         {"", "-keypbe NONE -certpbe NONE", "-keypbe PBE-SHA1-3DES -certpbe PBE-SHA1-3DES"}) {
        run("rm -f their.p12; openssl pkcs12 -export -in cert.pem -inkey key.pem -out their.p12 -passout "
            "pass: " +
            std::string(form));
        expectTheirs("openssl", form, "", 0);
    }
    for (const std::string& password : {ascii, korean}) {
        run("rm -f their.p12; openssl pkcs12 -export -in cert.pem -inkey key.pem -out their.p12 -nomac "
            "-passout pass:" +
            quoted(password));
        const std::string pfx = readFile(std::filesystem::path(directory()) / "their.p12");
        EXPECT_EQ(import(pfx, password).code, number(qgtk::Code::PfxNoMac));
        EXPECT_EQ(import(pfx, "wrong", 16).code, 4505);
        expectTheirs("openssl", "-nomac, mode 16", password, 0, 16);
    }
}

TEST_P(Exchange, WeReadWhatCerttoolWrites)
{
    const std::string make =
        "rm -f their.p12; certtool --to-p12 --load-certificate cert.pem --load-privkey key.pem "
        "--load-ca-certificate chain.pem --p12-name holder --outder --outfile their.p12 ";
    std::vector<std::string> forms = {"--hash sha1", "--hash sha384", "--hash sha512"};
    for (const char* cipher : {"aes-128", "aes-192", "aes-256", "3des", "3des-pkcs12", "arcfour", "rc2-40"})
        forms.push_back(std::string("--pkcs-cipher ") + cipher);
    for (const std::string& form : tried(forms)) {
        run(make + form + " --password " + quoted(korean));
        expectTheirs("certtool", form, korean, 1);
    }
    run(make + "--password " + ascii);
    expectTheirs("certtool", "", ascii, 1);
    for (const char* empty : {"--empty-password", "--null-password"}) {
        run(make + empty);
        expectTheirs("certtool", empty, "", 1);
    }
}

TEST_P(Exchange, WeReadWhatPk12utilWrites)
{
    makeDatabase();
    run("openssl pkcs12 -export -in cert.pem -inkey key.pem -name holder -passout pass:a -out first.p12 && "
        "pk12util -i first.p12 -d sql:db -W a");
    const std::string make = "rm -f their.p12; pk12util -o their.p12 -d sql:db -n holder ";
    std::vector<std::string> forms = {"-M SHA-1", "-M SHA-384", "-M SHA-512", "-C none"};
    for (const char* cipher :
         {"PKCS #12 V2 PBE With SHA-1 And 3KEY Triple DES-CBC", "PKCS #12 V2 PBE With SHA-1 And 128 Bit RC4",
          "PKCS #12 V2 PBE With SHA-1 And 40 Bit RC4", "PKCS #12 V2 PBE With SHA-1 And 128 Bit RC2 CBC",
          "PKCS #12 V2 PBE With SHA-1 And 40 Bit RC2 CBC",
          "PKCS #5 Password Based Encryption with MD5 and DES-CBC", "AES-128-CBC", "AES-192-CBC",
          "AES-256-CBC", "CAMELLIA-128-CBC", "CAMELLIA-192-CBC", "CAMELLIA-256-CBC", "SEED-CBC"})
        forms.push_back("-c " + quoted(cipher) + " -C " + quoted(cipher));
    for (const std::string& form : tried(forms)) {
        run(make + form + " -W " + quoted(korean));
        expectTheirs("pk12util", form, korean, 0);
    }
    run(make + " -W " + ascii);
    expectTheirs("pk12util", "", ascii, 0);
    // Six hundred thousand rounds of MD2 take seconds: one password is enough.
    for (const char* digest : {"SHA-1", "MD2"}) {
        const std::string cipher =
            quoted(std::string("PKCS #5 Password Based Encryption with ") + digest + " and DES-CBC");
        run(make + "-c " + cipher + " -C " + cipher + " -W " + quoted(korean));
        expectTheirs("pk12util", cipher, korean, 0);
    }
}
