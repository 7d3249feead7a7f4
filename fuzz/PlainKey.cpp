// Plain private keys and public keys, as callers hand them over.

#include <algorithm>

#include "Material.h"
#include "Target.h"
#include "toolkit/core/KeyObjects.h"
#include "toolkit/core/KeyRandom.h"
#include "toolkit/core/OcspMessages.h"

using namespace qgtk;

namespace {

void protect(const Crypto& crypto, ByteView plain)
{
    KeyProtection protection;
    protection.iterations = 1;
    const Bytes encrypted = encryptKey(crypto, plain, seedPassword, protection);
    expect(std::ranges::equal(decryptKey(crypto, encrypted, seedPassword), plain));
}

} // namespace

void fuzz(ByteView input)
{
    static const Crypto crypto;
    static const Bytes holder = material("holder");
    attempt([&] { keyRandom(input); });
    attempt([&] {
        const SecretBytes random = keyRandom(withKeyRandom(input, bytesOf("random")));
        expect(!random.empty());
    });
    attempt([&] { protect(crypto, input); });
    attempt([&] { privateKeyFrom(crypto, input); });
    attempt([&] { requestSigner(crypto, holder, input); });
    attempt([&] { publicKeyFrom(crypto, input); });
}
