#ifndef QUILLGATE_TOOLKIT_KEY_H
#define QUILLGATE_TOOLKIT_KEY_H

/**
 * @file
 * Toolkit access: private keys and the identity value in them.
 *
 * Plain keys, passwords and random values are secrets: the caller wipes the bytes of an output byte string
 * before it releases them.
 */

#include "quillgate/api.h"
#include "quillgate/binstr.h"

/**
 * @defgroup key Private keys
 * @ingroup toolkit
 * @{
 */

/**
 * Encrypts a plain private key under a password with algorithm nSymAlg.
 *
 * @param pContext context of ZR_Initalize
 * @param nSymAlg QG_CIPHER_SEED, QG_CIPHER_AES256 or QG_CIPHER_ARIA256
 * @param pszPasswd password, bytes as they are
 * @param pBinPriKey private key, plain PKCS#8 DER
 * @param[out] pBinEncPriKey EncryptedPrivateKeyInfo, DER
 * @return 0, a code that all share, or 10004 without pBinPriKey (at least 1 byte) or pszPasswd
 */
QUILLGATE_API int PriKeyEncrypt(void* pContext, int nSymAlg, char* pszPasswd, BINSTR* pBinPriKey,
                                BINSTR* pBinEncPriKey);

/**
 * Decrypts a private key. A wrong password answers the library's own number, see TOOLKIT_WRONG_PASSWORD.
 *
 * @param pContext context of ZR_Initalize
 * @param pszPasswd password, bytes as they are
 * @param pBinEncPriKey EncryptedPrivateKeyInfo, DER
 * @param[out] pBinPriKey private key, plain PKCS#8 DER; a secret
 * @return 0, a code that all share, or 10004 without pBinEncPriKey (at least 1 byte) or pszPasswd
 */
QUILLGATE_API int PriKeyDecrypt(void* pContext, char* pszPasswd, BINSTR* pBinEncPriKey, BINSTR* pBinPriKey);

/**
 * Encrypts an encrypted private key anew under another password.
 *
 * @param pContext context of ZR_Initalize
 * @param pszOldPasswd present password
 * @param pszNewPasswd new password
 * @param pBinPriKey EncryptedPrivateKeyInfo, DER
 * @param[out] pBinNewPriKey the key under the new password, same cipher
 * @return 0, a code that all share, or 10004 without pszOldPasswd, pszNewPasswd or pBinPriKey (at least 1
 *         byte)
 */
QUILLGATE_API int PriKeyChangePasswd(void* pContext, char* pszOldPasswd, char* pszNewPasswd,
                                     BINSTR* pBinPriKey, BINSTR* pBinNewPriKey);

/**
 * Answers 0 when certificate and plain private key belong together.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCert certificate, DER
 * @param pBinPriKey private key, plain PKCS#8 DER
 * @return 0, a code that all share, or 10004 without pBinCert (at least 1 byte) or pBinPriKey (at least 1
 *         byte)
 */
QUILLGATE_API int PriKeyCheckKeyPair(void* pContext, BINSTR* pBinCert, BINSTR* pBinPriKey);

/** @} */

/**
 * @defgroup identity Identity
 * @ingroup toolkit
 * @{
 */

/**
 * Takes the random value out of a plain private key.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinPriKey private key, plain PKCS#8 DER
 * @param[out] pBinRandom random value; a secret
 * @return 0, a code that all share, or 10004 without pBinPriKey
 */
QUILLGATE_API int VIDGetRandomFromPriKey(void* pContext, BINSTR* pBinPriKey, BINSTR* pBinRandom);

/**
 * Makes the hash of the number and the random value. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCert certificate, DER
 * @param pBinRandom random value of the private key
 * @param pszIDN identification number of the person or firm
 * @param[out] pBinHash hash
 * @return 0, a code that all share, or 10004 without pBinCert, pBinRandom or a non-empty pszIDN
 */
QUILLGATE_API int VIDHashOfIDNR(void* pContext, BINSTR* pBinCert, BINSTR* pBinRandom, char* pszIDN,
                                BINSTR* pBinHash);

/**
 * Checks that certificate, random value and the person's number pszIDN belong together.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCert certificate, DER
 * @param pBinRandom random value of the private key
 * @param pszIDN identification number of the person or firm
 * @return 0, a code that all share, or 10004 without pBinCert, pBinRandom or pszIDN
 */
QUILLGATE_API int VIDVerify(void* pContext, BINSTR* pBinCert, BINSTR* pBinRandom, char* pszIDN);

/**
 * Has the validation service of a configuration file check the same.
 *
 * @param pContext context of ZR_Initalize
 * @param pszConfFilePath configuration file that names the service
 * @param pBinCert certificate, DER
 * @param pBinRandom random value of the private key
 * @param pszIDN identification number of the person or firm
 * @param pBinMyCert certificate of whoever asks, DER
 * @return 0, a code that all share, or 10004 without pszConfFilePath, pBinCert, pBinRandom, pszIDN or
 *         pBinMyCert
 */
QUILLGATE_API int VIDVerifyByIVS(void* pContext, char* pszConfFilePath, BINSTR* pBinCert, BINSTR* pBinRandom,
                                 char* pszIDN, BINSTR* pBinMyCert);

/** @} */

#endif
