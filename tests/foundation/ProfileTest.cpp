#include "LibFile.h"

#include <filesystem>

#include "AllocationHooks.h"
#include "FoundationTest.h"

namespace {

/** Writes a profile and looks values up in it. */
class Profile : public testing::Test
{
protected:
    void write(const std::string& text) { writeFile(m_path, text); }

    int query(const char* section, const char* key, const char* fallback = "", int size = 1024)
    {
        m_out.assign(static_cast<std::size_t>(size), 'x');
        return FileGetPrivateProfileString(section, key, fallback, m_out.data(), size, m_path.c_str());
    }

    int number(const char* section, const char* key, int fallback = 0)
    {
        return FileGetPrivateProfileInt(section, key, fallback, m_path.c_str());
    }

    std::string text() const { return m_out.data(); }

    /** Looks a value up and expects it to be found with the result of its length. */
    void expectValue(const char* section, const char* key, const std::string& value)
    {
        EXPECT_EQ(query(section, key), static_cast<int>(value.size()));
        EXPECT_EQ(text(), value);
    }

    void expectNothing(const char* section, const char* key)
    {
        EXPECT_EQ(query(section, key, "default"), 0);
        EXPECT_EQ(text(), "");
    }

    std::filesystem::path m_path = TestHome::scratch("profile") / "profile.ini";
    std::vector<char> m_out;
};

} // namespace

TEST_F(Profile, AKeyWithAnEmptyValueYieldsTheDefaultAndItsLength)
{
    write("[A]\nempty=\nblank =   \n");
    EXPECT_EQ(query("A", "empty", "fallback"), 8);
    EXPECT_EQ(text(), "fallback");
    EXPECT_EQ(query("A", "blank", "fallback"), 8);
    EXPECT_EQ(text(), "fallback");
}

TEST_F(Profile, AMissingKeySectionOrFileYieldsAnEmptyTextWhateverTheDefault)
{
    expectNothing("A", "key");
    write("[A]\nkey=1\n");
    expectNothing("A", "missing");
    expectNothing("B", "key");
}

TEST_F(Profile, AnEmptyValueWithAnEmptyDefaultYieldsNothing)
{
    write("[A]\nempty=\n");
    EXPECT_EQ(query("A", "empty"), 0);
    EXPECT_EQ(text(), "");
    EXPECT_EQ(query("A", "empty", nullptr), 0);
}

TEST_F(Profile, AnIntegerDefaultIsNeverUsed)
{
    EXPECT_EQ(number("A", "key", 5), 0);
    write("[A]\nkey=\n");
    EXPECT_EQ(number("A", "missing", 5), 0);
    EXPECT_EQ(number("B", "key", 5), 0);
    EXPECT_EQ(number("A", "key", 5), 0);
}

TEST_F(Profile, AnIntegerIsReadLikeAtoi)
{
    write("[A]\na=42\nb= -7 seconds\nc=text\n");
    EXPECT_EQ(number("A", "a"), 42);
    EXPECT_EQ(number("A", "b"), -7);
    EXPECT_EQ(number("A", "c"), 0);
}

TEST_F(Profile, AKeyThatIsOnlyTheTailOfAnotherIsNotFound)
{
    write("[A]\nMY_INFO=1\nINFO2=2\n");
    expectNothing("A", "INFO");
}

TEST_F(Profile, ALineWithANumberSignIsAComment)
{
    write("[A]\n# key=1\n   \t# key=2\n#key=3\n");
    expectNothing("A", "key");
    expectNothing("A", "# key");
}

TEST_F(Profile, ASemicolonIsPartOfTheKey)
{
    write("[A]\n; key=1\n");
    expectNothing("A", "key");
    expectValue("A", "; key", "1");
}

TEST_F(Profile, BlanksAroundKeysAndValuesAreDropped)
{
    write("[A]\n\tkey  =  value with blanks \t \n");
    expectValue("A", "key", "value with blanks");
}

TEST_F(Profile, AValueKeepsItsSecondEqualsSign)
{
    write("[A]\na=b=c\n");
    expectValue("A", "a", "b=c");
}

TEST_F(Profile, ASectionNameMatchesInsideALongerHeaderLine)
{
    write("x[APP]y\nkey=1\n[[APP2]]\nkey=2\n");
    expectValue("APP", "key", "1");
    expectValue("APP2", "key", "2");
}

TEST_F(Profile, ALaterBracketOfALineMayOpenTheSection)
{
    write("[A][B]\nkey=1\n");
    expectValue("B", "key", "1");
}

TEST_F(Profile, SectionAndKeyAreComparedWithCase)
{
    write("[App]\nKey=1\n");
    expectNothing("APP", "Key");
    expectNothing("App", "KEY");
    expectValue("App", "Key", "1");
}

TEST_F(Profile, AMissingSectionStartsBehindTheLastLine)
{
    write("key=0\n[A]\nkey=1\nlast=2");
    expectNothing("B", "key");
    expectNothing("B", "last");
}

TEST_F(Profile, ACommentIsNoSectionHeader)
{
    write("#[A]\nkey=1\n[A]\nkey=2\n");
    expectValue("A", "key", "2");
}

TEST_F(Profile, TheFirstOfTwoSectionsAndOfTwoKeysWins)
{
    write("[A]\nkey=1\nkey=2\n[A]\nkey=3\nother=4\n");
    expectValue("A", "key", "1");
    expectNothing("A", "other");
}

TEST_F(Profile, CarriageReturnsAreRemovedByTheTrim)
{
    write("[A]\r\nkey=value\r\nempty=\r\n");
    expectValue("A", "key", "value");
    EXPECT_EQ(query("A", "empty", "d"), 1);
}

TEST_F(Profile, ABracketInAValueEndsTheSection)
{
    write("[A]\nbefore=1\nlist=[2]\nafter=3\n");
    expectValue("A", "before", "1");
    expectNothing("A", "list");
    expectNothing("A", "after");
}

TEST_F(Profile, ACommentWithABracketIsPassedOver)
{
    write("[A]\n# see [B]\nkey=1\n");
    expectValue("A", "key", "1");
}

TEST_F(Profile, TheLastLineNeedsNoLineFeed)
{
    write("[A]\nkey=value");
    expectValue("A", "key", "value");
}

TEST_F(Profile, KoreanBytesAreNoWhiteSpace)
{
    write("[A]\nkey=\xA0\xC7\xD1\xB1\xDB\xA0\n");
    expectValue("A", "key", "\xA0\xC7\xD1\xB1\xDB\xA0");
}

TEST_F(Profile, AnEmptyFileAnswersZero)
{
    write("");
    expectNothing("A", "key");
    EXPECT_EQ(number("A", "key"), 0);
}

TEST_F(Profile, AFileWithoutSectionsAnswersZero)
{
    write("key=1\nother=2\n");
    expectNothing("A", "key");
    expectNothing("", "key");
}

TEST_F(Profile, AnEmptyKeyNamesALineThatBeginsWithTheEqualsSign)
{
    write("[A]\n = value\n");
    expectValue("A", "", "value");
}

TEST_F(Profile, AValueLongerThanTheBufferIsCutAndTerminated)
{
    write("[A]\nkey=  0123456789\n");
    EXPECT_EQ(query("A", "key", "", 5), 4);
    EXPECT_EQ(text(), "0123");
    EXPECT_EQ(query("A", "key", "", 11), 10);
    EXPECT_EQ(text(), "0123456789");
    EXPECT_EQ(query("A", "key", "", 1), 0);
    EXPECT_EQ(text(), "");
}

TEST_F(Profile, ADefaultLongerThanTheBufferIsCutAndTerminated)
{
    write("[A]\nkey=\n");
    EXPECT_EQ(query("A", "key", "0123456789", 5), 4);
    EXPECT_EQ(text(), "0123");
}

TEST_F(Profile, NothingBehindTheBufferIsTouched)
{
    write("[A]\nkey=0123456789\n");
    auto out = marked(8);
    EXPECT_EQ(FileGetPrivateProfileString("A", "key", "", out.data(), 6, m_path.c_str()), 5);
    EXPECT_EQ(bytesOf(out), std::string("01234\0xx", 8));
}

TEST_F(Profile, TheWholeBufferIsZeroedFirst)
{
    write("[A]\nkey=ab\n");
    query("A", "key", "", 6);
    EXPECT_EQ(bytesOf(m_out), std::string("ab\0\0\0\0", 6));
}

TEST_F(Profile, ALineAboveTheLimitIsSplitIntoLinesOfItsOwn)
{
    // 4094 characters make the first node; the rest is a line of its own and may hold a key.
    const std::string start = "key=" + std::string(4090, 'v');
    write("[A]\n" + start + "tail=1\n");
    EXPECT_EQ(query("A", "key", "", 5000), 4090);
    expectValue("A", "tail", "1");
}

TEST_F(Profile, ALineOfMegabytesIsSafe)
{
    write("[A]\nlong=" + std::string(2 << 20, 'v') + "\nkey=1\n");
    expectValue("A", "key", "1");
}

TEST_F(Profile, BinaryContentIsSafe)
{
    std::string bytes;
    for (int i = 0; i < 100000; ++i)
        bytes += static_cast<char>(i * 7919 >> 3);
    write(bytes);
    expectNothing("A", "key");
    write(std::string("[A]\nk\0y=1\nzero=a\0b\nkey=2\n", 25));
    expectValue("A", "zero", "a");
    expectValue("A", "key", "2");
    expectNothing("A", "k");
}

TEST_F(Profile, AVeryLongSectionNameIsSafe)
{
    const std::string name(3000, 'n');
    write("[" + name + "]\nkey=1\n");
    expectValue(name.c_str(), "key", "1");
    expectNothing(name.substr(1).c_str(), "key");
}

TEST_F(Profile, NullArgumentsAnswerZero)
{
    write("[A]\nkey=1\n");
    auto out = marked(4);
    EXPECT_EQ(FileGetPrivateProfileString(nullptr, "key", "", out.data(), 4, m_path.c_str()), 0);
    EXPECT_EQ(FileGetPrivateProfileString("A", nullptr, "", out.data(), 4, m_path.c_str()), 0);
    EXPECT_EQ(FileGetPrivateProfileString("A", "key", "", out.data(), 4, nullptr), 0);
    EXPECT_EQ(bytesOf(out), std::string(4, '\0'));
    EXPECT_EQ(FileGetPrivateProfileString("A", "key", "", nullptr, 4, m_path.c_str()), 0);
    EXPECT_EQ(FileGetPrivateProfileString("A", "key", "", out.data(), 0, m_path.c_str()), 0);
    EXPECT_EQ(FileGetPrivateProfileString("A", "key", "", out.data(), -1, m_path.c_str()), 0);
    EXPECT_EQ(FileGetPrivateProfileInt(nullptr, nullptr, 1, nullptr), 0);
}

TEST_F(Profile, AFifoIsNoFileAndDoesNotBlock)
{
    ASSERT_EQ(mkfifo(m_path.c_str(), 0600), 0);
    expectNothing("A", "key");
}

TEST_F(Profile, ADirectoryADeviceAndALinkLoopAreNoFiles)
{
    std::filesystem::create_directory(m_path);
    expectNothing("A", "key");
    m_path = "/dev/zero";
    expectNothing("A", "key");
    m_path = TestHome::scratch("profile") / "loop";
    std::filesystem::create_symlink(m_path, m_path);
    expectNothing("A", "key");
}

TEST_F(Profile, AFileAboveTheLimitIsNotRead)
{
    write("[A]\nkey=1\n");
    std::filesystem::resize_file(m_path, 4 << 20);
    expectValue("A", "key", "1");
    std::filesystem::resize_file(m_path, (4 << 20) + 1);
    expectNothing("A", "key");
    std::filesystem::resize_file(m_path, std::uintmax_t{1} << 30);
    expectNothing("A", "key");
}

TEST_F(Profile, RunningOutOfMemoryAnswersMinusTwo)
{
    write("[A]\nkey=1\n");
    const FailingAllocations all(0);
    EXPECT_EQ(query("A", "key", "default"), -2);
    EXPECT_EQ(number("A", "key"), -2);
}

TEST_F(Profile, EachQueryReadsTheFileAnew)
{
    write("[A]\nkey=1\n");
    expectValue("A", "key", "1");
    write("[A]\nkey=22\n");
    expectValue("A", "key", "22");
}
