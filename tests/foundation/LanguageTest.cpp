#include "Util.h"

#include <sys/wait.h>
#include <unistd.h>

#include "FoundationTest.h"

namespace {

/** A language pack with one text in each section. */
class LanguagePack : public testing::Test
{
protected:
    LanguagePack()
    {
        writeFile(m_path, "[UserInterface]\nDLG_OK=Okay\nDLG_LONG=" + std::string(2000, 'a') +
                              "\n[Message]\nMSG_OK=Done\n");
    }

    std::string m_path = TestHome::scratch("language") / "ENG.ini";
    std::vector<char> m_out = marked(1100);
};

/** True when `check` holds in a child process of a user whom the user database doesn't know. */
bool holdsForUnknownUser(bool (*check)())
{
    const pid_t child = fork();
    if (child == 0)
        _exit(setuid(54321) == 0 && check() ? 0 : 1);
    int status = 1;
    waitpid(child, &status, 0);
    return status == 0;
}

} // namespace

TEST(Util, TakesTheKoreanPackUnderTheHomeDirectory)
{
    const std::string home = TestHome::path();
    const CUtil util;
    EXPECT_EQ(util.m_nLanguage, 1);
    // The slash is doubled; the path stays as hosts know it.
    EXPECT_EQ(util.m_szLanguagePackPath, home + "/Zarvane/Quillgate//KOR.ini");
}

TEST(Util, LeavesThePathEmptyWhenTheUserHasNoHomeDirectory)
{
    if (getuid() != 0)
        GTEST_SKIP() << "needs root to become another user";
    EXPECT_TRUE(holdsForUnknownUser([] {
        const CUtil util;
        return util.m_nLanguage == 1 && !*util.m_szLanguagePackPath;
    }));
}

TEST(Util, TakesThePackOfTheLanguageInTheWorkDirectory)
{
    EXPECT_STREQ(CUtil(1, "/srv/quillgate").m_szLanguagePackPath, "/srv/quillgate/KOR.ini");
    EXPECT_STREQ(CUtil(2, "/srv/quillgate").m_szLanguagePackPath, "/srv/quillgate/ENG.ini");
    EXPECT_EQ(CUtil(2, "/srv/quillgate").m_nLanguage, 2);
}

TEST(Util, LeavesThePathEmptyForAnotherLanguageOrNoDirectory)
{
    EXPECT_STREQ(CUtil(3, "/srv/quillgate").m_szLanguagePackPath, "");
    EXPECT_EQ(CUtil(3, "/srv/quillgate").m_nLanguage, 3);
    EXPECT_STREQ(CUtil(1, nullptr).m_szLanguagePackPath, "");
}

TEST(Util, CutsAWorkDirectoryThatIsTooLong)
{
    const std::string directory(2000, 'd');
    EXPECT_EQ(CUtil(1, directory.c_str()).m_szLanguagePackPath, std::string(1023, 'd'));
}

TEST(Util, AnswersTheSameLanguageCodeWhateverTheLanguage)
{
    EXPECT_EQ(CUtil(1, "/w").GetLanguageCode(), 100);
    EXPECT_EQ(CUtil(2, "/w").GetLanguageCode(), 100);
}

TEST_F(LanguagePack, ReadsEachTextFromItsSection)
{
    CUtil::GetLanguageUIText(m_path.c_str(), "DLG_OK", 1024, m_out.data());
    EXPECT_STREQ(m_out.data(), "Okay");
    CUtil::GetLanguageMessageText(m_path.c_str(), "MSG_OK", 1024, m_out.data());
    EXPECT_STREQ(m_out.data(), "Done");
    CUtil::GetLanguageMessageText(m_path.c_str(), "DLG_OK", 1024, m_out.data());
    EXPECT_STREQ(m_out.data(), "");
}

TEST_F(LanguagePack, ClearsTheOutputForAMissingKeyOrFile)
{
    CUtil::GetLanguageUIText(m_path.c_str(), "DLG_NONE", 10, m_out.data());
    EXPECT_EQ(bytesOf(m_out).substr(0, 11), std::string(10, '\0') + "x");
    m_out = marked(11);
    CUtil::GetLanguageUIText("/nowhere/ENG.ini", "DLG_OK", 10, m_out.data());
    EXPECT_EQ(bytesOf(m_out), std::string(10, '\0') + "x");
}

TEST_F(LanguagePack, CopiesExactlyTheGivenLengthWithoutATerminator)
{
    CUtil::GetLanguageUIText(m_path.c_str(), "DLG_OK", 3, m_out.data());
    EXPECT_EQ(bytesOf(m_out).substr(0, 4), "Okax");
}

TEST_F(LanguagePack, CutsATextAt1023Bytes)
{
    CUtil::GetLanguageUIText(m_path.c_str(), "DLG_LONG", 1100, m_out.data());
    EXPECT_EQ(std::string(m_out.data()), std::string(1023, 'a'));
}

TEST_F(LanguagePack, RefusesAnOutputWithoutRoom)
{
    CUtil::GetLanguageUIText(m_path.c_str(), "DLG_OK", 0, m_out.data());
    CUtil::GetLanguageUIText(m_path.c_str(), "DLG_OK", -5, m_out.data());
    CUtil::GetLanguageUIText(m_path.c_str(), "DLG_OK", 10, nullptr);
    EXPECT_EQ(m_out, marked(1100));
    CUtil::GetLanguageUIText(nullptr, nullptr, 10, m_out.data());
    EXPECT_STREQ(m_out.data(), "");
}
