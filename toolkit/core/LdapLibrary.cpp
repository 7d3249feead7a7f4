#include "toolkit/core/LdapLibrary.h"

#include <dlfcn.h>

#include "toolkit/core/Errors.h"

namespace qgtk {

namespace {

/** The library that was compiled against. It stays in the process: unloaded, it leaves its tables behind. */
void* loadLibrary()
{
    void* library = dlopen(QGTK_LDAP_LIBRARY, RTLD_LAZY | RTLD_LOCAL | RTLD_NODELETE);
    if (!library)
        throw Failure(Code::ModuleNotLoaded, QGTK_LDAP_LIBRARY);
    return library;
}

} // namespace

void* ldapSymbol(const char* name)
{
    static void* const library = loadLibrary();
    void* address = dlsym(library, name);
    if (!address)
        throw Failure(Code::ModuleNotLoaded, std::string(QGTK_LDAP_LIBRARY ": ") + name);
    return address;
}

} // namespace qgtk
