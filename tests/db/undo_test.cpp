#include "db/undo.h"

#include <gtest/gtest.h>

#include "tests/db/gem_file.h"

namespace stelvan::db {
namespace {

using test::failureOf;
using test::GemFile;

class UndoTest : public ::testing::Test {
protected:
    GemFile file{stelvan::test::model("gem.mdb")};
    UndoHistory history;

    std::vector<std::vector<std::string>> rows() const {
        auto all = file.rows("SELECT * FROM secs_cusevent ORDER BY evt_id");
        const auto links = file.rows("SELECT * FROM secs_def_evt_rpt ORDER BY evt_id, rpt_order");
        all.insert(all.end(), links.begin(), links.end());
        return all;
    }
    void run(const std::string& what, const std::vector<std::string>& statements) {
        UnitOfWork unit(file.path(), UnitOfWork::Notes::RowChanges);
        for (const std::string& statement : statements) file.execute(statement);
        unit.commit();
        history.add(what, unit.changes());
    }
};

TEST_F(UndoTest, UnitsAreTakenBackTheLastFirst) {
    const auto first = rows();
    run("Save of event 101", {"UPDATE secs_cusevent SET evt_text = 'new' WHERE evt_id = 101"});
    const auto second = rows();
    run("Delete of event 101", {"DELETE FROM secs_def_evt_rpt WHERE evt_id = 101",
                                "DELETE FROM secs_cusevent WHERE evt_id = 101"});
    EXPECT_NE(rows(), second);
    EXPECT_EQ(history.next(), "Delete of event 101");
    EXPECT_EQ(history.undo(file.path()).what, "Delete of event 101");
    EXPECT_EQ(rows(), second);
    EXPECT_EQ(history.undo(file.path()).what, "Save of event 101");
    EXPECT_EQ(rows(), first);
    EXPECT_TRUE(history.empty());
}

TEST_F(UndoTest, AnotherProgramsChangeIsNotOverwritten) {
    run("Save of event 101", {"UPDATE secs_cusevent SET evt_text = 'new' WHERE evt_id = 101"});
    file.execute("UPDATE secs_cusevent SET evt_group = 'Theirs' WHERE evt_id = 101");
    const auto before = rows();
    const base::RunTimeError refused = failureOf([&] { (void)history.undo(file.path()); });
    EXPECT_EQ(std::string(refused.what()).find("Save of event 101 cannot be undone"), 0U)
        << refused.what();
    EXPECT_EQ(rows(), before);
    EXPECT_FALSE(history.empty());
}

TEST_F(UndoTest, AnIdentifierGivenAwayMeanwhileIsAConflict) {
    run("Delete of event 101", {"DELETE FROM secs_cusevent WHERE evt_id = 101"});
    file.execute("INSERT INTO secs_cusevent (evt_id, evt_name) VALUES (101, 'Theirs')");
    const auto before = rows();
    (void)failureOf([&] { (void)history.undo(file.path()); });
    EXPECT_EQ(rows(), before);
}

TEST_F(UndoTest, WhatChangedNothingIsNotKept) {
    run("Save", {"UPDATE secs_cusevent SET evt_text = 'new' WHERE evt_id = -5"});
    EXPECT_TRUE(history.empty());
}

TEST_F(UndoTest, TheOldestAreForgotten) {
    run("Save 0", {"UPDATE secs_cusevent SET evt_text = '0' WHERE evt_id = 101"});
    const auto afterFirst = rows();
    for (std::size_t n = 1; n <= UndoHistory::kMost; ++n)
        run("Save " + std::to_string(n),
            {"UPDATE secs_cusevent SET evt_text = '" + std::to_string(n) + "' WHERE evt_id = 101"});
    while (!history.empty()) (void)history.undo(file.path());
    EXPECT_EQ(rows(), afterFirst);
}

TEST_F(UndoTest, AUnitThatWasNotAskedNotesNothing) {
    UnitOfWork unit(file.path());
    file.execute("UPDATE secs_cusevent SET evt_text = 'new' WHERE evt_id = 101");
    unit.commit();
    EXPECT_TRUE(unit.changes().empty());
}

}  // namespace
}  // namespace stelvan::db
