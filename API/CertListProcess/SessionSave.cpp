#include "CertListProcInterface.h"
#include "GivenKeys.h"
#include "HolderPaths.h"
#include "SessionGuards.h"

namespace {

/** The toolkit's number of the algorithm that keys are encrypted with when they are saved. */
constexpr int KEY_ALGORITHM = 64;

} // namespace

int CCertListProcInterface::SaveCert(bool bEncKey, char* pszSignCert, int nSignCertLen, char* pszInSignKey,
                                     int nInSignKeyLen, char* pszKmCert, int nKmCertLen, char* pszInKmKey,
                                     int nInKmKeyLen, char* pszPassword)
{
    const char* const tag = "CCertListProcInterface::SaveCert()";
    return runOnStores(tag, [&]() -> int {
        if (isOneOf(m_nMediaType, {MEDIA_SERVICE_MEMORY, MEDIA_MEMORY, MEDIA_USIM, MEDIA_PFX}))
            return CLPERR_MEDIUM_NOT_ALLOWED;
        if (isOneOf(m_nMediaType, {MEDIA_SMARTCARD, MEDIA_PKCS11}) && isEmpty(m_szPINNumber))
            return QG_BAD_ARGUMENT;
        if (isOneOf(m_nMediaType, {MEDIA_HARDDISK, MEDIA_REMOVABLE, MEDIA_SMARTCARD}) && isEmpty(pszPassword))
            return QG_BAD_ARGUMENT;
        const OperationLog trace = log();
        const KeyOpening opening = {trace, tag, &OperationLog::verifyFailure, pszPassword};
        const GivenKey givenSign = {pszInSignKey, nInSignKeyLen};
        const GivenKey givenKm = {pszInKmKey, nInKmKeyLen};
        SecretBuffer signKey;
        SecretBuffer kmKey;
        // A disk keeps encrypted keys as they are; any other medium would want them plain.
        const bool opens = bEncKey && !onDisk();
        if (const int code = opens ? opening.open(givenSign, signKey) : copyKey(givenSign, signKey))
            return code;
        if (const int code =
                opens && givenKm.present() ? opening.open(givenKm, kmKey) : copyKey(givenKm, kmKey))
            return code;
        if (!onDisk())
            return QG_BAD_ARGUMENT;
        HolderPaths paths{};
        auto& [signCertPath, signKeyPath, kmCertPath, kmKeyPath] = paths.path;
        if (const int code = makeSavePaths(pszSignCert, nSignCertLen, paths))
            return code;
        if (const int code = m_pDisk->WriteCertNKey(bEncKey, pszPassword, KEY_ALGORITHM, signCertPath,
                                                    signKeyPath, pszSignCert, nSignCertLen, signKey.data(),
                                                    static_cast<int>(signKey.size())))
            return code;
        // A failure from here on leaves the signing pair on the medium. Settled.
        if (!pszKmCert || nKmCertLen < 1 || kmKey.size() < 1)
            return QG_OK;
        return m_pDisk->WriteCertNKey(bEncKey, pszPassword, KEY_ALGORITHM, kmCertPath, kmKeyPath, pszKmCert,
                                      nKmCertLen, kmKey.data(), static_cast<int>(kmKey.size()));
    });
}

/** Where a signing certificate and its companions belong on the current disk medium. */
int CCertListProcInterface::makeSavePaths(char* pszSignCert, int nSignCertLen, HolderPaths& paths)
{
    constexpr int SIZE = sizeof(paths.path[0]);
    char* drive = m_nMediaType == MEDIA_REMOVABLE ? m_pDisk->m_szSelRemDrive : nullptr;
    if (m_nMediaType == MEDIA_HARDDISK)
        m_pDisk->m_nMediaType = MEDIA_HARDDISK;
    auto& [signCert, signKey, kmCert, kmKey] = paths.path;
    return m_pDisk->MakeCertPath(m_nMediaType, drive, pszSignCert, nSignCertLen, SIZE, signCert, SIZE,
                                 signKey, SIZE, kmCert, SIZE, kmKey);
}

int CCertListProcInterface::DeleteCert(int nIndex, char* pszPassword)
{
    return runOnStores("CCertListProcInterface::DeleteCert()", [&]() -> int {
        if (isOneOf(m_nMediaType, {MEDIA_SERVICE_MEMORY, MEDIA_MEMORY, MEDIA_USIM, MEDIA_PFX}))
            return CLPERR_MEDIUM_NOT_ALLOWED;
        if (nIndex < 0 || (m_nMediaType == MEDIA_SMARTCARD && isEmpty(pszPassword)))
            return QG_BAD_ARGUMENT;
        if (!onDisk())
            return QG_OK;
        // Without a password nothing is asked. Settled, hosts rely on it.
        return isEmpty(pszPassword) ? m_pDisk->DeleteCertNKey(nIndex)
                                    : m_pDisk->DeleteCertNKey(nIndex, pszPassword);
    });
}
