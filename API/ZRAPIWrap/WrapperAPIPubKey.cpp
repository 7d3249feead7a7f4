#include "WrapperDispatch.h"

#include <cstring>

namespace {

constexpr int PUBKEY_ALG_SIZE = 50;
constexpr int PUBKEY_LEN_SIZE = 20;

/**
 * Texts of CertGetPubKeyInfo. The main toolkit is told no size for the algorithm's name; it gets the room of
 * the largest text that callers ask for, in case it takes theirs for its own.
 */
struct PubKeyTexts
{
    char szAlg[2048];
    char szLen[PUBKEY_LEN_SIZE];
};

int ReadPubKey(CZRTKWrap& zrtk, PubKeyTexts& texts, char* szPubKeyLen, int nAllocLen, char* pszPubKey,
               BINSTR* pBinKeyInfo)
{
    const int nResult = zrtk.CertGetPubKey(nAllocLen, texts.szAlg, pszPubKey);
    return nResult != QG_OK ? nResult : zrtk.CertGetPubKey2(texts.szAlg, szPubKeyLen, pBinKeyInfo);
}

int ReadPubKey(CGPKIWrap& gpki, PubKeyTexts& texts, int nAllocLen, char* pszPubKey)
{
    int nResult = gpki.CertGetPubKeyAlg(PUBKEY_ALG_SIZE, texts.szAlg);
    if (nResult == QG_OK)
        nResult = gpki.CertGetPubKeyLen(PUBKEY_LEN_SIZE, texts.szLen);
    return nResult != QG_OK ? nResult : gpki.CertGetPubKey(nAllocLen, pszPubKey);
}

/** Hands out a text, if there is one, as exactly nBytes bytes; zeros follow a shorter text. */
int HandOut(const char* pszText, int nBytes, char* pszTarget)
{
    if (*pszText == '\0')
        return QG_OK;
    if (pszTarget == nullptr)
        return QG_BAD_ARGUMENT;
    std::memcpy(pszTarget, pszText, static_cast<std::size_t>(nBytes));
    return QG_OK;
}

int HandOut(const PubKeyTexts& texts, char* szPubKeyAlg, char* szPubKeyLen)
{
    return Require(HandOut(texts.szAlg, PUBKEY_ALG_SIZE - 1, szPubKeyAlg),
                   HandOut(texts.szLen, PUBKEY_LEN_SIZE - 1, szPubKeyLen));
}

} // namespace

int CWrapperAPI::CertGetPubKeyInfo(char* szPubKeyAlg, char* szPubKeyLen, int nAllocLen, char* pszPubKey,
                                   BINSTR* pBinKeyInfo)
{
    PubKeyTexts texts = {};
    BINSTR binKeyInfo = {};
    int nResult = Both(Require(NotNull(pszPubKey, QG_NO_MEMORY)), &CZRTKWrap::BINSTR_Create,
                       &CGPKIWrap::BINSTR_Create, &binKeyInfo);
    if (nResult == QG_OK)
        nResult = Dispatch(
            Require(),
            [&](CZRTKWrap& zrtk) {
                return ReadPubKey(zrtk, texts, szPubKeyLen, nAllocLen, pszPubKey, &binKeyInfo);
            },
            [&](CGPKIWrap& gpki) { return ReadPubKey(gpki, texts, nAllocLen, pszPubKey); });
    if (nResult == QG_OK && binKeyInfo.nLen > 0)
        nResult = BINSetData(binKeyInfo.pData, binKeyInfo.nLen, pBinKeyInfo);
    if (nResult == QG_OK)
        nResult = HandOut(texts, szPubKeyAlg, szPubKeyLen);
    if (HasData(&binKeyInfo) == QG_OK)
        BINDelete(&binKeyInfo);
    return nResult;
}
