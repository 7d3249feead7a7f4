#include <new>

#include "BoundedText.h"
#include "ClpCall.h"
#include "PrivateKeys.h"

using namespace clp;
using Session = CCertListProcInterface;

char szLogFilePath[1024] = {};

namespace {

/** Takes the host's values, reads the log path, and starts the session. */
int start(Session& session, const LOADOPT& option, void** pPKCS11Context)
{
    copyText(session.m_szWorkDir, option.szWorkDir);
    copyText(session.m_szConfPath, option.szConfigPath);
    copyText(session.m_szConfData, option.szConfigData);
    session.SetLogPathInfo();
    joinText(szLogFilePath, {session.m_szLogFilePath});
    // The one start text that does not end with a blank.
    SetLogInfo(szLogFilePath, "[[ %s (Context : %p) ]]", "CLP_Initalize() Start...",
               static_cast<void*>(&session));
    return session.Inialize(option.nLibAPIType, pPKCS11Context);
}

int initialize(void** pContext, const LOADOPT* pstLoadOpt, void** pPKCS11Context)
{
    if (!pContext)
        return QG_BAD_ARGUMENT;
    if (!*pContext)
        *pContext = new (std::nothrow) Session;
    if (!*pContext)
        return QG_NO_MEMORY;
    return pstLoadOpt ? start(session(*pContext), *pstLoadOpt, pPKCS11Context) : QG_BAD_ARGUMENT;
}

} // namespace

int CLP_Initalize(void** pContext, LOADOPT* pstLoadOpt, void** pPKCS11Context)
{
    const int code = guarded([&] { return initialize(pContext, pstLoadOpt, pPKCS11Context); });
    SetLogInfo(szLogFilePath, "[[ %s", "CLP_Initalize() End... ");
    return code;
}

void CLP_UnInitalize(void* pContext)
{
    startLine("CLP_Initalize", pContext);
    if (!pContext)
        return;
    delete &session(pContext);
    SetLogInfo(szLogFilePath, "[[ %s", "CLP_UnInitalize() End... ");
}

int CLP_SetType(void* pContext, LOADCERTOPT* pstLoadCertOpt)
{
    return forward("CLP_SetType", pContext, pstLoadCertOpt != nullptr,
                   [&](Session& session) { return session.SetLoadCertType(pstLoadCertOpt); });
}

int CLP_SetMediaType(void* pContext, int nMediaType, int nSubIndex)
{
    return forward("CLP_SetMediaType", pContext,
                   [&](Session& session) { return session.SetMediaType(nMediaType, nSubIndex); });
}

int CLP_SetPFXInfo(void* pContext, char* pszPath, char* pszPassword)
{
    return forward("CLP_SetPFXInfo", pContext,
                   [&](Session& session) { return session.SetPFXInfo(pszPath, pszPassword); });
}

int CLP_SetMemoryCert(void* pContext, char* pszSignCert, int nSignCertLen, char* pszSignKey, int nSignKeyLen,
                      char* pszKmCert, int nKmCertLen, char* pszKmKey, int nKmKeyLen)
{
    const bool usable = pszSignCert && nSignCertLen >= 1 && pszSignKey && nSignKeyLen >= 1;
    return forward("CLP_SetMemoryCert", pContext, usable, [&](Session& session) {
        return session.SetMemoryCert(pszSignCert, nSignCertLen, pszSignKey, nSignKeyLen, pszKmCert,
                                     nKmCertLen, pszKmKey, nKmKeyLen);
    });
}

// --- Drives -------------------------------------------------------------------------------------------

int CLP_GetDriveCount(void* pContext, bool bViewRemote, bool bHideCDRom, int* nCount)
{
    return forward("CLP_GetRemDriveCount", pContext,
                   [&](Session& session) { return session.GetDriveCount(bViewRemote, bHideCDRom, nCount); });
}

int CLP_GetDrive(void* pContext, DRIVEINFO* pstDirveInfo)
{
    return forward("CLP_GetRemDrive", pContext, pstDirveInfo != nullptr,
                   [&](Session& session) { return session.GetDriveList(pstDirveInfo); });
}

int CLP_GetRemDriveCount(void* pContext, int* nCount)
{
    return forward("CLP_GetRemDriveCount", pContext,
                   [&](Session& session) { return session.GetRemDriveCount(nCount); });
}

int CLP_GetRemDrive(void* pContext, DRIVEINFO* pstRemDirveInfo)
{
    return forward("CLP_GetRemDrive", pContext, pstRemDirveInfo != nullptr,
                   [&](Session& session) { return session.GetRemDriveList(pstRemDirveInfo); });
}

// --- List and details ---------------------------------------------------------------------------------

int CLP_LoadCertList(void* pContext)
{
    return forward("CLP_LoadCertList", pContext, [](Session& session) { return session.LoadCertList(); });
}

int CLP_GetCertCount(void* pContext)
{
    return forward("CLP_GetCertCount", pContext, [](Session& session) { return session.GetCertCount(); });
}

int CLP_GetCertInfo(void* pContext, int nIndex, CERTINFO* pstSelectCertInfo)
{
    return forward("CLP_GetCertInfo", pContext,
                   [&](Session& session) { return session.GetCertInfo(nIndex, pstSelectCertInfo); });
}

int CLP_GetHashAlgInfo(void* pContext, int nIndex, int* nHashAlg)
{
    return forward("CLP_GetHashAlgInfo", pContext,
                   [&](Session& session) { return session.GetHashAlgInfo(nIndex, nHashAlg); });
}

// --- Memory -------------------------------------------------------------------------------------------

int CLP_MemFree(void* pContext, void** ppValue)
{
    startLine("CLP_MemFree", pContext);
    return endLine("CLP_MemFree", freeHandedOut(ppValue));
}

int CP_ClearCertData(void* pContext)
{
    startLine("CP_ClearData", pContext);
    if (pContext)
        session(pContext).ClearCertData();
    SetLogInfo(szLogFilePath, "[[ %s ]]", "CP_ClearData() End... ");
    return pContext ? QG_OK : CLPERR_NO_HANDLE;
}

void ClearCertData(void* pContext)
{
    startLine("CLP_ChangePassword", pContext);
    if (pContext)
        session(pContext).ClearCertData();
    SetLogInfo(szLogFilePath, "[[ %s ]]", "CLP_ChangePassword() End... ");
}
