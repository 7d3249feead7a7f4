#ifndef QUILLGATE_RETURNCODES_H
#define QUILLGATE_RETURNCODES_H

/**
 * @file
 * Return codes of the whole library.
 */

/**
 * @defgroup codes Return codes
 *
 * 0 is success everywhere. Four ranges: 1xxxx general, 2xxxx loading of a cryptographic library, 3xxxx
 * certificate list service, and the libraries' own numbers of four digits, passed on unchanged where a
 * function says so. None has a text of its own; what a user reads comes from the language pack.
 * @{
 */

/** The library's own codes. */
enum
{
    QG_OK = 0,                         /**< success */
    QG_NO_CONTEXT = 10001,             /**< toolkit context missing or not initialised */
    QG_NO_MEMORY = 10003,              /**< allocation failed or a required object is missing */
    QG_BAD_ARGUMENT = 10004,           /**< bad argument */
    QG_NOT_AVAILABLE = 10005,          /**< operation not available on this platform or in this toolkit */
    QG_MEDIUM_UNSUPPORTED = 10006,     /**< medium not supported for the operation */
    QG_BAD_TOOLKIT_TYPE = 20001,       /**< toolkit type other than 0 and 1 */
    QG_NO_WORK_DIRECTORY = 20002,      /**< work directory null or empty */
    QG_ZRTK_NOT_LOADED = 20011,        /**< main toolkit not loaded */
    QG_GPKI_NOT_LOADED = 20012,        /**< government PKI library not loaded */
    CLPERR_PASS = 30000,               /**< certificate does not pass the filter; never leaves the stores */
    CLPERR_NOT_STARTED = 30001,        /**< session could not be started */
    CLPERR_NO_HANDLE = 30002,          /**< handle is null */
    CLPERR_TOOLKIT_NOT_LOADED = 30003, /**< toolkit library could not be loaded */
    CLPERR_NO_CA_CONFIGURED = 30004,   /**< no CA entries configured */
    CLPERR_NOTEXISTCERT = 30006,       /**< no certificate found */
    CLPERR_NO_KM_PAIR = 30007,         /**< key-management certificate or key missing though demanded */
    CLPERR_NO_REMOVABLE_DRIVE = 30008, /**< no removable drive */
    CLPERR_MEDIUM_NOT_ALLOWED = 30009, /**< operation not allowed on this medium */
    CLPERR_WRONG_PASSWORD = 30011,     /**< wrong password */
    CLPERR_NO_PRIVATE_KEY = 30012,     /**< private key could not be obtained */
    CLPERR_FILE_READ = 30013,          /**< certificate or key file could not be read */
    CLPERR_CERT_LOAD = 30014,          /**< certificate could not be loaded */
    CLPERR_CERT_FIELD = 30015,         /**< certificate field could not be read */
    CLPERR_KEY_DECRYPT =
        30016, /**< private key could not be decrypted, for a reason other than the password */
    CLPERR_NO_KEY_RANDOM = 30018,   /**< private key holds no random value */
    CLPERR_KM_PASSWORD = 30021,     /**< signing key opened, key-management key refused the same password */
    CLPERR_CERT_VERIFY = 30090,     /**< certificate verification failed */
    CLPERR_KEY_RANDOM_READ = 30091, /**< random value could not be read from the key */
    CLPERR_VID_VERIFY = 30092,      /**< identity verification failed */
    CLPERR_PFX_IMPORT = 30103,      /**< PFX could not be unpacked */
    CLPERR_PFX_EXPORT = 30104,      /**< PFX could not be built or written */
    CLPERR_DELETE = 30200,          /**< certificate or key could not be deleted */
    CLPERR_FILE_WRITE = 30201,      /**< file could not be written */
    CLPERR_CHANGE_PASSWORD = 30202, /**< password could not be changed */
    CLPERR_FOLDER_EMPTY = 30300,    /**< folder holds neither folders nor matching files */
};

/** Toolkit numbers that the list service tells apart; all others pass through it unchanged. */
enum
{
    TOOLKIT_KEY_DAMAGED = 2000,        /**< undecryptable, for a reason other than the password */
    TOOLKIT_KEY_UNDECRYPTABLE = 2001,  /**< likewise */
    TOOLKIT_WRONG_PASSWORD = 2004,     /**< wrong password of a private key */
    TOOLKIT_NO_KEY_RANDOM = 3500,      /**< private key without a random value */
    TOOLKIT_WRONG_PFX_PASSWORD = 4505, /**< wrong password of a PFX file */
};

/** @} */

#endif
