#pragma once

#include <cstddef>
#include <string>

/** While it lives, allocations that may answer null do so after the first `successes` of them. */
class FailingAllocations
{
public:
    explicit FailingAllocations(int successes = 0);
    ~FailingAllocations();
};

/** Keeps what an array made with new[] holds at the moment it is given back. */
class FreedArrayWatch
{
public:
    FreedArrayWatch(const void* array, std::size_t size);
    ~FreedArrayWatch();

    /** The bytes; empty while the array is still alive. */
    static std::string contents();
};
