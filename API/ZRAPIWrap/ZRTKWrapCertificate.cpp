#include "ZRTKWrap.h"

namespace {

/** Room that the library needs for one date, which it is not told. */
constexpr int DATE_SIZE = 25;

} // namespace

int CZRTKWrap::CertLoad(BINSTR* pBinCert)
{
    return Call("ZRTK_CERT_Load", Require(HasData(pBinCert)), m_pContext, pBinCert);
}

int CZRTKWrap::CertUnLoad()
{
    return Call("ZRTK_CERT_Unload", Require(), m_pContext);
}

int CZRTKWrap::CertGetUID(int nAllocLen, char* pszUID)
{
    return Call("ZRTK_CERT_GetUID", Require(NotNull(pszUID)), m_pContext, nAllocLen, pszUID);
}

int CZRTKWrap::CertGetVersion(int nAllocLen, char* pszVersion)
{
    return LibraryCall::GetCertVersion(*this, "ZRTK_CERT_GetVersion", nAllocLen, pszVersion);
}

int CZRTKWrap::CertGetSerialNum(int nAllocLen, char* pszSerialNum)
{
    return Call("ZRTK_CERT_GetSerialNum", Require(NotNull(pszSerialNum)), m_pContext, nAllocLen,
                pszSerialNum);
}

int CZRTKWrap::CertGetSignatureAlgorithm(int nAllocLen, char* pszSignAlg)
{
    return Call("ZRTK_CERT_GetSignatureAlgorithm", Require(NotNull(pszSignAlg)), m_pContext, nAllocLen,
                pszSignAlg);
}

int CZRTKWrap::CertGetIssuerName(int nAllocLen, char* pszIssuerName)
{
    return Call("ZRTK_CERT_GetIssuerName", Require(NotNull(pszIssuerName)), m_pContext, nAllocLen,
                pszIssuerName);
}

int CZRTKWrap::CertGetValidity(int nFromAllocLen, char* pszFrom, int nToAllocLen, char* pszTo)
{
    const int nRefusal = Require(NotNull(pszFrom), NotNull(pszTo), AtLeast(DATE_SIZE, nFromAllocLen),
                                 AtLeast(DATE_SIZE, nToAllocLen));
    return Call("ZRTK_CERT_GetValidity", nRefusal, m_pContext, pszFrom, pszTo);
}

int CZRTKWrap::CertGetSubjectName(int nAllocLen, char* pszSubjectName)
{
    return Call("ZRTK_CERT_GetSubjectName", Require(NotNull(pszSubjectName)), m_pContext, nAllocLen,
                pszSubjectName);
}

int CZRTKWrap::CertGetPubKey(int nAllocLen, char* pszAlg, char* pszPubKey)
{
    return Call("ZRTK_CERT_GetPubKey", Require(NotNull(pszAlg), NotNull(pszPubKey)), m_pContext, nAllocLen,
                pszAlg, pszPubKey);
}

int CZRTKWrap::CertGetPubKey2(char* pszAlg, char* pszLen, BINSTR* pBinKeyInfo)
{
    return Call("ZRTK_CERT_GetPubKey2", Require(NotNull(pszAlg)), m_pContext, pszAlg, pszLen, pBinKeyInfo);
}

int CZRTKWrap::CertGetSignature(int nAllocLen, char* pszSignature)
{
    return Call("ZRTK_CERT_GetSignature", Require(NotNull(pszSignature)), m_pContext, nAllocLen,
                pszSignature);
}

int CZRTKWrap::CertGetKeyUsage(int nAllocLen, char* pszKeyUsage)
{
    return Call("ZRTK_CERT_GetKeyUsage", Require(NotNull(pszKeyUsage)), m_pContext, nAllocLen, pszKeyUsage);
}

int CZRTKWrap::CertGetBasicConstraints(int nAllocLen, char* pszBasicConstraints)
{
    return Call("ZRTK_CERT_GetBasicConstraints", Require(NotNull(pszBasicConstraints)), m_pContext, nAllocLen,
                pszBasicConstraints);
}

int CZRTKWrap::CertGetPolicy(int nAllocLen, char* pszCertPolicy)
{
    return Call("ZRTK_CERT_GetCertPolicy", Require(NotNull(pszCertPolicy)), m_pContext, nAllocLen,
                pszCertPolicy);
}

int CZRTKWrap::CertGetPolicyID(int nAllocLen, char* pszCertPolicyID)
{
    return Call("ZRTK_CERT_GetCertPolicy_PolicyID", Require(NotNull(pszCertPolicyID)), m_pContext, nAllocLen,
                pszCertPolicyID);
}

int CZRTKWrap::CertGetExtKeyUsage(int nAllocLen, char* pszExtKeyUsage)
{
    return Call("ZRTK_CERT_GetExtKeyUsage", Require(NotNull(pszExtKeyUsage)), m_pContext, nAllocLen,
                pszExtKeyUsage);
}

int CZRTKWrap::CertGetSubjectAltName(int nAllocLen, char* pszSubAltName)
{
    return Call("ZRTK_CERT_GetSubjectAltName", Require(NotNull(pszSubAltName)), m_pContext, nAllocLen,
                pszSubAltName);
}

int CZRTKWrap::CertGetIssuerAltName(int nAllocLen, char* pszIssuerAltName)
{
    return Call("ZRTK_CERT_GetIssuerAltName", Require(NotNull(pszIssuerAltName)), m_pContext, nAllocLen,
                pszIssuerAltName);
}

int CZRTKWrap::CertGetAuthKeyID(int nAllocLen, char* pszAKI)
{
    return Call("ZRTK_CERT_GetAuthKeyID", Require(NotNull(pszAKI)), m_pContext, nAllocLen, pszAKI);
}

int CZRTKWrap::CertGetSubKeyID(int nAllocLen, char* pszSKI)
{
    return Call("ZRTK_CERT_GetSubKeyID", Require(NotNull(pszSKI)), m_pContext, nAllocLen, pszSKI);
}

int CZRTKWrap::CertGetCRLDP(int nAllocLen, char* pszCRLDP)
{
    return Call("ZRTK_CERT_GetCRLDP", Require(NotNull(pszCRLDP)), m_pContext, nAllocLen, pszCRLDP);
}

int CZRTKWrap::CertGetCRLDPURL(int nAllocLen, char* pszCRLDPURL)
{
    return Call("ZRTK_CERT_GetCRLDP_URL", Require(NotNull(pszCRLDPURL)), m_pContext, nAllocLen, pszCRLDPURL);
}

int CZRTKWrap::CertGetAIA(int nAllocLen, char* pszAIA)
{
    return Call("ZRTK_CERT_GetAIA", Require(NotNull(pszAIA)), m_pContext, nAllocLen, pszAIA);
}

int CZRTKWrap::CertGetRemainDays(BINSTR* pBinCert, int* nRemainDays)
{
    return Call("ZRTK_CERT_GetRemainDays", Require(HasBytes(pBinCert), NotNull(nRemainDays)), m_pContext,
                pBinCert, nRemainDays);
}

int CZRTKWrap::CertAddTrustedCert(BINSTR* pBinTrustedCert)
{
    return Call("ZRTK_CERT_AddTrustedCert", Require(HasBytes(pBinTrustedCert)), m_pContext, pBinTrustedCert);
}

int CZRTKWrap::CertSetVerifyEnv1(int nRange, int nCheck, bool bUseCache, char* pszOCSPURL)
{
    return Call("ZRTK_CERT_SetVerifyEnv1", Require(), m_pContext, nRange, nCheck, bUseCache, pszOCSPURL);
}

int CZRTKWrap::CertSetVerifyEnv2(char* pszTime, BINSTR* pBinARL, BINSTR* pbinCRL)
{
    return Call("ZRTK_CERT_SetVerifyEnv2", Require(NotNull(pszTime), NotNull(pBinARL), NotNull(pbinCRL)),
                m_pContext, pszTime, pBinARL, pbinCRL);
}

int CZRTKWrap::CertVerify(BINSTR* pBinCert, int nCertType, char* pszCertPolices, bool bSign,
                          BINSTR* pBinMyCert, BINSTR* pBinMyPriKey)
{
    return Call("ZRTK_CERT_Verify", Require(HasBytes(pBinCert)), m_pContext, pBinCert, nCertType,
                pszCertPolices, bSign, pBinMyCert, pBinMyPriKey);
}

int CZRTKWrap::CertVerify2(BINSTR* pBinCert, int nCertType, char* pszCertPolicies, char* pszPassword)
{
    return Call("ZRTK_CERT_Verify2", Require(HasBytes(pBinCert)), m_pContext, pBinCert, nCertType,
                pszCertPolicies, pszPassword);
}

int CZRTKWrap::CertVerifyByIVS(char* pszConfFilePath, BINSTR* pBinCert, BINSTR* pBinMyCert)
{
    return Call("ZRTK_CERT_VerifyByIVS",
                Require(NotNull(pszConfFilePath), HasBytes(pBinCert), HasBytes(pBinMyCert)), m_pContext,
                pszConfFilePath, pBinCert, pBinMyCert);
}

int CZRTKWrap::CertCheckStatByCRL(BINSTR* pBinCert, char* szRevocationDate, int* pRevReason)
{
    return Call("ZRTK_CERT_CheckStatByCRL", Require(HasBytes(pBinCert)), m_pContext, pBinCert,
                szRevocationDate, pRevReason);
}

int CZRTKWrap::CertGetSubjectName_DERFormat(BINSTR* pBinstr)
{
    return Call("ZRTK_CERT_GetSubjectName_DERFormat", Require(), m_pContext, pBinstr);
}

int CZRTKWrap::CertGetPolicyConstraints(int nAllocLen, char* pszPolicyConstraints)
{
    return Call("ZRTK_CERT_GetPolicyConstraints", Require(NotNull(pszPolicyConstraints)), m_pContext,
                nAllocLen, pszPolicyConstraints);
}
