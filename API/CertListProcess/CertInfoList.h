#pragma once

#include <cstdlib>
#include <memory>

#include "quillgate/records.h"

/** Frees a list of records and wipes the fields that can hold secrets, in those records that were written. */
struct CertInfoListDeleter
{
    int count = 0; /**< records in the list */
    void operator()(CERTINFO* list) const;
};

/**
 * A list of certificate records.
 *
 * A record takes 62,516 bytes and leaves most of them at zero, so the list comes from calloc: pages that are
 * never written cost neither time nor memory. For the same reason the deleter looks before it wipes.
 */
using CertInfoList = std::unique_ptr<CERTINFO[], CertInfoListDeleter>;

/**
 * Makes a zeroed list. Behind its last record stands one more that stays zero: reading a pair admits that
 * index. Empty when the count is below 1 or memory is short.
 */
CertInfoList makeCertInfoList(int count);

/** Wipes keys, key random, PIN and password of a record, each where something was written. */
void wipeSecrets(CERTINFO& record);
