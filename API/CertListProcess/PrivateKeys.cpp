#include "PrivateKeys.h"

#include <algorithm>
#include <cstring>
#include <malloc.h>
#include <new>

#include "Secret.h"

namespace {

int mappedDecryptCode(int code, int wrongPassword)
{
    switch (code) {
    case TOOLKIT_WRONG_PASSWORD:
        return wrongPassword;
    case TOOLKIT_KEY_DAMAGED:
    case TOOLKIT_KEY_UNDECRYPTABLE:
        return CLPERR_KEY_DECRYPT;
    default:
        return code;
    }
}

} // namespace

int decryptKey(const OperationLog& log, const char* tag, const KeyFields& key, const CERTINFO& record,
               const char* password, ToolkitBytes& plain)
{
    ToolkitBytes encrypted(log.toolkit());
    encrypted.set(record.*key.encrypted, record.*key.encryptedLength);
    const int code = PriKeyDecrypt(log.toolkit(), const_cast<char*>(password), encrypted.get(), plain.get());
    if (code != QG_OK) {
        log.failure(tag, "PriKeyDecrypt()", code);
        return mappedDecryptCode(code, key.wrongPassword);
    }
    // A key that does not fit is refused: cut, it would be no key.
    return plain.size() > static_cast<int>(sizeof(record.*key.plain)) ? CLPERR_KEY_DECRYPT : QG_OK;
}

int openKey(const OperationLog& log, const char* tag, const KeyFields& key, CERTINFO& record,
            const char* password, char** out, int* outLength)
{
    ToolkitBytes plain(log.toolkit());
    const int code = decryptKey(log, tag, key, record, password, plain);
    if (code != QG_OK || plain.size() == 0)
        return code;
    std::memcpy(record.*key.plain, plain.data(), static_cast<size_t>(plain.size()));
    record.*key.plainLength = plain.size();
    return out ? handOut(plain.data(), plain.size(), out, outLength) : QG_OK;
}

int readKeyRandom(const OperationLog& log, const char* tag, CERTINFO& record)
{
    ToolkitBytes key(log.toolkit());
    ToolkitBytes random(log.toolkit());
    key.set(record.szSignKey, record.nSignKeyLen);
    if (const int code = VIDGetRandomFromPriKey(log.toolkit(), key.get(), random.get())) {
        log.failure(tag, "VIDGetRandomFromPriKey()", code);
        return code == TOOLKIT_NO_KEY_RANDOM ? CLPERR_NO_KEY_RANDOM : CLPERR_KEY_RANDOM_READ;
    }
    if (random.size() > static_cast<int>(sizeof(record.szKeyRandom)))
        return CLPERR_KEY_RANDOM_READ;
    if (random.size() == 0)
        return QG_OK;
    std::memcpy(record.szKeyRandom, random.data(), static_cast<size_t>(random.size()));
    record.nKeyRandomLen = random.size();
    return QG_OK;
}

int verifyIdentity(const OperationLog& log, const CERTINFO& record, char* number)
{
    ToolkitBytes cert(log.toolkit());
    ToolkitBytes random(log.toolkit());
    cert.set(record.szSignCert, record.nSignCertLen);
    random.set(record.szKeyRandom, record.nKeyRandomLen);
    const int code = VIDVerify(log.toolkit(), cert.get(), random.get(), number);
    if (code == QG_OK)
        return QG_OK;
    log.failure("CLoadDISK::VerifyVID()", "VIDVerify()", code);
    return CLPERR_VID_VERIFY;
}

int handOut(const char* data, int length, char** out, int* outLength)
{
    if (length < 1)
        return QG_OK;
    return out && outLength ? copyOut(data, length, out, outLength) : QG_BAD_ARGUMENT;
}

int copyOut(const char* data, int length, char** out, int* outLength)
{
    const int size = std::max(length, 0);
    SecretBuffer copy(data, static_cast<size_t>(size));
    if (!copy)
        return QG_NO_MEMORY;
    *out = copy.release();
    *outLength = size;
    return QG_OK;
}

int freeHandedOut(void** ppv)
{
    if (!ppv || !*ppv)
        return QG_BAD_ARGUMENT;
    // The buffer carries no length, and hosts of old free it with delete[], so none can be hidden in front of
    // it. The allocator knows how much it gave.
    wipe(*ppv, malloc_usable_size(*ppv));
    delete[] static_cast<char*>(*ppv);
    *ppv = nullptr;
    return QG_OK;
}
