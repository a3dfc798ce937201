// Prints benchmarks as usual, and ratios between them at the end.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

/// Keeps the times of the benchmarks that it prints, for ratios between them.
class RatioReporter : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run> &runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const auto &run : runs)
            times[run.benchmark_name()] = run.GetAdjustedCPUTime();
    }

    /// Prints \a what and how many times longer \a name took than \a base; nothing when one of them
    /// did not run.
    void printRatio(const char *what, const std::string &name, const std::string &base) const
    {
        const auto time = times.find(name);
        const auto known = times.find(base);
        if (time != times.end() && known != times.end())
            std::printf("%-56s %6.2f\n", what, time->second / known->second);
    }

private:
    std::map<std::string, double> times;
};
