#include <cstring>

#include "BoundedText.h"
#include "LoadDISK.h"
#include "PrivateKeys.h"
#include "Secret.h"
#include "quillgate/returncodes.h"

int CLoadDISK::DecryptPriKey(int nIndex, char* pszPassword)
{
    const char* const tag = "CLoadDISK::DecryptPriKey()";
    const OperationLog trace = log();
    return trace.traced(tag, [&]() -> int {
        CERTINFO* entry = record(nIndex);
        if (!entry || !pszPassword)
            return QG_BAD_ARGUMENT;
        // A key that is open stays open: a wrong password goes unnoticed then. Settled, hosts rely on it.
        if (entry->nSignKeyLen < 1) {
            if (const int code = openKey(trace, tag, SIGN_KEY, *entry, pszPassword))
                return code;
        }
        copyText(entry->szCertPassword, pszPassword);
        if (entry->nKmKeyLen > 0 || entry->nEncKmKeyLen < 1)
            return QG_OK;
        return openKey(trace, tag, KM_KEY, *entry, pszPassword);
    });
}

int CLoadDISK::DecryptPriKey(int nIndex, char* pszPassword, char** pszSignKey, int* nSignKeyLen,
                             char** pszKmKey, int* nKmKeyLen)
{
    const char* const tag = "CLoadDISK::DecryptPriKey()";
    const OperationLog trace = log();
    return trace.traced(tag, [&]() -> int {
        CERTINFO* entry = record(nIndex);
        if (!entry || !pszPassword || !pszSignKey || !nSignKeyLen || !pszKmKey || !nKmKeyLen)
            return QG_BAD_ARGUMENT;
        if (const int code = openKey(trace, tag, SIGN_KEY, *entry, pszPassword, pszSignKey, nSignKeyLen))
            return code;
        if (entry->nEncKmKeyLen < 1)
            return QG_OK;
        return openKey(trace, tag, KM_KEY, *entry, pszPassword, pszKmKey, nKmKeyLen);
    });
}

int CLoadDISK::GetPrikeyRandom(int nIndex, char* pszPassword)
{
    const char* const tag = "CLoadDISK::GetPrikeyRandom()";
    const OperationLog trace = log();
    return trace.traced(tag, [&]() -> int {
        CERTINFO* entry = record(nIndex);
        if (!entry || !pszPassword)
            return QG_BAD_ARGUMENT;
        if (const int code = openKey(trace, tag, SIGN_KEY, *entry, pszPassword))
            return code;
        return readKeyRandom(trace, tag, *entry);
    });
}

int CLoadDISK::VerifyVID(int nIndex, char* pszIDN)
{
    const OperationLog trace = log();
    return trace.traced("CLoadDISK::VerifyVID()", [&]() -> int {
        const CERTINFO* entry = record(nIndex);
        if (!entry || !pszIDN)
            return QG_BAD_ARGUMENT;
        return verifyIdentity(trace, *entry, pszIDN);
    });
}

int CLoadDISK::ChangePassword(int nIndex, char* pszOldPasswrod, char* pszNewPassword)
{
    return log().traced("CLoadDISK::ChangePassword()", [&]() -> int {
        CERTINFO* entry = record(nIndex);
        if (!entry || !pszOldPasswrod || !pszNewPassword)
            return QG_BAD_ARGUMENT;
        if (const int code = changeKeyFile(SIGN_KEY, *entry, pszOldPasswrod, pszNewPassword))
            return code;
        // A failure from here on leaves the signing key with the new password. Settled.
        if (entry->szKmKeyPath[0] == '\0')
            return QG_OK;
        return changeKeyFile(KM_KEY, *entry, pszOldPasswrod, pszNewPassword);
    });
}

/** Encrypts one key file anew and takes the new bytes into the record. */
int CLoadDISK::changeKeyFile(const KeyFields& key, CERTINFO& record, char* pszOldPassword,
                             char* pszNewPassword)
{
    const char* const tag = "CLoadDISK::ChangePassword()";
    const OperationLog trace = log();
    ToolkitBytes before(m_pZRWrapCtx);
    ToolkitBytes after(m_pZRWrapCtx);
    if (const int code = readFile(record.*key.path, false, before)) {
        trace.failure(tag, "MediaDiskReadFile()", code);
        return CLPERR_FILE_READ;
    }
    if (const int code =
            PriKeyChangePasswd(m_pZRWrapCtx, pszOldPassword, pszNewPassword, before.get(), after.get())) {
        trace.failure(tag, key.changeCallee, code);
        return code == TOOLKIT_WRONG_PASSWORD ? CLPERR_WRONG_PASSWORD : CLPERR_CHANGE_PASSWORD;
    }
    char(&field)[4096] = record.*key.encrypted;
    if (after.size() > static_cast<int>(sizeof(field)))
        return CLPERR_CHANGE_PASSWORD;
    if (const int code = WriteFile(const_cast<char*>(after.data()), after.size(), record.*key.path)) {
        // The callee's name is the reader's: readers of the log know it so.
        trace.failure(tag, "MediaDiskReadFile()", code);
        return CLPERR_FILE_WRITE;
    }
    wipe(field);
    std::memcpy(field, after.data(), static_cast<size_t>(after.size()));
    record.*key.encryptedLength = after.size();
    return QG_OK;
}

int CLoadDISK::MemFree(void** ppv)
{
    return log().traced("CLoadDISK::MemFree()", [&] { return freeHandedOut(ppv); });
}
