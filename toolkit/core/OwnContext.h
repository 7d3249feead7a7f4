#pragma once

#include "toolkit/core/Crypto.h"

namespace qgtk {

/** OpenSSL's functions for statuses and time stamps know the default context alone: it is the toolkit's for a
 * while, on this thread. */
class OwnContext
{
public:
    explicit OwnContext(const Crypto& crypto) : m_before(OSSL_LIB_CTX_set0_default(crypto.context())) {}
    ~OwnContext() { OSSL_LIB_CTX_set0_default(m_before); }
    OwnContext(const OwnContext&) = delete;
    OwnContext& operator=(const OwnContext&) = delete;

private:
    OSSL_LIB_CTX* m_before;
};

} // namespace qgtk
