#include "toolkit/core/Module.h"

#include <sys/stat.h>

#include "toolkit/core/Errors.h"

namespace qgtk {

namespace {

/** The loader would block on a FIFO; a bare name is the loader's to find. */
bool isLoadable(const std::string& path)
{
    struct stat status = {};
    const bool bare = path.find('/') == std::string::npos;
    return bare || (::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode));
}

} // namespace

ModuleHandle loadModule(const std::string& path)
{
    ModuleHandle module(isLoadable(path) ? dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL) : nullptr);
    if (!module)
        throw Failure(Code::ModuleNotLoaded, path);
    if (!dlsym(module.get(), "C_GetFunctionList"))
        throw Failure(Code::ModuleUnsuitable, path);
    return module;
}

} // namespace qgtk
