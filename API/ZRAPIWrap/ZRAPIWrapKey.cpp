#include "quillgate/toolkit_key.h"

#include "ZRAPIWrap.h"

int PriKeyEncrypt(void* pContext, int nSymAlg, char* pszPasswd, BINSTR* pBinPriKey, BINSTR* pBinEncPriKey)
{
    return Forward(pContext, &CWrapperAPI::PriKeyEncrypt, nSymAlg, pszPasswd, pBinPriKey, pBinEncPriKey);
}

int PriKeyDecrypt(void* pContext, char* pszPasswd, BINSTR* pBinEncPriKey, BINSTR* pBinPriKey)
{
    return Forward(pContext, &CWrapperAPI::PriKeyDecrypt, pszPasswd, pBinEncPriKey, pBinPriKey);
}

int PriKeyChangePasswd(void* pContext, char* pszOldPasswd, char* pszNewPasswd, BINSTR* pBinPriKey,
                       BINSTR* pBinNewPriKey)
{
    return Forward(pContext, &CWrapperAPI::PriKeyChangePasswd, pszOldPasswd, pszNewPasswd, pBinPriKey,
                   pBinNewPriKey);
}

int PriKeyCheckKeyPair(void* pContext, BINSTR* pBinCert, BINSTR* pBinPriKey)
{
    return Forward(pContext, &CWrapperAPI::PriKeyCheckKeyPair, pBinCert, pBinPriKey);
}

int VIDGetRandomFromPriKey(void* pContext, BINSTR* pBinPriKey, BINSTR* pBinRandom)
{
    return Forward(pContext, &CWrapperAPI::VIDGetRandomFromPriKey, pBinPriKey, pBinRandom);
}

int VIDHashOfIDNR(void* pContext, BINSTR* pBinCert, BINSTR* pBinRandom, char* pszIDN, BINSTR* pBinHash)
{
    return Forward(pContext, &CWrapperAPI::VIDHashOfIDNR, pBinCert, pBinRandom, pszIDN, pBinHash);
}

int VIDVerify(void* pContext, BINSTR* pBinCert, BINSTR* pBinRandom, char* pszIDN)
{
    return Forward(pContext, &CWrapperAPI::VIDVerify, pBinCert, pBinRandom, pszIDN);
}

int VIDVerifyByIVS(void* pContext, char* pszConfFilePath, BINSTR* pBinCert, BINSTR* pBinRandom, char* pszIDN,
                   BINSTR* pBinMyCert)
{
    return Forward(pContext, &CWrapperAPI::VIDVerifyByIVS, pszConfFilePath, pBinCert, pBinRandom, pszIDN,
                   pBinMyCert);
}
