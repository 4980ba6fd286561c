// Small questions: opening a file, finding one row by its identifier, and what a click on a
// category costs.
#include <array>

#include "db/connection.h"
#include "db/current_records.h"
#include "jet/rows/row_reader.h"
#include "sql/engine.h"
#include "tests/bench/contest.h"
#include "tests/bench/contestants.h"

namespace stelvan::bench {
namespace {

void openOurs(benchmark::State& state) {
    const auto& file = Files::get().accessFile();
    for (auto _ : state) {
        jet::Database database = jet::Database::open(file, jet::Access::ReadOnly);
        benchmark::DoNotOptimize(database.table(kTable).info().rows);
    }
}

void lookupOurs(benchmark::State& state) {
    jet::Database database = jet::Database::open(Files::get().accessFile(), jet::Access::ReadOnly);
    jet::Table& table = database.table(kTable);
    const jet::TableInfo info = table.info();
    const jet::ColumnSet all = jet::allColumns(info);
    std::size_t primary = 0;
    while (!info.indexes[primary].primary) ++primary;
    std::size_t step = 0;
    for (auto _ : state) {
        const auto id = static_cast<std::int32_t>(101 + step++ * 7919 % kRows);
        const auto found = table.find(primary, std::array{jet::Value(id)}, all);
        if (!found->next()) state.SkipWithError("no such row");
        benchmark::DoNotOptimize(found->value(1));
    }
}

void lookupSqlite(benchmark::State& state) {
    Sqlite sqlite(Files::get().sqliteFile());
    sqlite3_stmt* select = sqlite.prepare("SELECT * FROM secs_cusvar WHERE var_id = ?");
    std::size_t step = 0;
    for (auto _ : state) {
        sqlite3_bind_int(select, 1, static_cast<int>(101 + step++ * 7919 % kRows));
        if (sqlite3_step(select) != SQLITE_ROW) state.SkipWithError("no such row");
        benchmark::DoNotOptimize(sqlite3_column_text(select, 1));
        sqlite3_reset(select);
    }
}

/// What the window asks for: the record set of all variables of one type, its count, and the texts
/// of its first record.
void clickOurs(benchmark::State& state) {
    const db::DataSource category{"Provider=Microsoft.Jet.OLEDB.4.0;Mode=Read|Write;Data Source=" +
                                      Files::get().accessFile().string(),
                                  "SELECT * FROM secs_cusvar WHERE var_type = 'SV'"};
    for (auto _ : state) {
        const std::shared_ptr<db::Recordset> records = category.refresh();
        benchmark::DoNotOptimize(records->recordCount());
        for (std::size_t field = 0; field < records->fieldCount(); ++field) {
            benchmark::DoNotOptimize(records->field(field));
        }
    }
}

constexpr const char* kCount = "SELECT COUNT(*) FROM secs_cusvar";
constexpr const char* kGreatest = "SELECT MAX(var_id) FROM secs_cusvar";

void askOurs(benchmark::State& state, const char* sql) {
    jet::Database database = jet::Database::open(Files::get().accessFile(), jet::Access::ReadOnly);
    sql::Engine engine(database);
    for (auto _ : state) benchmark::DoNotOptimize(engine.select(sql));
}

void askSqlite(benchmark::State& state, const char* sql) {
    Sqlite sqlite(Files::get().sqliteFile());
    for (auto _ : state) sqlite.run(sql);
}

BENCHMARK_CAPTURE(askOurs, count, kCount)->Name("count all rows/stelvan")->UseRealTime();
BENCHMARK_CAPTURE(askSqlite, count, kCount)->Name("count all rows/SQLite")->UseRealTime();
BENCHMARK_CAPTURE(askOurs, max, kGreatest)->Name("the highest id/stelvan")->UseRealTime();
BENCHMARK_CAPTURE(askSqlite, max, kGreatest)->Name("the highest id/SQLite")->UseRealTime();
BENCHMARK(clickOurs)->Name("click on a category of 60,000 records/stelvan")->UseRealTime();
BENCHMARK(openOurs)->Name("open, read one definition, close/stelvan")->UseRealTime();
BENCHMARK(lookupOurs)->Name("look up a row by id/stelvan")->UseRealTime();
BENCHMARK(lookupSqlite)->Name("look up a row by id/SQLite")->UseRealTime();

}  // namespace
}  // namespace stelvan::bench
