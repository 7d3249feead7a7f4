#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>

#include "BaseTypes.h"

/*
 * Reader of configuration files of "[section]" and "key=value" lines: language packs, log settings, issuer
 * and toolkit configuration. No state between calls: each query reads the file anew and finds one value, so
 * calls may run on any thread. The functions whose names begin with an underscore do the same on a list of
 * the file's lines, for callers that change a profile and write it.
 *
 * A header is a line that holds "[", the section's name and "]" in any place. A comment has "#" as its first
 * character that is not white space; ";" marks none. The key is the trimmed text before the first "=", the
 * value the trimmed text behind it. Names are compared exactly. White space is what isspace knows in the C
 * locale, so that bytes of EUC-KR texts never count as blanks, whatever locale the host has set.
 */

/** One line of a profile. */
struct ConfigProfileS
{
    CHAR* pcData; /**< the line with its line feed, zero-terminated; null in the node of an empty file */
    ConfigProfileS* pNext; /**< next line, null at the end */
};

/**
 * A profile read once, for a caller that asks it several questions at one moment. Files that count as one
 * that can't be opened, see FileGetPrivateProfileString, answer as empty ones.
 */
class ProfileText
{
public:
    /** Reads the file; null is a file that can't be opened. */
    explicit ProfileText(const CHAR* file);

    /** As FileGetPrivateProfileString, on the text that was read. */
    INT string(const CHAR* section, const CHAR* key, const CHAR* fallback, CHAR* value, INT size) const;

private:
    std::unique_ptr<char[]> m_text;
    std::size_t m_length = 0;
    bool m_outOfMemory = false;
};

/**
 * Looks one value up as text.
 *
 * The default stands in only for a key that is there with an empty value. A missing file, section or key
 * gives an empty text, and callers test for that themselves. A "[" anywhere in a line that is no comment, in
 * a value too, ends the section. Hosts' files rely on all three.
 *
 * Only regular files of at most 4 MiB are read; anything else counts as a file that can't be opened.
 *
 * @param szAppName section
 * @param szKeyName key
 * @param szDefault text for an empty value; null counts as ""
 * @param szReturnedString nSize bytes, zeroed first; receives at most nSize - 1 bytes of the value
 * @param nSize size of szReturnedString, terminator included
 * @param szFileName file to read
 * @return length of the text in szReturnedString; 0 when nothing was found or an argument is null; -2 when
 *         memory ran out
 */
INT FileGetPrivateProfileString(const CHAR* szAppName, const CHAR* szKeyName, const CHAR* szDefault,
                                CHAR* szReturnedString, INT nSize, const CHAR* szFileName);

/**
 * Looks one value up as a number, with atoi: 0 for a missing file, section or key, and for text that is no
 * number. nDefault plays no role; callers rely on the 0. Negative results are those of the text look-up.
 */
INT FileGetPrivateProfileInt(const CHAR* szAppName, const CHAR* szKeyName, INT nDefault,
                             const CHAR* szFileName);

/** Trims white space from both ends in place; a text of nothing else is zeroed over its length. Returns 1. */
LONG StrTrimString(CHAR* szStr);

/**
 * Reads the rest of a stream into a list, a node for each line; a line above 4094 bytes is split by that
 * limit. An empty stream gives one node without text. 0, or -1 when memory ran out (*ppoProfileOut is then
 * null). The list is freed with _FreeConfigProfile.
 */
INT _DecodeConfigProfile(ConfigProfileS** ppoProfileOut, FILE* fp);

/**
 * Finds the first line that holds "[szAppName]" and is no comment; without one, the list's last line, behind
 * which a search finds nothing. 0, or -1 for a null list.
 */
INT _FindConfigProfileSection(ConfigProfileS** ppoStartProfile, ConfigProfileS* poCurProfile,
                              const CHAR* szAppName);

/** 1 when the trimmed text before the line's first "=" equals the key, else 0. */
INT _FindConfigProfileKey(const CHAR* szData, const CHAR* szKeyName);

/** 1 when the first character that is not white space is "#", else 0. */
INT _IsCommentLine(const CHAR* szData);

/** 1 for a line that holds no setting: a comment, a single character, or a line without "=". */
INT _IsInvalidLine(const CHAR* szData);

/** Links a new line "key=value\n" in behind a node. 0, or -1 when memory ran out. */
INT _InsertNewKeyAndValue(ConfigProfileS* poCurProfile, const CHAR* szKeyName, const CHAR* szString);

/** Writes the lines to a stream. 0, or -1 after the first line that can't be written. */
INT _WriteProfileToFile(ConfigProfileS* poProfile, FILE* fp);

/** Frees the nodes and their texts; null is an empty list. Returns 0. */
INT _FreeConfigProfile(ConfigProfileS* poProfile);

/** Stands where folder names could be converted; converts nothing. CUtil::EucKrToUTF8 converts. */
class ConvertUTF8
{
public:
    ConvertUTF8() = default;
    ~ConvertUTF8() = default;
};
