#ifndef QUILLGATE_TOOLKIT_CERTIFICATE_H
#define QUILLGATE_TOOLKIT_CERTIFICATE_H

/*
 * Toolkit access: certificates.
 *
 * The getters read the certificate that CertLoad put into the context. nAllocLen is the size of the caller's
 * buffer in bytes; the library stays within it and ends the text with a NUL. 2048 is enough for every text,
 * 50 for a date.
 */

#include "quillgate/api.h"
#include "quillgate/binstr.h"

/* Puts one DER certificate into the context, for the getters. 10004 without pBinCert. */
QUILLGATE_API int CertLoad(void* pContext, BINSTR* pBinCert);

/* Takes the loaded certificate out again. */
QUILLGATE_API int CertUnLoad(void* pContext);

/* Writes the unique identifier. 10003 without pszUID. */
QUILLGATE_API int CertGetUID(void* pContext, int nAllocLen, char* pszUID);

/*
 * Writes the version number of the loaded certificate in decimal digits. The text is written when the
 * library fails, too, and then says 0 or what the library left. 10003 without pszVersion; 10005, nothing
 * written, when the library lacks the operation.
 */
QUILLGATE_API int CertGetVersion(void* pContext, int nAllocLen, char* pszVersion);

/* Writes the serial number. 10003 without pszSerialNum. */
QUILLGATE_API int CertGetSerialNum(void* pContext, int nAllocLen, char* pszSerialNum);

/* Writes the signature algorithm's name. 10003 without pszSignAlg. */
QUILLGATE_API int CertGetSignatureAlgorithm(void* pContext, int nAllocLen, char* pszSignAlg);

/* Writes the issuer name. 10003 without pszIssuerName. */
QUILLGATE_API int CertGetIssuerName(void* pContext, int nAllocLen, char* pszIssuerName);

/*
 * Writes start and end of the validity. The ZR side asks for 25 bytes or more in both (10004) and lets the
 * library write both. The GPKI side writes pszFrom without a terminator, so clear it first; both are cut to
 * their sizes; 10004 when the library's text has no "~" between the dates. 10003 without pszFrom or pszTo.
 */
QUILLGATE_API int CertGetValidity(void* pContext, int nFromAllocLen, char* pszFrom, int nToAllocLen,
                                  char* pszTo);

/* Writes the subject name. 10003 without pszSubjectName. */
QUILLGATE_API int CertGetSubjectName(void* pContext, int nAllocLen, char* pszSubjectName);

/*
 * Writes the public key, at most nAllocLen bytes, into pszPubKey. szPubKeyAlg takes exactly 49 bytes of the
 * algorithm's name and szPubKeyLen the length text, exactly 19 bytes on the GPKI side: give them 50 bytes
 * each. The ZR side also sets pBinKeyInfo to the key's DER form; the GPKI side leaves it alone. 10003
 * without pszPubKey; 10004 without szPubKeyAlg or szPubKeyLen when there is a text for it.
 */
QUILLGATE_API int CertGetPubKeyInfo(void* pContext, char* szPubKeyAlg, char* szPubKeyLen, int nAllocLen,
                                    char* pszPubKey, BINSTR* pBinKeyInfo);

/* Writes the signature value. 10003 without pszSignature. */
QUILLGATE_API int CertGetSignature(void* pContext, int nAllocLen, char* pszSignature);

/* Writes the key usage words. 10003 without pszKeyUsage. */
QUILLGATE_API int CertGetKeyUsage(void* pContext, int nAllocLen, char* pszKeyUsage);

/* Writes the basic constraints. 10003 without pszBasicConstraints. */
QUILLGATE_API int CertGetBasicConstraints(void* pContext, int nAllocLen, char* pszBasicConstraints);

/* Writes the certificate policies. 10003 without pszCertPolicy. */
QUILLGATE_API int CertGetCertPolicy(void* pContext, int nAllocLen, char* pszCertPolicy);

/* Writes the policy OID, blanks between its arcs. 10003 without pszCertPolicyID. */
QUILLGATE_API int CertGetPolicyID(void* pContext, int nAllocLen, char* pszCertPolicyID);

/* Writes the extended key usage. 10003 without pszExtKeyUsage. */
QUILLGATE_API int CertGetExtKeyUsage(void* pContext, int nAllocLen, char* pszExtKeyUsage);

/* Writes the subject alternative name. 10003 without pszSubAltName. */
QUILLGATE_API int CertGetSubjectAltName(void* pContext, int nAllocLen, char* pszSubAltName);

/* Writes the issuer alternative name. ZR side only. 10003 without pszIssuerAltName. */
QUILLGATE_API int CertGetIssuerAltName(void* pContext, int nAllocLen, char* pszIssuerAltName);

/* Writes the authority key identifier. 10003 without pszAKI. */
QUILLGATE_API int CertGetAuthKeyID(void* pContext, int nAllocLen, char* pszAKI);

/* Writes the subject key identifier. 10003 without pszSKI. */
QUILLGATE_API int CertGetSubKeyID(void* pContext, int nAllocLen, char* pszSKI);

/* Writes the CRL distribution points. 10003 without pszCRLDP. */
QUILLGATE_API int CertGetCRLDP(void* pContext, int nAllocLen, char* pszCRLDP);

/* Writes the URL of the CRL distribution point. ZR side only. 10003 without pszCRLDPURL. */
QUILLGATE_API int CertGetCRLDPURL(void* pContext, int nAllocLen, char* pszCRLDPURL);

/* Writes the authority information access. 10003 without pszAIA. */
QUILLGATE_API int CertGetAIA(void* pContext, int nAllocLen, char* pszAIA);

/*
 * Sets *nRemainDays to the days that pBinCert, not the loaded certificate, has left. 10003 without pBinCert
 * (at least 1 byte); 10004 without nRemainDays on the ZR side.
 */
QUILLGATE_API int CertGetRemainDays(void* pContext, BINSTR* pBinCert, int* nRemainDays);

/* Adds pBinCert to the list pBinCerts. GPKI side only. 10004 without pBinCert (at least 1 byte). */
QUILLGATE_API int CertAddCert(void* pContext, BINSTR* pBinCert, BINSTR* pBinCerts);

/*
 * Sets *nCnt to the number of certificates in the list. GPKI side only. 10004 without pBinCerts (at least 1
 * byte).
 */
QUILLGATE_API int CertGetCertCount(void* pContext, BINSTR* pBinCerts, int* nCnt);

/*
 * Takes certificate nIndex out of the list. pBinCert must hold data at the call. GPKI side only. 10003
 * without pBinCerts (at least 1 byte); 10004 without pBinCert.
 */
QUILLGATE_API int CertGetCert(void* pContext, BINSTR* pBinCerts, int nIndex, BINSTR* pBinCert);

/* Adds a trust anchor to the context. 10004 without pBinTrustedCert (at least 1 byte). */
QUILLGATE_API int CertAddTrustedCert(void* pContext, BINSTR* pBinTrustedCert);

/*
 * Sets what CertVerify applies: range and checks, the cache, the reference time, the responder. The ZR side
 * ignores pszTime.
 */
QUILLGATE_API int CertSetVerifyEnv(void* pContext, int nRange, int nCheck, bool bUseCache, char* pszTime,
                                   char* pszOCSPURL);

/*
 * Sets the reference time, ARL and CRL for CertVerify. ZR side only. 10004 without pszTime, pBinARL,
 * pbinCRL.
 */
QUILLGATE_API int CertSetVerifyEnv2(void* pContext, char* pszTime, BINSTR* pBinARL, BINSTR* pbinCRL);

/*
 * Verifies pBinCert; bSign asks for a status request signed with pBinMyCert and pBinMyPriKey. The ZR side
 * ignores pszConfFilePath. 10004 without pBinCert (at least 1 byte).
 */
QUILLGATE_API int CertVerify(void* pContext, BINSTR* pBinCert, int nCertType, char* pszCertPolices,
                             char* pszConfFilePath, bool bSign, BINSTR* pBinMyCert, BINSTR* pBinMyPriKey);

/* Verifies pBinCert under policies and a password. ZR side only. 10004 without pBinCert (at least 1 byte). */
QUILLGATE_API int CertVerify2(void* pContext, BINSTR* pBinCert, int nCertType, char* pszCertPolicies,
                              char* pszPassword);

/*
 * Has a validation service verify pBinCert. 10003 without pszConfFilePath, pBinCert (at least 1 byte),
 * pBinMyCert (at least 1 byte).
 */
QUILLGATE_API int CertVerifyByIVS(void* pContext, char* pszConfFilePath, BINSTR* pBinCert,
                                  BINSTR* pBinMyCert);

/*
 * Asks a responder; sets the revocation date's text and the reason. GPKI side only. 10004 without pBinCert
 * (at least 1 byte), pBinMyCert (at least 1 byte), pBinMyPriKey (at least 1 byte), pszURL.
 */
QUILLGATE_API int CertCheckStatByOCSP(void* pContext, BINSTR* pBinCert, bool bSign, BINSTR* pBinMyCert,
                                      BINSTR* pBinMyPriKey, char* pszURL, BINSTR* pBinOCSPSvrCert,
                                      char* szRevocationDate, int* pRevReason);

/*
 * Looks into the CRL; sets the revocation date's text and the reason. 10004 without pBinCert (at least 1
 * byte).
 */
QUILLGATE_API int CertCheckStatByCRL(void* pContext, BINSTR* pBinCert, char* szRevocationDate,
                                     int* pRevReason);

#endif
