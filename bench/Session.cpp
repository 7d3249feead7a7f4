#include "Session.h"

#include <TestHome.h>
#include <map>
#include <memory>
#include <quillgate/certlist.h>
#include <samplepki/Media.h>
#include <stdexcept>

namespace fs = std::filesystem;

Session::Session(const fs::path& workDirectory)
{
    const auto options = std::make_unique<LOADOPT>();
    workDirectory.string().copy(options->szWorkDir, sizeof options->szWorkDir - 1);
    const auto filter = std::make_unique<LOADCERTOPT>();
    filter->nCertCAType = CERTTYPE_GPKI | CERTTYPE_NPKI | CERTTYPE_MPKI;
    if (CLP_Initalize(&m_handle, options.get(), nullptr) != 0 || CLP_SetType(m_handle, filter.get()) != 0 ||
        CLP_SetMediaType(m_handle, MEDIA_HARDDISK, 0) != 0)
        throw std::runtime_error("no session over " + workDirectory.string());
}

Session::~Session()
{
    CLP_UnInitalize(m_handle);
}

int Session::load(int expected) const
{
    const int code = CLP_LoadCertList(m_handle);
    const int count = CLP_GetCertCount(m_handle);
    if (code != 0 || count != expected)
        throw std::runtime_error("list of " + std::to_string(count) + ", code " + std::to_string(code));
    return count;
}

void useHome(const std::string& name, const std::function<void(const fs::path& root)>& fill)
{
    static std::map<std::string, fs::path> trees;
    static fs::path current;
    auto [tree, isNew] = trees.try_emplace(name);
    if (isNew) {
        tree->second = TestHome::scratch(name);
        fill(tree->second);
    }
    // Moved, not linked to: a link would lengthen every path that is looked up.
    const fs::path home = TestHome::path() / "NPKI";
    if (!current.empty())
        fs::rename(home, current / "NPKI");
    current = tree->second;
    fs::rename(current / "NPKI", home);
}

void useHomeOf(long count)
{
    useHome("holders-" + std::to_string(count), [count](const fs::path& root) {
        samplepki::writeManyHolders(root, "yessign", static_cast<unsigned>(count));
    });
}

fs::path workDirectory(const std::string& name, int issuerLines, bool logging)
{
    fs::path directory = TestHome::scratch(name);
    fs::copy(WORK_DIR, directory, fs::copy_options::recursive);
    if (issuerLines > 0) {
        std::string padded = readFile(directory / "IssuerOid.conf");
        for (int line = 0; line < issuerLines; ++line)
            padded += "1.2.410.999999." + std::to_string(line) + " = purpose\n";
        writeFile(directory / "IssuerOid.conf", padded);
    }
    if (logging)
        writeFile(directory / "zrapilog.ini",
                  "[Info]\nPath = " + (directory / "quillgate.log").string() + "\n");
    return directory;
}
