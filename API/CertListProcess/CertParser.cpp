#include "CertParser.h"

#include <cstring>

#include "BoundedText.h"
#include "quillgate/returncodes.h"

constexpr CertParserRules CertParserRules::disk = {
    .tag = "CLoadDISK::ParsingCert()",
    .serialReason = "Check SerialNumber pass...",
    .versionRequired = false,
    .subjectFilterCompares = true,
    .validityHasText = true,
    .oldStates = false,
    .policyRefusalHasText = false,
};

constexpr CertParserRules CertParserRules::memory = {
    .tag = "CLoadMemory::ParsingCert()",
    .serialReason = "Check SerialNumber pass",
    .versionRequired = true,
    .subjectFilterCompares = false,
    .validityHasText = false,
    .oldStates = true,
    .policyRefusalHasText = true,
};

namespace {

/** Two lines of the memory store have always carried the disk store's tag. */
const char* const SHARED_TAG = "CLoadDISK::ParsingCert()";

/** Unloads the toolkit's certificate on every path. */
struct LoadedCert
{
    void* toolkit;
    ~LoadedCert() { CertUnLoad(toolkit); }
};

/**
 * Compares a filter with the converted form of a name. The conversion writes nothing, so a filter that is set
 * equals no name and refuses every certificate; hosts rely on that.
 */
bool differsFromConverted(const char* filter, const char* name)
{
    char converted[1024] = {};
    int length = sizeof(converted);
    CUtil::UTF8ToMultibyte(name, converted, &length);
    return strcasecmp(filter, converted) != 0;
}

} // namespace

CertParser::CertParser(const CertParserRules& rules, const CertParserSettings& settings,
                       const OperationLog& log, CERTINFO& record)
    : m_rules(rules), m_settings(settings), m_log(log), m_record(record)
{}

int CertParser::parse(BINSTR* signCert)
{
    static constexpr Step STEPS[] = {
        &CertParser::version,       &CertParser::serialNumber, &CertParser::subject,
        &CertParser::issuer,        &CertParser::issuerNames,  &CertParser::validity,
        &CertParser::validityState, &CertParser::publicKey,    &CertParser::policy,
        &CertParser::policyFilter,  &CertParser::division,     &CertParser::extensions,
    };
    if (const int code = CertLoad(m_log.toolkit(), signCert)) {
        m_log.failure(m_rules.tag, "CertLoad()", code);
        return CLPERR_CERT_LOAD;
    }
    const LoadedCert loaded{m_log.toolkit()};
    for (const Step step : STEPS) {
        if (const int code = (this->*step)())
            return code;
    }
    return QG_OK;
}

int CertParser::version()
{
    const int code = read(CertGetVersion);
    if (code != QG_OK)
        return m_rules.versionRequired ? fatal("CertGetVersion()", code) : QG_OK;
    if (m_text[0] != '\0')
        joinText(m_record.szVersion, {"V", m_text});
    return QG_OK;
}

int CertParser::serialNumber()
{
    if (const int code = required(CertGetSerialNum, "CertGetSerialNum()", m_record.szSerialNumber))
        return code;
    const char* filter = m_settings.option.szCertSerial;
    if (filter[0] == '\0' || strcasecmp(filter, m_record.szSerialNumber) == 0)
        return QG_OK;
    m_log.filtered(SHARED_TAG, m_rules.serialReason);
    return CLPERR_PASS;
}

int CertParser::subject()
{
    if (const int code =
            required(CertGetSignatureAlgorithm, "CertGetSignatureAlgorithm()", m_record.szAlgorithm))
        return code;
    if (const int code = required(CertGetSubjectName, "CertGetSubjectName()", m_record.szSubjectDN))
        return code;
    if (subjectRefused())
        return refused("DN Check pass");
    return required(CertGetUID, "CertGetUID()", m_record.szSubjectCN);
}

bool CertParser::subjectRefused() const
{
    const char* filter = m_settings.option.szCertDN;
    if (filter[0] == '\0')
        return false;
    if (m_rules.subjectFilterCompares)
        return strcasecmp(filter, m_record.szSubjectDN) != 0;
    return differsFromConverted(filter, m_record.szSubjectDN);
}

int CertParser::issuer()
{
    if (const int code = required(CertGetIssuerName, "CertGetIssuerName()", m_record.szIssuerDN))
        return code;
    return issuerRefused() ? refused("DN Check pass") : QG_OK;
}

bool CertParser::issuerRefused() const
{
    const char* filter = m_settings.option.szIssuerDN;
    return filter[0] != '\0' && differsFromConverted(filter, m_record.szIssuerDN);
}

int CertParser::issuerNames()
{
    CUtil::GetCNString(m_record.szIssuerDN, sizeof(m_record.szIssuerCN), m_record.szIssuerCN);
    lookUpName("ISSUERNAME", m_record.szIssuerCN, m_record.szIssuerName);
    return QG_OK;
}

int CertParser::validity()
{
    // The toolkit is told 50 bytes each; one more keeps a text without a terminator harmless.
    char before[51] = {};
    char after[51] = {};
    const int code = CertGetValidity(m_log.toolkit(), 50, before, 50, after);
    if (code != QG_OK && !m_rules.validityHasText) {
        m_log.codeInBrackets(SHARED_TAG, "CertGetValidity()", code);
        return CLPERR_CERT_FIELD;
    }
    if (code != QG_OK)
        return fatal("CertGetValidity()", code);
    copyText(m_record.szBefore, before);
    copyText(m_record.szAfter, after);
    return QG_OK;
}

int CertParser::validityState()
{
    // The key length and the policy are read in later steps, so both are still empty here: the memory store
    // always takes the old states, and a renewal window is 100 days for GPKI and 30 for all others. Hosts
    // rely on these outcomes.
    const bool is2048 = strcasecmp(m_record.szPubKeyLen, "2048 Bits") == 0;
    const int code =
        CUtil::GetValidity(m_rules.oldStates && !is2048, m_record.nCertType, m_record.szCertPolicyIDS,
                           m_record.szBefore, m_record.szAfter, 1023, m_record.szBeforeDay, 1023,
                           m_record.szAfterDay, &m_record.nRemainDay, &m_record.nCertState);
    if (code != QG_OK) {
        const bool plain = !m_rules.oldStates && !is2048;
        m_log.plainFailure(m_rules.tag, plain ? "GetValidity()" : "GetValidity() check err", code);
        return CLPERR_CERT_FIELD;
    }
    const bool expired =
        m_record.nCertState == CERTSTATE_EXPIRED || m_record.nCertState == CERTSTATE_EXPIRED_1024;
    m_record.nCertVerifyState = expired ? 1 : 0;
    return expired && m_settings.option.bExpiredCertHide ? refused("ExpiredCertHide pass") : QG_OK;
}

int CertParser::publicKey()
{
    char algorithm[TEXT_SIZE + 1] = {};
    char length[TEXT_SIZE + 1] = {};
    char key[TEXT_SIZE + 1] = {};
    ToolkitBytes info(m_log.toolkit());
    const int code = CertGetPubKeyInfo(m_log.toolkit(), algorithm, length, TEXT_SIZE, key, info.get());
    if (code != QG_OK)
        return fatal("CertGetPubKeyInfo()", code);
    copyText(m_record.szPubKey, key);
    copyText(m_record.szPubKeyLen, length);
    copyText(m_record.szPubKeyAlgo, algorithm);
    return QG_OK;
}

int CertParser::policy()
{
    optional(CertGetKeyUsage, "CertGetKeyUsage()", m_record.szKeyUsage);
    optional(CertGetCRLDP, "CertGetCRLDP()", m_record.szCrlDp);
    optional(CertGetCertPolicy, "CertGetCertPolicy()", m_record.szCertPolicy);
    return optional(CertGetPolicyID, "CertGetPolicyID()", m_record.szCertPolicyIDS);
}

int CertParser::policyFilter()
{
    if (!m_settings.setOid || m_settings.setOidCount <= 0 ||
        CUtil::CheckPolicyID(m_record.szCertPolicyIDS, m_settings.setOid, m_settings.setOidCount))
        return QG_OK;
    if (m_rules.policyRefusalHasText)
        m_log.lastFailure(m_rules.tag, "CheckPolicyID() check pass", 0);
    else
        m_log.plainFailure(m_rules.tag, "CheckPolicyID() check pass", 0);
    return CLPERR_PASS;
}

int CertParser::division()
{
    char dotted[1024] = {};
    CUtil::ReplaceAll(m_record.szCertPolicyIDS, " ", ".", sizeof(dotted), dotted);
    lookUpName("OID", dotted, m_record.szDivision);
    const auto named = m_settings.oidNames.find(dotted);
    if (named != m_settings.oidNames.end())
        joinText(m_record.szDivision, {named->second});
    return QG_OK;
}

int CertParser::extensions()
{
    optional(CertGetAuthKeyID, "CertGetAuthKeyID()", m_record.szAuthKeyID);
    optional(CertGetSubKeyID, "CertGetSubKeyID()", m_record.szSubKeyID);
    optional(CertGetSubjectAltName, "CertGetSubjectAltName()", m_record.szSubjectAltName);
    return optional(CertGetAIA, "CertGetAIA()", m_record.szAIA);
}

/**
 * Looks a name up in the issuer configuration; a key that is missing stands for itself. Every certificate
 * reads the file anew, once for both of its names.
 */
void CertParser::lookUpName(const char* section, const char* key, char (&name)[1024])
{
    if (!m_issuerConfiguration)
        m_issuerConfiguration.emplace(m_settings.configPath);
    m_issuerConfiguration->string(section, key, key, name, sizeof(name));
    if (name[0] == '\0')
        copyText(name, key);
}

/** A field that no certificate may lack could not be read. */
int CertParser::fatal(const char* callee, int code) const
{
    m_log.failure(m_rules.tag, callee, code);
    return CLPERR_CERT_FIELD;
}

/** A filter keeps the certificate out. */
int CertParser::refused(const char* reason) const
{
    m_log.filtered(m_rules.tag, reason);
    return CLPERR_PASS;
}

/** Reads one text into m_text. */
int CertParser::read(Getter get)
{
    std::memset(m_text, 0, sizeof(m_text));
    return get(m_log.toolkit(), TEXT_SIZE, m_text);
}

template <size_t N>
int CertParser::required(Getter get, const char* callee, char (&field)[N])
{
    if (const int code = read(get))
        return fatal(callee, code);
    copyText(field, m_text);
    return QG_OK;
}

template <size_t N>
int CertParser::optional(Getter get, const char* callee, char (&field)[N])
{
    if (const int code = read(get))
        m_log.failure(m_rules.tag, callee, code);
    else
        copyText(field, m_text);
    return QG_OK;
}
