#ifndef QUILLGATE_TOOLKIT_CRYPTO_H
#define QUILLGATE_TOOLKIT_CRYPTO_H

/**
 * @file
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

/**
 * @defgroup crypto Cryptography
 * @ingroup toolkit
 * @{
 */

/**
 * Sets the RSA version for what follows. ZR side only. Open toolkit: QG_RSA_V15 or QG_RSA_V2; the GPKI side
 * stays with version 1.5.
 *
 * @param pContext context of ZR_Initalize
 * @param nRSAVersion QG_RSA_...
 * @return 0 or a code that all share
 */
QUILLGATE_API int CRYPTSetRSAVersion(void* pContext, int nRSAVersion);

/**
 * Sets the padding for what follows. ZR side only. Open toolkit: QG_PADDING_NONE or QG_PADDING_PKCS7.
 *
 * @param pContext context of ZR_Initalize
 * @param nPaddingType QG_PADDING_...
 * @return 0 or a code that all share
 */
QUILLGATE_API int CRYPTSetPaddingType(void* pContext, int nPaddingType);

/**
 * Makes envelopes change their IV from now on. ZR side only. Open toolkit: every envelope has a key and IV
 * of its own at all times, so that nothing changes.
 *
 * @param pContext context of ZR_Initalize
 * @return 0 or a code that all share
 */
QUILLGATE_API int CRYPTSetEnvChangeIV(void* pContext);

/**
 * Gives nLen random bytes. Open toolkit: 1 to 16777216, else 1000.
 *
 * @param pContext context of ZR_Initalize
 * @param nLen number of bytes
 * @param[out] pBinRandom random bytes
 * @return 0, a code that all share, or on the ZR side 10004 for nLen 0
 */
QUILLGATE_API int CRYPTGenRandom(void* pContext, int nLen, BINSTR* pBinRandom);

/**
 * Makes a key pair. ZR side only. Open toolkit: QG_KEYPAIR_...; pBinPriKey takes a PrivateKeyInfo, pPubKey
 * a SubjectPublicKeyInfo, both DER.
 *
 * @param pContext context of ZR_Initalize
 * @param nAlg QG_KEYPAIR_...
 * @param[out] pBinPriKey private key, plain PKCS#8 DER; a secret
 * @param[out] pPubKey public key, DER
 * @return 0 or a code that all share
 */
QUILLGATE_API int CRYPTGenKeyPair(void* pContext, int nAlg, BINSTR* pBinPriKey, BINSTR* pPubKey);

/**
 * Makes a key and IV for nSymAlg and keeps them in the context. Open toolkit: QG_CIPHER_... + QG_MODE_...
 *
 * @param pContext context of ZR_Initalize
 * @param nSymAlg QG_CIPHER_... + QG_MODE_...
 * @return 0 or a code that all share
 */
QUILLGATE_API int CRYPTGenKeyAndIV(void* pContext, int nSymAlg);

/**
 * Puts a key and IV into the context. Open toolkit: of exactly the cipher's lengths, else 5204; a failure
 * keeps those that were there.
 *
 * @param pContext context of ZR_Initalize
 * @param nSymAlg QG_CIPHER_... + QG_MODE_...
 * @param pBinKey key
 * @param pBinIV initialisation vector, one block
 * @return 0, a code that all share, or 10004 without pBinKey or pBinIV
 */
QUILLGATE_API int CRYPTSetKeyAndIV(void* pContext, int nSymAlg, BINSTR* pBinKey, BINSTR* pBinIV);

/**
 * Reads them. Open toolkit: all three outputs are wanted. 5203 without a key.
 *
 * @param pContext context of ZR_Initalize
 * @param[out] nSymAlg QG_CIPHER_... + QG_MODE_...
 * @param[out] pBinKey key; a secret
 * @param[out] pBinIV initialisation vector
 * @return 0 or a code that all share
 */
QUILLGATE_API int CRYPTGetKeyAndIV(void* pContext, int* nSymAlg, BINSTR* pBinKey, BINSTR* pBinIV);

/**
 * Clears them. Open toolkit: wipes them; none is no failure.
 *
 * @param pContext context of ZR_Initalize
 * @return 0 or a code that all share
 */
QUILLGATE_API int CRYPTClearKeyAndIV(void* pContext);

/**
 * Encrypts with the context's key. Open toolkit: every call begins with the context's IV, so that a key and
 * IV are for one message. 5203 without a key, 5205 for data that are not whole blocks where nothing is
 * padded. Nothing shows whether encrypted data were altered: a MAC does.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinPlainText data in the clear
 * @param[out] pBinCipherText encrypted data
 * @return 0, a code that all share, or 10004 without pBinPlainText
 */
QUILLGATE_API int CRYPTEncrypt(void* pContext, BINSTR* pBinPlainText, BINSTR* pBinCipherText);

/**
 * Decrypts with the context's key. Open toolkit: 5203, 5202 for any fault.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCipherText encrypted data
 * @param[out] pBinPlainText data in the clear
 * @return 0, a code that all share, or 10004 without pBinCipherText
 */
QUILLGATE_API int CRYPTDecrypt(void* pContext, BINSTR* pBinCipherText, BINSTR* pBinPlainText);

/**
 * Encrypts a file with the context's key. Open toolkit: of any length, empty too, and may be its own
 * target; the target is written whole or not at all, for its owner alone.
 *
 * @param pContext context of ZR_Initalize
 * @param pszPlainTextFile path of the file in the clear
 * @param pszCipherTextFile path of the encrypted file
 * @return 0, a code that all share, or 10004 without pszPlainTextFile or pszCipherTextFile
 */
QUILLGATE_API int CRYPTEncryptFile(void* pContext, char* pszPlainTextFile, char* pszCipherTextFile);

/**
 * Decrypts a file with the context's key; the same in the other direction.
 *
 * @param pContext context of ZR_Initalize
 * @param pszCipherTextFile path of the encrypted file
 * @param pszPlainTextFile path of the file in the clear
 * @return 0, a code that all share, or 10004 without pszCipherTextFile or pszPlainTextFile
 */
QUILLGATE_API int CRYPTDecryptFile(void* pContext, char* pszCipherTextFile, char* pszPlainTextFile);

/**
 * Signs data. Open toolkit: RSA (the version's PKCS#1 v1.5 or PSS, as long as the key) or ECDSA (DER). 2007
 * when the keys are not of one pair, 5207 for keys that sign nothing. nHashAlg: QG_HASH_...
 *
 * @param pContext context of ZR_Initalize
 * @param pBinPubKey certificate or public key of the pair, DER
 * @param pBinPriKey private key, plain PKCS#8 DER
 * @param nHashAlg QG_HASH_...
 * @param pBinTBSData data to be signed
 * @param[out] pSignautre signature value
 * @return 0, a code that all share, or 10004 without pBinPubKey, pBinPriKey or pBinTBSData
 */
QUILLGATE_API int CRYPTSign(void* pContext, BINSTR* pBinPubKey, BINSTR* pBinPriKey, int nHashAlg,
                            BINSTR* pBinTBSData, BINSTR* pSignautre);

/**
 * Verifies a signature. Open toolkit: 5200 when it is wrong.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinPubKey certificate or public key, DER
 * @param nHashAlg QG_HASH_...
 * @param pBinData data
 * @param pSignautre signature value
 * @return 0, a code that all share, or 10004 without pBinPubKey, pBinData or pSignautre
 */
QUILLGATE_API int CRYPTVerify(void* pContext, BINSTR* pBinPubKey, int nHashAlg, BINSTR* pBinData,
                              BINSTR* pSignautre);

/**
 * Verifies the signature of a file, which is the bare bytes of another.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinPubKey certificate or public key, DER
 * @param nHashAlg QG_HASH_...
 * @param pszDataFilePath path of the data file
 * @param pszSignatureFilePath path of the file of the signature value
 * @return 0, a code that all share, or 10004 without pBinPubKey, pszDataFilePath or pszSignatureFilePath
 */
QUILLGATE_API int CRYPTVerifyFile(void* pContext, BINSTR* pBinPubKey, int nHashAlg, char* pszDataFilePath,
                                  char* pszSignatureFilePath);

/**
 * Encrypts with a public or private key, as nKeyType says. Open toolkit: RSA, QG_KEY_PUBLIC or
 * QG_KEY_PRIVATE, the latter in version 1.5 alone (1004). 5205 for data that are too long: the key's bytes
 * less 11, in version 2 less 2 digests and 2.
 *
 * @param pContext context of ZR_Initalize
 * @param nKeyType QG_KEY_...: which half of the pair pBinKey is
 * @param pBinKey public or private key, DER
 * @param pBinTBEData data to be encrypted
 * @param[out] pBinEncData encrypted data
 * @return 0, a code that all share, or 10004 without pBinKey or pBinTBEData
 */
QUILLGATE_API int CRYPTAsymEncrypt(void* pContext, int nKeyType, BINSTR* pBinKey, BINSTR* pBinTBEData,
                                   BINSTR* pBinEncData);

/**
 * Decrypts with a public or private key, as nKeyType says. Open toolkit: 5202 for every fault of the data;
 * a program that decrypts for strangers by version 1.5 must not tell them even that it came.
 *
 * @param pContext context of ZR_Initalize
 * @param nKeyType QG_KEY_...: which half of the pair pBinKey is
 * @param pBinKey private or public key, DER
 * @param pBinEncData encrypted data
 * @param[out] pBinTBEData data in the clear
 * @return 0, a code that all share, or 10004 without pBinKey or pBinEncData
 */
QUILLGATE_API int CRYPTAsymDecrypt(void* pContext, int nKeyType, BINSTR* pBinKey, BINSTR* pBinEncData,
                                   BINSTR* pBinTBEData);

/**
 * Gives the digest of data. Open toolkit: QG_HASH_...
 *
 * @param pContext context of ZR_Initalize
 * @param nHashAlg QG_HASH_...
 * @param pBinTBHData data to be hashed
 * @param[out] pBinDigest digest
 * @return 0, a code that all share, or 10004 without pBinTBHData
 */
QUILLGATE_API int CRYPTHash(void* pContext, int nHashAlg, BINSTR* pBinTBHData, BINSTR* pBinDigest);

/**
 * Gives the digest of a file of any length. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param nHashAlg QG_HASH_...
 * @param pszTBHDataFilePath path of the file to be hashed
 * @param[out] pBinDigest digest
 * @return 0, a code that all share, or 10004 without pszTBHDataFilePath
 */
QUILLGATE_API int CRYPTHashFile(void* pContext, int nHashAlg, char* pszTBHDataFilePath, BINSTR* pBinDigest);

/**
 * Gives the MAC of data under a password. Open toolkit: HMAC with the hash QG_HASH_..., the password's
 * bytes being the key.
 *
 * @param pContext context of ZR_Initalize
 * @param nMACAlg QG_HASH_...: the hash of the HMAC
 * @param pszPassword password
 * @param pBinTBMData data to be authenticated
 * @param[out] pBinMAC authentication code
 * @return 0, a code that all share, or 10004 without pszPassword or pBinTBMData
 */
QUILLGATE_API int CRYPTGenMAC(void* pContext, int nMACAlg, char* pszPassword, BINSTR* pBinTBMData,
                              BINSTR* pBinMAC);

/**
 * The same with the password as bytes. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param nMACAlg QG_HASH_...: the hash of the HMAC
 * @param pBinPassword password as bytes
 * @param pBinTBMData data to be authenticated
 * @param[out] pBinMAC authentication code
 * @return 0, a code that all share, or 10004 without pBinPassword or pBinTBMData
 */
QUILLGATE_API int CRYPTGenMAC2(void* pContext, int nMACAlg, BINSTR* pBinPassword, BINSTR* pBinTBMData,
                               BINSTR* pBinMAC);

/**
 * Verifies a MAC. Open toolkit: 5201 when it is wrong or not whole.
 *
 * @param pContext context of ZR_Initalize
 * @param nMACAlg QG_HASH_...: the hash of the HMAC
 * @param pszPassword password
 * @param pBinTBMData data to be authenticated
 * @param pBinMAC authentication code
 * @return 0, a code that all share, or 10004 without pszPassword, pBinTBMData or pBinMAC
 */
QUILLGATE_API int CRYPTVerifyMAC(void* pContext, int nMACAlg, char* pszPassword, BINSTR* pBinTBMData,
                                 BINSTR* pBinMAC);

/**
 * Gives the secret that the holders of two key pairs share. ZR side only. Open toolkit: QG_AGREEMENT_ECDH
 * or QG_AGREEMENT_DH, the bare secret. 5207 for keys that don't agree.
 *
 * @param pContext context of ZR_Initalize
 * @param nKeyType QG_AGREEMENT_...
 * @param pBinPriKeyInfo own private key, plain PKCS#8 DER
 * @param pBinPubKey the other side's public key, DER
 * @param[out] pBinSharedKey shared key; a secret
 * @return 0, a code that all share, or 10004 without pBinPriKeyInfo or pBinPubKey
 */
QUILLGATE_API int CRYPTGenSharedKey(void* pContext, int nKeyType, BINSTR* pBinPriKeyInfo, BINSTR* pBinPubKey,
                                    BINSTR* pBinSharedKey);

/** @} */

/**
 * @defgroup encoding Encodings
 * @ingroup toolkit
 * @{
 */

/**
 * Encodes bytes as Base64 text, by the open toolkit in one line.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinData data
 * @param[out] pBinEncData Base64 text
 * @return 0, a code that all share, or 10004 without pBinData
 */
QUILLGATE_API int Base64Encode(void* pContext, BINSTR* pBinData, BINSTR* pBinEncData);

/**
 * Decodes Base64 text. Open toolkit: passes white space over. 5000 for other text.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinEncData Base64 text
 * @param[out] pBinData bytes
 * @return 0, a code that all share, or 10004 without pBinEncData
 */
QUILLGATE_API int Base64Decode(void* pContext, BINSTR* pBinEncData, BINSTR* pBinData);

/**
 * Encodes bytes as PEM of type nType. ZR side only. Open toolkit: QG_PEM_..., one DER structure, else 5002;
 * lines of 64 characters.
 *
 * @param pContext context of ZR_Initalize
 * @param nType QG_PEM_...
 * @param pBinData data
 * @param[out] pBinEncData PEM text
 * @return 0, a code that all share, or 10004 without pBinData
 */
QUILLGATE_API int PEMEncode(void* pContext, int nType, BINSTR* pBinData, BINSTR* pBinEncData);

/**
 * Decodes PEM. ZR side only. Open toolkit: the first block of a text, whatever its label. 5001 for other
 * text and for blocks with header lines.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinEncData PEM text
 * @param[out] pBinData bytes
 * @return 0, a code that all share, or 10004 without pBinEncData
 */
QUILLGATE_API int PEMDecode(void* pContext, BINSTR* pBinEncData, BINSTR* pBinData);

/** @} */

#endif
