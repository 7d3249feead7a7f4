#include "Util.h"

#include <algorithm>
#include <cstring>
#include <dirent.h>
#include <memory>
#include <mntent.h>
#include <string_view>
#include <strings.h>
#include <sys/stat.h>

#include "BoundedText.h"
#include "LibFile.h"

namespace {

/** "Hard disk" in Korean (하드디스크), in EUC-KR as every text that the dialogs decode. */
constexpr char hardDiskKorean[] = "\xC7\xCF\xB5\xE5\xB5\xF0\xBD\xBA\xC5\xA9";

void fillDrive(DRIVEINFO& drive, int index, const char* volume, const char* path)
{
    drive.nIndex = index;
    joinText(drive.szDrive, {path});
    joinText(drive.szVolumeName, {volume});
    joinText(drive.szTotalName, {volume, " (", path, ")"});
}

struct CloseMountTable
{
    void operator()(FILE* table) const { endmntent(table); }
};

struct CloseDirectory
{
    void operator()(DIR* directory) const { closedir(directory); }
};

using Directory = std::unique_ptr<DIR, CloseDirectory>;

Directory openDirectory(const char* path)
{
    return Directory(path ? opendir(path) : nullptr);
}

/** Calls `visit` with the mount point of each vfat drive; false when the mount table can't be opened. */
template <typename Visit>
bool forEachRemovableDrive(Visit visit)
{
    const std::unique_ptr<FILE, CloseMountTable> table(setmntent("/etc/mtab", "r"));
    if (!table)
        return false;
    while (const mntent* entry = getmntent(table.get())) {
        if (strcasecmp(entry->mnt_type, "vfat") == 0)
            visit(entry->mnt_dir);
    }
    return true;
}

/** True for a directory itself, not for a link to one. */
bool isDirectory(const char* folder, const char* name)
{
    char path[4096];
    joinText(path, {folder, "/", name});
    struct stat status
    {};
    return lstat(path, &status) == 0 && S_ISDIR(status.st_mode);
}

/** Equal but for the case of ASCII letters; bytes of Korean names count as they are. */
bool equalFolded(std::string_view left, std::string_view right)
{
    const auto upper = [](char letter) {
        return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - ('a' - 'A')) : letter;
    };
    return std::ranges::equal(left, right, {}, upper, upper);
}

} // namespace

int CUtil::GetDriveInfo(bool bOnlyCount, bool /*bHideCDRom*/, int* nCount, DRIVEINFO* stDriveInfo)
{
    if (bOnlyCount && nCount)
        *nCount = 1;
    if (!bOnlyCount && stDriveInfo)
        fillDrive(*stDriveInfo, 0, m_nLanguage == LANGUAGE_ENGLISH ? "HardDisk" : hardDiskKorean, "/");
    return 0;
}

int CUtil::GetDriveInfo(bool bOnlyCount, bool bHideCDRom, bool /*bHideRemote*/, bool /*bHideLocal*/,
                        int* nCount, DRIVEINFO* stDriveInfo)
{
    return GetDriveInfo(bOnlyCount, bHideCDRom, nCount, stDriveInfo);
}

int CUtil::GetRemDriveCount(bool /*bCDRomHide*/, int* nCnt)
{
    int count = 0;
    if (forEachRemovableDrive([&](const char*) { ++count; }) && nCnt)
        *nCnt = count;
    return 0;
}

int CUtil::GetRemDriveInfo(bool /*bCDRomHide*/, DRIVEINFO* stRemDriveInfo, int nLimit)
{
    if (!stRemDriveInfo)
        return 0;
    int index = 0;
    forEachRemovableDrive([&](const char* path) {
        if (index >= nLimit)
            return;
        const char* volume = std::strrchr(path, '/');
        fillDrive(stRemDriveInfo[index], index, volume ? volume : path, path);
        ++index;
    });
    return 0;
}

void CUtil::GetFolderFilePath(bool bOnlyCount, const char* pszRootPath, const char* /*pszFormat*/,
                              int* nFolderCnt, int* nFileCnt, EXPFILELIST* /*stFile*/, EXPFILELIST* stFolder,
                              int nFolderLimit)
{
    // Names pass through a conversion that yields nothing. So "." and ".." are not told apart from other
    // folders, folders have empty names, and no file has an extension that could match. Hosts count on it.
    [[maybe_unused]] const ConvertUTF8 converter;
    int folders = 0;
    const Directory directory = openDirectory(pszRootPath);
    while (const dirent* entry = directory ? readdir(directory.get()) : nullptr) {
        if (!isDirectory(pszRootPath, entry->d_name))
            continue;
        if (!bOnlyCount && stFolder && folders < nFolderLimit)
            stFolder[folders].szFileName[0] = '\0';
        ++folders;
    }
    if (bOnlyCount && nFolderCnt && nFileCnt) {
        *nFolderCnt = folders;
        *nFileCnt = 0;
    }
}

int CUtil::findDirectoryAndFile(const char* rootPath, const char* targetName, char* result)
{
    const Directory directory = openDirectory(rootPath);
    if (!directory)
        return -2;
    if (!targetName || !result)
        return -1;
    while (const dirent* entry = readdir(directory.get())) {
        const std::string_view name(entry->d_name);
        if (!equalFolded(name, targetName))
            continue;
        name.copy(result, name.size());
        return 0;
    }
    return -1;
}
