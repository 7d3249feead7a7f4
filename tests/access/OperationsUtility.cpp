#include "Operations.h"

void addUtilityOperations(std::vector<Operation>& operations)
{
    OPERATION(ZRAPGetDataByURL, (int nDataType, char* pszURL, BINSTR* pBinData), "ZRTK_ZRAP_GetDataByURL",
              "GPKI_LDAP_GetDataByURL", "pszURL");
    OPERATION(ZRAPGetCRLByCert, (BINSTR * pBinCert, BINSTR * pBinCRL), "ZRTK_ZRAP_GetCRLByCert",
              "GPKI_LDAP_GetCRLByCert", "pBinCert");
    OPERATION(LDAPGetDataByCN,
              (char* pszIP, int nPort, char* pszCN, int nDataType, char* FullDN, BINSTR* pBinData), "-",
              "GPKI_LDAP_GetDataByCN", "pszIP, pszCN");
    OPERATION(LDAPGetAnyDataByURL, (char* pszAttribute, char* pszURL, BINSTR* pBinData), "-",
              "GPKI_LDAP_GetAnyDataByURL", "pszAttribute, pszURL");
    OPERATION(LDAPGetCertPath, (BINSTR * pBinCert, char* pszConfFilePath, BINSTR* pBinPath), "-",
              "GPKI_LDAP_GetCertPath", "pBinCert, pszConfFilePath");
    OPERATION(SIGEAMakeChallenge, (BINSTR * pBinChallenge), "-", "GPKI_SIGEA_MakeChallenge", "pBinChallenge");
    OPERATION(SIGEAMakeResponse,
              (BINSTR * pBinChallenge, BINSTR * pBinCert, BINSTR * pBinPriKey, BINSTR * pBinResponse), "-",
              "GPKI_SIGEA_MakeResponse", "pBinChallenge, pBinCert, pBinPriKey");
    OPERATION(SIGEAVerifyResponse, (BINSTR * pBinResponse, BINSTR * pBinChallenge, BINSTR * pBinCert), "-",
              "GPKI_SIGEA_VerifyResponse", "pBinResponse, pBinChallenge, pBinCert");
    OPERATION(WPKISignData,
              (BINSTR * pBinCert, BINSTR * pBinPriKey, BINSTR * pBinTBSData, BINSTR * pBinSignedContent),
              "ZRTK_WPKI_SignData", "-", "pBinCert, pBinPriKey, pBinTBSData");
    OPERATION(WPKIVerifyData, (BINSTR * pBinSignedContent, BINSTR * pBinData, BINSTR * pBinSignerCert),
              "ZRTK_WPKI_VerifyData", "-", "pBinSignedContent");
    OPERATION(WPKIEncryptData,
              (BINSTR * pBinRecCert, BINSTR * pBinTBEData, int nSymAlg, BINSTR* pBinCert, BINSTR* pBinPriKey,
               BINSTR* pBinWapEnvData),
              "ZRTK_WPKI_EncryptData", "-", "pBinRecCert, pBinTBEData, pBinCert, pBinPriKey");
    OPERATION(WPKIDecryptData,
              (BINSTR * pBinCert, BINSTR * pBinPriKey, BINSTR * pBinWapEnvData, BINSTR * pBinWapData),
              "ZRTK_WPKI_DecryptData", "-", "pBinCert, pBinPriKey, pBinWapEnvData");
    OPERATION(WPKIVerifyCert, (BINSTR * pBinCert), "ZRTK_WPKI_VerifyCert", "-", "pBinCert");
    OPERATION(UNIViewCert, (BINSTR * pBinCert, char* pszDisplay),
              "ZRTK_UNI_ViewCert(ctx, pBinCert, 8, pszDisplay)", "-", "pBinCert");
    OPERATION(UNIVerifySignData, (BINSTR * pBinSignData, BINSTR * pBinData, BINSTR * pBinSignerCert),
              "ZRTK_UNI_VerifySignData", "-", "pBinSignData");
    OPERATION(UNIDecryptEnvData,
              (BINSTR * pBinCert, BINSTR * pBinPriKey, BINSTR * pBinEnvData, BINSTR * pBinData),
              "ZRTK_UNI_DecryptEnvData", "-", "pBinCert, pBinPriKey, pBinEnvData");
    OPERATION(UTILAddObject, (BINSTR * pBinObj, BINSTR * pBinObjs), "ZRTK_UTIL_AddObject", "-", "pBinObj");
    OPERATION(UTILGetObjectCount, (BINSTR * pBinObjs, int* nCnt), "ZRTK_UTIL_GetObjectCount", "-",
              "pBinObjs");
    OPERATION(UTILGetObject, (BINSTR * pBinObjs, int nIndex, BINSTR* pBinObj), "ZRTK_UTIL_GetObject", "-",
              "pBinObjs");
    OPERATION(UTILCompareDN, (char* pszDN1, char* pszDN2), "ZRTK_UTIL_CompareDN", "-", "pszDN1, pszDN2");
    OPERATION(UTILGetCertPath, (BINSTR * pBinCert, BINSTR * pBinPath), "ZRTK_UTIL_GetCertPath", "-",
              "pBinCert");
    OPERATION(UTILGetRootCert, (BINSTR * pBinCert, BINSTR * pBinRootCert), "ZRTK_UTIL_GetRootCert", "-",
              "pBinCert");
    OPERATION(UTILIsTrustCert, (BINSTR * pBinTrustCert, BINSTR * pBinRootCert, bool* pIsTrust),
              "ZRTK_UTIL_IsTrustCert", "-", "pBinTrustCert, pBinRootCert");
}
