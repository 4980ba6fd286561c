#include "tests/bench/contest.h"

#include <cstdio>

namespace stelvan::bench {
namespace {

std::string timeText(double microseconds) {
    char text[32];
    if (microseconds < 0) return "-";
    if (microseconds >= 1e6) {
        std::snprintf(text, sizeof text, "%.2f s", microseconds / 1e6);
    } else if (microseconds >= 1e3) {
        std::snprintf(text, sizeof text, "%.2f ms", microseconds / 1e3);
    } else {
        std::snprintf(text, sizeof text, "%.3g us", microseconds);
    }
    return text;
}

std::string aimText(const Question& question) {
    char text[48];
    if (question.microseconds > 0) {
        return "at most " + timeText(question.microseconds);
    }
    if (question.rival.empty()) return "";
    if (question.share < 1) {
        std::snprintf(text, sizeof text, "at most 1/%.0f of it", 1 / question.share);
        return text;
    }
    return "no more";
}

bool isMet(const Question& question, double ours, double rival) {
    if (ours < 0) return false;
    if (question.microseconds > 0) return ours <= question.microseconds;
    return question.rival.empty() || (rival >= 0 && ours <= rival * question.share);
}

void printLine(const Question& question, double ours, double rival, bool met) {
    const std::string name =
        question.name + (question.unit.empty() ? "" : ", each " + question.unit);
    char ratio[32] = "";
    if (ours > 0 && rival > 0) std::snprintf(ratio, sizeof ratio, "%.2f x", rival / ours);
    const bool hasAim = !aimText(question).empty();
    std::printf("%-52s %12s %12s %-11s %9s  %-17s %s\n", name.c_str(), timeText(ours).c_str(),
                question.rival.empty() ? "" : timeText(rival).c_str(), question.rival.c_str(),
                ratio, aimText(question).c_str(),
                !hasAim ? ""
                : met   ? "met"
                        : "MISSED");
}

}  // namespace

void MedianReporter::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        const std::string name = run.run_name.function_name;
        if (run.error_occurred) failures_[name] = run.error_message;
        const bool single = run.repetitions == 1 && run.run_type == Run::RT_Iteration;
        if (!single && run.aggregate_name != "median") continue;
        medians_[name] =
            run.GetAdjustedRealTime() * 1e6 / benchmark::GetTimeUnitMultiplier(run.time_unit);
    }
}

double MedianReporter::median(const std::string& name) const {
    const auto found = medians_.find(name);
    return found == medians_.end() || failures_.contains(name) ? -1 : found->second;
}

bool printTable(const std::vector<Question>& questions, const MedianReporter& medians) {
    std::printf("%-52s %12s %12s %-11s %9s  %s\n", "", kOurs, "rival", "", "faster", "aim");
    bool allMet = true;
    for (const Question& question : questions) {
        const double ours = medians.median(question.name + "/" + kOurs);
        const double rival =
            question.rival.empty() ? -1 : medians.median(question.name + "/" + question.rival);
        if (ours < 0 && rival < 0 && medians.failures().empty())
            continue;  // not asked for in this run
        const double perOne = 1 / question.operations;
        const bool met =
            isMet(question, ours < 0 ? ours : ours * perOne, rival < 0 ? rival : rival * perOne);
        allMet = allMet && met;
        printLine(question, ours < 0 ? ours : ours * perOne, rival < 0 ? rival : rival * perOne,
                  met);
    }
    for (const auto& [name, reason] : medians.failures()) {
        std::printf("%s did not run: %s\n", name.c_str(), reason.c_str());
    }
    return allMet;
}

}  // namespace stelvan::bench
