#include "CertListProcInterface.h"
#include "Secret.h"

namespace {

/** The four operations share the texts of the removable pair: readers of the log know them so. */
const char* const COUNT_TAG = "CCertListProcInterface::GetRemDriveCount()";
const char* const LIST_TAG = "CCertListProcInterface::GetRemDriveList()";

} // namespace

/** Builds a drive list and gives its length. */
template <typename Build>
int CCertListProcInterface::countDrives(int* nCount, const int& built, Build build)
{
    if (!nCount)
        return QG_BAD_ARGUMENT;
    *nCount = 0;
    if (const int code = build())
        return code;
    *nCount = built;
    CUtil::SetLogInfo(m_szLogFilePath, "RemDrive Count : %d", *nCount);
    return QG_OK;
}

int CCertListProcInterface::GetDriveCount(bool bViewRemote, bool bHideCDRom, int* nCount)
{
    return runOnStores(COUNT_TAG, [&] {
        return countDrives(nCount, m_pDisk->m_nDrvCnt,
                           [&] { return m_pDisk->GetDriveList(bViewRemote, bHideCDRom); });
    });
}

int CCertListProcInterface::GetRemDriveCount(int* nCount)
{
    return runOnStores(COUNT_TAG, [&] {
        return countDrives(nCount, m_pDisk->m_nRemDrvCnt,
                           [&] { return m_pDisk->GetRemDriveList(m_bCDROMHide); });
    });
}

int CCertListProcInterface::GetDriveList(DRIVEINFO* pstDirveInfo)
{
    return runOnStores(LIST_TAG, COUNT_TAG, [&]() -> int {
        return pstDirveInfo ? m_pDisk->GetDriveInfo(pstDirveInfo) : QG_BAD_ARGUMENT;
    });
}

int CCertListProcInterface::GetRemDriveList(DRIVEINFO* pstRemDirveInfo)
{
    return runOnStores(LIST_TAG, COUNT_TAG, [&]() -> int {
        return pstRemDirveInfo ? m_pDisk->GetRemDriveInfo(pstRemDirveInfo) : QG_BAD_ARGUMENT;
    });
}

int CCertListProcInterface::SetMediaType(int nMediaType, int nSubIndex)
{
    return runOnStores("CCertListProcInterface::SetMediaType()", [&]() -> int {
        if (nMediaType == MEDIA_SMARTCARD || nMediaType == MEDIA_PKCS11 ||
            nMediaType == MEDIA_SERVICE_MEMORY || nMediaType == MEDIA_USIM || nSubIndex < 0)
            return QG_BAD_ARGUMENT;
        // A drive that is not in the list can't be chosen, and the earlier medium stays in force.
        if (nMediaType == MEDIA_REMOVABLE && nSubIndex >= m_pDisk->m_nRemDrvCnt)
            return QG_BAD_ARGUMENT;
        m_nMediaType = nMediaType;
        m_nSubIndex = nSubIndex;
        wipe(m_szPINNumber);
        if (onDisk())
            m_pDisk->m_nMediaType = nMediaType;
        if (nMediaType == MEDIA_REMOVABLE)
            m_pDisk->SetRemDriveInfo(nSubIndex);
        if (nMediaType == MEDIA_MEMORY || nMediaType == MEDIA_PFX)
            m_pMemory->m_nMediaType = nMediaType;
        return QG_OK;
    });
}
