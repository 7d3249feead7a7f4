#include "Operations.h"

void addTokenOperations(std::vector<Operation>& operations)
{
    OPERATION(PKCS11GetSlotList, (unsigned long* pSlotList, unsigned long* pSlotCnt),
              "ZRTK_PKCS11_GetSlotList", "GPKI_HSM_GetSlotList", "pSlotList");
    OPERATION(PKCS11GetTokenInfo, (unsigned long uSlotID, PKCS11_TOKEN_INFO* pTokenInfo),
              "ZRTK_PKCS11_GetTokenInfo", "GPKI_HSM_GetTokenInfo", "");
    OPERATION(PKCS11InitToken, (char* pszSoPIN, char* pszUserPIN), "ZRTK_PKCS11_InitToken", "-",
              "pszSoPIN, pszUserPIN");
    OPERATION(PKCS11InitTokenWithSlotID,
              (unsigned long ulSlotID, char* pszSoPIN, char* pszUserPIN, char* pszLabel),
              "ZRTK_PKCS11_InitTokenWithSlotID", "-", "pszSoPIN, pszUserPIN, pszLabel");
    OPERATION(PKCS11OpenSessionWithSlotID, (unsigned long ulSlotID, char* pszUserPIN, int nTokenName),
              "ZRTK_PKCS11_OpenSessionWithSlotID",
              "GPKI_HSM_OpenSession(ctx, ulSlotID, nTokenName); GPKI_HSM_Login(ctx, pszUserPIN)", "");
    OPERATION(PKCS11OpenSessionWithTokenName, (char* pszUserPIN, int nTokenName),
              "ZRTK_PKCS11_OpenSessionWithTokenName", "-", "pszUserPIN");
    OPERATION(PKCS11Login, (char* pszUserPIN), "ZRTK_PKCS11_Login", "GPKI_HSM_Login", "pszUserPIN");
    OPERATION(PKCS11Logout, (), "ZRTK_PKCS11_Logout", "GPKI_HSM_Logout", "");
    OPERATION(PKCS11CloseSession, (), "ZRTK_PKCS11_CloseSession", "GPKI_HSM_CloseSession", "");
    OPERATION(PKCS11ChangePIN, (char* pszOldPIN, char* pszNewPIN), "ZRTK_PKCS11_ChangePIN",
              "GPKI_HSM_ChangePIN", "pszOldPIN, pszNewPIN");
    OPERATION(PKCS11GetCertCnt, (int* nCertCnt), "ZRTK_PKCS11_GetCertCnt", "GPKI_HSM_GetCertCnt", "");
    OPERATION(PKCS11GetCertInfo, (int nIndex, int* pnCertType, BINSTR* pBinCertDN, BINSTR* pBinKeyID),
              "ZRTK_PKCS11_GetCertInfo", "GPKI_HSM_GetCertInfo", "");
    OPERATION(PKCS11ReadCert, (BINSTR * pBinKeyID, BINSTR * pBinCert), "ZRTK_PKCS11_ReadCert",
              "GPKI_HSM_ReadCert", "pBinKeyID");
    OPERATION(PKCS11ReadRandomForVID, (BINSTR * pBinKeyID, BINSTR * pBinRandom),
              "ZRTK_PKCS11_ReadRandomForVID", "GPKI_HSM_ReadRandomForVID", "pBinKeyID");
    OPERATION(PKCS11WriteCertAndPriKey, (BINSTR * pBinCert, BINSTR * pBinPriKey),
              "ZRTK_PKCS11_WriteCertAndPriKey", "GPKI_HSM_WriteCertAndPriKey", "pBinCert, pBinPriKey");
    OPERATION(PKCS11DeleteCertAndPriKey, (BINSTR * pBinKeyID), "ZRTK_PKCS11_DeleteCertAndPriKey",
              "GPKI_HSM_DeleteCertAndPriKey", "pBinKeyID");
    OPERATION(PKCS11GenKeyPair, (int nAlg, int nKeyType, BINSTR* pBinKeyID), "ZRTK_PKCS11_GenKeyPair", "-",
              "ZR side: pBinKeyID");
    OPERATION(PKCS11Sign, (BINSTR * pBinKeyID, BINSTR * pBinData, BINSTR * pBinSignature), "ZRTK_PKCS11_Sign",
              "-", "pBinKeyID, pBinData");
    OPERATION(PKCS11Verify, (BINSTR * pBinKeyID, BINSTR * pBinData, BINSTR * pBinSignature),
              "ZRTK_PKCS11_Verify", "-", "pBinKeyID, pBinData, pBinSignature");
    OPERATION(PKCS11Encrypt, (BINSTR * pBinKeyID, BINSTR * pBinPlainText, BINSTR * pBinCipherText),
              "ZRTK_PKCS11_Encrypt", "-", "pBinKeyID, pBinPlainText");
    OPERATION(PKCS11Decrypt, (BINSTR * pBinKeyID, BINSTR * pBinCipherText, BINSTR * pBinPlainText),
              "ZRTK_PKCS11_Decrypt", "-", "pBinKeyID, pBinCipherText");
    OPERATION(PKCS11SignData, (BINSTR * pBinKeyID, BINSTR * pBinData, BINSTR * pBinSignedData),
              "ZRTK_PKCS11_SignData", "GPKI_HSM_SignData", "pBinKeyID, pBinData");
    OPERATION(PKCS11SignDataNoContent, (BINSTR * pBinKeyID, BINSTR * pBinData, BINSTR * pBinSignedData),
              "ZRTK_PKCS11_SignData_NoContent", "-", "pBinKeyID, pBinData");
    OPERATION(PKCS11DecryptData, (BINSTR * pBinKeyID, BINSTR * pBinEnvelopData, BINSTR * pBinPlainText),
              "ZRTK_PKCS11_DecryptData", "-", "pBinKeyID, pBinEnvelopData");
    OPERATION(PKCS11SignAndEnvData,
              (BINSTR * pBinKeyID, BINSTR * pBinEnvCert, BINSTR * pBinData, BINSTR * pBinSignAndEnvData),
              "ZRTK_PKCS11_SignAndEnvData", "-", "pBinKeyID, pBinEnvCert, pBinData");
    OPERATION(PKCS11VerifyAndDecData,
              (BINSTR * pBinKeyID, BINSTR * pBinSignAndEnvData, BINSTR * pBinData, BINSTR * pBinSignerCert),
              "ZRTK_PKCS11_VerifyAndDecData", "-", "pBinKeyID, pBinSignAndEnvData");
    OPERATION(PKCS11VerifySignatureValue,
              (char* pszLibPaths, BINSTR* pBinSignerCert, BINSTR* pBinSignatureValue),
              "ZRTK_PKCS11_VerifySignatureValue", "-", "pszLibPaths, pBinSignerCert, pBinSignatureValue");
    OPERATION(PKCS11CMPCertRequest,
              (char* pszIP, int nPort, char* pszRefNum, char* pszAuthCode, char* pszIDN, char* pszCACert,
               BINSTR* pBinSignKeyID, BINSTR* pBinKmKeyID),
              "ZRTK_PKCS11_CMP_CertRequest", "-", "pszIP, pszRefNum, pszAuthCode, pszIDN, pszCACert");
    OPERATION(PKCS11CMPCertUpdate,
              (char* pszIP, int nPort, bool bKeyUpdate, char* pszIDN, char* pszCACert, BINSTR* pBinSignKeyID,
               BINSTR* pBinKmKeyID),
              "ZRTK_PKCS11_CMP_CertUpdate", "-", "pszIP, pszIDN, pszCACert, pBinSignKeyID, pBinKmKeyID");
    OPERATION(PKCS11CMPCertUpdate2,
              (char* pszIP, int nPort, bool bKeyUpdate, int nOption, char* pszIDN, char* pszCACert,
               BINSTR* pBinSignCert, BINSTR* pBinSignPriKey, BINSTR* pBinKmCert, BINSTR* pBinKmPriKey,
               BINSTR* pBinSignKeyID, BINSTR* pBinKmKeyID),
              "ZRTK_PKCS11_CMP_CertUpdate2", "-",
              "pszIP, pszIDN, pszCACert, pBinSignCert, pBinSignPriKey; ZR side: pBinKmCert, pBinKmPriKey, "
              "pBinSignKeyID, pBinKmKeyID");
    OPERATION(PKCS11CMPCertRevoke,
              (char* pszIP, int nPort, int nReasonCode, BINSTR* pBinSignKeyID, BINSTR* pBinKmKeyID),
              "ZRTK_PKCS11_CMP_CertRevoke", "-", "pszIP; ZR side: pBinSignKeyID, pBinKmKeyID");
}
