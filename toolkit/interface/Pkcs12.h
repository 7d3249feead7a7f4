#pragma once

#include "toolkit/core/Pkcs12Export.h"
#include "toolkit/interface/Interface.h"

namespace qgtk {

/** Reads a caller's PFX file within the context's limits. */
inline PfxContents readPfx(Context& context, const BINSTR* pfx, const char* password, PfxIntegrity integrity)
{
    return readPfx(context.crypto(), viewOf(pfx), textArgument(password), integrity,
                   context.configuration().maxIterations);
}

/** Writes a PFX file with the context's iterations. */
inline Bytes writePfx(Context& context, const std::vector<PfxPair>& pairs,
                      const std::vector<ByteView>& authorities, const char* password, PfxProfile profile)
{
    return writePfx(context.crypto(), context.charset(), pairs, authorities, textArgument(password), profile,
                    context.configuration().keyIterations);
}

} // namespace qgtk
