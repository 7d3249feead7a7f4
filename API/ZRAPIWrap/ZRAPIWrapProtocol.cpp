#include "quillgate/toolkit_protocol.h"

#include "ZRAPIWrap.h"

int OCSPMakeOCSPReq(void* pContext, BINSTR* pBinCerts, bool bSign, BINSTR* pBinMyCert, BINSTR* pBinMyPriKey,
                    BINSTR* pBinReqMsg)
{
    return Forward(pContext, &CWrapperAPI::OCSPMakeOCSPReq, pBinCerts, bSign, pBinMyCert, pBinMyPriKey,
                   pBinReqMsg);
}

int OCSPSendAndRecv(void* pContext, char* pszURL, BINSTR* pBinCert, BINSTR* pBinReqMsg, BINSTR* pBinResMsg)
{
    return Forward(pContext, &CWrapperAPI::OCSPSendAndRecv, pszURL, pBinCert, pBinReqMsg, pBinResMsg);
}

int OCSPVerifyResMsg(void* pContext, BINSTR* pBinReqMsg, BINSTR* pBinResMsg, int* pnCertStatCnt,
                     BINSTR* pBinOCSPSvrCert)
{
    return Forward(pContext, &CWrapperAPI::OCSPVerifyResMsg, pBinReqMsg, pBinResMsg, pnCertStatCnt,
                   pBinOCSPSvrCert);
}

int OCSPGetCertStatus(void* pContext, int nIndex, int* pnStatus, char* szRevocationDate, int* pRevReason)
{
    return Forward(pContext, &CWrapperAPI::OCSPGetCertStatus, nIndex, pnStatus, szRevocationDate, pRevReason);
}

int TSPTimeStampData(void* pContext, char* pszIP, int nPort, int nHashAlg, char* pszPolicy, BINSTR* pBinData,
                     bool bSign, BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinTimeStampToken)
{
    return Forward(pContext, &CWrapperAPI::TSPTimeStampData, pszIP, nPort, nHashAlg, pszPolicy, pBinData,
                   bSign, pBinCert, pBinPriKey, pBinTimeStampToken);
}

int TSPTimeStampFile(void* pContext, char* pszIP, int nPort, int nHashAlg, char* pszPolicy,
                     char* pszDataFilePath, bool bSign, BINSTR* pBinCert, BINSTR* pBinPriKey,
                     BINSTR* pBinTimeStampToken)
{
    return Forward(pContext, &CWrapperAPI::TSPTimeStampFile, pszIP, nPort, nHashAlg, pszPolicy,
                   pszDataFilePath, bSign, pBinCert, pBinPriKey, pBinTimeStampToken);
}

int TSPMakeReqMsg(void* pContext, BINSTR* pBinData, int nHashAlg, char* pszPolicy, bool bSign,
                  BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinReqMsg)
{
    return Forward(pContext, &CWrapperAPI::TSPMakeReqMsg, pBinData, nHashAlg, pszPolicy, bSign, pBinCert,
                   pBinPriKey, pBinReqMsg);
}

int TSPSendAndRecv1(void* pContext, char* pszIP, int nPort, BINSTR* pBinReqMsg, BINSTR* pBinResMsg)
{
    return Forward(pContext, &CWrapperAPI::TSPSendAndRecv, pszIP, nPort, pBinReqMsg, pBinResMsg);
}

int TSPSendAndRecv2(void* pContext, BINSTR* pBinResMsg, BINSTR* pBinTSACert, BINSTR* pBinToken)
{
    return Forward(pContext, &CWrapperAPI::TSPSendAndRecv, pBinResMsg, pBinTSACert, pBinToken);
}

int TSPVerifyToken(void* pContext, BINSTR* pBinData, BINSTR* pBinToken)
{
    return Forward(pContext, &CWrapperAPI::TSPVerifyToken, pBinData, pBinToken);
}

int TSPVerifyToken2(void* pContext, char* pszDataFilePath, BINSTR* pBinData, BINSTR* pBinToken,
                    BINSTR* pBinTSACert)
{
    return Forward(pContext, &CWrapperAPI::TSPVerifyToken2, pszDataFilePath, pBinData, pBinToken,
                   pBinTSACert);
}

int TSPGetTokenInfo(void* pContext, BINSTR* pBinToken, int nAllocLen, char* pszCN, char* pszDN,
                    char* pszPolicy, char* pszHashAlg, char* pszHashValue, char* pszSerialNum,
                    char* pszGenTime, char* pszNonce, BINSTR* pBinTSACert)
{
    return Forward(pContext, &CWrapperAPI::TSPGetTokenInfo, pBinToken, nAllocLen, pszCN, pszDN, pszPolicy,
                   pszHashAlg, pszHashValue, pszSerialNum, pszGenTime, pszNonce, pBinTSACert);
}

int CMPSetProtocol(void* pContext, int nType)
{
    return Forward(pContext, &CWrapperAPI::CMPSetProtocol, nType);
}

int CMPSetCA(void* pContext, int nCA)
{
    return Forward(pContext, &CWrapperAPI::CMPSetCA, nCA);
}

int CMPCertRequest(void* pContext, char* pszIP, int nPort, char* pszRefNum, char* pszAuthCode, char* pszIDN,
                   char* pszCACert, BINSTR* pBinSignCert, BINSTR* pBinSignPriKey, BINSTR* pBinKmCert,
                   BINSTR* pBinKmPriKey, BINSTR* pBinCaPubs)
{
    return Forward(pContext, &CWrapperAPI::CMPCertRequest, pszIP, nPort, pszRefNum, pszAuthCode, pszIDN,
                   pszCACert, pBinSignCert, pBinSignPriKey, pBinKmCert, pBinKmPriKey, pBinCaPubs);
}

int CMPCertRequest2(void* pContext, char* pszIP, int nPort, char* pszRefNum, char* pszAuthCode, char* pszIDN,
                    char* pszCACert, BINSTR* pBinTypes, BINSTR* pBinCerts, BINSTR* pBinPriKeys,
                    BINSTR* pBinCaPubs)
{
    return Forward(pContext, &CWrapperAPI::CMPCertRequest2, pszIP, nPort, pszRefNum, pszAuthCode, pszIDN,
                   pszCACert, pBinTypes, pBinCerts, pBinPriKeys, pBinCaPubs);
}

int CMPCertUpdate(void* pContext, char* pszIP, int nPort, bool bKeyUpdate, char* pszIDN, char* pszCACert,
                  BINSTR* pBinSignCert, BINSTR* pBinSignPriKey, BINSTR* pBinKmCert, BINSTR* pBinKmPriKey,
                  BINSTR* pBinCaPubs)
{
    return Forward(pContext, &CWrapperAPI::CMPCertUpdate, pszIP, nPort, bKeyUpdate, pszIDN, pszCACert,
                   pBinSignCert, pBinSignPriKey, pBinKmCert, pBinKmPriKey, pBinCaPubs);
}

int CMPCertUpdate2(void* pContext, char* pszIP, int nPort, bool bKeyUpdate, char* pszIDN, char* pszCACert,
                   BINSTR* pBinTypes, BINSTR* pBinCerts, BINSTR* pBinPriKeys, BINSTR* pBinCaPubs)
{
    return Forward(pContext, &CWrapperAPI::CMPCertUpdate2, pszIP, nPort, bKeyUpdate, pszIDN, pszCACert,
                   pBinTypes, pBinCerts, pBinPriKeys, pBinCaPubs);
}

int CMPCertCertRevoke(void* pContext, char* pszIP, int nPort, int nReasonCode, BINSTR* pBinSignCert,
                      BINSTR* pBinSignPriKey, BINSTR* pBinKmCert, BINSTR* pBinKmPriKey)
{
    return Forward(pContext, &CWrapperAPI::CMPCertCertRevoke, pszIP, nPort, nReasonCode, pBinSignCert,
                   pBinSignPriKey, pBinKmCert, pBinKmPriKey);
}

int CMPCertCertRevoke2(void* pContext, char* pszIP, int nPort, int nReasonCode, BINSTR* pBinTypes,
                       BINSTR* pBinCerts, BINSTR* pBinPriKeys)
{
    return Forward(pContext, &CWrapperAPI::CMPCertCertRevoke2, pszIP, nPort, nReasonCode, pBinTypes,
                   pBinCerts, pBinPriKeys);
}

int CMPCertCertRecovery(void* pContext, char* pszIP, int nPort, char* pszRefNum, char* pszAuthCode,
                        BINSTR* pBinSignCert, BINSTR* pBinSignPriKey, BINSTR* pBinKmCert,
                        BINSTR* pBinKmPriKey)
{
    return Forward(pContext, &CWrapperAPI::CMPCertCertRecovery, pszIP, nPort, pszRefNum, pszAuthCode,
                   pBinSignCert, pBinSignPriKey, pBinKmCert, pBinKmPriKey);
}
