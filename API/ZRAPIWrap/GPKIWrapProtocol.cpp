#include "GPKIWrap.h"

int CGPKIWrap::OCSPMakeOCSPReq(BINSTR* pBinCerts, bool bSign, BINSTR* pBinMyCert, BINSTR* pBinMyPriKey,
                               BINSTR* pBinReqMsg)
{
    return Call("GPKI_OCSP_MakeOCSPReq",
                Require(HasBytes(pBinCerts), HasBytes(pBinMyCert), HasBytes(pBinMyPriKey)), m_pContext,
                pBinCerts, bSign, pBinMyCert, pBinMyPriKey, pBinReqMsg);
}

int CGPKIWrap::OCSPSendAndRecv(char* pszURL, BINSTR* pBinCert, BINSTR* pBinReqMsg, BINSTR* pBinResMsg)
{
    return Call("GPKI_OCSP_SendAndRecv", Require(NotNull(pszURL), HasBytes(pBinCert), HasBytes(pBinReqMsg)),
                m_pContext, pszURL, pBinCert, pBinReqMsg, pBinResMsg);
}

int CGPKIWrap::OCSPVerifyResMsg(BINSTR* pBinReqMsg, BINSTR* pBinResMsg, int* pnCertStatCnt,
                                BINSTR* pBinOCSPSvrCert)
{
    return Call("GPKI_OCSP_VerifyResMsg", Require(HasBytes(pBinReqMsg), HasBytes(pBinResMsg)), m_pContext,
                pBinReqMsg, pBinResMsg, pnCertStatCnt, pBinOCSPSvrCert);
}

int CGPKIWrap::OCSPGetCertStatus(int nIndex, int* pnStatus, char* szRevocationDate, int* pRevReason)
{
    return Call("GPKI_OCSP_GetCertStatus", Require(), m_pContext, nIndex, pnStatus, szRevocationDate,
                pRevReason);
}

int CGPKIWrap::TSPMakeReqMsg(BINSTR* pBinData, int nHashAlg, char* pszPolicy, bool bSign, BINSTR* pBinCert,
                             BINSTR* pBinPriKey, BINSTR* pBinReqMsg)
{
    return Call("GPKI_TSP_MakeReqMsg",
                Require(HasData(pBinData), NotNull(pszPolicy), HasData(pBinCert), HasData(pBinPriKey)),
                m_pContext, pBinData, nHashAlg, pszPolicy, bSign, pBinCert, pBinPriKey, pBinReqMsg);
}

int CGPKIWrap::TSPSendAndRecv(char* pszIP, int nPort, BINSTR* pBinReqMsg, BINSTR* pBinResMsg)
{
    return Call("GPKI_TSP_SendAndRecv", Require(NotNull(pszIP), HasData(pBinReqMsg)), m_pContext, pszIP,
                nPort, pBinReqMsg, pBinResMsg);
}

int CGPKIWrap::TSPVerifyResMsg(BINSTR* pBinResMsg, BINSTR* pBinTSACert, BINSTR* pBinToken)
{
    return Call("GPKI_TSP_VerifyResMsg", Require(HasData(pBinResMsg)), m_pContext, pBinResMsg, pBinTSACert,
                pBinToken);
}

int CGPKIWrap::TSPVerifyToken(BINSTR* pBinData, BINSTR* pBinToken)
{
    return Call("GPKI_TSP_VerifyToken", Require(HasData(pBinData), HasData(pBinToken)), m_pContext, pBinData,
                pBinToken);
}

int CGPKIWrap::TSPVerifyToken2(BINSTR* pBinData, BINSTR* pBinToken, BINSTR* pBinTSACert)
{
    return Call("GPKI_TSP_VerifyToken2", Require(HasData(pBinToken), HasData(pBinData)), m_pContext, pBinData,
                pBinToken, pBinTSACert);
}

int CGPKIWrap::TSPGetTokenInfo(BINSTR* pBinToken, int nAllocLen, char* pszCN, char* pszDN, char* pszPolicy,
                               char* pszHashAlg, char* pszHashValue, char* pszSerialNum, char* pszGenTime,
                               char* pszNonce)
{
    return Call("GPKI_TSP_GetTokenInfo", Require(HasData(pBinToken)), m_pContext, pBinToken, nAllocLen, pszCN,
                pszDN, pszPolicy, pszHashAlg, pszHashValue, pszSerialNum, pszGenTime, pszNonce);
}
