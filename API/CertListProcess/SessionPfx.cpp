#include <memory>
#include <new>

#include "CertListProcInterface.h"
#include "GivenKeys.h"
#include "LentBuffers.h"
#include "PrivateKeys.h"
#include "Secret.h"
#include "SessionGuards.h"

/** Where a caller wants the four buffers of a PFX file. */
struct CCertListProcInterface::PfxOutputs
{
    char** signCert;
    int* signCertLength;
    char** signKey;
    int* signKeyLength;
    char** kmCert;
    int* kmCertLength;
    char** kmKey;
    int* kmKeyLength;
};

namespace {

/** A certificate and its key, copied for the caller. */
struct PairCopy
{
    HandedOut cert;
    HandedOut key;

    /** Copies a pair when both are there. 0, QG_NO_MEMORY. */
    template <typename Buffer>
    int take(const Buffer& lentCert, const Buffer& lentKey)
    {
        if (!lentCert.holds() || !lentKey.holds())
            return QG_OK;
        if (const int code = cert.copy(lentCert.data, lentCert.length))
            return code;
        return key.copy(lentKey.data, lentKey.length);
    }

    bool canGoTo(char** outCert, const int* certLength, char** outKey, const int* keyLength) const
    {
        return cert.canGoTo(outCert, certLength) && key.canGoTo(outKey, keyLength);
    }
};

} // namespace

/** Unpacks a PFX file and hands its pairs out, all or none. */
int CCertListProcInterface::unpackPfx(char* pszPath, char* pszPassword, const PfxOutputs& outputs)
{
    LentPairs<CLoadDISK> pfx(*m_pDisk);
    if (const int code = m_pDisk->GetPKCS12(pszPath, pszPassword, &pfx.signCert.data, &pfx.signCert.length,
                                            &pfx.signKey.data, &pfx.signKey.length, &pfx.kmCert.data,
                                            &pfx.kmCert.length, &pfx.kmKey.data, &pfx.kmKey.length))
        return code;
    PairCopy sign;
    PairCopy km;
    if (const int code = sign.take(pfx.signCert, pfx.signKey))
        return code;
    if (const int code = km.take(pfx.kmCert, pfx.kmKey))
        return code;
    if (!sign.canGoTo(outputs.signCert, outputs.signCertLength, outputs.signKey, outputs.signKeyLength) ||
        !km.canGoTo(outputs.kmCert, outputs.kmCertLength, outputs.kmKey, outputs.kmKeyLength))
        return QG_BAD_ARGUMENT;
    sign.cert.giveTo(outputs.signCert, outputs.signCertLength);
    sign.key.giveTo(outputs.signKey, outputs.signKeyLength);
    km.cert.giveTo(outputs.kmCert, outputs.kmCertLength);
    km.key.giveTo(outputs.kmKey, outputs.kmKeyLength);
    return QG_OK;
}

int CCertListProcInterface::GetCertPKCS12(char* pszPFXFilePath, char* pszPFXPassword, char** pszOutSignCert,
                                          int* nOutSignCertLen, char** pszOutSignKey, int* nOutSignKeyLen,
                                          char** pszOutKmCert, int* nOutKmCertLen, char** pszOutKmKey,
                                          int* nOutKmKeyLen)
{
    return runOnStores("CCertListProcInterface::GetCertPKCS12()", [&] {
        return unpackPfx(pszPFXFilePath, pszPFXPassword,
                         {pszOutSignCert, nOutSignCertLen, pszOutSignKey, nOutSignKeyLen, pszOutKmCert,
                          nOutKmCertLen, pszOutKmKey, nOutKmKeyLen});
    });
}

int CCertListProcInterface::ImportPFX(char* pszFilePath, char* pszPassword, char** pszOutSignCert,
                                      int* nOutSignCertLen, char** pszOutSignKey, int* nOutSignKeyLen,
                                      char** pszOutKmCert, int* nOutKmCertLen, char** pszOutKmKey,
                                      int* nOutKmKeyLen)
{
    // The end line is another member's: readers of the log know it so.
    return runOnStores("CCertListProcInterface::ImportPFX()", "CCertListProcInterface::SaveCert()",
                       [&]() -> int {
                           if (isEmpty(pszFilePath))
                               return QG_BAD_ARGUMENT;
                           return unpackPfx(pszFilePath, pszPassword,
                                            {pszOutSignCert, nOutSignCertLen, pszOutSignKey, nOutSignKeyLen,
                                             pszOutKmCert, nOutKmCertLen, pszOutKmKey, nOutKmKeyLen});
                       });
}

/** Fills the memory store from the PFX file that SetPFXInfo named. */
int CCertListProcInterface::loadPfxList()
{
    LentPairs<CCertListProcInterface> pfx(*this);
    if (const int code = GetCertPKCS12(m_szPFXPath, m_szPFXPassword, &pfx.signCert.data, &pfx.signCert.length,
                                       &pfx.signKey.data, &pfx.signKey.length, &pfx.kmCert.data,
                                       &pfx.kmCert.length, &pfx.kmKey.data, &pfx.kmKey.length))
        return code;
    m_pMemory->m_nMediaType = MEDIA_PFX;
    const bool hasKm = pfx.kmCert.holds() && pfx.kmKey.holds();
    return m_pMemory->LoadCertList(m_szPFXPassword, pfx.signCert.data, pfx.signCert.length, pfx.signKey.data,
                                   pfx.signKey.length, hasKm ? pfx.kmCert.data : nullptr,
                                   hasKm ? pfx.kmCert.length : 0, hasKm ? pfx.kmKey.data : nullptr,
                                   hasKm ? pfx.kmKey.length : 0);
}

int CCertListProcInterface::ExportPFX(int nIndex, char* pszPassword, char* pszPFXPath)
{
    return runOnStores("CCertListProcInterface::ExportPFX()", [&]() -> int {
        if (nIndex < 0 || isEmpty(pszPassword) || isEmpty(pszPFXPath))
            return QG_BAD_ARGUMENT;
        if (onDisk()) {
            if (const int code = m_pDisk->DecryptPriKey(nIndex, pszPassword))
                return code;
        }
        const CertInfoList copy = makeCertInfoList(1); // wipes what it is given
        if (!copy)
            return QG_NO_MEMORY;
        CERTINFO& record = copy[0];
        if (const int code = GetCertInfo(nIndex, &record))
            return code;
        return m_pDisk->MakePKCS12(pszPassword, pszPFXPath, record.szSignCert, record.nSignCertLen,
                                   record.szSignKey, record.nSignKeyLen, record.szKmCert, record.nKmCertLen,
                                   record.szKmKey, record.nKmKeyLen);
    });
}

int CCertListProcInterface::ExportDataPFX(bool bEncKey, char* pszPassword, char* pszPFXFilePath,
                                          char* pszSignCert, int nSignCertLen, char* pszSignKey,
                                          int nSignKeyLen, char* pszKmCert, int nKmCertLen, char* pszKmKey,
                                          int nKmKeyLen)
{
    const char* const tag = "CCertListProcInterface::ExportDataPFX()";
    return runOnStores(tag, [&]() -> int {
        const GivenKey givenSign = {pszSignKey, nSignKeyLen};
        const GivenKey givenKm = {pszKmKey, nKmKeyLen};
        if (isEmpty(pszPassword) || isEmpty(pszPFXFilePath) || !pszSignCert || nSignCertLen < 1 ||
            !givenSign.present())
            return QG_BAD_ARGUMENT;
        const OperationLog trace = log();
        const KeyOpening opening = {trace, tag, &OperationLog::failure, pszPassword};
        SecretBuffer signKey;
        SecretBuffer kmKey;
        if (const int code = bEncKey ? opening.open(givenSign, signKey) : copyKey(givenSign, signKey))
            return code;
        if (const int code =
                bEncKey && givenKm.present() ? opening.open(givenKm, kmKey) : copyKey(givenKm, kmKey))
            return code;
        return m_pDisk->MakePKCS12(pszPassword, pszPFXFilePath, pszSignCert, nSignCertLen, signKey.data(),
                                   static_cast<int>(signKey.size()), pszKmCert, nKmCertLen, kmKey.data(),
                                   static_cast<int>(kmKey.size()));
    });
}
