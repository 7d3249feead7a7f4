#include <cstring>
#include <strings.h>

#include "BoundedText.h"
#include "CertListProcInterface.h"

namespace {

/** Lists of a search, as the host numbers them. */
enum
{
    SEARCH_DRIVES = 0,
    SEARCH_FOLDERS = 1,
    SEARCH_FILES = 2
};

/** Without a terminator: hosts pass a cleared buffer. */
int copyName(const char* name, int limit, char* target)
{
    std::memcpy(target, name, strnlen(name, static_cast<size_t>(limit)));
    return QG_OK;
}

} // namespace

int CCertListProcInterface::SetSearchFileList(char* pszPath, char* pszFormat)
{
    return run("CCertListProcInterface::SetSearchFileList()", [&]() -> int {
        m_nDriveCnt = m_nFolderCnt = m_nFileCnt = 0;
        if (!pszPath)
            return QG_BAD_ARGUMENT;
        return strcasecmp(pszPath, "root") == 0 ? searchDrives() : searchFolder(pszPath, pszFormat);
    });
}

/** The "root" step. The folder and file lists stay as they are, with counts of 0. */
int CCertListProcInterface::searchDrives()
{
    m_util.GetDriveInfo(true, true, false, true, &m_nDriveCnt, nullptr);
    m_pstSearchDriveInfo.reset();
    if (m_nDriveCnt < 1)
        return QG_OK;
    if (!m_pstSearchDriveInfo.allocate(m_nDriveCnt))
        return QG_NO_MEMORY;
    m_util.GetDriveInfo(false, true, false, true, &m_nDriveCnt, m_pstSearchDriveInfo.get());
    return QG_OK;
}

/** The step into a folder. The drive list stays as it is, with a count of 0. */
int CCertListProcInterface::searchFolder(const char* pszPath, const char* pszFormat)
{
    char path[4096];
    joinText(path, {pszPath});
    CUtil::GetFolderFilePath(true, path, pszFormat, &m_nFolderCnt, &m_nFileCnt, nullptr, nullptr);
    m_pstFolderNameList.reset();
    m_pstFileNameList.reset();
    if (m_nFolderCnt < 1 && m_nFileCnt < 1) {
        log().codeInBrackets("CCertListProcInterface::SearchFile()", "m_nFolderCnt:0 && m_nFolderCnt :0",
                             CLPERR_FOLDER_EMPTY);
        return CLPERR_FOLDER_EMPTY;
    }
    // The drive list is asked for, not the new array. So folders are listed only in a session that has run a
    // "root" step, while count and array stand already; hosts have arranged themselves with both.
    if (m_nFolderCnt > 0 && (!m_pstFolderNameList.allocate(m_nFolderCnt) || !m_pstSearchDriveInfo))
        return QG_NO_MEMORY;
    if (m_nFileCnt > 0 && !m_pstFileNameList.allocate(m_nFileCnt))
        return QG_NO_MEMORY;
    CUtil::GetFolderFilePath(false, path, pszFormat, &m_nFolderCnt, &m_nFileCnt, m_pstFileNameList.get(),
                             m_pstFolderNameList.get(), m_nFolderCnt);
    return QG_OK;
}

int CCertListProcInterface::GetSearchFileCount(int nType, int* nCount)
{
    const char* const tag = "CCertListProcInterface::GetSearchFileCount()";
    log().start(tag);
    m_nRtn = nCount ? QG_OK : QG_BAD_ARGUMENT;
    if (nCount) {
        const int counts[] = {m_nDriveCnt, m_nFolderCnt, m_nFileCnt};
        *nCount = nType >= SEARCH_DRIVES && nType <= SEARCH_FILES ? counts[nType] : 0;
        CUtil::SetLogInfo(m_szLogFilePath, "nCount : %d", *nCount);
    }
    // No blank before the colon, unlike every other end line: readers of the log know it so.
    CUtil::SetLogInfo(m_szLogFilePath, "%s End...: %d", tag, m_nRtn);
    return m_nRtn;
}

int CCertListProcInterface::GetSearchFileName(int nType, int nIndex, int nFileNameLen, char* pszFileName)
{
    return run("CCertListProcInterface::GetSearchFileName()", [&]() -> int {
        if (nIndex < 0 || !pszFileName || nFileNameLen < 1)
            return QG_BAD_ARGUMENT;
        if (nType == SEARCH_DRIVES) {
            const DRIVEINFO* drive = m_pstSearchDriveInfo.at(nIndex);
            return drive ? copyName(drive->szTotalName, nFileNameLen - 1, pszFileName) : QG_BAD_ARGUMENT;
        }
        if (nType != SEARCH_FOLDERS && nType != SEARCH_FILES)
            return QG_OK;
        // An array outlives its count: a name can be had until the next step of its kind.
        const auto& list = nType == SEARCH_FOLDERS ? m_pstFolderNameList : m_pstFileNameList;
        const EXPFILELIST* entry = list.at(nIndex);
        return entry ? copyName(entry->szFileName, nFileNameLen - 1, pszFileName) : QG_BAD_ARGUMENT;
    });
}
