#include "Operations.h"

void addCryptoOperations(std::vector<Operation>& operations)
{
    OPERATION(CRYPTSetRSAVersion, (int nRSAVersion), "ZRTK_CRYPT_SetRSAVersion", "-", "");
    OPERATION(CRYPTSetPaddingType, (int nPaddingType), "ZRTK_CRYPT_SetPaddingType", "-", "");
    OPERATION(CRYPTSetEnvChangeIV, (), "ZRTK_CRYPT_SetEnvChangeIV", "-", "");
    OPERATION(CRYPTGenRandom, (int nLen, BINSTR* pBinRandom), "ZRTK_CRYPT_GenRandom", "GPKI_CRYPT_GenRandom",
              "ZR side: nLen");
    OPERATION(CRYPTGenKeyPair, (int nAlg, BINSTR* pBinPriKey, BINSTR* pPubKey), "ZRTK_CRYPT_GenKeyPair", "-",
              "");
    OPERATION(CRYPTGenKeyAndIV, (int nSymAlg), "ZRTK_CRYPT_GenKeyAndIV", "GPKI_CRYPT_GenKeyAndIV", "");
    OPERATION(CRYPTSetKeyAndIV, (int nSymAlg, BINSTR* pBinKey, BINSTR* pBinIV), "ZRTK_CRYPT_SetKeyAndIV",
              "GPKI_CRYPT_SetKeyAndIV", "pBinKey, pBinIV");
    OPERATION(CRYPTGetKeyAndIV, (int* nSymAlg, BINSTR* pBinKey, BINSTR* pBinIV), "ZRTK_CRYPT_GetKeyAndIV",
              "GPKI_CRYPT_GetKeyAndIV", "");
    OPERATION(CRYPTClearKeyAndIV, (), "ZRTK_CRYPT_ClearKeyAndIV", "GPKI_CRYPT_ClearKeyAndIV", "");
    OPERATION(CRYPTEncrypt, (BINSTR * pBinPlainText, BINSTR * pBinCipherText), "ZRTK_CRYPT_Encrypt",
              "GPKI_CRYPT_Encrypt", "pBinPlainText");
    OPERATION(CRYPTDecrypt, (BINSTR * pBinCipherText, BINSTR * pBinPlainText), "ZRTK_CRYPT_Decrypt",
              "GPKI_CRYPT_Decrypt", "pBinCipherText");
    OPERATION(CRYPTEncryptFile, (char* pszPlainTextFile, char* pszCipherTextFile), "ZRTK_CRYPT_EncryptFile",
              "GPKI_CRYPT_Encrypt_File", "pszPlainTextFile, pszCipherTextFile");
    OPERATION(CRYPTDecryptFile, (char* pszCipherTextFile, char* pszPlainTextFile), "ZRTK_CRYPT_DecryptFile",
              "GPKI_CRYPT_Decrypt_File(ctx, pszPlainTextFile, pszCipherTextFile)",
              "pszCipherTextFile, pszPlainTextFile");
    OPERATION(
        CRYPTSign,
        (BINSTR * pBinPubKey, BINSTR * pBinPriKey, int nHashAlg, BINSTR* pBinTBSData, BINSTR* pSignautre),
        "ZRTK_CRYPT_Sign", "GPKI_CRYPT_Sign", "pBinPubKey, pBinPriKey, pBinTBSData");
    OPERATION(CRYPTVerify, (BINSTR * pBinPubKey, int nHashAlg, BINSTR* pBinData, BINSTR* pSignautre),
              "ZRTK_CRYPT_Verify", "GPKI_CRYPT_Verify", "pBinPubKey, pBinData, pSignautre");
    OPERATION(CRYPTVerifyFile,
              (BINSTR * pBinPubKey, int nHashAlg, char* pszDataFilePath, char* pszSignatureFilePath),
              "ZRTK_CRYPT_VerifyFile", "GPKI_CRYPT_Verify_File",
              "pBinPubKey, pszDataFilePath, pszSignatureFilePath");
    OPERATION(CRYPTAsymEncrypt, (int nKeyType, BINSTR* pBinKey, BINSTR* pBinTBEData, BINSTR* pBinEncData),
              "ZRTK_CRYPT_AsymEncrypt", "GPKI_CRYPT_AsymEncrypt", "pBinKey, pBinTBEData");
    OPERATION(CRYPTAsymDecrypt, (int nKeyType, BINSTR* pBinKey, BINSTR* pBinEncData, BINSTR* pBinTBEData),
              "ZRTK_CRYPT_AsymDecrypt", "GPKI_CRYPT_AsymDecrypt", "pBinKey, pBinEncData");
    OPERATION(CRYPTHash, (int nHashAlg, BINSTR* pBinTBHData, BINSTR* pBinDigest), "ZRTK_CRYPT_Hash",
              "GPKI_CRYPT_Hash", "pBinTBHData");
    OPERATION(CRYPTHashFile, (int nHashAlg, char* pszTBHDataFilePath, BINSTR* pBinDigest),
              "ZRTK_CRYPT_HashFile", "-", "pszTBHDataFilePath");
    OPERATION(CRYPTGenMAC, (int nMACAlg, char* pszPassword, BINSTR* pBinTBMData, BINSTR* pBinMAC),
              "ZRTK_CRYPT_GenMAC", "GPKI_CRYPT_GenMAC", "pszPassword, pBinTBMData");
    OPERATION(CRYPTGenMAC2, (int nMACAlg, BINSTR* pBinPassword, BINSTR* pBinTBMData, BINSTR* pBinMAC),
              "ZRTK_CRYPT_GenMAC2", "-", "pBinPassword, pBinTBMData");
    OPERATION(CRYPTVerifyMAC, (int nMACAlg, char* pszPassword, BINSTR* pBinTBMData, BINSTR* pBinMAC),
              "ZRTK_CRYPT_VerifyMAC", "GPKI_CRYPT_VerifyMAC", "pszPassword, pBinTBMData, pBinMAC");
    OPERATION(CRYPTGenSharedKey,
              (int nKeyType, BINSTR* pBinPriKeyInfo, BINSTR* pBinPubKey, BINSTR* pBinSharedKey),
              "ZRTK_CRYPT_GenSharedKey", "-", "pBinPriKeyInfo, pBinPubKey");
    OPERATION(Base64Encode, (BINSTR * pBinData, BINSTR * pBinEncData), "ZRTK_BASE64_Encode",
              "GPKI_BASE64_Encode", "pBinData");
    OPERATION(Base64Decode, (BINSTR * pBinEncData, BINSTR * pBinData), "ZRTK_BASE64_Decode",
              "GPKI_BASE64_Decode", "pBinEncData");
    OPERATION(PEMEncode, (int nType, BINSTR* pBinData, BINSTR* pBinEncData), "ZRTK_PEM_Encode", "-",
              "pBinData");
    OPERATION(PEMDecode, (BINSTR * pBinEncData, BINSTR * pBinData), "ZRTK_PEM_Decode", "-", "pBinEncData");
}
