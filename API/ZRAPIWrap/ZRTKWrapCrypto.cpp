#include "ZRTKWrap.h"

int CZRTKWrap::CRYPTSetRSAVersion(int nRSAVersion)
{
    return Call("ZRTK_CRYPT_SetRSAVersion", Require(), m_pContext, nRSAVersion);
}

int CZRTKWrap::CRYPTSetPaddingType(int nPaddingType)
{
    return Call("ZRTK_CRYPT_SetPaddingType", Require(), m_pContext, nPaddingType);
}

int CZRTKWrap::CRYPTSetEnvChangeIV()
{
    return Call("ZRTK_CRYPT_SetEnvChangeIV", Require(), m_pContext);
}

int CZRTKWrap::CRYPTGenRandom(int nLen, BINSTR* pBinRandom)
{
    return Call("ZRTK_CRYPT_GenRandom", Require(NotZero(nLen)), m_pContext, nLen, pBinRandom);
}

int CZRTKWrap::CRYPTGenKeyPair(int nAlg, BINSTR* pBinPriKey, BINSTR* pPubKey)
{
    return Call("ZRTK_CRYPT_GenKeyPair", Require(), m_pContext, nAlg, pBinPriKey, pPubKey);
}

int CZRTKWrap::CRYPTGenKeyAndIV(int nSymAlg)
{
    return Call("ZRTK_CRYPT_GenKeyAndIV", Require(), m_pContext, nSymAlg);
}

int CZRTKWrap::CRYPTSetKeyAndIV(int nSymAlg, BINSTR* pBinKey, BINSTR* pBinIV)
{
    return Call("ZRTK_CRYPT_SetKeyAndIV", Require(HasData(pBinKey), HasData(pBinIV)), m_pContext, nSymAlg,
                pBinKey, pBinIV);
}

int CZRTKWrap::CRYPTGetKeyAndIV(int* nSymAlg, BINSTR* pBinKey, BINSTR* pBinIV)
{
    return Call("ZRTK_CRYPT_GetKeyAndIV", Require(), m_pContext, nSymAlg, pBinKey, pBinIV);
}

int CZRTKWrap::CRYPTClearKeyAndIV()
{
    return Call("ZRTK_CRYPT_ClearKeyAndIV", Require(), m_pContext);
}

int CZRTKWrap::CRYPTEncrypt(BINSTR* pBinPlainText, BINSTR* pBinCipherText)
{
    return Call("ZRTK_CRYPT_Encrypt", Require(HasData(pBinPlainText)), m_pContext, pBinPlainText,
                pBinCipherText);
}

int CZRTKWrap::CRYPTDecrypt(BINSTR* pBinCipherText, BINSTR* pBinPlainText)
{
    return Call("ZRTK_CRYPT_Decrypt", Require(HasData(pBinCipherText)), m_pContext, pBinCipherText,
                pBinPlainText);
}

int CZRTKWrap::CRYPTEncryptFile(char* pszPlainTextFile, char* pszCipherTextFile)
{
    return Call("ZRTK_CRYPT_EncryptFile", Require(NotNull(pszPlainTextFile), NotNull(pszCipherTextFile)),
                m_pContext, pszPlainTextFile, pszCipherTextFile);
}

int CZRTKWrap::CRYPTDecryptFile(char* pszCipherTextFile, char* pszPlainTextFile)
{
    return Call("ZRTK_CRYPT_DecryptFile", Require(NotNull(pszCipherTextFile), NotNull(pszPlainTextFile)),
                m_pContext, pszCipherTextFile, pszPlainTextFile);
}

int CZRTKWrap::CRYPTSign(BINSTR* pBinPubKey, BINSTR* pBinPriKey, int nHashAlg, BINSTR* pBinTBSData,
                         BINSTR* pSignautre)
{
    return Call("ZRTK_CRYPT_Sign", Require(HasData(pBinPubKey), HasData(pBinPriKey), HasData(pBinTBSData)),
                m_pContext, pBinPubKey, pBinPriKey, nHashAlg, pBinTBSData, pSignautre);
}

int CZRTKWrap::CRYPTVerify(BINSTR* pBinPubKey, int nHashAlg, BINSTR* pBinData, BINSTR* pSignautre)
{
    return Call("ZRTK_CRYPT_Verify", Require(HasData(pBinPubKey), HasData(pBinData), HasData(pSignautre)),
                m_pContext, pBinPubKey, nHashAlg, pBinData, pSignautre);
}

int CZRTKWrap::CRYPTVerifyFile(BINSTR* pBinPubKey, int nHashAlg, char* pszDataFilePath,
                               char* pszSignatureFilePath)
{
    return Call("ZRTK_CRYPT_VerifyFile",
                Require(HasData(pBinPubKey), NotNull(pszDataFilePath), NotNull(pszSignatureFilePath)),
                m_pContext, pBinPubKey, nHashAlg, pszDataFilePath, pszSignatureFilePath);
}

int CZRTKWrap::CRYPTAsymEncrypt(int nKeyType, BINSTR* pBinKey, BINSTR* pBinTBEData, BINSTR* pBinEncData)
{
    return Call("ZRTK_CRYPT_AsymEncrypt", Require(HasData(pBinKey), HasData(pBinTBEData)), m_pContext,
                nKeyType, pBinKey, pBinTBEData, pBinEncData);
}

int CZRTKWrap::CRYPTAsymDecrypt(int nKeyType, BINSTR* pBinKey, BINSTR* pBinEncData, BINSTR* pBinTBEData)
{
    return Call("ZRTK_CRYPT_AsymDecrypt", Require(HasData(pBinKey), HasData(pBinEncData)), m_pContext,
                nKeyType, pBinKey, pBinEncData, pBinTBEData);
}

int CZRTKWrap::CRYPTHash(int nHashAlg, BINSTR* pBinTBHData, BINSTR* pBinDigest)
{
    return Call("ZRTK_CRYPT_Hash", Require(HasData(pBinTBHData)), m_pContext, nHashAlg, pBinTBHData,
                pBinDigest);
}

int CZRTKWrap::CRYPTHashFile(int nHashAlg, char* pszTBHDataFilePath, BINSTR* pBinDigest)
{
    return Call("ZRTK_CRYPT_HashFile", Require(NotNull(pszTBHDataFilePath)), m_pContext, nHashAlg,
                pszTBHDataFilePath, pBinDigest);
}

int CZRTKWrap::CRYPTGenMAC(int nMACAlg, char* pszPassword, BINSTR* pBinTBMData, BINSTR* pBinMAC)
{
    return Call("ZRTK_CRYPT_GenMAC", Require(NotNull(pszPassword), HasData(pBinTBMData)), m_pContext, nMACAlg,
                pszPassword, pBinTBMData, pBinMAC);
}

int CZRTKWrap::CRYPTGenMAC2(int nMACAlg, BINSTR* pBinPassword, BINSTR* pBinTBMData, BINSTR* pBinMAC)
{
    return Call("ZRTK_CRYPT_GenMAC2", Require(HasData(pBinPassword), HasData(pBinTBMData)), m_pContext,
                nMACAlg, pBinPassword, pBinTBMData, pBinMAC);
}

int CZRTKWrap::CRYPTVerifyMAC(int nMACAlg, char* pszPassword, BINSTR* pBinTBMData, BINSTR* pBinMAC)
{
    return Call("ZRTK_CRYPT_VerifyMAC", Require(NotNull(pszPassword), HasData(pBinTBMData), HasData(pBinMAC)),
                m_pContext, nMACAlg, pszPassword, pBinTBMData, pBinMAC);
}

int CZRTKWrap::CRYPTGenSharedKey(int nKeyType, BINSTR* pBinPriKeyInfo, BINSTR* pBinPubKey,
                                 BINSTR* pBinSharedKey)
{
    return Call("ZRTK_CRYPT_GenSharedKey", Require(HasData(pBinPriKeyInfo), HasData(pBinPubKey)), m_pContext,
                nKeyType, pBinPriKeyInfo, pBinPubKey, pBinSharedKey);
}

int CZRTKWrap::Base64Encode(BINSTR* pBinData, BINSTR* pBinEncData)
{
    return Call("ZRTK_BASE64_Encode", Require(HasData(pBinData)), m_pContext, pBinData, pBinEncData);
}

int CZRTKWrap::Base64Decode(BINSTR* pBinEncData, BINSTR* pBinData)
{
    return Call("ZRTK_BASE64_Decode", Require(HasData(pBinEncData)), m_pContext, pBinEncData, pBinData);
}

int CZRTKWrap::PEMEncode(int nType, BINSTR* pBinData, BINSTR* pBinEncData)
{
    return Call("ZRTK_PEM_Encode", Require(HasData(pBinData)), m_pContext, nType, pBinData, pBinEncData);
}

int CZRTKWrap::PEMDecode(BINSTR* pBinEncData, BINSTR* pBinData)
{
    return Call("ZRTK_PEM_Decode", Require(HasData(pBinEncData)), m_pContext, pBinEncData, pBinData);
}

int CZRTKWrap::CRYPTSignFile(BINSTR* pBinPubKey, BINSTR* pBinPriKey, int nHashAlg, char* pszDataFilePath,
                             char* pszSignatureFilePath)
{
    return Call("ZRTK_CRYPT_SignFile",
                Require(HasData(pBinPubKey), HasData(pBinPriKey), NotNull(pszDataFilePath),
                        NotNull(pszSignatureFilePath)),
                m_pContext, pBinPubKey, pBinPriKey, nHashAlg, pszDataFilePath, pszSignatureFilePath);
}
