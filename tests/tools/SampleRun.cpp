#include "SampleRun.h"

#include <algorithm>
#include <cctype>
#include <sstream>

#include "TestHome.h"

namespace fs = std::filesystem;

namespace {

std::string lower(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return tolower(c); });
    return text;
}

bool endsWith(const fs::path& file, std::initializer_list<const char*> endings)
{
    return std::any_of(endings.begin(), endings.end(),
                       [&](const char* ending) { return lower(file.string()).ends_with(ending); });
}

/** The texts of a line that two blanks or more stand between. */
std::vector<std::string> split(const std::string& line)
{
    std::vector<std::string> texts;
    for (std::size_t start = 0; start < line.size();) {
        const auto end = std::min(line.find("  ", start), line.size());
        texts.push_back(line.substr(start, end - start));
        start = std::min(line.find_first_not_of(' ', end), line.size());
    }
    return texts;
}

} // namespace

CommandResult runSamples(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), QUILLGATE_SAMPLES);
    return runCommand(arguments);
}

std::set<std::string> namesBelow(const fs::path& directory)
{
    std::set<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(directory))
        names.insert(fs::relative(entry.path(), directory).string());
    return names;
}

fs::path keyOf(const fs::path& certificate)
{
    static const std::pair<const char*, const char*> pairs[] = {
        {"signCert.der", "signPri.key"}, {"kmCert.der", "kmPri.key"},     {"_sig.cer", "_sig.key"},
        {"_env.cer", "_env.key"},        {"signcert.der", "signpri.key"}, {"SIGNCERT.DER", "SIGNPRI.KEY"}};
    for (const auto& [from, to] : pairs)
        if (certificate.string().ends_with(from))
            return certificate.string().substr(0, certificate.string().size() - std::string(from).size()) +
                   to;
    return {};
}

qgtk::SecretBytes openKey(const fs::path& keyFile, const std::string& password)
try {
    return qgtk::decryptKey(qgtk::Crypto(), qgtk::bytesOf(readFile(keyFile)), password);
} catch (const qgtk::Failure&) {
    return {};
}

void Samples::SetUpTestSuite()
{
    directory = TestHome::scratch("samples") / "new";
    result = runSamples({directory.string()});
}

std::vector<fs::path> Samples::homeFiles(std::initializer_list<const char*> endings)
{
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(directory / "home"))
        if (entry.is_regular_file() && endsWith(entry.path(), endings))
            files.push_back(entry.path());
    return files;
}

std::vector<fs::path> Samples::certificates()
{
    return homeFiles({".der", ".cer"});
}

std::vector<fs::path> Samples::signingCertificates()
{
    return homeFiles({"signcert.der", "_sig.cer"});
}

std::vector<Row> Samples::rows()
{
    std::vector<Row> list;
    std::istringstream text(result.output);
    for (std::string line; std::getline(text, line);) {
        const auto columns = split(line);
        if (columns.size() == 7 && columns[6].starts_with("home/"))
            list.push_back(
                {columns[0], columns[1], columns[2], columns[3], columns[4], columns[5], columns[6]});
    }
    return list;
}

fs::path Samples::signingCertificate(const Row& row)
{
    const fs::path flat = directory / row.place / (row.name + "_sig.cer");
    for (const auto& file : signingCertificates())
        if (file == flat || (file.parent_path() == directory / row.place && endsWith(file, {"signcert.der"})))
            return file;
    return {};
}
