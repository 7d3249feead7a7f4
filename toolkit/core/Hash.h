#pragma once

#include "toolkit/core/Crypto.h"
#include "toolkit/core/DataInput.h"

namespace qgtk {

/** The digest of data, by OpenSSL's name of the hash. Throws CryptoUnavailable, and as DataInput does. */
Bytes digestOf(const Crypto& crypto, const char* digest, const DataInput& data);

} // namespace qgtk
