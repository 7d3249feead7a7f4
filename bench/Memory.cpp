#include "Memory.h"

#include "Session.h"

#include <cstdio>
#include <fstream>
#include <memory>
#include <quillgate/records.h>
#include <quillgate/toolkit.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

extern "C" {
// The C library's own allocator, behind the counting one below.
void* __libc_malloc(std::size_t size); // NOLINT: its name
}

namespace {

unsigned long allocations = 0;

/** Peak resident size of this process so far, in bytes. */
long peakMemory()
{
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line))
        if (line.rfind("VmHWM:", 0) == 0)
            return std::stol(line.substr(6)) * 1024;
    return 0;
}

/** Peak memory of listing count certificates, in a process of its own. */
long peakOfList(long count)
{
    useHomeOf(count);
    const std::filesystem::path work = workDirectory("work");
    int channel[2];
    if (pipe(channel) != 0)
        return 0;
    if (fork() == 0) {
        // The peak that the parent reached is not this process's.
        std::ofstream("/proc/self/clear_refs") << "5";
        const Session session(work);
        session.load(static_cast<int>(count));
        const long peak = peakMemory();
        _exit(write(channel[1], &peak, sizeof peak) == sizeof peak ? 0 : 1);
    }
    long peak = 0;
    const bool came = read(channel[0], &peak, sizeof peak) == sizeof peak;
    close(channel[0]);
    close(channel[1]);
    wait(nullptr);
    return came ? peak : 0;
}

void printListMemory()
{
    constexpr long few = 100;
    constexpr long many = 2100;
    const double each = static_cast<double>(peakOfList(many) - peakOfList(few)) / (many - few);
    std::printf("%-68s %10.0f %10zu %7.2f %6.2f\n",
                "peak memory a listed certificate / sizeof(CERTINFO), bytes", each, sizeof(CERTINFO),
                each / sizeof(CERTINFO), 1.1);
}

void printCallAllocations()
{
    void* context = nullptr;
    char directory[] = EMPTY_TOOLKIT_DIR;
    char library[] = "libZRToolkitV30-v3.4.2.20.so";
    if (ZR_Initalize(&context, 0, directory, library) != 0)
        return;
    CertUnLoad(context);
    const unsigned long before = allocations;
    for (int call = 0; call < 1000; ++call)
        CertUnLoad(context);
    std::printf("%-68s %10lu\n", "allocations of 1,000 flat calls", allocations - before);
    ZR_Finish(context);
}

} // namespace

/** Counts every allocation of the process, the library's included. */
extern "C" void* malloc(std::size_t size)
{
    ++allocations;
    return __libc_malloc(size);
}

void printMemory()
{
    printListMemory();
    printCallAllocations();
}
