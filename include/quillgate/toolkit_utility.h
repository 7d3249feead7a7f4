#ifndef QUILLGATE_TOOLKIT_UTILITY_H
#define QUILLGATE_TOOLKIT_UTILITY_H

/**
 * @file
 * Toolkit access: directories, challenge and response, wireless messages, lists of byte strings.
 */

#include "quillgate/api.h"
#include "quillgate/binstr.h"

/**
 * @defgroup directory Directories
 * @ingroup toolkit
 * @{
 */

/** Values of nDataType: which attribute of a directory entry is fetched, or what an HTTP address must give.
 */
enum
{
    QG_DATA_CA_CERTIFICATE = 1,   /**< cACertificate */
    QG_DATA_USER_CERTIFICATE = 2, /**< userCertificate */
    QG_DATA_CRL = 3,              /**< certificateRevocationList */
    QG_DATA_ARL = 4,              /**< authorityRevocationList */
};

/**
 * Fetches data by URL.
 *
 * @param pContext context of ZR_Initalize
 * @param nDataType QG_DATA_...
 * @param pszURL address
 * @param[out] pBinData what was asked for, DER
 * @return 0, a code that all share, or 10004 without pszURL
 */
QUILLGATE_API int ZRAPGetDataByURL(void* pContext, int nDataType, char* pszURL, BINSTR* pBinData);

/**
 * Fetches the CRL of a certificate.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCert certificate, DER
 * @param[out] pBinCRL revocation list, DER
 * @return 0, a code that all share, or 10004 without pBinCert
 */
QUILLGATE_API int ZRAPGetCRLByCert(void* pContext, BINSTR* pBinCert, BINSTR* pBinCRL);

/**
 * Fetches data by common name and writes the full name; the library decides its size. GPKI side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pszIP name or address of the server
 * @param nPort TCP port of the server
 * @param pszCN common name
 * @param nDataType QG_DATA_...
 * @param[out] FullDN full name of the entry, at least 1024 bytes
 * @param[out] pBinData what was asked for, DER
 * @return 0, a code that all share, or 10004 without pszIP or pszCN
 */
QUILLGATE_API int LDAPGetDataByCN(void* pContext, char* pszIP, int nPort, char* pszCN, int nDataType,
                                  char* FullDN, BINSTR* pBinData);

/**
 * Fetches an attribute by URL. GPKI side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pszAttribute attribute of the entry
 * @param pszURL address
 * @param[out] pBinData value of the attribute
 * @return 0, a code that all share, or 10004 without pszAttribute or pszURL
 */
QUILLGATE_API int LDAPGetAnyDataByURL(void* pContext, char* pszAttribute, char* pszURL, BINSTR* pBinData);

/**
 * Fetches the chain of a certificate. GPKI side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCert certificate, DER
 * @param pszConfFilePath configuration file that names directories; empty: that of the context
 * @param[out] pBinPath list of certificates, the given one first
 * @return 0, a code that all share, or 10004 without pBinCert or pszConfFilePath
 */
QUILLGATE_API int LDAPGetCertPath(void* pContext, BINSTR* pBinCert, char* pszConfFilePath, BINSTR* pBinPath);

/** @} */

/**
 * @defgroup challenge Challenge and response
 * @ingroup toolkit
 * @{
 */

/**
 * Makes a challenge. pBinChallenge is an output, yet must hold data at the call. GPKI side only. Open
 * toolkit: a label and 32 random bytes; the context takes one right response to it.
 *
 * @param pContext context of ZR_Initalize
 * @param[in,out] pBinChallenge challenge; must hold data at the call
 * @return 0, a code that all share, or 10004 without pBinChallenge
 */
QUILLGATE_API int SIGEAMakeChallenge(void* pContext, BINSTR* pBinChallenge);

/**
 * Answers a challenge with a certificate and key. GPKI side only. Open toolkit: a signed CMS message that
 * carries the challenge; nothing else is signed (1520).
 *
 * @param pContext context of ZR_Initalize
 * @param pBinChallenge challenge
 * @param pBinCert certificate, DER
 * @param pBinPriKey private key, plain PKCS#8 DER
 * @param[out] pBinResponse answer to the challenge
 * @return 0, a code that all share, or 10004 without pBinChallenge, pBinCert or pBinPriKey
 */
QUILLGATE_API int SIGEAMakeResponse(void* pContext, BINSTR* pBinChallenge, BINSTR* pBinCert,
                                    BINSTR* pBinPriKey, BINSTR* pBinResponse);

/**
 * Verifies the answer to a challenge. GPKI side only. Open toolkit: pBinCert is who must have answered
 * (1523); another challenge is 1522, an answered or foreign one 1521.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinResponse answer to the challenge
 * @param pBinChallenge challenge
 * @param pBinCert certificate of whoever answered, DER
 * @return 0, a code that all share, or 10004 without pBinResponse, pBinChallenge or pBinCert
 */
QUILLGATE_API int SIGEAVerifyResponse(void* pContext, BINSTR* pBinResponse, BINSTR* pBinChallenge,
                                      BINSTR* pBinCert);

/** @} */

/**
 * @defgroup wireless Wireless messages
 * @ingroup toolkit
 * @{
 */

/**
 * Signs data in the wireless form. ZR side only. Open toolkit: a signed CMS message, with any key.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCert certificate, DER
 * @param pBinPriKey private key, plain PKCS#8 DER
 * @param pBinTBSData data to be signed
 * @param[out] pBinSignedContent signed content
 * @return 0, a code that all share, or 10004 without pBinCert, pBinPriKey or pBinTBSData
 */
QUILLGATE_API int WPKISignData(void* pContext, BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinTBSData,
                               BINSTR* pBinSignedContent);

/**
 * Verifies it and gives content and signer. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinSignedContent signed content
 * @param[out] pBinData content
 * @param[out] pBinSignerCert certificate of the signer, DER
 * @return 0, a code that all share, or 10004 without pBinSignedContent
 */
QUILLGATE_API int WPKIVerifyData(void* pContext, BINSTR* pBinSignedContent, BINSTR* pBinData,
                                 BINSTR* pBinSignerCert);

/**
 * Encrypts data for a recipient in the wireless form. ZR side only. Open toolkit: a CMS envelope around a
 * message that pBinCert signs.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinRecCert certificate of the recipient, DER
 * @param pBinTBEData data to be encrypted
 * @param nSymAlg QG_CIPHER_...
 * @param pBinCert certificate of the sender, DER
 * @param pBinPriKey its key, plain PKCS#8 DER
 * @param[out] pBinWapEnvData wireless enveloped message
 * @return 0, a code that all share, or 10004 without pBinRecCert, pBinTBEData, pBinCert or pBinPriKey
 */
QUILLGATE_API int WPKIEncryptData(void* pContext, BINSTR* pBinRecCert, BINSTR* pBinTBEData, int nSymAlg,
                                  BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinWapEnvData);

/**
 * Decrypts it. ZR side only. Open toolkit: the message in the envelope is verified; CMSGetSignerCert tells
 * its sender.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCert certificate, DER
 * @param pBinPriKey private key, plain PKCS#8 DER
 * @param pBinWapEnvData wireless enveloped message
 * @param[out] pBinWapData data in the clear
 * @return 0, a code that all share, or 10004 without pBinCert, pBinPriKey or pBinWapEnvData
 */
QUILLGATE_API int WPKIDecryptData(void* pContext, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                  BINSTR* pBinWapEnvData, BINSTR* pBinWapData);

/**
 * Verifies a wireless certificate. ZR side only. Open toolkit: as CertVerify with nCertType 0.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCert certificate, DER
 * @return 0, a code that all share, or 10004 without pBinCert
 */
QUILLGATE_API int WPKIVerifyCert(void* pContext, BINSTR* pBinCert);

/** @} */

/**
 * @defgroup uni Messages in one step
 * @ingroup toolkit
 * @{
 */

/**
 * Writes a description of a certificate, EUC-KR. The library is told a size of 8, so that the open toolkit
 * writes 7 characters and a NUL. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCert certificate, DER
 * @param[out] pszDisplay description, EUC-KR
 * @return 0, a code that all share, or 10004 without pBinCert
 */
QUILLGATE_API int UNIViewCert(void* pContext, BINSTR* pBinCert, char* pszDisplay);

/**
 * Verifies a signed message. ZR side only. Open toolkit: as CMSProcessSignedData, with the first signer.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinSignData signed message, DER
 * @param[out] pBinData content of the message
 * @param[out] pBinSignerCert certificate of the signer, DER
 * @return 0, a code that all share, or 10004 without pBinSignData
 */
QUILLGATE_API int UNIVerifySignData(void* pContext, BINSTR* pBinSignData, BINSTR* pBinData,
                                    BINSTR* pBinSignerCert);

/**
 * Decrypts an enveloped message. ZR side only. Open toolkit: as CMSProcessEnvelopedData.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCert certificate, DER
 * @param pBinPriKey private key, plain PKCS#8 DER
 * @param pBinEnvData enveloped message, DER
 * @param[out] pBinData data in the clear
 * @return 0, a code that all share, or 10004 without pBinCert, pBinPriKey or pBinEnvData
 */
QUILLGATE_API int UNIDecryptEnvData(void* pContext, BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinEnvData,
                                    BINSTR* pBinData);

/** @} */

/**
 * @defgroup lists Lists and chains
 * @ingroup toolkit
 * @{
 */

/**
 * Adds a byte string to the list in pBinObjs. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinObj byte string to add
 * @param[in,out] pBinObjs list of byte strings, may be empty
 * @return 0, a code that all share, or 10004 without pBinObj
 */
QUILLGATE_API int UTILAddObject(void* pContext, BINSTR* pBinObj, BINSTR* pBinObjs);

/**
 * Sets *nCnt to the number of byte strings in the list. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinObjs list of byte strings
 * @param[out] nCnt number of byte strings
 * @return 0, a code that all share, or 10004 without pBinObjs
 */
QUILLGATE_API int UTILGetObjectCount(void* pContext, BINSTR* pBinObjs, int* nCnt);

/**
 * Takes byte string nIndex out of the list. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinObjs list of byte strings
 * @param nIndex position, from 0
 * @param[out] pBinObj byte string
 * @return 0, a code that all share, or 10004 without pBinObjs
 */
QUILLGATE_API int UTILGetObject(void* pContext, BINSTR* pBinObjs, int nIndex, BINSTR* pBinObj);

/**
 * Answers 0 when two names are equal. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pszDN1 name, as cn=...,c=kr
 * @param pszDN2 name to compare it with
 * @return 0, a code that all share, or 10004 without pszDN1 or pszDN2
 */
QUILLGATE_API int UTILCompareDN(void* pContext, char* pszDN1, char* pszDN2);

/**
 * Gives the chain of a certificate. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCert certificate, DER
 * @param[out] pBinPath list of certificates, the given one first
 * @return 0, a code that all share, or 10004 without pBinCert
 */
QUILLGATE_API int UTILGetCertPath(void* pContext, BINSTR* pBinCert, BINSTR* pBinPath);

/**
 * Gives the root of a certificate. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCert certificate, DER
 * @param[out] pBinRootCert root certificate, DER
 * @return 0, a code that all share, or 10004 without pBinCert
 */
QUILLGATE_API int UTILGetRootCert(void* pContext, BINSTR* pBinCert, BINSTR* pBinRootCert);

/**
 * Sets *pIsTrust to whether a root is trusted. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinTrustCert certificate, DER
 * @param pBinRootCert certificate that may stand on its path, DER
 * @param[out] pIsTrust whether it does
 * @return 0, a code that all share, or 10004 without pBinTrustCert or pBinRootCert
 */
QUILLGATE_API int UTILIsTrustCert(void* pContext, BINSTR* pBinTrustCert, BINSTR* pBinRootCert,
                                  bool* pIsTrust);

/** @} */

#endif
