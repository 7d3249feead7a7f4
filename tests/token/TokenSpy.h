#pragma once

#include <openssl/types.h>
#include <p11-kit/pkcs11.h>

/** What the module of TokenSpy.cpp looks at and does. One for the process, given by tokenSpy(). */
struct TokenSpy
{
    OSSL_LIB_CTX* expected = nullptr; /**< the default context that callers leave to the module; null: any */
    unsigned strangers = 0;           /**< calls that found another */
    CK_RV answer = CKR_OK;            /**< what signing, decrypting and agreeing answer instead of success */
    CK_MECHANISM_TYPE lacks = ~0UL;   /**< a mechanism that it says not to have */
    bool cutsZeros = false;           /**< whether what it decrypts loses zeros at its beginning */
    bool damages = false;             /**< whether it alters the last byte of what it signs and decrypts */
    bool lengthens = false;           /**< whether that becomes longer than any of its keys */
};
