#include "quillgate/toolkit_media.h"

#include "ZRAPIWrap.h"

int MediaLoad(void* pContext, char* pszLibPath)
{
    return Forward(pContext, &CWrapperAPI::MediaLoad, pszLibPath);
}

int MediaUnLoad(void* pContext)
{
    return Forward(pContext, &CWrapperAPI::MediaUnLoad);
}

int MediaDiskReadFile(void* pContext, char* pszFilePath, BINSTR* pBinData)
{
    return Forward(pContext, &CWrapperAPI::MediaDiskReadFile, pszFilePath, pBinData);
}

int MediaDiskWriteFile(void* pContext, char* pszFilePath, BINSTR* pBinData)
{
    return Forward(pContext, &CWrapperAPI::MediaDiskWriteFile, pszFilePath, pBinData);
}

int MediaDiskReadCert(void* pContext, char* pszFilePath, int nDataType, BINSTR* pBinCert)
{
    return Forward(pContext, &CWrapperAPI::MediaDiskReadCert, pszFilePath, nDataType, pBinCert);
}

int MediaDiskReadPriKey(void* pContext, char* pszFilePath, char* pszPassword, int nDataType,
                        BINSTR* pBinPriKey)
{
    return Forward(pContext, &CWrapperAPI::MediaDiskReadPriKey, pszFilePath, pszPassword, nDataType,
                   pBinPriKey);
}

int MediaDiskWriteCert(void* pContext, char* pszFilePath, int nDataType, BINSTR* pBinCert)
{
    return Forward(pContext, &CWrapperAPI::MediaDiskWriteCert, pszFilePath, nDataType, pBinCert);
}

int MediaDiskWritePriKey(void* pContext, int nSymAlg, char* pszFilePath, int nDataType, char* pszPassword,
                         BINSTR* pBinPriKey)
{
    return Forward(pContext, &CWrapperAPI::MediaDiskWritePriKey, nSymAlg, pszFilePath, nDataType, pszPassword,
                   pBinPriKey);
}

int MediaDiskDeleteCert(void* pContext, char* pszFilePath, int nDataType)
{
    return Forward(pContext, &CWrapperAPI::MediaDiskDeleteCert, pszFilePath, nDataType);
}

int MediaDiskDeletePriKey(void* pContext, char* pszPassword, int nDataType, char* pszFilePath)
{
    return Forward(pContext, &CWrapperAPI::MediaDiskDeletePriKey, pszPassword, nDataType, pszFilePath);
}

int MediaCardReadCert(void* pContext, int nDataType, char* pszPINNumber, BINSTR* pBinCert)
{
    return Forward(pContext, &CWrapperAPI::MediaCardReadCert, nDataType, pszPINNumber, pBinCert);
}

int MediaCardReadPriKey(void* pContext, int nDataType, char* pszPINNumber, char* pszPassword,
                        BINSTR* pBinPriKey)
{
    return Forward(pContext, &CWrapperAPI::MediaCardReadPriKey, nDataType, pszPINNumber, pszPassword,
                   pBinPriKey);
}

int MediaCardWriteCert(void* pContext, int nDataType, char* pszPINNumber, BINSTR* pBinCert)
{
    return Forward(pContext, &CWrapperAPI::MediaCardWriteCert, nDataType, pszPINNumber, pBinCert);
}

int MediaCardWritePriKey(void* pContext, int nDataType, int nSymAlg, char* pszPINNumber, char* pszPassword,
                         BINSTR* pBinPriKey)
{
    return Forward(pContext, &CWrapperAPI::MediaCardWritePriKey, nDataType, nSymAlg, pszPINNumber,
                   pszPassword, pBinPriKey);
}

int MediaCardDeleteCert(void* pContext, int nDataType, char* pszPINNumber)
{
    return Forward(pContext, &CWrapperAPI::MediaCardDeleteCert, nDataType, pszPINNumber);
}

int MediaCareDeletePriKey(void* pContext, int nDataType, char* pszPINNumber, char* pszPassword)
{
    return Forward(pContext, &CWrapperAPI::MediaCareDeletePriKey, nDataType, pszPINNumber, pszPassword);
}

int MediaWinsWirteCertKey(void* pContext, int nOption, char* pszPassword, BINSTR* pBinPFX)
{
    return Forward(pContext, &CWrapperAPI::MediaWinsWirteCertKey, nOption, pszPassword, pBinPFX);
}

int MediaWinsWirteCert(void* pContext, BINSTR* pBinCert)
{
    return Forward(pContext, &CWrapperAPI::MediaWinsWirteCert, pBinCert);
}

int MediaWinsCertCnt(void* pContext, char* pszIssuerCN, int* nCnt)
{
    return Forward(pContext, &CWrapperAPI::MediaWinsCertCnt, pszIssuerCN, nCnt);
}

int MediaWinsCertDN(void* pContext, int nIndex, int* nType, char* pszIssuerDN, char* pszSubjectDN)
{
    return Forward(pContext, &CWrapperAPI::MediaWinsCertDN, nIndex, nType, pszIssuerDN, pszSubjectDN);
}

int MediaWinsReadCert(void* pContext, int nIndex, BINSTR* pBinCert)
{
    return Forward(pContext, &CWrapperAPI::MediaWinsReadCert, nIndex, pBinCert);
}

int MediaWinsReadPrikey(void* pContext, int nIndex, BINSTR* pBinPriKey)
{
    return Forward(pContext, &CWrapperAPI::MediaWinsReadPrikey, nIndex, pBinPriKey);
}

int MediaWinsReadCaPubs(void* pContext, int nIndex, BINSTR* pBinCapubs)
{
    return Forward(pContext, &CWrapperAPI::MediaWinsReadCaPubs, nIndex, pBinCapubs);
}
