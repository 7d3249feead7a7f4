#include "quillgate/toolkit_token.h"

#include "ZRAPIWrap.h"

int PKCS11GetSlotList(void* pContext, unsigned long* pSlotList, unsigned long* pSlotCnt)
{
    return Forward(pContext, &CWrapperAPI::PKCS11GetSlotList, pSlotList, pSlotCnt);
}

int PKCS11GetTokenInfo(void* pContext, unsigned long uSlotID, PKCS11_TOKEN_INFO* pTokenInfo)
{
    return Forward(pContext, &CWrapperAPI::PKCS11GetTokenInfo, uSlotID, pTokenInfo);
}

int PKCS11InitToken(void* pContext, char* pszSoPIN, char* pszUserPIN)
{
    return Forward(pContext, &CWrapperAPI::PKCS11InitToken, pszSoPIN, pszUserPIN);
}

int PKCS11InitTokenWithSlotID(void* pContext, unsigned long ulSlotID, char* pszSoPIN, char* pszUserPIN,
                              char* pszLabel)
{
    return Forward(pContext, &CWrapperAPI::PKCS11InitTokenWithSlotID, ulSlotID, pszSoPIN, pszUserPIN,
                   pszLabel);
}

int PKCS11OpenSessionWithSlotID(void* pContext, unsigned long ulSlotID, char* pszUserPIN, int nTokenName)
{
    return Forward(pContext, &CWrapperAPI::PKCS11OpenSessionWithSlotID, ulSlotID, pszUserPIN, nTokenName);
}

int PKCS11OpenSessionWithTokenName(void* pContext, char* pszUserPIN, int nTokenName)
{
    return Forward(pContext, &CWrapperAPI::PKCS11OpenSessionWithTokenName, pszUserPIN, nTokenName);
}

int PKCS11Login(void* pContext, char* pszUserPIN)
{
    return Forward(pContext, &CWrapperAPI::PKCS11Login, pszUserPIN);
}

int PKCS11Logout(void* pContext)
{
    return Forward(pContext, &CWrapperAPI::PKCS11Logout);
}

int PKCS11CloseSession(void* pContext)
{
    return Forward(pContext, &CWrapperAPI::PKCS11CloseSession);
}

int PKCS11ChangePIN(void* pContext, char* pszOldPIN, char* pszNewPIN)
{
    return Forward(pContext, &CWrapperAPI::PKCS11ChangePIN, pszOldPIN, pszNewPIN);
}

int PKCS11GetCertCnt(void* pContext, int* nCertCnt)
{
    return Forward(pContext, &CWrapperAPI::PKCS11GetCertCnt, nCertCnt);
}

int PKCS11GetCertInfo(void* pContext, int nIndex, int* pnCertType, BINSTR* pBinCertDN, BINSTR* pBinKeyID)
{
    return Forward(pContext, &CWrapperAPI::PKCS11GetCertInfo, nIndex, pnCertType, pBinCertDN, pBinKeyID);
}

int PKCS11ReadCert(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinCert)
{
    return Forward(pContext, &CWrapperAPI::PKCS11ReadCert, pBinKeyID, pBinCert);
}

int PKCS11ReadRandomForVID(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinRandom)
{
    return Forward(pContext, &CWrapperAPI::PKCS11ReadRandomForVID, pBinKeyID, pBinRandom);
}

int PKCS11WriteCertAndPriKey(void* pContext, BINSTR* pBinCert, BINSTR* pBinPriKey)
{
    return Forward(pContext, &CWrapperAPI::PKCS11WriteCertAndPriKey, pBinCert, pBinPriKey);
}

int PKCS11DeleteCertAndPriKey(void* pContext, BINSTR* pBinKeyID)
{
    return Forward(pContext, &CWrapperAPI::PKCS11DeleteCertAndPriKey, pBinKeyID);
}

int PKCS11GenKeyPair(void* pContext, int nAlg, int nKeyType, BINSTR* pBinKeyID)
{
    return Forward(pContext, &CWrapperAPI::PKCS11GenKeyPair, nAlg, nKeyType, pBinKeyID);
}

int PKCS11Sign(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinData, BINSTR* pBinSignature)
{
    return Forward(pContext, &CWrapperAPI::PKCS11Sign, pBinKeyID, pBinData, pBinSignature);
}

int PKCS11Verify(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinData, BINSTR* pBinSignature)
{
    return Forward(pContext, &CWrapperAPI::PKCS11Verify, pBinKeyID, pBinData, pBinSignature);
}

int PKCS11Encrypt(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinPlainText, BINSTR* pBinCipherText)
{
    return Forward(pContext, &CWrapperAPI::PKCS11Encrypt, pBinKeyID, pBinPlainText, pBinCipherText);
}

int PKCS11Decrypt(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinCipherText, BINSTR* pBinPlainText)
{
    return Forward(pContext, &CWrapperAPI::PKCS11Decrypt, pBinKeyID, pBinCipherText, pBinPlainText);
}

int PKCS11SignData(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinData, BINSTR* pBinSignedData)
{
    return Forward(pContext, &CWrapperAPI::PKCS11SignData, pBinKeyID, pBinData, pBinSignedData);
}

int PKCS11SignDataNoContent(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinData, BINSTR* pBinSignedData)
{
    return Forward(pContext, &CWrapperAPI::PKCS11SignDataNoContent, pBinKeyID, pBinData, pBinSignedData);
}

int PKCS11DecryptData(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinEnvelopData, BINSTR* pBinPlainText)
{
    return Forward(pContext, &CWrapperAPI::PKCS11DecryptData, pBinKeyID, pBinEnvelopData, pBinPlainText);
}

int PKCS11SignAndEnvData(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinEnvCert, BINSTR* pBinData,
                         BINSTR* pBinSignAndEnvData)
{
    return Forward(pContext, &CWrapperAPI::PKCS11SignAndEnvData, pBinKeyID, pBinEnvCert, pBinData,
                   pBinSignAndEnvData);
}

int PKCS11VerifyAndDecData(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinSignAndEnvData, BINSTR* pBinData,
                           BINSTR* pBinSignerCert)
{
    return Forward(pContext, &CWrapperAPI::PKCS11VerifyAndDecData, pBinKeyID, pBinSignAndEnvData, pBinData,
                   pBinSignerCert);
}

int PKCS11VerifySignatureValue(void* pContext, char* pszLibPaths, BINSTR* pBinSignerCert,
                               BINSTR* pBinSignatureValue)
{
    return Forward(pContext, &CWrapperAPI::PKCS11VerifySignatureValue, pszLibPaths, pBinSignerCert,
                   pBinSignatureValue);
}

int PKCS11CMPCertRequest(void* pContext, char* pszIP, int nPort, char* pszRefNum, char* pszAuthCode,
                         char* pszIDN, char* pszCACert, BINSTR* pBinSignKeyID, BINSTR* pBinKmKeyID)
{
    return Forward(pContext, &CWrapperAPI::PKCS11CMPCertRequest, pszIP, nPort, pszRefNum, pszAuthCode, pszIDN,
                   pszCACert, pBinSignKeyID, pBinKmKeyID);
}

int PKCS11CMPCertUpdate(void* pContext, char* pszIP, int nPort, bool bKeyUpdate, char* pszIDN,
                        char* pszCACert, BINSTR* pBinSignKeyID, BINSTR* pBinKmKeyID)
{
    return Forward(pContext, &CWrapperAPI::PKCS11CMPCertUpdate, pszIP, nPort, bKeyUpdate, pszIDN, pszCACert,
                   pBinSignKeyID, pBinKmKeyID);
}

int PKCS11CMPCertUpdate2(void* pContext, char* pszIP, int nPort, bool bKeyUpdate, int nOption, char* pszIDN,
                         char* pszCACert, BINSTR* pBinSignCert, BINSTR* pBinSignPriKey, BINSTR* pBinKmCert,
                         BINSTR* pBinKmPriKey, BINSTR* pBinSignKeyID, BINSTR* pBinKmKeyID)
{
    return Forward(pContext, &CWrapperAPI::PKCS11CMPCertUpdate2, pszIP, nPort, bKeyUpdate, nOption, pszIDN,
                   pszCACert, pBinSignCert, pBinSignPriKey, pBinKmCert, pBinKmPriKey, pBinSignKeyID,
                   pBinKmKeyID);
}

int PKCS11CMPCertRevoke(void* pContext, char* pszIP, int nPort, int nReasonCode, BINSTR* pBinSignKeyID,
                        BINSTR* pBinKmKeyID)
{
    return Forward(pContext, &CWrapperAPI::PKCS11CMPCertRevoke, pszIP, nPort, nReasonCode, pBinSignKeyID,
                   pBinKmKeyID);
}
