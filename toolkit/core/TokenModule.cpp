#include "toolkit/core/TokenModule.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <dlfcn.h>

#include "toolkit/core/Errors.h"
#include "toolkit/core/TokenFailure.h"

namespace qgtk {

/** The modules that have been used. */
class TokenModule::Table
{
public:
    std::shared_ptr<TokenModule> open(const std::shared_ptr<void>& library, const std::string& path)
    {
        TokenModule* const module = start(functionsOf(library.get(), path), path);
        return {module, [this](TokenModule* released) {
                    release(*released);
                }};
    }

    /** Ends every module while it can still be called: the destructors of the process go on behind this. */
    void end()
    {
        const std::lock_guard lock(m_mutex);
        for (auto& [functions, module] : m_modules) {
            module->closeAll();
            module->finish();
            module->m_alive = false;
        }
    }

private:
    static CK_FUNCTION_LIST* functionsOf(void* library, const std::string& path)
    {
        const auto get = reinterpret_cast<CK_C_GetFunctionList>(dlsym(library, "C_GetFunctionList"));
        CK_FUNCTION_LIST* functions = nullptr;
        constexpr unsigned char majorVersion = 2;
        const bool given = get && get(&functions) == CKR_OK && functions;
        if (!given || functions->version.major != majorVersion)
            throw Failure(Code::ModuleUnsuitable, path);
        return functions;
    }

    /** The module, ready for one more user. */
    TokenModule* start(CK_FUNCTION_LIST* functions, const std::string& path)
    {
        const std::lock_guard lock(m_mutex);
        auto found = m_modules.find(functions);
        if (found == m_modules.end()) {
            // Kept: a module that went and came again would set its destructors behind our handler.
            if (!dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE))
                throw Failure(Code::ModuleNotLoaded, path);
            if (std::atexit([] { table().end(); }) != 0)
                throw std::bad_alloc();
            found = m_modules.emplace(functions, std::make_unique<TokenModule>(functions)).first;
        }
        TokenModule* const module = found->second.get();
        if (module->m_users == 0)
            module->start();
        ++module->m_users;
        return module;
    }

    void release(TokenModule& module)
    {
        const std::lock_guard lock(m_mutex);
        if (--module.m_users == 0)
            module.finish();
    }

    std::mutex m_mutex;
    std::map<CK_FUNCTION_LIST*, std::unique_ptr<TokenModule>> m_modules;
};

TokenModule::Table& TokenModule::table()
{
    static Table modules;
    return modules;
}

void TokenModule::prepare()
{
    table();
}

std::shared_ptr<TokenModule> TokenModule::open(const std::shared_ptr<void>& library, const std::string& path)
{
    return table().open(library, path);
}

void TokenModule::start()
{
    CK_C_INITIALIZE_ARGS arguments = {};
    arguments.flags = CKF_OS_LOCKING_OK;
    const CK_RV result = m_functions->C_Initialize(&arguments);
    if (result == CKR_CRYPTOKI_ALREADY_INITIALIZED)
        return;
    requireOk(result, "C_Initialize");
    m_ours = true;
}

void TokenModule::finish()
{
    m_logins.clear();
    if (!m_ours || hasStrangers())
        return;
    m_functions->C_Finalize(nullptr);
    m_ours = false;
}

bool TokenModule::hasStrangers() const
{
    const auto isUsed = [&](CK_SLOT_ID slot) {
        CK_TOKEN_INFO info = {};
        return m_functions->C_GetTokenInfo(slot, &info) == CKR_OK && info.ulSessionCount != 0 &&
               info.ulSessionCount != CK_UNAVAILABLE_INFORMATION;
    };
    try {
        return std::ranges::any_of(slots(), isUsed);
    } catch (const std::exception&) {
        return false;
    }
}

std::vector<CK_SLOT_ID> TokenModule::slots() const
{
    // Modules look for readers that came or went when they are asked for the number alone. It may be another
    // when the slots come: there is room for more than anybody has.
    CK_ULONG count = 0;
    invoke("C_GetSlotList", m_functions->C_GetSlotList, CK_BBOOL(CK_TRUE), nullptr, &count);
    constexpr std::size_t room = 1024;
    std::vector<CK_SLOT_ID> slots(room);
    count = room;
    invoke("C_GetSlotList", m_functions->C_GetSlotList, CK_BBOOL(CK_TRUE), slots.data(), &count);
    require(count <= room, Code::ModuleFailed);
    slots.resize(count);
    return slots;
}

CK_TOKEN_INFO TokenModule::tokenInfo(CK_SLOT_ID slot) const
{
    CK_TOKEN_INFO info = {};
    invoke("C_GetTokenInfo", m_functions->C_GetTokenInfo, slot, &info);
    return info;
}

CK_SESSION_HANDLE TokenModule::openSession(CK_SLOT_ID slot, CK_FLAGS flags)
{
    const std::lock_guard lock(m_mutex);
    CK_SESSION_HANDLE session = 0;
    const auto place = m_sessions.insert(m_sessions.end(), session);
    try {
        invoke("C_OpenSession", m_functions->C_OpenSession, slot, CKF_SERIAL_SESSION | flags, nullptr,
               nullptr, &session);
    } catch (...) {
        m_sessions.erase(place);
        throw;
    }
    *place = session;
    return session;
}

void TokenModule::closeSession(CK_SESSION_HANDLE session)
{
    const std::lock_guard lock(m_mutex);
    m_sessions.remove(session);
    m_functions->C_CloseSession(session);
}

void TokenModule::closeAll()
{
    for (const CK_SESSION_HANDLE session : m_sessions)
        m_functions->C_CloseSession(session);
    m_sessions.clear();
}

bool TokenModule::isLoggedIn(CK_SESSION_HANDLE session, CK_SLOT_ID slot, bool itself)
{
    const std::lock_guard lock(m_mutex);
    const auto login = m_logins.find(slot);
    const bool isOfOthers = !itself && login != m_logins.end() && login->second.sessions > 0;
    return !isOfOthers && isLoggedIn(session);
}

bool TokenModule::isLoggedIn(CK_SESSION_HANDLE session) const
{
    CK_SESSION_INFO info = {};
    invoke("C_GetSessionInfo", m_functions->C_GetSessionInfo, session, &info);
    return info.state == CKS_RW_USER_FUNCTIONS || info.state == CKS_RO_USER_FUNCTIONS;
}

void TokenModule::initialiseToken(CK_SLOT_ID slot, std::string_view officerPin, std::string_view userPin,
                                  std::string_view label)
{
    std::array<CK_UTF8CHAR, 32> padded{};
    require(label.size() <= padded.size(), Code::BadArgument);
    padded.fill(' ');
    std::copy(label.begin(), label.end(), padded.begin());
    tokenInfo(slot);
    invoke("C_InitToken", m_functions->C_InitToken, slot, pinBytes(officerPin), officerPin.size(),
           padded.data());
    const CK_SESSION_HANDLE session = openSession(slot, CKF_RW_SESSION);
    const std::shared_ptr<void> closing(nullptr, [&](void*) { closeSession(session); });
    invoke("C_Login", m_functions->C_Login, session, CK_USER_TYPE(CKU_SO), pinBytes(officerPin),
           officerPin.size());
    invoke("C_InitPIN", m_functions->C_InitPIN, session, pinBytes(userPin), userPin.size());
}

void TokenModule::logIn(CK_SESSION_HANDLE session, CK_SLOT_ID slot, std::string_view pin,
                        SecretBytes pinDigest)
{
    const std::lock_guard lock(m_mutex);
    Login& login = m_logins[slot];
    // A token that went and came again has forgotten its user.
    if (login.sessions == 0 || !isLoggedIn(session)) {
        invoke("C_Login", m_functions->C_Login, session, CK_USER_TYPE(CKU_USER), pinBytes(pin), pin.size());
        login.pinDigest = std::move(pinDigest);
    } else
        require(login.pinDigest == pinDigest, Code::WrongPin);
    ++login.sessions;
}

void TokenModule::logOut(CK_SESSION_HANDLE session, CK_SLOT_ID slot)
{
    const std::lock_guard lock(m_mutex);
    const auto login = m_logins.find(slot);
    if (login == m_logins.end() || --login->second.sessions > 0)
        return;
    m_logins.erase(login);
    invoke("C_Logout", m_functions->C_Logout, session);
}

void TokenModule::changePin(CK_SESSION_HANDLE session, CK_SLOT_ID slot, std::string_view oldPin,
                            std::string_view newPin, SecretBytes newDigest)
{
    const std::lock_guard lock(m_mutex);
    invoke("C_SetPIN", m_functions->C_SetPIN, session, pinBytes(oldPin), oldPin.size(), pinBytes(newPin),
           newPin.size());
    const auto login = m_logins.find(slot);
    if (login != m_logins.end())
        login->second.pinDigest = std::move(newDigest);
}

} // namespace qgtk
