#include "Operations.h"

void addMediaOperations(std::vector<Operation>& operations)
{
    OPERATION(MediaLoad, (char* pszLibPath), "ZRTK_MEDIA_Load", "GPKI_STORAGE_Load", "pszLibPath");
    OPERATION(MediaUnLoad, (), "ZRTK_MEDIA_Unload", "GPKI_STORAGE_Unload", "");
    OPERATION(MediaDiskReadFile, (char* pszFilePath, BINSTR* pBinData), "ZRTK_MEDIA_DISK_ReadFile",
              "GPKI_STORAGE_ReadFile", "pszFilePath");
    OPERATION(MediaDiskWriteFile, (char* pszFilePath, BINSTR* pBinData), "ZRTK_MEDIA_DISK_WriteFile",
              "GPKI_STORAGE_WriteFile", "pszFilePath, pBinData+");
    OPERATION(MediaDiskReadCert, (char* pszFilePath, int nDataType, BINSTR* pBinCert),
              "ZRTK_MEDIA_DISK_ReadCert(ctx, pszFilePath, pBinCert)",
              "GPKI_STORAGE_ReadCert(ctx, 1, pszFilePath, nDataType, pBinCert)", "pszFilePath");
    OPERATION(MediaDiskReadPriKey, (char* pszFilePath, char* pszPassword, int nDataType, BINSTR* pBinPriKey),
              "ZRTK_MEDIA_DISK_ReadPriKey(ctx, pszFilePath, pszPassword, pBinPriKey)",
              "GPKI_STORAGE_ReadPriKey(ctx, 1, pszFilePath, pszPassword, nDataType, pBinPriKey)",
              "pszFilePath, pszPassword");
    OPERATION(MediaDiskWriteCert, (char* pszFilePath, int nDataType, BINSTR* pBinCert),
              "ZRTK_MEDIA_DISK_WriteCert(ctx, pszFilePath, pBinCert)",
              "GPKI_STORAGE_WriteCert(ctx, 1, pszFilePath, nDataType, pBinCert)", "pszFilePath, pBinCert");
    OPERATION(MediaDiskWritePriKey,
              (int nSymAlg, char* pszFilePath, int nDataType, char* pszPassword, BINSTR* pBinPriKey),
              "ZRTK_MEDIA_DISK_WritePriKey(ctx, nSymAlg, pszFilePath, pszPassword, pBinPriKey)",
              "GPKI_STORAGE_WritePriKey(ctx, 1, pszFilePath, pszPassword, nDataType, nSymAlg, pBinPriKey)",
              "pszFilePath, pszPassword, pBinPriKey");
    OPERATION(MediaDiskDeleteCert, (char* pszFilePath, int nDataType),
              "ZRTK_MEDIA_DISK_DeleteCert(ctx, pszFilePath)",
              "GPKI_STORAGE_DeleteCert(ctx, 1, pszFilePath, nDataType)", "pszFilePath");
    OPERATION(MediaDiskDeletePriKey, (char* pszPassword, int nDataType, char* pszFilePath),
              "ZRTK_MEDIA_DISK_DeletePriKey(ctx, pszPassword, pszFilePath)",
              "GPKI_STORAGE_DeletePriKey(ctx, 1, pszFilePath, pszPassword, nDataType)",
              "pszFilePath, pszPassword");
    OPERATION(MediaCardReadCert, (int nDataType, char* pszPINNumber, BINSTR* pBinCert),
              "ZRTK_MEDIA_CARD_ReadCert", "GPKI_STORAGE_ReadCert(ctx, 2, pszPINNumber, nDataType, pBinCert)",
              "pszPINNumber");
    OPERATION(MediaCardReadPriKey, (int nDataType, char* pszPINNumber, char* pszPassword, BINSTR* pBinPriKey),
              "ZRTK_MEDIA_CARD_ReadPriKey",
              "GPKI_STORAGE_ReadPriKey(ctx, 2, pszPINNumber, pszPassword, nDataType, pBinPriKey)",
              "pszPINNumber, pszPassword");
    OPERATION(MediaCardWriteCert, (int nDataType, char* pszPINNumber, BINSTR* pBinCert),
              "ZRTK_MEDIA_CARD_WriteCert",
              "GPKI_STORAGE_WriteCert(ctx, 2, pszPINNumber, nDataType, pBinCert)", "pszPINNumber, pBinCert");
    OPERATION(MediaCardWritePriKey,
              (int nDataType, int nSymAlg, char* pszPINNumber, char* pszPassword, BINSTR* pBinPriKey),
              "ZRTK_MEDIA_CARD_WritePriKey",
              "GPKI_STORAGE_WritePriKey(ctx, 2, pszPINNumber, pszPassword, nDataType, nSymAlg, pBinPriKey)",
              "pszPINNumber, pszPassword, pBinPriKey");
    OPERATION(MediaCardDeleteCert, (int nDataType, char* pszPINNumber), "ZRTK_MEDIA_CARD_DeleteCert",
              "GPKI_STORAGE_DeleteCert(ctx, 2, pszPINNumber, nDataType)", "pszPINNumber");
    OPERATION(MediaCareDeletePriKey, (int nDataType, char* pszPINNumber, char* pszPassword),
              "ZRTK_MEDIA_CARD_DeletePriKey",
              "GPKI_STORAGE_DeletePriKey(ctx, 2, pszPINNumber, pszPassword, nDataType)",
              "pszPINNumber, pszPassword");
    OPERATION(MediaWinsWirteCertKey, (int nOption, char* pszPassword, BINSTR* pBinPFX),
              "ZRTK_MEDIA_WINS_WriteCertAndPriKey", "-", "pszPassword, pBinPFX");
    OPERATION(MediaWinsWirteCert, (BINSTR * pBinCert), "ZRTK_MEDIA_WINS_WriteCert", "-", "pBinCert");
    OPERATION(MediaWinsCertCnt, (char* pszIssuerCN, int* nCnt), "ZRTK_MEDIA_WINS_GetCertCnt", "-",
              "pszIssuerCN");
    OPERATION(MediaWinsCertDN, (int nIndex, int* nType, char* pszIssuerDN, char* pszSubjectDN),
              "ZRTK_MEDIA_WINS_GetCertDN(ctx, nIndex, 8, nType, pszIssuerDN, pszSubjectDN)", "-", "");
    OPERATION(MediaWinsReadCert, (int nIndex, BINSTR* pBinCert), "ZRTK_MEDIA_WINS_ReadCert", "-", "");
    OPERATION(MediaWinsReadPrikey, (int nIndex, BINSTR* pBinPriKey), "ZRTK_MEDIA_WINS_ReadPriKey", "-", "");
    OPERATION(MediaWinsReadCaPubs, (int nIndex, BINSTR* pBinCapubs), "ZRTK_MEDIA_WINS_ReadPriKey", "-", "");
}
