#ifndef QUILLGATE_TOOLKIT_PROTOCOL_H
#define QUILLGATE_TOOLKIT_PROTOCOL_H

/*
 * Toolkit access: OCSP, time stamps and CMP.
 *
 * Servers are named by a URL, or by host pszIP and port nPort. Texts of dates need 50 bytes.
 */

#include "quillgate/api.h"
#include "quillgate/binstr.h"

/* --- OCSP: OCSPMakeOCSPReq, OCSPSendAndRecv, OCSPVerifyResMsg, then OCSPGetCertStatus ------------------- */

/*
 * Makes a request for the certificates of a list, signed if bSign. 10004 without pBinCerts (at least 1
 * byte), pBinMyCert (at least 1 byte), pBinMyPriKey (at least 1 byte).
 */
QUILLGATE_API int OCSPMakeOCSPReq(void* pContext, BINSTR* pBinCerts, bool bSign, BINSTR* pBinMyCert,
                                  BINSTR* pBinMyPriKey, BINSTR* pBinReqMsg);

/*
 * Sends a request and gives the response. 10004 without pszURL, pBinCert (at least 1 byte), pBinReqMsg (at
 * least 1 byte).
 */
QUILLGATE_API int OCSPSendAndRecv(void* pContext, char* pszURL, BINSTR* pBinCert, BINSTR* pBinReqMsg,
                                  BINSTR* pBinResMsg);

/*
 * Verifies a response. The GPKI side also sets *pnCertStatCnt. 10004 without pBinReqMsg (at least 1 byte),
 * pBinResMsg (at least 1 byte).
 */
QUILLGATE_API int OCSPVerifyResMsg(void* pContext, BINSTR* pBinReqMsg, BINSTR* pBinResMsg, int* pnCertStatCnt,
                                   BINSTR* pBinOCSPSvrCert);

/* Gives answer nIndex of the verified response: status, revocation date's text, reason. GPKI side only. */
QUILLGATE_API int OCSPGetCertStatus(void* pContext, int nIndex, int* pnStatus, char* szRevocationDate,
                                    int* pRevReason);

/* --- Time stamps ---------------------------------------------------------------------------------------- */

/*
 * Has a server time stamp data, in one call. ZR side only. 10004 without pszIP, pszPolicy, pBinData,
 * pBinCert, pBinPriKey.
 */
QUILLGATE_API int TSPTimeStampData(void* pContext, char* pszIP, int nPort, int nHashAlg, char* pszPolicy,
                                   BINSTR* pBinData, bool bSign, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                   BINSTR* pBinTimeStampToken);

/*
 * Always answers 10004 on the ZR side while the library is loaded: a path is demanded on one level and
 * refused on the next. Hosts rely on it. ZR side only. 10004 without pszIP, pszPolicy, pszDataFilePath,
 * pBinCert, pBinPriKey.
 */
QUILLGATE_API int TSPTimeStampFile(void* pContext, char* pszIP, int nPort, int nHashAlg, char* pszPolicy,
                                   char* pszDataFilePath, bool bSign, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                   BINSTR* pBinTimeStampToken);

/* Makes a time stamp request, signed if bSign. 10004 without pBinData, pszPolicy, pBinCert, pBinPriKey. */
QUILLGATE_API int TSPMakeReqMsg(void* pContext, BINSTR* pBinData, int nHashAlg, char* pszPolicy, bool bSign,
                                BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinReqMsg);

/* Sends a request and gives the response. 10004 without pszIP, pBinReqMsg. */
QUILLGATE_API int TSPSendAndRecv1(void* pContext, char* pszIP, int nPort, BINSTR* pBinReqMsg,
                                  BINSTR* pBinResMsg);

/* Verifies a response and gives the token; sends nothing. 10004 without pBinResMsg. */
QUILLGATE_API int TSPSendAndRecv2(void* pContext, BINSTR* pBinResMsg, BINSTR* pBinTSACert, BINSTR* pBinToken);

/* Verifies a token against the data. 10004 without pBinData, pBinToken. */
QUILLGATE_API int TSPVerifyToken(void* pContext, BINSTR* pBinData, BINSTR* pBinToken);

/*
 * The same. The ZR side reads the data from a file; the GPKI side takes pBinData and gives pBinTSACert.
 * 10004 without pBinToken; 10004 without pszDataFilePath on the ZR side; 10004 without pBinData on the GPKI
 * side.
 */
QUILLGATE_API int TSPVerifyToken2(void* pContext, char* pszDataFilePath, BINSTR* pBinData, BINSTR* pBinToken,
                                  BINSTR* pBinTSACert);

/*
 * Writes the fields of a token, each at most nAllocLen bytes. The ZR side leaves pszCN and pszDN alone and
 * fills pBinTSACert, the GPKI side the other way round. 10004 without pBinToken.
 */
QUILLGATE_API int TSPGetTokenInfo(void* pContext, BINSTR* pBinToken, int nAllocLen, char* pszCN, char* pszDN,
                                  char* pszPolicy, char* pszHashAlg, char* pszHashValue, char* pszSerialNum,
                                  char* pszGenTime, char* pszNonce, BINSTR* pBinTSACert);

/* --- CMP ------------------------------------------------------------------------------------------------ */

/* The forms with a 2 take and give lists, built and read with UTILAddObject and UTILGetObject. */

/* Sets the protocol of the context. ZR side only. */
QUILLGATE_API int CMPSetProtocol(void* pContext, int nType);

/* Sets the CA of the context. ZR side only. */
QUILLGATE_API int CMPSetCA(void* pContext, int nCA);

/*
 * Requests certificates; gives signing and key-management pairs. ZR side only. 10004 without pszIP,
 * pszRefNum, pszAuthCode, pszIDN, pszCACert.
 */
QUILLGATE_API int CMPCertRequest(void* pContext, char* pszIP, int nPort, char* pszRefNum, char* pszAuthCode,
                                 char* pszIDN, char* pszCACert, BINSTR* pBinSignCert, BINSTR* pBinSignPriKey,
                                 BINSTR* pBinKmCert, BINSTR* pBinKmPriKey, BINSTR* pBinCaPubs);

/* The same with lists. ZR side only. 10004 without pszIP, pszRefNum, pszAuthCode, pszIDN, pszCACert. */
QUILLGATE_API int CMPCertRequest2(void* pContext, char* pszIP, int nPort, char* pszRefNum, char* pszAuthCode,
                                  char* pszIDN, char* pszCACert, BINSTR* pBinTypes, BINSTR* pBinCerts,
                                  BINSTR* pBinPriKeys, BINSTR* pBinCaPubs);

/*
 * Renews certificates, with new keys if bKeyUpdate. The pairs are input and output. ZR side only. 10004
 * without pszIP, pszIDN, pszCACert, pBinSignCert, pBinSignPriKey, pBinKmCert, pBinKmPriKey.
 */
QUILLGATE_API int CMPCertUpdate(void* pContext, char* pszIP, int nPort, bool bKeyUpdate, char* pszIDN,
                                char* pszCACert, BINSTR* pBinSignCert, BINSTR* pBinSignPriKey,
                                BINSTR* pBinKmCert, BINSTR* pBinKmPriKey, BINSTR* pBinCaPubs);

/*
 * The same with lists. ZR side only. 10004 without pszIP, pszIDN, pszCACert, pBinTypes, pBinCerts,
 * pBinPriKeys.
 */
QUILLGATE_API int CMPCertUpdate2(void* pContext, char* pszIP, int nPort, bool bKeyUpdate, char* pszIDN,
                                 char* pszCACert, BINSTR* pBinTypes, BINSTR* pBinCerts, BINSTR* pBinPriKeys,
                                 BINSTR* pBinCaPubs);

/*
 * Revokes certificates. ZR side only. 10004 without pszIP, pBinSignCert, pBinSignPriKey, pBinKmCert,
 * pBinKmPriKey.
 */
QUILLGATE_API int CMPCertCertRevoke(void* pContext, char* pszIP, int nPort, int nReasonCode,
                                    BINSTR* pBinSignCert, BINSTR* pBinSignPriKey, BINSTR* pBinKmCert,
                                    BINSTR* pBinKmPriKey);

/* The same with lists. ZR side only. 10004 without pszIP, pBinTypes, pBinCerts, pBinPriKeys. */
QUILLGATE_API int CMPCertCertRevoke2(void* pContext, char* pszIP, int nPort, int nReasonCode,
                                     BINSTR* pBinTypes, BINSTR* pBinCerts, BINSTR* pBinPriKeys);

/*
 * Recovers the key-management pair. ZR side only. 10004 without pszIP, pszRefNum, pszAuthCode, pBinSignCert,
 * pBinSignPriKey.
 */
QUILLGATE_API int CMPCertCertRecovery(void* pContext, char* pszIP, int nPort, char* pszRefNum,
                                      char* pszAuthCode, BINSTR* pBinSignCert, BINSTR* pBinSignPriKey,
                                      BINSTR* pBinKmCert, BINSTR* pBinKmPriKey);

#endif
