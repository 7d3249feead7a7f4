#include "Bench.h"

#include <dlfcn.h>
#include <filesystem>
#include <map>

#include "Arguments.h"
#include "Memory.h"
#include "TestHome.h"
#include "quillgate/records.h"

namespace {

/** Little work for each key, no waiting for servers, and texts that a report can show. */
constexpr const char* settings = "[OPEN_TOOLKIT]\nKEY_ITERATIONS=1024\nCONNECT_TIMEOUT=2\nTOTAL_TIMEOUT=4\n"
                                 "LANGUAGE=ENG\nCMP_KEY=256\n";

/** A work directory: both libraries under their names, and their configuration. */
const std::string& workDirectory()
{
    static const std::string directory = [] {
        const std::filesystem::path made = TestHome::scratch("bad-input-work");
        for (const Side* side : {&zrtkSide, &gpkiSide}) {
            const std::filesystem::path library = side->file;
            std::filesystem::create_symlink(library, made / library.filename());
            writeFile(made / side->configuration, settings);
        }
        return made.string();
    }();
    return directory;
}

Operation bareOperation(const std::string& name, const std::string& parameters)
{
    const bool isZrtk = name.starts_with("ZRTK_");
    return {name, nullptr, parseParameters(parameters), isZrtk ? name : "-", isZrtk ? "-" : name, ""};
}

/** Room for what a layer above would take of an operation for itself. */
Word ownRoom()
{
    static std::vector<unsigned char> room(8192);
    return reinterpret_cast<Word>(room.data());
}

} // namespace

const std::vector<Operation>& bareOperations()
{
    static const std::vector<Operation> operations = {
        bareOperation("ZRTK_API_GetInfo", "(char* version, char* information)"),
        bareOperation("ZRTK_CERT_GetPubKey", "(int size, char* algorithm, char* key)"),
        bareOperation("ZRTK_CERT_GetPubKey2", "(char* algorithm, char* length, BINSTR* key)"),
        bareOperation("ZRTK_CMS_GetEnvDataRecipInfo",
                      "(int index, int size, char* issuer, char* serial, char* id)"),
        bareOperation("ZRTK_CMS_GetEnvDataRecipCnt", "(BINSTR* message, int* count)"),
        bareOperation("ZRTK_OCSP_CheckCertStatus",
                      "(char* url, BINSTR* certificate, bool sign, BINSTR* own, BINSTR* key)"),
        bareOperation("ZRTK_CRYPT_SignFile",
                      "(BINSTR* public, BINSTR* private, int hash, char* data, char* signature)"),
        bareOperation("ZRTK_TSP_TimeStampFile",
                      "(char* host, int port, int hash, char* policy, char* path, bool sign, BINSTR* own, "
                      "BINSTR* key, BINSTR* token)"),
        bareOperation("GPKI_CRYPT_Sign_File",
                      "(BINSTR* public, BINSTR* private, int hash, char* data, char* signature)"),
        bareOperation("GPKI_CMS_ProcessSignedData",
                      "(BINSTR* message, BINSTR* data, BINSTR* certificate, char* time)"),
        bareOperation("GPKI_CMS_MakeEnvelopedData_NoContent_File",
                      "(BINSTR* certificate, char* source, int cipher, char* message, char* encrypted)"),
        bareOperation("GPKI_HSM_OpenSession", "(unsigned long slot, int name)"),
        bareOperation("GPKI_WCMS_MakeSignedContent",
                      "(BINSTR* certificate, BINSTR* key, BINSTR* data, char* time, BINSTR* message)"),
        bareOperation("GPKI_WCMS_ProcessSignedContent",
                      "(BINSTR* message, BINSTR* data, BINSTR* certificate, char* time)"),
        bareOperation("GPKI_WCMS_MakeWapEnvelopedData",
                      "(BINSTR* recipient, BINSTR* data, int cipher, BINSTR* message)"),
        bareOperation("GPKI_WCMS_ProcessWapEnvelopedData",
                      "(BINSTR* certificate, BINSTR* key, BINSTR* message, BINSTR* data)")};
    return operations;
}

const Operation& operationCalled(const std::string& name)
{
    static const std::map<std::string, const Operation*> byName = [] {
        std::map<std::string, const Operation*> map;
        for (const auto* list : {&allOperations(), &bareOperations()})
            for (const Operation& operation : *list)
                map[operation.name] = &operation;
        return map;
    }();
    return *byName.at(name);
}

const std::string& cellOf(const Operation& operation, const Side& side)
{
    return &side == &zrtkSide ? operation.zrtk : operation.gpki;
}

Bench::Bench(const Side& side, Level level) : m_side(side), m_level(level)
{
    std::string library = std::filesystem::path(side.file).filename();
    EXPECT_EQ(ZR_Initalize(&m_context, isZrtk() ? TOOLKIT_ZRTK : TOOLKIT_GPKI, text(workDirectory()),
                           library.data()),
              0);
    if (level == Level::Flat)
        return;
    m_library = std::make_unique<ToolkitLibrary>(side);
    EXPECT_EQ(m_library->callBare("API_Init", &m_bareContext, text(workDirectory())), 0);
}

Bench::~Bench()
{
    if (m_bareContext)
        m_library->callBare("API_Finish", m_bareContext);
    ZR_Finish(m_context);
}

int Bench::call(const Operation& operation, const std::vector<Word>& words) const
{
    return m_level == Level::Flat ? operation.call(m_context, words.data()) : callBare(operation, words);
}

int Bench::callBare(const Operation& operation, const std::vector<Word>& words) const
{
    const ExpectedCall reached = expectedCalls(operation, cellOf(operation, m_side)).front();
    std::vector<Word> given;
    for (const std::string& word : reached.words) {
        if (word == "ctx")
            given.push_back(reinterpret_cast<Word>(m_bareContext));
        else if (word == "?")
            given.push_back(ownRoom());
        else if (std::isdigit(static_cast<unsigned char>(word[0])) != 0)
            given.push_back(std::stoul(word));
        else
            for (std::size_t i = 0; i < operation.parameters.size(); ++i)
                if (operation.parameters[i].name == word)
                    given.push_back(words[i]);
    }
    given.resize(RECORDED_WORDS);
    const Word* w = given.data();
    return m_library->callBare(reached.operation.substr(std::string_view(m_side.prefix).size()), w[0], w[1],
                               w[2], w[3], w[4], w[5], w[6], w[7], w[8], w[9], w[10], w[11], w[12], w[13]);
}

std::string Bench::give(const std::string& name, const std::vector<Argument>& arguments) const
{
    Memory memory(*this, arguments);
    EXPECT_EQ(call(operationCalled(name), memory.words()), 0) << name << ": " << errorText();
    for (std::size_t i = arguments.size(); i > 0; --i)
        if (arguments[i - 1].role == Argument::Output || arguments[i - 1].role == Argument::Exchanged)
            return memory.output(i - 1);
    return {};
}

void Bench::run(const std::string& name, const std::vector<Argument>& arguments) const
{
    static_cast<void>(give(name, arguments));
}

std::string Bench::errorText() const
{
    char buffer[2048] = {};
    const int size = sizeof buffer;
    const int code = m_level == Level::Flat
                         ? ZR_GetErrInfo(m_context, size, buffer)
                         : m_library->callBare("API_GetErrInfo", m_bareContext, size, +buffer);
    return code == 0 ? buffer : "no text";
}

void Bench::fill(BINSTR& record, const std::string& bytes) const
{
    record = {};
    if (!bytes.empty()) {
        std::string copy = bytes;
        EXPECT_EQ(ZR_BINSTR_SetData(m_context, reinterpret_cast<unsigned char*>(copy.data()),
                                    static_cast<int>(copy.size()), &record),
                  0);
    }
}

void Bench::release(BINSTR& record) const
{
    ZR_BINSTR_Delete(m_context, &record);
    record = {};
}
