#include "toolkit/core/KeyObjects.h"

#include "toolkit/core/PrivateKey.h"

namespace qgtk {

namespace {

/** A SubjectPublicKeyInfo; null when it is none or of an unknown kind. */
KeyHandle decodePublicKey(const Crypto& crypto, ByteView der)
{
    const unsigned char* position = der.data();
    return KeyHandle(
        d2i_PUBKEY_ex(nullptr, &position, static_cast<long>(der.size()), crypto.context(), nullptr));
}

Certificate certificateOrNoKey(ByteView bytes)
{
    try {
        return Certificate(bytes);
    } catch (const Failure&) {
        throw Failure(Code::PublicKeyDamaged);
    }
}

} // namespace

KeyHandle keyOfCertificate(const Crypto& crypto, const Certificate& certificate)
{
    KeyHandle key = decodePublicKey(crypto, certificate.publicKeyDer());
    require(key != nullptr, Code::CertPublicKeyUnknown);
    return key;
}

KeyHandle publicKeyFrom(const Crypto& crypto, ByteView certificateOrKey)
{
    if (KeyHandle key = decodePublicKey(crypto, certificateOrKey))
        return key;
    return keyOfCertificate(crypto, certificateOrNoKey(certificateOrKey));
}

KeyHandle privateKeyFrom(const Crypto& crypto, ByteView plain)
{
    const PlainKeyHandle decoded = decodePlainKey(plain);
    KeyHandle key(EVP_PKCS82PKEY_ex(decoded.get(), crypto.context(), nullptr));
    require(key != nullptr, Code::KeyNotPlain);
    return key;
}

void requirePair(const KeyHandle& publicKey, const KeyHandle& privateKey)
{
    require(EVP_PKEY_eq(privateKey.get(), publicKey.get()) == 1, Code::KeyMismatch);
}

KeyRun runWith(const Crypto& crypto, const KeyHandle& key)
{
    return owned<KeyRun>(EVP_PKEY_CTX_new_from_pkey(crypto.context(), key.get(), nullptr));
}

} // namespace qgtk
