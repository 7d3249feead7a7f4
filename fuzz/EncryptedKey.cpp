// Encrypted private keys, as files hold them.

#include "Material.h"
#include "Target.h"
#include "toolkit/core/PrivateKey.h"

using namespace qgtk;

void fuzz(ByteView input)
{
    constexpr int mostIterations = 100;
    static const Crypto crypto;
    attempt([&] { cipherOfKey(input); });
    attempt([&] {
        const SecretBytes plain = decryptKey(crypto, input, seedPassword, mostIterations);
        expect(isPlainKey(plain));
    });
}
