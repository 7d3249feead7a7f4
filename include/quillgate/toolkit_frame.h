#ifndef QUILLGATE_TOOLKIT_FRAME_H
#define QUILLGATE_TOOLKIT_FRAME_H

/*
 * Toolkit access: the context, its version, options and error text, and byte strings.
 *
 * ZR_Initalize loads a library and makes the context that every other function of the toolkit_*.h headers
 * takes first. nAPIType chooses the side: TOOLKIT_ZRTK the ZR side, the main toolkit; TOOLKIT_GPKI the GPKI
 * side, the government PKI library. A call goes to the operation of that side and its number comes back
 * unchanged.
 */

#include <time.h>

#include "quillgate/api.h"
#include "quillgate/binstr.h"

/*
 * Starts a context in *pContext, which must be null or a context of an earlier call, and loads the library
 * from pszWorkDir, of which at most 259 bytes are used. sofilename is the file name of the ZR side's library;
 * null means libZRCToolkitV30.so. The GPKI side always loads libgpkiapi_v15.so. On failure of the library the
 * context exists all the same, answers ZR_GetErrInfo2, and must be ended with ZR_Finish. 0, 10001 (null
 * pContext), 20001 (nAPIType other than 0 and 1), 20002 (null or empty pszWorkDir), 10003, 20011 or 20012
 * (library missing), 10005 (not such a library), the library's own number.
 */
QUILLGATE_API int ZR_Initalize(void** pContext, int nAPIType, char* pszWorkDir, char* sofilename);

/* Ends a context and unloads its library; null is ignored. The caller then sets its own pointer to null. */
QUILLGATE_API void ZR_Finish(void* pContext);

/*
 * Asks the library for the text of its last failure and copies at most nAllocLen bytes of it, without a
 * terminator when the text is longer: clear the buffer first. The first 8 bytes of pszErrorMsg are always
 * zeroed, so give it 8 bytes or more. 10004 (ZR side) or 10003 (GPKI side) without pszErrorMsg; 10004 for a
 * negative nAllocLen; 20011 or 20012 while the library is not loaded; else the library's answer.
 */
QUILLGATE_API int ZR_GetErrInfo(void* pContext, int nAllocLen, char* pszErrorMsg);

/*
 * Copies the text kept from the last failure of this context, at most nAllocLen bytes and without a
 * terminator when it is longer; asks no library, so it answers after a failed ZR_Initalize too. Without such
 * a text pszErrorMsg stays untouched. A success does not clear the text. 0, 10001.
 */
QUILLGATE_API int ZR_GetErrInfo2(void* pContext, int nAllocLen, char* pszErrorMsg);

/*
 * Writes the library's version text. The ZR side does not look at nAllocLen, zeroes the first 8 bytes and
 * lets the library write what it has: give it 1024 bytes. 10004 without pszVersion on the ZR side.
 */
QUILLGATE_API int ZR_GetVersion(void* pContext, int nAllocLen, char* pszVersion);

/* Sets a library option. GPKI side only. */
QUILLGATE_API int ZR_SetOption(void* pContext, int nOption);

/*
 * Names the library's configuration file. The ZR side takes an empty text alone and refuses every path with
 * 10004; the GPKI side takes any text, 10004 without one. Hosts rely on both.
 */
QUILLGATE_API int ZR_SetConfFile(void* pContext, char* pszConfFilePath);

/* Hands the library a list of CA certificates. 10004 without pBinCaPubs. */
QUILLGATE_API int ZR_SetCaPubs(void* pContext, BINSTR* pBinCaPubs);

/* Takes the list of ZR_SetCaPubs back. */
QUILLGATE_API int ZR_FreeCaPubs(void* pContext);

/* Turns the library's text form of a time into *pTime. GPKI side only. 10004 without pszTime. */
QUILLGATE_API int ZR_Str2Time(void* pContext, char* pszTime, time_t* pTime);

/* Sets the hash algorithm of the context. */
QUILLGATE_API int ZR_SetHashAlg(void* pContext, int nHashAlg);

/* Prepares a byte string that was zeroed, before it is filled. 10004 without pBinstr. */
QUILLGATE_API int ZR_BINSTR_Create(void* pContext, BINSTR* pBinstr);

/*
 * Releases the bytes of a byte string that a context of the same side filled. 10004 without pBinstr; on the
 * ZR side also for an empty one, which holds nothing to release.
 */
QUILLGATE_API int ZR_BINSTR_Delete(void* pContext, BINSTR* pBinstr);

/*
 * Copies nLen bytes of pszData into a byte string; the library allocates them. 10004 without pszData or
 * pBinstr, and for nLen 0.
 */
QUILLGATE_API int ZR_BINSTR_SetData(void* pContext, unsigned char* pszData, int nLen, BINSTR* pBinstr);

#endif
