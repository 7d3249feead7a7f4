#include "WrapperDispatch.h"

int CWrapperAPI::ZRAPGetDataByURL(int nDataType, char* pszURL, BINSTR* pBinData)
{
    return Both(Require(NotNull(pszURL)), &CZRTKWrap::ZRAPGetDataByURL, &CGPKIWrap::LDAPGetDataByURL,
                nDataType, pszURL, pBinData);
}

int CWrapperAPI::ZRAPGetCRLByCert(BINSTR* pBinCert, BINSTR* pBinCRL)
{
    return Both(Require(HasData(pBinCert)), &CZRTKWrap::ZRAPGetCRLByCert, &CGPKIWrap::LDAPGetCRLByCert,
                pBinCert, pBinCRL);
}

int CWrapperAPI::LDAPGetDataByCN(char* pszIP, int nPort, char* pszCN, int nDataType, char* FullDN,
                                 BINSTR* pBinData)
{
    return OnlyGpki(Require(NotNull(pszIP), NotNull(pszCN)), &CGPKIWrap::LDAPGetDataByCN, pszIP, nPort, pszCN,
                    nDataType, FullDN, pBinData);
}

int CWrapperAPI::LDAPGetAnyDataByURL(char* pszAttribute, char* pszURL, BINSTR* pBinData)
{
    return OnlyGpki(Require(NotNull(pszAttribute), NotNull(pszURL)), &CGPKIWrap::LDAPGetAnyDataByURL,
                    pszAttribute, pszURL, pBinData);
}

int CWrapperAPI::LDAPGetCertPath(BINSTR* pBinCert, char* pszConfFilePath, BINSTR* pBinPath)
{
    return OnlyGpki(Require(HasData(pBinCert), NotNull(pszConfFilePath)), &CGPKIWrap::LDAPGetCertPath,
                    pBinCert, pszConfFilePath, pBinPath);
}

// The challenge is an output and must hold data all the same. Hosts rely on the refusal.
int CWrapperAPI::SIGEAMakeChallenge(BINSTR* pBinChallenge)
{
    return OnlyGpki(Require(HasData(pBinChallenge)), &CGPKIWrap::SIGEAMakeChallenge, pBinChallenge);
}

int CWrapperAPI::SIGEAMakeResponse(BINSTR* pBinChallenge, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                   BINSTR* pBinResponse)
{
    return OnlyGpki(Require(HasData(pBinChallenge), HasData(pBinCert), HasData(pBinPriKey)),
                    &CGPKIWrap::SIGEAMakeResponse, pBinChallenge, pBinCert, pBinPriKey, pBinResponse);
}

int CWrapperAPI::SIGEAVerifyResponse(BINSTR* pBinResponse, BINSTR* pBinChallenge, BINSTR* pBinCert)
{
    return OnlyGpki(Require(HasData(pBinResponse), HasData(pBinChallenge), HasData(pBinCert)),
                    &CGPKIWrap::SIGEAVerifyResponse, pBinResponse, pBinChallenge, pBinCert);
}

int CWrapperAPI::WPKISignData(BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinTBSData,
                              BINSTR* pBinSignedContent)
{
    return OnlyZrtk(Require(HasData(pBinCert), HasData(pBinPriKey), HasData(pBinTBSData)),
                    &CZRTKWrap::WPKISignData, pBinCert, pBinPriKey, pBinTBSData, pBinSignedContent);
}

int CWrapperAPI::WPKIVerifyData(BINSTR* pBinSignedContent, BINSTR* pBinData, BINSTR* pBinSignerCert)
{
    return OnlyZrtk(Require(HasData(pBinSignedContent)), &CZRTKWrap::WPKIVerifyData, pBinSignedContent,
                    pBinData, pBinSignerCert);
}

int CWrapperAPI::WPKIEncryptData(BINSTR* pBinRecCert, BINSTR* pBinTBEData, int nSymAlg, BINSTR* pBinCert,
                                 BINSTR* pBinPriKey, BINSTR* pBinWapEnvData)
{
    return OnlyZrtk(
        Require(HasData(pBinRecCert), HasData(pBinTBEData), HasData(pBinCert), HasData(pBinPriKey)),
        &CZRTKWrap::WPKIEncryptData, pBinRecCert, pBinTBEData, nSymAlg, pBinCert, pBinPriKey, pBinWapEnvData);
}

int CWrapperAPI::WPKIDecryptData(BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinWapEnvData,
                                 BINSTR* pBinWapData)
{
    return OnlyZrtk(Require(HasData(pBinCert), HasData(pBinPriKey), HasData(pBinWapEnvData)),
                    &CZRTKWrap::WPKIDecryptData, pBinCert, pBinPriKey, pBinWapEnvData, pBinWapData);
}

int CWrapperAPI::WPKIVerifyCert(BINSTR* pBinCert)
{
    return OnlyZrtk(Require(HasData(pBinCert)), &CZRTKWrap::WPKIVerifyCert, pBinCert);
}

int CWrapperAPI::UNIViewCert(BINSTR* pBinCert, char* pszDisplay)
{
    return OnlyZrtk(Require(HasData(pBinCert)), &CZRTKWrap::UNIViewCert, pBinCert, pszDisplay);
}

int CWrapperAPI::UNIVerifySignData(BINSTR* pBinSignData, BINSTR* pBinData, BINSTR* pBinSignerCert)
{
    return OnlyZrtk(Require(HasData(pBinSignData)), &CZRTKWrap::UNIVerifySignData, pBinSignData, pBinData,
                    pBinSignerCert);
}

int CWrapperAPI::UNIDecryptEnvData(BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinEnvData,
                                   BINSTR* pBinData)
{
    return OnlyZrtk(Require(HasData(pBinCert), HasData(pBinPriKey), HasData(pBinEnvData)),
                    &CZRTKWrap::UNIDecryptEnvData, pBinCert, pBinPriKey, pBinEnvData, pBinData);
}

int CWrapperAPI::UTILAddObject(BINSTR* pBinObj, BINSTR* pBinObjs)
{
    return OnlyZrtk(Require(HasData(pBinObj)), &CZRTKWrap::UTILAddObject, pBinObj, pBinObjs);
}

int CWrapperAPI::UTILGetObjectCount(BINSTR* pBinObjs, int* nCnt)
{
    return OnlyZrtk(Require(HasData(pBinObjs)), &CZRTKWrap::UTILGetObjectCount, pBinObjs, nCnt);
}

int CWrapperAPI::UTILGetObject(BINSTR* pBinObjs, int nIndex, BINSTR* pBinObj)
{
    return OnlyZrtk(Require(HasData(pBinObjs)), &CZRTKWrap::UTILGetObject, pBinObjs, nIndex, pBinObj);
}

int CWrapperAPI::UTILCompareDN(char* pszDN1, char* pszDN2)
{
    return OnlyZrtk(Require(NotNull(pszDN1), NotNull(pszDN2)), &CZRTKWrap::UTILCompareDN, pszDN1, pszDN2);
}

int CWrapperAPI::UTILGetCertPath(BINSTR* pBinCert, BINSTR* pBinPath)
{
    return OnlyZrtk(Require(HasData(pBinCert)), &CZRTKWrap::UTILGetCertPath, pBinCert, pBinPath);
}

int CWrapperAPI::UTILGetRootCert(BINSTR* pBinCert, BINSTR* pBinRootCert)
{
    return OnlyZrtk(Require(HasData(pBinCert)), &CZRTKWrap::UTILGetRootCert, pBinCert, pBinRootCert);
}

int CWrapperAPI::UTILIsTrustCert(BINSTR* pBinTrustCert, BINSTR* pBinRootCert, bool* pIsTrust)
{
    return OnlyZrtk(Require(HasData(pBinTrustCert), HasData(pBinRootCert)), &CZRTKWrap::UTILIsTrustCert,
                    pBinTrustCert, pBinRootCert, pIsTrust);
}
