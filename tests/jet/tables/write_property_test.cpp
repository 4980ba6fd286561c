// Long random sequences of changes, compared with a plain model after every unit of work.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>

#include "jet/check/check.h"
#include "jet/database.h"
#include "tests/jet/tables/table_model.h"
#include "tests/support/models.h"

namespace stelvan::test {
namespace {

using jet::ColumnType;
using jet::Database;
using jet::TableSpec;
using jet::UnitOfWork;

jet::ColumnInfo column(std::string name, ColumnType type, std::uint16_t length = 0,
                       bool compressed = true) {
    jet::ColumnInfo info;
    info.name = std::move(name);
    info.type = type;
    info.length = length;
    info.compressed = compressed;
    return info;
}

jet::IndexInfo index(std::string name, std::vector<jet::IndexColumn> columns, bool unique = false) {
    jet::IndexInfo info;
    info.name = std::move(name);
    info.columns = std::move(columns);
    info.unique = unique;
    return info;
}

TableSpec modelLike() {
    TableSpec spec{"ModelLike", {}, {}};
    spec.columns = {column("id", ColumnType::Long),      column("name", ColumnType::Text, 200),
                    column("note", ColumnType::Memo),    column("set", ColumnType::Boolean),
                    column("level", ColumnType::Double), column("code", ColumnType::Long)};
    spec.columns[0].autoNumber = true;
    spec.columns[1].required = true;
    spec.columns[1].allowZeroLength = false;
    spec.indexes = {index("PrimaryKey", {{0, true}}), index("name", {{1, true}}, true),
                    index("code", {{5, false}, {0, true}})};
    spec.indexes[0].primary = true;
    return spec;
}

TableSpec everyType() {
    TableSpec spec{"EveryType", {}, {}};
    spec.columns = {column("byte", ColumnType::Byte),
                    column("integer", ColumnType::Integer),
                    column("long", ColumnType::Long),
                    column("money", ColumnType::Money),
                    column("single", ColumnType::Single),
                    column("double", ColumnType::Double),
                    column("date", ColumnType::DateTime),
                    column("binary", ColumnType::Binary, 40),
                    column("plain", ColumnType::Text, 100, false),
                    column("ole", ColumnType::Ole),
                    column("memo", ColumnType::Memo),
                    column("plainMemo", ColumnType::Memo, 0, false),
                    column("guid", ColumnType::Guid),
                    column("decimal", ColumnType::Numeric),
                    column("flag", ColumnType::Boolean)};
    spec.columns[13].precision = 20;
    spec.columns[13].scale = 3;
    spec.indexes = {index("byte", {{0, true}}),
                    index("integerDown", {{1, false}}),
                    index("moneyDate", {{3, true}, {6, false}}),
                    index("textFlag", {{8, true}, {14, true}}),
                    index("guid", {{12, false}}),
                    index("decimal", {{13, true}}),
                    index("binary", {{7, true}}),
                    index("skipNulls", {{2, true}})};
    spec.indexes.back().ignoreNulls = true;
    return spec;
}

TableSpec tiny() {
    TableSpec spec{"Tiny", {}, {}};
    spec.columns = {column("a", ColumnType::Boolean), column("b", ColumnType::Byte),
                    column("c", ColumnType::Boolean)};
    return spec;
}

TableSpec wide() {
    TableSpec spec{"Wide", {}, {}};
    for (int i = 0; i < 12; ++i)
        spec.columns.push_back(column("t" + std::to_string(i), ColumnType::Text, 510, i % 2 == 0));
    spec.indexes = {index("first", {{0, true}}), index("all", {{1, true}, {2, false}, {3, true}})};
    return spec;
}

/// Every fault that a check of the whole structure finds, one a line.
std::string faults(const std::filesystem::path& path, bool strict) {
    std::string text;
    for (const jet::Finding& finding : jet::check(path, {strict})) {
        if (!finding.isNote)
            text += "page " + std::to_string(finding.page) + ": " + finding.text + "\n";
    }
    return text;
}

/// Units of random length, some of them rolled back, on one table.
void runUnits(Database& database, const std::string& table, unsigned seed, int units,
              std::size_t longest, bool strict) {
    Random random(seed);
    TableModel model(database.table(table));
    for (int unit = 0; unit < units && !testing::Test::HasFatalFailure(); ++unit) {
        SCOPED_TRACE(table + " unit " + std::to_string(unit));
        const auto before = model.rows();
        const bool keep = below(random, 4) != 0;
        {
            UnitOfWork work(database);
            for (std::size_t i = 0, count = 1 + below(random, longest); i < count; ++i)
                model.change(random);
            if (keep) work.commit();
        }
        if (!keep) model.restore(before);
        // A change of its own, outside of any unit.
        if (below(random, 3) == 0) model.change(random);
        if (unit % 5 != 0 && unit + 1 != units) continue;
        model.compare();
        ASSERT_EQ(faults(database.path(), strict), "");
    }
}

class RandomChanges : public testing::TestWithParam<TableSpec> {};

TEST_P(RandomChanges, KeepTableAndModelEqual) {
    ScratchDir scratch;
    const auto path = scratch.path() / "new.mdb";
    {
        Database database = Database::create(path, jet::DateTime{45000});
        database.createTable(GetParam());
        runUnits(database, GetParam().name, 7, 80, 50, true);
    }
    Database again = Database::open(path);
    TableModel reread(again.table(GetParam().name));
    reread.compare();
}

INSTANTIATE_TEST_SUITE_P(Schemas, RandomChanges,
                         testing::Values(modelLike(), everyType(), tiny(), wide()),
                         [](const auto& parameter) { return parameter.param.name; });

class RandomChangesOfModel : public testing::TestWithParam<ModelFile> {};

TEST_P(RandomChangesOfModel, KeepTablesAndModelsEqual) {
    STELVAN_NEEDS_FILE(GetParam());
    ScratchDir scratch;
    Database database = Database::open(scratch.copyOf(GetParam().path()));
    unsigned seed = 100;
    for (const std::string& name : database.tableNames()) {
        const auto& info = database.table(name).info();
        const bool related =
            std::ranges::any_of(info.indexes, [](const auto& i) { return i.foreign; });
        if (!related) runUnits(database, name, ++seed, 6, 40, false);
    }
}

INSTANTIATE_TEST_SUITE_P(Models, RandomChangesOfModel,
                         testing::ValuesIn(byEveryMaker(
                             {"gem.mdb", "gem_int_flags.mdb", "gem_empty.mdb", "gem_edges.mdb",
                              "shapes/compressed_text.mdb", "shapes/deleted_columns.mdb",
                              "shapes/deleted_rows.mdb", "shapes/descending_index.mdb",
                              "shapes/index_cursor.mdb", "shapes/long_memo.mdb",
                              "shapes/no_rows.mdb", "shapes/numeric.mdb", "shapes/overflow.mdb",
                              "shapes/text_index_empty.mdb"})),
                         [](const auto& file) { return label(file.param); });

}  // namespace
}  // namespace stelvan::test
