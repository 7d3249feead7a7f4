#include "iniFile.h"

#include <csignal>
#include <filesystem>
#include <sys/resource.h>
#include <utility>

#include "FoundationTest.h"
#include "Util.h"

namespace {

CIniFile fromText(const char* text, bool expected = true)
{
    CIniFile ini;
    EXPECT_EQ(ini.ReadString(text), expected);
    return ini;
}

class IniOnDisk : public testing::Test
{
protected:
    std::string m_path = TestHome::scratch("ini") / "settings.ini";
    CIniFile m_ini{m_path};
};

} // namespace

TEST(IniFile, KeepsNamesAndValuesAsTheyWereWritten)
{
    const CIniFile ini = fromText("[A]\nName = value ; x \nb=\n");
    EXPECT_EQ(ini.KeyName(0), "A");
    EXPECT_EQ(ini.ValueName(0, 0), "Name ");
    EXPECT_EQ(ini.GetValue("A", "name"), " value ; x ");
    EXPECT_EQ(ini.GetValue("A", "b", "default"), "");
    EXPECT_EQ(ini.GetValue("A", "c", "default"), "default");
    EXPECT_EQ(ini.GetValue("B", "b", "default"), "default");
}

TEST(IniFile, KeepsASectionThatIsReadTwiceAndSetsValuesInTheFirst)
{
    const CIniFile ini = fromText("[A]\nx=1\n[a]\ny=2\n");
    EXPECT_EQ(ini.NumKeys(), 2u);
    EXPECT_EQ(ini.FindKey("A"), 0);
    EXPECT_EQ(ini.NumValues(0u), 2u);
    EXPECT_EQ(ini.NumValues(1), 0u);
    EXPECT_EQ(ini.GetValue(0, 1), "2");
}

TEST(IniFile, PutsAValueBeforeAnySectionIntoOneWithoutAName)
{
    const CIniFile ini = fromText("x=1\n[A]\ny=2\n");
    EXPECT_EQ(ini.GetNumKeys(), 2u);
    EXPECT_EQ(ini.GetKeyName(0), "");
    EXPECT_EQ(ini.GetValue("", "x"), "1");
}

TEST(IniFile, SkipsALineWithABracketThatDoesNotClose)
{
    const CIniFile ini = fromText("[A]\n[B\n]C[\nx=1\n");
    EXPECT_EQ(ini.NumKeys(), 1u);
    EXPECT_EQ(ini.GetValue("A", "x"), "1");
}

TEST(IniFile, SkipsALineWithoutAMark)
{
    const CIniFile ini = fromText("[A]\n   \ntext\n\nx=1\n");
    EXPECT_EQ(ini.NumValues("A"), 1u);
    EXPECT_EQ(ini.NumKeyComments("A"), 0u);
}

TEST(IniFile, LetsTheFirstMarkDecideWhatALineIs)
{
    const CIniFile ini = fromText("a[b]=c\nx;y=z\nk=[v]\n");
    EXPECT_EQ(ini.KeyName(0), "b");
    EXPECT_EQ(ini.KeyComment("b", 0), "y=z");
    EXPECT_EQ(ini.GetValue("b", "k"), "[v]");
}

TEST(IniFile, TakesTheLastClosingBracketOfALine)
{
    EXPECT_EQ(fromText("[a]b]\n").KeyName(0), "a]b");
}

TEST(IniFile, TakesCommentsOfTheHeadAndOfSections)
{
    const CIniFile ini = fromText(";head\ntext # head too\n[A]\n#of A\n[B]\n;of B\n");
    EXPECT_EQ(ini.NumHeaderComments(), 2u);
    EXPECT_EQ(ini.HeaderComment(1), " head too");
    EXPECT_EQ(ini.KeyComment("A", 0), "of A");
    EXPECT_EQ(ini.KeyComment(1, 0), "of B");
}

TEST(IniFile, FailsForCommentsAloneAndKeepsThem)
{
    EXPECT_EQ(fromText(";only\n", false).NumHeaderComments(), 1u);
    fromText("", false);
    fromText(nullptr, false);
}

TEST(IniFile, RemovesTheCarriageReturnOfALine)
{
    const CIniFile ini = fromText("[A]\r\nx=1\r\n\r\n");
    EXPECT_EQ(ini.GetValue("A", "x"), "1");
}

TEST(IniFile, StopsAtALineThatBeginsWithAnUnprintableCharacter)
{
    testing::internal::CaptureStdout();
    const CIniFile ini = fromText("[A]\nx=1\n\xEF\xBB\xBF[B]\ny=2\n", false);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Failing on char -17\n");
    EXPECT_EQ(ini.NumKeys(), 1u);
    EXPECT_EQ(ini.GetValue("A", "x"), "1");
    testing::internal::CaptureStdout();
    fromText("[A]\n\tx=1\n", false);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Failing on char 9\n");
}

TEST(IniFile, AByteOrderMarkEndsTheReadBeforeItsFirstLine)
{
    for (const std::string text : {"\xEF\xBB\xBF[A]\nx=1\n", "\xEF\xBB\xBF", "\xFF\xFE[\nA]\n"}) {
        testing::internal::CaptureStdout();
        const CIniFile ini = fromText(text.c_str(), false);
        EXPECT_EQ(testing::internal::GetCapturedStdout(),
                  text[0] == '\xFF' ? "Failing on char -1\n" : "Failing on char -17\n");
        EXPECT_EQ(ini.NumKeys(), 0u);
    }
}

TEST(IniFile, ATextWithoutASectionGivesOneWithoutAName)
{
    const CIniFile ini = fromText("a=1\nb=2\n;c\n A = 3\n");
    EXPECT_EQ(ini.NumKeys(), 1u);
    EXPECT_EQ(ini.KeyName(0), "");
    EXPECT_EQ(ini.NumValues(0u), 2u);
    EXPECT_EQ(ini.GetValue("", "a"), " 3");
    EXPECT_EQ(ini.KeyComment("", 0), "c");
    fromText("no mark at all\n", false);
}

TEST(IniFile, LinesOfAMegabyteAreReadWhole)
{
    const std::string megabyte(1 << 20, 'v');
    const CIniFile ini = fromText(
        ("[" + megabyte + "]\n" + megabyte + "=" + megabyte + "\n;" + megabyte + "\n" + megabyte).c_str());
    EXPECT_EQ(ini.KeyName(0), megabyte);
    EXPECT_EQ(ini.GetValue(megabyte, megabyte), megabyte);
    EXPECT_EQ(ini.KeyComment(0, 0), megabyte);
    EXPECT_EQ(ini.NumValues(0u), 1u);
}

TEST(IniFile, ALookUpOfManyLinesCostsNoMoreThanTheyAre)
{
    // One section of many values and many sections of one: minutes, if each line went through all names.
    std::string text = "[A]\n";
    for (int i = 0; i < 100'000; ++i)
        text += "name" + std::to_string(i) + "=value\n";
    for (int i = 0; i < 100'000; ++i)
        text += "[section" + std::to_string(i) + "]\nx=1\n;c\n";
    const CIniFile ini = fromText(text.c_str());
    EXPECT_EQ(ini.NumKeys(), 100'001u);
    EXPECT_EQ(ini.NumValues(0u), 100'000u);
}

TEST(IniFile, ASecondReadFindsWhatTheFirstLeft)
{
    CIniFile ini = fromText("x=0\n[A]\nx=1\n[B]\n");
    EXPECT_TRUE(ini.ReadString("X=nameless\n;c\n[ a ]\nX=2\ny=3\n;of A\n[b]\nz=4\n"));
    EXPECT_EQ(ini.NumKeys(), 5u) << "each section line appends";
    EXPECT_EQ(ini.GetValue("", "x"), "nameless");
    EXPECT_EQ(std::as_const(ini).KeyComment("", 0), "c");
    EXPECT_EQ(ini.GetValue(1, 0), "2") << "values go to the first of the name";
    EXPECT_EQ(ini.GetValue(1, 1), "3");
    EXPECT_EQ(std::as_const(ini).KeyComment(1, 0), "of A");
    EXPECT_EQ(ini.GetValue(2, 0), "4");
    EXPECT_EQ(ini.NumValues(3) + ini.NumValues(4), 0u);
}

TEST(IniFile, ACommentAheadOfTheFirstSectionOfASecondReadIsDropped)
{
    CIniFile ini = fromText("[A]\n");
    EXPECT_TRUE(ini.ReadString(";nowhere\n[B]\n"));
    EXPECT_EQ(ini.NumHeaderComments() + ini.NumKeyComments("A") + ini.NumKeyComments("B"), 0u);
}

TEST(IniFile, ACaseSensitiveReadKeepsNamesApart)
{
    CIniFile ini;
    ini.CaseSensitive();
    EXPECT_TRUE(ini.ReadString("[A]\nx=1\nX=2\nx =3\n[a]\nx=4\n"));
    EXPECT_EQ(ini.NumValues("A"), 2u);
    EXPECT_EQ(ini.GetValue("A", "x"), "3");
    EXPECT_EQ(ini.GetValue("a", "x"), "4");
}

TEST(IniFile, IgnoresWhiteSpaceAroundANameInEitherMode)
{
    CIniFile ini = fromText("[ Section ]\n name =1\n");
    EXPECT_EQ(ini.GetValue("\tSECTION\v", "  Name\a\b"), "1");
    ini.CaseSensitive();
    EXPECT_EQ(ini.FindKey("SECTION"), CIniFile::noID);
    EXPECT_EQ(ini.GetValue(" Section", "name "), "1");
    EXPECT_EQ(ini.GetValue("Section", "Name"), "");
    ini.CaseInsensitive();
    EXPECT_EQ(ini.GetValue("section", "NAME"), "1");
    EXPECT_EQ(ini.CheckCase(" \t\r\n"), "");
}

TEST(IniFile, AnswersNoIdForWhatIsNotThere)
{
    const CIniFile empty;
    EXPECT_EQ(empty.FindKey("A"), -1);
    EXPECT_EQ(empty.FindValue(0, "x"), -1);
    const CIniFile ini = fromText("[A]\nx=1\n");
    EXPECT_EQ(ini.FindValue(1, "x"), -1);
    EXPECT_EQ(ini.FindValue(0, "y"), -1);
    EXPECT_EQ(ini.FindValue(0, "X"), 0);
    EXPECT_EQ(ini.KeyName(1), "");
    EXPECT_EQ(ini.ValueName(0, 1), "");
    EXPECT_EQ(ini.ValueName("B", 0), "");
    EXPECT_EQ(ini.GetValueName("A", 0), "x");
    EXPECT_EQ(ini.GetValueName(0, 0), "x");
    EXPECT_EQ(ini.GetNumValues("B"), 0u);
    EXPECT_EQ(ini.GetNumValues(0u), 1u);
    EXPECT_EQ(ini.GetValue(0, 1, "default"), "default");
}

TEST(IniFile, ReadsNumbersAsAtoiDoes)
{
    const CIniFile ini = fromText("[A]\ni=42 apples\nf=2.5\nt=text\n");
    EXPECT_EQ(ini.GetValueI("A", "i", 7), 42);
    EXPECT_EQ(ini.GetValueI("A", "t", 7), 0);
    EXPECT_EQ(ini.GetValueI("A", "none", 7), 7);
    EXPECT_EQ(ini.GetValueI("A", "none", -2147483647 - 1), -2147483647 - 1);
    EXPECT_DOUBLE_EQ(ini.GetValueF("A", "f", 7), 2.5);
    EXPECT_DOUBLE_EQ(ini.GetValueF("A", "t", 7), 0);
    EXPECT_DOUBLE_EQ(ini.GetValueF("A", "none", 1e300), 1e300);
    EXPECT_TRUE(ini.GetValueB("A", "i"));
    EXPECT_FALSE(ini.GetValueB("A", "none"));
    EXPECT_TRUE(ini.GetValueB("A", "none", true));
}

TEST(IniFile, ReadsFieldsAsSscanfDoes)
{
    const CIniFile ini = fromText("[A]\nsize=3 x 4\n");
    int width = 0;
    int height = 0;
    EXPECT_EQ(ini.GetValueV("A", "size", "%d x %d", &width, &height), 2);
    EXPECT_EQ(width * 10 + height, 34);
    EXPECT_EQ(ini.GetValueV("A", "none", "%d", &width), 0);
}

TEST(IniFile, OverwritesByIndexAndAnswersFalseAllTheSame)
{
    CIniFile ini = fromText("[A]\nx=1\n");
    EXPECT_FALSE(ini.SetValue(0, 0, "2"));
    EXPECT_EQ(ini.GetValue("A", "x"), "2");
    EXPECT_FALSE(ini.SetValue(0, 1, "3"));
    EXPECT_FALSE(ini.SetValue(1, 0, "3"));
    EXPECT_EQ(ini.NumValues("A"), 1u);
}

TEST(IniFile, CreatesSectionsAndValuesOnlyWhenAsked)
{
    CIniFile ini = fromText("[A]\nx=1\n");
    EXPECT_FALSE(ini.SetValue("B", "x", "2", false));
    EXPECT_FALSE(ini.SetValue("A", "y", "2", false));
    EXPECT_TRUE(ini.SetValue("a", "X", "2", false));
    EXPECT_EQ(ini.GetValue("A", "x"), "2");
    EXPECT_EQ(ini.ValueName(0, 0), "x");
    EXPECT_TRUE(ini.SetValue("B", "x", "3"));
    EXPECT_EQ(ini.GetValue(1, 0), "3");
}

TEST(IniFile, NumbersAndFormattedValuesAreAlwaysCreated)
{
    CIniFile ini;
    EXPECT_TRUE(ini.SetValueI("A", "i", -5, false));
    EXPECT_TRUE(ini.SetValueF("A", "f", 0.5, false));
    EXPECT_TRUE(ini.SetValueB("A", "b", true, false));
    EXPECT_TRUE(ini.SetValueV("A", "v", "%d-%s", 1, "a"));
    EXPECT_EQ(ini.GetValue("A", "i"), "-5");
    EXPECT_EQ(ini.GetValue("A", "f"), "0.500000");
    EXPECT_EQ(ini.GetValue("A", "b"), "1");
    EXPECT_EQ(ini.GetValue("A", "v"), "1-a");
    EXPECT_TRUE(ini.SetValueV("A", "long", "%s", std::string(5000, 'v').c_str()));
    EXPECT_EQ(ini.GetValue("A", "long").size(), 2047u);
}

TEST(IniFile, DeletesValuesAndSections)
{
    CIniFile ini = fromText("[A]\nx=1\ny=2\n[B]\nz=3\n");
    EXPECT_TRUE(ini.DeleteValue("a", "X"));
    EXPECT_FALSE(ini.DeleteValue("A", "x"));
    EXPECT_FALSE(ini.DeleteValue("C", "x"));
    EXPECT_EQ(ini.GetValue("A", "y"), "2");
    EXPECT_TRUE(ini.DeleteKey("A"));
    EXPECT_FALSE(ini.DeleteKey("A"));
    EXPECT_EQ(ini.GetValue("B", "z"), "3");
    EXPECT_EQ(ini.KeyName(0), "B");
}

TEST(IniFile, HandlesComments)
{
    CIniFile ini = fromText(";one\n;two\n[A]\n;a\n;b\n");
    EXPECT_FALSE(ini.DeleteHeaderComment(2));
    EXPECT_TRUE(ini.DeleteHeaderComment(0));
    EXPECT_EQ(std::as_const(ini).HeaderComment(0), "two");
    EXPECT_EQ(ini.HeaderComment(1), "");
    ini.DeleteHeaderComments();
    EXPECT_EQ(ini.NumHeaderComments(), 0u);

    EXPECT_TRUE(ini.KeyComment("A", "c"));
    EXPECT_TRUE(ini.KeyComment(0, "d"));
    EXPECT_FALSE(ini.KeyComment("B", "c"));
    EXPECT_EQ(ini.NumKeyComments(0u), 4u);
    EXPECT_TRUE(ini.DeleteKeyComment("A", 0));
    EXPECT_FALSE(ini.DeleteKeyComment(0, 3));
    EXPECT_FALSE(ini.DeleteKeyComment("B", 0));
    EXPECT_EQ(std::as_const(ini).KeyComment("A", 0), "b");
    EXPECT_EQ(ini.KeyComment("A", 9), "");
    EXPECT_EQ(std::as_const(ini).KeyComment("B", 0), "");
    EXPECT_EQ(ini.NumKeyComments("B"), 0u);
    EXPECT_TRUE(ini.DeleteKeyComments("A"));
    EXPECT_FALSE(ini.DeleteKeyComments(7));
    EXPECT_EQ(ini.NumKeyComments("A"), 0u);
}

TEST(IniFile, ErasesEverythingButThePath)
{
    for (auto erase : {&CIniFile::Erase, &CIniFile::Clear, &CIniFile::Reset}) {
        CIniFile ini("/path");
        ini.ReadString(";c\n[A]\nx=1\n");
        (ini.*erase)();
        EXPECT_EQ(ini.NumKeys() + ini.NumHeaderComments(), 0u);
        EXPECT_EQ(ini.Path(), "/path");
        EXPECT_EQ(ini.FindKey("A"), CIniFile::noID);
    }
}

TEST(IniFile, TrimValueStripsBlanksAlone)
{
    std::string text = "  \ta b ";
    CIniFile::TrimValue(text);
    EXPECT_EQ(text, "\ta b");
    text = "   ";
    CIniFile::TrimValue(text);
    EXPECT_EQ(text, "");
}

TEST_F(IniOnDisk, WritesCommentsWithSemicolonsAndCrLf)
{
    m_ini.ReadString("#head\n[A]\nx=1\n#a\ny= 2\n[B]\n");
    EXPECT_TRUE(m_ini.WriteFile());
    EXPECT_EQ(readFile(m_path), ";head\r\n\r\n[A]\r\n;a\r\nx=1\r\ny= 2\r\n\r\n[B]\r\n\r\n");
    CIniFile again(m_path);
    EXPECT_TRUE(again.ReadFile());
    EXPECT_EQ(again.GetValue("A", "y"), " 2");
}

TEST_F(IniOnDisk, EmptiesTheFileBeforeItWrites)
{
    writeFile(m_path, std::string(1000, 'x'));
    m_ini.AddKeyName("A");
    EXPECT_TRUE(m_ini.WriteFile());
    EXPECT_EQ(readFile(m_path), "[A]\r\n\r\n");
}

TEST_F(IniOnDisk, ReportsAMissingFileAndDirectory)
{
    EXPECT_FALSE(m_ini.ReadFile());
    m_ini.SetPath("/nowhere/settings.ini");
    EXPECT_FALSE(m_ini.WriteFile());
    m_ini.Path("");
    EXPECT_FALSE(m_ini.ReadFile());
}

TEST_F(IniOnDisk, AZeroByteIsAnOrdinaryCharacterButForTheFirst)
{
    using namespace std::string_literals;
    writeFile(m_path, "[A\0B]\nx\0y=1\0002\nz=3\n"s);
    EXPECT_TRUE(m_ini.ReadFile());
    EXPECT_EQ(m_ini.KeyName(0), "A\0B"s);
    EXPECT_EQ(m_ini.GetValue(0, 0), "1\0002"s);
    EXPECT_EQ(m_ini.GetValue(0, 1), "3");
    writeFile(m_path, "[B]\nx=1\n\0[C]\n"s);
    testing::internal::CaptureStdout();
    EXPECT_FALSE(m_ini.ReadFile());
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Failing on char 0\n");
    EXPECT_EQ(m_ini.NumKeys(), 2u);
}

TEST_F(IniOnDisk, AFileOfZerosIsRefusedAtItsFirst)
{
    writeFile(m_path, std::string(1 << 20, '\0'));
    testing::internal::CaptureStdout();
    EXPECT_FALSE(m_ini.ReadFile());
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Failing on char 0\n");
}

TEST_F(IniOnDisk, AddsASecondReadToTheFirst)
{
    writeFile(m_path, "[A]\nx=1\n");
    EXPECT_TRUE(m_ini.ReadFile());
    writeFile(m_path, "[B]\nx=2\n");
    EXPECT_TRUE(m_ini.ReadFile());
    EXPECT_EQ(m_ini.NumKeys(), 2u);
}

TEST_F(IniOnDisk, AFifoOrADirectoryIsNoFileAndDoesNotBlock)
{
    ASSERT_EQ(mkfifo(m_path.c_str(), 0600), 0);
    EXPECT_FALSE(m_ini.ReadFile());
    EXPECT_FALSE(m_ini.WriteFile());
    m_ini.SetPath(std::filesystem::path(m_path).parent_path());
    EXPECT_FALSE(m_ini.ReadFile());
    EXPECT_FALSE(m_ini.WriteFile());
}

TEST_F(IniOnDisk, AFileThatCannotBeWrittenWholeIsReported)
{
    signal(SIGXFSZ, SIG_IGN);
    rlimit earlier{};
    getrlimit(RLIMIT_FSIZE, &earlier);
    rlimit small = earlier;
    small.rlim_cur = 4;
    setrlimit(RLIMIT_FSIZE, &small);
    m_ini.AddKeyName("A");
    const bool written = m_ini.WriteFile();
    setrlimit(RLIMIT_FSIZE, &earlier);
    signal(SIGXFSZ, SIG_DFL);
    EXPECT_FALSE(written);
}

TEST(IniReadData, MakesAnObjectAndFeedsItRepeatedly)
{
    void* object = nullptr;
    EXPECT_EQ(CUtil::INIReadData("[A]\nx=1\n", &object), 0);
    ASSERT_NE(object, nullptr);
    void* const first = object;
    EXPECT_EQ(CUtil::INIReadData("[B]\ny=2\n", &object), 0);
    EXPECT_EQ(object, first);
    const auto* ini = static_cast<CIniFile*>(object);
    EXPECT_EQ(ini->Path(), "");
    EXPECT_EQ(ini->GetValue("A", "x") + ini->GetValue("B", "y"), "12");
    CUtil::INIFreeData(object);
}

TEST(IniReadData, AnswersZeroForAnEmptyOrUnreadableText)
{
    void* object = nullptr;
    EXPECT_EQ(CUtil::INIReadData("", &object), 0);
    EXPECT_NE(object, nullptr);
    EXPECT_EQ(CUtil::INIReadData(nullptr, &object), 0);
    EXPECT_EQ(CUtil::INIReadData(";comment only\n", &object), 0);
    CUtil::INIFreeData(object);
    CUtil::INIFreeData(nullptr);
    EXPECT_EQ(CUtil::INIReadData("[A]", nullptr), 10004);
}
