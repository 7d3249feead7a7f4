// Revocation lists: those that a caller gives for a certificate.

#include "Material.h"
#include "Target.h"
#include "toolkit/core/Verification.h"

using namespace qgtk;

void fuzz(ByteView input)
{
    static Context context("");
    static const Bytes holder = material("holder");
    static const bool trusting = (trustAuthorities(context), true);
    expect(trusting);
    context.verifySettings.wholeChain = false;
    context.verifySettings.crl.assign(input.begin(), input.end());
    attempt([&] { verifyCertificate(context, holder, {}); });
    attempt([&] {
        RevocationEntry entry;
        checkStatusByCrl(context, holder, entry);
    });
}
