#ifndef QUILLGATE_RECORDS_H
#define QUILLGATE_RECORDS_H

/**
 * @file
 * Records of the certificate list service.
 *
 * Plain, fixed-size, shared byte for byte with hosts that were
 * built long ago. Texts are NUL-terminated and hold at most the array's size less one; a longer source is
 * cut silently. Certificate and key fields are DER images with a length beside them, not text. Texts are
 * EUC-KR. A host clears a record before it hands it in: many fields are written only when there is a value.
 */

#include <stddef.h>

#include "quillgate/api.h"

/**
 * @defgroup records Records and their values
 * @{
 */

/** CA families: values of CERTINFO::nCertType and bits of LOADCERTOPT::nCertCAType. */
enum
{
    CERTTYPE_NONE = 0, /**< memory and PFX records */
    CERTTYPE_GPKI = 1, /**< tree GPKI */
    CERTTYPE_NPKI = 2, /**< tree NPKI */
    CERTTYPE_MPKI = 4, /**< tree MPKI */
};

/** Values of CERTINFO::nCertState. Disk records take the second family, memory records the first. */
enum
{
    CERTSTATE_VALID_1024 = 0,   /**< valid */
    CERTSTATE_RENEWAL_1024 = 1, /**< about to expire */
    CERTSTATE_EXPIRED_1024 = 2, /**< expired */
    CERTSTATE_VALID = 3,        /**< valid */
    CERTSTATE_RENEWAL = 4,      /**< about to expire */
    CERTSTATE_EXPIRED = 5,      /**< expired */
};

/** Media, as in CLP_SetMediaType. 3, 4, 5 and 7 are refused on this platform. */
enum
{
    MEDIA_NONE = 0,           /**< none selected */
    MEDIA_HARDDISK = 1,       /**< hard disk */
    MEDIA_REMOVABLE = 2,      /**< removable drive */
    MEDIA_SMARTCARD = 3,      /**< smart card, refused */
    MEDIA_PKCS11 = 4,         /**< PKCS#11 token, refused */
    MEDIA_SERVICE_MEMORY = 5, /**< memory certificate of a service, refused */
    MEDIA_MEMORY = 6,         /**< certificates of CLP_SetMemoryCert */
    MEDIA_USIM = 7,           /**< USIM, refused */
    MEDIA_PFX = 8,            /**< PFX file of CLP_SetPFXInfo */
};

/** Values of LOADCERTOPT::nCertUsageType. Others demand nothing. */
enum
{
    CERTUSAGE_KM_PAIR = 2 /**< demands a key-management certificate and key */
};

/** Toolkits, as in LOADOPT::nLibAPIType and ZR_Initalize. */
enum
{
    TOOLKIT_ZRTK = 0, /**< main toolkit, the ZR side */
    TOOLKIT_GPKI = 1  /**< government PKI library, the GPKI side */
};

/** One certificate with its keys and all values shown to the user. */
typedef struct tagCERTINFO
{
    int nCertType;               /**< CA family of its directory, CERTTYPE_... */
    char szSignCert[4096];       /**< signing certificate, DER */
    char szSignKey[4096];        /**< signing key, plain PKCS#8; empty until a decrypt operation ran */
    char szKmCert[4096];         /**< key-management certificate, DER */
    char szKmKey[4096];          /**< key-management key, plain, filled like szSignKey */
    int nSignCertLen;            /**< bytes in szSignCert; the stores cut to 4095 */
    int nSignKeyLen;             /**< bytes in szSignKey */
    int nKmCertLen;              /**< bytes in szKmCert */
    int nKmKeyLen;               /**< bytes in szKmKey */
    char szEncSignKey[4096];     /**< signing key as stored on the medium, encrypted */
    char szEncKmKey[4096];       /**< key-management key as stored, encrypted */
    int nEncSignKeyLen;          /**< bytes in szEncSignKey */
    int nEncKmKeyLen;            /**< bytes in szEncKmKey */
    char szVersion[1024];        /**< "V3" */
    char szSerialNumber[2048];   /**< serial number, text of the toolkit */
    char szAlgorithm[1024];      /**< signature algorithm, "sha256WithRSAEncryption" */
    char szSubjectDN[1024];      /**< subject name, "cn=...,ou=...,o=...,c=kr" */
    char szSubjectCN[1024];      /**< subject common name */
    char szPubKey[2048];         /**< public key text */
    char szPubKeyAlgo[1024];     /**< public key algorithm */
    char szPubKeyLen[1024];      /**< key length, "2048 Bits" */
    char szKeyUsage[1024];       /**< key usage words, as "digitalSignature", "crlSign" */
    char szCrlDp[1024];          /**< CRL distribution points */
    char szCertPolicy[1024];     /**< certificate policy text */
    char szCertPolicyIDS[1024];  /**< policy OID, arcs separated by blanks */
    char szIssuerDN[1024];       /**< issuer name */
    char szIssuerName[1024];     /**< issuer's display name from the issuer configuration, else its CN */
    char szIssuerCN[1024];       /**< CN cut out of szIssuerDN */
    char szDivision[1024];       /**< name of the purpose, else the dotted policy OID */
    char szSignCertPath[1024];   /**< certificate file on a disk medium; empty for memory and PFX */
    char szSignKeyPath[1024];    /**< key file, likewise */
    char szKmCertPath[1024];     /**< key-management certificate file; may be empty */
    char szKmKeyPath[1024];      /**< key-management key file; may be empty */
    char szBefore[1024];         /**< start of validity, "YYYY-MM-DD hh:mm:ss", local time */
    char szAfter[1024];          /**< end of validity, likewise */
    char szBeforeDay[1024];      /**< start of validity, date alone */
    char szAfterDay[1024];       /**< end of validity, date alone */
    char szKeyRandom[1024];      /**< random value out of the private key, bytes */
    int nKeyRandomLen;           /**< bytes in szKeyRandom */
    char szSubjectAltName[1024]; /**< subject alternative name text */
    char szAuthKeyID[1024];      /**< authority key identifier text */
    char szSubKeyID[1024];       /**< subject key identifier text */
    char szAIA[1024];            /**< authority information access text */
    int nCertbit1024;            /**< old 1024-bit class; no store sets it */
    int nCertState;              /**< CERTSTATE_... */
    int nRemainDay;              /**< days left; 0 unless about to expire */
    int nCertVerifyState;        /**< 1 when expired, else 0 */
    int nMediaType;              /**< MEDIA_... of the store when the record was parsed */
    char szDriveInfo[1024];      /**< mount path, in the first record of a removable list alone */
    char szLibPath[1024];        /**< library of a token; not filled on this platform */
    char szPinNumber[2048];      /**< PIN of a token; not filled on this platform */
    char szCertPassword[2048];   /**< password that last opened the key; kept until the list is freed */
} CERTINFO;

/** What a host passes to CLP_Initalize. */
typedef struct tagLOADOPT
{
    int nLibAPIType;         /**< TOOLKIT_ZRTK or TOOLKIT_GPKI; others give 20001 inside, 30001 outside */
    char szWorkDir[1024];    /**< directory of the toolkits and configuration files; required */
    void* pPKCS11Context;    /**< reserved; never read */
    char szConfigPath[1024]; /**< issuer configuration; empty: IssuerOid.conf of the work directory */
    char szConfigData[8000]; /**< kept, not read further */
} LOADOPT;

/** Certificate filter, given by CLP_SetType. An empty text in a later call keeps the earlier filter. */
typedef struct tagLOADCERTOPT
{
    int nCertCAType;              /**< CERTTYPE_... bits of the trees to walk */
    int nCertUsageType;           /**< CERTUSAGE_KM_PAIR demands both pairs; others demand nothing */
    char szCertPolicyIDs[10000];  /**< OIDs with blanks between arcs, each closed by '|'; empty: no filter */
    char szCertSerial[1024];      /**< only this serial number, case ignored */
    char szCertKmSerial[1024];    /**< carried, not used */
    char szCertDN[1024];          /**< only this subject; the memory store then refuses every certificate */
    char szIssuerDN[1024];        /**< when set, every certificate is refused */
    bool bExpiredCertHide;        /**< leave expired certificates out */
    bool bCDROMHide;              /**< leave CD-ROM drives out of drive lists */
    bool bTokenBSCertHide;        /**< stored; nothing acts on it */
    int nSMCardType;              /**< stored; nothing reads it on this platform */
    int nPhoneType;               /**< likewise */
    int nUbikeyVersion;           /**< likewise */
    char szUbikeyWParam[1024];    /**< likewise */
    char szUbikeylParam[1024];    /**< likewise */
    bool bPrivateO;               /**< ignored on this platform */
    char szSetPrivateCertO[1024]; /**< likewise */
    char szAddPrivateCertPath[2048]; /**< likewise */
} LOADCERTOPT;

/** Settings of the branded mobile certificate service, for CLP_SetBSCertType, which answers 10005. */
typedef struct tagBSCERTOPT
{
    char szIP[1024];              /**< server address */
    int nPort;                    /**< server port */
    char szSiteDomain[1024];      /**< site domain */
    bool bPhoneSignOrgView;       /**< show the signing organisation on the phone */
    bool bVerify;                 /**< verify */
    unsigned long ulRAONSiteCode; /**< site code of the RAON service, 64 bits */
    char szSumoinSvrIP[1024];     /**< Sumoin server address */
    int nSumoinSvrPort;           /**< Sumoin server port */
} BSCERTOPT;

/** One drive. */
typedef struct tagDRIVEINFO
{
    int nIndex;              /**< position in the list, from 0 */
    char szDrive[1024];      /**< mount path; "/" for the hard disk */
    char szVolumeName[1024]; /**< last component of the mount path with its slash, or the hard disk's word */
    char szTotalName[1024];  /**< "%s (%s)" of both */
} DRIVEINFO;

/** One policy filter entry: an OID with blanks between its arcs. */
typedef struct tagSETOID
{
    char szPolicyID[80]; /**< OID, blanks between its arcs */
} SETOID;

/** One row of a policy name table. */
typedef struct tagPOLICYID
{
    char szID[30];   /**< OID */
    char szName[60]; /**< name shown */
} POLICYID;

/** One name from a folder listing, without its directory. */
typedef struct tagEXPFILELIST
{
    char szFileName[1024]; /**< name */
} EXPFILELIST;

/** One certificate directory: full path, closed by a slash. */
typedef struct tagCERTDIRPATH
{
    char szCertDirPath[1024]; /**< path */
} CERTDIRPATH;

/** One root certificate source. */
typedef struct tagROOTCERTURLINFO
{
    char szDN[1024];  /**< name of the root CA */
    char szURL[1024]; /**< directory address */
} ROOTCERTURLINFO;

/** One entry of a phone or card list, for CLP_GetSMCardListInfo, which answers 10005. */
typedef struct tagSUBMENULIST
{
    int nCodeType;         /**< code of the entry */
    char szCodeName[1024]; /**< name shown */
    char szLibPath[1024];  /**< library of the entry */
} SUBMENULIST;

/** One PKCS#11 device, for CLP_GetPKCS11DeviceInfo, which answers 10005. */
typedef struct tagPKCS11DEVICEINFO
{
    char szDriver[1024];    /**< driver name */
    char szInfo[1024];      /**< description */
    char szName[1024];      /**< device name */
    char szPath[1024];      /**< library path */
    char szPrograms[2560];  /**< related programs */
    char szSignature[1024]; /**< signature of the library */
} PKCS11DEVICEINFO;

/** @} */

#ifdef __cplusplus
static_assert(sizeof(CERTINFO) == 62516);
static_assert(offsetof(CERTINFO, nSignCertLen) == 16388 && offsetof(CERTINFO, szEncSignKey) == 16404);
static_assert(offsetof(CERTINFO, szVersion) == 24604 && offsetof(CERTINFO, szKeyRandom) == 51228);
static_assert(offsetof(CERTINFO, nCertbit1024) == 56352 && offsetof(CERTINFO, szCertPassword) == 60468);
static_assert(sizeof(LOADCERTOPT) == 19244 && offsetof(LOADCERTOPT, bExpiredCertHide) == 14104);
static_assert(offsetof(LOADCERTOPT, nSMCardType) == 14108 && offsetof(LOADCERTOPT, bPrivateO) == 16168);
static_assert(sizeof(LOADOPT) == 10064 && offsetof(LOADOPT, pPKCS11Context) == 1032);
static_assert(sizeof(DRIVEINFO) == 3076 && sizeof(SETOID) == 80 && sizeof(POLICYID) == 90);
static_assert(sizeof(EXPFILELIST) == 1024 && sizeof(CERTDIRPATH) == 1024 && sizeof(ROOTCERTURLINFO) == 2048);
static_assert(sizeof(SUBMENULIST) == 2052 && sizeof(PKCS11DEVICEINFO) == 7680);
static_assert(offsetof(BSCERTOPT, ulRAONSiteCode) == 2056 && sizeof(BSCERTOPT) == 3096);
#endif

#endif
