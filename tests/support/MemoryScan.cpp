#include "MemoryScan.h"

#include <algorithm>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <sstream>
#include <unistd.h>

namespace {

constexpr unsigned char mask = 0xA5;

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

bool matches(const unsigned char* memory, const std::vector<unsigned char>& masked)
{
    for (std::size_t i = 0; i < masked.size(); ++i)
        if ((memory[i] ^ mask) != masked[i])
            return false;
    return true;
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

void MemoryScan::add(const std::string& name, const char* needle, std::size_t length)
{
    Needle entry{name, {}};
    for (std::size_t i = 0; i < length; ++i)
        entry.masked.push_back(static_cast<unsigned char>(needle[i]) ^ mask);
    m_needles.push_back(std::move(entry));
}

std::vector<std::string> MemoryScan::find() const
{
    constexpr std::size_t chunk = 1 << 20;
    std::size_t overlap = 0;
    for (const Needle& needle : m_needles)
        overlap = std::max(overlap, needle.masked.size());

    // Static, and wiped behind each use: what is read here must not be found as a hit of its own.
    static unsigned char window[chunk];
    const auto own = reinterpret_cast<unsigned long>(&window);
    std::vector<std::string> hits;
    const OwnMemory memory;
    for (const Region& region : writableRegions()) {
        for (unsigned long at = region.begin; at < region.end; at += chunk - overlap) {
            const ssize_t size = memory.read(window, std::min<unsigned long>(chunk, region.end - at), at);
            for (ssize_t i = 0; i < size; ++i)
                for (const Needle& needle : m_needles) {
                    const unsigned long address = at + static_cast<unsigned long>(i);
                    if (needle.masked.size() > static_cast<std::size_t>(size - i) ||
                        (window[i] ^ mask) != needle.masked[0] ||
                        (address + needle.masked.size() > own && address < own + chunk))
                        continue;
                    if (matches(window + i, needle.masked))
                        hits.push_back(needle.name + " in " + region.label);
                }
            explicit_bzero(window, sizeof window);
        }
    }
    return hits;
}
