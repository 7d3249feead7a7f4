#pragma once

#include "OperationLog.h"
#include "ToolkitBytes.h"
#include "quillgate/records.h"
#include "quillgate/returncodes.h"

/** Where a record keeps one of its two keys, and what a wrong password on it answers. */
struct KeyFields
{
    char (CERTINFO::*encrypted)[4096];
    int CERTINFO::*encryptedLength;
    char (CERTINFO::*plain)[4096];
    int CERTINFO::*plainLength;
    char (CERTINFO::*path)[1024];
    int wrongPassword;        /**< code for the toolkit's "wrong password" */
    const char* changeCallee; /**< callee in the log line of a failed password change */
};

inline constexpr KeyFields SIGN_KEY = {
    &CERTINFO::szEncSignKey,  &CERTINFO::nEncSignKeyLen, &CERTINFO::szSignKey,   &CERTINFO::nSignKeyLen,
    &CERTINFO::szSignKeyPath, CLPERR_WRONG_PASSWORD,     "PriKeyChangePasswd()",
};

/** Its failed change is logged under another callee's name: readers of the log know it so. */
inline constexpr KeyFields KM_KEY = {
    &CERTINFO::szEncKmKey,  &CERTINFO::nEncKmKeyLen, &CERTINFO::szKmKey,        &CERTINFO::nKmKeyLen,
    &CERTINFO::szKmKeyPath, CLPERR_KM_PASSWORD,      "MediaDiskDeletePriKey()",
};

/**
 * Opens a record's key with the toolkit and logs a failure under the tag. 0, the key's code for a wrong
 * password, CLPERR_KEY_DECRYPT (also for a result that no record can hold), or the toolkit's own number.
 */
int decryptKey(const OperationLog& log, const char* tag, const KeyFields& key, const CERTINFO& record,
               const char* password, ToolkitBytes& plain);

/**
 * decryptKey with the result stored in the record and, when out is given, handed out as well. A result
 * without bytes changes nothing. Also QG_NO_MEMORY.
 */
int openKey(const OperationLog& log, const char* tag, const KeyFields& key, CERTINFO& record,
            const char* password, char** out = nullptr, int* outLength = nullptr);

/**
 * Reads the random value out of the record's plain signing key into the record. 0, CLPERR_NO_KEY_RANDOM, or
 * CLPERR_KEY_RANDOM_READ, also for a value that no record can hold.
 */
int readKeyRandom(const OperationLog& log, const char* tag, CERTINFO& record);

/** Asks the toolkit whether certificate, random value and number belong together. 0, CLPERR_VID_VERIFY. */
int verifyIdentity(const OperationLog& log, const CERTINFO& record, char* number);

/**
 * A copy for the host: new char[length + 1], zeroed behind the data, released with CLP_MemFree. 0, or
 * QG_BAD_ARGUMENT for a missing output, or QG_NO_MEMORY with the outputs untouched. Nothing happens for a
 * length below 1, for which the outputs may be null.
 */
int handOut(const char* data, int length, char** out, int* outLength);

/**
 * The same where emptiness is told as well: a length below 1 hands out an empty buffer and 0. The outputs
 * must be there. 0, or QG_NO_MEMORY with the outputs untouched.
 */
int copyOut(const char* data, int length, char** out, int* outLength);

/** Wipes and frees an array that was handed out and nulls the pointer. 0, or QG_BAD_ARGUMENT for nothing. */
int freeHandedOut(void** ppv);

/** A buffer that was handed out to this library's own code: wiped and freed unless it is given on. */
struct HandedOut
{
    char* data = nullptr;
    int length = 0;

    HandedOut() = default;
    ~HandedOut() { clear(); }
    HandedOut(const HandedOut&) = delete;
    HandedOut& operator=(const HandedOut&) = delete;

    /** Wipes and frees the buffer. */
    void clear()
    {
        void* bytes = data;
        freeHandedOut(&bytes);
        data = nullptr;
        length = 0;
    }

    /** Takes a copy in place of what it held; nothing for a length below 1. 0, QG_NO_MEMORY. */
    int copy(const char* bytes, int size)
    {
        clear();
        return handOut(bytes, size, &data, &length);
    }

    /** True unless there is a buffer and an output for it is missing. */
    bool canGoTo(char** out, const int* outLength) const { return !data || (out && outLength); }

    /** Gives the buffer to the caller; an empty one leaves the outputs alone. */
    void giveTo(char** out, int* outLength)
    {
        if (!data)
            return;
        *out = data;
        *outLength = length;
        data = nullptr;
    }
};
