#ifndef QUILLGATE_TOOLKIT_TOKEN_H
#define QUILLGATE_TOOLKIT_TOKEN_H

/**
 * @file
 * Toolkit access: PKCS#11 tokens.
 */

#include "quillgate/api.h"
#include "quillgate/binstr.h"

/**
 * @defgroup token PKCS#11 tokens
 * @ingroup toolkit
 *
 * A context holds one open session at a time. pBinKeyID names a key and its certificate, as PKCS11GetCertInfo
 * gives it. Nothing is closed by itself: whoever opens a session closes it, after a refused PIN too.
 * @{
 */

/** Slot numbers that the array of PKCS11GetSlotList has room for. */
enum
{
    QG_TOKEN_SLOTS = 64 /**< more slots with tokens answer 1006 and fill nothing */
};

/** Kinds of certificates, as PKCS11GetCertInfo gives them. */
enum
{
    QG_TOKEN_SIGNING = 1,   /**< may sign: digitalSignature or nonRepudiation, or no key usage at all */
    QG_TOKEN_MANAGEMENT = 2 /**< any other: the key-management pair */
};

/**
 * Token description, as the open toolkit fills it: the CK_TOKEN_INFO of PKCS#11 2.40, section 3.3. Texts are
 * UTF-8, filled up with blanks and not terminated. Counts may be -1, unknown; a maximum of 0 is none.
 */
struct PKCS11_TOKEN_INFO
{
    unsigned char label[32];            /**< name that the token was initialised with */
    unsigned char manufacturerID[32];   /**< maker */
    unsigned char model[16];            /**< model */
    unsigned char serialNumber[16];     /**< serial number */
    unsigned long flags;                /**< bits CKF_..., as 0x400 initialised, 0x40000 PIN locked */
    unsigned long ulMaxSessionCount;    /**< sessions that one program may open */
    unsigned long ulSessionCount;       /**< sessions that this program has open */
    unsigned long ulMaxRwSessionCount;  /**< of these, for writing, at most */
    unsigned long ulRwSessionCount;     /**< of these, for writing */
    unsigned long ulMaxPinLen;          /**< longest PIN, bytes */
    unsigned long ulMinPinLen;          /**< shortest PIN, bytes */
    unsigned long ulTotalPublicMemory;  /**< bytes for public objects */
    unsigned long ulFreePublicMemory;   /**< bytes left of these */
    unsigned long ulTotalPrivateMemory; /**< bytes for private objects */
    unsigned long ulFreePrivateMemory;  /**< bytes left of these */
    unsigned char hardwareVersion[2];   /**< major and minor version */
    unsigned char firmwareVersion[2];   /**< major and minor version */
    unsigned char utcTime[16];          /**< YYYYMMDDhhmmss00 when the token has a clock */
};

/**
 * Fills *pSlotCnt and that many slot numbers, of the slots that hold a token.
 *
 * @param pContext context of ZR_Initalize
 * @param[out] pSlotList slot numbers; the array has room for QG_TOKEN_SLOTS
 * @param[out] pSlotCnt number of slots
 * @return 0, a code that all share, or 10004 without pSlotList
 */
QUILLGATE_API int PKCS11GetSlotList(void* pContext, unsigned long* pSlotList, unsigned long* pSlotCnt);

/**
 * Fills a record whose layout belongs to the library; the open toolkit's is the one above.
 *
 * @param pContext context of ZR_Initalize
 * @param uSlotID slot
 * @param[out] pTokenInfo record of the library
 * @return 0 or a code that all share
 */
QUILLGATE_API int PKCS11GetTokenInfo(void* pContext, unsigned long uSlotID, PKCS11_TOKEN_INFO* pTokenInfo);

/**
 * Initialises a token. ZR side only. The open toolkit takes the first one that is not initialised.
 *
 * @param pContext context of ZR_Initalize
 * @param pszSoPIN PIN of the security officer
 * @param pszUserPIN PIN of the user
 * @return 0, a code that all share, or 10004 without pszSoPIN or pszUserPIN
 */
QUILLGATE_API int PKCS11InitToken(void* pContext, char* pszSoPIN, char* pszUserPIN);

/**
 * Initialises the token of a slot. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param ulSlotID slot
 * @param pszSoPIN PIN of the security officer
 * @param pszUserPIN PIN of the user
 * @param pszLabel label of the token
 * @return 0, a code that all share, or 10004 without pszSoPIN, pszUserPIN or pszLabel
 */
QUILLGATE_API int PKCS11InitTokenWithSlotID(void* pContext, unsigned long ulSlotID, char* pszSoPIN,
                                            char* pszUserPIN, char* pszLabel);

/**
 * Opens the session on a slot and logs in. The GPKI side does both in two steps: a refused PIN leaves the
 * session open, to be closed by the caller, and a null PIN opens without logging in.
 *
 * @param pContext context of ZR_Initalize
 * @param ulSlotID slot
 * @param pszUserPIN PIN of the user; null on the GPKI side: no login
 * @param nTokenName number of the token kind
 * @return 0, a code that all share, or on the GPKI side 10004 without pszUserPIN
 */
QUILLGATE_API int PKCS11OpenSessionWithSlotID(void* pContext, unsigned long ulSlotID, char* pszUserPIN,
                                              int nTokenName);

/**
 * Opens the session on a token by its name's number. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pszUserPIN PIN of the user
 * @param nTokenName number of the token kind
 * @return 0, a code that all share, or 10004 without pszUserPIN
 */
QUILLGATE_API int PKCS11OpenSessionWithTokenName(void* pContext, char* pszUserPIN, int nTokenName);

/**
 * Logs in to the open session.
 *
 * @param pContext context of ZR_Initalize
 * @param pszUserPIN PIN of the user
 * @return 0, a code that all share, or 10004 without pszUserPIN
 */
QUILLGATE_API int PKCS11Login(void* pContext, char* pszUserPIN);

/**
 * Logs out and leaves the session open.
 *
 * @param pContext context of ZR_Initalize
 * @return 0 or a code that all share
 */
QUILLGATE_API int PKCS11Logout(void* pContext);

/**
 * Ends the session.
 *
 * @param pContext context of ZR_Initalize
 * @return 0 or a code that all share
 */
QUILLGATE_API int PKCS11CloseSession(void* pContext);

/**
 * Changes the PIN.
 *
 * @param pContext context of ZR_Initalize
 * @param pszOldPIN present PIN
 * @param pszNewPIN new PIN
 * @return 0, a code that all share, or 10004 without pszOldPIN or pszNewPIN
 */
QUILLGATE_API int PKCS11ChangePIN(void* pContext, char* pszOldPIN, char* pszNewPIN);

/**
 * Sets *nCertCnt to the number of certificates on the token.
 *
 * @param pContext context of ZR_Initalize
 * @param[out] nCertCnt number of certificates
 * @return 0 or a code that all share
 */
QUILLGATE_API int PKCS11GetCertCnt(void* pContext, int* nCertCnt);

/**
 * Gives type, name and key identifier of certificate nIndex.
 *
 * @param pContext context of ZR_Initalize
 * @param nIndex position, from 0
 * @param[out] pnCertType QG_TOKEN_SIGNING or QG_TOKEN_MANAGEMENT
 * @param[out] pBinCertDN subject name, EUC-KR text, leaf first, as CERTGetSubjectName gives it
 * @param[out] pBinKeyID identifier of the pair
 * @return 0 or a code that all share
 */
QUILLGATE_API int PKCS11GetCertInfo(void* pContext, int nIndex, int* pnCertType, BINSTR* pBinCertDN,
                                    BINSTR* pBinKeyID);

/**
 * Reads the certificate of a key identifier.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinKeyID identifier of the pair, of PKCS11GetCertInfo
 * @param[out] pBinCert certificate, DER
 * @return 0, a code that all share, or 10004 without pBinKeyID
 */
QUILLGATE_API int PKCS11ReadCert(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinCert);

/**
 * Reads the random value of a key.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinKeyID identifier of the pair, of PKCS11GetCertInfo
 * @param[out] pBinRandom random value; a secret
 * @return 0, a code that all share, or 10004 without pBinKeyID
 */
QUILLGATE_API int PKCS11ReadRandomForVID(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinRandom);

/**
 * Writes a pair to the token.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCert certificate, DER
 * @param pBinPriKey private key, plain PKCS#8 DER
 * @return 0, a code that all share, or 10004 without pBinCert or pBinPriKey
 */
QUILLGATE_API int PKCS11WriteCertAndPriKey(void* pContext, BINSTR* pBinCert, BINSTR* pBinPriKey);

/**
 * Deletes a pair of the token.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinKeyID identifier of the pair, of PKCS11GetCertInfo
 * @return 0, a code that all share, or 10004 without pBinKeyID
 */
QUILLGATE_API int PKCS11DeleteCertAndPriKey(void* pContext, BINSTR* pBinKeyID);

/**
 * Makes a key pair on the token. pBinKeyID must hold data at the call. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param nAlg number of the algorithm: QG_KEYPAIR_...
 * @param nKeyType number of the kind of key: QG_TOKEN_SIGNING or QG_TOKEN_MANAGEMENT
 * @param[in,out] pBinKeyID identifier of the pair; must hold data at the call, which the open toolkit gives
 * the pair
 * @return 0, a code that all share, or on the ZR side 10004 without pBinKeyID
 */
QUILLGATE_API int PKCS11GenKeyPair(void* pContext, int nAlg, int nKeyType, BINSTR* pBinKeyID);

/**
 * Signs data with a key of the token. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinKeyID identifier of the pair, of PKCS11GetCertInfo
 * @param pBinData data
 * @param[out] pBinSignature signature value
 * @return 0, a code that all share, or 10004 without pBinKeyID or pBinData
 */
QUILLGATE_API int PKCS11Sign(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinData, BINSTR* pBinSignature);

/**
 * Verifies a signature. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinKeyID identifier of the pair, of PKCS11GetCertInfo
 * @param pBinData data
 * @param pBinSignature signature value
 * @return 0, a code that all share, or 10004 without pBinKeyID, pBinData or pBinSignature
 */
QUILLGATE_API int PKCS11Verify(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinData, BINSTR* pBinSignature);

/**
 * Encrypts with a key of the token. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinKeyID identifier of the pair, of PKCS11GetCertInfo
 * @param pBinPlainText data in the clear
 * @param[out] pBinCipherText encrypted data
 * @return 0, a code that all share, or 10004 without pBinKeyID or pBinPlainText
 */
QUILLGATE_API int PKCS11Encrypt(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinPlainText,
                                BINSTR* pBinCipherText);

/**
 * Decrypts with a key of the token. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinKeyID identifier of the pair, of PKCS11GetCertInfo
 * @param pBinCipherText encrypted data
 * @param[out] pBinPlainText data in the clear
 * @return 0, a code that all share, or 10004 without pBinKeyID or pBinCipherText
 */
QUILLGATE_API int PKCS11Decrypt(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinCipherText,
                                BINSTR* pBinPlainText);

/**
 * Signs data into a message (CMS SignedData, RFC 5652) with a pair of the token: the open toolkit takes the
 * certificate from there, the hash of ZR_SetHashAlg, the RSA version, the options of CMSSetOption or
 * ZR_SetOption, see quillgate/message_options.h, and the present time.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinKeyID identifier of the pair, of PKCS11GetCertInfo
 * @param pBinData data
 * @param[out] pBinSignedData signed message, DER
 * @return 0, a code that all share, or 10004 without pBinKeyID or pBinData
 */
QUILLGATE_API int PKCS11SignData(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinData, BINSTR* pBinSignedData);

/**
 * As PKCS11SignData, into a message without the content. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinKeyID identifier of the pair, of PKCS11GetCertInfo
 * @param pBinData data
 * @param[out] pBinSignedData signed message, DER
 * @return 0, a code that all share, or 10004 without pBinKeyID or pBinData
 */
QUILLGATE_API int PKCS11SignDataNoContent(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinData,
                                          BINSTR* pBinSignedData);

/**
 * Decrypts an enveloped message (CMS EnvelopedData) with a pair of the token. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinKeyID identifier of the pair, of PKCS11GetCertInfo
 * @param pBinEnvelopData enveloped message, BER or DER, up to 256 MiB
 * @param[out] pBinPlainText data in the clear
 * @return 0, a code that all share, or 10004 without pBinKeyID or pBinEnvelopData
 */
QUILLGATE_API int PKCS11DecryptData(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinEnvelopData,
                                    BINSTR* pBinPlainText);

/**
 * Signs data with a pair of the token and encrypts them for a recipient with an RSA key (PKCS#7 version 1.5,
 * RFC 2315, section 11); the open toolkit does it with AES-256. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinKeyID identifier of the pair, of PKCS11GetCertInfo
 * @param pBinEnvCert certificate of the recipient, DER
 * @param pBinData data
 * @param[out] pBinSignAndEnvData signed and enveloped message, DER
 * @return 0, a code that all share, or 10004 without pBinKeyID, pBinEnvCert or pBinData
 */
QUILLGATE_API int PKCS11SignAndEnvData(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinEnvCert,
                                       BINSTR* pBinData, BINSTR* pBinSignAndEnvData);

/**
 * Decrypts such a message with an RSA pair of the token and verifies it. A failure leaves both outputs as
 * they were. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinKeyID identifier of the pair, of PKCS11GetCertInfo
 * @param pBinSignAndEnvData signed and enveloped message, DER
 * @param[out] pBinData data in the clear
 * @param[out] pBinSignerCert certificate of the signer, DER
 * @return 0, a code that all share, or 10004 without pBinKeyID or pBinSignAndEnvData
 */
QUILLGATE_API int PKCS11VerifyAndDecData(void* pContext, BINSTR* pBinKeyID, BINSTR* pBinSignAndEnvData,
                                         BINSTR* pBinData, BINSTR* pBinSignerCert);

/**
 * Verifies the signature of a token's driver files, before they are loaded. The open toolkit takes the hash
 * of ZR_SetHashAlg and the RSA version, and leaves the certificate to CertVerify. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pszLibPaths paths of the driver files; open toolkit: separated by semicolons, the signature is over
 *        their bytes, one file behind the other
 * @param pBinSignerCert certificate of the signer, DER
 * @param pBinSignatureValue bare signature value: PKCS#1 version 1.5 or PSS, ECDSA in DER
 * @return 0, a code that all share, or 10004 without pszLibPaths, pBinSignerCert or pBinSignatureValue
 */
QUILLGATE_API int PKCS11VerifySignatureValue(void* pContext, char* pszLibPaths, BINSTR* pBinSignerCert,
                                             BINSTR* pBinSignatureValue);

/**
 * CMPCertRequest with the keys on the token. ZR side only. The open toolkit makes the signing pair alone when
 * pBinKmKeyID is null.
 *
 * @param pContext context of ZR_Initalize
 * @param pszIP name or address of the server
 * @param nPort TCP port of the server
 * @param pszRefNum reference number given by the CA
 * @param pszAuthCode authorisation code given by the CA
 * @param pszIDN identification number of the person or firm
 * @param pszCACert path of the CA's certificate
 * @param[out] pBinSignKeyID identifier of the signing pair on the token
 * @param[out] pBinKmKeyID identifier of the key-management pair on the token
 * @return 0, a code that all share, or 10004 without pszIP, pszRefNum, pszAuthCode, pszIDN or pszCACert
 */
QUILLGATE_API int PKCS11CMPCertRequest(void* pContext, char* pszIP, int nPort, char* pszRefNum,
                                       char* pszAuthCode, char* pszIDN, char* pszCACert,
                                       BINSTR* pBinSignKeyID, BINSTR* pBinKmKeyID);

/**
 * CMPCertUpdate with the keys on the token. ZR side only. New pairs stand beside the old ones; with the same
 * keys, new certificates replace the old ones.
 *
 * @param pContext context of ZR_Initalize
 * @param pszIP name or address of the server
 * @param nPort TCP port of the server
 * @param bKeyUpdate whether to make new keys
 * @param pszIDN identification number of the person or firm
 * @param pszCACert path of the CA's certificate
 * @param[in,out] pBinSignKeyID identifier of the signing pair on the token
 * @param[in,out] pBinKmKeyID identifier of the key-management pair on the token
 * @return 0, a code that all share, or 10004 without pszIP, pszIDN, pszCACert, pBinSignKeyID or pBinKmKeyID
 */
QUILLGATE_API int PKCS11CMPCertUpdate(void* pContext, char* pszIP, int nPort, bool bKeyUpdate, char* pszIDN,
                                      char* pszCACert, BINSTR* pBinSignKeyID, BINSTR* pBinKmKeyID);

/**
 * The same from pairs that lie outside the token, onto it. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pszIP name or address of the server
 * @param nPort TCP port of the server
 * @param bKeyUpdate whether to make new keys
 * @param nOption option of the library; the open toolkit's is 0
 * @param pszIDN identification number of the person or firm
 * @param pszCACert path of the CA's certificate
 * @param pBinSignCert signing certificate, DER
 * @param pBinSignPriKey signing key, plain PKCS#8 DER
 * @param pBinKmCert key-management certificate, DER
 * @param pBinKmPriKey key-management key, plain PKCS#8 DER
 * @param pBinSignKeyID identifier that the signing pair is to have on the token
 * @param pBinKmKeyID identifier that the key-management pair is to have on the token
 * @return 0, a code that all share, or 10004 without pszIP, pszIDN, pszCACert, pBinSignCert or
 *         pBinSignPriKey; on the ZR side 10004 without pBinKmCert, pBinKmPriKey, pBinSignKeyID or
 *         pBinKmKeyID
 */
QUILLGATE_API int PKCS11CMPCertUpdate2(void* pContext, char* pszIP, int nPort, bool bKeyUpdate, int nOption,
                                       char* pszIDN, char* pszCACert, BINSTR* pBinSignCert,
                                       BINSTR* pBinSignPriKey, BINSTR* pBinKmCert, BINSTR* pBinKmPriKey,
                                       BINSTR* pBinSignKeyID, BINSTR* pBinKmKeyID);

/**
 * CMPCertCertRevoke with the keys on the token. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pszIP name or address of the server
 * @param nPort TCP port of the server
 * @param nReasonCode QG_REVOKED_...
 * @param pBinSignKeyID identifier of the signing pair on the token
 * @param pBinKmKeyID identifier of the key-management pair on the token
 * @return 0, a code that all share, or 10004 without pszIP; on the ZR side 10004 without pBinSignKeyID or
 *         pBinKmKeyID
 */
QUILLGATE_API int PKCS11CMPCertRevoke(void* pContext, char* pszIP, int nPort, int nReasonCode,
                                      BINSTR* pBinSignKeyID, BINSTR* pBinKmKeyID);

/** @} */

#endif
