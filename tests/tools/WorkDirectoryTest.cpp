// The work directory of the build tree: language packs and configuration, as the library reads them.

#include <algorithm>
#include <map>
#include <regex>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "LibFile.h"
#include "Profile.h"
#include "TestHome.h"
#include "samplepki/Der.h"
#include "toolkit/core/Configuration.h"

namespace fs = std::filesystem;
using testing::HasSubstr;

namespace {

const fs::path workdir = QUILLGATE_WORKDIR;
const fs::path sources = QUILLGATE_SOURCES;

/** Key of each line of a file, its section before it. */
std::vector<std::string> keysOf(const std::string& file)
{
    std::vector<std::string> keys;
    for (const auto& line : readProfile(workdir / file))
        keys.push_back(line.section + "/" + line.key);
    return keys;
}

std::set<std::string> setOf(const std::vector<std::string>& list)
{
    return {list.begin(), list.end()};
}

/** All language keys that stand as literals in the sources below a folder. */
std::set<std::string> keysInSources(const fs::path& folder)
{
    static const std::regex literal("\"((DLG|MSG)_[A-Z0-9_]+)\"");
    std::set<std::string> keys;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file())
            continue;
        const std::string text = readFile(entry.path());
        for (std::sregex_iterator match(text.begin(), text.end(), literal), end; match != end; ++match)
            keys.insert((*match)[1]);
    }
    return keys;
}

class LanguagePack : public testing::TestWithParam<const char*>
{
protected:
    std::vector<ProfileLine> lines = readProfile(workdir / GetParam());
};

INSTANTIATE_TEST_SUITE_P(Both, LanguagePack, testing::Values("KOR.ini", "ENG.ini"),
                         [](const auto& pack) { return std::string(pack.param, 3); });

TEST_P(LanguagePack, HoldsEveryKeyThatTheSourcesAskFor)
{
    std::set<std::string> asked = keysInSources(sources / "API");
    if (fs::exists(sources / "dialogs"))
        asked.merge(keysInSources(sources / "dialogs"));
    ASSERT_FALSE(asked.empty());
    std::set<std::string> there;
    for (const auto& line : lines)
        there.insert(line.key);
    for (const auto& key : asked)
        EXPECT_TRUE(there.contains(key)) << key;
}

TEST_P(LanguagePack, HasNoKeyTwice)
{
    const auto keys = keysOf(GetParam());
    EXPECT_EQ(setOf(keys).size(), keys.size());
}

// Titles and labels are looked up in one section, messages in the other, whatever the key's prefix says.
TEST_P(LanguagePack, HasEachKeyInTheSectionWhereItIsLookedUp)
{
    const std::map<std::string, std::string> odd = {{"DLG_CERTPASSWORD_WRONG_PKCS11", "Message"},
                                                    {"MSG_MANAGEUSER_ALERT_TITLE_IMPORT", "UserInterface"}};
    for (const auto& line : lines) {
        const auto found = odd.find(line.key);
        const std::string usual = line.key.starts_with("DLG_") ? "UserInterface" : "Message";
        EXPECT_EQ(line.section, found == odd.end() ? usual : found->second) << line.key;
    }
}

// A "[" in a value would end the section for the library's reader, and a limit would cut a longer text.
TEST_P(LanguagePack, IsReadInFullByTheLibrary)
{
    ASSERT_FALSE(lines.empty());
    for (const auto& line : lines) {
        const std::string bytes = libraryValue(workdir / GetParam(), line.section.c_str(), line.key);
        EXPECT_EQ(samplepki::convertText(bytes, "EUC-KR", "UTF-8"), line.value) << line.key;
        EXPECT_FALSE(bytes.empty()) << line.key;
        EXPECT_LT(bytes.size(), line.section == "UserInterface" ? 259U : 1023U) << line.key;
    }
}

TEST_P(LanguagePack, HasOneFormatWithOneText)
{
    for (const auto& line : lines) {
        const bool isFormat = line.key == "MSG_SELECTCERT_EXIRED";
        EXPECT_EQ(std::count(line.value.begin(), line.value.end(), '%'), isFormat) << line.key;
        EXPECT_EQ(line.value.find("%s") != std::string::npos, isFormat) << line.key;
    }
}

TEST(LanguagePacks, HaveTheSameKeysInTheSameOrder)
{
    EXPECT_EQ(keysOf("KOR.ini"), keysOf("ENG.ini"));
}

TEST(IssuerConfiguration, NamesTheSameIssuersAndPurposesInBothLanguages)
{
    const auto keys = keysOf("IssuerOid.conf");
    EXPECT_EQ(keys, keysOf("IssuerOid_Eng.conf"));
    EXPECT_EQ(setOf(keys).size(), keys.size());
}

TEST(IssuerConfiguration, IsReadInFullByTheLibrary)
{
    for (const char* file : {"IssuerOid.conf", "IssuerOid_Eng.conf"})
        for (const auto& line : readProfile(workdir / file)) {
            const std::string bytes = libraryValue(workdir / file, line.section.c_str(), line.key);
            EXPECT_EQ(samplepki::convertText(bytes, "EUC-KR", "UTF-8"), line.value) << line.key;
            EXPECT_FALSE(bytes.empty()) << line.key;
        }
}

TEST(IssuerConfiguration, HasPoliciesAsDottedNumbers)
{
    for (const auto& line : readProfile(workdir / "IssuerOid.conf"))
        EXPECT_EQ(line.section == "OID", std::regex_match(line.key, std::regex("[0-9]+(\\.[0-9]+)+")))
            << line.key;
}

/** A toolkit's configuration and the spelling of its keys. */
struct ToolkitConfiguration
{
    const char* file;
    const char* count;
    const char* section;
    const char* name;
    const char* address;
};

class Toolkits : public testing::TestWithParam<ToolkitConfiguration>
{};

INSTANTIATE_TEST_SUITE_P(Both, Toolkits,
                         testing::Values(ToolkitConfiguration{"ZRCToolkitV30.conf", "CA_INFO_COUNT",
                                                              "CA_INFO", "CA_DN", "DIR_URL"},
                                         ToolkitConfiguration{"gpkiapi.conf", "LDAP_INFO_COUNT", "LDAP_INFO",
                                                              "DN", "URL"}));

// The list service opens the configuration under the directory's name, a backslash and the file's name.
TEST_P(Toolkits, ListTheirRootsUnderTheNameThatTheServiceOpens)
{
    const std::string file = workdir.string() + "\\" + GetParam().file;
    const int count = FileGetPrivateProfileInt("VALIDATOIN_OPTION", GetParam().count, 0, file.c_str());
    ASSERT_GT(count, 0);
    for (int i = 1; i <= count; ++i) {
        const std::string section = GetParam().section + std::to_string(i);
        const std::string name = libraryValue(file, section.c_str(), GetParam().name);
        const std::string address = libraryValue(file, section.c_str(), GetParam().address);
        EXPECT_THAT(name, HasSubstr("Root"));
        EXPECT_THAT(address, HasSubstr("ldap://"));
        EXPECT_LT(name.size(), 100U);
        EXPECT_LT(address.size(), 100U);
    }
}

/** What the open toolkit reads out of a text. */
qgtk::Configuration read(const std::string& text)
{
    const fs::path file = TestHome::scratch("configuration") / "toolkit.conf";
    writeFile(file, text);
    return qgtk::Configuration::read(file);
}

/** A text with another value for a key, which must be there with this one. */
std::string changed(std::string text, const std::string& key, const std::string& value,
                    const std::string& other)
{
    const std::string line = "\n" + key + "=" + value + "\n";
    const std::size_t place = text.find(line);
    EXPECT_NE(place, std::string::npos) << line;
    return place == std::string::npos ? text
                                      : text.replace(place, line.size(), "\n" + key + "=" + other + "\n");
}

TEST_P(Toolkits, TellTheOpenToolkitItsTimeLimits)
{
    const std::string shipped = readFile(workdir / GetParam().file);
    EXPECT_EQ(read(shipped).connectSeconds, 5);
    EXPECT_EQ(read(shipped).totalSeconds, 15);
    // The same as the defaults: so is each value the one that is read?
    EXPECT_EQ(read(changed(shipped, "CONNECT_TIMEOUT", "5", "3")).connectSeconds, 3);
    EXPECT_EQ(read(changed(shipped, "TOTAL_TIMEOUT", "15", "9")).totalSeconds, 9);
    EXPECT_EQ(read(changed(shipped, "KEY_ITERATIONS", "200000", "7")).keyIterations, 7);
    EXPECT_EQ(read(changed(shipped, "MAX_ITERATIONS", "5000000", "8")).maxIterations, 8);
    EXPECT_EQ(read(changed(shipped, "LANGUAGE", "KOR", "ENG")).language, qgtk::Language::English);
}

TEST_P(Toolkits, NameTheDirectoriesThatTheOpenToolkitAsks)
{
    const qgtk::Configuration shipped = read(readFile(workdir / GetParam().file));
    ASSERT_EQ(shipped.directories.size(), 2U);
    EXPECT_EQ(shipped.directories[0].url, "ldap://localhost:389");
}

TEST(LogSettings, AreThereAndOff)
{
    EXPECT_EQ(keysOf("zrapilog.ini"), std::vector<std::string>{"Info/Path"});
    EXPECT_EQ(libraryValue(workdir / "zrapilog.ini", "Info", "Path"), "");
}

} // namespace
