#pragma once

#include "toolkit/core/TimeStamp.h"
#include "toolkit/core/TimeStampServer.h"
#include "toolkit/interface/CryptoInterface.h"

namespace qgtk {

/** Makes a caller's request. Throws NotSupported for a signed one: RFC 3161 has none. */
inline Bytes stampRequest(Context& context, const DataInput& data, int hashAlg, const char* policy, bool sign)
{
    require(!sign, Code::NotSupported);
    return makeStampRequest(context, data, digestFor(context, hashAlg), textArgument(policy));
}

/** A text for a caller who wants it. */
struct FieldOutput
{
    const std::string& text;
    char* buffer;
};

/** Writes texts, each cut to the size, into the buffers that are not null. Throws BadArgument for no size. */
inline void storeFields(std::initializer_list<FieldOutput> fields, int size)
{
    require(size > 0, Code::BadArgument);
    for (const FieldOutput& field : fields)
        if (field.buffer)
            copyCut(field.text, size, field.buffer);
}

} // namespace qgtk
