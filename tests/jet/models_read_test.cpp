// Every model file read whole, and compared with what it is known to hold.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <random>

#include "jet/database.h"
#include "tests/jet/file_bytes.h"
#include "tests/jet/row_text.h"
#include "tests/support/model_names.h"
#include "tests/support/models.h"

namespace stelvan::test {
namespace {

namespace fs = std::filesystem;
using jet::Access;
using jet::Database;
using jet::ErrorKind;

std::vector<ModelFile> everyFile() {
    std::vector<ModelFile> files = byEveryMaker(allNames({"gem_large.mdb"}));
    files.push_back({"gem_spellings.mdb", Maker::Own});
    files.push_back({"gem_few_columns.mdb", Maker::Own});
    return files;
}

std::string nameOf(const testing::TestParamInfo<ModelFile>& info) {
    return label(info.param);
}

class EveryFile : public testing::TestWithParam<ModelFile> {
protected:
    void SetUp() override { STELVAN_NEEDS_FILE(GetParam()); }

    Database open() { return Database::open(scratch_.copyOf(GetParam().path())); }

private:
    ScratchDir scratch_;
};
class EveryFileOfOtherMakers : public EveryFile {};

INSTANTIATE_TEST_SUITE_P(Models, EveryFile, testing::ValuesIn(everyFile()), nameOf);
INSTANTIATE_TEST_SUITE_P(Models, EveryFileOfOtherMakers,
                         testing::ValuesIn(byOtherMakers(shapeNames())), nameOf);

std::string typeName(jet::ColumnType type) {
    switch (type) {
        case jet::ColumnType::Boolean:
            return "BOOLEAN";
        case jet::ColumnType::Integer:
            return "INT";
        case jet::ColumnType::Long:
            return "LONG";
        case jet::ColumnType::Single:
            return "FLOAT";
        case jet::ColumnType::Double:
            return "DOUBLE";
        case jet::ColumnType::Money:
            return "MONEY";
        case jet::ColumnType::DateTime:
            return "SHORT_DATE_TIME";
        case jet::ColumnType::Memo:
            return "MEMO";
        case jet::ColumnType::Ole:
            return "OLE";
        case jet::ColumnType::Numeric:
            return "NUMERIC";
        case jet::ColumnType::Text:
            return "TEXT";
        default:
            return "other";
    }
}

nlohmann::json describeColumn(const jet::ColumnInfo& column) {
    nlohmann::json json = {{"name", column.name}, {"type", typeName(column.type)}};
    if (column.type == jet::ColumnType::Text) {
        json["chars"] = column.length / 2;
    } else if (column.type != jet::ColumnType::Memo && column.type != jet::ColumnType::Ole) {
        json["bytes"] = column.length;
    }
    if (column.type == jet::ColumnType::Text || column.type == jet::ColumnType::Memo) {
        json["compressed"] = column.compressed;
    }
    if (column.type == jet::ColumnType::Numeric) {
        json["precision"] = column.precision;
        json["scale"] = column.scale;
    }
    if (column.autoNumber) json["auto"] = true;
    return json;
}

nlohmann::json describeIndex(const jet::TableInfo& table, const jet::IndexInfo& index) {
    nlohmann::json columns = nlohmann::json::array();
    for (const auto& part : index.columns) {
        columns.push_back(
            {{"name", table.columns[part.column].name}, {"ascending", part.ascending}});
    }
    return {{"name", index.name},         {"primary", index.primary},
            {"unique", index.unique},     {"ignoreNulls", index.ignoreNulls},
            {"required", index.required}, {"foreign", index.foreign},
            {"columns", columns}};
}

nlohmann::json sorted(nlohmann::json list) {
    std::sort(list.begin(), list.end());
    return list;
}

nlohmann::json describeTable(const jet::TableInfo& table) {
    nlohmann::json columns = nlohmann::json::array();
    for (const auto& column : table.columns) columns.push_back(describeColumn(column));
    nlohmann::json indexes = nlohmann::json::array();
    for (const auto& index : table.indexes) indexes.push_back(describeIndex(table, index));
    return {{"table", table.name},
            {"rows", table.rows},
            {"columns", columns},
            {"indexes", sorted(indexes)}};
}

nlohmann::json describeRelationship(const jet::RelationshipInfo& relationship) {
    return {{"relationship", relationship.name},
            {"from", relationship.parentTable},
            {"fromColumns", relationship.parentColumns},
            {"to", relationship.childTable},
            {"toColumns", relationship.childColumns},
            {"enforced", relationship.enforced},
            {"cascadeUpdates", relationship.cascadeUpdates},
            {"cascadeDeletes", relationship.cascadeDeletes}};
}

TEST_P(EveryFile, HoldsTheRowsThatAreExpected) {
    fs::path known = GetParam().expected("jsonl");
    if (known.empty()) known = GetParam().expected("jsonl.gz");
    Database database = open();
    const RowTexts expected = expectedRows(known);
    const RowTexts found = readAll(database);
    for (const auto& [table, rows] : expected) {
        ASSERT_TRUE(found.contains(table)) << table;
        EXPECT_EQ(difference(rows, found.at(table)), "") << table;
    }
    EXPECT_EQ(found.size(), expected.size());
}

TEST_P(EveryFile, HasTheSchemaThatIsExpected) {
    Database database = open();
    std::set<std::string> expected;
    for (const std::string& line : linesIn(GetParam().expected("schema.jsonl"))) {
        nlohmann::json json = nlohmann::json::parse(line);
        if (json.contains("indexes")) json["indexes"] = sorted(json["indexes"]);
        expected.insert(json.dump());
    }
    std::set<std::string> found;
    for (const std::string& name : database.tableNames())
        found.insert(describeTable(database.table(name).info()).dump());
    for (const auto& relationship : database.relationships()) {
        const bool user = !database.table(relationship.parentTable).info().system;
        if (user) found.insert(describeRelationship(relationship).dump());
    }
    EXPECT_EQ(found, expected);
}

bool leavesOutNulls(const jet::TableInfo& info, const jet::IndexInfo& index, jet::Cursor& row) {
    if (!index.ignoreNulls) return false;
    return std::ranges::all_of(index.columns, [&](const auto& part) {
        return info.columns[part.column].type != jet::ColumnType::Boolean &&
               jet::isNull(row.value(part.column));
    });
}

TEST_P(EveryFile, GivesEveryRowThroughEveryIndexAndByItsKey) {
    Database database = open();
    for (const std::string& name : database.tableNames(true)) {
        jet::Table& table = database.table(name);
        const jet::TableInfo info = table.info();
        jet::ColumnSet all;
        for (std::size_t i = 0; i < info.columns.size(); ++i) all.push_back(i);
        for (std::size_t index = 0; index < info.indexes.size(); ++index) {
            SCOPED_TRACE(name + "." + info.indexes[index].name);
            std::set<std::int64_t> expected;
            std::size_t count = 0;
            const auto scan = table.scan(all);
            while (scan->next()) {
                if (leavesOutNulls(info, info.indexes[index], *scan)) continue;
                expected.insert(scan->rowId().packed());
                if (++count > 300) continue;  // looking up every row of a large table takes long
                std::vector<jet::Value> key;
                for (const auto& part : info.indexes[index].columns) {
                    key.push_back(jet::toValue(scan->value(part.column)));
                }
                const auto hits = table.find(index, key, {});
                bool found = false;
                while (hits->next()) found |= hits->rowId() == scan->rowId();
                ASSERT_TRUE(found) << rowText(info, *scan);
            }
            std::set<std::int64_t> found;
            const auto ordered = table.inOrder(index, {});
            while (ordered->next()) ASSERT_TRUE(found.insert(ordered->rowId().packed()).second);
            EXPECT_EQ(found, expected);
        }
    }
}

TEST_P(EveryFileOfOtherMakers, HoldsTheSystemTablesThatAreExpected) {
    Database database = open();
    const RowTexts expected = expectedRows(GetParam().expected("system.jsonl"));
    const RowTexts found = readAll(database, true);
    for (const auto& [table, rows] : expected) {
        ASSERT_TRUE(found.contains(table)) << table;
        EXPECT_EQ(difference(rows, found.at(table)), "") << table;
    }
    EXPECT_EQ(found.size(), expected.size());
}

}  // namespace
}  // namespace stelvan::test
