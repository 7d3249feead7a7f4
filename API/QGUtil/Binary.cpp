#include "Binary.h"

#include <cstring>

namespace {

/** A zero-terminated copy of both pieces made with new[]. */
unsigned char* newBytes(std::string_view first, std::string_view second = {})
{
    auto* bytes = new unsigned char[first.size() + second.size() + 1]();
    first.copy(reinterpret_cast<char*>(bytes), first.size());
    second.copy(reinterpret_cast<char*>(bytes) + first.size(), second.size());
    return bytes;
}

std::string_view view(const void* data, long length)
{
    return {static_cast<const char*>(data), data && length > 0 ? static_cast<std::size_t>(length) : 0};
}

std::string_view textView(const char* text)
{
    return text ? std::string_view(text) : std::string_view();
}

/** Overwrites what is about to be freed. */
void fill(unsigned char* bytes, int length)
{
    std::memset(bytes, 0xCD, static_cast<std::size_t>(length));
    asm volatile("" : : "r"(bytes) : "memory"); // the bytes are looked at, says this, so the fill stays
}

template <typename T>
void freeArray(T*& array)
{
    delete[] array;
    array = nullptr;
}

/** Value of a hexadecimal digit, or -1. */
int digitValue(char digit)
{
    constexpr std::string_view digits = "0123456789abcdefABCDEF";
    const std::size_t at = digits.find(digit);
    if (at == digits.npos)
        return -1;
    return static_cast<int>(at < 16 ? at : at - 6);
}

} // namespace

CBinary::CBinary(const char* pszData, int nLen)
{
    replaceBytes(view(pszData, nLen));
}

CBinary::CBinary(const CBinary& src)
{
    replaceBytes(src.bytes());
    // The text may be older and shorter than the bytes, so it is copied by its own length.
    if (src.m_pStr)
        replaceText(view(src.m_pStr, src.m_nTextLen));
}

CBinary::~CBinary()
{
    empty();
    freeArray(m_pTempData);
}

void CBinary::empty()
{
    replaceBytes({});
    freeArray(m_pStr);
}

bool CBinary::isEmpty() const
{
    return !m_pData || m_nLen == 0;
}

void CBinary::zeroEmpty()
{
    if (!isEmpty())
        fill(m_pData, m_nLen);
    if (m_pStr)
        fill(m_pStr, m_nTextLen);
    empty();
}

void CBinary::set(const char* pszData, int nLen)
{
    replaceBytes(view(pszData, nLen));
    freeArray(m_pStr);
}

CBinary& CBinary::operator=(const CBinary& data)
{
    if (this != &data)
        replaceBytes(data.bytes());
    return *this;
}

CBinary& CBinary::operator=(const char* data)
{
    replaceBytes(textView(data));
    return *this;
}

CBinary CBinary::getSub(int nIndex, int nSize) const
{
    if (nSize <= 0 || nIndex < 0 || nIndex >= m_nLen || nSize > m_nLen - nIndex)
        return {};
    return {reinterpret_cast<const char*>(m_pData) + nIndex, nSize};
}

char* CBinary::toString(int /*Encodeing*/)
{
    static char none[1];
    return m_nLen == 0 ? none : toString();
}

char* CBinary::toString()
{
    if (m_nLen == 0)
        return nullptr;
    replaceText(bytes());
    return reinterpret_cast<char*>(m_pStr);
}

char* CBinary::toHexString()
{
    if (m_nLen == 0)
        return nullptr;
    const std::string_view data = bytes();
    freeArray(m_pTempData);
    m_pTempData = new BYTE[2 * data.size() + 1]();
    for (std::size_t i = 0; i < data.size(); ++i) {
        m_pTempData[2 * i] = static_cast<BYTE>("0123456789abcdef"[m_pData[i] >> 4]);
        m_pTempData[2 * i + 1] = static_cast<BYTE>("0123456789abcdef"[m_pData[i] & 15]);
    }
    return reinterpret_cast<char*>(m_pTempData);
}

int CBinary::fromHexString(const char* pszHexString)
{
    empty();
    if (!pszHexString)
        return -1;
    const std::size_t length = std::strlen(pszHexString) / 2;
    if (length == 0)
        return 0;
    m_pData = new unsigned char[length + 1]();
    m_nLen = static_cast<int>(length);
    for (std::size_t i = 0; i < length; ++i) {
        const int high = digitValue(pszHexString[2 * i]);
        const int low = digitValue(pszHexString[2 * i + 1]);
        if (high < 0 || low < 0)
            return -1;
        m_pData[i] = static_cast<unsigned char>(high * 16 + low);
    }
    return 0;
}

long CBinary::find(const unsigned char* data, long len) const
{
    const std::string_view wanted = view(data, len);
    const std::size_t at = wanted.empty() ? std::string_view::npos : bytes().find(wanted);
    return at == std::string_view::npos ? -1 : static_cast<long>(at);
}

long CBinary::find(const char* data) const
{
    return find(reinterpret_cast<const unsigned char*>(data), static_cast<long>(textView(data).size()));
}

const CBinary operator+(const CBinary& left, const CBinary& right)
{
    CBinary sum;
    sum.replaceBytes(left.bytes(), right.bytes());
    return sum;
}

const CBinary& operator+=(CBinary& left, const CBinary& right)
{
    if (right.m_nLen > 0)
        left.replaceBytes(left.bytes(), right.bytes());
    return left;
}

const CBinary& operator+=(CBinary& left, const char* right)
{
    if (right)
        left.replaceBytes(left.bytes(), right);
    return left;
}

bool operator==(const CBinary& left, const CBinary& right)
{
    return left.bytes() == right.bytes();
}

bool operator!=(const CBinary& left, const CBinary& right)
{
    return !(left == right);
}

std::string_view CBinary::bytes() const
{
    return view(m_pData, m_nLen);
}

/** Takes both pieces, which may lie in the old bytes, in their place. */
void CBinary::replaceBytes(std::string_view first, std::string_view second)
{
    const std::size_t size = first.size() + second.size();
    unsigned char* data = size > 0 ? newBytes(first, second) : nullptr;
    delete[] m_pData;
    m_pData = data;
    m_nLen = static_cast<int>(size);
}

void CBinary::replaceText(std::string_view text)
{
    freeArray(m_pStr);
    m_pStr = newBytes(text);
    m_nTextLen = static_cast<int>(text.size());
}
