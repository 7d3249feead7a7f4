#ifndef QUILLGATE_API_H
#define QUILLGATE_API_H

/**
 * @file
 * Rules that hold for the whole interface.
 *
 * - Every function that returns int returns 0 for success, else a code of returncodes.h or, where the
 *   function says so, the number that the cryptographic library answered. No exception leaves a function.
 * - Compiled as C++, a declaration names the typed symbol ("CertLoad(void*, BINSTR*)"); compiled as C, the
 *   plain symbol ("CertLoad"). The library exports both names of the same code.
 * - Lengths are in bytes. Text is NUL-terminated, in EUC-KR unless a field says UTF-8.
 * - A handle or context belongs to one thread at a time; nothing here takes a lock.
 */

/**
 * @def QUILLGATE_API
 * Marks what the library exports.
 *
 * @def QUILLGATE_PLAIN_API
 * Marks functions and globals that have the plain name alone, in C++ too.
 */

#if defined(__GNUC__)
#define QUILLGATE_API __attribute__((visibility("default")))
#else
#define QUILLGATE_API
#endif

#ifdef __cplusplus
#define QUILLGATE_PLAIN_API extern "C" QUILLGATE_API
#else
#define QUILLGATE_PLAIN_API extern QUILLGATE_API
#include <stdbool.h>
#endif

#endif
