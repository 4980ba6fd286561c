// Reading a whole table: every value of every row decoded, against mdb-export writing the same
// table.
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "tests/bench/contest.h"
#include "tests/bench/contestants.h"

namespace stelvan::bench {
namespace {

void readOurs(benchmark::State& state) {
    const auto& file = Files::get().accessFile();
    for (auto _ : state) benchmark::DoNotOptimize(readAll(file));
}

/// Exit status of a program, its output thrown away.
int statusOf(const std::vector<std::string>& command) {
    std::vector<char*> arguments;
    for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    int status = -1;
    if (posix_spawnp(&child, arguments[0], &files, nullptr, arguments.data(), environ) == 0)
        waitpid(child, &status, 0);
    posix_spawn_file_actions_destroy(&files);
    return status;
}

void runProgram(benchmark::State& state, const std::vector<std::string>& command) {
    for (auto _ : state) {
        if (statusOf(command) == 0) continue;
        state.SkipWithError((command.front() + " is not there or failed").c_str());
        return;
    }
}

void dumpOurs(benchmark::State& state) {
    runProgram(state, {STELVAN_BINARY_DIR "/gemdb", "dump", Files::get().accessFile(), kTable});
}

void readMdbExport(benchmark::State& state) {
    runProgram(state, {"mdb-export", Files::get().accessFile(), kTable});
}

BENCHMARK(dumpOurs)->Name("dump all rows, program and all/stelvan")->UseRealTime();
BENCHMARK(readMdbExport)->Name("dump all rows, program and all/mdb-export")->UseRealTime();
BENCHMARK(readOurs)->Name("read all rows/stelvan")->UseRealTime();
BENCHMARK(readMdbExport)->Name("read all rows/mdb-export")->UseRealTime();

}  // namespace
}  // namespace stelvan::bench
