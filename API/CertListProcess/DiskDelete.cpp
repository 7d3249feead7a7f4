#include <cerrno>
#include <cstdio>
#include <sys/stat.h>
#include <unistd.h>

#include "HomeDirectory.h"
#include "LoadDISK.h"
#include "quillgate/returncodes.h"

namespace {

const char* const TAG = "CLoadDISK::DeleteCertNKey()";

/** What the toolkit is told to say which of a holder's pairs is meant. */
enum DataType
{
    SIGN_PAIR = 1,
    KM_PAIR = 2
};

/** A family beside CERTTYPE_...: no listing gives it. */
constexpr int TYPE_ZARVANE = 8;

bool hasKmPaths(const CERTINFO& record)
{
    return record.szKmCertPath[0] != '\0' && record.szKmKeyPath[0] != '\0';
}

/** The toolkit reads a key before it deletes it, and would wait for a FIFO or a device. */
bool isOtherThanFile(const char* path)
{
    struct stat status
    {};
    return stat(path, &status) == 0 && !S_ISREG(status.st_mode);
}

/** Deletes a pair through the toolkit, which checks the password on the key, key first. */
int deletePair(const OperationLog& trace, char* password, DataType type, char* keyPath, char* certPath)
{
    if (isOtherThanFile(keyPath))
        return CLPERR_DELETE;
    if (const int code = MediaDiskDeletePriKey(trace.toolkit(), password, type, keyPath)) {
        trace.failure(TAG, "MediaDiskDeletePriKey()", code);
        return code == TOOLKIT_WRONG_PASSWORD ? CLPERR_WRONG_PASSWORD : CLPERR_DELETE;
    }
    if (const int code = MediaDiskDeleteCert(trace.toolkit(), certPath, type)) {
        trace.failure(TAG, "MediaDiskDeleteCert()", code);
        return CLPERR_DELETE;
    }
    return QG_OK;
}

/** Deletes a pair without asking, certificate first. */
int removePair(const OperationLog& trace, const char* certPath, const char* keyPath)
{
    if (std::remove(certPath) == 0 && std::remove(keyPath) == 0)
        return QG_OK;
    trace.plainFailure(TAG, "remove()", errno);
    return CLPERR_DELETE;
}

/**
 * Tries to remove the home directory, not the holder's. It is hardly ever empty, so nothing happens, and the
 * holder directory stays behind, now empty. Settled.
 */
void removeHome(const CERTINFO& record)
{
    char home[1024];
    if ((record.nCertType == CERTTYPE_NPKI || record.nCertType == TYPE_ZARVANE) && homeDirectory(home))
        (void)!rmdir(home);
}

} // namespace

// Neither form writes an end line: readers of the log know them so.

int CLoadDISK::DeleteCertNKey(int nIndex, char* pszPassword)
{
    const OperationLog trace = log();
    trace.start(TAG);
    CERTINFO* entry = record(nIndex);
    if (!entry || !pszPassword || *pszPassword == '\0')
        return QG_BAD_ARGUMENT;
    if (const int code =
            deletePair(trace, pszPassword, SIGN_PAIR, entry->szSignKeyPath, entry->szSignCertPath))
        return code;
    if (hasKmPaths(*entry)) {
        if (const int code = deletePair(trace, pszPassword, KM_PAIR, entry->szKmKeyPath, entry->szKmCertPath))
            return code;
    }
    removeHome(*entry);
    return QG_OK;
}

int CLoadDISK::DeleteCertNKey(int nIndex)
{
    const OperationLog trace = log();
    trace.start(TAG);
    const CERTINFO* entry = record(nIndex);
    if (!entry)
        return QG_BAD_ARGUMENT;
    if (entry->szSignKeyPath[0] != '\0') {
        if (const int code = removePair(trace, entry->szSignCertPath, entry->szSignKeyPath))
            return code;
    }
    if (hasKmPaths(*entry)) {
        if (const int code = removePair(trace, entry->szKmCertPath, entry->szKmKeyPath))
            return code;
    }
    removeHome(*entry);
    return QG_OK;
}
