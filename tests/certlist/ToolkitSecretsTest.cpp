#include <sys/wait.h>
#include <unistd.h>

#include "MemoryScan.h"
#include "ToolkitSession.h"

namespace {

/** Masked: "correct horse 7". Never in memory in plain form but while a call runs. */
constexpr unsigned char MASKED_PASSWORD[] = {0xC6, 0xCA, 0xD7, 0xD7, 0xC0, 0xC6, 0xD1, 0x85,
                                             0xCD, 0xCA, 0xD7, 0xD6, 0xC0, 0x85, 0x92};

/**
 * A whole selection on files that another process wrote, so that this one knows neither the plain keys nor
 * the password but from the calls under test.
 */
class Secrets : public ToolkitSession
{
protected:
    void SetUp() override
    {
#ifdef __SANITIZE_ADDRESS__
        GTEST_SKIP() << "the sanitizer's own memory is too large to scan";
#endif
        const fs::path needles = TestHome::scratch("needles");
        const pid_t writer = fork();
        if (writer == 0) {
            writeTree(needles);
            _exit(0);
        }
        int status = 0;
        waitpid(writer, &status, 0);
        EXPECT_EQ(status, 0);
        signKey = Needle::ofMasked(readFile(needles / "sign"));
        kmKey = Needle::ofMasked(readFile(needles / "km"));
        random = Needle::ofMasked(readFile(needles / "random"));
    }

    /** Runs in the other process: a holder with both keys, and a piece of each secret, masked. */
    void writeTree(const fs::path& needles)
    {
        // Numbers that no other test takes: the process under test has never had these keys.
        const Plain plain;
        samplepki::Request km = request("km", 21);
        km.keyUsage = samplepki::EnvelopeUse;
        writeHolder({.sign = pair(request("hong", 20), plain.text), .km = pair(km, plain.text)});
        writeMasked(needles / "sign", key(20).privateKeyInfo().substr(600, 32));
        writeMasked(needles / "km", key(21).privateKeyInfo().substr(600, 32));
        writeMasked(needles / "random", key(20).random());
    }

    static void writeMasked(const fs::path& path, std::string secret)
    {
        Needle::mask(secret.data(), secret.size());
        writeFile(path, secret);
    }

    /** The password in plain form, wiped at the end of the scope. */
    struct Plain
    {
        char text[sizeof(MASKED_PASSWORD) + 1] = {};
        Plain()
        {
            std::memcpy(text, MASKED_PASSWORD, sizeof(MASKED_PASSWORD));
            Needle::mask(text, sizeof(MASKED_PASSWORD));
        }
        ~Plain() { explicit_bzero(text, sizeof(text)); }
    };

    /** Decrypts by every road and gives what was handed out back. */
    void openKeys()
    {
        Plain plain;
        char* out[2] = {};
        int length[2] = {};
        ASSERT_EQ(CLP_DecryptPriKeyData(handle, 0, plain.text, &out[0], &length[0], &out[1], &length[1]), 0);
        free(out[0]);
        free(out[1]);
        ASSERT_EQ(CLP_GetPriKeyRandom(handle, 0, plain.text, &out[0], &length[0]), 0);
        free(out[0]);
        ASSERT_EQ(CLP_DecryptPriKey(handle, 0, plain.text), 0);
        static CERTINFO record;
        ASSERT_EQ(CLP_SelectCert(handle, 0, plain.text, &record), 0);
        explicit_bzero(&record, sizeof(record));
        ASSERT_EQ(CLP_SetPFXInfo(handle, text("/a.pfx"), plain.text), 0);
    }

    /** Saves the plain keys of the listed certificate anew, as a host does that holds them. */
    void savePlainKeys()
    {
        Plain plain;
        char* out[2] = {};
        int length[2] = {};
        ASSERT_EQ(CLP_DecryptPriKeyData(handle, 0, plain.text, &out[0], &length[0], &out[1], &length[1]), 0);
        static CERTINFO record;
        ASSERT_EQ(CLP_GetCertInfo(handle, 0, &record), 0);
        ASSERT_EQ(CLP_SaveCert(handle, false, plain.text, record.szSignCert, record.nSignCertLen, out[0],
                               length[0], record.szKmCert, record.nKmCertLen, out[1], length[1]),
                  0);
        explicit_bzero(&record, sizeof(record));
        free(out[0]);
        free(out[1]);
    }

    /** Deletes all that is listed, each with its password. */
    void deleteListed()
    {
        Plain plain;
        for (int i = 0; i < CLP_GetCertCount(handle); ++i)
            ASSERT_EQ(CLP_DeleteCert(handle, i, plain.text), 0);
    }

    void free(char* buffer)
    {
        void* address = buffer;
        EXPECT_EQ(CLP_MemFree(handle, &address), 0);
    }

    void expectNothingLeft() const
    {
        EXPECT_EQ(signKey.count(), 0);
        EXPECT_EQ(kmKey.count(), 0);
        EXPECT_EQ(random.count(), 0);
        EXPECT_EQ(password.count(), 0);
    }

    Needle signKey;
    Needle kmKey;
    Needle random;
    Needle password =
        Needle::ofMasked({reinterpret_cast<const char*>(MASKED_PASSWORD), sizeof(MASKED_PASSWORD)});
};

} // namespace

TEST_F(Secrets, ScanFindsThemWhileTheListStands)
{
    ASSERT_EQ(load(), 0);
    expectNothingLeft();
    openKeys();
    EXPECT_EQ(signKey.count(), 1) << "the list's record, and nothing else";
    EXPECT_EQ(kmKey.count(), 1);
    EXPECT_EQ(random.count(), 2) << "the record's field, and the end of its plain key";
    EXPECT_EQ(password.count(), 2) << "the record's field and the PFX password";
}

TEST_F(Secrets, NothingIsLeftAfterClearing)
{
    ASSERT_EQ(load(), 0);
    openKeys();
    ASSERT_EQ(CP_ClearCertData(handle), 0);
    expectNothingLeft();
}

TEST_F(Secrets, NothingIsLeftAfterTheEnd)
{
    ASSERT_EQ(load(), 0);
    openKeys();
    CLP_UnInitalize(handle);
    handle = nullptr;
    expectNothingLeft();
}

TEST_F(Secrets, NothingIsLeftAfterANewLoad)
{
    ASSERT_EQ(load(), 0);
    openKeys();
    ASSERT_EQ(CLP_SetPFXInfo(handle, nullptr, nullptr), 0);
    ASSERT_EQ(load(), 0);
    expectNothingLeft();
}

TEST_F(Secrets, NothingIsLeftOfSavedAndDeletedKeys)
{
    ASSERT_EQ(load(), 0);
    savePlainKeys();
    EXPECT_EQ(signKey.count(), 1) << "the list's record, and nothing else";
    ASSERT_EQ(load(), 0);
    ASSERT_EQ(CLP_GetCertCount(handle), 2) << "the one that was saved has a directory of its own";
    expectNothingLeft();
    deleteListed();
    expectNothingLeft();
    CLP_UnInitalize(handle);
    handle = nullptr;
    expectNothingLeft();
}

TEST_F(Secrets, NothingIsLeftOfExportedAndLoadedPfxFiles)
{
    ASSERT_EQ(load(), 0);
    const std::string path = TestHome::scratch("pfx") / "hong.pfx";
    {
        Plain plain;
        ASSERT_EQ(CLP_ExportPFX(handle, 0, plain.text, text(path)), 0);
        EXPECT_EQ(signKey.count(), 1) << "the list's record, and nothing else";
        EXPECT_EQ(kmKey.count(), 1);
        ASSERT_EQ(CLP_SetPFXInfo(handle, text(path), plain.text), 0);
    }
    start(MEDIA_PFX);
    ASSERT_EQ(CLP_LoadCertList(handle), 0);
    EXPECT_EQ(signKey.count(), 2) << "both lists' records";
    EXPECT_EQ(kmKey.count(), 2);
    CLP_UnInitalize(handle);
    handle = nullptr;
    expectNothingLeft();
}

TEST_F(Secrets, HandedOutKeyIsWipedWhenItIsFreed)
{
    ASSERT_EQ(load(), 0);
    char* out[2] = {};
    int length[2] = {};
    {
        Plain plain;
        ASSERT_EQ(CLP_DecryptPriKeyData(handle, 0, plain.text, &out[0], &length[0], &out[1], &length[1]), 0);
    }
    ASSERT_EQ(CP_ClearCertData(handle), 0);
    EXPECT_EQ(signKey.count(), 1) << "the host's buffer";
    EXPECT_EQ(kmKey.count(), 1);
    free(out[0]);
    EXPECT_EQ(signKey.count(), 0);
    free(out[1]);
    EXPECT_EQ(kmKey.count(), 0);
}
