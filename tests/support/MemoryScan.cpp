#include "MemoryScan.h"

#include <algorithm>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <sstream>
#include <unistd.h>

namespace {

struct Region
{
    unsigned long begin = 0;
    unsigned long end = 0;
    std::string label;
};

std::vector<Region> writableRegions()
{
    std::vector<Region> regions;
    std::ifstream maps("/proc/self/maps");
    std::string line;
    while (std::getline(maps, line)) {
        std::istringstream fields(line);
        Region region;
        std::string permissions;
        char dash = 0;
        fields >> std::hex >> region.begin >> dash >> region.end >> permissions;
        if (permissions.size() < 2 || permissions[1] != 'w' || permissions[0] != 'r')
            continue;
        region.label = line.substr(line.find(permissions));
        regions.push_back(region);
    }
    return regions;
}

/** Says whether memory of so many bytes begins with the needle. */
bool beginsWith(const unsigned char* memory, std::size_t size, const std::string& masked)
{
    std::size_t same = 0;
    while (same < masked.size() && same < size &&
           (memory[same] ^ Needle::MASK) == static_cast<unsigned char>(masked[same]))
        ++same;
    return same == masked.size();
}

/** Reads through /proc/self/mem in place of the addresses: a region may hold guard pages. */
class OwnMemory
{
public:
    OwnMemory() : m_file(open("/proc/self/mem", O_RDONLY | O_CLOEXEC)) {}
    ~OwnMemory() { close(m_file); }
    OwnMemory(const OwnMemory&) = delete;
    OwnMemory& operator=(const OwnMemory&) = delete;

    ssize_t read(unsigned char* target, std::size_t size, unsigned long address) const
    {
        return pread(m_file, target, size, static_cast<off_t>(address));
    }

private:
    int m_file;
};

} // namespace

Needle::Needle(const char* secret, std::size_t length) : m_masked(length, '\0')
{
    for (std::size_t i = 0; i < length; ++i)
        m_masked[i] = static_cast<char>(static_cast<unsigned char>(secret[i]) ^ MASK);
}

Needle Needle::ofMasked(const std::string& masked)
{
    Needle needle;
    needle.m_masked = masked;
    return needle;
}

void Needle::mask(char* data, std::size_t length)
{
    for (std::size_t i = 0; i < length; ++i)
        data[i] = static_cast<char>(static_cast<unsigned char>(data[i]) ^ MASK);
}

int Needle::count() const
{
    MemoryScan scan;
    scan.add("", *this);
    return static_cast<int>(scan.find().size());
}

std::vector<std::string> MemoryScan::find() const
{
    constexpr std::size_t chunk = 1 << 20;
    std::size_t overlap = 0;
    for (const auto& [name, needle] : m_needles)
        overlap = std::max(overlap, needle.masked().size() - 1);

    // Static, and wiped behind each use: what is read here must not be found as a hit of its own.
    static unsigned char window[chunk];
    const auto own = reinterpret_cast<unsigned long>(&window);
    std::vector<std::string> hits;
    const OwnMemory memory;
    for (const Region& region : writableRegions()) {
        for (unsigned long at = region.begin; at < region.end; at += chunk - overlap) {
            const ssize_t read = memory.read(window, std::min<unsigned long>(chunk, region.end - at), at);
            const std::size_t size = read > 0 ? static_cast<std::size_t>(read) : 0;
            for (std::size_t i = 0; i < size; ++i)
                for (const auto& [name, needle] : m_needles) {
                    const std::size_t length = needle.masked().size();
                    const bool inWindow = at + i + length > own && at + i < own + chunk;
                    if (!inWindow && beginsWith(window + i, size - i, needle.masked()))
                        hits.push_back(name + " in " + region.label);
                }
            explicit_bzero(window, sizeof window);
        }
    }
    return hits;
}
