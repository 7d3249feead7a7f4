#pragma once

#include "toolkit/core/CmpExchange.h"
#include "toolkit/core/PairPurpose.h"

namespace qgtk {

/** What a new certificate is to be asked for with, besides its key. */
struct CmpSubject
{
    PairPurpose purpose;
    std::string_view idNumber; /**< of the holder; empty: no identity value is asked for */
    ByteView random;           /**< of the key; empty likewise */
    X509* old = nullptr;       /**< the certificate to be replaced, whose names are kept */
};

/** Key usage by purpose and kind of key, and alternative names, as extensions to ask for. */
ExtensionsHandle wishedExtensions(const Crypto& crypto, const CmpSubject& subject, const KeyHandle& key);

/** Throws IdentityMismatch when a certificate's identity value is of another number or random value; one
 * without is accepted. */
void requireIdentity(const Crypto& crypto, const CmpSubject& subject, X509* certificate);

} // namespace qgtk
