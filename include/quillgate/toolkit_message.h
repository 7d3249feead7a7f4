#ifndef QUILLGATE_TOOLKIT_MESSAGE_H
#define QUILLGATE_TOOLKIT_MESSAGE_H

/**
 * @file
 * Toolkit access: CMS messages and PKCS#12 containers.
 *
 * pszSignTime is a time text: input of the functions that sign, output of those that verify (give them 50
 * bytes). nOption, nSymAlg: numbers of the library.
 *
 * Messages are those of CMS (RFC 5652). Numbers of options and algorithms are the library's: those of the
 * open toolkit have names in quillgate/message_options.h and quillgate/algorithms.h, and "Open toolkit:"
 * below says what it does. Its codes and all that it reads and writes are in docs/toolkit.md, "Messages". A
 * failure leaves every output as it was, a file too. What comes in a BINSTR is released with
 * ZR_BINSTR_Delete, which wipes it.
 */

#include "quillgate/api.h"
#include "quillgate/binstr.h"
#include "quillgate/message_options.h"

/**
 * @defgroup cms CMS messages
 * @ingroup toolkit
 * @{
 */

/**
 * Signs data into a message. The GPKI side ignores nOption. Open toolkit: the hash is that of ZR_SetHashAlg;
 * pszSignTime may be empty, which is now.
 *
 * @param pContext context of ZR_Initalize
 * @param nOption QG_CMS_...
 * @param pBinCert certificate, DER
 * @param pBinPriKey private key, plain PKCS#8 DER
 * @param pBinTBSData data to be signed
 * @param pszSignTime time of signing, YYYY-MM-DD hh:mm:ss, local
 * @param[out] pBinSignedData signed message, DER
 * @return 0, a code that all share, or 10004 without pBinCert, pBinPriKey or pszSignTime; on the GPKI side
 *         10004 without pBinTBSData
 */
QUILLGATE_API int CMSMakeSignedData(void* pContext, int nOption, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                    BINSTR* pBinTBSData, char* pszSignTime, BINSTR* pBinSignedData);

/**
 * Adds a signer to a message. The GPKI side ignores nOption. Open toolkit: a message that carries its content
 * is verified first; pszSignTime may be empty, which is now.
 *
 * @param pContext context of ZR_Initalize
 * @param nOption QG_CMS_...
 * @param pBinCert certificate, DER
 * @param pBinPriKey private key, plain PKCS#8 DER
 * @param pBinTBSData signed message that gets a further signer, DER
 * @param pszSignTime time of signing, YYYY-MM-DD hh:mm:ss, local
 * @param[out] pBinSignedData message with the further signer, DER
 * @return 0, a code that all share, or 10004 without pBinCert, pBinPriKey or pszSignTime; on the GPKI side
 *         10004 without pBinTBSData
 */
QUILLGATE_API int CMSMakeSignedDataWithAddSigner(void* pContext, int nOption, BINSTR* pBinCert,
                                                 BINSTR* pBinPriKey, BINSTR* pBinTBSData, char* pszSignTime,
                                                 BINSTR* pBinSignedData);

/**
 * Verifies a message, gives its content and sets *nSignerCnt. The GPKI side ignores nOption. Open toolkit: a
 * message that does not carry its content is held against what pBinData has at the call. Every signer must be
 * right.
 *
 * @param pContext context of ZR_Initalize
 * @param nOption QG_CMS_...
 * @param pBinSignedData signed message, DER
 * @param[out] pBinData content of the message
 * @param[out] nSignerCnt number of signers
 * @return 0, a code that all share, or 10004 without pBinSignedData
 */
QUILLGATE_API int CMSProcessSignedData(void* pContext, int nOption, BINSTR* pBinSignedData, BINSTR* pBinData,
                                       int* nSignerCnt);

/**
 * Gives certificate and signing time of signer nIndex of the last CMSProcessSignedData. Open toolkit: nIndex
 * counts from 0; a null output is passed over; an empty time for a message that tells none.
 *
 * @param pContext context of ZR_Initalize
 * @param nIndex position, from 0
 * @param[out] pBinSignerCert certificate of the signer, DER
 * @param[out] pszSignTime time of signing, at least 50 bytes
 * @return 0 or a code that all share
 */
QUILLGATE_API int CMSGetSignerCert(void* pContext, int nIndex, BINSTR* pBinSignerCert, char* pszSignTime);

/**
 * Makes the bytes to be signed elsewhere, for CMSComposeSignedData. ZR side only. Open toolkit: what is to be
 * signed with the hash of ZR_SetHashAlg.
 *
 * @param pContext context of ZR_Initalize
 * @param nOption QG_CMS_...
 * @param pBinCert certificate, DER
 * @param pBinData data
 * @param pszSignTime time of signing, YYYY-MM-DD hh:mm:ss, local
 * @param[out] pBinTBSData bytes to be signed
 * @return 0, a code that all share, or 10004 without pBinCert, pBinData or pszSignTime
 */
QUILLGATE_API int CMSMakekTBSData(void* pContext, int nOption, BINSTR* pBinCert, BINSTR* pBinData,
                                  char* pszSignTime, BINSTR* pBinTBSData);

/**
 * Puts a signature made elsewhere into a message. ZR side only. Open toolkit: a signature that is not right
 * is 5200 and can be given again.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinSignature signature value
 * @param[out] pBinSignedData signed message, DER
 * @return 0, a code that all share, or 10004 without pBinSignature
 */
QUILLGATE_API int CMSComposeSignedData(void* pContext, BINSTR* pBinSignature, BINSTR* pBinSignedData);

/**
 * Sets an option for the messages that follow. ZR side only. Open toolkit: QG_CMS_... bits, besides the
 * nOption of each call.
 *
 * @param pContext context of ZR_Initalize
 * @param nOption QG_CMS_...
 * @return 0 or a code that all share
 */
QUILLGATE_API int CMSSetOption(void* pContext, int nOption);

/**
 * Signs a file into a message file without the content.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCert certificate, DER
 * @param pBinPriKey private key, plain PKCS#8 DER
 * @param pBinTBSDataFilePath path of the file to be signed
 * @param pszSignTime time of signing, YYYY-MM-DD hh:mm:ss, local
 * @param pszSignedDataFilePath path of the message file
 * @return 0, a code that all share, or 10004 without pBinCert, pBinPriKey, pBinTBSDataFilePath, pszSignTime
 *         or pszSignedDataFilePath
 */
QUILLGATE_API int CMSMakeSignedDataFile(void* pContext, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                        char* pBinTBSDataFilePath, char* pszSignTime,
                                        char* pszSignedDataFilePath);

/**
 * Signs a file into a message file with the content.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCert certificate, DER
 * @param pBinPriKey private key, plain PKCS#8 DER
 * @param pBinTBSDataFilePath path of the file to be signed
 * @param pszSignTime time of signing, YYYY-MM-DD hh:mm:ss, local
 * @param pszSignedDataFilePath path of the message file
 * @return 0, a code that all share, or 10004 without pBinCert, pBinPriKey, pBinTBSDataFilePath, pszSignTime
 *         or pszSignedDataFilePath
 */
QUILLGATE_API int CMSMakeSignedDataFileWithContent(void* pContext, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                                   char* pBinTBSDataFilePath, char* pszSignTime,
                                                   char* pszSignedDataFilePath);

/**
 * Verifies a message file without content against the file of the content. Open toolkit: on the ZR side a
 * message that carries its content writes it to pszTBSDataFilePath.
 *
 * @param pContext context of ZR_Initalize
 * @param pszSignedDataFilePath path of the message file
 * @param pszTBSDataFilePath path of the file that was signed
 * @param[out] pBinSignerCert certificate of the signer, DER
 * @param[out] pszSignTime time of signing, at least 50 bytes
 * @return 0, a code that all share, or 10004 without pszSignedDataFilePath or pszTBSDataFilePath
 */
QUILLGATE_API int CMSProcessSignedDataFile(void* pContext, char* pszSignedDataFilePath,
                                           char* pszTBSDataFilePath, BINSTR* pBinSignerCert,
                                           char* pszSignTime);

/**
 * Verifies a message file; the ZR side makes no difference to CMSProcessSignedDataFile.
 *
 * @param pContext context of ZR_Initalize
 * @param pszSignedDataFilePath path of the message file
 * @param pszTBSDataFilePath path of the file for the content
 * @param[out] pBinSignerCert certificate of the signer, DER
 * @param[out] pszSignTime time of signing, at least 50 bytes
 * @return 0, a code that all share, or 10004 without pszSignedDataFilePath or pszTBSDataFilePath
 */
QUILLGATE_API int CMSProcessSignedDataFileWithContent(void* pContext, char* pszSignedDataFilePath,
                                                      char* pszTBSDataFilePath, BINSTR* pBinSignerCert,
                                                      char* pszSignTime);

/**
 * Gives the CA certificates of the message. GPKI side only.
 *
 * @param pContext context of ZR_Initalize
 * @param[out] pBinCertCaPubs list of CA certificates
 * @return 0 or a code that all share
 */
QUILLGATE_API int CMSGetSignerCaPubs(void* pContext, BINSTR* pBinCertCaPubs);

/**
 * Gives the bytes of a signer to be time stamped. GPKI side only.
 *
 * @param pContext context of ZR_Initalize
 * @param nSignerIndex signer, from 0
 * @param[out] pBinTBTData bytes to be time stamped
 * @return 0 or a code that all share
 */
QUILLGATE_API int CMSGetTBTData(void* pContext, int nSignerIndex, BINSTR* pBinTBTData);

/**
 * Reads the time stamp of a signer. GPKI side only.
 *
 * @param pContext context of ZR_Initalize
 * @param nSignerIndex signer, from 0
 * @param[out] pBinTST time stamp token, DER
 * @return 0 or a code that all share
 */
QUILLGATE_API int CMSGetTimeStampToken1(void* pContext, int nSignerIndex, BINSTR* pBinTST);

/**
 * Writes the time stamp pBinTST of a signer into pBinSignedData, giving pBinSignedDataWithTST, whatever its
 * name says. GPKI side only. Open toolkit: the token must be over that signer's signature.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinSignedData signed message, DER
 * @param nSignerIndex signer, from 0
 * @param pBinTST time stamp token, DER
 * @param[out] pBinSignedDataWithTST message with the token, DER
 * @return 0, a code that all share, or 10004 without pBinSignedData or pBinTST
 */
QUILLGATE_API int CMSGetTimeStampToken2(void* pContext, BINSTR* pBinSignedData, int nSignerIndex,
                                        BINSTR* pBinTST, BINSTR* pBinSignedDataWithTST);

/**
 * Encrypts data for a recipient. The GPKI side ignores nOption.
 *
 * @param pContext context of ZR_Initalize
 * @param nOption QG_CMS_...
 * @param pBinCert certificate of the recipient, DER
 * @param pBinTBEData data to be encrypted
 * @param nSymAlg QG_CIPHER_...
 * @param[out] pBinEnvelopData enveloped message, DER
 * @return 0, a code that all share, or 10004 without pBinCert or pBinTBEData
 */
QUILLGATE_API int CMSMakeEnvelopedData(void* pContext, int nOption, BINSTR* pBinCert, BINSTR* pBinTBEData,
                                       int nSymAlg, BINSTR* pBinEnvelopData);

/**
 * Encrypts data for the recipients in the list pBinCert. The GPKI side ignores nOption. Open toolkit:
 * certificates, DER, one behind the other; lists of UTILAddObject and CertAddCert are that.
 *
 * @param pContext context of ZR_Initalize
 * @param nOption QG_CMS_...
 * @param pBinCert list of the recipients' certificates
 * @param pBinTBEData data to be encrypted
 * @param nSymAlg QG_CIPHER_...
 * @param[out] pBinEnvelopData enveloped message, DER
 * @return 0, a code that all share, or 10004 without pBinCert or pBinTBEData
 */
QUILLGATE_API int CMSMakeEnvDataWithMultiRec(void* pContext, int nOption, BINSTR* pBinCert,
                                             BINSTR* pBinTBEData, int nSymAlg, BINSTR* pBinEnvelopData);

/**
 * Decrypts an enveloped message.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCert certificate of the recipient, DER
 * @param pBinPriKey private key, plain PKCS#8 DER
 * @param pBinEnvData enveloped message, DER
 * @param[out] pBinData data in the clear
 * @return 0, a code that all share, or 10004 without pBinCert, pBinPriKey or pBinEnvData
 */
QUILLGATE_API int CMSProcessEnvelopedData(void* pContext, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                          BINSTR* pBinEnvData, BINSTR* pBinData);

/**
 * Encrypts a file; the envelope and the encrypted content go to two files. The GPKI side ignores
 * pszEncDataFilePath.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCert certificate of the recipient, DER
 * @param pszTBEDataFilePath path of the file to be encrypted
 * @param nSymAlg QG_CIPHER_...
 * @param pszEnvDataFilePath path of the message file
 * @param pszEncDataFilePath path of the file of the encrypted content
 * @return 0, a code that all share, or 10004 without pBinCert, pszTBEDataFilePath, pszEnvDataFilePath or
 *         pszEncDataFilePath
 */
QUILLGATE_API int CMSMakeEnvelopedDataFile(void* pContext, BINSTR* pBinCert, char* pszTBEDataFilePath,
                                           int nSymAlg, char* pszEnvDataFilePath, char* pszEncDataFilePath);

/**
 * Decrypts an envelope and its content file.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCert certificate of the recipient, DER
 * @param pBinPriKey private key, plain PKCS#8 DER
 * @param pszEnvDataFilePath path of the message file
 * @param pszEncDataFilePath path of the file of the encrypted content
 * @param pszDataFilePath path of the file for the data in the clear
 * @return 0, a code that all share, or 10004 without pBinCert, pBinPriKey, pszEnvDataFilePath,
 *         pszEncDataFilePath or pszDataFilePath
 */
QUILLGATE_API int CMSProcessEnvelopedDataFile(void* pContext, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                              char* pszEnvDataFilePath, char* pszEncDataFilePath,
                                              char* pszDataFilePath);

/**
 * Encrypts a file into one message file.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCert certificate of the recipient, DER
 * @param pszTBEDataFilePath path of the file to be encrypted
 * @param nSymAlg QG_CIPHER_...
 * @param pszEnvDataFilePath path of the message file
 * @return 0, a code that all share, or 10004 without pBinCert, pszTBEDataFilePath or pszEnvDataFilePath
 */
QUILLGATE_API int CMSMakeEnveDataFileWithContent(void* pContext, BINSTR* pBinCert, char* pszTBEDataFilePath,
                                                 int nSymAlg, char* pszEnvDataFilePath);

/**
 * Decrypts a message file with its content.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCert certificate of the recipient, DER
 * @param pBinPriKey private key, plain PKCS#8 DER
 * @param pszEnvDataFilePath path of the message file
 * @param pszDataFilePath path of the file for the data in the clear
 * @return 0, a code that all share, or 10004 without pBinCert, pBinPriKey, pszEnvDataFilePath or
 *         pszDataFilePath
 */
QUILLGATE_API int CMSProcessEnvDataFileWithContent(void* pContext, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                                   char* pszEnvDataFilePath, char* pszDataFilePath);

/**
 * Signs data and encrypts it for a recipient. The GPKI side ignores nOption.
 *
 * @param pContext context of ZR_Initalize
 * @param nOption QG_CMS_...
 * @param pBinCert certificate of the signer, DER
 * @param pBinPriKey private key, plain PKCS#8 DER
 * @param pBinRecCert certificate of the recipient, DER
 * @param pBinData data
 * @param nSymAlg QG_CIPHER_...
 * @param[out] pBinSignedAndEnvData signed and enveloped message, DER
 * @return 0, a code that all share, or 10004 without pBinCert, pBinPriKey, pBinRecCert or pBinData
 */
QUILLGATE_API int CMSMakeSignedAndEnvData(void* pContext, int nOption, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                          BINSTR* pBinRecCert, BINSTR* pBinData, int nSymAlg,
                                          BINSTR* pBinSignedAndEnvData);

/**
 * Decrypts and verifies such a message. The GPKI side ignores nOption.
 *
 * @param pContext context of ZR_Initalize
 * @param nOption QG_CMS_...
 * @param pBinCert certificate of the recipient, DER
 * @param pBinPriKey private key, plain PKCS#8 DER
 * @param pBinSignedAndEnvData signed and enveloped message, DER
 * @param[out] pBinData data in the clear
 * @param[out] pBinSignerCert certificate of the signer, DER
 * @return 0, a code that all share, or 10004 without pBinCert, pBinPriKey or pBinSignedAndEnvData
 */
QUILLGATE_API int CMSProcessSignedAndEnvData(void* pContext, int nOption, BINSTR* pBinCert,
                                             BINSTR* pBinPriKey, BINSTR* pBinSignedAndEnvData,
                                             BINSTR* pBinData, BINSTR* pBinSignerCert);

/**
 * Encrypts data. The GPKI side uses pBinTBEData alone of the inputs. Open toolkit: under the key of
 * CRYPTSetKeyAndIV or CRYPTGenKeyAndIV; on the ZR side with pBinCert an envelope for it instead.
 *
 * @param pContext context of ZR_Initalize
 * @param nOption QG_CMS_...
 * @param pBinCert certificate, DER
 * @param pBinTBEData data to be encrypted
 * @param nSymAlg QG_CIPHER_...
 * @param[out] pBinEncrypedData encrypted message, DER
 * @return 0, a code that all share, or 10004 without pBinTBEData
 */
QUILLGATE_API int CMSMakeEncryptedData(void* pContext, int nOption, BINSTR* pBinCert, BINSTR* pBinTBEData,
                                       int nSymAlg, BINSTR* pBinEncrypedData);

/**
 * Decrypts data with a symmetric key.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinKey symmetric key
 * @param pBinEncrypedData encrypted message, DER
 * @param[out] pBinData data in the clear
 * @return 0, a code that all share, or 10004 without pBinKey or pBinEncrypedData
 */
QUILLGATE_API int CMSProcessEncryptedData(void* pContext, BINSTR* pBinKey, BINSTR* pBinEncrypedData,
                                          BINSTR* pBinData);

/** @} */

/**
 * @defgroup pkcs12 PKCS#12 containers
 * @ingroup toolkit
 * @{
 */

/**
 * Packs a pair under a password. The ZR side ignores the key-management pair, the GPKI side nOption.
 *
 * @param pContext context of ZR_Initalize
 * @param nOption option of the library
 * @param pszPassword password
 * @param pBinSignCert signing certificate, DER
 * @param pBinSignKey signing key, plain PKCS#8 DER
 * @param pBinKmCert key-management certificate, DER
 * @param pBinKmKey key-management key, plain PKCS#8 DER
 * @param[out] pBinPFX PKCS#12 container, DER
 * @return 0, a code that all share, or 10004 without pszPassword, pBinSignCert or pBinSignKey; on the GPKI
 *         side 10004 without pBinKmCert or pBinKmKey
 */
QUILLGATE_API int PFXExport(void* pContext, int nOption, char* pszPassword, BINSTR* pBinSignCert,
                            BINSTR* pBinSignKey, BINSTR* pBinKmCert, BINSTR* pBinKmKey, BINSTR* pBinPFX);

/**
 * Packs a pair and CA certificates. nOption is ignored. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param nOption not passed on
 * @param pszPassword password
 * @param pBinSignCert signing certificate, DER
 * @param pBinSignKey signing key, plain PKCS#8 DER
 * @param pBinCaPubs list of CA certificates, DER
 * @param[out] pBinPFX PKCS#12 container, DER
 * @return 0, a code that all share, or 10004 without pszPassword, pBinSignCert, pBinSignKey or pBinCaPubs
 */
QUILLGATE_API int PFXExport2(void* pContext, int nOption, char* pszPassword, BINSTR* pBinSignCert,
                             BINSTR* pBinSignKey, BINSTR* pBinCaPubs, BINSTR* pBinPFX);

/**
 * Unpacks a PFX. The ZR side fills pBinCaPubs and no key-management pair, the GPKI side the other way
 * round.
 *
 * @param pContext context of ZR_Initalize
 * @param pszPassword password
 * @param pBinPFX PKCS#12 container, DER
 * @param[out] pBinSignCert signing certificate, DER
 * @param[out] pBinSignKey signing key, plain PKCS#8 DER; a secret
 * @param[out] pBinKmCert key-management certificate, DER; GPKI side only
 * @param[out] pBinKmKey key-management key, plain PKCS#8 DER; GPKI side only; a secret
 * @param[out] pBinCaPubs list of CA certificates; ZR side only
 * @return 0, a code that all share, or 10004 without pszPassword or pBinPFX
 */
QUILLGATE_API int PFXImport(void* pContext, char* pszPassword, BINSTR* pBinPFX, BINSTR* pBinSignCert,
                            BINSTR* pBinSignKey, BINSTR* pBinKmCert, BINSTR* pBinKmKey, BINSTR* pBinCaPubs);

/**
 * Packs the pairs of two lists, see UTILAddObject. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param nOption option of the library
 * @param pszPassword password
 * @param pBinCerts list of certificates
 * @param pBinKeys list of plain private keys
 * @param[out] pBinPFX PKCS#12 container, DER
 * @return 0, a code that all share, or 10004 without pszPassword, pBinCerts or pBinKeys
 */
QUILLGATE_API int PFXExportMultiPair(void* pContext, int nOption, char* pszPassword, BINSTR* pBinCerts,
                                     BINSTR* pBinKeys, BINSTR* pBinPFX);

/**
 * The same with CA certificates. nOption is ignored. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param nOption not passed on
 * @param pszPassword password
 * @param pBinCerts list of certificates
 * @param pBinKeys list of plain private keys
 * @param pBinCaPubs list of CA certificates, DER
 * @param[out] pBinPFX PKCS#12 container, DER
 * @return 0, a code that all share, or 10004 without pszPassword, pBinCerts, pBinKeys or pBinCaPubs
 */
QUILLGATE_API int PFXExportMultiPair2(void* pContext, int nOption, char* pszPassword, BINSTR* pBinCerts,
                                      BINSTR* pBinKeys, BINSTR* pBinCaPubs, BINSTR* pBinPFX);

/**
 * Unpacks a PFX into lists. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinPFX PKCS#12 container, DER
 * @param pszPassword password
 * @param[out] pBinCerts list of certificates
 * @param[out] pBinKeys list of plain private keys; a secret
 * @param[out] pBinCaPubs list of CA certificates
 * @return 0, a code that all share, or 10004 without pszPassword and for a null pBinCerts, pBinKeys or
 *         pBinCaPubs; on the ZR side 10004 without pBinPFX
 */
QUILLGATE_API int PFXImportMultiPair(void* pContext, BINSTR* pBinPFX, char* pszPassword, BINSTR* pBinCerts,
                                     BINSTR* pBinKeys, BINSTR* pBinCaPubs);

/**
 * Unpacks a PFX into lists, with an option. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param nOption option of the library
 * @param pBinPFX PKCS#12 container, DER
 * @param pszPassword password
 * @param[out] pBinCerts list of certificates
 * @param[out] pBinKeys list of plain private keys; a secret
 * @param[out] pBinCaPubs list of CA certificates
 * @return 0, a code that all share, or 10004 without pszPassword and for a null pBinCerts, pBinKeys or
 *         pBinCaPubs; on the ZR side 10004 without pBinPFX
 */
QUILLGATE_API int PFXImportMultiPair2(void* pContext, int nOption, BINSTR* pBinPFX, char* pszPassword,
                                      BINSTR* pBinCerts, BINSTR* pBinKeys, BINSTR* pBinCaPubs);

/** @} */

#endif
