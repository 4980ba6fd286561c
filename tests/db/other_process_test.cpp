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
