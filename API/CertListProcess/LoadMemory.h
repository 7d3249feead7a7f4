#pragma once

#include "CertInfoList.h"
#include "CertParser.h"
#include "OperationLog.h"
#include "Util.h"
#include "quillgate/records.h"

struct KeyFields;

/**
 * The memory store: one certificate that was handed in as bytes (medium 6) or came out of a PFX file
 * (medium 8). Its keys arrive in plain form.
 *
 * One instance belongs to one session and one thread. Lengths are bytes, texts EUC-KR.
 */
class CLoadMemory
{
public:
    /** A store for a toolkit type; language and work directory are not used. */
    CLoadMemory(int nLanguage, int nTKType, char* pszWorkDir);

    /** Wipes and frees the record. The toolkit context and the policy filter stay with their owner. */
    ~CLoadMemory();
    CLoadMemory(const CLoadMemory&) = delete;
    CLoadMemory& operator=(const CLoadMemory&) = delete;

    /**
     * Loads a certificate with plain keys and encrypts the keys under the password as well (medium 8). Bytes
     * are cut to 4095. 0, also for a certificate that is refused or unreadable: the record is then empty and
     * the count stays; 10003; 10004 (sign certificate or key missing: the old record stays); 30007; the
     * toolkit's number when encryption fails.
     */
    int LoadCertList(char* pszPassword, char* pszSignCert, int nSignCertLen, char* pszSignKey,
                     int nSignKeyLen, char* pszKmCert, int nKmCertLen, char* pszKmKey, int nKmKeyLen);

    /** The same without encryption (medium 6). Lengths above 4095 are refused with 10004. */
    int LoadCertList(char* pszSignCert, int nSignCertLen, char* pszSignKey, int nSignKeyLen, char* pszKmCert,
                     int nKmCertLen, char* pszKmKey, int nKmKeyLen);

    /** Fills a record that has its bytes set. 0, or CLPERR_PASS, CLPERR_CERT_LOAD, CLPERR_CERT_FIELD. */
    int ParsingCert(CERTINFO* stCertInfo);

    /** Copies into the single record; nothing happens without one. */
    void CopyCertInfo(CERTINFO* stCertInfo);

    /** Opens the encrypted keys. 0, 10004 (no record), 30011, 30016, 30021, toolkit numbers. */
    int DecryptPriKey(char* pszPassword);

    /** Fills szKeyRandom from the plain key. 0, 10004 (no record), 30018, 30091. */
    int GetPrikeyRandom();

    /** Identity check after GetPrikeyRandom. 0, 10004 (no record or number), 30092. */
    int VerifyVID(char* pszIDN);

    /** Wipes and frees an array made with new[] and nulls the pointer. 0, 10004. */
    int MemFree(void** ppv);

    CUtil m_util;
    int m_nTKType;
    int m_nMediaType = MEDIA_PFX;
    void* m_pZRWrapCtx = nullptr; /**< toolkit context, borrowed */
    void* m_piniFile = nullptr;   /**< stays null */
    char m_szConfigPath[1024] = {};
    char m_szLogFilePath[1024] = {};
    char m_szErrMsg[1024] = {};
    int m_nSetPolicyOIDCnt = 0;
    int m_nConfIssuerCNCnt = 0;     /**< not used */
    int m_nConfPolicyIDListCnt = 0; /**< not used */
    int m_nCertCnt = 0;             /**< 1 once a certificate was parsed; nothing sets it back */
    LOADCERTOPT m_stLoadCertOpt{};
    SETOID* m_pstSetOid = nullptr;  /**< policy filter, borrowed */
    CertInfoList m_pstCertInfoList; /**< the single record */
    OidNames m_mapOidList;

private:
    /** A certificate and its key as they were handed in. */
    struct Pair
    {
        const char* cert;
        int certLength;
        const char* key;
        int keyLength;
        bool complete() const { return cert && certLength >= 1 && key && keyLength >= 1; }
        bool fits() const;
    };

    OperationLog log() { return {m_szLogFilePath, m_pZRWrapCtx, m_szErrMsg}; }

    int load(const char* password, bool encrypts, const Pair& sign, const Pair& km);
    int fillRecord(const char* password, bool encrypts, const Pair& sign, const Pair& km, CERTINFO& record);
    int storeKey(const char* password, bool encrypts, const KeyFields& fields, const char* key, int length,
                 CERTINFO& record);
    bool holdsPlainKeys() const { return m_nMediaType == MEDIA_MEMORY || m_nMediaType == MEDIA_PFX; }
};
