#include "ZRTKWrap.h"

int CZRTKWrap::PKCS11GetSlotList(unsigned long* pSlotList, unsigned long* pSlotCnt)
{
    return Call("ZRTK_PKCS11_GetSlotList", Require(NotNull(pSlotList)), m_pContext, pSlotList, pSlotCnt);
}

int CZRTKWrap::PKCS11GetTokenInfo(unsigned long uSlotID, PKCS11_TOKEN_INFO* pTokenInfo)
{
    return Call("ZRTK_PKCS11_GetTokenInfo", Require(), m_pContext, uSlotID, pTokenInfo);
}

int CZRTKWrap::PKCS11InitToken(char* pszSoPIN, char* pszUserPIN)
{
    return Call("ZRTK_PKCS11_InitToken", Require(NotNull(pszSoPIN), NotNull(pszUserPIN)), m_pContext,
                pszSoPIN, pszUserPIN);
}

int CZRTKWrap::PKCS11InitTokenWithSlotID(unsigned long ulSlotID, char* pszSoPIN, char* pszUserPIN,
                                         char* pszLabel)
{
    return Call("ZRTK_PKCS11_InitTokenWithSlotID",
                Require(NotNull(pszSoPIN), NotNull(pszUserPIN), NotNull(pszLabel)), m_pContext, ulSlotID,
                pszSoPIN, pszUserPIN, pszLabel);
}

int CZRTKWrap::PKCS11OpenSessionWithSlotID(unsigned long ulSlotID, char* pszUserPIN, int nTokenName)
{
    return Call("ZRTK_PKCS11_OpenSessionWithSlotID", Require(), m_pContext, ulSlotID, pszUserPIN, nTokenName);
}

int CZRTKWrap::PKCS11OpenSessionWithTokenName(char* pszUserPIN, int nTokenName)
{
    return Call("ZRTK_PKCS11_OpenSessionWithTokenName", Require(NotNull(pszUserPIN)), m_pContext, pszUserPIN,
                nTokenName);
}

int CZRTKWrap::PKCS11Login(char* pszUserPIN)
{
    return Call("ZRTK_PKCS11_Login", Require(NotNull(pszUserPIN)), m_pContext, pszUserPIN);
}

int CZRTKWrap::PKCS11Logout()
{
    return Call("ZRTK_PKCS11_Logout", Require(), m_pContext);
}

int CZRTKWrap::PKCS11CloseSession()
{
    return Call("ZRTK_PKCS11_CloseSession", Require(), m_pContext);
}

int CZRTKWrap::PKCS11ChangePIN(char* pszOldPIN, char* pszNewPIN)
{
    return Call("ZRTK_PKCS11_ChangePIN", Require(NotNull(pszOldPIN), NotNull(pszNewPIN)), m_pContext,
                pszOldPIN, pszNewPIN);
}

int CZRTKWrap::PKCS11GetCertCnt(int* nCertCnt)
{
    return Call("ZRTK_PKCS11_GetCertCnt", Require(), m_pContext, nCertCnt);
}

int CZRTKWrap::PKCS11GetCertInfo(int nIndex, int* pnCertType, BINSTR* pBinCertDN, BINSTR* pBinKeyID)
{
    return Call("ZRTK_PKCS11_GetCertInfo", Require(), m_pContext, nIndex, pnCertType, pBinCertDN, pBinKeyID);
}

int CZRTKWrap::PKCS11ReadCert(BINSTR* pBinKeyID, BINSTR* pBinCert)
{
    return Call("ZRTK_PKCS11_ReadCert", Require(HasData(pBinKeyID)), m_pContext, pBinKeyID, pBinCert);
}

int CZRTKWrap::PKCS11ReadRandomForVID(BINSTR* pBinKeyID, BINSTR* pBinRandom)
{
    return Call("ZRTK_PKCS11_ReadRandomForVID", Require(HasData(pBinKeyID)), m_pContext, pBinKeyID,
                pBinRandom);
}

int CZRTKWrap::PKCS11WriteCertAndPriKey(BINSTR* pBinCert, BINSTR* pBinPriKey)
{
    return Call("ZRTK_PKCS11_WriteCertAndPriKey", Require(HasData(pBinCert), HasData(pBinPriKey)), m_pContext,
                pBinCert, pBinPriKey);
}

int CZRTKWrap::PKCS11DeleteCertAndPriKey(BINSTR* pBinKeyID)
{
    return Call("ZRTK_PKCS11_DeleteCertAndPriKey", Require(HasData(pBinKeyID)), m_pContext, pBinKeyID);
}

int CZRTKWrap::PKCS11GenKeyPair(int nAlg, int nKeyType, BINSTR* pBinKeyID)
{
    return Call("ZRTK_PKCS11_GenKeyPair", Require(HasData(pBinKeyID)), m_pContext, nAlg, nKeyType, pBinKeyID);
}

int CZRTKWrap::PKCS11Sign(BINSTR* pBinKeyID, BINSTR* pBinData, BINSTR* pBinSignature)
{
    return Call("ZRTK_PKCS11_Sign", Require(HasData(pBinKeyID), HasData(pBinData)), m_pContext, pBinKeyID,
                pBinData, pBinSignature);
}

int CZRTKWrap::PKCS11Verify(BINSTR* pBinKeyID, BINSTR* pBinData, BINSTR* pBinSignature)
{
    return Call("ZRTK_PKCS11_Verify", Require(HasData(pBinKeyID), HasData(pBinData), HasData(pBinSignature)),
                m_pContext, pBinKeyID, pBinData, pBinSignature);
}

int CZRTKWrap::PKCS11Encrypt(BINSTR* pBinKeyID, BINSTR* pBinPlainText, BINSTR* pBinCipherText)
{
    return Call("ZRTK_PKCS11_Encrypt", Require(HasData(pBinKeyID), HasData(pBinPlainText)), m_pContext,
                pBinKeyID, pBinPlainText, pBinCipherText);
}

int CZRTKWrap::PKCS11Decrypt(BINSTR* pBinKeyID, BINSTR* pBinCipherText, BINSTR* pBinPlainText)
{
    return Call("ZRTK_PKCS11_Decrypt", Require(HasData(pBinKeyID), HasData(pBinCipherText)), m_pContext,
                pBinKeyID, pBinCipherText, pBinPlainText);
}

int CZRTKWrap::PKCS11SignData(BINSTR* pBinKeyID, BINSTR* pBinData, BINSTR* pBinSignedData)
{
    return Call("ZRTK_PKCS11_SignData", Require(HasData(pBinKeyID), HasData(pBinData)), m_pContext, pBinKeyID,
                pBinData, pBinSignedData);
}

int CZRTKWrap::PKCS11SignDataNoContent(BINSTR* pBinKeyID, BINSTR* pBinData, BINSTR* pBinSignedData)
{
    return Call("ZRTK_PKCS11_SignData_NoContent", Require(HasData(pBinKeyID), HasData(pBinData)), m_pContext,
                pBinKeyID, pBinData, pBinSignedData);
}

int CZRTKWrap::PKCS11DecryptData(BINSTR* pBinKeyID, BINSTR* pBinEnvelopData, BINSTR* pBinPlainText)
{
    return Call("ZRTK_PKCS11_DecryptData", Require(HasData(pBinKeyID), HasData(pBinEnvelopData)), m_pContext,
                pBinKeyID, pBinEnvelopData, pBinPlainText);
}

int CZRTKWrap::PKCS11SignAndEnvData(BINSTR* pBinKeyID, BINSTR* pBinEnvCert, BINSTR* pBinData,
                                    BINSTR* pBinSignAndEnvData)
{
    return Call("ZRTK_PKCS11_SignAndEnvData",
                Require(HasData(pBinKeyID), HasData(pBinEnvCert), HasData(pBinData)), m_pContext, pBinKeyID,
                pBinEnvCert, pBinData, pBinSignAndEnvData);
}

int CZRTKWrap::PKCS11VerifyAndDecData(BINSTR* pBinKeyID, BINSTR* pBinSignAndEnvData, BINSTR* pBinData,
                                      BINSTR* pBinSignerCert)
{
    return Call("ZRTK_PKCS11_VerifyAndDecData", Require(HasData(pBinKeyID), HasData(pBinSignAndEnvData)),
                m_pContext, pBinKeyID, pBinSignAndEnvData, pBinData, pBinSignerCert);
}

int CZRTKWrap::PKCS11VerifySignatureValue(char* pszLibPaths, BINSTR* pBinSignerCert,
                                          BINSTR* pBinSignatureValue)
{
    return Call("ZRTK_PKCS11_VerifySignatureValue",
                Require(NotNull(pszLibPaths), HasData(pBinSignerCert), HasData(pBinSignatureValue)),
                m_pContext, pszLibPaths, pBinSignerCert, pBinSignatureValue);
}

int CZRTKWrap::PKCS11CMPCertRequest(char* pszIP, int nPort, char* pszRefNum, char* pszAuthCode, char* pszIDN,
                                    char* pszCACert, BINSTR* pBinSignKeyID, BINSTR* pBinKmKeyID)
{
    return Call("ZRTK_PKCS11_CMP_CertRequest",
                Require(NotNull(pszIP), NotNull(pszRefNum), NotNull(pszAuthCode), NotNull(pszIDN),
                        NotNull(pszCACert)),
                m_pContext, pszIP, nPort, pszRefNum, pszAuthCode, pszIDN, pszCACert, pBinSignKeyID,
                pBinKmKeyID);
}

int CZRTKWrap::PKCS11CMPCertUpdate(char* pszIP, int nPort, bool bKeyUpdate, char* pszIDN, char* pszCACert,
                                   BINSTR* pBinSignKeyID, BINSTR* pBinKmKeyID)
{
    return Call("ZRTK_PKCS11_CMP_CertUpdate",
                Require(NotNull(pszIP), NotNull(pszIDN), NotNull(pszCACert), HasData(pBinSignKeyID),
                        HasData(pBinKmKeyID)),
                m_pContext, pszIP, nPort, bKeyUpdate, pszIDN, pszCACert, pBinSignKeyID, pBinKmKeyID);
}

int CZRTKWrap::PKCS11CMPCertUpdate2(char* pszIP, int nPort, bool bKeyUpdate, int nOption, char* pszIDN,
                                    char* pszCACert, BINSTR* pBinSignCert, BINSTR* pBinSignPriKey,
                                    BINSTR* pBinKmCert, BINSTR* pBinKmPriKey, BINSTR* pBinSignKeyID,
                                    BINSTR* pBinKmKeyID)
{
    return Call("ZRTK_PKCS11_CMP_CertUpdate2",
                Require(NotNull(pszIP), NotNull(pszIDN), NotNull(pszCACert), HasData(pBinSignCert),
                        HasData(pBinSignPriKey), HasData(pBinKmCert), HasData(pBinKmPriKey),
                        HasData(pBinSignKeyID), HasData(pBinKmKeyID)),
                m_pContext, pszIP, nPort, bKeyUpdate, nOption, pszIDN, pszCACert, pBinSignCert,
                pBinSignPriKey, pBinKmCert, pBinKmPriKey, pBinSignKeyID, pBinKmKeyID);
}

int CZRTKWrap::PKCS11CMPCertRevoke(char* pszIP, int nPort, int nReasonCode, BINSTR* pBinSignKeyID,
                                   BINSTR* pBinKmKeyID)
{
    return Call("ZRTK_PKCS11_CMP_CertRevoke",
                Require(NotNull(pszIP), HasData(pBinSignKeyID), HasData(pBinKmKeyID)), m_pContext, pszIP,
                nPort, nReasonCode, pBinSignKeyID, pBinKmKeyID);
}

int CZRTKWrap::PKCS11OpenSession(char* pszUserPIN)
{
    return Call("ZRTK_PKCS11_OpenSession", Require(NotNull(pszUserPIN)), m_pContext, pszUserPIN);
}
