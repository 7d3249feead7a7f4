#include "GPKIWrap.h"

int CGPKIWrap::CMSMakeSignedData(BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinTBSData, char* pszSignTime,
                                 BINSTR* pBinSignedData)
{
    return Call("GPKI_CMS_MakeSignedData",
                Require(HasData(pBinCert), HasData(pBinPriKey), NotNull(pszSignTime), HasData(pBinTBSData)),
                m_pContext, pBinCert, pBinPriKey, pBinTBSData, pszSignTime, pBinSignedData);
}

int CGPKIWrap::CMSMakeSignedDataWithAddSigner(BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinTBSData,
                                              char* pszSignTime, BINSTR* pBinSignedData)
{
    return Call("GPKI_CMS_MakeSignedDataWithAddSigner",
                Require(HasData(pBinCert), HasData(pBinPriKey), NotNull(pszSignTime), HasData(pBinTBSData)),
                m_pContext, pBinCert, pBinPriKey, pBinTBSData, pszSignTime, pBinSignedData);
}

int CGPKIWrap::CMSProcessSignedData2(BINSTR* pBinSignedData, BINSTR* pBinData, int* nSignerCnt)
{
    return Call("GPKI_CMS_ProcessSignedData2", Require(HasData(pBinSignedData)), m_pContext, pBinSignedData,
                pBinData, nSignerCnt);
}

int CGPKIWrap::CMSGetSigner(int nIndex, BINSTR* pBinSignerCert, char* pszSignTime)
{
    return Call("GPKI_CMS_GetSigner", Require(), m_pContext, nIndex, pBinSignerCert, pszSignTime);
}

int CGPKIWrap::CMSMakeSignedDataNoContentFile(BINSTR* pBinCert, BINSTR* pBinPriKey, char* pBinTBSDataFilePath,
                                              char* pszSignTime, char* pszSignedDataFilePath)
{
    return Call("GPKI_CMS_MakeSignedData_NoContent_File",
                Require(HasData(pBinCert), HasData(pBinPriKey), NotNull(pBinTBSDataFilePath),
                        NotNull(pszSignTime), NotNull(pszSignedDataFilePath)),
                m_pContext, pBinCert, pBinPriKey, pBinTBSDataFilePath, pszSignTime, pszSignedDataFilePath);
}

int CGPKIWrap::CMSMakeSignedDataFile(BINSTR* pBinCert, BINSTR* pBinPriKey, char* pBinTBSDataFilePath,
                                     char* pszSignTime, char* pszSignedDataFilePath)
{
    return Call("GPKI_CMS_MakeSignedData_File",
                Require(HasData(pBinCert), HasData(pBinPriKey), NotNull(pBinTBSDataFilePath),
                        NotNull(pszSignTime), NotNull(pszSignedDataFilePath)),
                m_pContext, pBinCert, pBinPriKey, pBinTBSDataFilePath, pszSignTime, pszSignedDataFilePath);
}

int CGPKIWrap::CMSProcessSignedDataNoContentFile(char* pszSignedDataFilePath, char* pszTBSDataFilePath,
                                                 BINSTR* pBinSignerCert, char* pszSignTime)
{
    return Call("GPKI_CMS_ProcessSignedData_NoContent_File",
                Require(NotNull(pszSignedDataFilePath), NotNull(pszTBSDataFilePath)), m_pContext,
                pszSignedDataFilePath, pszTBSDataFilePath, pBinSignerCert, pszSignTime);
}

int CGPKIWrap::CMSProcessSignedDataFile(char* pszSignedDataFilePath, char* pszTBSDataFilePath,
                                        BINSTR* pBinSignerCert, char* pszSignTime)
{
    return Call("GPKI_CMS_ProcessSignedData_File",
                Require(NotNull(pszSignedDataFilePath), NotNull(pszTBSDataFilePath)), m_pContext,
                pszSignedDataFilePath, pszTBSDataFilePath, pBinSignerCert, pszSignTime);
}

int CGPKIWrap::CMSGetSignerCaPubs(BINSTR* pBinCertCaPubs)
{
    return Call("GPKI_CMS_GetSignerCaPubs", Require(), m_pContext, pBinCertCaPubs);
}

int CGPKIWrap::CMSGetTBTData(int nSignerIndex, BINSTR* pBinTBTData)
{
    return Call("GPKI_CMS_GetTBTData", Require(), m_pContext, nSignerIndex, pBinTBTData);
}

int CGPKIWrap::CMSGetTimeStampToken(int nSignerIndex, BINSTR* pBinTST)
{
    return Call("GPKI_CMS_GetTimeStampToken", Require(), m_pContext, nSignerIndex, pBinTST);
}

int CGPKIWrap::CMSSetTimeStampToken(BINSTR* pBinSignedData, int nSignerIndex, BINSTR* pBinTST,
                                    BINSTR* pBinSignedDataWithTST)
{
    return Call("GPKI_CMS_SetTimeStampToken", Require(HasData(pBinSignedData), HasData(pBinTST)), m_pContext,
                pBinSignedData, nSignerIndex, pBinTST, pBinSignedDataWithTST);
}

int CGPKIWrap::CMSMakeEnvelopedData(BINSTR* pBinCert, BINSTR* pBinTBEData, int nSymAlg,
                                    BINSTR* pBinEnvelopData)
{
    return Call("GPKI_CMS_MakeEnvelopedData", Require(HasData(pBinCert), HasData(pBinTBEData)), m_pContext,
                pBinCert, pBinTBEData, nSymAlg, pBinEnvelopData);
}

int CGPKIWrap::CMSMakeEnvDataWithMultiRec(BINSTR* pBinCert, BINSTR* pBinTBEData, int nSymAlg,
                                          BINSTR* pBinEnvelopData)
{
    return Call("GPKI_CMS_MakeEnvelopedDataWithMultiRecipients",
                Require(HasData(pBinCert), HasData(pBinTBEData)), m_pContext, pBinCert, pBinTBEData, nSymAlg,
                pBinEnvelopData);
}

int CGPKIWrap::CMSProcessEnvelopedData(BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinEnvData,
                                       BINSTR* pBinData)
{
    return Call("GPKI_CMS_ProcessEnvelopedData",
                Require(HasData(pBinCert), HasData(pBinPriKey), HasData(pBinEnvData)), m_pContext, pBinCert,
                pBinPriKey, pBinEnvData, pBinData);
}

int CGPKIWrap::CMSMakeEnvelopedDataFile(BINSTR* pBinCert, char* pszTBEDataFilePath, int nSymAlg,
                                        char* pszEnvDataFilePath)
{
    return Call("GPKI_CMS_MakeEnvelopedData_File",
                Require(HasData(pBinCert), NotNull(pszTBEDataFilePath), NotNull(pszEnvDataFilePath)),
                m_pContext, pBinCert, pszTBEDataFilePath, nSymAlg, pszEnvDataFilePath);
}

int CGPKIWrap::CMSProcessEnvelopedDataNoContentFile(BINSTR* pBinCert, BINSTR* pBinPriKey,
                                                    char* pszEnvDataFilePath, char* pszEncDataFilePath,
                                                    char* pszDataFilePath)
{
    return Call("GPKI_CMS_ProcessEnvelopedData_NoContent_File",
                Require(HasData(pBinCert), HasData(pBinPriKey), NotNull(pszEnvDataFilePath),
                        NotNull(pszEncDataFilePath), NotNull(pszDataFilePath)),
                m_pContext, pBinCert, pBinPriKey, pszEnvDataFilePath, pszEncDataFilePath, pszDataFilePath);
}

int CGPKIWrap::CMSProcessEnvelopedDataFile(BINSTR* pBinCert, BINSTR* pBinPriKey, char* pszEnvDataFilePath,
                                           char* pszDataFilePath)
{
    return Call("GPKI_CMS_ProcessEnvelopedData_File",
                Require(HasData(pBinCert), HasData(pBinPriKey), NotNull(pszEnvDataFilePath),
                        NotNull(pszDataFilePath)),
                m_pContext, pBinCert, pBinPriKey, pszEnvDataFilePath, pszDataFilePath);
}

int CGPKIWrap::CMSMakeSignedAndEnvData(BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinRecCert,
                                       BINSTR* pBinData, int nSymAlg, BINSTR* pBinSignedAndEnvData)
{
    return Call("GPKI_CMS_MakeSignedAndEnvData",
                Require(HasData(pBinCert), HasData(pBinPriKey), HasData(pBinRecCert), HasData(pBinData)),
                m_pContext, pBinCert, pBinPriKey, pBinRecCert, pBinData, nSymAlg, pBinSignedAndEnvData);
}

int CGPKIWrap::CMSProcessSignedAndEnvData(BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinSignedAndEnvData,
                                          BINSTR* pBinData, BINSTR* pBinSignerCert)
{
    return Call("GPKI_CMS_ProcessSignedAndEnvData",
                Require(HasData(pBinCert), HasData(pBinPriKey), HasData(pBinSignedAndEnvData)), m_pContext,
                pBinCert, pBinPriKey, pBinSignedAndEnvData, pBinData, pBinSignerCert);
}

int CGPKIWrap::CMSMakeEncryptedData(BINSTR* pBinTBEData, BINSTR* pBinEncrypedData)
{
    return Call("GPKI_CMS_MakeEncryptedData", Require(HasData(pBinTBEData)), m_pContext, pBinTBEData,
                pBinEncrypedData);
}

int CGPKIWrap::CMSProcessEncryptedData(BINSTR* pBinKey, BINSTR* pBinEncrypedData, BINSTR* pBinData)
{
    return Call("GPKI_CMS_ProcessEncryptedData", Require(HasData(pBinKey), HasData(pBinEncrypedData)),
                m_pContext, pBinKey, pBinEncrypedData, pBinData);
}

int CGPKIWrap::CMSProcessSignedData(BINSTR* pBinSignedData, BINSTR* pBinData, BINSTR* pBinignerCert,
                                    char* pszSignTime)
{
    return Call("GPKI_CMS_ProcessSignedData", Require(HasData(pBinSignedData)), m_pContext, pBinSignedData,
                pBinData, pBinignerCert, pszSignTime);
}

int CGPKIWrap::CMSMakeEnvelopedDataNoContentFile(BINSTR* pBinCert, char* pszTBEDataFilePath, int nSymAlg,
                                                 char* pBinEnvelopedDataFilePath,
                                                 char* pszEncryptedContentFilePath)
{
    return Call("GPKI_CMS_MakeEnvelopedData_NoContent_File",
                Require(HasData(pBinCert), NotNull(pszTBEDataFilePath), NotNull(pBinEnvelopedDataFilePath),
                        NotNull(pszEncryptedContentFilePath)),
                m_pContext, pBinCert, pszTBEDataFilePath, nSymAlg, pBinEnvelopedDataFilePath,
                pszEncryptedContentFilePath);
}

int CGPKIWrap::WCMSMakeSignedContent(BINSTR* pBinCert, BINSTR* pBinKey, BINSTR* pBinTBSData,
                                     char* pszSignTime, BINSTR* pBinSignedContent)
{
    return Call("GPKI_WCMS_MakeSignedContent",
                Require(HasData(pBinCert), HasData(pBinKey), HasData(pBinTBSData), NotNull(pszSignTime)),
                m_pContext, pBinCert, pBinKey, pBinTBSData, pszSignTime, pBinSignedContent);
}

int CGPKIWrap::WCMSProcessSignedContent(BINSTR* pBinSignedContent, BINSTR* pBinData, BINSTR* pBinpSignerCert,
                                        char* pszSignTime)
{
    return Call("GPKI_WCMS_ProcessSignedContent", Require(HasData(pBinSignedContent)), m_pContext,
                pBinSignedContent, pBinData, pBinpSignerCert, pszSignTime);
}

int CGPKIWrap::WCMSMakeWapEnvelopedData(BINSTR* pBinRecCert, BINSTR* pBinTBEData, int nSymAlg,
                                        BINSTR* pBinpWapEnvelopedData)
{
    return Call("GPKI_WCMS_MakeWapEnvelopedData", Require(HasData(pBinRecCert), HasData(pBinTBEData)),
                m_pContext, pBinRecCert, pBinTBEData, nSymAlg, pBinpWapEnvelopedData);
}

int CGPKIWrap::WCMSProcessWapEnvelopedData(BINSTR* pBinCert, BINSTR* pBinPriKey,
                                           BINSTR* pBinpWapEnvelopedData, BINSTR* pBinData)
{
    return Call("GPKI_WCMS_ProcessWapEnvelopedData",
                Require(HasData(pBinCert), HasData(pBinPriKey), HasData(pBinpWapEnvelopedData)), m_pContext,
                pBinCert, pBinPriKey, pBinpWapEnvelopedData, pBinData);
}
