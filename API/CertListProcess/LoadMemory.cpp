#include "LoadMemory.h"

#include <algorithm>
#include <cstring>

#include "CertInfoCopy.h"
#include "PrivateKeys.h"
#include "Secret.h"
#include "quillgate/returncodes.h"

namespace {

constexpr int FIELD_LIMIT = 4095;

/** Code of the toolkit for the algorithm that keys of this store are encrypted with. */
constexpr int KEY_ALGORITHM = 64;

/** Stores at most 4095 bytes and gives their number. */
int store(char (&field)[4096], const char* data, int length)
{
    const int stored = std::min(length, FIELD_LIMIT);
    std::memcpy(field, data, static_cast<size_t>(stored));
    return stored;
}

} // namespace

CLoadMemory::CLoadMemory(int /*nLanguage*/, int nTKType, char* /*pszWorkDir*/) : m_nTKType(nTKType) {}

CLoadMemory::~CLoadMemory() = default;

bool CLoadMemory::Pair::fits() const
{
    return certLength <= FIELD_LIMIT && keyLength <= FIELD_LIMIT;
}

int CLoadMemory::LoadCertList(char* pszPassword, char* pszSignCert, int nSignCertLen, char* pszSignKey,
                              int nSignKeyLen, char* pszKmCert, int nKmCertLen, char* pszKmKey, int nKmKeyLen)
{
    return log().traced("CLoadMemory::LoadCertList()", [&] {
        return load(pszPassword, true, {pszSignCert, nSignCertLen, pszSignKey, nSignKeyLen},
                    {pszKmCert, nKmCertLen, pszKmKey, nKmKeyLen});
    });
}

int CLoadMemory::LoadCertList(char* pszSignCert, int nSignCertLen, char* pszSignKey, int nSignKeyLen,
                              char* pszKmCert, int nKmCertLen, char* pszKmKey, int nKmKeyLen)
{
    return log().traced("CLoadMemory::LoadCertList()", [&]() -> int {
        const Pair sign = {pszSignCert, nSignCertLen, pszSignKey, nSignKeyLen};
        const Pair km = {pszKmCert, nKmCertLen, pszKmKey, nKmKeyLen};
        // This form never cuts: what does not fit is refused.
        return sign.fits() && km.fits() ? load(nullptr, false, sign, km) : QG_BAD_ARGUMENT;
    });
}

int CLoadMemory::load(const char* password, bool encrypts, const Pair& sign, const Pair& km)
{
    if (!sign.complete())
        return QG_BAD_ARGUMENT;
    m_pstCertInfoList = makeCertInfoList(1);
    if (!m_pstCertInfoList)
        return QG_NO_MEMORY;
    CERTINFO record{};
    const ScopedWipe wipeRecord(record);
    if (const int code = fillRecord(password, encrypts, sign, km, record))
        return code;
    // A certificate that is refused or can't be read leaves an empty record and is no failure of the load.
    if (ParsingCert(&record) == QG_OK) {
        CopyCertInfo(&record);
        m_nCertCnt = 1;
    }
    return QG_OK;
}

/** Puts the bytes into the record: certificates as they are, keys as the medium has them. */
int CLoadMemory::fillRecord(const char* password, bool encrypts, const Pair& sign, const Pair& km,
                            CERTINFO& record)
{
    record.nSignCertLen = store(record.szSignCert, sign.cert, sign.certLength);
    if (const int code = storeKey(password, encrypts, SIGN_KEY, sign.key, sign.keyLength, record))
        return code;
    // A demanded pair must be there but is not copied, so that the record stays without it and is not parsed.
    // Settled, hosts rely on it.
    if (m_stLoadCertOpt.nCertUsageType == CERTUSAGE_KM_PAIR)
        return km.complete() ? QG_OK : CLPERR_NO_KM_PAIR;
    if (km.cert && km.certLength > 0)
        record.nKmCertLen = store(record.szKmCert, km.cert, km.certLength);
    if (!km.key || km.keyLength < 1)
        return QG_OK;
    return storeKey(password, encrypts, KM_KEY, km.key, km.keyLength, record);
}

/** Stores a key: plain and, if asked for, encrypted on the media of plain keys, encrypted on all others. */
int CLoadMemory::storeKey(const char* password, bool encrypts, const KeyFields& fields, const char* key,
                          int length, CERTINFO& record)
{
    if (!holdsPlainKeys()) {
        record.*fields.encryptedLength = store(record.*fields.encrypted, key, length);
        return QG_OK;
    }
    record.*fields.plainLength = store(record.*fields.plain, key, length);
    if (!encrypts)
        return QG_OK;
    ToolkitBytes plain(m_pZRWrapCtx);
    ToolkitBytes encrypted(m_pZRWrapCtx);
    plain.set(key, length);
    if (const int code = PriKeyEncrypt(m_pZRWrapCtx, KEY_ALGORITHM, const_cast<char*>(password), plain.get(),
                                       encrypted.get())) {
        log().failure("CLoadMemory::LoadCertList", "PriKeyEncrypt()", code);
        return code;
    }
    if (encrypted.size() > 0)
        record.*fields.encryptedLength = store(record.*fields.encrypted, encrypted.data(), encrypted.size());
    return QG_OK;
}

int CLoadMemory::ParsingCert(CERTINFO* stCertInfo)
{
    if (!stCertInfo)
        return QG_BAD_ARGUMENT;
    const OperationLog trace = log();
    return trace.traced(CertParserRules::memory.tag, [&]() -> int {
        stCertInfo->nMediaType = m_nMediaType;
        // Nothing is parsed then, and the record counts as good: a usage type of 2 gives a list of one record
        // without texts. Settled, hosts rely on it.
        if (m_stLoadCertOpt.nCertUsageType == CERTUSAGE_KM_PAIR &&
            (stCertInfo->nKmCertLen < 1 || stCertInfo->nKmKeyLen < 1))
            return QG_OK;
        ToolkitBytes signCert(m_pZRWrapCtx);
        signCert.set(stCertInfo->szSignCert, stCertInfo->nSignCertLen);
        const CertParserSettings settings = {m_stLoadCertOpt, m_pstSetOid, m_nSetPolicyOIDCnt, m_mapOidList,
                                             m_szConfigPath};
        return CertParser(CertParserRules::memory, settings, trace, *stCertInfo).parse(signCert.get());
    });
}

void CLoadMemory::CopyCertInfo(CERTINFO* stCertInfo)
{
    using namespace certinfo;
    log().traced("CLoadMemory::CopyCertInfo()", [&]() -> int {
        if (!m_pstCertInfoList || !stCertInfo)
            return QG_OK;
        CERTINFO& target = m_pstCertInfoList[0];
        copyPairs(target, *stCertInfo);
        copyEncryptedKeys(target, *stCertInfo);
        copyTextsToCrlDp(target, *stCertInfo);
        copyTexts<&CERTINFO::szCertPolicy>(target, *stCertInfo);
        copyTextsFromPolicyIds(target, *stCertInfo);
        copyExtensions(target, *stCertInfo);
        copyKeyRandom(target, *stCertInfo);
        copyValues<&CERTINFO::nRemainDay>(target, *stCertInfo);
        copyStates(target, *stCertInfo);
        copyTexts<&CERTINFO::szDriveInfo, &CERTINFO::szLibPath>(target, *stCertInfo);
        return QG_OK;
    });
}

int CLoadMemory::DecryptPriKey(char* pszPassword)
{
    const OperationLog trace = log();
    return trace.traced("CLoadMemory::DecryptPriKey()", [&]() -> int {
        // Failures carry another store's tag: readers of the log know them so.
        const char* const tag = "CLoadSMCard::DecryptPriKey()";
        if (!m_pstCertInfoList)
            return QG_BAD_ARGUMENT;
        CERTINFO& record = m_pstCertInfoList[0];
        if (const int code = openKey(trace, tag, SIGN_KEY, record, pszPassword))
            return code;
        if (record.nEncKmKeyLen > 0) {
            if (const int code = openKey(trace, tag, KM_KEY, record, pszPassword))
                return code;
        }
        copyText(record.szCertPassword, pszPassword);
        return QG_OK;
    });
}

int CLoadMemory::GetPrikeyRandom()
{
    const OperationLog trace = log();
    return trace.traced("CLoadMemory::GetPrikeyRandom()", [&]() -> int {
        if (!m_pstCertInfoList)
            return QG_BAD_ARGUMENT;
        return readKeyRandom(trace, "CLoadSMCard::GetPrikeyRandom()", m_pstCertInfoList[0]);
    });
}

int CLoadMemory::VerifyVID(char* pszIDN)
{
    const OperationLog trace = log();
    return trace.traced("CLoadMemory::VerifyVID()", [&]() -> int {
        if (!m_pstCertInfoList || !pszIDN)
            return QG_BAD_ARGUMENT;
        return verifyIdentity(trace, m_pstCertInfoList[0], pszIDN);
    });
}

int CLoadMemory::MemFree(void** ppv)
{
    return log().traced("CLoadMemory::MemFree()", [&] { return freeHandedOut(ppv); });
}
