#include <cstring>

#include "BoundedText.h"
#include "CertInfoCopy.h"
#include "CertListProcInterface.h"
#include "PrivateKeys.h"

namespace {

/** Hash codes of the toolkit. */
enum
{
    HASH_OTHER = 1,
    HASH_SHA256 = 4,
    HASH_SHA512 = 5
};

/** The words are looked for in lower case alone. */
int hashOfAlgorithm(const char* algorithm)
{
    if (std::strstr(algorithm, "sha256"))
        return HASH_SHA256;
    return std::strstr(algorithm, "sha512") ? HASH_SHA512 : HASH_OTHER;
}

} // namespace

bool CCertListProcInterface::inMemory() const
{
    return m_nMediaType == MEDIA_SERVICE_MEMORY || m_nMediaType == MEDIA_MEMORY || m_nMediaType == MEDIA_PFX;
}

/** The record that the medium's store has at a position; null when there is none. */
CERTINFO* CCertListProcInterface::currentRecord(int nIndex) const
{
    return onDisk() ? m_pDisk->record(nIndex) : memoryRecord();
}

int CCertListProcInterface::LoadCertList()
{
    return runOnStores("CCertListProcInterface::LoadCertList()", [&]() -> int {
        switch (m_nMediaType) {
        case MEDIA_HARDDISK:
        case MEDIA_REMOVABLE:
            m_pDisk->m_nMediaType = m_nMediaType;
            return m_pDisk->LoadCertList();
        case MEDIA_MEMORY:
            m_pMemory->m_nMediaType = m_nMediaType;
            return loadMemoryList();
        case MEDIA_USIM:
            return QG_OK;
        case MEDIA_PFX:
            return loadPfxList();
        default:
            return QG_BAD_ARGUMENT;
        }
    });
}

/** Loads what SetMemoryCert kept; nothing kept is no failure. */
int CCertListProcInterface::loadMemoryList()
{
    if (m_nMemSignCertLen < 1 || m_nMemSignKeyLen < 1)
        return QG_OK;
    const bool hasKm = m_nMemKmCerLen > 0 && m_nMemKmKeyLen > 0;
    return m_pMemory->LoadCertList(m_szMemSignCert, m_nMemSignCertLen, m_szMemSignKey, m_nMemSignKeyLen,
                                   hasKm ? m_szMemKmCert : nullptr, hasKm ? m_nMemKmCerLen : 0,
                                   hasKm ? m_szMemKmKey : nullptr, hasKm ? m_nMemKmKeyLen : 0);
}

int CCertListProcInterface::LoadMemoryCert(char* pszSignCert, int nSignCertLen, char* pszSignKey,
                                           int nSignKeyLen, char* pszKmCert, int nKmCertLen, char* pszKmKey,
                                           int nKmKeyLen)
{
    return runOnStores("CCertListProcInterface::LoadMemoryCert()", [&] {
        return m_pMemory->LoadCertList(pszSignCert, nSignCertLen, pszSignKey, nSignKeyLen, pszKmCert,
                                       nKmCertLen, pszKmKey, nKmKeyLen);
    });
}

int CCertListProcInterface::GetCertCount()
{
    if (!m_pDisk || !m_pMemory)
        return 0;
    const int count = inMemory() ? m_pMemory->m_nCertCnt : m_pDisk->m_nCertCnt;
    CUtil::SetLogInfo(m_szLogFilePath, "Cert Count : %d", count);
    return count;
}

int CCertListProcInterface::GetCertData(int nIndex, char** pszOutCert, int* nOutCertLen)
{
    // The result is not reset on entry: without a failure the one of the operation before stands. Settled.
    return log().traced("CCertListProcInterface::GetCertData()", [&]() -> int {
        if (!m_pDisk || !m_pMemory)
            return m_nRtn = QG_NO_CONTEXT;
        if (nIndex < 0 || !pszOutCert || !nOutCertLen)
            return m_nRtn = QG_BAD_ARGUMENT;
        if (!onDisk() && m_nMediaType != MEDIA_SERVICE_MEMORY && m_nMediaType != MEDIA_MEMORY)
            return m_nRtn;
        const CERTINFO* entry = currentRecord(nIndex);
        if (!entry)
            return m_nRtn = QG_BAD_ARGUMENT;
        if (const int code = handOut(entry->szSignCert, entry->nSignCertLen, pszOutCert, nOutCertLen))
            m_nRtn = code;
        return m_nRtn;
    });
}

int CCertListProcInterface::GetCertInfo(int nIndex, CERTINFO* pstSelectCertInfo)
{
    return runOnStores("CCertListProcInterface::GetCertInfo()", [&]() -> int {
        if (nIndex < 0 || !pstSelectCertInfo)
            return QG_BAD_ARGUMENT;
        if (!onDisk() && !inMemory())
            return QG_OK;
        // The days left are read at the index in memory as well, where only 0 is one.
        const CERTINFO* entry = inMemory() && nIndex > 0 ? nullptr : currentRecord(nIndex);
        if (!entry)
            return QG_BAD_ARGUMENT;
        copyRecord(*pstSelectCertInfo, *entry);
        return QG_OK;
    });
}

/** Field by field, for the host; szLibPath stays behind. */
void CCertListProcInterface::copyRecord(CERTINFO& target, const CERTINFO& source)
{
    using namespace certinfo;
    copyPairs(target, source);
    copyEncryptedKeys(target, source);
    copyTextsToCrlDp(target, source);
    copyTexts<&CERTINFO::szCertPolicy>(target, source);
    copyTextsFromPolicyIds(target, source);
    copyKeyRandom(target, source);
    copyExtensions(target, source);
    copyValues<&CERTINFO::nRemainDay>(target, source);
    copyStates(target, source);
    copyTexts<&CERTINFO::szDriveInfo, &CERTINFO::szPinNumber, &CERTINFO::szCertPassword>(target, source);
}

int CCertListProcInterface::GetHashAlgInfo(int nIndex, int* nHashAlg)
{
    return runOnStores("CCertListProcInterface::GetHashAlgInfo()", [&]() -> int {
        if (nIndex < 0 || !nHashAlg)
            return QG_BAD_ARGUMENT;
        const bool hasStore = onDisk() || inMemory();
        const CERTINFO* entry = hasStore ? currentRecord(nIndex) : nullptr;
        if (hasStore && !entry)
            return QG_BAD_ARGUMENT;
        *nHashAlg = entry ? hashOfAlgorithm(entry->szAlgorithm) : HASH_OTHER;
        return QG_OK;
    });
}
