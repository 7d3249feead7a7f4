#include "WrapperDispatch.h"

int CWrapperAPI::CertLoad(BINSTR* pBinCert)
{
    return Both(Require(HasData(pBinCert)), &CZRTKWrap::CertLoad, &CGPKIWrap::CertLoad, pBinCert);
}

int CWrapperAPI::CertUnLoad()
{
    return Both(Require(), &CZRTKWrap::CertUnLoad, &CGPKIWrap::CertUnLoad);
}

int CWrapperAPI::CertGetUID(int nAllocLen, char* pszUID)
{
    return Both(Require(NotNull(pszUID, QG_NO_MEMORY)), &CZRTKWrap::CertGetUID, &CGPKIWrap::CertGetUID,
                nAllocLen, pszUID);
}

int CWrapperAPI::CertGetVersion(int nAllocLen, char* pszVersion)
{
    return Both(Require(NotNull(pszVersion, QG_NO_MEMORY)), &CZRTKWrap::CertGetVersion,
                &CGPKIWrap::CertGetVersion, nAllocLen, pszVersion);
}

int CWrapperAPI::CertGetSerialNum(int nAllocLen, char* pszSerialNum)
{
    return Both(Require(NotNull(pszSerialNum, QG_NO_MEMORY)), &CZRTKWrap::CertGetSerialNum,
                &CGPKIWrap::CertGetSerialNum, nAllocLen, pszSerialNum);
}

int CWrapperAPI::CertGetSignatureAlgorithm(int nAllocLen, char* pszSignAlg)
{
    return Both(Require(NotNull(pszSignAlg, QG_NO_MEMORY)), &CZRTKWrap::CertGetSignatureAlgorithm,
                &CGPKIWrap::CertGetSignatureAlgorithm, nAllocLen, pszSignAlg);
}

int CWrapperAPI::CertGetIssuerName(int nAllocLen, char* pszIssuerName)
{
    return Both(Require(NotNull(pszIssuerName, QG_NO_MEMORY)), &CZRTKWrap::CertGetIssuerName,
                &CGPKIWrap::CertGetIssuerName, nAllocLen, pszIssuerName);
}

int CWrapperAPI::CertGetValidity(int nFromAllocLen, char* pszFrom, int nToAllocLen, char* pszTo)
{
    return Both(Require(NotNull(pszFrom, QG_NO_MEMORY), NotNull(pszTo, QG_NO_MEMORY)),
                &CZRTKWrap::CertGetValidity, &CGPKIWrap::CertGetValidity, nFromAllocLen, pszFrom, nToAllocLen,
                pszTo);
}

int CWrapperAPI::CertGetSubjectName(int nAllocLen, char* pszSubjectName)
{
    return Both(Require(NotNull(pszSubjectName, QG_NO_MEMORY)), &CZRTKWrap::CertGetSubjectName,
                &CGPKIWrap::CertGetSubjectName, nAllocLen, pszSubjectName);
}

int CWrapperAPI::CertGetSignature(int nAllocLen, char* pszSignature)
{
    return Both(Require(NotNull(pszSignature, QG_NO_MEMORY)), &CZRTKWrap::CertGetSignature,
                &CGPKIWrap::CertGetSignature, nAllocLen, pszSignature);
}

int CWrapperAPI::CertGetKeyUsage(int nAllocLen, char* pszKeyUsage)
{
    return Both(Require(NotNull(pszKeyUsage, QG_NO_MEMORY)), &CZRTKWrap::CertGetKeyUsage,
                &CGPKIWrap::CertGetKeyUsage, nAllocLen, pszKeyUsage);
}

int CWrapperAPI::CertGetBasicConstraints(int nAllocLen, char* pszBasicConstraints)
{
    return Both(Require(NotNull(pszBasicConstraints, QG_NO_MEMORY)), &CZRTKWrap::CertGetBasicConstraints,
                &CGPKIWrap::CertGetBasicConstraints, nAllocLen, pszBasicConstraints);
}

int CWrapperAPI::CertGetCertPolicy(int nAllocLen, char* pszCertPolicy)
{
    return Both(Require(NotNull(pszCertPolicy, QG_NO_MEMORY)), &CZRTKWrap::CertGetPolicy,
                &CGPKIWrap::CertGetPolicy, nAllocLen, pszCertPolicy);
}

int CWrapperAPI::CertGetPolicyID(int nAllocLen, char* pszCertPolicyID)
{
    return Both(Require(NotNull(pszCertPolicyID, QG_NO_MEMORY)), &CZRTKWrap::CertGetPolicyID,
                &CGPKIWrap::CertGetPolicyID, nAllocLen, pszCertPolicyID);
}

int CWrapperAPI::CertGetExtKeyUsage(int nAllocLen, char* pszExtKeyUsage)
{
    return Both(Require(NotNull(pszExtKeyUsage, QG_NO_MEMORY)), &CZRTKWrap::CertGetExtKeyUsage,
                &CGPKIWrap::CertGetExtKeyUsage, nAllocLen, pszExtKeyUsage);
}

int CWrapperAPI::CertGetSubjectAltName(int nAllocLen, char* pszSubAltName)
{
    return Both(Require(NotNull(pszSubAltName, QG_NO_MEMORY)), &CZRTKWrap::CertGetSubjectAltName,
                &CGPKIWrap::CertGetSubjectAltName, nAllocLen, pszSubAltName);
}

int CWrapperAPI::CertGetIssuerAltName(int nAllocLen, char* pszIssuerAltName)
{
    return OnlyZrtk(Require(NotNull(pszIssuerAltName, QG_NO_MEMORY)), &CZRTKWrap::CertGetIssuerAltName,
                    nAllocLen, pszIssuerAltName);
}

int CWrapperAPI::CertGetAuthKeyID(int nAllocLen, char* pszAKI)
{
    return Both(Require(NotNull(pszAKI, QG_NO_MEMORY)), &CZRTKWrap::CertGetAuthKeyID,
                &CGPKIWrap::CertGetAuthKeyID, nAllocLen, pszAKI);
}

int CWrapperAPI::CertGetSubKeyID(int nAllocLen, char* pszSKI)
{
    return Both(Require(NotNull(pszSKI, QG_NO_MEMORY)), &CZRTKWrap::CertGetSubKeyID,
                &CGPKIWrap::CertGetSubKeyID, nAllocLen, pszSKI);
}

int CWrapperAPI::CertGetCRLDP(int nAllocLen, char* pszCRLDP)
{
    return Both(Require(NotNull(pszCRLDP, QG_NO_MEMORY)), &CZRTKWrap::CertGetCRLDP, &CGPKIWrap::CertGetCRLDP,
                nAllocLen, pszCRLDP);
}

int CWrapperAPI::CertGetCRLDPURL(int nAllocLen, char* pszCRLDPURL)
{
    return OnlyZrtk(Require(NotNull(pszCRLDPURL, QG_NO_MEMORY)), &CZRTKWrap::CertGetCRLDPURL, nAllocLen,
                    pszCRLDPURL);
}

int CWrapperAPI::CertGetAIA(int nAllocLen, char* pszAIA)
{
    return Both(Require(NotNull(pszAIA, QG_NO_MEMORY)), &CZRTKWrap::CertGetAIA, &CGPKIWrap::CertGetAIA,
                nAllocLen, pszAIA);
}

int CWrapperAPI::CertGetRemainDays(BINSTR* pBinCert, int* nRemainDays)
{
    return Both(Require(HasBytes(pBinCert, QG_NO_MEMORY)), &CZRTKWrap::CertGetRemainDays,
                &CGPKIWrap::CertGetRemainDays, pBinCert, nRemainDays);
}

int CWrapperAPI::CertAddCert(BINSTR* pBinCert, BINSTR* pBinCerts)
{
    return OnlyGpki(Require(HasBytes(pBinCert)), &CGPKIWrap::CertAddCert, pBinCert, pBinCerts);
}

int CWrapperAPI::CertGetCertCount(BINSTR* pBinCerts, int* nCnt)
{
    return OnlyGpki(Require(HasBytes(pBinCerts)), &CGPKIWrap::CertGetCertCount, pBinCerts, nCnt);
}

int CWrapperAPI::CertGetCert(BINSTR* pBinCerts, int nIndex, BINSTR* pBinCert)
{
    return OnlyGpki(Require(HasBytes(pBinCerts, QG_NO_MEMORY)), &CGPKIWrap::CertGetCert, pBinCerts, nIndex,
                    pBinCert);
}

int CWrapperAPI::CertAddTrustedCert(BINSTR* pBinTrustedCert)
{
    return Both(Require(HasBytes(pBinTrustedCert)), &CZRTKWrap::CertAddTrustedCert,
                &CGPKIWrap::CertAddTrustedCert, pBinTrustedCert);
}

int CWrapperAPI::CertSetVerifyEnv(int nRange, int nCheck, bool bUseCache, char* pszTime, char* pszOCSPURL)
{
    return Dispatch(
        Require(),
        [=](CZRTKWrap& zrtk) { return zrtk.CertSetVerifyEnv1(nRange, nCheck, bUseCache, pszOCSPURL); },
        [=](CGPKIWrap& gpki) {
            return gpki.CertSetVerifyEnv(nRange, nCheck, bUseCache, pszTime, pszOCSPURL);
        });
}

int CWrapperAPI::CertSetVerifyEnv2(char* pszTime, BINSTR* pBinARL, BINSTR* pbinCRL)
{
    return OnlyZrtk(Require(), &CZRTKWrap::CertSetVerifyEnv2, pszTime, pBinARL, pbinCRL);
}

int CWrapperAPI::CertVerify(BINSTR* pBinCert, int nCertType, char* pszCertPolices, char* pszConfFilePath,
                            bool bSign, BINSTR* pBinMyCert, BINSTR* pBinMyPriKey)
{
    return Dispatch(
        Require(HasBytes(pBinCert)),
        [=](CZRTKWrap& zrtk) {
            return zrtk.CertVerify(pBinCert, nCertType, pszCertPolices, bSign, pBinMyCert, pBinMyPriKey);
        },
        [=](CGPKIWrap& gpki) {
            return gpki.CertVerify(pBinCert, nCertType, pszCertPolices, pszConfFilePath, bSign, pBinMyCert,
                                   pBinMyPriKey);
        });
}

int CWrapperAPI::CertVerify2(BINSTR* pBinCert, int nCertType, char* pszCertPolicies, char* pszPassword)
{
    return OnlyZrtk(Require(HasBytes(pBinCert)), &CZRTKWrap::CertVerify2, pBinCert, nCertType,
                    pszCertPolicies, pszPassword);
}

int CWrapperAPI::CertVerifyByIVS(char* pszConfFilePath, BINSTR* pBinCert, BINSTR* pBinMyCert)
{
    return Both(Require(NotNull(pszConfFilePath, QG_NO_MEMORY), HasBytes(pBinCert, QG_NO_MEMORY),
                        HasBytes(pBinMyCert, QG_NO_MEMORY)),
                &CZRTKWrap::CertVerifyByIVS, &CGPKIWrap::CertVerifyByIVS, pszConfFilePath, pBinCert,
                pBinMyCert);
}

int CWrapperAPI::CertCheckStatByOCSP(BINSTR* pBinCert, bool bSign, BINSTR* pBinMyCert, BINSTR* pBinMyPriKey,
                                     char* pszURL, BINSTR* pBinOCSPSvrCert, char* szRevocationDate,
                                     int* pRevReason)
{
    return OnlyGpki(
        Require(HasBytes(pBinCert), HasBytes(pBinMyCert), HasBytes(pBinMyPriKey), NotNull(pszURL)),
        &CGPKIWrap::CertCheckStatByOCSP, pBinCert, bSign, pBinMyCert, pBinMyPriKey, pszURL, pBinOCSPSvrCert,
        szRevocationDate, pRevReason);
}

int CWrapperAPI::CertCheckStatByCRL(BINSTR* pBinCert, char* szRevocationDate, int* pRevReason)
{
    return Both(Require(HasBytes(pBinCert)), &CZRTKWrap::CertCheckStatByCRL, &CGPKIWrap::CertCheckStatByCRL,
                pBinCert, szRevocationDate, pRevReason);
}
