#include "Binary.h"

#include "AllocationHooks.h"
#include "FoundationTest.h"
#include "Util.h"

namespace {

std::string bytesOf(const CBinary& binary)
{
    return {reinterpret_cast<const char*>(binary.m_pData), static_cast<std::size_t>(binary.m_nLen)};
}

/** A buffer of a literal's bytes, zeros included. */
template <std::size_t N>
CBinary binary(const char (&bytes)[N])
{
    return {bytes, static_cast<int>(N - 1)};
}

int findCount(const CBinary& source, const char* text, int& last)
{
    return CUtil::BinaryFindCount(source, text, last);
}

int findsOf(const CBinary& source, const char* text)
{
    int count = -1;
    CUtil::ParingFindCnt(source, text, &count);
    return count;
}

int linesOf(const char* text)
{
    int count = -1;
    CUtil::ParingFindCnt(text, 0, nullptr, &count);
    return count;
}

} // namespace

TEST(Binary, CopiesItsBytesAndEndsThemWithAZero)
{
    const CBinary data = binary("a\0b");
    EXPECT_EQ(bytesOf(data), std::string("a\0b", 3));
    EXPECT_EQ(data.m_pData[3], 0);
    EXPECT_FALSE(data.isEmpty());
}

TEST(Binary, IsEmptyForNoBytesNullOrANegativeLength)
{
    for (const CBinary& data : {CBinary(), CBinary("a", 0), CBinary(nullptr, 3), CBinary("a", -1)}) {
        EXPECT_TRUE(data.isEmpty());
        EXPECT_EQ(data.m_pData, nullptr);
        EXPECT_EQ(data.m_nLen, 0);
    }
}

TEST(Binary, CopiesDeeplyWithItsTextButNotItsHexadecimal)
{
    CBinary source = binary("abc");
    source.toString();
    source.toHexString();
    const CBinary copy(source);
    EXPECT_EQ(bytesOf(copy), "abc");
    EXPECT_NE(copy.m_pData, source.m_pData);
    EXPECT_NE(copy.m_pStr, source.m_pStr);
    EXPECT_STREQ(reinterpret_cast<char*>(copy.m_pStr), "abc");
    EXPECT_EQ(copy.m_pTempData, nullptr);
    EXPECT_EQ(CBinary(binary("abc")).m_pStr, nullptr);
}

TEST(Binary, CopiesATextThatIsOlderThanItsBytes)
{
    CBinary source = binary("a");
    source.toString();
    source = "a longer text";
    EXPECT_STREQ(reinterpret_cast<char*>(CBinary(source).m_pStr), "a");
}

TEST(Binary, EmptyFreesBytesAndText)
{
    CBinary data = binary("abc");
    data.toString();
    data.empty();
    EXPECT_EQ(data.m_pData, nullptr);
    EXPECT_EQ(data.m_pStr, nullptr);
    EXPECT_EQ(data.m_nLen, 0);
}

TEST(Binary, ZeroEmptyLeavesCDInTheFreedMemory)
{
    CBinary data = binary("secret");
    const FreedArrayWatch watch(data.m_pData, 6);
    data.zeroEmpty();
    EXPECT_EQ(watch.contents(), std::string(6, '\xCD'));
    EXPECT_TRUE(data.isEmpty());
    data.zeroEmpty();
}

TEST(Binary, ZeroEmptyOverwritesTheTextToo)
{
    CBinary data("se\0ret", 6);
    data.toString();
    const FreedArrayWatch watch(data.m_pStr, 6);
    data.zeroEmpty();
    EXPECT_EQ(watch.contents(), std::string(6, '\xCD'));
}

TEST(Binary, SetReplacesBytesAndDropsTheText)
{
    CBinary data = binary("abc");
    data.toString();
    data.set("xy", 2);
    EXPECT_EQ(bytesOf(data), "xy");
    EXPECT_EQ(data.m_pStr, nullptr);
    data.set("xy", 0);
    EXPECT_EQ(data.m_pData, nullptr);
}

TEST(Binary, AssignmentLeavesTheTextAlone)
{
    CBinary data = binary("abc");
    const char* text = data.toString();
    data = binary("xy");
    EXPECT_EQ(bytesOf(data), "xy");
    EXPECT_STREQ(text, "abc");
    data = CBinary();
    EXPECT_EQ(data.m_pData, nullptr);
    EXPECT_EQ(data.m_nLen, 0);
}

TEST(Binary, AssignsATextAndIsEmptyAfterNull)
{
    CBinary data;
    data = "text";
    EXPECT_EQ(bytesOf(data), "text");
    const CBinary& itself = data;
    data = itself;
    EXPECT_EQ(bytesOf(data), "text");
    data = static_cast<const char*>(nullptr);
    EXPECT_TRUE(data.isEmpty());
}

TEST(Binary, AddsInOrder)
{
    EXPECT_EQ(bytesOf(binary("a\0") + binary("b")), std::string("a\0b", 3));
    EXPECT_TRUE((CBinary() + CBinary()).isEmpty());
    EXPECT_EQ((CBinary() + CBinary()).m_pData, nullptr);
}

TEST(Binary, AppendsBytesTextAndItself)
{
    CBinary data = binary("a");
    data += binary("b");
    data += "cd";
    EXPECT_EQ(bytesOf(data), "abcd");
    data += data;
    EXPECT_EQ(bytesOf(data), "abcdabcd");
}

TEST(Binary, AppendingNothingDoesNothing)
{
    CBinary data = binary("a");
    const unsigned char* before = data.m_pData;
    data += CBinary();
    data += static_cast<const char*>(nullptr);
    EXPECT_EQ(data.m_pData, before);
    EXPECT_EQ(bytesOf(data), "a");
}

TEST(Binary, ComparesLengthsAndBytes)
{
    EXPECT_TRUE(CBinary() == CBinary());
    EXPECT_TRUE(binary("a\0b") == binary("a\0b"));
    EXPECT_TRUE(binary("a\0b") != binary("a\0c"));
    EXPECT_FALSE(binary("a") == binary("ab"));
    EXPECT_TRUE(CBinary() != binary("a"));
}

TEST(Binary, GetSubGivesThePartOrNothing)
{
    const CBinary data = binary("abcd");
    EXPECT_EQ(bytesOf(data.getSub(1, 2)), "bc");
    EXPECT_EQ(bytesOf(data.getSub(0, 4)), "abcd");
    EXPECT_TRUE(data.getSub(2, 3).isEmpty());
    EXPECT_TRUE(data.getSub(4, 1).isEmpty());
    EXPECT_TRUE(data.getSub(1, 0).isEmpty());
    EXPECT_TRUE(data.getSub(-1, 2).isEmpty());
    EXPECT_TRUE(data.getSub(1, -1).isEmpty());
    EXPECT_TRUE(data.getSub(1, 2147483647).isEmpty());
}

TEST(Binary, ToStringOfNothingIsNullOrAnEmptyText)
{
    CBinary data;
    EXPECT_EQ(data.toString(), nullptr);
    EXPECT_STREQ(data.toString(0), "");
    data = "text";
    EXPECT_STREQ(data.toString(), "text");
    EXPECT_STREQ(data.toString(1), "text");
}

TEST(Binary, ToHexStringIsLowerCaseAndNullForNothing)
{
    CBinary data = binary("\x00\x9F\xAB");
    EXPECT_STREQ(data.toHexString(), "009fab");
    EXPECT_STREQ(data.toHexString(), "009fab"); // the first text is released: the leak check sees to it
    EXPECT_EQ(CBinary().toHexString(), nullptr);
}

TEST(Binary, FromHexStringTakesBothCasesAndDropsAnOddDigit)
{
    CBinary data;
    EXPECT_EQ(data.fromHexString("abc"), 0);
    EXPECT_EQ(bytesOf(data), "\xAB");
    EXPECT_EQ(data.fromHexString("00fFA9"), 0);
    EXPECT_EQ(bytesOf(data), std::string("\x00\xFF\xA9", 3));
    EXPECT_EQ(data.fromHexString("a"), 0);
    EXPECT_EQ(data.m_pData, nullptr);
}

TEST(Binary, FromHexStringStopsAtAnInvalidCharacter)
{
    CBinary data = binary("old");
    EXPECT_EQ(data.fromHexString("zz"), -1);
    EXPECT_EQ(bytesOf(data), std::string(1, '\0'));
    EXPECT_EQ(data.fromHexString("41g142"), -1);
    EXPECT_EQ(bytesOf(data), std::string("A\0\0", 3));
    EXPECT_EQ(data.fromHexString(nullptr), -1);
    EXPECT_TRUE(data.isEmpty());
}

TEST(Binary, FindsTheFirstPosition)
{
    const CBinary data = binary("ab\0ab");
    EXPECT_EQ(data.find("b"), 1);
    EXPECT_EQ(data.find(reinterpret_cast<const unsigned char*>("\0a"), 2), 2);
    EXPECT_EQ(data.find("x"), -1);
    EXPECT_EQ(data.find(""), -1);
    EXPECT_EQ(data.find(nullptr), -1);
    EXPECT_EQ(data.find(reinterpret_cast<const unsigned char*>("a"), -1), -1);
    EXPECT_EQ(binary("abc").find("abcd"), -1);
}

TEST(BinaryParts, AreCutFromBothEndsAndTheMiddle)
{
    const CBinary source = binary("abcdef");
    CBinary part;
    CUtil::BinaryLeft(source, &part, 2);
    EXPECT_EQ(bytesOf(part), "ab");
    CUtil::BinaryMid(source, &part, 2, 3);
    EXPECT_EQ(bytesOf(part), "cde");
    CUtil::BinaryRight(source, &part, 2);
    EXPECT_EQ(bytesOf(part), "ef");
    EXPECT_EQ(bytesOf(source), "abcdef");
}

TEST(BinaryParts, AreEmptyBeyondTheSource)
{
    const CBinary source = binary("abc");
    CBinary part = binary("x");
    CUtil::BinaryLeft(source, &part, 4);
    EXPECT_TRUE(part.isEmpty());
    CUtil::BinaryRight(source, &part, 4);
    EXPECT_TRUE(part.isEmpty());
    CUtil::BinaryRight(source, &part, -2147483647 - 1);
    EXPECT_TRUE(part.isEmpty());
    CUtil::BinaryMid(source, nullptr, 0, 1);
}

TEST(BinaryFindCount, GivesTheLastPositionOfSeveral)
{
    int last = 0;
    EXPECT_EQ(findCount(binary("x.yz.w"), ".", last), 2);
    EXPECT_EQ(last, 4);
    EXPECT_EQ(findCount(binary("aaa"), "aa", last), 2);
    EXPECT_EQ(last, 1);
}

TEST(BinaryFindCount, GivesThePositionPlusOneOfASingleFind)
{
    int last = 0;
    EXPECT_EQ(findCount(binary("xy.z"), ".", last), 1);
    EXPECT_EQ(last, 3);
    EXPECT_EQ(findCount(binary("xyz"), ".", last), 0);
    EXPECT_EQ(last, -1);
    EXPECT_EQ(findCount(binary("xyz"), nullptr, last), 0);
}

TEST(BinaryFind2, SearchesTheWholeBufferFromZeroElseUpToAZeroByte)
{
    EXPECT_EQ(CUtil::BinaryFind2(binary("a\0b"), "b", 0), 2);
    EXPECT_EQ(CUtil::BinaryFind2(binary("xa\0b"), "b", 1), -1);
    EXPECT_EQ(CUtil::BinaryFind2(binary("xxab"), "b", 1), 3);
    EXPECT_EQ(CUtil::BinaryFind2(binary("abc"), "a", 1), -1);
}

TEST(BinaryFind2, RefusesPositionsOutsideAndEmptyTexts)
{
    EXPECT_EQ(CUtil::BinaryFind2(binary("abc"), "c", 3), -1);
    EXPECT_EQ(CUtil::BinaryFind2(binary("abc"), "c", -1), -1);
    EXPECT_EQ(CUtil::BinaryFind2(binary("abc"), "", 1), -1);
    EXPECT_EQ(CUtil::BinaryFind2(binary("abc"), nullptr, 1), -1);
    EXPECT_EQ(CUtil::BinaryFind2(CBinary(), "a", 0), -1);
}

TEST(ReplaceAllIntoBinary, SetsTheResult)
{
    CBinary out = binary("old");
    EXPECT_EQ(CUtil::ReplaceAll("1 2 3", " ", ".", &out), 0);
    EXPECT_EQ(bytesOf(out), "1.2.3");
    EXPECT_EQ(CUtil::ReplaceAll("1", "", ".", &out), -1);
    EXPECT_EQ(CUtil::ReplaceAll("1", "1", ".", static_cast<CBinary*>(nullptr)), -1);
    const FailingAllocations none;
    EXPECT_EQ(CUtil::ReplaceAll("1 2", " ", ".", &out), 0);
    EXPECT_EQ(bytesOf(out), "1.2.3");
}

TEST(ParingFindCnt, CountsFindsInABuffer)
{
    EXPECT_EQ(findsOf(binary("a,b,c"), ","), 2);
    EXPECT_EQ(findsOf(binary("abc"), ","), 0);
    EXPECT_EQ(findsOf(binary("a,b\0c,d"), ","), 1); // behind the first find a zero byte ends the search
    CUtil::ParingFindCnt(binary("a"), "a", nullptr);
}

TEST(ParingFindCnt, CountsLinesThatDoNotGetShorter)
{
    EXPECT_EQ(linesOf(""), 1);
    EXPECT_EQ(linesOf("one"), 1);
    EXPECT_EQ(linesOf("a\nbb\nccc"), 3);
    EXPECT_EQ(linesOf("a\n"), 2);
    EXPECT_EQ(linesOf("\na"), 1);
}

TEST(ParingFindCnt, StepsOverLineEndsBehindALongerLine)
{
    EXPECT_EQ(linesOf("a long line\nb\nc\nd"), 3);
    EXPECT_EQ(linesOf((std::string(5000, 'a') + "\nb").c_str()), 2);
    int count = 9;
    CUtil::ParingFindCnt(nullptr, 0, nullptr, &count);
    EXPECT_EQ(count, 9);
    CUtil::ParingFindCnt("a", 1, nullptr, nullptr);
}
