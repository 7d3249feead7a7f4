// The stand-in library itself. SYMBOLS names the list of operations that it exports; see RecordingToolkit.h.

#include "RecordingToolkit.h"

#include <algorithm>

#define EXPORTED extern "C" __attribute__((visibility("default")))

EXPORTED RecordingState* recording_state()
{
    static RecordingState state;
    return &state;
}

#ifdef SYMBOLS

namespace {

int recordCall(const char* operation, const Word (&words)[RECORDED_WORDS])
{
    RecordingState& state = *recording_state();
    RecordedCall call = {operation, {}};
    std::copy(std::begin(words), std::end(words), call.words);
    state.calls.push_back(call);
    if (call.operation.ends_with("_API_Init"))
        *pointer<void*>(words[0]) = &state;
    const auto found = state.actions.find(call.operation);
    return found != state.actions.end() ? RecordedAction(found->second)(words) : 0;
}

} // namespace

// Every argument of every operation is a word of integer class, so that one signature takes them all.
#define SYMBOL(name)                                                                                         \
    EXPORTED int name(Word a, Word b, Word c, Word d, Word e, Word f, Word g, Word h, Word i, Word j,        \
                      Word k, Word l, Word m, Word n)                                                        \
    {                                                                                                        \
        return recordCall(#name, {a, b, c, d, e, f, g, h, i, j, k, l, m, n});                                \
    }
#include SYMBOLS

#endif
