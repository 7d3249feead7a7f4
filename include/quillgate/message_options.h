#ifndef QUILLGATE_MESSAGE_OPTIONS_H
#define QUILLGATE_MESSAGE_OPTIONS_H

/**
 * @file
 * Options of messages.
 */

/**
 * @addtogroup cms
 * @{
 */

/**
 * Bits to be added, as the open toolkit understands them: for nOption of the CMS functions and for
 * CMSSetOption on the ZR side, for ZR_SetOption on the GPKI side. What is set holds for all messages that
 * follow, besides the nOption of a call. A bit that means nothing to a function changes nothing there; other
 * bits answer 1004.
 */
enum
{
    QG_CMS_DETACHED = 1,        /**< a signed message in memory does not carry its content */
    QG_CMS_NO_ATTRIBUTES = 2,   /**< the bare content is signed: no signing time */
    QG_CMS_NO_CERTIFICATES = 4, /**< the signer's certificate is left out; a verifier must have it */
    QG_CMS_AUTHORITIES = 8,     /**< the certificates of ZR_SetCaPubs go into the signed message */
    QG_CMS_VERIFY_SIGNER = 16, /**< signers' certificates are verified, as CertVerify does with nCertType 2 */
};

/** @} */

#endif
