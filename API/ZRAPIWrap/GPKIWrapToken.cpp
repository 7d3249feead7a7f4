#include "GPKIWrap.h"

int CGPKIWrap::HSMGetSlotList(unsigned long* pSlotList, unsigned long* pSlotCnt)
{
    return Call("GPKI_HSM_GetSlotList", Require(NotNull(pSlotList)), m_pContext, pSlotList, pSlotCnt);
}

int CGPKIWrap::HSMGetTokenInfo(unsigned long uSlotID, PKCS11_TOKEN_INFO* pTokenInfo)
{
    return Call("GPKI_HSM_GetTokenInfo", Require(), m_pContext, uSlotID, pTokenInfo);
}

int CGPKIWrap::HSMOpenSession(unsigned long ulSlotID, int nTokenName)
{
    return Call("GPKI_HSM_OpenSession", Require(), m_pContext, ulSlotID, nTokenName);
}

int CGPKIWrap::HSMLogin(char* pszUserPIN)
{
    return Call("GPKI_HSM_Login", Require(NotNull(pszUserPIN)), m_pContext, pszUserPIN);
}

int CGPKIWrap::HSMLogout()
{
    return Call("GPKI_HSM_Logout", Require(), m_pContext);
}

int CGPKIWrap::HSMCloseSession()
{
    return Call("GPKI_HSM_CloseSession", Require(), m_pContext);
}

int CGPKIWrap::HSMChangePIN(char* pszOldPIN, char* pszNewPIN)
{
    return Call("GPKI_HSM_ChangePIN", Require(NotNull(pszOldPIN), NotNull(pszNewPIN)), m_pContext, pszOldPIN,
                pszNewPIN);
}

int CGPKIWrap::HSMGetCertCnt(int* nCertCnt)
{
    return Call("GPKI_HSM_GetCertCnt", Require(), m_pContext, nCertCnt);
}

int CGPKIWrap::HSMGetCertInfo(int nIndex, int* pnCertType, BINSTR* pBinCertDN, BINSTR* pBinKeyID)
{
    return Call("GPKI_HSM_GetCertInfo", Require(), m_pContext, nIndex, pnCertType, pBinCertDN, pBinKeyID);
}

int CGPKIWrap::HSMReadCert(BINSTR* pBinKeyID, BINSTR* pBinCert)
{
    return Call("GPKI_HSM_ReadCert", Require(HasData(pBinKeyID)), m_pContext, pBinKeyID, pBinCert);
}

int CGPKIWrap::HSMReadRandomForVID(BINSTR* pBinKeyID, BINSTR* pBinRandom)
{
    return Call("GPKI_HSM_ReadRandomForVID", Require(HasData(pBinKeyID)), m_pContext, pBinKeyID, pBinRandom);
}

int CGPKIWrap::HSMWriteCertAndPriKey(BINSTR* pBinCert, BINSTR* pBinPriKey)
{
    return Call("GPKI_HSM_WriteCertAndPriKey", Require(HasData(pBinCert), HasData(pBinPriKey)), m_pContext,
                pBinCert, pBinPriKey);
}

int CGPKIWrap::HSMDeleteCertAndPriKey(BINSTR* pBinKeyID)
{
    return Call("GPKI_HSM_DeleteCertAndPriKey", Require(HasData(pBinKeyID)), m_pContext, pBinKeyID);
}

int CGPKIWrap::HSMSignData(BINSTR* pBinKeyID, BINSTR* pBinData, BINSTR* pBinSignedData)
{
    return Call("GPKI_HSM_SignData", Require(HasData(pBinKeyID), HasData(pBinData)), m_pContext, pBinKeyID,
                pBinData, pBinSignedData);
}
