#include <new>

#include "BoundedText.h"
#include "CertListProcInterface.h"
#include "LibFile.h"
#include "PrivateKeys.h"
#include "Secret.h"
#include "quillgate/toolkit.h"

namespace {

char TOOLKIT_LIBRARY[] = "libZRToolkitV30-v3.4.2.20.so";

} // namespace

CCertListProcInterface::~CCertListProcInterface()
{
    UnInitalize();
    ClearCertData();
    wipe(m_szWorkDir);
    wipe(m_szLogFilePath);
    wipe(m_szUbikeyWParam);
    wipe(m_szUbikeylParam);
    wipe(m_szPFXPath);
}

void CCertListProcInterface::SetLogPathInfo()
{
    char path[1024];
    joinText(path, {m_szWorkDir, "/zrapilog.ini"});
    FileGetPrivateProfileString("Info", "Path", "", m_szLogFilePath, sizeof(m_szLogFilePath), path);
}

int CCertListProcInterface::SetConfigPath()
{
    if (m_szConfPath[0] == '\0') {
        const bool english = m_nLanguage == LANGUAGE_ENGLISH;
        joinText(m_szConfPath, {m_szWorkDir, english ? "/IssuerOid_Eng.conf" : "/IssuerOid.conf"});
    }
    return QG_OK;
}

int CCertListProcInterface::Inialize(int nTKType, void** /*pPKCS11Context*/)
{
    const char* const tag = "CCertListProcInterface::Inialize()";
    const OperationLog trace = log();
    trace.start(tag);
    m_nRtn = QG_OK;
    m_nTKType = nTKType;
    if (!m_pDisk)
        m_pDisk.reset(new (std::nothrow) CLoadDISK(m_nLanguage, m_nTKType, m_szWorkDir));
    if (!m_pMemory)
        m_pMemory.reset(new (std::nothrow) CLoadMemory(m_nLanguage, m_nTKType, m_szWorkDir));
    if (!m_pDisk || !m_pMemory)
        return m_nRtn = CLPERR_NOT_STARTED;
    SetConfigPath();
    const int code = ZR_Initalize(&m_pZRWrapCtx, m_nTKType, m_szWorkDir, TOOLKIT_LIBRARY);
    if (code == QG_OK) {
        startStores();
    } else {
        const bool missing = code == QG_ZRTK_NOT_LOADED || code == QG_GPKI_NOT_LOADED;
        m_nRtn = missing ? CLPERR_TOOLKIT_NOT_LOADED : CLPERR_NOT_STARTED;
        trace.plainFailure(tag, "ZR_Initalize()", code);
    }
    trace.end(tag, m_nRtn);
    return m_nRtn;
}

/** Gives context and paths to the stores, once: a second start keeps those of the first. */
void CCertListProcInterface::startStores()
{
    if (m_bInit)
        return;
    const auto start = [this](auto& store) {
        store.m_pZRWrapCtx = m_pZRWrapCtx;
        store.m_piniFile = m_piniFile;
        copyText(store.m_szConfigPath, m_szConfPath);
        copyText(store.m_szLogFilePath, m_szLogFilePath);
    };
    start(*m_pDisk);
    start(*m_pMemory);
    m_bInit = true;
}

void CCertListProcInterface::UnInitalize()
{
    m_pDisk.reset();
    m_pMemory.reset();
    ZR_Finish(m_pZRWrapCtx);
    m_pZRWrapCtx = nullptr;
    CUtil::INIFreeData(m_piniFile);
    m_piniFile = nullptr;
    m_pstSearchDriveInfo.reset();
    m_pstFileNameList.reset();
    m_pstFolderNameList.reset();
    m_pstSetOid.reset();
}

void CCertListProcInterface::ClearCertData()
{
    wipe(m_szPINNumber);
    wipe(m_szPFXPassword);
    wipe(m_szMemSignCert);
    wipe(m_szMemSignKey);
    wipe(m_szMemKmCert);
    wipe(m_szMemKmKey);
    m_nMemSignCertLen = m_nMemSignKeyLen = m_nMemKmCerLen = m_nMemKmKeyLen = 0;
    if (m_pDisk)
        m_pDisk->m_pstCertInfoList.reset();
    if (m_pMemory)
        m_pMemory->m_pstCertInfoList.reset();
}

int CCertListProcInterface::MemFree(void** ppv)
{
    return run("CCertListProcInterface::MemFree()", [&] { return freeHandedOut(ppv); });
}
