// A table of nine columns of all manners, for tests of what it takes and refuses.
#pragma once

#include <gtest/gtest.h>

#include "jet/check/check.h"
#include "jet/database.h"
#include "jet/database_impl.h"
#include "jet/rows/row_codec.h"
#include "jet/tables/table_scan.h"
#include "tests/jet/row_text.h"
#include "tests/support/models.h"

namespace stelvan::test {

using jet::ColumnType;
using jet::Database;
using jet::ErrorKind;
using jet::RowId;
using jet::UnitOfWork;
using jet::Value;
using Values = std::vector<jet::ColumnValue>;

enum Column : std::size_t {
    kId,
    kName,
    kShort,
    kMemo,
    kPlainMemo,
    kPicture,
    kCount,
    kFlag,
    kNumber
};

class WrittenTable : public testing::Test {
protected:
    ScratchDir scratch_;
    std::filesystem::path path_ = scratch_.path() / "new.mdb";
    Database database_ = Database::create(path_, jet::DateTime{45000});

    void SetUp() override {
        jet::TableSpec spec{"T", std::vector<jet::ColumnInfo>(9), std::vector<jet::IndexInfo>(3)};
        const char* names[] = {"id",      "name",  "short", "memo",  "plainMemo",
                               "picture", "count", "flag",  "number"};
        const ColumnType types[] = {ColumnType::Long,    ColumnType::Text,    ColumnType::Text,
                                    ColumnType::Memo,    ColumnType::Memo,    ColumnType::Ole,
                                    ColumnType::Integer, ColumnType::Boolean, ColumnType::Byte};
        for (std::size_t i = 0; i < spec.columns.size(); ++i) {
            spec.columns[i].name = names[i];
            spec.columns[i].type = types[i];
            spec.columns[i].compressed = i == kName || i == kMemo;
        }
        spec.columns[kId].autoNumber = true;
        spec.columns[kName].length = 510;
        spec.columns[kName].required = true;
        spec.columns[kName].allowZeroLength = false;
        spec.columns[kShort].length = 20;
        spec.indexes[0].name = "PrimaryKey";
        spec.indexes[0].columns = {{kId, true}};
        spec.indexes[0].primary = true;
        spec.indexes[1].name = "name";
        spec.indexes[1].columns = {{kName, true}};
        spec.indexes[2].name = "short";
        spec.indexes[2].columns = {{kShort, true}};
        spec.indexes[2].unique = true;
        database_.createTable(spec);
    }

    void TearDown() override {
        for (const jet::Finding& finding : jet::check(path_, {true})) ADD_FAILURE() << finding.text;
    }

    jet::Table& table() { return database_.table("T"); }

    RowId add(const std::string& name, Values more = {}) {
        more.emplace_back(kName, name);
        return table().insert(more);
    }

    Value value(RowId id, std::size_t column) {
        const auto row = table().row(id, {column});
        return row == nullptr ? Value(std::string("gone")) : jet::toValue(row->value(column));
    }

    template <typename Act>
    static void expectRefusal(ErrorKind kind, const std::string& subject, Act&& act) {
        try {
            act();
            ADD_FAILURE() << "was not refused";
        } catch (const jet::Error& error) {
            EXPECT_EQ(error.kind(), kind) << error.what();
            EXPECT_EQ(error.subject(), subject) << error.what();
        }
    }

    /// The stored bytes of a column: for a long value its reference.
    std::vector<std::uint8_t> stored(RowId id, std::size_t column) {
        const auto scope = database_.beginRead();
        auto& file = *database_.impl().file;
        const auto definition = file.catalog().definition(*file.catalog().findTable("T"));
        const auto row = jet::locateRow(file.pages(), *definition, id);
        const auto bytes = jet::RowView(*definition, row->bytes, id.page).stored(column);
        return {bytes->begin(), bytes->end()};
    }
};

}  // namespace stelvan::test
