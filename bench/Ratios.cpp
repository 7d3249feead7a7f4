#include "Ratios.h"

#include <algorithm>
#include <cstdio>

void RatioReporter::ReportRuns(const std::vector<Run>& runs)
{
    for (const Run& run : runs) {
        m_failed = m_failed || run.error_occurred;
        if (run.run_type != Run::RT_Iteration || run.error_occurred)
            continue;
        const double time = run.real_accumulated_time / static_cast<double>(run.iterations) * 1e9;
        const auto [entry, isNew] = m_minimum.try_emplace(
            run.run_name.function_name + (run.run_name.args.empty() ? "" : "/" + run.run_name.args), time);
        if (!isNew)
            entry->second = std::min(entry->second, time);
    }
    ConsoleReporter::ReportRuns(runs);
}

void RatioReporter::Finalize()
{
    std::printf("\n%-68s %10s %10s %7s %6s\n", "minimum of all rounds", "us", "floor us", "ratio", "aim");
    for (const Ratio& ratio : m_ratios) {
        const auto measured = m_minimum.find(ratio.measured);
        const auto floor = m_minimum.find(ratio.floor);
        if (measured == m_minimum.end() || floor == m_minimum.end())
            continue;
        std::printf("%-68s %10.2f %10.2f %7.2f", ratio.what.c_str(), measured->second / 1000,
                    floor->second / 1000, measured->second / floor->second);
        if (ratio.aim > 0)
            std::printf(" %6.2f", ratio.aim);
        std::printf("\n");
    }
    ConsoleReporter::Finalize();
}
