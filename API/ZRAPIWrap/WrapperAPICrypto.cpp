#include "WrapperDispatch.h"

int CWrapperAPI::CRYPTSetRSAVersion(int nRSAVersion)
{
    return OnlyZrtk(Require(), &CZRTKWrap::CRYPTSetRSAVersion, nRSAVersion);
}

int CWrapperAPI::CRYPTSetPaddingType(int nPaddingType)
{
    return OnlyZrtk(Require(), &CZRTKWrap::CRYPTSetPaddingType, nPaddingType);
}

int CWrapperAPI::CRYPTSetEnvChangeIV()
{
    return OnlyZrtk(Require(), &CZRTKWrap::CRYPTSetEnvChangeIV);
}

int CWrapperAPI::CRYPTGenRandom(int nLen, BINSTR* pBinRandom)
{
    return Both(Require(), &CZRTKWrap::CRYPTGenRandom, &CGPKIWrap::CryptGenRandom, nLen, pBinRandom);
}

int CWrapperAPI::CRYPTGenKeyPair(int nAlg, BINSTR* pBinPriKey, BINSTR* pPubKey)
{
    return OnlyZrtk(Require(), &CZRTKWrap::CRYPTGenKeyPair, nAlg, pBinPriKey, pPubKey);
}

int CWrapperAPI::CRYPTGenKeyAndIV(int nSymAlg)
{
    return Both(Require(), &CZRTKWrap::CRYPTGenKeyAndIV, &CGPKIWrap::CryptGenKeyAndIV, nSymAlg);
}

int CWrapperAPI::CRYPTSetKeyAndIV(int nSymAlg, BINSTR* pBinKey, BINSTR* pBinIV)
{
    return Both(Require(HasData(pBinKey), HasData(pBinIV)), &CZRTKWrap::CRYPTSetKeyAndIV,
                &CGPKIWrap::CryptSetKeyAndIV, nSymAlg, pBinKey, pBinIV);
}

int CWrapperAPI::CRYPTGetKeyAndIV(int* nSymAlg, BINSTR* pBinKey, BINSTR* pBinIV)
{
    return Both(Require(), &CZRTKWrap::CRYPTGetKeyAndIV, &CGPKIWrap::CryptGetKeyAndIV, nSymAlg, pBinKey,
                pBinIV);
}

int CWrapperAPI::CRYPTClearKeyAndIV()
{
    return Both(Require(), &CZRTKWrap::CRYPTClearKeyAndIV, &CGPKIWrap::CryptClearKeyAndIV);
}

int CWrapperAPI::CRYPTEncrypt(BINSTR* pBinPlainText, BINSTR* pBinCipherText)
{
    return Both(Require(HasData(pBinPlainText)), &CZRTKWrap::CRYPTEncrypt, &CGPKIWrap::CryptEncrypt,
                pBinPlainText, pBinCipherText);
}

int CWrapperAPI::CRYPTDecrypt(BINSTR* pBinCipherText, BINSTR* pBinPlainText)
{
    return Both(Require(HasData(pBinCipherText)), &CZRTKWrap::CRYPTDecrypt, &CGPKIWrap::CryptDecrypt,
                pBinCipherText, pBinPlainText);
}

int CWrapperAPI::CRYPTEncryptFile(char* pszPlainTextFile, char* pszCipherTextFile)
{
    return Both(Require(NotNull(pszPlainTextFile), NotNull(pszCipherTextFile)), &CZRTKWrap::CRYPTEncryptFile,
                &CGPKIWrap::CryptEncryptFile, pszPlainTextFile, pszCipherTextFile);
}

int CWrapperAPI::CRYPTDecryptFile(char* pszCipherTextFile, char* pszPlainTextFile)
{
    return Both(Require(NotNull(pszCipherTextFile), NotNull(pszPlainTextFile)), &CZRTKWrap::CRYPTDecryptFile,
                &CGPKIWrap::CryptDecryptFile, pszCipherTextFile, pszPlainTextFile);
}

int CWrapperAPI::CRYPTSign(BINSTR* pBinPubKey, BINSTR* pBinPriKey, int nHashAlg, BINSTR* pBinTBSData,
                           BINSTR* pSignautre)
{
    return Both(Require(HasData(pBinPubKey), HasData(pBinPriKey), HasData(pBinTBSData)),
                &CZRTKWrap::CRYPTSign, &CGPKIWrap::CryptSign, pBinPubKey, pBinPriKey, nHashAlg, pBinTBSData,
                pSignautre);
}

int CWrapperAPI::CRYPTVerify(BINSTR* pBinPubKey, int nHashAlg, BINSTR* pBinData, BINSTR* pSignautre)
{
    return Both(Require(HasData(pBinPubKey), HasData(pBinData), HasData(pSignautre)), &CZRTKWrap::CRYPTVerify,
                &CGPKIWrap::CryptVerify, pBinPubKey, nHashAlg, pBinData, pSignautre);
}

int CWrapperAPI::CRYPTVerifyFile(BINSTR* pBinPubKey, int nHashAlg, char* pszDataFilePath,
                                 char* pszSignatureFilePath)
{
    return Both(Require(HasData(pBinPubKey), NotNull(pszDataFilePath), NotNull(pszSignatureFilePath)),
                &CZRTKWrap::CRYPTVerifyFile, &CGPKIWrap::CryptVerifyFile, pBinPubKey, nHashAlg,
                pszDataFilePath, pszSignatureFilePath);
}

int CWrapperAPI::CRYPTAsymEncrypt(int nKeyType, BINSTR* pBinKey, BINSTR* pBinTBEData, BINSTR* pBinEncData)
{
    return Both(Require(HasData(pBinKey), HasData(pBinTBEData)), &CZRTKWrap::CRYPTAsymEncrypt,
                &CGPKIWrap::CryptAsymEncrypt, nKeyType, pBinKey, pBinTBEData, pBinEncData);
}

int CWrapperAPI::CRYPTAsymDecrypt(int nKeyType, BINSTR* pBinKey, BINSTR* pBinEncData, BINSTR* pBinTBEData)
{
    return Both(Require(HasData(pBinKey), HasData(pBinEncData)), &CZRTKWrap::CRYPTAsymDecrypt,
                &CGPKIWrap::CryptAsymDecrypt, nKeyType, pBinKey, pBinEncData, pBinTBEData);
}

int CWrapperAPI::CRYPTHash(int nHashAlg, BINSTR* pBinTBHData, BINSTR* pBinDigest)
{
    return Both(Require(HasData(pBinTBHData)), &CZRTKWrap::CRYPTHash, &CGPKIWrap::CryptHash, nHashAlg,
                pBinTBHData, pBinDigest);
}

int CWrapperAPI::CRYPTHashFile(int nHashAlg, char* pszTBHDataFilePath, BINSTR* pBinDigest)
{
    return OnlyZrtk(Require(NotNull(pszTBHDataFilePath)), &CZRTKWrap::CRYPTHashFile, nHashAlg,
                    pszTBHDataFilePath, pBinDigest);
}

int CWrapperAPI::CRYPTGenMAC(int nMACAlg, char* pszPassword, BINSTR* pBinTBMData, BINSTR* pBinMAC)
{
    return Both(Require(NotNull(pszPassword), HasData(pBinTBMData)), &CZRTKWrap::CRYPTGenMAC,
                &CGPKIWrap::CryptGenMAC, nMACAlg, pszPassword, pBinTBMData, pBinMAC);
}

int CWrapperAPI::CRYPTGenMAC2(int nMACAlg, BINSTR* pBinPassword, BINSTR* pBinTBMData, BINSTR* pBinMAC)
{
    return OnlyZrtk(Require(HasData(pBinPassword), HasData(pBinTBMData)), &CZRTKWrap::CRYPTGenMAC2, nMACAlg,
                    pBinPassword, pBinTBMData, pBinMAC);
}

int CWrapperAPI::CRYPTVerifyMAC(int nMACAlg, char* pszPassword, BINSTR* pBinTBMData, BINSTR* pBinMAC)
{
    return Both(Require(NotNull(pszPassword), HasData(pBinTBMData), HasData(pBinMAC)),
                &CZRTKWrap::CRYPTVerifyMAC, &CGPKIWrap::CryptVerifyMAC, nMACAlg, pszPassword, pBinTBMData,
                pBinMAC);
}

int CWrapperAPI::CRYPTGenSharedKey(int nKeyType, BINSTR* pBinPriKeyInfo, BINSTR* pBinPubKey,
                                   BINSTR* pBinSharedKey)
{
    return OnlyZrtk(Require(HasData(pBinPriKeyInfo), HasData(pBinPubKey)), &CZRTKWrap::CRYPTGenSharedKey,
                    nKeyType, pBinPriKeyInfo, pBinPubKey, pBinSharedKey);
}

int CWrapperAPI::Base64Encode(BINSTR* pBinData, BINSTR* pBinEncData)
{
    return Both(Require(HasData(pBinData)), &CZRTKWrap::Base64Encode, &CGPKIWrap::Base64Encode, pBinData,
                pBinEncData);
}

int CWrapperAPI::Base64Decode(BINSTR* pBinEncData, BINSTR* pBinData)
{
    return Both(Require(HasData(pBinEncData)), &CZRTKWrap::Base64Decode, &CGPKIWrap::Base64Decode,
                pBinEncData, pBinData);
}

int CWrapperAPI::PEMEncode(int nType, BINSTR* pBinData, BINSTR* pBinEncData)
{
    return OnlyZrtk(Require(HasData(pBinData)), &CZRTKWrap::PEMEncode, nType, pBinData, pBinEncData);
}

int CWrapperAPI::PEMDecode(BINSTR* pBinEncData, BINSTR* pBinData)
{
    return OnlyZrtk(Require(HasData(pBinEncData)), &CZRTKWrap::PEMDecode, pBinEncData, pBinData);
}
