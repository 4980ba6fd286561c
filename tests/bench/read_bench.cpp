// Reading a whole table: every value of every row decoded, against mdb-export writing the same
// table.
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/bench/contest.h"
#include "tests/bench/contestants.h"

namespace stelvan::bench {
namespace {

void readOurs(benchmark::State& state) {
    const auto& file = Files::get().accessFile();
    for (auto _ : state) benchmark::DoNotOptimize(readAll(file));
}

/// Exit status of mdb-export over the table, its output thrown away.
int exportAll(const std::filesystem::path& file) {
    const std::string path = file.string();
    const char* const arguments[] = {"mdb-export", path.c_str(), kTable, nullptr};
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    int status = -1;
    if (posix_spawnp(&child, arguments[0], &files, nullptr, const_cast<char* const*>(arguments),
                     environ) == 0) {
        waitpid(child, &status, 0);
    }
    posix_spawn_file_actions_destroy(&files);
    return status;
}

void readMdbExport(benchmark::State& state) {
    const auto& file = Files::get().accessFile();
    for (auto _ : state) {
        if (exportAll(file) != 0) {
            state.SkipWithError("mdb-export (package mdbtools) is not there or failed");
            return;
        }
    }
}

BENCHMARK(readOurs)->Name("read all rows/stelvan")->UseRealTime();
BENCHMARK(readMdbExport)->Name("read all rows/mdb-export")->UseRealTime();

}  // namespace
}  // namespace stelvan::bench
