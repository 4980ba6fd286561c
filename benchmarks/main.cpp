// Runs the benchmarks and prints one table; exit status 1 where an aim is missed.
//
// With --scan FILE it only reads that file whole: the run whose memory is measured.
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <numeric>
#include <string_view>

#include "benchmarks/contest.h"
#include "benchmarks/contestants.h"

namespace stelvan::bench {
namespace {

int scanOnly(const char* file) {
    jet::Database database = jet::Database::open(file, jet::Access::ReadOnly);
    jet::Table& table = database.table(kTable);
    jet::ColumnSet all(table.info().columns.size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    const auto rows = table.scan(all);
    while (rows->next()) {
        for (const std::size_t column : all) benchmark::DoNotOptimize(rows->value(column));
    }
    return 0;
}

/// Peak memory, in KiB, of a process of its own that scans `file`.
long scanMemory(const std::filesystem::path& file) {
    const std::string path = file.string();
    const char* const arguments[] = {"/proc/self/exe", "--scan", path.c_str(), nullptr};
    pid_t child = 0;
    int status = -1;
    rusage usage{};
    if (posix_spawn(&child, arguments[0], nullptr, nullptr, const_cast<char* const*>(arguments), environ) ==
        0) {
        wait4(child, &status, 0, &usage);
    }
    return status == 0 ? usage.ru_maxrss : -1;
}

void printMemory() {
    const long small = scanMemory(Files::get().smallAccessFile());
    const long large = scanMemory(Files::get().accessFile());
    std::printf("memory of a scan: %ld KiB over %zu rows, %ld KiB over %zu rows\n", small, kRows / 10, large,
                kRows);
}

std::vector<Question> questions() {
    return {{"read all rows", "mdb-export", 1.0 / 14, 0, kRows, "row"},
            {"insert rows in one unit", "SQLite", 1, 0, kInserted, "row"},
            {"find, change and sync one row", "SQLite", 1, 0, 1, ""},
            {"look up a row by id", "SQLite", 1, 10, 1, ""},
            {"open, read one definition, close", "", 1, 200, 1, ""},
            {"click on a category of 60,000 records", "", 1, 100'000, 1, ""}};
}

}  // namespace
}  // namespace stelvan::bench

int main(int argc, char** argv) {
    using namespace stelvan::bench;
    if (argc == 3 && std::string_view(argv[1]) == "--scan") return scanOnly(argv[2]);
    std::vector<char*> arguments(argv, argv + argc);
    std::string repetitions = "--benchmark_repetitions=5";
    std::string context = "--benchmark_min_time=0.2";
    arguments.insert(arguments.begin() + 1, {repetitions.data(), context.data()});
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
    return allMet ? 0 : 1;
}
