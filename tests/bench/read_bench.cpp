// Reading a whole table: every value of every row decoded, against mdb-export writing the same
// table.
#include "tests/bench/contest.h"
#include "tests/bench/contestants.h"
#include "tests/bench/programs.h"

namespace stelvan::bench {
namespace {

void readOurs(benchmark::State& state) {
    const auto& file = Files::get().accessFile();
    for (auto _ : state) benchmark::DoNotOptimize(readAll(file));
}

void dumpOurs(benchmark::State& state) {
    runProgram(state, {gemdb(), "dump", Files::get().accessFile(), kTable});
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
