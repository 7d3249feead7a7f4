#include "ZRTKWrap.h"

int CZRTKWrap::ZRAPGetDataByURL(int nDataType, char* pszURL, BINSTR* pBinData)
{
    return Call("ZRTK_ZRAP_GetDataByURL", Require(NotNull(pszURL)), m_pContext, nDataType, pszURL, pBinData);
}

int CZRTKWrap::ZRAPGetCRLByCert(BINSTR* pBinCert, BINSTR* pBinCRL)
{
    return Call("ZRTK_ZRAP_GetCRLByCert", Require(HasData(pBinCert)), m_pContext, pBinCert, pBinCRL);
}

int CZRTKWrap::WPKISignData(BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinTBSData,
                            BINSTR* pBinSignedContent)
{
    return Call("ZRTK_WPKI_SignData", Require(HasData(pBinCert), HasData(pBinPriKey), HasData(pBinTBSData)),
                m_pContext, pBinCert, pBinPriKey, pBinTBSData, pBinSignedContent);
}

int CZRTKWrap::WPKIVerifyData(BINSTR* pBinSignedContent, BINSTR* pBinData, BINSTR* pBinSignerCert)
{
    return Call("ZRTK_WPKI_VerifyData", Require(HasData(pBinSignedContent)), m_pContext, pBinSignedContent,
                pBinData, pBinSignerCert);
}

int CZRTKWrap::WPKIEncryptData(BINSTR* pBinRecCert, BINSTR* pBinTBEData, int nSymAlg, BINSTR* pBinCert,
                               BINSTR* pBinPriKey, BINSTR* pBinWapEnvData)
{
    return Call("ZRTK_WPKI_EncryptData",
                Require(HasData(pBinRecCert), HasData(pBinTBEData), HasData(pBinCert), HasData(pBinPriKey)),
                m_pContext, pBinRecCert, pBinTBEData, nSymAlg, pBinCert, pBinPriKey, pBinWapEnvData);
}

int CZRTKWrap::WPKIDecryptData(BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinWapEnvData,
                               BINSTR* pBinWapData)
{
    return Call("ZRTK_WPKI_DecryptData",
                Require(HasData(pBinCert), HasData(pBinPriKey), HasData(pBinWapEnvData)), m_pContext,
                pBinCert, pBinPriKey, pBinWapEnvData, pBinWapData);
}

int CZRTKWrap::WPKIVerifyCert(BINSTR* pBinCert)
{
    return Call("ZRTK_WPKI_VerifyCert", Require(HasData(pBinCert)), m_pContext, pBinCert);
}

// The size of the text is told as 8, whatever the buffer holds.
int CZRTKWrap::UNIViewCert(BINSTR* pBinCert, char* pszDisplay)
{
    return Call("ZRTK_UNI_ViewCert", Require(HasData(pBinCert)), m_pContext, pBinCert, MISSTATED_SIZE,
                pszDisplay);
}

int CZRTKWrap::UNIVerifySignData(BINSTR* pBinSignData, BINSTR* pBinData, BINSTR* pBinSignerCert)
{
    return Call("ZRTK_UNI_VerifySignData", Require(HasData(pBinSignData)), m_pContext, pBinSignData, pBinData,
                pBinSignerCert);
}

int CZRTKWrap::UNIDecryptEnvData(BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinEnvData, BINSTR* pBinData)
{
    return Call("ZRTK_UNI_DecryptEnvData",
                Require(HasData(pBinCert), HasData(pBinPriKey), HasData(pBinEnvData)), m_pContext, pBinCert,
                pBinPriKey, pBinEnvData, pBinData);
}

int CZRTKWrap::UTILAddObject(BINSTR* pBinObj, BINSTR* pBinObjs)
{
    return Call("ZRTK_UTIL_AddObject", Require(HasData(pBinObj)), m_pContext, pBinObj, pBinObjs);
}

int CZRTKWrap::UTILGetObjectCount(BINSTR* pBinObjs, int* nCnt)
{
    return Call("ZRTK_UTIL_GetObjectCount", Require(HasData(pBinObjs)), m_pContext, pBinObjs, nCnt);
}

int CZRTKWrap::UTILGetObject(BINSTR* pBinObjs, int nIndex, BINSTR* pBinObj)
{
    return Call("ZRTK_UTIL_GetObject", Require(HasData(pBinObjs)), m_pContext, pBinObjs, nIndex, pBinObj);
}

int CZRTKWrap::UTILCompareDN(char* pszDN1, char* pszDN2)
{
    return Call("ZRTK_UTIL_CompareDN", Require(NotNull(pszDN1), NotNull(pszDN2)), m_pContext, pszDN1, pszDN2);
}

int CZRTKWrap::UTILGetCertPath(BINSTR* pBinCert, BINSTR* pBinPath)
{
    return Call("ZRTK_UTIL_GetCertPath", Require(HasData(pBinCert)), m_pContext, pBinCert, pBinPath);
}

int CZRTKWrap::UTILGetRootCert(BINSTR* pBinCert, BINSTR* pBinRootCert)
{
    return Call("ZRTK_UTIL_GetRootCert", Require(HasData(pBinCert)), m_pContext, pBinCert, pBinRootCert);
}

int CZRTKWrap::UTILIsTrustCert(BINSTR* pBinTrustCert, BINSTR* pBinRootCert, bool* pIsTrust)
{
    return Call("ZRTK_UTIL_IsTrustCert", Require(HasData(pBinTrustCert), HasData(pBinRootCert)), m_pContext,
                pBinTrustCert, pBinRootCert, pIsTrust);
}
