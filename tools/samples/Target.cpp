#include "Target.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <set>
#include <stdexcept>
#include <vector>

#include "samplepki/Media.h"

namespace fs = std::filesystem;

namespace {

std::string lower(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

bool holdsCertificate(const fs::path& file)
{
    static const std::set<std::string> endings = {".der", ".cer", ".crt", ".pem", ".key",
                                                  ".p12", ".pfx", ".p7b", ".p7c"};
    return endings.contains(lower(file.extension()));
}

void refuseCertificates(const fs::path& directory)
{
    for (const auto& entry : fs::recursive_directory_iterator(directory))
        if (holdsCertificate(entry.path()))
            throw std::runtime_error("there are certificates or keys already: " + entry.path().string());
}

fs::path makeStaging(const fs::path& directory)
{
    std::string pattern = (directory / ".quillgate-samples-XXXXXX").string();
    if (!mkdtemp(pattern.data()))
        throw fs::filesystem_error("cannot write", directory,
                                   std::error_code(errno, std::generic_category()));
    return pattern;
}

std::vector<fs::path> entriesOf(const fs::path& directory)
{
    std::vector<fs::path> entries;
    for (const auto& entry : fs::directory_iterator(directory))
        entries.push_back(entry.path());
    return entries;
}

void refuseTakenName(const fs::path& path)
{
    if (fs::exists(fs::symlink_status(path)))
        throw fs::filesystem_error("the name is taken", path, std::make_error_code(std::errc::file_exists));
}

} // namespace

Target::Target(const fs::path& directory)
    : m_directory(fs::absolute(directory)), m_made(!fs::exists(m_directory))
{
    samplepki::makePrivateDirectory(m_directory);
    refuseCertificates(m_directory);
    m_staging = makeStaging(m_directory);
}

Target::~Target()
{
    std::error_code ignored;
    fs::remove_all(m_staging, ignored);
    if (m_made)
        fs::remove(m_directory, ignored);
}

void Target::publish()
{
    const auto entries = entriesOf(m_staging);
    for (const auto& entry : entries)
        refuseTakenName(m_directory / entry.filename());
    for (const auto& entry : entries)
        fs::rename(entry, m_directory / entry.filename());
}
