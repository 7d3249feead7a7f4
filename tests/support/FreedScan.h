#pragma once

#include <cstddef>

/**
 * Looks into every block that is freed in this process, by whomever, for byte strings: what was not wiped
 * before shows here even when the memory is used again at once. Masked as in MemoryScan. One at a time, and
 * not under a sanitizer, which has an allocator of its own.
 */
class FreedScan
{
public:
    FreedScan();
    ~FreedScan();
    FreedScan(const FreedScan&) = delete;
    FreedScan& operator=(const FreedScan&) = delete;

    /** Looks for this from now on. Up to eight, each of up to 64 bytes. */
    void add(const char* needle, std::size_t length);

    /** Blocks that were freed with one of them inside. */
    unsigned hits() const;
};
