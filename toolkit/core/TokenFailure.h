#pragma once

#include <p11-kit/pkcs11.h>

namespace qgtk {

/**
 * Turns a module's result into the code that fits, with "<function>: CKR 0x<value>" as the detail;
 * ModuleFailed when none fits. Returns for CKR_OK.
 */
void requireOk(CK_RV result, const char* function);

/** Calls a function of a module. Throws as requireOk, and ModuleFailed when the module lacks the function. */
template <typename Function, typename... Arguments>
void invoke(const char* name, Function function, Arguments... arguments)
{
    requireOk(function ? function(arguments...) : CKR_FUNCTION_NOT_SUPPORTED, name);
}

} // namespace qgtk
