#include "GPKIWrap.h"

int CGPKIWrap::CryptGenRandom(int nLen, BINSTR* pBinRandom)
{
    return Call("GPKI_CRYPT_GenRandom", Require(), m_pContext, nLen, pBinRandom);
}

int CGPKIWrap::CryptGenKeyAndIV(int nSymAlg)
{
    return Call("GPKI_CRYPT_GenKeyAndIV", Require(), m_pContext, nSymAlg);
}

int CGPKIWrap::CryptSetKeyAndIV(int nSymAlg, BINSTR* pBinKey, BINSTR* pBinIV)
{
    return Call("GPKI_CRYPT_SetKeyAndIV", Require(HasData(pBinKey), HasData(pBinIV)), m_pContext, nSymAlg,
                pBinKey, pBinIV);
}

int CGPKIWrap::CryptGetKeyAndIV(int* nSymAlg, BINSTR* pBinKey, BINSTR* pBinIV)
{
    return Call("GPKI_CRYPT_GetKeyAndIV", Require(), m_pContext, nSymAlg, pBinKey, pBinIV);
}

int CGPKIWrap::CryptClearKeyAndIV()
{
    return Call("GPKI_CRYPT_ClearKeyAndIV", Require(), m_pContext);
}

int CGPKIWrap::CryptEncrypt(BINSTR* pBinPlainText, BINSTR* pBinCipherText)
{
    return Call("GPKI_CRYPT_Encrypt", Require(HasData(pBinPlainText)), m_pContext, pBinPlainText,
                pBinCipherText);
}

int CGPKIWrap::CryptDecrypt(BINSTR* pBinCipherText, BINSTR* pBinPlainText)
{
    return Call("GPKI_CRYPT_Decrypt", Require(HasData(pBinCipherText)), m_pContext, pBinCipherText,
                pBinPlainText);
}

int CGPKIWrap::CryptEncryptFile(char* pszPlainTextFile, char* pszCipherTextFile)
{
    return Call("GPKI_CRYPT_Encrypt_File", Require(NotNull(pszPlainTextFile), NotNull(pszCipherTextFile)),
                m_pContext, pszPlainTextFile, pszCipherTextFile);
}

// The library takes the output path first here, unlike CryptEncryptFile.
int CGPKIWrap::CryptDecryptFile(char* pszCipherTextFile, char* pszPlainTextFile)
{
    return Call("GPKI_CRYPT_Decrypt_File", Require(NotNull(pszCipherTextFile), NotNull(pszPlainTextFile)),
                m_pContext, pszPlainTextFile, pszCipherTextFile);
}

int CGPKIWrap::CryptSign(BINSTR* pBinPubKey, BINSTR* pBinPriKey, int nHashAlg, BINSTR* pBinTBSData,
                         BINSTR* pSignautre)
{
    return Call("GPKI_CRYPT_Sign", Require(HasData(pBinPubKey), HasData(pBinPriKey), HasData(pBinTBSData)),
                m_pContext, pBinPubKey, pBinPriKey, nHashAlg, pBinTBSData, pSignautre);
}

int CGPKIWrap::CryptVerify(BINSTR* pBinPubKey, int nHashAlg, BINSTR* pBinData, BINSTR* pSignautre)
{
    return Call("GPKI_CRYPT_Verify", Require(HasData(pBinPubKey), HasData(pBinData), HasData(pSignautre)),
                m_pContext, pBinPubKey, nHashAlg, pBinData, pSignautre);
}

int CGPKIWrap::CryptVerifyFile(BINSTR* pBinPubKey, int nHashAlg, char* pszDataFilePath,
                               char* pszSignatureFilePath)
{
    return Call("GPKI_CRYPT_Verify_File",
                Require(HasData(pBinPubKey), NotNull(pszDataFilePath), NotNull(pszSignatureFilePath)),
                m_pContext, pBinPubKey, nHashAlg, pszDataFilePath, pszSignatureFilePath);
}

int CGPKIWrap::CryptAsymEncrypt(int nKeyType, BINSTR* pBinKey, BINSTR* pBinTBEData, BINSTR* pBinEncData)
{
    return Call("GPKI_CRYPT_AsymEncrypt", Require(HasData(pBinKey), HasData(pBinTBEData)), m_pContext,
                nKeyType, pBinKey, pBinTBEData, pBinEncData);
}

int CGPKIWrap::CryptAsymDecrypt(int nKeyType, BINSTR* pBinKey, BINSTR* pBinEncData, BINSTR* pBinTBEData)
{
    return Call("GPKI_CRYPT_AsymDecrypt", Require(HasData(pBinKey), HasData(pBinEncData)), m_pContext,
                nKeyType, pBinKey, pBinEncData, pBinTBEData);
}

int CGPKIWrap::CryptHash(int nHashAlg, BINSTR* pBinTBHData, BINSTR* pBinDigest)
{
    return Call("GPKI_CRYPT_Hash", Require(HasData(pBinTBHData)), m_pContext, nHashAlg, pBinTBHData,
                pBinDigest);
}

int CGPKIWrap::CryptGenMAC(int nMACAlg, char* pszPassword, BINSTR* pBinTBMData, BINSTR* pBinMAC)
{
    return Call("GPKI_CRYPT_GenMAC", Require(NotNull(pszPassword), HasData(pBinTBMData)), m_pContext, nMACAlg,
                pszPassword, pBinTBMData, pBinMAC);
}

int CGPKIWrap::CryptVerifyMAC(int nMACAlg, char* pszPassword, BINSTR* pBinTBMData, BINSTR* pBinMAC)
{
    return Call("GPKI_CRYPT_VerifyMAC", Require(NotNull(pszPassword), HasData(pBinTBMData), HasData(pBinMAC)),
                m_pContext, nMACAlg, pszPassword, pBinTBMData, pBinMAC);
}

int CGPKIWrap::Base64Encode(BINSTR* pBinData, BINSTR* pBinEncData)
{
    return Call("GPKI_BASE64_Encode", Require(HasData(pBinData)), m_pContext, pBinData, pBinEncData);
}

int CGPKIWrap::Base64Decode(BINSTR* pBinEncData, BINSTR* pBinData)
{
    return Call("GPKI_BASE64_Decode", Require(HasData(pBinEncData)), m_pContext, pBinEncData, pBinData);
}

int CGPKIWrap::CryptSignFile(BINSTR* pBinCert, BINSTR* pBinPriKey, int nHashAlg, char* pszDataFilePath,
                             char* pszSignatureFilePath)
{
    return Call("GPKI_CRYPT_Sign_File",
                Require(HasData(pBinCert), HasData(pBinPriKey), NotNull(pszDataFilePath),
                        NotNull(pszSignatureFilePath)),
                m_pContext, pBinCert, pBinPriKey, nHashAlg, pszDataFilePath, pszSignatureFilePath);
}
