#include "CertListProcInterface.h"
#include "PrivateKeys.h"
#include "SessionGuards.h"

/**
 * The checks that open every password operation, then the work on the disk store. A medium that passes the
 * checks and is none of the disk's gives 0: its record holds the plain key already.
 */
template <typename Work>
int CCertListProcInterface::withPassword(int nIndex, const char* pszPassword,
                                         std::initializer_list<int> passwordMedia, Work work)
{
    if (nIndex < 0 || (isEmpty(pszPassword) && isOneOf(m_nMediaType, passwordMedia)))
        return QG_BAD_ARGUMENT;
    return onDisk() ? work() : static_cast<int>(QG_OK);
}

int CCertListProcInterface::DecryptPriKey(int nIndex, char* pszPassword)
{
    return runOnStores("CCertListProcInterface::DecryptPriKey()", [&] {
        return withPassword(nIndex, pszPassword, {MEDIA_HARDDISK, MEDIA_REMOVABLE, MEDIA_SMARTCARD},
                            [&] { return m_pDisk->DecryptPriKey(nIndex, pszPassword); });
    });
}

int CCertListProcInterface::DecryptPriKey(int nIndex, char* pszPassword, char** pszOutSignKey,
                                          int* nOutSignKeyLen, char** pszOutKmKey, int* nOutKmKeyLen)
{
    return runOnStores("CCertListProcInterface::DecryptPriKey()", [&]() -> int {
        if (!onDisk())
            return CLPERR_MEDIUM_NOT_ALLOWED;
        if (nIndex < 0 || isEmpty(pszPassword))
            return QG_BAD_ARGUMENT;
        HandedOut sign;
        HandedOut km;
        const int code =
            m_pDisk->DecryptPriKey(nIndex, pszPassword, &sign.data, &sign.length, &km.data, &km.length);
        if (code != QG_OK)
            return code;
        // Outputs may be missing for what the record does not have.
        if (!sign.canGoTo(pszOutSignKey, nOutSignKeyLen) || !km.canGoTo(pszOutKmKey, nOutKmKeyLen))
            return QG_BAD_ARGUMENT;
        sign.giveTo(pszOutSignKey, nOutSignKeyLen);
        km.giveTo(pszOutKmKey, nOutKmKeyLen);
        return QG_OK;
    });
}

int CCertListProcInterface::GetPriKeyRandom(int nIndex, char* pszPassword)
{
    return runOnStores("CCertListProcInterface::GetPriKeyRandom()",
                       [&] { return openKeyRandom(nIndex, pszPassword); });
}

int CCertListProcInterface::GetPriKeyRandom(int nIndex, char* pszPassword, char** pszOutRandom,
                                            int* nOutRandomLen)
{
    return runOnStores("CCertListProcInterface::GetPriKeyRandom()", [&]() -> int {
        const int code = openKeyRandom(nIndex, pszPassword);
        if (!onDisk() || (code != QG_OK && code != CLPERR_KM_PASSWORD))
            return code;
        const CERTINFO& entry = *m_pDisk->record(nIndex);
        const int copied = handOut(entry.szKeyRandom, entry.nKeyRandomLen, pszOutRandom, nOutRandomLen);
        return copied == QG_OK ? code : copied;
    });
}

int CCertListProcInterface::openKeyRandom(int nIndex, char* pszPassword)
{
    return withPassword(nIndex, pszPassword,
                        {MEDIA_HARDDISK, MEDIA_REMOVABLE, MEDIA_SMARTCARD, MEDIA_SERVICE_MEMORY},
                        [&] { return m_pDisk->GetPrikeyRandom(nIndex, pszPassword); });
}

int CCertListProcInterface::SelectCert(int nIndex, char* pszPassword)
{
    return runOnStores("CCertListProcInterface::SelectCert()", [&]() -> int {
        const int code = withPassword(
            nIndex, pszPassword,
            {MEDIA_HARDDISK, MEDIA_REMOVABLE, MEDIA_SMARTCARD, MEDIA_SERVICE_MEMORY, MEDIA_PFX}, [&] {
                const int opened = m_pDisk->DecryptPriKey(nIndex, pszPassword);
                // A key-management key that refuses the password does not stop a selection.
                return opened == QG_OK || opened == CLPERR_KM_PASSWORD
                           ? m_pDisk->GetPrikeyRandom(nIndex, pszPassword)
                           : opened;
            });
        return code == QG_OK && m_nMediaType == MEDIA_MEMORY ? m_pMemory->GetPrikeyRandom() : code;
    });
}

int CCertListProcInterface::ChangePassword(int nIndex, char* pszOldPasswrod, char* pszNewPassword)
{
    return runOnStores("CCertListProcInterface::ChangePassword()", [&]() -> int {
        if (isOneOf(m_nMediaType, {MEDIA_PKCS11, MEDIA_SERVICE_MEMORY, MEDIA_MEMORY, MEDIA_USIM, MEDIA_PFX}))
            return CLPERR_MEDIUM_NOT_ALLOWED;
        if (nIndex < 0 || isEmpty(pszOldPasswrod) || isEmpty(pszNewPassword) || !onDisk())
            return QG_BAD_ARGUMENT;
        m_pDisk->m_nMediaType = m_nMediaType;
        return m_pDisk->ChangePassword(nIndex, pszOldPasswrod, pszNewPassword);
    });
}

int CCertListProcInterface::CheckPassword(char* pszPassword, char* pszKey, int nKeyLen)
{
    return run("CCertListProcInterface::CheckPassword()", [&]() -> int {
        ToolkitBytes key(m_pZRWrapCtx);
        ToolkitBytes plain(m_pZRWrapCtx);
        if (isEmpty(pszPassword) || !pszKey || nKeyLen < 1)
            return QG_BAD_ARGUMENT;
        key.set(pszKey, nKeyLen);
        const int code = PriKeyDecrypt(m_pZRWrapCtx, pszPassword, key.get(), plain.get());
        if (code == QG_OK)
            return QG_OK;
        // Another member's name, on purpose: readers of the log know it so.
        log().failure("CCertListProcInterface::ExportDataPFX()", "PriKeyDecrypt()", code);
        return CLPERR_KEY_DECRYPT;
    });
}

int CCertListProcInterface::VerifyVID(int nIndex, char* pszIDN, char* pszPassword)
{
    return runOnStores("CCertListProcInterface::VerifyVID()", [&]() -> int {
        if (nIndex < 0 || isEmpty(pszIDN))
            return QG_BAD_ARGUMENT;
        if (m_nMediaType == MEDIA_USIM)
            return QG_MEDIUM_UNSUPPORTED;
        if (isOneOf(m_nMediaType, {MEDIA_SMARTCARD, MEDIA_PKCS11}) && isEmpty(m_szPINNumber))
            return QG_BAD_ARGUMENT;
        return withPassword(nIndex, pszPassword,
                            {MEDIA_HARDDISK, MEDIA_REMOVABLE, MEDIA_SMARTCARD, MEDIA_MEMORY, MEDIA_PFX}, [&] {
                                const int code = m_pDisk->GetPrikeyRandom(nIndex, pszPassword);
                                return code == QG_OK ? m_pDisk->VerifyVID(nIndex, pszIDN) : code;
                            });
    });
}
