#pragma once

#include <cstdlib>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <malloc.h>
#include <string>

/** Whether something is left behind by many rounds of an operation. */
namespace memory_growth {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool sanitized = true;
#else
constexpr bool sanitized = false;
#endif

/**
 * Rounds of an operation: enough that a kilobyte forgotten in each is above the noise. QUILLGATE_ROUNDS
 * asks for more, which tell smaller losses. A sanitizer needs few, for it reports what is left by itself.
 */
inline int rounds()
{
    const char* asked = std::getenv("QUILLGATE_ROUNDS");
    if (asked)
        return std::atoi(asked);
    return sanitized ? 30 : 250;
}

/** Bytes by which OpenSSL's caches, which forget at random, and the allocator's move. */
constexpr std::size_t cacheNoise = 262144;

/** Bytes that the process has allocated. A sanitizer's allocator answers 0, and it reports leaks by itself.
 */
inline std::size_t allocatedBytes()
{
    return mallinfo2().uordblks;
}

/** Kilobytes of memory that the process occupies. */
inline long residentKilobytes()
{
    std::ifstream status("/proc/self/status");
    std::string word;
    long kilobytes = 0;
    while (status >> word) {
        if (word == "VmRSS:")
            status >> kilobytes;
    }
    return kilobytes;
}

/** Runs something often and expects that memory is as it was after as many rounds ahead, which fill the
 * caches. */
inline void expectNone(const std::function<void()>& round, int count = rounds())
{
    for (int i = 0; i < count; ++i)
        round();
    const std::size_t allocated = allocatedBytes();
    const long resident = residentKilobytes();
    for (int i = 0; i < count; ++i)
        round();
    EXPECT_LT(allocatedBytes(), allocated + cacheNoise);
    if (!sanitized) {
        EXPECT_LT(residentKilobytes(), resident + 1024);
    }
}

} // namespace memory_growth
