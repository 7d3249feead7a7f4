#pragma once

#include <optional>
#include <string_view>

#include "toolkit/core/Certificate.h"
#include "toolkit/core/Crypto.h"

namespace qgtk {

/** The identity value of a certificate: the holder's name, and a hash over number and random value. */
struct Identity
{
    StringHandle realName;
    AlgorithmHandle hash;
    Bytes virtualId;
};

/** Decodes the value of an alternative name of type id-kisa-identifyData. Empty when it is none. */
std::optional<Identity> decodeIdentity(const OTHERNAME* name);

using NameHandle = Handle<GENERAL_NAME, GENERAL_NAME_free>;

/**
 * The alternative name that a certificate is asked for with: the identity value over a number and a key's
 * random value, with SHA-256. The holder's name is UTF-8 and may be empty. Throws BadArgument as identityHash
 * does.
 */
NameHandle makeIdentity(const Crypto& crypto, std::string_view realName, ByteView random,
                        std::string_view idNumber);

/** The identity value of a certificate. Throws NoIdentity. */
Identity identityOf(const Certificate& certificate);

/**
 * The hash h(h(HashContent)) of an identification number and a key's random value, with the hash that the
 * certificate's identity value names. Blanks and hyphens of the number are passed over. Throws NoIdentity,
 * IdentityHashUnknown, BadArgument for a number without a character or a random value without a byte.
 */
Bytes identityHash(const Crypto& crypto, const Certificate& certificate, ByteView random,
                   std::string_view idNumber);

/** Compares that hash with the certificate's. Throws IdentityMismatch when they differ, and as above. */
void verifyIdentity(const Crypto& crypto, const Certificate& certificate, ByteView random,
                    std::string_view idNumber);

} // namespace qgtk
