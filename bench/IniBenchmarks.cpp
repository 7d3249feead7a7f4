// Reading an INI text.

#include "iniFile.h"

#include <TestHome.h>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace {

/** A file of 10,000 lines: a hundred sections of a hundred, one line of each a comment. */
const std::string& iniPath()
{
    static const std::string path = [] {
        std::string text;
        for (int section = 0; section < 100; ++section) {
            text += "[SECTION " + std::to_string(section) + "]\n; what it is for\n";
            for (int line = 0; line < 98; ++line)
                text += "NAME_OF_A_VALUE_" + std::to_string(line) + "=1.2.410.200004.5.1.1." +
                        std::to_string(line) + "\n";
        }
        std::string file = TestHome::scratch("ini") / "lines.ini";
        writeFile(file, text);
        return file;
    }();
    return path;
}

/** Reads the lines and keeps names and values in their order, without anything to find them by. */
void FloorIni(benchmark::State& state)
{
    const std::string& path = iniPath();
    for (auto _ : state) {
        std::vector<std::string> sections;
        std::vector<std::pair<std::string, std::string>> values;
        char line[1024];
        FILE* file = std::fopen(path.c_str(), "re");
        while (std::fgets(line, sizeof line, file)) {
            line[std::strcspn(line, "\r\n")] = '\0';
            char* mark = std::strpbrk(line, ";#[=");
            if (mark && *mark == '[')
                sections.emplace_back(mark + 1, std::strcspn(mark + 1, "]"));
            else if (mark && *mark == '=')
                values.emplace_back(std::string(line, static_cast<std::size_t>(mark - line)), mark + 1);
        }
        std::fclose(file);
        benchmark::DoNotOptimize(values.data());
        benchmark::DoNotOptimize(sections.data());
    }
}

void Ini(benchmark::State& state)
{
    const std::string& path = iniPath();
    for (auto _ : state) {
        CIniFile ini(path);
        if (!ini.ReadFile() || ini.NumKeys() != 100)
            state.SkipWithError("the file is not read");
    }
}

BENCHMARK(FloorIni)->Unit(benchmark::kMicrosecond);
BENCHMARK(Ini)->Unit(benchmark::kMicrosecond);

} // namespace
