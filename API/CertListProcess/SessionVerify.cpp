#include <algorithm>
#include <cstdio>
#include <cstring>
#include <new>
#include <strings.h>

#include "BoundedText.h"
#include "CertListProcInterface.h"
#include "LibFile.h"
#include "PrivateKeys.h"
#include "quillgate/toolkit.h"

namespace {

const char* const VERIFY_TAG = "CCertListProcInterface::VerifyCert()";

/** The military root, which no public directory gives out. */
const char* const SKIPPED_DN = "cn=Root CA,ou=MPKI,o=Ministry of National Defense,c=KR";

/** Entries beyond are not looked at: each one reads the file anew, and a count may say two billion. */
constexpr int MAX_ENTRIES = 1000;

/** Where a toolkit's own configuration names its CAs, and how deep that toolkit is to check. */
struct CaConfiguration
{
    const char* file; /**< with the backslash that stands between directory and name */
    const char* countKey;
    const char* section;
    const char* dnKey;
    const char* urlKey;
    int check; /**< nCheck of CertSetVerifyEnv */
};

constexpr CaConfiguration ZRTK_CAS = {
    "\\ZRCToolkitV30.conf", "CA_INFO_COUNT", "CA_INFO", "CA_DN", "DIR_URL", 2};
constexpr CaConfiguration GPKI_CAS = {"\\gpkiapi.conf", "LDAP_INFO_COUNT", "LDAP_INFO", "DN", "URL", 1};

const CaConfiguration& configurationOf(int toolkit)
{
    return toolkit == TOOLKIT_ZRTK ? ZRTK_CAS : GPKI_CAS;
}

/** One value of an entry, which a root needs: at most 99 bytes, as in every file in the field. */
struct EntryValue
{
    char text[100] = {};

    EntryValue(const char* path, const char* section, const char* key)
    {
        FileGetPrivateProfileString(section, key, "", text, sizeof(text), path);
    }
};

/** Calls visit(section, DN) for each root entry. 0, QG_BAD_ARGUMENT, CLPERR_NO_CA_CONFIGURED. */
template <typename Visit>
int forEachRoot(const CaConfiguration& cas, const char* path, Visit visit)
{
    if (!path || *path == '\0')
        return QG_BAD_ARGUMENT;
    // The misspelling is part of the file format.
    const int count = FileGetPrivateProfileInt("VALIDATOIN_OPTION", cas.countKey, 0, path);
    if (count <= 0)
        return CLPERR_NO_CA_CONFIGURED;
    for (int entry = 1; entry <= std::min(count, MAX_ENTRIES); ++entry) {
        char section[20];
        std::snprintf(section, sizeof(section), "%s%d", cas.section, entry);
        const EntryValue dn(path, section, cas.dnKey);
        if (std::strstr(dn.text, "Root"))
            visit(section, dn.text);
    }
    return QG_OK;
}

} // namespace

int CCertListProcInterface::GetRootCertCount(char* pszConfPath, int* nCount)
{
    return run("CCertListProcInterface::GetRootCertCount()", [&]() -> int {
        if (!nCount)
            return QG_BAD_ARGUMENT;
        int count = 0;
        const auto countOne = [&](const char*, const char*) {
            ++count;
        };
        if (const int code = forEachRoot(configurationOf(m_nTKType), pszConfPath, countOne))
            return code;
        *nCount = count;
        CUtil::SetLogInfo(m_szLogFilePath, "RootCert Count : %d", count);
        return QG_OK;
    });
}

int CCertListProcInterface::GetRootCertURL(char* pszConfPath, ROOTCERTURLINFO* pstRootCertURL, int nLimit)
{
    return run("CCertListProcInterface::GetRootCertURL()", [&]() -> int {
        if (!pstRootCertURL)
            return QG_BAD_ARGUMENT;
        const CaConfiguration& cas = configurationOf(m_nTKType);
        int position = 0;
        return forEachRoot(cas, pszConfPath, [&](const char* section, const char* dn) {
            if (position >= nLimit)
                return;
            ROOTCERTURLINFO& root = pstRootCertURL[position++];
            copyText(root.szURL, EntryValue(pszConfPath, section, cas.urlKey).text);
            copyText(root.szDN, dn);
        });
    });
}

/** A step of the verification that failed: the toolkit's text is fetched and logged. */
int CCertListProcInterface::refuseVerify(const char* callee, int code)
{
    log().verifyFailure(VERIFY_TAG, callee, code);
    return CLPERR_CERT_VERIFY;
}

int CCertListProcInterface::VerifyCert(int nIndex, int nDetailMsgLen, char* pszDetailMsg)
{
    return runOnStores(VERIFY_TAG, [&]() -> int {
        // A backslash on this platform too: a file of that literal name, beside the work directory.
        char path[sizeof(m_szWorkDir) + 32];
        const CaConfiguration& cas = configurationOf(m_nTKType);
        joinText(path, {m_szWorkDir, cas.file});
        ToolkitBytes cert(m_pZRWrapCtx);
        if (const int code = trustRoots(path))
            return code;
        m_nRtn = CertSetVerifyEnv(m_pZRWrapCtx, 0, cas.check, false, nullptr, nullptr);
        if (m_nRtn != QG_OK)
            return refuseVerify("CertSetVerifyEnv()", m_nRtn);
        if (const int code = loadForVerify(nIndex, cert))
            return code;
        const int code = CertVerify(m_pZRWrapCtx, cert.get(), 1, nullptr, path, false, nullptr, nullptr);
        if (code == QG_OK)
            return QG_OK;
        refuseVerify("CertVerify()", code);
        if (nDetailMsgLen > 0)
            copyText(pszDetailMsg, static_cast<size_t>(nDetailMsgLen), m_szErrMsg);
        return CLPERR_CERT_VERIFY;
    });
}

/** Fetches the configured roots and registers them as trusted. 0, CLPERR_CERT_VERIFY, QG_NO_MEMORY. */
int CCertListProcInterface::trustRoots(char* pszConfPath)
{
    int count = 0;
    if (const int code = GetRootCertCount(pszConfPath, &count))
        return refuseVerify("GetRootCertCount()", code);
    const std::unique_ptr<ROOTCERTURLINFO[]> roots(new (std::nothrow)
                                                       ROOTCERTURLINFO[static_cast<size_t>(count)]());
    // The drive list of the file search is asked for as well. So a certificate is verified only in a session
    // that has run a "root" search, and hosts run one first.
    if (!roots || !m_pstSearchDriveInfo)
        return QG_NO_MEMORY;
    if (const int code = GetRootCertURL(pszConfPath, roots.get(), count))
        return refuseVerify("GetRootCertURL()", code);
    ToolkitBytes data(m_pZRWrapCtx);
    for (int position = 0; position < count; ++position) {
        if (const int code = trustRoot(roots[static_cast<size_t>(position)], data))
            return refuseVerify("CertAddTrustedCert()", code);
    }
    return QG_OK;
}

/** A root that cannot be fetched is passed over: the verdict shows whether it was needed. */
int CCertListProcInterface::trustRoot(const ROOTCERTURLINFO& root, ToolkitBytes& data)
{
    char url[1024];
    joinText(url, {root.szURL, "/", root.szDN});
    if (strcasecmp(root.szDN, SKIPPED_DN) == 0)
        return QG_OK;
    m_nRtn = ZRAPGetDataByURL(m_pZRWrapCtx, 1, url, data.get());
    return m_nRtn == QG_OK ? CertAddTrustedCert(m_pZRWrapCtx, data.get()) : static_cast<int>(QG_OK);
}

/** The certificate's image, for the toolkit. A failure keeps its own code. */
int CCertListProcInterface::loadForVerify(int nIndex, ToolkitBytes& cert)
{
    HandedOut image;
    if (const int code = GetCertData(nIndex, &image.data, &image.length)) {
        // The step before's label, on purpose: readers of the log know it so.
        refuseVerify("CertSetVerifyEnv()", code);
        return code;
    }
    cert.set(image.data, image.length);
    return QG_OK;
}
