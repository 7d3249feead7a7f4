// The sample home and work directory in use: the list service with the open toolkit, loaded from the copied
// work directory.

#include <map>
#include <memory>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Command.h"
#include "TestHome.h"
#include "quillgate/certlist.h"
#include "quillgate/returncodes.h"
#include "samples/Plan.h"

namespace fs = std::filesystem;
using testing::Not;
using testing::StartsWith;

namespace {

std::string korean(const char* text)
{
    return samplepki::convertText(text, "EUC-KR", "UTF-8");
}

/** The list of the sample home, loaded once; the records by the holder's name. */
class SamplesInUse : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        const fs::path directory = TestHome::scratch("samples") / "new";
        runCommand({QUILLGATE_SAMPLES, directory.string(), "--password", password});
        TestHome::reset();
        fs::copy(directory / "home", TestHome::path(), fs::copy_options::recursive);
        LOADOPT options{};
        (directory / "work").string().copy(options.szWorkDir, sizeof(options.szWorkDir) - 1);
        ASSERT_EQ(CLP_Initalize(&session, &options, nullptr), 0);
        LOADCERTOPT filter{};
        filter.nCertCAType = CERTTYPE_GPKI | CERTTYPE_NPKI | CERTTYPE_MPKI;
        ASSERT_EQ(CLP_SetType(session, &filter), 0);
        ASSERT_EQ(CLP_SetMediaType(session, MEDIA_HARDDISK, 0), 0);
        ASSERT_EQ(CLP_LoadCertList(session), 0);
    }

    static void TearDownTestSuite()
    {
        CLP_UnInitalize(session);
        TestHome::reset();
    }

    /** Place of each holder in the list. */
    static std::map<std::string, int> places()
    {
        std::map<std::string, int> list;
        for (int i = 0; i < CLP_GetCertCount(session); ++i)
            list[korean(record(i)->szSubjectCN)] = i;
        return list;
    }

    static std::unique_ptr<CERTINFO> record(int index)
    {
        auto info = std::make_unique<CERTINFO>();
        EXPECT_EQ(CLP_GetCertInfo(session, index, info.get()), 0);
        return info;
    }

    static int placeOf(const HolderPlan& plan)
    {
        return places().at(samplepki::commonName(samplepki::nameFromText(plan.subject)));
    }

    static int decrypt(int index)
    {
        char* keys[2] = {};
        int lengths[2] = {};
        const int result =
            CLP_DecryptPriKeyData(session, index, password, &keys[0], &lengths[0], &keys[1], &lengths[1]);
        for (auto& key : keys)
            CLP_MemFree(session, reinterpret_cast<void**>(&key));
        return result;
    }

    static int readRandom(int index)
    {
        char* random = nullptr;
        int length = 0;
        const int result = CLP_GetPriKeyRandom(session, index, password, &random, &length);
        EXPECT_EQ(length, result == 0 ? 20 : 0);
        CLP_MemFree(session, reinterpret_cast<void**>(&random));
        return result;
    }

    static inline void* session = nullptr;
    static inline char password[] = "for-this-test";
};

TEST_F(SamplesInUse, TheListHoldsEveryHolder)
{
    EXPECT_EQ(CLP_GetCertCount(session), static_cast<int>(holderPlans().size()));
    for (const auto& plan : holderPlans())
        EXPECT_TRUE(places().contains(samplepki::commonName(samplepki::nameFromText(plan.subject))))
            << plan.subject;
}

TEST_F(SamplesInUse, EachStateIsTheOnePlanned)
{
    for (const auto& plan : holderPlans())
        EXPECT_EQ(record(placeOf(plan))->nCertState, CERTSTATE_VALID + static_cast<int>(plan.state))
            << plan.subject;
}

TEST_F(SamplesInUse, EachIssuerAndPurposeHasAName)
{
    for (const auto& plan : holderPlans()) {
        const auto info = record(placeOf(plan));
        EXPECT_STRNE(info->szIssuerName, info->szIssuerCN) << plan.subject;
        EXPECT_THAT(korean(info->szDivision), Not(StartsWith("1.2.410"))) << plan.subject;
    }
}

TEST_F(SamplesInUse, EachPasswordOpensThePairUnlessItHasTwo)
{
    for (const auto& plan : holderPlans()) {
        const bool two = plan.keyManagement == KeyManagement::OwnPassword;
        EXPECT_EQ(decrypt(placeOf(plan)), two ? CLPERR_KM_PASSWORD : 0) << plan.subject;
    }
}

TEST_F(SamplesInUse, EachKeyGivesItsRandomValueUnlessItHasNone)
{
    for (const auto& plan : holderPlans())
        EXPECT_EQ(readRandom(placeOf(plan)), plan.keyRandom ? 0 : CLPERR_NO_KEY_RANDOM) << plan.subject;
}

} // namespace
