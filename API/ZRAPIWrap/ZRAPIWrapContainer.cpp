#include "quillgate/toolkit_message.h"

#include "ZRAPIWrap.h"

int PFXExport(void* pContext, int nOption, char* pszPassword, BINSTR* pBinSignCert, BINSTR* pBinSignKey,
              BINSTR* pBinKmCert, BINSTR* pBinKmKey, BINSTR* pBinPFX)
{
    return Forward(pContext, &CWrapperAPI::PFXExport, nOption, pszPassword, pBinSignCert, pBinSignKey,
                   pBinKmCert, pBinKmKey, pBinPFX);
}

int PFXExport2(void* pContext, int nOption, char* pszPassword, BINSTR* pBinSignCert, BINSTR* pBinSignKey,
               BINSTR* pBinCaPubs, BINSTR* pBinPFX)
{
    return Forward(pContext, &CWrapperAPI::PFXExport2, nOption, pszPassword, pBinSignCert, pBinSignKey,
                   pBinCaPubs, pBinPFX);
}

int PFXImport(void* pContext, char* pszPassword, BINSTR* pBinPFX, BINSTR* pBinSignCert, BINSTR* pBinSignKey,
              BINSTR* pBinKmCert, BINSTR* pBinKmKey, BINSTR* pBinCaPubs)
{
    return Forward(pContext, &CWrapperAPI::PFXImport, pszPassword, pBinPFX, pBinSignCert, pBinSignKey,
                   pBinKmCert, pBinKmKey, pBinCaPubs);
}

int PFXExportMultiPair(void* pContext, int nOption, char* pszPassword, BINSTR* pBinCerts, BINSTR* pBinKeys,
                       BINSTR* pBinPFX)
{
    return Forward(pContext, &CWrapperAPI::PFXExportMultiPair, nOption, pszPassword, pBinCerts, pBinKeys,
                   pBinPFX);
}

int PFXExportMultiPair2(void* pContext, int nOption, char* pszPassword, BINSTR* pBinCerts, BINSTR* pBinKeys,
                        BINSTR* pBinCaPubs, BINSTR* pBinPFX)
{
    return Forward(pContext, &CWrapperAPI::PFXExportMultiPair2, nOption, pszPassword, pBinCerts, pBinKeys,
                   pBinCaPubs, pBinPFX);
}

int PFXImportMultiPair(void* pContext, BINSTR* pBinPFX, char* pszPassword, BINSTR* pBinCerts,
                       BINSTR* pBinKeys, BINSTR* pBinCaPubs)
{
    return Forward(pContext, &CWrapperAPI::PFXImportMultiPair, pBinPFX, pszPassword, pBinCerts, pBinKeys,
                   pBinCaPubs);
}

int PFXImportMultiPair2(void* pContext, int nOption, BINSTR* pBinPFX, char* pszPassword, BINSTR* pBinCerts,
                        BINSTR* pBinKeys, BINSTR* pBinCaPubs)
{
    return Forward(pContext, &CWrapperAPI::PFXImportMultiPair2, nOption, pBinPFX, pszPassword, pBinCerts,
                   pBinKeys, pBinCaPubs);
}
