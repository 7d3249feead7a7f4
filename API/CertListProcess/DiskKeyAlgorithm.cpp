#include <cstring>

#include "LoadDISK.h"
#include "SubjectTexts.h"
#include "ToolkitBytes.h"
#include "quillgate/returncodes.h"

namespace {

/** Tag of another store: readers of the log know it so. */
const char* const TAG = "CLoadSMCard::GetPrikeyAlg()";

/** Size that the toolkit is told for the policy: only its head takes part. */
constexpr int POLICY_SIZE = 40;

/** Algorithm codes of the toolkit for the encryption of a key. */
enum
{
    ALGORITHM_GENERAL = 48,
    ALGORITHM_2048 = 64,
    ALGORITHM_OFFICE = 224
};

/** What the choice rests on; the policy has one byte more than the toolkit is told. */
struct CertTexts : SubjectTexts
{
    char policy[POLICY_SIZE + 1] = {};
};

int readTexts(void* toolkit, CertTexts& texts, const char*& callee)
{
    callee = "CertGetPolicyID()";
    if (const int code = CertGetPolicyID(toolkit, POLICY_SIZE, texts.policy))
        return code;
    return readSubjectTexts(toolkit, texts, callee);
}

int chooseAlgorithm(const CertTexts& texts)
{
    if (!std::strstr(texts.policy, "1 2 410 100001") && !std::strstr(texts.policy, "1 2 410 200004 8"))
        return ALGORITHM_GENERAL;
    if (strcasecmp(texts.keyLength, "2048 Bits") == 0)
        return ALGORITHM_2048;
    char unit[SUBJECT_TEXT_SIZE + 1] = {};
    CUtil::GetOUString(texts.subject, SUBJECT_TEXT_SIZE, unit);
    return strcasecmp(unit, "people") == 0 ? ALGORITHM_GENERAL : ALGORITHM_OFFICE;
}

} // namespace

int CLoadDISK::GetPrikeyAlg(char* pszCert, int nCertLen, int* nPrikeyAlg)
{
    const OperationLog trace = log();
    return trace.traced("CLoadDISK::GetPrikeyAlg()", [&]() -> int {
        if (!pszCert || nCertLen < 1 || !nPrikeyAlg)
            return QG_BAD_ARGUMENT;
        ToolkitBytes cert(m_pZRWrapCtx);
        cert.set(pszCert, nCertLen);
        if (const int code = CertLoad(m_pZRWrapCtx, cert.get())) {
            trace.failure(TAG, "CertLoad()", code);
            return CLPERR_CERT_LOAD;
        }
        CertTexts texts;
        const char* callee = nullptr;
        const int code = readTexts(m_pZRWrapCtx, texts, callee);
        if (code != QG_OK)
            trace.failure(TAG, callee, code);
        else
            *nPrikeyAlg = chooseAlgorithm(texts);
        CertUnLoad(m_pZRWrapCtx);
        return code == QG_OK ? QG_OK : CLPERR_CERT_FIELD;
    });
}
