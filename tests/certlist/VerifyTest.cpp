#include <gmock/gmock.h>

#include "SessionTest.h"
#include "SystemLog.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsSupersetOf;
using testing::Not;
using testing::StartsWith;

namespace {

/** A session with one listed certificate, a "root" search behind it and three configured CAs, one a root. */
class Verify : public SessionTest
{
protected:
    Verify()
    {
        writeFlat(class1, "a");
        writeFile(path, "[VALIDATOIN_OPTION]\nCA_INFO_COUNT=3\n"
                        "[CA_INFO1]\nCA_DN=cn=CA one,c=KR\nDIR_URL=ldap://one\n"
                        "[CA_INFO2]\nCA_DN=cn=Root two,c=KR\nDIR_URL=ldap://two\n"
                        "[CA_INFO3]\nCA_DN=cn=root three,c=KR\nDIR_URL=ldap://three\n");
        startOn(MEDIA_HARDDISK);
        EXPECT_EQ(CLP_LoadCertList(handle), 0);
        EXPECT_EQ(searchRoot(), 0);
        toolkit.calls.clear();
    }
    ~Verify() override { fs::remove(path); }

    int searchRoot() { return CLP_SearchFileList(handle, text("root"), nullptr); }
    int verify(int index = 0) { return CLP_VerifyCert(handle, index, sizeof(detail), detail); }

    /** A configuration of roots alone, each "DN|URL". */
    void configure(const std::vector<std::pair<std::string, std::string>>& roots) const
    {
        std::string lines = "[VALIDATOIN_OPTION]\nCA_INFO_COUNT=" + std::to_string(roots.size()) + "\n";
        for (size_t i = 0; i < roots.size(); ++i)
            lines += "[CA_INFO" + std::to_string(i + 1) + "]\nCA_DN=" + roots[i].first +
                     "\nDIR_URL=" + roots[i].second + "\n";
        writeFile(path, lines);
    }

    void configureCount(const std::string& count) const
    {
        writeFile(path, "[VALIDATOIN_OPTION]\nCA_INFO_COUNT=" + count +
                            "\n[CA_INFO1]\nCA_DN=cn=Root,c=KR\nDIR_URL=ldap://host\n");
    }

    int rootCount()
    {
        int count = -1;
        EXPECT_EQ(session().GetRootCertCount(text(path), &count), 0);
        return count;
    }

    std::string path = workDir.string() + "\\ZRCToolkitV30.conf";
    char detail[1024] = {};
};

/** The call that asks for the verdict, with the arguments that never change. */
std::string verdict(const std::string& certificate, const std::string& configuration)
{
    return "CertVerify(" + certificate + ",1," + configuration + ",nothing else)";
}

const char* const MILITARY = "CN=ROOT CA,OU=MPKI,O=Ministry Of National Defense,C=kr, Root";

} // namespace

TEST_F(Verify, GoodCertificateIsToldAfterItsRootIsTrusted)
{
    EXPECT_EQ(verify(), 0);
    EXPECT_THAT(toolkit.calls,
                ElementsAre("ZRAPGetDataByURL(1,ldap://two/cn=Root two,c=KR)",
                            "CertAddTrustedCert(data of ldap://two/cn=Root two,c=KR)",
                            "CertSetVerifyEnv(0,2,no cache,null,null)", verdict("cert a", path)));
    EXPECT_STREQ(detail, "");
}

TEST_F(Verify, ConfigurationIsAFileWithABackslashInItsName)
{
    writeFile(workDir / "ZRCToolkitV30.conf", "[VALIDATOIN_OPTION]\nCA_INFO_COUNT=1\n");
    fs::remove(path);
    EXPECT_EQ(verify(), CLPERR_CERT_VERIFY);
}

TEST_F(Verify, OtherToolkitHasFileKeysAndDepthOfItsOwn)
{
    session().m_nTKType = TOOLKIT_GPKI;
    const std::string other = workDir.string() + "\\gpkiapi.conf";
    writeFile(other, "[VALIDATOIN_OPTION]\nLDAP_INFO_COUNT=1\n"
                     "[LDAP_INFO1]\nDN=cn=Root,c=KR\nURL=ldap://gpki\n");
    EXPECT_EQ(verify(), 0);
    EXPECT_THAT(toolkit.calls,
                ElementsAre("ZRAPGetDataByURL(1,ldap://gpki/cn=Root,c=KR)",
                            "CertAddTrustedCert(data of ldap://gpki/cn=Root,c=KR)",
                            "CertSetVerifyEnv(0,1,no cache,null,null)", verdict("cert a", other)));
    fs::remove(other);
}

TEST_F(Verify, SessionWithoutARootSearchIsRefused)
{
    session().m_pstSearchDriveInfo.reset();
    EXPECT_EQ(verify(), QG_NO_MEMORY);
    EXPECT_TRUE(toolkit.calls.empty());
    ASSERT_EQ(searchRoot(), 0);
    EXPECT_EQ(verify(), 0);
}

TEST_F(Verify, LaterFolderStepKeepsTheRootSearchGood)
{
    ASSERT_EQ(CLP_SearchFileList(handle, text(workDir), nullptr), 0);
    EXPECT_EQ(verify(), 0);
}

TEST_F(Verify, MissingConfigurationOrCountIsAFailedVerification)
{
    toolkit.errorText = "nothing configured";
    for (const char* count : {"", "0", "-1", "-2147483648", "many"}) {
        configureCount(count);
        session().m_szErrMsg[0] = '\0';
        EXPECT_EQ(session().GetRootCertCount(text(path), nullptr), QG_BAD_ARGUMENT);
        int number = -1;
        EXPECT_EQ(session().GetRootCertCount(text(path), &number), CLPERR_NO_CA_CONFIGURED) << count;
        EXPECT_EQ(number, -1);
        EXPECT_EQ(verify(), CLPERR_CERT_VERIFY) << count;
        EXPECT_STREQ(session().m_szErrMsg, "nothing configured");
    }
    fs::remove(path);
    EXPECT_EQ(verify(), CLPERR_CERT_VERIFY);
    EXPECT_STREQ(detail, "") << "no text of its own";
    EXPECT_TRUE(toolkit.calls.empty());
}

TEST_F(Verify, ConfigurationPathIsRequired)
{
    int number = 0;
    ROOTCERTURLINFO root{};
    char empty[] = "";
    for (char* none : {static_cast<char*>(nullptr), empty}) {
        EXPECT_EQ(session().GetRootCertCount(none, &number), QG_BAD_ARGUMENT);
        EXPECT_EQ(session().GetRootCertURL(none, &root), QG_BAD_ARGUMENT);
    }
    EXPECT_EQ(session().GetRootCertURL(text(path), nullptr), QG_BAD_ARGUMENT);
}

TEST_F(Verify, RootAmongThreeEntriesTakesTheFirstPlace)
{
    EXPECT_EQ(rootCount(), 1);
    ROOTCERTURLINFO root{};
    EXPECT_EQ(session().GetRootCertURL(text(path), &root), 0);
    EXPECT_STREQ(root.szDN, "cn=Root two,c=KR");
    EXPECT_STREQ(root.szURL, "ldap://two");
}

TEST_F(Verify, WordRootIsReadInItsCaseAnywhereInTheName)
{
    configure({{"cn=root,c=KR", "a"}, {"cn=ROOT,c=KR", "b"}, {"cn=x,ou=TheRootOf,c=KR", "c"}});
    EXPECT_EQ(rootCount(), 1);
}

TEST_F(Verify, WithoutARootTheVerdictIsAskedForAllTheSame)
{
    configure({{"cn=CA,c=KR", "ldap://host"}});
    EXPECT_EQ(rootCount(), 0);
    EXPECT_EQ(verify(), 0);
    EXPECT_THAT(toolkit.calls,
                ElementsAre("CertSetVerifyEnv(0,2,no cache,null,null)", verdict("cert a", path)));
}

TEST_F(Verify, EmptyUrlKeepsItsPlaceAndAsksForASlashAndTheName)
{
    configure({{"cn=Root one,c=KR", ""}, {"cn=Root two,c=KR", "ldap://two"}});
    ROOTCERTURLINFO roots[2] = {};
    EXPECT_EQ(session().GetRootCertURL(text(path), roots), 0);
    EXPECT_STREQ(roots[0].szURL, "");
    EXPECT_STREQ(roots[0].szDN, "cn=Root one,c=KR");
    EXPECT_STREQ(roots[1].szURL, "ldap://two");
    EXPECT_EQ(verify(), 0);
    EXPECT_THAT(toolkit.calls, Contains("ZRAPGetDataByURL(1,/cn=Root one,c=KR)"));
}

TEST_F(Verify, MilitaryRootIsNotFetchedInWhateverCase)
{
    std::string dn = "cn=Root CA,ou=MPKI,o=Ministry of National Defense,c=KR";
    configure({{dn, "ldap://mil"}, {"cn=Root CA,OU=mpki,o=MINISTRY of National Defense,c=kr", "ldap://mil"}});
    EXPECT_EQ(verify(), 0);
    EXPECT_EQ(toolkit.count("ZRAPGetDataByURL"), 0);
    configure({{dn + " ", "ldap://trimmed"}, {dn + ",x=y", "ldap://other"}, {MILITARY, "ldap://spelled"}});
    EXPECT_EQ(verify(), 0);
    EXPECT_EQ(toolkit.count("ZRAPGetDataByURL"), 2) << "only the very name is passed over";
}

TEST_F(Verify, ValuesOfAnEntryAreCutAtNinetyNineBytes)
{
    const std::string dn = "Root" + std::string(200, 'd');
    const std::string url = "ldap://" + std::string(200, 'u');
    configure({{dn, url}, {std::string(97, 'd') + "Root", url}});
    EXPECT_EQ(rootCount(), 1) << "the word lies behind the cut in the second";
    EXPECT_EQ(verify(), 0);
    EXPECT_THAT(toolkit.calls,
                Contains("ZRAPGetDataByURL(1," + url.substr(0, 99) + "/" + dn.substr(0, 99) + ")"));
}

TEST_F(Verify, HugeCountIsReadUpToAThousandEntries)
{
    configureCount("2147483647");
    EXPECT_EQ(rootCount(), 1);
    EXPECT_EQ(verify(), 0);
    EXPECT_EQ(toolkit.count("ZRAPGetDataByURL"), 1);
    std::string lines = "[VALIDATOIN_OPTION]\nCA_INFO_COUNT=1002\n";
    for (const int entry : {999, 1000, 1001, 1002})
        lines += "[CA_INFO" + std::to_string(entry) + "]\nCA_DN=Root\n";
    writeFile(path, lines);
    EXPECT_EQ(rootCount(), 2);
}

TEST_F(Verify, FileThatGrowsBetweenCountAndReadDoesNotOverrunTheArray)
{
    configure({{"Root one", "one"}, {"Root two", "two"}, {"Root three", "three"}});
    ROOTCERTURLINFO roots[3] = {};
    EXPECT_EQ(session().GetRootCertURL(text(path), roots, 2), 0);
    EXPECT_STREQ(roots[1].szURL, "two");
    EXPECT_STREQ(roots[2].szURL, "");
}

TEST_F(Verify, RootThatCannotBeFetchedIsPassedOver)
{
    configure({{"Root one", "ldap://one"}, {"Root two", "ldap://two"}});
    toolkit.unreachable["ldap://one/Root one"] = 4321;
    EXPECT_EQ(verify(), 0) << "the verdict decides";
    EXPECT_EQ(toolkit.count("CertAddTrustedCert"), 1);
    EXPECT_THAT(toolkit.calls, Contains("CertAddTrustedCert(data of ldap://two/Root two)"));
    toolkit.unreachable["ldap://two/Root two"] = 4322;
    EXPECT_EQ(verify(), 0) << "the code of the last fetch is not the result";
}

TEST_F(Verify, RefusedRootEndsTheVerification)
{
    configure({{"Root one", "ldap://one"}, {"Root two", "ldap://two"}});
    toolkit.failures["CertAddTrustedCert"] = 77;
    EXPECT_EQ(verify(), CLPERR_CERT_VERIFY);
    EXPECT_EQ(toolkit.count("ZRAPGetDataByURL"), 1);
    EXPECT_EQ(toolkit.count("CertSetVerifyEnv"), 0);
    EXPECT_STREQ(session().m_szErrMsg, "toolkit says no");
    EXPECT_STREQ(detail, "");
}

TEST_F(Verify, RefusedEnvironmentEndsTheVerification)
{
    toolkit.failures["CertSetVerifyEnv"] = 78;
    EXPECT_EQ(verify(), CLPERR_CERT_VERIFY);
    EXPECT_EQ(toolkit.count("CertVerify"), 0);
    EXPECT_STREQ(session().m_szErrMsg, "toolkit says no");
    EXPECT_STREQ(detail, "");
}

TEST_F(Verify, IndexOutsideTheListKeepsItsCode)
{
    for (const int index : {-1, 1, INT_MAX}) {
        EXPECT_EQ(verify(index), QG_BAD_ARGUMENT);
        EXPECT_STREQ(session().m_szErrMsg, "toolkit says no");
    }
    EXPECT_EQ(toolkit.count("CertVerify"), 0);
    EXPECT_STREQ(detail, "");
}

TEST_F(Verify, BadCertificateIsToldWithTheToolkitsText)
{
    toolkit.failures["CertVerify"] = 4004;
    toolkit.errorText = "<wrenlib>revoked";
    EXPECT_EQ(verify(), CLPERR_CERT_VERIFY);
    EXPECT_STREQ(detail, "<wrenlib>revoked");
    EXPECT_STREQ(session().m_szErrMsg, "<wrenlib>revoked");
}

TEST_F(Verify, DetailTextStaysWithinItsBuffer)
{
    toolkit.failures["CertVerify"] = 4004;
    toolkit.errorText = "revoked";
    for (const int length : {INT_MIN, -1, 0}) {
        auto buffer = marked(8);
        EXPECT_EQ(CLP_VerifyCert(handle, 0, length, buffer.data()), CLPERR_CERT_VERIFY);
        EXPECT_EQ(bytesOf(buffer), "xxxxxxxx") << length;
    }
    auto buffer = marked(8);
    EXPECT_EQ(CLP_VerifyCert(handle, 0, 1, buffer.data()), CLPERR_CERT_VERIFY);
    EXPECT_EQ(bytesOf(buffer), std::string("\0xxxxxxx", 8));
    EXPECT_EQ(CLP_VerifyCert(handle, 0, 5, buffer.data()), CLPERR_CERT_VERIFY);
    EXPECT_EQ(bytesOf(buffer), std::string("revo\0xxx", 8));
    EXPECT_EQ(CLP_VerifyCert(handle, 0, 100, nullptr), CLPERR_CERT_VERIFY);
    toolkit.errorText.clear();
    EXPECT_EQ(CLP_VerifyCert(handle, 0, 5, buffer.data()), CLPERR_CERT_VERIFY);
    EXPECT_EQ(bytesOf(buffer), std::string("revo\0xxx", 8)) << "no text leaves the earlier one";
}

TEST_F(Verify, CertificateInMemoryIsVerifiedToo)
{
    ASSERT_EQ(setMemoryCert("memory cert", "key"), 0);
    ASSERT_EQ(CLP_SetMediaType(handle, MEDIA_MEMORY, 0), 0);
    ASSERT_EQ(CLP_LoadCertList(handle), 0);
    EXPECT_EQ(verify(), 0);
    EXPECT_THAT(toolkit.calls, Contains(verdict("memory cert", path)));
}

TEST_F(Verify, SessionWithoutStoresAnswersThatThereIsNoContext)
{
    session().UnInitalize();
    EXPECT_EQ(verify(), QG_NO_CONTEXT);
}

TEST_F(Verify, LogLinesKeepTheirLabels)
{
    copyText(session().m_szLogFilePath, (workDir / "trace").c_str());
    const std::string tag = "CCertListProcInterface::VerifyCert() ";
    const auto lines = [&](int index = 0) {
        return systemLogOf([&] { session().VerifyCert(index, 0, nullptr); });
    };
    EXPECT_THAT(lines(),
                IsSupersetOf({tag + "Start...", std::string("RootCert Count : 1"), tag + "End... : 0"}));
    EXPECT_THAT(lines(7), Contains(tag + ">> CertSetVerifyEnv() : 10004(toolkit says no)"))
        << "the label of the step before";
    for (const char* callee : {"CertVerify", "CertSetVerifyEnv", "CertAddTrustedCert"}) {
        toolkit.failures[callee] = 55;
        EXPECT_THAT(lines(), Contains(tag + ">> " + callee + "() : 55(toolkit says no)"));
        EXPECT_THAT(lines(), Contains(tag + "End... : 30090"));
    }
    toolkit.failures["ZRAPGetDataByURL"] = 56;
    EXPECT_THAT(lines(), Not(Contains(StartsWith(tag + ">> ZRAPGetDataByURL"))));
    fs::remove(path);
    EXPECT_THAT(lines(), Contains(tag + ">> GetRootCertCount() : 30004(toolkit says no)"));
}

TEST_F(Verify, IdentityOnATokenNeedsAPinAndThenPassesUnchecked)
{
    session().m_nMediaType = MEDIA_PKCS11;
    EXPECT_EQ(CLP_VerifyVID(handle, 0, text("123"), nullptr), QG_BAD_ARGUMENT);
    copyText(session().m_szPINNumber, "0000");
    EXPECT_EQ(CLP_VerifyVID(handle, 0, text("123"), nullptr), 0);
    session().m_nMediaType = MEDIA_SMARTCARD;
    EXPECT_EQ(CLP_VerifyVID(handle, 0, text("123"), nullptr), QG_BAD_ARGUMENT) << "which asks for both";
    EXPECT_EQ(CLP_VerifyVID(handle, 0, text("123"), text("pw")), 0);
}

TEST_F(Verify, IdentityWithAKeyWithoutARandomKeepsThatCode)
{
    writeFlat(class1, "a", "pw:no random");
    ASSERT_EQ(CLP_LoadCertList(handle), 0);
    EXPECT_EQ(CLP_VerifyVID(handle, 0, text("123"), text("pw")), CLPERR_NO_KEY_RANDOM);
    EXPECT_EQ(toolkit.count("VIDVerify"), 0);
}
