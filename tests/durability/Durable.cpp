#include "Durable.h"

#include <fnmatch.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/** What the fork tells this process; it survives a kill. */
struct Report
{
    bool prepared;
    bool finished;
    int code;
    long calls;
    char failed[32];
};

/** Memory that this process and its forks share. */
Report& sharedReport()
{
    static void* memory =
        mmap(nullptr, sizeof(Report), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    return *static_cast<Report*>(memory);
}

bool isTemporary(const fs::path& path)
{
    return path.filename().string().compare(0, 6, ".qgtk-") == 0;
}

} // namespace

Outcome Durable::run(const Operation& operation, FaultPlan plan) const
{
    return runPrepared([] { return true; }, operation, plan);
}

Outcome Durable::runPrepared(const std::function<bool()>& prepare, const Operation& operation,
                             FaultPlan plan) const
{
    const std::string root = home.string();
    plan.root = root.c_str();
    Report& report = sharedReport();
    report = {};
    const pid_t child = fork();
    if (child == 0) {
        report.prepared = prepare();
        if (report.prepared) {
            fault_begin(&plan);
            report.code = operation();
            report.calls = fault_end();
            copyText(report.failed, fault_name());
            report.finished = true;
        }
        _exit(0);
    }
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    const bool killed = WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
    EXPECT_TRUE(killed || (WIFEXITED(status) && WEXITSTATUS(status) == 0)) << "status " << status;
    if (!report.prepared)
        return {};
    return {killed, report.finished ? report.code : -1, report.calls, report.failed};
}

Durable::Files Durable::filesIn(const fs::path& directory)
{
    Files files;
    if (!fs::exists(directory))
        return files;
    for (const auto& entry : fs::recursive_directory_iterator(directory))
        if (entry.is_regular_file() && !isTemporary(entry.path()))
            files[fs::relative(entry.path(), directory)] = readFile(entry.path());
    return files;
}

void Durable::restore(const Files& state) const
{
    TestHome::reset();
    for (const auto& [path, content] : state)
        writeFile(home / path, content);
}

std::vector<std::string> Durable::leftovers() const
{
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(home))
        if (isTemporary(entry.path()))
            names.push_back(entry.path().filename());
    return names;
}

std::vector<std::string> Durable::listing()
{
    std::vector<std::string> paths;
    if (CLP_LoadCertList(handle) != 0)
        return paths;
    for (int i = 0; i < CLP_GetCertCount(handle); ++i)
        paths.push_back(info(i).szSignCertPath);
    return paths;
}

std::vector<std::string> Durable::offered() const
{
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(home)) {
        const std::string name = entry.path().filename();
        for (const char* pattern : {"*.PFX", "*.pfx", "*.P12", "*.p12"})
            if (fnmatch(pattern, name.c_str(), 0) == 0)
                names.push_back(name);
    }
    return names;
}

bool Durable::keysOpen(const std::vector<std::string>& passwords, const std::string& signKey,
                       const std::string& kmKey)
{
    // The two keys may be on either side of a change of the password.
    const CERTINFO record = info(0);
    const auto opened = [&](const char* encrypted, int length) {
        for (const std::string& password : passwords)
            if (CLP_CheckPassword(handle, text(password), const_cast<char*>(encrypted), length) == 0)
                return password;
        return std::string();
    };
    const std::string signPassword = opened(record.szEncSignKey, record.nEncSignKeyLen);
    const std::string kmPassword = opened(record.szEncKmKey, record.nEncKmKeyLen);
    if (signPassword.empty() || kmPassword.empty())
        return false;
    // The first opens the signing key, the second, which finds that open, the other one.
    CLP_DecryptPriKey(handle, 0, text(signPassword));
    if (CLP_DecryptPriKey(handle, 0, text(kmPassword)) != 0)
        return false;
    const CERTINFO plain = info(0);
    return bytes(plain.szSignKey, plain.nSignKeyLen) == signKey &&
           bytes(plain.szKmKey, plain.nKmKeyLen) == kmKey;
}
