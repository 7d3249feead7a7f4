#ifndef QUILLGATE_TOOLKIT_MEDIA_H
#define QUILLGATE_TOOLKIT_MEDIA_H

/*
 * Toolkit access: certificates and keys on storage media.
 *
 * nDataType tells the library which of the certificates or keys of a place is meant; nSymAlg is the library's
 * number of a symmetric algorithm. Paths are the caller's bytes, unchanged.
 *
 * MediaCard... are for smart cards, MediaWins... for the certificate store of Windows: the open toolkit
 * answers 1008, "Not supported on this platform", and leaves the outputs as they were.
 */

#include "quillgate/api.h"
#include "quillgate/binstr.h"

/* Loads the library that drives a medium. 10004 without pszLibPath. */
QUILLGATE_API int MediaLoad(void* pContext, char* pszLibPath);

/* Unloads it. */
QUILLGATE_API int MediaUnLoad(void* pContext);

/* Reads a whole file. 10004 without pszFilePath. */
QUILLGATE_API int MediaDiskReadFile(void* pContext, char* pszFilePath, BINSTR* pBinData);

/* Writes a whole file. 10004 without pszFilePath, pBinData (at least 1 byte). */
QUILLGATE_API int MediaDiskWriteFile(void* pContext, char* pszFilePath, BINSTR* pBinData);

/* Reads a certificate file. The ZR side ignores nDataType. 10004 without pszFilePath. */
QUILLGATE_API int MediaDiskReadCert(void* pContext, char* pszFilePath, int nDataType, BINSTR* pBinCert);

/* Reads and decrypts a key file. The ZR side ignores nDataType. 10004 without pszFilePath, pszPassword. */
QUILLGATE_API int MediaDiskReadPriKey(void* pContext, char* pszFilePath, char* pszPassword, int nDataType,
                                      BINSTR* pBinPriKey);

/* Writes a certificate file. The ZR side ignores nDataType. 10004 without pszFilePath, pBinCert. */
QUILLGATE_API int MediaDiskWriteCert(void* pContext, char* pszFilePath, int nDataType, BINSTR* pBinCert);

/*
 * Encrypts a plain key under the password and writes its file. The ZR side ignores nDataType. 10004 without
 * pszFilePath, pszPassword, pBinPriKey.
 */
QUILLGATE_API int MediaDiskWritePriKey(void* pContext, int nSymAlg, char* pszFilePath, int nDataType,
                                       char* pszPassword, BINSTR* pBinPriKey);

/* Deletes a certificate file. The ZR side ignores nDataType. 10004 without pszFilePath. */
QUILLGATE_API int MediaDiskDeleteCert(void* pContext, char* pszFilePath, int nDataType);

/*
 * Deletes a key file after a test of its password. The ZR side ignores nDataType. 10004 without pszFilePath,
 * pszPassword.
 */
QUILLGATE_API int MediaDiskDeletePriKey(void* pContext, char* pszPassword, int nDataType, char* pszFilePath);

/* Reads a certificate of a smart card. 10004 without pszPINNumber. */
QUILLGATE_API int MediaCardReadCert(void* pContext, int nDataType, char* pszPINNumber, BINSTR* pBinCert);

/* Reads and decrypts a key of a smart card. 10004 without pszPINNumber, pszPassword. */
QUILLGATE_API int MediaCardReadPriKey(void* pContext, int nDataType, char* pszPINNumber, char* pszPassword,
                                      BINSTR* pBinPriKey);

/* Writes a certificate to a smart card. 10004 without pszPINNumber, pBinCert. */
QUILLGATE_API int MediaCardWriteCert(void* pContext, int nDataType, char* pszPINNumber, BINSTR* pBinCert);

/*
 * Encrypts a plain key under the password and writes it to a smart card. 10004 without pszPINNumber,
 * pszPassword, pBinPriKey.
 */
QUILLGATE_API int MediaCardWritePriKey(void* pContext, int nDataType, int nSymAlg, char* pszPINNumber,
                                       char* pszPassword, BINSTR* pBinPriKey);

/* Deletes a certificate of a smart card. 10004 without pszPINNumber. */
QUILLGATE_API int MediaCardDeleteCert(void* pContext, int nDataType, char* pszPINNumber);

/* Deletes a key of a smart card after a test of its password. 10004 without pszPINNumber, pszPassword. */
QUILLGATE_API int MediaCareDeletePriKey(void* pContext, int nDataType, char* pszPINNumber, char* pszPassword);

/* Writes the certificate and key of a PFX. ZR side only. 10004 without pszPassword, pBinPFX. */
QUILLGATE_API int MediaWinsWirteCertKey(void* pContext, int nOption, char* pszPassword, BINSTR* pBinPFX);

/* Writes a certificate. ZR side only. 10004 without pBinCert. */
QUILLGATE_API int MediaWinsWirteCert(void* pContext, BINSTR* pBinCert);

/* Sets *nCnt to the number of certificates of an issuer. ZR side only. 10004 without pszIssuerCN. */
QUILLGATE_API int MediaWinsCertCnt(void* pContext, char* pszIssuerCN, int* nCnt);

/*
 * Gives type, issuer and subject name of certificate nIndex. The library is told a size of 8 for the names.
 * ZR side only.
 */
QUILLGATE_API int MediaWinsCertDN(void* pContext, int nIndex, int* nType, char* pszIssuerDN,
                                  char* pszSubjectDN);

/* Reads certificate nIndex. ZR side only. */
QUILLGATE_API int MediaWinsReadCert(void* pContext, int nIndex, BINSTR* pBinCert);

/* Reads key nIndex. ZR side only. */
QUILLGATE_API int MediaWinsReadPrikey(void* pContext, int nIndex, BINSTR* pBinPriKey);

/* Reaches the same library operation as MediaWinsReadPrikey. ZR side only. */
QUILLGATE_API int MediaWinsReadCaPubs(void* pContext, int nIndex, BINSTR* pBinCapubs);

#endif
