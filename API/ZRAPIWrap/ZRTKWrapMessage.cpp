#include "ZRTKWrap.h"

int CZRTKWrap::CMSMakeSignedData(int nOption, BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinTBSData,
                                 char* pszSignTime, BINSTR* pBinSignedData)
{
    return Call("ZRTK_CMS_MakeSignedData",
                Require(HasData(pBinCert), HasData(pBinPriKey), NotNull(pszSignTime)), m_pContext, nOption,
                pBinCert, pBinPriKey, pBinTBSData, pszSignTime, pBinSignedData);
}

int CZRTKWrap::CMSMakeSignedDataWithAddSigner(int nOption, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                              BINSTR* pBinTBSData, char* pszSignTime, BINSTR* pBinSignedData)
{
    return Call("ZRTK_CMS_MakeSignedDataWithAddSigner",
                Require(HasData(pBinCert), HasData(pBinPriKey), NotNull(pszSignTime)), m_pContext, nOption,
                pBinCert, pBinPriKey, pBinTBSData, pszSignTime, pBinSignedData);
}

int CZRTKWrap::CMSProcessSignedData(int nOption, BINSTR* pBinSignedData, BINSTR* pBinData, int* nSignerCnt)
{
    return Call("ZRTK_CMS_ProcessSignedData", Require(HasData(pBinSignedData)), m_pContext, nOption,
                pBinSignedData, pBinData, nSignerCnt);
}

int CZRTKWrap::CMSGetSignerCert(int nIndex, BINSTR* pBinSignerCert, char* pszSignTime)
{
    return Call("ZRTK_CMS_GetSignerCert", Require(), m_pContext, nIndex, pBinSignerCert, pszSignTime);
}

int CZRTKWrap::CMSMakekTBSData(int nOption, BINSTR* pBinCert, BINSTR* pBinData, char* pszSignTime,
                               BINSTR* pBinTBSData)
{
    return Call("ZRTK_CMS_MakeTBSData", Require(HasData(pBinCert), HasData(pBinData), NotNull(pszSignTime)),
                m_pContext, nOption, pBinCert, pBinData, pszSignTime, pBinTBSData);
}

int CZRTKWrap::CMSComposeSignedData(BINSTR* pBinSignature, BINSTR* pBinSignedData)
{
    return Call("ZRTK_CMS_ComposeSignedData", Require(HasData(pBinSignature)), m_pContext, pBinSignature,
                pBinSignedData);
}

int CZRTKWrap::CMSSetOption(int nOption)
{
    return Call("ZRTK_CMS_SetOption", Require(), m_pContext, nOption);
}

int CZRTKWrap::CMSMakeSignedDataFile(BINSTR* pBinCert, BINSTR* pBinPriKey, char* pBinTBSDataFilePath,
                                     char* pszSignTime, char* pszSignedDataFilePath)
{
    return Call("ZRTK_CMS_MakeSignedData_File",
                Require(HasData(pBinCert), HasData(pBinPriKey), NotNull(pBinTBSDataFilePath),
                        NotNull(pszSignTime), NotNull(pszSignedDataFilePath)),
                m_pContext, pBinCert, pBinPriKey, pBinTBSDataFilePath, pszSignTime, pszSignedDataFilePath);
}

int CZRTKWrap::CMSMakeSignedDataFileWithContent(BINSTR* pBinCert, BINSTR* pBinPriKey,
                                                char* pBinTBSDataFilePath, char* pszSignTime,
                                                char* pszSignedDataFilePath)
{
    return Call("ZRTK_CMS_MakeSignedData_WithContent_File",
                Require(HasData(pBinCert), HasData(pBinPriKey), NotNull(pBinTBSDataFilePath),
                        NotNull(pszSignTime), NotNull(pszSignedDataFilePath)),
                m_pContext, pBinCert, pBinPriKey, pBinTBSDataFilePath, pszSignTime, pszSignedDataFilePath);
}

int CZRTKWrap::CMSProcessSignedDataFile(char* pszSignedDataFilePath, char* pszTBSDataFilePath,
                                        BINSTR* pBinSignerCert, char* pszSignTime)
{
    return Call("ZRTK_CMS_ProcessSignedData_File",
                Require(NotNull(pszSignedDataFilePath), NotNull(pszTBSDataFilePath)), m_pContext,
                pszSignedDataFilePath, pszTBSDataFilePath, pBinSignerCert, pszSignTime);
}

// The same operation as without content: it tells the two forms apart itself.
int CZRTKWrap::CMSProcessSignedDataFileWithContent(char* pszSignedDataFilePath, char* pszTBSDataFilePath,
                                                   BINSTR* pBinSignerCert, char* pszSignTime)
{
    return Call("ZRTK_CMS_ProcessSignedData_File",
                Require(NotNull(pszSignedDataFilePath), NotNull(pszTBSDataFilePath)), m_pContext,
                pszSignedDataFilePath, pszTBSDataFilePath, pBinSignerCert, pszSignTime);
}

int CZRTKWrap::CMSMakeEnvelopedData(int nOption, BINSTR* pBinCert, BINSTR* pBinTBEData, int nSymAlg,
                                    BINSTR* pBinEnvelopData)
{
    return Call("ZRTK_CMS_MakeEnvelopedData", Require(HasData(pBinCert), HasData(pBinTBEData)), m_pContext,
                nOption, pBinCert, pBinTBEData, nSymAlg, pBinEnvelopData);
}

int CZRTKWrap::CMSMakeEnvDataWithMultiRec(int nOption, BINSTR* pBinCert, BINSTR* pBinTBEData, int nSymAlg,
                                          BINSTR* pBinEnvelopData)
{
    return Call("ZRTK_CMS_MakeEnvelopedDataWithMultiRecipients",
                Require(HasData(pBinCert), HasData(pBinTBEData)), m_pContext, nOption, pBinCert, pBinTBEData,
                nSymAlg, pBinEnvelopData);
}

int CZRTKWrap::CMSProcessEnvelopedData(BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinEnvData,
                                       BINSTR* pBinData)
{
    return Call("ZRTK_CMS_ProcessEnvelopedData",
                Require(HasData(pBinCert), HasData(pBinPriKey), HasData(pBinEnvData)), m_pContext, pBinCert,
                pBinPriKey, pBinEnvData, pBinData);
}

int CZRTKWrap::CMSMakeEnvelopedDataFile(BINSTR* pBinCert, char* pszTBEDataFilePath, int nSymAlg,
                                        char* pszEnvDataFilePath, char* pszEncDataFilePath)
{
    return Call("ZRTK_CMS_MakeEnvelopedData_File",
                Require(HasData(pBinCert), NotNull(pszTBEDataFilePath), NotNull(pszEnvDataFilePath),
                        NotNull(pszEncDataFilePath)),
                m_pContext, pBinCert, pszTBEDataFilePath, nSymAlg, pszEnvDataFilePath, pszEncDataFilePath);
}

int CZRTKWrap::CMSProcessEnvelopedDataFile(BINSTR* pBinCert, BINSTR* pBinPriKey, char* pszEnvDataFilePath,
                                           char* pszEncDataFilePath, char* pszDataFilePath)
{
    return Call("ZRTK_CMS_ProcessEnvelopedData_File",
                Require(HasData(pBinCert), HasData(pBinPriKey), NotNull(pszEnvDataFilePath),
                        NotNull(pszEncDataFilePath), NotNull(pszDataFilePath)),
                m_pContext, pBinCert, pBinPriKey, pszEnvDataFilePath, pszEncDataFilePath, pszDataFilePath);
}

int CZRTKWrap::CMSMakeEnvelopedDataWithContentFile(BINSTR* pBinCert, char* pszTBEDataFilePath, int nSymAlg,
                                                   char* pszEnvDataFilePath)
{
    return Call("ZRTK_CMS_MakeEnvelopedData_WithContent_File",
                Require(HasData(pBinCert), NotNull(pszTBEDataFilePath), NotNull(pszEnvDataFilePath)),
                m_pContext, pBinCert, pszTBEDataFilePath, nSymAlg, pszEnvDataFilePath);
}

int CZRTKWrap::CMSProcessEnvDataWithContentFile(BINSTR* pBinCert, BINSTR* pBinPriKey,
                                                char* pszEnvDataFilePath, char* pszDataFilePath)
{
    return Call("ZRTK_CMS_ProcessEnvelopedData_WithContent_File",
                Require(HasData(pBinCert), HasData(pBinPriKey), NotNull(pszEnvDataFilePath),
                        NotNull(pszDataFilePath)),
                m_pContext, pBinCert, pBinPriKey, pszEnvDataFilePath, pszDataFilePath);
}

int CZRTKWrap::CMSMakeSignedAndEnvData(int nOption, BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinRecCert,
                                       BINSTR* pBinData, int nSymAlg, BINSTR* pBinSignedAndEnvData)
{
    return Call("ZRTK_CMS_MakeSignedAndEnvData",
                Require(HasData(pBinCert), HasData(pBinPriKey), HasData(pBinRecCert), HasData(pBinData)),
                m_pContext, nOption, pBinCert, pBinPriKey, pBinRecCert, pBinData, nSymAlg,
                pBinSignedAndEnvData);
}

int CZRTKWrap::CMSProcessSignedAndEnvData(int nOption, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                          BINSTR* pBinSignedAndEnvData, BINSTR* pBinData,
                                          BINSTR* pBinSignerCert)
{
    return Call("ZRTK_CMS_ProcessSignedAndEnvData",
                Require(HasData(pBinCert), HasData(pBinPriKey), HasData(pBinSignedAndEnvData)), m_pContext,
                nOption, pBinCert, pBinPriKey, pBinSignedAndEnvData, pBinData, pBinSignerCert);
}

int CZRTKWrap::CMSMakeEncryptedData(int nOption, BINSTR* pBinCert, BINSTR* pBinTBEData, int nSymAlg,
                                    BINSTR* pBinEncrypedData)
{
    return Call("ZRTK_CMS_EncryptData", Require(HasData(pBinTBEData)), m_pContext, nOption, pBinCert,
                pBinTBEData, nSymAlg, pBinEncrypedData);
}

int CZRTKWrap::CMSProcessEncryptedData(BINSTR* pBinKey, BINSTR* pBinEncrypedData, BINSTR* pBinData)
{
    return Call("ZRTK_CMS_ProcessEncryptedData", Require(HasData(pBinKey), HasData(pBinEncrypedData)),
                m_pContext, pBinKey, pBinEncrypedData, pBinData);
}

int CZRTKWrap::CMSGetEnvDataRecCnt(BINSTR* pEnvelopData, int* pnCnt)
{
    return Call("ZRTK_CMS_GetEnvDataRecipCnt", Require(HasData(pEnvelopData)), m_pContext, pEnvelopData,
                pnCnt);
}

int CZRTKWrap::CMSGetEnvDataRecipInfo(int nIndex, int nAllocLen, char* pszIssuerName, char* pszSerialNum,
                                      char* pszSubjectKeyID)
{
    return Call("ZRTK_CMS_GetEnvDataRecipInfo", Require(), m_pContext, nIndex, nAllocLen, pszIssuerName,
                pszSerialNum, pszSubjectKeyID);
}
