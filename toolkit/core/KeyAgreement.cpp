#include "toolkit/core/KeyAgreement.h"

#include <openssl/dh.h>

#include "toolkit/core/Errors.h"

namespace qgtk {

namespace {

bool isOf(Agreement way, const KeyHandle& key)
{
    if (way == Agreement::EllipticCurve)
        return EVP_PKEY_is_a(key.get(), "EC");
    return EVP_PKEY_is_a(key.get(), "DH") || EVP_PKEY_is_a(key.get(), "DHX");
}

} // namespace

SecretBytes agreedSecret(const Crypto& crypto, Agreement way, const KeyHandle& privateKey,
                         const KeyHandle& publicKey)
{
    require(isOf(way, privateKey) && isOf(way, publicKey), Code::KeyUnsuitable);
    const KeyRun run = runWith(crypto, privateKey);
    std::size_t length = 0;
    // Without the padding every 256th secret of a finite field would be a byte shorter.
    const bool begun = EVP_PKEY_derive_init(run.get()) == 1 &&
                       (way == Agreement::EllipticCurve || EVP_PKEY_CTX_set_dh_pad(run.get(), 1) == 1) &&
                       EVP_PKEY_derive_set_peer(run.get(), publicKey.get()) == 1 &&
                       EVP_PKEY_derive(run.get(), nullptr, &length) == 1;
    require(begun, Code::KeyUnsuitable);
    SecretBytes secret(length);
    require(EVP_PKEY_derive(run.get(), secret.data(), &length) == 1, Code::KeyUnsuitable);
    secret.resize(length);
    return secret;
}

} // namespace qgtk
