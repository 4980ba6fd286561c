// gemdb against real files: every row, column and index equals what independent readers found in
// them.
#include "tests/support/samples.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/gemdb/sorted_json.h"
#include "tests/support/run_gemdb.h"

namespace stelvan::test {
namespace {

struct Sample {
    const char* file;
    const char* expected;  // expected/NAME.jsonl
};

constexpr Sample kSamples[] = {
    {"gem.mdb", "gem"},
    {"gem_int_flags.mdb", "gem_int_flags"},
    {"gem_empty.mdb", "gem_empty"},
    {"gem_edges.mdb", "gem_edges"},
    {"access/compressed_text.mdb", "access_compressed_text"},
    {"access/deleted_columns.mdb", "access_deleted_columns"},
    {"access/deleted_rows.mdb", "access_deleted_rows"},
    {"access/descending_index.mdb", "access_descending_index"},
    {"access/index_cursor.mdb", "access_index_cursor"},
    {"access/long_memo.mdb", "access_long_memo"},
    {"access/no_rows.mdb", "access_no_rows"},
    {"access/no_user_tables.mdb", "access_no_user_tables"},
    {"access/numeric.mdb", "access_numeric"},
    {"access/overflow.mdb", "access_overflow"},
    {"access/relationships.mdb", "access_relationships"},
    {"access/text_index_empty.mdb", "access_text_index_empty"},
};

class SampleTest : public ::testing::TestWithParam<Sample> {
protected:
    void SetUp() override {
        STELVAN_NEEDS_SAMPLE(GetParam().file);
        file_ = sample(GetParam().file);
    }

    [[nodiscard]] std::vector<std::string> expected(const std::string& ending) const {
        return splitLines(
            readFile(sample("expected/" + std::string(GetParam().expected) + ending)));
    }

    std::string file_;
};

std::string nameOf(const ::testing::TestParamInfo<Sample>& info) {
    return info.param.expected;
}

TEST_P(SampleTest, DumpGivesEveryRow) {
    const ProgramRun run = runGemdb({"dump", file_});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(sortedJson(splitLines(run.out)), sortedJson(expected(".jsonl")));
}

TEST_P(SampleTest, DumpGivesTheRowsInStoredOrderOfTablesInAlphabeticalOrder) {
    const std::vector<std::string> lines = splitLines(runGemdb({"dump", file_}).out);
    const std::vector<std::string> wanted = expected(".jsonl");
    ASSERT_EQ(lines.size(), wanted.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        ASSERT_EQ(sortedJson({lines[i]}), sortedJson({wanted[i]})) << "line " << i + 1;
    }
}

TEST_P(SampleTest, SchemaGivesEveryColumnIndexAndRelationship) {
    const ProgramRun run = runGemdb({"schema", file_});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(splitLines(run.out), expected(".schema.jsonl"));
}

TEST_P(SampleTest, SystemTablesCanBeDumpedByName) {
    const std::vector<std::string> wanted = expected(".system.jsonl");
    if (wanted.empty()) GTEST_SKIP() << "nothing is known of this file's system tables";
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

INSTANTIATE_TEST_SUITE_P(Samples, SampleTest, ::testing::ValuesIn(kSamples), nameOf);

TEST(LargeSample, DumpGivesEveryRow) {
    STELVAN_NEEDS_SAMPLE("gem_large.mdb");
    const ProgramRun unpacked =
        runProgram("/bin/gzip", {"-dc", sample("expected/gem_large.jsonl.gz")});
    const ProgramRun run = runGemdb({"dump", sample("gem_large.mdb")});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(sortedJson(splitLines(run.out)), sortedJson(splitLines(unpacked.out)));
    EXPECT_EQ(splitLines(runGemdb({"schema", sample("gem_large.mdb")}).out),
              splitLines(readFile(sample("expected/gem_large.schema.jsonl"))));
}

/// A file that cannot be opened, or not wholly read: one line that says why, status 2, and no byte
/// changed.
class RefusedTest : public ::testing::TestWithParam<const char*> {};

TEST_P(RefusedTest, EndsWithAnErrorOfItsOwnAndIsLeftAsItWas) {
    const std::string name = std::string("refused/") + GetParam() + "/gem.mdb";
    STELVAN_NEEDS_SAMPLE(name);
    const ScratchDir folder;
    const std::string copy = folder.copyOf(sample(name));
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

INSTANTIATE_TEST_SUITE_P(Refused, RefusedTest,
                         ::testing::Values("access97", "access2007", "text_file", "zero_length",
                                           "wrong_signature", "truncated", "damaged_catalogue"),
                         [](const auto& kind) { return std::string(kind.param); });

/// Damage within: what is whole can be read, what is not gives an error.
struct Damage {
    const char* folder;
    const char* wholeTable;
};

class DamagedTest : public ::testing::TestWithParam<Damage> {};

TEST_P(DamagedTest, DumpEndsWithAnErrorAndTheFileIsLeftAsItWas) {
    const std::string name = std::string("refused/") + GetParam().folder + "/gem.mdb";
    STELVAN_NEEDS_SAMPLE(name);
    const ScratchDir folder;
    const std::string copy = folder.copyOf(sample(name));
    const std::string before = readFile(copy);
    const ProgramRun run = runGemdb({"dump", copy});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(splitLines(run.err).size(), 1U) << run.err;
    EXPECT_EQ(runGemdb({"dump", copy, GetParam().wholeTable}).status, 0);
    EXPECT_EQ(readFile(copy), before);
}

INSTANTIATE_TEST_SUITE_P(Refused, DamagedTest,
                         ::testing::Values(Damage{"truncated_at_page", "secs_gemvar"},
                                           Damage{"damaged_ring", "secs_setting"},
                                           Damage{"damaged_rows", "secs_setting"},
                                           Damage{"damaged_memo", "secs_setting"}),
                         [](const auto& kind) { return std::string(kind.param.folder); });

TEST(RefusedFiles, EachKindHasATextOfItsOwn) {
    STELVAN_NEEDS_SAMPLE("refused/access97/gem.mdb");
    std::vector<std::string> texts;
    for (const char* kind : {"access97", "access2007", "text_file", "zero_length", "truncated"}) {
        const std::string file = sample(std::string("refused/") + kind + "/gem.mdb");
        std::string text = runGemdb({"tables", file}).err;
        text.erase(text.find(file), file.size());
        EXPECT_EQ(std::ranges::count(texts, text), 0) << text;
        texts.push_back(text);
    }
}

}  // namespace
}  // namespace stelvan::test
