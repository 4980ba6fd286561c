// Runs the benchmarks and prints one table; exit status 1 where an aim is missed.
//
// With --scan FILE it only reads that file whole, with --peak COMMAND it only runs a program: the
// runs whose memory is measured. A started program counts what its starter had, so that must be
// small.
#include <cstdio>
#include <fstream>
#include <string_view>

#include "tests/bench/contest.h"
#include "tests/bench/contestants.h"
#include "tests/bench/programs.h"

namespace stelvan::bench {
namespace {

/// Peak memory of this process in KiB.
long peakMemory() {
    std::ifstream status("/proc/self/status");
    long kilobytes = -1;
    for (std::string word; status >> word;) {
        if (word == "VmHWM:") status >> kilobytes;
    }
    return kilobytes;
}

/// Reads the file whole and prints the peak of memory.
int scanOnly(const char* file) {
    readAll(file);
    std::printf("%ld\n", peakMemory());
    return 0;
}

int peakOnly(const std::vector<std::string>& command) {
    std::printf("%ld\n", resultOf(command).peakKiB);
    return 0;
}

/// Peak memory, in KiB, of a process of its own that scans `file`.
long scanMemory(const std::filesystem::path& file) {
    return answerOfSelf("--scan", {file.string()});
}

/// Both files are larger than the cache, so the memory should be the same.
void printMemory() {
    const long one = scanMemory(Files::get().accessFile());
    const long four = scanMemory(Files::get().hugeAccessFile());
    std::printf("memory of a scan: %ld KiB over %zu rows, %ld KiB over %zu rows\n", one, kRows,
                four, 4 * kRows);
}

std::vector<Question> questions() {
    return {{"read all rows", "mdb-export", 1.0 / 14, 0, kRows, "row"},
            {"dump all rows, program and all", "mdb-export", 1.0 / 5, 0, kRows, "row"},
            {"insert rows in one unit", "SQLite", 1, 0, kInserted, "row"},
            {"find, change and sync one row", "SQLite", 1, 0, 1, ""},
            {"look up a row by id", "SQLite", 1, 10, 1, ""},
            {"count all rows", "SQLite", 1, 0, 1, ""},
            {"the highest id", "SQLite", 1, 0, 1, ""},
            {"gemdb check", "", 1, 1e6, 1, ""},
            {"gemdb export", "SQLite .dump", 1, 2e6, 1, ""},
            {"gemdb import", "", 1, 2e6, 1, ""},
            {"gemdb diff", "", 1, 2e6, 1, ""},
            {"gemdb doc", "", 1, 5e6, 1, ""},
            {"add an index entry, numbers as given out", "", 1, 1, kEntries, ""},
            {"add an index entry, names in any order", "", 1, 2, kEntries, ""},
            {"open, read one definition, close", "", 1, 200, 1, ""},
            {"click on a category of 60,000 records", "", 1, 100'000, 1, ""}};
}

}  // namespace
}  // namespace stelvan::bench

int main(int argc, char** argv) {
    using namespace stelvan::bench;
    if (argc == 3 && std::string_view(argv[1]) == "--scan") return scanOnly(argv[2]);
    if (argc > 2 && std::string_view(argv[1]) == "--peak") return peakOnly({argv + 2, argv + argc});
    std::vector<char*> arguments(argv, argv + argc);
    // In turns, so that a busy moment of the machine strikes both sides.
    std::string repetitions = "--benchmark_repetitions=7";
    std::string minTime = "--benchmark_min_time=0.3";
    std::string inTurns = "--benchmark_enable_random_interleaving=true";
    arguments.insert(arguments.begin() + 1, {repetitions.data(), minTime.data(), inTurns.data()});
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());

    std::printf("Building the files: %zu variables of 18 columns with three indexes ...\n", kRows);
    std::printf("Access file %.1f MB, SQLite file %.1f MB\n\n",
                static_cast<double>(std::filesystem::file_size(Files::get().accessFile())) / 1e6,
                static_cast<double>(std::filesystem::file_size(Files::get().sqliteFile())) / 1e6);
    MedianReporter medians;
    benchmark::RunSpecifiedBenchmarks(&medians);
    const bool allMet = printTable(questions(), medians);
    printMemory();
    printModelMemory();
    return allMet ? 0 : 1;
}
