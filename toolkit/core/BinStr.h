#pragma once

#include <initializer_list>

#include "quillgate/binstr.h"
#include "toolkit/core/Bytes.h"

namespace qgtk {

/** The bytes of an input byte string. Throws BadArgument when it is null, empty or of negative length. */
ByteView viewOf(const BINSTR* input);

/**
 * Gives a caller's record a copy of the bytes, with a zero behind them that is not counted; none for no
 * bytes. What the record held is wiped and freed first when this library made it; anything else, as what an
 * uncleared record holds by chance or the caller's own memory, is left alone. Throws BadArgument,
 * OutOfMemory.
 */
void assign(BINSTR* output, ByteView bytes);

/** A caller's record and what it is to hold. */
struct Output
{
    BINSTR* record;
    ByteView bytes;
};

/** Fills several records, all of them or none. Throws as assign. */
void assignAll(std::span<const Output> outputs);
inline void assignAll(std::initializer_list<Output> outputs)
{
    assignAll(std::span(outputs.begin(), outputs.size()));
}

/** Wipes and frees the bytes, when this library made them, and empties the record. */
void release(BINSTR* record);

} // namespace qgtk
