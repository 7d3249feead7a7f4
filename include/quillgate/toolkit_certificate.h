#ifndef QUILLGATE_TOOLKIT_CERTIFICATE_H
#define QUILLGATE_TOOLKIT_CERTIFICATE_H

/**
 * @file
 * Toolkit access: certificates.
 */

#include "quillgate/api.h"
#include "quillgate/binstr.h"

/**
 * @defgroup certificate Certificates
 * @ingroup toolkit
 *
 * The getters read the certificate that CertLoad put into the context. nAllocLen is the size of the caller's
 * buffer in bytes; the library stays within it and ends the text with a NUL. 2048 is enough for every text,
 * 50 for a date.
 * @{
 */

/** Values of nRange of CertSetVerifyEnv. */
enum
{
    QG_RANGE_PATH = 0, /**< revocation of the whole path but its trusted end */
    QG_RANGE_CERTIFICATE =
        1, /**< revocation of the given certificate alone; its path is verified all the same */
};

/** Values of nCheck of CertSetVerifyEnv on the ZR side: where revocation is looked up. */
enum
{
    QG_CHECK_ZRTK_NONE = 0,        /**< nowhere */
    QG_CHECK_ZRTK_OCSP = 1,        /**< status responders */
    QG_CHECK_ZRTK_CRL = 2,         /**< revocation lists; the setting of a new context */
    QG_CHECK_ZRTK_OCSP_OR_CRL = 3, /**< responders; lists when they give no verdict */
};

/** Values of nCheck of CertSetVerifyEnv on the GPKI side. */
enum
{
    QG_CHECK_GPKI_NONE = 0,        /**< nowhere */
    QG_CHECK_GPKI_CRL = 1,         /**< revocation lists; the setting of a new context */
    QG_CHECK_GPKI_OCSP = 2,        /**< status responders */
    QG_CHECK_GPKI_OCSP_OR_CRL = 3, /**< responders; lists when they give no verdict */
};

/** Values of nCertType of CertVerify and CertVerify2. */
enum
{
    QG_VERIFY_ANY = 1,        /**< any certificate */
    QG_VERIFY_SIGNING = 2,    /**< one with digitalSignature or nonRepudiation */
    QG_VERIFY_ENCRYPTION = 3, /**< one with keyEncipherment or keyAgreement */
    QG_VERIFY_AUTHORITY = 4,  /**< one of an authority */
};

/** Reasons of a revocation (RFC 5280, section 5.3.1), of pRevReason and for nReasonCode. */
enum
{
    QG_REVOKED_NOT = -1,                  /**< not revoked, or no reason given */
    QG_REVOKED_UNSPECIFIED = 0,           /**< unspecified */
    QG_REVOKED_KEY_COMPROMISE = 1,        /**< the key has become known */
    QG_REVOKED_CA_COMPROMISE = 2,         /**< an authority's key has become known */
    QG_REVOKED_AFFILIATION_CHANGED = 3,   /**< the subject's data have changed */
    QG_REVOKED_SUPERSEDED = 4,            /**< replaced by another certificate */
    QG_REVOKED_CESSATION = 5,             /**< no longer needed */
    QG_REVOKED_HOLD = 6,                  /**< suspended */
    QG_REVOKED_REMOVED = 8,               /**< no longer suspended */
    QG_REVOKED_PRIVILEGE_WITHDRAWN = 9,   /**< a privilege in it has been withdrawn */
    QG_REVOKED_AUTHORITY_COMPROMISE = 10, /**< an attribute authority's key has become known */
};

/**
 * Puts one DER certificate into the context, for the getters.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCert certificate, DER
 * @return 0, a code that all share, or 10004 without pBinCert
 */
QUILLGATE_API int CertLoad(void* pContext, BINSTR* pBinCert);

/**
 * Takes the loaded certificate out again.
 *
 * @param pContext context of ZR_Initalize
 * @return 0 or a code that all share
 */
QUILLGATE_API int CertUnLoad(void* pContext);

/**
 * Writes the unique identifier.
 *
 * @param pContext context of ZR_Initalize
 * @param nAllocLen size of the buffer in bytes
 * @param[out] pszUID common name nearest the leaf
 * @return 0, a code that all share, or 10003 without pszUID
 */
QUILLGATE_API int CertGetUID(void* pContext, int nAllocLen, char* pszUID);

/**
 * Writes the version number of the loaded certificate in decimal digits. The text is written when the
 * library fails, too, and then says 0 or what the library left.
 *
 * @param pContext context of ZR_Initalize
 * @param nAllocLen size of the buffer in bytes
 * @param[out] pszVersion digits, "3"
 * @return 0, a code that all share, or 10003 without pszVersion; 10005, nothing written, when the library
 *         lacks the operation
 */
QUILLGATE_API int CertGetVersion(void* pContext, int nAllocLen, char* pszVersion);

/**
 * Writes the serial number.
 *
 * @param pContext context of ZR_Initalize
 * @param nAllocLen size of the buffer in bytes
 * @param[out] pszSerialNum lower-case hexadecimal
 * @return 0, a code that all share, or 10003 without pszSerialNum
 */
QUILLGATE_API int CertGetSerialNum(void* pContext, int nAllocLen, char* pszSerialNum);

/**
 * Writes the signature algorithm's name.
 *
 * @param pContext context of ZR_Initalize
 * @param nAllocLen size of the buffer in bytes
 * @param[out] pszSignAlg name, as sha256WithRSAEncryption
 * @return 0, a code that all share, or 10003 without pszSignAlg
 */
QUILLGATE_API int CertGetSignatureAlgorithm(void* pContext, int nAllocLen, char* pszSignAlg);

/**
 * Writes the issuer name.
 *
 * @param pContext context of ZR_Initalize
 * @param nAllocLen size of the buffer in bytes
 * @param[out] pszIssuerName name, leaf first, as cn=...,ou=...,o=...,c=kr
 * @return 0, a code that all share, or 10003 without pszIssuerName
 */
QUILLGATE_API int CertGetIssuerName(void* pContext, int nAllocLen, char* pszIssuerName);

/**
 * Writes start and end of the validity. The ZR side asks for 25 bytes or more in both (10004) and lets the
 * library write both. The GPKI side writes pszFrom without a terminator, so clear it first; both are cut to
 * their sizes.
 *
 * @param pContext context of ZR_Initalize
 * @param nFromAllocLen size of pszFrom in bytes
 * @param[out] pszFrom start, YYYY-MM-DD hh:mm:ss, local
 * @param nToAllocLen size of pszTo in bytes
 * @param[out] pszTo end, in the same form
 * @return 0, a code that all share, or 10003 without pszFrom or pszTo; on the ZR side 10004 for
 *         nFromAllocLen below 25 or nToAllocLen below 25; on the GPKI side 10004 when the library's text
 *         has no "~" between the dates
 */
QUILLGATE_API int CertGetValidity(void* pContext, int nFromAllocLen, char* pszFrom, int nToAllocLen,
                                  char* pszTo);

/**
 * Writes the subject name.
 *
 * @param pContext context of ZR_Initalize
 * @param nAllocLen size of the buffer in bytes
 * @param[out] pszSubjectName name, leaf first, as cn=...,ou=...,o=...,c=kr
 * @return 0, a code that all share, or 10003 without pszSubjectName
 */
QUILLGATE_API int CertGetSubjectName(void* pContext, int nAllocLen, char* pszSubjectName);

/**
 * Writes the public key, at most nAllocLen bytes, into pszPubKey. szPubKeyAlg takes exactly 49 bytes of the
 * algorithm's name and szPubKeyLen the length text, exactly 19 bytes on the GPKI side: give them 50 bytes
 * each. The ZR side also sets pBinKeyInfo to the key's DER form; the GPKI side leaves it alone.
 *
 * @param pContext context of ZR_Initalize
 * @param[out] szPubKeyAlg name, as rsaEncryption; at least 50 bytes
 * @param[out] szPubKeyLen length, as "2048 Bits"; at least 50 bytes
 * @param nAllocLen size of pszPubKey in bytes
 * @param[out] pszPubKey key in hexadecimal
 * @param[out] pBinKeyInfo SubjectPublicKeyInfo, DER; ZR side only
 * @return 0, a code that all share, or 10003 without pszPubKey; 10004 without szPubKeyAlg or szPubKeyLen
 *         when there is a text for it, and on the ZR side without pBinKeyInfo
 */
QUILLGATE_API int CertGetPubKeyInfo(void* pContext, char* szPubKeyAlg, char* szPubKeyLen, int nAllocLen,
                                    char* pszPubKey, BINSTR* pBinKeyInfo);

/**
 * Writes the signature value.
 *
 * @param pContext context of ZR_Initalize
 * @param nAllocLen size of the buffer in bytes
 * @param[out] pszSignature lower-case hexadecimal
 * @return 0, a code that all share, or 10003 without pszSignature
 */
QUILLGATE_API int CertGetSignature(void* pContext, int nAllocLen, char* pszSignature);

/**
 * Writes the key usage words.
 *
 * @param pContext context of ZR_Initalize
 * @param nAllocLen size of the buffer in bytes
 * @param[out] pszKeyUsage words, as "digitalSignature, nonRepudiation"
 * @return 0, a code that all share, or 10003 without pszKeyUsage
 */
QUILLGATE_API int CertGetKeyUsage(void* pContext, int nAllocLen, char* pszKeyUsage);

/**
 * Writes the basic constraints.
 *
 * @param pContext context of ZR_Initalize
 * @param nAllocLen size of the buffer in bytes
 * @param[out] pszBasicConstraints "CA: TRUE, pathLen: 0"
 * @return 0, a code that all share, or 10003 without pszBasicConstraints
 */
QUILLGATE_API int CertGetBasicConstraints(void* pContext, int nAllocLen, char* pszBasicConstraints);

/**
 * Writes the certificate policies.
 *
 * @param pContext context of ZR_Initalize
 * @param nAllocLen size of the buffer in bytes
 * @param[out] pszCertPolicy a line for each identifier, CPS and notice
 * @return 0, a code that all share, or 10003 without pszCertPolicy
 */
QUILLGATE_API int CertGetCertPolicy(void* pContext, int nAllocLen, char* pszCertPolicy);

/**
 * Writes the policy OID, blanks between its arcs.
 *
 * @param pContext context of ZR_Initalize
 * @param nAllocLen size of the buffer in bytes
 * @param[out] pszCertPolicyID "1 2 410 200005 1 1 4"; several are joined by a comma
 * @return 0, a code that all share, or 10003 without pszCertPolicyID
 */
QUILLGATE_API int CertGetPolicyID(void* pContext, int nAllocLen, char* pszCertPolicyID);

/**
 * Writes the extended key usage.
 *
 * @param pContext context of ZR_Initalize
 * @param nAllocLen size of the buffer in bytes
 * @param[out] pszExtKeyUsage names of the purposes, joined by ", "
 * @return 0, a code that all share, or 10003 without pszExtKeyUsage
 */
QUILLGATE_API int CertGetExtKeyUsage(void* pContext, int nAllocLen, char* pszExtKeyUsage);

/**
 * Writes the subject alternative name.
 *
 * @param pContext context of ZR_Initalize
 * @param nAllocLen size of the buffer in bytes
 * @param[out] pszSubAltName a line for each name, the identity value among them
 * @return 0, a code that all share, or 10003 without pszSubAltName
 */
QUILLGATE_API int CertGetSubjectAltName(void* pContext, int nAllocLen, char* pszSubAltName);

/**
 * Writes the issuer alternative name. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param nAllocLen size of the buffer in bytes
 * @param[out] pszIssuerAltName a line for each name
 * @return 0, a code that all share, or 10003 without pszIssuerAltName
 */
QUILLGATE_API int CertGetIssuerAltName(void* pContext, int nAllocLen, char* pszIssuerAltName);

/**
 * Writes the authority key identifier.
 *
 * @param pContext context of ZR_Initalize
 * @param nAllocLen size of the buffer in bytes
 * @param[out] pszAKI lines "KeyID: ...", "Issuer: ...", "SerialNumber: ..."
 * @return 0, a code that all share, or 10003 without pszAKI
 */
QUILLGATE_API int CertGetAuthKeyID(void* pContext, int nAllocLen, char* pszAKI);

/**
 * Writes the subject key identifier.
 *
 * @param pContext context of ZR_Initalize
 * @param nAllocLen size of the buffer in bytes
 * @param[out] pszSKI lower-case hexadecimal
 * @return 0, a code that all share, or 10003 without pszSKI
 */
QUILLGATE_API int CertGetSubKeyID(void* pContext, int nAllocLen, char* pszSKI);

/**
 * Writes the CRL distribution points.
 *
 * @param pContext context of ZR_Initalize
 * @param nAllocLen size of the buffer in bytes
 * @param[out] pszCRLDP a line for each address or directory name
 * @return 0, a code that all share, or 10003 without pszCRLDP
 */
QUILLGATE_API int CertGetCRLDP(void* pContext, int nAllocLen, char* pszCRLDP);

/**
 * Writes the URL of the CRL distribution point. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param nAllocLen size of the buffer in bytes
 * @param[out] pszCRLDPURL a line for each address
 * @return 0, a code that all share, or 10003 without pszCRLDPURL
 */
QUILLGATE_API int CertGetCRLDPURL(void* pContext, int nAllocLen, char* pszCRLDPURL);

/**
 * Writes the authority information access.
 *
 * @param pContext context of ZR_Initalize
 * @param nAllocLen size of the buffer in bytes
 * @param[out] pszAIA a line for each address, status responders first
 * @return 0, a code that all share, or 10003 without pszAIA
 */
QUILLGATE_API int CertGetAIA(void* pContext, int nAllocLen, char* pszAIA);

/**
 * Sets *nRemainDays to the days that pBinCert, not the loaded certificate, has left.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCert certificate, DER
 * @param[out] nRemainDays days to the end of validity, below 0 when it has passed
 * @return 0, a code that all share, or 10003 without pBinCert (at least 1 byte); on the ZR side 10004
 *         without nRemainDays
 */
QUILLGATE_API int CertGetRemainDays(void* pContext, BINSTR* pBinCert, int* nRemainDays);

/**
 * Adds pBinCert to the list pBinCerts. GPKI side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCert certificate to add, DER
 * @param[in,out] pBinCerts list of certificates, may be empty
 * @return 0, a code that all share, or 10004 without pBinCert (at least 1 byte)
 */
QUILLGATE_API int CertAddCert(void* pContext, BINSTR* pBinCert, BINSTR* pBinCerts);

/**
 * Sets *nCnt to the number of certificates in the list. GPKI side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCerts list of certificates
 * @param[out] nCnt number of certificates
 * @return 0, a code that all share, or 10004 without pBinCerts (at least 1 byte)
 */
QUILLGATE_API int CertGetCertCount(void* pContext, BINSTR* pBinCerts, int* nCnt);

/**
 * Takes certificate nIndex out of the list. pBinCert must hold data at the call. GPKI side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCerts list of certificates
 * @param nIndex position, from 0
 * @param[out] pBinCert certificate, DER; must hold data at the call
 * @return 0, a code that all share, or 10003 without pBinCerts (at least 1 byte); on the GPKI side 10004
 *         without pBinCert
 */
QUILLGATE_API int CertGetCert(void* pContext, BINSTR* pBinCerts, int nIndex, BINSTR* pBinCert);

/**
 * Adds a trust anchor to the context.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinTrustedCert trusted certificate, DER
 * @return 0, a code that all share, or 10004 without pBinTrustedCert (at least 1 byte)
 */
QUILLGATE_API int CertAddTrustedCert(void* pContext, BINSTR* pBinTrustedCert);

/**
 * Sets what CertVerify applies: range and checks, the cache, the reference time, the responder. The ZR side
 * ignores pszTime.
 *
 * @param pContext context of ZR_Initalize
 * @param nRange QG_RANGE_...
 * @param nCheck QG_CHECK_ZRTK_... or QG_CHECK_GPKI_..., as the side
 * @param bUseCache whether to keep what servers gave until the next call
 * @param pszTime reference time, local YYYY-MM-DD hh:mm:ss; null or empty: now
 * @param pszOCSPURL responder to ask in place of the certificates' own; null or empty: none
 * @return 0 or a code that all share
 */
QUILLGATE_API int CertSetVerifyEnv(void* pContext, int nRange, int nCheck, bool bUseCache, char* pszTime,
                                   char* pszOCSPURL);

/**
 * Sets the reference time, ARL and CRL for CertVerify. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pszTime reference time, local YYYY-MM-DD hh:mm:ss; empty: now
 * @param pBinARL revocation list of authorities, DER; may be empty
 * @param pbinCRL revocation list, DER; may be empty
 * @return 0, a code that all share, or on the ZR side 10004 without pszTime and for a null pBinARL or
 *         pbinCRL
 */
QUILLGATE_API int CertSetVerifyEnv2(void* pContext, char* pszTime, BINSTR* pBinARL, BINSTR* pbinCRL);

/**
 * Verifies pBinCert; bSign asks for a status request signed with pBinMyCert and pBinMyPriKey. The ZR side
 * ignores pszConfFilePath.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCert certificate, DER
 * @param nCertType QG_VERIFY_...: what the certificate must be for
 * @param pszCertPolices policies the path must be good for one of; null or empty: any
 * @param pszConfFilePath configuration file that names directories; null or empty: that of the context
 * @param bSign whether to sign the request
 * @param pBinMyCert certificate of whoever asks, DER
 * @param pBinMyPriKey its key, plain PKCS#8 DER
 * @return 0, a code that all share, or 10004 without pBinCert (at least 1 byte)
 */
QUILLGATE_API int CertVerify(void* pContext, BINSTR* pBinCert, int nCertType, char* pszCertPolices,
                             char* pszConfFilePath, bool bSign, BINSTR* pBinMyCert, BINSTR* pBinMyPriKey);

/**
 * Verifies pBinCert under policies and a password. ZR side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCert certificate, DER
 * @param nCertType QG_VERIFY_...: what the certificate must be for
 * @param pszCertPolicies policies the path must be good for one of; null or empty: any
 * @param pszPassword not looked at by the open toolkit
 * @return 0, a code that all share, or 10004 without pBinCert (at least 1 byte)
 */
QUILLGATE_API int CertVerify2(void* pContext, BINSTR* pBinCert, int nCertType, char* pszCertPolicies,
                              char* pszPassword);

/**
 * Has a validation service verify pBinCert.
 *
 * @param pContext context of ZR_Initalize
 * @param pszConfFilePath configuration file that names the service
 * @param pBinCert certificate, DER
 * @param pBinMyCert certificate of whoever asks, DER
 * @return 0, a code that all share, or 10003 without pszConfFilePath, pBinCert (at least 1 byte) or
 *         pBinMyCert (at least 1 byte)
 */
QUILLGATE_API int CertVerifyByIVS(void* pContext, char* pszConfFilePath, BINSTR* pBinCert,
                                  BINSTR* pBinMyCert);

/**
 * Asks a responder; sets the revocation date's text and the reason. GPKI side only.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCert certificate, DER
 * @param bSign whether to sign the request
 * @param pBinMyCert certificate of whoever asks, DER
 * @param pBinMyPriKey its key, plain PKCS#8 DER
 * @param pszURL responder to ask; empty: the certificate's own
 * @param[out] pBinOCSPSvrCert certificate that signed the answer, DER
 * @param[out] szRevocationDate date of revocation, 25 bytes; empty when there is none
 * @param[out] pRevReason QG_REVOKED_..., QG_REVOKED_NOT when there is none
 * @return 0, a code that all share, or 10004 without pBinCert (at least 1 byte), pBinMyCert (at least 1
 *         byte), pBinMyPriKey (at least 1 byte) or pszURL
 */
QUILLGATE_API int CertCheckStatByOCSP(void* pContext, BINSTR* pBinCert, bool bSign, BINSTR* pBinMyCert,
                                      BINSTR* pBinMyPriKey, char* pszURL, BINSTR* pBinOCSPSvrCert,
                                      char* szRevocationDate, int* pRevReason);

/**
 * Looks into the CRL; sets the revocation date's text and the reason.
 *
 * @param pContext context of ZR_Initalize
 * @param pBinCert certificate, DER
 * @param[out] szRevocationDate date of revocation, 25 bytes; empty when there is none
 * @param[out] pRevReason QG_REVOKED_..., QG_REVOKED_NOT when there is none
 * @return 0, a code that all share, or 10004 without pBinCert (at least 1 byte)
 */
QUILLGATE_API int CertCheckStatByCRL(void* pContext, BINSTR* pBinCert, char* szRevocationDate,
                                     int* pRevReason);

/** @} */

#endif
