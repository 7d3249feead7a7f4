#include <new>

#include "BoundedText.h"
#include "LoadDISK.h"
#include "quillgate/returncodes.h"

namespace {

std::unique_ptr<DRIVEINFO[]> makeDriveList(int count)
{
    return std::unique_ptr<DRIVEINFO[]>(new (std::nothrow) DRIVEINFO[static_cast<size_t>(count)]());
}

void copyDrives(DRIVEINFO* target, const DRIVEINFO* source, int count)
{
    for (int i = 0; source && i < count; ++i) {
        target[i].nIndex = source[i].nIndex;
        copyText(target[i].szDrive, source[i].szDrive);
        copyText(target[i].szVolumeName, source[i].szVolumeName);
        copyText(target[i].szTotalName, source[i].szTotalName);
    }
}

} // namespace

int CLoadDISK::GetDriveList(bool bViewRemote, bool bHideCDRom)
{
    return log().traced("CLoadDISK::GetRemDriveList()", [&]() -> int {
        m_nDrvCnt = 0;
        if (const int code = m_util.GetDriveInfo(true, bHideCDRom, !bViewRemote, true, &m_nDrvCnt, nullptr))
            return code;
        m_pstDriveList = makeDriveList(m_nDrvCnt);
        if (!m_pstDriveList)
            return QG_NO_MEMORY;
        // Counts once more and so leaves the record blank. Settled: the hard disk's root is the home
        // directory, and hosts expect the empty names.
        return m_util.GetDriveInfo(true, bHideCDRom, !bViewRemote, true, &m_nDrvCnt, m_pstDriveList.get());
    });
}

int CLoadDISK::GetDriveInfo(DRIVEINFO* pstDriveInfo)
{
    return log().traced("CLoadDISK::GetRemDriveInfo()", [&]() -> int {
        if (!pstDriveInfo)
            return QG_NO_MEMORY;
        copyDrives(pstDriveInfo, m_pstDriveList.get(), m_nDrvCnt);
        return QG_OK;
    });
}

int CLoadDISK::GetRemDriveList(bool bCDRomHide)
{
    return log().traced("CLoadDISK::GetRemDriveList()", [&]() -> int {
        m_nRemDrvCnt = 0;
        if (const int code = CUtil::GetRemDriveCount(bCDRomHide, &m_nRemDrvCnt))
            return code;
        m_pstRemDriveList = makeDriveList(m_nRemDrvCnt);
        if (!m_pstRemDriveList)
            return QG_NO_MEMORY;
        return CUtil::GetRemDriveInfo(bCDRomHide, m_pstRemDriveList.get(), m_nRemDrvCnt);
    });
}

int CLoadDISK::GetRemDriveInfo(DRIVEINFO* pstDriveInfo)
{
    return log().traced("CLoadDISK::GetRemDriveInfo()", [&]() -> int {
        if (!pstDriveInfo)
            return QG_NO_MEMORY;
        copyDrives(pstDriveInfo, m_pstRemDriveList.get(), m_nRemDrvCnt);
        return QG_OK;
    });
}

void CLoadDISK::SetRemDriveInfo(int nSubIndex)
{
    log().traced("CLoadDISK::SetRemDriveInfo()", [&]() -> int {
        if (!m_pstRemDriveList || nSubIndex < 0 || nSubIndex >= m_nRemDrvCnt)
            return QG_BAD_ARGUMENT;
        m_nSelRemDriveIndex = nSubIndex;
        joinText(m_szSelRemDrive, {m_pstRemDriveList[static_cast<size_t>(nSubIndex)].szDrive});
        return QG_OK;
    });
}
