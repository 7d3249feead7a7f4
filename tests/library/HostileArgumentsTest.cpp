// No exported function crashes, hangs or writes where it should not for arguments that make no sense.

#include "LibraryHost.h"

#include <TestHome.h>
#include <climits>
#include <cstdint>
#include <cstring>
#include <dlfcn.h>
#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <sys/stat.h>
#include <vector>

namespace {

using Word = std::uintptr_t;

/** One row of the export list: the plain name and the types of the parameters. */
struct Function
{
    std::string name;
    std::vector<std::string> parameters;
};

std::vector<Function> exportedFunctions()
{
    std::vector<Function> functions;
    std::ifstream list(EXPORTS_LIST);
    std::string row;
    while (std::getline(list, row)) {
        const std::size_t open = row.find('(');
        const std::size_t close = row.rfind(')');
        if (row.empty() || row[0] == '#' || open == std::string::npos)
            continue;
        Function function{row.substr(0, open), {}};
        std::istringstream types(row.substr(open + 1, close - open - 1));
        std::string type;
        while (std::getline(types >> std::ws, type, ','))
            function.parameters.push_back(type);
        functions.push_back(function);
    }
    return functions;
}

/** Calls by the plain name. Every parameter of the interface is of integer class, so words do for all of
 * them. */
int call(const Function& function, const std::vector<Word>& arguments)
{
    using Operation =
        int (*)(Word, Word, Word, Word, Word, Word, Word, Word, Word, Word, Word, Word, Word, Word);
    static void* library = dlopen(LIBRARY, RTLD_NOW);
    const auto operation = reinterpret_cast<Operation>(dlsym(library, function.name.c_str()));
    std::vector<Word> a = arguments;
    a.resize(14);
    return operation(a[0], a[1], a[2], a[3], a[4], a[5], a[6], a[7], a[8], a[9], a[10], a[11], a[12], a[13]);
}

/** Room for whatever a call wants to write: larger than every record and text of the interface. */
class Arguments
{
public:
    enum Kind
    {
        Null,     /**< null pointers, 0 */
        Empty,    /**< empty texts, empty byte strings, -1 */
        Overlong, /**< texts of 5,000 bytes, byte strings of noise, the smallest int */
        Kinds
    };

    Arguments() : m_room(1 << 20), m_long(5000, 'a'), m_noise(5000)
    {
        m_long.push_back('\0');
        for (std::size_t i = 0; i < m_noise.size(); ++i)
            m_noise[i] = static_cast<unsigned char>(i * 31 + 7);
    }

    /** Gives back what a call put into byte strings, to the context that made it. */
    void release(void* context)
    {
        for (const auto& string : m_strings)
            if (string->pData && string->pData != m_noise.data())
                ZR_BINSTR_Delete(context, string.get());
    }

    Word make(const std::string& type, Kind kind)
    {
        if (type == "int" || type == "unsigned long" || type == "long unsigned int" || type == "bool")
            return number(type, kind);
        if (kind == Null)
            return 0;
        if (type == "BINSTR*")
            return byteString(kind);
        if (type == "char*" || type == "unsigned char*")
            return text(kind);
        return zeroedRoom();
    }

private:
    static Word number(const std::string& type, Kind kind)
    {
        if (kind == Null || type == "bool")
            return kind != Null;
        return kind == Empty ? static_cast<Word>(-1) : static_cast<Word>(static_cast<unsigned>(INT_MIN));
    }

    Word byteString(Kind kind)
    {
        m_strings.emplace_back(new BINSTR{kind == Empty ? nullptr : m_noise.data(),
                                          kind == Empty ? 5 : static_cast<int>(m_noise.size())});
        return reinterpret_cast<Word>(m_strings.back().get());
    }

    /** A text that is also a buffer: a call may take it as its output. */
    Word text(Kind kind)
    {
        m_texts.emplace_back(1 << 16);
        if (kind == Overlong)
            std::memcpy(m_texts.back().data(), m_long.data(), m_long.size());
        return reinterpret_cast<Word>(m_texts.back().data());
    }

    Word zeroedRoom()
    {
        std::fill(m_room.begin(), m_room.end(), 0);
        return reinterpret_cast<Word>(m_room.data());
    }

    std::vector<char> m_room;
    std::vector<char> m_long;
    std::vector<unsigned char> m_noise;
    std::vector<std::vector<char>> m_texts;
    std::vector<std::unique_ptr<BINSTR>> m_strings;
};

/** Those that end the context, open a window, or take a buffer of the library's own. */
bool needsItsOwnTest(const std::string& name)
{
    return name == "ZR_Finish" || name == "ZR_Initalize" || name == "CLP_Initalize" ||
           name == "CLP_UnInitalize" || name == "CLP_MemFree" || name == "GetSlectFilePath" ||
           name == "ZR_BINSTR_Delete";
}

/** Makes the home directory before any call asks for it: libnss_wrapper reads its file once. */
class HostileArguments : public testing::Test
{
protected:
    HostileArguments() { TestHome::path(); }
};

/** The functions that this platform does not have: they look at nothing. */
bool isUnavailable(const std::string& name)
{
    static const std::set<std::string> names = {
        "CLP_SetBSCertType",        "CLP_SetBriskSealInfo",    "CLP_GetBSCertInfo",
        "CLP_GetPKCS11DeviceCount", "CLP_GetPKCS11DeviceInfo", "CLP_VerifyPKCS11Signature",
        "CLP_ClosePKCS11",          "CLP_GetSMCardListCount",  "CLP_GetSMCardListInfo",
        "CLP_SetPINNumber",         "CLP_ImportPFX",           "CLP_ExportDataPFX"};
    return names.count(name) > 0;
}

/** What a function answers when it is given nothing at all. */
int answerToNothing(const std::string& name)
{
    if (isUnavailable(name))
        return QG_NOT_AVAILABLE;
    if (name == "CLP_Initalize" || name == "CLP_MemFree" || name == "GetSlectFilePath")
        return QG_BAD_ARGUMENT;
    return name.find("CLP_") == 0 || name == "CP_ClearCertData" ? CLPERR_NO_HANDLE : QG_NO_CONTEXT;
}

TEST_F(HostileArguments, NothingButNullsAndZeros)
{
    for (const Function& function : exportedFunctions()) {
        SCOPED_TRACE(function.name);
        const int code = call(function, {});
        const bool answers = function.name != "ZR_Finish" && function.name != "CLP_UnInitalize" &&
                             function.name != "ClearCertData";
        if (answers) {
            EXPECT_EQ(code, answerToNothing(function.name));
        }
    }
}

TEST_F(HostileArguments, FunctionsThatThisPlatformDoesNotHaveLookAtNoHandle)
{
    const Word nowhere = 1;
    for (const Function& function : exportedFunctions())
        if (isUnavailable(function.name)) {
            const std::vector<Word> words(function.parameters.size(), nowhere);
            EXPECT_EQ(call(function, words), QG_NOT_AVAILABLE) << function.name;
        }
}

/** Each function on a live handle, every argument of each kind, and each argument alone against empty others.
 */
void callWithEveryKind(const Function& function, Word handle, void* context = nullptr)
{
    for (int others = 0; others < Arguments::Kinds; ++others)
        for (int one = 0; one < Arguments::Kinds; ++one)
            for (std::size_t position = 1; position < function.parameters.size(); ++position) {
                Arguments arguments;
                std::vector<Word> words{handle};
                for (std::size_t i = 1; i < function.parameters.size(); ++i)
                    words.push_back(arguments.make(
                        function.parameters[i], static_cast<Arguments::Kind>(i == position ? one : others)));
                call(function, words);
                arguments.release(context);
            }
}

class HostileArgumentsOnEachSide : public HostileArguments, public testing::WithParamInterface<int>
{};

TEST_P(HostileArgumentsOnEachSide, ToTheFlatFamily)
{
    std::filesystem::current_path(TestHome::scratch("working-directory"));
    void* context = nullptr;
    char directory[] = WORK_DIR;
    char library[] = "libZRToolkitV30-v3.4.2.20.so";
    ASSERT_EQ(ZR_Initalize(&context, GetParam(), directory, library), QG_OK);
    for (const Function& function : exportedFunctions()) {
        SCOPED_TRACE(function.name);
        if (function.name.find("CLP_") != 0 && function.name.find("ClearCertData") == std::string::npos &&
            !needsItsOwnTest(function.name))
            callWithEveryKind(function, reinterpret_cast<Word>(context), context);
    }
    ZR_Finish(context);
}

TEST_P(HostileArgumentsOnEachSide, ToTheListService)
{
    std::filesystem::current_path(TestHome::scratch("working-directory"));
    for (const Function& function : exportedFunctions()) {
        SCOPED_TRACE(function.name);
        if ((function.name.find("CLP_") != 0 && function.name.find("ClearCertData") == std::string::npos) ||
            needsItsOwnTest(function.name))
            continue;
        // Each function meets the holder: one of them deletes it.
        host::writeHolder();
        void* session = host::openSession(GetParam());
        callWithEveryKind(function, reinterpret_cast<Word>(session));
        CLP_UnInitalize(session);
    }
}

INSTANTIATE_TEST_SUITE_P(Toolkits, HostileArgumentsOnEachSide, testing::Values(TOOLKIT_ZRTK, TOOLKIT_GPKI));

TEST_F(HostileArguments, SessionsThatNeverStarted)
{
    const auto options = std::make_unique<LOADOPT>();
    options->nLibAPIType = 7;
    void* handle = nullptr;
    EXPECT_EQ(CLP_Initalize(&handle, options.get(), nullptr), CLPERR_NOT_STARTED);
    for (const Function& function : exportedFunctions())
        if (function.name.find("CLP_") == 0 && !needsItsOwnTest(function.name)) {
            SCOPED_TRACE(function.name);
            callWithEveryKind(function, reinterpret_cast<Word>(handle));
        }
    CLP_UnInitalize(handle);
}

/** A session over one holder, for functions that write and delete files. */
class HostileFiles : public HostileArguments
{
protected:
    HostileFiles()
    {
        host::writeHolder();
        session = host::openSession();
        CLP_GetCertInfo(session, 0, record.get());
    }
    ~HostileFiles() override { CLP_UnInitalize(session); }

    int save(const std::string& certificate, const std::string& key)
    {
        return CLP_SaveCert(session, true, password.data(), const_cast<char*>(certificate.data()),
                            static_cast<int>(certificate.size()), const_cast<char*>(key.data()),
                            static_cast<int>(key.size()), nullptr, 0, nullptr, 0);
    }

    /** Names of everything below the home directory. */
    static std::set<std::string> home()
    {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(TestHome::path()))
            names.insert(entry.path());
        return names;
    }

    /** Things that are no files, by their paths, and paths that lead nowhere. */
    static std::vector<std::string> odd(const std::filesystem::path& directory)
    {
        mkfifo((directory / "fifo").c_str(), 0600);
        std::filesystem::create_directory(directory / "directory");
        std::filesystem::create_symlink("loop", directory / "loop");
        return {directory / "fifo",
                directory / "directory",
                "/dev/full",
                "/dev/null/below",
                directory / "loop" / "below",
                std::string(5000, 'a'),
                directory / std::string(256, 'a'),
                "/proc/self/mem/x",
                "/"};
    }

    void* session = nullptr;
    std::string password = host::password();
    std::unique_ptr<CERTINFO> record = std::make_unique<CERTINFO>();
};

TEST_F(HostileFiles, CertificatesCutAtEveryLengthAreNotSaved)
{
    const std::string certificate(record->szSignCert, static_cast<std::size_t>(record->nSignCertLen));
    const auto before = home();
    for (std::size_t length = 1; length < certificate.size(); ++length)
        ASSERT_EQ(save(certificate.substr(0, length), "key"), CLPERR_CERT_LOAD) << length;
    EXPECT_EQ(home(), before);
}

TEST_F(HostileFiles, LengthsThatMakeNoSenseAreRefused)
{
    char bytes[] = "bytes";
    const auto before = home();
    for (const int length : {0, -1, INT_MIN}) {
        EXPECT_NE(CLP_SaveCert(session, true, password.data(), bytes, length, bytes, 5, bytes, 5, bytes, 5),
                  0);
        EXPECT_NE(CLP_SaveCert(session, true, password.data(), bytes, 5, bytes, length, bytes, 5, bytes, 5),
                  0);
    }
    EXPECT_EQ(home(), before);
}

TEST_F(HostileFiles, ThingsThatAreNoFilesAreNotWrittenTo)
{
    const std::filesystem::path directory = TestHome::scratch("odd");
    for (std::string& path : odd(directory))
        EXPECT_EQ(CLP_ExportPFX(session, 0, password.data(), path.data()), CLPERR_PFX_EXPORT) << path;
    EXPECT_TRUE(std::filesystem::is_fifo(directory / "fifo"));
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

TEST_F(HostileFiles, ThingsThatAreNoFilesAreNoPfx)
{
    ASSERT_EQ(CLP_SetMediaType(session, MEDIA_PFX, 0), 0);
    for (std::string& path : odd(TestHome::scratch("odd"))) {
        ASSERT_EQ(CLP_SetPFXInfo(session, path.data(), password.data()), 0);
        EXPECT_EQ(CLP_LoadCertList(session), CLPERR_WRONG_PASSWORD) << path;
    }
}

TEST_F(HostileFiles, IndexesOutsideTheListDeleteAndExportNothing)
{
    const auto before = home();
    std::string path = TestHome::scratch("export") / "a.pfx";
    for (const int index : {-1, 1, INT_MAX, INT_MIN}) {
        EXPECT_EQ(CLP_DeleteCert(session, index, nullptr), QG_BAD_ARGUMENT);
        EXPECT_EQ(CLP_DeleteCert(session, index, password.data()), QG_BAD_ARGUMENT);
        EXPECT_EQ(CLP_ExportPFX(session, index, password.data(), path.data()), QG_BAD_ARGUMENT);
    }
    ASSERT_EQ(CP_ClearCertData(session), 0);
    EXPECT_EQ(CLP_DeleteCert(session, 0, nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_ExportPFX(session, 0, password.data(), path.data()), QG_BAD_ARGUMENT);
    EXPECT_EQ(home(), before);
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(HostileArguments, MemFreeOfNothing)
{
    void* nothing = nullptr;
    EXPECT_EQ(CLP_MemFree(nullptr, &nothing), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_MemFree(nullptr, nullptr), QG_BAD_ARGUMENT);
}

TEST_F(HostileArguments, GetSlectFilePathWithoutABuffer)
{
    EXPECT_EQ(GetSlectFilePath(100, nullptr), QG_BAD_ARGUMENT);
}

} // namespace
