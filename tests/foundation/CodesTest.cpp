#include "Util.h"

#include <memory>

#include "AllocationHooks.h"
#include "FoundationTest.h"

namespace {

std::string decoded(const std::string& hex)
{
    auto out = marked(hex.size() / 2 + 2);
    int length = -1;
    CUtil::HexStringToBin(hex.data(), static_cast<int>(hex.size()), out.data(), &length);
    EXPECT_EQ(out.back(), 'x');
    return {out.data(), static_cast<std::size_t>(length)};
}

} // namespace

TEST(HexStringToBin, DropsBlanksAndCommas)
{
    EXPECT_EQ(decoded("0A, 0b"), "\x0A\x0B");
    EXPECT_EQ(decoded("0A, 0b").size(), 2u);
}

TEST(HexStringToBin, TakesBothCases)
{
    EXPECT_EQ(decoded("ffFFa0A0"), "\xFF\xFF\xA0\xA0");
}

TEST(HexStringToBin, DropsALastOddDigit)
{
    EXPECT_EQ(decoded("abc"), "\xAB");
    EXPECT_EQ(decoded("a"), "");
    EXPECT_EQ(decoded(""), "");
}

TEST(HexStringToBin, DecodesOtherCharactersByTheSameArithmetic)
{
    // 'G' counts as 16, 'g' too, '/' as -1.
    EXPECT_EQ(decoded("0G"), "\x10");
    EXPECT_EQ(decoded("0g"), "\x10");
    EXPECT_EQ(decoded("0/"), "\xFF");
    EXPECT_EQ(decoded("\xC7\xD1").size(), 1u);
}

TEST(HexStringToBin, MayDecodeInPlaceAndRefusesNull)
{
    char text[] = "41 42";
    int length = 0;
    CUtil::HexStringToBin(text, 5, text, &length);
    EXPECT_EQ(std::string(text, 2), "AB");
    length = 9;
    CUtil::HexStringToBin(nullptr, 5, text, &length);
    CUtil::HexStringToBin(text, 5, nullptr, &length);
    EXPECT_EQ(length, 9);
    CUtil::HexStringToBin(text, 2, text, nullptr);
    CUtil::HexStringToBin(text, -2, text, &length);
    EXPECT_EQ(length, 0);
}

TEST(ToHexString, WritesLowerCaseIntoANewBuffer)
{
    char* text = nullptr;
    int length = 0;
    EXPECT_EQ(CUtil::toHexString("\x00\x9F\xAB", 3, &text, &length), 0);
    const std::unique_ptr<char[]> owned(text);
    EXPECT_STREQ(text, "009fab");
    EXPECT_EQ(length, 6);
}

TEST(ToHexString, AnswersAnEmptyTextForNoBytes)
{
    char* text = nullptr;
    int length = 7;
    EXPECT_EQ(CUtil::toHexString("", 0, &text, &length), 0);
    const std::unique_ptr<char[]> owned(text);
    EXPECT_STREQ(text, "");
    EXPECT_EQ(length, 0);
}

TEST(ToHexString, Answers10003WhenMemoryRunsOut)
{
    char* text = nullptr;
    int length = 0;
    const FailingAllocations none;
    EXPECT_EQ(CUtil::toHexString("abc", 3, &text, &length), 10003);
    EXPECT_EQ(text, nullptr);
}

TEST(ToHexString, RefusesNullAndSenselessLengths)
{
    char* text = nullptr;
    int length = 0;
    EXPECT_EQ(CUtil::toHexString(nullptr, 1, &text, &length), 10004);
    EXPECT_EQ(CUtil::toHexString("a", -1, &text, &length), 10004);
    EXPECT_EQ(CUtil::toHexString("a", 0x40000000, &text, &length), 10004);
    EXPECT_EQ(CUtil::toHexString("a", 1, nullptr, &length), 10004);
    EXPECT_EQ(CUtil::toHexString("a", 1, &text, nullptr), 10004);
}

TEST(ToEncode, HasNoEncoding)
{
    char* out = nullptr;
    int length = 0;
    EXPECT_EQ(CUtil::toEncode(1, nullptr, &out, &length), 10004);
    EXPECT_EQ(CUtil::toEncode(1, "", &out, &length), 10004);
    EXPECT_EQ(CUtil::toEncode(1, "a", &out, &length), 10005);
}

TEST(WideConversions, WriteNothingButTheLengthZero)
{
    for (auto convert : {CUtil::UTF8ToMultibyte, CUtil::MultibyteToWideData, CUtil::WideDataToMultibyte}) {
        char in[] = "in";
        char out[] = "out";
        int length = 5;
        EXPECT_EQ(convert(in, out, &length), 0);
        EXPECT_EQ(length, 0);
        EXPECT_STREQ(in, "in");
        EXPECT_STREQ(out, "out");
        EXPECT_EQ(convert(nullptr, nullptr, nullptr), 0);
    }
}

TEST(EucKrToUtf8, ConvertsInPlace)
{
    char text[32] = "\xC7\xD1\xB1\xDB abc"; // 한글 abc
    EXPECT_EQ(CUtil::EucKrToUTF8(text), 0);
    EXPECT_STREQ(text, "한글 abc");
    char empty[4] = "";
    EXPECT_EQ(CUtil::EucKrToUTF8(empty), 0);
    EXPECT_STREQ(empty, "");
}

TEST(EucKrToUtf8, LeavesATextThatIsNoEucKrAlone)
{
    char text[] = "ab\xFF\x20";
    EXPECT_EQ(CUtil::EucKrToUTF8(text), -1);
    EXPECT_STREQ(text, "ab\xFF\x20");
    char half[] = "ab\xC7"; // the first byte of a character alone
    EXPECT_EQ(CUtil::EucKrToUTF8(half), -1);
    EXPECT_STREQ(half, "ab\xC7");
    EXPECT_EQ(CUtil::EucKrToUTF8(nullptr), -1);
}

TEST(EucKrToUtf8, RefusesAResultAbove2047Bytes)
{
    auto text = std::vector<char>(4096, '\0');
    std::fill_n(text.begin(), 2047, 'a');
    EXPECT_EQ(CUtil::EucKrToUTF8(text.data()), 0);
    text[2047] = 'a';
    EXPECT_EQ(CUtil::EucKrToUTF8(text.data()), -1);
    EXPECT_EQ(std::string(text.data()), std::string(2048, 'a'));

    std::fill(text.begin(), text.end(), '\0');
    for (std::size_t i = 0; i < 1024; ++i) { // 2048 bytes of EUC-KR make 3072 of UTF-8
        text[2 * i] = '\xC7';
        text[2 * i + 1] = '\xD1';
    }
    const auto before = text;
    EXPECT_EQ(CUtil::EucKrToUTF8(text.data()), -1);
    EXPECT_EQ(text, before);
}
