#include "Operations.h"

void addProtocolOperations(std::vector<Operation>& operations)
{
    OPERATION(OCSPMakeOCSPReq,
              (BINSTR * pBinCerts, bool bSign, BINSTR* pBinMyCert, BINSTR* pBinMyPriKey, BINSTR* pBinReqMsg),
              "ZRTK_OCSP_MakeOCSPReq", "GPKI_OCSP_MakeOCSPReq", "pBinCerts+, pBinMyCert+, pBinMyPriKey+");
    OPERATION(OCSPSendAndRecv, (char* pszURL, BINSTR* pBinCert, BINSTR* pBinReqMsg, BINSTR* pBinResMsg),
              "ZRTK_OCSP_SendAndRecv", "GPKI_OCSP_SendAndRecv", "pszURL, pBinCert+, pBinReqMsg+");
    OPERATION(OCSPVerifyResMsg,
              (BINSTR * pBinReqMsg, BINSTR * pBinResMsg, int* pnCertStatCnt, BINSTR* pBinOCSPSvrCert),
              "ZRTK_OCSP_VerifyResMsg(ctx, pBinReqMsg, pBinResMsg, pBinOCSPSvrCert)",
              "GPKI_OCSP_VerifyResMsg", "pBinReqMsg+, pBinResMsg+");
    OPERATION(OCSPGetCertStatus, (int nIndex, int* pnStatus, char* szRevocationDate, int* pRevReason), "-",
              "GPKI_OCSP_GetCertStatus", "");
    OPERATION(TSPTimeStampData,
              (char* pszIP, int nPort, int nHashAlg, char* pszPolicy, BINSTR* pBinData, bool bSign,
               BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinTimeStampToken),
              "ZRTK_TSP_TimeStampData", "-", "pszIP, pszPolicy, pBinData, pBinCert, pBinPriKey");
    OPERATION(TSPTimeStampFile,
              (char* pszIP, int nPort, int nHashAlg, char* pszPolicy, char* pszDataFilePath, bool bSign,
               BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinTimeStampToken),
              "refused (10004)", "-", "pszIP, pszPolicy, pszDataFilePath, pBinCert, pBinPriKey");
    OPERATION(TSPMakeReqMsg,
              (BINSTR * pBinData, int nHashAlg, char* pszPolicy, bool bSign, BINSTR* pBinCert,
               BINSTR* pBinPriKey, BINSTR* pBinReqMsg),
              "ZRTK_TSP_MakeReqMsg", "GPKI_TSP_MakeReqMsg", "pBinData, pszPolicy, pBinCert, pBinPriKey");
    OPERATION(TSPSendAndRecv1, (char* pszIP, int nPort, BINSTR* pBinReqMsg, BINSTR* pBinResMsg),
              "ZRTK_TSP_SendAndRecv", "GPKI_TSP_SendAndRecv", "pszIP, pBinReqMsg");
    OPERATION(TSPSendAndRecv2, (BINSTR * pBinResMsg, BINSTR * pBinTSACert, BINSTR * pBinToken),
              "ZRTK_TSP_VerifyResMsg", "GPKI_TSP_VerifyResMsg", "pBinResMsg");
    OPERATION(TSPVerifyToken, (BINSTR * pBinData, BINSTR * pBinToken), "ZRTK_TSP_VerifyToken",
              "GPKI_TSP_VerifyToken", "pBinData, pBinToken");
    OPERATION(TSPVerifyToken2,
              (char* pszDataFilePath, BINSTR* pBinData, BINSTR* pBinToken, BINSTR* pBinTSACert),
              "ZRTK_TSP_VerifyToken2(ctx, pszDataFilePath, pBinToken)",
              "GPKI_TSP_VerifyToken2(ctx, pBinData, pBinToken, pBinTSACert)",
              "pBinToken; ZR side: pszDataFilePath; GPKI side: pBinData");
    OPERATION(TSPGetTokenInfo,
              (BINSTR * pBinToken, int nAllocLen, char* pszCN, char* pszDN, char* pszPolicy, char* pszHashAlg,
               char* pszHashValue, char* pszSerialNum, char* pszGenTime, char* pszNonce, BINSTR* pBinTSACert),
              "ZRTK_TSP_GetTokenInfo(ctx, pBinToken, nAllocLen, pszPolicy, pszHashAlg, pszHashValue, "
              "pszSerialNum, pszGenTime, pszNonce, pBinTSACert)",
              "GPKI_TSP_GetTokenInfo(ctx, pBinToken, nAllocLen, pszCN, pszDN, pszPolicy, pszHashAlg, "
              "pszHashValue, pszSerialNum, pszGenTime, pszNonce)",
              "pBinToken");
    OPERATION(CMPSetProtocol, (int nType), "ZRTK_CMP_SetProtocol", "-", "");
    OPERATION(CMPSetCA, (int nCA), "ZRTK_CMP_SetCA", "-", "");
    OPERATION(CMPCertRequest,
              (char* pszIP, int nPort, char* pszRefNum, char* pszAuthCode, char* pszIDN, char* pszCACert,
               BINSTR* pBinSignCert, BINSTR* pBinSignPriKey, BINSTR* pBinKmCert, BINSTR* pBinKmPriKey,
               BINSTR* pBinCaPubs),
              "ZRTK_CMP_CertRequest", "-", "pszIP, pszRefNum, pszAuthCode, pszIDN, pszCACert");
    OPERATION(CMPCertRequest2,
              (char* pszIP, int nPort, char* pszRefNum, char* pszAuthCode, char* pszIDN, char* pszCACert,
               BINSTR* pBinTypes, BINSTR* pBinCerts, BINSTR* pBinPriKeys, BINSTR* pBinCaPubs),
              "ZRTK_CMP_CertRequest2", "-", "pszIP, pszRefNum, pszAuthCode, pszIDN, pszCACert");
    OPERATION(CMPCertUpdate,
              (char* pszIP, int nPort, bool bKeyUpdate, char* pszIDN, char* pszCACert, BINSTR* pBinSignCert,
               BINSTR* pBinSignPriKey, BINSTR* pBinKmCert, BINSTR* pBinKmPriKey, BINSTR* pBinCaPubs),
              "ZRTK_CMP_CertUpdate", "-",
              "pszIP, pszIDN, pszCACert, pBinSignCert, pBinSignPriKey; ZR side: pBinKmCert, pBinKmPriKey");
    OPERATION(CMPCertUpdate2,
              (char* pszIP, int nPort, bool bKeyUpdate, char* pszIDN, char* pszCACert, BINSTR* pBinTypes,
               BINSTR* pBinCerts, BINSTR* pBinPriKeys, BINSTR* pBinCaPubs),
              "ZRTK_CMP_CertUpdate2", "-", "pszIP, pszIDN, pszCACert, pBinTypes, pBinCerts, pBinPriKeys");
    OPERATION(CMPCertCertRevoke,
              (char* pszIP, int nPort, int nReasonCode, BINSTR* pBinSignCert, BINSTR* pBinSignPriKey,
               BINSTR* pBinKmCert, BINSTR* pBinKmPriKey),
              "ZRTK_CMP_CertRevoke", "-", "pszIP, pBinSignCert, pBinSignPriKey, pBinKmCert, pBinKmPriKey");
    OPERATION(
        CMPCertCertRevoke2,
        (char* pszIP, int nPort, int nReasonCode, BINSTR* pBinTypes, BINSTR* pBinCerts, BINSTR* pBinPriKeys),
        "ZRTK_CMP_CertRevoke2", "-", "pszIP, pBinTypes, pBinCerts, pBinPriKeys");
    OPERATION(CMPCertCertRecovery,
              (char* pszIP, int nPort, char* pszRefNum, char* pszAuthCode, BINSTR* pBinSignCert,
               BINSTR* pBinSignPriKey, BINSTR* pBinKmCert, BINSTR* pBinKmPriKey),
              "ZRTK_CMP_CertRecovery", "-", "pszIP, pszRefNum, pszAuthCode, pBinSignCert, pBinSignPriKey");
}
