#include <algorithm>
#include <cstring>
#include <sys/stat.h>

#include "BoundedText.h"
#include "CertInfoCopy.h"
#include "CertParser.h"
#include "HolderPaths.h"
#include "LoadDISK.h"
#include "Secret.h"
#include "ToolkitBytes.h"
#include "quillgate/returncodes.h"

namespace {

constexpr int FIELD_LIMIT = 4095;

/** Stores at most 4095 bytes and gives their number. */
int store(char (&field)[4096], const ToolkitBytes& bytes)
{
    const int length = std::min(bytes.size(), FIELD_LIMIT);
    std::memcpy(field, bytes.data(), static_cast<size_t>(length));
    return length;
}

void storeKmPair(CERTINFO& record, const ToolkitBytes& cert, const ToolkitBytes& key)
{
    if (cert.size() > 0)
        record.nKmCertLen = store(record.szKmCert, cert);
    if (key.size() == 0)
        return;
    // A key of 4096 bytes and more sets the certificate's length in place of its own. Hosts rely on it.
    int& length = key.size() > FIELD_LIMIT ? record.nKmCertLen : record.nEncKmKeyLen;
    length = store(record.szEncKmKey, key);
}

} // namespace

int CLoadDISK::ParsingCert(bool /*bOnlyCount*/, CERTINFO* stCertInfo)
{
    return stCertInfo ? parseFiles(*stCertInfo, {}) : QG_BAD_ARGUMENT;
}

/** ParsingCert with what the walk has seen of the files' types. */
int CLoadDISK::parseFiles(CERTINFO& record, const KnownRegular& regular)
{
    const OperationLog trace = log();
    return trace.traced(CertParserRules::disk.tag, [&]() -> int {
        record.nMediaType = m_nMediaType;
        if (m_nMediaType == MEDIA_REMOVABLE)
            copyText(record.szDriveInfo, m_szSelRemDrive);
        ToolkitBytes signCert(m_pZRWrapCtx);
        if (const int code = readSignPair(trace, record, regular, signCert))
            return code;
        if (const int code = readKmPair(trace, record, regular))
            return code;
        const CertParserSettings settings = {m_stLoadCertOpt, m_pstSetOid, m_nSetPolicyOIDCnt, m_mapOidList,
                                             m_szConfigPath};
        return CertParser(CertParserRules::disk, settings, trace, record).parse(signCert.get());
    });
}

/** Reads a file through the toolkit, which is not asked for a FIFO or a device: it might wait for it. */
int CLoadDISK::readFile(char* pszFilePath, bool isRegular, ToolkitBytes& bytes)
{
    struct stat status
    {};
    if (!isRegular && stat(pszFilePath, &status) == 0 && !S_ISREG(status.st_mode))
        return CLPERR_FILE_READ;
    return MediaDiskReadFile(m_pZRWrapCtx, pszFilePath, bytes.get());
}

/** Reads a file that no certificate may lack: one without its key file does not exist for the user. */
int CLoadDISK::readRequired(const OperationLog& trace, const char* name, char* pszFilePath, bool isRegular,
                            ToolkitBytes& bytes)
{
    trace.value("CLoadDISK::ParsingCert() ", name, pszFilePath);
    const int code = readFile(pszFilePath, isRegular, bytes);
    if (code == QG_OK)
        return QG_OK;
    trace.failure(CertParserRules::disk.tag, "MediaDiskReadFile()", code);
    return CLPERR_CERT_FIELD;
}

int CLoadDISK::readSignPair(const OperationLog& trace, CERTINFO& record, const KnownRegular& regular,
                            ToolkitBytes& signCert)
{
    ToolkitBytes signKey(m_pZRWrapCtx);
    if (const int code = readRequired(trace, "szSignCertPath", record.szSignCertPath,
                                      regular[HolderPaths::SIGN_CERT], signCert))
        return code;
    if (const int code = readRequired(trace, "szSignKeyPath", record.szSignKeyPath,
                                      regular[HolderPaths::SIGN_KEY], signKey))
        return code;
    if (signCert.size() > 0)
        record.nSignCertLen = store(record.szSignCert, signCert);
    // A key of 4096 bytes and more leaves its field empty beside a length of 4095. Hosts rely on it.
    if (signKey.size() > FIELD_LIMIT)
        record.nEncSignKeyLen = FIELD_LIMIT;
    else if (signKey.size() > 0)
        record.nEncSignKeyLen = store(record.szEncSignKey, signKey);
    return QG_OK;
}

int CLoadDISK::readKmPair(const OperationLog& trace, CERTINFO& record, const KnownRegular& regular)
{
    const bool demanded = m_stLoadCertOpt.nCertUsageType == CERTUSAGE_KM_PAIR;
    if (record.szKmCertPath[0] == '\0' || record.szKmKeyPath[0] == '\0')
        return demanded ? CLPERR_PASS : QG_OK;
    if (!demanded) {
        trace.value("CLoadDISK::ParsingCert() ", "szKmCertPath", record.szKmCertPath);
        trace.value("CLoadDISK::ParsingCert() ", "szKmKeyPath", record.szKmKeyPath);
    }
    ToolkitBytes cert(m_pZRWrapCtx);
    ToolkitBytes key(m_pZRWrapCtx);
    const int certCode = readFile(record.szKmCertPath, regular[HolderPaths::KM_CERT], cert);
    const int keyCode = readFile(record.szKmKeyPath, regular[HolderPaths::KM_KEY], key);
    if (demanded && (certCode != QG_OK || keyCode != QG_OK)) {
        record.szKmCertPath[0] = record.szKmKeyPath[0] = '\0';
        return CLPERR_PASS;
    }
    storeKmPair(record, cert, key);
    return QG_OK;
}

void CLoadDISK::CopyCertInfo(int nIndex, CERTINFO* stCertInfo)
{
    using namespace certinfo;
    log().traced("CLoadDISK::CopyCertInfo()", [&]() -> int {
        CERTINFO* target = record(nIndex);
        if (!target || !stCertInfo)
            return QG_OK;
        // A record that was never written is zero and tells so by its medium. Clearing it would only touch
        // pages that stay untouched otherwise.
        if (target->nMediaType != MEDIA_NONE)
            wipe(*target);
        target->nMediaType = MEDIA_HARDDISK;
        copyPairs(*target, *stCertInfo);
        copyEncryptedKeys(*target, *stCertInfo);
        copyTextsToCrlDp(*target, *stCertInfo);
        // Without a distribution point the policy text stays behind: settled, hosts rely on it.
        if (stCertInfo->szCrlDp[0] != '\0')
            copyTexts<&CERTINFO::szCertPolicy>(*target, *stCertInfo);
        copyTextsFromPolicyIds(*target, *stCertInfo);
        copyExtensions(*target, *stCertInfo);
        copyKeyRandom(*target, *stCertInfo);
        copyValues<&CERTINFO::nRemainDay>(*target, *stCertInfo);
        copyStates(*target, *stCertInfo);
        // These go to the first record whatever the index is, so that it alone names the drive.
        copyTexts<&CERTINFO::szDriveInfo, &CERTINFO::szLibPath, &CERTINFO::szPinNumber,
                  &CERTINFO::szCertPassword>(m_pstCertInfoList[0], *stCertInfo);
        return QG_OK;
    });
}

CERTINFO* CLoadDISK::record(int nIndex) const
{
    if (!m_pstCertInfoList || nIndex < 0 || nIndex >= m_nCertCnt)
        return nullptr;
    return &m_pstCertInfoList[static_cast<size_t>(nIndex)];
}
