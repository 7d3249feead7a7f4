#include "toolkit/core/Mac.h"

#include "toolkit/core/Errors.h"

namespace qgtk {

SecretBytes macOf(const Crypto& crypto, const char* digest, ByteView key, ByteView data)
{
    SecretBytes mac(EVP_MAX_MD_SIZE);
    std::size_t length = 0;
    // An empty view may hold a null pointer, which OpenSSL would take for a missing key.
    const void* keyBytes = key.empty() ? "" : static_cast<const void*>(key.data());
    require(EVP_Q_mac(crypto.context(), "HMAC", nullptr, digest, nullptr, keyBytes, key.size(), data.data(),
                      data.size(), mac.data(), mac.size(), &length) != nullptr,
            Code::CryptoUnavailable);
    mac.resize(length);
    return mac;
}

void checkMac(const Crypto& crypto, const char* digest, ByteView key, ByteView data, ByteView mac)
{
    const SecretBytes right = macOf(crypto, digest, key, data);
    const bool equal =
        mac.size() == right.size() && CRYPTO_memcmp(mac.data(), right.data(), right.size()) == 0;
    require(equal, Code::MacWrong);
}

} // namespace qgtk
