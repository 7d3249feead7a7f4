#include "Util.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "Binary.h"

namespace {

/** Copies a part of the source, which is a copy of the caller's, and wipes all that is left behind. */
void takePart(CBinary& source, CBinary* target, int start, int count)
{
    CBinary part = source.getSub(start, count);
    if (target)
        *target = part;
    part.zeroEmpty();
    source.zeroEmpty();
}

/** The search of BinaryFind2: from the start in all bytes, else in the text up to the next zero byte. */
int findFrom(const CBinary& source, const char* text, int start)
{
    if (start == 0)
        return static_cast<int>(source.find(text));
    if (!text || !*text || start < 0 || start >= source.m_nLen)
        return -1;
    const char* data = reinterpret_cast<const char*>(source.m_pData);
    const char* found = std::strstr(data + start, text);
    return found ? static_cast<int>(found - data) : -1;
}

} // namespace

void CUtil::BinaryLeft(CBinary binySrc, CBinary* binyDest, int nCount)
{
    takePart(binySrc, binyDest, 0, nCount);
}

void CUtil::BinaryMid(CBinary binySrc, CBinary* binyDest, int nStartPos, int nCount)
{
    takePart(binySrc, binyDest, nStartPos, nCount);
}

void CUtil::BinaryRight(CBinary binySrc, CBinary* binyDest, int nCount)
{
    takePart(binySrc, binyDest, nCount > 0 ? binySrc.m_nLen - nCount : 0, nCount);
}

int CUtil::BinaryFindCount(CBinary binySrc, const char* szdata, int& nLastPos)
{
    nLastPos = -1;
    int count = 0;
    for (long at = binySrc.find(szdata); at >= 0; at = binySrc.find(szdata)) {
        nLastPos += static_cast<int>(at) + 1;
        ++count;
        binySrc = binySrc.getSub(static_cast<int>(at) + 1, binySrc.m_nLen - static_cast<int>(at) - 1);
    }
    // For a single find, and only then, the position is one too high. Callers allow for it.
    if (count == 1)
        ++nLastPos;
    return count;
}

int CUtil::BinaryFind2(const CBinary& binySrc, const char* szFstr, int nSPos)
{
    return findFrom(binySrc, szFstr, nSPos);
}

void CUtil::ParingFindCnt(const CBinary& binyData, const char* pszFind, int* nCount)
{
    int count = 0;
    for (int at = findFrom(binyData, pszFind, 0); at >= 0; at = findFrom(binyData, pszFind, at + 1))
        ++count;
    if (nCount)
        *nCount = count;
}

void CUtil::ParingFindCnt(const char* pszInData, int /*nInDataLen*/, const char* /*pszFind*/, int* nCount)
{
    if (!pszInData || !nCount)
        return;
    const std::string_view text(pszInData);
    int lines = 1;
    std::size_t step = 0;
    for (std::size_t at = 0; at < text.size(); at += step) {
        const std::size_t feed = text.find('\n', at + 1);
        if (feed == text.npos)
            break;
        ++lines;
        // A line shorter than one before it is stepped over by the longer one's length, so that line ends
        // behind it may be missed; the counts that callers know come out of that.
        step = std::max(step, feed - at);
    }
    *nCount = lines;
}
