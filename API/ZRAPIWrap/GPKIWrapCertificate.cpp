#include "GPKIWrap.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

/** Room for the library's one text of both dates. */
constexpr int VALIDITY_SIZE = 1024;

/** Puts the parts of "start ~ end" into two buffers; the start gets no terminator. 10004 without a "~". */
int SplitValidity(const char* pszValidity, int nFromAllocLen, char* pszFrom, int nToAllocLen, char* pszTo)
{
    const char* pszTilde = std::strchr(pszValidity, '~');
    if (pszTilde == nullptr)
        return QG_BAD_ARGUMENT;
    const std::ptrdiff_t nStart = std::max<std::ptrdiff_t>(pszTilde - pszValidity - 1, 0);
    if (nFromAllocLen > 0)
        std::memcpy(pszFrom, pszValidity,
                    static_cast<std::size_t>(std::min<std::ptrdiff_t>(nStart, nFromAllocLen)));
    const char* pszEnd = pszTilde[1] == '\0' ? pszTilde + 1 : pszTilde + 2;
    if (nToAllocLen > 0)
        std::snprintf(pszTo, static_cast<std::size_t>(nToAllocLen), "%s", pszEnd);
    return QG_OK;
}

} // namespace

int CGPKIWrap::CertLoad(BINSTR* pBinCert)
{
    return Call("GPKI_CERT_Load", Require(HasData(pBinCert)), m_pContext, pBinCert);
}

int CGPKIWrap::CertUnLoad()
{
    return Call("GPKI_CERT_Unload", Require(), m_pContext);
}

int CGPKIWrap::CertGetUID(int nAllocLen, char* pszUID)
{
    return Call("GPKI_CERT_GetUID", Require(NotNull(pszUID)), m_pContext, nAllocLen, pszUID);
}

int CGPKIWrap::CertGetVersion(int nAllocLen, char* pszVersion)
{
    return LibraryCall::GetCertVersion(*this, "GPKI_CERT_GetVersion", nAllocLen, pszVersion);
}

int CGPKIWrap::CertGetSerialNum(int nAllocLen, char* pszSerialNum)
{
    return Call("GPKI_CERT_GetSerialNum", Require(NotNull(pszSerialNum)), m_pContext, nAllocLen,
                pszSerialNum);
}

int CGPKIWrap::CertGetSignatureAlgorithm(int nAllocLen, char* pszSignAlg)
{
    return Call("GPKI_CERT_GetSignatureAlgorithm", Require(NotNull(pszSignAlg)), m_pContext, nAllocLen,
                pszSignAlg);
}

int CGPKIWrap::CertGetIssuerName(int nAllocLen, char* pszIssuerName)
{
    return Call("GPKI_CERT_GetIssuerName", Require(NotNull(pszIssuerName)), m_pContext, nAllocLen,
                pszIssuerName);
}

int CGPKIWrap::CertGetValidity(int nFromAllocLen, char* pszFrom, int nToAllocLen, char* pszTo)
{
    char szValidity[VALIDITY_SIZE + 1] = {}; // ends even when the library fills all that it was told
    const int nResult = Call("GPKI_CERT_GetValidity", Require(NotNull(pszFrom), NotNull(pszTo)), m_pContext,
                             std::min(nFromAllocLen, VALIDITY_SIZE), szValidity);
    if (nResult != QG_OK)
        return nResult;
    return SplitValidity(szValidity, nFromAllocLen, pszFrom, nToAllocLen, pszTo);
}

int CGPKIWrap::CertGetSubjectName(int nAllocLen, char* pszSubjectName)
{
    return Call("GPKI_CERT_GetSubjectName", Require(NotNull(pszSubjectName)), m_pContext, nAllocLen,
                pszSubjectName);
}

int CGPKIWrap::CertGetPubKeyAlg(int nAllocLen, char* pszAlg)
{
    return Call("GPKI_CERT_GetPubKeyAlg", Require(NotNull(pszAlg)), m_pContext, nAllocLen, pszAlg);
}

int CGPKIWrap::CertGetPubKeyLen(int nAllocLen, char* pszLen)
{
    return Call("GPKI_CERT_GetPubKeyLen", Require(NotNull(pszLen)), m_pContext, nAllocLen, pszLen);
}

int CGPKIWrap::CertGetPubKey(int nAllocLen, char* pszPubKey)
{
    return Call("GPKI_CERT_GetPubKey", Require(NotNull(pszPubKey)), m_pContext, nAllocLen, pszPubKey);
}

int CGPKIWrap::CertGetSignature(int nAllocLen, char* pszSignature)
{
    return Call("GPKI_CERT_GetSignature", Require(NotNull(pszSignature)), m_pContext, nAllocLen,
                pszSignature);
}

int CGPKIWrap::CertGetKeyUsage(int nAllocLen, char* pszKeyUsage)
{
    return Call("GPKI_CERT_GetKeyUsage", Require(NotNull(pszKeyUsage)), m_pContext, nAllocLen, pszKeyUsage);
}

int CGPKIWrap::CertGetBasicConstraints(int nAllocLen, char* pszBasicConstraints)
{
    return Call("GPKI_CERT_GetBasicConstraints", Require(NotNull(pszBasicConstraints)), m_pContext, nAllocLen,
                pszBasicConstraints);
}

int CGPKIWrap::CertGetPolicy(int nAllocLen, char* pszCertPolicy)
{
    return Call("GPKI_CERT_GetCertPolicy", Require(NotNull(pszCertPolicy)), m_pContext, nAllocLen,
                pszCertPolicy);
}

int CGPKIWrap::CertGetPolicyID(int nAllocLen, char* pszCertPolicyID)
{
    return Call("GPKI_CERT_GetCertPolicyID", Require(NotNull(pszCertPolicyID)), m_pContext, nAllocLen,
                pszCertPolicyID);
}

int CGPKIWrap::CertGetExtKeyUsage(int nAllocLen, char* pszExtKeyUsage)
{
    return Call("GPKI_CERT_GetExtKeyUsage", Require(NotNull(pszExtKeyUsage)), m_pContext, nAllocLen,
                pszExtKeyUsage);
}

int CGPKIWrap::CertGetSubjectAltName(int nAllocLen, char* pszSubAltName)
{
    return Call("GPKI_CERT_GetSubjectAltName", Require(NotNull(pszSubAltName)), m_pContext, nAllocLen,
                pszSubAltName);
}

int CGPKIWrap::CertGetAuthKeyID(int nAllocLen, char* pszAKI)
{
    return Call("GPKI_CERT_GetAuthKeyID", Require(NotNull(pszAKI)), m_pContext, nAllocLen, pszAKI);
}

int CGPKIWrap::CertGetSubKeyID(int nAllocLen, char* pszSKI)
{
    return Call("GPKI_CERT_GetSubKeyID", Require(NotNull(pszSKI)), m_pContext, nAllocLen, pszSKI);
}

int CGPKIWrap::CertGetCRLDP(int nAllocLen, char* pszCRLDP)
{
    return Call("GPKI_CERT_GetCRLDP", Require(NotNull(pszCRLDP)), m_pContext, nAllocLen, pszCRLDP);
}

int CGPKIWrap::CertGetAIA(int nAllocLen, char* pszAIA)
{
    return Call("GPKI_CERT_GetAIA", Require(NotNull(pszAIA)), m_pContext, nAllocLen, pszAIA);
}

int CGPKIWrap::CertGetRemainDays(BINSTR* pBinCert, int* nRemainDays)
{
    return Call("GPKI_CERT_GetRemainDays", Require(HasBytes(pBinCert)), m_pContext, pBinCert, nRemainDays);
}

int CGPKIWrap::CertAddCert(BINSTR* pBinCert, BINSTR* pBinCerts)
{
    return Call("GPKI_CERT_AddCert", Require(HasBytes(pBinCert)), m_pContext, pBinCert, pBinCerts);
}

int CGPKIWrap::CertGetCertCount(BINSTR* pBinCerts, int* nCnt)
{
    return Call("GPKI_CERT_GetCertCount", Require(HasBytes(pBinCerts)), m_pContext, pBinCerts, nCnt);
}

int CGPKIWrap::CertGetCert(BINSTR* pBinCerts, int nIndex, BINSTR* pBinCert)
{
    return Call("GPKI_CERT_GetCert", Require(HasBytes(pBinCerts), HasData(pBinCert)), m_pContext, pBinCerts,
                nIndex, pBinCert);
}

int CGPKIWrap::CertAddTrustedCert(BINSTR* pBinTrustedCert)
{
    return Call("GPKI_CERT_AddTrustedCert", Require(HasBytes(pBinTrustedCert)), m_pContext, pBinTrustedCert);
}

int CGPKIWrap::CertSetVerifyEnv(int nRange, int nCheck, bool bUseCache, char* pszTime, char* pszOCSPURL)
{
    return Call("GPKI_CERT_SetVerifyEnv", Require(), m_pContext, nRange, nCheck, bUseCache, pszTime,
                pszOCSPURL);
}

int CGPKIWrap::CertVerify(BINSTR* pBinCert, int nCertType, char* pszCertPolices, char* pszConfFilePath,
                          bool bSign, BINSTR* pBinMyCert, BINSTR* pBinMyPriKey)
{
    return Call("GPKI_CERT_Verify", Require(HasBytes(pBinCert)), m_pContext, pBinCert, nCertType,
                pszCertPolices, pszConfFilePath, bSign, pBinMyCert, pBinMyPriKey);
}

int CGPKIWrap::CertVerifyByIVS(char* pszConfFilePath, BINSTR* pBinCert, BINSTR* pBinMyCert)
{
    return Call("GPKI_CERT_VerifyByIVS",
                Require(NotNull(pszConfFilePath), HasBytes(pBinCert), HasBytes(pBinMyCert)), m_pContext,
                pszConfFilePath, pBinCert, pBinMyCert);
}

int CGPKIWrap::CertCheckStatByOCSP(BINSTR* pBinCert, bool bSign, BINSTR* pBinMyCert, BINSTR* pBinMyPriKey,
                                   char* pszURL, BINSTR* pBinOCSPSvrCert, char* szRevocationDate,
                                   int* pRevReason)
{
    return Call("GPKI_CERT_CheckStatByOCSP",
                Require(HasBytes(pBinCert), HasBytes(pBinMyCert), HasBytes(pBinMyPriKey), NotNull(pszURL)),
                m_pContext, pBinCert, bSign, pBinMyCert, pBinMyPriKey, pszURL, pBinOCSPSvrCert,
                szRevocationDate, pRevReason);
}

int CGPKIWrap::CertCheckStatByCRL(BINSTR* pBinCert, char* szRevocationDate, int* pRevReason)
{
    return Call("GPKI_CERT_CheckStatByCRL", Require(HasBytes(pBinCert)), m_pContext, pBinCert,
                szRevocationDate, pRevReason);
}
