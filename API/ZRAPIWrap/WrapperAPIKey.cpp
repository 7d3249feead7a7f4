#include "WrapperDispatch.h"

int CWrapperAPI::PriKeyEncrypt(int nSymAlg, char* pszPasswd, BINSTR* pBinPriKey, BINSTR* pBinEncPriKey)
{
    return Both(Require(HasBytes(pBinPriKey), NotNull(pszPasswd)), &CZRTKWrap::PriKeyEncrypt,
                &CGPKIWrap::PriKeyEncrypt, nSymAlg, pszPasswd, pBinPriKey, pBinEncPriKey);
}

int CWrapperAPI::PriKeyDecrypt(char* pszPasswd, BINSTR* pBinEncPriKey, BINSTR* pBinPriKey)
{
    return Both(Require(HasBytes(pBinEncPriKey), NotNull(pszPasswd)), &CZRTKWrap::PriKeyDecrypt,
                &CGPKIWrap::PriKeyDecrypt, pszPasswd, pBinEncPriKey, pBinPriKey);
}

int CWrapperAPI::PriKeyChangePasswd(char* pszOldPasswd, char* pszNewPasswd, BINSTR* pBinPriKey,
                                    BINSTR* pBinNewPriKey)
{
    return Both(Require(NotNull(pszOldPasswd), NotNull(pszNewPasswd), HasBytes(pBinPriKey)),
                &CZRTKWrap::PriKeyChangePassword, &CGPKIWrap::PriKeyChangePassword, pszOldPasswd,
                pszNewPasswd, pBinPriKey, pBinNewPriKey);
}

int CWrapperAPI::PriKeyCheckKeyPair(BINSTR* pBinCert, BINSTR* pBinPriKey)
{
    return Both(Require(HasBytes(pBinCert), HasBytes(pBinPriKey)), &CZRTKWrap::PriKeyCheckKeyPair,
                &CGPKIWrap::PriKeyCheckKeyPair, pBinCert, pBinPriKey);
}

int CWrapperAPI::VIDGetRandomFromPriKey(BINSTR* pBinPriKey, BINSTR* pBinRandom)
{
    return Both(Require(HasData(pBinPriKey)), &CZRTKWrap::VIDGetRandomFromPriKey,
                &CGPKIWrap::VIDGetRandomFromPriKey, pBinPriKey, pBinRandom);
}

int CWrapperAPI::VIDHashOfIDNR(BINSTR* pBinCert, BINSTR* pBinRandom, char* pszIDN, BINSTR* pBinHash)
{
    return OnlyZrtk(Require(HasData(pBinCert), HasData(pBinRandom), NonEmpty(pszIDN)),
                    &CZRTKWrap::VIDGetHashOFIDNR, pBinCert, pBinRandom, pszIDN, pBinHash);
}

int CWrapperAPI::VIDVerify(BINSTR* pBinCert, BINSTR* pBinRandom, char* pszIDN)
{
    return Both(Require(HasData(pBinCert), HasData(pBinRandom), NotNull(pszIDN)), &CZRTKWrap::VIDVerify,
                &CGPKIWrap::VIDVerify, pBinCert, pBinRandom, pszIDN);
}

int CWrapperAPI::VIDVerifyByIVS(char* pszConfFilePath, BINSTR* pBinCert, BINSTR* pBinRandom, char* pszIDN,
                                BINSTR* pBinMyCert)
{
    return Both(Require(NotNull(pszConfFilePath), HasData(pBinCert), HasData(pBinRandom), NotNull(pszIDN),
                        HasData(pBinMyCert)),
                &CZRTKWrap::VIDVerifyByIVS, &CGPKIWrap::VIDVerifyByIVS, pszConfFilePath, pBinCert, pBinRandom,
                pszIDN, pBinMyCert);
}
