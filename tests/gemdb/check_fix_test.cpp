// gemdb check --fix mends what has one right answer, in one go, with a copy of the file as it was;
// and leaves every file alone that it cannot mend.
#include <algorithm>
#include <filesystem>
#include <fstream>

#include "jet/database.h"
#include "jet/disk/file_system.h"
#include "tests/gemdb/command_test.h"

namespace stelvan::test {
namespace {

namespace fs = std::filesystem;

class CheckFixTest : public CommandTest {
protected:
    void SetUp() override {
        file_ =
            folder_.copyOf(std::string(STELVAN_BINARY_DIR) + "/share/stelvan/demo-template.mdb");
    }

    void change(const std::vector<std::string>& statements) const {
        std::vector<std::string> arguments = {"sql", file_};
        arguments.insert(arguments.end(), statements.begin(), statements.end());
        const ProgramRun run = runGemdb(arguments);
        ASSERT_EQ(run.status, 0) << run.err;
    }

    /// One or more of everything that can be mended.
    void seedAll() const {
        change({"INSERT INTO secs_def_evt_rpt (evt_id, rpt_id, rpt_order) VALUES (9999, 101, 1)",
                "INSERT INTO secs_def_evt_rpt (evt_id, rpt_id, rpt_order) VALUES (102, 8888, 2)",
                "INSERT INTO secs_def_evt_rpt (evt_id, rpt_id, rpt_order) VALUES (Null, Null, 2)",
                "INSERT INTO secs_def_evt_rpt (evt_id, rpt_id, rpt_order) VALUES (101, 101, 1)",
                "INSERT INTO secs_def_evt_rpt (evt_id, rpt_id, rpt_order) VALUES (101, 101, 1)",
                "INSERT INTO secs_rpt_var (rpt_id, var_id, var_order) VALUES (7777, 6666, 1)",
                "UPDATE secs_rpt_var SET var_id = 5555 WHERE rpt_id = 101 AND var_order = 2",
                "UPDATE secs_rpt_var SET var_order = Null WHERE rpt_id = 125 AND var_order = 3",
                "UPDATE secs_cusvar SET var_accessid = 9 WHERE var_id = 224",
                "UPDATE secs_cusvar SET var_parentkey = 4444, var_accessid = 3 WHERE var_id = 110",
                "UPDATE secs_cusvar SET var_parentkey = Null WHERE var_id = 113"});
    }

    /// The copies that were made beside the file.
    [[nodiscard]] std::vector<std::string> copies() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder_.path()))
            if (entry.path().filename().string().starts_with("gem.mdb.before-fix-"))
                names.push_back(entry.path());
        return names;
    }

    void expectUntouched(const std::string& before) const {
        EXPECT_EQ(readFile(file_), before);
        EXPECT_TRUE(copies().empty());
        EXPECT_FALSE(fs::exists(file_ + "-journal"));
    }
};

TEST_F(CheckFixTest, LeavesNothingOfWhatItCanMend) {
    const std::string sound = runGemdb({"check", "--json", file_}).out;
    seedAll();
    const std::string before = readFile(file_);
    const ProgramRun run = runGemdb({"check", "--fix", file_});
    EXPECT_EQ(run.status, 0) << run.out << run.err;
    EXPECT_EQ(runGemdb({"check", "--json", file_}).out, sound);
    EXPECT_EQ(runGemdb({"check", "--structure", "--strict", file_}).out, "");
    ASSERT_EQ(copies().size(), 1U);
    EXPECT_EQ(readFile(copies().front()), before);
    EXPECT_EQ(select("SELECT var_id, var_order FROM secs_rpt_var WHERE rpt_id = 101 ORDER BY "
                     "var_order"),
              (std::vector<std::string>{
                  R"({"var_id":1,"var_order":1})", R"({"var_id":1002,"var_order":2})",
                  R"({"var_id":1003,"var_order":3})", R"({"var_id":1004,"var_order":4})"}));
    EXPECT_EQ(select("SELECT var_id FROM secs_cusvar WHERE var_parentkey = 223 ORDER BY "
                     "var_accessid"),
              (std::vector<std::string>{R"({"var_id":225})", R"({"var_id":226})",
                                        R"({"var_id":227})", R"({"var_id":224})"}));
}

TEST_F(CheckFixTest, PrintsEachChange) {
    seedAll();
    const std::vector<std::string> lines = splitLines(runGemdb({"check", "--fix", file_}).out);
    for (const char* rule : {"dangling-event", "dangling-report", "dangling-variable",
                             "duplicate-link", "order-gap", "orphan-child"})
        EXPECT_TRUE(std::ranges::any_of(lines, [&](const std::string& line) {
            return line.starts_with(std::string("fixed ") + rule);
        })) << rule;
}

TEST_F(CheckFixTest, ASecondRunFindsNothingToMend) {
    seedAll();
    (void)runGemdb({"check", "--fix", file_});
    const std::string mended = readFile(file_);
    const ProgramRun run = runGemdb({"check", "--fix", file_});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out.find("fixed"), std::string::npos) << run.out;
    EXPECT_EQ(readFile(file_), mended);
    EXPECT_EQ(copies().size(), 1U);
}

TEST_F(CheckFixTest, DryRunSaysTheSameAndWritesNothing) {
    seedAll();
    const std::string before = readFile(file_);
    const ProgramRun dry = runGemdb({"check", "--fix", "--dry-run", file_});
    EXPECT_EQ(dry.status, 1);
    expectUntouched(before);
    std::vector<std::string> would;
    for (const std::string& line : splitLines(dry.out))
        if (line.starts_with("would fix")) would.push_back(line.substr(10));
    std::vector<std::string> fixed;
    for (const std::string& line : splitLines(runGemdb({"check", "--fix", file_}).out))
        if (line.starts_with("fixed")) fixed.push_back(line.substr(6));
    EXPECT_EQ(would, fixed);
    EXPECT_GE(would.size(), 10U);
}

TEST_F(CheckFixTest, ExitIsByWhatRemains) {
    change({"UPDATE secs_cusvar SET var_name = '' WHERE var_id = 110",
            "INSERT INTO secs_rpt_var (rpt_id, var_id, var_order) VALUES (7777, 6666, 1)"});
    const ProgramRun run = runGemdb({"check", "--fix", file_});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.out.find("error invalid-field"), std::string::npos);
    EXPECT_EQ(run.out.find("error dangling"), std::string::npos);
}

TEST_F(CheckFixTest, AnotherReaderSeesWhatWasMended) {
    seedAll();
    (void)runGemdb({"check", "--fix", file_});
    for (const char* table : {"secs_def_evt_rpt", "secs_rpt_var"}) {
        const ProgramRun theirs = runProgram("/usr/bin/env", {"mdb-export", "-H", file_, table});
        if (theirs.status != 0) GTEST_SKIP() << "mdb-export is not installed";
        std::vector<std::string> rows;
        for (std::string line : select(std::string("SELECT * FROM ") + table)) {
            std::string row;
            for (const char c : line)
                if (c == ',' || (c >= '0' && c <= '9') || c == '-') row += c;
            rows.push_back(row);
        }
        std::vector<std::string> exported = splitLines(theirs.out);
        std::ranges::sort(rows);
        std::ranges::sort(exported);
        EXPECT_EQ(rows, exported) << table;
    }
}

TEST_F(CheckFixTest, AFileThatMayNotBeWrittenStaysAsItIs) {
    seedAll();
    fs::permissions(file_, fs::perms::owner_read);
    const std::string before = readFile(file_);
    expectFailure({"check", "--fix", file_}, file_);
    expectUntouched(before);
    EXPECT_EQ(runGemdb({"check", file_}).status, 1);
}

TEST_F(CheckFixTest, AFileThatAnotherIsWritingStaysAsItIs) {
    seedAll();
    const std::string before = readFile(file_);
    jet::Database other = jet::Database::open(file_, jet::Access::ReadWrite);
    const jet::UnitOfWork turn(other);
    expectFailure({"check", "--fix", file_}, "in use");
    EXPECT_EQ(readFile(file_), before);
    EXPECT_TRUE(copies().empty());
}

TEST_F(CheckFixTest, AFileThatIsOpenInAccessStaysAsItIs) {
    seedAll();
    const std::string before = readFile(file_);
    const auto lockFile = jet::FileSystem::posix().open(fs::path(file_).replace_extension(".ldb"),
                                                        jet::FileSystem::Mode::Create);
    ASSERT_TRUE(lockFile->tryLock({0x10000001, 1}, jet::LockMode::Exclusive));
    expectFailure({"check", "--fix", file_}, "open in another program");
    expectUntouched(before);
    EXPECT_EQ(runGemdb({"check", file_}).status, 1);
}

TEST_F(CheckFixTest, ADamagedFileStaysAsItIs) {
    const ScratchDir other;
    file_ = other.copyOf(model("refused/damaged_rows/gem.mdb"));
    const std::string before = readFile(file_);
    expectFailure({"check", "--fix", file_}, "damaged");
    EXPECT_EQ(readFile(file_), before);
}

TEST_F(CheckFixTest, ADamagedFileThatCanStillBeReadStaysAsItIs) {
    seedAll();
    std::string bytes = readFile(file_);
    constexpr std::size_t kSecondCommitSlot = 0xE02;  // zero where writing was broken off
    bytes[kSecondCommitSlot] = bytes[kSecondCommitSlot + 1] = 0;
    std::ofstream(file_, std::ios::binary) << bytes;
    EXPECT_EQ(runGemdb({"check", "--model", file_}).status, 1);
    expectFailure({"check", "--fix", file_}, "structure is damaged");
    expectUntouched(bytes);
}

TEST_F(CheckFixTest, NeedsTheModel) {
    expectFailure({"check", "--fix", "--structure", file_}, "--fix");
    expectFailure({"check", "--dry-run", file_}, "--fix");
}

}  // namespace
}  // namespace stelvan::test
