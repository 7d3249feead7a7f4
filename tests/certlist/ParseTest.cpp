#include <gmock/gmock.h>

#include "BoundedText.h"
#include "StoreTest.h"

namespace {

/** One GPKI, NPKI or MPKI certificate on disk, parsed by way of the list. */
class Parse : public DiskTest
{
protected:
    /** Lists what there is; the result of the load. */
    int load() { return store.LoadCertList(); }

    /** Loads the one GPKI certificate "a". */
    int loadOne(const std::string& signKey = "pw:key", const std::string& kmKey = "")
    {
        writeFlat(class1, "a", signKey, kmKey);
        return load();
    }

    /** The step's failure answers this code from ParsingCert itself. */
    int parseWithFailure(const std::string& function)
    {
        writeFlat(class1, "a", "pw:key", "pw:km");
        toolkit.failures[function] = 1234;
        CERTINFO record{};
        copyText(record.szSignCertPath, (class1 / "a_sig.cer").c_str());
        copyText(record.szSignKeyPath, (class1 / "a_sig.key").c_str());
        const int code = store.ParsingCert(true, &record);
        EXPECT_EQ(toolkit.loaded, 0);
        EXPECT_EQ(toolkit.liveBytes, 0);
        return code;
    }

    /** Sets the policy filter. */
    void filterPolicies(std::initializer_list<const char*> ids)
    {
        policies.clear();
        for (const char* id : ids) {
            policies.push_back({});
            copyText(policies.back().szPolicyID, id);
        }
        store.m_pstSetOid = policies.data();
        store.m_nSetPolicyOIDCnt = static_cast<int>(policies.size());
    }

    void issuerConfiguration(const std::string& text)
    {
        const fs::path path = TestHome::scratch("conf") / "IssuerOid.conf";
        writeFile(path, text);
        copyText(store.m_szConfigPath, path.c_str());
    }

    std::vector<SETOID> policies;
};

} // namespace

TEST_F(Parse, EveryFieldArrives)
{
    ASSERT_EQ(loadOne("pw:key", "pw:km"), 0);
    const CERTINFO& info = entry(0);
    EXPECT_EQ(std::string(info.szSignCert, static_cast<size_t>(info.nSignCertLen)), "cert a");
    EXPECT_EQ(std::string(info.szEncSignKey, static_cast<size_t>(info.nEncSignKeyLen)), "pw:key");
    EXPECT_EQ(std::string(info.szKmCert, static_cast<size_t>(info.nKmCertLen)), "km cert a");
    EXPECT_EQ(std::string(info.szEncKmKey, static_cast<size_t>(info.nEncKmKeyLen)), "pw:km");
    EXPECT_STREQ(info.szVersion, "V3");
    EXPECT_STREQ(info.szSerialNumber, "0a1b");
    EXPECT_STREQ(info.szAlgorithm, "sha256WithRSAEncryption");
    EXPECT_STREQ(info.szSubjectDN, "cn=holder,ou=people,o=yessign,c=kr");
    EXPECT_STREQ(info.szSubjectCN, "holder");
    EXPECT_STREQ(info.szIssuerDN, "cn=yessignCA,ou=AccreditedCA,o=yessign,c=kr");
    EXPECT_STREQ(info.szIssuerCN, "yessignCA");
    EXPECT_STREQ(info.szBefore, "2025-01-01 00:00:00");
    EXPECT_STREQ(info.szAfterDay, "2027-01-01");
    EXPECT_STREQ(info.szBeforeDay, "2025-01-01");
    EXPECT_STREQ(info.szPubKey, "30 82");
    EXPECT_STREQ(info.szPubKeyLen, "2048 Bits");
    EXPECT_STREQ(info.szPubKeyAlgo, "rsaEncryption");
    EXPECT_STREQ(info.szKeyUsage, "digitalSignature");
    EXPECT_STREQ(info.szCrlDp, "ldap://crl");
    EXPECT_STREQ(info.szCertPolicy, "policy text");
    EXPECT_STREQ(info.szCertPolicyIDS, "1 2 410 200005 1 1 1");
    EXPECT_STREQ(info.szAuthKeyID, "aki");
    EXPECT_STREQ(info.szSubKeyID, "ski");
    EXPECT_STREQ(info.szSubjectAltName, "san");
    EXPECT_STREQ(info.szAIA, "aia");
    EXPECT_EQ(info.nMediaType, MEDIA_HARDDISK);
    EXPECT_EQ(info.nSignKeyLen, 0);
    EXPECT_EQ(info.nKeyRandomLen, 0);
    EXPECT_EQ(info.nCertbit1024, 0);
}

TEST_F(Parse, ToolkitIsToldTheSizesOfTheBuffers)
{
    ASSERT_EQ(loadOne(), 0);
    EXPECT_EQ(toolkit.count("CertGetSubjectName(2048)"), 2);
    EXPECT_EQ(toolkit.count("CertGetValidity(50,50)"), 2);
    EXPECT_EQ(toolkit.count("CertGetPubKeyInfo(2048)"), 2);
}

TEST_F(Parse, LongTextsAreCutToTheirFields)
{
    toolkit.texts["CertGetSerialNum"] = std::string(3000, '1');
    toolkit.texts["CertGetUID"] = std::string(2048, 'c'); // fills the buffer without a terminator
    toolkit.texts["CertGetPolicyID"] = std::string(1500, '1');
    ASSERT_EQ(loadOne(), 0);
    EXPECT_EQ(std::strlen(entry(0).szSerialNumber), 2047u);
    EXPECT_EQ(std::strlen(entry(0).szSubjectCN), 1023u);
    EXPECT_EQ(std::strlen(entry(0).szDivision), 1023u);
}

// --- Validity -----------------------------------------------------------------------------------------

TEST_F(Parse, RenewalWindowIs30DaysAnd100ForGpki)
{
    toolkit.certificateTexts["cert 25"]["CertGetValidity.to"] = "2026-12-15 12:00:00";
    toolkit.certificateTexts["cert 31"]["CertGetValidity.to"] = "2026-12-21 12:00:01";
    writeHolder(yessign / "25");
    writeHolder(home / "NPKI/kica/User/31");
    ASSERT_EQ(load(), 0);
    for (int i = 0; i < 2; ++i) {
        const bool soon = std::strstr(entry(i).szSignCertPath, "/25/") != nullptr;
        EXPECT_EQ(entry(i).nCertState, soon ? CERTSTATE_RENEWAL : CERTSTATE_VALID);
        EXPECT_EQ(entry(i).nRemainDay, soon ? 25 : 0);
        EXPECT_EQ(entry(i).nCertVerifyState, 0);
    }
    TestHome::reset();
    writeFlat(class1, "31");
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(entry(0).nCertState, CERTSTATE_RENEWAL);
    EXPECT_EQ(entry(0).nRemainDay, 31);
}

TEST_F(Parse, GpkiEducationPolicyDoesNotShortenTheWindow)
{
    toolkit.texts["CertGetPolicyID"] = "1 2 410 100001 5 3 1";
    toolkit.texts["CertGetValidity.to"] = "2027-02-25 12:00:00"; // 97 days
    ASSERT_EQ(loadOne(), 0);
    EXPECT_EQ(entry(0).nCertState, CERTSTATE_RENEWAL);
}

TEST_F(Parse, ExpiredCertificateIsListedUnlessHidden)
{
    toolkit.texts["CertGetValidity.to"] = "2026-11-20 11:59:59";
    ASSERT_EQ(loadOne(), 0);
    EXPECT_EQ(entry(0).nCertState, CERTSTATE_EXPIRED);
    EXPECT_EQ(entry(0).nCertVerifyState, 1);
    store.m_stLoadCertOpt.bExpiredCertHide = true;
    EXPECT_EQ(load(), CLPERR_NOTEXISTCERT);
}

// --- Required and optional fields ---------------------------------------------------------------------

TEST_F(Parse, UnreadableCertificateIsTold)
{
    EXPECT_EQ(parseWithFailure("CertLoad"), CLPERR_CERT_LOAD);
    EXPECT_EQ(toolkit.count("CertUnLoad"), 0);
}

TEST_F(Parse, MissingFilesAreTold)
{
    CERTINFO record{};
    EXPECT_EQ(store.ParsingCert(true, &record), CLPERR_CERT_FIELD);
    EXPECT_EQ(parseWithFailure("MediaDiskReadFile"), CLPERR_CERT_FIELD);
    EXPECT_EQ(store.ParsingCert(true, nullptr), QG_BAD_ARGUMENT);
}

TEST_F(Parse, RequiredFieldsAreFatal)
{
    for (const char* getter : {"CertGetSerialNum", "CertGetSignatureAlgorithm", "CertGetSubjectName",
                               "CertGetUID", "CertGetIssuerName", "CertGetValidity", "CertGetPubKeyInfo"}) {
        toolkit.failures.clear();
        EXPECT_EQ(parseWithFailure(getter), CLPERR_CERT_FIELD) << getter;
        EXPECT_STREQ(store.m_szErrMsg, "toolkit says no");
    }
}

TEST_F(Parse, OptionalFieldsNeverRemoveACertificate)
{
    for (const char* getter :
         {"CertGetVersion", "CertGetKeyUsage", "CertGetCRLDP", "CertGetCertPolicy", "CertGetPolicyID",
          "CertGetAuthKeyID", "CertGetSubKeyID", "CertGetSubjectAltName", "CertGetAIA"}) {
        toolkit.failures.clear();
        EXPECT_EQ(parseWithFailure(getter), 0) << getter;
    }
}

// --- Filters ------------------------------------------------------------------------------------------

TEST_F(Parse, SerialFilterIgnoresCase)
{
    copyText(store.m_stLoadCertOpt.szCertSerial, "0A1B");
    EXPECT_EQ(loadOne(), 0);
    copyText(store.m_stLoadCertOpt.szCertSerial, "0A1");
    EXPECT_EQ(load(), CLPERR_NOTEXISTCERT);
}

TEST_F(Parse, KmSerialFilterPlaysNoPart)
{
    copyText(store.m_stLoadCertOpt.szCertKmSerial, "77");
    EXPECT_EQ(loadOne(), 0);
}

TEST_F(Parse, SubjectFilterPassesThatSubjectAlone)
{
    copyText(store.m_stLoadCertOpt.szCertDN, "CN=HOLDER,ou=people,o=yessign,c=kr");
    EXPECT_EQ(loadOne(), 0);
    copyText(store.m_stLoadCertOpt.szCertDN, "cn=other");
    EXPECT_EQ(load(), CLPERR_NOTEXISTCERT);
}

TEST_F(Parse, IssuerFilterDropsEveryCertificate)
{
    copyText(store.m_stLoadCertOpt.szIssuerDN, toolkit.texts["CertGetIssuerName"].c_str());
    EXPECT_EQ(loadOne(), CLPERR_NOTEXISTCERT);
}

TEST_F(Parse, PolicyFilterMatchesTheWholeField)
{
    toolkit.texts["CertGetPolicyID"] = "1 2 410 100001 5 3";
    filterPolicies({"9 9", "1 2 410 100001 5 3"});
    EXPECT_EQ(loadOne(), 0);
    toolkit.texts["CertGetPolicyID"] = "1 2 410 100001 5 3 1 2 3";
    EXPECT_EQ(load(), CLPERR_NOTEXISTCERT);
    store.m_nSetPolicyOIDCnt = 0;
    EXPECT_EQ(load(), 0);
}

// --- Key-management pair ------------------------------------------------------------------------------

TEST_F(Parse, DemandedPairDropsCertificatesWithoutOne)
{
    EXPECT_EQ(loadOne(), 0);
    EXPECT_EQ(entry(0).nKmCertLen, 0);
    store.m_stLoadCertOpt.nCertUsageType = CERTUSAGE_KM_PAIR;
    EXPECT_EQ(load(), CLPERR_NOTEXISTCERT);
    writeFlat(class1, "a", "pw:key", "pw:km");
    EXPECT_EQ(load(), 0);
    fs::remove(class1 / "a_env.cer");
    const int before = toolkit.count("MediaDiskReadFile(" + (class1 / "a_env.key").string());
    EXPECT_EQ(load(), CLPERR_NOTEXISTCERT);
    EXPECT_EQ(toolkit.count("MediaDiskReadFile(" + (class1 / "a_env.key").string()), before + 1)
        << "the key is read after the certificate has failed";
}

TEST_F(Parse, FailedDemandedPairClearsBothPaths)
{
    writeFlat(class1, "a");
    store.m_stLoadCertOpt.nCertUsageType = CERTUSAGE_KM_PAIR;
    CERTINFO record{};
    copyText(record.szSignCertPath, (class1 / "a_sig.cer").c_str());
    copyText(record.szSignKeyPath, (class1 / "a_sig.key").c_str());
    copyText(record.szKmCertPath, (class1 / "a_env.cer").c_str());
    EXPECT_EQ(store.ParsingCert(true, &record), CLPERR_PASS);
    copyText(record.szKmKeyPath, (class1 / "a_env.key").c_str());
    EXPECT_EQ(store.ParsingCert(true, &record), CLPERR_PASS);
    EXPECT_STREQ(record.szKmCertPath, "");
    EXPECT_STREQ(record.szKmKeyPath, "");
}

TEST_F(Parse, KmCertificateWithoutItsKeyFileIsReadForGpkiAlone)
{
    writeFlat(class1, "a", "pw:key", "pw:km");
    fs::remove(class1 / "a_env.key");
    writeHolder(yessign / "h", "pw:key", "pw:km");
    fs::remove(yessign / "h/kmPri.key");
    ASSERT_EQ(load(), 0);
    ASSERT_EQ(store.m_nCertCnt, 2);
    EXPECT_GT(entry(0).nKmCertLen, 0);
    EXPECT_EQ(entry(0).nEncKmKeyLen, 0);
    EXPECT_EQ(entry(1).nKmCertLen, 0);
    EXPECT_EQ(entry(1).nEncKmKeyLen, 0);
}

// --- Limits -------------------------------------------------------------------------------------------

TEST_F(Parse, CertificateOf4096BytesIsStoredAs4095)
{
    for (const size_t size : {4095u, 4096u, 5000u}) {
        writeFlat(class1, "a");
        writeFile(class1 / "a_sig.cer", std::string(size, 'c'));
        ASSERT_EQ(load(), 0);
        EXPECT_EQ(entry(0).nSignCertLen, 4095);
        EXPECT_EQ(entry(0).szSignCert[4094], 'c');
        EXPECT_EQ(entry(0).szSignCert[4095], '\0');
    }
}

TEST_F(Parse, KeyOf4096BytesLeavesItsFieldEmptyBesideALengthOf4095)
{
    ASSERT_EQ(loadOne(std::string(4095, 'k')), 0);
    EXPECT_EQ(entry(0).nEncSignKeyLen, 4095);
    EXPECT_EQ(entry(0).szEncSignKey[4094], 'k');
    for (const size_t size : {4096u, 5000u}) {
        ASSERT_EQ(loadOne(std::string(size, 'k')), 0);
        EXPECT_EQ(entry(0).nEncSignKeyLen, 4095);
        EXPECT_EQ(std::string(entry(0).szEncSignKey, 4096), std::string(4096, '\0'));
        EXPECT_EQ(entry(0).nSignCertLen, 6);
        EXPECT_EQ(std::string(entry(0).szSignCert, 7), std::string("cert a\0", 7));
    }
}

TEST_F(Parse, KmKeyOf4096BytesSetsTheCertificatesLength)
{
    ASSERT_EQ(loadOne("pw:key", std::string(4096, 'k')), 0);
    EXPECT_EQ(entry(0).nKmCertLen, 4095);
    EXPECT_EQ(entry(0).nEncKmKeyLen, 0);
}

TEST_F(Parse, EmptyFilesAreStoredAsNothing)
{
    writeFlat(class1, "a");
    writeFile(class1 / "a_sig.key", "");
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(entry(0).nEncSignKeyLen, 0);
}

// --- Names --------------------------------------------------------------------------------------------

TEST_F(Parse, IssuerAndPurposeAreNamedByTheConfiguration)
{
    issuerConfiguration("[ISSUERNAME]\nyessignCA=KFTC\n[OID]\n1.2.410.200005.1.1.1=personal\n");
    ASSERT_EQ(loadOne(), 0);
    EXPECT_STREQ(entry(0).szIssuerName, "KFTC");
    EXPECT_STREQ(entry(0).szDivision, "personal");
}

TEST_F(Parse, UnknownIssuerAndPurposeStandForThemselves)
{
    for (const char* text : {"[ISSUERNAME]\nother=x\n[OID]\n1.1=y\n", "",
                             "[ISSUERNAME]\nyessignCA=\n[OID]\n1.2.410.200005.1.1.1=\n"}) {
        issuerConfiguration(text);
        ASSERT_EQ(loadOne(), 0);
        EXPECT_STREQ(entry(0).szIssuerName, "yessignCA");
        EXPECT_STREQ(entry(0).szDivision, "1.2.410.200005.1.1.1");
    }
}

TEST_F(Parse, HostsPurposeNameBeatsTheConfiguration)
{
    issuerConfiguration("[OID]\n1.2.410.200005.1.1.1=personal\n");
    store.m_mapOidList["1.2.410.200005.1.1.1"] = "mine";
    ASSERT_EQ(loadOne(), 0);
    EXPECT_STREQ(entry(0).szDivision, "mine");
    store.m_mapOidList["1.2.410.200005.1.1.1"] = std::string(2000, 'd');
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(std::strlen(entry(0).szDivision), 1023u);
}

TEST_F(Parse, IssuerWithoutLowerCaseCnTakesTheNameOfTheEmptyKey)
{
    toolkit.texts["CertGetIssuerName"] = "CN=yessignCA,C=KR";
    issuerConfiguration("[ISSUERNAME]\n = nobody\n");
    ASSERT_EQ(loadOne(), 0);
    EXPECT_STREQ(entry(0).szIssuerCN, "");
    EXPECT_STREQ(entry(0).szIssuerName, "nobody");
    issuerConfiguration("");
    ASSERT_EQ(load(), 0);
    EXPECT_STREQ(entry(0).szIssuerName, "");
}

TEST_F(Parse, NamesAreLookedUpAnewWithEachLoad)
{
    issuerConfiguration("[ISSUERNAME]\nyessignCA=first\n");
    ASSERT_EQ(loadOne(), 0);
    issuerConfiguration("[ISSUERNAME]\nyessignCA=second\n");
    ASSERT_EQ(load(), 0);
    EXPECT_STREQ(entry(0).szIssuerName, "second");
}

TEST_F(Parse, NamesAreLookedUpAnewForEachCertificate)
{
    issuerConfiguration("[ISSUERNAME]\nyessignCA=first\n");
    writeFlat(class1, "a");
    writeFlat(class1, "b");
    int keys = 0;
    toolkit.onRead = [&](const std::string& path) {
        // The fourth signing key is the second certificate's in the filling pass.
        if (path.ends_with("_sig.key") && ++keys == 4)
            issuerConfiguration("[ISSUERNAME]\nyessignCA=second\n");
    };
    ASSERT_EQ(load(), 0);
    EXPECT_STREQ(entry(0).szIssuerName, "first");
    EXPECT_STREQ(entry(1).szIssuerName, "second");
}

// --- Copying into the list ----------------------------------------------------------------------------

TEST_F(Parse, PolicyTextWithoutDistributionPointStaysBehind)
{
    toolkit.texts["CertGetCRLDP"] = "";
    ASSERT_EQ(loadOne(), 0);
    EXPECT_STREQ(entry(0).szCertPolicy, "");
    EXPECT_STREQ(entry(0).szCertPolicyIDS, "1 2 410 200005 1 1 1");
}

TEST_F(Parse, OnlyTheFirstRecordNamesTheDrive)
{
    const fs::path drive = useDrive();
    for (const char* name : {"a", "b", "c"})
        writeFlat(drive / "GPKI/Certificate/class1", name);
    ASSERT_EQ(load(), 0);
    ASSERT_EQ(store.m_nCertCnt, 3);
    EXPECT_EQ(entry(0).szDriveInfo, drive.string());
    EXPECT_EQ(entry(0).nMediaType, MEDIA_REMOVABLE);
    EXPECT_STREQ(entry(1).szDriveInfo, "");
    EXPECT_STREQ(entry(2).szDriveInfo, "");
}

TEST_F(Parse, CopyingOverARecordClearsItFirst)
{
    writeFlat(class1, "a");
    writeFlat(class1, "b");
    ASSERT_EQ(load(), 0);
    CERTINFO other{};
    other.nMediaType = MEDIA_HARDDISK;
    copyText(other.szVersion, "V1");
    copyText(other.szPinNumber, "1234");
    store.CopyCertInfo(1, &other);
    EXPECT_STREQ(entry(1).szVersion, "V1");
    EXPECT_STREQ(entry(1).szSubjectDN, "");
    EXPECT_EQ(entry(1).nSignCertLen, 0);
    EXPECT_STREQ(entry(1).szPinNumber, "");
    EXPECT_STREQ(entry(0).szPinNumber, "1234");
}

TEST_F(Parse, CopyingOutsideTheListDoesNothing)
{
    CERTINFO other{};
    store.CopyCertInfo(0, &other);
    ASSERT_EQ(loadOne(), 0);
    store.CopyCertInfo(0, nullptr);
    store.CopyCertInfo(1, &other);
    store.CopyCertInfo(-1, &other);
    EXPECT_STREQ(entry(0).szVersion, "V3");
}

TEST_F(Parse, NothingOfOneCertificateReachesTheNext)
{
    toolkit.certificateTexts["cert b"] = {{"CertGetVersion", ""},         {"CertGetKeyUsage", ""},
                                          {"CertGetCRLDP", ""},           {"CertGetCertPolicy", ""},
                                          {"CertGetPolicyID", ""},        {"CertGetAuthKeyID", ""},
                                          {"CertGetSubjectAltName", ""},  {"CertGetAIA", ""},
                                          {"CertGetSubjectName", "cn=b"}, {"CertGetUID", ""}};
    toolkit.certificateTexts["cert a"]["CertGetValidity.to"] = "2026-11-21 00:00:00";
    toolkit.certificateTexts["cert b"]["CertGetValidity.to"] = "2030-01-01 00:00:00";
    writeFlat(class1, "a", "pw:key", "pw:km");
    writeFlat(class2, "b", std::string(4096, 'k'));
    ASSERT_EQ(load(), 0);
    ASSERT_EQ(store.m_nCertCnt, 2);
    copyText(store.m_pstCertGPKIDirectory[0].szCertDirPath, (class1.string() + "/").c_str());
    copyText(store.m_pstCertGPKIDirectory[1].szCertDirPath, (class2.string() + "/").c_str());
    int index = 0;
    ASSERT_EQ(store.GetGPKICertList(false, 0, &index), 0);
    const CERTINFO& next = entry(1);
    EXPECT_STREQ(next.szSubjectDN, "cn=b");
    for (const char* field :
         {next.szVersion, next.szSubjectCN, next.szKeyUsage, next.szCrlDp, next.szCertPolicy,
          next.szCertPolicyIDS, next.szAuthKeyID, next.szSubjectAltName, next.szAIA, next.szDivision})
        EXPECT_STREQ(field, "");
    EXPECT_EQ(next.nRemainDay, 0);
    EXPECT_EQ(next.nCertState, CERTSTATE_VALID);
    EXPECT_EQ(next.nKmCertLen, 0);
    EXPECT_EQ(next.nEncKmKeyLen, 0);
    EXPECT_EQ(next.nEncSignKeyLen, 4095);
    EXPECT_EQ(std::string(next.szEncSignKey, 4096), std::string(4096, '\0'));
}
