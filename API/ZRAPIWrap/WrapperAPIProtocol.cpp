#include "WrapperDispatch.h"

int CWrapperAPI::OCSPMakeOCSPReq(BINSTR* pBinCerts, bool bSign, BINSTR* pBinMyCert, BINSTR* pBinMyPriKey,
                                 BINSTR* pBinReqMsg)
{
    return Both(Require(HasBytes(pBinCerts), HasBytes(pBinMyCert), HasBytes(pBinMyPriKey)),
                &CZRTKWrap::OCSPMakeOCSPReq, &CGPKIWrap::OCSPMakeOCSPReq, pBinCerts, bSign, pBinMyCert,
                pBinMyPriKey, pBinReqMsg);
}

int CWrapperAPI::OCSPSendAndRecv(char* pszURL, BINSTR* pBinCert, BINSTR* pBinReqMsg, BINSTR* pBinResMsg)
{
    return Both(Require(NotNull(pszURL), HasBytes(pBinCert), HasBytes(pBinReqMsg)),
                &CZRTKWrap::OCSPSendAndRecv, &CGPKIWrap::OCSPSendAndRecv, pszURL, pBinCert, pBinReqMsg,
                pBinResMsg);
}

int CWrapperAPI::OCSPVerifyResMsg(BINSTR* pBinReqMsg, BINSTR* pBinResMsg, int* pnCertStatCnt,
                                  BINSTR* pBinOCSPSvrCert)
{
    return Dispatch(
        Require(HasBytes(pBinReqMsg), HasBytes(pBinResMsg)),
        [=](CZRTKWrap& zrtk) { return zrtk.OCSPVerifyResMsg(pBinReqMsg, pBinResMsg, pBinOCSPSvrCert); },
        [=](CGPKIWrap& gpki) {
            return gpki.OCSPVerifyResMsg(pBinReqMsg, pBinResMsg, pnCertStatCnt, pBinOCSPSvrCert);
        });
}

int CWrapperAPI::OCSPGetCertStatus(int nIndex, int* pnStatus, char* szRevocationDate, int* pRevReason)
{
    return OnlyGpki(Require(), &CGPKIWrap::OCSPGetCertStatus, nIndex, pnStatus, szRevocationDate, pRevReason);
}

int CWrapperAPI::TSPTimeStampData(char* pszIP, int nPort, int nHashAlg, char* pszPolicy, BINSTR* pBinData,
                                  bool bSign, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                  BINSTR* pBinTimeStampToken)
{
    return OnlyZrtk(Require(NotNull(pszIP), NotNull(pszPolicy), HasData(pBinData), HasData(pBinCert),
                            HasData(pBinPriKey)),
                    &CZRTKWrap::TSPTimeStampData, pszIP, nPort, nHashAlg, pszPolicy, pBinData, bSign,
                    pBinCert, pBinPriKey, pBinTimeStampToken);
}

// Demands the path that CZRTKWrap then refuses.
int CWrapperAPI::TSPTimeStampFile(char* pszIP, int nPort, int nHashAlg, char* pszPolicy,
                                  char* pszDataFilePath, bool bSign, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                  BINSTR* pBinTimeStampToken)
{
    return OnlyZrtk(Require(NotNull(pszIP), NotNull(pszPolicy), NotNull(pszDataFilePath), HasData(pBinCert),
                            HasData(pBinPriKey)),
                    &CZRTKWrap::TSPTimeStampFile, pszIP, nPort, nHashAlg, pszPolicy, pszDataFilePath, bSign,
                    pBinCert, pBinPriKey, pBinTimeStampToken);
}

int CWrapperAPI::TSPMakeReqMsg(BINSTR* pBinData, int nHashAlg, char* pszPolicy, bool bSign, BINSTR* pBinCert,
                               BINSTR* pBinPriKey, BINSTR* pBinReqMsg)
{
    return Both(Require(HasData(pBinData), NotNull(pszPolicy), HasData(pBinCert), HasData(pBinPriKey)),
                &CZRTKWrap::TSPMakeReqMsg, &CGPKIWrap::TSPMakeReqMsg, pBinData, nHashAlg, pszPolicy, bSign,
                pBinCert, pBinPriKey, pBinReqMsg);
}

int CWrapperAPI::TSPSendAndRecv(char* pszIP, int nPort, BINSTR* pBinReqMsg, BINSTR* pBinResMsg)
{
    return Both(Require(NotNull(pszIP), HasData(pBinReqMsg)), &CZRTKWrap::TSPSendAndRecv,
                &CGPKIWrap::TSPSendAndRecv, pszIP, nPort, pBinReqMsg, pBinResMsg);
}

// The verifying step, whatever the name says.
int CWrapperAPI::TSPSendAndRecv(BINSTR* pBinResMsg, BINSTR* pBinTSACert, BINSTR* pBinToken)
{
    return Both(Require(HasData(pBinResMsg)), &CZRTKWrap::TSPVerifyResMsg, &CGPKIWrap::TSPVerifyResMsg,
                pBinResMsg, pBinTSACert, pBinToken);
}

int CWrapperAPI::TSPVerifyToken(BINSTR* pBinData, BINSTR* pBinToken)
{
    return Both(Require(HasData(pBinData), HasData(pBinToken)), &CZRTKWrap::TSPVerifyToken,
                &CGPKIWrap::TSPVerifyToken, pBinData, pBinToken);
}

int CWrapperAPI::TSPVerifyToken2(char* pszDataFilePath, BINSTR* pBinData, BINSTR* pBinToken,
                                 BINSTR* pBinTSACert)
{
    return Dispatch(
        Require(HasData(pBinToken)),
        [=](CZRTKWrap& zrtk) { return zrtk.TSPVerifyToken2(pszDataFilePath, pBinToken); },
        [=](CGPKIWrap& gpki) { return gpki.TSPVerifyToken2(pBinData, pBinToken, pBinTSACert); });
}

int CWrapperAPI::TSPGetTokenInfo(BINSTR* pBinToken, int nAllocLen, char* pszCN, char* pszDN, char* pszPolicy,
                                 char* pszHashAlg, char* pszHashValue, char* pszSerialNum, char* pszGenTime,
                                 char* pszNonce, BINSTR* pBinTSACert)
{
    return Dispatch(
        Require(HasData(pBinToken)),
        [=](CZRTKWrap& zrtk) {
            return zrtk.TSPGetTokenInfo(pBinToken, nAllocLen, pszPolicy, pszHashAlg, pszHashValue,
                                        pszSerialNum, pszGenTime, pszNonce, pBinTSACert);
        },
        [=](CGPKIWrap& gpki) {
            return gpki.TSPGetTokenInfo(pBinToken, nAllocLen, pszCN, pszDN, pszPolicy, pszHashAlg,
                                        pszHashValue, pszSerialNum, pszGenTime, pszNonce);
        });
}

int CWrapperAPI::CMPSetProtocol(int nType)
{
    return OnlyZrtk(Require(), &CZRTKWrap::CMPSetProtocol, nType);
}

int CWrapperAPI::CMPSetCA(int nCA)
{
    return OnlyZrtk(Require(), &CZRTKWrap::CMPSetCA, nCA);
}

int CWrapperAPI::CMPCertRequest(char* pszIP, int nPort, char* pszRefNum, char* pszAuthCode, char* pszIDN,
                                char* pszCACert, BINSTR* pBinSignCert, BINSTR* pBinSignPriKey,
                                BINSTR* pBinKmCert, BINSTR* pBinKmPriKey, BINSTR* pBinCaPubs)
{
    return OnlyZrtk(Require(NotNull(pszIP), NotNull(pszRefNum), NotNull(pszAuthCode), NotNull(pszIDN),
                            NotNull(pszCACert)),
                    &CZRTKWrap::CMPCertRequest, pszIP, nPort, pszRefNum, pszAuthCode, pszIDN, pszCACert,
                    pBinSignCert, pBinSignPriKey, pBinKmCert, pBinKmPriKey, pBinCaPubs);
}

int CWrapperAPI::CMPCertRequest2(char* pszIP, int nPort, char* pszRefNum, char* pszAuthCode, char* pszIDN,
                                 char* pszCACert, BINSTR* pBinTypes, BINSTR* pBinCerts, BINSTR* pBinPriKeys,
                                 BINSTR* pBinCaPubs)
{
    return OnlyZrtk(Require(NotNull(pszIP), NotNull(pszRefNum), NotNull(pszAuthCode), NotNull(pszIDN),
                            NotNull(pszCACert)),
                    &CZRTKWrap::CMPCertRequest2, pszIP, nPort, pszRefNum, pszAuthCode, pszIDN, pszCACert,
                    pBinTypes, pBinCerts, pBinPriKeys, pBinCaPubs);
}

int CWrapperAPI::CMPCertUpdate(char* pszIP, int nPort, bool bKeyUpdate, char* pszIDN, char* pszCACert,
                               BINSTR* pBinSignCert, BINSTR* pBinSignPriKey, BINSTR* pBinKmCert,
                               BINSTR* pBinKmPriKey, BINSTR* pBinCaPubs)
{
    return OnlyZrtk(Require(NotNull(pszIP), NotNull(pszIDN), NotNull(pszCACert), HasData(pBinSignCert),
                            HasData(pBinSignPriKey)),
                    &CZRTKWrap::CMPCertUpdate, pszIP, nPort, bKeyUpdate, pszIDN, pszCACert, pBinSignCert,
                    pBinSignPriKey, pBinKmCert, pBinKmPriKey, pBinCaPubs);
}

int CWrapperAPI::CMPCertUpdate2(char* pszIP, int nPort, bool bKeyUpdate, char* pszIDN, char* pszCACert,
                                BINSTR* pBinTypes, BINSTR* pBinCerts, BINSTR* pBinPriKeys, BINSTR* pBinCaPubs)
{
    return OnlyZrtk(Require(NotNull(pszIP), NotNull(pszIDN), NotNull(pszCACert), HasData(pBinTypes),
                            HasData(pBinCerts), HasData(pBinPriKeys)),
                    &CZRTKWrap::CMPCertUpdate2, pszIP, nPort, bKeyUpdate, pszIDN, pszCACert, pBinTypes,
                    pBinCerts, pBinPriKeys, pBinCaPubs);
}

int CWrapperAPI::CMPCertCertRevoke(char* pszIP, int nPort, int nReasonCode, BINSTR* pBinSignCert,
                                   BINSTR* pBinSignPriKey, BINSTR* pBinKmCert, BINSTR* pBinKmPriKey)
{
    return OnlyZrtk(Require(NotNull(pszIP), HasData(pBinSignCert), HasData(pBinSignPriKey),
                            HasData(pBinKmCert), HasData(pBinKmPriKey)),
                    &CZRTKWrap::CMPCertCertRevoke, pszIP, nPort, nReasonCode, pBinSignCert, pBinSignPriKey,
                    pBinKmCert, pBinKmPriKey);
}

int CWrapperAPI::CMPCertCertRevoke2(char* pszIP, int nPort, int nReasonCode, BINSTR* pBinTypes,
                                    BINSTR* pBinCerts, BINSTR* pBinPriKeys)
{
    return OnlyZrtk(Require(NotNull(pszIP), HasData(pBinTypes), HasData(pBinCerts), HasData(pBinPriKeys)),
                    &CZRTKWrap::CMPCertCertRevoke2, pszIP, nPort, nReasonCode, pBinTypes, pBinCerts,
                    pBinPriKeys);
}

int CWrapperAPI::CMPCertCertRecovery(char* pszIP, int nPort, char* pszRefNum, char* pszAuthCode,
                                     BINSTR* pBinSignCert, BINSTR* pBinSignPriKey, BINSTR* pBinKmCert,
                                     BINSTR* pBinKmPriKey)
{
    return OnlyZrtk(Require(NotNull(pszIP), NotNull(pszRefNum), NotNull(pszAuthCode), HasData(pBinSignCert),
                            HasData(pBinSignPriKey)),
                    &CZRTKWrap::CMPCertCertRecovery, pszIP, nPort, pszRefNum, pszAuthCode, pBinSignCert,
                    pBinSignPriKey, pBinKmCert, pBinKmPriKey);
}
