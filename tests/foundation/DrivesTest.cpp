#include "Util.h"

#include <filesystem>

#include "FoundationTest.h"

namespace {

/** Puts a mount table in the place of the machine's. */
class MountTable : public testing::Test
{
protected:
    void mount(const std::string& lines) { writeFile(m_path, lines); }

    int count()
    {
        int drives = -7;
        EXPECT_EQ(CUtil::GetRemDriveCount(true, &drives), 0);
        return drives;
    }

    std::vector<DRIVEINFO> drives(std::size_t room = 4)
    {
        std::vector<DRIVEINFO> list(room);
        EXPECT_EQ(CUtil::GetRemDriveInfo(false, list.data(), static_cast<int>(room)), 0);
        return list;
    }

    std::string m_path = TestHome::scratch("mounts") / "mtab";
    ScopedVariable m_variable{"QUILLGATE_TEST_MTAB", m_path};
};

DRIVEINFO hardDisk(int language)
{
    DRIVEINFO drive{};
    CUtil util(language, "/work");
    EXPECT_EQ(util.GetDriveInfo(false, false, nullptr, &drive), 0);
    return drive;
}

/** Finds a name in a folder; the result's "x" bytes show that no terminator is written. */
int find(const std::string& folder, const char* name, std::string* found = nullptr)
{
    std::vector<char> out(256, '\0');
    const int result = CUtil::findDirectoryAndFile(folder.c_str(), name, out.data());
    if (found)
        *found = out.data();
    return result;
}

struct Folder
{
    std::filesystem::path path = TestHome::scratch("folder");
    int folders = -7;
    int files = -7;

    void count() { CUtil::GetFolderFilePath(true, path.c_str(), "p12", &folders, &files, nullptr, nullptr); }
};

} // namespace

TEST(GetDriveInfo, CountsOneDriveAndTouchesNothingElse)
{
    CUtil util(1, "/work");
    int count = 0;
    EXPECT_EQ(util.GetDriveInfo(true, true, &count, nullptr), 0);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(util.GetDriveInfo(true, true, nullptr, nullptr), 0);
}

TEST(GetDriveInfo, FillsTheHardDiskAndLeavesTheCount)
{
    CUtil util(2, "/work");
    int count = 9;
    DRIVEINFO drive{};
    drive.nIndex = 5;
    EXPECT_EQ(util.GetDriveInfo(false, false, &count, &drive), 0);
    EXPECT_EQ(count, 9);
    EXPECT_EQ(drive.nIndex, 0);
    EXPECT_STREQ(drive.szDrive, "/");
    EXPECT_STREQ(drive.szVolumeName, "HardDisk");
    EXPECT_STREQ(drive.szTotalName, "HardDisk (/)");
    EXPECT_EQ(util.GetDriveInfo(false, false, &count, nullptr), 0);
}

TEST(GetDriveInfo, NamesTheHardDiskInEucKrForEveryLanguageButEnglish)
{
    char name[64] = {};
    memcpy(name, hardDisk(1).szVolumeName, 32);
    EXPECT_EQ(CUtil::EucKrToUTF8(name), 0);
    EXPECT_STREQ(name, "하드디스크");
    EXPECT_EQ(std::string(hardDisk(1).szTotalName), std::string(hardDisk(1).szVolumeName) + " (/)");
    EXPECT_STREQ(hardDisk(3).szVolumeName, hardDisk(1).szVolumeName);
}

TEST(GetDriveInfo, AnswersTheSameInItsLongForm)
{
    CUtil util(2, "/work");
    int count = 0;
    DRIVEINFO drive{};
    EXPECT_EQ(util.GetDriveInfo(true, true, true, true, &count, nullptr), 0);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(util.GetDriveInfo(false, true, true, true, &count, &drive), 0);
    EXPECT_STREQ(drive.szTotalName, "HardDisk (/)");
}

TEST_F(MountTable, OnlyVfatInAnyCaseIsARemovableDrive)
{
    mount("/dev/sda1 / ext4 rw 0 0\n"
          "/dev/sdb1 /media/usb0 VFAT rw 0 0\n"
          "/dev/sdc1 /media/old msdos rw 0 0\n"
          "/dev/sdd1 /media/usb1 vfat rw 0 0\n"
          "/dev/sr0 /media/cd iso9660 ro 0 0\n");
    EXPECT_EQ(count(), 2);
    const auto list = drives();
    EXPECT_STREQ(list[0].szDrive, "/media/usb0");
    EXPECT_STREQ(list[1].szDrive, "/media/usb1");
    EXPECT_EQ(list[1].nIndex, 1);
    EXPECT_STREQ(list[2].szDrive, "");
}

TEST_F(MountTable, TheVolumeNameIsTheLastComponentWithItsSlash)
{
    mount("/dev/sdb1 /media/usb0 vfat rw 0 0\nnone bare vfat rw 0 0\n/dev/x / vfat rw 0 0\n");
    const auto list = drives();
    EXPECT_STREQ(list[0].szVolumeName, "/usb0");
    EXPECT_STREQ(list[0].szTotalName, "/usb0 (/media/usb0)");
    EXPECT_STREQ(list[1].szVolumeName, "bare");
    EXPECT_STREQ(list[2].szTotalName, "/ (/)");
}

TEST_F(MountTable, EscapedBlanksInAMountPointAreDecoded)
{
    mount("/dev/sdb1 /media/my\\040stick vfat rw 0 0\n");
    EXPECT_STREQ(drives()[0].szVolumeName, "/my stick");
}

TEST_F(MountTable, AMissingTableLeavesTheCountAndTheRecords)
{
    EXPECT_EQ(count(), -7);
    EXPECT_STREQ(drives()[0].szDrive, "");
}

TEST_F(MountTable, AnEmptyTableCountsNoDrive)
{
    mount("");
    EXPECT_EQ(count(), 0);
}

TEST_F(MountTable, AMountPointNearAndAboveTheFieldIsCut)
{
    const std::string near = "/" + std::string(1022, 'n');
    const std::string above = "/" + std::string(1500, 'a');
    mount("/dev/a " + near + " vfat rw 0 0\n/dev/b " + above + " vfat rw 0 0\n");
    const auto list = drives();
    EXPECT_EQ(list[0].szDrive, near);
    EXPECT_EQ(list[0].szTotalName, near);
    EXPECT_EQ(list[1].szDrive, above.substr(0, 1023));
    EXPECT_EQ(list[1].szVolumeName, above.substr(0, 1023));
}

TEST_F(MountTable, ADriveBeyondTheLimitIsLeftOut)
{
    mount("/dev/a /a vfat rw 0 0\n/dev/b /b vfat rw 0 0\n");
    EXPECT_STREQ(drives(1)[0].szDrive, "/a");
    EXPECT_EQ(CUtil::GetRemDriveInfo(false, nullptr), 0);
    EXPECT_EQ(CUtil::GetRemDriveCount(false, nullptr), 0);
}

TEST(FindDirectoryAndFile, FindsANameInWhateverCaseAsItStandsOnDisk)
{
    const std::string folder = TestHome::scratch("find");
    writeFile(folder + "/SIGNCERT.DER", "");
    std::string found;
    EXPECT_EQ(find(folder, "signCert.der", &found), 0);
    EXPECT_EQ(found, "SIGNCERT.DER");
    EXPECT_EQ(find(folder, "signCert.de"), -1);
    EXPECT_EQ(find(folder, "signCert.derx"), -1);
}

TEST(FindDirectoryAndFile, ReportsAMissingDirectoryAndAMissingFile)
{
    const std::string folder = TestHome::scratch("find");
    EXPECT_EQ(find(folder + "/none", "a"), -2);
    EXPECT_EQ(find(folder, "a"), -1);
    writeFile(folder + "/file", "");
    EXPECT_EQ(find(folder + "/file", "a"), -2);
}

TEST(FindDirectoryAndFile, WritesNoTerminator)
{
    const std::string folder = TestHome::scratch("find");
    writeFile(folder + "/ab", "");
    auto out = marked(4);
    EXPECT_EQ(CUtil::findDirectoryAndFile(folder.c_str(), "AB", out.data()), 0);
    EXPECT_EQ(bytesOf(out), "abxx");
}

TEST(FindDirectoryAndFile, FoldsNoKoreanBytes)
{
    const std::string folder = TestHome::scratch("find");
    writeFile(folder + "/\xC7\xD1"
                       "Key",
              "");
    EXPECT_EQ(find(folder, "\xC7\xD1"
                           "KEY"),
              0);
    EXPECT_EQ(find(folder, "\xE7\xF1"
                           "KEY"),
              -1);
}

TEST(FindDirectoryAndFile, FindsEntriesOfAnyKind)
{
    const std::string folder = TestHome::scratch("find");
    std::filesystem::create_directory(folder + "/Npki");
    ASSERT_EQ(mkfifo((folder + "/signpri.key").c_str(), 0600), 0);
    EXPECT_EQ(find(folder, "NPKI"), 0);
    EXPECT_EQ(find(folder, "signPri.key"), 0);
}

TEST(FindDirectoryAndFile, TakesTheLongestNamesAndNullArguments)
{
    const std::string folder = TestHome::scratch("find");
    const std::string name(255, 'n');
    writeFile(folder + "/" + name, "");
    std::string found;
    EXPECT_EQ(find(folder, std::string(255, 'N').c_str(), &found), 0);
    EXPECT_EQ(found.substr(0, 255), name);
    EXPECT_EQ(find(folder, std::string(5000, 'N').c_str()), -1);
    EXPECT_EQ(find(folder, nullptr), -1);
    EXPECT_EQ(CUtil::findDirectoryAndFile(nullptr, "a", nullptr), -2);
    EXPECT_EQ(CUtil::findDirectoryAndFile(folder.c_str(), "a", nullptr), -1);
}

TEST(FindDirectoryAndFile, ClosesItsDirectoryOnEveryPath)
{
    const std::string folder = TestHome::scratch("find");
    writeFile(folder + "/a", "");
    const auto openFiles = [] {
        const std::filesystem::directory_iterator all("/proc/self/fd");
        return std::distance(begin(all), end(all));
    };
    const auto before = openFiles();
    find(folder, "a");
    find(folder, "b");
    find(folder + "/none", "a");
    EXPECT_EQ(openFiles(), before);
}

TEST(GetFolderFilePath, CountsTwoFoldersInAnEmptyDirectory)
{
    Folder folder;
    folder.count();
    EXPECT_EQ(folder.folders, 2);
    EXPECT_EQ(folder.files, 0);
}

TEST(GetFolderFilePath, CountsEveryDirectoryAndNeverAFileOrALink)
{
    Folder folder;
    std::filesystem::create_directory(folder.path / "sub");
    std::filesystem::create_directory_symlink(folder.path / "sub", folder.path / "link");
    writeFile(folder.path / "a.p12", "");
    writeFile(folder.path / "noextension", "");
    folder.count();
    EXPECT_EQ(folder.folders, 3);
    EXPECT_EQ(folder.files, 0);
}

TEST(GetFolderFilePath, ListsFoldersWithEmptyNamesAndLeavesTheCounts)
{
    Folder folder;
    writeFile(folder.path / "a.p12", "");
    std::vector<EXPFILELIST> folders(2, EXPFILELIST{"x"});
    EXPFILELIST file{"y"};
    CUtil::GetFolderFilePath(false, folder.path.c_str(), "p12", &folder.folders, &folder.files, &file,
                             folders.data(), 2);
    EXPECT_STREQ(folders[0].szFileName, "");
    EXPECT_STREQ(folders[1].szFileName, "");
    EXPECT_STREQ(file.szFileName, "y");
    EXPECT_EQ(folder.folders, -7);
    EXPECT_EQ(folder.files, -7);
}

TEST(GetFolderFilePath, LeavesOutAFolderBeyondTheLimit)
{
    Folder folder;
    std::vector<EXPFILELIST> folders(2, EXPFILELIST{"x"});
    CUtil::GetFolderFilePath(false, folder.path.c_str(), "p12", nullptr, nullptr, nullptr, folders.data(), 1);
    EXPECT_STREQ(folders[0].szFileName, "");
    EXPECT_STREQ(folders[1].szFileName, "x");
}

TEST(GetFolderFilePath, CountsNothingForAFolderThatCannotBeOpened)
{
    Folder folder;
    folder.path /= "none";
    folder.count();
    EXPECT_EQ(folder.folders, 0);
    EXPECT_EQ(folder.files, 0);
    CUtil::GetFolderFilePath(true, nullptr, nullptr, &folder.folders, &folder.files, nullptr, nullptr);
    EXPECT_EQ(folder.folders, 0);
    CUtil::GetFolderFilePath(true, "/", nullptr, nullptr, nullptr, nullptr, nullptr);
}
