#ifndef QUILLGATE_RETURNCODES_H
#define QUILLGATE_RETURNCODES_H

/*
 * Return codes of the whole library. 0 is success everywhere. Four ranges: 1xxxx general, 2xxxx loading of a
 * cryptographic library, 3xxxx certificate list service, and the libraries' own numbers of four digits,
 * passed on unchanged where a function says so. None has a text of its own; what a user reads comes from the
 * language pack.
 *
 * X(name, number, meaning): the one list; the enumeration below and the tests are made from it.
 */
#define QUILLGATE_RETURN_CODES(X)                                                                            \
    X(QG_OK, 0, "success")                                                                                   \
    X(QG_NO_CONTEXT, 10001, "toolkit context missing or not initialised")                                    \
    X(QG_NO_MEMORY, 10003, "allocation failed or a required object is missing")                              \
    X(QG_BAD_ARGUMENT, 10004, "bad argument")                                                                \
    X(QG_NOT_AVAILABLE, 10005, "operation not available on this platform or in this toolkit")                \
    X(QG_MEDIUM_UNSUPPORTED, 10006, "medium not supported for the operation")                                \
    X(QG_BAD_TOOLKIT_TYPE, 20001, "toolkit type other than 0 and 1")                                         \
    X(QG_NO_WORK_DIRECTORY, 20002, "work directory null or empty")                                           \
    X(QG_ZRTK_NOT_LOADED, 20011, "main toolkit not loaded")                                                  \
    X(QG_GPKI_NOT_LOADED, 20012, "government PKI library not loaded")                                        \
    X(CLPERR_PASS, 30000, "certificate does not pass the filter; never leaves the stores")                   \
    X(CLPERR_NOT_STARTED, 30001, "session could not be started")                                             \
    X(CLPERR_NO_HANDLE, 30002, "handle is null")                                                             \
    X(CLPERR_TOOLKIT_NOT_LOADED, 30003, "toolkit library could not be loaded")                               \
    X(CLPERR_NO_CA_CONFIGURED, 30004, "no CA entries configured")                                            \
    X(CLPERR_NOTEXISTCERT, 30006, "no certificate found")                                                    \
    X(CLPERR_NO_KM_PAIR, 30007, "key-management certificate or key missing though demanded")                 \
    X(CLPERR_NO_REMOVABLE_DRIVE, 30008, "no removable drive")                                                \
    X(CLPERR_MEDIUM_NOT_ALLOWED, 30009, "operation not allowed on this medium")                              \
    X(CLPERR_WRONG_PASSWORD, 30011, "wrong password")                                                        \
    X(CLPERR_NO_PRIVATE_KEY, 30012, "private key could not be obtained")                                     \
    X(CLPERR_FILE_READ, 30013, "certificate or key file could not be read")                                  \
    X(CLPERR_CERT_LOAD, 30014, "certificate could not be loaded")                                            \
    X(CLPERR_CERT_FIELD, 30015, "certificate field could not be read")                                       \
    X(CLPERR_KEY_DECRYPT, 30016, "private key could not be decrypted, for a reason other than the password") \
    X(CLPERR_NO_KEY_RANDOM, 30018, "private key holds no random value")                                      \
    X(CLPERR_KM_PASSWORD, 30021, "signing key opened, key-management key refused the same password")         \
    X(CLPERR_CERT_VERIFY, 30090, "certificate verification failed")                                          \
    X(CLPERR_KEY_RANDOM_READ, 30091, "random value could not be read from the key")                          \
    X(CLPERR_VID_VERIFY, 30092, "identity verification failed")                                              \
    X(CLPERR_PFX_IMPORT, 30103, "PFX could not be unpacked")                                                 \
    X(CLPERR_PFX_EXPORT, 30104, "PFX could not be built or written")                                         \
    X(CLPERR_DELETE, 30200, "certificate or key could not be deleted")                                       \
    X(CLPERR_FILE_WRITE, 30201, "file could not be written")                                                 \
    X(CLPERR_CHANGE_PASSWORD, 30202, "password could not be changed")                                        \
    X(CLPERR_FOLDER_EMPTY, 30300, "folder holds neither folders nor matching files")

/* NOLINTNEXTLINE(bugprone-macro-parentheses): an enumerator's name can't stand in parentheses */
#define QUILLGATE_RETURN_CODE_ENUMERATOR(name, number, meaning) name = number,
enum
{
    QUILLGATE_RETURN_CODES(QUILLGATE_RETURN_CODE_ENUMERATOR) QUILLGATE_RETURN_CODE_END
};
#undef QUILLGATE_RETURN_CODE_ENUMERATOR

/* Toolkit numbers that the list service tells apart; all others pass through it unchanged. */
enum
{
    TOOLKIT_KEY_DAMAGED = 2000,        /* undecryptable, for a reason other than the password */
    TOOLKIT_KEY_UNDECRYPTABLE = 2001,  /* likewise */
    TOOLKIT_WRONG_PASSWORD = 2004,     /* wrong password of a private key */
    TOOLKIT_NO_KEY_RANDOM = 3500,      /* private key without a random value */
    TOOLKIT_WRONG_PFX_PASSWORD = 4505, /* wrong password of a PFX file */
};

#endif
