#include "ZRTKWrap.h"

int CZRTKWrap::PFXExport(int nOption, char* pszPassword, BINSTR* pBinSignCert, BINSTR* pBinSignKey,
                         BINSTR* pBinPFX)
{
    return Call("ZRTK_PFX_Export", Require(NotNull(pszPassword), HasData(pBinSignCert), HasData(pBinSignKey)),
                m_pContext, nOption, pszPassword, pBinSignCert, pBinSignKey, pBinPFX);
}

int CZRTKWrap::PFXExport2(char* pszPassword, BINSTR* pBinSignCert, BINSTR* pBinSignKey, BINSTR* pBinCaPubs,
                          BINSTR* pBinPFX)
{
    return Call(
        "ZRTK_PFX_Export2",
        Require(NotNull(pszPassword), HasData(pBinSignCert), HasData(pBinSignKey), HasData(pBinCaPubs)),
        m_pContext, pszPassword, pBinSignCert, pBinSignKey, pBinCaPubs, pBinPFX);
}

int CZRTKWrap::PFXImport(char* pszPassword, BINSTR* pBinPFX, BINSTR* pBinSignCert, BINSTR* pBinSignKey,
                         BINSTR* pBinCaPubs)
{
    return Call("ZRTK_PFX_Import", Require(NotNull(pszPassword), HasData(pBinPFX)), m_pContext, pszPassword,
                pBinPFX, pBinSignCert, pBinSignKey, pBinCaPubs);
}

int CZRTKWrap::PFXExportMultiPair(int nOption, char* pszPassword, BINSTR* pBinCerts, BINSTR* pBinKeys,
                                  BINSTR* pBinPFX)
{
    return Call("ZRTK_PFX_ExportMultiPair",
                Require(NotNull(pszPassword), HasData(pBinCerts), HasData(pBinKeys)), m_pContext, nOption,
                pszPassword, pBinCerts, pBinKeys, pBinPFX);
}

// The operation of PFXExportMultiPair, with an argument list of its own. Hosts rely on it.
int CZRTKWrap::PFXExportMultiPair2(char* pszPassword, BINSTR* pBinCerts, BINSTR* pBinKeys, BINSTR* pBinCaPubs,
                                   BINSTR* pBinPFX)
{
    return Call("ZRTK_PFX_ExportMultiPair",
                Require(NotNull(pszPassword), HasData(pBinCerts), HasData(pBinKeys), HasData(pBinCaPubs)),
                m_pContext, pszPassword, pBinCerts, pBinKeys, pBinCaPubs, pBinPFX);
}

int CZRTKWrap::PFXImportMultiPair(BINSTR* pBinPFX, char* pszPassword, BINSTR* pBinCerts, BINSTR* pBinKeys,
                                  BINSTR* pBinCaPubs)
{
    return Call("ZRTK_PFX_ImportMultiPair",
                Require(NotNull(pszPassword), NotNull(pBinCerts), NotNull(pBinKeys), NotNull(pBinCaPubs),
                        HasData(pBinPFX)),
                m_pContext, pszPassword, pBinPFX, pBinCerts, pBinKeys, pBinCaPubs);
}

int CZRTKWrap::PFXImportMultiPair2(int nOption, BINSTR* pBinPFX, char* pszPassword, BINSTR* pBinCerts,
                                   BINSTR* pBinKeys, BINSTR* pBinCaPubs)
{
    return Call("ZRTK_PFX_ImportMultiPair2",
                Require(NotNull(pszPassword), NotNull(pBinCerts), NotNull(pBinKeys), NotNull(pBinCaPubs),
                        HasData(pBinPFX)),
                m_pContext, nOption, pszPassword, pBinPFX, pBinCerts, pBinKeys, pBinCaPubs);
}
