// quillgate-samples as a user runs it: the trees, the work directory, options, refusals and failures.

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "SampleRun.h"
#include "TestHome.h"

namespace fs = std::filesystem;
using testing::HasSubstr;

namespace {

constexpr int secondsOfDay = 86400;

bool validAfter(const fs::path& certificate, int seconds)
{
    return runCommand({"openssl", "x509", "-inform", "der", "-in", certificate.string(), "-noout",
                       "-checkend", std::to_string(seconds)})
               .status == 0;
}

TEST_F(Samples, PrintsALineForEachHolder)
{
    EXPECT_GE(rows().size(), 12U);
    EXPECT_EQ(rows().size(), signingCertificates().size());
    for (const auto& row : rows())
        EXPECT_FALSE(signingCertificate(row).empty()) << row.name;
}

TEST_F(Samples, CoversTheTreesInSeveralSpellings)
{
    for (const char* tree : {"NPKI/yessign/USER", "NPKI/YESSIGN/USER", "NPKI/KICA/USER",
                             "NPKI/SignKorea/USER", "NPKI/signGATE/USER", "npki/kica/user",
                             "GPKI/Certificate/class2", "gpki/certificate/class1", "MPKI/User"})
        EXPECT_TRUE(fs::is_directory(directory / "home" / tree)) << tree;
}

TEST_F(Samples, HasBothFormsOfMpki)
{
    const auto files = homeFiles({"_sig.cer", "signcert.der"});
    const auto below = [&](const fs::path& file) {
        return file.parent_path() == directory / "home/MPKI/User";
    };
    const auto holder = [&](const fs::path& file) {
        return file.parent_path().parent_path() == directory / "home/MPKI/User";
    };
    EXPECT_EQ(std::count_if(files.begin(), files.end(), below), 1);
    EXPECT_EQ(std::count_if(files.begin(), files.end(), holder), 1);
}

TEST_F(Samples, HasKeyManagementPairsForGpki)
{
    EXPECT_EQ(homeFiles({"_env.cer"}).size(), 4U); // three of GPKI, one of MPKI
    EXPECT_EQ(homeFiles({"_env.key"}).size(), 4U);
}

TEST_F(Samples, NobodyElseReadsAnything)
{
    for (const auto& entry : fs::recursive_directory_iterator(directory)) {
        if (entry.is_symlink())
            continue;
        const auto mode = fs::perms(entry.is_directory() ? 0700 : 0600);
        EXPECT_EQ(entry.status().permissions(), mode) << entry.path();
    }
    EXPECT_EQ(fs::status(directory).permissions(), fs::perms(0700));
}

TEST_F(Samples, TheWorkDirectoryIsComplete)
{
    std::set<std::string> expected;
    for (const auto& entry : fs::directory_iterator(QUILLGATE_WORKDIR))
        expected.insert(entry.path().filename().string());
    EXPECT_EQ(namesBelow(directory / "work"), expected);
    for (const char* name :
         {"KOR.ini", "ENG.ini", "IssuerOid.conf", "IssuerOid_Eng.conf", "ZRCToolkitV30.conf", "gpkiapi.conf",
          "zrapilog.ini", "libZRToolkitV30-v3.4.2.20.so", "libgpkiapi_v15.so"})
        EXPECT_TRUE(expected.contains(name)) << name;
    for (const char* name : {"ZRCToolkitV30.conf", "gpkiapi.conf"})
        EXPECT_EQ(readFile(directory.string() + "/work\\" + name), readFile(directory / "work" / name));
}

TEST_F(Samples, ADirectoryThatHoldsCertificatesIsRefused)
{
    const auto before = namesBelow(directory);
    const auto again = runSamples({directory.string()});
    EXPECT_EQ(again.status, 1);
    EXPECT_THAT(again.output, HasSubstr("there are certificates or keys already"));
    EXPECT_EQ(namesBelow(directory), before);
}

TEST(SamplesProgram, RefusesASingleKeyDeepBelow)
{
    const fs::path directory = TestHome::scratch("taken");
    writeFile(directory / "a/b/SIGNPRI.KEY", "key");
    EXPECT_EQ(runSamples({directory.string()}).status, 1);
    EXPECT_EQ(namesBelow(directory), (std::set<std::string>{"a", "a/b", "a/b/SIGNPRI.KEY"}));
}

TEST(SamplesProgram, LeavesNothingBehindWhenANameIsTaken)
{
    const fs::path directory = TestHome::scratch("taken");
    writeFile(directory / "work", "mine");
    const auto result = runSamples({directory.string()});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.output, HasSubstr("the name is taken"));
    EXPECT_EQ(namesBelow(directory), std::set<std::string>{"work"});
    EXPECT_EQ(readFile(directory / "work"), "mine");
}

TEST(SamplesProgram, RemovesTheDirectoryThatItMadeWhenItFails)
{
    const fs::path directory = TestHome::scratch("failing");
    fs::create_directories(directory / "workdir/a directory that is not copied");
    const auto result =
        runSamples({(directory / "new").string(), "--workdir", (directory / "workdir").string()});
    EXPECT_EQ(result.status, 1) << result.output;
    EXPECT_FALSE(fs::exists(directory / "new"));
}

TEST(SamplesProgram, TakesAPasswordAndANumberOfDays)
{
    const fs::path directory = TestHome::scratch("chosen");
    ASSERT_EQ(runSamples({directory.string(), "--password", "비밀 번호", "--days", "200"}).status, 0);
    const fs::path file = directory / "home/GPKI/Certificate/class2/850성춘향001_sig.cer";
    EXPECT_FALSE(openKey(keyOf(file), "비밀 번호").empty());
    EXPECT_TRUE(validAfter(file, 199 * secondsOfDay));
    EXPECT_FALSE(validAfter(file, 201 * secondsOfDay));
}

TEST(SamplesProgram, ExplainsItself)
{
    const auto help = runSamples({"--help"});
    EXPECT_EQ(help.status, 0);
    for (const char* option : {"--password", "--days", "--workdir", "Refuses"})
        EXPECT_THAT(help.output, HasSubstr(option));
}

TEST(SamplesProgram, RefusesOptionsThatMakeNoSense)
{
    const std::string directory = (TestHome::scratch("options") / "new").string();
    EXPECT_NE(runSamples({}).status, 0);
    EXPECT_NE(runSamples({directory, "--days", "5"}).status, 0);
    EXPECT_NE(runSamples({directory, "--password", ""}).status, 0);
    EXPECT_NE(runSamples({directory, "--workdir", "/nonexistent"}).status, 0);
    EXPECT_FALSE(fs::exists(directory));
}

} // namespace
