#include "toolkit/core/Crypto.h"

#include <openssl/provider.h>
#include <openssl/rand.h>

#include "toolkit/core/Errors.h"

namespace qgtk {

namespace {

/**
 * Loads a provider; when OPENSSL_MODULES leads astray, from the distribution's own directory. The context's
 * fallbacks are given up for it: kept, they put the default provider into every list of algorithms once more,
 * and decoding a public key takes twice as long.
 */
OSSL_PROVIDER* loadProvider(OSSL_LIB_CTX* context, const char* name)
{
    if (OSSL_PROVIDER* provider = OSSL_PROVIDER_load(context, name))
        return provider;
    OSSL_PROVIDER_set_default_search_path(context, QGTK_OPENSSL_MODULES_DIR);
    return OSSL_PROVIDER_load(context, name);
}

} // namespace

Crypto::Crypto() : m_context(owned<decltype(m_context)>(OSSL_LIB_CTX_new()))
{
    m_default = loadProvider(m_context.get(), "default");
    require(m_default != nullptr, Code::CryptoUnavailable);
    m_legacy = loadProvider(m_context.get(), "legacy");
}

Crypto::~Crypto()
{
    OSSL_PROVIDER_unload(m_legacy);
    OSSL_PROVIDER_unload(m_default);
}

CipherHandle Crypto::cipher(const char* name) const
{
    CipherHandle fetched(EVP_CIPHER_fetch(m_context.get(), name, nullptr));
    require(fetched != nullptr, Code::CryptoUnavailable);
    return fetched;
}

KdfHandle Crypto::kdf(const char* name) const
{
    KdfHandle fetched(EVP_KDF_fetch(m_context.get(), name, nullptr));
    require(fetched != nullptr, Code::CryptoUnavailable);
    return fetched;
}

DigestHandle Crypto::digest(const char* name) const
{
    DigestHandle fetched(EVP_MD_fetch(m_context.get(), name, nullptr));
    require(fetched != nullptr, Code::CryptoUnavailable);
    return fetched;
}

Bytes Crypto::hash(const char* digestName, ByteView data) const
{
    const DigestHandle fetched = digest(digestName);
    Bytes result(static_cast<std::size_t>(EVP_MD_get_size(fetched.get())));
    require(EVP_Digest(data.data(), data.size(), result.data(), nullptr, fetched.get(), nullptr) == 1,
            Code::CryptoUnavailable);
    return result;
}

void Crypto::random(std::span<std::uint8_t> target) const
{
    require(RAND_bytes_ex(m_context.get(), target.data(), target.size(), 0) == 1, Code::CryptoUnavailable);
}

} // namespace qgtk
