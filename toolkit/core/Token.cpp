#include "toolkit/core/Token.h"

#include "toolkit/core/Configuration.h"
#include "toolkit/core/Errors.h"
#include "toolkit/core/Module.h"
#include "toolkit/core/TokenSession.h"

namespace qgtk {

void Token::load(const std::string& path)
{
    std::shared_ptr<void> library = loadModule(path);
    std::string kept = path;
    unload();
    m_library = std::move(library);
    m_path = std::move(kept);
}

void Token::unload()
{
    m_session.reset();
    m_module.reset();
    m_library.reset();
}

const std::shared_ptr<TokenModule>& Token::module(const Configuration& settings)
{
    if (!m_library) {
        require(!settings.tokenModule.empty(), Code::NoModule);
        load(settings.tokenModule);
    }
    if (!m_module)
        m_module = TokenModule::open(m_library, m_path);
    return m_module;
}

TokenSession& Token::open(const Configuration& settings, unsigned long slot)
{
    require(!m_session, Code::TokenSessionOpen);
    m_session = std::make_shared<TokenSession>(module(settings), slot);
    return *m_session;
}

TokenSession& Token::session() const
{
    require(m_session != nullptr, Code::NoTokenSession);
    return *m_session;
}

void Token::close()
{
    require(m_session != nullptr, Code::NoTokenSession);
    m_session.reset();
}

} // namespace qgtk
