// What the engine reads, and what it writes, is what another reader of Access files finds there.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

#include "jet/database.h"
#include "tests/readers/node_reader.h"
#include "tests/support/models.h"

namespace stelvan::test {
namespace {

/// The rows that only one side has.
std::vector<std::string> difference(const RowTexts& ours, const RowTexts& theirs) {
    std::vector<std::string> rows;
    std::set_symmetric_difference(ours.begin(), ours.end(), theirs.begin(), theirs.end(),
                                  std::back_inserter(rows));
    return rows;
}

class MdbReader : public ::testing::TestWithParam<ModelFile> {};

TEST_P(MdbReader, FindsTheRowsThatTheEngineReads) {
    STELVAN_NEEDS_FILE(GetParam());
    const auto theirs = readWithNode(GetParam().path());
    if (!theirs) GTEST_SKIP() << "mdb-reader is absent";
    EXPECT_THAT(difference(readWithEngine(GetParam().path()), *theirs), ::testing::IsEmpty());
}

TEST_P(MdbReader, FindsTheRowsThatTheEngineWrote) {
    STELVAN_NEEDS_FILE(GetParam());
    const ScratchDir scratch;
    const auto file = scratch.copyOf(GetParam().path());
    {
        jet::Database database = jet::Database::open(file);
        jet::UnitOfWork unit(database);
        jet::Table& variables = database.table("secs_cusvar");
        const auto column = [&](const char* name) { return *variables.info().findColumn(name); };
        const std::size_t id = column("var_id");
        const std::size_t name = column("var_name");
        const std::size_t text = column("var_val");
        const std::size_t description = column("var_desc");
        const bool memo = variables.info().columns[description].type == jet::ColumnType::Memo;
        std::vector<jet::RowId> added;
        for (int i = 0; i < 300; ++i) {
            // No chains here: that reader takes a wrong end for a chunk that follows a deleted
            // slot.
            const std::size_t length = memo ? static_cast<std::size_t>(i) * 6 : 200;
            const std::string letters = i % 3 == 0 ? std::string("\xE6\xBC\xA2") : std::string("d");
            std::string longText;
            for (std::size_t n = 0; n < length; ++n) longText += letters;
            added.push_back(variables.insert(std::vector<jet::ColumnValue>{
                {id, jet::Value(std::int32_t{100000 + i})},
                {name, jet::Value("Added" + std::to_string(i))},
                {text, jet::Value(i % 2 == 0 ? std::string("\xC3\xA4x") : std::string())},
                {description, jet::Value(longText)}}));
        }
        for (std::size_t i = 0; i < added.size(); i += 3) variables.erase(added[i]);
        for (std::size_t i = 1; i < added.size(); i += 3)
            variables.update(added[i], std::vector<jet::ColumnValue>{
                                           {text, jet::Value(std::string(200, 'g'))},
                                           {description, jet::Value(std::string("short"))}});
        unit.commit();
    }
    const auto theirs = readWithNode(file);
    if (!theirs) GTEST_SKIP() << "mdb-reader is absent";
    EXPECT_THAT(difference(readWithEngine(file), *theirs), ::testing::IsEmpty());
}

class MdbReaderOfMemos : public MdbReader {};

TEST_P(MdbReaderOfMemos, FindsLongTextsInChainsOfPages) {
    STELVAN_NEEDS_FILE(GetParam());
    const ScratchDir scratch;
    const auto file = scratch.copyOf(GetParam().path());
    {
        jet::Database database = jet::Database::open(file);
        jet::UnitOfWork unit(database);
        jet::Table& variables = database.table("secs_cusvar");
        const std::size_t id = *variables.info().findColumn("var_id");
        const std::size_t description = *variables.info().findColumn("var_desc");
        ASSERT_EQ(variables.info().columns[description].type, jet::ColumnType::Memo);
        for (std::int32_t i = 0; i < 40; ++i)
            variables.insert(std::vector<jet::ColumnValue>{
                {id, jet::Value(100000 + i)},
                {description, jet::Value(std::string(static_cast<std::size_t>(i) * 997, 'c'))}});
        unit.commit();
    }
    const auto theirs = readWithNode(file);
    if (!theirs) GTEST_SKIP() << "mdb-reader is absent";
    EXPECT_THAT(difference(readWithEngine(file), *theirs), ::testing::IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Models, MdbReader,
                         ::testing::ValuesIn(byEveryMaker({"gem.mdb", "gem_int_flags.mdb",
                                                           "gem_empty.mdb", "gem_edges.mdb"})),
                         [](const auto& file) { return label(file.param); });
INSTANTIATE_TEST_SUITE_P(Models, MdbReaderOfMemos,
                         ::testing::ValuesIn(byEveryMaker({"gem.mdb", "gem_empty.mdb",
                                                           "gem_edges.mdb"})),
                         [](const auto& file) { return label(file.param); });

}  // namespace
}  // namespace stelvan::test
