#include "Util.h"

#include <cstring>
#include <iconv.h>
#include <new>

#include "quillgate/returncodes.h"

namespace {

/** Value of a digit by its character code; what is no digit gives what the subtraction gives. */
unsigned digitValue(char character)
{
    const auto code = static_cast<BYTE>(character);
    if (code <= '9')
        return static_cast<unsigned>(code - '0');
    return static_cast<unsigned>(code - (code < '[' ? 'A' : 'a') + 10);
}

int convertNothing(int* length)
{
    if (length)
        *length = 0;
    return 0;
}

/** Converts `source` into `target`; false for an invalid text or one that does not fit with its terminator.
 */
bool convertToUtf8(char* source, char (&target)[2048])
{
    const iconv_t converter = iconv_open("UTF-8", "EUC-KR");
    if (converter == reinterpret_cast<iconv_t>(-1))
        return false;
    std::size_t sourceLeft = std::strlen(source);
    std::size_t targetLeft = sizeof(target) - 1;
    char* end = target;
    const bool converted =
        iconv(converter, &source, &sourceLeft, &end, &targetLeft) != static_cast<std::size_t>(-1);
    iconv_close(converter);
    *end = '\0';
    return converted;
}

} // namespace

void CUtil::HexStringToBin(const char* szSrc, int nSrcLen, char* szDest, int* nDestLen)
{
    if (!szSrc || !szDest || !nDestLen)
        return;
    int kept = 0;
    unsigned high = 0;
    for (int i = 0; i < nSrcLen; ++i) {
        if (szSrc[i] == ' ' || szSrc[i] == ',')
            continue;
        const unsigned digit = digitValue(szSrc[i]);
        if (kept++ % 2 == 0)
            high = digit;
        else
            szDest[kept / 2 - 1] = static_cast<char>(high * 16 + digit);
    }
    *nDestLen = kept / 2;
}

int CUtil::toHexString(const char* pszData, int nDataLen, char** pszString, int* nStringLen)
{
    if (!pszData || nDataLen < 0 || nDataLen > 0x3fffffff || !pszString || !nStringLen)
        return QG_BAD_ARGUMENT;
    const std::size_t size = 2 * static_cast<std::size_t>(nDataLen);
    char* text = new (std::nothrow) char[size + 1];
    if (!text)
        return QG_NO_MEMORY;
    for (std::size_t i = 0; i < size; ++i) {
        const auto byte = static_cast<BYTE>(pszData[i / 2]);
        text[i] = "0123456789abcdef"[i % 2 == 0 ? byte >> 4 : byte & 15];
    }
    text[size] = '\0';
    *pszString = text;
    *nStringLen = static_cast<int>(size);
    return QG_OK;
}

int CUtil::toEncode(int /*Encodeing*/, const char* pszData, char** /*pszEncodeData*/, int* /*nEncodeDataLen*/)
{
    return pszData && *pszData ? QG_NOT_AVAILABLE : QG_BAD_ARGUMENT;
}

int CUtil::UTF8ToMultibyte(const char* /*pszMultData*/, char* /*pszWideData*/, int* nWideLen)
{
    return convertNothing(nWideLen);
}

int CUtil::MultibyteToWideData(const char* /*pszMultData*/, char* /*pszWideData*/, int* nWideLen)
{
    return convertNothing(nWideLen);
}

int CUtil::WideDataToMultibyte(const char* /*pszWideData*/, char* /*pszMultData*/, int* nWideLen)
{
    return convertNothing(nWideLen);
}

int CUtil::EucKrToUTF8(char* pszChangeCharTarget)
{
    char converted[2048];
    if (!pszChangeCharTarget || !convertToUtf8(pszChangeCharTarget, converted))
        return -1;
    std::memcpy(pszChangeCharTarget, converted, std::strlen(converted) + 1);
    return 0;
}
