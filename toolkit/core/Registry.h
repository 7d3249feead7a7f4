#pragma once

#include <memory>
#include <mutex>
#include <unordered_map>

#include "toolkit/core/Context.h"

namespace qgtk {

/**
 * The living contexts of this library.
 *
 * Callers close the library without ending their contexts: what is left, secrets and all, is wiped and freed
 * here when the library is unloaded. It also tells a pointer of ours from any other.
 */
class Registry
{
public:
    /** The one registry of the library. */
    static Registry& instance();

    /** Takes a context over and returns the pointer that callers know it by. */
    void* add(std::unique_ptr<Context> context);

    /** The context behind a pointer; null when it is none of ours or has ended. */
    Context* find(void* handle);

    /** Ends a context. False when it is none of ours. */
    bool remove(void* handle);

private:
    std::mutex m_mutex;
    std::unordered_map<void*, std::unique_ptr<Context>> m_contexts;
};

} // namespace qgtk
