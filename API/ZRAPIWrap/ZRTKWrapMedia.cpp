#include "ZRTKWrap.h"

int CZRTKWrap::MediaLoad(char* pszLibPath)
{
    return Call("ZRTK_MEDIA_Load", Require(NotNull(pszLibPath)), m_pContext, pszLibPath);
}

int CZRTKWrap::MediaUnLoad()
{
    return Call("ZRTK_MEDIA_Unload", Require(), m_pContext);
}

int CZRTKWrap::MediaDiskReadFile(char* pszFilePath, BINSTR* pBinData)
{
    return Call("ZRTK_MEDIA_DISK_ReadFile", Require(NotNull(pszFilePath)), m_pContext, pszFilePath, pBinData);
}

int CZRTKWrap::MediaDiskWriteFile(char* pszFilePath, BINSTR* pBinData)
{
    return Call("ZRTK_MEDIA_DISK_WriteFile", Require(NotNull(pszFilePath), HasBytes(pBinData)), m_pContext,
                pszFilePath, pBinData);
}

int CZRTKWrap::MediaDiskReadCert(char* pszFilePath, BINSTR* pBinCert)
{
    return Call("ZRTK_MEDIA_DISK_ReadCert", Require(NotNull(pszFilePath)), m_pContext, pszFilePath, pBinCert);
}

int CZRTKWrap::MediaDiskReadPriKey(char* pszFilePath, char* pszPassword, BINSTR* pBinPriKey)
{
    return Call("ZRTK_MEDIA_DISK_ReadPriKey", Require(NotNull(pszFilePath), NotNull(pszPassword)), m_pContext,
                pszFilePath, pszPassword, pBinPriKey);
}

int CZRTKWrap::MediaDiskWriteCert(char* pszFilePath, BINSTR* pBinCert)
{
    return Call("ZRTK_MEDIA_DISK_WriteCert", Require(NotNull(pszFilePath), HasData(pBinCert)), m_pContext,
                pszFilePath, pBinCert);
}

int CZRTKWrap::MediaDiskWritePriKey(int nSymAlg, char* pszFilePath, char* pszPassword, BINSTR* pBinPriKey)
{
    return Call("ZRTK_MEDIA_DISK_WritePriKey",
                Require(NotNull(pszFilePath), NotNull(pszPassword), HasData(pBinPriKey)), m_pContext, nSymAlg,
                pszFilePath, pszPassword, pBinPriKey);
}

int CZRTKWrap::MediaDiskDeleteCert(char* pszFilePath)
{
    return Call("ZRTK_MEDIA_DISK_DeleteCert", Require(NotNull(pszFilePath)), m_pContext, pszFilePath);
}

int CZRTKWrap::MediaDiskDeletePriKey(char* pszPassword, char* pszFilePath)
{
    return Call("ZRTK_MEDIA_DISK_DeletePriKey", Require(NotNull(pszFilePath), NotNull(pszPassword)),
                m_pContext, pszPassword, pszFilePath);
}

int CZRTKWrap::MediaCardReadCert(int nDataType, char* pszPINNumber, BINSTR* pBinCert)
{
    return Call("ZRTK_MEDIA_CARD_ReadCert", Require(NotNull(pszPINNumber)), m_pContext, nDataType,
                pszPINNumber, pBinCert);
}

int CZRTKWrap::MediaCardReadPriKey(int nDataType, char* pszPINNumber, char* pszPassword, BINSTR* pBinPriKey)
{
    return Call("ZRTK_MEDIA_CARD_ReadPriKey", Require(NotNull(pszPINNumber), NotNull(pszPassword)),
                m_pContext, nDataType, pszPINNumber, pszPassword, pBinPriKey);
}

int CZRTKWrap::MediaCardWriteCert(int nDataType, char* pszPINNumber, BINSTR* pBinCert)
{
    return Call("ZRTK_MEDIA_CARD_WriteCert", Require(NotNull(pszPINNumber), HasData(pBinCert)), m_pContext,
                nDataType, pszPINNumber, pBinCert);
}

int CZRTKWrap::MediaCardWritePriKey(int nDataType, int nSymAlg, char* pszPINNumber, char* pszPassword,
                                    BINSTR* pBinPriKey)
{
    return Call("ZRTK_MEDIA_CARD_WritePriKey",
                Require(NotNull(pszPINNumber), NotNull(pszPassword), HasData(pBinPriKey)), m_pContext,
                nDataType, nSymAlg, pszPINNumber, pszPassword, pBinPriKey);
}

int CZRTKWrap::MediaCardDeleteCert(int nDataType, char* pszPINNumber)
{
    return Call("ZRTK_MEDIA_CARD_DeleteCert", Require(NotNull(pszPINNumber)), m_pContext, nDataType,
                pszPINNumber);
}

int CZRTKWrap::MediaCareDeletePriKey(int nDataType, char* pszPINNumber, char* pszPassword)
{
    return Call("ZRTK_MEDIA_CARD_DeletePriKey", Require(NotNull(pszPINNumber), NotNull(pszPassword)),
                m_pContext, nDataType, pszPINNumber, pszPassword);
}

int CZRTKWrap::MediaWinsWirteCertKey(int nOption, char* pszPassword, BINSTR* pBinPFX)
{
    return Call("ZRTK_MEDIA_WINS_WriteCertAndPriKey", Require(NotNull(pszPassword), HasData(pBinPFX)),
                m_pContext, nOption, pszPassword, pBinPFX);
}

int CZRTKWrap::MediaWinsWirteCert(BINSTR* pBinCert)
{
    return Call("ZRTK_MEDIA_WINS_WriteCert", Require(HasData(pBinCert)), m_pContext, pBinCert);
}

int CZRTKWrap::MediaWinsCertCnt(char* pszIssuerCN, int* nCnt)
{
    return Call("ZRTK_MEDIA_WINS_GetCertCnt", Require(NotNull(pszIssuerCN)), m_pContext, pszIssuerCN, nCnt);
}

// The size of the two names is told as 8, whatever their buffers hold.
int CZRTKWrap::MediaWinsCertDN(int nIndex, int* nType, char* pszIssuerDN, char* pszSubjectDN)
{
    return Call("ZRTK_MEDIA_WINS_GetCertDN", Require(), m_pContext, nIndex, MISSTATED_SIZE, nType,
                pszIssuerDN, pszSubjectDN);
}

int CZRTKWrap::MediaWinsReadCert(int nIndex, BINSTR* pBinCert)
{
    return Call("ZRTK_MEDIA_WINS_ReadCert", Require(), m_pContext, nIndex, pBinCert);
}

int CZRTKWrap::MediaWinsReadPrikey(int nIndex, BINSTR* pBinPriKey)
{
    return Call("ZRTK_MEDIA_WINS_ReadPriKey", Require(), m_pContext, nIndex, pBinPriKey);
}

// Bound to the operation of MediaWinsReadPrikey: hosts rely on what it answers.
int CZRTKWrap::MediaWinsReadCaPubs(int nIndex, BINSTR* pBinCapubs)
{
    return Call("ZRTK_MEDIA_WINS_ReadPriKey", Require(), m_pContext, nIndex, pBinCapubs);
}
