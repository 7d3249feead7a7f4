// Runs a target over its seeds and over a fixed number of changed ones: a test that costs a second, where
// libFuzzer would be too dear. Seeds have new keys each time, so what ends the program is kept in a file,
// which is a folder's only seed when it is looked at again.

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <sanitizer/common_interface_defs.h>
#include <string>
#include <vector>

#include "Target.h"

namespace {

using Random = std::mt19937;
using qgtk::Bytes;

/** The bytes that are run, and where they go when they end the program. */
const Bytes* current = nullptr;
std::string findingFile;

void keepFinding()
{
    if (!current)
        return;
    std::ofstream(findingFile, std::ios::binary)
        .write(reinterpret_cast<const char*>(current->data()), static_cast<std::streamsize>(current->size()));
    std::fprintf(stderr, "The input is in %s\n", findingFile.c_str());
    current = nullptr;
}

void keepFindingOf(int)
{
    keepFinding();
}

void run(const Bytes& bytes)
{
    current = &bytes;
    fuzz(bytes);
    current = nullptr;
}

std::size_t below(Random& random, std::size_t limit)
{
    return random() % limit;
}

/** Changes of one place. */
void flipBit(Bytes& bytes, Random& random)
{
    bytes[below(random, bytes.size())] ^= static_cast<std::uint8_t>(1U << below(random, 8));
}

void setByte(Bytes& bytes, Random& random)
{
    constexpr std::uint8_t values[] = {0, 1, 0x7F, 0x80, 0x81, 0x84, 0xFF, '\n', '=', '['};
    bytes[below(random, bytes.size())] = values[below(random, std::size(values))];
}

void cutEnd(Bytes& bytes, Random& random)
{
    bytes.resize(below(random, bytes.size()));
}

void dropSome(Bytes& bytes, Random& random)
{
    const auto from = bytes.begin() + static_cast<std::ptrdiff_t>(below(random, bytes.size()));
    bytes.erase(from,
                from + std::min<std::ptrdiff_t>(bytes.end() - from, 1 + static_cast<int>(below(random, 8))));
}

void repeatSome(Bytes& bytes, Random& random)
{
    const std::size_t from = below(random, bytes.size());
    const std::size_t length = std::min(bytes.size() - from, 1 + below(random, 32));
    const Bytes piece(bytes.begin() + static_cast<std::ptrdiff_t>(from),
                      bytes.begin() + static_cast<std::ptrdiff_t>(from + length));
    bytes.insert(bytes.begin() + static_cast<std::ptrdiff_t>(below(random, bytes.size())), piece.begin(),
                 piece.end());
}

Bytes changed(Bytes bytes, Random& random)
{
    using Change = void (*)(Bytes&, Random&);
    constexpr Change changes[] = {flipBit, flipBit, setByte, setByte, dropSome, repeatSome, cutEnd};
    for (std::size_t i = below(random, 4) + 1; i > 0 && !bytes.empty(); --i)
        changes[below(random, std::size(changes))](bytes, random);
    bytes.shrink_to_fit(); // a sanitizer sees what is read behind the end
    return bytes;
}

/** The seeds of a folder, in the order of their names. */
std::vector<Bytes> readSeeds(const std::string& folder)
{
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    std::vector<Bytes> seeds;
    for (const auto& path : paths) {
        std::ifstream file(path, std::ios::binary);
        seeds.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    return seeds;
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 3) {
        std::fputs("Usage: TARGET SEED-FOLDER CHANGED-SEEDS\n", stderr);
        return 2;
    }
    const std::vector<Bytes> seeds = readSeeds(arguments[1]);
    if (seeds.empty())
        return 2;
    findingFile = std::string(arguments[0]) + "-finding";
    std::signal(SIGABRT, keepFindingOf);
    __sanitizer_set_death_callback(keepFinding);
    for (const Bytes& seed : seeds)
        run(seed);
    run({});
    Random random(1);
    const int changes = std::stoi(arguments[2]);
    for (int i = 0; i < changes; ++i)
        run(changed(seeds[below(random, seeds.size())], random));
    return 0;
}
