// ShowUserCert_T stands records, passwords and work directories that make no sense.

#include "LibraryHost.h"

#include <TestHome.h>
#include <climits>
#include <cstring>
#include <gmock/gmock.h>
#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;
using host::Ending;
using host::Options;
using testing::ElementsAre;
using testing::IsEmpty;

class HostileDialog : public testing::Test
{
protected:
    HostileDialog() { host::writeHolder(); }

    int run(Ending ending, Options& options) { return run(ending, options, host::password()); }

    int run(Ending ending, Options& options, const std::string& typed)
    {
        said.clear();
        std::memset(outcome.get(), 0, sizeof *outcome);
        return host::runDialog(ending, options, typed, *outcome, &said);
    }

    std::unique_ptr<SELCERTINFO> outcome = std::make_unique<SELCERTINFO>();
    std::vector<std::string> said; // by message boxes
};

template <class Record>
void fill(Record& record, int byte)
{
    std::memset(&record, byte, sizeof record);
}

// --- Records ------------------------------------------------------------------------------------------

TEST_F(HostileDialog, RecordsThatAreMissingAreRefused)
{
    Options o;
    host::runDialog(Ending::Cancel, *outcome); // makes the application
    EXPECT_EQ(ShowUserCert_T(o.init.get(), nullptr, nullptr, o.extra.get(), outcome.get()), QG_BAD_ARGUMENT);
    EXPECT_EQ(ShowUserCert_T(o.init.get(), o.load.get(), nullptr, nullptr, outcome.get()), QG_BAD_ARGUMENT);
    EXPECT_EQ(ShowUserCert_T(o.init.get(), o.load.get(), nullptr, o.extra.get(), nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(ShowUserCert_T(nullptr, o.load.get(), nullptr, o.extra.get(), outcome.get()),
              CLPERR_NOT_STARTED)
        << "without an init record there is no work directory";
}

TEST_F(HostileDialog, WorkDirectoryWithoutATerminatorIsNotFound)
{
    for (const char byte : {'\xFF', 'A', '%', '/'}) {
        Options options;
        fill(*options.init, byte);
        EXPECT_EQ(run(Ending::Cancel, options), CLPERR_TOOLKIT_NOT_LOADED) << byte;
    }
}

TEST_F(HostileDialog, OptionsFullOfOneByteOpenADialogThatCanBeCancelled)
{
    for (const char byte : {'\xFF', '\x80', 'A', '%', '|', '/'})
        for (const char memory : {0, 1}) {
            Options options;
            fill(*options.load, byte);
            fill(*options.extra, byte);
            options.load->bMemoryCert = memory;
            options.load->bNTSLogo = 0;
            EXPECT_EQ(run(Ending::Cancel, options), -1) << byte;
        }
}

TEST_F(HostileDialog, LogoDataWithoutATerminatorGivesTheDefaultLogo)
{
    for (const char byte : {'\xFF', 'A', '='}) {
        Options options;
        fill(*options.extra, byte);
        std::memcpy(options.load->szLogoName, "LOAD_DATA", sizeof "LOAD_DATA");
        EXPECT_EQ(run(Ending::RightPassword, options), 0) << byte;
    }
}

TEST_F(HostileDialog, LengthsOfMemoryCertificatesNeverReachBeyondTheirFields)
{
    for (const int length : {INT_MIN, -1, 0, 1, 4095, 4096, 4097, INT_MAX}) {
        Options options;
        fill(options.load->szMemSignCert, 0x30);
        fill(options.load->szMemSignKey, 0x30);
        options.load->bMemoryCert = 1;
        options.load->nMemSignCertLen = length;
        options.load->nMemSignKeyLen = length;
        EXPECT_EQ(run(Ending::RightPassword, options), -1) << length;
        EXPECT_EQ(said.size(), 1u) << "no password opens a host's own certificate";
    }
}

// --- Passwords ----------------------------------------------------------------------------------------

std::string hangul(int count)
{
    std::string text;
    for (int i = 0; i < count; ++i)
        text += "한"; // three bytes in UTF-8, the local encoding of the tests
    return text;
}

TEST_F(HostileDialog, KoreanPasswordOf1023BytesOpensTheKeyAndOf1024IsTooLong)
{
    const std::string longest = hangul(341);
    host::writeHolder(longest);
    Options options;
    EXPECT_EQ(run(Ending::RightPassword, options, longest), 0);
    EXPECT_THAT(said, IsEmpty());
    EXPECT_GT(outcome->nSignKeyLen, 0);
    EXPECT_EQ(run(Ending::RightPassword, options, longest + "x"), -1);
    const std::vector<std::string> tooLong = said;
    EXPECT_EQ(run(Ending::RightPassword, options, hangul(1024)), -1);
    EXPECT_EQ(said, tooLong);
    EXPECT_EQ(run(Ending::RightPassword, options, hangul(340) + "xyz"), -1);
    ASSERT_EQ(said.size(), 1u);
    EXPECT_NE(said, tooLong) << "of 1,023 bytes as well, and wrong";
}

// --- Work directories ---------------------------------------------------------------------------------

struct Damage
{
    const char* name;
    void (*put)(const fs::path& file);
};

std::string sections(const std::string& lines)
{
    std::string text;
    for (const char* name : {"UserInterface", "Message", "Info", "ISSUERNAME", "OID", "OPEN_TOOLKIT"})
        text += "[" + std::string(name) + "]\n" + lines;
    return text;
}

/** Each key that the files are asked for, with one value. */
std::string everyKey(const std::string& value)
{
    std::string lines;
    for (const char* key :
         {"DLG_SELCERT_CAPITON", "DLG_BUTTON_OK", "DLG_FINDCERT_TEXT", "DLG_CERTLISTCTRL_DN",
          "MSG_SELECTCERT_SELCERTINPUTPWD", "MSG_SELECTCERT_EXIRED", "Path", "Root", "MAX_ITERATIONS"})
        lines += std::string(key) + "=" + value + "\n";
    return sections(lines);
}

std::string everyByte()
{
    std::string bytes;
    for (int i = 0; i < 65536; ++i)
        bytes += static_cast<char>(i * 7 + i / 256);
    return bytes;
}

constexpr Damage DAMAGES[] = {
    {"missing",
     [](const fs::path&) {
     }},
    {"empty",
     [](const fs::path& file) {
         writeFile(file, "");
     }},
    {"no section",
     [](const fs::path& file) {
         writeFile(file, "Path=/nowhere\nDLG_BUTTON_OK=x\n");
     }},
    {"values of 1,024 bytes",
     [](const fs::path& file) {
         writeFile(file, everyKey(std::string(1024, 'v')));
     }},
    {"lines of 8,000 bytes",
     [](const fs::path& file) {
         writeFile(file, everyKey(std::string(8000, '9')));
     }},
    {"half a Korean letter",
     [](const fs::path& file) {
         writeFile(file, everyKey(std::string(259, '\xB0')));
     }},
    {"formats",
     [](const fs::path& file) {
         writeFile(file, everyKey("%s%n%s%d%999999d"));
     }},
    {"one line of megabytes",
     [](const fs::path& file) {
         writeFile(file, std::string(3 << 20, '['));
     }},
    {"a key without end",
     [](const fs::path& file) {
         writeFile(file, sections(std::string(20000, 'k')));
     }},
    {"binary",
     [](const fs::path& file) {
         writeFile(file, everyByte());
     }},
    {"binary values",
     [](const fs::path& file) {
         writeFile(file, everyKey(everyByte()));
     }},
    {"a gigabyte",
     [](const fs::path& file) {
         writeFile(file, everyKey("x"));
         fs::resize_file(file, 1ULL << 30);
     }},
    {"a FIFO",
     [](const fs::path& file) {
         ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
     }},
    {"a device",
     [](const fs::path& file) {
         fs::create_symlink("/dev/zero", file);
     }},
    {"a loop",
     [](const fs::path& file) {
         fs::create_symlink(file, file);
     }},
    {"a directory",
     [](const fs::path& file) {
         fs::create_directory(file);
     }},
};

/** A copy of the build's work directory whose one file is damaged. */
class DamagedWorkDirectory : public HostileDialog, public testing::WithParamInterface<const char*>
{
protected:
    DamagedWorkDirectory()
    {
        for (const auto& entry : fs::directory_iterator(WORK_DIR)) {
            const fs::path name = entry.path().filename();
            if (name.extension() == ".so")
                fs::create_symlink(entry.path(), directory / name);
            else
                fs::copy_file(entry.path(), directory / name);
        }
        fs::current_path(TestHome::scratch("current")); // for what a damaged path would name
    }

    fs::path directory = TestHome::scratch("work");
};

TEST_P(DamagedWorkDirectory, IsNoObstacleToASelection)
{
    for (const Damage& damage : DAMAGES) {
        SCOPED_TRACE(damage.name);
        fs::remove_all(directory / GetParam());
        damage.put(directory / GetParam());
        Options options(directory);
        options.init->nLanguage = std::strcmp(GetParam(), "ENG.ini") == 0 ? 2 : 1;
        EXPECT_EQ(run(Ending::RightPassword, options), 0);
        EXPECT_GT(outcome->nSignKeyLen, 0);
        EXPECT_THAT(said, IsEmpty());
    }
}

INSTANTIATE_TEST_SUITE_P(EachFile, DamagedWorkDirectory,
                         testing::Values("KOR.ini", "ENG.ini", "IssuerOid.conf", "IssuerOid_Eng.conf",
                                         "zrapilog.ini", "ZRCToolkitV30.conf"),
                         [](const auto& file) {
                             std::string name = file.param;
                             return name.substr(0, name.find('.'));
                         });

TEST_F(HostileDialog, LogPathThatIsNoFileIsNoObstacle)
{
    const fs::path directory = TestHome::scratch("work");
    for (const auto& entry : fs::directory_iterator(WORK_DIR))
        if (entry.path().filename() != "zrapilog.ini")
            fs::create_symlink(entry.path(), directory / entry.path().filename());
    const fs::path fifo = directory / "fifo";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    fs::create_symlink(directory / "loop", directory / "loop");
    const std::string deep = directory.string() + "/" + std::string(255, 'n');
    for (const std::string& path : {fifo.string(), (directory / "loop").string(), directory.string(),
                                    deep + "n", deep, std::string("/dev/full"), "/" + std::string(1022, 'a'),
                                    "/" + std::string(1023, 'a'), "/" + std::string(2000, 'a')}) {
        writeFile(directory / "zrapilog.ini", "[Info]\nPath=" + path + "\n");
        Options options(directory);
        EXPECT_EQ(run(Ending::RightPassword, options), 0) << path;
    }
    EXPECT_GT(fs::file_size(deep), 0u) << "a name of 255 bytes is a good one";
    szLogFilePath[0] = '\0';
}

} // namespace
