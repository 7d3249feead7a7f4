#ifndef QUILLGATE_TOOLKIT_CRYPTO_H
#define QUILLGATE_TOOLKIT_CRYPTO_H

/*
 * Toolkit access: raw cryptography and text encodings.
 *
 * The numbers of algorithms are the library's. Digests, signatures and texts come as byte strings that the
 * caller releases with ZR_BINSTR_Delete.
 */

#include "quillgate/api.h"
#include "quillgate/binstr.h"

/* --- Cryptography --------------------------------------------------------------------------------------- */

/* Sets the RSA version for what follows. ZR side only. */
QUILLGATE_API int CRYPTSetRSAVersion(void* pContext, int nRSAVersion);

/* Sets the padding for what follows. ZR side only. */
QUILLGATE_API int CRYPTSetPaddingType(void* pContext, int nPaddingType);

/* Makes envelopes change their IV from now on. ZR side only. */
QUILLGATE_API int CRYPTSetEnvChangeIV(void* pContext);

/* Gives nLen random bytes. 10004 without nLen on the ZR side. */
QUILLGATE_API int CRYPTGenRandom(void* pContext, int nLen, BINSTR* pBinRandom);

/* Makes a key pair. ZR side only. */
QUILLGATE_API int CRYPTGenKeyPair(void* pContext, int nAlg, BINSTR* pBinPriKey, BINSTR* pPubKey);

/* Makes a key and IV for nSymAlg and keeps them in the context. */
QUILLGATE_API int CRYPTGenKeyAndIV(void* pContext, int nSymAlg);

/* Puts a key and IV into the context. 10004 without pBinKey, pBinIV. */
QUILLGATE_API int CRYPTSetKeyAndIV(void* pContext, int nSymAlg, BINSTR* pBinKey, BINSTR* pBinIV);

/* Reads them. */
QUILLGATE_API int CRYPTGetKeyAndIV(void* pContext, int* nSymAlg, BINSTR* pBinKey, BINSTR* pBinIV);

/* Clears them. */
QUILLGATE_API int CRYPTClearKeyAndIV(void* pContext);

/* Encrypts with the context's key. 10004 without pBinPlainText. */
QUILLGATE_API int CRYPTEncrypt(void* pContext, BINSTR* pBinPlainText, BINSTR* pBinCipherText);

/* Decrypts with the context's key. 10004 without pBinCipherText. */
QUILLGATE_API int CRYPTDecrypt(void* pContext, BINSTR* pBinCipherText, BINSTR* pBinPlainText);

/* Encrypts a file with the context's key. 10004 without pszPlainTextFile, pszCipherTextFile. */
QUILLGATE_API int CRYPTEncryptFile(void* pContext, char* pszPlainTextFile, char* pszCipherTextFile);

/* Decrypts a file with the context's key. 10004 without pszCipherTextFile, pszPlainTextFile. */
QUILLGATE_API int CRYPTDecryptFile(void* pContext, char* pszCipherTextFile, char* pszPlainTextFile);

/* Signs data. 10004 without pBinPubKey, pBinPriKey, pBinTBSData. */
QUILLGATE_API int CRYPTSign(void* pContext, BINSTR* pBinPubKey, BINSTR* pBinPriKey, int nHashAlg,
                            BINSTR* pBinTBSData, BINSTR* pSignautre);

/* Verifies a signature. 10004 without pBinPubKey, pBinData, pSignautre. */
QUILLGATE_API int CRYPTVerify(void* pContext, BINSTR* pBinPubKey, int nHashAlg, BINSTR* pBinData,
                              BINSTR* pSignautre);

/* Verifies the signature of a file. 10004 without pBinPubKey, pszDataFilePath, pszSignatureFilePath. */
QUILLGATE_API int CRYPTVerifyFile(void* pContext, BINSTR* pBinPubKey, int nHashAlg, char* pszDataFilePath,
                                  char* pszSignatureFilePath);

/* Encrypts with a public or private key, as nKeyType says. 10004 without pBinKey, pBinTBEData. */
QUILLGATE_API int CRYPTAsymEncrypt(void* pContext, int nKeyType, BINSTR* pBinKey, BINSTR* pBinTBEData,
                                   BINSTR* pBinEncData);

/* Decrypts with a public or private key, as nKeyType says. 10004 without pBinKey, pBinEncData. */
QUILLGATE_API int CRYPTAsymDecrypt(void* pContext, int nKeyType, BINSTR* pBinKey, BINSTR* pBinEncData,
                                   BINSTR* pBinTBEData);

/* Gives the digest of data. 10004 without pBinTBHData. */
QUILLGATE_API int CRYPTHash(void* pContext, int nHashAlg, BINSTR* pBinTBHData, BINSTR* pBinDigest);

/* Gives the digest of a file. ZR side only. 10004 without pszTBHDataFilePath. */
QUILLGATE_API int CRYPTHashFile(void* pContext, int nHashAlg, char* pszTBHDataFilePath, BINSTR* pBinDigest);

/* Gives the MAC of data under a password. 10004 without pszPassword, pBinTBMData. */
QUILLGATE_API int CRYPTGenMAC(void* pContext, int nMACAlg, char* pszPassword, BINSTR* pBinTBMData,
                              BINSTR* pBinMAC);

/* The same with the password as bytes. ZR side only. 10004 without pBinPassword, pBinTBMData. */
QUILLGATE_API int CRYPTGenMAC2(void* pContext, int nMACAlg, BINSTR* pBinPassword, BINSTR* pBinTBMData,
                               BINSTR* pBinMAC);

/* Verifies a MAC. 10004 without pszPassword, pBinTBMData, pBinMAC. */
QUILLGATE_API int CRYPTVerifyMAC(void* pContext, int nMACAlg, char* pszPassword, BINSTR* pBinTBMData,
                                 BINSTR* pBinMAC);

/* Derives a shared key. ZR side only. 10004 without pBinPriKeyInfo, pBinPubKey. */
QUILLGATE_API int CRYPTGenSharedKey(void* pContext, int nKeyType, BINSTR* pBinPriKeyInfo, BINSTR* pBinPubKey,
                                    BINSTR* pBinSharedKey);

/* --- Encodings ------------------------------------------------------------------------------------------ */

/* Encodes bytes as Base64 text. 10004 without pBinData. */
QUILLGATE_API int Base64Encode(void* pContext, BINSTR* pBinData, BINSTR* pBinEncData);

/* Decodes Base64 text. 10004 without pBinEncData. */
QUILLGATE_API int Base64Decode(void* pContext, BINSTR* pBinEncData, BINSTR* pBinData);

/* Encodes bytes as PEM of type nType. ZR side only. 10004 without pBinData. */
QUILLGATE_API int PEMEncode(void* pContext, int nType, BINSTR* pBinData, BINSTR* pBinEncData);

/* Decodes PEM. ZR side only. 10004 without pBinEncData. */
QUILLGATE_API int PEMDecode(void* pContext, BINSTR* pBinEncData, BINSTR* pBinData);

#endif
