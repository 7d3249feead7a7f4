#include "GPKIWrap.h"

int CGPKIWrap::PFXExport(char* pszPassword, BINSTR* pBinSignCert, BINSTR* pBinSignKey, BINSTR* pBinKmCert,
                         BINSTR* pBinKmKey, BINSTR* pBinPFX)
{
    return Call("GPKI_PFX_Export",
                Require(NotNull(pszPassword), HasData(pBinSignCert), HasData(pBinSignKey),
                        HasData(pBinKmCert), HasData(pBinKmKey)),
                m_pContext, pszPassword, pBinSignCert, pBinSignKey, pBinKmCert, pBinKmKey, pBinPFX);
}

int CGPKIWrap::PFXImport(char* pszPassword, BINSTR* pBinPFX, BINSTR* pBinSignCert, BINSTR* pBinSignKey,
                         BINSTR* pBinKmCert, BINSTR* pBinKmKey)
{
    return Call("GPKI_PFX_Import", Require(NotNull(pszPassword), HasData(pBinPFX)), m_pContext, pszPassword,
                pBinPFX, pBinSignCert, pBinSignKey, pBinKmCert, pBinKmKey);
}
