// Units of work on rows, long values, indexes and a relationship, interrupted at every operation:
// rows and structure are as before or as after, by reading them back and by the checker of the
// format.

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <vector>

#include "jet/check/check.h"
#include "jet/database.h"
#include "tests/crash/child_process.h"
#include "tests/crash/faulty_file_system.h"
#include "tests/crash/interruption.h"
#include "tests/crash/table_parts.h"
#include "tests/support/models.h"

namespace stelvan::test {
namespace {

namespace fs = std::filesystem;
using jet::ColumnType;
using jet::ColumnValue;
using jet::Database;
using jet::Value;

constexpr std::size_t kId = 0;
constexpr std::size_t kName = 1;
constexpr std::size_t kText = 2;
constexpr std::size_t kParent = 2;
constexpr int kPowerCuts = 3;

/// A text that only this row and version has, of any length.
std::string textOf(int id, int version, std::size_t length) {
    std::string text = "row " + std::to_string(id) + " version " + std::to_string(version) + " ";
    while (text.size() < length)
        text += static_cast<char>('a' + (text.size() * 7 + text.size() / 11) % 26);
    return text;
}

/// Reports, and the variables of each: enough rows that the indexes have several pages.
void build(const fs::path& path) {
    Database database = Database::create(path, {42000.5});
    jet::TableSpec reports{"Reports", {}, {}};
    reports.columns = {column("id", ColumnType::Long), column("name", ColumnType::Text, 240),
                       column("text", ColumnType::Memo)};
    reports.indexes = {index("PrimaryKey", kId, true), index("name", kName)};
    database.createTable(reports);
    jet::TableSpec links{"Links", {}, {}};
    links.columns = {column("id", ColumnType::Long), column("name", ColumnType::Text, 240),
                     column("report", ColumnType::Long)};
    links.indexes = {index("PrimaryKey", kId, true), index("name", kName)};
    database.createTable(links);
    database.createRelationship(
        {"ReportsLinks", "Reports", {"id"}, "Links", {"report"}, true, false, false});

    jet::UnitOfWork unit(database);
    for (int id = 1; id <= 120; ++id) {
        const std::size_t length = id % 10 == 0 ? 9000 : id % 3 == 0 ? 1500 : 20;
        database.table("Reports").insert(std::vector<ColumnValue>{
            {kId, id}, {kName, textOf(id, 1, 80)}, {kText, textOf(id, 1, length)}});
        database.table("Links").insert(
            std::vector<ColumnValue>{{kId, id}, {kName, textOf(id, 1, 60)}, {kParent, id}});
    }
    unit.commit();
}

jet::RowId rowOf(jet::Table& table, int id) {
    const std::vector<Value> key{id};
    const auto row = table.find(0, key, {kId});
    if (!row->next()) throw std::runtime_error("row " + std::to_string(id) + " is gone");
    return row->rowId();
}

/// Some of everything: link rows before their report, long values that come, grow, shrink and go.
void changeMuch(Database& database) {
    jet::UnitOfWork unit(database);
    jet::Table& links = database.table("Links");
    jet::Table& reports = database.table("Reports");
    for (int id = 201; id <= 215; ++id) {
        links.insert(
            std::vector<ColumnValue>{{kId, id}, {kName, textOf(id, 2, 90)}, {kParent, id}});
        reports.insert(std::vector<ColumnValue>{{kId, id},
                                                {kName, textOf(id, 2, 90)},
                                                {kText, textOf(id, 2, id % 5 == 0 ? 12000 : 700)}});
    }
    for (const int id : {3, 10, 40, 77}) {
        const std::size_t length = id == 10 ? 30 : 5000;
        reports.update(rowOf(reports, id), std::vector<ColumnValue>{{kText, textOf(id, 2, length)},
                                                                    {kName, textOf(id, 2, 100)}});
    }
    for (const int id : {20, 21, 22, 60}) {
        links.erase(rowOf(links, id));
        reports.erase(rowOf(reports, id));
    }
    unit.commit();
}

using Rows = std::map<std::int64_t, std::vector<Value>>;
using Content = std::map<std::string, Rows>;

Content read(Database& database) {
    Content content;
    for (const std::string& name : database.tableNames()) {
        const auto row = database.table(name).scan({0, 1, 2});
        while (row->next()) {
            std::vector<Value>& values = content[name][row->rowId().packed()];
            for (std::size_t i = 0; i < 3; ++i) values.push_back(toValue(row->value(i)));
        }
    }
    return content;
}

std::string faultsOf(const fs::path& path) {
    std::string text;
    for (const jet::Finding& finding : jet::check(path, {.strict = true}))
        text += "page " + std::to_string(finding.page) + ": " + finding.text + "\n";
    return text;
}

class InterruptedUnit : public ::testing::TestWithParam<Fault> {
protected:
    void SetUp() override {
        build(original_);
        before_ = inspect(freshCopy());
        const fs::path changed = freshCopy();
        FaultyFileSystem files;
        const FileSystemOverride use(files);
        Database database = Database::open(changed);
        const std::uint64_t opened = files.operations();
        changeMuch(database);
        operations_ = files.operations() - opened;
        after_ = read(database);
        ASSERT_NE(before_, after_);
    }

    fs::path freshCopy() {
        const fs::path folder = scratch_.path() / "work";
        fs::remove_all(folder);
        fs::create_directory(folder);
        fs::copy_file(original_, folder / "gem.mdb");
        return folder / "gem.mdb";
    }

    /// What a new process finds; it must be sound.
    static Content inspect(const fs::path& path) {
        FaultyFileSystem sound;
        const jet::FileSystemOverride use(sound);
        Content content;
        {
            Database database = Database::open(path);
            content = read(database);
        }
        EXPECT_EQ(faultsOf(path), "");
        return content;
    }

    void expectBeforeOrAfter(const Content& found, bool beforeAllowed, bool afterAllowed,
                             const std::string& where) const {
        const bool before = found == before_;
        const bool after = found == after_;
        EXPECT_TRUE((before && beforeAllowed) || (after && afterAllowed))
            << where
            << (before  ? ": as before"
                : after ? ": as after"
                        : ": neither");
    }

    using FileSystemOverride = jet::FileSystemOverride;
    ScratchDir scratch_;
    fs::path original_ = scratch_.path() / "original.mdb";
    Content before_;
    Content after_;
    std::uint64_t operations_ = 0;
};

TEST_P(InterruptedUnit, LeavesRowsAndStructureAsBeforeOrAsAfter) {
    ASSERT_GT(operations_, 20u);
    for (std::uint64_t n = 1; n <= operations_; ++n) {
        const std::string where = "operation " + std::to_string(n);
        const fs::path path = freshCopy();
        FaultyFileSystem files;
        Outcome outcome = Outcome::Done;
        {
            const FileSystemOverride use(files);
            Database database = Database::open(path);
            files.startOver(n, GetParam());
            outcome = outcomeOf([&] { changeMuch(database); });
        }
        for (std::uint32_t seed = 0; seed < kPowerCuts; ++seed) {
            const fs::path folder = scratch_.path() / "cut";
            fs::remove_all(folder);
            files.powerCut(folder, static_cast<std::uint32_t>(n * 100 + seed));
            expectBeforeOrAfter(inspect(folder / "gem.mdb"), mayBeBefore(outcome), true,
                                where + ", power cut " + std::to_string(seed));
        }
        expectBeforeOrAfter(inspect(path), mayBeBefore(outcome), mayBeAfter(outcome, GetParam()),
                            where);
    }
}

class FailedUnit : public InterruptedUnit {};

TEST_P(FailedUnit, CanBeDoneAgainByTheSameProgram) {
    for (std::uint64_t n = 1; n <= operations_; n += 3) {
        const std::string where = "operation " + std::to_string(n);
        const fs::path path = freshCopy();
        {
            FaultyFileSystem files;
            const FileSystemOverride use(files);
            Database database = Database::open(path);
            files.startOver(n, GetParam());
            const Outcome outcome = outcomeOf([&] { changeMuch(database); });
            files.failAt(0, GetParam());
            const Content now = read(database);
            expectBeforeOrAfter(now, mayBeBefore(outcome), mayBeAfter(outcome, GetParam()), where);
            if (now == before_) changeMuch(database);
        }
        EXPECT_EQ(inspect(path), after_) << where;
    }
}

INSTANTIATE_TEST_SUITE_P(EveryFault, InterruptedUnit, ::testing::ValuesIn(kEveryFault));
INSTANTIATE_TEST_SUITE_P(EveryFailure, FailedUnit, ::testing::ValuesIn(kEveryFailure));

/// One unit: a report with its link, or both gone again, and the text of a third changed.
void changeAtRandom(Database& database, std::mt19937& random) {
    const int id = std::uniform_int_distribution<int>(1000, 1060)(random);
    const auto length = std::uniform_int_distribution<std::size_t>(10, 9000)(random);
    jet::UnitOfWork unit(database);
    jet::Table& links = database.table("Links");
    jet::Table& reports = database.table("Reports");
    const std::vector<Value> key{id};
    const bool present = reports.find(0, key, {kId})->next();
    if (present) {
        links.erase(rowOf(links, id));
        reports.erase(rowOf(reports, id));
    } else {
        links.insert(
            std::vector<ColumnValue>{{kId, id}, {kName, textOf(id, 3, 70)}, {kParent, id}});
        reports.insert(std::vector<ColumnValue>{
            {kId, id}, {kName, textOf(id, 3, 70)}, {kText, textOf(id, 3, length)}});
    }
    const int other = std::uniform_int_distribution<int>(1, 120)(random);
    reports.update(rowOf(reports, other),
                   std::vector<ColumnValue>{{kText, textOf(other, id, length)}});
    unit.commit();
}

TEST(KilledProcess, LeavesADatabaseWithoutFaultsAndEveryReportWithItsLink) {
    const ScratchDir scratch;
    const fs::path path = scratch.path() / "gem.mdb";
    build(path);
    std::mt19937 random(3);
    const SharedNumber units;
    std::uint64_t wanted = 0;
    for (std::uint32_t round = 0; round < 25; ++round) {
        const std::uint64_t goal = *units + round % 4;
        wanted += round % 4;
        Child writer([&] {
            std::mt19937 own(round);
            Database database = Database::open(path);
            for (;; ++*units) changeAtRandom(database, own);
            return true;
        });
        EXPECT_TRUE(writer.runsUntil(units, goal)) << "round " << round;
        std::this_thread::sleep_for(
            std::chrono::microseconds(std::uniform_int_distribution<int>(0, 12000)(random)));
        writer.kill();
        {
            Database database = Database::open(path);
            Content content = read(database);
            EXPECT_EQ(content["Reports"].size(), content["Links"].size()) << "round " << round;
        }
        EXPECT_EQ(faultsOf(path), "") << "round " << round;
    }
    EXPECT_GE(*units, wanted);
}

}  // namespace
}  // namespace stelvan::test
