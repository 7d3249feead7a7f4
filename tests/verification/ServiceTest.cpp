/* A host's verification over the real list service, the open toolkit and a real directory. */

#include <chrono>
#include <map>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BoundedText.h"
#include "Scenes.h"
#include "TestHome.h"
#include "quillgate/certlist.h"
#include "quillgate/returncodes.h"

using testing::StartsWith;

namespace {

struct Host
{
    const char* name;
    int toolkit;
    const char* language;
};

void PrintTo(const Host& host, std::ostream* out)
{
    *out << host.name;
}

} // namespace

/** A session over all scenes, with the home directory's list. */
class Service : public testing::TestWithParam<Host>
{
protected:
    void SetUp() override
    {
        LOADOPT option{};
        option.nLibAPIType = GetParam().toolkit;
        copyText(option.szWorkDir, scenes.workDirectory().c_str());
        LOADCERTOPT filter{};
        filter.nCertCAType = CERTTYPE_GPKI | CERTTYPE_NPKI | CERTTYPE_MPKI;
        ASSERT_EQ(CLP_Initalize(&handle, &option, nullptr), 0);
        ASSERT_EQ(CLP_SetType(handle, &filter), 0);
        ASSERT_EQ(CLP_SetMediaType(handle, MEDIA_HARDDISK, 0), 0);
        ASSERT_EQ(CLP_LoadCertList(handle), 0);
        ASSERT_EQ(CLP_GetCertCount(handle), static_cast<int>(scenes.all().size()));
        for (int i = 0; i < CLP_GetCertCount(handle); ++i) {
            CERTINFO record{};
            ASSERT_EQ(CLP_GetCertInfo(handle, i, &record), 0);
            places[record.szSubjectCN] = i;
        }
    }
    void TearDown() override { CLP_UnInitalize(handle); }

    int searchRoot()
    {
        char root[] = "root";
        return CLP_SearchFileList(handle, root, nullptr);
    }

    int verify(const std::string& holder)
    {
        detail[0] = '\0';
        return CLP_VerifyCert(handle, places.at(holder), sizeof(detail), detail);
    }

    Scenes scenes{GetParam().language};
    std::map<std::string, int> places;
    void* handle = nullptr;
    char detail[1024] = {};
};
INSTANTIATE_TEST_SUITE_P(Hosts, Service,
                         testing::Values(Host{"ZrtkKorean", TOOLKIT_ZRTK, "KOR"},
                                         Host{"ZrtkEnglish", TOOLKIT_ZRTK, "ENG"},
                                         Host{"GpkiKorean", TOOLKIT_GPKI, "KOR"},
                                         Host{"GpkiEnglish", TOOLKIT_GPKI, "ENG"}),
                         [](const auto& host) { return host.param.name; });

TEST_P(Service, EveryVerdictIsRightAndNamesCertificateAndCheck)
{
    EXPECT_EQ(verify("good"), QG_NO_MEMORY) << "no drives listed yet";
    ASSERT_EQ(searchRoot(), 0);
    for (const Scene& scene : scenes.all()) {
        const auto start = std::chrono::steady_clock::now();
        const bool good = scene.code == qgtk::Code::Ok;
        EXPECT_EQ(verify(scene.holder), good ? 0 : CLPERR_CERT_VERIFY) << scene.holder << ": " << detail;
        // Three seconds is the limit of each operation; without one a stalling server never ends.
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20)) << scene.holder;
        const std::string told = detail;
        if (good)
            EXPECT_EQ(told, "") << scene.holder;
        else
            EXPECT_THAT(told, StartsWith(scenes.textOf(scene))) << scene.holder;
    }
}
