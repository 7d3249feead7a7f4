#ifndef QUILLGATE_TOOLKIT_UTILITY_H
#define QUILLGATE_TOOLKIT_UTILITY_H

/*
 * Toolkit access: directories, challenge and response, wireless messages, lists of byte strings.
 */

#include "quillgate/api.h"
#include "quillgate/binstr.h"

/* --- Directories ---------------------------------------------------------------------------------------- */

/* Fetches data by URL. 10004 without pszURL. */
QUILLGATE_API int ZRAPGetDataByURL(void* pContext, int nDataType, char* pszURL, BINSTR* pBinData);

/* Fetches the CRL of a certificate. 10004 without pBinCert. */
QUILLGATE_API int ZRAPGetCRLByCert(void* pContext, BINSTR* pBinCert, BINSTR* pBinCRL);

/*
 * Fetches data by common name and writes the full name; the library decides its size. GPKI side only. 10004
 * without pszIP, pszCN.
 */
QUILLGATE_API int LDAPGetDataByCN(void* pContext, char* pszIP, int nPort, char* pszCN, int nDataType,
                                  char* FullDN, BINSTR* pBinData);

/* Fetches an attribute by URL. GPKI side only. 10004 without pszAttribute, pszURL. */
QUILLGATE_API int LDAPGetAnyDataByURL(void* pContext, char* pszAttribute, char* pszURL, BINSTR* pBinData);

/* Fetches the chain of a certificate. GPKI side only. 10004 without pBinCert, pszConfFilePath. */
QUILLGATE_API int LDAPGetCertPath(void* pContext, BINSTR* pBinCert, char* pszConfFilePath, BINSTR* pBinPath);

/* --- Challenge and response ----------------------------------------------------------------------------- */

/*
 * Makes a challenge. pBinChallenge is an output, yet must hold data at the call. GPKI side only. 10004
 * without pBinChallenge.
 */
QUILLGATE_API int SIGEAMakeChallenge(void* pContext, BINSTR* pBinChallenge);

/*
 * Answers a challenge with a certificate and key. GPKI side only. 10004 without pBinChallenge, pBinCert,
 * pBinPriKey.
 */
QUILLGATE_API int SIGEAMakeResponse(void* pContext, BINSTR* pBinChallenge, BINSTR* pBinCert,
                                    BINSTR* pBinPriKey, BINSTR* pBinResponse);

/* Verifies the answer to a challenge. GPKI side only. 10004 without pBinResponse, pBinChallenge, pBinCert. */
QUILLGATE_API int SIGEAVerifyResponse(void* pContext, BINSTR* pBinResponse, BINSTR* pBinChallenge,
                                      BINSTR* pBinCert);

/* --- Wireless messages ---------------------------------------------------------------------------------- */

/* Signs data in the wireless form. ZR side only. 10004 without pBinCert, pBinPriKey, pBinTBSData. */
QUILLGATE_API int WPKISignData(void* pContext, BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinTBSData,
                               BINSTR* pBinSignedContent);

/* Verifies it and gives content and signer. ZR side only. 10004 without pBinSignedContent. */
QUILLGATE_API int WPKIVerifyData(void* pContext, BINSTR* pBinSignedContent, BINSTR* pBinData,
                                 BINSTR* pBinSignerCert);

/*
 * Encrypts data for a recipient in the wireless form. ZR side only. 10004 without pBinRecCert, pBinTBEData,
 * pBinCert, pBinPriKey.
 */
QUILLGATE_API int WPKIEncryptData(void* pContext, BINSTR* pBinRecCert, BINSTR* pBinTBEData, int nSymAlg,
                                  BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinWapEnvData);

/* Decrypts it. ZR side only. 10004 without pBinCert, pBinPriKey, pBinWapEnvData. */
QUILLGATE_API int WPKIDecryptData(void* pContext, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                  BINSTR* pBinWapEnvData, BINSTR* pBinWapData);

/* Verifies a wireless certificate. ZR side only. 10004 without pBinCert. */
QUILLGATE_API int WPKIVerifyCert(void* pContext, BINSTR* pBinCert);

/* --- Messages in one step ------------------------------------------------------------------------------- */

/*
 * Writes a description of a certificate, EUC-KR. The library is told a size of 8, so that the open toolkit
 * writes 7 characters and a NUL. ZR side only. 10004 without pBinCert.
 */
QUILLGATE_API int UNIViewCert(void* pContext, BINSTR* pBinCert, char* pszDisplay);

/* Verifies a signed message. ZR side only. 10004 without pBinSignData. */
QUILLGATE_API int UNIVerifySignData(void* pContext, BINSTR* pBinSignData, BINSTR* pBinData,
                                    BINSTR* pBinSignerCert);

/* Decrypts an enveloped message. ZR side only. 10004 without pBinCert, pBinPriKey, pBinEnvData. */
QUILLGATE_API int UNIDecryptEnvData(void* pContext, BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinEnvData,
                                    BINSTR* pBinData);

/* --- Lists and chains ----------------------------------------------------------------------------------- */

/* Adds a byte string to the list in pBinObjs. ZR side only. 10004 without pBinObj. */
QUILLGATE_API int UTILAddObject(void* pContext, BINSTR* pBinObj, BINSTR* pBinObjs);

/* Sets *nCnt to the number of byte strings in the list. ZR side only. 10004 without pBinObjs. */
QUILLGATE_API int UTILGetObjectCount(void* pContext, BINSTR* pBinObjs, int* nCnt);

/* Takes byte string nIndex out of the list. ZR side only. 10004 without pBinObjs. */
QUILLGATE_API int UTILGetObject(void* pContext, BINSTR* pBinObjs, int nIndex, BINSTR* pBinObj);

/* Answers 0 when two names are equal. ZR side only. 10004 without pszDN1, pszDN2. */
QUILLGATE_API int UTILCompareDN(void* pContext, char* pszDN1, char* pszDN2);

/* Gives the chain of a certificate. ZR side only. 10004 without pBinCert. */
QUILLGATE_API int UTILGetCertPath(void* pContext, BINSTR* pBinCert, BINSTR* pBinPath);

/* Gives the root of a certificate. ZR side only. 10004 without pBinCert. */
QUILLGATE_API int UTILGetRootCert(void* pContext, BINSTR* pBinCert, BINSTR* pBinRootCert);

/* Sets *pIsTrust to whether a root is trusted. ZR side only. 10004 without pBinTrustCert, pBinRootCert. */
QUILLGATE_API int UTILIsTrustCert(void* pContext, BINSTR* pBinTrustCert, BINSTR* pBinRootCert,
                                  bool* pIsTrust);

#endif
