#include "WrapperDispatch.h"

int CWrapperAPI::MediaLoad(char* pszLibPath)
{
    return Both(Require(NotNull(pszLibPath)), &CZRTKWrap::MediaLoad, &CGPKIWrap::StorageLoad, pszLibPath);
}

int CWrapperAPI::MediaUnLoad()
{
    return Both(Require(), &CZRTKWrap::MediaUnLoad, &CGPKIWrap::StorageUnLoad);
}

int CWrapperAPI::MediaDiskReadFile(char* pszFilePath, BINSTR* pBinData)
{
    return Both(Require(NotNull(pszFilePath)), &CZRTKWrap::MediaDiskReadFile, &CGPKIWrap::StorageReadFile,
                pszFilePath, pBinData);
}

int CWrapperAPI::MediaDiskWriteFile(char* pszFilePath, BINSTR* pBinData)
{
    return Both(Require(NotNull(pszFilePath), HasBytes(pBinData)), &CZRTKWrap::MediaDiskWriteFile,
                &CGPKIWrap::StorageWriteFile, pszFilePath, pBinData);
}

int CWrapperAPI::MediaDiskReadCert(char* pszFilePath, int nDataType, BINSTR* pBinCert)
{
    return Dispatch(
        Require(NotNull(pszFilePath)),
        [=](CZRTKWrap& zrtk) { return zrtk.MediaDiskReadCert(pszFilePath, pBinCert); },
        [=](CGPKIWrap& gpki) {
            return gpki.StorageReadCert(STORAGE_DISK, pszFilePath, nDataType, pBinCert);
        });
}

int CWrapperAPI::MediaDiskReadPriKey(char* pszFilePath, char* pszPassword, int nDataType, BINSTR* pBinPriKey)
{
    return Dispatch(
        Require(NotNull(pszFilePath), NotNull(pszPassword)),
        [=](CZRTKWrap& zrtk) { return zrtk.MediaDiskReadPriKey(pszFilePath, pszPassword, pBinPriKey); },
        [=](CGPKIWrap& gpki) {
            return gpki.StorageReadPriKey(STORAGE_DISK, pszFilePath, pszPassword, nDataType, pBinPriKey);
        });
}

int CWrapperAPI::MediaDiskWriteCert(char* pszFilePath, int nDataType, BINSTR* pBinCert)
{
    return Dispatch(
        Require(NotNull(pszFilePath), HasData(pBinCert)),
        [=](CZRTKWrap& zrtk) { return zrtk.MediaDiskWriteCert(pszFilePath, pBinCert); },
        [=](CGPKIWrap& gpki) {
            return gpki.StorageWriteCert(STORAGE_DISK, pszFilePath, nDataType, pBinCert);
        });
}

int CWrapperAPI::MediaDiskWritePriKey(int nSymAlg, char* pszFilePath, int nDataType, char* pszPassword,
                                      BINSTR* pBinPriKey)
{
    return Dispatch(
        Require(NotNull(pszFilePath), NotNull(pszPassword), HasData(pBinPriKey)),
        [=](CZRTKWrap& zrtk) {
            return zrtk.MediaDiskWritePriKey(nSymAlg, pszFilePath, pszPassword, pBinPriKey);
        },
        [=](CGPKIWrap& gpki) {
            return gpki.StorageWritePriKey(STORAGE_DISK, pszFilePath, pszPassword, nDataType, nSymAlg,
                                           pBinPriKey);
        });
}

int CWrapperAPI::MediaDiskDeleteCert(char* pszFilePath, int nDataType)
{
    return Dispatch(
        Require(NotNull(pszFilePath)), [=](CZRTKWrap& zrtk) { return zrtk.MediaDiskDeleteCert(pszFilePath); },
        [=](CGPKIWrap& gpki) { return gpki.StorageDeleteCert(STORAGE_DISK, pszFilePath, nDataType); });
}

int CWrapperAPI::MediaDiskDeletePriKey(char* pszPassword, int nDataType, char* pszFilePath)
{
    return Dispatch(
        Require(NotNull(pszFilePath), NotNull(pszPassword)),
        [=](CZRTKWrap& zrtk) { return zrtk.MediaDiskDeletePriKey(pszPassword, pszFilePath); },
        [=](CGPKIWrap& gpki) {
            return gpki.StorageDeletePriKey(STORAGE_DISK, pszFilePath, pszPassword, nDataType);
        });
}

int CWrapperAPI::MediaCardReadCert(int nDataType, char* pszPINNumber, BINSTR* pBinCert)
{
    return Dispatch(
        Require(NotNull(pszPINNumber)),
        [=](CZRTKWrap& zrtk) { return zrtk.MediaCardReadCert(nDataType, pszPINNumber, pBinCert); },
        [=](CGPKIWrap& gpki) {
            return gpki.StorageReadCert(STORAGE_CARD, pszPINNumber, nDataType, pBinCert);
        });
}

int CWrapperAPI::MediaCardReadPriKey(int nDataType, char* pszPINNumber, char* pszPassword, BINSTR* pBinPriKey)
{
    return Dispatch(
        Require(NotNull(pszPINNumber), NotNull(pszPassword)),
        [=](CZRTKWrap& zrtk) {
            return zrtk.MediaCardReadPriKey(nDataType, pszPINNumber, pszPassword, pBinPriKey);
        },
        [=](CGPKIWrap& gpki) {
            return gpki.StorageReadPriKey(STORAGE_CARD, pszPINNumber, pszPassword, nDataType, pBinPriKey);
        });
}

int CWrapperAPI::MediaCardWriteCert(int nDataType, char* pszPINNumber, BINSTR* pBinCert)
{
    return Dispatch(
        Require(NotNull(pszPINNumber), HasData(pBinCert)),
        [=](CZRTKWrap& zrtk) { return zrtk.MediaCardWriteCert(nDataType, pszPINNumber, pBinCert); },
        [=](CGPKIWrap& gpki) {
            return gpki.StorageWriteCert(STORAGE_CARD, pszPINNumber, nDataType, pBinCert);
        });
}

int CWrapperAPI::MediaCardWritePriKey(int nDataType, int nSymAlg, char* pszPINNumber, char* pszPassword,
                                      BINSTR* pBinPriKey)
{
    return Dispatch(
        Require(NotNull(pszPINNumber), NotNull(pszPassword), HasData(pBinPriKey)),
        [=](CZRTKWrap& zrtk) {
            return zrtk.MediaCardWritePriKey(nDataType, nSymAlg, pszPINNumber, pszPassword, pBinPriKey);
        },
        [=](CGPKIWrap& gpki) {
            return gpki.StorageWritePriKey(STORAGE_CARD, pszPINNumber, pszPassword, nDataType, nSymAlg,
                                           pBinPriKey);
        });
}

int CWrapperAPI::MediaCardDeleteCert(int nDataType, char* pszPINNumber)
{
    return Dispatch(
        Require(NotNull(pszPINNumber)),
        [=](CZRTKWrap& zrtk) { return zrtk.MediaCardDeleteCert(nDataType, pszPINNumber); },
        [=](CGPKIWrap& gpki) { return gpki.StorageDeleteCert(STORAGE_CARD, pszPINNumber, nDataType); });
}

int CWrapperAPI::MediaCareDeletePriKey(int nDataType, char* pszPINNumber, char* pszPassword)
{
    return Dispatch(
        Require(NotNull(pszPINNumber), NotNull(pszPassword)),
        [=](CZRTKWrap& zrtk) { return zrtk.MediaCareDeletePriKey(nDataType, pszPINNumber, pszPassword); },
        [=](CGPKIWrap& gpki) {
            return gpki.StorageDeletePriKey(STORAGE_CARD, pszPINNumber, pszPassword, nDataType);
        });
}

int CWrapperAPI::MediaWinsWirteCertKey(int nOption, char* pszPassword, BINSTR* pBinPFX)
{
    return OnlyZrtk(Require(NotNull(pszPassword), HasData(pBinPFX)), &CZRTKWrap::MediaWinsWirteCertKey,
                    nOption, pszPassword, pBinPFX);
}

int CWrapperAPI::MediaWinsWirteCert(BINSTR* pBinCert)
{
    return OnlyZrtk(Require(HasData(pBinCert)), &CZRTKWrap::MediaWinsWirteCert, pBinCert);
}

int CWrapperAPI::MediaWinsCertCnt(char* pszIssuerCN, int* nCnt)
{
    return OnlyZrtk(Require(NotNull(pszIssuerCN)), &CZRTKWrap::MediaWinsCertCnt, pszIssuerCN, nCnt);
}

int CWrapperAPI::MediaWinsCertDN(int nIndex, int* nType, char* pszIssuerDN, char* pszSubjectDN)
{
    return OnlyZrtk(Require(), &CZRTKWrap::MediaWinsCertDN, nIndex, nType, pszIssuerDN, pszSubjectDN);
}

int CWrapperAPI::MediaWinsReadCert(int nIndex, BINSTR* pBinCert)
{
    return OnlyZrtk(Require(), &CZRTKWrap::MediaWinsReadCert, nIndex, pBinCert);
}

int CWrapperAPI::MediaWinsReadPrikey(int nIndex, BINSTR* pBinPriKey)
{
    return OnlyZrtk(Require(), &CZRTKWrap::MediaWinsReadPrikey, nIndex, pBinPriKey);
}

int CWrapperAPI::MediaWinsReadCaPubs(int nIndex, BINSTR* pBinCapubs)
{
    return OnlyZrtk(Require(), &CZRTKWrap::MediaWinsReadCaPubs, nIndex, pBinCapubs);
}
