/* libldap reads settings of the process's user, once a process: here hostile ones, which must change nothing.
 */

#include <cstdlib>

#include "Servers.h"
#include "VerificationTest.h"

using namespace samplepki;
using qgtk::Code;

namespace {

/** Everything that such a file may set and that would do harm. */
const char* const hostileSettings = "URI ldap://127.0.0.1:1\n"
                                    "BASE o=Nowhere,c=KR\n"
                                    "BINDDN cn=Nobody,c=KR\n"
                                    "DEREF always\n"
                                    "REFERRALS on\n"
                                    "SIZELIMIT 1\n"
                                    "TIMELIMIT 1\n"
                                    "TIMEOUT 1\n"
                                    "NETWORK_TIMEOUT 1\n"
                                    "SASL_MECH EXTERNAL\n"
                                    "SASL_SECPROPS minssf=256\n"
                                    "TLS_CACERT /nonexistent\n"
                                    "TLS_REQCERT hard\n";

/** Puts them into place before the library is loaded for the first time. */
class HostileUser : public testing::Environment
{
public:
    void SetUp() override
    {
        const std::string home = TestHome::scratch("hostile").string();
        for (const char* file : {"/.ldaprc", "/ldaprc", "/.other", "/ldap.conf"})
            writeFile(home + file, hostileSettings);
        setenv("HOME", home.c_str(), 1);
        setenv("LDAPRC", ".other", 1);
        setenv("LDAPCONF", (home + "/ldap.conf").c_str(), 1);
        setenv("LDAPBASE", "o=Nowhere,c=KR", 1);
        setenv("LDAPDEREF", "always", 1);
        setenv("LDAPSIZELIMIT", "1", 1);
        setenv("LDAPURI", "ldap://127.0.0.1:1", 1);
    }
};

[[maybe_unused]] const auto* const environment = testing::AddGlobalTestEnvironment(new HostileUser);

} // namespace

class LdapSettings : public VerificationTest
{
protected:
    void SetUp() override { restartWith("CONNECT_TIMEOUT=2\nTOTAL_TIMEOUT=5\nLANGUAGE=ENG"); }

    int fetch(const std::string& url)
    {
        BinString data(library);
        const int code = call(isZrtk() ? "ZRAP_GetDataByURL" : "LDAP_GetDataByURL", 1, text(url), &data);
        fetched = data.bytes();
        return code;
    }

    TestPki pki;
    std::string fetched;
};
INSTANTIATE_BOTH_SIDES(LdapSettings);

TEST_P(LdapSettings, ServerAndNameAreThoseOfTheAddress)
{
    const DirectoryServer server({{caName, {{"cACertificate;binary", pki.ca.certificate()}}}});
    EXPECT_EQ(fetch(server.url() + "/" + caName), 0) << errorText();
    EXPECT_EQ(fetched, pki.ca.certificate());
    EXPECT_EQ(fetch(server.url()), number(Code::EntryMissing)) << "the top entry, not a set base";
}

TEST_P(LdapSettings, NeitherAliasesNorReferralsAreFollowed)
{
    const DirectoryServer other({{caName, {{"cACertificate;binary", pki.ca.certificate()}}}});
    const DirectoryServer server({{caName, {{"cACertificate;binary", pki.ca.certificate()}}},
                                  {"cn=Alias,o=Sample,c=KR", {{"aliasedObjectName", caName}}, {"alias"}},
                                  {"cn=Elsewhere,o=Sample,c=KR",
                                   {{"ref", other.url() + "/" + "cn=Test%20CA%201,o=Sample,c=KR"}},
                                   {"referral"}}});
    EXPECT_EQ(fetch(server.url() + "/cn=Alias,o=Sample,c=KR"), number(Code::EntryMissing));
    EXPECT_EQ(fetch(server.url() + "/cn=Elsewhere,o=Sample,c=KR"), number(Code::ServerRefused));
}

class GpkiLdapSettings : public LdapSettings
{};
INSTANTIATE_TEST_SUITE_P(Gpki, GpkiLdapSettings, testing::Values(gpkiSide));

TEST_P(GpkiLdapSettings, ASearchIsNotCutShort)
{
    const DirectoryServer server(
        {{"cn=Test CA 1,ou=One,o=Sample,c=KR", {}},
         {"cn=Test CA 1,ou=Two,o=Sample,c=KR", {{"cACertificate;binary", pki.ca.certificate()}}}});
    BinString data(library);
    char name[1024] = {};
    EXPECT_EQ(call("LDAP_GetDataByCN", text("127.0.0.1"), server.port, text("Test CA 1"), 1, +name, &data), 0)
        << errorText();
    EXPECT_STREQ(name, "cn=Test CA 1,ou=Two,o=Sample,c=KR");
}
