#include "quillgate/toolkit_certificate.h"

#include "ZRAPIWrap.h"

int CertLoad(void* pContext, BINSTR* pBinCert)
{
    return Forward(pContext, &CWrapperAPI::CertLoad, pBinCert);
}

int CertUnLoad(void* pContext)
{
    return Forward(pContext, &CWrapperAPI::CertUnLoad);
}

int CertGetUID(void* pContext, int nAllocLen, char* pszUID)
{
    return Forward(pContext, &CWrapperAPI::CertGetUID, nAllocLen, pszUID);
}

int CertGetVersion(void* pContext, int nAllocLen, char* pszVersion)
{
    return Forward(pContext, &CWrapperAPI::CertGetVersion, nAllocLen, pszVersion);
}

int CertGetSerialNum(void* pContext, int nAllocLen, char* pszSerialNum)
{
    return Forward(pContext, &CWrapperAPI::CertGetSerialNum, nAllocLen, pszSerialNum);
}

int CertGetSignatureAlgorithm(void* pContext, int nAllocLen, char* pszSignAlg)
{
    return Forward(pContext, &CWrapperAPI::CertGetSignatureAlgorithm, nAllocLen, pszSignAlg);
}

int CertGetIssuerName(void* pContext, int nAllocLen, char* pszIssuerName)
{
    return Forward(pContext, &CWrapperAPI::CertGetIssuerName, nAllocLen, pszIssuerName);
}

int CertGetValidity(void* pContext, int nFromAllocLen, char* pszFrom, int nToAllocLen, char* pszTo)
{
    return Forward(pContext, &CWrapperAPI::CertGetValidity, nFromAllocLen, pszFrom, nToAllocLen, pszTo);
}

int CertGetSubjectName(void* pContext, int nAllocLen, char* pszSubjectName)
{
    return Forward(pContext, &CWrapperAPI::CertGetSubjectName, nAllocLen, pszSubjectName);
}

int CertGetPubKeyInfo(void* pContext, char* szPubKeyAlg, char* szPubKeyLen, int nAllocLen, char* pszPubKey,
                      BINSTR* pBinKeyInfo)
{
    return Forward(pContext, &CWrapperAPI::CertGetPubKeyInfo, szPubKeyAlg, szPubKeyLen, nAllocLen, pszPubKey,
                   pBinKeyInfo);
}

int CertGetSignature(void* pContext, int nAllocLen, char* pszSignature)
{
    return Forward(pContext, &CWrapperAPI::CertGetSignature, nAllocLen, pszSignature);
}

int CertGetKeyUsage(void* pContext, int nAllocLen, char* pszKeyUsage)
{
    return Forward(pContext, &CWrapperAPI::CertGetKeyUsage, nAllocLen, pszKeyUsage);
}

int CertGetBasicConstraints(void* pContext, int nAllocLen, char* pszBasicConstraints)
{
    return Forward(pContext, &CWrapperAPI::CertGetBasicConstraints, nAllocLen, pszBasicConstraints);
}

int CertGetCertPolicy(void* pContext, int nAllocLen, char* pszCertPolicy)
{
    return Forward(pContext, &CWrapperAPI::CertGetCertPolicy, nAllocLen, pszCertPolicy);
}

int CertGetPolicyID(void* pContext, int nAllocLen, char* pszCertPolicyID)
{
    return Forward(pContext, &CWrapperAPI::CertGetPolicyID, nAllocLen, pszCertPolicyID);
}

int CertGetExtKeyUsage(void* pContext, int nAllocLen, char* pszExtKeyUsage)
{
    return Forward(pContext, &CWrapperAPI::CertGetExtKeyUsage, nAllocLen, pszExtKeyUsage);
}

int CertGetSubjectAltName(void* pContext, int nAllocLen, char* pszSubAltName)
{
    return Forward(pContext, &CWrapperAPI::CertGetSubjectAltName, nAllocLen, pszSubAltName);
}

int CertGetIssuerAltName(void* pContext, int nAllocLen, char* pszIssuerAltName)
{
    return Forward(pContext, &CWrapperAPI::CertGetIssuerAltName, nAllocLen, pszIssuerAltName);
}

int CertGetAuthKeyID(void* pContext, int nAllocLen, char* pszAKI)
{
    return Forward(pContext, &CWrapperAPI::CertGetAuthKeyID, nAllocLen, pszAKI);
}

int CertGetSubKeyID(void* pContext, int nAllocLen, char* pszSKI)
{
    return Forward(pContext, &CWrapperAPI::CertGetSubKeyID, nAllocLen, pszSKI);
}

int CertGetCRLDP(void* pContext, int nAllocLen, char* pszCRLDP)
{
    return Forward(pContext, &CWrapperAPI::CertGetCRLDP, nAllocLen, pszCRLDP);
}

int CertGetCRLDPURL(void* pContext, int nAllocLen, char* pszCRLDPURL)
{
    return Forward(pContext, &CWrapperAPI::CertGetCRLDPURL, nAllocLen, pszCRLDPURL);
}

int CertGetAIA(void* pContext, int nAllocLen, char* pszAIA)
{
    return Forward(pContext, &CWrapperAPI::CertGetAIA, nAllocLen, pszAIA);
}

int CertGetRemainDays(void* pContext, BINSTR* pBinCert, int* nRemainDays)
{
    return Forward(pContext, &CWrapperAPI::CertGetRemainDays, pBinCert, nRemainDays);
}

int CertAddCert(void* pContext, BINSTR* pBinCert, BINSTR* pBinCerts)
{
    return Forward(pContext, &CWrapperAPI::CertAddCert, pBinCert, pBinCerts);
}

int CertGetCertCount(void* pContext, BINSTR* pBinCerts, int* nCnt)
{
    return Forward(pContext, &CWrapperAPI::CertGetCertCount, pBinCerts, nCnt);
}

int CertGetCert(void* pContext, BINSTR* pBinCerts, int nIndex, BINSTR* pBinCert)
{
    return Forward(pContext, &CWrapperAPI::CertGetCert, pBinCerts, nIndex, pBinCert);
}

int CertAddTrustedCert(void* pContext, BINSTR* pBinTrustedCert)
{
    return Forward(pContext, &CWrapperAPI::CertAddTrustedCert, pBinTrustedCert);
}

int CertSetVerifyEnv(void* pContext, int nRange, int nCheck, bool bUseCache, char* pszTime, char* pszOCSPURL)
{
    return Forward(pContext, &CWrapperAPI::CertSetVerifyEnv, nRange, nCheck, bUseCache, pszTime, pszOCSPURL);
}

int CertSetVerifyEnv2(void* pContext, char* pszTime, BINSTR* pBinARL, BINSTR* pbinCRL)
{
    return Forward(pContext, &CWrapperAPI::CertSetVerifyEnv2, pszTime, pBinARL, pbinCRL);
}

int CertVerify(void* pContext, BINSTR* pBinCert, int nCertType, char* pszCertPolices, char* pszConfFilePath,
               bool bSign, BINSTR* pBinMyCert, BINSTR* pBinMyPriKey)
{
    return Forward(pContext, &CWrapperAPI::CertVerify, pBinCert, nCertType, pszCertPolices, pszConfFilePath,
                   bSign, pBinMyCert, pBinMyPriKey);
}

int CertVerify2(void* pContext, BINSTR* pBinCert, int nCertType, char* pszCertPolicies, char* pszPassword)
{
    return Forward(pContext, &CWrapperAPI::CertVerify2, pBinCert, nCertType, pszCertPolicies, pszPassword);
}

int CertVerifyByIVS(void* pContext, char* pszConfFilePath, BINSTR* pBinCert, BINSTR* pBinMyCert)
{
    return Forward(pContext, &CWrapperAPI::CertVerifyByIVS, pszConfFilePath, pBinCert, pBinMyCert);
}

int CertCheckStatByOCSP(void* pContext, BINSTR* pBinCert, bool bSign, BINSTR* pBinMyCert,
                        BINSTR* pBinMyPriKey, char* pszURL, BINSTR* pBinOCSPSvrCert, char* szRevocationDate,
                        int* pRevReason)
{
    return Forward(pContext, &CWrapperAPI::CertCheckStatByOCSP, pBinCert, bSign, pBinMyCert, pBinMyPriKey,
                   pszURL, pBinOCSPSvrCert, szRevocationDate, pRevReason);
}

int CertCheckStatByCRL(void* pContext, BINSTR* pBinCert, char* szRevocationDate, int* pRevReason)
{
    return Forward(pContext, &CWrapperAPI::CertCheckStatByCRL, pBinCert, szRevocationDate, pRevReason);
}
