#include "LibFile.h"

#include <memory>

#include "AllocationHooks.h"
#include "FoundationTest.h"

namespace {

struct Close
{
    void operator()(FILE* file) const { fclose(file); }
};
using File = std::unique_ptr<FILE, Close>;

File streamOf(const std::string& text)
{
    File file(tmpfile());
    fwrite(text.data(), 1, text.size(), file.get());
    rewind(file.get());
    return file;
}

struct Free
{
    void operator()(ConfigProfileS* profile) const { EXPECT_EQ(_FreeConfigProfile(profile), 0); }
};
using List = std::unique_ptr<ConfigProfileS, Free>;

List decode(const std::string& text)
{
    ConfigProfileS* list = nullptr;
    EXPECT_EQ(_DecodeConfigProfile(&list, streamOf(text).get()), 0);
    return List(list);
}

std::vector<std::string> linesOf(const List& list)
{
    std::vector<std::string> lines;
    for (const ConfigProfileS* node = list.get(); node; node = node->pNext)
        lines.emplace_back(node->pcData ? node->pcData : "(null)");
    return lines;
}

std::string trimmedByLibrary(std::string text)
{
    EXPECT_EQ(StrTrimString(text.data()), 1);
    return text.c_str();
}

using Lines = std::vector<std::string>;

} // namespace

TEST(DecodeConfigProfile, GivesEachLineANodeWithItsLineFeed)
{
    EXPECT_EQ(linesOf(decode("[A]\n\nkey=1\r\nlast")), (Lines{"[A]\n", "\n", "key=1\r\n", "last"}));
}

TEST(DecodeConfigProfile, GivesAnEmptyFileOneNodeWithoutText)
{
    const List list = decode("");
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->pcData, nullptr);
    EXPECT_EQ(list->pNext, nullptr);
}

TEST(DecodeConfigProfile, SplitsALineAt4094Characters)
{
    EXPECT_EQ(linesOf(decode(std::string(4094, 'a') + "\n" + std::string(4093, 'b') + "\n")),
              (Lines{std::string(4094, 'a'), "\n", std::string(4093, 'b') + "\n"}));
}

TEST(DecodeConfigProfile, EndsALineAtAZeroByte)
{
    EXPECT_EQ(linesOf(decode(std::string("a\0b\nc\n", 6))), (Lines{"a", "c\n"}));
}

TEST(DecodeConfigProfile, FreesWhatItHasWhenMemoryRunsOut)
{
    const File file = streamOf("a\nb\nc\n");
    ConfigProfileS* list = nullptr;
    const FailingAllocations after(2);
    EXPECT_EQ(_DecodeConfigProfile(&list, file.get()), -1);
    EXPECT_EQ(list, nullptr);
}

TEST(FindConfigProfileSection, FailsForAnEmptyListAlone)
{
    ConfigProfileS* start = nullptr;
    EXPECT_EQ(_FindConfigProfileSection(&start, nullptr, "A"), -1);
    const List empty = decode("");
    EXPECT_EQ(_FindConfigProfileSection(&start, empty.get(), "A"), 0);
    EXPECT_EQ(start, empty.get());
}

TEST(FindConfigProfileSection, GivesTheHeaderOrTheLastNode)
{
    const List list = decode("a\n[A]\n[B]\nlast\n");
    ConfigProfileS* start = nullptr;
    EXPECT_EQ(_FindConfigProfileSection(&start, list.get(), "B"), 0);
    EXPECT_STREQ(start->pcData, "[B]\n");
    EXPECT_EQ(_FindConfigProfileSection(&start, list.get(), "C"), 0);
    EXPECT_STREQ(start->pcData, "last\n");
}

TEST(FindConfigProfileKey, ComparesTheWholeTrimmedTextBeforeTheEqualsSign)
{
    EXPECT_EQ(_FindConfigProfileKey(" key =1", "key"), 1);
    EXPECT_EQ(_FindConfigProfileKey("key=1", "ke"), 0);
    EXPECT_EQ(_FindConfigProfileKey("mykey=1", "key"), 0);
    EXPECT_EQ(_FindConfigProfileKey("key", "key"), 0);
    EXPECT_EQ(_FindConfigProfileKey("a=key", "key"), 0);
    EXPECT_EQ(_FindConfigProfileKey(nullptr, "key"), 0);
}

TEST(IsCommentLine, LooksAtTheFirstCharacterThatIsNoWhiteSpace)
{
    EXPECT_EQ(_IsCommentLine("#"), 1);
    EXPECT_EQ(_IsCommentLine(" \t\v\f\r\n# a"), 1);
    EXPECT_EQ(_IsCommentLine("a # b"), 0);
    EXPECT_EQ(_IsCommentLine("; a"), 0);
    EXPECT_EQ(_IsCommentLine("   "), 0);
    EXPECT_EQ(_IsCommentLine(""), 0);
    EXPECT_EQ(_IsCommentLine(nullptr), 0);
}

TEST(IsInvalidLine, IsTrueForALineThatHoldsNoSetting)
{
    EXPECT_EQ(_IsInvalidLine("# a=1\n"), 1);
    EXPECT_EQ(_IsInvalidLine("\n"), 1);
    EXPECT_EQ(_IsInvalidLine("="), 1);
    EXPECT_EQ(_IsInvalidLine("text\n"), 1);
    EXPECT_EQ(_IsInvalidLine(""), 1);
    EXPECT_EQ(_IsInvalidLine(nullptr), 1);
    EXPECT_EQ(_IsInvalidLine("a=1\n"), 0);
    EXPECT_EQ(_IsInvalidLine("=1"), 0);
}

TEST(InsertNewKeyAndValue, LinksALineInBehindTheNode)
{
    const List list = decode("[A]\nold=1\n");
    EXPECT_EQ(_InsertNewKeyAndValue(list.get(), "new", "2"), 0);
    EXPECT_EQ(linesOf(list), (Lines{"[A]\n", "new=2\n", "old=1\n"}));
}

TEST(InsertNewKeyAndValue, LeavesTheListAloneWhenMemoryRunsOut)
{
    const List list = decode("[A]\n");
    {
        const FailingAllocations none;
        EXPECT_EQ(_InsertNewKeyAndValue(list.get(), "new", "2"), -1);
    }
    EXPECT_EQ(linesOf(list), (Lines{"[A]\n"}));
}

TEST(WriteProfileToFile, WritesTheLinesBack)
{
    const std::string text = "[A]\n\n# c\nkey=1\r\nlast";
    const File file(tmpfile());
    EXPECT_EQ(_WriteProfileToFile(decode(text).get(), file.get()), 0);
    rewind(file.get());
    char back[100] = {};
    EXPECT_EQ(fread(back, 1, sizeof(back) - 1, file.get()), text.size());
    EXPECT_EQ(back, text);
}

TEST(WriteProfileToFile, WritesNothingForAnEmptyFileOrList)
{
    const File file(tmpfile());
    EXPECT_EQ(_WriteProfileToFile(decode("").get(), file.get()), 0);
    EXPECT_EQ(_WriteProfileToFile(nullptr, file.get()), 0);
    EXPECT_EQ(ftell(file.get()), 0);
}

TEST(WriteProfileToFile, StopsAtALineThatCannotBeWritten)
{
    const List list = decode("a=1\nb=2\n");
    const File full(fopen("/dev/full", "w"));
    setbuf(full.get(), nullptr);
    EXPECT_EQ(_WriteProfileToFile(list.get(), full.get()), -1);
}

TEST(FreeConfigProfile, TakesAnEmptyList)
{
    EXPECT_EQ(_FreeConfigProfile(nullptr), 0);
}

TEST(StrTrimString, TrimsBothEndsAndReturnsOne)
{
    EXPECT_EQ(trimmedByLibrary("  a b\t\r\n"), "a b");
    EXPECT_EQ(trimmedByLibrary("a"), "a");
    EXPECT_EQ(trimmedByLibrary(" \t\n"), "");
    EXPECT_EQ(trimmedByLibrary(""), "");
    EXPECT_EQ(StrTrimString(nullptr), 1);
}

TEST(StrTrimString, ZeroesWhiteSpaceOverItsLength)
{
    auto buffer = marked(5);
    buffer[0] = buffer[1] = buffer[2] = ' ';
    buffer[3] = '\0';
    StrTrimString(buffer.data());
    EXPECT_EQ(bytesOf(buffer), std::string("\0\0\0\0x", 5));
}

TEST(ConvertUtf8, IsEmpty)
{
    EXPECT_TRUE(std::is_empty_v<ConvertUTF8>);
}
