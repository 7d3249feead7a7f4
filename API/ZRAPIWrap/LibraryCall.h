#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <dlfcn.h>
#include <sys/stat.h>

#include "ArgumentTests.h"

/** Size of a failure text, as the libraries are told. */
constexpr int ERROR_TEXT_SIZE = 2048;

/** Every text output of a library that this layer clears is cleared over so many bytes, whatever its size. */
constexpr std::size_t CLEARED_BYTES = 8;

/** Size that a few operations are told for their text outputs, whatever the buffers hold. Settled so. */
constexpr int MISSTATED_SIZE = 8;

/** Copies a text with its terminator, at most nBound bytes; a longer text ends without one. */
template <std::size_t SIZE>
void CopyBounded(char* pszTarget, int nBound, const char (&szSource)[SIZE])
{
    const std::size_t nText = std::min(strnlen(szSource, SIZE) + 1, SIZE);
    std::memcpy(pszTarget, szSource, std::min(nText, static_cast<std::size_t>(std::max(nBound, 0))));
}

/** Opens a library. The loader would wait at a FIFO for its other end, so only a regular file is opened. */
inline void* OpenLibrary(const char* pszPath)
{
    struct stat status = {};
    return stat(pszPath, &status) == 0 && S_ISREG(status.st_mode) ? dlopen(pszPath, RTLD_LAZY) : nullptr;
}

/**
 * The steps that all operations of both wrappers share.
 *
 * Wrapper is CZRTKWrap or CGPKIWrap. It names the code for a library that is not loaded (NOT_LOADED), the
 * operation that tells the failure text (ERROR_TEXT_OPERATION) and the code for a failure text without a
 * buffer (NO_ERROR_BUFFER).
 */
class LibraryCall
{
public:
    /** Loads the library and has it make its context. NOT_LOADED, 10005, the library's number. */
    template <class Wrapper>
    static int Load(Wrapper& wrapper, const char* pszPath, const char* pszOperation, char* pszWorkDir)
    {
        wrapper.m_hLib = OpenLibrary(pszPath);
        return Run(wrapper, pszOperation, QG_OK, &wrapper.m_pContext, pszWorkDir);
    }

    /** Unloads the library with all that it holds, and wipes the failure text. */
    template <class Wrapper>
    static void Unload(Wrapper& wrapper)
    {
        if (wrapper.m_hLib != nullptr)
            dlclose(wrapper.m_hLib);
        explicit_bzero(wrapper.m_szErrMsg, sizeof wrapper.m_szErrMsg);
    }

    /**
     * Calls one operation with exactly args. The name is looked up at every call. NOT_LOADED, nRefusal when
     * it is not QG_OK, 10005 when the library lacks the operation, else the operation's own answer.
     */
    template <class Wrapper, class... Args>
    static int Run(Wrapper& wrapper, const char* pszOperation, int nRefusal, Args... args)
    {
        return RunThen(
            wrapper, pszOperation, nRefusal, [] {}, args...);
    }

    /** The same; calls then when the operation was reached, whatever it answered. */
    template <class Wrapper, class Then, class... Args>
    static int RunThen(Wrapper& wrapper, const char* pszOperation, int nRefusal, Then then, Args... args)
    {
        if (wrapper.m_hLib == nullptr)
            return Wrapper::NOT_LOADED;
        if (nRefusal != QG_OK)
            return nRefusal;
        const auto pOperation = Find<Args...>(wrapper, pszOperation);
        if (pOperation == nullptr)
            return QG_NOT_AVAILABLE;
        const int nResult = KeepErrorText(wrapper, pOperation(args...));
        then();
        return nResult;
    }

    /** Asks the library for the text of its last failure; see ZR_GetErrInfo. */
    template <class Wrapper>
    static int GetErrInfo(Wrapper& wrapper, int nAllocLen, char* pszErrorMsg)
    {
        if (wrapper.m_hLib == nullptr)
            return Wrapper::NOT_LOADED;
        const int nRefusal = Require(NotNull(pszErrorMsg, Wrapper::NO_ERROR_BUFFER), AtLeast(0, nAllocLen));
        if (nRefusal != QG_OK)
            return nRefusal;
        std::memset(pszErrorMsg, 0, CLEARED_BYTES);
        const auto pOperation = Find<void*, int, char*>(wrapper, Wrapper::ERROR_TEXT_OPERATION);
        if (pOperation == nullptr)
            return QG_NOT_AVAILABLE;
        char szText[ERROR_TEXT_SIZE] = {};
        const int nResult = pOperation(wrapper.m_pContext, ERROR_TEXT_SIZE, szText);
        if (nResult == QG_OK)
            CopyBounded(pszErrorMsg, nAllocLen, szText);
        return nResult;
    }

    /** Copies the text kept from the last failure, if there is one; see ZR_GetErrInfo2. */
    template <class Wrapper>
    static int GetKeptErrInfo(const Wrapper& wrapper, int nAllocLen, char* pszErrorMsg)
    {
        if (wrapper.m_szErrMsg[0] != '\0' && pszErrorMsg != nullptr)
            CopyBounded(pszErrorMsg, nAllocLen, wrapper.m_szErrMsg);
        return QG_OK;
    }

    /**
     * Writes the version of the loaded certificate in digits. Hosts find a number after a failure too: the
     * text is left out only when the operation could not be called.
     */
    template <class Wrapper>
    static int GetCertVersion(Wrapper& wrapper, const char* pszOperation, int nAllocLen, char* pszVersion)
    {
        int nVersion = 0;
        const auto writeDigits = [&] {
            if (nAllocLen > 0)
                std::snprintf(pszVersion, static_cast<std::size_t>(nAllocLen), "%d", nVersion);
        };
        return RunThen(wrapper, pszOperation, Require(NotNull(pszVersion)), writeDigits, wrapper.m_pContext,
                       &nVersion);
    }

private:
    template <class... Args, class Wrapper>
    static auto Find(const Wrapper& wrapper, const char* pszOperation)
    {
        return reinterpret_cast<int (*)(Args...)>(dlsym(wrapper.m_hLib, pszOperation));
    }

    /** Keeps the library's text of a failure in the wrapper, and hands the result on. */
    template <class Wrapper>
    static int KeepErrorText(Wrapper& wrapper, int nResult)
    {
        if (nResult != QG_OK)
            wrapper.GetErrInfo(ERROR_TEXT_SIZE, wrapper.m_szErrMsg);
        return nResult;
    }
};
