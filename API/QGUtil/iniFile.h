#pragma once

#include <iosfwd>
#include <string>
#include <vector>

/**
 * An INI file in memory: sections (called keys), values with a name in them, and comments, all in their
 * order.
 *
 * Reads a file or a text and writes a file. Names are kept as given; a look-up ignores their case unless told
 * otherwise, and white space around them always. A section or value is addressed by name or by index; an
 * index that is not found is noID, which counts as out of range everywhere. Its look-up rules are not those
 * of the profile reader (LibFile.h), and both are kept as they are.
 */
class CIniFile
{
public:
    enum
    {
        noID = -1
    };

    /** A section. */
    struct key
    {
        std::vector<std::string> names;    /**< parallel to values */
        std::vector<std::string> values;   /**< as read, not trimmed */
        std::vector<std::string> comments; /**< of the section */
    };

    explicit CIniFile(const std::string& iniPath = "") : path(iniPath) {}
    virtual ~CIniFile() = default;

    void CaseSensitive() { caseInsensitive = false; }
    void CaseInsensitive() { caseInsensitive = true; }

    void Path(const std::string& newPath) { path = newPath; }
    const std::string& Path() const { return path; }
    void SetPath(const std::string& newPath) { path = newPath; }

    /**
     * Adds the content of the file, or of a text, to what is there. A line that begins with a character that
     * is not printable ASCII ends it, and standard output gets its number. True when there is a section.
     */
    bool ReadFile();
    bool ReadString(const char* text);

    /** Writes all to the file, with CR and LF line ends. False when it can't be written. */
    bool WriteFile() const;

    void Erase();
    void Clear() { Erase(); }
    void Reset() { Erase(); }

    /** Index of a section, or of a value in a section, or noID. */
    long FindKey(const std::string& keyname) const;
    long FindValue(unsigned keyID, const std::string& valuename) const;

    unsigned NumKeys() const { return static_cast<unsigned>(names.size()); }
    unsigned GetNumKeys() const { return NumKeys(); }

    /** Appends a section, also one of a name that is there; returns its index. */
    unsigned AddKeyName(const std::string& keyname);

    /** Name of a section or value; empty when out of range. */
    std::string KeyName(unsigned keyID) const;
    std::string GetKeyName(unsigned keyID) const { return KeyName(keyID); }
    std::string ValueName(unsigned keyID, unsigned valueID) const;
    std::string ValueName(const std::string& keyname, unsigned valueID) const;
    std::string GetValueName(unsigned keyID, unsigned valueID) const { return ValueName(keyID, valueID); }
    std::string GetValueName(const std::string& keyname, unsigned valueID) const
    {
        return ValueName(keyname, valueID);
    }

    /** Number of values of a section; 0 when it is not found. */
    unsigned NumValues(unsigned keyID) const;
    unsigned NumValues(const std::string& keyname) const;
    unsigned GetNumValues(unsigned keyID) const { return NumValues(keyID); }
    unsigned GetNumValues(const std::string& keyname) const { return NumValues(keyname); }

    /** The value, or defValue when there is none. */
    std::string GetValue(unsigned keyID, unsigned valueID, const std::string& defValue = "") const;
    std::string GetValue(const std::string& keyname, const std::string& valuename,
                         const std::string& defValue = "") const;

    /** What atoi or atof makes of the value: 0, and not the default, for text that is no number. */
    int GetValueI(const std::string& keyname, const std::string& valuename, int defValue = 0) const;
    double GetValueF(const std::string& keyname, const std::string& valuename, double defValue = 0) const;

    /** True for a value that is a number other than 0. */
    bool GetValueB(const std::string& keyname, const std::string& valuename, bool defValue = false) const
    {
        return GetValueI(keyname, valuename, defValue ? 1 : 0) != 0;
    }

    /** Reads a value as sscanf does; returns the number of fields stored, 0 when the value is missing. */
    int GetValueV(const std::string& keyname, const std::string& valuename, const char* format, ...) const
        __attribute__((format(scanf, 4, 5)));

    /** Overwrites a value that is there. False also when it did: callers know no other answer. */
    bool SetValue(unsigned keyID, unsigned valueID, const std::string& value);

    /** Sets a value, appending section and value when they are missing; with create false it then fails. */
    bool SetValue(const std::string& keyname, const std::string& valuename, const std::string& value,
                  bool create = true);

    /** Set a number, or a text formatted as with printf and cut at 2047 bytes. They always create. */
    bool SetValueI(const std::string& keyname, const std::string& valuename, int value, bool create = true);
    bool SetValueF(const std::string& keyname, const std::string& valuename, double value,
                   bool create = true);
    bool SetValueB(const std::string& keyname, const std::string& valuename, bool value, bool create = true)
    {
        return SetValueI(keyname, valuename, value ? 1 : 0, create);
    }
    bool SetValueV(const std::string& keyname, const std::string& valuename, const char* format, ...)
        __attribute__((format(printf, 4, 5)));

    /** Remove a value, or a section with all it holds; false when not found. */
    bool DeleteValue(const std::string& keyname, const std::string& valuename);
    bool DeleteKey(const std::string& keyname);

    /* Comments of the head, before the first section: number, append, read (empty when out of range), delete.
     */
    unsigned NumHeaderComments() const { return static_cast<unsigned>(comments.size()); }
    void HeaderComment(const std::string& comment) { comments.push_back(comment); }
    std::string HeaderComment(unsigned commentID) const;
    bool DeleteHeaderComment(unsigned commentID);
    void DeleteHeaderComments() { comments.clear(); }

    /* The same within a section; one that is not found gives 0, false or an empty text. */
    unsigned NumKeyComments(unsigned keyID) const;
    unsigned NumKeyComments(const std::string& keyname) const;
    bool KeyComment(unsigned keyID, const std::string& comment);
    bool KeyComment(const std::string& keyname, const std::string& comment);
    std::string KeyComment(unsigned keyID, unsigned commentID) const;
    std::string KeyComment(const std::string& keyname, unsigned commentID) const;
    bool DeleteKeyComment(unsigned keyID, unsigned commentID);
    bool DeleteKeyComment(const std::string& keyname, unsigned commentID);
    bool DeleteKeyComments(unsigned keyID);
    bool DeleteKeyComments(const std::string& keyname);

    /** The form of a name that look-ups compare: without white space around it, lower-case unless told not.
     */
    std::string CheckCase(std::string name) const;

    /** Strips blanks, and blanks only, from both ends. */
    static void TrimValue(std::string& value);

private:
    class Reader;
    bool readLines(std::istream& in);
    unsigned idOf(const std::string& keyname) const { return static_cast<unsigned>(FindKey(keyname)); }

    bool caseInsensitive = true;
    std::string path;                  /**< file that ReadFile and WriteFile use */
    std::vector<key> keys;             /**< parallel to names */
    std::vector<std::string> names;    /**< of the sections */
    std::vector<std::string> comments; /**< before the first section */
};
