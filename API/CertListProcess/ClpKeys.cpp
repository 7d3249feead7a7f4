#include "ClpCall.h"

using namespace clp;
using Session = CCertListProcInterface;

int CLP_DecryptPriKey(void* pContext, int nIndex, char* pszPassword)
{
    return forward("CLP_DecryptPriKey", pContext,
                   [&](Session& session) { return session.DecryptPriKey(nIndex, pszPassword); });
}

int CLP_DecryptPriKeyData(void* pContext, int nIndex, char* pszPassword, char** pszOutSignKey,
                          int* nOutSignKeyLen, char** pszOutKmKey, int* nOutKmKeyLen)
{
    return forward("CLP_DecryptPriKeyData", pContext, nIndex >= 0 && hasText(pszPassword),
                   [&](Session& session) {
                       return session.DecryptPriKey(nIndex, pszPassword, pszOutSignKey, nOutSignKeyLen,
                                                    pszOutKmKey, nOutKmKeyLen);
                   });
}

int CLP_GetPriKeyRandom(void* pContext, int nIndex, char* pszPassword, char** pszOutKeyRandom,
                        int* nOutKeyRandomLen)
{
    return forward("CLP_GetPriKeyRandom", pContext, [&](Session& session) {
        return session.GetPriKeyRandom(nIndex, pszPassword, pszOutKeyRandom, nOutKeyRandomLen);
    });
}

int CLP_SelectCert(void* pContext, int nIndex, char* pszPassword, CERTINFO* pstSelCertInfo)
{
    return forward("CLP_SelectCert", pContext, pszPassword != nullptr, [&](Session& session) {
        const int code = session.SelectCert(nIndex, pszPassword);
        return code == QG_OK || code == CLPERR_KM_PASSWORD ? session.GetCertInfo(nIndex, pstSelCertInfo)
                                                           : code;
    });
}

int CLP_ChangePassword(void* pContext, int nIndex, char* pszOldPassword, char* pszNewPassword)
{
    return forward("CLP_ChangePassword", pContext, nIndex >= 0, [&](Session& session) {
        return session.ChangePassword(nIndex, pszOldPassword, pszNewPassword);
    });
}

int CLP_CheckPassword(void* pContext, char* pszPassword, char* pszKey, int nKeyLen)
{
    return forward("CLP_CheckPassword", pContext, hasText(pszPassword) && pszKey && nKeyLen >= 1,
                   [&](Session& session) { return session.CheckPassword(pszPassword, pszKey, nKeyLen); });
}

int CLP_VerifyVID(void* pContext, int nIndex, char* pszIDN, char* pszPassword)
{
    return forward("CLP_VerifyVID", pContext,
                   [&](Session& session) { return session.VerifyVID(nIndex, pszIDN, pszPassword); });
}

int CLP_VerifyCert(void* pContext, int nIndex, int nMsgLen, char* pszVerifyMsg)
{
    return forward("CLP_VerifyCert", pContext,
                   [&](Session& session) { return session.VerifyCert(nIndex, nMsgLen, pszVerifyMsg); });
}

// --- Saving, deleting, PFX ----------------------------------------------------------------------------

int CLP_SaveCert(void* pContext, bool bEncKey, char* pszPassword, char* pszSignCert, int nSignCertLen,
                 char* pszSignKey, int nSignKeyLen, char* pszKmCert, int nKmCertLen, char* pszKmKey,
                 int nKmKeyLen)
{
    const bool usable = pszSignCert && pszSignKey && nSignCertLen >= 0 && nSignKeyLen >= 0;
    return forward("CLP_SaveCert", pContext, usable, [&](Session& session) {
        return session.SaveCert(bEncKey, pszSignCert, nSignCertLen, pszSignKey, nSignKeyLen, pszKmCert,
                                nKmCertLen, pszKmKey, nKmKeyLen, pszPassword);
    });
}

int CLP_ExportPFX(void* pContext, int nIndex, char* pszPassword, char* pszPFXPath)
{
    return forward("CLP_ExportPFX", pContext, nIndex >= 0 && pszPassword && pszPFXPath,
                   [&](Session& session) { return session.ExportPFX(nIndex, pszPassword, pszPFXPath); });
}

int CLP_DeleteCert(void* pContext, int nIndex, char* pszPassword)
{
    return forward("CLP_DeleteCert", pContext, nIndex >= 0,
                   [&](Session& session) { return session.DeleteCert(nIndex, pszPassword); });
}

// --- File search --------------------------------------------------------------------------------------

int CLP_SearchFileList(void* pContext, char* pszPath, char* pszFormat)
{
    return forward("CLP_SearchFileList", pContext,
                   [&](Session& session) { return session.SetSearchFileList(pszPath, pszFormat); });
}

int CLP_GetSearchFileCount(void* pContext, int nType, int* nCount)
{
    return forward("CLP_GetSearchFileCount", pContext,
                   [&](Session& session) { return session.GetSearchFileCount(nType, nCount); });
}

int CLP_GetSearchFileName(void* pContext, int nType, int nIndex, int nFileNameLen, char* pszFileName)
{
    return forward("CLP_GetSearchFileName", pContext, [&](Session& session) {
        return session.GetSearchFileName(nType, nIndex, nFileNameLen, pszFileName);
    });
}
