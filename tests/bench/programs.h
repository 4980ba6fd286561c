// Whole programs as contestants: started, waited for, their output thrown away.
#pragma once

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace stelvan::bench {

struct ProgramResult {
    int status = -1;    // exit status; -1 where it could not be started or was killed
    long peakKiB = -1;  // most memory at one time
};

/// The first word is the program, looked for as a shell does.
[[nodiscard]] ProgramResult resultOf(const std::vector<std::string>& command);

/// Runs it once an iteration; statuses up to `highest` are fine.
void runProgram(benchmark::State& state, const std::vector<std::string>& command, int highest = 0);

/// The number that this program prints when it is run with an option and more words; -1 where it
/// prints none.
[[nodiscard]] long answerOfSelf(const std::string& option, const std::vector<std::string>& words);

/// The gemdb of this build.
[[nodiscard]] std::string gemdb();

}  // namespace stelvan::bench
