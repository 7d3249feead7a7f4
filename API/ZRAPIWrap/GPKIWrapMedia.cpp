#include "GPKIWrap.h"

int CGPKIWrap::StorageLoad(char* pszLibPath)
{
    return Call("GPKI_STORAGE_Load", Require(NotNull(pszLibPath)), m_pContext, pszLibPath);
}

int CGPKIWrap::StorageUnLoad()
{
    return Call("GPKI_STORAGE_Unload", Require(), m_pContext);
}

int CGPKIWrap::StorageReadFile(char* pszFilePath, BINSTR* pBinData)
{
    return Call("GPKI_STORAGE_ReadFile", Require(NotNull(pszFilePath)), m_pContext, pszFilePath, pBinData);
}

int CGPKIWrap::StorageWriteFile(char* pszFilePath, BINSTR* pBinData)
{
    return Call("GPKI_STORAGE_WriteFile", Require(NotNull(pszFilePath), HasBytes(pBinData)), m_pContext,
                pszFilePath, pBinData);
}

int CGPKIWrap::StorageReadCert(int nMedium, char* pszPlace, int nDataType, BINSTR* pBinCert)
{
    return Call("GPKI_STORAGE_ReadCert", Require(NotNull(pszPlace)), m_pContext, nMedium, pszPlace, nDataType,
                pBinCert);
}

int CGPKIWrap::StorageReadPriKey(int nMedium, char* pszPlace, char* pszPassword, int nDataType,
                                 BINSTR* pBinPriKey)
{
    return Call("GPKI_STORAGE_ReadPriKey", Require(NotNull(pszPlace), NotNull(pszPassword)), m_pContext,
                nMedium, pszPlace, pszPassword, nDataType, pBinPriKey);
}

int CGPKIWrap::StorageWriteCert(int nMedium, char* pszPlace, int nDataType, BINSTR* pBinCert)
{
    return Call("GPKI_STORAGE_WriteCert", Require(NotNull(pszPlace), HasData(pBinCert)), m_pContext, nMedium,
                pszPlace, nDataType, pBinCert);
}

int CGPKIWrap::StorageWritePriKey(int nMedium, char* pszPlace, char* pszPassword, int nDataType, int nSymAlg,
                                  BINSTR* pBinPriKey)
{
    return Call("GPKI_STORAGE_WritePriKey",
                Require(NotNull(pszPlace), NotNull(pszPassword), HasData(pBinPriKey)), m_pContext, nMedium,
                pszPlace, pszPassword, nDataType, nSymAlg, pBinPriKey);
}

int CGPKIWrap::StorageDeleteCert(int nMedium, char* pszPlace, int nDataType)
{
    return Call("GPKI_STORAGE_DeleteCert", Require(NotNull(pszPlace)), m_pContext, nMedium, pszPlace,
                nDataType);
}

int CGPKIWrap::StorageDeletePriKey(int nMedium, char* pszPlace, char* pszPassword, int nDataType)
{
    return Call("GPKI_STORAGE_DeletePriKey", Require(NotNull(pszPlace), NotNull(pszPassword)), m_pContext,
                nMedium, pszPlace, pszPassword, nDataType);
}
