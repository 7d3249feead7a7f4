#ifndef QUILLGATE_TOOLKIT_MESSAGE_H
#define QUILLGATE_TOOLKIT_MESSAGE_H

/*
 * Toolkit access: CMS messages and PKCS#12 containers.
 *
 * pszSignTime is a time text: input of the functions that sign, output of those that verify (give them 50
 * bytes). nOption, nSymAlg: numbers of the library.
 */

#include "quillgate/api.h"
#include "quillgate/binstr.h"

/* --- CMS ------------------------------------------------------------------------------------------------ */

/*
 * Signs data into a message. The GPKI side ignores nOption. 10004 without pBinCert, pBinPriKey, pszSignTime;
 * 10004 without pBinTBSData on the GPKI side.
 */
QUILLGATE_API int CMSMakeSignedData(void* pContext, int nOption, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                    BINSTR* pBinTBSData, char* pszSignTime, BINSTR* pBinSignedData);

/*
 * Adds a signer to a message. The GPKI side ignores nOption. 10004 without pBinCert, pBinPriKey,
 * pszSignTime; 10004 without pBinTBSData on the GPKI side.
 */
QUILLGATE_API int CMSMakeSignedDataWithAddSigner(void* pContext, int nOption, BINSTR* pBinCert,
                                                 BINSTR* pBinPriKey, BINSTR* pBinTBSData, char* pszSignTime,
                                                 BINSTR* pBinSignedData);

/*
 * Verifies a message, gives its content and sets *nSignerCnt. The GPKI side ignores nOption. 10004 without
 * pBinSignedData.
 */
QUILLGATE_API int CMSProcessSignedData(void* pContext, int nOption, BINSTR* pBinSignedData, BINSTR* pBinData,
                                       int* nSignerCnt);

/* Gives certificate and signing time of signer nIndex of the last CMSProcessSignedData. */
QUILLGATE_API int CMSGetSignerCert(void* pContext, int nIndex, BINSTR* pBinSignerCert, char* pszSignTime);

/*
 * Makes the bytes to be signed elsewhere, for CMSComposeSignedData. ZR side only. 10004 without pBinCert,
 * pBinData, pszSignTime.
 */
QUILLGATE_API int CMSMakekTBSData(void* pContext, int nOption, BINSTR* pBinCert, BINSTR* pBinData,
                                  char* pszSignTime, BINSTR* pBinTBSData);

/* Puts a signature made elsewhere into a message. ZR side only. 10004 without pBinSignature. */
QUILLGATE_API int CMSComposeSignedData(void* pContext, BINSTR* pBinSignature, BINSTR* pBinSignedData);

/* Sets an option for the messages that follow. ZR side only. */
QUILLGATE_API int CMSSetOption(void* pContext, int nOption);

/*
 * Signs a file into a message file without the content. 10004 without pBinCert, pBinPriKey,
 * pBinTBSDataFilePath, pszSignTime, pszSignedDataFilePath.
 */
QUILLGATE_API int CMSMakeSignedDataFile(void* pContext, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                        char* pBinTBSDataFilePath, char* pszSignTime,
                                        char* pszSignedDataFilePath);

/*
 * Signs a file into a message file with the content. 10004 without pBinCert, pBinPriKey,
 * pBinTBSDataFilePath, pszSignTime, pszSignedDataFilePath.
 */
QUILLGATE_API int CMSMakeSignedDataFileWithContent(void* pContext, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                                   char* pBinTBSDataFilePath, char* pszSignTime,
                                                   char* pszSignedDataFilePath);

/*
 * Verifies a message file without content against the file of the content. 10004 without
 * pszSignedDataFilePath, pszTBSDataFilePath.
 */
QUILLGATE_API int CMSProcessSignedDataFile(void* pContext, char* pszSignedDataFilePath,
                                           char* pszTBSDataFilePath, BINSTR* pBinSignerCert,
                                           char* pszSignTime);

/*
 * Verifies a message file; the ZR side makes no difference to CMSProcessSignedDataFile. 10004 without
 * pszSignedDataFilePath, pszTBSDataFilePath.
 */
QUILLGATE_API int CMSProcessSignedDataFileWithContent(void* pContext, char* pszSignedDataFilePath,
                                                      char* pszTBSDataFilePath, BINSTR* pBinSignerCert,
                                                      char* pszSignTime);

/* Gives the CA certificates of the message. GPKI side only. */
QUILLGATE_API int CMSGetSignerCaPubs(void* pContext, BINSTR* pBinCertCaPubs);

/* Gives the bytes of a signer to be time stamped. GPKI side only. */
QUILLGATE_API int CMSGetTBTData(void* pContext, int nSignerIndex, BINSTR* pBinTBTData);

/* Reads the time stamp of a signer. GPKI side only. */
QUILLGATE_API int CMSGetTimeStampToken1(void* pContext, int nSignerIndex, BINSTR* pBinTST);

/*
 * Writes the time stamp pBinTST of a signer into pBinSignedData, giving pBinSignedDataWithTST, whatever its
 * name says. GPKI side only. 10004 without pBinSignedData, pBinTST.
 */
QUILLGATE_API int CMSGetTimeStampToken2(void* pContext, BINSTR* pBinSignedData, int nSignerIndex,
                                        BINSTR* pBinTST, BINSTR* pBinSignedDataWithTST);

/* Encrypts data for a recipient. The GPKI side ignores nOption. 10004 without pBinCert, pBinTBEData. */
QUILLGATE_API int CMSMakeEnvelopedData(void* pContext, int nOption, BINSTR* pBinCert, BINSTR* pBinTBEData,
                                       int nSymAlg, BINSTR* pBinEnvelopData);

/*
 * Encrypts data for the recipients in the list pBinCert. The GPKI side ignores nOption. 10004 without
 * pBinCert, pBinTBEData.
 */
QUILLGATE_API int CMSMakeEnvDataWithMultiRec(void* pContext, int nOption, BINSTR* pBinCert,
                                             BINSTR* pBinTBEData, int nSymAlg, BINSTR* pBinEnvelopData);

/* Decrypts an enveloped message. 10004 without pBinCert, pBinPriKey, pBinEnvData. */
QUILLGATE_API int CMSProcessEnvelopedData(void* pContext, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                          BINSTR* pBinEnvData, BINSTR* pBinData);

/*
 * Encrypts a file; the envelope and the encrypted content go to two files. The GPKI side ignores
 * pszEncDataFilePath. 10004 without pBinCert, pszTBEDataFilePath, pszEnvDataFilePath, pszEncDataFilePath.
 */
QUILLGATE_API int CMSMakeEnvelopedDataFile(void* pContext, BINSTR* pBinCert, char* pszTBEDataFilePath,
                                           int nSymAlg, char* pszEnvDataFilePath, char* pszEncDataFilePath);

/*
 * Decrypts an envelope and its content file. 10004 without pBinCert, pBinPriKey, pszEnvDataFilePath,
 * pszEncDataFilePath, pszDataFilePath.
 */
QUILLGATE_API int CMSProcessEnvelopedDataFile(void* pContext, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                              char* pszEnvDataFilePath, char* pszEncDataFilePath,
                                              char* pszDataFilePath);

/* Encrypts a file into one message file. 10004 without pBinCert, pszTBEDataFilePath, pszEnvDataFilePath. */
QUILLGATE_API int CMSMakeEnveDataFileWithContent(void* pContext, BINSTR* pBinCert, char* pszTBEDataFilePath,
                                                 int nSymAlg, char* pszEnvDataFilePath);

/*
 * Decrypts a message file with its content. 10004 without pBinCert, pBinPriKey, pszEnvDataFilePath,
 * pszDataFilePath.
 */
QUILLGATE_API int CMSProcessEnvDataFileWithContent(void* pContext, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                                   char* pszEnvDataFilePath, char* pszDataFilePath);

/*
 * Signs data and encrypts it for a recipient. The GPKI side ignores nOption. 10004 without pBinCert,
 * pBinPriKey, pBinRecCert, pBinData.
 */
QUILLGATE_API int CMSMakeSignedAndEnvData(void* pContext, int nOption, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                          BINSTR* pBinRecCert, BINSTR* pBinData, int nSymAlg,
                                          BINSTR* pBinSignedAndEnvData);

/*
 * Decrypts and verifies such a message. The GPKI side ignores nOption. 10004 without pBinCert, pBinPriKey,
 * pBinSignedAndEnvData.
 */
QUILLGATE_API int CMSProcessSignedAndEnvData(void* pContext, int nOption, BINSTR* pBinCert,
                                             BINSTR* pBinPriKey, BINSTR* pBinSignedAndEnvData,
                                             BINSTR* pBinData, BINSTR* pBinSignerCert);

/* Encrypts data. The GPKI side uses pBinTBEData alone of the inputs. 10004 without pBinTBEData. */
QUILLGATE_API int CMSMakeEncryptedData(void* pContext, int nOption, BINSTR* pBinCert, BINSTR* pBinTBEData,
                                       int nSymAlg, BINSTR* pBinEncrypedData);

/* Decrypts data with a symmetric key. 10004 without pBinKey, pBinEncrypedData. */
QUILLGATE_API int CMSProcessEncryptedData(void* pContext, BINSTR* pBinKey, BINSTR* pBinEncrypedData,
                                          BINSTR* pBinData);

/* --- PKCS#12 -------------------------------------------------------------------------------------------- */

/*
 * Packs a pair under a password. The ZR side ignores the key-management pair, the GPKI side nOption. 10004
 * without pszPassword, pBinSignCert, pBinSignKey; 10004 without pBinKmCert, pBinKmKey on the GPKI side.
 */
QUILLGATE_API int PFXExport(void* pContext, int nOption, char* pszPassword, BINSTR* pBinSignCert,
                            BINSTR* pBinSignKey, BINSTR* pBinKmCert, BINSTR* pBinKmKey, BINSTR* pBinPFX);

/*
 * Packs a pair and CA certificates. nOption is ignored. ZR side only. 10004 without pszPassword,
 * pBinSignCert, pBinSignKey, pBinCaPubs.
 */
QUILLGATE_API int PFXExport2(void* pContext, int nOption, char* pszPassword, BINSTR* pBinSignCert,
                             BINSTR* pBinSignKey, BINSTR* pBinCaPubs, BINSTR* pBinPFX);

/*
 * Unpacks a PFX. The ZR side fills pBinCaPubs and no key-management pair, the GPKI side the other way round.
 * 10004 without pszPassword, pBinPFX.
 */
QUILLGATE_API int PFXImport(void* pContext, char* pszPassword, BINSTR* pBinPFX, BINSTR* pBinSignCert,
                            BINSTR* pBinSignKey, BINSTR* pBinKmCert, BINSTR* pBinKmKey, BINSTR* pBinCaPubs);

/*
 * Packs the pairs of two lists, see UTILAddObject. ZR side only. 10004 without pszPassword, pBinCerts,
 * pBinKeys.
 */
QUILLGATE_API int PFXExportMultiPair(void* pContext, int nOption, char* pszPassword, BINSTR* pBinCerts,
                                     BINSTR* pBinKeys, BINSTR* pBinPFX);

/*
 * The same with CA certificates. nOption is ignored. ZR side only. 10004 without pszPassword, pBinCerts,
 * pBinKeys, pBinCaPubs.
 */
QUILLGATE_API int PFXExportMultiPair2(void* pContext, int nOption, char* pszPassword, BINSTR* pBinCerts,
                                      BINSTR* pBinKeys, BINSTR* pBinCaPubs, BINSTR* pBinPFX);

/*
 * Unpacks a PFX into lists. ZR side only. 10004 without pszPassword, pBinCerts, pBinKeys, pBinCaPubs,
 * pBinPFX.
 */
QUILLGATE_API int PFXImportMultiPair(void* pContext, BINSTR* pBinPFX, char* pszPassword, BINSTR* pBinCerts,
                                     BINSTR* pBinKeys, BINSTR* pBinCaPubs);

/*
 * Unpacks a PFX into lists, with an option. ZR side only. 10004 without pszPassword, pBinCerts, pBinKeys,
 * pBinCaPubs, pBinPFX.
 */
QUILLGATE_API int PFXImportMultiPair2(void* pContext, int nOption, BINSTR* pBinPFX, char* pszPassword,
                                      BINSTR* pBinCerts, BINSTR* pBinKeys, BINSTR* pBinCaPubs);

#endif
