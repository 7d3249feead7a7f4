#include "WrapperDispatch.h"

namespace {

/** The government PKI library opens and logs in in two steps. After a refused PIN the session stays open. */
int OpenAndLogin(CGPKIWrap& gpki, unsigned long ulSlotID, char* pszUserPIN, int nTokenName)
{
    const int nResult = gpki.HSMOpenSession(ulSlotID, nTokenName);
    if (nResult != QG_OK || pszUserPIN == nullptr)
        return nResult;
    return gpki.HSMLogin(pszUserPIN);
}

} // namespace

int CWrapperAPI::PKCS11GetSlotList(unsigned long* pSlotList, unsigned long* pSlotCnt)
{
    return Both(Require(NotNull(pSlotList)), &CZRTKWrap::PKCS11GetSlotList, &CGPKIWrap::HSMGetSlotList,
                pSlotList, pSlotCnt);
}

int CWrapperAPI::PKCS11GetTokenInfo(unsigned long uSlotID, PKCS11_TOKEN_INFO* pTokenInfo)
{
    return Both(Require(), &CZRTKWrap::PKCS11GetTokenInfo, &CGPKIWrap::HSMGetTokenInfo, uSlotID, pTokenInfo);
}

int CWrapperAPI::PKCS11InitToken(char* pszSoPIN, char* pszUserPIN)
{
    return OnlyZrtk(Require(NotNull(pszSoPIN), NotNull(pszUserPIN)), &CZRTKWrap::PKCS11InitToken, pszSoPIN,
                    pszUserPIN);
}

int CWrapperAPI::PKCS11InitTokenWithSlotID(unsigned long ulSlotID, char* pszSoPIN, char* pszUserPIN,
                                           char* pszLabel)
{
    return OnlyZrtk(Require(NotNull(pszSoPIN), NotNull(pszUserPIN), NotNull(pszLabel)),
                    &CZRTKWrap::PKCS11InitTokenWithSlotID, ulSlotID, pszSoPIN, pszUserPIN, pszLabel);
}

int CWrapperAPI::PKCS11OpenSessionWithSlotID(unsigned long ulSlotID, char* pszUserPIN, int nTokenName)
{
    return Dispatch(
        Require(),
        [=](CZRTKWrap& zrtk) { return zrtk.PKCS11OpenSessionWithSlotID(ulSlotID, pszUserPIN, nTokenName); },
        [=](CGPKIWrap& gpki) { return OpenAndLogin(gpki, ulSlotID, pszUserPIN, nTokenName); });
}

int CWrapperAPI::PKCS11OpenSessionWithTokenName(char* pszUserPIN, int nTokenName)
{
    return OnlyZrtk(Require(NotNull(pszUserPIN)), &CZRTKWrap::PKCS11OpenSessionWithTokenName, pszUserPIN,
                    nTokenName);
}

int CWrapperAPI::PKCS11Login(char* pszUserPIN)
{
    return Both(Require(NotNull(pszUserPIN)), &CZRTKWrap::PKCS11Login, &CGPKIWrap::HSMLogin, pszUserPIN);
}

int CWrapperAPI::PKCS11Logout()
{
    return Both(Require(), &CZRTKWrap::PKCS11Logout, &CGPKIWrap::HSMLogout);
}

int CWrapperAPI::PKCS11CloseSession()
{
    return Both(Require(), &CZRTKWrap::PKCS11CloseSession, &CGPKIWrap::HSMCloseSession);
}

int CWrapperAPI::PKCS11ChangePIN(char* pszOldPIN, char* pszNewPIN)
{
    return Both(Require(NotNull(pszOldPIN), NotNull(pszNewPIN)), &CZRTKWrap::PKCS11ChangePIN,
                &CGPKIWrap::HSMChangePIN, pszOldPIN, pszNewPIN);
}

int CWrapperAPI::PKCS11GetCertCnt(int* nCertCnt)
{
    return Both(Require(), &CZRTKWrap::PKCS11GetCertCnt, &CGPKIWrap::HSMGetCertCnt, nCertCnt);
}

int CWrapperAPI::PKCS11GetCertInfo(int nIndex, int* pnCertType, BINSTR* pBinCertDN, BINSTR* pBinKeyID)
{
    return Both(Require(), &CZRTKWrap::PKCS11GetCertInfo, &CGPKIWrap::HSMGetCertInfo, nIndex, pnCertType,
                pBinCertDN, pBinKeyID);
}

int CWrapperAPI::PKCS11ReadCert(BINSTR* pBinKeyID, BINSTR* pBinCert)
{
    return Both(Require(HasData(pBinKeyID)), &CZRTKWrap::PKCS11ReadCert, &CGPKIWrap::HSMReadCert, pBinKeyID,
                pBinCert);
}

int CWrapperAPI::PKCS11ReadRandomForVID(BINSTR* pBinKeyID, BINSTR* pBinRandom)
{
    return Both(Require(HasData(pBinKeyID)), &CZRTKWrap::PKCS11ReadRandomForVID,
                &CGPKIWrap::HSMReadRandomForVID, pBinKeyID, pBinRandom);
}

int CWrapperAPI::PKCS11WriteCertAndPriKey(BINSTR* pBinCert, BINSTR* pBinPriKey)
{
    return Both(Require(HasData(pBinCert), HasData(pBinPriKey)), &CZRTKWrap::PKCS11WriteCertAndPriKey,
                &CGPKIWrap::HSMWriteCertAndPriKey, pBinCert, pBinPriKey);
}

int CWrapperAPI::PKCS11DeleteCertAndPriKey(BINSTR* pBinKeyID)
{
    return Both(Require(HasData(pBinKeyID)), &CZRTKWrap::PKCS11DeleteCertAndPriKey,
                &CGPKIWrap::HSMDeleteCertAndPriKey, pBinKeyID);
}

int CWrapperAPI::PKCS11GenKeyPair(int nAlg, int nKeyType, BINSTR* pBinKeyID)
{
    return OnlyZrtk(Require(), &CZRTKWrap::PKCS11GenKeyPair, nAlg, nKeyType, pBinKeyID);
}

int CWrapperAPI::PKCS11Sign(BINSTR* pBinKeyID, BINSTR* pBinData, BINSTR* pBinSignature)
{
    return OnlyZrtk(Require(HasData(pBinKeyID), HasData(pBinData)), &CZRTKWrap::PKCS11Sign, pBinKeyID,
                    pBinData, pBinSignature);
}

int CWrapperAPI::PKCS11Verify(BINSTR* pBinKeyID, BINSTR* pBinData, BINSTR* pBinSignature)
{
    return OnlyZrtk(Require(HasData(pBinKeyID), HasData(pBinData), HasData(pBinSignature)),
                    &CZRTKWrap::PKCS11Verify, pBinKeyID, pBinData, pBinSignature);
}

int CWrapperAPI::PKCS11Encrypt(BINSTR* pBinKeyID, BINSTR* pBinPlainText, BINSTR* pBinCipherText)
{
    return OnlyZrtk(Require(HasData(pBinKeyID), HasData(pBinPlainText)), &CZRTKWrap::PKCS11Encrypt, pBinKeyID,
                    pBinPlainText, pBinCipherText);
}

int CWrapperAPI::PKCS11Decrypt(BINSTR* pBinKeyID, BINSTR* pBinCipherText, BINSTR* pBinPlainText)
{
    return OnlyZrtk(Require(HasData(pBinKeyID), HasData(pBinCipherText)), &CZRTKWrap::PKCS11Decrypt,
                    pBinKeyID, pBinCipherText, pBinPlainText);
}

int CWrapperAPI::PKCS11SignData(BINSTR* pBinKeyID, BINSTR* pBinData, BINSTR* pBinSignedData)
{
    return Both(Require(HasData(pBinKeyID), HasData(pBinData)), &CZRTKWrap::PKCS11SignData,
                &CGPKIWrap::HSMSignData, pBinKeyID, pBinData, pBinSignedData);
}

int CWrapperAPI::PKCS11SignDataNoContent(BINSTR* pBinKeyID, BINSTR* pBinData, BINSTR* pBinSignedData)
{
    return OnlyZrtk(Require(HasData(pBinKeyID), HasData(pBinData)), &CZRTKWrap::PKCS11SignDataNoContent,
                    pBinKeyID, pBinData, pBinSignedData);
}

int CWrapperAPI::PKCS11DecryptData(BINSTR* pBinKeyID, BINSTR* pBinEnvelopData, BINSTR* pBinPlainText)
{
    return OnlyZrtk(Require(HasData(pBinKeyID), HasData(pBinEnvelopData)), &CZRTKWrap::PKCS11DecryptData,
                    pBinKeyID, pBinEnvelopData, pBinPlainText);
}

int CWrapperAPI::PKCS11SignAndEnvData(BINSTR* pBinKeyID, BINSTR* pBinEnvCert, BINSTR* pBinData,
                                      BINSTR* pBinSignAndEnvData)
{
    return OnlyZrtk(Require(HasData(pBinKeyID), HasData(pBinEnvCert), HasData(pBinData)),
                    &CZRTKWrap::PKCS11SignAndEnvData, pBinKeyID, pBinEnvCert, pBinData, pBinSignAndEnvData);
}

int CWrapperAPI::PKCS11VerifyAndDecData(BINSTR* pBinKeyID, BINSTR* pBinSignAndEnvData, BINSTR* pBinData,
                                        BINSTR* pBinSignerCert)
{
    return OnlyZrtk(Require(HasData(pBinKeyID), HasData(pBinSignAndEnvData)),
                    &CZRTKWrap::PKCS11VerifyAndDecData, pBinKeyID, pBinSignAndEnvData, pBinData,
                    pBinSignerCert);
}

int CWrapperAPI::PKCS11VerifySignatureValue(char* pszLibPaths, BINSTR* pBinSignerCert,
                                            BINSTR* pBinSignatureValue)
{
    return OnlyZrtk(Require(NotNull(pszLibPaths), HasData(pBinSignerCert), HasData(pBinSignatureValue)),
                    &CZRTKWrap::PKCS11VerifySignatureValue, pszLibPaths, pBinSignerCert, pBinSignatureValue);
}

int CWrapperAPI::PKCS11CMPCertRequest(char* pszIP, int nPort, char* pszRefNum, char* pszAuthCode,
                                      char* pszIDN, char* pszCACert, BINSTR* pBinSignKeyID,
                                      BINSTR* pBinKmKeyID)
{
    return OnlyZrtk(Require(NotNull(pszIP), NotNull(pszRefNum), NotNull(pszAuthCode), NotNull(pszIDN),
                            NotNull(pszCACert)),
                    &CZRTKWrap::PKCS11CMPCertRequest, pszIP, nPort, pszRefNum, pszAuthCode, pszIDN, pszCACert,
                    pBinSignKeyID, pBinKmKeyID);
}

int CWrapperAPI::PKCS11CMPCertUpdate(char* pszIP, int nPort, bool bKeyUpdate, char* pszIDN, char* pszCACert,
                                     BINSTR* pBinSignKeyID, BINSTR* pBinKmKeyID)
{
    return OnlyZrtk(Require(NotNull(pszIP), NotNull(pszIDN), NotNull(pszCACert), HasData(pBinSignKeyID),
                            HasData(pBinKmKeyID)),
                    &CZRTKWrap::PKCS11CMPCertUpdate, pszIP, nPort, bKeyUpdate, pszIDN, pszCACert,
                    pBinSignKeyID, pBinKmKeyID);
}

int CWrapperAPI::PKCS11CMPCertUpdate2(char* pszIP, int nPort, bool bKeyUpdate, int nOption, char* pszIDN,
                                      char* pszCACert, BINSTR* pBinSignCert, BINSTR* pBinSignPriKey,
                                      BINSTR* pBinKmCert, BINSTR* pBinKmPriKey, BINSTR* pBinSignKeyID,
                                      BINSTR* pBinKmKeyID)
{
    return OnlyZrtk(Require(NotNull(pszIP), NotNull(pszIDN), NotNull(pszCACert), HasData(pBinSignCert),
                            HasData(pBinSignPriKey)),
                    &CZRTKWrap::PKCS11CMPCertUpdate2, pszIP, nPort, bKeyUpdate, nOption, pszIDN, pszCACert,
                    pBinSignCert, pBinSignPriKey, pBinKmCert, pBinKmPriKey, pBinSignKeyID, pBinKmKeyID);
}

int CWrapperAPI::PKCS11CMPCertRevoke(char* pszIP, int nPort, int nReasonCode, BINSTR* pBinSignKeyID,
                                     BINSTR* pBinKmKeyID)
{
    return OnlyZrtk(Require(NotNull(pszIP)), &CZRTKWrap::PKCS11CMPCertRevoke, pszIP, nPort, nReasonCode,
                    pBinSignKeyID, pBinKmKeyID);
}
