#pragma once

#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include <p11-kit/pkcs11.h>

#include "toolkit/core/Bytes.h"

namespace qgtk {

/**
 * A PKCS#11 module that is ready for use, shared by all contexts of the library that have loaded it.
 *
 * A module knows one application, the process: initialising it twice, or ending it under another context,
 * would take that one's sessions away, and so would logging out. Thus the first user initialises it and the
 * last ends it, unless the host had done the first, or has sessions that the module tells of: then it is
 * left as it is, and the next last user looks again. It stays loaded until the process ends: its own
 * destructors then run behind ours.
 */
class TokenModule
{
public:
    /** Makes what outlives every module; to be called before anything that holds one is made. */
    static void prepare();

    /** A use of the module behind a loaded library. Throws ModuleUnsuitable, ModuleFailed. */
    static std::shared_ptr<TokenModule> open(const std::shared_ptr<void>& library, const std::string& path);

    explicit TokenModule(CK_FUNCTION_LIST* functions) : m_functions(functions) {}
    ~TokenModule() { finish(); }
    TokenModule(const TokenModule&) = delete;
    TokenModule& operator=(const TokenModule&) = delete;

    const CK_FUNCTION_LIST& functions() const { return *m_functions; }

    /** Whether the module may still be called; not any more when the process ends. */
    bool alive() const { return m_alive; }

    /** The slots that hold a token. Throws ModuleFailed. */
    std::vector<CK_SLOT_ID> slots() const;

    /** Throws NoSlot, NoToken. */
    CK_TOKEN_INFO tokenInfo(CK_SLOT_ID slot) const;

    /**
     * Initialises a token, and erases what it holds: sets the officer's PIN, or compares it with the one that
     * it has, then the user's. The label has at most 32 bytes. Throws WrongPin, PinLocked, PinRefused,
     * TokenSessionOpen.
     */
    void initialiseToken(CK_SLOT_ID slot, std::string_view officerPin, std::string_view userPin,
                         std::string_view label);

    /** Opens a session of this library's. Throws NoSlot, NoToken, TokenUninitialised. */
    CK_SESSION_HANDLE openSession(CK_SLOT_ID slot, CK_FLAGS flags);

    /** Closes it; a token that has been removed has closed it before. */
    void closeSession(CK_SESSION_HANDLE session);

    /**
     * Whether a session has the user's rights: it has logged in itself, or the host has. To the token all
     * sessions of the process are the user's then; the login of another one of the library's is not this
     * one's.
     */
    bool isLoggedIn(CK_SESSION_HANDLE session, CK_SLOT_ID slot, bool itself);

    /**
     * Logs a session's user in. When another session of the library has done so, the token would not look at
     * the PIN: its digest is compared with that one's. Throws WrongPin, PinLocked, TokenLoggedIn (by the
     * host).
     */
    void logIn(CK_SESSION_HANDLE session, CK_SLOT_ID slot, std::string_view pin, SecretBytes pinDigest);

    /** Gives the login of one session up; the last logs out. Throws as the module fails. */
    void logOut(CK_SESSION_HANDLE session, CK_SLOT_ID slot);

    /** Changes the PIN. Throws WrongPin, PinLocked, PinRefused. */
    void changePin(CK_SESSION_HANDLE session, CK_SLOT_ID slot, std::string_view oldPin,
                   std::string_view newPin, SecretBytes newDigest);

private:
    struct Login
    {
        std::size_t sessions = 0;
        SecretBytes pinDigest;
    };
    class Table;
    static Table& table();
    void start();
    void finish();
    void closeAll();

    /** Whether somebody else in the process has sessions, as far as the module tells. Ours are closed. */
    bool hasStrangers() const;

    /** Whether the user has logged in to a session's token, whoever it was. */
    bool isLoggedIn(CK_SESSION_HANDLE session) const;

    CK_FUNCTION_LIST* m_functions;
    std::size_t m_users = 0;
    bool m_ours = false;
    bool m_alive = true;
    std::mutex m_mutex;
    std::list<CK_SESSION_HANDLE> m_sessions;
    std::map<CK_SLOT_ID, Login> m_logins;
};

/** A PIN as modules take it. */
inline CK_UTF8CHAR* pinBytes(std::string_view pin)
{
    return reinterpret_cast<CK_UTF8CHAR*>(const_cast<char*>(pin.data()));
}

} // namespace qgtk
