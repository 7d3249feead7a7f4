#include "AllocationHooks.h"

#include <cstring>
#include <new>

namespace {

constexpr int unlimited = -1;
int g_successesLeft = unlimited;

const void* g_watched = nullptr;
std::size_t g_watchedSize = 0;
char g_freedBytes[256];
bool g_freed = false;

void* allocateOrNull(std::size_t size)
{
    if (g_successesLeft == 0)
        return nullptr;
    if (g_successesLeft > 0)
        --g_successesLeft;
    return ::operator new(size);
}

void freeArray(void* array) noexcept
{
    if (array && array == g_watched) {
        std::memcpy(g_freedBytes, array, g_watchedSize);
        g_freed = true;
        g_watched = nullptr;
    }
    ::operator delete(array);
}

} // namespace

FailingAllocations::FailingAllocations(int successes)
{
    g_successesLeft = successes;
}

FailingAllocations::~FailingAllocations()
{
    g_successesLeft = unlimited;
}

FreedArrayWatch::FreedArrayWatch(const void* array, std::size_t size)
{
    g_freed = false;
    g_watched = array;
    g_watchedSize = size < sizeof(g_freedBytes) ? size : sizeof(g_freedBytes);
}

FreedArrayWatch::~FreedArrayWatch()
{
    g_watched = nullptr;
}

std::string FreedArrayWatch::contents()
{
    return g_freed ? std::string(g_freedBytes, g_watchedSize) : std::string();
}

// All arrays go through the plain operators, so that the sanitizer still sees every allocation.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return allocateOrNull(size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return allocateOrNull(size);
}

void* operator new[](std::size_t size)
{
    return ::operator new(size);
}

void operator delete[](void* array) noexcept
{
    freeArray(array);
}

void operator delete[](void* array, std::size_t) noexcept
{
    freeArray(array);
}
