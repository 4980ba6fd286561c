// gemdb info tells what a file is, who uses it and how much it holds, and changes nothing.
#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "jet/database.h"
#include "jet/disk/commit_slots.h"
#include "jet/disk/file_system.h"
#include "jet/disk/journal.h"
#include "tests/gemdb/command_test.h"

namespace stelvan::test {
namespace {

namespace fs = std::filesystem;

class InfoTest : public CommandTest {
protected:
    [[nodiscard]] nlohmann::json info() const {
        const ProgramRun run = runGemdb({"info", "--json", file_});
        EXPECT_EQ(run.status, 0) << run.err;
        return nlohmann::json::parse(run.out);
    }
};

TEST_F(InfoTest, CountsTheRowsOfEachCategory) {
    const nlohmann::json rows = info()["rows"];
    const auto counted = [&](const std::string& query) { return select(query).size(); };
    EXPECT_EQ(rows["Custom Alarms"], counted("SELECT alm_id FROM secs_alarm"));
    EXPECT_EQ(rows["GEM Equipment Constants"],
              counted("SELECT var_id FROM secs_gemvar WHERE var_type = 'EC'"));
    EXPECT_EQ(rows["Custom Status Variables"],
              counted("SELECT var_id FROM secs_cusvar WHERE var_type = 'SV'"));
    EXPECT_EQ(rows["Report-variable links"], counted("SELECT rpt_id FROM secs_rpt_var"));
}

TEST_F(InfoTest, TellsSizeAndSettings) {
    (void)runGemdb(
        {"sql", file_, "UPDATE secs_setting SET set_value = '77' WHERE set_field = 'DeviceID'"});
    const nlohmann::json facts = info();
    EXPECT_EQ(facts["bytes"], fs::file_size(file_));
    EXPECT_EQ(facts["settings"]["DeviceID"], "77");
    EXPECT_EQ(facts["format"], "Jet 4.0");
    EXPECT_FALSE(facts["settings"].contains("AdministratorPassword"));
    const std::vector<std::string> lines = splitLines(runGemdb({"info", file_}).out);
    EXPECT_TRUE(std::ranges::any_of(lines, [](const std::string& line) {
        return line.starts_with("DeviceID ") && line.ends_with(" 77");
    }));
}

TEST_F(InfoTest, NamesTheProgramThatOpenedAnAccessFile) {
    STELVAN_NEEDS_SAMPLE("access/deleted_rows.mdb");
    file_ = sample("access/deleted_rows.mdb");
    EXPECT_EQ(info()["accessVersion"], "08.50");
    EXPECT_NE(runGemdb({"info", file_}).out.find("Access 2000 (08.50)"), std::string::npos);
}

TEST_F(InfoTest, NamesWhoHasTheFileOpenInAccess) {
    EXPECT_TRUE(info()["users"].empty());
    jet::FileSystem& files = jet::FileSystem::posix();
    const auto lockFile =
        files.open(fs::path(file_).replace_extension(".ldb"), jet::FileSystem::Mode::Create);
    std::vector<std::uint8_t> entries(128);
    std::ranges::copy(std::string("GONE"), entries.begin());
    std::ranges::copy(std::string("BENCH7"), entries.begin() + 64);
    std::ranges::copy(std::string("Admin"), entries.begin() + 96);
    lockFile->writeAt(0, entries);
    ASSERT_TRUE(lockFile->tryLock({0x10000002, 1}, jet::LockMode::Exclusive));
    const nlohmann::json users = info()["users"];
    ASSERT_EQ(users.size(), 1U);
    EXPECT_EQ(users[0]["machine"], "BENCH7");
    EXPECT_EQ(users[0]["name"], "Admin");
    EXPECT_NE(runGemdb({"info", file_}).out.find("Admin at BENCH7"), std::string::npos);
}

TEST_F(InfoTest, TellsWhetherAProgramReadsOrWrites) {
    EXPECT_EQ(info()["inUse"], "no");
    jet::Database other = jet::Database::open(file_, jet::Access::ReadWrite);
    {
        const auto reading = other.beginRead();
        EXPECT_EQ(info()["inUse"], "reading");
    }
    const jet::UnitOfWork turn(other);
    EXPECT_EQ(info()["inUse"], "writing");
}

TEST_F(InfoTest, TellsOfAWaitingJournalAndLeavesIt) {
    EXPECT_EQ(info()["journalWaits"], false);
    const std::string before = readFile(file_);
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(before.data());
    jet::Journal journal(jet::FileSystem::posix(), file_);
    jet::Journal::Facts facts;
    facts.sizeBefore = before.size();
    std::copy_n(bytes + jet::commit_slots::kOffset, facts.slotsBefore.size(),
                facts.slotsBefore.begin());
    facts.slotAfter = static_cast<std::uint16_t>(facts.slotBefore() + 1);
    const std::uint8_t* page = bytes + std::size_t{5} * 4096;
    const std::vector<jet::Journal::Image> images = {{5, page, page}};
    journal.write(facts, images, 0644);

    const nlohmann::json waiting = info();
    EXPECT_EQ(waiting["journalWaits"], true);
    EXPECT_FALSE(waiting.contains("rows"));
    EXPECT_NE(runGemdb({"info", file_}).out.find("waits"), std::string::npos);
    EXPECT_TRUE(journal.present());
    EXPECT_EQ(readFile(file_), before);

    journal.noteForSure(jet::Journal::Stage::Finished);
    EXPECT_EQ(info()["journalWaits"], false);
}

TEST_F(InfoTest, WhatIsNoDatabaseIsOneLine) {
    expectFailure({"info", folder_.path() / "absent.mdb"}, "absent.mdb");
    for (const char* name : {"text_file", "zero_length", "wrong_signature", "access97",
                             "access2007", "truncated", "damaged_rows"})
        expectFailure({"info", model("refused/" + std::string(name) + "/gem.mdb")}, name);
}

TEST_F(InfoTest, CheckOfWhatIsNoDatabaseIsOneLineToo) {
    for (const char* name :
         {"text_file", "zero_length", "wrong_signature", "access97", "access2007"}) {
        const std::string file = model("refused/" + std::string(name) + "/gem.mdb");
        expectFailure({"check", file}, name);
        expectFailure({"check", "--model", file}, name);
        expectFailure({"check", "--fix", folder_.copyOf(file, name)}, name);
    }
    expectFailure({"check", folder_.path() / "absent.mdb"}, "absent.mdb");
}

}  // namespace
}  // namespace stelvan::test
