#pragma once

#include "toolkit/core/Handles.h"

namespace qgtk {

/**
 * OpenSSL in a library context of its own, with the default and the legacy provider.
 *
 * The process's default context, its configuration and its providers stay as the host has them. Making one
 * costs about a millisecond, so whoever only lists certificates does without. One thread at a time.
 */
class Crypto
{
public:
    /**
     * Throws CryptoUnavailable when not even the default provider loads. A missing legacy provider shows only
     * when SEED is asked for.
     */
    Crypto();
    ~Crypto();
    Crypto(const Crypto&) = delete;
    Crypto& operator=(const Crypto&) = delete;

    OSSL_LIB_CTX* context() const { return m_context.get(); }

    /** Fetches by name or dotted OID. Throws CryptoUnavailable. */
    CipherHandle cipher(const char* name) const;
    KdfHandle kdf(const char* name) const;
    DigestHandle digest(const char* name) const;

    /** Digest of some bytes. Throws CryptoUnavailable. */
    Bytes hash(const char* digestName, ByteView data) const;

    /** Fills a buffer with random bytes. Throws CryptoUnavailable. */
    void random(std::span<std::uint8_t> target) const;

private:
    Handle<OSSL_LIB_CTX, OSSL_LIB_CTX_free> m_context;
    OSSL_PROVIDER* m_default = nullptr;
    OSSL_PROVIDER* m_legacy = nullptr;
};

} // namespace qgtk
