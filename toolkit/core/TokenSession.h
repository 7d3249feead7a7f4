#pragma once

#include "toolkit/core/Crypto.h"
#include "toolkit/core/TokenModule.h"

namespace qgtk {

/** A session on a token, closed when it goes. The login of the user is its own: others keep theirs. */
class TokenSession
{
public:
    /** Opens it for writing where the token allows. Throws NoSlot, NoToken, TokenUninitialised. */
    TokenSession(std::shared_ptr<TokenModule> module, CK_SLOT_ID slot);
    ~TokenSession();
    TokenSession(const TokenSession&) = delete;
    TokenSession& operator=(const TokenSession&) = delete;

    /** Throws TokenLoggedIn when this session has logged in or the host has, WrongPin, PinLocked. */
    void logIn(const Crypto& crypto, std::string_view pin);

    /** Throws TokenLoggedOut. */
    void logOut();

    /** Throws WrongPin, PinLocked, PinRefused. */
    void changePin(const Crypto& crypto, std::string_view oldPin, std::string_view newPin);

    /** Throws TokenLoggedOut unless the user has logged in, here or in the host. */
    void requireLogin() const;

    /** Throws TokenReadOnly when the token is write-protected. */
    void requireWritable() const;

    const CK_FUNCTION_LIST& functions() const { return m_module->functions(); }
    CK_SESSION_HANDLE handle() const { return m_handle; }

private:
    std::shared_ptr<TokenModule> m_module;
    CK_SLOT_ID m_slot;
    CK_SESSION_HANDLE m_handle = 0;
    bool m_loggedIn = false;
    bool m_writable = false;
};

} // namespace qgtk
