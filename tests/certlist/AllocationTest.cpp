// Memory that runs out is told with its code, and leaves what stood before.

#include <cstdlib>

#include "../foundation/AllocationHooks.h"
#include "SessionTest.h"

namespace {

/** Lists of records come from calloc; the linker puts __wrap_calloc in its place. */
bool g_callocFails = false;

class FailingLists
{
public:
    FailingLists() { g_callocFails = true; }
    ~FailingLists() { g_callocFails = false; }
};

} // namespace

extern "C" void* __real_calloc(size_t count, size_t size);

extern "C" void* __wrap_calloc(size_t count, size_t size)
{
    return g_callocFails ? nullptr : __real_calloc(count, size);
}

namespace {

class Memory : public SessionTest
{
protected:
    void load()
    {
        writeFlat(class1, "a", "pw:R:random", "pw:km key");
        startOn(MEDIA_HARDDISK);
        ASSERT_EQ(CLP_LoadCertList(handle), 0);
    }

    /** What a call answers when each of its allocations in turn is the first that fails. */
    template <typename Call>
    std::vector<int> answersOf(Call call)
    {
        std::vector<int> answers;
        for (int successes = 0; answers.empty() || answers.back() != QG_OK; ++successes) {
            const FailingAllocations failing(successes);
            answers.push_back(call());
        }
        answers.pop_back();
        return answers;
    }
};

/** Each answer but the last, which succeeded, is the same code, and there is one at least. */
void expectAll(const std::vector<int>& answers, int code)
{
    EXPECT_FALSE(answers.empty());
    for (const int answer : answers)
        EXPECT_EQ(answer, code);
}

} // namespace

TEST_F(Memory, SessionThatCannotBeMadeIsTold)
{
    const FailingAllocations failing;
    EXPECT_EQ(start(), QG_NO_MEMORY);
    EXPECT_EQ(handle, nullptr);
}

TEST_F(Memory, StoreThatCannotBeMadeEndsTheStart)
{
    for (const int successes : {1, 2}) {
        const FailingAllocations failing(successes);
        EXPECT_EQ(start(), CLPERR_NOT_STARTED);
        EXPECT_NE(handle, nullptr);
        CLP_UnInitalize(handle);
        handle = nullptr;
    }
}

TEST_F(Memory, FilterArrayThatCannotBeMadeLeavesTheStoresTheirOptions)
{
    load();
    ASSERT_EQ(setPolicies("1 2 3|"), 0);
    LOADCERTOPT other = certOption;
    other.nCertCAType = CERTTYPE_NPKI;
    copyText(other.szCertPolicyIDs, "7 8|9|");
    {
        const FailingAllocations failing;
        EXPECT_EQ(CLP_SetType(handle, &other), QG_NO_MEMORY);
    }
    EXPECT_EQ(disk().m_stLoadCertOpt.nCertCAType, certOption.nCertCAType);
    EXPECT_STREQ(disk().m_stLoadCertOpt.szCertPolicyIDs, "1 2 3|");
    ASSERT_EQ(disk().m_nSetPolicyOIDCnt, 1);
    EXPECT_STREQ(disk().m_pstSetOid[0].szPolicyID, "1 2 3");
    EXPECT_EQ(memory().m_nSetPolicyOIDCnt, 1);
}

TEST_F(Memory, FilterArrayThatCannotBeMadeLeavesTheFilterToLaterCallsWithoutAPolicy)
{
    load();
    ASSERT_EQ(setPolicies("1 2|3 4|5 6|"), 0);
    {
        const FailingAllocations failing;
        ASSERT_EQ(setPolicies("9|"), QG_NO_MEMORY);
    }
    ASSERT_EQ(CLP_SetType(handle, &certOption), 0);
    ASSERT_EQ(disk().m_nSetPolicyOIDCnt, 3);
    EXPECT_EQ(disk().m_pstSetOid, session().m_pstSetOid.get());
    ASSERT_EQ(session().m_nSetPolicyOIDCnt, 3) << "else the stores would read past the array";
    EXPECT_STREQ(disk().m_pstSetOid[2].szPolicyID, "5 6");
}

TEST_F(Memory, DriveListThatCannotBeMadeIsTold)
{
    ASSERT_EQ(start(), 0);
    writeFile(mtab, "/dev/sdb1 /mnt vfat rw 0 0\n");
    int count = -1;
    expectAll(answersOf([&] { return CLP_GetRemDriveCount(handle, &count); }), QG_NO_MEMORY);
    expectAll(answersOf([&] { return CLP_GetDriveCount(handle, true, true, &count); }), QG_NO_MEMORY);
    const FailingAllocations failing;
    EXPECT_EQ(CLP_GetRemDriveCount(handle, &count), QG_NO_MEMORY);
    EXPECT_EQ(disk().m_nRemDrvCnt, 1) << "the count stays as it was set";
    DRIVEINFO drive{};
    EXPECT_EQ(CLP_GetRemDrive(handle, &drive), 0);
    EXPECT_STREQ(drive.szDrive, "");
}

TEST_F(Memory, DirectoryArrayThatCannotBeMadeEndsTheLoad)
{
    load();
    const FailingAllocations failing;
    EXPECT_EQ(CLP_LoadCertList(handle), QG_NO_MEMORY);
    EXPECT_EQ(CLP_GetCertCount(handle), 1) << "the earlier list stays";
    EXPECT_STREQ(info(0).szSubjectDN, disk().record(0)->szSubjectDN);
}

TEST_F(Memory, ListThatCannotBeMadeEndsTheLoad)
{
    load();
    {
        const FailingLists failing;
        EXPECT_EQ(CLP_LoadCertList(handle), QG_NO_MEMORY);
    }
    CERTINFO record{};
    EXPECT_EQ(CLP_GetCertInfo(handle, 0, &record), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_LoadCertList(handle), 0);
    EXPECT_EQ(CLP_GetCertInfo(handle, 0, &record), 0);
}

TEST_F(Memory, MemoryRecordThatCannotBeMadeEndsTheLoad)
{
    startOn(MEDIA_MEMORY);
    ASSERT_EQ(setMemoryCert("cert", "key"), 0);
    const FailingLists failing;
    EXPECT_EQ(CLP_LoadCertList(handle), QG_NO_MEMORY);
    EXPECT_EQ(CLP_GetCertCount(handle), 0);
}

TEST_F(Memory, KeysThatCannotBeHandedOutAreTold)
{
    load();
    char* sign = nullptr;
    char* km = nullptr;
    int length = -1;
    expectAll(answersOf([&] {
                  EXPECT_EQ(sign, nullptr);
                  EXPECT_EQ(length, -1);
                  return CLP_DecryptPriKeyData(handle, 0, text("pw"), &sign, &length, &km, &length);
              }),
              QG_NO_MEMORY);
    take(sign, 8);
    take(km, 6);
}

TEST_F(Memory, RandomThatCannotBeHandedOutIsTold)
{
    load();
    char* random = nullptr;
    int length = -1;
    expectAll(answersOf([&] {
                  EXPECT_EQ(random, nullptr);
                  return CLP_GetPriKeyRandom(handle, 0, text("pw"), &random, &length);
              }),
              QG_NO_MEMORY);
    EXPECT_EQ(take(random, length), "random");
}

TEST_F(Memory, KeysThatCannotBeCopiedAreNotSaved)
{
    startOn(MEDIA_HARDDISK);
    expectAll(answersOf([&] {
                  EXPECT_FALSE(fs::exists(TestHome::path() / "NPKI"));
                  return CLP_SaveCert(handle, false, text("pw"), text("cert"), 4, text("key"), 3, text("km"),
                                      2, text("km"), 2);
              }),
              QG_NO_MEMORY);
    session().m_nMediaType = 99; // where keys are opened
    const FailingAllocations failing;
    EXPECT_EQ(
        CLP_SaveCert(handle, true, text("pw"), text("cert"), 4, text("pw:key"), 6, nullptr, 0, nullptr, 0),
        QG_NO_MEMORY);
}

TEST_F(Memory, PairThatCannotBeReadOutLeavesWhatWasMadeToTheCaller)
{
    load();
    for (int successes = 0; successes < 4; ++successes) {
        char* out[4] = {};
        int length[4] = {};
        {
            const FailingAllocations failing(successes);
            EXPECT_EQ(disk().ReadCertNKey(true, 0, &out[0], &length[0], &out[1], &length[1], &out[2],
                                          &length[2], &out[3], &length[3]),
                      QG_NO_MEMORY);
        }
        for (int i = 0; i < 4; ++i) {
            EXPECT_EQ(out[i] != nullptr, i < successes);
            take(out[i], length[i]);
        }
    }
    char* out = nullptr;
    int length = 0;
    const std::string path = class1 / "a_sig.cer";
    const FailingAllocations failing;
    EXPECT_EQ(disk().ReadCertNKeyFromPath(text(path), text(path), &out, &length, &out, &length),
              QG_NO_MEMORY);
    EXPECT_EQ(out, nullptr);
}

TEST_F(Memory, PfxThatCannotBeHandedOutIsTold)
{
    ASSERT_EQ(start(), 0);
    const std::string path = workDir / "a.pfx";
    writeFile(path, FakeToolkit::pfx("pw", {"cert a", "km b"}, {"key a", "key b"}));
    toolkit.certificateTexts["km b"] = {{"CertGetKeyUsage", "keyEncipherment"}};
    char* out[4] = {};
    int length[4] = {};
    expectAll(answersOf([&] {
                  EXPECT_EQ(out[0], nullptr);
                  EXPECT_EQ(out[3], nullptr);
                  return session().GetCertPKCS12(text(path), text("pw"), &out[0], &length[0], &out[1],
                                                 &length[1], &out[2], &length[2], &out[3], &length[3]);
              }),
              QG_NO_MEMORY);
    for (int i = 0; i < 4; ++i)
        take(out[i], length[i]);
    CertUnLoad(nullptr); // what unpacking leaves to the next load
}

TEST_F(Memory, RecordThatCannotBeCopiedIsNotExported)
{
    load();
    const std::string path = workDir / "a.pfx";
    {
        const FailingLists failing;
        EXPECT_EQ(CLP_ExportPFX(handle, 0, text("pw"), text(path)), QG_NO_MEMORY);
    }
    EXPECT_FALSE(fs::exists(path));
    const FailingAllocations failing;
    EXPECT_EQ(session().ExportDataPFX(false, text("pw"), text(path), text("cert"), 4, text("key"), 3, nullptr,
                                      0, nullptr, 0),
              QG_NO_MEMORY);
}
