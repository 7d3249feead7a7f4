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
    unsigned spares = 0;              /**< signatures that it makes before it answers so */
    CK_ULONG measure = 0;             /**< what it says when the length of a result is asked for; 0: right */
    CK_ULONG claim = 0;               /**< what it says that a result has; 0: the right length */
    CK_ULONG attributeMeasure = 0;    /**< the same of attributes */
    CK_ULONG attributeClaim = 0;
    unsigned agreed = 0;      /**< secrets of agreements that it still holds */
    unsigned room = ~0U;      /**< objects that may still be written before it is full */
    bool plugs = false;       /**< whether one more slot is there when the slots are asked for */
    bool isProtected = false; /**< whether its tokens are write-protected */
    bool counts = false;      /**< whether it tells how many sessions are open; SoftHSM doesn't */
    unsigned sessions = 0;    /**< which are so many */
    unsigned ends = 0;        /**< how often it has been ended */
    unsigned slowness = 0;    /**< milliseconds that it takes to make a pair */
};
