#pragma once

#include "LibraryCall.h"

/**
 * The main toolkit, whose operations are named ZRTK_...
 *
 * One method an operation, named after the flat function that reaches it, which also documents it. Every
 * method takes the library's arguments in the flat function's order and goes through LibraryCall::Run: 20011
 * while the library is not loaded, 10004 for a refused argument, 10005 when the library lacks the operation,
 * else the library's own answer. Methods that say so are reached by no flat function.
 *
 * The object owns the library's handle and, in it, the library's context.
 */
class CZRTKWrap
{
public:
    static constexpr int NOT_LOADED = QG_ZRTK_NOT_LOADED;
    static constexpr int NO_ERROR_BUFFER = QG_BAD_ARGUMENT;
    static constexpr const char* ERROR_TEXT_OPERATION = "ZRTK_API_GetErrInfo";

    CZRTKWrap() = default;
    CZRTKWrap(const CZRTKWrap&) = delete;
    CZRTKWrap& operator=(const CZRTKWrap&) = delete;

    /** Unloads the library. Its finish operation is not called: its context goes with it. */
    ~CZRTKWrap();

    /**
     * Loads "<pszWorkDir>/<sofilename>", by default libZRCToolkitV30.so, and has it make its context. A path
     * above 258 bytes is cut, and then not found. 20011, 10005, the library's own number.
     */
    int Init(char* pszWorkDir, char* sofilename);

    /** Ends the library's context. Reached by no flat function. */
    int Finish();

    int GetErrInfo(int nAllocLen, char* pszErrorMsg);
    int GetErrInfo2(int nAllocLen, char* pszErrorMsg);
    int GetInfo(char* pszVersion, char* pszInfo);
    int SetConfFile(char* pszConfFilePath);
    int CertSetCaPubs(BINSTR* pBinCaPubs);
    int CertFreeCaPubs();
    int SetHashAlgo(int nHashAlg);
    int BINSTR_Create(BINSTR* pBinstr);
    int BINSTR_Delete(BINSTR* pBinstr);
    int BINSTR_SetData(unsigned char* pszData, int nLen, BINSTR* pBinstr);

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
    int CertGetPubKey(int nAllocLen, char* pszAlg, char* pszPubKey);
    int CertGetPubKey2(char* pszAlg, char* pszLen, BINSTR* pBinKeyInfo);
    int CertGetSignature(int nAllocLen, char* pszSignature);
    int CertGetKeyUsage(int nAllocLen, char* pszKeyUsage);
    int CertGetBasicConstraints(int nAllocLen, char* pszBasicConstraints);
    int CertGetPolicy(int nAllocLen, char* pszCertPolicy);
    int CertGetPolicyID(int nAllocLen, char* pszCertPolicyID);
    int CertGetExtKeyUsage(int nAllocLen, char* pszExtKeyUsage);
    int CertGetSubjectAltName(int nAllocLen, char* pszSubAltName);
    int CertGetIssuerAltName(int nAllocLen, char* pszIssuerAltName);
    int CertGetAuthKeyID(int nAllocLen, char* pszAKI);
    int CertGetSubKeyID(int nAllocLen, char* pszSKI);
    int CertGetCRLDP(int nAllocLen, char* pszCRLDP);
    int CertGetCRLDPURL(int nAllocLen, char* pszCRLDPURL);
    int CertGetAIA(int nAllocLen, char* pszAIA);
    int CertGetRemainDays(BINSTR* pBinCert, int* nRemainDays);
    int CertAddTrustedCert(BINSTR* pBinTrustedCert);
    int CertSetVerifyEnv1(int nRange, int nCheck, bool bUseCache, char* pszOCSPURL);
    int CertSetVerifyEnv2(char* pszTime, BINSTR* pBinARL, BINSTR* pbinCRL);
    int CertVerify(BINSTR* pBinCert, int nCertType, char* pszCertPolices, bool bSign, BINSTR* pBinMyCert,
                   BINSTR* pBinMyPriKey);
    int CertVerify2(BINSTR* pBinCert, int nCertType, char* pszCertPolicies, char* pszPassword);
    int CertVerifyByIVS(char* pszConfFilePath, BINSTR* pBinCert, BINSTR* pBinMyCert);
    int CertCheckStatByCRL(BINSTR* pBinCert, char* szRevocationDate, int* pRevReason);
    /** DER form of the subject name. Reached by no flat function. */
    int CertGetSubjectName_DERFormat(BINSTR* pBinstr);
    /** Policy constraints as text. Reached by no flat function. */
    int CertGetPolicyConstraints(int nAllocLen, char* pszPolicyConstraints);

    // Private keys.
    int PriKeyEncrypt(int nSymAlg, char* pszPasswd, BINSTR* pBinPriKey, BINSTR* pBinEncPriKey);
    int PriKeyDecrypt(char* pszPasswd, BINSTR* pBinEncPriKey, BINSTR* pBinPriKey);
    int PriKeyChangePassword(char* pszOldPasswd, char* pszNewPasswd, BINSTR* pBinPriKey,
                             BINSTR* pBinNewPriKey);
    int PriKeyCheckKeyPair(BINSTR* pBinCert, BINSTR* pBinPriKey);

    // Identity.
    int VIDGetRandomFromPriKey(BINSTR* pBinPriKey, BINSTR* pBinRandom);
    int VIDGetHashOFIDNR(BINSTR* pBinCert, BINSTR* pBinRandom, char* pszIDN, BINSTR* pBinHash);
    int VIDVerify(BINSTR* pBinCert, BINSTR* pBinRandom, char* pszIDN);
    int VIDVerifyByIVS(char* pszConfFilePath, BINSTR* pBinCert, BINSTR* pBinRandom, char* pszIDN,
                       BINSTR* pBinMyCert);

    // Media.
    int MediaLoad(char* pszLibPath);
    int MediaUnLoad();
    int MediaDiskReadFile(char* pszFilePath, BINSTR* pBinData);
    int MediaDiskWriteFile(char* pszFilePath, BINSTR* pBinData);
    int MediaDiskReadCert(char* pszFilePath, BINSTR* pBinCert);
    int MediaDiskReadPriKey(char* pszFilePath, char* pszPassword, BINSTR* pBinPriKey);
    int MediaDiskWriteCert(char* pszFilePath, BINSTR* pBinCert);
    int MediaDiskWritePriKey(int nSymAlg, char* pszFilePath, char* pszPassword, BINSTR* pBinPriKey);
    int MediaDiskDeleteCert(char* pszFilePath);
    int MediaDiskDeletePriKey(char* pszPassword, char* pszFilePath);
    int MediaCardReadCert(int nDataType, char* pszPINNumber, BINSTR* pBinCert);
    int MediaCardReadPriKey(int nDataType, char* pszPINNumber, char* pszPassword, BINSTR* pBinPriKey);
    int MediaCardWriteCert(int nDataType, char* pszPINNumber, BINSTR* pBinCert);
    int MediaCardWritePriKey(int nDataType, int nSymAlg, char* pszPINNumber, char* pszPassword,
                             BINSTR* pBinPriKey);
    int MediaCardDeleteCert(int nDataType, char* pszPINNumber);
    int MediaCareDeletePriKey(int nDataType, char* pszPINNumber, char* pszPassword);
    int MediaWinsWirteCertKey(int nOption, char* pszPassword, BINSTR* pBinPFX);
    int MediaWinsWirteCert(BINSTR* pBinCert);
    int MediaWinsCertCnt(char* pszIssuerCN, int* nCnt);
    int MediaWinsCertDN(int nIndex, int* nType, char* pszIssuerDN, char* pszSubjectDN);
    int MediaWinsReadCert(int nIndex, BINSTR* pBinCert);
    int MediaWinsReadPrikey(int nIndex, BINSTR* pBinPriKey);
    int MediaWinsReadCaPubs(int nIndex, BINSTR* pBinCapubs);

    // CMS.
    int CMSMakeSignedData(int nOption, BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinTBSData,
                          char* pszSignTime, BINSTR* pBinSignedData);
    int CMSMakeSignedDataWithAddSigner(int nOption, BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinTBSData,
                                       char* pszSignTime, BINSTR* pBinSignedData);
    int CMSProcessSignedData(int nOption, BINSTR* pBinSignedData, BINSTR* pBinData, int* nSignerCnt);
    int CMSGetSignerCert(int nIndex, BINSTR* pBinSignerCert, char* pszSignTime);
    int CMSMakekTBSData(int nOption, BINSTR* pBinCert, BINSTR* pBinData, char* pszSignTime,
                        BINSTR* pBinTBSData);
    int CMSComposeSignedData(BINSTR* pBinSignature, BINSTR* pBinSignedData);
    int CMSSetOption(int nOption);
    int CMSMakeSignedDataFile(BINSTR* pBinCert, BINSTR* pBinPriKey, char* pBinTBSDataFilePath,
                              char* pszSignTime, char* pszSignedDataFilePath);
    int CMSMakeSignedDataFileWithContent(BINSTR* pBinCert, BINSTR* pBinPriKey, char* pBinTBSDataFilePath,
                                         char* pszSignTime, char* pszSignedDataFilePath);
    int CMSProcessSignedDataFile(char* pszSignedDataFilePath, char* pszTBSDataFilePath,
                                 BINSTR* pBinSignerCert, char* pszSignTime);
    int CMSProcessSignedDataFileWithContent(char* pszSignedDataFilePath, char* pszTBSDataFilePath,
                                            BINSTR* pBinSignerCert, char* pszSignTime);
    int CMSMakeEnvelopedData(int nOption, BINSTR* pBinCert, BINSTR* pBinTBEData, int nSymAlg,
                             BINSTR* pBinEnvelopData);
    int CMSMakeEnvDataWithMultiRec(int nOption, BINSTR* pBinCert, BINSTR* pBinTBEData, int nSymAlg,
                                   BINSTR* pBinEnvelopData);
    int CMSProcessEnvelopedData(BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinEnvData, BINSTR* pBinData);
    int CMSMakeEnvelopedDataFile(BINSTR* pBinCert, char* pszTBEDataFilePath, int nSymAlg,
                                 char* pszEnvDataFilePath, char* pszEncDataFilePath);
    int CMSProcessEnvelopedDataFile(BINSTR* pBinCert, BINSTR* pBinPriKey, char* pszEnvDataFilePath,
                                    char* pszEncDataFilePath, char* pszDataFilePath);
    int CMSMakeEnvelopedDataWithContentFile(BINSTR* pBinCert, char* pszTBEDataFilePath, int nSymAlg,
                                            char* pszEnvDataFilePath);
    int CMSProcessEnvDataWithContentFile(BINSTR* pBinCert, BINSTR* pBinPriKey, char* pszEnvDataFilePath,
                                         char* pszDataFilePath);
    int CMSMakeSignedAndEnvData(int nOption, BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinRecCert,
                                BINSTR* pBinData, int nSymAlg, BINSTR* pBinSignedAndEnvData);
    int CMSProcessSignedAndEnvData(int nOption, BINSTR* pBinCert, BINSTR* pBinPriKey,
                                   BINSTR* pBinSignedAndEnvData, BINSTR* pBinData, BINSTR* pBinSignerCert);
    int CMSMakeEncryptedData(int nOption, BINSTR* pBinCert, BINSTR* pBinTBEData, int nSymAlg,
                             BINSTR* pBinEncrypedData);
    int CMSProcessEncryptedData(BINSTR* pBinKey, BINSTR* pBinEncrypedData, BINSTR* pBinData);
    /** Number of recipients of an enveloped message. Reached by no flat function. */
    int CMSGetEnvDataRecCnt(BINSTR* pEnvelopData, int* pnCnt);
    /** Names of a recipient, each at most nAllocLen bytes. Reached by no flat function. */
    int CMSGetEnvDataRecipInfo(int nIndex, int nAllocLen, char* pszIssuerName, char* pszSerialNum,
                               char* pszSubjectKeyID);

    // PKCS#12.
    int PFXExport(int nOption, char* pszPassword, BINSTR* pBinSignCert, BINSTR* pBinSignKey, BINSTR* pBinPFX);
    int PFXExport2(char* pszPassword, BINSTR* pBinSignCert, BINSTR* pBinSignKey, BINSTR* pBinCaPubs,
                   BINSTR* pBinPFX);
    int PFXImport(char* pszPassword, BINSTR* pBinPFX, BINSTR* pBinSignCert, BINSTR* pBinSignKey,
                  BINSTR* pBinCaPubs);
    int PFXExportMultiPair(int nOption, char* pszPassword, BINSTR* pBinCerts, BINSTR* pBinKeys,
                           BINSTR* pBinPFX);
    int PFXExportMultiPair2(char* pszPassword, BINSTR* pBinCerts, BINSTR* pBinKeys, BINSTR* pBinCaPubs,
                            BINSTR* pBinPFX);
    int PFXImportMultiPair(BINSTR* pBinPFX, char* pszPassword, BINSTR* pBinCerts, BINSTR* pBinKeys,
                           BINSTR* pBinCaPubs);
    int PFXImportMultiPair2(int nOption, BINSTR* pBinPFX, char* pszPassword, BINSTR* pBinCerts,
                            BINSTR* pBinKeys, BINSTR* pBinCaPubs);

    // OCSP.
    int OCSPMakeOCSPReq(BINSTR* pBinCerts, bool bSign, BINSTR* pBinMyCert, BINSTR* pBinMyPriKey,
                        BINSTR* pBinReqMsg);
    int OCSPSendAndRecv(char* pszURL, BINSTR* pBinCert, BINSTR* pBinReqMsg, BINSTR* pBinResMsg);
    int OCSPVerifyResMsg(BINSTR* pBinReqMsg, BINSTR* pBinResMsg, BINSTR* pBinOCSPSvrCert);
    /** Asks a responder in one step. Reached by no flat function. */
    int OCSPCheckCertStatus(char* pszOCSPUri, BINSTR* pBinCert, bool bSign, BINSTR* pBinMyCert,
                            BINSTR* pBinMyPriKey);

    // Time stamps.
    int TSPTimeStampData(char* pszIP, int nPort, int nHashAlg, char* pszPolicy, BINSTR* pBinData, bool bSign,
                         BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinTimeStampToken);
    int TSPTimeStampFile(char* pszIP, int nPort, int nHashAlg, char* pszPolicy, char* pszDataFilePath,
                         bool bSign, BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinTimeStampToken);
    int TSPMakeReqMsg(BINSTR* pBinData, int nHashAlg, char* pszPolicy, bool bSign, BINSTR* pBinCert,
                      BINSTR* pBinPriKey, BINSTR* pBinReqMsg);
    int TSPSendAndRecv(char* pszIP, int nPort, BINSTR* pBinReqMsg, BINSTR* pBinResMsg);
    int TSPVerifyResMsg(BINSTR* pBinResMsg, BINSTR* pBinTSACert, BINSTR* pBinToken);
    int TSPVerifyToken(BINSTR* pBinData, BINSTR* pBinToken);
    int TSPVerifyToken2(char* pszDataFilePath, BINSTR* pBinToken);
    int TSPGetTokenInfo(BINSTR* pBinToken, int nAllocLen, char* pszPolicy, char* pszHashAlg,
                        char* pszHashValue, char* pszSerialNum, char* pszGenTime, char* pszNonce,
                        BINSTR* pBinTSACert);

    // CMP.
    int CMPSetProtocol(int nType);
    int CMPSetCA(int nCA);
    int CMPCertRequest(char* pszIP, int nPort, char* pszRefNum, char* pszAuthCode, char* pszIDN,
                       char* pszCACert, BINSTR* pBinSignCert, BINSTR* pBinSignPriKey, BINSTR* pBinKmCert,
                       BINSTR* pBinKmPriKey, BINSTR* pBinCaPubs);
    int CMPCertRequest2(char* pszIP, int nPort, char* pszRefNum, char* pszAuthCode, char* pszIDN,
                        char* pszCACert, BINSTR* pBinTypes, BINSTR* pBinCerts, BINSTR* pBinPriKeys,
                        BINSTR* pBinCaPubs);
    int CMPCertUpdate(char* pszIP, int nPort, bool bKeyUpdate, char* pszIDN, char* pszCACert,
                      BINSTR* pBinSignCert, BINSTR* pBinSignPriKey, BINSTR* pBinKmCert, BINSTR* pBinKmPriKey,
                      BINSTR* pBinCaPubs);
    int CMPCertUpdate2(char* pszIP, int nPort, bool bKeyUpdate, char* pszIDN, char* pszCACert,
                       BINSTR* pBinTypes, BINSTR* pBinCerts, BINSTR* pBinPriKeys, BINSTR* pBinCaPubs);
    int CMPCertCertRevoke(char* pszIP, int nPort, int nReasonCode, BINSTR* pBinSignCert,
                          BINSTR* pBinSignPriKey, BINSTR* pBinKmCert, BINSTR* pBinKmPriKey);
    int CMPCertCertRevoke2(char* pszIP, int nPort, int nReasonCode, BINSTR* pBinTypes, BINSTR* pBinCerts,
                           BINSTR* pBinPriKeys);
    int CMPCertCertRecovery(char* pszIP, int nPort, char* pszRefNum, char* pszAuthCode, BINSTR* pBinSignCert,
                            BINSTR* pBinSignPriKey, BINSTR* pBinKmCert, BINSTR* pBinKmPriKey);

    // PKCS#11 tokens.
    int PKCS11GetSlotList(unsigned long* pSlotList, unsigned long* pSlotCnt);
    int PKCS11GetTokenInfo(unsigned long uSlotID, PKCS11_TOKEN_INFO* pTokenInfo);
    int PKCS11InitToken(char* pszSoPIN, char* pszUserPIN);
    int PKCS11InitTokenWithSlotID(unsigned long ulSlotID, char* pszSoPIN, char* pszUserPIN, char* pszLabel);
    int PKCS11OpenSessionWithSlotID(unsigned long ulSlotID, char* pszUserPIN, int nTokenName);
    int PKCS11OpenSessionWithTokenName(char* pszUserPIN, int nTokenName);
    int PKCS11Login(char* pszUserPIN);
    int PKCS11Logout();
    int PKCS11CloseSession();
    int PKCS11ChangePIN(char* pszOldPIN, char* pszNewPIN);
    int PKCS11GetCertCnt(int* nCertCnt);
    int PKCS11GetCertInfo(int nIndex, int* pnCertType, BINSTR* pBinCertDN, BINSTR* pBinKeyID);
    int PKCS11ReadCert(BINSTR* pBinKeyID, BINSTR* pBinCert);
    int PKCS11ReadRandomForVID(BINSTR* pBinKeyID, BINSTR* pBinRandom);
    int PKCS11WriteCertAndPriKey(BINSTR* pBinCert, BINSTR* pBinPriKey);
    int PKCS11DeleteCertAndPriKey(BINSTR* pBinKeyID);
    int PKCS11GenKeyPair(int nAlg, int nKeyType, BINSTR* pBinKeyID);
    int PKCS11Sign(BINSTR* pBinKeyID, BINSTR* pBinData, BINSTR* pBinSignature);
    int PKCS11Verify(BINSTR* pBinKeyID, BINSTR* pBinData, BINSTR* pBinSignature);
    int PKCS11Encrypt(BINSTR* pBinKeyID, BINSTR* pBinPlainText, BINSTR* pBinCipherText);
    int PKCS11Decrypt(BINSTR* pBinKeyID, BINSTR* pBinCipherText, BINSTR* pBinPlainText);
    int PKCS11SignData(BINSTR* pBinKeyID, BINSTR* pBinData, BINSTR* pBinSignedData);
    int PKCS11SignDataNoContent(BINSTR* pBinKeyID, BINSTR* pBinData, BINSTR* pBinSignedData);
    int PKCS11DecryptData(BINSTR* pBinKeyID, BINSTR* pBinEnvelopData, BINSTR* pBinPlainText);
    int PKCS11SignAndEnvData(BINSTR* pBinKeyID, BINSTR* pBinEnvCert, BINSTR* pBinData,
                             BINSTR* pBinSignAndEnvData);
    int PKCS11VerifyAndDecData(BINSTR* pBinKeyID, BINSTR* pBinSignAndEnvData, BINSTR* pBinData,
                               BINSTR* pBinSignerCert);
    int PKCS11VerifySignatureValue(char* pszLibPaths, BINSTR* pBinSignerCert, BINSTR* pBinSignatureValue);
    int PKCS11CMPCertRequest(char* pszIP, int nPort, char* pszRefNum, char* pszAuthCode, char* pszIDN,
                             char* pszCACert, BINSTR* pBinSignKeyID, BINSTR* pBinKmKeyID);
    int PKCS11CMPCertUpdate(char* pszIP, int nPort, bool bKeyUpdate, char* pszIDN, char* pszCACert,
                            BINSTR* pBinSignKeyID, BINSTR* pBinKmKeyID);
    int PKCS11CMPCertUpdate2(char* pszIP, int nPort, bool bKeyUpdate, int nOption, char* pszIDN,
                             char* pszCACert, BINSTR* pBinSignCert, BINSTR* pBinSignPriKey,
                             BINSTR* pBinKmCert, BINSTR* pBinKmPriKey, BINSTR* pBinSignKeyID,
                             BINSTR* pBinKmKeyID);
    int PKCS11CMPCertRevoke(char* pszIP, int nPort, int nReasonCode, BINSTR* pBinSignKeyID,
                            BINSTR* pBinKmKeyID);
    /** Opens the session with a PIN. Reached by no flat function. */
    int PKCS11OpenSession(char* pszUserPIN);

    // Cryptography.
    int CRYPTSetRSAVersion(int nRSAVersion);
    int CRYPTSetPaddingType(int nPaddingType);
    int CRYPTSetEnvChangeIV();
    int CRYPTGenRandom(int nLen, BINSTR* pBinRandom);
    int CRYPTGenKeyPair(int nAlg, BINSTR* pBinPriKey, BINSTR* pPubKey);
    int CRYPTGenKeyAndIV(int nSymAlg);
    int CRYPTSetKeyAndIV(int nSymAlg, BINSTR* pBinKey, BINSTR* pBinIV);
    int CRYPTGetKeyAndIV(int* nSymAlg, BINSTR* pBinKey, BINSTR* pBinIV);
    int CRYPTClearKeyAndIV();
    int CRYPTEncrypt(BINSTR* pBinPlainText, BINSTR* pBinCipherText);
    int CRYPTDecrypt(BINSTR* pBinCipherText, BINSTR* pBinPlainText);
    int CRYPTEncryptFile(char* pszPlainTextFile, char* pszCipherTextFile);
    int CRYPTDecryptFile(char* pszCipherTextFile, char* pszPlainTextFile);
    int CRYPTSign(BINSTR* pBinPubKey, BINSTR* pBinPriKey, int nHashAlg, BINSTR* pBinTBSData,
                  BINSTR* pSignautre);
    int CRYPTVerify(BINSTR* pBinPubKey, int nHashAlg, BINSTR* pBinData, BINSTR* pSignautre);
    int CRYPTVerifyFile(BINSTR* pBinPubKey, int nHashAlg, char* pszDataFilePath, char* pszSignatureFilePath);
    int CRYPTAsymEncrypt(int nKeyType, BINSTR* pBinKey, BINSTR* pBinTBEData, BINSTR* pBinEncData);
    int CRYPTAsymDecrypt(int nKeyType, BINSTR* pBinKey, BINSTR* pBinEncData, BINSTR* pBinTBEData);
    int CRYPTHash(int nHashAlg, BINSTR* pBinTBHData, BINSTR* pBinDigest);
    int CRYPTHashFile(int nHashAlg, char* pszTBHDataFilePath, BINSTR* pBinDigest);
    int CRYPTGenMAC(int nMACAlg, char* pszPassword, BINSTR* pBinTBMData, BINSTR* pBinMAC);
    int CRYPTGenMAC2(int nMACAlg, BINSTR* pBinPassword, BINSTR* pBinTBMData, BINSTR* pBinMAC);
    int CRYPTVerifyMAC(int nMACAlg, char* pszPassword, BINSTR* pBinTBMData, BINSTR* pBinMAC);
    int CRYPTGenSharedKey(int nKeyType, BINSTR* pBinPriKeyInfo, BINSTR* pBinPubKey, BINSTR* pBinSharedKey);
    /** Signs a file into a signature file. Reached by no flat function. */
    int CRYPTSignFile(BINSTR* pBinPubKey, BINSTR* pBinPriKey, int nHashAlg, char* pszDataFilePath,
                      char* pszSignatureFilePath);

    // Base64.
    int Base64Encode(BINSTR* pBinData, BINSTR* pBinEncData);
    int Base64Decode(BINSTR* pBinEncData, BINSTR* pBinData);

    // PEM.
    int PEMEncode(int nType, BINSTR* pBinData, BINSTR* pBinEncData);
    int PEMDecode(BINSTR* pBinEncData, BINSTR* pBinData);

    // Directories.
    int ZRAPGetDataByURL(int nDataType, char* pszURL, BINSTR* pBinData);
    int ZRAPGetCRLByCert(BINSTR* pBinCert, BINSTR* pBinCRL);

    // Wireless messages.
    int WPKISignData(BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinTBSData, BINSTR* pBinSignedContent);
    int WPKIVerifyData(BINSTR* pBinSignedContent, BINSTR* pBinData, BINSTR* pBinSignerCert);
    int WPKIEncryptData(BINSTR* pBinRecCert, BINSTR* pBinTBEData, int nSymAlg, BINSTR* pBinCert,
                        BINSTR* pBinPriKey, BINSTR* pBinWapEnvData);
    int WPKIDecryptData(BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinWapEnvData, BINSTR* pBinWapData);
    int WPKIVerifyCert(BINSTR* pBinCert);

    // Messages in one step.
    int UNIViewCert(BINSTR* pBinCert, char* pszDisplay);
    int UNIVerifySignData(BINSTR* pBinSignData, BINSTR* pBinData, BINSTR* pBinSignerCert);
    int UNIDecryptEnvData(BINSTR* pBinCert, BINSTR* pBinPriKey, BINSTR* pBinEnvData, BINSTR* pBinData);

    // Lists and chains.
    int UTILAddObject(BINSTR* pBinObj, BINSTR* pBinObjs);
    int UTILGetObjectCount(BINSTR* pBinObjs, int* nCnt);
    int UTILGetObject(BINSTR* pBinObjs, int nIndex, BINSTR* pBinObj);
    int UTILCompareDN(char* pszDN1, char* pszDN2);
    int UTILGetCertPath(BINSTR* pBinCert, BINSTR* pBinPath);
    int UTILGetRootCert(BINSTR* pBinCert, BINSTR* pBinRootCert);
    int UTILIsTrustCert(BINSTR* pBinTrustCert, BINSTR* pBinRootCert, bool* pIsTrust);

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
