// What another program does to the file while a record set is open.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/db/gem_file.h"

namespace stelvan::db {
namespace {

using test::failureOf;
using test::GemFile;
constexpr const char* kEvents = "select * from secs_cusevent";
constexpr std::int32_t kRowChanged = -2147217864;

/// Runs statements in a process of its own; true when all of them succeeded.
bool elsewhere(const GemFile& file, const std::vector<std::string>& statements) {
    const pid_t child = fork();
    if (child == 0) {
        const base::RunTimeError error = failureOf([&] {
            for (const std::string& statement : statements) file.execute(statement);
        });
        _exit(error.number() == 0 ? 0 : 1);  // no destructors: the folder is the parent's
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

TEST(OtherProcess, ItsChangesAreSeenByTheNextStatement) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto before = file.records(kEvents);
    ASSERT_TRUE(elsewhere(
        file, {"INSERT INTO secs_cusevent (evt_id, evt_name) VALUES (9100, 'from elsewhere')"}));
    EXPECT_EQ(before->recordCount(), 70);
    EXPECT_EQ(file.records(kEvents)->recordCount(), 71);
    EXPECT_EQ(file.column("SELECT evt_name FROM secs_cusevent WHERE evt_id = 9100"),
              std::vector<std::string>{"from elsewhere"});
}

TEST(OtherProcess, ARecordItChangedIsNotOverwritten) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto records = file.records(kEvents);
    const std::string id = toText(records->field("evt_id"));
    ASSERT_TRUE(
        elsewhere(file, {"UPDATE secs_cusevent SET evt_group = 'theirs' WHERE evt_id = " + id}));
    records->setField("evt_group", Value(std::string("mine")));
    EXPECT_EQ(failureOf([&] { records->update(); }).number(), kRowChanged);
    records->cancelUpdate();
    records->resyncCurrent();
    EXPECT_EQ(toText(records->field("evt_group")), "theirs");
}

TEST(OtherProcess, RecordsItDeletedLeaveWithTheNextResynchronisation) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto records = file.records(kEvents);
    const std::string first = toText(records->field("evt_id"));
    records->moveLast();
    const std::string shown = toText(records->field("evt_id"));
    ASSERT_TRUE(
        elsewhere(file, {"DELETE FROM secs_cusevent WHERE evt_id = " + first,
                         "INSERT INTO secs_cusevent (evt_id, evt_name) VALUES (9101, 'new')"}));
    records->resync();
    EXPECT_EQ(toText(records->field("evt_id")), shown);
    EXPECT_EQ(records->position(), records->recordCount());
    // The new row may stand where the deleted one stood; it is then a record of this set.
    EXPECT_GE(records->recordCount(), 69);
    EXPECT_LE(records->recordCount(), 70);
}

/// The record set as the window opens it, to be browsed.
std::shared_ptr<Recordset> browsed(const GemFile& file, const std::string& sql) {
    Connection connection;
    file.open(connection);
    auto records = std::make_shared<Recordset>();
    records->open(sql, connection, CursorType::Static, LockType::Optimistic, Reading::AsReached);
    return records;
}

std::string idOf(const Recordset& records) {
    return toText(records.field("evt_id"));
}

TEST(OtherProcess, ARecordItChangedBeforeTheFirstLookIsShownAsItIs) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto ids = file.column("SELECT evt_id FROM secs_cusevent");
    const auto records = browsed(file, kEvents);
    (void)idOf(*records);
    (void)records->storedField(1, 0);  // decoded for a view of many rows, but not reached
    ASSERT_TRUE(elsewhere(
        file, {"UPDATE secs_cusevent SET evt_group = 'theirs' WHERE evt_id = " + ids[1]}));
    records->moveNext();
    EXPECT_EQ(toText(records->field("evt_group")), "theirs");
    records->setField("evt_group", Value(std::string("mine")));
    records->update();
    EXPECT_EQ(file.column("SELECT evt_group FROM secs_cusevent WHERE evt_id = " + ids[1]).front(),
              "mine");
}

TEST(OtherProcess, ARecordItDeletedIsReportedOnceWhenItIsReachedAndTheNextFollows) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto ids = file.column("SELECT evt_id FROM secs_cusevent");
    const auto records = browsed(file, kEvents);
    (void)idOf(*records);
    records->moveNext();
    (void)idOf(*records);  // looked at before or not: the second and the fifth
    records->moveFirst();
    ASSERT_TRUE(elsewhere(file, {"DELETE FROM secs_cusevent WHERE evt_id = " + ids[1],
                                 "DELETE FROM secs_cusevent WHERE evt_id = " + ids[4]}));
    EXPECT_EQ(records->recordCount(), 70);
    records->moveNext();
    EXPECT_EQ(failureOf([&] { (void)idOf(*records); }).number(), kRowChanged);
    EXPECT_EQ(records->recordCount(), 69);
    EXPECT_FALSE(records->onRecord());
    records->moveNext();
    EXPECT_EQ(idOf(*records), ids[2]);
    EXPECT_EQ(records->position(), 2);
    records->moveNext();
    records->moveNext();
    EXPECT_EQ(failureOf([&] { (void)idOf(*records); }).number(), kRowChanged);
    EXPECT_EQ(failureOf([&] { (void)idOf(*records); }).number(), 3021) << "reported once";
    records->moveNext();
    EXPECT_EQ(idOf(*records), ids[5]);
    EXPECT_EQ(records->position(), 4);
}

TEST(OtherProcess, RecordsThatItDeletedInARowAreReportedTogether) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto ids = file.column("SELECT evt_id FROM secs_cusevent");
    const auto records = browsed(file, kEvents);
    (void)idOf(*records);
    ASSERT_TRUE(elsewhere(file, {"DELETE FROM secs_cusevent WHERE evt_id <> " + ids.front() +
                                 " AND evt_id <> " + ids.back()}));
    records->moveNext();
    EXPECT_EQ(failureOf([&] { (void)idOf(*records); }).number(), kRowChanged);
    records->moveNext();
    EXPECT_EQ(idOf(*records), ids.back());
    EXPECT_EQ(records->position(), 2);
    EXPECT_EQ(records->recordCount(), 2);
}

constexpr const char* kDataVariables = "select * from secs_cusvar where var_type = 'DV'";

TEST(OtherProcess, ARecordThatNoLongerAnswersTheQueryIsReportedOnceAndLeaves) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto ids =
        file.column("SELECT var_id FROM secs_cusvar WHERE var_type = 'DV' ORDER BY var_id");
    const auto records = browsed(file, std::string(kDataVariables) + " ORDER BY var_id");
    const std::int32_t count = records->recordCount();
    ASSERT_TRUE(
        elsewhere(file, {"UPDATE secs_cusvar SET var_type = 'SV' WHERE var_id = " + ids[1]}));
    EXPECT_EQ(toText(records->field("var_id")), ids[0]);
    records->moveNext();
    EXPECT_EQ(failureOf([&] { (void)records->field("var_id"); }).number(), kRowChanged);
    records->moveNext();
    EXPECT_EQ(toText(records->field("var_id")), ids[2]);
    EXPECT_EQ(records->position(), 2);
    EXPECT_EQ(records->recordCount(), count - 1);
}

TEST(OtherProcess, ASaveOverARecordThatNoLongerAnswersTheQueryIsRefused) {
    STELVAN_GEM_FILE("gem.mdb");
    // The columns that are read say nothing about the one that was changed.
    const auto records =
        file.records("select var_id, var_unit from secs_cusvar where var_type = 'DV'");
    const std::string id = toText(records->field("var_id"));
    ASSERT_TRUE(elsewhere(file, {"UPDATE secs_cusvar SET var_type = 'SV' WHERE var_id = " + id}));
    records->setField("var_unit", Value(std::string("mine")));
    EXPECT_EQ(failureOf([&] { records->update(); }).number(), kRowChanged);
    records->cancelUpdate();
    EXPECT_EQ(failureOf([&] { records->deleteCurrent(); }).number(), kRowChanged);
    EXPECT_NE(file.column("SELECT var_unit FROM secs_cusvar WHERE var_id = " + id).front(), "mine");
    records->resync();
    EXPECT_FALSE(records->onRecord());
    records->moveNext();
    EXPECT_NE(toText(records->field("var_id")), id) << "it leaves the set";
}

TEST(OtherProcess, WhatTheRecordSetWroteItselfStaysInItWhateverItHolds) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto records = browsed(file, kDataVariables);
    const std::int32_t count = records->recordCount();
    const std::string id = toText(records->field("var_id"));
    records->setField("var_type", Value(std::string("SV")));
    records->update();
    records->setField("var_unit", Value(std::string("mine")));
    records->update();
    records->moveNext();
    (void)records->field("var_id");
    records->movePrevious();
    EXPECT_EQ(toText(records->field("var_id")), id);
    EXPECT_EQ(toText(records->field("var_unit")), "mine");
    records->resync();
    EXPECT_EQ(toText(records->field("var_type")), "SV");
    EXPECT_EQ(records->recordCount(), count);
}

TEST(OtherProcess, WhatTheRecordSetWroteItselfIsJudgedAgainOnceTheQueryChoosesIt) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto records = browsed(file, kDataVariables);
    const std::string id = toText(records->field("var_id"));
    records->setField("var_unit", Value(std::string("mine")));
    records->update();
    records->resync();
    ASSERT_TRUE(elsewhere(file, {"UPDATE secs_cusvar SET var_type = 'SV' WHERE var_id = " + id}));
    records->moveFirst();
    EXPECT_EQ(failureOf([&] { (void)records->field("var_id"); }).number(), kRowChanged);
}

TEST(OtherProcess, ValuesThatWereShownStayWhatASaveIsJudgedBy) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto records = browsed(file, kEvents);
    const std::string id = idOf(*records);
    const Value shown = records->field("evt_group");
    ASSERT_TRUE(
        elsewhere(file, {"UPDATE secs_cusevent SET evt_group = 'theirs' WHERE evt_id = " + id}));
    records->moveNext();
    (void)idOf(*records);
    records->movePrevious();
    EXPECT_EQ(records->field("evt_group"), shown);
    records->setField("evt_text", Value(std::string("mine")));
    EXPECT_EQ(failureOf([&] { records->update(); }).number(), kRowChanged);
}

TEST(OtherProcess, AFilePutInThePlaceOfTheOldOneIsNotMistakenForIt) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto records = file.records(kEvents);
    (void)records->field("evt_id");
    const stelvan::test::ScratchDir other;
    const auto replacement = other.copyOf(stelvan::test::model("gem_empty.mdb"));
    std::filesystem::rename(replacement, file.path());
    records->setField("evt_group", Value(std::string("mine")));
    EXPECT_EQ(failureOf([&] { records->update(); }).number(), kRowChanged);
    records->cancelUpdate();
    records->resync();
    EXPECT_EQ(records->recordCount(), 0);
    EXPECT_TRUE(records->eof());
}

TEST(OtherProcess, AFileThatIsGoneIsReportedAndNothingIsWritten) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto records = file.records(kEvents);
    records->setField("evt_group", Value(std::string("mine")));
    std::filesystem::remove(file.path());
    const base::RunTimeError error = failureOf([&] { records->update(); });
    EXPECT_EQ(error.number(), -2147467259);
    EXPECT_EQ(std::string(error.what()), "Could not find file '" + file.path() + "'.");
    EXPECT_TRUE(records->editPending());
}

}  // namespace
}  // namespace stelvan::db
