#include "toolkit/core/KeyGeneration.h"

#include "quillgate/algorithms.h"
#include "toolkit/core/PrivateKey.h"

namespace qgtk {

namespace {

EVP_PKEY* generateRsa(const Crypto& crypto, std::size_t bits)
{
    return EVP_PKEY_Q_keygen(crypto.context(), nullptr, "RSA", bits);
}

EVP_PKEY* generateEc(const Crypto& crypto, const char* curve)
{
    return EVP_PKEY_Q_keygen(crypto.context(), nullptr, "EC", curve);
}

EVP_PKEY* generate(const Crypto& crypto, int algorithm)
{
    switch (algorithm) {
    case QG_KEYPAIR_RSA2048:
    case QG_KEYPAIR_RSA3072:
    case QG_KEYPAIR_RSA4096:
        return generateRsa(crypto, static_cast<std::size_t>(algorithm));
    case QG_KEYPAIR_P256:
        return generateEc(crypto, "P-256");
    case QG_KEYPAIR_P384:
        return generateEc(crypto, "P-384");
    case QG_KEYPAIR_P521:
        return generateEc(crypto, "P-521");
    default:
        throw Failure(Code::AlgorithmCodeUnknown);
    }
}

} // namespace

GeneratedPair generatePair(const Crypto& crypto, int algorithm)
{
    const KeyHandle key(generate(crypto, algorithm));
    require(key != nullptr, Code::CryptoUnavailable);
    const PlainKeyHandle plain = owned<PlainKeyHandle>(EVP_PKEY2PKCS8(key.get()));
    return {encodeDer<SecretBytes>(i2d_PKCS8_PRIV_KEY_INFO, plain.get()),
            encodeDer<Bytes>(i2d_PUBKEY, key.get())};
}

} // namespace qgtk
