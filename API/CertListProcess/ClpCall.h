#pragma once

#include "CertListProcInterface.h"
#include "Log.h"
#include "quillgate/certlist.h"

/*
 * The frame that every function of the CLP_ family has: start line, handle, further guards, the work, end
 * line. A function's lines carry its own name unless it passes a neighbour's: readers of the log know those
 * so. Both texts end with a blank. No exception leaves: the standard containers throw when memory is short,
 * and nothing else does.
 */
namespace clp {

inline void startLine(const char* name, const void* pContext)
{
    SetLogInfo(szLogFilePath, "[[ %s() Start...  (Context : %p) ]]", name, pContext);
}

inline int endLine(const char* name, int code)
{
    SetLogInfo(szLogFilePath, "[[ %s() End...  (%d) ]]", name, code);
    return code;
}

/** The session behind a handle. Any value that is not null is taken for one. */
inline CCertListProcInterface& session(void* pContext)
{
    return *static_cast<CCertListProcInterface*>(pContext);
}

/** Runs work and turns an exception into 10003. */
template <typename Work>
int guarded(Work work) noexcept
{
    try {
        return work();
    } catch (...) {
        return QG_NO_MEMORY;
    }
}

/** One working function: usable is the outcome of the guards that follow the handle's. */
template <typename Work>
int forward(const char* name, void* pContext, bool usable, Work work) noexcept
{
    startLine(name, pContext);
    if (!pContext)
        return endLine(name, CLPERR_NO_HANDLE);
    if (!usable)
        return endLine(name, QG_BAD_ARGUMENT);
    return endLine(name, guarded([&] { return work(session(pContext)); }));
}

/** The same without further guards. */
template <typename Work>
int forward(const char* name, void* pContext, Work work) noexcept
{
    return forward(name, pContext, true, work);
}

/** One function that this platform does not have: both lines and 10005, whatever the arguments. */
inline int unavailable(const char* name, const void* pContext)
{
    startLine(name, pContext);
    return endLine(name, QG_NOT_AVAILABLE);
}

inline bool hasText(const char* text)
{
    return text && *text != '\0';
}

} // namespace clp
