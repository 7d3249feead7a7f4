#ifndef QUILLGATE_DIALOGS_H
#define QUILLGATE_DIALOGS_H

/**
 * @file
 * The certificate dialog.
 *
 * Two ways to run a selection. A host without Qt calls ShowUserCertInit on one thread, which makes the Qt
 * application and sits in its event loop for good, and ShowUserCert on another. A host that has a
 * QApplication of its own calls ShowUserCert_T on the thread of that application.
 */

#include <stddef.h>

#include "quillgate/api.h"
#include "quillgate/returncodes.h"

#ifdef __cplusplus
class QApplication;
class SelectCertDialog;
#else
/** Qt's; a host in C holds nothing but its address. */
typedef struct QApplication QApplication;
/** The dialog; likewise. */
typedef struct SelectCertDialog SelectCertDialog;
#endif

/**
 * @defgroup dialogs Dialogs
 * @{
 */

/** Made by ShowUserCertInit; null before and after. Not for hosts to change. */
QUILLGATE_PLAIN_API QApplication* g_pQApplication;
/** The shared dialog, made by ShowUserCertInit; likewise. */
QUILLGATE_PLAIN_API SelectCertDialog* g_dlgUserCert;

/** Where the dialog works and in which language. */
typedef struct tagINITOPT
{
    void* pPKCS11Context; /**< handed on when not null; not used on this platform */
    char szWorkDir[1024]; /**< language packs, toolkits, configuration */
    int nLanguage;        /**< 1 Korean, any other English */
} INITOPT;

/** Bits of tagLOADSELECTCERTOPTION::nExpiredOption and nNoticeOption. */
enum
{
    EXPIRED_HIDE = 1,          /**< nExpiredOption: leave expired certificates out */
    EXPIRED_LOCK_PASSWORD = 2, /**< nExpiredOption: no password for an expired certificate */
    NOTICE_EXPIRED = 4,        /**< nNoticeOption: say that the certificate has expired */
};

/**
 * What the dialog offers. An empty text keeps the value of the dialog's earlier selection when the dialog is
 * ShowUserCert's shared one. The fields named carried are kept and never used; they hold the places of
 * fields that hosts were built with.
 */
typedef struct tagLOADSELECTCERTOPTION
{
    int nCertCAType;              /**< CERTTYPE_... bits of the trees to walk */
    int nCertUsageType;           /**< CERTUSAGE_KM_PAIR demands both pairs */
    int nExpiredOption;           /**< EXPIRED_... bits */
    char szCertDN[256];           /**< only this subject */
    char szCertSerial[1024];      /**< only this serial number */
    char szCertKmSerial[1024];    /**< carried into the filter, which does not use it */
    char szCertPolicyIDs[10000];  /**< policy filter, see LOADCERTOPT */
    char szSetPrivateCertO[1024]; /**< carried into the filter, which does not use it */
    char szCarried1[1024];        /**< carried */
    char szCarried2[1024];        /**< carried */
    char abCarried[16];           /**< carried */
    char szCarried3[1024];        /**< carried */
    int nCarried;                 /**< carried */
    char szCarried4[1024];        /**< carried */
    char szCarried5[1024];        /**< carried */
    char szCarried6[1024];        /**< carried */
    char szLogoName[1024];        /**< name of a logo in the resources, or "LOAD_DATA" for tagEXTRAOPTION's */
    char szCarried7[1024];        /**< carried */
    int nNoticeOption;            /**< NOTICE_... bits */
    char bCarried;                /**< carried */
    char szCarried8[1024];        /**< carried */
    char abUnused[1031];          /**< not looked at */
    char bMemoryCert;             /**< not 0: start on the certificate below instead of the hard disk */
    char szMemSignCert[4096];     /**< certificate, DER */
    char szMemSignKey[4096];      /**< plain key, DER */
    int nMemSignCertLen;          /**< bytes in szMemSignCert */
    int nMemSignKeyLen;           /**< bytes in szMemSignKey */
    char bNTSLogo;                /**< not 0: NTSLogo.bmp, whatever else is set */
} LOADSELECTCERTOPTION;

/** What else the dialog shows. */
typedef struct tagEXTRAOPTION
{
    char szLogoData[200000]; /**< BMP image as Base64 text, used when szLogoName is "LOAD_DATA" */
    char abCarried[3];       /**< carried */
} EXTRAOPTION;

/**
 * The outcome of an accepted selection, cleared before it is filled. szSubjectDN and szCertPolicy are UTF-8,
 * all other texts EUC-KR. The host owns the record and wipes it: it holds plain private keys.
 */
typedef struct tagSELCERTINFO
{
    int nMediaType;            /**< 1 hard disk, 2 removable drive, 6 memory */
    char szSignCert[4096];     /**< signing certificate, DER */
    int nSignCertLen;          /**< bytes in szSignCert */
    char szSignKey[2048];      /**< plain signing key, PKCS#8 DER */
    int nSignKeyLen;           /**< bytes in szSignKey */
    char szEncSignKey[2048];   /**< stays empty */
    int nEncSignKeyLen;        /**< stays 0 */
    char szKmCert[4096];       /**< key-management certificate, DER */
    int nKmCertLen;            /**< bytes in szKmCert */
    char szKmKey[2048];        /**< plain key-management key, PKCS#8 DER */
    int nKmKeyLen;             /**< bytes in szKmKey */
    char szEncKmKey[2048];     /**< stays empty */
    int nEncKmKeyLen;          /**< stays 0 */
    char szSubjectDN[1024];    /**< UTF-8 */
    char szSubjectCN[1024];    /**< subject common name */
    char szIssuerDN[1024];     /**< issuer name */
    char szIssuerCN[1024];     /**< issuer common name */
    char szKeyRandom[1024];    /**< random value of the key, bytes */
    int nKeyRandomLen;         /**< bytes in szKeyRandom */
    char szSignCertPath[1024]; /**< certificate file; empty for memory */
    char szSignKeyPath[1024];  /**< key file; empty for memory */
    char szKmCertPath[1024];   /**< key-management certificate file; may be empty */
    char szKmKeyPath[1024];    /**< key-management key file; may be empty */
    char szCertPolicy[256];    /**< UTF-8 */
    char szSerialNumber[256];  /**< serial number */
    char szBeforeDay[1024];    /**< start of validity, YYYY-MM-DD */
    char szAfterDay[1024];     /**< end of validity, YYYY-MM-DD */
    char szPinNumber[512];     /**< media 3 and 4, which this platform does not reach */
    char szLibPath[1024];      /**< media 3, 4 and 7, likewise */
    char abUnused[4096];       /**< stays 0 */
} SELCERTINFO;

#ifdef __cplusplus
static_assert(sizeof(INITOPT) == 1040 && offsetof(INITOPT, nLanguage) == 1032);
static_assert(offsetof(LOADSELECTCERTOPTION, szCarried3) == 15404);
static_assert(offsetof(LOADSELECTCERTOPTION, nCarried) == 16428);
static_assert(offsetof(LOADSELECTCERTOPTION, nNoticeOption) == 21552);
static_assert(offsetof(LOADSELECTCERTOPTION, bMemoryCert) == 23612);
static_assert(offsetof(LOADSELECTCERTOPTION, nMemSignCertLen) == 31808);
static_assert(sizeof(LOADSELECTCERTOPTION) == 31820 && sizeof(EXTRAOPTION) == 200003);
static_assert(offsetof(SELCERTINFO, szSubjectDN) == 16412 && offsetof(SELCERTINFO, nKeyRandomLen) == 21532);
static_assert(offsetof(SELCERTINFO, szPinNumber) == 28192 && sizeof(SELCERTINFO) == 33824);
#endif

/**
 * Makes the Qt application and the dialog when they are missing and runs the event loop. Does not return once
 * a selection has been shown.
 *
 * @param argc arguments of the program
 * @param argv and their texts, which stay alive
 * @return the last result of QApplication::exec()
 */
QUILLGATE_PLAIN_API int ShowUserCertInit(int argc, char** argv);

/**
 * Runs one selection on the shared dialog.
 *
 * ShowUserCertInit must be running on another thread, or the call come from its event loop; without it the
 * call never returns. The dialog's modal loop runs on the calling thread, all work on widgets on that of
 * ShowUserCertInit.
 *
 * @param a not read
 * @param b not read
 * @param pInit where the dialog works
 * @param pLoad what it offers
 * @param c not read
 * @param pExtra what else it shows
 * @param[out] pOut the outcome of an accepted selection, the host's to wipe; else as it was
 * @return 0 accepted; -1 closed without a choice; 10003 out of memory; 10004 without pLoad, pExtra or pOut;
 *         else the code of CLP_Initalize or CLP_SetType, and the dialog was never shown
 */
QUILLGATE_PLAIN_API int ShowUserCert(void* a, void* b, INITOPT* pInit, LOADSELECTCERTOPTION* pLoad, void* c,
                                     EXTRAOPTION* pExtra, SELCERTINFO* pOut);

/**
 * Runs one selection on a dialog of its own, under the host's QApplication and on its thread.
 *
 * @param pInit where the dialog works
 * @param pLoad what it offers
 * @param c not read
 * @param pExtra what else it shows
 * @param[out] pOut the outcome of an accepted selection, the host's to wipe; else as it was
 * @return as ShowUserCert; 10004 also without a QApplication, and on any thread but its own
 */
QUILLGATE_PLAIN_API int ShowUserCert_T(INITOPT* pInit, LOADSELECTCERTOPTION* pLoad, void* c,
                                       EXTRAOPTION* pExtra, SELCERTINFO* pOut);

/**
 * Lets the user choose any file. On another thread than the QApplication's it waits for that one's loop.
 *
 * @param nLen bytes in pszOut, terminator included
 * @param[out] pszOut path in the local encoding, terminated; cleared first
 * @return 0; 1 when nothing was chosen; 10004 without pszOut or a QApplication, or when nLen does not suffice
 */
QUILLGATE_API int GetSlectFilePath(int nLen, char* pszOut);

/** @} */

#endif
