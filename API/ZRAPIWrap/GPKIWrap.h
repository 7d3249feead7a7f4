#pragma once

#include "LibraryCall.h"

/** Media of the Storage... operations. */
constexpr int STORAGE_DISK = 1;
constexpr int STORAGE_CARD = 2;

/**
 * The government PKI library, whose operations are named GPKI_...
 *
 * One method an operation, named after the flat function that reaches it, which also documents it:
 * MediaDisk... and MediaCard... are Storage..., PKCS11... is HSM..., CRYPT... is Crypt... Every
 * method takes the library's arguments in the flat function's order and goes through LibraryCall::Run: 20012
 * while the library is not loaded, 10004 for a refused argument, 10005 when the library lacks the operation,
 * else the library's own answer. Methods that say so are reached by no flat function.
 *
 * The object owns the library's handle and, in it, the library's context.
 */
class CGPKIWrap
{
public:
    static constexpr int NOT_LOADED = QG_GPKI_NOT_LOADED;
    static constexpr int NO_ERROR_BUFFER = QG_NO_MEMORY;
    static constexpr const char* ERROR_TEXT_OPERATION = "GPKI_API_GetErrInfo";

    CGPKIWrap() = default;
    explicit CGPKIWrap(char* pszIgnored);
    CGPKIWrap(const CGPKIWrap&) = delete;
    CGPKIWrap& operator=(const CGPKIWrap&) = delete;

    /** Unloads the library. Its finish operation is not called: its context goes with it. */
    ~CGPKIWrap();

    /**
     * Loads "<pszWorkDir>/libgpkiapi_v15.so" and has it make its context. A path above 1022 bytes is cut, and
     * then not found. 20012, 10005, the library's own number.
     */
    int Init(char* pszWorkDir);

    /** Ends the library's context. Reached by no flat function. */
    int Finish();

    int GetErrInfo(int nAllocLen, char* pszErrorMsg);
    int GetErrInfo2(int nAllocLen, char* pszErrorMsg);
    int GetVersion(int nAllocLen, char* pszVersion);
    int SetOption(int nOption);
    int SetConfFile(char* pszConfFilePath);
    int SetCaPubs(BINSTR* pBinCaPubs);
    int FreeCaPubs();
    int Str2Time(char* pszTime, time_t* pTime);
    int SetHashAlgo(int nHashAlg);
    int BINSTR_Create(BINSTR* pBinstr);
    int BINSTR_Delete(BINSTR* pBinstr);
    int BINSTR_SetData(unsigned char* pszData, int nLen, BINSTR* pBinstr);
    /** Description of the library, told a size of 8. Reached by no flat function. */
    int GetInfo(char* pszAPIInfo);

    // Certificates.
    int CertLoad(BINSTR* pBinCert);
    int CertUnLoad();
    int CertGetUID(int nAllocLen, char* pszUID);
    int CertGetVersion(int nAllocLen, char* pszVersion);
    int CertGetSerialNum(int nAllocLen, char* pszSerialNum);
    int CertGetSignatureAlgorithm(int nAllocLen, char* pszSignAlg);
    int CertGetIssuerName(int nAllocLen, char* pszIssuerName);
    int CertGetValidity(int nFromAllocLen, char* pszFrom, int nToAllocLen, char* pszTo);
    int CertGetSubjectName(int nAllocLen, char* pszSubjectName);
    int CertGetPubKeyAlg(int nAllocLen, char* pszAlg);
    int CertGetPubKeyLen(int nAllocLen, char* pszLen);
    int CertGetPubKey(int nAllocLen, char* pszPubKey);
    int CertGetSignature(int nAllocLen, char* pszSignature);
    int CertGetKeyUsage(int nAllocLen, char* pszKeyUsage);
    int CertGetBasicConstraints(int nAllocLen, char* pszBasicConstraints);
    int CertGetPolicy(int nAllocLen, char* pszCertPolicy);
    int CertGetPolicyID(int nAllocLen, char* pszCertPolicyID);
    int CertGetExtKeyUsage(int nAllocLen, char* pszExtKeyUsage);
    int CertGetSubjectAltName(int nAllocLen, char* pszSubAltName);
    int CertGetAuthKeyID(int nAllocLen, char* pszAKI);
    int CertGetSubKeyID(int nAllocLen, char* pszSKI);
    int CertGetCRLDP(int nAllocLen, char* pszCRLDP);
    int CertGetAIA(int nAllocLen, char* pszAIA);
    int CertGetRemainDays(BINSTR* pBinCert, int* nRemainDays);
    int CertAddCert(BINSTR* pBinCert, BINSTR* pBinCerts);
    int CertGetCertCount(BINSTR* pBinCerts, int* nCnt);
    int CertGetCert(BINSTR* pBinCerts, int nIndex, BINSTR* pBinCert);
    int CertAddTrustedCert(BINSTR* pBinTrustedCert);
    int CertSetVerifyEnv(int nRange, int nCheck, bool bUseCache, char* pszTime, char* pszOCSPURL);
    int CertVerify(BINSTR* pBinCert, int nCertType, char* pszCertPolices, char* pszConfFilePath, bool bSign,
                   BINSTR* pBinMyCert, BINSTR* pBinMyPriKey);
    int CertVerifyByIVS(char* pszConfFilePath, BINSTR* pBinCert, BINSTR* pBinMyCert);
    int CertCheckStatByOCSP(BINSTR* pBinCert, bool bSign, BINSTR* pBinMyCert, BINSTR* pBinMyPriKey,
                            char* pszURL, BINSTR* pBinOCSPSvrCert, char* szRevocationDate, int* pRevReason);
    int CertCheckStatByCRL(BINSTR* pBinCert, char* szRevocationDate, int* pRevReason);

    // Private keys.
    int PriKeyEncrypt(int nSymAlg, char* pszPasswd, BINSTR* pBinPriKey, BINSTR* pBinEncPriKey);
    int PriKeyDecrypt(char* pszPasswd, BINSTR* pBinEncPriKey, BINSTR* pBinPriKey);
    int PriKeyChangePassword(char* pszOldPasswd, char* pszNewPasswd, BINSTR* pBinPriKey,
                             BINSTR* pBinNewPriKey);
    int PriKeyCheckKeyPair(BINSTR* pBinCert, BINSTR* pBinPriKey);

    // Identity.
    int VIDGetRandomFromPriKey(BINSTR* pBinPriKey, BINSTR* pBinRandom);
    int VIDVerify(BINSTR* pBinCert, BINSTR* pBinRandom, char* pszIDN);
    int VIDVerifyByIVS(char* pszConfFilePath, BINSTR* pBinCert, BINSTR* pBinRandom, char* pszIDN,
                       BINSTR* pBinMyCert);

    // Media.
    int StorageLoad(char* pszLibPath);
    int StorageUnLoad();
    int StorageReadFile(char* pszFilePath, BINSTR* pBinData);
    int StorageWriteFile(char* pszFilePath, BINSTR* pBinData);
    int StorageReadCert(int nMedium, char* pszPlace, int nDataType, BINSTR* pBinCert);
    int StorageReadPriKey(int nMedium, char* pszPlace, char* pszPassword, int nDataType, BINSTR* pBinPriKey);
    int StorageWriteCert(int nMedium, char* pszPlace, int nDataType, BINSTR* pBinCert);
    int StorageWritePriKey(int nMedium, char* pszPlace, char* pszPassword, int nDataType, int nSymAlg,
                           BINSTR* pBinPriKey);
    int StorageDeleteCert(int nMedium, char* pszPlace, int nDataType);
    int StorageDeletePriKey(int nMedium, char* pszPlace, char* pszPassword, int nDataType);

    // CMS.
    int CMSMakeSignedData(BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinTBSData, char* pszSignTime,
                          BINSTR* pBinSignedData);
    int CMSMakeSignedDataWithAddSigner(BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinTBSData,
                                       char* pszSignTime, BINSTR* pBinSignedData);
    int CMSProcessSignedData2(BINSTR* pBinSignedData, BINSTR* pBinData, int* nSignerCnt);
    int CMSGetSigner(int nIndex, BINSTR* pBinSignerCert, char* pszSignTime);
    int CMSMakeSignedDataNoContentFile(BINSTR* pBinCert, BINSTR* pBinPriKey, char* pBinTBSDataFilePath,
                                       char* pszSignTime, char* pszSignedDataFilePath);
    int CMSMakeSignedDataFile(BINSTR* pBinCert, BINSTR* pBinPriKey, char* pBinTBSDataFilePath,
                              char* pszSignTime, char* pszSignedDataFilePath);
    int CMSProcessSignedDataNoContentFile(char* pszSignedDataFilePath, char* pszTBSDataFilePath,
                                          BINSTR* pBinSignerCert, char* pszSignTime);
    int CMSProcessSignedDataFile(char* pszSignedDataFilePath, char* pszTBSDataFilePath,
                                 BINSTR* pBinSignerCert, char* pszSignTime);
    int CMSGetSignerCaPubs(BINSTR* pBinCertCaPubs);
    int CMSGetTBTData(int nSignerIndex, BINSTR* pBinTBTData);
    int CMSGetTimeStampToken(int nSignerIndex, BINSTR* pBinTST);
    int CMSSetTimeStampToken(BINSTR* pBinSignedData, int nSignerIndex, BINSTR* pBinTST,
                             BINSTR* pBinSignedDataWithTST);
    int CMSMakeEnvelopedData(BINSTR* pBinCert, BINSTR* pBinTBEData, int nSymAlg, BINSTR* pBinEnvelopData);
    int CMSMakeEnvDataWithMultiRec(BINSTR* pBinCert, BINSTR* pBinTBEData, int nSymAlg,
                                   BINSTR* pBinEnvelopData);
    int CMSProcessEnvelopedData(BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinEnvData, BINSTR* pBinData);
    int CMSMakeEnvelopedDataFile(BINSTR* pBinCert, char* pszTBEDataFilePath, int nSymAlg,
                                 char* pszEnvDataFilePath);
    int CMSProcessEnvelopedDataNoContentFile(BINSTR* pBinCert, BINSTR* pBinPriKey, char* pszEnvDataFilePath,
                                             char* pszEncDataFilePath, char* pszDataFilePath);
    int CMSProcessEnvelopedDataFile(BINSTR* pBinCert, BINSTR* pBinPriKey, char* pszEnvDataFilePath,
                                    char* pszDataFilePath);
    int CMSMakeSignedAndEnvData(BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinRecCert, BINSTR* pBinData,
                                int nSymAlg, BINSTR* pBinSignedAndEnvData);
    int CMSProcessSignedAndEnvData(BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinSignedAndEnvData,
                                   BINSTR* pBinData, BINSTR* pBinSignerCert);
    int CMSMakeEncryptedData(BINSTR* pBinTBEData, BINSTR* pBinEncrypedData);
    int CMSProcessEncryptedData(BINSTR* pBinKey, BINSTR* pBinEncrypedData, BINSTR* pBinData);
    /** Verifies a message with one signer. Reached by no flat function. */
    int CMSProcessSignedData(BINSTR* pBinSignedData, BINSTR* pBinData, BINSTR* pBinignerCert,
                             char* pszSignTime);
    /** Encrypts a file; envelope and content go to two files. Reached by no flat function. */
    int CMSMakeEnvelopedDataNoContentFile(BINSTR* pBinCert, char* pszTBEDataFilePath, int nSymAlg,
                                          char* pBinEnvelopedDataFilePath, char* pszEncryptedContentFilePath);

    // Wireless messages; reached by no flat function.
    int WCMSMakeSignedContent(BINSTR* pBinCert, BINSTR* pBinKey, BINSTR* pBinTBSData, char* pszSignTime,
                              BINSTR* pBinSignedContent);
    int WCMSProcessSignedContent(BINSTR* pBinSignedContent, BINSTR* pBinData, BINSTR* pBinpSignerCert,
                                 char* pszSignTime);
    int WCMSMakeWapEnvelopedData(BINSTR* pBinRecCert, BINSTR* pBinTBEData, int nSymAlg,
                                 BINSTR* pBinpWapEnvelopedData);
    int WCMSProcessWapEnvelopedData(BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinpWapEnvelopedData,
                                    BINSTR* pBinData);

    // PKCS#12.
    int PFXExport(char* pszPassword, BINSTR* pBinSignCert, BINSTR* pBinSignKey, BINSTR* pBinKmCert,
                  BINSTR* pBinKmKey, BINSTR* pBinPFX);
    int PFXImport(char* pszPassword, BINSTR* pBinPFX, BINSTR* pBinSignCert, BINSTR* pBinSignKey,
                  BINSTR* pBinKmCert, BINSTR* pBinKmKey);

    // OCSP.
    int OCSPMakeOCSPReq(BINSTR* pBinCerts, bool bSign, BINSTR* pBinMyCert, BINSTR* pBinMyPriKey,
                        BINSTR* pBinReqMsg);
    int OCSPSendAndRecv(char* pszURL, BINSTR* pBinCert, BINSTR* pBinReqMsg, BINSTR* pBinResMsg);
    int OCSPVerifyResMsg(BINSTR* pBinReqMsg, BINSTR* pBinResMsg, int* pnCertStatCnt, BINSTR* pBinOCSPSvrCert);
    int OCSPGetCertStatus(int nIndex, int* pnStatus, char* szRevocationDate, int* pRevReason);

    // Time stamps.
    int TSPMakeReqMsg(BINSTR* pBinData, int nHashAlg, char* pszPolicy, bool bSign, BINSTR* pBinCert,
                      BINSTR* pBinPriKey, BINSTR* pBinReqMsg);
    int TSPSendAndRecv(char* pszIP, int nPort, BINSTR* pBinReqMsg, BINSTR* pBinResMsg);
    int TSPVerifyResMsg(BINSTR* pBinResMsg, BINSTR* pBinTSACert, BINSTR* pBinToken);
    int TSPVerifyToken(BINSTR* pBinData, BINSTR* pBinToken);
    int TSPVerifyToken2(BINSTR* pBinData, BINSTR* pBinToken, BINSTR* pBinTSACert);
    int TSPGetTokenInfo(BINSTR* pBinToken, int nAllocLen, char* pszCN, char* pszDN, char* pszPolicy,
                        char* pszHashAlg, char* pszHashValue, char* pszSerialNum, char* pszGenTime,
                        char* pszNonce);

    // PKCS#11 tokens.
    int HSMGetSlotList(unsigned long* pSlotList, unsigned long* pSlotCnt);
    int HSMGetTokenInfo(unsigned long uSlotID, PKCS11_TOKEN_INFO* pTokenInfo);
    int HSMOpenSession(unsigned long ulSlotID, int nTokenName);
    int HSMLogin(char* pszUserPIN);
    int HSMLogout();
    int HSMCloseSession();
    int HSMChangePIN(char* pszOldPIN, char* pszNewPIN);
    int HSMGetCertCnt(int* nCertCnt);
    int HSMGetCertInfo(int nIndex, int* pnCertType, BINSTR* pBinCertDN, BINSTR* pBinKeyID);
    int HSMReadCert(BINSTR* pBinKeyID, BINSTR* pBinCert);
    int HSMReadRandomForVID(BINSTR* pBinKeyID, BINSTR* pBinRandom);
    int HSMWriteCertAndPriKey(BINSTR* pBinCert, BINSTR* pBinPriKey);
    int HSMDeleteCertAndPriKey(BINSTR* pBinKeyID);
    int HSMSignData(BINSTR* pBinKeyID, BINSTR* pBinData, BINSTR* pBinSignedData);

    // Cryptography.
    int CryptGenRandom(int nLen, BINSTR* pBinRandom);
    int CryptGenKeyAndIV(int nSymAlg);
    int CryptSetKeyAndIV(int nSymAlg, BINSTR* pBinKey, BINSTR* pBinIV);
    int CryptGetKeyAndIV(int* nSymAlg, BINSTR* pBinKey, BINSTR* pBinIV);
    int CryptClearKeyAndIV();
    int CryptEncrypt(BINSTR* pBinPlainText, BINSTR* pBinCipherText);
    int CryptDecrypt(BINSTR* pBinCipherText, BINSTR* pBinPlainText);
    int CryptEncryptFile(char* pszPlainTextFile, char* pszCipherTextFile);
    int CryptDecryptFile(char* pszCipherTextFile, char* pszPlainTextFile);
    int CryptSign(BINSTR* pBinPubKey, BINSTR* pBinPriKey, int nHashAlg, BINSTR* pBinTBSData,
                  BINSTR* pSignautre);
    int CryptVerify(BINSTR* pBinPubKey, int nHashAlg, BINSTR* pBinData, BINSTR* pSignautre);
    int CryptVerifyFile(BINSTR* pBinPubKey, int nHashAlg, char* pszDataFilePath, char* pszSignatureFilePath);
    int CryptAsymEncrypt(int nKeyType, BINSTR* pBinKey, BINSTR* pBinTBEData, BINSTR* pBinEncData);
    int CryptAsymDecrypt(int nKeyType, BINSTR* pBinKey, BINSTR* pBinEncData, BINSTR* pBinTBEData);
    int CryptHash(int nHashAlg, BINSTR* pBinTBHData, BINSTR* pBinDigest);
    int CryptGenMAC(int nMACAlg, char* pszPassword, BINSTR* pBinTBMData, BINSTR* pBinMAC);
    int CryptVerifyMAC(int nMACAlg, char* pszPassword, BINSTR* pBinTBMData, BINSTR* pBinMAC);
    /** Signs a file into a signature file. Reached by no flat function. */
    int CryptSignFile(BINSTR* pBinCert, BINSTR* pBinPriKey, int nHashAlg, char* pszDataFilePath,
                      char* pszSignatureFilePath);

    // Base64.
    int Base64Encode(BINSTR* pBinData, BINSTR* pBinEncData);
    int Base64Decode(BINSTR* pBinEncData, BINSTR* pBinData);

    // Directories.
    int LDAPGetDataByURL(int nDataType, char* pszURL, BINSTR* pBinData);
    int LDAPGetCRLByCert(BINSTR* pBinCert, BINSTR* pBinCRL);
    int LDAPGetDataByCN(char* pszIP, int nPort, char* pszCN, int nDataType, char* FullDN, BINSTR* pBinData);
    int LDAPGetAnyDataByURL(char* pszAttribute, char* pszURL, BINSTR* pBinData);
    int LDAPGetCertPath(BINSTR* pBinCert, char* pszConfFilePath, BINSTR* pBinPath);

    // Challenge and response.
    int SIGEAMakeChallenge(BINSTR* pBinChallenge);
    int SIGEAMakeResponse(BINSTR* pBinChallenge, BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinResponse);
    int SIGEAVerifyResponse(BINSTR* pBinResponse, BINSTR* pBinChallenge, BINSTR* pBinCert);

private:
    friend class LibraryCall;

    template <class... Args>
    int Call(const char* pszOperation, int nRefusal, Args... args)
    {
        return LibraryCall::Run(*this, pszOperation, nRefusal, args...);
    }

    int m_nRv = 0;                         // kept for the layout, not used
    char m_szErrMsg[ERROR_TEXT_SIZE] = {}; // text of the last failure
    void* m_hLib = nullptr;                // null until Init has loaded the library
    void* m_pContext = nullptr;            // the library's own
};
