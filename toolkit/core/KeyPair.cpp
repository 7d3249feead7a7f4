#include "toolkit/core/KeyPair.h"

#include "toolkit/core/KeyObjects.h"

namespace qgtk {

void checkKeyPair(const Crypto& crypto, const Certificate& certificate, ByteView plainKey)
{
    const KeyHandle privateKey = privateKeyFrom(crypto, plainKey);
    requirePair(keyOfCertificate(crypto, certificate), privateKey);
}

} // namespace qgtk
