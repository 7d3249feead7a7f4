// PEM and Base64 texts.

#include <algorithm>

#include "Target.h"
#include "quillgate/algorithms.h"
#include "toolkit/core/Base64.h"
#include "toolkit/core/Pem.h"

using namespace qgtk;

void fuzz(ByteView input)
{
    attempt([&] {
        const SecretBytes content = pemDecode(input);
        attempt([&] {
            const SecretBytes again = pemDecode(pemEncode(QG_PEM_CERTIFICATE, content));
            expect(std::ranges::equal(again, content));
        });
    });
    attempt([&] {
        const SecretBytes content = base64Decode(input);
        if (!content.empty())
            expect(std::ranges::equal(base64Decode(base64Encode(content)), content));
    });
}
