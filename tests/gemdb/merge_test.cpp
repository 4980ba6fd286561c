#include <filesystem>
#include <fstream>

#include "jet/database.h"
#include "tests/gemdb/command_test.h"

namespace stelvan::test {
namespace {

namespace fs = std::filesystem;

class MergeCommandTest : public CommandTest {
protected:
    void SetUp() override {
        CommandTest::SetUp();
        ours_ = folder_.copyOf(model("gem.mdb"), "ours.mdb");
        theirs_ = folder_.copyOf(model("gem.mdb"), "theirs.mdb");
        out_ = folder_.path() / "out.mdb";
    }

    static void sql(const std::string& file, const std::vector<std::string>& statements) {
        std::vector<std::string> arguments{"sql", file};
        arguments.insert(arguments.end(), statements.begin(), statements.end());
        const ProgramRun run = runGemdb(arguments);
        ASSERT_EQ(run.status, 0) << run.err;
    }
    static void setUnit(const std::string& file, int id, const std::string& unit) {
        sql(file, {"UPDATE secs_cusvar SET var_unit = '" + unit +
                   "' WHERE var_id = " + std::to_string(id)});
    }

    [[nodiscard]] ProgramRun merge(std::vector<std::string> options = {}) const {
        const std::vector<std::string> all{"merge", file_, ours_, theirs_, "-o", out_};
        options.insert(options.begin(), all.begin(), all.end());
        return runGemdb(options);
    }

    [[nodiscard]] std::string unitIn(const std::string& file, int id) const {
        const ProgramRun run = runGemdb(
            {"sql", file, "SELECT var_unit FROM secs_cusvar WHERE var_id = " + std::to_string(id)});
        return run.out;
    }

    /// How many reports 110 OUT has, and how many links to it.
    [[nodiscard]] std::string rowsOf110() const {
        std::string counts;
        for (const char* table : {"secs_report", "secs_def_evt_rpt"}) {
            const ProgramRun run = runGemdb(
                {"sql", out_, std::string("SELECT rpt_id FROM ") + table + " WHERE rpt_id = 110"});
            counts += (counts.empty() ? "" : " ") + std::to_string(splitLines(run.out).size());
        }
        return counts;
    }

    /// No draft, no journal, no lock file stays behind.
    [[nodiscard]] std::size_t filesLeft() const {
        const fs::directory_iterator files(folder_.path());
        return static_cast<std::size_t>(std::distance(begin(files), end(files)));
    }

    std::string ours_, theirs_, out_;
};

TEST_F(MergeCommandTest, WritesACopyOfOursWithBothSidesChanges) {
    setUnit(ours_, 101, "Pa");
    sql(theirs_, {"UPDATE secs_cusvar SET var_unit = 'mm' WHERE var_id = 102",
                  "INSERT INTO secs_report (rpt_id, rpt_name) VALUES (9000, 'Fresh')",
                  "INSERT INTO secs_rpt_var (rpt_id, var_id, var_order) VALUES (9000, 101, 1)",
                  "DELETE FROM secs_alarm WHERE alm_id = 101"});
    const std::string before = readFile(ours_);
    const ProgramRun run = merge();
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(splitLines(run.out).back(), "1 item added, 1 changed, 1 removed");
    EXPECT_EQ(readFile(ours_), before);
    EXPECT_EQ(runGemdb({"check", "--structure", "--strict", out_}).out, "");
    setUnit(theirs_, 101, "Pa");
    EXPECT_EQ(runGemdb({"diff", theirs_, out_}).out, "");
    EXPECT_EQ(filesLeft(), 4U);
}

TEST_F(MergeCommandTest, MayWriteIntoOurs) {
    out_ = ours_;
    setUnit(ours_, 101, "Pa");
    setUnit(theirs_, 102, "mm");
    const ProgramRun run = merge();
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_NE(unitIn(ours_, 101).find("Pa"), std::string::npos);
    EXPECT_NE(unitIn(ours_, 102).find("mm"), std::string::npos);
    EXPECT_EQ(filesLeft(), 3U);
}

TEST_F(MergeCommandTest, AddsItemsOfAModelWithFewerColumns) {
    for (std::string* path : {&file_, &ours_, &theirs_}) {
        const bool fewer = path == &theirs_;
        fs::remove(*path);
        *path = folder_.copyOf(model(fewer ? "gem_few_columns.mdb" : "gem.mdb"),
                               fs::path(*path).filename());
    }
    sql(theirs_, {"INSERT INTO secs_cusvar (var_id, var_name, var_type, var_format) "
                  "VALUES (9000, 'Fresh', 'SV', 'A')"});
    const ProgramRun run = merge();
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(splitLines(run.out).back(), "1 item added");
    EXPECT_EQ(runGemdb({"sql", out_, "SELECT var_canadd FROM secs_cusvar WHERE var_id = 9000"}).out,
              "{\"var_canadd\":false}\n");
}

TEST_F(MergeCommandTest, ListsConflictsWithAllThreeValuesAndWritesNothing) {
    setUnit(ours_, 101, "Pa");
    setUnit(theirs_, 101, "mbar");
    setUnit(theirs_, 102, "mm");
    const ProgramRun run = merge();
    EXPECT_EQ(run.status, 1) << run.err;
    const std::vector<std::string> lines = splitLines(run.out);
    ASSERT_EQ(lines.size(), 5U) << run.out;
    EXPECT_EQ(lines[0].substr(0, 17), "! variable 101 Lo");
    EXPECT_NE(lines[0].find("(secs_cusvar), var_unit"), std::string::npos);
    EXPECT_EQ(lines[1], "    base:   \"NULL\"");
    EXPECT_EQ(lines[2], "    ours:   \"Pa\"");
    EXPECT_EQ(lines[3], "    theirs: \"mbar\"");
    EXPECT_EQ(lines[4].substr(0, 31), "1 conflict; nothing was written");
    EXPECT_FALSE(fs::exists(out_));
    EXPECT_EQ(filesLeft(), 3U);

    const std::string before = readFile(ours_);
    out_ = ours_;
    EXPECT_EQ(merge().status, 1);
    EXPECT_EQ(readFile(ours_), before);
}

TEST_F(MergeCommandTest, ConflictsAreDecidedForASideAndListed) {
    setUnit(ours_, 101, "Pa");
    setUnit(theirs_, 101, "mbar");
    setUnit(theirs_, 102, "mm");
    const ProgramRun ours = merge({"--ours"});
    EXPECT_EQ(ours.status, 0) << ours.err;
    EXPECT_NE(ours.out.find("1 conflict, decided as ours\n"), std::string::npos) << ours.out;
    EXPECT_NE(unitIn(out_, 101).find("Pa"), std::string::npos);
    const ProgramRun theirs = merge({"--theirs"});
    EXPECT_EQ(theirs.status, 0) << theirs.err;
    EXPECT_NE(theirs.out.find("1 conflict, decided as theirs\n"), std::string::npos);
    EXPECT_NE(unitIn(out_, 101).find("mbar"), std::string::npos);
    EXPECT_NE(unitIn(out_, 102).find("mm"), std::string::npos);
    EXPECT_EQ(merge({"--ours", "--theirs"}).status, 2);
}

TEST_F(MergeCommandTest, ADryRunSaysTheSameAndWritesNothing) {
    setUnit(theirs_, 102, "mm");
    const ProgramRun dry = merge({"--dry-run"});
    EXPECT_EQ(dry.status, 0) << dry.err;
    EXPECT_FALSE(fs::exists(out_));
    EXPECT_EQ(splitLines(dry.out).back(), "1 item would be changed");
    const std::vector<std::string> wet = splitLines(merge().out);
    ASSERT_EQ(wet.size(), 3U);
    EXPECT_EQ(wet[0], splitLines(dry.out)[0]);
    EXPECT_EQ(wet[1], splitLines(dry.out)[1]);
    EXPECT_EQ(wet[2], "1 item changed");
    EXPECT_EQ(runGemdb({"merge", file_, ours_, theirs_, "--dry-run"}).status, 0);
    EXPECT_EQ(runGemdb({"merge", file_, ours_, theirs_}).status, 2);
}

TEST_F(MergeCommandTest, AReportThatOneSideRemovedAndTheOtherLinkedToIsAConflict) {
    sql(ours_, {"DELETE FROM secs_report WHERE rpt_id = 110",
                "DELETE FROM secs_rpt_var WHERE rpt_id = 110",
                "DELETE FROM secs_def_evt_rpt WHERE rpt_id = 110"});
    sql(theirs_, {"INSERT INTO secs_def_evt_rpt (evt_id, rpt_id, rpt_order) VALUES (105, 110, 9)"});
    const ProgramRun run = merge();
    EXPECT_EQ(run.status, 1) << run.out << run.err;
    EXPECT_NE(run.out.find("! report 110 "), std::string::npos) << run.out;
    EXPECT_NE(run.out.find("links to it"), std::string::npos);
    EXPECT_EQ(merge({"--ours"}).status, 0);
    EXPECT_EQ(rowsOf110(), "0 0");
    EXPECT_EQ(merge({"--theirs"}).status, 0);
    EXPECT_EQ(rowsOf110(), "1 1");
}

TEST_F(MergeCommandTest, WhatCannotBeReadOrWrittenEndsWithTwoAndNothingIsWritten) {
    const std::string missing = folder_.path() / "missing.mdb";
    const std::string foreign = model("refused/text_file/gem.mdb");
    const std::string damaged = model("refused/damaged_rows/gem.mdb");
    for (const std::string& bad : {missing, foreign, damaged}) {
        expectFailure({"merge", bad, ours_, theirs_, "-o", out_}, bad);
        expectFailure({"merge", file_, bad, theirs_, "-o", out_}, bad);
        expectFailure({"merge", file_, ours_, bad, "-o", out_}, bad);
    }
    expectFailure({"merge", file_, ours_, theirs_, "-o", folder_.path() / "no" / "out.mdb"},
                  "/no/out.mdb");
    EXPECT_FALSE(fs::exists(out_));
    std::ofstream(out_) << "a letter";
    expectFailure({"merge", file_, ours_, theirs_, "-o", out_}, out_);
    EXPECT_EQ(readFile(out_), "a letter");
    EXPECT_EQ(filesLeft(), 4U);
}

TEST_F(MergeCommandTest, AFileThatIsBeingWrittenIsNotReplaced) {
    setUnit(theirs_, 102, "mm");
    out_ = folder_.copyOf(model("gem.mdb"), "out.mdb");
    const std::string before = readFile(out_);
    jet::Database other = jet::Database::open(out_, jet::Access::ReadWrite);
    const jet::UnitOfWork writing(other);
    expectFailure({"merge", file_, ours_, theirs_, "-o", out_}, out_);
    EXPECT_EQ(readFile(out_), before);
}

TEST_F(MergeCommandTest, IsAMergeDriverOfGit) {
    if (runProgram("/usr/bin/git", {"--version"}).status != 0) GTEST_SKIP() << "git is absent";
    const std::string tree = folder_.path() / "tree";
    const auto git = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(),
                         {"-C", tree, "-c", "user.name=t", "-c", "user.email=t"});
        const ProgramRun run = runProgram("/usr/bin/git", arguments);
        EXPECT_EQ(run.status, 0) << arguments[6] << ": " << run.out << run.err;
    };
    fs::create_directory(tree);
    const std::string file = tree + "/gem.mdb";
    fs::copy_file(file_, file);
    std::ofstream(tree + "/.gitattributes") << "*.mdb merge=gemdb\n";
    git({"init", "-q", "-b", "main"});
    git({"config", "merge.gemdb.driver",
         std::string(STELVAN_BINARY_DIR) + "/gemdb merge %O %A %B -o %A"});
    git({"add", "."});
    git({"commit", "-qm", "start"});
    git({"checkout", "-qb", "side"});
    setUnit(file, 101, "Pa");
    git({"commit", "-qam", "side"});
    git({"checkout", "-q", "main"});
    setUnit(file, 102, "mm");
    git({"commit", "-qam", "main"});
    git({"merge", "-q", "-m", "both", "side"});
    EXPECT_NE(unitIn(file, 101).find("Pa"), std::string::npos);
    EXPECT_NE(unitIn(file, 102).find("mm"), std::string::npos);
}

}  // namespace
}  // namespace stelvan::test
