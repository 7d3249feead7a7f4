#include "ToolkitLibrary.h"

#include <filesystem>
#include <ostream>
#include <stdexcept>

#include "TestHome.h"
#include "samplepki/Der.h"

using qgtk::Code;

const Side zrtkSide{"ZRTK", QGTK_ZRTK_FILE, "ZRTK_", "ZRCToolkitV30.conf", "CERT_GetCertPolicy_PolicyID"};
const Side gpkiSide{"GPKI", QGTK_GPKI_FILE, "GPKI_", "gpkiapi.conf", "CERT_GetCertPolicyID"};

void PrintTo(const Side& side, std::ostream* out)
{
    *out << side.name;
}

ToolkitLibrary::ToolkitLibrary(const Side& side) : m_side(side), m_handle(dlopen(side.file, RTLD_LAZY))
{
    if (!m_handle)
        throw std::runtime_error(dlerror());
}

ToolkitLibrary::~ToolkitLibrary()
{
    dlclose(m_handle);
}

bool ToolkitLibrary::has(const std::string& operation) const
{
    return dlsym(m_handle, (m_side.prefix + operation).c_str()) != nullptr;
}

void* ToolkitLibrary::symbol(const std::string& operation) const
{
    void* address = dlsym(m_handle, (m_side.prefix + operation).c_str());
    if (!address)
        throw std::runtime_error(m_side.prefix + operation + " is missing");
    return address;
}

BinString::BinString(const ToolkitLibrary& library, const std::string& bytes) : m_library(library)
{
    auto* data = reinterpret_cast<unsigned char*>(const_cast<char*>(bytes.data()));
    if (!bytes.empty())
        m_library.callBare("BINSTR_SetData", data, static_cast<int>(bytes.size()), &m_record);
}

BinString::~BinString()
{
    m_library.callBare("BINSTR_Delete", &m_record);
}

void ToolkitTest::SetUp()
{
    restartWith("KEY_ITERATIONS=2048");
}

void ToolkitTest::restartWith(const std::string& settings)
{
    TearDown();
    workDirectory = TestHome::scratch("work").string();
    writeFile(std::filesystem::path(workDirectory) / GetParam().configuration,
              "[OTHER]\nKEY_ITERATIONS=1\n\n[OPEN_TOOLKIT]\n" + settings + "\n");
    ASSERT_EQ(library.callBare("API_Init", &context, text(workDirectory)), 0);
}

void ToolkitTest::TearDown()
{
    if (context) {
        EXPECT_EQ(call("API_Finish"), 0);
    }
    context = nullptr;
}

int ToolkitTest::load(const std::string& der)
{
    BinString certificate(library, der);
    return call("CERT_Load", &certificate);
}

std::string ToolkitTest::get(const std::string& getter, int size)
{
    std::string buffer(static_cast<std::size_t>(size) + 1, '#');
    const int code = call(getter, size, buffer.data());
    if (code != 0)
        return "code " + std::to_string(code);
    EXPECT_EQ(buffer.back(), '#') << "written behind the buffer";
    return buffer.c_str();
}

std::string ToolkitTest::errorText()
{
    return get("API_GetErrInfo");
}

std::string eucKr(const std::string& utf8)
{
    return samplepki::convertText(utf8, "UTF-8", "CP949");
}
