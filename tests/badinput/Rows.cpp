#include "Rows.h"
#include "quillgate/algorithms.h"

using namespace argument;

namespace {

/** Names with one reason. */
void exclude(std::map<std::string, std::string>& list, const std::string& reason,
             const std::vector<std::string>& names)
{
    for (const std::string& name : names)
        list[name] = reason;
}

std::map<std::string, std::string> makeExclusions()
{
    std::map<std::string, std::string> list;
    exclude(list, "takes numbers and gives what the context holds",
            {"ZR_GetErrInfo",       "ZR_GetErrInfo2",     "ZR_GetVersion",
             "ZR_SetOption",        "ZR_FreeCaPubs",      "ZR_SetHashAlg",
             "CertUnLoad",          "CMSGetSignerCert",   "CMSSetOption",
             "CMSGetSignerCaPubs",  "CMSGetTBTData",      "CMSGetTimeStampToken1",
             "OCSPGetCertStatus",   "CMPSetProtocol",     "CMPSetCA",
             "MediaUnLoad",         "CRYPTSetRSAVersion", "CRYPTSetPaddingType",
             "CRYPTSetEnvChangeIV", "CRYPTGenRandom",     "CRYPTGenKeyPair",
             "CRYPTGenKeyAndIV",    "CRYPTGetKeyAndIV",   "CRYPTClearKeyAndIV",
             "PKCS11GetSlotList",   "PKCS11GetTokenInfo", "PKCS11Logout",
             "PKCS11CloseSession",  "PKCS11GetCertCnt",   "PKCS11GetCertInfo",
             "SIGEAMakeChallenge",  "ZRTK_API_Init",      "ZRTK_API_Finish",
             "GPKI_API_Init",       "GPKI_API_Finish",    "GPKI_API_GetInfo"});
    exclude(list,
            "tells of the loaded certificate: CertLoad is the way in, toolkit/DamageTest.cpp is about it",
            {"CertGetUID",
             "CertGetVersion",
             "CertGetSerialNum",
             "CertGetSignatureAlgorithm",
             "CertGetIssuerName",
             "CertGetSubjectName",
             "CertGetPubKeyInfo",
             "CertGetSignature",
             "CertGetKeyUsage",
             "CertGetBasicConstraints",
             "CertGetCertPolicy",
             "CertGetPolicyID",
             "CertGetExtKeyUsage",
             "CertGetSubjectAltName",
             "CertGetIssuerAltName",
             "CertGetAuthKeyID",
             "CertGetSubKeyID",
             "CertGetCRLDP",
             "CertGetCRLDPURL",
             "CertGetAIA",
             "ZRTK_CERT_GetSubjectName_DERFormat",
             "ZRTK_CERT_GetPolicyConstraints"});
    exclude(list, "makes, fills and empties the records that all others take: toolkit/HostProcessTest.cpp",
            {"ZR_BINSTR_Create", "ZR_BINSTR_Delete", "ZR_BINSTR_SetData"});
    exclude(list, "takes PINs and names of tokens: token/SessionTest.cpp",
            {"PKCS11InitToken", "PKCS11InitTokenWithSlotID", "PKCS11OpenSessionWithSlotID",
             "PKCS11OpenSessionWithTokenName", "PKCS11Login", "PKCS11ChangePIN", "ZRTK_PKCS11_OpenSession"});
    exclude(list, "not of this platform, and answers so whatever it is given: toolkit/HostProcessTest.cpp",
            {"MediaCardReadCert", "MediaCardReadPriKey", "MediaCardWriteCert", "MediaCardWritePriKey",
             "MediaCardDeleteCert", "MediaCareDeletePriKey", "MediaWinsWirteCertKey", "MediaWinsWirteCert",
             "MediaWinsCertCnt", "MediaWinsCertDN", "MediaWinsReadCert", "MediaWinsReadPrikey",
             "MediaWinsReadCaPubs", "ZRTK_MEDIA_WINS_ReadCaPubs"});
    exclude(list, "refuses every call, as its two tests have it: access_operations", {"TSPTimeStampFile"});
    return list;
}

} // namespace

const std::vector<Row>& allRows()
{
    static const std::vector<Row> rows = [] {
        std::vector<Row> all;
        for (const auto add : {addCertificateRows, addKeyRows, addMessageRows, addProtocolRows, addTokenRows,
                               addCryptoRows, addUtilityRows})
            add(all);
        return all;
    }();
    return rows;
}

const std::map<std::string, std::string>& operationsWithoutRow()
{
    static const std::map<std::string, std::string> list = makeExclusions();
    return list;
}

void trust(const Bench& bench, const Sample& root, const Sample& authorities)
{
    bench.run("CertAddTrustedCert", {in(root)});
    bench.run("ZR_SetCaPubs", {in(authorities)});
    bench.run("CertSetVerifyEnv", {number(0), number(0), number(0), fixed(""), fixed("")});
}

void trustAuthorities(const Bench& bench, const Samples& samples)
{
    trust(bench, samples.root, samples.authorities);
}

void setSymmetricKey(const Bench& bench, const Samples& samples)
{
    bench.run("CRYPTSetKeyAndIV",
              {number(QG_CIPHER_AES256), in(samples.symmetricKey), in(samples.initialValue)});
}
