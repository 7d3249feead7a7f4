#include "ClpCall.h"

/*
 * Functions for media that this platform does not have. A host that knows them still links and runs; each
 * answers 10005, and none looks at the handle. Two write a neighbour's name and two an end line of their own:
 * readers of the log know them so.
 */

using namespace clp;

int CLP_SetBSCertType(void* pContext, BSCERTOPT* /*stBriskSealOpt*/)
{
    startLine("CLP_SetBSCertType", pContext);
    SetLogInfo(szLogFilePath, "[[ %s (%d) ]]", "CLP_UnInitalize() End...", QG_NOT_AVAILABLE);
    return QG_NOT_AVAILABLE;
}

int CLP_SetBriskSealInfo(void* pContext, bool /*bVerifySignature*/, int* /*nBSServiceType*/,
                         char* /*pszDownloadUrl*/, int /*nDownloadUrlLen*/)
{
    return unavailable("CLP_SetBriskSealInfo", pContext);
}

int CLP_GetBSCertInfo(void* pContext, char* /*pszKeyID*/, int /*nKeyIDLen*/, CERTINFO* /*pstSelectCertInfo*/)
{
    return unavailable("CLP_GetCertInfo", pContext);
}

int CLP_GetPKCS11DeviceCount(void* pContext, int* /*nListCnt*/)
{
    return unavailable("CLP_GetPKCS11DeviceCount", pContext);
}

int CLP_GetPKCS11DeviceInfo(void* pContext, PKCS11DEVICEINFO* /*pstPKCS11DeviceInfo*/)
{
    return unavailable("CLP_GetPKCS11DeviceInfo", pContext);
}

int CLP_VerifyPKCS11Signature(void* pContext, int /*nIndex*/)
{
    return unavailable("CLP_VerifyPKCS11Signature", pContext);
}

int CLP_ClosePKCS11(void* pContext)
{
    return unavailable("CLP_SetBriskSealInfo", pContext);
}

int CLP_GetSMCardListCount(void* pContext, int* /*nCount*/)
{
    return unavailable("CLP_GetSMCardListCount", pContext);
}

int CLP_GetSMCardListInfo(void* pContext, SUBMENULIST* /*pstSubMenuInfo*/)
{
    return unavailable("CLP_GetSMCardListInfo", pContext);
}

int CLP_SetPINNumber(void* pContext, char* /*pszPINNumber*/)
{
    return unavailable("CLP_SetPINNumber", pContext);
}

int CLP_ImportPFX(void* pContext, char* /*pszFilePath*/, char* /*pszPassword*/, char** /*pszOutSignCert*/,
                  int* /*nOutSignCertLen*/, char** /*pszOutSignKey*/, int* /*nOutSignKeyLen*/,
                  char** /*pszOutKmCert*/, int* /*nOutKmCertLen*/, char** /*pszOutKmKey*/,
                  int* /*nOutKmKeyLen*/)
{
    startLine("CLP_ImportPFX", pContext);
    return QG_NOT_AVAILABLE;
}

int CLP_ExportDataPFX(void* pContext, bool /*bEncKey*/, char* /*pszPassword*/, char* /*pszPFXFilePath*/,
                      char* /*pszSignCert*/, int /*nSignCertLen*/, char* /*pszSignKey*/, int /*nSignKeyLen*/,
                      char* /*pszKmCert*/, int /*nKmCertLen*/, char* /*pszKmKey*/, int /*nKmKeyLen*/)
{
    return unavailable("CLP_ExportDataPFX", pContext);
}
