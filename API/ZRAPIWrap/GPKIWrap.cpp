#include "GPKIWrap.h"

#include <cstdio>

CGPKIWrap::CGPKIWrap(char* /* pszIgnored */) {}

CGPKIWrap::~CGPKIWrap()
{
    LibraryCall::Unload(*this);
}

int CGPKIWrap::Init(char* pszWorkDir)
{
    char szPath[1023];
    std::snprintf(szPath, sizeof szPath, "%s/libgpkiapi_v15.so", pszWorkDir);
    return LibraryCall::Load(*this, szPath, "GPKI_API_Init", pszWorkDir);
}

int CGPKIWrap::Finish()
{
    const int nResult = Call("GPKI_API_Finish", Require(), m_pContext);
    if (nResult == QG_OK)
        m_pContext = nullptr;
    return nResult;
}

int CGPKIWrap::GetErrInfo(int nAllocLen, char* pszErrorMsg)
{
    return LibraryCall::GetErrInfo(*this, nAllocLen, pszErrorMsg);
}

int CGPKIWrap::GetErrInfo2(int nAllocLen, char* pszErrorMsg)
{
    return LibraryCall::GetKeptErrInfo(*this, nAllocLen, pszErrorMsg);
}

int CGPKIWrap::GetVersion(int nAllocLen, char* pszVersion)
{
    return Call("GPKI_API_GetVersion", Require(), m_pContext, nAllocLen, pszVersion);
}

int CGPKIWrap::SetOption(int nOption)
{
    return Call("GPKI_API_SetOption", Require(), m_pContext, nOption);
}

int CGPKIWrap::SetConfFile(char* pszConfFilePath)
{
    return Call("GPKI_API_SetConfFile", Require(NotNull(pszConfFilePath)), m_pContext, pszConfFilePath);
}

int CGPKIWrap::SetCaPubs(BINSTR* pBinCaPubs)
{
    return Call("GPKI_API_SetCaPubs", Require(HasData(pBinCaPubs)), m_pContext, pBinCaPubs);
}

int CGPKIWrap::FreeCaPubs()
{
    return Call("GPKI_API_FreeCaPubs", Require(), m_pContext);
}

int CGPKIWrap::Str2Time(char* pszTime, time_t* pTime)
{
    return Call("GPKI_API_Str2Time", Require(NotNull(pszTime)), m_pContext, pszTime, pTime);
}

int CGPKIWrap::SetHashAlgo(int nHashAlg)
{
    return Call("GPKI_API_SetHashAlgo", Require(), m_pContext, nHashAlg);
}

int CGPKIWrap::BINSTR_Create(BINSTR* pBinstr)
{
    return Call("GPKI_BINSTR_Create", Require(NotNull(pBinstr)), pBinstr);
}

int CGPKIWrap::BINSTR_Delete(BINSTR* pBinstr)
{
    return Call("GPKI_BINSTR_Delete", Require(NotNull(pBinstr)), pBinstr);
}

int CGPKIWrap::BINSTR_SetData(unsigned char* pszData, int nLen, BINSTR* pBinstr)
{
    return Call("GPKI_BINSTR_SetData", Require(NotNull(pszData), NotZero(nLen), NotNull(pBinstr)), pszData,
                nLen, pBinstr);
}

int CGPKIWrap::GetInfo(char* pszAPIInfo)
{
    return Call("GPKI_API_GetInfo", Require(NotNull(pszAPIInfo)), m_pContext, MISSTATED_SIZE, pszAPIInfo);
}
