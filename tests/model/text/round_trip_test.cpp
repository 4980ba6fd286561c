// What an export says an import brings back, to the last bit, however odd a file is.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

#include "jet/check/check.h"
#include "model/compare/differences.h"
#include "model/core/fit.h"
#include "model/text/export_text.h"
#include "model/text/import_text.h"
#include "tests/model/text/odd_file.h"
#include "tests/support/models.h"
#include "tests/support/run_gemdb.h"

namespace stelvan::test {
namespace {

namespace fs = std::filesystem;
using model::Model;
using model::Part;

/// The texts of a folder by their names.
std::map<std::string, std::string> textsOf(const fs::path& folder) {
    std::map<std::string, std::string> texts;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        texts[entry.path().filename()] = readFile(entry.path());
    return texts;
}

void empty(const fs::path& file) {
    jet::Database database = jet::Database::open(file);
    Model none = model::read(database);
    for (model::Table& table : none.tables) table.rows.clear();
    (void)model::write(database, std::move(none));
}

void import(const fs::path& folder, const fs::path& file) {
    jet::Database database = jet::Database::open(file);
    jet::UnitOfWork unit(database);
    model::apply(database, model::planImport(database, model::readText(folder)));
    unit.commit();
}

/// Rows that differ in a bit; text types of a column do not count.
void expectSameRows(const Model& before, const Model& after) {
    for (const model::PartFacts& facts : model::parts()) {
        const model::Table& left = before[facts.part];
        const model::Table& right = after[facts.part];
        ASSERT_EQ(left.rows.size(), right.rows.size()) << facts.table;
        for (std::size_t row = 0; row < left.rows.size(); ++row)
            for (std::size_t column = 0; column < left.columns.size(); ++column)
                EXPECT_TRUE(
                    model::identical(left.rows[row].values[column], right.rows[row].values[column]))
                    << facts.table << " row " << row << " " << left.columns[column];
    }
}

bool anyTable(const Model& whole) {
    return std::ranges::any_of(whole.tables, &model::Table::present);
}

TEST(TextRoundTrip, BringsEveryOddFileBackToTheBit) {
    int filesWithRows = 0;
    for (std::uint32_t seed = 0; seed < 150; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const ScratchDir scratch;
        const fs::path file = scratch.path() / "odd.mdb";
        OddFile(seed).create(file);
        const Model before = model::read(file);
        if (!anyTable(before)) continue;
        model::exportText(before, scratch.path() / "a");
        empty(file);
        import(scratch.path() / "a", file);
        const Model after = model::read(file);
        expectSameRows(before, after);
        model::exportText(after, scratch.path() / "b");
        ASSERT_EQ(textsOf(scratch.path() / "a"), textsOf(scratch.path() / "b"));
        EXPECT_FALSE(jet::anyFault(jet::check(file, {})));
        filesWithRows += before[Part::CustomEvents].rows.empty() ? 0 : 1;
        if (::testing::Test::HasFailure()) return;
    }
    EXPECT_GT(filesWithRows, 100);
}

TEST(TextRoundTrip, ImportOverAnotherOddStateOfTheSameFileGivesTheTexts) {
    for (std::uint32_t seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const ScratchDir scratch;
        const fs::path file = scratch.path() / "odd.mdb";
        OddFile(seed).create(file);
        Model wanted = model::read(file);
        if (!anyTable(wanted)) continue;
        model::exportText(wanted, scratch.path() / "a");
        std::mt19937 random(seed);
        for (model::Table& table : wanted.tables) {
            std::shuffle(table.rows.begin(), table.rows.end(), random);
            if (!table.rows.empty()) table.rows.pop_back();
            if (table.rows.size() > 1) std::swap(table.rows[0].values, table.rows[1].values);
        }
        {
            jet::Database database = jet::Database::open(file);
            (void)model::write(database, std::move(wanted));
        }
        import(scratch.path() / "a", file);
        model::exportText(model::read(file), scratch.path() / "b");
        ASSERT_EQ(textsOf(scratch.path() / "a"), textsOf(scratch.path() / "b"));
    }
}

TEST(TextRoundTrip, TheTextAloneIsTheSameModel) {
    const ScratchDir scratch;
    for (const char* name : {"gem.mdb", "gem_int_flags.mdb", "gem_spellings.mdb"}) {
        const Model whole = model::read(test::model(name));
        model::exportText(whole, scratch.path() / name);
        EXPECT_TRUE(model::differences(whole, model::readText(scratch.path() / name).model).empty())
            << name;
    }
}

}  // namespace
}  // namespace stelvan::test
