#ifndef QUILLGATE_TOOLKIT_FRAME_H
#define QUILLGATE_TOOLKIT_FRAME_H

/**
 * @file
 * Toolkit access: the context, its version, options and error text, and byte strings.
 */

#include <time.h>

#include "quillgate/api.h"
#include "quillgate/binstr.h"

/**
 * @defgroup frame Context and byte strings
 * @ingroup toolkit
 *
 * ZR_Initalize loads a library and makes the context that every other function takes first. nAPIType chooses
 * the side: TOOLKIT_ZRTK the ZR side, TOOLKIT_GPKI the GPKI side. A call goes to the operation of that side
 * and its number comes back unchanged.
 * @{
 */

/**
 * Starts a context and loads the library of a side.
 *
 * pszWorkDir is used up to 259 bytes, and the ZR side's path of the library up to 258. A context that is
 * there is used again: it gets a new library, and the first stays loaded. When the library fails the
 * context exists all the same, answers ZR_GetErrInfo2, and is ended with ZR_Finish.
 *
 * @param[in,out] pContext place of the context, null or a context of an earlier call
 * @param nAPIType TOOLKIT_ZRTK or TOOLKIT_GPKI
 * @param pszWorkDir directory of the library and its configuration
 * @param sofilename file name of the ZR side's library; null: libZRCToolkitV30.so. The GPKI side always
 *        loads libgpkiapi_v15.so
 * @return 0; 20001 for another nAPIType, 20002 without a non-empty pszWorkDir, the context then untouched;
 *         10001 for a null pContext; 10003 out of memory; 20011 or 20012 when the library can't be loaded;
 *         10005 when it is no such library; the library's own number
 */
QUILLGATE_API int ZR_Initalize(void** pContext, int nAPIType, char* pszWorkDir, char* sofilename);

/**
 * Ends a context and unloads its library. Null is ignored. The caller then sets its own pointer to null.
 *
 * @param pContext context of ZR_Initalize
 */
QUILLGATE_API void ZR_Finish(void* pContext);

/**
 * Asks the library for the text of its last failure.
 *
 * At most nAllocLen bytes are copied, without a terminator when the text is longer: clear the buffer first.
 * The first 8 bytes of pszErrorMsg are zeroed before the library is asked, whatever nAllocLen says.
 *
 * @param pContext context of ZR_Initalize
 * @param nAllocLen most bytes to copy
 * @param[out] pszErrorMsg text, at least 8 bytes
 * @return 0; 10001; 20011 or 20012 while the library is not loaded; 10004 (ZR side) or 10003 (GPKI side)
 *         without pszErrorMsg; 10004 for a negative nAllocLen; 10005; the library's own number
 */
QUILLGATE_API int ZR_GetErrInfo(void* pContext, int nAllocLen, char* pszErrorMsg);

/**
 * Copies the text kept from the last failure of this context.
 *
 * No library is asked, so that it answers after a failed ZR_Initalize too. At most nAllocLen bytes are
 * copied, without a terminator when the text is longer. A success does not clear the text.
 *
 * @param pContext context of ZR_Initalize
 * @param nAllocLen most bytes to copy
 * @param[out] pszErrorMsg text; untouched when no failure is kept
 * @return 0; 10001
 */
QUILLGATE_API int ZR_GetErrInfo2(void* pContext, int nAllocLen, char* pszErrorMsg);

/**
 * Writes the library's version text.
 *
 * The ZR side does not look at nAllocLen, zeroes the first 8 bytes and lets the library write what it has.
 *
 * @param pContext context of ZR_Initalize
 * @param nAllocLen size of the buffer in bytes; for the GPKI side
 * @param[out] pszVersion version text, at least 1024 bytes on the ZR side
 * @return 0, a code that all share, or on the ZR side 10004 without pszVersion
 */
QUILLGATE_API int ZR_GetVersion(void* pContext, int nAllocLen, char* pszVersion);

/**
 * Sets a library option. GPKI side only.
 *
 * @param pContext context of ZR_Initalize
 * @param nOption option of the library
 * @return 0 or a code that all share
 */
QUILLGATE_API int ZR_SetOption(void* pContext, int nOption);

/**
 * Names the library's configuration file.
 *
 * The ZR side takes an empty text alone and refuses every path; the GPKI side takes any text. Hosts rely on
 * both.
 *
 * @param pContext context of ZR_Initalize
 * @param pszConfFilePath path; the ZR side takes an empty text alone
 * @return 0, a code that all share, or on the ZR side 10004 for pszConfFilePath other than an empty text;
 *         on the GPKI side 10004 without pszConfFilePath
 */
QUILLGATE_API int ZR_SetConfFile(void* pContext, char* pszConfFilePath);

/**
 * Hands the library a list of CA certificates, to look for issuers in.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCaPubs list of CA certificates, DER
 * @return 0, a code that all share, or 10004 without pBinCaPubs
 */
QUILLGATE_API int ZR_SetCaPubs(void* pContext, BINSTR* pBinCaPubs);

/**
 * Takes the list of ZR_SetCaPubs back.
 *
 * @param pContext context of ZR_Initalize
 * @return 0 or a code that all share
 */
QUILLGATE_API int ZR_FreeCaPubs(void* pContext);

/**
 * Turns the library's text form of a time into a number. GPKI side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pszTime local time, YYYY-MM-DD hh:mm:ss
 * @param[out] pTime seconds since 1970
 * @return 0, a code that all share, or on the GPKI side 10004 without pszTime
 */
QUILLGATE_API int ZR_Str2Time(void* pContext, char* pszTime, time_t* pTime);

/**
 * Sets the hash algorithm of the context.
 *
 * @param pContext context of ZR_Initalize
 * @param nHashAlg QG_HASH_..., but QG_HASH_CONTEXT
 * @return 0 or a code that all share
 */
QUILLGATE_API int ZR_SetHashAlg(void* pContext, int nHashAlg);

/**
 * Prepares a byte string that was zeroed, before it is filled.
 *
 * @param pContext context of ZR_Initalize
 * @param[in,out] pBinstr record, zeroed
 * @return 0, a code that all share, or 10004 for a null pBinstr
 */
QUILLGATE_API int ZR_BINSTR_Create(void* pContext, BINSTR* pBinstr);

/**
 * Wipes and releases the bytes of a byte string that a context of the same side filled.
 *
 * The ZR side refuses an empty one, which holds nothing to release.
 *
 * @param pContext context of ZR_Initalize
 * @param[in,out] pBinstr byte string, empty afterwards
 * @return 0, a code that all share, or on the ZR side 10004 without pBinstr; on the GPKI side 10004 for a
 *         null pBinstr
 */
QUILLGATE_API int ZR_BINSTR_Delete(void* pContext, BINSTR* pBinstr);

/**
 * Copies bytes into a byte string; the library allocates them.
 *
 * @param pContext context of ZR_Initalize
 * @param pszData bytes to copy
 * @param nLen number of bytes
 * @param[out] pBinstr byte string
 * @return 0, a code that all share, or 10004 without pszData and for a null pBinstr and for nLen 0
 */
QUILLGATE_API int ZR_BINSTR_SetData(void* pContext, unsigned char* pszData, int nLen, BINSTR* pBinstr);

/** @} */

#endif
