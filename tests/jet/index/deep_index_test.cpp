// A real, empty table with a text index, filled with keys so long that the index grows to many
// levels, and emptied again.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>

#include "jet/check/check.h"
#include "jet/database.h"
#include "jet/index/collation.h"
#include "tests/support/models.h"

namespace stelvan::test {
namespace {

using jet::Database;

class DeepIndex : public testing::Test {
protected:
    void SetUp() override {
        database_.emplace(Database::open(scratch_.copyOf(model("shapes/text_index_empty.mdb"))));
        table_ = &database_->table("Table1");
        const jet::TableInfo& info = table_->info();
        for (std::size_t i = 0; i < info.indexes.size(); ++i) {
            column_ = info.indexes[i].columns.at(0).column;
            index_ = i;
            if (info.columns[column_].type == jet::ColumnType::Text) return;
        }
        FAIL() << "the model has no text index";
    }

    // Texts of full length that begin alike or not, with letters that need two bytes of a key.
    std::string longText() {
        static const std::array<std::string, 6> kLetters = {"a", "B", "é", "я", "中", "_"};
        std::string text;
        for (std::size_t i = 0; i < 255; ++i) {
            text += kLetters[i < 60 ? random_() % 2 : random_() % kLetters.size()];
        }
        return text;
    }

    void insert(std::size_t count) {
        jet::UnitOfWork unit(*database_);
        for (std::size_t i = 0; i < count; ++i) {
            const std::string text = longText();
            rows_.emplace_back(text, table_->insert(std::array{jet::ColumnValue{column_, text}}));
        }
        unit.commit();
    }
    void eraseHalf() {
        std::shuffle(rows_.begin(), rows_.end(), random_);
        jet::UnitOfWork unit(*database_);
        for (std::size_t i = rows_.size() / 2; i < rows_.size(); ++i)
            table_->erase(rows_[i].second);
        unit.commit();
        rows_.resize(rows_.size() / 2);
    }

    void compare() {
        std::ranges::sort(rows_, [](const auto& a, const auto& b) {
            const int order = jet::compareText(a.first, b.first);
            return order != 0 ? order < 0 : a.second < b.second;
        });
        const auto cursor = table_->inOrder(index_, {column_});
        for (const auto& [text, row] : rows_) {
            ASSERT_TRUE(cursor->next());
            ASSERT_EQ(cursor->rowId(), row);
            ASSERT_EQ(std::get<std::string_view>(cursor->value(column_)), text);
        }
        ASSERT_FALSE(cursor->next());
        for (std::size_t i = 0; i < rows_.size(); i += 17) {
            const auto found =
                table_->find(index_, std::array{jet::Value(rows_[i].first)}, {column_});
            ASSERT_TRUE(found->next());
            ASSERT_EQ(found->rowId(), rows_[i].second);
        }
        for (const jet::Finding& finding : jet::check(database_->path())) {
            EXPECT_TRUE(finding.isNote) << finding.page << ": " << finding.text;
        }
    }

    ScratchDir scratch_;
    std::optional<Database> database_;
    jet::Table* table_ = nullptr;
    std::size_t index_ = 0;
    std::size_t column_ = 0;
    std::mt19937 random_{12};
    std::vector<std::pair<std::string, jet::RowId>> rows_;
};

TEST_F(DeepIndex, GrowsAndShrinksWithItsRows) {
    insert(2500);
    compare();
    for (int round = 0; round < 4 && !HasFatalFailure(); ++round) {
        eraseHalf();
        compare();
        insert(200);
        compare();
    }
    while (!rows_.empty() && !HasFatalFailure()) {
        if (rows_.size() == 1) insert(1);
        eraseHalf();
        if (rows_.size() == 1) {
            table_->erase(rows_[0].second);
            rows_.clear();
        }
        compare();
    }
}

}  // namespace
}  // namespace stelvan::test
