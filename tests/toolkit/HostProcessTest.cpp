#include <array>
#include <clocale>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/provider.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "KeySamples.h"
#include "MemoryGrowth.h"
#include "TestHome.h"
#include "ToolkitLibrary.h"
#include "samplepki/Authority.h"

namespace fs = std::filesystem;
using namespace samplepki;
using qgtk::Code;

namespace {

const std::string& sampleCertificate()
{
    static const std::string der = [] {
        Authority root = Authority::root(nameFromText("cn=r,o=o,c=kr"), KeyPool::key(KeyKind::Rsa2048, 0));
        return root.issue({nameFromText("cn=홍길동,o=yessign,c=kr"), KeyPool::key(KeyKind::Rsa2048, 1)});
    }();
    return der;
}

const std::string& sampleKey()
{
    static const std::string key(qgtk::textOf(
        encryptKey(testCrypto(), rsaKeyWithRandom(), "p",
                   {qgtk::KeyScheme::Pbkdf1Seed, qgtk::KeyCipher::Seed, qgtk::KeyPrf::Sha1, 2048, 8})));
    return key;
}

/** One selection as a caller does it, right and wrong, ended only by closing the library when asked so. */
void useLibrary(const Side& side, const std::string& workDirectory, bool finish)
{
    const ToolkitLibrary library(side);
    void* context = nullptr;
    ASSERT_EQ(library.callBare("API_Init", &context, text(workDirectory)), 0);
    BinString certificate(library, sampleCertificate());
    BinString damaged(library, sampleCertificate().substr(0, 100));
    BinString key(library, sampleKey());
    BinString plain(library);
    char name[2048] = {};
    EXPECT_EQ(library.callBare("CERT_Load", context, &damaged), number(Code::CertDamaged));
    EXPECT_EQ(library.callBare("CERT_Load", context, &certificate), 0);
    EXPECT_EQ(library.callBare("CERT_GetSubjectName", context, 2048, +name), 0);
    EXPECT_EQ(library.callBare("PRIKEY_Decrypt", context, text("wrong"), &key, &plain), 2004);
    EXPECT_EQ(library.callBare("PRIKEY_Decrypt", context, text("p"), &key, &plain), 0);
    if (finish) {
        EXPECT_EQ(library.callBare("API_Finish", context), 0);
    }
}

std::size_t countOf(const char* directory)
{
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(directory), fs::directory_iterator()));
}

bool isMapped(const std::string& file)
{
    const std::string maps = readFile("/proc/self/maps");
    return maps.find(fs::canonical(file).string()) != std::string::npos;
}

/** What a library could change in the process. */
struct HostState
{
    std::size_t descriptors = countOf("/proc/self/fd");
    std::size_t threads = countOf("/proc/self/task");
    std::string locale = setlocale(LC_ALL, nullptr);
    fs::path directory = fs::current_path();
    mode_t mask = currentMask();
    std::string signals = signalLines();

    static mode_t currentMask()
    {
        const mode_t mask = umask(0);
        umask(mask);
        return mask;
    }
    static std::string signalLines()
    {
        std::ifstream status("/proc/self/status");
        std::string lines;
        for (std::string line; std::getline(status, line);)
            if (line.starts_with("Sig") && !line.starts_with("SigQ")) // a count of all the user's processes
                lines += line + "\n";
        return lines;
    }
    bool operator==(const HostState&) const = default;
};

bool seedIsInDefaultContext()
{
    ERR_set_mark();
    EVP_CIPHER* seed = EVP_CIPHER_fetch(nullptr, "SEED-CBC", nullptr);
    ERR_pop_to_mark();
    EVP_CIPHER_free(seed);
    return seed != nullptr;
}

} // namespace

class HostProcess : public testing::TestWithParam<Side>
{
protected:
    const std::string workDirectory = TestHome::scratch("host").string();
};
INSTANTIATE_BOTH_SIDES(HostProcess);

TEST_P(HostProcess, IsLeftAsItWasFound)
{
    useLibrary(GetParam(), workDirectory, true); // the C library keeps its character converters
    const HostState before;
    useLibrary(GetParam(), workDirectory, true);
    useLibrary(GetParam(), workDirectory, false);
    EXPECT_TRUE(before == HostState());
}

TEST_P(HostProcess, GetsTheDirectoryLibraryOnlyWhenADirectoryIsAsked)
{
    const auto isThere = [] {
        return readFile("/proc/self/maps").find("/libldap") != std::string::npos;
    };
    // In a process of its own: it stays where it has been loaded.
    const pid_t child = fork();
    if (child == 0) {
        useLibrary(GetParam(), TestHome::scratch("work").string(), true);
        const ToolkitLibrary library(GetParam());
        void* context = nullptr;
        EXPECT_EQ(library.callBare("API_Init", &context, text(TestHome::scratch("work").string())), 0);
        EXPECT_FALSE(isThere());
        BinString data(library);
        const char* operation =
            GetParam().prefix == std::string("ZRTK_") ? "ZRAP_GetDataByURL" : "LDAP_GetDataByURL";
        EXPECT_EQ(library.callBare(operation, context, 1, text("ldap://127.0.0.1:1/c=KR"), &data),
                  number(Code::ServerUnreachable));
        EXPECT_TRUE(isThere());
        EXPECT_EQ(library.callBare("API_Finish", context), 0);
        _exit(HasFailure() ? 1 : 0);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

TEST_P(HostProcess, OpenSslDefaultContextStaysWithoutTheLegacyProvider)
{
    ASSERT_FALSE(seedIsInDefaultContext());
    const ToolkitLibrary library(GetParam());
    useLibrary(GetParam(), workDirectory, false);
    EXPECT_FALSE(seedIsInDefaultContext());
    EXPECT_FALSE(OSSL_PROVIDER_available(nullptr, "legacy"));
}

TEST_P(HostProcess, OpenSslErrorQueueStaysAsItWas)
{
    ERR_clear_error();
    useLibrary(GetParam(), workDirectory, true);
    EXPECT_EQ(ERR_peek_error(), 0U);
    ERR_raise(ERR_LIB_USER, 1);
    ERR_raise(ERR_LIB_USER, 2);
    useLibrary(GetParam(), workDirectory, false);
    EXPECT_EQ(ERR_GET_REASON(ERR_get_error()), 1);
    EXPECT_EQ(ERR_GET_REASON(ERR_get_error()), 2);
    EXPECT_EQ(ERR_get_error(), 0U);
}

TEST_P(HostProcess, LibraryIsGoneAfterItWasClosed)
{
    useLibrary(GetParam(), workDirectory, false);
    EXPECT_FALSE(isMapped(GetParam().file));
}

TEST_P(HostProcess, AThousandLoadsLeaveNothingBehind)
{
    constexpr std::size_t loads = memory_growth::sanitized ? 200 : 1000;
    constexpr int warmUp = loads / 10;
    for (int i = 0; i < warmUp; ++i)
        useLibrary(GetParam(), workDirectory, i % 2 == 0);
    const std::size_t descriptors = countOf("/proc/self/fd");
    const std::size_t memory = memory_growth::allocatedBytes();
    for (std::size_t i = 0; i < loads; ++i)
        useLibrary(GetParam(), workDirectory, i % 2 == 0);
    EXPECT_EQ(countOf("/proc/self/fd"), descriptors);
    // The allocator's caches count as allocated and still fill a little, as they do for bare OpenSSL
    // contexts; a context of ours that is left over holds some 100,000 bytes.
    constexpr std::size_t noiseOfALoad = 500;
    EXPECT_LT(memory_growth::allocatedBytes(), memory + noiseOfALoad * loads);
}

TEST_P(HostProcess, MayExitWithContextsStillOpen)
{
    const pid_t child = fork();
    if (child == 0) {
        dlopen(GetParam().file, RTLD_LAZY); // keeps the library until exit
        useLibrary(GetParam(), workDirectory, false);
        exit(HasFailure() ? 1 : 0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

TEST_P(HostProcess, TwoContextsOnTwoThreads)
{
    const ToolkitLibrary library(GetParam());
    const auto work = [&] {
        for (int i = 0; i < 20; ++i)
            useLibrary(GetParam(), workDirectory, i % 2 == 0);
    };
    std::thread first(work);
    std::thread second(work);
    first.join();
    second.join();
}

TEST(HostProcess, BothInterfacesAndTheHostsOwnOpenSslWorkSideBySide)
{
    const std::string workDirectory = TestHome::scratch("host").string();
    const ToolkitLibrary zrtk(zrtkSide);
    const ToolkitLibrary gpki(gpkiSide);
    useLibrary(zrtkSide, workDirectory, false);
    useLibrary(gpkiSide, workDirectory, false);
    std::array<unsigned char, 32> digest{};
    EXPECT_EQ(EVP_Digest("abc", 3, digest.data(), nullptr, EVP_sha256(), nullptr), 1);
    EXPECT_EQ(::toHex(digest), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_FALSE(seedIsInDefaultContext());
}

class Interface : public ToolkitTest
{};
INSTANTIATE_BOTH_SIDES(Interface);

TEST_P(Interface, MissingLegacyProviderDoesNotTouchOtherCiphers)
{
    setenv("OPENSSL_MODULES", "/nonexistent", 1);
    BinString key(library, sampleKey());
    BinString plain(library);
    EXPECT_EQ(call("PRIKEY_Decrypt", text("p"), &key, &plain), 0) << "found beside the system's OpenSSL";
    unsetenv("OPENSSL_MODULES");
}

TEST_P(Interface, TextsOfFailuresFollowTheLanguageAndOutliveSuccess)
{
    EXPECT_EQ(errorText(), "");
    load("no certificate");
    const std::string korean = eucKr("인증서가 손상되었거나 인증서가 아닙니다 (1200)");
    EXPECT_EQ(errorText(), korean);
    EXPECT_EQ(load(sampleCertificate()), 0);
    EXPECT_EQ(errorText(), korean);
    restartWith("LANGUAGE=ENG");
    load("no certificate");
    EXPECT_EQ(errorText(), "The certificate is damaged or is not one (1200)");
    EXPECT_EQ(get("API_GetErrInfo", 16), "The certificate");
}

TEST_P(Interface, HashAndCaCertificatesOfTheContext)
{
    for (const int code : {1, 4, 5})
        EXPECT_EQ(call("API_SetHashAlgo", code), 0);
    for (const int code : {0, -1, 99})
        EXPECT_EQ(call("API_SetHashAlgo", code), number(Code::AlgorithmCodeUnknown));
    const std::string prefix = GetParam().prefix == std::string("ZRTK_") ? "CERT_" : "API_";
    BinString certificates(library, sampleCertificate() + sampleCertificate());
    BinString damaged(library, sampleCertificate() + "more");
    EXPECT_EQ(call(prefix + "SetCaPubs", &certificates), 0);
    EXPECT_EQ(call(prefix + "SetCaPubs", &damaged), number(Code::CertListDamaged));
    EXPECT_EQ(call(prefix + "FreeCaPubs"), 0);
}

TEST_P(Interface, ByteStringsAreReplacedAndEmptied)
{
    BINSTR record = {};
    unsigned char bytes[] = {1, 2, 3};
    EXPECT_EQ(library.callBare("BINSTR_SetData", +bytes, 3, &record), 0);
    EXPECT_EQ(record.nLen, 3);
    EXPECT_EQ(record.pData[3], 0) << "a text ends behind its bytes";
    EXPECT_EQ(library.callBare("BINSTR_SetData", +bytes, 1, &record), 0);
    EXPECT_EQ(record.nLen, 1);
    for (const int length : {0, -1})
        EXPECT_EQ(library.callBare("BINSTR_SetData", +bytes, length, &record), number(Code::BadArgument));
    EXPECT_EQ(library.callBare("BINSTR_Delete", &record), 0);
    EXPECT_EQ(record.pData, nullptr);
    EXPECT_EQ(library.callBare("BINSTR_Delete", &record), 0) << "an empty one again";
    record.nLen = 7;
    EXPECT_EQ(library.callBare("BINSTR_Create", &record), 0);
    EXPECT_EQ(record.nLen, 0);
    EXPECT_EQ(library.callBare("BINSTR_Create", static_cast<BINSTR*>(nullptr)), number(Code::BadArgument));
    EXPECT_EQ(library.callBare("BINSTR_Delete", static_cast<BINSTR*>(nullptr)), number(Code::BadArgument));
}

class ZrtkInterface : public ToolkitTest
{};
INSTANTIATE_TEST_SUITE_P(Zrtk, ZrtkInterface, testing::Values(zrtkSide));

TEST_P(ZrtkInterface, SmartCardsAndTheWindowsStoreAreNotOfThisPlatform)
{
    BinString data(library, "as it was");
    int number32 = 7;
    char name[] = "as it was";
    const int refused = number(Code::NoPlatform);
    EXPECT_EQ(call("MEDIA_CARD_ReadCert", 1, text("1"), &data), refused);
    EXPECT_EQ(call("MEDIA_CARD_ReadPriKey", 1, text("1"), text("p"), &data), refused);
    EXPECT_EQ(call("MEDIA_CARD_WriteCert", 1, text("1"), &data), refused);
    EXPECT_EQ(call("MEDIA_CARD_WritePriKey", 1, 64, text("1"), text("p"), &data), refused);
    EXPECT_EQ(call("MEDIA_CARD_DeleteCert", 1, text("1")), refused);
    EXPECT_EQ(call("MEDIA_CARD_DeletePriKey", 1, text("1"), text("p")), refused);
    EXPECT_EQ(call("MEDIA_WINS_WriteCertAndPriKey", 1, text("p"), &data), refused);
    EXPECT_EQ(call("MEDIA_WINS_WriteCert", &data), refused);
    EXPECT_EQ(call("MEDIA_WINS_GetCertCnt", text("cn"), &number32), refused);
    EXPECT_EQ(call("MEDIA_WINS_GetCertDN", 0, 8, &number32, +name, +name), refused);
    EXPECT_EQ(call("MEDIA_WINS_ReadCert", 0, &data), refused);
    EXPECT_EQ(call("MEDIA_WINS_ReadPriKey", 0, &data), refused);
    EXPECT_EQ(data.bytes(), "as it was");
    EXPECT_EQ(number32, 7);
    EXPECT_STREQ(name, "as it was");
    EXPECT_EQ(errorText(), eucKr("이 플랫폼에서는 지원하지 않습니다 (1008)"));
}

class GpkiInterface : public ToolkitTest
{};
INSTANTIATE_TEST_SUITE_P(Gpki, GpkiInterface, testing::Values(gpkiSide));

TEST_P(ZrtkInterface, VersionAndInformation)
{
    char version[64] = {};
    char information[1024] = {};
    EXPECT_EQ(call("API_GetInfo", +version, +information), 0);
    EXPECT_STREQ(version, "3.4.2.20");
    EXPECT_THAT(information, testing::HasSubstr("OpenSSL 3"));
}

TEST_P(GpkiInterface, VersionOptionAndTime)
{
    EXPECT_EQ(get("API_GetVersion"), "1.5");
    EXPECT_EQ(get("API_GetInfo", 8), "1.5");
    EXPECT_EQ(call("API_SetOption", 1), 0);
    time_t instant = 0;
    EXPECT_EQ(call("API_Str2Time", text("2026-01-02 12:04:05"), &instant), 0);
    EXPECT_EQ(instant, 1767323045) << "local time, Seoul here";
    for (const char* bad : {"", "2026-01-02", "2026-13-01 00:00:00", "2026-01-02 12:04:05x", "today"})
        EXPECT_EQ(call("API_Str2Time", text(bad), &instant), number(Code::BadTime)) << bad;
}
