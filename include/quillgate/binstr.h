#ifndef QUILLGATE_BINSTR_H
#define QUILLGATE_BINSTR_H

/**
 * @file
 * Records that the toolkit access and the cryptographic libraries share.
 */

/**
 * @addtogroup toolkit
 * @{
 */

/**
 * Byte string that crosses every level of the toolkit access and the cryptographic libraries' own interface.
 *
 * The record is the caller's and usually lies on its stack. The bytes belong to the library that filled it:
 * zero the record, call ZR_BINSTR_Create, fill it (ZR_BINSTR_SetData or any operation with an output
 * BINSTR*), use it, and release it with ZR_BINSTR_Delete through a context of the same side, never with free
 * or delete.
 */
typedef struct BINSTR
{
    unsigned char* pData; /**< first byte; null for an empty string */
    int nLen;             /**< bytes in pData */
} BINSTR;

/** Token description of the PKCS#11 family. Its layout belongs to the cryptographic libraries. */
typedef struct PKCS11_TOKEN_INFO PKCS11_TOKEN_INFO;

/** @} */

#endif
