#include "quillgate/toolkit_message.h"

#include "ZRAPIWrap.h"

int CMSMakeSignedData(void* pContext, int nOption, BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinTBSData,
                      char* pszSignTime, BINSTR* pBinSignedData)
{
    return Forward(pContext, &CWrapperAPI::CMSMakeSignedData, nOption, pBinCert, pBinPriKey, pBinTBSData,
                   pszSignTime, pBinSignedData);
}

int CMSMakeSignedDataWithAddSigner(void* pContext, int nOption, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                   BINSTR* pBinTBSData, char* pszSignTime, BINSTR* pBinSignedData)
{
    return Forward(pContext, &CWrapperAPI::CMSMakeSignedDataWithAddSigner, nOption, pBinCert, pBinPriKey,
                   pBinTBSData, pszSignTime, pBinSignedData);
}

int CMSProcessSignedData(void* pContext, int nOption, BINSTR* pBinSignedData, BINSTR* pBinData,
                         int* nSignerCnt)
{
    return Forward(pContext, &CWrapperAPI::CMSProcessSignedData, nOption, pBinSignedData, pBinData,
                   nSignerCnt);
}

int CMSGetSignerCert(void* pContext, int nIndex, BINSTR* pBinSignerCert, char* pszSignTime)
{
    return Forward(pContext, &CWrapperAPI::CMSGetSignerCert, nIndex, pBinSignerCert, pszSignTime);
}

int CMSMakekTBSData(void* pContext, int nOption, BINSTR* pBinCert, BINSTR* pBinData, char* pszSignTime,
                    BINSTR* pBinTBSData)
{
    return Forward(pContext, &CWrapperAPI::CMSMakekTBSData, nOption, pBinCert, pBinData, pszSignTime,
                   pBinTBSData);
}

int CMSComposeSignedData(void* pContext, BINSTR* pBinSignature, BINSTR* pBinSignedData)
{
    return Forward(pContext, &CWrapperAPI::CMSComposeSignedData, pBinSignature, pBinSignedData);
}

int CMSSetOption(void* pContext, int nOption)
{
    return Forward(pContext, &CWrapperAPI::CMSSetOption, nOption);
}

int CMSMakeSignedDataFile(void* pContext, BINSTR* pBinCert, BINSTR* pBinPriKey, char* pBinTBSDataFilePath,
                          char* pszSignTime, char* pszSignedDataFilePath)
{
    return Forward(pContext, &CWrapperAPI::CMSMakeSignedDataFile, pBinCert, pBinPriKey, pBinTBSDataFilePath,
                   pszSignTime, pszSignedDataFilePath);
}

int CMSMakeSignedDataFileWithContent(void* pContext, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                     char* pBinTBSDataFilePath, char* pszSignTime,
                                     char* pszSignedDataFilePath)
{
    return Forward(pContext, &CWrapperAPI::CMSMakeSignedDataFileWithContent, pBinCert, pBinPriKey,
                   pBinTBSDataFilePath, pszSignTime, pszSignedDataFilePath);
}

int CMSProcessSignedDataFile(void* pContext, char* pszSignedDataFilePath, char* pszTBSDataFilePath,
                             BINSTR* pBinSignerCert, char* pszSignTime)
{
    return Forward(pContext, &CWrapperAPI::CMSProcessSignedDataFile, pszSignedDataFilePath,
                   pszTBSDataFilePath, pBinSignerCert, pszSignTime);
}

int CMSProcessSignedDataFileWithContent(void* pContext, char* pszSignedDataFilePath, char* pszTBSDataFilePath,
                                        BINSTR* pBinSignerCert, char* pszSignTime)
{
    return Forward(pContext, &CWrapperAPI::CMSProcessSignedDataFileWithContent, pszSignedDataFilePath,
                   pszTBSDataFilePath, pBinSignerCert, pszSignTime);
}

int CMSGetSignerCaPubs(void* pContext, BINSTR* pBinCertCaPubs)
{
    return Forward(pContext, &CWrapperAPI::CMSGetSignerCaPubs, pBinCertCaPubs);
}

int CMSGetTBTData(void* pContext, int nSignerIndex, BINSTR* pBinTBTData)
{
    return Forward(pContext, &CWrapperAPI::CMSGetTBTData, nSignerIndex, pBinTBTData);
}

int CMSGetTimeStampToken1(void* pContext, int nSignerIndex, BINSTR* pBinTST)
{
    return Forward(pContext, &CWrapperAPI::CMSGetTimeStampToken, nSignerIndex, pBinTST);
}

int CMSGetTimeStampToken2(void* pContext, BINSTR* pBinSignedData, int nSignerIndex, BINSTR* pBinTST,
                          BINSTR* pBinSignedDataWithTST)
{
    return Forward(pContext, &CWrapperAPI::CMSGetTimeStampToken, pBinSignedData, nSignerIndex, pBinTST,
                   pBinSignedDataWithTST);
}

int CMSMakeEnvelopedData(void* pContext, int nOption, BINSTR* pBinCert, BINSTR* pBinTBEData, int nSymAlg,
                         BINSTR* pBinEnvelopData)
{
    return Forward(pContext, &CWrapperAPI::CMSMakeEnvelopedData, nOption, pBinCert, pBinTBEData, nSymAlg,
                   pBinEnvelopData);
}

int CMSMakeEnvDataWithMultiRec(void* pContext, int nOption, BINSTR* pBinCert, BINSTR* pBinTBEData,
                               int nSymAlg, BINSTR* pBinEnvelopData)
{
    return Forward(pContext, &CWrapperAPI::CMSMakeEnvDataWithMultiRec, nOption, pBinCert, pBinTBEData,
                   nSymAlg, pBinEnvelopData);
}

int CMSProcessEnvelopedData(void* pContext, BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinEnvData,
                            BINSTR* pBinData)
{
    return Forward(pContext, &CWrapperAPI::CMSProcessEnvelopedData, pBinCert, pBinPriKey, pBinEnvData,
                   pBinData);
}

int CMSMakeEnvelopedDataFile(void* pContext, BINSTR* pBinCert, char* pszTBEDataFilePath, int nSymAlg,
                             char* pszEnvDataFilePath, char* pszEncDataFilePath)
{
    return Forward(pContext, &CWrapperAPI::CMSMakeEnvelopedDataFile, pBinCert, pszTBEDataFilePath, nSymAlg,
                   pszEnvDataFilePath, pszEncDataFilePath);
}

int CMSProcessEnvelopedDataFile(void* pContext, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                char* pszEnvDataFilePath, char* pszEncDataFilePath, char* pszDataFilePath)
{
    return Forward(pContext, &CWrapperAPI::CMSProcessEnvelopedDataFile, pBinCert, pBinPriKey,
                   pszEnvDataFilePath, pszEncDataFilePath, pszDataFilePath);
}

int CMSMakeEnveDataFileWithContent(void* pContext, BINSTR* pBinCert, char* pszTBEDataFilePath, int nSymAlg,
                                   char* pszEnvDataFilePath)
{
    return Forward(pContext, &CWrapperAPI::CMSMakeEnvDataWithContentFile, pBinCert, pszTBEDataFilePath,
                   nSymAlg, pszEnvDataFilePath);
}

int CMSProcessEnvDataFileWithContent(void* pContext, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                     char* pszEnvDataFilePath, char* pszDataFilePath)
{
    return Forward(pContext, &CWrapperAPI::CMSProcessEnvDataWithContentFile, pBinCert, pBinPriKey,
                   pszEnvDataFilePath, pszDataFilePath);
}

int CMSMakeSignedAndEnvData(void* pContext, int nOption, BINSTR* pBinCert, BINSTR* pBinPriKey,
                            BINSTR* pBinRecCert, BINSTR* pBinData, int nSymAlg, BINSTR* pBinSignedAndEnvData)
{
    return Forward(pContext, &CWrapperAPI::CMSMakeSignedAndEnvData, nOption, pBinCert, pBinPriKey,
                   pBinRecCert, pBinData, nSymAlg, pBinSignedAndEnvData);
}

int CMSProcessSignedAndEnvData(void* pContext, int nOption, BINSTR* pBinCert, BINSTR* pBinPriKey,
                               BINSTR* pBinSignedAndEnvData, BINSTR* pBinData, BINSTR* pBinSignerCert)
{
    return Forward(pContext, &CWrapperAPI::CMSProcessSignedAndEnvData, nOption, pBinCert, pBinPriKey,
                   pBinSignedAndEnvData, pBinData, pBinSignerCert);
}

int CMSMakeEncryptedData(void* pContext, int nOption, BINSTR* pBinCert, BINSTR* pBinTBEData, int nSymAlg,
                         BINSTR* pBinEncrypedData)
{
    return Forward(pContext, &CWrapperAPI::CMSMakeEncryptedData, nOption, pBinCert, pBinTBEData, nSymAlg,
                   pBinEncrypedData);
}

int CMSProcessEncryptedData(void* pContext, BINSTR* pBinKey, BINSTR* pBinEncrypedData, BINSTR* pBinData)
{
    return Forward(pContext, &CWrapperAPI::CMSProcessEncryptedData, pBinKey, pBinEncrypedData, pBinData);
}
