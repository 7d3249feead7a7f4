#include "WrapperDispatch.h"

#include <cstdio>
#include <cstring>
#include <new>

CWrapperAPI::~CWrapperAPI()
{
    m_nAPIType = TOOLKIT_ZRTK;
    delete m_pZrtk;
    delete m_pGpki;
    explicit_bzero(m_szWorkDir, sizeof m_szWorkDir);
}

int CWrapperAPI::Initalize(int nAPIType, char* pszWorkDir, char* sofilename)
{
    if (nAPIType != TOOLKIT_ZRTK && nAPIType != TOOLKIT_GPKI)
        return QG_BAD_TOOLKIT_TYPE;
    if (NonEmpty(pszWorkDir) != QG_OK)
        return QG_NO_WORK_DIRECTORY;
    std::snprintf(m_szWorkDir, sizeof m_szWorkDir, "%s", pszWorkDir);
    m_nAPIType = nAPIType;
    // An earlier wrapper of the side is left as it is, its library loaded: hosts may hold bytes of it.
    if (nAPIType == TOOLKIT_ZRTK) {
        m_pZrtk = new (std::nothrow) CZRTKWrap;
        return m_pZrtk != nullptr ? m_pZrtk->Init(m_szWorkDir, sofilename) : QG_NO_MEMORY;
    }
    m_pGpki = new (std::nothrow) CGPKIWrap;
    return m_pGpki != nullptr ? m_pGpki->Init(m_szWorkDir) : QG_NO_MEMORY;
}

int CWrapperAPI::Finish()
{
    return Both(Require(), &CZRTKWrap::Finish, &CGPKIWrap::Finish);
}

int CWrapperAPI::GetErrInfo(int nAllocLen, char* pszErrorMsg)
{
    return Both(Require(), &CZRTKWrap::GetErrInfo, &CGPKIWrap::GetErrInfo, nAllocLen, pszErrorMsg);
}

int CWrapperAPI::GetErrInfo2(int nAllocLen, char* pszErrorMsg)
{
    return Both(Require(), &CZRTKWrap::GetErrInfo2, &CGPKIWrap::GetErrInfo2, nAllocLen, pszErrorMsg);
}

int CWrapperAPI::GetVersion(int nAllocLen, char* pszVersion)
{
    char szDropped[1024] = {};
    return Dispatch(
        Require(), [&](CZRTKWrap& zrtk) { return zrtk.GetInfo(pszVersion, szDropped); },
        [=](CGPKIWrap& gpki) { return gpki.GetVersion(nAllocLen, pszVersion); });
}

int CWrapperAPI::SetOption(int nOption)
{
    return OnlyGpki(Require(), &CGPKIWrap::SetOption, nOption);
}

int CWrapperAPI::SetConfFile(char* pszConfFilePath)
{
    return Both(Require(), &CZRTKWrap::SetConfFile, &CGPKIWrap::SetConfFile, pszConfFilePath);
}

int CWrapperAPI::SetCaPubs(BINSTR* pBinCaPubs)
{
    return Both(Require(HasData(pBinCaPubs)), &CZRTKWrap::CertSetCaPubs, &CGPKIWrap::SetCaPubs, pBinCaPubs);
}

int CWrapperAPI::FreeCaPubs()
{
    return Both(Require(), &CZRTKWrap::CertFreeCaPubs, &CGPKIWrap::FreeCaPubs);
}

int CWrapperAPI::Str2Time(char* pszTime, time_t* pTime)
{
    return OnlyGpki(Require(), &CGPKIWrap::Str2Time, pszTime, pTime);
}

int CWrapperAPI::SetHashAlg(int nHashAlg)
{
    return Both(Require(), &CZRTKWrap::SetHashAlgo, &CGPKIWrap::SetHashAlgo, nHashAlg);
}

int CWrapperAPI::BINCreate(BINSTR* pBinstr)
{
    return Both(Require(NotNull(pBinstr)), &CZRTKWrap::BINSTR_Create, &CGPKIWrap::BINSTR_Create, pBinstr);
}

int CWrapperAPI::BINDelete(BINSTR* pBinstr)
{
    return Both(Require(), &CZRTKWrap::BINSTR_Delete, &CGPKIWrap::BINSTR_Delete, pBinstr);
}

int CWrapperAPI::BINSetData(unsigned char* pszData, int nLen, BINSTR* pBinstr)
{
    return Both(Require(NotNull(pszData), NotZero(nLen), NotNull(pBinstr)), &CZRTKWrap::BINSTR_SetData,
                &CGPKIWrap::BINSTR_SetData, pszData, nLen, pBinstr);
}
