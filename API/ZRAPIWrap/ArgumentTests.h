#pragma once

#include "quillgate/binstr.h"
#include "quillgate/returncodes.h"

/*
 * The argument tests of dispatcher and wrappers. Each looks at one argument and answers QG_OK or the code of
 * the refusal. Which argument is tested on which level, and with which code, is settled: hosts tell 10003
 * from 10004.
 */

/** Refuses a null pointer or text. */
constexpr int NotNull(const void* pValue, int nCode = QG_BAD_ARGUMENT)
{
    return pValue != nullptr ? QG_OK : nCode;
}

/** Refuses a byte string that is null, has no bytes or length 0. A negative length is the library's matter.
 */
constexpr int HasData(const BINSTR* pBinstr, int nCode = QG_BAD_ARGUMENT)
{
    return pBinstr != nullptr && pBinstr->pData != nullptr && pBinstr->nLen != 0 ? QG_OK : nCode;
}

/** As HasData, and refuses a negative length too. */
constexpr int HasBytes(const BINSTR* pBinstr, int nCode = QG_BAD_ARGUMENT)
{
    return pBinstr != nullptr && pBinstr->pData != nullptr && pBinstr->nLen > 0 ? QG_OK : nCode;
}

/** Refuses 0. */
constexpr int NotZero(int nValue)
{
    return nValue != 0 ? QG_OK : QG_BAD_ARGUMENT;
}

/** Refuses a number below a minimum. */
constexpr int AtLeast(int nMinimum, int nValue)
{
    return nValue >= nMinimum ? QG_OK : QG_BAD_ARGUMENT;
}

/** Refuses a null or empty text. */
constexpr int NonEmpty(const char* pszText)
{
    return pszText != nullptr && *pszText != '\0' ? QG_OK : QG_BAD_ARGUMENT;
}

/** Refuses every text but an empty one. */
constexpr int IsEmpty(const char* pszText)
{
    return pszText != nullptr && *pszText == '\0' ? QG_OK : QG_BAD_ARGUMENT;
}

/** Refuses every text but a null one. */
constexpr int IsNull(const char* pszText)
{
    return pszText == nullptr ? QG_OK : QG_BAD_ARGUMENT;
}

/** The first refusal among the tests' answers, else QG_OK. */
template <class... Codes>
constexpr int Require(Codes... nCodes)
{
    int nFirst = QG_OK;
    ((nFirst = nFirst != QG_OK ? nFirst : nCodes), ...);
    return nFirst;
}
