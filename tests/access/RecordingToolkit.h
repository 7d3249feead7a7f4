#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

/**
 * A stand-in for both cryptographic libraries that records every call.
 *
 * It is built under the names that the wrappers load, libZRToolkitV30-v3.4.2.20.so and libgpkiapi_v15.so, and
 * exports every operation of both. An operation without an action does nothing and answers 0; the library's
 * context, made by its Init operation, is RecordingToolkit::context().
 *
 * How a suite uses it:
 *
 *     CMakeLists.txt:  quillgate_test(... LINK ... recording_toolkit)
 *
 *     RecordingToolkit toolkit(RecordingToolkit::ZRTK);          // forgets what was recorded before
 *     toolkit.act("ZRTK_CERT_GetUID", [](const Word* words) {    // words[0] is the context
 *         std::snprintf(pointer<char>(words[2]), words[1], "uid");
 *         return 0;
 *     });
 *     ZR_Initalize(&context, TOOLKIT_ZRTK, toolkit.directory(), toolkit.fileName());
 *     ...
 *     toolkit.calls()[0].operation, toolkit.calls()[0].words[1], ...
 *
 * Keep the object alive while a context uses the library. Words are recorded as they lie in the registers:
 * compare an int with number(word), a bool with truth(word).
 *
 * Three variants: "full"; "bare", which lacks everything but API_Init, API_GetErrInfo, BINSTR_Create and
 * CERT_Load; "empty", which exports no operation at all.
 */
using Word = std::uintptr_t;

constexpr int RECORDED_WORDS = 14;

/** One recorded call. Words behind the operation's last argument are without meaning. */
struct RecordedCall
{
    std::string operation;
    Word words[RECORDED_WORDS];
};

/** What an operation does with its arguments; answers its result. */
using RecordedAction = std::function<int(const Word* words)>;

/** What a stand-in library remembers. One in each library; reached by "recording_state". */
struct RecordingState
{
    std::vector<RecordedCall> calls;
    std::map<std::string, RecordedAction> actions;
};

template <class T>
T* pointer(Word word)
{
    return reinterpret_cast<T*>(word);
}

inline int number(Word word)
{
    return static_cast<int>(word);
}

inline bool truth(Word word)
{
    return static_cast<std::uint8_t>(word) != 0;
}

class RecordingToolkit
{
public:
    enum Side
    {
        ZRTK,
        GPKI
    };

    /** Loads the stand-in of a side and empties its state. */
    explicit RecordingToolkit(Side side, const std::string& variant = "full");
    ~RecordingToolkit();
    RecordingToolkit(const RecordingToolkit&) = delete;
    RecordingToolkit& operator=(const RecordingToolkit&) = delete;

    /** The work directory that holds both libraries of the variant. */
    char* directory() { return m_directory.data(); }
    /** The library's file name, to be given to ZR_Initalize. */
    char* fileName() { return m_fileName.data(); }
    Side side() const { return m_side; }
    /** "ZRTK" or "GPKI". */
    const char* prefix() const { return m_side == ZRTK ? "ZRTK" : "GPKI"; }
    /** The context that the Init operation hands out. */
    void* context() const { return m_state; }

    std::vector<RecordedCall>& calls() const { return m_state->calls; }
    /** The names of the recorded calls, in order. */
    std::vector<std::string> operations() const;
    /** Forgets the recorded calls; the actions stay. */
    void forget() { m_state->calls.clear(); }

    void act(const std::string& operation, RecordedAction action);
    /** An operation that only answers a result. */
    void answer(const std::string& operation, int result);
    /** Makes the failure text operation write a text, without a bound of its own, and answer 0. */
    void tellError(const std::string& text);

private:
    Side m_side;
    std::string m_directory;
    std::string m_fileName;
    void* m_handle;
    RecordingState* m_state;
};
