#include "ZRTKWrap.h"

int CZRTKWrap::PriKeyEncrypt(int nSymAlg, char* pszPasswd, BINSTR* pBinPriKey, BINSTR* pBinEncPriKey)
{
    return Call("ZRTK_PRIKEY_Encrypt", Require(HasBytes(pBinPriKey), NotNull(pszPasswd)), m_pContext, nSymAlg,
                pszPasswd, pBinPriKey, pBinEncPriKey);
}

int CZRTKWrap::PriKeyDecrypt(char* pszPasswd, BINSTR* pBinEncPriKey, BINSTR* pBinPriKey)
{
    return Call("ZRTK_PRIKEY_Decrypt", Require(HasBytes(pBinEncPriKey), NotNull(pszPasswd)), m_pContext,
                pszPasswd, pBinEncPriKey, pBinPriKey);
}

int CZRTKWrap::PriKeyChangePassword(char* pszOldPasswd, char* pszNewPasswd, BINSTR* pBinPriKey,
                                    BINSTR* pBinNewPriKey)
{
    return Call("ZRTK_PRIKEY_ChangePasswd",
                Require(NotNull(pszOldPasswd), NotNull(pszNewPasswd), HasBytes(pBinPriKey)), m_pContext,
                pszOldPasswd, pszNewPasswd, pBinPriKey, pBinNewPriKey);
}

int CZRTKWrap::PriKeyCheckKeyPair(BINSTR* pBinCert, BINSTR* pBinPriKey)
{
    return Call("ZRTK_PRIKEY_CheckKeyPair", Require(HasBytes(pBinCert), HasBytes(pBinPriKey)), m_pContext,
                pBinCert, pBinPriKey);
}

int CZRTKWrap::VIDGetRandomFromPriKey(BINSTR* pBinPriKey, BINSTR* pBinRandom)
{
    return Call("ZRTK_VID_GetRandomFromPriKey", Require(HasData(pBinPriKey)), m_pContext, pBinPriKey,
                pBinRandom);
}

int CZRTKWrap::VIDGetHashOFIDNR(BINSTR* pBinCert, BINSTR* pBinRandom, char* pszIDN, BINSTR* pBinHash)
{
    return Call("ZRTK_VID_HashOfIDN_R", Require(HasData(pBinCert), HasData(pBinRandom), NonEmpty(pszIDN)),
                m_pContext, pBinCert, pBinRandom, pszIDN, pBinHash);
}

int CZRTKWrap::VIDVerify(BINSTR* pBinCert, BINSTR* pBinRandom, char* pszIDN)
{
    return Call("ZRTK_VID_Verify", Require(HasData(pBinCert), HasData(pBinRandom), NotNull(pszIDN)),
                m_pContext, pBinCert, pBinRandom, pszIDN);
}

int CZRTKWrap::VIDVerifyByIVS(char* pszConfFilePath, BINSTR* pBinCert, BINSTR* pBinRandom, char* pszIDN,
                              BINSTR* pBinMyCert)
{
    return Call("ZRTK_VID_VerifyByIVS",
                Require(NotNull(pszConfFilePath), HasData(pBinCert), HasData(pBinRandom), NotNull(pszIDN),
                        HasData(pBinMyCert)),
                m_pContext, pszConfFilePath, pBinCert, pBinRandom, pszIDN, pBinMyCert);
}
