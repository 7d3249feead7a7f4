#pragma once

#include <cstdlib>

#include "toolkit/core/Bytes.h"
#include "toolkit/core/Call.h"
#include "toolkit/core/Errors.h"

/** One run over foreign bytes; each target defines it. Whatever leaves it as an exception is a finding. */
void fuzz(qgtk::ByteView input);

/** Runs an operation that may refuse the bytes. Only its own refusals are fine, not an unexpected failure. */
template <typename Operation>
void attempt(Operation&& operation)
{
    const qgtk::ErrorQueueMark mark;
    try {
        operation();
    } catch (const qgtk::Failure& failure) {
        if (failure.code() == qgtk::Code::Internal)
            throw;
    }
}

/** Ends the run as a finding unless something holds. */
inline void expect(bool holds)
{
    if (!holds)
        std::abort();
}
