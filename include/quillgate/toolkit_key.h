#ifndef QUILLGATE_TOOLKIT_KEY_H
#define QUILLGATE_TOOLKIT_KEY_H

/*
 * Toolkit access: private keys and the identity value in them.
 *
 * Plain keys, passwords and random values are secrets: the caller wipes the bytes of an output byte string
 * before it releases them.
 */

#include "quillgate/api.h"
#include "quillgate/binstr.h"

/* --- Private keys --------------------------------------------------------------------------------------- */

/*
 * Encrypts a plain private key under a password with algorithm nSymAlg. 10004 without pBinPriKey (at least 1
 * byte), pszPasswd.
 */
QUILLGATE_API int PriKeyEncrypt(void* pContext, int nSymAlg, char* pszPasswd, BINSTR* pBinPriKey,
                                BINSTR* pBinEncPriKey);

/*
 * Decrypts a private key. A wrong password answers the library's own number, see TOOLKIT_WRONG_PASSWORD.
 * 10004 without pBinEncPriKey (at least 1 byte), pszPasswd.
 */
QUILLGATE_API int PriKeyDecrypt(void* pContext, char* pszPasswd, BINSTR* pBinEncPriKey, BINSTR* pBinPriKey);

/*
 * Encrypts an encrypted private key anew under another password. 10004 without pszOldPasswd, pszNewPasswd,
 * pBinPriKey (at least 1 byte).
 */
QUILLGATE_API int PriKeyChangePasswd(void* pContext, char* pszOldPasswd, char* pszNewPasswd,
                                     BINSTR* pBinPriKey, BINSTR* pBinNewPriKey);

/*
 * Answers 0 when certificate and plain private key belong together. 10004 without pBinCert (at least 1
 * byte), pBinPriKey (at least 1 byte).
 */
QUILLGATE_API int PriKeyCheckKeyPair(void* pContext, BINSTR* pBinCert, BINSTR* pBinPriKey);

/* --- Identity ------------------------------------------------------------------------------------------- */

/* Takes the random value out of a plain private key. 10004 without pBinPriKey. */
QUILLGATE_API int VIDGetRandomFromPriKey(void* pContext, BINSTR* pBinPriKey, BINSTR* pBinRandom);

/*
 * Makes the hash of the number and the random value. ZR side only. 10004 without pBinCert, pBinRandom or a
 * non-empty pszIDN.
 */
QUILLGATE_API int VIDHashOfIDNR(void* pContext, BINSTR* pBinCert, BINSTR* pBinRandom, char* pszIDN,
                                BINSTR* pBinHash);

/*
 * Checks that certificate, random value and the person's number pszIDN belong together. 10004 without
 * pBinCert, pBinRandom, pszIDN.
 */
QUILLGATE_API int VIDVerify(void* pContext, BINSTR* pBinCert, BINSTR* pBinRandom, char* pszIDN);

/*
 * Has the validation service of a configuration file check the same. 10004 without pszConfFilePath,
 * pBinCert, pBinRandom, pszIDN, pBinMyCert.
 */
QUILLGATE_API int VIDVerifyByIVS(void* pContext, char* pszConfFilePath, BINSTR* pBinCert, BINSTR* pBinRandom,
                                 char* pszIDN, BINSTR* pBinMyCert);

#endif
