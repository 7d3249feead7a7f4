#pragma once

#include <climits>
#include <ctime>

#include "BaseTypes.h"
#include "quillgate/records.h"

/** Languages of a CUtil and of the records' nLanguage. */
enum
{
    LANGUAGE_KOREAN = 1,
    LANGUAGE_ENGLISH = 2
};

class CBinary;

/** A calendar date. */
struct Calc
{
    int m_nYear; /**< full year */
    int m_nMon;  /**< month from 1 */
    int m_nDay;  /**< day of the month from 1 */
};

/**
 * The common helpers of the system: a language, the path of its language pack, and many small operations, of
 * which most need neither and are static, so that they cost no object.
 *
 * Texts are EUC-KR bytes. Outputs are the caller's buffers, which it clears first: several operations fill an
 * exact number of bytes and write no terminator, and say so. Where no size is passed the buffer has at least
 * 1024 bytes, and longer texts are cut to 1023. A null pointer is answered with the operation's failure, or
 * does nothing where there is none.
 */
class CUtil
{
public:
    int m_nLanguage = LANGUAGE_KOREAN;    /**< LANGUAGE_KOREAN or LANGUAGE_ENGLISH */
    char m_szLanguagePackPath[1024] = {}; /**< path of the language pack */

    /* --- Language (UtilLanguage.cpp) --- */

    /**
     * Korean, with the language pack under "/Zarvane/Quillgate/" of the home directory; the path stays empty
     * when the user has none. Looks the user up, so don't make one of these in a loop.
     */
    CUtil();

    /** The given language, with "KOR.ini" (1) or "ENG.ini" (2) of a directory; any other leaves the path
     * empty. */
    CUtil(int nLanguage, const char* pszWorkDir);

    /** 100 for every language; callers compare with that. */
    static int GetLanguageCode();

    /**
     * Reads a text of section "UserInterface" from a language pack.
     *
     * @param nOutValueLen bytes to fill: the text, then zeros. A text of that length or more is not
     * terminated, so the buffer is at least one byte longer than nOutValueLen and cleared. At most 1023 bytes
     * of text
     * @param pszOutValue receives the text; empty for a missing file, section or key
     */
    static void GetLanguageUIText(const char* pszLanguageFilePath, const char* pszKeyword, int nOutValueLen,
                                  char* pszOutValue);

    /** The same from section "Message". */
    static void GetLanguageMessageText(const char* pszLanguageFilePath, const char* pszKeyword,
                                       int nOutValueLen, char* pszOutValue);

    /* --- Text (UtilText.cpp) --- */

    /** Folds ASCII letters in place; other bytes pass unchanged. */
    static void ToLower(LPBYTE lpStr);
    static void ToUpper(LPBYTE lpStr);

    /**
     * Removes every tab, CR and LF (TrimData) or every blank (TrimDataSpace). In is taken apart and unusable
     * afterwards; Out is at least as large. Returns the length of Out.
     */
    static int TrimData(char* In, char* Out);
    static int TrimDataSpace(char* In, char* Out);

    /**
     * Copies In with each byte equal to before[0] replaced by after[0]; only the first character of each
     * counts. No terminator is written: Out is cleared and larger than In. A null Out does nothing.
     */
    static void ReplaceData(const char* In, const char* before, const char* after, char* Out);

    /**
     * Replaces every occurrence of a text, from left to right. The output may be the input.
     *
     * @param nLen size of pszOutData; nLen - 1 bytes are filled, with zeros behind a shorter result, and the
     *        last byte is left as the caller cleared it
     * @return 0, also when memory ran out and nothing was written; -1 for an empty pOlds or a null pointer
     */
    static int ReplaceAll(const char* pData, const char* pOlds, const char* pNews, int nLen,
                          char* pszOutData);

    /** The same into a byte buffer. */
    static int ReplaceAll(const char* pData, const char* pOlds, const char* pNews, CBinary* binyOut);

    /** Not available: null. */
    static char* WtoA(wchar_t* pwszData);
    static wchar_t* AtoW(char* pszData);

    /** errno. */
    static int GetSystemError();

    /* --- Codes (UtilCodes.cpp) --- */

    /**
     * Decodes pairs of hexadecimal digits behind dropping blanks and commas; a last odd digit is dropped.
     * Other characters are not refused and decode to what the arithmetic on their codes gives.
     *
     * @param szDest at least nSrcLen / 2 bytes; may be szSrc
     * @param nDestLen receives the number of bytes
     */
    static void HexStringToBin(const char* szSrc, int nSrcLen, char* szDest, int* nDestLen);

    /**
     * Lower-case hexadecimal of nDataLen bytes.
     *
     * @param pszString receives a terminated text of 2 * nDataLen + 1 bytes, which the caller frees with
     * delete[]
     * @param nStringLen receives its length without the terminator
     * @return 0, 10003, or 10004 for a null pointer or negative length
     */
    static int toHexString(const char* pszData, int nDataLen, char** pszString, int* nStringLen);

    /** No encoding exists: 10004 for a null or empty text, otherwise 10005. */
    static int toEncode(int Encodeing, const char* pszData, char** pszEncodeData, int* nEncodeDataLen);

    /** Convert nothing: *nWideLen becomes 0 and the result is 0. Callers rely on the 0. */
    static int UTF8ToMultibyte(const char* pszMultData, char* pszWideData, int* nWideLen);
    static int MultibyteToWideData(const char* pszMultData, char* pszWideData, int* nWideLen);
    static int WideDataToMultibyte(const char* pszWideData, char* pszMultData, int* nWideLen);

    /**
     * Converts a text in place from EUC-KR to UTF-8. The result is up to half as long again, so the buffer
     * has room for 2048 bytes unless the caller knows better.
     *
     * @return 0; -1, with the text untouched, for bytes that are no EUC-KR or a result above 2047 bytes
     */
    static int EucKrToUTF8(char* pszChangeCharTarget);

    /* --- Certificate text (UtilCertText.cpp) --- */

    /**
     * Cuts the common name out of a name text that begins with "cn=": the bytes from the fourth to the first
     * comma. That "cn=" stands at the start is taken for granted: with "cn=" elsewhere the cut is the same.
     *
     * @param nLen not used
     * @param pszCNString at least 1024 bytes
     * @return 0, also for a name without a comma, which copies nothing; -1 for null or a name without "cn="
     */
    static int GetCNString(const char* pszDNString, int nLen, char* pszCNString);

    /** Likewise what stands between the first "o=" ("ou="), in whatever place, and the next comma. */
    static int GetOString(const char* pszDNString, int nLen, char* pszOString);
    static int GetOUString(const char* pszDNString, int nLen, char* pszOUString);

    /**
     * Guesses the CA family from an organisation name; case counts. CERTTYPE_GPKI for "Government",
     * CERTTYPE_MPKI for "Ministry", CERTTYPE_NPKI for the name of an accredited CA, in this order; else 8.
     */
    static void GetCertCAType(const char* psz0String, int* nCertCAType);

    /** True when the OID equals one of nCount filter entries, whole text against whole text, case ignored. */
    static bool CheckPolicyID(const char* szOID, const SETOID* stSetOid, int nCount);

    /**
     * Finds the name of a policy; the last of several equal rows wins.
     *
     * @param pszPolicyName 1024 bytes, all of which are filled on a match
     * @return true for a match
     */
    static bool GetPolicyName(const char* pszPolicyID, const POLICYID* stPolicyIDList, int nCount,
                              char* pszPolicyName);

    /**
     * Puts the labels of a certificate's key usages in the user's language together.
     *
     * @param pszFilePath language pack
     * @param pszKeyUsage usage words of the certificate
     * @param pszDiv text between two labels
     * @param nKeyUsageLen size of the output, which is filled but for its last byte
     */
    static void GetKeyUsageName(const char* pszFilePath, const char* pszKeyUsage, const char* pszDiv,
                                int nKeyUsageLen, char* pszKeyUsageString);

    /* --- Dates (UtilDates.cpp) --- */

    /**
     * Reads "year-month-day hour:minute:second" as local standard time.
     *
     * Failures are small numbers that look like times of January 1970: 10004 for null, an empty text or one
     * above 29 characters, 1 to 6 for the first missing field from the year on, 6 for a date out of range.
     * GetValidity treats them as times.
     */
    static time_t str2time(const char* pszDate);

    /** Fills 8 bytes with the local year and month, as "2026_01_". No terminator. Returns 0. */
    static int GetCurrentTimeDay(char* szOutTime);

    /**
     * Judges the validity of a certificate by the present time.
     *
     * @param b1024 chooses the family of the state: CERTSTATE_..._1024 when true
     * @param nCertType CERTTYPE_...: the renewal window is 30 days; for CERTTYPE_GPKI 100, or 90 for OIDs
     *        that contain "1 2 410 100001 5 3"
     * @param pszBefore,pszAfter validity, as str2time reads it
     * @param pszOutBeforeDay,pszOutAfterDay receive "YYYY-MM-DD"; the second is filled with zeros to its size
     * @param nRemainDay receives the days left when the state is "about to expire", else is left alone
     * @param nOutValidity receives CERTSTATE_...
     * @return 0
     */
    static int GetValidity(bool b1024, int nCertType, const char* pszOID, const char* pszBefore,
                           const char* pszAfter, int nOutBeforeLen, char* pszOutBeforeDay, int nOutAfterLen,
                           char* pszOutAfterDay, int* nRemainDay, int* nOutValidity);

    /** Days from today to a date; 0 when its year has passed, negative for a past date of this year. */
    static int CalcDay(int nYear, int nMon, int nDay);

    /** Leap days between two dates, for CalcDay: now has the full year and a month from 1. May be -1. */
    static int yun(const tm* now, Calc next);

    /** Days of a month in a common year; 31 for a number that is no month. */
    static int day(int mon);

    /* --- Drives and folders (UtilDrives.cpp) --- */

    /**
     * The hard disk, the one drive there is: with bOnlyCount *nCount becomes 1, else the first record is
     * filled and *nCount left alone. The flags play no role. Returns 0.
     */
    int GetDriveInfo(bool bOnlyCount, bool bHideCDRom, int* nCount, DRIVEINFO* stDriveInfo);
    int GetDriveInfo(bool bOnlyCount, bool bHideCDRom, bool bHideRemote, bool bHideLocal, int* nCount,
                     DRIVEINFO* stDriveInfo);

    /** Counts the mounted vfat drives; *nCnt is left alone when the mount table can't be read. Returns 0. */
    static int GetRemDriveCount(bool bCDRomHide, int* nCnt);

    /**
     * Fills a record for each mounted vfat drive, in the order of the mount table.
     *
     * @param nLimit records in the array: a drive that was mounted after the caller counted is left out
     * @return 0, also when the mount table can't be read
     */
    static int GetRemDriveInfo(bool bCDRomHide, DRIVEINFO* stRemDriveInfo, int nLimit = INT_MAX);

    /**
     * Lists a folder. Every directory in it, "." and ".." included, counts as a folder with an empty name,
     * and no file is ever listed; the file search is built on just that.
     *
     * @param bOnlyCount true stores the counts, which are 0 for a folder that can't be opened; false fills
     * the lists and leaves the counts alone
     * @param pszFormat extension; plays no role, since no file matches
     * @param nFolderLimit records in stFolder: a directory made after the caller counted is left out
     */
    static void GetFolderFilePath(bool bOnlyCount, const char* pszRootPath, const char* pszFormat,
                                  int* nFolderCnt, int* nFileCnt, EXPFILELIST* stFile, EXPFILELIST* stFolder,
                                  int nFolderLimit = INT_MAX);

    /**
     * Finds a directory entry of any kind by name, whatever the case of its ASCII letters. The first match in
     * the directory's order wins.
     *
     * @param result receives the name as it stands on disk, without a terminator: cleared, at least 256 bytes
     * @return 0, -1 when there is none, -2 when the directory can't be opened
     */
    static int findDirectoryAndFile(const char* rootPath, const char* targetName, char* result);

    /* --- Byte buffers (UtilBinary.cpp); a part that is not within the source gives no bytes --- */

    /** The first nCount bytes; nCount bytes from nStartPos; the last nCount bytes. Their copies are wiped. */
    static void BinaryLeft(CBinary binySrc, CBinary* binyDest, int nCount);
    static void BinaryMid(CBinary binySrc, CBinary* binyDest, int nStartPos, int nCount);
    static void BinaryRight(CBinary binySrc, CBinary* binyDest, int nCount);

    /**
     * Counts the occurrences of a text, overlapping ones too.
     *
     * @param nLastPos receives the position of the last one; that position plus 1 when there is only one; -1
     * for none
     */
    static int BinaryFindCount(CBinary binySrc, const char* szdata, int& nLastPos);

    /**
     * Position of a text from nSPos on, counted from the start of the buffer, or -1. From 0 the whole buffer
     * is searched; from any other position only up to the next zero byte.
     */
    static int BinaryFind2(const CBinary& binySrc, const char* szFstr, int nSPos);

    /** Counts the finds of a text by BinaryFind2, going on one byte behind each. */
    static void ParingFindCnt(const CBinary& binyData, const char* pszFind, int* nCount);

    /**
     * Counts the lines of a text, stepping by the longest line so far: of lines that get shorter it may miss
     * some. A line feed as the first character does not count. nInDataLen and pszFind play no role.
     */
    static void ParingFindCnt(const char* pszInData, int nInDataLen, const char* pszFind, int* nCount);

    /* --- INI objects (UtilIni.cpp) --- */

    /**
     * Adds the settings of a text to a CIniFile, which is made when *object is null. What can't be read is
     * passed over. 0; 10003 when memory ran out; 10004 for a null object. Freed with INIFreeData.
     */
    static int INIReadData(const char* pszData, void** object);

    /** Destroys an object of INIReadData; null is passed over. */
    static void INIFreeData(void* object);

    /* --- Logging (UtilLog.cpp) --- */

    /**
     * Sends a trace line to the system log, at alert priority, provided that the log file can be opened,
     * which is made, empty, when it is missing. Text and limits as with the free SetLogInfo.
     */
    static void SetLogInfo(const char* pszLogPath, const char* format, ...)
        __attribute__((format(printf, 2, 3)));

    /** Replaces a file's content by a text. Returns 0, also when the file can't be opened. */
    static int WriteLogDataFile(const char* pszFilPath, const char* pszData);
};
