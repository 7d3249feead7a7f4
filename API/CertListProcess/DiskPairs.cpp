#include "LoadDISK.h"
#include "PrivateKeys.h"
#include "ToolkitBytes.h"
#include "quillgate/returncodes.h"

namespace {

/** One of a record's two pairs, with the key in the form that was asked for. */
struct RecordPair
{
    const char* cert;
    int certLength;
    const char* key;
    int keyLength;
};

RecordPair signPair(const CERTINFO& record, bool encrypted)
{
    if (encrypted)
        return {record.szSignCert, record.nSignCertLen, record.szEncSignKey, record.nEncSignKeyLen};
    return {record.szSignCert, record.nSignCertLen, record.szSignKey, record.nSignKeyLen};
}

RecordPair kmPair(const CERTINFO& record, bool encrypted)
{
    if (encrypted)
        return {record.szKmCert, record.nKmCertLen, record.szEncKmKey, record.nEncKmKeyLen};
    return {record.szKmCert, record.nKmCertLen, record.szKmKey, record.nKmKeyLen};
}

/** Where the caller wants a pair. */
struct PairOutputs
{
    char** cert;
    int* certLength;
    char** key;
    int* keyLength;
    bool complete() const { return cert && certLength && key && keyLength; }
};

/** Copies both out, also what is empty. QG_NO_MEMORY leaves what was made so far with the caller. */
int copyPairOut(const RecordPair& pair, const PairOutputs& outputs)
{
    if (const int code = copyOut(pair.cert, pair.certLength, outputs.cert, outputs.certLength))
        return code;
    return copyOut(pair.key, pair.keyLength, outputs.key, outputs.keyLength);
}

int copyBytesOut(const ToolkitBytes& bytes, char** out, int* outLength)
{
    return copyOut(bytes.data(), bytes.size(), out, outLength);
}

} // namespace

/** Writes bytes to a file through the toolkit and logs a failure under the tag. 0 or failureCode. */
int CLoadDISK::writeBytes(const OperationLog& trace, const char* tag, char* pszFilePath, ToolkitBytes& bytes,
                          int failureCode)
{
    const int code = MediaDiskWriteFile(m_pZRWrapCtx, pszFilePath, bytes.get());
    if (code == QG_OK)
        return QG_OK;
    trace.failure(tag, "MediaDiskWriteFile()", code);
    return failureCode;
}

int CLoadDISK::WriteFile(char* pszData, int nDataLen, char* pszFilePath)
{
    const char* const tag = "CLoadDISK::WriteFile()";
    const OperationLog trace = log();
    return trace.traced(tag, [&]() -> int {
        if (!pszData || nDataLen < 1)
            return QG_BAD_ARGUMENT;
        ToolkitBytes bytes(m_pZRWrapCtx);
        bytes.set(pszData, nDataLen);
        return writeBytes(trace, tag, pszFilePath, bytes, CLPERR_FILE_WRITE);
    });
}

int CLoadDISK::WriteCertNKey(bool bEncKey, char* pszPassword, int nAlg, char* pszCertPath, char* pszKeyPath,
                             char* pszCert, int nCertLen, char* pszKey, int nKeyLen)
{
    const char* const tag = "CLoadDISK::WriteCertNKey()";
    const OperationLog trace = log();
    return trace.traced(tag, [&]() -> int {
        if (!bEncKey && (!pszPassword || *pszPassword == '\0'))
            return QG_BAD_ARGUMENT;
        if (!pszCertPath || !pszKeyPath || !pszCert || !pszKey || nCertLen < 1 || nKeyLen < 1)
            return QG_BAD_ARGUMENT;
        ToolkitBytes cert(m_pZRWrapCtx);
        ToolkitBytes key(m_pZRWrapCtx);
        cert.set(pszCert, nCertLen);
        key.set(pszKey, nKeyLen);
        if (const int code = writeBytes(trace, tag, pszCertPath, cert, CLPERR_FILE_WRITE))
            return code;
        // A failure from here on leaves the certificate behind. Settled.
        if (bEncKey)
            return writeBytes(trace, tag, pszKeyPath, key, CLPERR_FILE_WRITE);
        ToolkitBytes encrypted(m_pZRWrapCtx);
        if (const int code = PriKeyEncrypt(m_pZRWrapCtx, nAlg, pszPassword, key.get(), encrypted.get())) {
            trace.failure(tag, "PriKeyEncrypt()", code);
            return CLPERR_FILE_WRITE;
        }
        return writeBytes(trace, tag, pszKeyPath, encrypted, CLPERR_FILE_WRITE);
    });
}

int CLoadDISK::ReadCertNKey(bool bEncKey, int nIndex, char** pszCert, int* nCertLen, char** pszKey,
                            int* nKeyLen, char** pszKmCert, int* nKmCertLen, char** pszKmKey, int* nKmKeyLen)
{
    return log().traced("CLoadDISK::ReadCertNKey()", [&]() -> int {
        // One index past the last record is admitted: the list's spare record answers with empty buffers.
        // Settled, hosts rely on it.
        if (!m_pstCertInfoList || nIndex < 0 || nIndex > m_nCertCnt)
            return QG_BAD_ARGUMENT;
        const CERTINFO& entry = m_pstCertInfoList[static_cast<size_t>(nIndex)];
        const PairOutputs sign = {pszCert, nCertLen, pszKey, nKeyLen};
        const PairOutputs km = {pszKmCert, nKmCertLen, pszKmKey, nKmKeyLen};
        const bool hasKm = entry.nKmCertLen >= 1;
        if (!sign.complete() || (hasKm && !km.complete()))
            return QG_BAD_ARGUMENT;
        const int code = copyPairOut(signPair(entry, bEncKey), sign);
        return code != QG_OK || !hasKm ? code : copyPairOut(kmPair(entry, bEncKey), km);
    });
}

int CLoadDISK::ReadCertNKeyFromPath(char* pszCertPath, char* pszKeyPath, char** pszCert, int* nCertLen,
                                    char** pszKey, int* nKeyLen)
{
    const char* const tag = "CLoadDISK::ReadCertNKeyFromPath()";
    const OperationLog trace = log();
    return trace.traced(tag, [&]() -> int {
        const PairOutputs outputs = {pszCert, nCertLen, pszKey, nKeyLen};
        if (!pszCertPath || !pszKeyPath || !outputs.complete())
            return QG_BAD_ARGUMENT;
        ToolkitBytes cert(m_pZRWrapCtx);
        ToolkitBytes key(m_pZRWrapCtx);
        int code = readFile(pszCertPath, false, cert);
        if (code == QG_OK)
            code = readFile(pszKeyPath, false, key);
        if (code != QG_OK) {
            trace.failure(tag, "MediaDiskReadFile()", code);
            return CLPERR_FILE_READ;
        }
        if (cert.size() == 0 || key.size() == 0) {
            trace.condition(tag, "Cert&Key data is null");
            return CLPERR_FILE_READ;
        }
        code = copyBytesOut(cert, pszCert, nCertLen);
        return code != QG_OK ? code : copyBytesOut(key, pszKey, nKeyLen);
    });
}
