// The files that are built from the texts: their rows, their bytes, and what
// other readers see in them.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>

#include "data/builder/build_model.h"
#include "jet/rows/row_reader.h"
#include "jet/rows/value_text.h"
#include "tests/data/model_texts.h"
#include "tests/support/models.h"
#include "tests/support/run_gemdb.h"

namespace stelvan::test {
namespace {

namespace fs = std::filesystem;

const std::string kTemplates = STELVAN_BINARY_DIR "/share/stelvan/";
const std::vector<std::string> kTables = {
    "secs_alarm",  "secs_cusevent", "secs_cusvar",  "secs_def_evt_rpt", "secs_gemevent",
    "secs_gemvar", "secs_report",   "secs_rpt_var", "secs_setting",     "var_limit"};

struct Template {
    const char* file;
    std::vector<std::string> folders;
};

class TemplateTest : public ::testing::TestWithParam<Template> {
protected:
    const std::string file_ = kTemplates + GetParam().file;
    const ModelTexts texts_{GetParam().folders};
};

TEST_P(TemplateTest, HoldsTheRowsOfTheTextsInTheirOrder) {
    jet::Database database = jet::Database::open(file_, jet::Access::ReadOnly);
    EXPECT_EQ(database.tableNames(), kTables);
    for (const std::string& name : kTables) {
        jet::Table& table = database.table(name);
        const jet::TableInfo info = table.info();
        const std::vector<Row>& wanted = texts_.rows(name);
        EXPECT_EQ(info.rows, wanted.size()) << name;
        const auto rows = table.scan(jet::allColumns(info));
        for (const Row& row : wanted) {
            ASSERT_TRUE(rows->next()) << name;
            for (const auto& [column, cell] : row) {
                if (cell.starts_with('@')) continue;
                const auto value = rows->value(info.findColumn(column).value());
                EXPECT_EQ(jet::textOf(jet::toValue(value)), cell) << name << "." << column;
            }
        }
        EXPECT_FALSE(rows->next()) << name;
    }
}

TEST_P(TemplateTest, HasNoNullAnywhere) {
    jet::Database database = jet::Database::open(file_, jet::Access::ReadOnly);
    for (const std::string& name : kTables) {
        jet::Table& table = database.table(name);
        const jet::TableInfo info = table.info();
        for (const auto rows = table.scan(jet::allColumns(info)); rows->next();) {
            for (std::size_t column = 0; column < info.columns.size(); ++column) {
                EXPECT_FALSE(jet::isNull(rows->value(column)))
                    << name << "." << info.columns[column].name;
            }
        }
    }
}

TEST_P(TemplateTest, PassesTheStructureCheck) {
    const ProgramRun run = runGemdb({"check", "--structure", "--strict", file_});
    EXPECT_EQ(run.status, 0) << run.out << run.err;
}

TEST_P(TemplateTest, IsTheSameForMdbtools) {
    if (!fs::exists("/usr/bin/mdb-export")) GTEST_SKIP() << "mdbtools are absent";
    std::vector<std::string> tables =
        splitLines(runProgram("/usr/bin/mdb-tables", {"-1", file_}).out);
    std::ranges::sort(tables);
    EXPECT_EQ(tables, kTables);
    for (const std::string& name : kTables) {
        const ProgramRun run = runProgram("/usr/bin/mdb-export", {file_, name});
        EXPECT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(splitLines(run.out).size(), texts_.rows(name).size() + 1) << name;
    }
    const std::string schema = runProgram("/usr/bin/mdb-schema", {file_, "postgres"}).out;
    for (const std::string& name : kTables)
        EXPECT_NE(schema.find("\"" + name + "\""), std::string::npos) << name;
    EXPECT_NE(schema.find("ADD CONSTRAINT \"secs_gemvar_pkey\" PRIMARY KEY (\"var_id\")"),
              std::string::npos);
}

TEST_P(TemplateTest, IsReadOnlyByNameForTheDialog) {
    EXPECT_NE(fs::path(file_).filename(), "gem.mdb")
        << "the dialog would offer to edit it in place";
}

INSTANTIATE_TEST_SUITE_P(Templates, TemplateTest,
                         ::testing::Values(Template{"gem-template.mdb", {"standard"}},
                                           Template{"demo-template.mdb", {"standard", "demo"}}),
                         [](const auto& kind) {
                             return std::string(kind.index == 0 ? "Standard" : "Demo");
                         });

data::Schema shippedSchema() {
    return data::parseSchema(data::readText(STELVAN_SOURCE_DIR "/data/schema.txt"));
}

TEST(BuildModel, TwoBuildsGiveTheSameBytes) {
    const ScratchDir folder;
    const auto tables = data::readTables(STELVAN_SOURCE_DIR "/data/standard");
    std::array<std::string, 2> bytes;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const fs::path file = folder.path() / (std::to_string(i) + ".mdb");
        data::buildModel(file, shippedSchema(), tables);
        bytes[i] = readFile(file);
    }
    EXPECT_FALSE(bytes[0].empty());
    EXPECT_TRUE(bytes[0] == bytes[1]);
}

TEST(BuildModel, LeavesNothingBehindWhenACellDoesNotFit) {
    const ScratchDir folder;
    const fs::path file = folder.path() / "gem.mdb";
    const std::array rows = {data::TableRows{"secs_report", {"rpt_id"}, {{"1"}, {"one"}}}};
    EXPECT_THROW(data::buildModel(file, shippedSchema(), rows), jet::Error);
    EXPECT_FALSE(fs::exists(file));
    const std::array columns = {data::TableRows{"secs_report", {"rpt_none"}, {{"1"}}}};
    EXPECT_THROW(data::buildModel(file, shippedSchema(), columns), std::runtime_error);
    EXPECT_FALSE(fs::exists(file));
}

TEST(BuildModel, NeverReplacesAFile) {
    const ScratchDir folder;
    const fs::path file = folder.path() / "gem.mdb";
    std::ofstream(file) << "mine";
    EXPECT_THROW(data::buildModel(file, shippedSchema(), {}), jet::Error);
    EXPECT_EQ(readFile(file), "mine");
}

}  // namespace
}  // namespace stelvan::test
