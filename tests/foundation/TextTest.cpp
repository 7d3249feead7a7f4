#include "Util.h"

#include <cerrno>

#include "AllocationHooks.h"
#include "FoundationTest.h"

namespace {

std::string folded(void (*fold)(LPBYTE), std::string text)
{
    fold(reinterpret_cast<LPBYTE>(text.data()));
    return text;
}

std::string withoutDelimiters(int (*trim)(char*, char*), std::string text)
{
    auto out = marked(100);
    const int length = trim(text.data(), out.data());
    EXPECT_EQ(length, static_cast<int>(strlen(out.data())));
    return out.data();
}

std::string replaced(const char* text, const char* before, const char* after)
{
    char out[100] = {};
    EXPECT_EQ(CUtil::ReplaceAll(text, before, after, sizeof(out), out), 0);
    return out;
}

} // namespace

TEST(FoldCase, ChangesAsciiLettersOnly)
{
    EXPECT_EQ(folded(CUtil::ToLower, "AZaz09[@{`"), "azaz09[@{`");
    EXPECT_EQ(folded(CUtil::ToUpper, "AZaz09[@{`"), "AZAZ09[@{`");
}

TEST(FoldCase, PassesKoreanBytesUnchanged)
{
    // The second bytes of Korean characters may lie among the letters in wider code tables; these do not
    // fold.
    EXPECT_EQ(folded(CUtil::ToLower, "\xC7\xD1\xB1\xDB"), "\xC7\xD1\xB1\xDB");
    EXPECT_EQ(folded(CUtil::ToUpper, "\xE1\xFA"), "\xE1\xFA");
    CUtil::ToUpper(nullptr);
}

TEST(TrimData, RemovesTabsAndLineEndsEverywhere)
{
    EXPECT_EQ(withoutDelimiters(CUtil::TrimData, "\ta b\r\nc\n\n"), "a bc");
    EXPECT_EQ(withoutDelimiters(CUtil::TrimData, "\r\n"), "");
}

TEST(TrimDataSpace, RemovesBlanksEverywhere)
{
    EXPECT_EQ(withoutDelimiters(CUtil::TrimDataSpace, " a  b\tc "), "ab\tc");
}

TEST(TrimData, TakesItsInputApart)
{
    char in[] = "a\tb";
    char out[8] = {};
    CUtil::TrimData(in, out);
    EXPECT_EQ(std::string(in, 3), std::string("a\0b", 3));
    EXPECT_STREQ(out, "ab");
    EXPECT_EQ(CUtil::TrimData(nullptr, out), 0);
    EXPECT_EQ(CUtil::TrimData(in, nullptr), 0);
}

TEST(ReplaceData, ReplacesByTheFirstCharactersWithoutATerminator)
{
    auto out = marked(6);
    CUtil::ReplaceData("a-b-c", "-x", "+y", out.data());
    EXPECT_EQ(bytesOf(out), "a+b+cx");
}

TEST(ReplaceData, DoesNothingWithoutAnOutput)
{
    CUtil::ReplaceData("abc", "a", "b", nullptr);
    auto out = marked(3);
    CUtil::ReplaceData(nullptr, "a", "b", out.data());
    CUtil::ReplaceData("abc", nullptr, "b", out.data());
    CUtil::ReplaceData("abc", "a", nullptr, out.data());
    EXPECT_EQ(bytesOf(out), "xxx");
}

TEST(ReplaceAll, TurnsBlanksIntoPoints)
{
    EXPECT_EQ(replaced("1 2 3", " ", "."), "1.2.3");
}

TEST(ReplaceAll, ReplacesFromLeftToRightWithoutOverlap)
{
    EXPECT_EQ(replaced("aaaaa", "aa", "b"), "bba");
    EXPECT_EQ(replaced("ab", "ab", "abab"), "abab");
    EXPECT_EQ(replaced("a-b-", "-", ""), "ab");
    EXPECT_EQ(replaced("abc", "x", "y"), "abc");
    EXPECT_EQ(replaced("", "x", "y"), "");
}

TEST(ReplaceAll, FillsTheSizeLessOneAndLeavesTheLastByte)
{
    auto out = marked(6);
    EXPECT_EQ(CUtil::ReplaceAll("a b", " ", ".", 6, out.data()), 0);
    EXPECT_EQ(bytesOf(out), std::string("a.b\0\0x", 6));
    out = marked(4);
    EXPECT_EQ(CUtil::ReplaceAll("a b c d", " ", ".", 4, out.data()), 0);
    EXPECT_EQ(bytesOf(out), "a.bx");
}

TEST(ReplaceAll, MayWriteOverItsInput)
{
    char text[16] = "1 2 3";
    EXPECT_EQ(CUtil::ReplaceAll(text, " ", "--", sizeof(text), text), 0);
    EXPECT_STREQ(text, "1--2--3");
}

TEST(ReplaceAll, RefusesAnEmptyOldText)
{
    auto out = marked(4);
    EXPECT_EQ(CUtil::ReplaceAll("abc", "", "x", 4, out.data()), -1);
    EXPECT_EQ(CUtil::ReplaceAll("abc", nullptr, "x", 4, out.data()), -1);
    EXPECT_EQ(CUtil::ReplaceAll(nullptr, "a", "x", 4, out.data()), -1);
    EXPECT_EQ(CUtil::ReplaceAll("abc", "a", nullptr, 4, out.data()), -1);
    EXPECT_EQ(CUtil::ReplaceAll("abc", "a", "x", 4, nullptr), -1);
    EXPECT_EQ(bytesOf(out), "xxxx");
}

TEST(ReplaceAll, WritesNothingIntoNoRoom)
{
    auto out = marked(2);
    EXPECT_EQ(CUtil::ReplaceAll("abc", "a", "b", 1, out.data()), 0);
    EXPECT_EQ(CUtil::ReplaceAll("abc", "a", "b", 0, out.data()), 0);
    EXPECT_EQ(CUtil::ReplaceAll("abc", "a", "b", -3, out.data()), 0);
    EXPECT_EQ(bytesOf(out), "xx");
}

TEST(ReplaceAll, AnswersZeroAndWritesNothingWhenMemoryRunsOut)
{
    auto out = marked(4);
    const FailingAllocations none;
    EXPECT_EQ(CUtil::ReplaceAll("abc", "a", "b", 4, out.data()), 0);
    EXPECT_EQ(bytesOf(out), "xxxx");
}

TEST(WideText, IsNotAvailable)
{
    wchar_t wide[] = L"a";
    char narrow[] = "a";
    EXPECT_EQ(CUtil::WtoA(wide), nullptr);
    EXPECT_EQ(CUtil::AtoW(narrow), nullptr);
}

TEST(GetSystemError, IsErrno)
{
    errno = ENOTDIR;
    EXPECT_EQ(CUtil::GetSystemError(), ENOTDIR);
}
