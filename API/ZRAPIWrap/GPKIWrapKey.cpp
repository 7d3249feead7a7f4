#include "GPKIWrap.h"

int CGPKIWrap::PriKeyEncrypt(int nSymAlg, char* pszPasswd, BINSTR* pBinPriKey, BINSTR* pBinEncPriKey)
{
    return Call("GPKI_PRIKEY_Encrypt", Require(HasBytes(pBinPriKey), NotNull(pszPasswd)), m_pContext, nSymAlg,
                pszPasswd, pBinPriKey, pBinEncPriKey);
}

int CGPKIWrap::PriKeyDecrypt(char* pszPasswd, BINSTR* pBinEncPriKey, BINSTR* pBinPriKey)
{
    return Call("GPKI_PRIKEY_Decrypt", Require(HasBytes(pBinEncPriKey), NotNull(pszPasswd)), m_pContext,
                pszPasswd, pBinEncPriKey, pBinPriKey);
}

int CGPKIWrap::PriKeyChangePassword(char* pszOldPasswd, char* pszNewPasswd, BINSTR* pBinPriKey,
                                    BINSTR* pBinNewPriKey)
{
    return Call("GPKI_PRIKEY_ChangePasswd",
                Require(NotNull(pszOldPasswd), NotNull(pszNewPasswd), HasBytes(pBinPriKey)), m_pContext,
                pszOldPasswd, pszNewPasswd, pBinPriKey, pBinNewPriKey);
}

int CGPKIWrap::PriKeyCheckKeyPair(BINSTR* pBinCert, BINSTR* pBinPriKey)
{
    return Call("GPKI_PRIKEY_CheckKeyPair", Require(HasBytes(pBinCert), HasBytes(pBinPriKey)), m_pContext,
                pBinCert, pBinPriKey);
}

int CGPKIWrap::VIDGetRandomFromPriKey(BINSTR* pBinPriKey, BINSTR* pBinRandom)
{
    return Call("GPKI_VID_GetRandomFromPriKey", Require(HasData(pBinPriKey)), m_pContext, pBinPriKey,
                pBinRandom);
}

int CGPKIWrap::VIDVerify(BINSTR* pBinCert, BINSTR* pBinRandom, char* pszIDN)
{
    return Call("GPKI_VID_Verify", Require(HasData(pBinCert), HasData(pBinRandom), NotNull(pszIDN)),
                m_pContext, pBinCert, pBinRandom, pszIDN);
}

int CGPKIWrap::VIDVerifyByIVS(char* pszConfFilePath, BINSTR* pBinCert, BINSTR* pBinRandom, char* pszIDN,
                              BINSTR* pBinMyCert)
{
    return Call("GPKI_VID_VerifyByIVS",
                Require(NotNull(pszConfFilePath), HasData(pBinCert), HasData(pBinRandom), NotNull(pszIDN),
                        HasData(pBinMyCert)),
                m_pContext, pszConfFilePath, pBinCert, pBinRandom, pszIDN, pBinMyCert);
}
