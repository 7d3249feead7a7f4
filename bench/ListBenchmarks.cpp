// Listing: what a selection waits for before it can show anything.

#include "Session.h"

#include <TestHome.h>
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <openssl/x509.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace {

std::vector<std::string> certificateFiles()
{
    std::vector<std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(TestHome::path()))
        if (entry.path().filename() == "signCert.der")
            files.push_back(entry.path());
    return files;
}

/** Opens, reads and decodes one certificate with OpenSSL's usual function, and reads name, serial and
 * validity. */
void readBare(const std::string& file)
{
    unsigned char buffer[16384];
    const int descriptor = open(file.c_str(), O_RDONLY | O_CLOEXEC);
    const ssize_t size = read(descriptor, buffer, sizeof buffer);
    close(descriptor);
    const unsigned char* cursor = buffer;
    X509* certificate = d2i_X509(nullptr, &cursor, size);
    benchmark::DoNotOptimize(X509_get_subject_name(certificate));
    benchmark::DoNotOptimize(X509_get0_serialNumber(certificate));
    benchmark::DoNotOptimize(X509_get0_notBefore(certificate));
    benchmark::DoNotOptimize(X509_get0_notAfter(certificate));
    X509_free(certificate);
}

void FloorList(benchmark::State& state)
{
    useHomeOf(state.range(0));
    const std::vector<std::string> files = certificateFiles();
    for (auto _ : state)
        for (const std::string& file : files)
            readBare(file);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void listWith(benchmark::State& state, const fs::path& work)
{
    useHomeOf(state.range(0));
    const Session session(work);
    for (auto _ : state)
        session.load(static_cast<int>(state.range(0)));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void List(benchmark::State& state)
{
    listWith(state, workDirectory("work"));
}
void ListLogging(benchmark::State& state)
{
    listWith(state, workDirectory("work-log", 0, true));
}
void ListLongConfiguration(benchmark::State& state)
{
    listWith(state, workDirectory("work-long", 2000));
}

BENCHMARK(FloorList)->Arg(10)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(List)->Arg(10)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(ListLogging)->Arg(100)->Unit(benchmark::kMicrosecond);
BENCHMARK(ListLongConfiguration)->Arg(100)->Unit(benchmark::kMicrosecond);

} // namespace
