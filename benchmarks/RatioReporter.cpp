#include "RatioReporter.h"

#include <algorithm>
#include <cstdio>

void RatioReporter::compare(const std::string& title,
                            const std::string& path,
                            const std::vector<std::string>& limits,
                            double allowed)
{
    comparisons_.push_back({title, path, limits, allowed});
}

void RatioReporter::ReportRuns(const std::vector<Run>& runs)
{
    std::vector<Run> medians;
    for (const Run& run : runs) {
        if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "median")
            medians.push_back(run);
        if (run.run_type != Run::RT_Iteration || run.error_occurred)
            continue;
        const double milliseconds = run.real_accumulated_time / static_cast<double>(run.iterations) * 1000;
        const auto [known, isNew] = quickest_.emplace(run.run_name.function_name, milliseconds);
        if (!isNew)
            known->second = std::min(known->second, milliseconds);
    }
    ConsoleReporter::ReportRuns(medians);
}

void RatioReporter::printRatios() const
{
    std::printf("\n%-58s %9s %9s %7s %8s\n",
                "ratio to the limit in this run",
                "path ms",
                "limit ms",
                "ratio",
                "at most");
    for (const Comparison& comparison : comparisons_) {
        const auto path = quickest_.find(comparison.path);
        double limit = 0;
        for (const std::string& name : comparison.limits) {
            const auto part = quickest_.find(name);
            limit += part == quickest_.end() ? 0 : part->second;
        }
        if (path == quickest_.end() || limit <= 0)
            continue;
        std::printf("%-58s %9.1f %9.1f %7.2f %8.2f\n",
                    comparison.title.c_str(),
                    path->second,
                    limit,
                    path->second / limit,
                    comparison.allowed);
    }
}
