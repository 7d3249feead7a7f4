#include "SecretScan.h"

#include <cstdio>
#include <cstring>
#include <vector>

void Needle::mask(char* data, size_t size)
{
    for (size_t i = 0; i < size; ++i)
        data[i] = static_cast<char>(static_cast<unsigned char>(data[i]) ^ MASK);
}

__attribute__((no_sanitize("address"))) int Needle::countIn(const unsigned char* begin,
                                                            const unsigned char* end) const
{
    const size_t size = m_masked.size();
    int found = 0;
    for (const unsigned char* at = begin; at + size <= end; ++at) {
        size_t same = 0;
        while (same < size && (at[same] ^ MASK) == static_cast<unsigned char>(m_masked[same]))
            ++same;
        found += same == size;
    }
    return found;
}

int Needle::count() const
{
    struct Region
    {
        unsigned long begin, end;
    };
    std::vector<Region> regions;
    char line[512];
    FILE* maps = std::fopen("/proc/self/maps", "r");
    while (maps && std::fgets(line, sizeof(line), maps)) {
        Region region{};
        char rights[8] = {};
        if (std::sscanf(line, "%lx-%lx %7s", &region.begin, &region.end, rights) == 3 &&
            std::strncmp(rights, "rw", 2) == 0 && !std::strstr(line, "/dev/"))
            regions.push_back(region);
    }
    if (maps)
        std::fclose(maps);
    int found = 0;
    for (const Region& region : regions)
        found += countIn(reinterpret_cast<const unsigned char*>(region.begin),
                         reinterpret_cast<const unsigned char*>(region.end));
    return found;
}
