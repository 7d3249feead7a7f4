#include "Util.h"

#include "BoundedText.h"
#include "FoundationTest.h"

namespace {

using Cut = int (*)(const char*, int, char*);

/** Cuts a piece out of a name into a cleared buffer and expects success. */
std::string piece(Cut cut, const std::string& name)
{
    char out[1024] = {};
    EXPECT_EQ(cut(name.c_str(), 1024, out), 0);
    return out;
}

/** Expects the result and that the output stays as it was. */
void expectUntouched(Cut cut, const char* name, int result)
{
    char out[1024] = "before";
    EXPECT_EQ(cut(name, 1024, out), result);
    EXPECT_STREQ(out, "before");
}

int family(const char* organisation)
{
    int type = 0;
    CUtil::GetCertCAType(organisation, &type);
    return type;
}

POLICYID policy(const char* oid, const char* name)
{
    POLICYID row{};
    copyText(row.szID, oid);
    copyText(row.szName, name);
    return row;
}

std::string usageName(const char* words, const char* divider = ", ", int size = 1024)
{
    const std::string path = TestHome::scratch("usage") / "ENG.ini";
    writeFile(path, "[UserInterface]\n"
                    "DLG_CERVIEWNORAL_KEYUSAGE_DIGITALSIGN=Signature\n"
                    "DLG_CERVIEWNORAL_KEYUSAGE_NONREPUDIATION=never shown\n"
                    "DLG_CERVIEWNORAL_KEYUSAGE_KEYENCIPHERMENT=KeyEnc\n"
                    "DLG_CERVIEWNORAL_KEYUSAGE_DATAENCIPHERMENT=DataEnc\n"
                    "DLG_CERVIEWNORAL_KEYUSAGE_KEYAGREEMENT=Agree\n"
                    "DLG_CERVIEWNORAL_KEYUSAGE_KEYCERTSIGN=CertSign\n"
                    "DLG_CERVIEWNORAL_KEYUSAGE_CRLSIGN=CrlSign\n"
                    "DLG_CERVIEWNORAL_KEYUSAGE_ENCIPHERONLY=EncOnly\n");
    std::vector<char> out(static_cast<std::size_t>(size), '\0');
    CUtil::GetKeyUsageName(path.c_str(), words, divider, size, out.data());
    return out.data();
}

} // namespace

TEST(GetCNString, CutsFromTheFourthCharacterToTheFirstComma)
{
    EXPECT_EQ(piece(CUtil::GetCNString, "cn=Hong,ou=people,c=kr"), "Hong");
    EXPECT_EQ(piece(CUtil::GetCNString, "ou=x,cn=y,c=kr"), "x");
}

TEST(GetCNString, LeavesTheOutputForANameWithoutAComma)
{
    expectUntouched(CUtil::GetCNString, "cn=solo", 0);
}

TEST(GetCNString, RefusesNullAndANameWithoutLowerCaseCn)
{
    expectUntouched(CUtil::GetCNString, nullptr, -1);
    expectUntouched(CUtil::GetCNString, "CN=Hong,c=kr", -1);
    expectUntouched(CUtil::GetCNString, "o=a,c=kr", -1);
    expectUntouched(CUtil::GetCNString, "", -1);
}

TEST(GetCNString, IsSafeWithACommaAheadOfTheFourthCharacter)
{
    expectUntouched(CUtil::GetCNString, ",cn=a", 0);
    expectUntouched(CUtil::GetCNString, "a,cn=b", 0);
}

TEST(GetCNString, CutsAPieceThatIsTooLong)
{
    const std::string name = "cn=" + std::string(5000, 'n') + ",c=kr";
    EXPECT_EQ(piece(CUtil::GetCNString, name), std::string(1023, 'n'));
    EXPECT_EQ(CUtil::GetCNString(name.c_str(), 1024, nullptr), 0);
}

TEST(GetOString, FindsTheFirstOccurrenceInWhateverPlace)
{
    EXPECT_EQ(piece(CUtil::GetOString, "cn=foo,ou=bar,o=baz,c=kr"), "baz");
    EXPECT_EQ(piece(CUtil::GetOString, "cn=foo,info=x,o=baz,c=kr"), "x");
}

TEST(GetOString, LeavesTheOutputForAValueWithoutACommaBehindIt)
{
    expectUntouched(CUtil::GetOString, "cn=foo,o=baz", 0);
}

TEST(GetOString, RefusesNullAndNoMatch)
{
    expectUntouched(CUtil::GetOString, nullptr, -1);
    expectUntouched(CUtil::GetOString, "cn=a,c=kr", -1);
}

TEST(GetOUString, BehavesLikeGetOString)
{
    EXPECT_EQ(piece(CUtil::GetOUString, "cn=foo,ou=bar,ou=two,o=baz"), "bar");
    EXPECT_EQ(piece(CUtil::GetOUString, "cn=foo,ou=,o=baz"), "");
    expectUntouched(CUtil::GetOUString, "cn=foo,ou=bar", 0);
    expectUntouched(CUtil::GetOUString, "cn=foo,o=bar", -1);
    expectUntouched(CUtil::GetOUString, nullptr, -1);
    EXPECT_EQ(piece(CUtil::GetOUString, "ou=" + std::string(3000, 'u') + ","), std::string(1023, 'u'));
}

TEST(GetCertCaType, DecidesInTheOrderOfItsWords)
{
    EXPECT_EQ(family("Ministry of yessign"), 4);
    EXPECT_EQ(family("yessign Ministry"), 4);
    EXPECT_EQ(family("Ministry, Government of Korea"), 1);
}

TEST(GetCertCaType, KnowsTheAccreditedCas)
{
    for (const char* name : {"yessign", "CrossCert", "KICA", "SignGate", "NCASign", "SignKorea", "TradeSign"})
        EXPECT_EQ(family((std::string("x") + name + "y").c_str()), 2) << name;
}

TEST(GetCertCaType, IsCaseSensitiveAndAnswersEightForOthers)
{
    EXPECT_EQ(family("government"), 8);
    EXPECT_EQ(family("YESSIGN"), 8);
    EXPECT_EQ(family(""), 8);
    int type = 5;
    CUtil::GetCertCAType(nullptr, &type);
    EXPECT_EQ(type, 5);
    CUtil::GetCertCAType("KICA", nullptr);
}

TEST(CheckPolicyId, ComparesWholeTextsWithoutCase)
{
    SETOID list[3] = {{"1 2 3"}, {"Abc"}, {}};
    std::fill(std::begin(list[2].szPolicyID), std::end(list[2].szPolicyID), 'f');
    EXPECT_TRUE(CUtil::CheckPolicyID("1 2 3", list, 3));
    EXPECT_TRUE(CUtil::CheckPolicyID("aBC", list, 3));
    EXPECT_FALSE(CUtil::CheckPolicyID("1 2", list, 3));
    EXPECT_FALSE(CUtil::CheckPolicyID("1 2 3 4", list, 3));
    EXPECT_FALSE(CUtil::CheckPolicyID("Abc", list, 1));
    EXPECT_TRUE(CUtil::CheckPolicyID(std::string(80, 'f').c_str(), list, 3));
    EXPECT_FALSE(CUtil::CheckPolicyID(std::string(81, 'f').c_str(), list, 3));
}

TEST(CheckPolicyId, IsFalseWithoutAListOrAnOid)
{
    const SETOID list[1] = {{"1"}};
    EXPECT_FALSE(CUtil::CheckPolicyID("1", list, 0));
    EXPECT_FALSE(CUtil::CheckPolicyID("1", list, -1));
    EXPECT_FALSE(CUtil::CheckPolicyID("1", nullptr, 1));
    EXPECT_FALSE(CUtil::CheckPolicyID(nullptr, list, 1));
}

TEST(GetPolicyName, TakesTheLastOfTwoEqualRows)
{
    const POLICYID list[] = {policy("1.2", "first"), policy("1.3", "other"), policy("1.2", "second")};
    auto out = marked(1025);
    EXPECT_TRUE(CUtil::GetPolicyName("1.2", list, 3, out.data()));
    EXPECT_STREQ(out.data(), "second");
    EXPECT_EQ(bytesOf(out).substr(6), std::string(1018, '\0') + "x");
}

TEST(GetPolicyName, LeavesTheOutputWithoutAMatch)
{
    const POLICYID list[] = {policy("1.2", "first")};
    auto out = marked(1024);
    EXPECT_FALSE(CUtil::GetPolicyName("1.3", list, 1, out.data()));
    EXPECT_FALSE(CUtil::GetPolicyName("1.2", list, 0, out.data()));
    EXPECT_FALSE(CUtil::GetPolicyName("1.2", nullptr, 1, out.data()));
    EXPECT_FALSE(CUtil::GetPolicyName(nullptr, list, 1, out.data()));
    EXPECT_FALSE(CUtil::GetPolicyName("1.2", list, 1, nullptr));
    EXPECT_EQ(out, marked(1024));
}

TEST(GetPolicyName, ReadsNoFurtherThanAFullName)
{
    POLICYID list[1] = {policy("1.2", "")};
    std::fill(std::begin(list[0].szName), std::end(list[0].szName), 'n');
    char out[1024] = {};
    EXPECT_TRUE(CUtil::GetPolicyName("1.2", list, 1, out));
    EXPECT_EQ(out, std::string(60, 'n'));
}

TEST(GetKeyUsageName, JoinsTheLabelsInItsOwnOrder)
{
    EXPECT_EQ(usageName("crlSign,keyCertSign"), "CertSign, CrlSign");
    EXPECT_EQ(usageName("keyEncipherment, dataEncipherment, keyAgreement, encipherOnly", "/"),
              "KeyEnc/DataEnc/Agree/EncOnly");
}

TEST(GetKeyUsageName, ShowsTheSignatureLabelForNonRepudiationToo)
{
    EXPECT_EQ(usageName("digitalSignature, nonRepudiation"), "Signature, Signature");
    EXPECT_EQ(usageName("nonRepudiation"), "Signature");
}

TEST(GetKeyUsageName, PutsTheDividerBeforeALabelThatIsMissing)
{
    EXPECT_EQ(usageName("keyCertSign decipherOnly", "+"), "CertSign+");
    EXPECT_EQ(usageName("decipherOnly"), "");
    EXPECT_EQ(usageName("none"), "");
}

TEST(GetKeyUsageName, CutsToTheSizeLessOne)
{
    EXPECT_EQ(usageName("keyCertSign", ",", 5), "Cert");
    EXPECT_EQ(usageName("keyCertSign", ",", 1), "");
    EXPECT_EQ(usageName("crlSign keyCertSign", std::string(5000, '-').c_str(), 4096).size(), 4095u);
    CUtil::GetKeyUsageName("x", "crlSign", nullptr, 5, nullptr);
}
