#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

/// Collects the quickest repetition of every benchmark: on a shared machine the least disturbed run is the
/// nearest to the cost itself. At the end each measured path is printed as a multiple of its limit.
class RatioReporter : public benchmark::ConsoleReporter
{
public:
    /// `limits` are added up: what the path cannot do without, by the means it uses.
    void compare(const std::string& title,
                 const std::string& path,
                 const std::vector<std::string>& limits,
                 double allowed);

    void ReportRuns(const std::vector<Run>& runs) override;
    void printRatios() const;

private:
    struct Comparison
    {
        std::string title;
        std::string path;
        std::vector<std::string> limits;
        double allowed;
    };
    std::vector<Comparison> comparisons_;
    std::map<std::string, double> quickest_; // milliseconds an iteration
};
