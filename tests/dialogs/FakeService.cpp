#include "FakeService.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "BoundedText.h"

namespace {

FakeService& fake()
{
    return FakeService::instance();
}

/** Writes a call down and gives the code that the test wants. */
int answer(const std::string& function, const std::string& arguments = {})
{
    fake().calls.push_back(function + "(" + arguments + ")");
    const auto found = fake().results.find(function);
    return found == fake().results.end() ? QG_OK : found->second;
}

/** Hands bytes out the way the service does. */
void handOut(const std::string& bytes, char** buffer, int* length)
{
    *length = static_cast<int>(bytes.size());
    if (bytes.empty())
        return;
    *buffer = new char[bytes.size() + 1]();
    std::memcpy(*buffer, bytes.data(), bytes.size());
    ++fake().buffers;
}

void setBytes(char (&field)[4096], int& length, const std::string& bytes)
{
    std::memcpy(field, bytes.data(), bytes.size());
    length = static_cast<int>(bytes.size());
}

} // namespace

FakeService& FakeService::instance()
{
    static FakeService service;
    return service;
}

void FakeService::reset()
{
    *this = FakeService();
}

int FakeService::count(const std::string& function) const
{
    return static_cast<int>(std::count_if(calls.begin(), calls.end(), [&](const std::string& call) {
        return call.compare(0, function.size() + 1, function + "(") == 0;
    }));
}

CERTINFO sampleCert(const char* commonName)
{
    CERTINFO cert = {};
    cert.nCertType = CERTTYPE_NPKI;
    cert.nMediaType = MEDIA_HARDDISK;
    cert.nCertState = CERTSTATE_VALID;
    setBytes(cert.szSignCert, cert.nSignCertLen, "signing certificate");
    setBytes(cert.szKmCert, cert.nKmCertLen, "km certificate");
    setBytes(cert.szEncSignKey, cert.nEncSignKeyLen, "encrypted signing key");
    setBytes(cert.szEncKmKey, cert.nEncKmKeyLen, "encrypted km key");
    copyText(cert.szSubjectCN, commonName);
    joinText(cert.szSubjectDN, {"cn=", commonName, ",o=yessign,c=kr"});
    // Korean in EUC-KR: "발급자" (issuer) and "개인" (personal).
    copyText(cert.szIssuerDN, "cn=\xb9\xdf\xb1\xde\xc0\xda,o=yessign,c=kr");
    copyText(cert.szIssuerCN, "\xb9\xdf\xb1\xde\xc0\xda");
    copyText(cert.szIssuerName, "\xb9\xdf\xb1\xde\xc0\xda name");
    copyText(cert.szDivision, "\xb0\xb3\xc0\xce");
    copyText(cert.szCertPolicy, "\xb0\xb3\xc0\xce policy");
    copyText(cert.szVersion, "V3");
    copyText(cert.szSerialNumber, "10000001");
    copyText(cert.szAlgorithm, "sha256WithRSAEncryption");
    copyText(cert.szPubKey, "30820122");
    copyText(cert.szPubKeyAlgo, "rsaEncryption");
    copyText(cert.szPubKeyLen, "2048 Bits");
    copyText(cert.szKeyUsage, "digitalSignature,nonRepudiation");
    copyText(cert.szBefore, "2020-01-01 00:00:00");
    copyText(cert.szBeforeDay, "2020-01-01");
    copyText(cert.szAfter, "2030-12-31 23:59:59");
    copyText(cert.szAfterDay, "2030-12-31");
    copyText(cert.szSignCertPath, "/media/NPKI/signCert.der");
    copyText(cert.szSignKeyPath, "/media/NPKI/signPri.key");
    copyText(cert.szKmCertPath, "/media/NPKI/kmCert.der");
    copyText(cert.szKmKeyPath, "/media/NPKI/kmPri.key");
    copyText(cert.szLibPath, "library of a token");
    copyText(cert.szPinNumber, "PIN of a token");
    cert.nRemainDay = 12;
    return cert;
}

CERTINFO expiredCert(const char* commonName)
{
    CERTINFO cert = sampleCert(commonName);
    cert.nCertState = CERTSTATE_EXPIRED;
    cert.nCertVerifyState = 1;
    copyText(cert.szAfter, "2020-12-31 23:59:59");
    copyText(cert.szAfterDay, "2020-12-31");
    return cert;
}

/* --- The functions that the dialogs call ------------------------------------------------------------- */

int CLP_Initalize(void** pContext, LOADOPT* pstLoadOpt, void**)
{
    fake().loadOption = *pstLoadOpt;
    ++fake().sessions;
    *pContext = &fake();
    return answer("CLP_Initalize");
}

void CLP_UnInitalize(void*)
{
    --fake().sessions;
    answer("CLP_UnInitalize");
}

int CLP_SetType(void*, LOADCERTOPT* pstLoadCertOpt)
{
    if (fake().throwing)
        throw std::bad_alloc();
    fake().filter = *pstLoadCertOpt;
    return answer("CLP_SetType");
}

int CLP_SetMediaType(void*, int nMediaType, int nSubIndex)
{
    return answer("CLP_SetMediaType", std::to_string(nMediaType) + "," + std::to_string(nSubIndex));
}

int CLP_SetMemoryCert(void*, char* pszSignCert, int nSignCertLen, char* pszSignKey, int nSignKeyLen, char*,
                      int, char*, int)
{
    if (!pszSignCert || nSignCertLen < 1 || !pszSignKey || nSignKeyLen < 1) {
        answer("CLP_SetMemoryCert");
        return QG_BAD_ARGUMENT;
    }
    fake().memoryCert.assign(pszSignCert, static_cast<std::size_t>(nSignCertLen));
    return answer("CLP_SetMemoryCert");
}

int CLP_LoadCertList(void*)
{
    return answer("CLP_LoadCertList");
}

int CLP_GetCertCount(void*)
{
    answer("CLP_GetCertCount");
    return static_cast<int>(fake().certs.size());
}

int CLP_GetCertInfo(void*, int nIndex, CERTINFO* pstSelectCertInfo)
{
    if (nIndex == fake().unreadable)
        return CLPERR_CERT_FIELD;
    *pstSelectCertInfo = fake().certs.at(static_cast<std::size_t>(nIndex));
    return answer("CLP_GetCertInfo", std::to_string(nIndex));
}

int CLP_DecryptPriKeyData(void*, int nIndex, char* pszPassword, char** pszOutSignKey, int* nOutSignKeyLen,
                          char** pszOutKmKey, int* nOutKmKeyLen)
{
    const int result = answer("CLP_DecryptPriKeyData", std::to_string(nIndex));
    if (result != QG_OK)
        return result;
    if (fake().password != pszPassword)
        return CLPERR_WRONG_PASSWORD;
    handOut(fake().keys.signKey, pszOutSignKey, nOutSignKeyLen);
    handOut(fake().keys.kmKey, pszOutKmKey, nOutKmKeyLen);
    return QG_OK;
}

int CLP_GetPriKeyRandom(void*, int nIndex, char*, char** pszOutKeyRandom, int* nOutKeyRandomLen)
{
    const int result = answer("CLP_GetPriKeyRandom", std::to_string(nIndex));
    if (result == QG_OK)
        handOut(fake().keys.random, pszOutKeyRandom, nOutKeyRandomLen);
    return result;
}

int CLP_ImportPFX(void*, char* pszFilePath, char* pszPassword, char** pszOutSignCert, int* nOutSignCertLen,
                  char** pszOutSignKey, int* nOutSignKeyLen, char** pszOutKmCert, int* nOutKmCertLen,
                  char** pszOutKmKey, int* nOutKmKeyLen)
{
    const int result = answer("CLP_ImportPFX", std::string(pszFilePath) + "," + pszPassword);
    if (result != QG_OK)
        return result;
    handOut(fake().importedCert, pszOutSignCert, nOutSignCertLen);
    handOut(fake().imported.signKey, pszOutSignKey, nOutSignKeyLen);
    handOut(fake().imported.kmKey.empty() ? "" : "km certificate", pszOutKmCert, nOutKmCertLen);
    handOut(fake().imported.kmKey, pszOutKmKey, nOutKmKeyLen);
    return QG_OK;
}

int CLP_SearchFileList(void* pContext, char* pszPath, char* pszFormat)
{
    fake().searched = fake().searched || (pContext == &fake() && std::string(pszPath) == "root");
    return answer("CLP_SearchFileList", std::string(pszPath) + "," + pszFormat);
}

int CLP_VerifyCert(void*, int nIndex, int nMsgLen, char* pszVerifyMsg)
{
    const int result = answer("CLP_VerifyCert", std::to_string(nIndex) + "," + std::to_string(nMsgLen));
    if (!fake().searched)
        return QG_NO_MEMORY; // as the service does
    if (result != QG_OK)
        copyText(pszVerifyMsg, static_cast<std::size_t>(nMsgLen), fake().verifyText.c_str());
    return result;
}

int CLP_GetRemDriveCount(void*, int* nCount)
{
    *nCount = static_cast<int>(fake().drives.size());
    return answer("CLP_GetRemDriveCount");
}

int CLP_GetRemDrive(void*, DRIVEINFO* pstRemDirveInfo)
{
    std::copy(fake().drives.begin(), fake().drives.end(), pstRemDirveInfo);
    return answer("CLP_GetRemDrive");
}

int CLP_MemFree(void*, void** ppValue)
{
    answer("CLP_MemFree", static_cast<char*>(*ppValue));
    delete[] static_cast<char*>(*ppValue);
    *ppValue = nullptr;
    --fake().buffers;
    return QG_OK;
}
