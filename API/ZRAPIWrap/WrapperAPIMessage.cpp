#include "WrapperDispatch.h"

int CWrapperAPI::CMSMakeSignedData(int nOption, BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinTBSData,
                                   char* pszSignTime, BINSTR* pBinSignedData)
{
    return Dispatch(
        Require(HasData(pBinCert), HasData(pBinPriKey), NotNull(pszSignTime)),
        [=](CZRTKWrap& zrtk) {
            return zrtk.CMSMakeSignedData(nOption, pBinCert, pBinPriKey, pBinTBSData, pszSignTime,
                                          pBinSignedData);
        },
        [=](CGPKIWrap& gpki) {
            return gpki.CMSMakeSignedData(pBinCert, pBinPriKey, pBinTBSData, pszSignTime, pBinSignedData);
        });
}

int CWrapperAPI::CMSMakeSignedDataWithAddSigner(int nOption, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                                BINSTR* pBinTBSData, char* pszSignTime,
                                                BINSTR* pBinSignedData)
{
    return Dispatch(
        Require(HasData(pBinCert), HasData(pBinPriKey), NotNull(pszSignTime)),
        [=](CZRTKWrap& zrtk) {
            return zrtk.CMSMakeSignedDataWithAddSigner(nOption, pBinCert, pBinPriKey, pBinTBSData,
                                                       pszSignTime, pBinSignedData);
        },
        [=](CGPKIWrap& gpki) {
            return gpki.CMSMakeSignedDataWithAddSigner(pBinCert, pBinPriKey, pBinTBSData, pszSignTime,
                                                       pBinSignedData);
        });
}

int CWrapperAPI::CMSProcessSignedData(int nOption, BINSTR* pBinSignedData, BINSTR* pBinData, int* nSignerCnt)
{
    return Dispatch(
        Require(HasData(pBinSignedData)),
        [=](CZRTKWrap& zrtk) {
            return zrtk.CMSProcessSignedData(nOption, pBinSignedData, pBinData, nSignerCnt);
        },
        [=](CGPKIWrap& gpki) { return gpki.CMSProcessSignedData2(pBinSignedData, pBinData, nSignerCnt); });
}

int CWrapperAPI::CMSGetSignerCert(int nIndex, BINSTR* pBinSignerCert, char* pszSignTime)
{
    return Both(Require(), &CZRTKWrap::CMSGetSignerCert, &CGPKIWrap::CMSGetSigner, nIndex, pBinSignerCert,
                pszSignTime);
}

int CWrapperAPI::CMSMakekTBSData(int nOption, BINSTR* pBinCert, BINSTR* pBinData, char* pszSignTime,
                                 BINSTR* pBinTBSData)
{
    return OnlyZrtk(Require(HasData(pBinCert), HasData(pBinData), NotNull(pszSignTime)),
                    &CZRTKWrap::CMSMakekTBSData, nOption, pBinCert, pBinData, pszSignTime, pBinTBSData);
}

int CWrapperAPI::CMSComposeSignedData(BINSTR* pBinSignature, BINSTR* pBinSignedData)
{
    return OnlyZrtk(Require(HasData(pBinSignature)), &CZRTKWrap::CMSComposeSignedData, pBinSignature,
                    pBinSignedData);
}

int CWrapperAPI::CMSSetOption(int nOption)
{
    return OnlyZrtk(Require(), &CZRTKWrap::CMSSetOption, nOption);
}

int CWrapperAPI::CMSMakeSignedDataFile(BINSTR* pBinCert, BINSTR* pBinPriKey, char* pBinTBSDataFilePath,
                                       char* pszSignTime, char* pszSignedDataFilePath)
{
    return Both(Require(HasData(pBinCert), HasData(pBinPriKey), NotNull(pBinTBSDataFilePath),
                        NotNull(pszSignTime), NotNull(pszSignedDataFilePath)),
                &CZRTKWrap::CMSMakeSignedDataFile, &CGPKIWrap::CMSMakeSignedDataNoContentFile, pBinCert,
                pBinPriKey, pBinTBSDataFilePath, pszSignTime, pszSignedDataFilePath);
}

int CWrapperAPI::CMSMakeSignedDataFileWithContent(BINSTR* pBinCert, BINSTR* pBinPriKey,
                                                  char* pBinTBSDataFilePath, char* pszSignTime,
                                                  char* pszSignedDataFilePath)
{
    return Both(Require(HasData(pBinCert), HasData(pBinPriKey), NotNull(pBinTBSDataFilePath),
                        NotNull(pszSignTime), NotNull(pszSignedDataFilePath)),
                &CZRTKWrap::CMSMakeSignedDataFileWithContent, &CGPKIWrap::CMSMakeSignedDataFile, pBinCert,
                pBinPriKey, pBinTBSDataFilePath, pszSignTime, pszSignedDataFilePath);
}

int CWrapperAPI::CMSProcessSignedDataFile(char* pszSignedDataFilePath, char* pszTBSDataFilePath,
                                          BINSTR* pBinSignerCert, char* pszSignTime)
{
    return Both(Require(NotNull(pszSignedDataFilePath), NotNull(pszTBSDataFilePath)),
                &CZRTKWrap::CMSProcessSignedDataFile, &CGPKIWrap::CMSProcessSignedDataNoContentFile,
                pszSignedDataFilePath, pszTBSDataFilePath, pBinSignerCert, pszSignTime);
}

int CWrapperAPI::CMSProcessSignedDataFileWithContent(char* pszSignedDataFilePath, char* pszTBSDataFilePath,
                                                     BINSTR* pBinSignerCert, char* pszSignTime)
{
    return Both(Require(NotNull(pszSignedDataFilePath), NotNull(pszTBSDataFilePath)),
                &CZRTKWrap::CMSProcessSignedDataFileWithContent, &CGPKIWrap::CMSProcessSignedDataFile,
                pszSignedDataFilePath, pszTBSDataFilePath, pBinSignerCert, pszSignTime);
}

int CWrapperAPI::CMSGetSignerCaPubs(BINSTR* pBinCertCaPubs)
{
    return OnlyGpki(Require(), &CGPKIWrap::CMSGetSignerCaPubs, pBinCertCaPubs);
}

int CWrapperAPI::CMSGetTBTData(int nSignerIndex, BINSTR* pBinTBTData)
{
    return OnlyGpki(Require(), &CGPKIWrap::CMSGetTBTData, nSignerIndex, pBinTBTData);
}

int CWrapperAPI::CMSGetTimeStampToken(int nSignerIndex, BINSTR* pBinTST)
{
    return OnlyGpki(Require(), &CGPKIWrap::CMSGetTimeStampToken, nSignerIndex, pBinTST);
}

// Writes a token into a message, whatever the name says.
int CWrapperAPI::CMSGetTimeStampToken(BINSTR* pBinSignedData, int nSignerIndex, BINSTR* pBinTST,
                                      BINSTR* pBinSignedDataWithTST)
{
    return OnlyGpki(Require(HasData(pBinSignedData), HasData(pBinTST)), &CGPKIWrap::CMSSetTimeStampToken,
                    pBinSignedData, nSignerIndex, pBinTST, pBinSignedDataWithTST);
}

int CWrapperAPI::CMSMakeEnvelopedData(int nOption, BINSTR* pBinCert, BINSTR* pBinTBEData, int nSymAlg,
                                      BINSTR* pBinEnvelopData)
{
    return Dispatch(
        Require(HasData(pBinCert), HasData(pBinTBEData)),
        [=](CZRTKWrap& zrtk) {
            return zrtk.CMSMakeEnvelopedData(nOption, pBinCert, pBinTBEData, nSymAlg, pBinEnvelopData);
        },
        [=](CGPKIWrap& gpki) {
            return gpki.CMSMakeEnvelopedData(pBinCert, pBinTBEData, nSymAlg, pBinEnvelopData);
        });
}

int CWrapperAPI::CMSMakeEnvDataWithMultiRec(int nOption, BINSTR* pBinCert, BINSTR* pBinTBEData, int nSymAlg,
                                            BINSTR* pBinEnvelopData)
{
    return Dispatch(
        Require(HasData(pBinCert), HasData(pBinTBEData)),
        [=](CZRTKWrap& zrtk) {
            return zrtk.CMSMakeEnvDataWithMultiRec(nOption, pBinCert, pBinTBEData, nSymAlg, pBinEnvelopData);
        },
        [=](CGPKIWrap& gpki) {
            return gpki.CMSMakeEnvDataWithMultiRec(pBinCert, pBinTBEData, nSymAlg, pBinEnvelopData);
        });
}

int CWrapperAPI::CMSProcessEnvelopedData(BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinEnvData,
                                         BINSTR* pBinData)
{
    return Both(Require(HasData(pBinCert), HasData(pBinPriKey), HasData(pBinEnvData)),
                &CZRTKWrap::CMSProcessEnvelopedData, &CGPKIWrap::CMSProcessEnvelopedData, pBinCert,
                pBinPriKey, pBinEnvData, pBinData);
}

int CWrapperAPI::CMSMakeEnvelopedDataFile(BINSTR* pBinCert, char* pszTBEDataFilePath, int nSymAlg,
                                          char* pszEnvDataFilePath, char* pszEncDataFilePath)
{
    return Dispatch(
        Require(HasData(pBinCert), NotNull(pszTBEDataFilePath), NotNull(pszEnvDataFilePath),
                NotNull(pszEncDataFilePath)),
        [=](CZRTKWrap& zrtk) {
            return zrtk.CMSMakeEnvelopedDataFile(pBinCert, pszTBEDataFilePath, nSymAlg, pszEnvDataFilePath,
                                                 pszEncDataFilePath);
        },
        [=](CGPKIWrap& gpki) {
            return gpki.CMSMakeEnvelopedDataFile(pBinCert, pszTBEDataFilePath, nSymAlg, pszEnvDataFilePath);
        });
}

int CWrapperAPI::CMSProcessEnvelopedDataFile(BINSTR* pBinCert, BINSTR* pBinPriKey, char* pszEnvDataFilePath,
                                             char* pszEncDataFilePath, char* pszDataFilePath)
{
    return Both(Require(HasData(pBinCert), HasData(pBinPriKey), NotNull(pszEnvDataFilePath),
                        NotNull(pszEncDataFilePath), NotNull(pszDataFilePath)),
                &CZRTKWrap::CMSProcessEnvelopedDataFile, &CGPKIWrap::CMSProcessEnvelopedDataNoContentFile,
                pBinCert, pBinPriKey, pszEnvDataFilePath, pszEncDataFilePath, pszDataFilePath);
}

int CWrapperAPI::CMSMakeEnvDataWithContentFile(BINSTR* pBinCert, char* pszTBEDataFilePath, int nSymAlg,
                                               char* pszEnvDataFilePath)
{
    return Both(Require(HasData(pBinCert), NotNull(pszTBEDataFilePath), NotNull(pszEnvDataFilePath)),
                &CZRTKWrap::CMSMakeEnvelopedDataWithContentFile, &CGPKIWrap::CMSMakeEnvelopedDataFile,
                pBinCert, pszTBEDataFilePath, nSymAlg, pszEnvDataFilePath);
}

int CWrapperAPI::CMSProcessEnvDataWithContentFile(BINSTR* pBinCert, BINSTR* pBinPriKey,
                                                  char* pszEnvDataFilePath, char* pszDataFilePath)
{
    return Both(Require(HasData(pBinCert), HasData(pBinPriKey), NotNull(pszEnvDataFilePath),
                        NotNull(pszDataFilePath)),
                &CZRTKWrap::CMSProcessEnvDataWithContentFile, &CGPKIWrap::CMSProcessEnvelopedDataFile,
                pBinCert, pBinPriKey, pszEnvDataFilePath, pszDataFilePath);
}

int CWrapperAPI::CMSMakeSignedAndEnvData(int nOption, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                         BINSTR* pBinRecCert, BINSTR* pBinData, int nSymAlg,
                                         BINSTR* pBinSignedAndEnvData)
{
    return Dispatch(
        Require(HasData(pBinCert), HasData(pBinPriKey), HasData(pBinRecCert), HasData(pBinData)),
        [=](CZRTKWrap& zrtk) {
            return zrtk.CMSMakeSignedAndEnvData(nOption, pBinCert, pBinPriKey, pBinRecCert, pBinData, nSymAlg,
                                                pBinSignedAndEnvData);
        },
        [=](CGPKIWrap& gpki) {
            return gpki.CMSMakeSignedAndEnvData(pBinCert, pBinPriKey, pBinRecCert, pBinData, nSymAlg,
                                                pBinSignedAndEnvData);
        });
}

int CWrapperAPI::CMSProcessSignedAndEnvData(int nOption, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                            BINSTR* pBinSignedAndEnvData, BINSTR* pBinData,
                                            BINSTR* pBinSignerCert)
{
    return Dispatch(
        Require(HasData(pBinCert), HasData(pBinPriKey), HasData(pBinSignedAndEnvData)),
        [=](CZRTKWrap& zrtk) {
            return zrtk.CMSProcessSignedAndEnvData(nOption, pBinCert, pBinPriKey, pBinSignedAndEnvData,
                                                   pBinData, pBinSignerCert);
        },
        [=](CGPKIWrap& gpki) {
            return gpki.CMSProcessSignedAndEnvData(pBinCert, pBinPriKey, pBinSignedAndEnvData, pBinData,
                                                   pBinSignerCert);
        });
}

int CWrapperAPI::CMSMakeEncryptedData(int nOption, BINSTR* pBinCert, BINSTR* pBinTBEData, int nSymAlg,
                                      BINSTR* pBinEncrypedData)
{
    return Dispatch(
        Require(HasData(pBinTBEData)),
        [=](CZRTKWrap& zrtk) {
            return zrtk.CMSMakeEncryptedData(nOption, pBinCert, pBinTBEData, nSymAlg, pBinEncrypedData);
        },
        [=](CGPKIWrap& gpki) { return gpki.CMSMakeEncryptedData(pBinTBEData, pBinEncrypedData); });
}

int CWrapperAPI::CMSProcessEncryptedData(BINSTR* pBinKey, BINSTR* pBinEncrypedData, BINSTR* pBinData)
{
    return Both(Require(HasData(pBinKey), HasData(pBinEncrypedData)), &CZRTKWrap::CMSProcessEncryptedData,
                &CGPKIWrap::CMSProcessEncryptedData, pBinKey, pBinEncrypedData, pBinData);
}
