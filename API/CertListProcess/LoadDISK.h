#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "BaseTypes.h"
#include "CertInfoList.h"
#include "CertParser.h"
#include "OperationLog.h"
#include "Util.h"
#include "quillgate/records.h"
#include "quillgate/returncodes.h"

struct DirectoryLevel;
struct HolderPaths;
struct KeyFields;
class DirectoryReader;
class PairFiles;
class ToolkitBytes;

/**
 * The certificate store on disk: finds certificate directories under the home directory or a removable
 * drive, lists the certificates in them, and works on their keys.
 *
 * One instance belongs to one session and one thread. Lengths are bytes, texts EUC-KR. Paths that would not
 * fit 1023 bytes belong to no entry: a cut path is another file's.
 */
class CLoadDISK
{
public:
    using Names = std::vector<std::string>;

    /** A store for a toolkit type; language and work directory are not used. */
    CLoadDISK(int nLanguage, int nTKType, char* pszWorkDir);

    /** Wipes and frees the list. The toolkit context and the policy filter stay with their owner. */
    ~CLoadDISK();
    CLoadDISK(const CLoadDISK&) = delete;
    CLoadDISK& operator=(const CLoadDISK&) = delete;

    // --- Certificate directories ----------------------------------------------------------------------

    /** Number of directories of a kind (CERTTYPE_...) on the current medium; 0 for any other kind. */
    int GetDirectoryCount(int nCertType);

    /** Fills the array of the kind up to the length that it was made with. nDirCount is not used. 0, 10004.
     */
    int GetCertDirectory(int nCertType, int nDirCount);

    /** 10004 when pszSystemDrv is null. *nDirCount takes the number of directories. */
    int GetGPKICertDirectory(char* pszSystemDrv, int* nDirCount);

    /** 10004 when pszSystemDrv or pszProgramFilePath is null or empty; the rest plays no role here. */
    int GetNPKICertDirectory(int nOS, BOOL bIs64bit, char* pszSystemDrv, char* pszProgramFilePath,
                             char* pszUserProfile, int* nDirCount);
    int GetMPKICertDirectory(int nOS, BOOL bIs64bit, char* pszSystemDrv, char* pszProgramFilePath,
                             char* pszUserProfile, int* nDirCount);

    /**
     * Walks the tree of a kind below pszFindDir. Counts into *nDirCnt; unless bOnlyCount also fills the
     * kind's array, up to its length. pszCertDir (nDirLen bytes) takes the last directory. Always 0; 10004
     * for a null argument.
     */
    int GPKIFindDirectory(bool bOnlyCount, char* pszFindDir, int nDirLen, char* pszCertDir, int* nDirCnt);
    int NPKIFindDirectory(bool bOnlyCount, char* pszFindDir, int nDirLen, char* pszCertDir, int* nDirCnt);
    int MPKIFindDirectory(bool bOnlyCount, char* pszFindDir, int nDirLen, char* pszCertDir, int* nDirCnt);

    // --- Drives ---------------------------------------------------------------------------------------

    /** Builds m_pstDriveList: one blank record. 0, 10003. */
    int GetDriveList(bool bViewRemote, bool bHideCDRom);

    /** Copies m_nDrvCnt records out. 10003 for a null array. */
    int GetDriveInfo(DRIVEINFO* pstDriveInfo);

    /** Builds m_pstRemDriveList. 0, 10003. */
    int GetRemDriveList(bool bCDRomHide);

    /** Copies m_nRemDrvCnt records out. 10003 for a null array. */
    int GetRemDriveInfo(DRIVEINFO* pstDriveInfo);

    /** Chooses the removable drive; an index outside the list changes nothing. */
    void SetRemDriveInfo(int nSubIndex);

    // --- Certificates ---------------------------------------------------------------------------------

    /** Rebuilds the directory arrays and the list. 0, 10003, 30006 (none: the earlier list stays). */
    int LoadCertList();

    /**
     * The walks. With bOnlyCount they count into *nCount, else they copy to the list from nIndex on and
     * *nCount takes the next free index. 0 with *nCount untouched when the directory array is missing.
     */
    int GetGPKICertList(bool bOnlyCount, int nIndex, int* nCount);
    int GetNPKICertList(bool bOnlyCount, int nIndex, int* nCount);
    int GetMPKIGCertList(bool bOnlyCount, int nIndex, int* nCount);
    int GetMPKINCertList(bool bOnlyCount, int nIndex, int* nCount);

    /**
     * Finds the four files of one holder in a directory, each output NUL-terminated in its length less one.
     * -1 for a null argument and an empty directory or holder name, else 0.
     */
    int GetGPKICertFilePath(char* pszDirPath, char* pszCNName, int nSignCertPathLen, char* pszSignCertPath,
                            int nSignKeyPathLen, char* pszSignKeyPath, int nKmCertPathLen,
                            char* pszKmCertPath, int nKmKeyPathLen, char* pszKmKeyPath);

    /**
     * Reads the files of a record that has its paths set and fills the rest. 0, or CLPERR_PASS,
     * CLPERR_CERT_LOAD, CLPERR_CERT_FIELD. bOnlyCount has no effect: counting filters as well.
     */
    int ParsingCert(bool bOnlyCount, CERTINFO* stCertInfo);

    /** Copies a record into the list; nothing happens without a list or with an index outside it. */
    void CopyCertInfo(int nIndex, CERTINFO* stCertInfo);

    /** The record at a position of the list; null outside it and after the list was cleared. */
    CERTINFO* record(int nIndex) const;

    // --- Keys -----------------------------------------------------------------------------------------
    // 10004 for an index outside the list and a null password.

    /** Opens the keys into the record, each once. 0, 30011, 30016, 30021, toolkit numbers. */
    int DecryptPriKey(int nIndex, char* pszPassword);

    /** Opens the keys anew and hands out copies of length plus one, freed with MemFree. Also 10003. */
    int DecryptPriKey(int nIndex, char* pszPassword, char** pszSignKey, int* nSignKeyLen, char** pszKmKey,
                      int* nKmKeyLen);

    /** Opens the signing key and fills szKeyRandom. 0, 30011, 30016, 30018, 30091, toolkit numbers. */
    int GetPrikeyRandom(int nIndex, char* pszPassword);

    /** Identity check after GetPrikeyRandom. 0, 30092. */
    int VerifyVID(int nIndex, char* pszIDN);

    /** Encrypts the key files anew, one after the other and without a way back. 30011, 30013, 30201, 30202.
     */
    int ChangePassword(int nIndex, char* pszOldPasswrod, char* pszNewPassword);

    /** Algorithm code for the key of a certificate. 0, 10004, 30014, 30015. */
    int GetPrikeyAlg(char* pszCert, int nCertLen, int* nPrikeyAlg);

    /** Writes one file. 0, 10004, 30201. */
    int WriteFile(char* pszData, int nDataLen, char* pszFilePath);

    // --- Saving and deleting --------------------------------------------------------------------------

    /**
     * The four paths that a certificate (DER) and its files belong to, below the home directory on medium 1,
     * below pszRemDrv on any other. Each output takes at most its length less one bytes. One organisation of
     * no known place ("Zarvane") answers 0 with the outputs untouched.
     *
     * 0; -1 when the subject lacks CN, O or OU; 30014; 30015; 10004 for a missing output or an empty drive;
     * 30201 when no file can be written under the subject's name: O, CN or the subject itself would be no
     * single element of a path (it is empty, "." or "..", or holds a slash), a path would be cut at its
     * limit, or there is no home directory. The outputs then stay as they were.
     */
    int MakeCertPath(int nMediaType, char* pszRemDrv, char* pszCert, int nCertLen, int nCertPathLen,
                     char* pszCertPath, int nKeyPathLen, char* pszKeyPath, int nKmCertPathLen,
                     char* pszKmCertPath, int nKmKeyPathLen, char* pszKmKeyPath);

    /**
     * Writes a certificate and its key, in this order and without a way back. With bEncKey the key is written
     * as it is, else encrypted under the password with the toolkit's algorithm nAlg. 0, 10004, 30201.
     */
    int WriteCertNKey(bool bEncKey, char* pszPassword, int nAlg, char* pszCertPath, char* pszKeyPath,
                      char* pszCert, int nCertLen, char* pszKey, int nKeyLen);

    /**
     * Copies a record's pairs out, the keys encrypted or, with bEncKey false, plain: a key that is closed is
     * an empty buffer of length 0. Without a key-management certificate its outputs stay untouched and may be
     * null. The index one past the list answers empty buffers. Freed with MemFree. 0; 10004; 10003 with what
     * was made so far left to the caller.
     */
    int ReadCertNKey(bool bEncKey, int nIndex, char** pszCert, int* nCertLen, char** pszKey, int* nKeyLen,
                     char** pszKmCert, int* nKmCertLen, char** pszKmKey, int* nKmKeyLen);

    /** The same from two files, the key as it stands in its file. 0, 10003, 10004, 30013. */
    int ReadCertNKeyFromPath(char* pszCertPath, char* pszKeyPath, char** pszCert, int* nCertLen,
                             char** pszKey, int* nKeyLen);

    /**
     * Deletes a record's files: key, certificate, and the same of a key-management pair that the record
     * names, the password being tested on each key. The record stays in the list. 0, 10004, 30011, 30200;
     * what was deleted before a failure is gone.
     */
    int DeleteCertNKey(int nIndex, char* pszPassword);

    /** The same without asking for the password, certificates first. 0, 10004, 30200. */
    int DeleteCertNKey(int nIndex);

    // --- PFX files ------------------------------------------------------------------------------------

    /**
     * Unpacks a PFX file (RFC 7292): certificates for signatures go to the Sign outputs, all others to the Km
     * outputs, each with the first key that fits. Of two of one use the later stands. Outputs of a pair that
     * the file lacks stay untouched and may be null. Freed with MemFree.
     *
     * 0; 30011 (file unreadable, wrong password); 30103; 30006 (no certificate, or not as many keys); 30014;
     * 30015; 10003; 10004 (no path, a missing output). When no key fits the last certificate the result is
     * the toolkit's number for that, with the pairs found before handed out all the same; after any other
     * failure nothing is.
     */
    int GetPKCS12(char* pszPFXPath, char* pszPassword, char** pszSignCert, int* nSignCertLen,
                  char** pszSignKey, int* nSignKeyLen, char** pszKmCert, int* nKmCertLen, char** pszKmKey,
                  int* nKmKeyLen);

    /**
     * Packs one pair, or two when both key-management lengths are above 0, into a PFX file under the
     * password. Keys are plain PKCS#8. 0, 30104 for every failure.
     */
    int MakePKCS12(char* pszPassword, char* pszPFXPath, char* pszSignCert, int nSignCertLen, char* pszSignKey,
                   int nSignKeyLen, char* pszKmCert, int nKmCertLen, char* pszKmKey, int nKmKeyLen);

    /** Wipes and frees an array made with new[] and nulls the pointer. 0, 10004. */
    int MemFree(void** ppv);

    int m_nTKType;
    int m_nMediaType = MEDIA_HARDDISK; /**< 1 or 2 */
    void* m_pZRWrapCtx = nullptr;      /**< toolkit context, borrowed */
    void* m_piniFile = nullptr;        /**< borrowed; nothing fills it here */
    char m_szLogFilePath[1024] = {};
    char m_szConfigPath[1024] = {};         /**< issuer configuration */
    char m_szAddPrivateCertPath[2048] = {}; /**< not read */
    int m_nSelRemDriveIndex = 0;
    char m_szSelRemDrive[1024] = {}; /**< mount point of the chosen drive */
    char m_szErrMsg[1024] = {};      /**< last toolkit text */
    int m_nDrvCnt = 0;
    int m_nRemDrvCnt = 0;
    int m_nSetPolicyOIDCnt = 0; /**< entries of m_pstSetOid */
    int m_nGPKIDirCnt = 0;      /**< entries of the three directory arrays */
    int m_nNPKIDirCnt = 0;
    int m_nMPKIDirCnt = 0;
    int m_nPPKIDirCnt = 0; /**< stays 0 */
    int m_nAddPPKIDirCnt = 0;
    int m_nCertCnt = 0; /**< of the last load; stands when the list is cleared */
    LOADCERTOPT m_stLoadCertOpt{};
    std::unique_ptr<DRIVEINFO[]> m_pstRemDriveList;
    std::unique_ptr<DRIVEINFO[]> m_pstDriveList;
    SETOID* m_pstSetOid = nullptr; /**< policy filter, borrowed */
    std::unique_ptr<CERTDIRPATH[]> m_pstCertGPKIDirectory;
    std::unique_ptr<CERTDIRPATH[]> m_pstCertNPKIDirectory;
    std::unique_ptr<CERTDIRPATH[]> m_pstCertMPKIDirectory;
    Names m_vtGPKIDirectory;
    Names m_vtNPKIDirectory; /**< CA folders that are walked besides the known ones */
    Names m_vtMPKIDirectory;
    Names m_vtPRIVATEDirectory;
    OidNames m_mapOidList;
    CertInfoList m_pstCertInfoList;
    CUtil m_util;

private:
    /** One of the three trees and its walks. */
    struct DirectoryKind;
    static const DirectoryKind GPKI_KIND;
    static const DirectoryKind NPKI_KIND;
    static const DirectoryKind MPKI_KIND;
    static const std::array<const DirectoryKind*, 3> KINDS; /**< in the order of the list */

    using KindCounts = std::array<int, 2>;        /**< survivors of each walk of a kind */
    using CertCounts = std::array<KindCounts, 3>; /**< of each kind */
    using Walk = int (CLoadDISK::*)(bool bOnlyCount, int nIndex, int* nCount);
    static const Walk GPKI_WALKS[1];
    static const Walk NPKI_WALKS[1];
    static const Walk MPKI_WALKS[2];

    /** A walk's own part: fills the paths of one entry. 0, CLPERR_PASS for no candidate, or a failure. */
    using Finder = int (CLoadDISK::*)(const char* directory, const DirectoryReader& reader,
                                      HolderPaths& paths);

    /** For each file of a holder, in the order of HolderPaths: known to be a regular file. */
    using KnownRegular = std::array<bool, 4>;

    /** State of one walk over a kind's directories. */
    struct ListWalk
    {
        Finder finder;
        int certType;
        bool onlyCount;
        int position = 0;   /**< survivors so far, or next free index */
        int result = QG_OK; /**< of the last candidate's finder */
        CERTINFO record{};  /**< work record */
    };

    std::unique_ptr<const PairFiles> m_pairFiles; /**< of the directory that a walk is in; else null */

    OperationLog log() { return {m_szLogFilePath, m_pZRWrapCtx, m_szErrMsg}; }

    int findDirectories(const DirectoryKind& kind, bool bOnlyCount, char* pszFindDir, int nDirLen,
                        char* pszCertDir, int* nDirCnt);
    bool acceptsLevel(const DirectoryLevel& level, const char* name) const;
    bool isAddedName(const char* folded) const;
    int countKind(const DirectoryKind& kind, KindCounts& counts, int& total);
    int fillKinds(const CertCounts& counts);
    int walkList(const char* tag, const DirectoryKind& kind, Finder finder, bool bOnlyCount, int nIndex,
                 int* nCount);
    void walkDirectory(const char* directory, ListWalk& walk);
    bool takeEntry(const HolderPaths& paths, ListWalk& walk);
    int findGpkiFiles(const char* directory, const DirectoryReader& reader, HolderPaths& paths);
    int findNpkiFiles(const char* directory, const DirectoryReader& reader, HolderPaths& paths);
    int findMpkiPair(const char* directory, const DirectoryReader& reader, HolderPaths& paths);
    int findMpkiFiles(const char* directory, const DirectoryReader& reader, HolderPaths& paths);
    int parseFiles(CERTINFO& record, const KnownRegular& regular);
    int readFile(char* pszFilePath, bool isRegular, ToolkitBytes& bytes);
    int readRequired(const OperationLog& trace, const char* name, char* pszFilePath, bool isRegular,
                     ToolkitBytes& bytes);
    int readSignPair(const OperationLog& trace, CERTINFO& record, const KnownRegular& regular,
                     ToolkitBytes& signCert);
    int readKmPair(const OperationLog& trace, CERTINFO& record, const KnownRegular& regular);
    int writeBytes(const OperationLog& trace, const char* tag, char* pszFilePath, ToolkitBytes& bytes,
                   int failureCode);
    int changeKeyFile(const KeyFields& key, CERTINFO& record, char* pszOldPassword, char* pszNewPassword);
};
