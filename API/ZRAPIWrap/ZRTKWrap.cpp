#include "ZRTKWrap.h"

#include <cstdio>

CZRTKWrap::~CZRTKWrap()
{
    LibraryCall::Unload(*this);
}

int CZRTKWrap::Init(char* pszWorkDir, char* sofilename)
{
    char szPath[259];
    const char* pszFile = sofilename != nullptr ? sofilename : "libZRCToolkitV30.so";
    std::snprintf(szPath, sizeof szPath, "%s/%s", pszWorkDir, pszFile);
    return LibraryCall::Load(*this, szPath, "ZRTK_API_Init", pszWorkDir);
}

int CZRTKWrap::Finish()
{
    const int nResult = Call("ZRTK_API_Finish", Require(), m_pContext);
    if (nResult == QG_OK)
        m_pContext = nullptr;
    return nResult;
}

int CZRTKWrap::GetErrInfo(int nAllocLen, char* pszErrorMsg)
{
    return LibraryCall::GetErrInfo(*this, nAllocLen, pszErrorMsg);
}

int CZRTKWrap::GetErrInfo2(int nAllocLen, char* pszErrorMsg)
{
    return LibraryCall::GetKeptErrInfo(*this, nAllocLen, pszErrorMsg);
}

int CZRTKWrap::GetInfo(char* pszVersion, char* pszInfo)
{
    const int nRefusal = Require(NotNull(pszVersion), NotNull(pszInfo));
    if (m_hLib != nullptr && nRefusal == QG_OK) {
        std::memset(pszVersion, 0, CLEARED_BYTES);
        std::memset(pszInfo, 0, CLEARED_BYTES);
    }
    return Call("ZRTK_API_GetInfo", nRefusal, m_pContext, pszVersion, pszInfo);
}

// Refuses every path and passes an empty text alone. Hosts live with that, so it stays.
int CZRTKWrap::SetConfFile(char* pszConfFilePath)
{
    return Call("ZRTK_API_SetConfFile", Require(IsEmpty(pszConfFilePath)), m_pContext, pszConfFilePath);
}

int CZRTKWrap::CertSetCaPubs(BINSTR* pBinCaPubs)
{
    return Call("ZRTK_CERT_SetCaPubs", Require(HasData(pBinCaPubs)), m_pContext, pBinCaPubs);
}

int CZRTKWrap::CertFreeCaPubs()
{
    return Call("ZRTK_CERT_FreeCaPubs", Require(), m_pContext);
}

int CZRTKWrap::SetHashAlgo(int nHashAlg)
{
    return Call("ZRTK_API_SetHashAlgo", Require(), m_pContext, nHashAlg);
}

int CZRTKWrap::BINSTR_Create(BINSTR* pBinstr)
{
    return Call("ZRTK_BINSTR_Create", Require(NotNull(pBinstr)), pBinstr);
}

int CZRTKWrap::BINSTR_Delete(BINSTR* pBinstr)
{
    return Call("ZRTK_BINSTR_Delete", Require(HasData(pBinstr)), pBinstr);
}

int CZRTKWrap::BINSTR_SetData(unsigned char* pszData, int nLen, BINSTR* pBinstr)
{
    return Call("ZRTK_BINSTR_SetData", Require(NotNull(pszData), NotZero(nLen), NotNull(pBinstr)), pszData,
                nLen, pBinstr);
}
