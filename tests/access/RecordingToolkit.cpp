#include "RecordingToolkit.h"

#include <cstring>
#include <dlfcn.h>
#include <stdexcept>

RecordingToolkit::RecordingToolkit(Side side, const std::string& variant)
    : m_side(side), m_directory(std::string(RECORDING_DIRECTORY) + "/" + variant),
      m_fileName(side == ZRTK ? "libZRToolkitV30-v3.4.2.20.so" : "libgpkiapi_v15.so"),
      m_handle(dlopen((m_directory + "/" + m_fileName).c_str(), RTLD_LAZY))
{
    if (m_handle == nullptr)
        throw std::runtime_error(dlerror());
    const auto state = reinterpret_cast<RecordingState* (*)()>(dlsym(m_handle, "recording_state"));
    m_state = state();
    *m_state = {};
}

RecordingToolkit::~RecordingToolkit()
{
    *m_state = {};
    dlclose(m_handle);
}

std::vector<std::string> RecordingToolkit::operations() const
{
    std::vector<std::string> names;
    for (const RecordedCall& call : m_state->calls)
        names.push_back(call.operation);
    return names;
}

void RecordingToolkit::act(const std::string& operation, RecordedAction action)
{
    m_state->actions[operation] = std::move(action);
}

void RecordingToolkit::answer(const std::string& operation, int result)
{
    act(operation, [result](const Word*) { return result; });
}

void RecordingToolkit::tellError(const std::string& text)
{
    act(std::string(prefix()) + "_API_GetErrInfo", [text](const Word* words) {
        std::memcpy(pointer<char>(words[2]), text.data(), text.size());
        return 0;
    });
}
