#ifndef QUILLGATE_TOOLKIT_PROTOCOL_H
#define QUILLGATE_TOOLKIT_PROTOCOL_H

/**
 * @file
 * Toolkit access: OCSP, time stamps and CMP.
 *
 * Servers are named by a URL, or by host pszIP and port nPort. Texts of dates need 50 bytes.
 */

#include "quillgate/api.h"
#include "quillgate/binstr.h"

/**
 * @defgroup ocsp OCSP
 * @ingroup toolkit
 *
 * In this order: OCSPMakeOCSPReq, OCSPSendAndRecv, OCSPVerifyResMsg, then OCSPGetCertStatus.
 * @{
 */

/**
 * Makes a request for the certificates of a list, signed if bSign.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCerts list of certificates
 * @param bSign whether to sign the request
 * @param pBinMyCert certificate of whoever asks, DER
 * @param pBinMyPriKey its key, plain PKCS#8 DER
 * @param[out] pBinReqMsg request, DER
 * @return 0, a code that all share, or 10004 without pBinCerts (at least 1 byte), pBinMyCert (at least 1
 *         byte) or pBinMyPriKey (at least 1 byte)
 */
QUILLGATE_API int OCSPMakeOCSPReq(void* pContext, BINSTR* pBinCerts, bool bSign, BINSTR* pBinMyCert,
                                  BINSTR* pBinMyPriKey, BINSTR* pBinReqMsg);

/**
 * Sends a request and gives the response.
 *
 * @param pContext context of ZR_Initalize
 * @param pszURL http: address of the responder; empty: the one that pBinCert names
 * @param pBinCert certificate, DER
 * @param pBinReqMsg request, DER
 * @param[out] pBinResMsg response, DER
 * @return 0, a code that all share, or 10004 without pszURL, pBinCert (at least 1 byte) or pBinReqMsg (at
 *         least 1 byte)
 */
QUILLGATE_API int OCSPSendAndRecv(void* pContext, char* pszURL, BINSTR* pBinCert, BINSTR* pBinReqMsg,
                                  BINSTR* pBinResMsg);

/**
 * Verifies a response: its signer, that it answers this very request, and its age. The GPKI side also sets
 * *pnCertStatCnt, and keeps the statuses for OCSPGetCertStatus; a status that isn't good is no failure there.
 * On the ZR side the result is the verdict on all certificates.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinReqMsg request, DER
 * @param pBinResMsg response, DER
 * @param[out] pnCertStatCnt number of answers; GPKI side only
 * @param[out] pBinOCSPSvrCert certificate that signed the answer, DER
 * @return 0, a code that all share, or 10004 without pBinReqMsg (at least 1 byte) or pBinResMsg (at least 1
 *         byte)
 */
QUILLGATE_API int OCSPVerifyResMsg(void* pContext, BINSTR* pBinReqMsg, BINSTR* pBinResMsg, int* pnCertStatCnt,
                                   BINSTR* pBinOCSPSvrCert);

/** Values of *pnStatus of OCSPGetCertStatus. */
enum
{
    QG_STATUS_GOOD = 0,    /**< not revoked */
    QG_STATUS_REVOKED = 1, /**< revoked, for a time or for good */
    QG_STATUS_UNKNOWN = 2, /**< the responder doesn't know the certificate, or left it out */
};

/**
 * Gives answer nIndex of the verified response: status, revocation date's text, reason. GPKI side only.
 *
 * @param pContext context of ZR_Initalize
 * @param nIndex answer, from 0
 * @param[out] pnStatus QG_STATUS_...
 * @param[out] szRevocationDate date of revocation, at least 50 bytes
 * @param[out] pRevReason QG_REVOKED_..., QG_REVOKED_NOT when there is none
 * @return 0 or a code that all share
 */
QUILLGATE_API int OCSPGetCertStatus(void* pContext, int nIndex, int* pnStatus, char* szRevocationDate,
                                    int* pRevReason);

/** @} */

/**
 * @defgroup tsp Time stamps
 * @ingroup toolkit
 * @{
 */

/**
 * Has a server time stamp data, in one call. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pszIP name or address of the server, or an http: address with its port
 * @param nPort TCP port of the server; not looked at for an http: address
 * @param nHashAlg QG_HASH_...
 * @param pszPolicy policy of the time stamp server, dotted; empty: its own
 * @param pBinData data
 * @param bSign false: time stamp requests are not signed, the open toolkit answers 1004 otherwise
 * @param pBinCert certificate that signs the request, DER
 * @param pBinPriKey its key, plain PKCS#8 DER
 * @param[out] pBinTimeStampToken time stamp token, DER
 * @return 0, a code that all share, or 10004 without pszIP, pszPolicy, pBinData, pBinCert or pBinPriKey
 */
QUILLGATE_API int TSPTimeStampData(void* pContext, char* pszIP, int nPort, int nHashAlg, char* pszPolicy,
                                   BINSTR* pBinData, bool bSign, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                   BINSTR* pBinTimeStampToken);

/**
 * Always answers 10004 on the ZR side while the library is loaded: a path is demanded on one level and
 * refused on the next. Hosts rely on it. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pszIP name or address of the server, or an http: address with its port
 * @param nPort TCP port of the server; not looked at for an http: address
 * @param nHashAlg QG_HASH_...
 * @param pszPolicy policy of the time stamp server, dotted; empty: its own
 * @param pszDataFilePath path of the data file
 * @param bSign false: time stamp requests are not signed, the open toolkit answers 1004 otherwise
 * @param pBinCert certificate that signs the request, DER
 * @param pBinPriKey its key, plain PKCS#8 DER
 * @param[out] pBinTimeStampToken time stamp token, DER
 * @return 0, a code that all share, or 10004 without pszIP, pszPolicy, pszDataFilePath, pBinCert or
 *         pBinPriKey
 */
QUILLGATE_API int TSPTimeStampFile(void* pContext, char* pszIP, int nPort, int nHashAlg, char* pszPolicy,
                                   char* pszDataFilePath, bool bSign, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                   BINSTR* pBinTimeStampToken);

/**
 * Makes a time stamp request, signed if bSign.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinData data
 * @param nHashAlg QG_HASH_...
 * @param pszPolicy policy of the time stamp server, dotted; empty: its own
 * @param bSign false: time stamp requests are not signed, the open toolkit answers 1004 otherwise
 * @param pBinCert certificate that signs the request, DER
 * @param pBinPriKey its key, plain PKCS#8 DER
 * @param[out] pBinReqMsg request, DER
 * @return 0, a code that all share, or 10004 without pBinData, pszPolicy, pBinCert or pBinPriKey
 */
QUILLGATE_API int TSPMakeReqMsg(void* pContext, BINSTR* pBinData, int nHashAlg, char* pszPolicy, bool bSign,
                                BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinReqMsg);

/**
 * Sends a request and gives the response.
 *
 * @param pContext context of ZR_Initalize
 * @param pszIP name or address of the server, or an http: address with its port
 * @param nPort TCP port of the server; not looked at for an http: address
 * @param pBinReqMsg request, DER
 * @param[out] pBinResMsg response, DER
 * @return 0, a code that all share, or 10004 without pszIP or pBinReqMsg
 */
QUILLGATE_API int TSPSendAndRecv1(void* pContext, char* pszIP, int nPort, BINSTR* pBinReqMsg,
                                  BINSTR* pBinResMsg);

/**
 * Verifies a response to the request that the context made or sent last, and gives the token; sends nothing.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinResMsg response, DER
 * @param[out] pBinTSACert certificate of the time stamp server, DER
 * @param[out] pBinToken time stamp token, DER
 * @return 0, a code that all share, or 10004 without pBinResMsg
 */
QUILLGATE_API int TSPSendAndRecv2(void* pContext, BINSTR* pBinResMsg, BINSTR* pBinTSACert, BINSTR* pBinToken);

/**
 * Verifies a token against the data.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinData data
 * @param pBinToken time stamp token, DER
 * @return 0, a code that all share, or 10004 without pBinData or pBinToken
 */
QUILLGATE_API int TSPVerifyToken(void* pContext, BINSTR* pBinData, BINSTR* pBinToken);

/**
 * The same. The ZR side reads the data from a file; the GPKI side takes pBinData and gives pBinTSACert.
 *
 * @param pContext context of ZR_Initalize
 * @param pszDataFilePath path of the data file; for the ZR side
 * @param pBinData data; for the GPKI side
 * @param pBinToken time stamp token, DER
 * @param[out] pBinTSACert certificate of the time stamp server, DER; GPKI side only
 * @return 0, a code that all share, or 10004 without pBinToken; on the ZR side 10004 without
 *         pszDataFilePath; on the GPKI side 10004 without pBinData
 */
QUILLGATE_API int TSPVerifyToken2(void* pContext, char* pszDataFilePath, BINSTR* pBinData, BINSTR* pBinToken,
                                  BINSTR* pBinTSACert);

/**
 * Writes the fields of a token, each at most nAllocLen bytes. The ZR side leaves pszCN and pszDN alone and
 * fills pBinTSACert, the GPKI side the other way round.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinToken time stamp token, DER
 * @param nAllocLen size of each text buffer in bytes
 * @param[out] pszCN common name of the server; GPKI side only
 * @param[out] pszDN name of the server; GPKI side only
 * @param[out] pszPolicy policy
 * @param[out] pszHashAlg name of the hash, as "sha256"
 * @param[out] pszHashValue hash of the data, lower-case hexadecimal
 * @param[out] pszSerialNum serial number, lower-case hexadecimal
 * @param[out] pszGenTime time of the stamp, local, "YYYY-MM-DD hh:mm:ss"
 * @param[out] pszNonce nonce, lower-case hexadecimal; empty when there is none
 * @param[out] pBinTSACert certificate of the time stamp server, DER; ZR side only
 * @return 0, a code that all share, or 10004 without pBinToken
 */
QUILLGATE_API int TSPGetTokenInfo(void* pContext, BINSTR* pBinToken, int nAllocLen, char* pszCN, char* pszDN,
                                  char* pszPolicy, char* pszHashAlg, char* pszHashValue, char* pszSerialNum,
                                  char* pszGenTime, char* pszNonce, BINSTR* pBinTSACert);

/** @} */

/**
 * @defgroup cmp CMP
 * @ingroup toolkit
 *
 * The forms with a 2 take and give lists, built and read with UTILAddObject and UTILGetObject. Entries of
 * pBinTypes are one byte, QG_TOKEN_SIGNING or QG_TOKEN_MANAGEMENT of toolkit_token.h; those of the same place
 * in the three lists belong together.
 *
 * What the open toolkit makes of the arguments: pszIP is a host, or a whole http: address, which says port
 * and path itself. pszRefNum is the sender's key identifier and pszAuthCode the secret of the messages' MAC,
 * as bytes. pszIDN may be empty; else the certificate is asked for with the identity value over this number
 * and the new key's random value. pszCACert is a file with the DER certificate of the authority: who is
 * asked, and where the paths of issued certificates and of signed answers must end. Nothing is filled unless
 * all is.
 * @{
 */

/** Protocols, for CMPSetProtocol, of the open toolkit. */
enum
{
    QG_CMP_HTTP = 0, /**< over HTTP (RFC 6712); the setting of a new context */
    QG_CMP_TCP = 1,  /**< over TCP (RFC 2510, section 5.2), whose usual port is 829 */
};

/**
 * Sets the protocol of the context. ZR side only. The open toolkit answers 1004 to other numbers.
 *
 * @param pContext context of ZR_Initalize
 * @param nType number of the protocol, QG_CMP_...
 * @return 0 or a code that all share
 */
QUILLGATE_API int CMPSetProtocol(void* pContext, int nType);

/**
 * Sets the CA of the context. ZR side only. The open toolkit takes path and kind of keys from the section
 * CMP_CA<nCA> of its configuration, and answers 1004 when there is none.
 *
 * @param pContext context of ZR_Initalize
 * @param nCA number of the CA; 0, as at first: none in particular
 * @return 0 or a code that all share
 */
QUILLGATE_API int CMPSetCA(void* pContext, int nCA);

/**
 * Requests certificates; gives signing and key-management pairs. ZR side only. The open toolkit asks for the
 * signing pair alone when both records of the other are null.
 *
 * @param pContext context of ZR_Initalize
 * @param pszIP name or address of the server
 * @param nPort TCP port of the server
 * @param pszRefNum reference number given by the CA
 * @param pszAuthCode authorisation code given by the CA
 * @param pszIDN identification number of the person or firm
 * @param pszCACert path of the CA's certificate
 * @param[out] pBinSignCert signing certificate, DER
 * @param[out] pBinSignPriKey signing key, plain PKCS#8 DER; a secret
 * @param[out] pBinKmCert key-management certificate, DER
 * @param[out] pBinKmPriKey key-management key, plain PKCS#8 DER; a secret
 * @param[out] pBinCaPubs list of CA certificates, DER
 * @return 0, a code that all share, or 10004 without pszIP, pszRefNum, pszAuthCode, pszIDN or pszCACert
 */
QUILLGATE_API int CMPCertRequest(void* pContext, char* pszIP, int nPort, char* pszRefNum, char* pszAuthCode,
                                 char* pszIDN, char* pszCACert, BINSTR* pBinSignCert, BINSTR* pBinSignPriKey,
                                 BINSTR* pBinKmCert, BINSTR* pBinKmPriKey, BINSTR* pBinCaPubs);

/**
 * The same with lists. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pszIP name or address of the server
 * @param nPort TCP port of the server
 * @param pszRefNum reference number given by the CA
 * @param pszAuthCode authorisation code given by the CA
 * @param pszIDN identification number of the person or firm
 * @param pszCACert path of the CA's certificate
 * @param[in,out] pBinTypes list of the pairs' types; one that is empty asks for one of each
 * @param[out] pBinCerts list of certificates
 * @param[out] pBinPriKeys list of plain private keys; a secret
 * @param[out] pBinCaPubs list of CA certificates, DER
 * @return 0, a code that all share, or 10004 without pszIP, pszRefNum, pszAuthCode, pszIDN or pszCACert
 */
QUILLGATE_API int CMPCertRequest2(void* pContext, char* pszIP, int nPort, char* pszRefNum, char* pszAuthCode,
                                  char* pszIDN, char* pszCACert, BINSTR* pBinTypes, BINSTR* pBinCerts,
                                  BINSTR* pBinPriKeys, BINSTR* pBinCaPubs);

/**
 * Renews certificates, with new keys if bKeyUpdate. The pairs are input and output. ZR side only. The signing
 * pair signs all messages.
 *
 * @param pContext context of ZR_Initalize
 * @param pszIP name or address of the server
 * @param nPort TCP port of the server
 * @param bKeyUpdate whether to make new keys
 * @param pszIDN identification number of the person or firm
 * @param pszCACert path of the CA's certificate
 * @param[in,out] pBinSignCert signing certificate, DER
 * @param[in,out] pBinSignPriKey signing key, plain PKCS#8 DER
 * @param[in,out] pBinKmCert key-management certificate, DER
 * @param[in,out] pBinKmPriKey key-management key, plain PKCS#8 DER
 * @param[out] pBinCaPubs list of CA certificates, DER
 * @return 0, a code that all share, or 10004 without pszIP, pszIDN, pszCACert, pBinSignCert or
 *         pBinSignPriKey; on the ZR side 10004 without pBinKmCert or pBinKmPriKey
 */
QUILLGATE_API int CMPCertUpdate(void* pContext, char* pszIP, int nPort, bool bKeyUpdate, char* pszIDN,
                                char* pszCACert, BINSTR* pBinSignCert, BINSTR* pBinSignPriKey,
                                BINSTR* pBinKmCert, BINSTR* pBinKmPriKey, BINSTR* pBinCaPubs);

/**
 * The same with lists. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pszIP name or address of the server
 * @param nPort TCP port of the server
 * @param bKeyUpdate whether to make new keys
 * @param pszIDN identification number of the person or firm
 * @param pszCACert path of the CA's certificate
 * @param[in,out] pBinTypes list of the pairs' types
 * @param[in,out] pBinCerts list of certificates
 * @param[in,out] pBinPriKeys list of plain private keys
 * @param[out] pBinCaPubs list of CA certificates, DER
 * @return 0, a code that all share, or 10004 without pszIP, pszIDN, pszCACert, pBinTypes, pBinCerts or
 *         pBinPriKeys
 */
QUILLGATE_API int CMPCertUpdate2(void* pContext, char* pszIP, int nPort, bool bKeyUpdate, char* pszIDN,
                                 char* pszCACert, BINSTR* pBinTypes, BINSTR* pBinCerts, BINSTR* pBinPriKeys,
                                 BINSTR* pBinCaPubs);

/**
 * Revokes certificates. ZR side only. The signing pair signs all messages, and goes last; a certificate that
 * is given as both goes once. The open toolkit must find the issuer, as for verifying: give it with
 * ZR_SetCaPubs.
 *
 * @param pContext context of ZR_Initalize
 * @param pszIP name or address of the server
 * @param nPort TCP port of the server
 * @param nReasonCode QG_REVOKED_...
 * @param pBinSignCert signing certificate, DER
 * @param pBinSignPriKey signing key, plain PKCS#8 DER
 * @param pBinKmCert key-management certificate, DER
 * @param pBinKmPriKey key-management key, plain PKCS#8 DER
 * @return 0, a code that all share, or 10004 without pszIP, pBinSignCert, pBinSignPriKey, pBinKmCert or
 *         pBinKmPriKey
 */
QUILLGATE_API int CMPCertCertRevoke(void* pContext, char* pszIP, int nPort, int nReasonCode,
                                    BINSTR* pBinSignCert, BINSTR* pBinSignPriKey, BINSTR* pBinKmCert,
                                    BINSTR* pBinKmPriKey);

/**
 * The same with lists. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pszIP name or address of the server
 * @param nPort TCP port of the server
 * @param nReasonCode QG_REVOKED_...
 * @param pBinTypes list of the pairs' types
 * @param pBinCerts list of certificates
 * @param pBinPriKeys list of plain private keys
 * @return 0, a code that all share, or 10004 without pszIP, pBinTypes, pBinCerts or pBinPriKeys
 */
QUILLGATE_API int CMPCertCertRevoke2(void* pContext, char* pszIP, int nPort, int nReasonCode,
                                     BINSTR* pBinTypes, BINSTR* pBinCerts, BINSTR* pBinPriKeys);

/**
 * Recovers the key-management pair that the CA keeps, encrypted for the signing pair, which is RSA. ZR side
 * only.
 *
 * @param pContext context of ZR_Initalize
 * @param pszIP name or address of the server
 * @param nPort TCP port of the server
 * @param pszRefNum reference number given by the CA
 * @param pszAuthCode authorisation code given by the CA
 * @param pBinSignCert signing certificate, DER
 * @param pBinSignPriKey signing key, plain PKCS#8 DER
 * @param[out] pBinKmCert key-management certificate, DER
 * @param[out] pBinKmPriKey key-management key, plain PKCS#8 DER; a secret
 * @return 0, a code that all share, or 10004 without pszIP, pszRefNum, pszAuthCode, pBinSignCert or
 *         pBinSignPriKey
 */
QUILLGATE_API int CMPCertCertRecovery(void* pContext, char* pszIP, int nPort, char* pszRefNum,
                                      char* pszAuthCode, BINSTR* pBinSignCert, BINSTR* pBinSignPriKey,
                                      BINSTR* pBinKmCert, BINSTR* pBinKmPriKey);

/** @} */

#endif
