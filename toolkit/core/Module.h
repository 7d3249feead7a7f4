#pragma once

#include <dlfcn.h>
#include <string>

#include "toolkit/core/Handles.h"

namespace qgtk {

/** A PKCS#11 module, closed when it goes. */
using ModuleHandle = Handle<void, dlclose>;

/**
 * Loads a PKCS#11 module by its path, or by a bare name along the loader's search path. Throws
 * ModuleNotLoaded, ModuleUnsuitable (no C_GetFunctionList).
 */
ModuleHandle loadModule(const std::string& path);

} // namespace qgtk
