#include "quillgate/toolkit_crypto.h"

#include "ZRAPIWrap.h"

int CRYPTSetRSAVersion(void* pContext, int nRSAVersion)
{
    return Forward(pContext, &CWrapperAPI::CRYPTSetRSAVersion, nRSAVersion);
}

int CRYPTSetPaddingType(void* pContext, int nPaddingType)
{
    return Forward(pContext, &CWrapperAPI::CRYPTSetPaddingType, nPaddingType);
}

int CRYPTSetEnvChangeIV(void* pContext)
{
    return Forward(pContext, &CWrapperAPI::CRYPTSetEnvChangeIV);
}

int CRYPTGenRandom(void* pContext, int nLen, BINSTR* pBinRandom)
{
    return Forward(pContext, &CWrapperAPI::CRYPTGenRandom, nLen, pBinRandom);
}

int CRYPTGenKeyPair(void* pContext, int nAlg, BINSTR* pBinPriKey, BINSTR* pPubKey)
{
    return Forward(pContext, &CWrapperAPI::CRYPTGenKeyPair, nAlg, pBinPriKey, pPubKey);
}

int CRYPTGenKeyAndIV(void* pContext, int nSymAlg)
{
    return Forward(pContext, &CWrapperAPI::CRYPTGenKeyAndIV, nSymAlg);
}

int CRYPTSetKeyAndIV(void* pContext, int nSymAlg, BINSTR* pBinKey, BINSTR* pBinIV)
{
    return Forward(pContext, &CWrapperAPI::CRYPTSetKeyAndIV, nSymAlg, pBinKey, pBinIV);
}

int CRYPTGetKeyAndIV(void* pContext, int* nSymAlg, BINSTR* pBinKey, BINSTR* pBinIV)
{
    return Forward(pContext, &CWrapperAPI::CRYPTGetKeyAndIV, nSymAlg, pBinKey, pBinIV);
}

int CRYPTClearKeyAndIV(void* pContext)
{
    return Forward(pContext, &CWrapperAPI::CRYPTClearKeyAndIV);
}

int CRYPTEncrypt(void* pContext, BINSTR* pBinPlainText, BINSTR* pBinCipherText)
{
    return Forward(pContext, &CWrapperAPI::CRYPTEncrypt, pBinPlainText, pBinCipherText);
}

int CRYPTDecrypt(void* pContext, BINSTR* pBinCipherText, BINSTR* pBinPlainText)
{
    return Forward(pContext, &CWrapperAPI::CRYPTDecrypt, pBinCipherText, pBinPlainText);
}

int CRYPTEncryptFile(void* pContext, char* pszPlainTextFile, char* pszCipherTextFile)
{
    return Forward(pContext, &CWrapperAPI::CRYPTEncryptFile, pszPlainTextFile, pszCipherTextFile);
}

int CRYPTDecryptFile(void* pContext, char* pszCipherTextFile, char* pszPlainTextFile)
{
    return Forward(pContext, &CWrapperAPI::CRYPTDecryptFile, pszCipherTextFile, pszPlainTextFile);
}

int CRYPTSign(void* pContext, BINSTR* pBinPubKey, BINSTR* pBinPriKey, int nHashAlg, BINSTR* pBinTBSData,
              BINSTR* pSignautre)
{
    return Forward(pContext, &CWrapperAPI::CRYPTSign, pBinPubKey, pBinPriKey, nHashAlg, pBinTBSData,
                   pSignautre);
}

int CRYPTVerify(void* pContext, BINSTR* pBinPubKey, int nHashAlg, BINSTR* pBinData, BINSTR* pSignautre)
{
    return Forward(pContext, &CWrapperAPI::CRYPTVerify, pBinPubKey, nHashAlg, pBinData, pSignautre);
}

int CRYPTVerifyFile(void* pContext, BINSTR* pBinPubKey, int nHashAlg, char* pszDataFilePath,
                    char* pszSignatureFilePath)
{
    return Forward(pContext, &CWrapperAPI::CRYPTVerifyFile, pBinPubKey, nHashAlg, pszDataFilePath,
                   pszSignatureFilePath);
}

int CRYPTAsymEncrypt(void* pContext, int nKeyType, BINSTR* pBinKey, BINSTR* pBinTBEData, BINSTR* pBinEncData)
{
    return Forward(pContext, &CWrapperAPI::CRYPTAsymEncrypt, nKeyType, pBinKey, pBinTBEData, pBinEncData);
}

int CRYPTAsymDecrypt(void* pContext, int nKeyType, BINSTR* pBinKey, BINSTR* pBinEncData, BINSTR* pBinTBEData)
{
    return Forward(pContext, &CWrapperAPI::CRYPTAsymDecrypt, nKeyType, pBinKey, pBinEncData, pBinTBEData);
}

int CRYPTHash(void* pContext, int nHashAlg, BINSTR* pBinTBHData, BINSTR* pBinDigest)
{
    return Forward(pContext, &CWrapperAPI::CRYPTHash, nHashAlg, pBinTBHData, pBinDigest);
}

int CRYPTHashFile(void* pContext, int nHashAlg, char* pszTBHDataFilePath, BINSTR* pBinDigest)
{
    return Forward(pContext, &CWrapperAPI::CRYPTHashFile, nHashAlg, pszTBHDataFilePath, pBinDigest);
}

int CRYPTGenMAC(void* pContext, int nMACAlg, char* pszPassword, BINSTR* pBinTBMData, BINSTR* pBinMAC)
{
    return Forward(pContext, &CWrapperAPI::CRYPTGenMAC, nMACAlg, pszPassword, pBinTBMData, pBinMAC);
}

int CRYPTGenMAC2(void* pContext, int nMACAlg, BINSTR* pBinPassword, BINSTR* pBinTBMData, BINSTR* pBinMAC)
{
    return Forward(pContext, &CWrapperAPI::CRYPTGenMAC2, nMACAlg, pBinPassword, pBinTBMData, pBinMAC);
}

int CRYPTVerifyMAC(void* pContext, int nMACAlg, char* pszPassword, BINSTR* pBinTBMData, BINSTR* pBinMAC)
{
    return Forward(pContext, &CWrapperAPI::CRYPTVerifyMAC, nMACAlg, pszPassword, pBinTBMData, pBinMAC);
}

int CRYPTGenSharedKey(void* pContext, int nKeyType, BINSTR* pBinPriKeyInfo, BINSTR* pBinPubKey,
                      BINSTR* pBinSharedKey)
{
    return Forward(pContext, &CWrapperAPI::CRYPTGenSharedKey, nKeyType, pBinPriKeyInfo, pBinPubKey,
                   pBinSharedKey);
}

int Base64Encode(void* pContext, BINSTR* pBinData, BINSTR* pBinEncData)
{
    return Forward(pContext, &CWrapperAPI::Base64Encode, pBinData, pBinEncData);
}

int Base64Decode(void* pContext, BINSTR* pBinEncData, BINSTR* pBinData)
{
    return Forward(pContext, &CWrapperAPI::Base64Decode, pBinEncData, pBinData);
}

int PEMEncode(void* pContext, int nType, BINSTR* pBinData, BINSTR* pBinEncData)
{
    return Forward(pContext, &CWrapperAPI::PEMEncode, nType, pBinData, pBinEncData);
}

int PEMDecode(void* pContext, BINSTR* pBinEncData, BINSTR* pBinData)
{
    return Forward(pContext, &CWrapperAPI::PEMDecode, pBinEncData, pBinData);
}
