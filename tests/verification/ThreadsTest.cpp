/* All families of operations at once: two contexts of each interface, each on a thread of its own. */

#include <barrier>
#include <netdb.h>
#include <thread>

#include "CryptoTest.h"
#include "Servers.h"
#include "StatusAnswer.h"
#include "TestPki.h"
#include "TimeStampServer.h"
#include "quillgate/toolkit_token.h"

using namespace samplepki;
using qgtk::Code;

#ifdef __SANITIZE_THREAD__
/** In place of the C library's, which looks names up on threads that the sanitizer knows nothing of. */
extern "C" __attribute__((visibility("default"))) int getaddrinfo_a(int, gaicb** list, int count, sigevent*)
{
    for (int i = 0; i < count; ++i)
        list[i]->__return =
            getaddrinfo(list[i]->ar_name, list[i]->ar_service, list[i]->ar_request, &list[i]->ar_result);
    return 0;
}
#endif

namespace {

/** Under the sanitizer what a library gives to atexit runs when the process ends, and must be there then. */
void keepLoaded([[maybe_unused]] const Side& side)
{
#ifdef __SANITIZE_THREAD__
    ASSERT_NE(dlopen(side.file, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE), nullptr);
#endif
}

constexpr const char* content = "what is worked on";
constexpr const char* password = "Passw0rd!";
constexpr const char* idNumber = "1234561234567";
constexpr const char* pin = "123456";

/** What all threads read and nobody changes. */
struct Stage
{
    Stage()
    {
        Request wanted = TestPki::leaf();
        wanted.key = KeyPool::key(KeyKind::EcP256).withRandom(random);
        wanted.keyUsage = SigningUse | KeyAgreement;
        wanted.identity = Identity{"홍길동", idNumber};
        key = wanted.key.privateKeyInfo();
        certificate = pki.ca.issue(wanted);
        Request server{.subject = nameFromText("cn=TSA,o=Sample,c=KR"), .key = testKey(3)};
        server.extras = {{"extendedKeyUsage", der::sequence({der::oid("timeStamping")}), true}};
        stampCertificate = pki.ca.issue(server);
        writeFile(served + "/ca", pki.ca.certificate());
        writeFile(served + "/tokens.conf",
                  "directories.tokendir = " + served + "\nobjectstore.backend = file\n");
        setenv("SOFTHSM2_CONF", (served + "/tokens.conf").c_str(), 1);
        const CommandResult made =
            runCommand({"env", "SOFTHSM2_CONF=" + served + "/tokens.conf", "softhsm2-util", "--init-token",
                        "--free", "--label", "T", "--so-pin", "87654321", "--pin", pin});
        EXPECT_EQ(made.status, 0) << made.output;
    }

    const Bytes random = samplepki::fromHex("0102030405060708090a0b0c0d0e0f1011121314");
    TestPki pki;
    Bytes key;
    Bytes certificate;
    Bytes stampCertificate;
    const Bytes caList = pki.ca.revocationList();
    const Bytes rootList = pki.root.revocationList();
    const std::string served = TestHome::scratch("served").string();
    const FileServer files{served};
    const DirectoryServer directory{{{caName, {{"cACertificate;binary", pki.ca.certificate()}}}}};
    const int closedPort = freePort();
    mutable std::barrier<> tokenUsers{2}; /**< both contexts of the main library begin with tokens at once */
};

/** A user of one interface, with a context and files of its own. */
class User
{
public:
    User(const Side& side, const Stage& stage, const std::string& name)
        : m_stage(stage), m_side(side), m_library(side), m_isZrtk(side.prefix == std::string("ZRTK_")),
          m_directory(TestHome::scratch(name).string()),
          m_stamps(m_directory, StampTransport::Http, stage.stampCertificate, testKey(3).privateKeyInfo())
    {
        writeFile(m_directory + "/" + side.configuration,
                  "[OPEN_TOOLKIT]\nKEY_ITERATIONS=10\nCMP_KEY=256\nTOTAL_TIMEOUT=60\n");
    }

    /** Each family some times, in a context that is made and ended for it. */
    void work()
    {
        keepLoaded(m_side);
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(m_library.callBare("API_Init", &m_context, text(m_directory)), 0);
            readCertificate();
            protectKeys();
            computeRaw();
            exchangeMessages();
            exchangePfx();
            keepFiles();
            verifyPath();
            askStatus();
            askServers();
            useTokens();
            failAndTell();
            EXPECT_EQ(call("API_Finish"), 0);
        }
        stamp();
    }

private:
    template <typename... Arguments>
    int call(const std::string& operation, Arguments... arguments)
    {
        return m_library.callBare(operation, m_context, arguments...);
    }

    /** Calls an operation that must succeed. */
    template <typename... Arguments>
    void run(const std::string& operation, const Arguments&... arguments)
    {
        EXPECT_EQ(call(operation, Passed<Arguments>(arguments).get()...), 0) << operation;
    }

    /** The same; its last argument is a byte string, which is given. */
    template <typename... Arguments>
    std::string give(const std::string& operation, const Arguments&... arguments)
    {
        BinString output(m_library);
        EXPECT_EQ(call(operation, Passed<Arguments>(arguments).get()..., &output), 0) << operation;
        return output.bytes();
    }

    std::string sided(const char* zrtk, const char* gpki) const { return m_isZrtk ? zrtk : gpki; }

    void readCertificate()
    {
        run("CERT_Load", m_stage.certificate);
        std::array<char, 2048> field{};
        for (const char* getter : {"CERT_GetSubjectName", "CERT_GetSubjectAltName", "CERT_GetKeyUsage",
                                   "CERT_GetAuthKeyID", "CERT_GetUID"})
            run(getter, static_cast<int>(field.size()), field.data());
        EXPECT_STREQ(field.data(), "Hong");
        run("CERT_Unload");
        const std::string list =
            m_isZrtk ? add("UTIL_AddObject", m_stage.certificate) : add("CERT_AddCert", m_stage.certificate);
        EXPECT_EQ(list, m_stage.certificate);
    }

    std::string add(const std::string& operation, const std::string& object)
    {
        BinString list(m_library);
        Passed<std::string> input(object);
        EXPECT_EQ(call(operation, input.get(), &list), 0);
        return list.bytes();
    }

    void protectKeys()
    {
        for (const int algorithm : {64, 48, 224}) {
            const std::string sealed = give("PRIKEY_Encrypt", algorithm, text(password), m_stage.key);
            EXPECT_EQ(give("PRIKEY_Decrypt", text(password), sealed), m_stage.key);
        }
        run("PRIKEY_CheckKeyPair", m_stage.certificate, m_stage.key);
        EXPECT_EQ(give("VID_GetRandomFromPriKey", m_stage.key), m_stage.random);
        run("VID_Verify", m_stage.certificate, m_stage.random, text(idNumber));
    }

    void computeRaw()
    {
        const std::string data = noise(300000);
        for (const int cipher : {QG_CIPHER_SEED, QG_CIPHER_AES256, QG_CIPHER_ARIA128}) {
            run("CRYPT_GenKeyAndIV", cipher);
            EXPECT_EQ(give("CRYPT_Decrypt", give("CRYPT_Encrypt", data)), data);
        }
        run("CRYPT_ClearKeyAndIV");
        EXPECT_EQ(give("CRYPT_GenRandom", 32).size(), 32U);
        EXPECT_EQ(give("CRYPT_Hash", QG_HASH_SHA256 + 0, data).size(), 32U);
        const std::string mac = give("CRYPT_GenMAC", QG_HASH_SHA512 + 0, text(password), data);
        run("CRYPT_VerifyMAC", QG_HASH_SHA512 + 0, text(password), data, mac);
        const std::string signature =
            give("CRYPT_Sign", m_stage.certificate, m_stage.key, QG_HASH_SHA256 + 0, data);
        run("CRYPT_Verify", m_stage.certificate, QG_HASH_SHA256 + 0, data, signature);
        EXPECT_EQ(give("BASE64_Decode", give("BASE64_Encode", data)), data);
    }

    void exchangeMessages()
    {
        const std::string data = content;
        const std::string message =
            m_isZrtk ? give("CMS_MakeSignedData", 0, m_stage.certificate, m_stage.key, data, text(""))
                     : give("CMS_MakeSignedData", m_stage.certificate, m_stage.key, data, text(""));
        BinString plain(m_library);
        int signers = 0;
        Passed<std::string> input(message);
        EXPECT_EQ(m_isZrtk ? call("CMS_ProcessSignedData", 0, input.get(), &plain, &signers)
                           : call("CMS_ProcessSignedData2", input.get(), &plain, &signers),
                  0);
        EXPECT_EQ(plain.bytes(), content);
        const int cipher = QG_CIPHER_SEED;
        const std::string sealed = m_isZrtk
                                       ? give("CMS_MakeEnvelopedData", 0, m_stage.certificate, data, cipher)
                                       : give("CMS_MakeEnvelopedData", m_stage.certificate, data, cipher);
        EXPECT_EQ(give("CMS_ProcessEnvelopedData", m_stage.certificate, m_stage.key, sealed), content);
    }

    void exchangePfx()
    {
        Passed<std::string> certificate(m_stage.certificate);
        Passed<std::string> key(m_stage.key);
        BINSTR none = {};
        BinString pfx(m_library);
        EXPECT_EQ(m_isZrtk
                      ? call("PFX_Export", 0, text(password), certificate.get(), key.get(), &pfx)
                      : call("PFX_Export", text(password), certificate.get(), key.get(), &none, &none, &pfx),
                  0);
        BinString out[4] = {BinString(m_library), BinString(m_library), BinString(m_library),
                            BinString(m_library)};
        EXPECT_EQ(m_isZrtk ? call("PFX_Import", text(password), &pfx, &out[0], &out[1], &out[2])
                           : call("PFX_Import", text(password), &pfx, &out[0], &out[1], &out[2], &out[3]),
                  0);
        EXPECT_EQ(out[1].bytes(), m_stage.key);
    }

    /** Both write the same file, and their own. */
    void keepFiles()
    {
        for (const std::string& path : {m_directory + "/kept", m_stage.served + "/kept"}) {
            if (m_isZrtk) {
                run("MEDIA_DISK_WriteFile", text(path), std::string(content));
                EXPECT_EQ(give("MEDIA_DISK_ReadFile", text(path)), content);
            } else {
                run("STORAGE_WriteFile", text(path), std::string(content));
                EXPECT_EQ(give("STORAGE_ReadFile", text(path)), content);
            }
        }
    }

    void verifyPath()
    {
        BINSTR* none = nullptr;
        char* nothing = nullptr;
        run("CERT_AddTrustedCert", m_stage.pki.root.certificate());
        run(sided("CERT_SetCaPubs", "API_SetCaPubs"), m_stage.pki.ca.certificate());
        Passed<std::string> certificate(m_stage.certificate);
        if (m_isZrtk) {
            run("CERT_SetVerifyEnv2", text(""), m_stage.rootList, m_stage.caList);
            EXPECT_EQ(call("CERT_Verify", certificate.get(), 2, nothing, false, none, none), 0);
        } else {
            EXPECT_EQ(call("CERT_SetVerifyEnv", 0, 0, false, nothing, nothing), 0);
            EXPECT_EQ(call("CERT_Verify", certificate.get(), 2, nothing, nothing, false, none, none), 0);
        }
    }

    void askStatus()
    {
        BINSTR* none = nullptr;
        const std::string request =
            give("OCSP_MakeOCSPReq", m_stage.certificate, true, m_stage.certificate, m_stage.key);
        const std::string answer = answerGood(request, {m_stage.pki.ca.certificate(), testKey(1)});
        Passed<std::string> asked(request);
        Passed<std::string> answered(answer);
        int count = 0;
        EXPECT_EQ(m_isZrtk ? call("OCSP_VerifyResMsg", asked.get(), answered.get(), none)
                           : call("OCSP_VerifyResMsg", asked.get(), answered.get(), &count, none),
                  0);
    }

    void askServers()
    {
        const std::string operation = sided("ZRAP_GetDataByURL", "LDAP_GetDataByURL");
        const std::string byHttp = m_stage.files.url("ca");
        const std::string byLdap = m_stage.directory.url() + "/" + caName;
        for (const std::string& url : {byHttp, byLdap})
            EXPECT_EQ(give(operation, 1, text(url)), m_stage.pki.ca.certificate());
        if (m_isZrtk)
            askAuthority();
    }

    /** Keys are made for a request that nobody takes. */
    void askAuthority()
    {
        BinString out[5] = {BinString(m_library), BinString(m_library), BinString(m_library),
                            BinString(m_library), BinString(m_library)};
        const std::string authority = m_stage.served + "/ca";
        EXPECT_EQ(call("CMP_CertRequest", text("127.0.0.1"), m_stage.closedPort, text("1"), text("code"),
                       text(""), text(authority), &out[0], &out[1], &out[2], &out[3], &out[4]),
                  number(Code::ServerUnreachable));
    }

    /** All on one token, each with a session, a login and a pair of its own. */
    void useTokens()
    {
        // A module is made ready and ended once for the whole process: only contexts of one interface can
        // agree.
        if (!m_isZrtk)
            return;
        m_stage.tokenUsers.arrive_and_wait();
        for (int i = 0; i < 10; ++i) {
            run("MEDIA_Load", text(QGTK_SOFTHSM_FILE));
            std::array<unsigned long, 64> slots{};
            unsigned long count = 0;
            run("PKCS11_GetSlotList", slots.data(), &count);
            run("PKCS11_OpenSessionWithTokenName", text(pin), 0);
            run("PKCS11_CloseSession");
            run("MEDIA_Unload");
        }
        run("MEDIA_Load", text(QGTK_SOFTHSM_FILE));
        run("PKCS11_OpenSessionWithTokenName", text(pin), 0);
        const std::string id = m_directory;
        const std::string data = content;
        run("PKCS11_GenKeyPair", QG_KEYPAIR_P256 + 0, QG_TOKEN_SIGNING + 0, id);
        run("PKCS11_Verify", id, data, give("PKCS11_Sign", id, data));
        run("PKCS11_DeleteCertAndPriKey", id);
        run("PKCS11_Logout");
        run("PKCS11_CloseSession");
        run("MEDIA_Unload");
    }

    void failAndTell()
    {
        Passed<std::string> noCertificate("none");
        EXPECT_EQ(call("CERT_Load", noCertificate.get()), number(Code::CertDamaged));
        std::array<char, 256> told{};
        run("API_GetErrInfo", static_cast<int>(told.size()), told.data());
        EXPECT_THAT(told.data(), testing::HasSubstr("(1200)"));
    }

    /** Once: another program makes the stamp. */
    void stamp()
    {
        EXPECT_EQ(m_library.callBare("API_Init", &m_context, text(m_directory)), 0);
        run("CERT_AddTrustedCert", m_stage.pki.root.certificate());
        run(sided("CERT_SetCaPubs", "API_SetCaPubs"), m_stage.pki.ca.certificate());
        BINSTR* none = nullptr;
        const std::string response = m_stamps.responseTo(
            give("TSP_MakeReqMsg", std::string(content), QG_HASH_SHA256 + 0, text(""), false, none, none));
        Passed<std::string> input(response);
        BinString signer(m_library);
        BinString token(m_library);
        for (int i = 0; i < 5; ++i) {
            EXPECT_EQ(call("TSP_VerifyResMsg", input.get(), &signer, &token), 0);
            run("TSP_VerifyToken", std::string(content), token.bytes());
        }
        EXPECT_EQ(call("API_Finish"), 0);
    }

    const Stage& m_stage;
    const Side& m_side;
    const ToolkitLibrary m_library;
    const bool m_isZrtk;
    const std::string m_directory;
    const TimeStampServer m_stamps;
    void* m_context = nullptr;
};

} // namespace

TEST(Threads, ContextsOfBothInterfacesDoNotMeet)
{
    const Stage stage;
    User users[] = {{zrtkSide, stage, "zrtk1"},
                    {zrtkSide, stage, "zrtk2"},
                    {gpkiSide, stage, "gpki1"},
                    {gpkiSide, stage, "gpki2"}};
    std::vector<std::thread> threads;
    for (User& user : users)
        threads.emplace_back([&user] { user.work(); });
    for (std::thread& thread : threads)
        thread.join();
}
