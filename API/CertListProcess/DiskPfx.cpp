#include <cstring>

#include "LoadDISK.h"
#include "PrivateKeys.h"
#include "ToolkitBytes.h"
#include "quillgate/returncodes.h"

namespace {

/** Modes of the toolkit's import: the usual one, and the one that is tried when it fails. */
enum ImportMode
{
    USUAL = 0,
    SECOND_TRY = 16
};

/** Pairs that a file may hold. Every key is tried on every certificate, so that more would take hours. */
constexpr int PAIR_LIMIT = 256;

constexpr int KEY_USAGE_SIZE = 1024;

/** A certificate and its key, in buffers for the caller. */
struct FoundPair
{
    HandedOut cert;
    HandedOut key;

    /** Takes copies in place of an earlier pair of the same use, which is wiped. 0, QG_NO_MEMORY. */
    int take(const ToolkitBytes& newCert, const ToolkitBytes& newKey)
    {
        if (const int code = cert.copy(newCert.data(), newCert.size()))
            return code;
        return key.copy(newKey.data(), newKey.size());
    }
};

/** The content of a PFX file. */
class PfxContent
{
public:
    explicit PfxContent(const OperationLog& log)
        : m_log(log), m_certs(log.toolkit()), m_keys(log.toolkit()), m_caPubs(log.toolkit())
    {}

    /** Unpacks. 0, CLPERR_WRONG_PASSWORD, CLPERR_PFX_IMPORT, CLPERR_NOTEXISTCERT. */
    int import(ToolkitBytes& file, char* password);

    /**
     * Pairs certificates and keys. 0, or what no caller can go on with. `last` takes the outcome of the last
     * certificate: 0, or the toolkit's number when no key fits it.
     */
    int sort(FoundPair& sign, FoundPair& km, int& last);

    static constexpr const char* TAG = "CLoadDISK::GetPKCS12()";

private:
    int importIn(ImportMode mode, ToolkitBytes& file, char* password);
    int countObjects();
    int object(ToolkitBytes& list, int index, ToolkitBytes& element) const;
    int findKey(ToolkitBytes& cert, ToolkitBytes& key, int& last);
    int sortOne(int index, FoundPair& sign, FoundPair& km, int& last);

    int failed(const char* callee, int toolkitCode, int code) const
    {
        m_log.failure(TAG, callee, toolkitCode);
        return code;
    }

    const OperationLog& m_log;
    ToolkitBytes m_certs;
    ToolkitBytes m_keys;
    ToolkitBytes m_caPubs;
    int m_count = 0; /**< certificates, and keys */
};

int PfxContent::importIn(ImportMode mode, ToolkitBytes& file, char* password)
{
    const int code = PFXImportMultiPair2(m_log.toolkit(), mode, file.get(), password, m_certs.get(),
                                         m_keys.get(), m_caPubs.get());
    return code == QG_OK ? code : failed("PFXImportMultiPair2()", code, code);
}

int PfxContent::import(ToolkitBytes& file, char* password)
{
    const int code = importIn(USUAL, file, password);
    if (code == TOOLKIT_WRONG_PFX_PASSWORD)
        return CLPERR_WRONG_PASSWORD;
    if (code != QG_OK && importIn(SECOND_TRY, file, password) != QG_OK)
        return CLPERR_PFX_IMPORT;
    return countObjects();
}

int PfxContent::countObjects()
{
    int keys = 0;
    int code = UTILGetObjectCount(m_log.toolkit(), m_certs.get(), &m_count);
    if (code == QG_OK)
        code = UTILGetObjectCount(m_log.toolkit(), m_keys.get(), &keys);
    if (code != QG_OK)
        return failed("UTILGetObjectCount()", code, CLPERR_PFX_IMPORT);
    if (m_count < 1 || m_count != keys) {
        m_log.condition(TAG, "CLPERR_NOTEXISTCERT");
        return CLPERR_NOTEXISTCERT;
    }
    return m_count <= PAIR_LIMIT ? QG_OK : CLPERR_PFX_IMPORT;
}

int PfxContent::object(ToolkitBytes& list, int index, ToolkitBytes& element) const
{
    const int code = UTILGetObject(m_log.toolkit(), list.get(), index, element.get());
    return code == QG_OK ? code : failed("UTILGetObject()", code, CLPERR_PFX_IMPORT);
}

int PfxContent::sort(FoundPair& sign, FoundPair& km, int& last)
{
    for (int index = 0; index < m_count; ++index) {
        if (const int code = sortOne(index, sign, km, last))
            return code;
    }
    return QG_OK;
}

/** Puts one certificate where its use says. It stays loaded: the next load replaces it. Settled. */
int PfxContent::sortOne(int index, FoundPair& sign, FoundPair& km, int& last)
{
    ToolkitBytes cert(m_log.toolkit());
    if (const int code = object(m_certs, index, cert))
        return code;
    if (const int code = CertLoad(m_log.toolkit(), cert.get()))
        return failed("CertLoad()", code, CLPERR_CERT_LOAD);
    char usage[KEY_USAGE_SIZE + 1] = {};
    if (const int code = CertGetKeyUsage(m_log.toolkit(), KEY_USAGE_SIZE, usage))
        return failed("CertGetKeyUsage()", code, CLPERR_CERT_FIELD);
    for (int i = 0; i < m_count; ++i) {
        ToolkitBytes key(m_log.toolkit());
        if (const int code = object(m_keys, i, key))
            return code;
        last = PriKeyCheckKeyPair(m_log.toolkit(), cert.get(), key.get());
        if (last == QG_OK)
            return (std::strstr(usage, "digitalSignature") ? sign : km).take(cert, key);
    }
    return QG_OK;
}

} // namespace

int CLoadDISK::GetPKCS12(char* pszPFXPath, char* pszPassword, char** pszSignCert, int* nSignCertLen,
                         char** pszSignKey, int* nSignKeyLen, char** pszKmCert, int* nKmCertLen,
                         char** pszKmKey, int* nKmKeyLen)
{
    const OperationLog trace = log();
    return trace.traced(PfxContent::TAG, [&]() -> int {
        if (!pszPFXPath)
            return QG_BAD_ARGUMENT;
        ToolkitBytes file(m_pZRWrapCtx);
        if (const int code = readFile(pszPFXPath, false, file)) {
            // Told like a wrong password. Settled, hosts rely on it.
            trace.failure(PfxContent::TAG, "MediaDiskReadFile()", code);
            return CLPERR_WRONG_PASSWORD;
        }
        PfxContent content(trace);
        if (const int code = content.import(file, pszPassword))
            return code;
        FoundPair sign;
        FoundPair km;
        int last = QG_OK;
        if (const int code = content.sort(sign, km, last))
            return code;
        if (!sign.cert.canGoTo(pszSignCert, nSignCertLen) || !sign.key.canGoTo(pszSignKey, nSignKeyLen) ||
            !km.cert.canGoTo(pszKmCert, nKmCertLen) || !km.key.canGoTo(pszKmKey, nKmKeyLen))
            return QG_BAD_ARGUMENT;
        sign.cert.giveTo(pszSignCert, nSignCertLen);
        sign.key.giveTo(pszSignKey, nSignKeyLen);
        km.cert.giveTo(pszKmCert, nKmCertLen);
        km.key.giveTo(pszKmKey, nKmKeyLen);
        return last;
    });
}

namespace {

const char* const EXPORT_TAG = "CLoadDISK::MakePKCS12()";

/** Packs one pair. */
int packPair(const OperationLog& trace, char* password, ToolkitBytes& cert, ToolkitBytes& key,
             ToolkitBytes& pfx)
{
    const int code =
        PFXExport(trace.toolkit(), 0, password, cert.get(), key.get(), nullptr, nullptr, pfx.get());
    if (code != QG_OK)
        trace.failure(EXPORT_TAG, "PFXExport()", code);
    return code;
}

/** One certificate and one key, added to the lists of both. */
int addPair(const OperationLog& trace, ToolkitBytes& cert, ToolkitBytes& key, ToolkitBytes& certs,
            ToolkitBytes& keys)
{
    int code = UTILAddObject(trace.toolkit(), cert.get(), certs.get());
    if (code == QG_OK)
        code = UTILAddObject(trace.toolkit(), key.get(), keys.get());
    if (code != QG_OK)
        trace.failure(EXPORT_TAG, "UTILAddObject()", code);
    return code;
}

int packLists(const OperationLog& trace, char* password, ToolkitBytes& certs, ToolkitBytes& keys,
              ToolkitBytes& pfx)
{
    const int code = PFXExportMultiPair(trace.toolkit(), 0, password, certs.get(), keys.get(), pfx.get());
    if (code != QG_OK)
        trace.failure(EXPORT_TAG, "PFXExportMultiPair()", code);
    return code;
}

} // namespace

int CLoadDISK::MakePKCS12(char* pszPassword, char* pszPFXPath, char* pszSignCert, int nSignCertLen,
                          char* pszSignKey, int nSignKeyLen, char* pszKmCert, int nKmCertLen, char* pszKmKey,
                          int nKmKeyLen)
{
    const OperationLog trace = log();
    return trace.traced(EXPORT_TAG, [&]() -> int {
        ToolkitBytes signCert(m_pZRWrapCtx);
        ToolkitBytes signKey(m_pZRWrapCtx);
        ToolkitBytes pfx(m_pZRWrapCtx);
        signCert.set(pszSignCert, nSignCertLen);
        signKey.set(pszSignKey, nSignKeyLen);
        if (nKmCertLen < 1 || nKmKeyLen < 1) {
            if (packPair(trace, pszPassword, signCert, signKey, pfx) != QG_OK)
                return CLPERR_PFX_EXPORT;
        } else {
            ToolkitBytes kmCert(m_pZRWrapCtx);
            ToolkitBytes kmKey(m_pZRWrapCtx);
            ToolkitBytes certs(m_pZRWrapCtx);
            ToolkitBytes keys(m_pZRWrapCtx);
            kmCert.set(pszKmCert, nKmCertLen);
            kmKey.set(pszKmKey, nKmKeyLen);
            if (addPair(trace, signCert, signKey, certs, keys) != QG_OK ||
                addPair(trace, kmCert, kmKey, certs, keys) != QG_OK ||
                packLists(trace, pszPassword, certs, keys, pfx) != QG_OK)
                return CLPERR_PFX_EXPORT;
        }
        return writeBytes(trace, EXPORT_TAG, pszPFXPath, pfx, CLPERR_PFX_EXPORT);
    });
}
