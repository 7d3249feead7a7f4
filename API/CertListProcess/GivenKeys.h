#pragma once

#include "OperationLog.h"
#include "Secret.h"

/** A private key that the host handed in. */
struct GivenKey
{
    const char* data;
    int length;

    /** True when there are bytes. */
    bool present() const { return data && length >= 1; }
};

/** How encrypted keys are opened, and how a failure is told. */
struct KeyOpening
{
    using FailureLine = void (OperationLog::*)(const char* tag, const char* callee, int code) const;

    const OperationLog& log;
    const char* tag;
    FailureLine line; /**< one of OperationLog's forms */
    const char* password;

    /** Opens a key. 0; CLPERR_KEY_DECRYPT for every failure of the toolkit; QG_NO_MEMORY. */
    int open(const GivenKey& key, SecretBuffer& plain) const;
};

/** A copy of a key as it is, empty for one that is not there. 0, QG_NO_MEMORY. */
int copyKey(const GivenKey& key, SecretBuffer& copy);
