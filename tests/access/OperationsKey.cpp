#include "Operations.h"

void addKeyOperations(std::vector<Operation>& operations)
{
    OPERATION(PriKeyEncrypt, (int nSymAlg, char* pszPasswd, BINSTR* pBinPriKey, BINSTR* pBinEncPriKey),
              "ZRTK_PRIKEY_Encrypt", "GPKI_PRIKEY_Encrypt", "pBinPriKey+, pszPasswd");
    OPERATION(PriKeyDecrypt, (char* pszPasswd, BINSTR* pBinEncPriKey, BINSTR* pBinPriKey),
              "ZRTK_PRIKEY_Decrypt", "GPKI_PRIKEY_Decrypt", "pBinEncPriKey+, pszPasswd");
    OPERATION(PriKeyChangePasswd,
              (char* pszOldPasswd, char* pszNewPasswd, BINSTR* pBinPriKey, BINSTR* pBinNewPriKey),
              "ZRTK_PRIKEY_ChangePasswd", "GPKI_PRIKEY_ChangePasswd",
              "pszOldPasswd, pszNewPasswd, pBinPriKey+");
    OPERATION(PriKeyCheckKeyPair, (BINSTR * pBinCert, BINSTR * pBinPriKey), "ZRTK_PRIKEY_CheckKeyPair",
              "GPKI_PRIKEY_CheckKeyPair", "pBinCert+, pBinPriKey+");
    OPERATION(VIDGetRandomFromPriKey, (BINSTR * pBinPriKey, BINSTR * pBinRandom),
              "ZRTK_VID_GetRandomFromPriKey", "GPKI_VID_GetRandomFromPriKey", "pBinPriKey");
    OPERATION(VIDHashOfIDNR, (BINSTR * pBinCert, BINSTR * pBinRandom, char* pszIDN, BINSTR* pBinHash),
              "ZRTK_VID_HashOfIDN_R", "-", "pBinCert, pBinRandom, pszIDN (non-empty)");
    OPERATION(VIDVerify, (BINSTR * pBinCert, BINSTR * pBinRandom, char* pszIDN), "ZRTK_VID_Verify",
              "GPKI_VID_Verify", "pBinCert, pBinRandom, pszIDN");
    OPERATION(VIDVerifyByIVS,
              (char* pszConfFilePath, BINSTR* pBinCert, BINSTR* pBinRandom, char* pszIDN, BINSTR* pBinMyCert),
              "ZRTK_VID_VerifyByIVS", "GPKI_VID_VerifyByIVS",
              "pszConfFilePath, pBinCert, pBinRandom, pszIDN, pBinMyCert");
}
