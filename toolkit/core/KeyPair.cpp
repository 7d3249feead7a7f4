#include "toolkit/core/KeyPair.h"

#include "toolkit/core/PrivateKey.h"

namespace qgtk {

namespace {

KeyHandle publicKeyOf(const Crypto& crypto, ByteView der)
{
    const unsigned char* position = der.data();
    KeyHandle key(
        d2i_PUBKEY_ex(nullptr, &position, static_cast<long>(der.size()), crypto.context(), nullptr));
    require(key != nullptr, Code::CertPublicKeyUnknown);
    return key;
}

} // namespace

void checkKeyPair(const Crypto& crypto, const Certificate& certificate, ByteView plainKey)
{
    const PlainKeyHandle plain = decodePlainKey(plainKey);
    const KeyHandle privateKey(EVP_PKCS82PKEY_ex(plain.get(), crypto.context(), nullptr));
    require(privateKey != nullptr, Code::KeyNotPlain);
    const KeyHandle publicKey = publicKeyOf(crypto, certificate.publicKeyDer());
    require(EVP_PKEY_eq(privateKey.get(), publicKey.get()) == 1, Code::KeyMismatch);
}

} // namespace qgtk
