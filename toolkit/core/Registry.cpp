#include "toolkit/core/Registry.h"

#include "toolkit/core/TokenModule.h"

namespace qgtk {

Registry& Registry::instance()
{
    // OpenSSL must be up before the registry is made: what is made later ends earlier, and the contexts need
    // OpenSSL to end, at exit too. No option is set, so the process's configuration is not loaded by this.
    static const int started = OPENSSL_init_crypto(0, nullptr);
    // So must the table of the modules that the contexts release.
    TokenModule::prepare();
    static Registry registry;
    (void)started;
    return registry;
}

void* Registry::add(std::unique_ptr<Context> context)
{
    const std::lock_guard lock(m_mutex);
    void* handle = context.get();
    m_contexts.emplace(handle, std::move(context));
    return handle;
}

Context* Registry::find(void* handle)
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_contexts.find(handle);
    return found == m_contexts.end() ? nullptr : found->second.get();
}

bool Registry::remove(void* handle)
{
    std::unique_ptr<Context> ended;
    const std::lock_guard lock(m_mutex);
    const auto found = m_contexts.find(handle);
    if (found == m_contexts.end())
        return false;
    ended = std::move(found->second);
    m_contexts.erase(found);
    return true;
}

} // namespace qgtk
