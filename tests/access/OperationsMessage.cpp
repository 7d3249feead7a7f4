#include "Operations.h"

void addMessageOperations(std::vector<Operation>& operations)
{
    OPERATION(CMSMakeSignedData,
              (int nOption, BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinTBSData, char* pszSignTime,
               BINSTR* pBinSignedData),
              "ZRTK_CMS_MakeSignedData",
              "GPKI_CMS_MakeSignedData(ctx, pBinCert, pBinPriKey, pBinTBSData, pszSignTime, pBinSignedData)",
              "pBinCert, pBinPriKey, pszSignTime; GPKI side: pBinTBSData");
    OPERATION(CMSMakeSignedDataWithAddSigner,
              (int nOption, BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinTBSData, char* pszSignTime,
               BINSTR* pBinSignedData),
              "ZRTK_CMS_MakeSignedDataWithAddSigner",
              "GPKI_CMS_MakeSignedDataWithAddSigner(ctx, pBinCert, pBinPriKey, pBinTBSData, pszSignTime, "
              "pBinSignedData)",
              "pBinCert, pBinPriKey, pszSignTime; GPKI side: pBinTBSData");
    OPERATION(CMSProcessSignedData, (int nOption, BINSTR* pBinSignedData, BINSTR* pBinData, int* nSignerCnt),
              "ZRTK_CMS_ProcessSignedData",
              "GPKI_CMS_ProcessSignedData2(ctx, pBinSignedData, pBinData, nSignerCnt)", "pBinSignedData");
    OPERATION(CMSGetSignerCert, (int nIndex, BINSTR* pBinSignerCert, char* pszSignTime),
              "ZRTK_CMS_GetSignerCert", "GPKI_CMS_GetSigner", "");
    OPERATION(CMSMakekTBSData,
              (int nOption, BINSTR* pBinCert, BINSTR* pBinData, char* pszSignTime, BINSTR* pBinTBSData),
              "ZRTK_CMS_MakeTBSData", "-", "pBinCert, pBinData, pszSignTime");
    OPERATION(CMSComposeSignedData, (BINSTR * pBinSignature, BINSTR * pBinSignedData),
              "ZRTK_CMS_ComposeSignedData", "-", "pBinSignature");
    OPERATION(CMSSetOption, (int nOption), "ZRTK_CMS_SetOption", "-", "");
    OPERATION(CMSMakeSignedDataFile,
              (BINSTR * pBinCert, BINSTR * pBinPriKey, char* pBinTBSDataFilePath, char* pszSignTime,
               char* pszSignedDataFilePath),
              "ZRTK_CMS_MakeSignedData_File", "GPKI_CMS_MakeSignedData_NoContent_File",
              "pBinCert, pBinPriKey, pBinTBSDataFilePath, pszSignTime, pszSignedDataFilePath");
    OPERATION(CMSMakeSignedDataFileWithContent,
              (BINSTR * pBinCert, BINSTR * pBinPriKey, char* pBinTBSDataFilePath, char* pszSignTime,
               char* pszSignedDataFilePath),
              "ZRTK_CMS_MakeSignedData_WithContent_File", "GPKI_CMS_MakeSignedData_File",
              "pBinCert, pBinPriKey, pBinTBSDataFilePath, pszSignTime, pszSignedDataFilePath");
    OPERATION(
        CMSProcessSignedDataFile,
        (char* pszSignedDataFilePath, char* pszTBSDataFilePath, BINSTR* pBinSignerCert, char* pszSignTime),
        "ZRTK_CMS_ProcessSignedData_File", "GPKI_CMS_ProcessSignedData_NoContent_File",
        "pszSignedDataFilePath, pszTBSDataFilePath");
    OPERATION(
        CMSProcessSignedDataFileWithContent,
        (char* pszSignedDataFilePath, char* pszTBSDataFilePath, BINSTR* pBinSignerCert, char* pszSignTime),
        "ZRTK_CMS_ProcessSignedData_File", "GPKI_CMS_ProcessSignedData_File",
        "pszSignedDataFilePath, pszTBSDataFilePath");
    OPERATION(CMSGetSignerCaPubs, (BINSTR * pBinCertCaPubs), "-", "GPKI_CMS_GetSignerCaPubs", "");
    OPERATION(CMSGetTBTData, (int nSignerIndex, BINSTR* pBinTBTData), "-", "GPKI_CMS_GetTBTData", "");
    OPERATION(CMSGetTimeStampToken1, (int nSignerIndex, BINSTR* pBinTST), "-", "GPKI_CMS_GetTimeStampToken",
              "");
    OPERATION(CMSGetTimeStampToken2,
              (BINSTR * pBinSignedData, int nSignerIndex, BINSTR* pBinTST, BINSTR* pBinSignedDataWithTST),
              "-", "GPKI_CMS_SetTimeStampToken", "pBinSignedData, pBinTST");
    OPERATION(CMSMakeEnvelopedData,
              (int nOption, BINSTR* pBinCert, BINSTR* pBinTBEData, int nSymAlg, BINSTR* pBinEnvelopData),
              "ZRTK_CMS_MakeEnvelopedData",
              "GPKI_CMS_MakeEnvelopedData(ctx, pBinCert, pBinTBEData, nSymAlg, pBinEnvelopData)",
              "pBinCert, pBinTBEData");
    OPERATION(
        CMSMakeEnvDataWithMultiRec,
        (int nOption, BINSTR* pBinCert, BINSTR* pBinTBEData, int nSymAlg, BINSTR* pBinEnvelopData),
        "ZRTK_CMS_MakeEnvelopedDataWithMultiRecipients",
        "GPKI_CMS_MakeEnvelopedDataWithMultiRecipients(ctx, pBinCert, pBinTBEData, nSymAlg, pBinEnvelopData)",
        "pBinCert, pBinTBEData");
    OPERATION(CMSProcessEnvelopedData,
              (BINSTR * pBinCert, BINSTR * pBinPriKey, BINSTR * pBinEnvData, BINSTR * pBinData),
              "ZRTK_CMS_ProcessEnvelopedData", "GPKI_CMS_ProcessEnvelopedData",
              "pBinCert, pBinPriKey, pBinEnvData");
    OPERATION(
        CMSMakeEnvelopedDataFile,
        (BINSTR * pBinCert, char* pszTBEDataFilePath, int nSymAlg, char* pszEnvDataFilePath,
         char* pszEncDataFilePath),
        "ZRTK_CMS_MakeEnvelopedData_File",
        "GPKI_CMS_MakeEnvelopedData_File(ctx, pBinCert, pszTBEDataFilePath, nSymAlg, pszEnvDataFilePath)",
        "pBinCert, pszTBEDataFilePath, pszEnvDataFilePath, pszEncDataFilePath");
    OPERATION(CMSProcessEnvelopedDataFile,
              (BINSTR * pBinCert, BINSTR * pBinPriKey, char* pszEnvDataFilePath, char* pszEncDataFilePath,
               char* pszDataFilePath),
              "ZRTK_CMS_ProcessEnvelopedData_File", "GPKI_CMS_ProcessEnvelopedData_NoContent_File",
              "pBinCert, pBinPriKey, pszEnvDataFilePath, pszEncDataFilePath, pszDataFilePath");
    OPERATION(CMSMakeEnveDataFileWithContent,
              (BINSTR * pBinCert, char* pszTBEDataFilePath, int nSymAlg, char* pszEnvDataFilePath),
              "ZRTK_CMS_MakeEnvelopedData_WithContent_File", "GPKI_CMS_MakeEnvelopedData_File",
              "pBinCert, pszTBEDataFilePath, pszEnvDataFilePath");
    OPERATION(CMSProcessEnvDataFileWithContent,
              (BINSTR * pBinCert, BINSTR * pBinPriKey, char* pszEnvDataFilePath, char* pszDataFilePath),
              "ZRTK_CMS_ProcessEnvelopedData_WithContent_File", "GPKI_CMS_ProcessEnvelopedData_File",
              "pBinCert, pBinPriKey, pszEnvDataFilePath, pszDataFilePath");
    OPERATION(CMSMakeSignedAndEnvData,
              (int nOption, BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinRecCert, BINSTR* pBinData,
               int nSymAlg, BINSTR* pBinSignedAndEnvData),
              "ZRTK_CMS_MakeSignedAndEnvData",
              "GPKI_CMS_MakeSignedAndEnvData(ctx, pBinCert, pBinPriKey, pBinRecCert, pBinData, nSymAlg, "
              "pBinSignedAndEnvData)",
              "pBinCert, pBinPriKey, pBinRecCert, pBinData");
    OPERATION(CMSProcessSignedAndEnvData,
              (int nOption, BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinSignedAndEnvData,
               BINSTR* pBinData, BINSTR* pBinSignerCert),
              "ZRTK_CMS_ProcessSignedAndEnvData",
              "GPKI_CMS_ProcessSignedAndEnvData(ctx, pBinCert, pBinPriKey, pBinSignedAndEnvData, pBinData, "
              "pBinSignerCert)",
              "pBinCert, pBinPriKey, pBinSignedAndEnvData");
    OPERATION(CMSMakeEncryptedData,
              (int nOption, BINSTR* pBinCert, BINSTR* pBinTBEData, int nSymAlg, BINSTR* pBinEncrypedData),
              "ZRTK_CMS_EncryptData", "GPKI_CMS_MakeEncryptedData(ctx, pBinTBEData, pBinEncrypedData)",
              "pBinTBEData");
    OPERATION(CMSProcessEncryptedData, (BINSTR * pBinKey, BINSTR * pBinEncrypedData, BINSTR * pBinData),
              "ZRTK_CMS_ProcessEncryptedData", "GPKI_CMS_ProcessEncryptedData", "pBinKey, pBinEncrypedData");
    OPERATION(PFXExport,
              (int nOption, char* pszPassword, BINSTR* pBinSignCert, BINSTR* pBinSignKey, BINSTR* pBinKmCert,
               BINSTR* pBinKmKey, BINSTR* pBinPFX),
              "ZRTK_PFX_Export(ctx, nOption, pszPassword, pBinSignCert, pBinSignKey, pBinPFX)",
              "GPKI_PFX_Export(ctx, pszPassword, pBinSignCert, pBinSignKey, pBinKmCert, pBinKmKey, pBinPFX)",
              "pszPassword, pBinSignCert, pBinSignKey; GPKI side: pBinKmCert, pBinKmKey");
    OPERATION(PFXExport2,
              (int nOption, char* pszPassword, BINSTR* pBinSignCert, BINSTR* pBinSignKey, BINSTR* pBinCaPubs,
               BINSTR* pBinPFX),
              "ZRTK_PFX_Export2(ctx, pszPassword, pBinSignCert, pBinSignKey, pBinCaPubs, pBinPFX)", "-",
              "pszPassword, pBinSignCert, pBinSignKey, pBinCaPubs");
    OPERATION(PFXImport,
              (char* pszPassword, BINSTR* pBinPFX, BINSTR* pBinSignCert, BINSTR* pBinSignKey,
               BINSTR* pBinKmCert, BINSTR* pBinKmKey, BINSTR* pBinCaPubs),
              "ZRTK_PFX_Import(ctx, pszPassword, pBinPFX, pBinSignCert, pBinSignKey, pBinCaPubs)",
              "GPKI_PFX_Import(ctx, pszPassword, pBinPFX, pBinSignCert, pBinSignKey, pBinKmCert, pBinKmKey)",
              "pszPassword, pBinPFX");
    OPERATION(PFXExportMultiPair,
              (int nOption, char* pszPassword, BINSTR* pBinCerts, BINSTR* pBinKeys, BINSTR* pBinPFX),
              "ZRTK_PFX_ExportMultiPair", "-", "pszPassword, pBinCerts, pBinKeys");
    OPERATION(PFXExportMultiPair2,
              (int nOption, char* pszPassword, BINSTR* pBinCerts, BINSTR* pBinKeys, BINSTR* pBinCaPubs,
               BINSTR* pBinPFX),
              "ZRTK_PFX_ExportMultiPair(ctx, pszPassword, pBinCerts, pBinKeys, pBinCaPubs, pBinPFX)", "-",
              "pszPassword, pBinCerts, pBinKeys, pBinCaPubs");
    OPERATION(PFXImportMultiPair,
              (BINSTR * pBinPFX, char* pszPassword, BINSTR* pBinCerts, BINSTR* pBinKeys, BINSTR* pBinCaPubs),
              "ZRTK_PFX_ImportMultiPair(ctx, pszPassword, pBinPFX, pBinCerts, pBinKeys, pBinCaPubs)", "-",
              "pszPassword, pBinCerts (pointer), pBinKeys (pointer), pBinCaPubs (pointer); ZR side: pBinPFX");
    OPERATION(
        PFXImportMultiPair2,
        (int nOption, BINSTR* pBinPFX, char* pszPassword, BINSTR* pBinCerts, BINSTR* pBinKeys,
         BINSTR* pBinCaPubs),
        "ZRTK_PFX_ImportMultiPair2(ctx, nOption, pszPassword, pBinPFX, pBinCerts, pBinKeys, pBinCaPubs)", "-",
        "pszPassword, pBinCerts (pointer), pBinKeys (pointer), pBinCaPubs (pointer); ZR side: pBinPFX");
}
