#pragma once

#include "toolkit/core/OcspExchange.h"
#include "toolkit/core/ValidationService.h"
#include "toolkit/interface/Interface.h"

namespace qgtk {

/** Who signs a request when a caller wants it signed; nobody otherwise. */
inline RequestSigner signerWhen(Context& context, bool sign, const BINSTR* certificate, const BINSTR* key)
{
    return sign ? requestSigner(context.crypto(), viewOf(certificate), viewOf(key)) : RequestSigner{};
}

} // namespace qgtk
