#ifndef QUILLGATE_TOOLKIT_MEDIA_H
#define QUILLGATE_TOOLKIT_MEDIA_H

/**
 * @file
 * Toolkit access: certificates and keys on storage media.
 */

#include "quillgate/api.h"
#include "quillgate/binstr.h"

/**
 * @defgroup media Storage media
 * @ingroup toolkit
 *
 * nDataType tells the library which of the certificates or keys of a place is meant; nSymAlg is the library's
 * number of a symmetric algorithm. Paths are the caller's bytes, unchanged.
 *
 * MediaCard... are for smart cards, MediaWins... for the certificate store of Windows: the open toolkit
 * answers 1008, "Not supported on this platform", and leaves the outputs as they were.
 * @{
 */

/**
 * Loads the library that drives a medium.
 *
 * @param pContext context of ZR_Initalize
 * @param pszLibPath path, or a name along the loader's search path
 * @return 0, a code that all share, or 10004 without pszLibPath
 */
QUILLGATE_API int MediaLoad(void* pContext, char* pszLibPath);

/**
 * Unloads it.
 *
 * @param pContext context of ZR_Initalize
 * @return 0 or a code that all share
 */
QUILLGATE_API int MediaUnLoad(void* pContext);

/**
 * Reads a whole file.
 *
 * @param pContext context of ZR_Initalize
 * @param pszFilePath path of the file
 * @param[out] pBinData content of the file
 * @return 0, a code that all share, or 10004 without pszFilePath
 */
QUILLGATE_API int MediaDiskReadFile(void* pContext, char* pszFilePath, BINSTR* pBinData);

/**
 * Writes a whole file.
 *
 * @param pContext context of ZR_Initalize
 * @param pszFilePath path of the file
 * @param pBinData content of the file
 * @return 0, a code that all share, or 10004 without pszFilePath or pBinData (at least 1 byte)
 */
QUILLGATE_API int MediaDiskWriteFile(void* pContext, char* pszFilePath, BINSTR* pBinData);

/**
 * Reads a certificate file. The ZR side ignores nDataType.
 *
 * @param pContext context of ZR_Initalize
 * @param pszFilePath path of the file
 * @param nDataType which certificate or key of the place
 * @param[out] pBinCert certificate, DER
 * @return 0, a code that all share, or 10004 without pszFilePath
 */
QUILLGATE_API int MediaDiskReadCert(void* pContext, char* pszFilePath, int nDataType, BINSTR* pBinCert);

/**
 * Reads and decrypts a key file. The ZR side ignores nDataType.
 *
 * @param pContext context of ZR_Initalize
 * @param pszFilePath path of the file
 * @param pszPassword password
 * @param nDataType which certificate or key of the place
 * @param[out] pBinPriKey private key, plain PKCS#8 DER; a secret
 * @return 0, a code that all share, or 10004 without pszFilePath or pszPassword
 */
QUILLGATE_API int MediaDiskReadPriKey(void* pContext, char* pszFilePath, char* pszPassword, int nDataType,
                                      BINSTR* pBinPriKey);

/**
 * Writes a certificate file. The ZR side ignores nDataType.
 *
 * @param pContext context of ZR_Initalize
 * @param pszFilePath path of the file
 * @param nDataType which certificate or key of the place
 * @param pBinCert certificate, DER
 * @return 0, a code that all share, or 10004 without pszFilePath or pBinCert
 */
QUILLGATE_API int MediaDiskWriteCert(void* pContext, char* pszFilePath, int nDataType, BINSTR* pBinCert);

/**
 * Encrypts a plain key under the password and writes its file. The ZR side ignores nDataType.
 *
 * @param pContext context of ZR_Initalize
 * @param nSymAlg QG_CIPHER_...
 * @param pszFilePath path of the file
 * @param nDataType which certificate or key of the place
 * @param pszPassword password
 * @param pBinPriKey private key, plain PKCS#8 DER
 * @return 0, a code that all share, or 10004 without pszFilePath, pszPassword or pBinPriKey
 */
QUILLGATE_API int MediaDiskWritePriKey(void* pContext, int nSymAlg, char* pszFilePath, int nDataType,
                                       char* pszPassword, BINSTR* pBinPriKey);

/**
 * Deletes a certificate file. The ZR side ignores nDataType.
 *
 * @param pContext context of ZR_Initalize
 * @param pszFilePath path of the file
 * @param nDataType which certificate or key of the place
 * @return 0, a code that all share, or 10004 without pszFilePath
 */
QUILLGATE_API int MediaDiskDeleteCert(void* pContext, char* pszFilePath, int nDataType);

/**
 * Deletes a key file after a test of its password. The ZR side ignores nDataType.
 *
 * @param pContext context of ZR_Initalize
 * @param pszPassword password
 * @param nDataType which certificate or key of the place
 * @param pszFilePath path of the file
 * @return 0, a code that all share, or 10004 without pszFilePath or pszPassword
 */
QUILLGATE_API int MediaDiskDeletePriKey(void* pContext, char* pszPassword, int nDataType, char* pszFilePath);

/**
 * Reads a certificate of a smart card.
 *
 * @param pContext context of ZR_Initalize
 * @param nDataType which certificate or key of the place
 * @param pszPINNumber PIN of the card
 * @param[out] pBinCert certificate, DER
 * @return 0, a code that all share, or 10004 without pszPINNumber
 */
QUILLGATE_API int MediaCardReadCert(void* pContext, int nDataType, char* pszPINNumber, BINSTR* pBinCert);

/**
 * Reads and decrypts a key of a smart card.
 *
 * @param pContext context of ZR_Initalize
 * @param nDataType which certificate or key of the place
 * @param pszPINNumber PIN of the card
 * @param pszPassword password
 * @param[out] pBinPriKey private key, plain PKCS#8 DER; a secret
 * @return 0, a code that all share, or 10004 without pszPINNumber or pszPassword
 */
QUILLGATE_API int MediaCardReadPriKey(void* pContext, int nDataType, char* pszPINNumber, char* pszPassword,
                                      BINSTR* pBinPriKey);

/**
 * Writes a certificate to a smart card.
 *
 * @param pContext context of ZR_Initalize
 * @param nDataType which certificate or key of the place
 * @param pszPINNumber PIN of the card
 * @param pBinCert certificate, DER
 * @return 0, a code that all share, or 10004 without pszPINNumber or pBinCert
 */
QUILLGATE_API int MediaCardWriteCert(void* pContext, int nDataType, char* pszPINNumber, BINSTR* pBinCert);

/**
 * Encrypts a plain key under the password and writes it to a smart card.
 *
 * @param pContext context of ZR_Initalize
 * @param nDataType which certificate or key of the place
 * @param nSymAlg QG_CIPHER_...
 * @param pszPINNumber PIN of the card
 * @param pszPassword password
 * @param pBinPriKey private key, plain PKCS#8 DER
 * @return 0, a code that all share, or 10004 without pszPINNumber, pszPassword or pBinPriKey
 */
QUILLGATE_API int MediaCardWritePriKey(void* pContext, int nDataType, int nSymAlg, char* pszPINNumber,
                                       char* pszPassword, BINSTR* pBinPriKey);

/**
 * Deletes a certificate of a smart card.
 *
 * @param pContext context of ZR_Initalize
 * @param nDataType which certificate or key of the place
 * @param pszPINNumber PIN of the card
 * @return 0, a code that all share, or 10004 without pszPINNumber
 */
QUILLGATE_API int MediaCardDeleteCert(void* pContext, int nDataType, char* pszPINNumber);

/**
 * Deletes a key of a smart card after a test of its password.
 *
 * @param pContext context of ZR_Initalize
 * @param nDataType which certificate or key of the place
 * @param pszPINNumber PIN of the card
 * @param pszPassword password
 * @return 0, a code that all share, or 10004 without pszPINNumber or pszPassword
 */
QUILLGATE_API int MediaCareDeletePriKey(void* pContext, int nDataType, char* pszPINNumber, char* pszPassword);

/**
 * Writes the certificate and key of a PFX. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param nOption option of the library
 * @param pszPassword password
 * @param pBinPFX PKCS#12 container, DER
 * @return 0, a code that all share, or 10004 without pszPassword or pBinPFX
 */
QUILLGATE_API int MediaWinsWirteCertKey(void* pContext, int nOption, char* pszPassword, BINSTR* pBinPFX);

/**
 * Writes a certificate. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCert certificate, DER
 * @return 0, a code that all share, or 10004 without pBinCert
 */
QUILLGATE_API int MediaWinsWirteCert(void* pContext, BINSTR* pBinCert);

/**
 * Sets *nCnt to the number of certificates of an issuer. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pszIssuerCN common name of the issuer
 * @param[out] nCnt number of certificates
 * @return 0, a code that all share, or 10004 without pszIssuerCN
 */
QUILLGATE_API int MediaWinsCertCnt(void* pContext, char* pszIssuerCN, int* nCnt);

/**
 * Gives type, issuer and subject name of certificate nIndex. The library is told a size of 8 for the names.
 * ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param nIndex position, from 0
 * @param[out] nType type of the certificate
 * @param[out] pszIssuerDN name of the issuer
 * @param[out] pszSubjectDN name of the subject
 * @return 0 or a code that all share
 */
QUILLGATE_API int MediaWinsCertDN(void* pContext, int nIndex, int* nType, char* pszIssuerDN,
                                  char* pszSubjectDN);

/**
 * Reads certificate nIndex. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param nIndex position, from 0
 * @param[out] pBinCert certificate, DER
 * @return 0 or a code that all share
 */
QUILLGATE_API int MediaWinsReadCert(void* pContext, int nIndex, BINSTR* pBinCert);

/**
 * Reads key nIndex. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param nIndex position, from 0
 * @param[out] pBinPriKey private key; a secret
 * @return 0 or a code that all share
 */
QUILLGATE_API int MediaWinsReadPrikey(void* pContext, int nIndex, BINSTR* pBinPriKey);

/**
 * Reaches the same library operation as MediaWinsReadPrikey. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param nIndex position, from 0
 * @param[out] pBinCapubs what MediaWinsReadPrikey gives
 * @return 0 or a code that all share
 */
QUILLGATE_API int MediaWinsReadCaPubs(void* pContext, int nIndex, BINSTR* pBinCapubs);

/** @} */

#endif
