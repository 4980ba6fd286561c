// The verbs of gemdb over a whole model, program and all: 100,000 variables with 2,000 events,
// alarms and reports, and the standard's items.
#include <cstdio>

#include "tests/bench/contest.h"
#include "tests/bench/contestants.h"
#include "tests/bench/programs.h"

namespace stelvan::bench {
namespace {

const std::filesystem::path& model() {
    return Files::get().modelFile();
}

std::string beside(const char* name) {
    return (model().parent_path() / name).string();
}

/// The model as texts; made once.
const std::string& texts() {
    static const std::string kFolder = [] {
        const std::string folder = beside("texts");
        (void)resultOf({gemdb(), "export", model(), folder});
        return folder;
    }();
    return kFolder;
}

// The same tables without rows of the equipment's own.
const std::filesystem::path& standardAlone() {
    return Files::get().standardFile();
}

void check(benchmark::State& state) {
    runProgram(state, {gemdb(), "check", model()}, 1);
}
void exportTexts(benchmark::State& state) {
    runProgram(state, {gemdb(), "export", model(), beside("export")});
}
void importTexts(benchmark::State& state) {
    const std::string folder = texts();
    for (auto _ : state) {
        state.PauseTiming();
        const std::string file = Files::get().copyOf(standardAlone());
        state.ResumeTiming();
        if (resultOf({gemdb(), "import", folder, file}).status == 0) continue;
        state.SkipWithError("gemdb import failed");
        return;
    }
}
void diff(benchmark::State& state) {
    runProgram(state, {gemdb(), "diff", model(), texts()}, 1);
}
void doc(benchmark::State& state) {
    runProgram(state, {gemdb(), "doc", model(), "-o", beside("manual.html")});
}
void sqliteDump(benchmark::State& state) {
    runProgram(state, {"sqlite3", Files::get().sqliteFile(), ".dump"});
}

BENCHMARK(check)->Name("gemdb check/stelvan")->UseRealTime();
BENCHMARK(exportTexts)->Name("gemdb export/stelvan")->UseRealTime();
BENCHMARK(sqliteDump)->Name("gemdb export/SQLite .dump")->UseRealTime();
BENCHMARK(importTexts)->Name("gemdb import/stelvan")->UseRealTime();
BENCHMARK(diff)->Name("gemdb diff/stelvan")->UseRealTime();
BENCHMARK(doc)->Name("gemdb doc/stelvan")->UseRealTime();

}  // namespace

void printModelMemory() {
    const std::string file = Files::get().copyOf(standardAlone());
    const std::vector<std::vector<std::string>> verbs = {
        {gemdb(), "check", model()},
        {gemdb(), "export", model(), beside("export")},
        {gemdb(), "import", texts(), file},
        {gemdb(), "diff", model(), texts()},
        {gemdb(), "doc", model(), "-o", beside("manual.html")}};
    for (const auto& verb : verbs)
        std::printf("memory of gemdb %s: %ld KiB\n", verb[1].c_str(), answerOfSelf("--peak", verb));
}

}  // namespace stelvan::bench
