#include "BoundedText.h"

#include "FoundationTest.h"

TEST(CopyText, CutsALongerSourceToTheSizeLessOne)
{
    char target[4] = "abc";
    copyText(target, "12345");
    EXPECT_STREQ(target, "123");
}

TEST(CopyText, KeepsTheTargetForANullOrEmptySource)
{
    char target[4] = "abc";
    copyText(target, nullptr);
    copyText(target, "");
    EXPECT_STREQ(target, "abc");
}

TEST(CopyText, DoesNothingWithoutATarget)
{
    char target[1] = {'x'};
    copyText(nullptr, 8, "text");
    copyText(target, 0, "text");
    EXPECT_EQ(target[0], 'x');
}

TEST(CopyText, ReadsNoFurtherThanTheLimit)
{
    const std::vector<char> unterminated(3, 'y');
    char target[4] = {};
    copyText(target, unterminated.data());
    EXPECT_STREQ(target, "yyy");
}

TEST(CopyField, FillsWithZerosBehindAShorterText)
{
    auto target = marked(6);
    copyField(target.data(), 5, "ab");
    EXPECT_EQ(bytesOf(target), std::string("ab\0\0\0x", 6));
}

TEST(CopyField, WritesNoTerminatorForALongerText)
{
    auto target = marked(4);
    copyField(target.data(), 3, "abcdef");
    EXPECT_EQ(bytesOf(target), "abcx");
}

TEST(JoinText, CutsInAnyPieceAndTerminates)
{
    char target[6];
    EXPECT_EQ(joinText(target, {"ab", "cd", "efg", "h"}), 5u);
    EXPECT_STREQ(target, "abcde");
    EXPECT_EQ(joinText(target, {}), 0u);
    EXPECT_STREQ(target, "");
}
