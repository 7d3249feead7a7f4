#include "WrapperDispatch.h"

int CWrapperAPI::PFXExport(int nOption, char* pszPassword, BINSTR* pBinSignCert, BINSTR* pBinSignKey,
                           BINSTR* pBinKmCert, BINSTR* pBinKmKey, BINSTR* pBinPFX)
{
    return Dispatch(
        Require(NotNull(pszPassword), HasData(pBinSignCert), HasData(pBinSignKey)),
        [=](CZRTKWrap& zrtk) {
            return zrtk.PFXExport(nOption, pszPassword, pBinSignCert, pBinSignKey, pBinPFX);
        },
        [=](CGPKIWrap& gpki) {
            return gpki.PFXExport(pszPassword, pBinSignCert, pBinSignKey, pBinKmCert, pBinKmKey, pBinPFX);
        });
}

int CWrapperAPI::PFXExport2(int /* nOption */, char* pszPassword, BINSTR* pBinSignCert, BINSTR* pBinSignKey,
                            BINSTR* pBinCaPubs, BINSTR* pBinPFX)
{
    return OnlyZrtk(
        Require(NotNull(pszPassword), HasData(pBinSignCert), HasData(pBinSignKey), HasData(pBinCaPubs)),
        &CZRTKWrap::PFXExport2, pszPassword, pBinSignCert, pBinSignKey, pBinCaPubs, pBinPFX);
}

int CWrapperAPI::PFXImport(char* pszPassword, BINSTR* pBinPFX, BINSTR* pBinSignCert, BINSTR* pBinSignKey,
                           BINSTR* pBinKmCert, BINSTR* pBinKmKey, BINSTR* pBinCaPubs)
{
    return Dispatch(
        Require(NotNull(pszPassword), HasData(pBinPFX)),
        [=](CZRTKWrap& zrtk) {
            return zrtk.PFXImport(pszPassword, pBinPFX, pBinSignCert, pBinSignKey, pBinCaPubs);
        },
        [=](CGPKIWrap& gpki) {
            return gpki.PFXImport(pszPassword, pBinPFX, pBinSignCert, pBinSignKey, pBinKmCert, pBinKmKey);
        });
}

int CWrapperAPI::PFXExportMultiPair(int nOption, char* pszPassword, BINSTR* pBinCerts, BINSTR* pBinKeys,
                                    BINSTR* pBinPFX)
{
    return OnlyZrtk(Require(NotNull(pszPassword), HasData(pBinCerts), HasData(pBinKeys)),
                    &CZRTKWrap::PFXExportMultiPair, nOption, pszPassword, pBinCerts, pBinKeys, pBinPFX);
}

int CWrapperAPI::PFXExportMultiPair2(int /* nOption */, char* pszPassword, BINSTR* pBinCerts,
                                     BINSTR* pBinKeys, BINSTR* pBinCaPubs, BINSTR* pBinPFX)
{
    return OnlyZrtk(Require(NotNull(pszPassword), HasData(pBinCerts), HasData(pBinKeys), HasData(pBinCaPubs)),
                    &CZRTKWrap::PFXExportMultiPair2, pszPassword, pBinCerts, pBinKeys, pBinCaPubs, pBinPFX);
}

int CWrapperAPI::PFXImportMultiPair(BINSTR* pBinPFX, char* pszPassword, BINSTR* pBinCerts, BINSTR* pBinKeys,
                                    BINSTR* pBinCaPubs)
{
    return OnlyZrtk(Require(NotNull(pszPassword), NotNull(pBinCerts), NotNull(pBinKeys), NotNull(pBinCaPubs)),
                    &CZRTKWrap::PFXImportMultiPair, pBinPFX, pszPassword, pBinCerts, pBinKeys, pBinCaPubs);
}

int CWrapperAPI::PFXImportMultiPair2(int nOption, BINSTR* pBinPFX, char* pszPassword, BINSTR* pBinCerts,
                                     BINSTR* pBinKeys, BINSTR* pBinCaPubs)
{
    return OnlyZrtk(Require(NotNull(pszPassword), NotNull(pBinCerts), NotNull(pBinKeys), NotNull(pBinCaPubs)),
                    &CZRTKWrap::PFXImportMultiPair2, nOption, pBinPFX, pszPassword, pBinCerts, pBinKeys,
                    pBinCaPubs);
}
