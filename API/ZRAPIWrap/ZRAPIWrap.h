#pragma once

#include "WrapperAPI.h"

/**
 * The one step of every flat function: hands the call to the dispatcher behind the context. 10001 for a null
 * context. Nothing that a library throws gets to the host: it answers 10004.
 */
template <class... Args>
int Forward(void* pContext, int (CWrapperAPI::*pMethod)(std::type_identity_t<Args>...), Args... args) noexcept
{
    if (pContext == nullptr)
        return QG_NO_CONTEXT;
    try {
        return (static_cast<CWrapperAPI*>(pContext)->*pMethod)(args...);
    } catch (...) {
        return QG_BAD_ARGUMENT;
    }
}
