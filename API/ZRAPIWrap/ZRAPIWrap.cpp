#include "quillgate/toolkit_frame.h"

#include "ZRAPIWrap.h"

#include <new>

int ZR_Initalize(void** pContext, int nAPIType, char* pszWorkDir, char* sofilename)
{
    if (pContext == nullptr)
        return QG_NO_CONTEXT;
    if (nAPIType != TOOLKIT_ZRTK && nAPIType != TOOLKIT_GPKI)
        return QG_BAD_TOOLKIT_TYPE;
    if (NonEmpty(pszWorkDir) != QG_OK)
        return QG_NO_WORK_DIRECTORY;
    if (*pContext == nullptr)
        *pContext = new (std::nothrow) CWrapperAPI;
    if (*pContext == nullptr)
        return QG_NO_MEMORY;
    return Forward(*pContext, &CWrapperAPI::Initalize, nAPIType, pszWorkDir, sofilename);
}

void ZR_Finish(void* pContext)
{
    try {
        delete static_cast<CWrapperAPI*>(pContext);
    } catch (...) {
        // A library that throws while it is unloaded is of no concern to the host.
    }
}

int ZR_GetErrInfo(void* pContext, int nAllocLen, char* pszErrorMsg)
{
    return Forward(pContext, &CWrapperAPI::GetErrInfo, nAllocLen, pszErrorMsg);
}

int ZR_GetErrInfo2(void* pContext, int nAllocLen, char* pszErrorMsg)
{
    return Forward(pContext, &CWrapperAPI::GetErrInfo2, nAllocLen, pszErrorMsg);
}

int ZR_GetVersion(void* pContext, int nAllocLen, char* pszVersion)
{
    return Forward(pContext, &CWrapperAPI::GetVersion, nAllocLen, pszVersion);
}

int ZR_SetOption(void* pContext, int nOption)
{
    return Forward(pContext, &CWrapperAPI::SetOption, nOption);
}

int ZR_SetConfFile(void* pContext, char* pszConfFilePath)
{
    return Forward(pContext, &CWrapperAPI::SetConfFile, pszConfFilePath);
}

int ZR_SetCaPubs(void* pContext, BINSTR* pBinCaPubs)
{
    return Forward(pContext, &CWrapperAPI::SetCaPubs, pBinCaPubs);
}

int ZR_FreeCaPubs(void* pContext)
{
    return Forward(pContext, &CWrapperAPI::FreeCaPubs);
}

int ZR_Str2Time(void* pContext, char* pszTime, time_t* pTime)
{
    return Forward(pContext, &CWrapperAPI::Str2Time, pszTime, pTime);
}

int ZR_SetHashAlg(void* pContext, int nHashAlg)
{
    return Forward(pContext, &CWrapperAPI::SetHashAlg, nHashAlg);
}

int ZR_BINSTR_Create(void* pContext, BINSTR* pBinstr)
{
    return Forward(pContext, &CWrapperAPI::BINCreate, pBinstr);
}

int ZR_BINSTR_Delete(void* pContext, BINSTR* pBinstr)
{
    return Forward(pContext, &CWrapperAPI::BINDelete, pBinstr);
}

int ZR_BINSTR_SetData(void* pContext, unsigned char* pszData, int nLen, BINSTR* pBinstr)
{
    return Forward(pContext, &CWrapperAPI::BINSetData, pszData, nLen, pBinstr);
}
