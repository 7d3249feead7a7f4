#ifndef QUILLGATE_TOOLKIT_CRYPTO_H
#define QUILLGATE_TOOLKIT_CRYPTO_H

/*
 * Toolkit access: raw cryptography and text encodings.
 *
 * Digests, signatures, keys and texts come as byte strings that the caller releases with ZR_BINSTR_Delete,
 * which wipes them. Numbers of algorithms are the library's: quillgate/algorithms.h names those of the open
 * toolkit, and "Open toolkit:" below says what it does. Its codes are in docs/toolkit.md; 2008 stands for a
 * number that it does not know, and a failure leaves every output as it was.
 *
 * A public key is given as a certificate or a SubjectPublicKeyInfo, a private one as a plain PrivateKeyInfo,
 * both DER.
 */

#include "quillgate/algorithms.h"
#include "quillgate/api.h"
#include "quillgate/binstr.h"

/* --- Cryptography --------------------------------------------------------------------------------------- */

/*
 * Sets the RSA version for what follows. ZR side only. Open toolkit: QG_RSA_V15 or QG_RSA_V2; the GPKI side
 * stays with version 1.5.
 */
QUILLGATE_API int CRYPTSetRSAVersion(void* pContext, int nRSAVersion);

/* Sets the padding for what follows. ZR side only. Open toolkit: QG_PADDING_NONE or QG_PADDING_PKCS7. */
QUILLGATE_API int CRYPTSetPaddingType(void* pContext, int nPaddingType);

/*
 * Makes envelopes change their IV from now on. ZR side only. Open toolkit: every envelope has a key and IV of
 * its own at all times, so that nothing changes.
 */
QUILLGATE_API int CRYPTSetEnvChangeIV(void* pContext);

/* Gives nLen random bytes. 10004 without nLen on the ZR side. Open toolkit: 1 to 16777216, else 1000. */
QUILLGATE_API int CRYPTGenRandom(void* pContext, int nLen, BINSTR* pBinRandom);

/*
 * Makes a key pair. ZR side only. Open toolkit: QG_KEYPAIR_...; pBinPriKey takes a PrivateKeyInfo, pPubKey a
 * SubjectPublicKeyInfo, both DER.
 */
QUILLGATE_API int CRYPTGenKeyPair(void* pContext, int nAlg, BINSTR* pBinPriKey, BINSTR* pPubKey);

/* Makes a key and IV for nSymAlg and keeps them in the context. Open toolkit: QG_CIPHER_... + QG_MODE_... */
QUILLGATE_API int CRYPTGenKeyAndIV(void* pContext, int nSymAlg);

/*
 * Puts a key and IV into the context. 10004 without pBinKey, pBinIV. Open toolkit: of exactly the cipher's
 * lengths, else 5204; a failure keeps those that were there.
 */
QUILLGATE_API int CRYPTSetKeyAndIV(void* pContext, int nSymAlg, BINSTR* pBinKey, BINSTR* pBinIV);

/* Reads them. Open toolkit: all three outputs are wanted; 5203 without a key. */
QUILLGATE_API int CRYPTGetKeyAndIV(void* pContext, int* nSymAlg, BINSTR* pBinKey, BINSTR* pBinIV);

/* Clears them. Open toolkit: wipes them; none is no failure. */
QUILLGATE_API int CRYPTClearKeyAndIV(void* pContext);

/*
 * Encrypts with the context's key. 10004 without pBinPlainText. Open toolkit: every call begins with the
 * context's IV, so that a key and IV are for one message; 5203 without a key, 5205 for data that are not
 * whole blocks where nothing is padded. Nothing shows whether encrypted data were altered: a MAC does.
 */
QUILLGATE_API int CRYPTEncrypt(void* pContext, BINSTR* pBinPlainText, BINSTR* pBinCipherText);

/* Decrypts with the context's key. 10004 without pBinCipherText. Open toolkit: 5203, 5202 for any fault. */
QUILLGATE_API int CRYPTDecrypt(void* pContext, BINSTR* pBinCipherText, BINSTR* pBinPlainText);

/*
 * Encrypts a file with the context's key. 10004 without pszPlainTextFile, pszCipherTextFile. Open toolkit: of
 * any length, empty too, and may be its own target; the target is written whole or not at all, for its owner
 * alone.
 */
QUILLGATE_API int CRYPTEncryptFile(void* pContext, char* pszPlainTextFile, char* pszCipherTextFile);

/*
 * Decrypts a file with the context's key; the same in the other direction. 10004 without pszCipherTextFile,
 * pszPlainTextFile.
 */
QUILLGATE_API int CRYPTDecryptFile(void* pContext, char* pszCipherTextFile, char* pszPlainTextFile);

/*
 * Signs data. 10004 without pBinPubKey, pBinPriKey, pBinTBSData. Open toolkit: RSA (the version's PKCS#1 v1.5
 * or PSS, as long as the key) or ECDSA (DER); 2007 when the keys are not of one pair, 5207 for keys that sign
 * nothing. nHashAlg: QG_HASH_...
 */
QUILLGATE_API int CRYPTSign(void* pContext, BINSTR* pBinPubKey, BINSTR* pBinPriKey, int nHashAlg,
                            BINSTR* pBinTBSData, BINSTR* pSignautre);

/* Verifies a signature. 10004 without pBinPubKey, pBinData, pSignautre. Open toolkit: 5200 when it is wrong.
 */
QUILLGATE_API int CRYPTVerify(void* pContext, BINSTR* pBinPubKey, int nHashAlg, BINSTR* pBinData,
                              BINSTR* pSignautre);

/*
 * Verifies the signature of a file, which is the bare bytes of another. 10004 without pBinPubKey,
 * pszDataFilePath, pszSignatureFilePath.
 */
QUILLGATE_API int CRYPTVerifyFile(void* pContext, BINSTR* pBinPubKey, int nHashAlg, char* pszDataFilePath,
                                  char* pszSignatureFilePath);

/*
 * Encrypts with a public or private key, as nKeyType says. 10004 without pBinKey, pBinTBEData. Open toolkit:
 * RSA, QG_KEY_PUBLIC or QG_KEY_PRIVATE, the latter in version 1.5 alone (1004). 5205 for data that are too
 * long: the key's bytes less 11, in version 2 less 2 digests and 2.
 */
QUILLGATE_API int CRYPTAsymEncrypt(void* pContext, int nKeyType, BINSTR* pBinKey, BINSTR* pBinTBEData,
                                   BINSTR* pBinEncData);

/*
 * Decrypts with a public or private key, as nKeyType says. 10004 without pBinKey, pBinEncData. Open toolkit:
 * 5202 for every fault of the data; a program that decrypts for strangers by version 1.5 must not tell them
 * even that it came.
 */
QUILLGATE_API int CRYPTAsymDecrypt(void* pContext, int nKeyType, BINSTR* pBinKey, BINSTR* pBinEncData,
                                   BINSTR* pBinTBEData);

/* Gives the digest of data. 10004 without pBinTBHData. Open toolkit: QG_HASH_... */
QUILLGATE_API int CRYPTHash(void* pContext, int nHashAlg, BINSTR* pBinTBHData, BINSTR* pBinDigest);

/* Gives the digest of a file of any length. ZR side only. 10004 without pszTBHDataFilePath. */
QUILLGATE_API int CRYPTHashFile(void* pContext, int nHashAlg, char* pszTBHDataFilePath, BINSTR* pBinDigest);

/*
 * Gives the MAC of data under a password. 10004 without pszPassword, pBinTBMData. Open toolkit: HMAC with the
 * hash QG_HASH_..., the password's bytes being the key.
 */
QUILLGATE_API int CRYPTGenMAC(void* pContext, int nMACAlg, char* pszPassword, BINSTR* pBinTBMData,
                              BINSTR* pBinMAC);

/* The same with the password as bytes. ZR side only. 10004 without pBinPassword, pBinTBMData. */
QUILLGATE_API int CRYPTGenMAC2(void* pContext, int nMACAlg, BINSTR* pBinPassword, BINSTR* pBinTBMData,
                               BINSTR* pBinMAC);

/*
 * Verifies a MAC. 10004 without pszPassword, pBinTBMData, pBinMAC. Open toolkit: 5201 when it is wrong or not
 * whole.
 */
QUILLGATE_API int CRYPTVerifyMAC(void* pContext, int nMACAlg, char* pszPassword, BINSTR* pBinTBMData,
                                 BINSTR* pBinMAC);

/*
 * Gives the secret that the holders of two key pairs share. ZR side only. 10004 without pBinPriKeyInfo,
 * pBinPubKey. Open toolkit: QG_AGREEMENT_ECDH or QG_AGREEMENT_DH, the bare secret; 5207 for keys that don't
 * agree.
 */
QUILLGATE_API int CRYPTGenSharedKey(void* pContext, int nKeyType, BINSTR* pBinPriKeyInfo, BINSTR* pBinPubKey,
                                    BINSTR* pBinSharedKey);

/* --- Encodings ------------------------------------------------------------------------------------------ */

/* Encodes bytes as Base64 text, by the open toolkit in one line. 10004 without pBinData. */
QUILLGATE_API int Base64Encode(void* pContext, BINSTR* pBinData, BINSTR* pBinEncData);

/* Decodes Base64 text. 10004 without pBinEncData. Open toolkit: passes white space over; 5000 for other text.
 */
QUILLGATE_API int Base64Decode(void* pContext, BINSTR* pBinEncData, BINSTR* pBinData);

/*
 * Encodes bytes as PEM of type nType. ZR side only. 10004 without pBinData. Open toolkit: QG_PEM_..., one DER
 * structure, else 5002; lines of 64 characters.
 */
QUILLGATE_API int PEMEncode(void* pContext, int nType, BINSTR* pBinData, BINSTR* pBinEncData);

/*
 * Decodes PEM. ZR side only. 10004 without pBinEncData. Open toolkit: the first block of a text, whatever its
 * label; 5001 for other text and for blocks with header lines.
 */
QUILLGATE_API int PEMDecode(void* pContext, BINSTR* pBinEncData, BINSTR* pBinData);

#endif
