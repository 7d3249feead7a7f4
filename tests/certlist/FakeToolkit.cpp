#include "FakeToolkit.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "TestHome.h"
#include "quillgate/toolkit.h"

namespace {

FakeToolkit* s_current = nullptr;

FakeToolkit& fake()
{
    return FakeToolkit::current();
}

std::string bytesOf(const BINSTR* bytes)
{
    return bytes && bytes->pData ? std::string(reinterpret_cast<char*>(bytes->pData), bytes->nLen) : "";
}

void fill(BINSTR* bytes, const std::string& data)
{
    delete[] bytes->pData;
    bytes->pData = new unsigned char[data.size() + 1]();
    bytes->nLen = static_cast<int>(data.size());
    std::memcpy(bytes->pData, data.data(), data.size());
}

void fillText(char* target, int size, const std::string& text)
{
    std::memcpy(target, text.c_str(), std::min<size_t>(text.size() + 1, static_cast<size_t>(size)));
}

/** Objects of a list, each closed by this byte; in front of them stands the list's mark. */
constexpr char OBJECT_END = '\x1e';
const char* const LIST_MARK = "list:";

std::vector<std::string> objectsOf(const std::string& list)
{
    std::vector<std::string> objects;
    std::istringstream in(list.substr(std::min(list.size(), std::strlen(LIST_MARK))));
    for (std::string object; std::getline(in, object, OBJECT_END);)
        objects.push_back(object);
    return objects;
}

std::string listOf(const std::vector<std::string>& objects)
{
    std::string list = LIST_MARK;
    for (const std::string& object : objects)
        list += object + OBJECT_END;
    return list;
}

std::string lastWord(const std::string& text)
{
    const size_t blank = text.rfind(' ');
    return blank == std::string::npos ? text : text.substr(blank + 1);
}

/** All text getters: the text that the test gave, in the size that the caller told. */
int getText(const char* name, int size, char* target)
{
    if (const int code = fake().call(name, std::to_string(size)))
        return code;
    fillText(target, size, fake().text(name));
    return 0;
}

} // namespace

FakeToolkit::FakeToolkit()
{
    s_current = this;
    texts = {{"CertGetVersion", "3"},
             {"CertGetSerialNum", "0a1b"},
             {"CertGetSignatureAlgorithm", "sha256WithRSAEncryption"},
             {"CertGetSubjectName", "cn=holder,ou=people,o=yessign,c=kr"},
             {"CertGetUID", "holder"},
             {"CertGetIssuerName", "cn=yessignCA,ou=AccreditedCA,o=yessign,c=kr"},
             {"CertGetValidity.from", "2025-01-01 00:00:00"},
             {"CertGetValidity.to", "2027-01-01 00:00:00"},
             {"CertGetPubKeyInfo.algorithm", "rsaEncryption"},
             {"CertGetPubKeyInfo.length", "2048 Bits"},
             {"CertGetPubKeyInfo.key", "30 82"},
             {"CertGetKeyUsage", "digitalSignature"},
             {"CertGetCRLDP", "ldap://crl"},
             {"CertGetCertPolicy", "policy text"},
             {"CertGetPolicyID", "1 2 410 200005 1 1 1"},
             {"CertGetAuthKeyID", "aki"},
             {"CertGetSubKeyID", "ski"},
             {"CertGetSubjectAltName", "san"},
             {"CertGetAIA", "aia"}};
}

FakeToolkit::~FakeToolkit()
{
    s_current = nullptr;
}

FakeToolkit& FakeToolkit::current()
{
    if (!s_current)
        throw std::logic_error("the test has no FakeToolkit");
    return *s_current;
}

int FakeToolkit::call(const std::string& name, const std::string& arguments)
{
    calls.push_back(name + "(" + arguments + ")");
    auto failure = failures.find(name);
    if (failure == failures.end())
        failure = failures.find(calls.back());
    return failure == failures.end() ? 0 : failure->second;
}

std::string FakeToolkit::text(const std::string& getter)
{
    const auto own = certificateTexts.find(certificate);
    if (own != certificateTexts.end() && own->second.count(getter))
        return own->second[getter];
    return texts.count(getter) ? texts[getter] : "";
}

std::string FakeToolkit::pfx(const std::string& password, const std::vector<std::string>& certs,
                             const std::vector<std::string>& keys)
{
    return "pfx;" + password + ";" + listOf(certs) + ";" + listOf(keys);
}

std::string FakeToolkit::pfxByUsages(const std::vector<std::string>& certs,
                                     const std::vector<std::string>& keys)
{
    for (const std::string& cert : certs)
        certificateTexts[cert] = {{"CertGetKeyUsage", cert.substr(0, cert.find(' '))}};
    return pfx("pw", certs, keys);
}

int FakeToolkit::count(const std::string& beginning) const
{
    return static_cast<int>(std::count_if(calls.begin(), calls.end(), [&](const std::string& call) {
        return call.compare(0, beginning.size(), beginning) == 0;
    }));
}

int ZR_Initalize(void** pContext, int nAPIType, char* pszWorkDir, char* sofilename)
{
    const int code =
        fake().call("ZR_Initalize", std::to_string(nAPIType) + "," + pszWorkDir + "," + sofilename);
    if (!*pContext) {
        *pContext = new int(1);
        ++fake().contexts;
    }
    return code;
}

void ZR_Finish(void* pContext)
{
    if (!pContext)
        return;
    --fake().contexts;
    delete static_cast<int*>(pContext);
}

int ZR_GetErrInfo(void*, int nAllocLen, char* pszErrorMsg)
{
    fillText(pszErrorMsg, nAllocLen, fake().errorText);
    return 0;
}

int ZR_BINSTR_Create(void*, BINSTR* pBinstr)
{
    ++fake().liveBytes;
    *pBinstr = {};
    return 0;
}

int ZR_BINSTR_Delete(void*, BINSTR* pBinstr)
{
    --fake().liveBytes;
    fake().unwiped += std::any_of(pBinstr->pData, pBinstr->pData + pBinstr->nLen,
                                  [](unsigned char byte) { return byte != 0; });
    delete[] pBinstr->pData;
    *pBinstr = {};
    return 0;
}

int ZR_BINSTR_SetData(void*, unsigned char* pszData, int nLen, BINSTR* pBinstr)
{
    if (!pszData || nLen == 0)
        return QG_BAD_ARGUMENT;
    fill(pBinstr, std::string(reinterpret_cast<char*>(pszData), static_cast<size_t>(nLen)));
    return 0;
}

int CertLoad(void*, BINSTR* pBinCert)
{
    if (const int code = fake().call("CertLoad", bytesOf(pBinCert)))
        return code;
    fake().certificate = bytesOf(pBinCert);
    fake().loaded = 1;
    return 0;
}

int CertUnLoad(void*)
{
    fake().loaded = 0;
    return fake().call("CertUnLoad");
}

#define TEXT_GETTER(name)                                                                                    \
    int name(void*, int nAllocLen, char* text)                                                               \
    {                                                                                                        \
        return getText(#name, nAllocLen, text);                                                              \
    }

TEXT_GETTER(CertGetUID)
TEXT_GETTER(CertGetVersion)
TEXT_GETTER(CertGetSerialNum)
TEXT_GETTER(CertGetSignatureAlgorithm)
TEXT_GETTER(CertGetIssuerName)
TEXT_GETTER(CertGetSubjectName)
TEXT_GETTER(CertGetKeyUsage)
TEXT_GETTER(CertGetCertPolicy)
TEXT_GETTER(CertGetPolicyID)
TEXT_GETTER(CertGetSubjectAltName)
TEXT_GETTER(CertGetAuthKeyID)
TEXT_GETTER(CertGetSubKeyID)
TEXT_GETTER(CertGetCRLDP)
TEXT_GETTER(CertGetAIA)

int CertGetValidity(void*, int nFromAllocLen, char* pszFrom, int nToAllocLen, char* pszTo)
{
    if (const int code =
            fake().call("CertGetValidity", std::to_string(nFromAllocLen) + "," + std::to_string(nToAllocLen)))
        return code;
    fillText(pszFrom, nFromAllocLen, fake().text("CertGetValidity.from"));
    fillText(pszTo, nToAllocLen, fake().text("CertGetValidity.to"));
    return 0;
}

int CertGetPubKeyInfo(void*, char* szPubKeyAlg, char* szPubKeyLen, int nAllocLen, char* pszPubKey, BINSTR*)
{
    if (const int code = fake().call("CertGetPubKeyInfo", std::to_string(nAllocLen)))
        return code;
    fillText(szPubKeyAlg, 50, fake().text("CertGetPubKeyInfo.algorithm"));
    fillText(szPubKeyLen, 20, fake().text("CertGetPubKeyInfo.length"));
    fillText(pszPubKey, nAllocLen, fake().text("CertGetPubKeyInfo.key"));
    return 0;
}

int MediaDiskReadFile(void*, char* pszFilePath, BINSTR* pBinData)
{
    if (fake().onRead)
        fake().onRead(pszFilePath);
    if (const int code = fake().call("MediaDiskReadFile", pszFilePath))
        return code;
    std::ifstream in(pszFilePath, std::ios::binary);
    if (!in)
        return 1100;
    const std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    if (!bytes.empty())
        fill(pBinData, bytes);
    return 0;
}

int MediaDiskWriteFile(void*, char* pszFilePath, BINSTR* pBinData)
{
    if (const int code =
            fake().call("MediaDiskWriteFile", std::string(pszFilePath) + "," + bytesOf(pBinData)))
        return code;
    try {
        writeFile(pszFilePath, bytesOf(pBinData));
    } catch (const std::exception&) {
        return 1105;
    }
    return 0;
}

int MediaDiskDeleteCert(void*, char* pszFilePath, int nDataType)
{
    if (const int code = fake().call("MediaDiskDeleteCert", std::to_string(nDataType) + "," + pszFilePath))
        return code;
    return std::filesystem::remove(pszFilePath) ? 0 : 1100;
}

int MediaDiskDeletePriKey(void*, char* pszPassword, int nDataType, char* pszFilePath)
{
    if (const int code = fake().call("MediaDiskDeletePriKey", std::to_string(nDataType) + "," + pszFilePath))
        return code;
    if (!std::filesystem::exists(pszFilePath))
        return 1100;
    const std::string lead = std::string(pszPassword) + ":";
    if (readFile(pszFilePath).compare(0, lead.size(), lead) != 0)
        return TOOLKIT_WRONG_PASSWORD;
    std::filesystem::remove(pszFilePath);
    return 0;
}

int PriKeyEncrypt(void*, int nSymAlg, char* pszPasswd, BINSTR* pBinPriKey, BINSTR* pBinEncPriKey)
{
    if (const int code = fake().call("PriKeyEncrypt", std::to_string(nSymAlg) + "," + pszPasswd))
        return code;
    fill(pBinEncPriKey, std::string(pszPasswd) + ":" + bytesOf(pBinPriKey));
    return 0;
}

int PriKeyDecrypt(void*, char* pszPasswd, BINSTR* pBinEncPriKey, BINSTR* pBinPriKey)
{
    const std::string encrypted = bytesOf(pBinEncPriKey);
    if (const int code = fake().call("PriKeyDecrypt", std::string(pszPasswd) + "," + encrypted))
        return code;
    if (encrypted.empty())
        return QG_BAD_ARGUMENT;
    if (fake().decrypt)
        return fill(pBinPriKey, fake().decrypt(pszPasswd, encrypted)), 0;
    const std::string lead = std::string(pszPasswd) + ":";
    if (encrypted.compare(0, lead.size(), lead) != 0)
        return TOOLKIT_WRONG_PASSWORD;
    fill(pBinPriKey, encrypted.substr(lead.size()));
    return 0;
}

int PriKeyChangePasswd(void* pContext, char* pszOldPasswd, char* pszNewPasswd, BINSTR* pBinPriKey,
                       BINSTR* pBinNewPriKey)
{
    if (const int code = fake().call("PriKeyChangePasswd", bytesOf(pBinPriKey)))
        return code;
    BINSTR plain{};
    int code = PriKeyDecrypt(pContext, pszOldPasswd, pBinPriKey, &plain);
    if (code == 0)
        code = PriKeyEncrypt(pContext, 64, pszNewPasswd, &plain, pBinNewPriKey);
    delete[] plain.pData;
    return code;
}

int PriKeyCheckKeyPair(void*, BINSTR* pBinCert, BINSTR* pBinPriKey)
{
    const std::string cert = bytesOf(pBinCert);
    const std::string key = bytesOf(pBinPriKey);
    if (const int code = fake().call("PriKeyCheckKeyPair", cert + "," + key))
        return code;
    return lastWord(cert) == lastWord(key) ? 0 : 2007;
}

int PFXExport(void*, int nOption, char* pszPassword, BINSTR* pBinSignCert, BINSTR* pBinSignKey,
              BINSTR* pBinKmCert, BINSTR* pBinKmKey, BINSTR* pBinPFX)
{
    const std::string cert = bytesOf(pBinSignCert);
    const std::string key = bytesOf(pBinSignKey);
    const std::string rest = pBinKmCert || pBinKmKey ? "more" : "nothing else";
    if (const int code =
            fake().call("PFXExport", std::to_string(nOption) + "," + (pszPassword ? pszPassword : "null") +
                                         "," + cert + "," + key + "," + rest))
        return code;
    if (cert.empty() || key.empty() || !pszPassword)
        return QG_BAD_ARGUMENT;
    fill(pBinPFX, FakeToolkit::pfx(pszPassword, {cert}, {key}));
    return 0;
}

int PFXExportMultiPair(void*, int nOption, char* pszPassword, BINSTR* pBinCerts, BINSTR* pBinKeys,
                       BINSTR* pBinPFX)
{
    if (const int code = fake().call("PFXExportMultiPair", std::to_string(nOption) + "," + pszPassword))
        return code;
    fill(pBinPFX, FakeToolkit::pfx(pszPassword, objectsOf(bytesOf(pBinCerts)), objectsOf(bytesOf(pBinKeys))));
    return 0;
}

int PFXImportMultiPair2(void*, int nOption, BINSTR* pBinPFX, char* pszPassword, BINSTR* pBinCerts,
                        BINSTR* pBinKeys, BINSTR*)
{
    fake().call("PFXImportMultiPair2", std::to_string(nOption) + "," + (pszPassword ? pszPassword : "null"));
    if (fake().importFailures.count(nOption))
        return fake().importFailures[nOption];
    std::istringstream in(bytesOf(pBinPFX));
    std::string mark, password, certs, keys;
    std::getline(in, mark, ';');
    std::getline(in, password, ';');
    std::getline(in, certs, ';');
    std::getline(in, keys, ';');
    if (mark != "pfx" || !pszPassword)
        return 9;
    if (password != pszPassword)
        return TOOLKIT_WRONG_PFX_PASSWORD;
    fill(pBinCerts, certs);
    fill(pBinKeys, keys);
    return 0;
}

int UTILAddObject(void*, BINSTR* pBinObj, BINSTR* pBinObjs)
{
    if (const int code = fake().call("UTILAddObject", bytesOf(pBinObj)))
        return code;
    if (bytesOf(pBinObj).empty())
        return QG_BAD_ARGUMENT;
    auto objects = objectsOf(bytesOf(pBinObjs));
    objects.push_back(bytesOf(pBinObj));
    fill(pBinObjs, listOf(objects));
    return 0;
}

int UTILGetObjectCount(void*, BINSTR* pBinObjs, int* nCnt)
{
    if (const int code = fake().call("UTILGetObjectCount"))
        return code;
    if (bytesOf(pBinObjs).empty())
        return QG_BAD_ARGUMENT;
    *nCnt = static_cast<int>(objectsOf(bytesOf(pBinObjs)).size());
    return 0;
}

int UTILGetObject(void*, BINSTR* pBinObjs, int nIndex, BINSTR* pBinObj)
{
    if (const int code = fake().call("UTILGetObject", std::to_string(nIndex)))
        return code;
    fill(pBinObj, objectsOf(bytesOf(pBinObjs)).at(static_cast<size_t>(nIndex)));
    return 0;
}

int VIDGetRandomFromPriKey(void*, BINSTR* pBinPriKey, BINSTR* pBinRandom)
{
    const std::string key = bytesOf(pBinPriKey);
    if (const int code = fake().call("VIDGetRandomFromPriKey", key))
        return code;
    if (key.empty())
        return QG_BAD_ARGUMENT;
    if (key.compare(0, 2, "R:") != 0)
        return TOOLKIT_NO_KEY_RANDOM;
    fill(pBinRandom, key.substr(2));
    return 0;
}

int VIDVerify(void*, BINSTR* pBinCert, BINSTR* pBinRandom, char* pszIDN)
{
    return fake().call("VIDVerify", bytesOf(pBinCert) + "," + bytesOf(pBinRandom) + "," + pszIDN);
}

int ZRAPGetDataByURL(void*, int nDataType, char* pszURL, BINSTR* pBinData)
{
    if (const int code = fake().call("ZRAPGetDataByURL", std::to_string(nDataType) + "," + pszURL))
        return code;
    if (fake().unreachable.count(pszURL))
        return fake().unreachable[pszURL];
    fill(pBinData, std::string("data of ") + pszURL);
    return 0;
}

int CertAddTrustedCert(void*, BINSTR* pBinTrustedCert)
{
    return fake().call("CertAddTrustedCert", bytesOf(pBinTrustedCert));
}

int CertSetVerifyEnv(void*, int nRange, int nCheck, bool bUseCache, char* pszTime, char* pszOCSPURL)
{
    return fake().call("CertSetVerifyEnv", std::to_string(nRange) + "," + std::to_string(nCheck) + "," +
                                               (bUseCache ? "cache" : "no cache") + "," +
                                               (pszTime ? pszTime : "null") + "," +
                                               (pszOCSPURL ? pszOCSPURL : "null"));
}

int CertVerify(void*, BINSTR* pBinCert, int nCertType, char* pszCertPolices, char* pszConfFilePath,
               bool bSign, BINSTR* pBinMyCert, BINSTR* pBinMyPriKey)
{
    const std::string rest =
        bSign || pszCertPolices || pBinMyCert || pBinMyPriKey ? "something else" : "nothing else";
    return fake().call("CertVerify", bytesOf(pBinCert) + "," + std::to_string(nCertType) + "," +
                                         pszConfFilePath + "," + rest);
}
