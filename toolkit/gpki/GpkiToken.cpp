/* The government PKI library's interface: PKCS#11 tokens. */

#define QGTK_PREFIX GPKI_HSM_

#include "toolkit/interface/TokenInterface.h"

using namespace qgtk;

#include "toolkit/interface/TokenOperations.inc"

QGTK_OPERATION(OpenSession)(void* handle, unsigned long slot, int /*tokenName*/)
{
    return callOn(handle, [&](Context& context) { context.token.open(context.configuration(), slot); });
}

QGTK_OPERATION(SignData)(void* handle, BINSTR* id, BINSTR* data, BINSTR* message)
{
    return callOn(handle,
                  [&](Context& context) { signDataOnToken(context, context.option, id, data, message); });
}
