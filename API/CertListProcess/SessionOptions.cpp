#include <algorithm>
#include <cstring>
#include <new>

#include "BoundedText.h"
#include "CertListProcInterface.h"
#include "Secret.h"

namespace {

/** Bytes that a memory array holds. The store takes one less and refuses the last when it loads. */
constexpr int MEMORY_LIMIT = 4096;

/** Replaces a text that may hold a secret; null and empty leave it empty. */
void replaceText(char (&field)[1024], const char* text)
{
    wipe(field);
    copyText(field, text);
}

/** Replaces bytes that may be a secret. */
void replaceBytes(char (&field)[4096], int& fieldLength, const char* data, int length)
{
    wipe(field);
    std::memcpy(field, data, static_cast<size_t>(length));
    fieldLength = length;
}

} // namespace

int CCertListProcInterface::ParsingPolicyIDS(bool bOnlyCount)
{
    // Both lines carry another class or member: readers of the log know them so.
    log().start("CLoadDISK::ParsingPolicyIDS()");
    // Not cleared between the segments, and the copy writes no terminator: a segment that is shorter than the
    // one before keeps that one's tail. Hosts rely on it.
    char segment[1024] = {};
    int count = 0;
    const char* from = m_szCertPolicyIDs;
    while (const char* bar = std::strchr(from, '|')) {
        if (!bOnlyCount && m_pstSetOid && count < m_nSetPolicyOIDCnt) {
            const auto length = std::min<size_t>(static_cast<size_t>(bar - from), sizeof(segment) - 1);
            std::memcpy(segment, from, length);
            copyText(m_pstSetOid[static_cast<size_t>(count)].szPolicyID, segment);
        }
        ++count;
        from = bar + 1;
    }
    CUtil::SetLogInfo(m_szLogFilePath, "%s : %d", "CLoadDISK::SetIssuerNameList() End...Count", count);
    return count;
}

int CCertListProcInterface::SetLoadCertType(LOADCERTOPT* stLoadCertOpt)
{
    return runOnStores("CCertListProcInterface::SetLoadCertType()", [&]() -> int {
        if (!stLoadCertOpt)
            return QG_BAD_ARGUMENT;
        const LOADCERTOPT& option = *stLoadCertOpt;
        m_bCDROMHide = option.bCDROMHide;
        m_nSMCardType = option.nSMCardType;
        m_nPhoneType = option.nPhoneType;
        m_nUbikeyVersion = option.nUbikeyVersion;
        copyText(m_szUbikeyWParam, option.szUbikeyWParam);
        copyText(m_szUbikeylParam, option.szUbikeylParam);
        if (const int code = rebuildPolicyFilter(option.szCertPolicyIDs))
            return code;
        giveOptions(*m_pDisk, option);
        giveOptions(*m_pMemory, option);
        m_bHideBriskSeal = option.bTokenBSCertHide;
        return QG_OK;
    });
}

/** Makes the policy filter anew, of the earlier text when this one is empty; without an entry the old array
 * stays. */
int CCertListProcInterface::rebuildPolicyFilter(const char* policies)
{
    char earlierPolicies[sizeof(m_szCertPolicyIDs)];
    joinText(earlierPolicies, {m_szCertPolicyIDs});
    const int earlierCount = m_nSetPolicyOIDCnt;
    copyText(m_szCertPolicyIDs, policies);
    m_nSetPolicyOIDCnt = ParsingPolicyIDS(true);
    if (m_nSetPolicyOIDCnt == 0)
        return QG_OK;
    std::unique_ptr<SETOID[]> old(new (std::nothrow) SETOID[static_cast<size_t>(m_nSetPolicyOIDCnt)]());
    if (!old) {
        // The stores go on with the earlier filter, so a later call without a policy must find its text.
        joinText(m_szCertPolicyIDs, {earlierPolicies});
        m_nSetPolicyOIDCnt = earlierCount;
        return QG_NO_MEMORY;
    }
    m_pstSetOid.swap(old);
    ParsingPolicyIDS(false);
    // A call without a policy text does not give the filter to the stores; those that read the old array go
    // on with its successor, which holds the same.
    const auto replace = [&](auto& store) {
        if (store.m_pstSetOid && store.m_pstSetOid == old.get())
            store.m_pstSetOid = m_pstSetOid.get();
    };
    replace(*m_pDisk);
    replace(*m_pMemory);
    return QG_OK;
}

template <typename Store>
void CCertListProcInterface::giveOptions(Store& store, const LOADCERTOPT& option) const
{
    LOADCERTOPT& target = store.m_stLoadCertOpt;
    target.nCertCAType = option.nCertCAType;
    target.nCertUsageType = option.nCertUsageType;
    target.bCDROMHide = option.bCDROMHide;
    target.bExpiredCertHide = option.bExpiredCertHide;
    copyText(target.szCertPolicyIDs, option.szCertPolicyIDs);
    copyText(target.szCertSerial, option.szCertSerial);
    copyText(target.szCertDN, option.szCertDN);
    copyText(target.szIssuerDN, option.szIssuerDN);
    if (option.szCertPolicyIDs[0] != '\0' && m_pstSetOid) {
        store.m_nSetPolicyOIDCnt = m_nSetPolicyOIDCnt;
        store.m_pstSetOid = m_pstSetOid.get();
    }
}

int CCertListProcInterface::SetPFXInfo(const char* pszPath, const char* pszPassword)
{
    replaceText(m_szPFXPath, pszPath);
    replaceText(m_szPFXPassword, pszPassword);
    return QG_OK;
}

int CCertListProcInterface::SetMemoryCert(const char* pszSignCert, int nSignCertLen, const char* pszSignKey,
                                          int nSignKeyLen, const char* pszKmCert, int nKmCertLen,
                                          const char* pszKmKey, int nKmKeyLen)
{
    const bool hasKm = pszKmCert && nKmCertLen >= 1 && pszKmKey && nKmKeyLen >= 1;
    if (nSignCertLen > MEMORY_LIMIT || nSignKeyLen > MEMORY_LIMIT ||
        (hasKm && (nKmCertLen > MEMORY_LIMIT || nKmKeyLen > MEMORY_LIMIT)))
        return QG_BAD_ARGUMENT;
    replaceBytes(m_szMemSignCert, m_nMemSignCertLen, pszSignCert, nSignCertLen);
    replaceBytes(m_szMemSignKey, m_nMemSignKeyLen, pszSignKey, nSignKeyLen);
    if (!hasKm)
        return QG_OK;
    replaceBytes(m_szMemKmCert, m_nMemKmCerLen, pszKmCert, nKmCertLen);
    replaceBytes(m_szMemKmKey, m_nMemKmKeyLen, pszKmKey, nKmKeyLen);
    return QG_OK;
}
