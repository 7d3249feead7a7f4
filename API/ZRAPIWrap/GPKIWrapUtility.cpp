#include "GPKIWrap.h"

int CGPKIWrap::LDAPGetDataByURL(int nDataType, char* pszURL, BINSTR* pBinData)
{
    return Call("GPKI_LDAP_GetDataByURL", Require(NotNull(pszURL)), m_pContext, nDataType, pszURL, pBinData);
}

int CGPKIWrap::LDAPGetCRLByCert(BINSTR* pBinCert, BINSTR* pBinCRL)
{
    return Call("GPKI_LDAP_GetCRLByCert", Require(HasData(pBinCert)), m_pContext, pBinCert, pBinCRL);
}

int CGPKIWrap::LDAPGetDataByCN(char* pszIP, int nPort, char* pszCN, int nDataType, char* FullDN,
                               BINSTR* pBinData)
{
    return Call("GPKI_LDAP_GetDataByCN", Require(NotNull(pszIP), NotNull(pszCN)), m_pContext, pszIP, nPort,
                pszCN, nDataType, FullDN, pBinData);
}

int CGPKIWrap::LDAPGetAnyDataByURL(char* pszAttribute, char* pszURL, BINSTR* pBinData)
{
    return Call("GPKI_LDAP_GetAnyDataByURL", Require(NotNull(pszAttribute), NotNull(pszURL)), m_pContext,
                pszAttribute, pszURL, pBinData);
}

int CGPKIWrap::LDAPGetCertPath(BINSTR* pBinCert, char* pszConfFilePath, BINSTR* pBinPath)
{
    return Call("GPKI_LDAP_GetCertPath", Require(HasData(pBinCert), NotNull(pszConfFilePath)), m_pContext,
                pBinCert, pszConfFilePath, pBinPath);
}

int CGPKIWrap::SIGEAMakeChallenge(BINSTR* pBinChallenge)
{
    return Call("GPKI_SIGEA_MakeChallenge", Require(HasData(pBinChallenge)), m_pContext, pBinChallenge);
}

int CGPKIWrap::SIGEAMakeResponse(BINSTR* pBinChallenge, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                 BINSTR* pBinResponse)
{
    return Call("GPKI_SIGEA_MakeResponse",
                Require(HasData(pBinChallenge), HasData(pBinCert), HasData(pBinPriKey)), m_pContext,
                pBinChallenge, pBinCert, pBinPriKey, pBinResponse);
}

int CGPKIWrap::SIGEAVerifyResponse(BINSTR* pBinResponse, BINSTR* pBinChallenge, BINSTR* pBinCert)
{
    return Call("GPKI_SIGEA_VerifyResponse",
                Require(HasData(pBinResponse), HasData(pBinChallenge), HasData(pBinCert)), m_pContext,
                pBinResponse, pBinChallenge, pBinCert);
}
