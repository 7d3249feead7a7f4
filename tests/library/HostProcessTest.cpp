// A host's process is left as it was found.

#include "LibraryHost.h"
#include "ProcessState.h"

#include <csignal>
#include <gmock/gmock.h>
#include <openssl/err.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using host::Ending;

class HostProcess : public testing::Test
{
protected:
    HostProcess() : outcome(std::make_unique<SELCERTINFO>())
    {
        host::writeHolder();
        // What Qt sets up for its first window is Qt's: it is in both states.
        host::runDialog(Ending::Cancel, *outcome);
        // A host with habits of its own.
        umask(027);
        sigset_t blocked;
        sigemptyset(&blocked);
        sigaddset(&blocked, SIGUSR1);
        sigprocmask(SIG_BLOCK, &blocked, nullptr);
        ERR_clear_error();
        ERR_put_error(ERR_LIB_USER, 0, 7, "host.c", 1);
    }

    std::unique_ptr<SELCERTINFO> outcome;
};

TEST_F(HostProcess, SelectionWithTheRightPasswordLeavesItAsItWas)
{
    const std::string before = processState();
    EXPECT_EQ(host::runDialog(Ending::RightPassword, *outcome), 0);
    EXPECT_GT(outcome->nSignKeyLen, 0);
    EXPECT_EQ(processState(), before);
}

TEST_F(HostProcess, SelectionWithAWrongPasswordLeavesItAsItWas)
{
    const std::string before = processState();
    EXPECT_EQ(host::runDialog(Ending::WrongPasswordThenCancel, *outcome), -1);
    EXPECT_EQ(processState(), before);
}

TEST_F(HostProcess, CancelledSelectionLeavesItAsItWas)
{
    const std::string before = processState();
    EXPECT_EQ(host::runDialog(Ending::Cancel, *outcome), -1);
    EXPECT_EQ(processState(), before);
}

class HostProcessOnEachSide : public HostProcess, public testing::WithParamInterface<int>
{};

TEST_P(HostProcessOnEachSide, SessionLeavesItAsItWas)
{
    const std::string before = processState();
    void* session = host::openSession(GetParam());
    std::string password = host::password();
    EXPECT_EQ(CLP_DecryptPriKey(session, 0, password.data()), 0);
    std::string wrong = password + "x";
    char* key = nullptr;
    char* kmKey = nullptr;
    int length = 0;
    int kmLength = 0;
    EXPECT_EQ(CLP_DecryptPriKeyData(session, 0, wrong.data(), &key, &length, &kmKey, &kmLength),
              CLPERR_WRONG_PASSWORD);
    CLP_UnInitalize(session);
    EXPECT_EQ(processState(), before);
}

INSTANTIATE_TEST_SUITE_P(Toolkits, HostProcessOnEachSide, testing::Values(TOOLKIT_ZRTK, TOOLKIT_GPKI));

} // namespace
