#pragma once

#include <string_view>

#include "BaseTypes.h"

/**
 * The owning byte string of the system: a buffer one byte longer than its length, zero-terminated, and two
 * side buffers with the text forms that it hands out, which belong to the object too. Runs on one thread:
 * handing out a text changes the object. A null pointer or a negative length counts as no bytes.
 */
class CBinary
{
public:
    CBinary() = default;
    CBinary(const char* pszData, int nLen);
    CBinary(const CBinary& src);
    virtual ~CBinary();

    /** Frees the bytes and their text. */
    void empty();
    bool isEmpty() const;

    /** Overwrites the bytes and their text with 0xCD, which the compiler may not drop, then frees them. */
    void zeroEmpty();

    void set(const char* pszData, int nLen);

    /** Copies the bytes; a text that was handed out by toString stays as it is. */
    CBinary& operator=(const CBinary& data);
    CBinary& operator=(const char* data);

    /** That part, or nothing at all when it reaches past the end. */
    CBinary getSub(int nIndex, int nSize) const;

    /** A zero-terminated copy, valid until the next call or change; an empty text for no bytes. */
    char* toString(int Encodeing);

    /** The same, but null for no bytes. */
    char* toString();

    /** Lower-case hexadecimal, valid until the next call; null for no bytes. */
    char* toHexString();

    /**
     * Replaces the bytes by decoded digits of either case; a last odd digit is dropped. 0; -1 for null, and
     * at the first other character, from which on the bytes are zero.
     */
    int fromHexString(const char* pszHexString);

    /** First position of the bytes, or -1; -1 also for no bytes. */
    long find(const unsigned char* data, long len) const;
    long find(const char* data) const;

    friend const CBinary operator+(const CBinary& left, const CBinary& right);
    friend const CBinary& operator+=(CBinary& left, const CBinary& right);
    friend const CBinary& operator+=(CBinary& left, const char* right);
    friend bool operator==(const CBinary& left, const CBinary& right);
    friend bool operator!=(const CBinary& left, const CBinary& right);

    unsigned char* m_pData = nullptr; /**< the bytes, new[] of m_nLen + 1; null when empty */
    int m_nLen = 0;                   /**< bytes in m_pData */
    unsigned char* m_pStr = nullptr;  /**< what toString handed out */
    BYTE* m_pTempData = nullptr;      /**< what toHexString handed out */

private:
    std::string_view bytes() const;
    void replaceBytes(std::string_view first, std::string_view second = {});
    void replaceText(std::string_view text);

    int m_nTextLen = 0; /**< bytes in m_pStr */
};
