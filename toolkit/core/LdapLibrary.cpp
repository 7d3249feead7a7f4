#include "toolkit/core/LdapLibrary.h"

#include <dlfcn.h>

#include "toolkit/core/Errors.h"

namespace qgtk {

namespace {

/** The library that was compiled against, until this one is unloaded. */
class Library
{
public:
    Library() : m_handle(dlopen(QGTK_LDAP_LIBRARY, RTLD_LAZY | RTLD_LOCAL))
    {
        if (!m_handle)
            throw Failure(Code::ModuleNotLoaded, QGTK_LDAP_LIBRARY);
    }
    ~Library() { dlclose(m_handle); }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    void* symbol(const char* name) const
    {
        void* address = dlsym(m_handle, name);
        if (!address)
            throw Failure(Code::ModuleNotLoaded, std::string(QGTK_LDAP_LIBRARY ": ") + name);
        return address;
    }

private:
    void* m_handle;
};

} // namespace

void* ldapSymbol(const char* name)
{
    static const Library library;
    return library.symbol(name);
}

} // namespace qgtk
