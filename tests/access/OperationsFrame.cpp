#include "Operations.h"

void addFrameOperations(std::vector<Operation>& operations)
{
    OPERATION(ZR_GetErrInfo, (int nAllocLen, char* pszErrorMsg), "ZRTK_API_GetErrInfo(ctx, 2048, ?)",
              "GPKI_API_GetErrInfo(ctx, 2048, ?)", "ZR side: pszErrorMsg; GPKI side: pszErrorMsg (10003)");
    OPERATION(ZR_GetErrInfo2, (int nAllocLen, char* pszErrorMsg), "no library call", "no library call", "");
    OPERATION(ZR_GetVersion, (int nAllocLen, char* pszVersion), "ZRTK_API_GetInfo(ctx, pszVersion, ?)",
              "GPKI_API_GetVersion", "ZR side: pszVersion");
    OPERATION(ZR_SetOption, (int nOption), "-", "GPKI_API_SetOption", "");
    OPERATION(ZR_SetConfFile, (char* pszConfFilePath), "ZRTK_API_SetConfFile", "GPKI_API_SetConfFile",
              "ZR side: pszConfFilePath (must be empty); GPKI side: pszConfFilePath");
    OPERATION(ZR_SetCaPubs, (BINSTR * pBinCaPubs), "ZRTK_CERT_SetCaPubs", "GPKI_API_SetCaPubs", "pBinCaPubs");
    OPERATION(ZR_FreeCaPubs, (), "ZRTK_CERT_FreeCaPubs", "GPKI_API_FreeCaPubs", "");
    OPERATION(ZR_Str2Time, (char* pszTime, time_t* pTime), "-", "GPKI_API_Str2Time", "GPKI side: pszTime");
    OPERATION(ZR_SetHashAlg, (int nHashAlg), "ZRTK_API_SetHashAlgo", "GPKI_API_SetHashAlgo", "");
    OPERATION(ZR_BINSTR_Create, (BINSTR * pBinstr), "ZRTK_BINSTR_Create(pBinstr)",
              "GPKI_BINSTR_Create(pBinstr)", "pBinstr (pointer)");
    OPERATION(ZR_BINSTR_Delete, (BINSTR * pBinstr), "ZRTK_BINSTR_Delete(pBinstr)",
              "GPKI_BINSTR_Delete(pBinstr)", "ZR side: pBinstr; GPKI side: pBinstr (pointer)");
    OPERATION(ZR_BINSTR_SetData, (unsigned char* pszData, int nLen, BINSTR* pBinstr),
              "ZRTK_BINSTR_SetData(pszData, nLen, pBinstr)", "GPKI_BINSTR_SetData(pszData, nLen, pBinstr)",
              "pszData, nLen, pBinstr (pointer)");
}
