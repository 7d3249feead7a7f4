#include "quillgate/toolkit_utility.h"

#include "ZRAPIWrap.h"

int ZRAPGetDataByURL(void* pContext, int nDataType, char* pszURL, BINSTR* pBinData)
{
    return Forward(pContext, &CWrapperAPI::ZRAPGetDataByURL, nDataType, pszURL, pBinData);
}

int ZRAPGetCRLByCert(void* pContext, BINSTR* pBinCert, BINSTR* pBinCRL)
{
    return Forward(pContext, &CWrapperAPI::ZRAPGetCRLByCert, pBinCert, pBinCRL);
}

int LDAPGetDataByCN(void* pContext, char* pszIP, int nPort, char* pszCN, int nDataType, char* FullDN,
                    BINSTR* pBinData)
{
    return Forward(pContext, &CWrapperAPI::LDAPGetDataByCN, pszIP, nPort, pszCN, nDataType, FullDN, pBinData);
}

int LDAPGetAnyDataByURL(void* pContext, char* pszAttribute, char* pszURL, BINSTR* pBinData)
{
    return Forward(pContext, &CWrapperAPI::LDAPGetAnyDataByURL, pszAttribute, pszURL, pBinData);
}

int LDAPGetCertPath(void* pContext, BINSTR* pBinCert, char* pszConfFilePath, BINSTR* pBinPath)
{
    return Forward(pContext, &CWrapperAPI::LDAPGetCertPath, pBinCert, pszConfFilePath, pBinPath);
}

int SIGEAMakeChallenge(void* pContext, BINSTR* pBinChallenge)
{
    return Forward(pContext, &CWrapperAPI::SIGEAMakeChallenge, pBinChallenge);
}

int SIGEAMakeResponse(void* pContext, BINSTR* pBinChallenge, BINSTR* pBinCert, BINSTR* pBinPriKey,
                      BINSTR* pBinResponse)
{
    return Forward(pContext, &CWrapperAPI::SIGEAMakeResponse, pBinChallenge, pBinCert, pBinPriKey,
                   pBinResponse);
}

int SIGEAVerifyResponse(void* pContext, BINSTR* pBinResponse, BINSTR* pBinChallenge, BINSTR* pBinCert)
{
    return Forward(pContext, &CWrapperAPI::SIGEAVerifyResponse, pBinResponse, pBinChallenge, pBinCert);
}

int WPKISignData(void* pContext, BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinTBSData,
                 BINSTR* pBinSignedContent)
{
    return Forward(pContext, &CWrapperAPI::WPKISignData, pBinCert, pBinPriKey, pBinTBSData,
                   pBinSignedContent);
}

int WPKIVerifyData(void* pContext, BINSTR* pBinSignedContent, BINSTR* pBinData, BINSTR* pBinSignerCert)
{
    return Forward(pContext, &CWrapperAPI::WPKIVerifyData, pBinSignedContent, pBinData, pBinSignerCert);
}

int WPKIEncryptData(void* pContext, BINSTR* pBinRecCert, BINSTR* pBinTBEData, int nSymAlg, BINSTR* pBinCert,
                    BINSTR* pBinPriKey, BINSTR* pBinWapEnvData)
{
    return Forward(pContext, &CWrapperAPI::WPKIEncryptData, pBinRecCert, pBinTBEData, nSymAlg, pBinCert,
                   pBinPriKey, pBinWapEnvData);
}

int WPKIDecryptData(void* pContext, BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinWapEnvData,
                    BINSTR* pBinWapData)
{
    return Forward(pContext, &CWrapperAPI::WPKIDecryptData, pBinCert, pBinPriKey, pBinWapEnvData,
                   pBinWapData);
}

int WPKIVerifyCert(void* pContext, BINSTR* pBinCert)
{
    return Forward(pContext, &CWrapperAPI::WPKIVerifyCert, pBinCert);
}

int UNIViewCert(void* pContext, BINSTR* pBinCert, char* pszDisplay)
{
    return Forward(pContext, &CWrapperAPI::UNIViewCert, pBinCert, pszDisplay);
}

int UNIVerifySignData(void* pContext, BINSTR* pBinSignData, BINSTR* pBinData, BINSTR* pBinSignerCert)
{
    return Forward(pContext, &CWrapperAPI::UNIVerifySignData, pBinSignData, pBinData, pBinSignerCert);
}

int UNIDecryptEnvData(void* pContext, BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinEnvData,
                      BINSTR* pBinData)
{
    return Forward(pContext, &CWrapperAPI::UNIDecryptEnvData, pBinCert, pBinPriKey, pBinEnvData, pBinData);
}

int UTILAddObject(void* pContext, BINSTR* pBinObj, BINSTR* pBinObjs)
{
    return Forward(pContext, &CWrapperAPI::UTILAddObject, pBinObj, pBinObjs);
}

int UTILGetObjectCount(void* pContext, BINSTR* pBinObjs, int* nCnt)
{
    return Forward(pContext, &CWrapperAPI::UTILGetObjectCount, pBinObjs, nCnt);
}

int UTILGetObject(void* pContext, BINSTR* pBinObjs, int nIndex, BINSTR* pBinObj)
{
    return Forward(pContext, &CWrapperAPI::UTILGetObject, pBinObjs, nIndex, pBinObj);
}

int UTILCompareDN(void* pContext, char* pszDN1, char* pszDN2)
{
    return Forward(pContext, &CWrapperAPI::UTILCompareDN, pszDN1, pszDN2);
}

int UTILGetCertPath(void* pContext, BINSTR* pBinCert, BINSTR* pBinPath)
{
    return Forward(pContext, &CWrapperAPI::UTILGetCertPath, pBinCert, pBinPath);
}

int UTILGetRootCert(void* pContext, BINSTR* pBinCert, BINSTR* pBinRootCert)
{
    return Forward(pContext, &CWrapperAPI::UTILGetRootCert, pBinCert, pBinRootCert);
}

int UTILIsTrustCert(void* pContext, BINSTR* pBinTrustCert, BINSTR* pBinRootCert, bool* pIsTrust)
{
    return Forward(pContext, &CWrapperAPI::UTILIsTrustCert, pBinTrustCert, pBinRootCert, pIsTrust);
}
