#include "toolkit/core/TokenSession.h"

#include "toolkit/core/Errors.h"

namespace qgtk {

namespace {

SecretBytes digestOfPin(const Crypto& crypto, std::string_view pin)
{
    Bytes digest = crypto.hash("SHA256", bytesOf(pin));
    SecretBytes kept(digest.begin(), digest.end());
    OPENSSL_cleanse(digest.data(), digest.size());
    return kept;
}

} // namespace

TokenSession::TokenSession(std::shared_ptr<TokenModule> module, CK_SLOT_ID slot)
    : m_module(std::move(module)), m_slot(slot)
{
    const CK_FLAGS token = m_module->tokenInfo(slot).flags;
    require((token & CKF_TOKEN_INITIALIZED) != 0, Code::TokenUninitialised);
    m_writable = (token & CKF_WRITE_PROTECTED) == 0;
    m_handle = m_module->openSession(slot, m_writable ? CKF_RW_SESSION : 0UL);
}

TokenSession::~TokenSession()
{
    if (!m_module->alive())
        return;
    try {
        if (m_loggedIn)
            m_module->logOut(m_handle, m_slot);
    } catch (const Failure&) {
        // A token that has been removed has nobody to log out.
    }
    m_module->closeSession(m_handle);
}

void TokenSession::logIn(const Crypto& crypto, std::string_view pin)
{
    require(!m_loggedIn, Code::TokenLoggedIn);
    m_module->logIn(m_handle, m_slot, pin, digestOfPin(crypto, pin));
    m_loggedIn = true;
}

void TokenSession::logOut()
{
    require(m_loggedIn, Code::TokenLoggedOut);
    m_loggedIn = false;
    m_module->logOut(m_handle, m_slot);
}

void TokenSession::changePin(const Crypto& crypto, std::string_view oldPin, std::string_view newPin)
{
    m_module->changePin(m_handle, m_slot, oldPin, newPin, digestOfPin(crypto, newPin));
}

void TokenSession::requireLogin() const
{
    require(m_module->isLoggedIn(m_handle, m_slot, m_loggedIn), Code::TokenLoggedOut);
}

void TokenSession::requireWritable() const
{
    require(m_writable, Code::TokenReadOnly);
}

} // namespace qgtk
