// Plain keys, key randoms and passwords do not outlive their use.

#include "LibraryHost.h"
#include "MemoryScan.h"

#include <TestHome.h>
#include <cstring>
#include <fcntl.h>
#include <functional>
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using host::Ending;
using testing::IsEmpty;
using testing::Not;

/** Masks what must be found nowhere, and wipes the test's own copies of it. */
class Secrets : public testing::Test
{
protected:
    Secrets()
    {
        // The writer of the keys is a process of its own: nothing of it lies about in this one.
        prepareInChild();
        addFile("signing key", "sign.key");
        addFile("key-management key", "km.key");
        std::string password = host::password();
        scan.add("password", {password.data(), password.size()});
        const std::u16string wide(password.begin(), password.end());
        scan.add("password in a QString", {reinterpret_cast<const char*>(wide.data()), wide.size() * 2});
        wipe(password);
        explicit_bzero(const_cast<char16_t*>(wide.data()), wide.size() * 2);
    }

    void SetUp() override
    {
#ifdef __SANITIZE_ADDRESS__
        GTEST_SKIP() << "the sanitizer's own memory is too large to scan";
#endif
    }

    static void wipe(std::string& text)
    {
        explicit_bzero(text.data(), text.size());
    }

    /** Takes the secret part of the key: the tail of the PKCS#8 without the key random. */
    void addFile(const std::string& name, const std::string& file)
    {
        // Read past every buffer of the standard library, which would keep a copy.
        char key[4096];
        const int descriptor = open((TestHome::path() / file).c_str(), O_RDONLY);
        const ssize_t size = read(descriptor, key, sizeof key);
        close(descriptor);
        scan.add(name, {key + size / 2, 64});
        explicit_bzero(key, sizeof key);
        std::filesystem::remove(TestHome::path() / file);
    }

    static void prepareInChild();

    /** Runs an operation with the password and wipes the caller's copy of it. */
    static int withPassword(const std::function<int(char*)>& operation)
    {
        std::string password = host::password();
        const int code = operation(password.data());
        wipe(password);
        return code;
    }

    MemoryScan scan;
};

void Secrets::prepareInChild()
{
    TestHome::path();
    const int child = fork();
    if (child == 0) {
        const host::Holder holder = host::writeHolder();
        writeFile(TestHome::path() / "sign.key", holder.signKey);
        writeFile(TestHome::path() / "km.key", holder.kmKey);
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_EQ(status, 0);
}

TEST_F(Secrets, AreFoundWhileASessionHoldsThem)
{
    void* session = host::openSession();
    ASSERT_EQ(withPassword([&](char* text) { return CLP_DecryptPriKey(session, 0, text); }), 0);
    EXPECT_THAT(scan.find(), Not(IsEmpty())) << "a scan that finds nothing here proves nothing elsewhere";
    CLP_UnInitalize(session);
}

TEST_F(Secrets, AreGoneAfterClearCertData)
{
    void* session = host::openSession();
    ASSERT_EQ(withPassword([&](char* text) { return CLP_DecryptPriKey(session, 0, text); }), 0);
    ASSERT_EQ(CP_ClearCertData(session), 0);
    EXPECT_THAT(scan.find(), IsEmpty());
    CLP_UnInitalize(session);
}

TEST_F(Secrets, AreGoneAfterUnInitalize)
{
    for (const int toolkit : {TOOLKIT_ZRTK, TOOLKIT_GPKI}) {
        void* session = host::openSession(toolkit);
        char* key = nullptr;
        char* kmKey = nullptr;
        int length = 0;
        int kmLength = 0;
        ASSERT_EQ(withPassword([&](char* text) {
                      return CLP_DecryptPriKeyData(session, 0, text, &key, &length, &kmKey, &kmLength);
                  }),
                  0);
        CLP_MemFree(session, reinterpret_cast<void**>(&key));
        CLP_MemFree(session, reinterpret_cast<void**>(&kmKey));
        CLP_UnInitalize(session);
        EXPECT_THAT(scan.find(), IsEmpty()) << "toolkit " << toolkit;
    }
}

TEST_F(Secrets, AreGoneAfterASelectionWhenTheHostWipedItsRecord)
{
    const auto outcome = std::make_unique<SELCERTINFO>();
    ASSERT_EQ(host::runDialog(Ending::RightPassword, *outcome), 0);
    EXPECT_THAT(scan.find(), Not(IsEmpty())) << "the host's record holds the keys";
    explicit_bzero(outcome.get(), sizeof *outcome);
    EXPECT_THAT(scan.find(), IsEmpty());
}

} // namespace
