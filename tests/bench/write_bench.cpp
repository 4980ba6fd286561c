// Writing, with every commit on the disk, against SQLite with its rollback journal on the same
// rows.
#include <array>
#include <chrono>

#include "tests/bench/contest.h"
#include "tests/bench/contestants.h"

namespace stelvan::bench {
namespace {

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

void insertOurs(benchmark::State& state) {
    for (auto _ : state) {
        jet::Database database =
            jet::Database::open(Files::get().copyOf(Files::get().accessFile()));
        jet::Table& table = database.table(kTable);
        const auto& rows = newRows(table.info());
        const auto start = Clock::now();
        jet::UnitOfWork unit(database);
        for (const auto& row : rows) table.insert(row);
        unit.commit();
        state.SetIterationTime(secondsSince(start));
    }
}

void insertSqlite(benchmark::State& state) {
    jet::Database access = jet::Database::open(Files::get().accessFile(), jet::Access::ReadOnly);
    const jet::TableInfo table = access.table(kTable).info();
    const auto& rows = newRows(table);
    for (auto _ : state) {
        Sqlite sqlite(Files::get().copyOf(Files::get().sqliteFile()));
        sqlite3_stmt* insert = sqlite.prepare(insertText(table.columns.size()));
        const auto start = Clock::now();
        sqlite.run("BEGIN");
        for (const auto& row : rows) {
            bindRow(insert, row);
            if (sqlite3_step(insert) != SQLITE_DONE) state.SkipWithError("SQLite refused a row");
            sqlite3_reset(insert);
        }
        sqlite.run("COMMIT");
        state.SetIterationTime(secondsSince(start));
    }
}

/// Identifiers all over the table, the same for both.
std::int32_t idOf(std::size_t step) {
    return static_cast<std::int32_t>(101 + step * 7919 % kRows);
}

void changeOurs(benchmark::State& state) {
    jet::Database database = jet::Database::open(Files::get().copyOf(Files::get().accessFile()));
    jet::Table& table = database.table(kTable);
    const jet::TableInfo info = table.info();
    const std::size_t id = info.findColumn("var_id").value();
    const std::size_t value = info.findColumn("var_val").value();
    std::size_t primary = 0;
    while (!info.indexes[primary].primary) ++primary;
    std::size_t step = 0;
    for (auto _ : state) {
        jet::UnitOfWork unit(database);
        const auto found = table.find(primary, std::array{jet::Value(idOf(step))}, {id});
        if (!found->next()) state.SkipWithError("no such row");
        table.update(found->rowId(), std::array{jet::ColumnValue{value, std::to_string(step)}});
        unit.commit();
        ++step;
    }
}

void changeSqlite(benchmark::State& state) {
    Sqlite sqlite(Files::get().copyOf(Files::get().sqliteFile()));
    sqlite3_stmt* update = sqlite.prepare("UPDATE secs_cusvar SET var_val = ? WHERE var_id = ?");
    std::size_t step = 0;
    for (auto _ : state) {
        const std::string value = std::to_string(step);
        sqlite3_bind_text(update, 1, value.data(), static_cast<int>(value.size()), SQLITE_STATIC);
        sqlite3_bind_int(update, 2, idOf(step));
        if (sqlite3_step(update) != SQLITE_DONE) state.SkipWithError("SQLite refused the change");
        sqlite3_reset(update);
        ++step;
    }
}

BENCHMARK(insertOurs)->Name("insert rows in one unit/stelvan")->UseManualTime()->Iterations(1);
BENCHMARK(insertSqlite)->Name("insert rows in one unit/SQLite")->UseManualTime()->Iterations(1);
BENCHMARK(changeOurs)->Name("find, change and sync one row/stelvan")->UseRealTime();
BENCHMARK(changeSqlite)->Name("find, change and sync one row/SQLite")->UseRealTime();

}  // namespace
}  // namespace stelvan::bench
