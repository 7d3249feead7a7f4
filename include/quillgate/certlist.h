#ifndef QUILLGATE_CERTLIST_H
#define QUILLGATE_CERTLIST_H

/*
 * The certificate list service: sessions, filters, media, and operations on a listed certificate by index.
 *
 * Order of calls: CLP_Initalize, CLP_SetType, [CLP_LoadCertList_... and drives], CLP_SetMediaType,
 * CLP_LoadCertList, CLP_GetCertCount, CLP_GetCertInfo and the operations by index, CP_ClearCertData,
 * CLP_UnInitalize.
 *
 * pContext is the handle that CLP_Initalize stored. A null handle answers 30002 in every function that does
 * not say otherwise. An index is a position in the list of the last CLP_LoadCertList; one that is negative or
 * past the list answers 10004. Buffers handed out through char** are released with CLP_MemFree, which wipes
 * them; they are one byte longer than their length, zeroed. A session is used by one thread.
 */

#include "quillgate/api.h"
#include "quillgate/records.h"
#include "quillgate/returncodes.h"

/* Log file of the CLP_ family, from zrapilog.ini; empty: no log. Rewritten by every CLP_Initalize. */
QUILLGATE_PLAIN_API char szLogFilePath[1024];

/* --- Session and options ---------------------------------------------------------------------------- */

/*
 * Starts a session in *pContext, or starts the one that is there again with the new values. The object stays
 * in *pContext on failure too and must be ended with CLP_UnInitalize. pPKCS11Context is ignored.
 * 0, 10003, 10004 (null option), 30001 (bad toolkit type, no work directory, toolkit's own failure),
 * 30003 (toolkit library missing).
 */
QUILLGATE_API int CLP_Initalize(void** pContext, LOADOPT* pstLoadOpt, void** pPKCS11Context);

/* Ends the session, wipes and frees everything in it. The host's handle must not be used again. */
QUILLGATE_API void CLP_UnInitalize(void* pContext);

/* Sets the filter for the next load; see LOADCERTOPT. 0, 10003, 10004. */
QUILLGATE_API int CLP_SetType(void* pContext, LOADCERTOPT* pstLoadCertOpt);

/*
 * Chooses the medium, MEDIA_...; nSubIndex is the removable drive's position in the last CLP_GetRemDrive.
 * 10004 for media 3, 4, 5, 7, a negative sub-index or a drive past the list: the earlier medium then stays.
 */
QUILLGATE_API int CLP_SetMediaType(void* pContext, int nMediaType, int nSubIndex);

/* Names the PFX file and its password for medium 8. Each text at most 1023 bytes; null leaves it empty. */
QUILLGATE_API int CLP_SetPFXInfo(void* pContext, char* pszPath, char* pszPassword);

/*
 * Hands in certificates and plain keys for medium 6, at most 4096 bytes each (10004 above); of 4096 bytes,
 * CLP_LoadCertList answers 10004. The key-management pair is taken only when all four of its arguments are
 * usable; else an earlier one stays.
 */
QUILLGATE_API int CLP_SetMemoryCert(void* pContext, char* pszSignCert, int nSignCertLen, char* pszSignKey,
                                    int nSignKeyLen, char* pszKmCert, int nKmCertLen, char* pszKmKey,
                                    int nKmKeyLen);

/*
 * Empties, or adds to, the extra directory names of a kind: "GPKI", "NPKI", "MPKI", "PPKI", case ignored. Any
 * other kind does nothing and answers 0. Names for "NPKI" are CA folders that are walked besides the known.
 */
QUILLGATE_API int CLP_LoadCertList_ClearPath(void* pContext, char* pszType);
QUILLGATE_API int CLP_LoadCertList_AddPath(void* pContext, char* pszType, char* pszPath);

/* Empties, or sets one entry of, the host's purpose names by dotted policy OID; the last call wins. */
QUILLGATE_API int CLP_LoadCertList_ClearOidInfo(void* pContext);
QUILLGATE_API int CLP_LoadCertList_OidInfo(void* pContext, char* pszOid, char* pszDivision);

/* --- Drives ----------------------------------------------------------------------------------------- */

/* The hard disk list: always one entry. nCount is written without a test of the result. */
QUILLGATE_API int CLP_GetDriveCount(void* pContext, bool bViewRemote, bool bHideCDRom, int* nCount);
QUILLGATE_API int CLP_GetDrive(void* pContext, DRIVEINFO* pstDirveInfo);

/* Mounted vfat drives. The array must have room for the count of the last CLP_GetRemDriveCount. */
QUILLGATE_API int CLP_GetRemDriveCount(void* pContext, int* nCount);
QUILLGATE_API int CLP_GetRemDrive(void* pContext, DRIVEINFO* pstRemDirveInfo);

/* --- List and details ------------------------------------------------------------------------------- */

/* Loads the list of the medium. 0, 10003, 10004 (medium without a store), 30006 (none found). */
QUILLGATE_API int CLP_LoadCertList(void* pContext);

/* The count itself; 30002 for a null handle. */
QUILLGATE_API int CLP_GetCertCount(void* pContext);

/* Copies a record; fields without a value are left alone, so pass a cleared record. 0, 10004. */
QUILLGATE_API int CLP_GetCertInfo(void* pContext, int nIndex, CERTINFO* pstSelectCertInfo);

/* Hash code for a signature with this certificate: 4 SHA-256, 5 SHA-512, 1 any other. */
QUILLGATE_API int CLP_GetHashAlgInfo(void* pContext, int nIndex, int* nHashAlg);

/* --- Keys ------------------------------------------------------------------------------------------- */

/* Opens the keys of a disk certificate into the session. 0, 10004, 30011, 30016, 30021, toolkit numbers. */
QUILLGATE_API int CLP_DecryptPriKey(void* pContext, int nIndex, char* pszPassword);

/* The same and hands the plain keys out. Media other than 1 and 2 answer 30009. */
QUILLGATE_API int CLP_DecryptPriKeyData(void* pContext, int nIndex, char* pszPassword, char** pszOutSignKey,
                                        int* nOutSignKeyLen, char** pszOutKmKey, int* nOutKmKeyLen);

/* Hands out the random value of the key. 0, 30011, 30016, 30018 (no random), 30091. */
QUILLGATE_API int CLP_GetPriKeyRandom(void* pContext, int nIndex, char* pszPassword, char** pszOutKeyRandom,
                                      int* nOutKeyRandomLen);

/* Checks the password, opens keys and random, and copies the record in one call. */
QUILLGATE_API int CLP_SelectCert(void* pContext, int nIndex, char* pszPassword, CERTINFO* pstSelCertInfo);

/* Encrypts the key files anew. 0, 10004, 30009, 30011, 30013, 30201, 30202. */
QUILLGATE_API int CLP_ChangePassword(void* pContext, int nIndex, char* pszOldPassword, char* pszNewPassword);

/* Tests a password on an encrypted key in memory. 0, 10004, 30016 (a wrong password too). */
QUILLGATE_API int CLP_CheckPassword(void* pContext, char* pszPassword, char* pszKey, int nKeyLen);

/* --- Verification ----------------------------------------------------------------------------------- */

/*
 * Verifies a listed certificate up to the root CAs of the toolkit's configuration file, which it opens as
 * "<work directory>\ZRCToolkitV30.conf" (toolkit 0) or "<work directory>\gpkiapi.conf", backslash and all.
 * Needs one CLP_SearchFileList(handle, "root", ...) earlier in the session. Blocks while roots are fetched.
 *
 * pszVerifyMsg: nMsgLen bytes, cleared by the caller; takes the toolkit's text, EUC-KR, cut and terminated,
 * only when the certificate itself was refused. May be null or of length 0.
 *
 * 0; 10003 without the "root" search; 10004 for an index outside the list; 30090 for every other failure.
 */
QUILLGATE_API int CLP_VerifyCert(void* pContext, int nIndex, int nMsgLen, char* pszVerifyMsg);

/*
 * Proves that certificate, key and identification number belong together. On media 1 and 2 the key is opened
 * with the password: 0, 30011, 30092 and what the key operations answer. All other media answer 0 unchecked.
 * 10004 for an empty number or password, 10006 on medium 7.
 */
QUILLGATE_API int CLP_VerifyVID(void* pContext, int nIndex, char* pszIDN, char* pszPassword);

/* --- Saving, deleting, PFX -------------------------------------------------------------------------- */

QUILLGATE_API int CLP_SaveCert(void* pContext, bool bEncKey, char* pszPassword, char* pszSignCert,
                               int nSignCertLen, char* pszSignKey, int nSignKeyLen, char* pszKmCert,
                               int nKmCertLen, char* pszKmKey, int nKmKeyLen);
QUILLGATE_API int CLP_ExportPFX(void* pContext, int nIndex, char* pszPassword, char* pszPFXPath);
QUILLGATE_API int CLP_DeleteCert(void* pContext, int nIndex, char* pszPassword);

/* --- File search ------------------------------------------------------------------------------------ */

/*
 * One step through the file system. pszPath "root", in any case, lists the drives; else it is a folder, of
 * which the sub-folders are listed, "." and ".." among them, each with an empty name. Files are never listed;
 * pszFormat is an extension without its dot and may be null. The session keeps each list until the next step
 * of its kind; the counts are those of the last step.
 *
 * 0; 10003 for a folder without an earlier "root" step in the session; 10004 for a null path; 30300 for a
 * folder that can't be opened.
 */
QUILLGATE_API int CLP_SearchFileList(void* pContext, char* pszPath, char* pszFormat);

/* Count of the last step: nType 0 drives, 1 folders, 2 files; 0 for any other. 0, 10004 for a null nCount. */
QUILLGATE_API int CLP_GetSearchFileCount(void* pContext, int nType, int* nCount);

/*
 * A name of a list, EUC-KR: at most nFileNameLen - 1 bytes, without a terminator, so the caller passes a
 * cleared buffer. Another nType copies nothing. 0; 10004 for a null buffer, a length below 1, an index
 * outside the list.
 */
QUILLGATE_API int CLP_GetSearchFileName(void* pContext, int nType, int nIndex, int nFileNameLen,
                                        char* pszFileName);

/* --- Memory ----------------------------------------------------------------------------------------- */

/* Wipes and frees a buffer of this family and nulls the pointer. Does not look at the handle. 0, 10004. */
QUILLGATE_API int CLP_MemFree(void* pContext, void** ppValue);

/* Drops lists and secrets and keeps the session. The second form ignores a null handle. */
QUILLGATE_API int CP_ClearCertData(void* pContext);
QUILLGATE_API void ClearCertData(void* pContext);

/* --- Not available on this platform: each answers 10005, whatever the arguments ---------------------- */

QUILLGATE_API int CLP_SetBSCertType(void* pContext, BSCERTOPT* stBriskSealOpt);
QUILLGATE_API int CLP_SetBriskSealInfo(void* pContext, bool bVerifySignature, int* nBSServiceType,
                                       char* pszDownloadUrl, int nDownloadUrlLen);
QUILLGATE_API int CLP_GetBSCertInfo(void* pContext, char* pszKeyID, int nKeyIDLen,
                                    CERTINFO* pstSelectCertInfo);
QUILLGATE_API int CLP_GetPKCS11DeviceCount(void* pContext, int* nListCnt);
QUILLGATE_API int CLP_GetPKCS11DeviceInfo(void* pContext, PKCS11DEVICEINFO* pstPKCS11DeviceInfo);
QUILLGATE_API int CLP_VerifyPKCS11Signature(void* pContext, int nIndex);
QUILLGATE_API int CLP_ClosePKCS11(void* pContext);
QUILLGATE_API int CLP_GetSMCardListCount(void* pContext, int* nCount);
QUILLGATE_API int CLP_GetSMCardListInfo(void* pContext, SUBMENULIST* pstSubMenuInfo);
QUILLGATE_API int CLP_SetPINNumber(void* pContext, char* pszPINNumber);
QUILLGATE_API int CLP_ImportPFX(void* pContext, char* pszFilePath, char* pszPassword, char** pszOutSignCert,
                                int* nOutSignCertLen, char** pszOutSignKey, int* nOutSignKeyLen,
                                char** pszOutKmCert, int* nOutKmCertLen, char** pszOutKmKey,
                                int* nOutKmKeyLen);
QUILLGATE_API int CLP_ExportDataPFX(void* pContext, bool bEncKey, char* pszPassword, char* pszPFXFilePath,
                                    char* pszSignCert, int nSignCertLen, char* pszSignKey, int nSignKeyLen,
                                    char* pszKmCert, int nKmCertLen, char* pszKmKey, int nKmKeyLen);

#endif
