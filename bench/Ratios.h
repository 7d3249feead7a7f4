#pragma once

#include <benchmark/benchmark.h>
#include <map>
#include <string>
#include <vector>

/** One line of the result: a measurement over its floor, both from this run. */
struct Ratio
{
    std::string what;
    std::string measured; /**< Name of a benchmark, as "List/1000". */
    std::string floor;    /**< Name of the benchmark that it is held against. */
    double aim;           /**< Largest ratio that is good; 0 when the ratio is only stated. */
};

/**
 * Prints each measurement as usual, and at the end the ratios: the minimum of all rounds over the minimum of
 * all rounds. Times alone say little on a shared machine; two minima from interleaved rounds of one run do.
 */
class RatioReporter : public benchmark::ConsoleReporter
{
public:
    explicit RatioReporter(std::vector<Ratio> ratios) : m_ratios(std::move(ratios)) {}

    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

    /** Says whether what was to be measured went wrong in any run. */
    bool failed() const { return m_failed; }

private:
    std::vector<Ratio> m_ratios;
    bool m_failed = false;
    std::map<std::string, double> m_minimum; /**< Nanoseconds an iteration, by name. */
};
