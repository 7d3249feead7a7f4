#pragma once

#include <memory>
#include <string>

namespace qgtk {

class TokenModule;
class TokenSession;
struct Configuration;

/** A context's PKCS#11 module and its one session. The module is made ready by the first operation on it. */
class Token
{
public:
    /**
     * Loads a module by its path, or by a bare name along the loader's search path. A session on the one
     * before is closed; after a failure all is as it was. Throws ModuleNotLoaded, ModuleUnsuitable.
     */
    void load(const std::string& path);

    /** Closes the session and gives the module up. */
    void unload();

    /** The loaded module, else the one that the settings name. Throws NoModule, and as load and
     * TokenModule::open. */
    const std::shared_ptr<TokenModule>& module(const Configuration& settings);

    /** Opens the session on a slot. Throws TokenSessionOpen, and as TokenSession. */
    TokenSession& open(const Configuration& settings, unsigned long slot);

    /** The open session. Throws NoTokenSession. */
    TokenSession& session() const;

    /** Closes the session. Throws NoTokenSession. */
    void close();

private:
    std::string m_path;
    std::shared_ptr<void> m_library;
    std::shared_ptr<TokenModule> m_module;
    std::shared_ptr<TokenSession> m_session;
};

} // namespace qgtk
