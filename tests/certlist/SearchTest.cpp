#include <gmock/gmock.h>
#include <sys/stat.h>

#include "SessionTest.h"
#include "SystemLog.h"
#include "Unprivileged.h"

using testing::Contains;
using testing::ElementsAre;

namespace {

/** The file search in steps: drives, folders, files. */
class Search : public SessionTest
{
protected:
    Search() { EXPECT_EQ(start(), 0); }

    int search(const std::string& path) { return CLP_SearchFileList(handle, text(path), text(format)); }
    int count(int type)
    {
        int number = -1;
        EXPECT_EQ(CLP_GetSearchFileCount(handle, type, &number), 0);
        return number;
    }
    std::vector<int> counts() { return {count(0), count(1), count(2)}; }

    /** Result of a look-up, with the name in `name`. */
    int nameOf(int type, int index, int length = 1024)
    {
        char buffer[1024] = {};
        const int code = CLP_GetSearchFileName(handle, type, index, length, buffer);
        name = buffer;
        return code;
    }

    std::string name;
    std::string format = "pfx";
    fs::path folder = TestHome::scratch("folder");
};

/** "하드디스크 (/)" in EUC-KR. */
const char* const HARD_DISK = "\xC7\xCF\xB5\xE5\xB5\xF0\xBD\xBA\xC5\xA9 (/)";

} // namespace

TEST_F(Search, RootListsTheHardDiskAlone)
{
    ASSERT_EQ(search("root"), 0);
    EXPECT_THAT(counts(), ElementsAre(1, 0, 0));
    EXPECT_EQ(nameOf(0, 0), 0);
    EXPECT_EQ(name, HARD_DISK);
}

TEST_F(Search, RootIsReadInAnyCase)
{
    for (const char* word : {"ROOT", "Root", "rOOt"}) {
        EXPECT_EQ(search(word), 0);
        EXPECT_EQ(count(0), 1) << word;
    }
    EXPECT_EQ(search("root "), CLPERR_FOLDER_EMPTY) << "a folder of that name, which is not there";
}

TEST_F(Search, FolderNeedsARootStepEarlierInTheSession)
{
    EXPECT_EQ(search(folder), QG_NO_MEMORY);
    ASSERT_EQ(search("root"), 0);
    EXPECT_EQ(search(folder), 0);
    EXPECT_EQ(search(folder), 0) << "once is enough";
}

TEST_F(Search, FolderWithoutARootStepIsCountedAndHasItsArray)
{
    ASSERT_EQ(search(folder), QG_NO_MEMORY);
    EXPECT_THAT(counts(), ElementsAre(0, 2, 0));
    EXPECT_EQ(nameOf(1, 1), 0);
    EXPECT_EQ(name, "");
    EXPECT_EQ(nameOf(1, 2), QG_BAD_ARGUMENT);
}

TEST_F(Search, FolderListHasAnEmptyNameForEachFolderAndNoFile)
{
    fs::create_directory(folder / "sub");
    writeFile(folder / "a.pfx", "x");
    ASSERT_EQ(search("root"), 0);
    ASSERT_EQ(search(folder), 0);
    EXPECT_THAT(counts(), ElementsAre(0, 3, 0)) << "with . and ..";
    for (int index = 0; index < 3; ++index) {
        EXPECT_EQ(nameOf(1, index), 0);
        EXPECT_EQ(name, "");
    }
    EXPECT_EQ(nameOf(1, 3), QG_BAD_ARGUMENT);
    EXPECT_EQ(nameOf(2, 0), QG_BAD_ARGUMENT);
}

TEST_F(Search, FolderThatCannotBeOpenedIsToldAsEmpty)
{
    ASSERT_EQ(search("root"), 0);
    ASSERT_EQ(search(folder), 0);
    EXPECT_EQ(search(folder / "missing"), CLPERR_FOLDER_EMPTY);
    EXPECT_THAT(counts(), ElementsAre(0, 0, 0)) << "nothing is left of the step before";
    EXPECT_EQ(nameOf(1, 0), QG_BAD_ARGUMENT);
    EXPECT_EQ(nameOf(0, 0), 0) << "but the drive list, which no folder step touches";
}

TEST_F(Search, PathsThatAreNoFoldersAreToldAsEmpty)
{
    ASSERT_EQ(search("root"), 0);
    writeFile(folder / "file", "x");
    ASSERT_EQ(mkfifo((folder / "fifo").c_str(), 0600), 0);
    fs::create_symlink("loop", folder / "loop");
    for (const std::string& path : {std::string(), (folder / "file").string(), (folder / "fifo").string(),
                                    (folder / "loop").string(), "/" + std::string(5000, 'a')})
        EXPECT_EQ(search(path), CLPERR_FOLDER_EMPTY) << path;
    EXPECT_EQ(CLP_SearchFileList(handle, nullptr, nullptr), QG_BAD_ARGUMENT);
}

TEST_F(Search, FolderThatMayNotBeReadIsToldAsEmpty)
{
    ASSERT_EQ(search("root"), 0);
    fs::permissions(folder, fs::perms::none);
    {
        const Unprivileged nobody;
        EXPECT_EQ(search(folder), CLPERR_FOLDER_EMPTY);
    }
    fs::permissions(folder, fs::perms::owner_all);
    EXPECT_EQ(search(folder), 0);
}

TEST_F(Search, PathOfFiveThousandBytesIsCutBeforeItIsOpened)
{
    ASSERT_EQ(search("root"), 0);
    const std::string start = folder.string();
    EXPECT_EQ(search(start + std::string(4095 - start.size(), '/') + "missing"), 0);
}

TEST_F(Search, ExtensionMayBeMissing)
{
    ASSERT_EQ(search("root"), 0);
    EXPECT_EQ(CLP_SearchFileList(handle, text(folder), nullptr), 0);
}

TEST_F(Search, FolderOfTwentyThousandEntriesIsListed)
{
    for (int entry = 0; entry < 20000; ++entry)
        fs::create_directory(folder / std::to_string(entry));
    ASSERT_EQ(search("root"), 0);
    ASSERT_EQ(search(folder), 0);
    EXPECT_EQ(count(1), 20002);
    EXPECT_EQ(nameOf(1, 20001), 0);
    EXPECT_EQ(nameOf(1, 20002), QG_BAD_ARGUMENT);
}

TEST_F(Search, StepKeepsTheArraysOfTheOtherKindWithACountOfZero)
{
    ASSERT_EQ(search("root"), 0);
    ASSERT_EQ(search(folder), 0);
    EXPECT_EQ(count(0), 0);
    EXPECT_EQ(nameOf(0, 0), 0);
    EXPECT_EQ(name, HARD_DISK);
    ASSERT_EQ(search("root"), 0);
    EXPECT_EQ(count(1), 0);
    EXPECT_EQ(nameOf(1, 1), 0) << "the array is as long as it was";
    EXPECT_EQ(nameOf(1, 2), QG_BAD_ARGUMENT);
}

TEST_F(Search, UnknownTypesCountZeroAndNameNothing)
{
    ASSERT_EQ(search("root"), 0);
    for (const int type : {-1, 3, INT_MAX, INT_MIN}) {
        EXPECT_EQ(count(type), 0);
        EXPECT_EQ(nameOf(type, 0), 0);
        EXPECT_EQ(name, "");
    }
}

TEST_F(Search, BadArgumentsOfANameAreRefused)
{
    ASSERT_EQ(search("root"), 0);
    EXPECT_EQ(nameOf(0, -1), QG_BAD_ARGUMENT);
    EXPECT_EQ(nameOf(0, 0, 0), QG_BAD_ARGUMENT);
    EXPECT_EQ(nameOf(0, 0, -5), QG_BAD_ARGUMENT);
    EXPECT_EQ(nameOf(0, 1), QG_BAD_ARGUMENT);
    EXPECT_EQ(nameOf(0, INT_MAX), QG_BAD_ARGUMENT);
    EXPECT_EQ(nameOf(5, -1), QG_BAD_ARGUMENT) << "whatever the type";
    EXPECT_EQ(CLP_GetSearchFileName(handle, 0, 0, 10, nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_GetSearchFileCount(handle, 0, nullptr), QG_BAD_ARGUMENT);
}

TEST_F(Search, NameIsCutAtLengthLessOneAndNotTerminated)
{
    ASSERT_EQ(search("root"), 0);
    auto buffer = marked(20);
    ASSERT_EQ(CLP_GetSearchFileName(handle, 0, 0, 5, buffer.data()), 0);
    EXPECT_EQ(bytesOf(buffer), std::string(HARD_DISK, 4) + std::string(16, 'x'));
    ASSERT_EQ(CLP_GetSearchFileName(handle, 0, 0, 1, buffer.data()), 0);
    ASSERT_EQ(CLP_GetSearchFileName(handle, 0, 0, 20, buffer.data()), 0);
    EXPECT_EQ(bytesOf(buffer), HARD_DISK + std::string(6, 'x'));
}

TEST_F(Search, ListsEndWithTheSession)
{
    ASSERT_EQ(search("root"), 0);
    session().UnInitalize();
    EXPECT_FALSE(session().m_pstSearchDriveInfo);
    EXPECT_EQ(nameOf(0, 0), QG_BAD_ARGUMENT);
    EXPECT_EQ(search(folder), QG_NO_MEMORY);
}

TEST_F(Search, LogLinesKeepTheirForms)
{
    copyText(session().m_szLogFilePath, (workDir / "trace").c_str());
    int number = 0;
    ASSERT_EQ(search("root"), 0);
    EXPECT_THAT(systemLogOf([&] { session().GetSearchFileCount(0, &number); }),
                ElementsAre("CCertListProcInterface::GetSearchFileCount() Start...", "nCount : 1",
                            "CCertListProcInterface::GetSearchFileCount() End...: 0"));
    EXPECT_THAT(
        systemLogOf([&] { session().SetSearchFileList(text("/missing"), nullptr); }),
        ElementsAre("CCertListProcInterface::SetSearchFileList() Start...",
                    "CCertListProcInterface::SearchFile() >> m_nFolderCnt:0 && m_nFolderCnt :0(30300)",
                    "CCertListProcInterface::SetSearchFileList() End... : 30300"));
    EXPECT_THAT(systemLogOf([&] { session().GetSearchFileName(0, 0, 0, nullptr); }),
                Contains("CCertListProcInterface::GetSearchFileName() End... : 10004"));
}
