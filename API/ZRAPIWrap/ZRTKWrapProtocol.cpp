#include "ZRTKWrap.h"

int CZRTKWrap::OCSPMakeOCSPReq(BINSTR* pBinCerts, bool bSign, BINSTR* pBinMyCert, BINSTR* pBinMyPriKey,
                               BINSTR* pBinReqMsg)
{
    return Call("ZRTK_OCSP_MakeOCSPReq",
                Require(HasBytes(pBinCerts), HasBytes(pBinMyCert), HasBytes(pBinMyPriKey)), m_pContext,
                pBinCerts, bSign, pBinMyCert, pBinMyPriKey, pBinReqMsg);
}

int CZRTKWrap::OCSPSendAndRecv(char* pszURL, BINSTR* pBinCert, BINSTR* pBinReqMsg, BINSTR* pBinResMsg)
{
    return Call("ZRTK_OCSP_SendAndRecv", Require(NotNull(pszURL), HasBytes(pBinCert), HasBytes(pBinReqMsg)),
                m_pContext, pszURL, pBinCert, pBinReqMsg, pBinResMsg);
}

int CZRTKWrap::OCSPVerifyResMsg(BINSTR* pBinReqMsg, BINSTR* pBinResMsg, BINSTR* pBinOCSPSvrCert)
{
    return Call("ZRTK_OCSP_VerifyResMsg", Require(HasBytes(pBinReqMsg), HasBytes(pBinResMsg)), m_pContext,
                pBinReqMsg, pBinResMsg, pBinOCSPSvrCert);
}

int CZRTKWrap::TSPTimeStampData(char* pszIP, int nPort, int nHashAlg, char* pszPolicy, BINSTR* pBinData,
                                bool bSign, BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinTimeStampToken)
{
    return Call("ZRTK_TSP_TimeStampData",
                Require(NotNull(pszIP), NotNull(pszPolicy), HasData(pBinData), HasData(pBinCert),
                        HasData(pBinPriKey)),
                m_pContext, pszIP, nPort, nHashAlg, pszPolicy, pBinData, bSign, pBinCert, pBinPriKey,
                pBinTimeStampToken);
}

// Demands the path to be null, which the dispatcher refuses: no host has ever got through, and none may now.
int CZRTKWrap::TSPTimeStampFile(char* pszIP, int nPort, int nHashAlg, char* pszPolicy, char* pszDataFilePath,
                                bool bSign, BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinTimeStampToken)
{
    return Call("ZRTK_TSP_TimeStampFile",
                Require(NotNull(pszIP), NotNull(pszPolicy), IsNull(pszDataFilePath), HasData(pBinCert),
                        HasData(pBinPriKey)),
                m_pContext, pszIP, nPort, nHashAlg, pszPolicy, pszDataFilePath, bSign, pBinCert, pBinPriKey,
                pBinTimeStampToken);
}

int CZRTKWrap::TSPMakeReqMsg(BINSTR* pBinData, int nHashAlg, char* pszPolicy, bool bSign, BINSTR* pBinCert,
                             BINSTR* pBinPriKey, BINSTR* pBinReqMsg)
{
    return Call("ZRTK_TSP_MakeReqMsg",
                Require(HasData(pBinData), NotNull(pszPolicy), HasData(pBinCert), HasData(pBinPriKey)),
                m_pContext, pBinData, nHashAlg, pszPolicy, bSign, pBinCert, pBinPriKey, pBinReqMsg);
}

int CZRTKWrap::TSPSendAndRecv(char* pszIP, int nPort, BINSTR* pBinReqMsg, BINSTR* pBinResMsg)
{
    return Call("ZRTK_TSP_SendAndRecv", Require(NotNull(pszIP), HasData(pBinReqMsg)), m_pContext, pszIP,
                nPort, pBinReqMsg, pBinResMsg);
}

int CZRTKWrap::TSPVerifyResMsg(BINSTR* pBinResMsg, BINSTR* pBinTSACert, BINSTR* pBinToken)
{
    return Call("ZRTK_TSP_VerifyResMsg", Require(HasData(pBinResMsg)), m_pContext, pBinResMsg, pBinTSACert,
                pBinToken);
}

int CZRTKWrap::TSPVerifyToken(BINSTR* pBinData, BINSTR* pBinToken)
{
    return Call("ZRTK_TSP_VerifyToken", Require(HasData(pBinData), HasData(pBinToken)), m_pContext, pBinData,
                pBinToken);
}

int CZRTKWrap::TSPVerifyToken2(char* pszDataFilePath, BINSTR* pBinToken)
{
    return Call("ZRTK_TSP_VerifyToken2", Require(HasData(pBinToken), NotNull(pszDataFilePath)), m_pContext,
                pszDataFilePath, pBinToken);
}

int CZRTKWrap::TSPGetTokenInfo(BINSTR* pBinToken, int nAllocLen, char* pszPolicy, char* pszHashAlg,
                               char* pszHashValue, char* pszSerialNum, char* pszGenTime, char* pszNonce,
                               BINSTR* pBinTSACert)
{
    return Call("ZRTK_TSP_GetTokenInfo", Require(HasData(pBinToken)), m_pContext, pBinToken, nAllocLen,
                pszPolicy, pszHashAlg, pszHashValue, pszSerialNum, pszGenTime, pszNonce, pBinTSACert);
}

int CZRTKWrap::CMPSetProtocol(int nType)
{
    return Call("ZRTK_CMP_SetProtocol", Require(), m_pContext, nType);
}

int CZRTKWrap::CMPSetCA(int nCA)
{
    return Call("ZRTK_CMP_SetCA", Require(), m_pContext, nCA);
}

int CZRTKWrap::CMPCertRequest(char* pszIP, int nPort, char* pszRefNum, char* pszAuthCode, char* pszIDN,
                              char* pszCACert, BINSTR* pBinSignCert, BINSTR* pBinSignPriKey,
                              BINSTR* pBinKmCert, BINSTR* pBinKmPriKey, BINSTR* pBinCaPubs)
{
    return Call("ZRTK_CMP_CertRequest",
                Require(NotNull(pszIP), NotNull(pszRefNum), NotNull(pszAuthCode), NotNull(pszIDN),
                        NotNull(pszCACert)),
                m_pContext, pszIP, nPort, pszRefNum, pszAuthCode, pszIDN, pszCACert, pBinSignCert,
                pBinSignPriKey, pBinKmCert, pBinKmPriKey, pBinCaPubs);
}

int CZRTKWrap::CMPCertRequest2(char* pszIP, int nPort, char* pszRefNum, char* pszAuthCode, char* pszIDN,
                               char* pszCACert, BINSTR* pBinTypes, BINSTR* pBinCerts, BINSTR* pBinPriKeys,
                               BINSTR* pBinCaPubs)
{
    return Call("ZRTK_CMP_CertRequest2",
                Require(NotNull(pszIP), NotNull(pszRefNum), NotNull(pszAuthCode), NotNull(pszIDN),
                        NotNull(pszCACert)),
                m_pContext, pszIP, nPort, pszRefNum, pszAuthCode, pszIDN, pszCACert, pBinTypes, pBinCerts,
                pBinPriKeys, pBinCaPubs);
}

int CZRTKWrap::CMPCertUpdate(char* pszIP, int nPort, bool bKeyUpdate, char* pszIDN, char* pszCACert,
                             BINSTR* pBinSignCert, BINSTR* pBinSignPriKey, BINSTR* pBinKmCert,
                             BINSTR* pBinKmPriKey, BINSTR* pBinCaPubs)
{
    return Call("ZRTK_CMP_CertUpdate",
                Require(NotNull(pszIP), NotNull(pszIDN), NotNull(pszCACert), HasData(pBinSignCert),
                        HasData(pBinSignPriKey), HasData(pBinKmCert), HasData(pBinKmPriKey)),
                m_pContext, pszIP, nPort, bKeyUpdate, pszIDN, pszCACert, pBinSignCert, pBinSignPriKey,
                pBinKmCert, pBinKmPriKey, pBinCaPubs);
}

int CZRTKWrap::CMPCertUpdate2(char* pszIP, int nPort, bool bKeyUpdate, char* pszIDN, char* pszCACert,
                              BINSTR* pBinTypes, BINSTR* pBinCerts, BINSTR* pBinPriKeys, BINSTR* pBinCaPubs)
{
    return Call("ZRTK_CMP_CertUpdate2",
                Require(NotNull(pszIP), NotNull(pszIDN), NotNull(pszCACert), HasData(pBinTypes),
                        HasData(pBinCerts), HasData(pBinPriKeys)),
                m_pContext, pszIP, nPort, bKeyUpdate, pszIDN, pszCACert, pBinTypes, pBinCerts, pBinPriKeys,
                pBinCaPubs);
}

int CZRTKWrap::CMPCertCertRevoke(char* pszIP, int nPort, int nReasonCode, BINSTR* pBinSignCert,
                                 BINSTR* pBinSignPriKey, BINSTR* pBinKmCert, BINSTR* pBinKmPriKey)
{
    return Call("ZRTK_CMP_CertRevoke",
                Require(NotNull(pszIP), HasData(pBinSignCert), HasData(pBinSignPriKey), HasData(pBinKmCert),
                        HasData(pBinKmPriKey)),
                m_pContext, pszIP, nPort, nReasonCode, pBinSignCert, pBinSignPriKey, pBinKmCert,
                pBinKmPriKey);
}

int CZRTKWrap::CMPCertCertRevoke2(char* pszIP, int nPort, int nReasonCode, BINSTR* pBinTypes,
                                  BINSTR* pBinCerts, BINSTR* pBinPriKeys)
{
    return Call("ZRTK_CMP_CertRevoke2",
                Require(NotNull(pszIP), HasData(pBinTypes), HasData(pBinCerts), HasData(pBinPriKeys)),
                m_pContext, pszIP, nPort, nReasonCode, pBinTypes, pBinCerts, pBinPriKeys);
}

int CZRTKWrap::CMPCertCertRecovery(char* pszIP, int nPort, char* pszRefNum, char* pszAuthCode,
                                   BINSTR* pBinSignCert, BINSTR* pBinSignPriKey, BINSTR* pBinKmCert,
                                   BINSTR* pBinKmPriKey)
{
    return Call("ZRTK_CMP_CertRecovery",
                Require(NotNull(pszIP), NotNull(pszRefNum), NotNull(pszAuthCode), HasData(pBinSignCert),
                        HasData(pBinSignPriKey)),
                m_pContext, pszIP, nPort, pszRefNum, pszAuthCode, pBinSignCert, pBinSignPriKey, pBinKmCert,
                pBinKmPriKey);
}

int CZRTKWrap::OCSPCheckCertStatus(char* pszOCSPUri, BINSTR* pBinCert, bool bSign, BINSTR* pBinMyCert,
                                   BINSTR* pBinMyPriKey)
{
    return Call(
        "ZRTK_OCSP_CheckCertStatus",
        Require(NotNull(pszOCSPUri), HasBytes(pBinCert), HasBytes(pBinMyCert), HasBytes(pBinMyPriKey)),
        m_pContext, pszOCSPUri, pBinCert, bSign, pBinMyCert, pBinMyPriKey);
}
