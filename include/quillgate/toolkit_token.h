#ifndef QUILLGATE_TOOLKIT_TOKEN_H
#define QUILLGATE_TOOLKIT_TOKEN_H

/*
 * Toolkit access: PKCS#11 tokens.
 *
 * A context holds one open session at a time. pBinKeyID names a key and its certificate, as PKCS11GetCertInfo
 * gives it. Nothing is closed by itself: whoever opens a session closes it, after a refused PIN too.
 */

#include "quillgate/api.h"
#include "quillgate/binstr.h"

/* Fills *pSlotCnt and that many slot numbers; the caller's array must have room. 10004 without pSlotList. */
QUILLGATE_API int PKCS11GetSlotList(void* pContext, unsigned long* pSlotList, unsigned long* pSlotCnt);

/* Fills a record whose layout belongs to the library. */
QUILLGATE_API int PKCS11GetTokenInfo(void* pContext, unsigned long uSlotID, PKCS11_TOKEN_INFO* pTokenInfo);

/* Initialises a token. ZR side only. 10004 without pszSoPIN, pszUserPIN. */
QUILLGATE_API int PKCS11InitToken(void* pContext, char* pszSoPIN, char* pszUserPIN);

/* Initialises the token of a slot. ZR side only. 10004 without pszSoPIN, pszUserPIN, pszLabel. */
QUILLGATE_API int PKCS11InitTokenWithSlotID(void* pContext, unsigned long ulSlotID, char* pszSoPIN,
                                            char* pszUserPIN, char* pszLabel);

/*
 * Opens the session on a slot and logs in. The GPKI side does both in two steps: a refused PIN leaves the
 * session open, to be closed by the caller, and a null PIN opens without logging in.
 */
QUILLGATE_API int PKCS11OpenSessionWithSlotID(void* pContext, unsigned long ulSlotID, char* pszUserPIN,
                                              int nTokenName);

/* Opens the session on a token by its name's number. ZR side only. 10004 without pszUserPIN. */
QUILLGATE_API int PKCS11OpenSessionWithTokenName(void* pContext, char* pszUserPIN, int nTokenName);

/* Logs in to the open session. 10004 without pszUserPIN. */
QUILLGATE_API int PKCS11Login(void* pContext, char* pszUserPIN);

/* Logs out and leaves the session open. */
QUILLGATE_API int PKCS11Logout(void* pContext);

/* Ends the session. */
QUILLGATE_API int PKCS11CloseSession(void* pContext);

/* Changes the PIN. 10004 without pszOldPIN, pszNewPIN. */
QUILLGATE_API int PKCS11ChangePIN(void* pContext, char* pszOldPIN, char* pszNewPIN);

/* Sets *nCertCnt to the number of certificates on the token. */
QUILLGATE_API int PKCS11GetCertCnt(void* pContext, int* nCertCnt);

/* Gives type, name and key identifier of certificate nIndex. */
QUILLGATE_API int PKCS11GetCertInfo(void* pContext, int nIndex, int* pnCertType, BINSTR* pBinCertDN,
                                    BINSTR* pBinKeyID);

/* Reads the certificate of a key identifier. 10004 without pBinKeyID. */
QUILLGATE_API int PKCS11ReadCert(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinCert);

/* Reads the random value of a key. 10004 without pBinKeyID. */
QUILLGATE_API int PKCS11ReadRandomForVID(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinRandom);

/* Writes a pair to the token. 10004 without pBinCert, pBinPriKey. */
QUILLGATE_API int PKCS11WriteCertAndPriKey(void* pContext, BINSTR* pBinCert, BINSTR* pBinPriKey);

/* Deletes a pair of the token. 10004 without pBinKeyID. */
QUILLGATE_API int PKCS11DeleteCertAndPriKey(void* pContext, BINSTR* pBinKeyID);

/*
 * Makes a key pair on the token. pBinKeyID must hold data at the call. ZR side only. 10004 without
 * pBinKeyID.
 */
QUILLGATE_API int PKCS11GenKeyPair(void* pContext, int nAlg, int nKeyType, BINSTR* pBinKeyID);

/* Signs data with a key of the token. ZR side only. 10004 without pBinKeyID, pBinData. */
QUILLGATE_API int PKCS11Sign(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinData, BINSTR* pBinSignature);

/* Verifies a signature. ZR side only. 10004 without pBinKeyID, pBinData, pBinSignature. */
QUILLGATE_API int PKCS11Verify(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinData, BINSTR* pBinSignature);

/* Encrypts with a key of the token. ZR side only. 10004 without pBinKeyID, pBinPlainText. */
QUILLGATE_API int PKCS11Encrypt(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinPlainText,
                                BINSTR* pBinCipherText);

/* Decrypts with a key of the token. ZR side only. 10004 without pBinKeyID, pBinCipherText. */
QUILLGATE_API int PKCS11Decrypt(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinCipherText,
                                BINSTR* pBinPlainText);

/* Signs data into a message. 10004 without pBinKeyID, pBinData. */
QUILLGATE_API int PKCS11SignData(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinData, BINSTR* pBinSignedData);

/* Signs data into a message without the content. ZR side only. 10004 without pBinKeyID, pBinData. */
QUILLGATE_API int PKCS11SignDataNoContent(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinData,
                                          BINSTR* pBinSignedData);

/* Decrypts an enveloped message. ZR side only. 10004 without pBinKeyID, pBinEnvelopData. */
QUILLGATE_API int PKCS11DecryptData(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinEnvelopData,
                                    BINSTR* pBinPlainText);

/*
 * Signs data and encrypts it for a recipient. ZR side only. 10004 without pBinKeyID, pBinEnvCert, pBinData.
 */
QUILLGATE_API int PKCS11SignAndEnvData(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinEnvCert,
                                       BINSTR* pBinData, BINSTR* pBinSignAndEnvData);

/* Decrypts and verifies such a message. ZR side only. 10004 without pBinKeyID, pBinSignAndEnvData. */
QUILLGATE_API int PKCS11VerifyAndDecData(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinSignAndEnvData,
                                         BINSTR* pBinData, BINSTR* pBinSignerCert);

/*
 * Verifies the signature of a token's driver files. ZR side only. 10004 without pszLibPaths, pBinSignerCert,
 * pBinSignatureValue.
 */
QUILLGATE_API int PKCS11VerifySignatureValue(void* pContext, char* pszLibPaths, BINSTR* pBinSignerCert,
                                             BINSTR* pBinSignatureValue);

/*
 * CMPCertRequest with the keys on the token. ZR side only. 10004 without pszIP, pszRefNum, pszAuthCode,
 * pszIDN, pszCACert.
 */
QUILLGATE_API int PKCS11CMPCertRequest(void* pContext, char* pszIP, int nPort, char* pszRefNum,
                                       char* pszAuthCode, char* pszIDN, char* pszCACert,
                                       BINSTR* pBinSignKeyID, BINSTR* pBinKmKeyID);

/*
 * CMPCertUpdate with the keys on the token. ZR side only. 10004 without pszIP, pszIDN, pszCACert,
 * pBinSignKeyID, pBinKmKeyID.
 */
QUILLGATE_API int PKCS11CMPCertUpdate(void* pContext, char* pszIP, int nPort, bool bKeyUpdate, char* pszIDN,
                                      char* pszCACert, BINSTR* pBinSignKeyID, BINSTR* pBinKmKeyID);

/*
 * The same from pairs that lie outside the token. ZR side only. 10004 without pszIP, pszIDN, pszCACert,
 * pBinSignCert, pBinSignPriKey, pBinKmCert, pBinKmPriKey, pBinSignKeyID, pBinKmKeyID.
 */
QUILLGATE_API int PKCS11CMPCertUpdate2(void* pContext, char* pszIP, int nPort, bool bKeyUpdate, int nOption,
                                       char* pszIDN, char* pszCACert, BINSTR* pBinSignCert,
                                       BINSTR* pBinSignPriKey, BINSTR* pBinKmCert, BINSTR* pBinKmPriKey,
                                       BINSTR* pBinSignKeyID, BINSTR* pBinKmKeyID);

/*
 * CMPCertCertRevoke with the keys on the token. ZR side only. 10004 without pszIP, pBinSignKeyID,
 * pBinKmKeyID.
 */
QUILLGATE_API int PKCS11CMPCertRevoke(void* pContext, char* pszIP, int nPort, int nReasonCode,
                                      BINSTR* pBinSignKeyID, BINSTR* pBinKmKeyID);

#endif
