// What is measured, against whom, and what is aimed at: the lines of the one table that ./bench
// prints.
//
// A benchmark is registered under "question/contestant"; the table pairs the contestants of a
// question.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace stelvan::bench {

/// One line of the table.
struct Question {
    std::string name;
    std::string rival;        // the other contestant; empty where only the time counts
    double share = 1.0;       // aim: our time is at most this share of the rival's
    double microseconds = 0;  // aim for our own time, where it is not 0
    double operations = 1;    // rows and the like in one iteration; times are shown for one of them
    std::string unit;         // what the time is for: "row", "change"
};

inline constexpr const char* kOurs = "stelvan";

/// Keeps the median of every benchmark and prints nothing by itself.
class MedianReporter : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override;

    /// Median in microseconds for one iteration; negative where it did not run.
    [[nodiscard]] double median(const std::string& name) const;
    [[nodiscard]] const std::map<std::string, std::string>& failures() const { return failures_; }

private:
    std::map<std::string, double> medians_;
    std::map<std::string, std::string> failures_;
};

/// Prints the table; true when every aim is met.
bool printTable(const std::vector<Question>& questions, const MedianReporter& medians);

/// Peak memory of each verb of gemdb over the whole model.
void printModelMemory();

}  // namespace stelvan::bench
