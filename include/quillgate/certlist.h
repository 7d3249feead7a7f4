#ifndef QUILLGATE_CERTLIST_H
#define QUILLGATE_CERTLIST_H

/**
 * @file
 * The certificate list service.
 */

#include "quillgate/api.h"
#include "quillgate/records.h"
#include "quillgate/returncodes.h"

/**
 * @defgroup certlist Certificate list service
 *
 * Sessions, filters, media, and operations on a listed certificate by index.
 *
 * Order of calls: CLP_Initalize, CLP_SetType, [CLP_LoadCertList_... and drives], CLP_SetMediaType,
 * CLP_LoadCertList, CLP_GetCertCount, CLP_GetCertInfo and the operations by index, CP_ClearCertData,
 * CLP_UnInitalize.
 *
 * pContext is the handle that CLP_Initalize stored. A null handle answers 30002 in every function that does
 * not say otherwise. An index is a position in the list of the last CLP_LoadCertList; one that is negative or
 * past the list answers 10004. Buffers handed out through char** are released with CLP_MemFree, which wipes
 * them; they are one byte longer than their length, zeroed. Unless said otherwise a failure leaves every
 * output as it was. A session that no CLP_Initalize with an option record has made answers 10001 where a
 * certificate store is needed. A session is used by one thread.
 * @{
 */

/** Log file of the CLP_ family, from zrapilog.ini; empty: no log. Rewritten by every CLP_Initalize. */
QUILLGATE_PLAIN_API char szLogFilePath[1024];

/**
 * @name Session and options
 * @{
 */

/**
 * Starts a session in *pContext, or starts the one that is there again with the new values. The object
 * stays in *pContext on failure too and must be ended with CLP_UnInitalize.
 *
 * @param[in,out] pContext place of the handle, null or a handle
 * @param pstLoadOpt where the session works
 * @param pPKCS11Context ignored
 * @return 0; 10003; 10004 without pContext or pstLoadOpt; 30001 for a bad toolkit type, no work directory
 *         or the toolkit's own failure; 30003 when the toolkit's library is missing
 */
QUILLGATE_API int CLP_Initalize(void** pContext, LOADOPT* pstLoadOpt, void** pPKCS11Context);

/**
 * Ends the session, wipes and frees everything in it. The host's handle must not be used again. Null is
 * ignored.
 *
 * @param pContext handle of CLP_Initalize
 */
QUILLGATE_API void CLP_UnInitalize(void* pContext);

/**
 * Sets the filter for the next load.
 *
 * @param pContext handle of CLP_Initalize
 * @param pstLoadCertOpt filter; an empty text keeps the earlier one
 * @return 0; 30002; 10003; 10004 without pstLoadCertOpt
 */
QUILLGATE_API int CLP_SetType(void* pContext, LOADCERTOPT* pstLoadCertOpt);

/**
 * Chooses the medium. A refused call keeps the earlier one.
 *
 * @param pContext handle of CLP_Initalize
 * @param nMediaType MEDIA_...
 * @param nSubIndex position of the removable drive in the last CLP_GetRemDrive; else 0
 * @return 0; 30002; 10004 for media 3, 4, 5 and 7, a negative nSubIndex or a drive past the list
 */
QUILLGATE_API int CLP_SetMediaType(void* pContext, int nMediaType, int nSubIndex);

/**
 * Names the PFX file and its password for MEDIA_PFX; CLP_LoadCertList opens the file. Each text is cut
 * at 1023 bytes; null leaves it empty.
 *
 * @param pContext handle of CLP_Initalize
 * @param pszPath path of the file
 * @param pszPassword password
 * @return 0; 30002
 */
QUILLGATE_API int CLP_SetPFXInfo(void* pContext, char* pszPath, char* pszPassword);

/**
 * Hands in certificates and plain keys for MEDIA_MEMORY. The key-management pair is taken only when all
 * four of its arguments are usable; else an earlier one stays.
 *
 * @param pContext handle of CLP_Initalize
 * @param pszSignCert signing certificate, DER
 * @param nSignCertLen bytes in pszSignCert
 * @param pszSignKey signing key, plain PKCS#8 DER
 * @param nSignKeyLen bytes in pszSignKey
 * @param pszKmCert key-management certificate, DER
 * @param nKmCertLen bytes in pszKmCert
 * @param pszKmKey key-management key, plain PKCS#8 DER
 * @param nKmKeyLen bytes in pszKmKey
 * @return 0; 30002; 10004 without the signing pair, for a length below 1 of it, and for a length above
 *         4096; of 4096 bytes, CLP_LoadCertList answers 10004
 */
QUILLGATE_API int CLP_SetMemoryCert(void* pContext, char* pszSignCert, int nSignCertLen, char* pszSignKey,
                                    int nSignKeyLen, char* pszKmCert, int nKmCertLen, char* pszKmKey,
                                    int nKmKeyLen);

/**
 * Empties the extra directory names of a kind.
 *
 * @param pContext handle of CLP_Initalize
 * @param pszType "GPKI", "NPKI", "MPKI" or "PPKI", case ignored; any other does nothing and answers 0
 * @return 0; 30002; 10004 for a null text
 */
QUILLGATE_API int CLP_LoadCertList_ClearPath(void* pContext, char* pszType);

/**
 * Adds to the extra directory names of a kind. Names for "NPKI" are CA folders that are walked besides the
 * known.
 *
 * @param pContext handle of CLP_Initalize
 * @param pszType "GPKI", "NPKI", "MPKI" or "PPKI", case ignored; any other does nothing and answers 0
 * @param pszPath name of the directory
 * @return 0; 30002; 10004 for a null text
 */
QUILLGATE_API int CLP_LoadCertList_AddPath(void* pContext, char* pszType, char* pszPath);

/**
 * Empties the host's names of purposes.
 *
 * @param pContext handle of CLP_Initalize
 * @return 0; 30002
 */
QUILLGATE_API int CLP_LoadCertList_ClearOidInfo(void* pContext);

/**
 * Sets the host's name of one purpose; the last call for a policy wins.
 *
 * @param pContext handle of CLP_Initalize
 * @param pszOid policy, dotted
 * @param pszDivision name, EUC-KR
 * @return 0; 30002; 10004 for a null text
 */
QUILLGATE_API int CLP_LoadCertList_OidInfo(void* pContext, char* pszOid, char* pszDivision);

/** @} */

/**
 * @name Drives
 * @{
 */

/**
 * Counts the hard disk list: always one entry, whose names are empty. After 10003 *nCount is 0.
 *
 * @param pContext handle of CLP_Initalize
 * @param bViewRemote not used
 * @param bHideCDRom not used
 * @param[out] nCount number of drives
 * @return 0; 30002; 10003; 10004 without nCount
 */
QUILLGATE_API int CLP_GetDriveCount(void* pContext, bool bViewRemote, bool bHideCDRom, int* nCount);

/**
 * Gives the hard disk list.
 *
 * @param pContext handle of CLP_Initalize
 * @param[out] pstDirveInfo array for the count of the last CLP_GetDriveCount
 * @return 0; 30002; 10003; 10004 without an array
 */
QUILLGATE_API int CLP_GetDrive(void* pContext, DRIVEINFO* pstDirveInfo);

/**
 * Counts the mounted vfat drives. After 10003 *nCount is 0.
 *
 * @param pContext handle of CLP_Initalize
 * @param[out] nCount number of drives
 * @return 0; 30002; 10003; 10004 without nCount
 */
QUILLGATE_API int CLP_GetRemDriveCount(void* pContext, int* nCount);

/**
 * Gives the mounted vfat drives.
 *
 * @param pContext handle of CLP_Initalize
 * @param[out] pstRemDirveInfo array for the count of the last CLP_GetRemDriveCount
 * @return 0; 30002; 10003; 10004 without an array
 */
QUILLGATE_API int CLP_GetRemDrive(void* pContext, DRIVEINFO* pstRemDirveInfo);

/** @} */

/**
 * @name List and details
 * @{
 */

/**
 * Loads the list of the medium.
 *
 * @param pContext handle of CLP_Initalize
 * @return 0; 30002; 10003; 10004 for a medium without a store; 30006 when there is none; 30007 on
 *         MEDIA_MEMORY; on MEDIA_PFX also 30011 for a wrong password or a file that can't be read,
 *         30014, 30015, 30103
 */
QUILLGATE_API int CLP_LoadCertList(void* pContext);

/**
 * Counts the list.
 *
 * @param pContext handle of CLP_Initalize
 * @return the count; 30002
 */
QUILLGATE_API int CLP_GetCertCount(void* pContext);

/**
 * Copies a record. Fields without a value are left alone.
 *
 * @param pContext handle of CLP_Initalize
 * @param nIndex position in the list
 * @param[out] pstSelectCertInfo record, cleared by the caller
 * @return 0; 30002; 10004 for an index outside the list or without pstSelectCertInfo
 */
QUILLGATE_API int CLP_GetCertInfo(void* pContext, int nIndex, CERTINFO* pstSelectCertInfo);

/**
 * Tells the hash of a signature with this certificate.
 *
 * @param pContext handle of CLP_Initalize
 * @param nIndex position in the list
 * @param[out] nHashAlg 4 SHA-256, 5 SHA-512, 1 any other
 * @return 0; 30002; 10004 for an index outside the list or without nHashAlg
 */
QUILLGATE_API int CLP_GetHashAlgInfo(void* pContext, int nIndex, int* nHashAlg);

/** @} */

/**
 * @name Keys
 * @{
 */

/**
 * Opens the keys of a disk certificate into the session.
 *
 * @param pContext handle of CLP_Initalize
 * @param nIndex position in the list
 * @param pszPassword password
 * @return 0; 30002; 10004; 30011; 30016; 30021; the toolkit's own number
 */
QUILLGATE_API int CLP_DecryptPriKey(void* pContext, int nIndex, char* pszPassword);

/**
 * Opens the keys of a disk certificate anew and hands the plain ones out, each in a buffer that is
 * released with CLP_MemFree. A record without a key-management key leaves its outputs alone, and they
 * may be null then. Only 0 hands anything out: after 30021 the signing key is in the session.
 *
 * @param pContext handle of CLP_Initalize
 * @param nIndex position in the list
 * @param pszPassword password
 * @param[out] pszOutSignKey signing key, plain PKCS#8 DER
 * @param[out] nOutSignKeyLen its bytes
 * @param[out] pszOutKmKey key-management key, plain PKCS#8 DER
 * @param[out] nOutKmKeyLen its bytes
 * @return as CLP_DecryptPriKey; 30009 on media other than 1 and 2
 */
QUILLGATE_API int CLP_DecryptPriKeyData(void* pContext, int nIndex, char* pszPassword, char** pszOutSignKey,
                                        int* nOutSignKeyLen, char** pszOutKmKey, int* nOutKmKeyLen);

/**
 * Hands out the random value of the key. The buffer is released with CLP_MemFree.
 *
 * @param pContext handle of CLP_Initalize
 * @param nIndex position in the list
 * @param pszPassword password
 * @param[out] pszOutKeyRandom random value
 * @param[out] nOutKeyRandomLen its bytes
 * @return 0; 30002; 10004; 30011; 30016; 30018 when the key has none; 30091
 */
QUILLGATE_API int CLP_GetPriKeyRandom(void* pContext, int nIndex, char* pszPassword, char** pszOutKeyRandom,
                                      int* nOutKeyRandomLen);

/**
 * Checks the password, opens keys and random value, and copies the record in one call.
 *
 * @param pContext handle of CLP_Initalize
 * @param nIndex position in the list
 * @param pszPassword password
 * @param[out] pstSelCertInfo record, cleared by the caller; holds plain keys
 * @return as CLP_DecryptPriKey and CLP_GetPriKeyRandom
 */
QUILLGATE_API int CLP_SelectCert(void* pContext, int nIndex, char* pszPassword, CERTINFO* pstSelCertInfo);

/**
 * Encrypts the key files anew, the signing key's first: a failure on the key-management key leaves the
 * signing key with the new password. A GPKI certificate names a key-management key file that may be
 * missing; the answer is 30013 then.
 *
 * @param pContext handle of CLP_Initalize
 * @param nIndex position in the list
 * @param pszOldPassword present password
 * @param pszNewPassword new password
 * @return 0; 30002; 10004; 30009; 30011; 30013; 30201; 30202
 */
QUILLGATE_API int CLP_ChangePassword(void* pContext, int nIndex, char* pszOldPassword, char* pszNewPassword);

/**
 * Tests a password on an encrypted key in memory.
 *
 * @param pContext handle of CLP_Initalize
 * @param pszPassword password
 * @param pszKey encrypted key, DER
 * @param nKeyLen bytes in pszKey
 * @return 0; 30002; 10004; 30016, for a wrong password too
 */
QUILLGATE_API int CLP_CheckPassword(void* pContext, char* pszPassword, char* pszKey, int nKeyLen);

/** @} */

/**
 * @name Verification
 * @{
 */

/**
 * Verifies a listed certificate up to the root CAs of the toolkit's configuration file.
 *
 * The file is opened as "<work directory>\\ZRCToolkitV30.conf" (toolkit 0) or "<work
 * directory>\\gpkiapi.conf", backslash and all. Needs one CLP_SearchFileList(handle, "root", ...) earlier
 * in the session. Blocks while roots are fetched.
 *
 * @param pContext handle of CLP_Initalize
 * @param nIndex position in the list
 * @param nMsgLen bytes in pszVerifyMsg
 * @param[out] pszVerifyMsg the toolkit's text, EUC-KR, cut and terminated, only when the certificate itself
 *        was refused; cleared by the caller; may be null
 * @return 0; 30002; 10003 without the "root" search; 10004 for an index outside the list; 30090 for every
 *         other failure
 */
QUILLGATE_API int CLP_VerifyCert(void* pContext, int nIndex, int nMsgLen, char* pszVerifyMsg);

/**
 * Proves that certificate, key and identification number belong together. On media 1 and 2 the key is
 * opened with the password; all other media answer 0 unchecked.
 *
 * @param pContext handle of CLP_Initalize
 * @param nIndex position in the list
 * @param pszIDN identification number
 * @param pszPassword password of the key
 * @return 0; 30002; 30011; 30092 and what the key operations answer; 10004 for an empty number or password;
 *         10006 on medium 7
 */
QUILLGATE_API int CLP_VerifyVID(void* pContext, int nIndex, char* pszIDN, char* pszPassword);

/** @} */

/**
 * @name Saving, deleting, PFX
 * @{
 */

/**
 * Writes a certificate and its key, and a key-management pair when certificate and key of it are given,
 * to medium 1 or 2, below the directory that the certificate's subject names.
 *
 * An earlier file of the same name is replaced; the list is not refreshed. Files are written one by
 * one, each whole or not at all, and stay when a later one fails.
 *
 * @param pContext handle of CLP_Initalize
 * @param bEncKey true: the keys are written as they are; false: encrypted under the password
 * @param pszPassword password of the keys
 * @param pszSignCert signing certificate, DER
 * @param nSignCertLen bytes in pszSignCert
 * @param pszSignKey signing key, PKCS#8 DER
 * @param nSignKeyLen bytes in pszSignKey
 * @param pszKmCert key-management certificate, DER; null: none
 * @param nKmCertLen bytes in pszKmCert
 * @param pszKmKey key-management key, PKCS#8 DER; null: none
 * @param nKmKeyLen bytes in pszKmKey
 * @return 0; 30002; 10003; 10004 without password, certificate or key, on media 3 and 4 and any without
 *         a store; 30009 on media 5 to 8; 30014 or 30015 when the certificate can't be read; -1 when
 *         its subject lacks CN, O or OU; 30201 when a file can't be written, or none may be under this
 *         subject: it holds a slash, O is "." or "..", or the path would be longer than 1023 bytes
 */
QUILLGATE_API int CLP_SaveCert(void* pContext, bool bEncKey, char* pszPassword, char* pszSignCert,
                               int nSignCertLen, char* pszSignKey, int nSignKeyLen, char* pszKmCert,
                               int nKmCertLen, char* pszKmKey, int nKmKeyLen);

/**
 * Writes a listed certificate with its key, and its key-management pair, to a PFX file (PKCS#12) under
 * the same password.
 *
 * @param pContext handle of CLP_Initalize
 * @param nIndex position in the list
 * @param pszPassword password of the keys and of the file
 * @param pszPFXPath path of the file
 * @return 0; 30002; 10004; what CLP_DecryptPriKey answers on media 1 and 2; 30104 when it is not built
 *         or not written, and always on media without keys
 */
QUILLGATE_API int CLP_ExportPFX(void* pContext, int nIndex, char* pszPassword, char* pszPFXPath);

/**
 * Deletes the files of a listed certificate: after a test of the password, or without asking when it is
 * null or empty. The record stays in the list until the next load.
 *
 * @param pContext handle of CLP_Initalize
 * @param nIndex position in the list
 * @param pszPassword password of the keys; null or empty: none is asked for
 * @return 0, also for media without a store; 30002; 10004; 30009 on media 5 to 8; 30011; 30200
 */
QUILLGATE_API int CLP_DeleteCert(void* pContext, int nIndex, char* pszPassword);

/** @} */

/**
 * @name File search
 * @{
 */

/**
 * Makes one step through the file system.
 *
 * Of a folder the sub-folders are listed, "." and ".." among them, each with an empty name. Files are never
 * listed. The session keeps each list until the next step of its kind; the counts are those of the last
 * step.
 *
 * @param pContext handle of CLP_Initalize
 * @param pszPath folder, or "root", in any case, for the drives
 * @param pszFormat an extension without its dot, may be null
 * @return 0; 30002; 10003 for a folder without an earlier "root" step in the session; 10004 without
 *         pszPath; 30300 for a folder that can't be opened
 */
QUILLGATE_API int CLP_SearchFileList(void* pContext, char* pszPath, char* pszFormat);

/**
 * Counts a list of the last step.
 *
 * @param pContext handle of CLP_Initalize
 * @param nType 0 drives, 1 folders, 2 files; any other counts 0
 * @param[out] nCount number of names
 * @return 0; 30002; 10004 without nCount
 */
QUILLGATE_API int CLP_GetSearchFileCount(void* pContext, int nType, int* nCount);

/**
 * Copies a name of a list, EUC-KR: at most nFileNameLen - 1 bytes, without a terminator.
 *
 * @param pContext handle of CLP_Initalize
 * @param nType 0 drives, 1 folders, 2 files; any other copies nothing
 * @param nIndex position in the list
 * @param nFileNameLen bytes in pszFileName
 * @param[out] pszFileName name; cleared by the caller
 * @return 0; 30002; 10004 without pszFileName, for a length below 1 or an index outside the list
 */
QUILLGATE_API int CLP_GetSearchFileName(void* pContext, int nType, int nIndex, int nFileNameLen,
                                        char* pszFileName);

/** @} */

/**
 * @name Memory
 * @{
 */

/**
 * Wipes and frees a buffer of this family and nulls the pointer.
 *
 * @param pContext not looked at
 * @param[in,out] ppValue buffer
 * @return 0; 10004 for a null buffer
 */
QUILLGATE_API int CLP_MemFree(void* pContext, void** ppValue);

/**
 * Drops lists and secrets and keeps the session.
 *
 * @param pContext handle of CLP_Initalize
 * @return 0; 30002
 */
QUILLGATE_API int CP_ClearCertData(void* pContext);

/**
 * Drops lists and secrets and keeps the session. Null is ignored.
 *
 * @param pContext handle of CLP_Initalize
 */
QUILLGATE_API void ClearCertData(void* pContext);

/** @} */

/**
 * @name Not available on this platform: each answers 10005, whatever the arguments
 * @{
 */

/**
 * Settings of the branded mobile certificate service. Not available.
 *
 * @param pContext handle of CLP_Initalize
 * @param stBriskSealOpt settings
 * @return 10005, whatever the arguments
 */
QUILLGATE_API int CLP_SetBSCertType(void* pContext, BSCERTOPT* stBriskSealOpt);

/**
 * Driver of that service. Not available.
 *
 * @param pContext handle of CLP_Initalize
 * @param bVerifySignature flag
 * @param nBSServiceType service
 * @param pszDownloadUrl address
 * @param nDownloadUrlLen its bytes
 * @return 10005, whatever the arguments
 */
QUILLGATE_API int CLP_SetBriskSealInfo(void* pContext, bool bVerifySignature, int* nBSServiceType,
                                       char* pszDownloadUrl, int nDownloadUrlLen);

/**
 * A certificate of that service. Not available.
 *
 * @param pContext handle of CLP_Initalize
 * @param pszKeyID key
 * @param nKeyIDLen its bytes
 * @param pstSelectCertInfo record
 * @return 10005, whatever the arguments
 */
QUILLGATE_API int CLP_GetBSCertInfo(void* pContext, char* pszKeyID, int nKeyIDLen,
                                    CERTINFO* pstSelectCertInfo);

/**
 * Number of PKCS#11 devices. Not available.
 *
 * @param pContext handle of CLP_Initalize
 * @param nListCnt count
 * @return 10005, whatever the arguments
 */
QUILLGATE_API int CLP_GetPKCS11DeviceCount(void* pContext, int* nListCnt);

/**
 * List of the devices. Not available.
 *
 * @param pContext handle of CLP_Initalize
 * @param pstPKCS11DeviceInfo devices
 * @return 10005, whatever the arguments
 */
QUILLGATE_API int CLP_GetPKCS11DeviceInfo(void* pContext, PKCS11DEVICEINFO* pstPKCS11DeviceInfo);

/**
 * Check of a device library's signature. Not available.
 *
 * @param pContext handle of CLP_Initalize
 * @param nIndex position in the list
 * @return 10005, whatever the arguments
 */
QUILLGATE_API int CLP_VerifyPKCS11Signature(void* pContext, int nIndex);

/**
 * End of the device session. Not available.
 *
 * @param pContext handle of CLP_Initalize
 * @return 10005, whatever the arguments
 */
QUILLGATE_API int CLP_ClosePKCS11(void* pContext);

/**
 * Number of smart card types. Not available.
 *
 * @param pContext handle of CLP_Initalize
 * @param nCount count
 * @return 10005, whatever the arguments
 */
QUILLGATE_API int CLP_GetSMCardListCount(void* pContext, int* nCount);

/**
 * List of the card types. Not available.
 *
 * @param pContext handle of CLP_Initalize
 * @param pstSubMenuInfo cards
 * @return 10005, whatever the arguments
 */
QUILLGATE_API int CLP_GetSMCardListInfo(void* pContext, SUBMENULIST* pstSubMenuInfo);

/**
 * PIN for a token. Not available.
 *
 * @param pContext handle of CLP_Initalize
 * @param pszPINNumber PIN
 * @return 10005, whatever the arguments
 */
QUILLGATE_API int CLP_SetPINNumber(void* pContext, char* pszPINNumber);

/**
 * Import of a PFX file. Not available.
 *
 * @param pContext handle of CLP_Initalize
 * @param pszFilePath path
 * @param pszPassword password
 * @param pszOutSignCert signing certificate
 * @param nOutSignCertLen its bytes
 * @param pszOutSignKey signing key
 * @param nOutSignKeyLen its bytes
 * @param pszOutKmCert key-management certificate
 * @param nOutKmCertLen its bytes
 * @param pszOutKmKey key-management key
 * @param nOutKmKeyLen its bytes
 * @return 10005, whatever the arguments
 */
QUILLGATE_API int CLP_ImportPFX(void* pContext, char* pszFilePath, char* pszPassword, char** pszOutSignCert,
                                int* nOutSignCertLen, char** pszOutSignKey, int* nOutSignKeyLen,
                                char** pszOutKmCert, int* nOutKmCertLen, char** pszOutKmKey,
                                int* nOutKmKeyLen);

/**
 * Export of given data as PFX. Not available.
 *
 * @param pContext handle of CLP_Initalize
 * @param bEncKey flag
 * @param pszPassword password
 * @param pszPFXFilePath path
 * @param pszSignCert signing certificate, DER
 * @param nSignCertLen bytes in pszSignCert
 * @param pszSignKey signing key
 * @param nSignKeyLen bytes in pszSignKey
 * @param pszKmCert key-management certificate, DER
 * @param nKmCertLen bytes in pszKmCert
 * @param pszKmKey key-management key
 * @param nKmKeyLen bytes in pszKmKey
 * @return 10005, whatever the arguments
 */
QUILLGATE_API int CLP_ExportDataPFX(void* pContext, bool bEncKey, char* pszPassword, char* pszPFXFilePath,
                                    char* pszSignCert, int nSignCertLen, char* pszSignKey, int nSignKeyLen,
                                    char* pszKmCert, int nKmCertLen, char* pszKmKey, int nKmKeyLen);

/** @} */
/** @} */

#endif
