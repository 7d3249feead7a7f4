#include "Operations.h"

void addCertificateOperations(std::vector<Operation>& operations)
{
    OPERATION(CertLoad, (BINSTR * pBinCert), "ZRTK_CERT_Load", "GPKI_CERT_Load", "pBinCert");
    OPERATION(CertUnLoad, (), "ZRTK_CERT_Unload", "GPKI_CERT_Unload", "");
    OPERATION(CertGetUID, (int nAllocLen, char* pszUID), "ZRTK_CERT_GetUID", "GPKI_CERT_GetUID",
              "pszUID (10003)");
    OPERATION(CertGetVersion, (int nAllocLen, char* pszVersion), "ZRTK_CERT_GetVersion(ctx, ?)",
              "GPKI_CERT_GetVersion(ctx, ?)", "pszVersion (10003)");
    OPERATION(CertGetSerialNum, (int nAllocLen, char* pszSerialNum), "ZRTK_CERT_GetSerialNum",
              "GPKI_CERT_GetSerialNum", "pszSerialNum (10003)");
    OPERATION(CertGetSignatureAlgorithm, (int nAllocLen, char* pszSignAlg), "ZRTK_CERT_GetSignatureAlgorithm",
              "GPKI_CERT_GetSignatureAlgorithm", "pszSignAlg (10003)");
    OPERATION(CertGetIssuerName, (int nAllocLen, char* pszIssuerName), "ZRTK_CERT_GetIssuerName",
              "GPKI_CERT_GetIssuerName", "pszIssuerName (10003)");
    OPERATION(
        CertGetValidity, (int nFromAllocLen, char* pszFrom, int nToAllocLen, char* pszTo),
        "ZRTK_CERT_GetValidity(ctx, pszFrom, pszTo)", "GPKI_CERT_GetValidity(ctx, nFromAllocLen, ?)",
        "pszFrom (10003), pszTo (10003); ZR side: nFromAllocLen (at least 25), nToAllocLen (at least 25)");
    OPERATION(CertGetSubjectName, (int nAllocLen, char* pszSubjectName), "ZRTK_CERT_GetSubjectName",
              "GPKI_CERT_GetSubjectName", "pszSubjectName (10003)");
    OPERATION(CertGetPubKeyInfo,
              (char* szPubKeyAlg, char* szPubKeyLen, int nAllocLen, char* pszPubKey, BINSTR* pBinKeyInfo),
              "ZRTK_BINSTR_Create(?); ZRTK_CERT_GetPubKey(ctx, nAllocLen, ?, pszPubKey); "
              "ZRTK_CERT_GetPubKey2(ctx, ?, szPubKeyLen, ?)",
              "GPKI_BINSTR_Create(?); GPKI_CERT_GetPubKeyAlg(ctx, 50, ?); GPKI_CERT_GetPubKeyLen(ctx, 20, "
              "?); GPKI_CERT_GetPubKey(ctx, nAllocLen, pszPubKey)",
              "pszPubKey (10003)");
    OPERATION(CertGetSignature, (int nAllocLen, char* pszSignature), "ZRTK_CERT_GetSignature",
              "GPKI_CERT_GetSignature", "pszSignature (10003)");
    OPERATION(CertGetKeyUsage, (int nAllocLen, char* pszKeyUsage), "ZRTK_CERT_GetKeyUsage",
              "GPKI_CERT_GetKeyUsage", "pszKeyUsage (10003)");
    OPERATION(CertGetBasicConstraints, (int nAllocLen, char* pszBasicConstraints),
              "ZRTK_CERT_GetBasicConstraints", "GPKI_CERT_GetBasicConstraints",
              "pszBasicConstraints (10003)");
    OPERATION(CertGetCertPolicy, (int nAllocLen, char* pszCertPolicy), "ZRTK_CERT_GetCertPolicy",
              "GPKI_CERT_GetCertPolicy", "pszCertPolicy (10003)");
    OPERATION(CertGetPolicyID, (int nAllocLen, char* pszCertPolicyID), "ZRTK_CERT_GetCertPolicy_PolicyID",
              "GPKI_CERT_GetCertPolicyID", "pszCertPolicyID (10003)");
    OPERATION(CertGetExtKeyUsage, (int nAllocLen, char* pszExtKeyUsage), "ZRTK_CERT_GetExtKeyUsage",
              "GPKI_CERT_GetExtKeyUsage", "pszExtKeyUsage (10003)");
    OPERATION(CertGetSubjectAltName, (int nAllocLen, char* pszSubAltName), "ZRTK_CERT_GetSubjectAltName",
              "GPKI_CERT_GetSubjectAltName", "pszSubAltName (10003)");
    OPERATION(CertGetIssuerAltName, (int nAllocLen, char* pszIssuerAltName), "ZRTK_CERT_GetIssuerAltName",
              "-", "pszIssuerAltName (10003)");
    OPERATION(CertGetAuthKeyID, (int nAllocLen, char* pszAKI), "ZRTK_CERT_GetAuthKeyID",
              "GPKI_CERT_GetAuthKeyID", "pszAKI (10003)");
    OPERATION(CertGetSubKeyID, (int nAllocLen, char* pszSKI), "ZRTK_CERT_GetSubKeyID",
              "GPKI_CERT_GetSubKeyID", "pszSKI (10003)");
    OPERATION(CertGetCRLDP, (int nAllocLen, char* pszCRLDP), "ZRTK_CERT_GetCRLDP", "GPKI_CERT_GetCRLDP",
              "pszCRLDP (10003)");
    OPERATION(CertGetCRLDPURL, (int nAllocLen, char* pszCRLDPURL), "ZRTK_CERT_GetCRLDP_URL", "-",
              "pszCRLDPURL (10003)");
    OPERATION(CertGetAIA, (int nAllocLen, char* pszAIA), "ZRTK_CERT_GetAIA", "GPKI_CERT_GetAIA",
              "pszAIA (10003)");
    OPERATION(CertGetRemainDays, (BINSTR * pBinCert, int* nRemainDays), "ZRTK_CERT_GetRemainDays",
              "GPKI_CERT_GetRemainDays", "pBinCert+ (10003); ZR side: nRemainDays");
    OPERATION(CertAddCert, (BINSTR * pBinCert, BINSTR * pBinCerts), "-", "GPKI_CERT_AddCert", "pBinCert+");
    OPERATION(CertGetCertCount, (BINSTR * pBinCerts, int* nCnt), "-", "GPKI_CERT_GetCertCount", "pBinCerts+");
    OPERATION(CertGetCert, (BINSTR * pBinCerts, int nIndex, BINSTR* pBinCert), "-", "GPKI_CERT_GetCert",
              "pBinCerts+ (10003); GPKI side: pBinCert");
    OPERATION(CertAddTrustedCert, (BINSTR * pBinTrustedCert), "ZRTK_CERT_AddTrustedCert",
              "GPKI_CERT_AddTrustedCert", "pBinTrustedCert+");
    OPERATION(CertSetVerifyEnv, (int nRange, int nCheck, bool bUseCache, char* pszTime, char* pszOCSPURL),
              "ZRTK_CERT_SetVerifyEnv1(ctx, nRange, nCheck, bUseCache, pszOCSPURL)", "GPKI_CERT_SetVerifyEnv",
              "");
    OPERATION(CertSetVerifyEnv2, (char* pszTime, BINSTR* pBinARL, BINSTR* pbinCRL), "ZRTK_CERT_SetVerifyEnv2",
              "-", "ZR side: pszTime, pBinARL (pointer), pbinCRL (pointer)");
    OPERATION(CertVerify,
              (BINSTR * pBinCert, int nCertType, char* pszCertPolices, char* pszConfFilePath, bool bSign,
               BINSTR* pBinMyCert, BINSTR* pBinMyPriKey),
              "ZRTK_CERT_Verify(ctx, pBinCert, nCertType, pszCertPolices, bSign, pBinMyCert, pBinMyPriKey)",
              "GPKI_CERT_Verify", "pBinCert+");
    OPERATION(CertVerify2, (BINSTR * pBinCert, int nCertType, char* pszCertPolicies, char* pszPassword),
              "ZRTK_CERT_Verify2", "-", "pBinCert+");
    OPERATION(CertVerifyByIVS, (char* pszConfFilePath, BINSTR* pBinCert, BINSTR* pBinMyCert),
              "ZRTK_CERT_VerifyByIVS", "GPKI_CERT_VerifyByIVS",
              "pszConfFilePath (10003), pBinCert+ (10003), pBinMyCert+ (10003)");
    OPERATION(CertCheckStatByOCSP,
              (BINSTR * pBinCert, bool bSign, BINSTR* pBinMyCert, BINSTR* pBinMyPriKey, char* pszURL,
               BINSTR* pBinOCSPSvrCert, char* szRevocationDate, int* pRevReason),
              "-", "GPKI_CERT_CheckStatByOCSP", "pBinCert+, pBinMyCert+, pBinMyPriKey+, pszURL");
    OPERATION(CertCheckStatByCRL, (BINSTR * pBinCert, char* szRevocationDate, int* pRevReason),
              "ZRTK_CERT_CheckStatByCRL", "GPKI_CERT_CheckStatByCRL", "pBinCert+");
}
