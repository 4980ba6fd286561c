// gemdb against whole files: every row, column and index equals what they are known to hold.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/gemdb/sorted_json.h"
#include "tests/support/model_names.h"
#include "tests/support/models.h"
#include "tests/support/run_gemdb.h"

namespace stelvan::test {
namespace {

std::string nameOf(const ::testing::TestParamInfo<ModelFile>& info) {
    return label(info.param);
}

class WholeFileTest : public ::testing::TestWithParam<ModelFile> {
protected:
    void SetUp() override {
        STELVAN_NEEDS_FILE(GetParam());
        file_ = GetParam().path();
    }

    [[nodiscard]] static std::vector<std::string> expected(const std::string& kind) {
        const std::filesystem::path known = GetParam().expected(kind);
        return known.empty() ? std::vector<std::string>{} : splitLines(readFile(known));
    }

    std::string file_;
};

TEST_P(WholeFileTest, DumpGivesEveryRow) {
    const ProgramRun run = runGemdb({"dump", file_});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(sortedJson(splitLines(run.out)), sortedJson(expected("jsonl")));
}

TEST_P(WholeFileTest, DumpGivesTheRowsInStoredOrderOfTablesInAlphabeticalOrder) {
    const std::vector<std::string> lines = splitLines(runGemdb({"dump", file_}).out);
    const std::vector<std::string> wanted = expected("jsonl");
    ASSERT_EQ(lines.size(), wanted.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        ASSERT_EQ(sortedJson({lines[i]}), sortedJson({wanted[i]})) << "line " << i + 1;
    }
}

TEST_P(WholeFileTest, SchemaGivesEveryColumnIndexAndRelationship) {
    const ProgramRun run = runGemdb({"schema", file_});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(splitLines(run.out), expected("schema.jsonl"));
}

class SystemTablesTest : public WholeFileTest {};

TEST_P(SystemTablesTest, CanBeDumpedByName) {
    const std::vector<std::string> wanted = expected("system.jsonl");
    ASSERT_FALSE(wanted.empty());
    std::vector<std::string> lines;
    std::string last;
    for (const std::string& line : wanted) {
        const std::string table = line.substr(10, line.find('"', 10) - 10);
        if (table == last) continue;
        last = table;
        const ProgramRun run = runGemdb({"dump", file_, table});
        ASSERT_EQ(run.status, 0) << table << ": " << run.err;
        for (const std::string& more : splitLines(run.out)) lines.push_back(more);
    }
    EXPECT_EQ(sortedJson(lines), sortedJson(wanted));
}

INSTANTIATE_TEST_SUITE_P(Models, WholeFileTest, ::testing::ValuesIn(byEveryMaker(allNames())),
                         nameOf);
INSTANTIATE_TEST_SUITE_P(Models, SystemTablesTest, ::testing::ValuesIn(byOtherMakers(shapeNames())),
                         nameOf);

class LargeFileTest : public ::testing::TestWithParam<ModelFile> {};

TEST_P(LargeFileTest, DumpGivesEveryRow) {
    STELVAN_NEEDS_FILE(GetParam());
    const std::filesystem::path packed = GetParam().expected("jsonl.gz");
    const std::string rows = packed.empty() ? readFile(GetParam().expected("jsonl"))
                                            : runProgram("/bin/gzip", {"-dc", packed}).out;
    const ProgramRun run = runGemdb({"dump", GetParam().path()});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(sortedJson(splitLines(run.out)), sortedJson(splitLines(rows)));
    EXPECT_EQ(splitLines(runGemdb({"schema", GetParam().path()}).out),
              splitLines(readFile(GetParam().expected("schema.jsonl"))));
}

INSTANTIATE_TEST_SUITE_P(Models, LargeFileTest,
                         ::testing::ValuesIn(byEveryMaker({"gem_large.mdb"})), nameOf);

/// A file that cannot be opened, or not wholly read: one line that says why, status 2, and no byte
/// changed.
class RefusedTest : public ::testing::TestWithParam<ModelFile> {};

TEST_P(RefusedTest, EndsWithAnErrorOfItsOwnAndIsLeftAsItWas) {
    STELVAN_NEEDS_FILE(GetParam());
    const ScratchDir folder;
    const std::string copy = folder.copyOf(GetParam().path());
    const std::string before = readFile(copy);
    for (const std::vector<std::string>& command :
         {std::vector<std::string>{"dump", copy},
          {"sql", copy, "SELECT * FROM secs_cusvar"},
          {"sql", copy, "UPDATE secs_cusvar SET var_val = 'x' WHERE var_id = 101",
           "UPDATE no_such_table SET a = 1"}}) {
        const ProgramRun run = runGemdb(command);
        EXPECT_EQ(run.status, 2) << command[0] << ": " << run.err;
        EXPECT_EQ(splitLines(run.err).size(), 1U) << run.err;
        EXPECT_EQ(readFile(copy), before);
    }
}

std::vector<ModelFile> refusedFiles(const std::vector<std::string>& kinds) {
    std::vector<std::string> names;
    for (const std::string& kind : kinds) names.push_back("refused/" + kind + "/gem.mdb");
    return byEveryMaker(names);
}

INSTANTIATE_TEST_SUITE_P(Refused, RefusedTest,
                         ::testing::ValuesIn(refusedFiles({"access97", "access2007", "text_file",
                                                           "zero_length", "wrong_signature",
                                                           "truncated", "damaged_catalogue"})),
                         nameOf);

/// Damage within: what is whole can be read, what is not gives an error.
class DamagedTest : public ::testing::TestWithParam<ModelFile> {
protected:
    /// A table that the damage leaves alone.
    [[nodiscard]] static std::string wholeTable() {
        const bool cut = GetParam().name.find("truncated") != std::string::npos;
        return cut ? "secs_gemvar" : "secs_setting";
    }
};

TEST_P(DamagedTest, DumpEndsWithAnErrorAndTheFileIsLeftAsItWas) {
    STELVAN_NEEDS_FILE(GetParam());
    const ScratchDir folder;
    const std::string copy = folder.copyOf(GetParam().path());
    const std::string before = readFile(copy);
    const ProgramRun run = runGemdb({"dump", copy});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(splitLines(run.err).size(), 1U) << run.err;
    EXPECT_EQ(runGemdb({"dump", copy, wholeTable()}).status, 0);
    EXPECT_EQ(readFile(copy), before);
}

INSTANTIATE_TEST_SUITE_P(Refused, DamagedTest,
                         ::testing::ValuesIn(refusedFiles({"truncated_at_page", "damaged_ring",
                                                           "damaged_rows", "damaged_memo"})),
                         nameOf);

TEST(RefusedFiles, EachKindHasATextOfItsOwn) {
    std::vector<std::string> texts;
    for (const char* kind : {"access97", "access2007", "text_file", "zero_length", "truncated"}) {
        const std::string file = model(std::string("refused/") + kind + "/gem.mdb");
        std::string text = runGemdb({"tables", file}).err;
        text.erase(text.find(file), file.size());
        EXPECT_EQ(std::ranges::count(texts, text), 0) << text;
        texts.push_back(text);
    }
}

}  // namespace
}  // namespace stelvan::test
