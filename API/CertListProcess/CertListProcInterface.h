#pragma once

#include <climits>
#include <initializer_list>
#include <memory>

#include "LoadDISK.h"
#include "LoadMemory.h"
#include "OperationLog.h"
#include "SearchList.h"
#include "ToolkitBytes.h"
#include "Util.h"
#include "quillgate/records.h"

/**
 * One session of the certificate list service: the object behind the CLP_ handle.
 *
 * It owns the two stores, the toolkit context and the policy filter, and sends each operation to the store of
 * the current medium. Results are the codes of returncodes.h; nearly every operation sets m_nRtn to 0 on
 * entry and gives it back. Before Inialize has made the stores, operations answer 10001. An index outside
 * the list, and any index after the list was cleared, answers 10004. Buffers handed out are one byte longer
 * than their length, zeroed, and released with MemFree. One thread.
 */
class CCertListProcInterface
{
public:
    CCertListProcInterface() = default;

    /** Ends the session and wipes every secret in it. */
    ~CCertListProcInterface();
    CCertListProcInterface(const CCertListProcInterface&) = delete;
    CCertListProcInterface& operator=(const CCertListProcInterface&) = delete;

    // --- Life cycle -----------------------------------------------------------------------------------

    /** Reads the log file path from zrapilog.ini of the work directory; empty when there is none. */
    void SetLogPathInfo();

    /** Chooses the work directory's issuer configuration unless the host named one. Always 0. */
    int SetConfigPath();

    /** Makes the stores and the toolkit context. pPKCS11Context is ignored. 0, 30001, 30003. */
    int Inialize(int nTKType, void** pPKCS11Context);

    /** Frees stores, toolkit context and lists; a second call does nothing. */
    void UnInitalize();

    /** Wipes and frees the lists and secrets and keeps the session; counts, path and medium stay. */
    void ClearCertData();

    /** Wipes and frees a buffer that was handed out and nulls the pointer. 0, 10004. */
    int MemFree(void** ppv);

    // --- Options --------------------------------------------------------------------------------------

    /** Number of entries in m_szCertPolicyIDs; unless bOnlyCount also fills m_pstSetOid. */
    int ParsingPolicyIDS(bool bOnlyCount);

    /** Hands the filter to both stores; an empty text keeps the earlier one. 0, 10003, 10004. */
    int SetLoadCertType(LOADCERTOPT* stLoadCertOpt);

    /** Keeps path and password of a PFX file, each at most 1023 bytes; null and empty clear. Always 0. */
    int SetPFXInfo(const char* pszPath, const char* pszPassword);

    /** Keeps certificates and plain keys for medium 6. 0, 10004 for a length above 4096. */
    int SetMemoryCert(const char* pszSignCert, int nSignCertLen, const char* pszSignKey, int nSignKeyLen,
                      const char* pszKmCert, int nKmCertLen, const char* pszKmKey, int nKmKeyLen);

    // --- Drives and medium ----------------------------------------------------------------------------

    int GetDriveCount(bool bViewRemote, bool bHideCDRom, int* nCount);
    int GetDriveList(DRIVEINFO* pstDirveInfo);
    int GetRemDriveCount(int* nCount);
    int GetRemDriveList(DRIVEINFO* pstRemDirveInfo);

    /** 0, or 10004 with nothing changed: media 3, 4, 5, 7, a negative sub-index, a drive that isn't listed.
     */
    int SetMediaType(int nMediaType, int nSubIndex);

    // --- List -----------------------------------------------------------------------------------------

    /** Loads the medium's list. 0, 10003, 10004 (no store), 30006, 30007; of a PFX file also GetPKCS12's. */
    int LoadCertList();

    /** The count itself, of the medium's store. */
    int GetCertCount();

    /** Hands out the signing certificate. The result is the operation's before unless this one fails. */
    int GetCertData(int nIndex, char** pszOutCert, int* nOutCertLen);

    /** Copies a record field by field into a cleared one. 0, 10004. */
    int GetCertInfo(int nIndex, CERTINFO* pstSelectCertInfo);

    /** 4 for SHA-256, 5 for SHA-512, 1 for all others. 0, 10004. */
    int GetHashAlgInfo(int nIndex, int* nHashAlg);

    /** Loads bytes into the memory store, see CLoadMemory::LoadCertList. */
    int LoadMemoryCert(char* pszSignCert, int nSignCertLen, char* pszSignKey, int nSignKeyLen,
                       char* pszKmCert, int nKmCertLen, char* pszKmKey, int nKmKeyLen);

    // --- Keys -----------------------------------------------------------------------------------------

    int DecryptPriKey(int nIndex, char* pszPassword);
    int DecryptPriKey(int nIndex, char* pszPassword, char** pszOutSignKey, int* nOutSignKeyLen,
                      char** pszOutKmKey, int* nOutKmKeyLen);
    int GetPriKeyRandom(int nIndex, char* pszPassword);
    int GetPriKeyRandom(int nIndex, char* pszPassword, char** pszOutRandom, int* nOutRandomLen);

    /** Opens keys and random of the record. 0, 30011, 30016, 30018, 30091, toolkit numbers. */
    int SelectCert(int nIndex, char* pszPassword);
    int ChangePassword(int nIndex, char* pszOldPasswrod, char* pszNewPassword);

    /** Tests a password on an encrypted key. 0, 10004, 30016 for any failure. */
    int CheckPassword(char* pszPassword, char* pszKey, int nKeyLen);

    // --- Verification ---------------------------------------------------------------------------------

    /** Identity check of a listed certificate; media other than 1 and 2 give 0 unchecked. */
    int VerifyVID(int nIndex, char* pszIDN, char* pszPassword);

    /**
     * Verifies a listed certificate up to the roots of the toolkit's configuration; see CLP_VerifyCert. After
     * every failure but QG_NO_MEMORY the toolkit's text stands in m_szErrMsg.
     */
    int VerifyCert(int nIndex, int nDetailMsgLen, char* pszDetailMsg);

    /**
     * Number of entries of a toolkit configuration whose DN contains "Root", among the first thousand. 0,
     * 10004 for a null or empty path, 30004 when there is no count or the file cannot be read.
     */
    int GetRootCertCount(char* pszConfPath, int* nCount);

    /**
     * Fills a cleared array with URL and DN of those entries; an empty value leaves its field alone. nLimit
     * is the room in the array, for a file that has grown since it was counted. Codes of GetRootCertCount.
     */
    int GetRootCertURL(char* pszConfPath, ROOTCERTURLINFO* pstRootCertURL, int nLimit = INT_MAX);

    // --- Saving, deleting, PFX ------------------------------------------------------------------------

    /**
     * Writes a certificate and its keys to medium 1 or 2, see CLP_SaveCert. bEncKey says that the keys are
     * encrypted already; on other media they are opened first, before the medium is refused.
     */
    int SaveCert(bool bEncKey, char* pszSignCert, int nSignCertLen, char* pszInSignKey, int nInSignKeyLen,
                 char* pszKmCert, int nKmCertLen, char* pszInKmKey, int nInKmKeyLen, char* pszPassword);

    /** Removes a listed certificate from its medium, see CLP_DeleteCert. */
    int DeleteCert(int nIndex, char* pszPassword);

    /** Writes a listed certificate and its keys to a PFX file under the same password, see CLP_ExportPFX. */
    int ExportPFX(int nIndex, char* pszPassword, char* pszPFXPath);

    /**
     * Unpacks a PFX file; a pair that it lacks leaves its outputs untouched, which may then be null. 0,
     * 10003, 10004, and the codes of CLoadDISK::GetPKCS12.
     */
    int GetCertPKCS12(char* pszPFXFilePath, char* pszPFXPassword, char** pszOutSignCert, int* nOutSignCertLen,
                      char** pszOutSignKey, int* nOutSignKeyLen, char** pszOutKmCert, int* nOutKmCertLen,
                      char** pszOutKmKey, int* nOutKmKeyLen);

    /** The same for a caller of the session's; also 10004 for an empty path. */
    int ImportPFX(char* pszFilePath, char* pszPassword, char** pszOutSignCert, int* nOutSignCertLen,
                  char** pszOutSignKey, int* nOutSignKeyLen, char** pszOutKmCert, int* nOutKmCertLen,
                  char** pszOutKmKey, int* nOutKmKeyLen);

    /**
     * Writes pairs that the caller holds to a PFX file; with bEncKey the keys are opened with the password
     * first. 0, 10003, 10004, 30016 (a key does not open), 30104.
     */
    int ExportDataPFX(bool bEncKey, char* pszPassword, char* pszPFXFilePath, char* pszSignCert,
                      int nSignCertLen, char* pszSignKey, int nSignKeyLen, char* pszKmCert, int nKmCertLen,
                      char* pszKmKey, int nKmKeyLen);

    // --- File search ----------------------------------------------------------------------------------

    /** One step of the search, see CLP_SearchFileList. */
    int SetSearchFileList(char* pszPath, char* pszFormat);

    /** Count of the last step: drives (0), folders (1), files (2); 0 for any other type. */
    int GetSearchFileCount(int nType, int* nCount);

    /** A name of those lists, see CLP_GetSearchFileName. */
    int GetSearchFileName(int nType, int nIndex, int nFileNameLen, char* pszFileName);

    /** The stores; null before Inialize. */
    CLoadDISK* GetDiskPointer() const { return m_pDisk.get(); }
    CLoadMemory* GetMemoryPointer() const { return m_pMemory.get(); }

    int m_nRtn = 0;
    bool m_bInit = false;          /**< the stores have context and paths; never cleared */
    int m_nMediaType = MEDIA_NONE; /**< MEDIA_... */
    int m_nLanguage = LANGUAGE_KOREAN;
    int m_nTKType = TOOLKIT_GPKI;
    char m_szWorkDir[1024] = {};
    char m_szErrMsg[1024] = {};
    char m_szLogFilePath[1024] = {};
    char m_szConfPath[1024] = {};
    char m_szConfData[8000] = {}; /**< not read further */
    char m_szMemSignCert[4096] = {};
    char m_szMemSignKey[4096] = {};
    char m_szMemKmCert[4096] = {};
    char m_szMemKmKey[4096] = {};
    int m_nMemSignCertLen = 0;
    int m_nMemSignKeyLen = 0;
    int m_nMemKmCerLen = 0;
    int m_nMemKmKeyLen = 0;
    int m_nSubIndex = 0;   /**< the removable drive's position */
    int m_nPhoneIndex = 0; /**< stored only, like the others without a comment */
    bool m_bOnlyLoadBriskSeal = false;
    bool m_bHideBriskSeal = false;
    bool m_bSetTopZarvaneDrive = false;
    int m_nSMCardType = 0;
    int m_nPhoneType = 0;
    char m_szUbikeyWParam[1024] = {};
    char m_szUbikeylParam[1024] = {};
    int m_nUbikeyVersion = 0;
    char m_szPFXPath[1024] = {};
    char m_szPINNumber[1024] = {};
    char m_szPFXPassword[1024] = {};
    char m_szDriverDownloadURL[1024] = {};
    std::unique_ptr<CLoadDISK> m_pDisk;
    std::unique_ptr<CLoadMemory> m_pMemory;
    CUtil m_util;
    void* m_pZRWrapCtx = nullptr; /**< owned; both stores borrow it */
    void* m_piniFile = nullptr;   /**< nothing fills it on this platform */
    int m_nSetPolicyOIDCnt = 0;
    std::unique_ptr<SETOID[]> m_pstSetOid; /**< both stores borrow it */
    char m_szCertPolicyIDs[2048] = {};
    bool m_bCDROMHide = false;
    bool m_bRemoteView = false;
    int m_nPhoneListCount = 0;
    std::unique_ptr<SUBMENULIST[]> m_pstPhoneList;
    SearchList<DRIVEINFO> m_pstSearchDriveInfo; /**< empty until a "root" search: verification asks for it */
    SearchList<EXPFILELIST> m_pstFileNameList;
    SearchList<EXPFILELIST> m_pstFolderNameList;
    int m_nDriveCnt = 0;
    int m_nFolderCnt = 0;
    int m_nFileCnt = 0;

private:
    OperationLog log() { return {m_szLogFilePath, m_pZRWrapCtx, m_szErrMsg}; }

    /** Runs an operation between its log lines; its result becomes m_nRtn. */
    template <typename Body>
    int run(const char* tag, Body body)
    {
        return run(tag, tag, body);
    }

    /** The same where the end line carries another tag. */
    template <typename Body>
    int run(const char* tag, const char* endTag, Body body)
    {
        m_nRtn = QG_OK;
        return log().traced(tag, endTag, [&] { return m_nRtn = body(); });
    }

    /** The same for an operation that needs the stores. */
    template <typename Body>
    int runOnStores(const char* tag, Body body)
    {
        return runOnStores(tag, tag, body);
    }

    template <typename Body>
    int runOnStores(const char* tag, const char* endTag, Body body)
    {
        return run(tag, endTag,
                   [&] { return m_pDisk && m_pMemory ? body() : static_cast<int>(QG_NO_CONTEXT); });
    }

    bool onDisk() const { return m_nMediaType == MEDIA_HARDDISK || m_nMediaType == MEDIA_REMOVABLE; }
    bool inMemory() const;
    CERTINFO* memoryRecord() const { return m_pMemory->m_pstCertInfoList.get(); }
    CERTINFO* currentRecord(int nIndex) const;

    void startStores();
    int rebuildPolicyFilter(const char* policies);
    template <typename Store>
    void giveOptions(Store& store, const LOADCERTOPT& option) const;
    template <typename Build>
    int countDrives(int* nCount, const int& built, Build build);
    int loadMemoryList();
    int loadPfxList();
    struct PfxOutputs;
    int unpackPfx(char* pszPath, char* pszPassword, const PfxOutputs& outputs);
    int makeSavePaths(char* pszSignCert, int nSignCertLen, HolderPaths& paths);
    static void copyRecord(CERTINFO& target, const CERTINFO& source);
    template <typename Work>
    int withPassword(int nIndex, const char* pszPassword, std::initializer_list<int> passwordMedia,
                     Work work);
    int openKeyRandom(int nIndex, char* pszPassword);
    int refuseVerify(const char* callee, int code);
    int trustRoots(char* pszConfPath);
    int trustRoot(const ROOTCERTURLINFO& root, ToolkitBytes& data);
    int loadForVerify(int nIndex, ToolkitBytes& cert);
    int searchDrives();
    int searchFolder(const char* pszPath, const char* pszFormat);
};
