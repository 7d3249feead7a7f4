// PFX files, with and without an integrity check.

#include "Material.h"
#include "Target.h"
#include "toolkit/core/Pkcs12Pairs.h"

using namespace qgtk;

void fuzz(ByteView input)
{
    constexpr int mostIterations = 200;
    static const Crypto crypto;
    static Charset charset;
    for (const PfxIntegrity integrity : {PfxIntegrity::Required, PfxIntegrity::WhenPresent}) {
        attempt([&] {
            const PfxContents contents = readPfx(crypto, input, seedPassword, integrity, mostIterations);
            sortPfx(crypto, contents);
            holderOf(crypto, contents, charset);
        });
    }
}
