// The record set on real files: cursor, bookmarks, pending changes, conflicts, and each failure's
// number.
#include <gtest/gtest.h>

#include "tests/db/gem_file.h"

namespace stelvan::db {
namespace {

using test::failureOf;

constexpr const char* kEvents = "select * from secs_cusevent";
constexpr int kNoRecord = 3021;
constexpr int kNotHere = 3219;
constexpr int kNotUpdatable = 3251;
constexpr int kNoItem = 3265;
constexpr int kClosed = 3704;
constexpr int kOpen = 3705;
constexpr int kUnusable = 3709;
constexpr int kRowChanged = -2147217864;

int numberOf(const std::function<void()>& body) {
    return failureOf(body).number();
}

TEST(RecordSetMoves, OverTheLastIsTheEndAndFromTheEndIsAFailure) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto records = file.records(kEvents);
    EXPECT_EQ(records->recordCount(), 70);
    EXPECT_FALSE(records->bof() || records->eof());
    records->moveLast();
    records->moveNext();
    EXPECT_TRUE(records->eof());
    EXPECT_FALSE(records->bof());
    EXPECT_EQ(numberOf([&] { records->moveNext(); }), kNoRecord);
    EXPECT_EQ(numberOf([&] { (void)records->field("evt_id"); }), kNoRecord);
    records->movePrevious();
    EXPECT_FALSE(records->eof());
}

TEST(RecordSetMoves, BeforeTheFirstIsTheBeginningAndFromThereIsAFailure) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto records = file.records(kEvents);
    records->movePrevious();
    EXPECT_TRUE(records->bof());
    EXPECT_EQ(numberOf([&] { records->movePrevious(); }), kNoRecord);
    records->moveNext();
    EXPECT_FALSE(records->bof());
}

TEST(RecordSetMoves, AnEmptySetHasNowhereToGo) {
    STELVAN_GEM_FILE("gem_empty.mdb");
    const auto records = file.records(kEvents);
    EXPECT_EQ(records->recordCount(), 0);
    EXPECT_TRUE(records->bof() && records->eof());
    for (const auto& move : {&Recordset::moveFirst, &Recordset::moveLast, &Recordset::moveNext,
                             &Recordset::movePrevious}) {
        EXPECT_EQ(numberOf([&] { (records.get()->*move)(); }), kNoRecord);
    }
}

TEST(RecordSetFields, AreFoundWithoutRegardToCaseAndByPosition) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto records = file.records(kEvents);
    EXPECT_EQ(records->field("EVT_NAME"), records->field("evt_name"));
    EXPECT_EQ(records->fieldName(0), "evt_id");
    EXPECT_EQ(records->field(std::size_t{0}), records->field("evt_id"));
    EXPECT_EQ(numberOf([&] { (void)records->field("nothing"); }), kNoItem);
    EXPECT_EQ(numberOf([&] { (void)records->field(records->fieldCount()); }), kNoItem);
    EXPECT_EQ(numberOf([&] { (void)records->fieldName(99); }), kNoItem);
}

TEST(RecordSetState, ClosedAndOpenAreToldApart) {
    STELVAN_GEM_FILE("gem.mdb");
    Recordset records;
    Connection connection;
    EXPECT_EQ(records.state(), ObjectState::Closed);
    EXPECT_EQ(numberOf([&] { records.open(kEvents, connection); }), kUnusable);
    EXPECT_EQ(numberOf([&] { connection.execute("DELETE FROM secs_cusevent"); }), kUnusable);
    EXPECT_EQ(numberOf([&] { connection.close(); }), kClosed);
    EXPECT_EQ(numberOf([&] { (void)records.recordCount(); }), kClosed);
    EXPECT_EQ(numberOf([&] { records.close(); }), kClosed);
    file.open(connection);
    EXPECT_EQ(numberOf([&] { connection.open(); }), kOpen);
    records.open(kEvents, connection);
    EXPECT_EQ(numberOf([&] { records.open(kEvents, connection); }), kOpen);
    connection.close();
    EXPECT_EQ(records.state(), ObjectState::Open);
    EXPECT_EQ(records.recordCount(), 70);
    records.close();
    EXPECT_EQ(records.state(), ObjectState::Closed);
}

TEST(RecordSetState, AFailedOpenLeavesItClosed) {
    STELVAN_GEM_FILE("gem.mdb");
    Connection connection;
    file.open(connection);
    Recordset records;
    EXPECT_EQ(numberOf([&] { records.open("select * from nowhere", connection); }), -2147217865);
    EXPECT_EQ(records.state(), ObjectState::Closed);
    records.open(kEvents, connection);
    EXPECT_EQ(records.recordCount(), 70);
}

TEST(RecordSetBookmarks, LeadBackToTheirRecordAlsoInAClone) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto records = file.records(kEvents);
    for (int i = 0; i < 5; ++i) records->moveNext();
    const Bookmark bookmark = records->bookmark();
    const std::string id = toText(records->field("evt_id"));
    records->moveLast();
    const auto clone = records->clone();
    EXPECT_EQ(clone->recordCount(), 70);
    clone->setBookmark(bookmark);
    EXPECT_EQ(toText(clone->field("evt_id")), id);
    records->setBookmark(bookmark);
    EXPECT_EQ(toText(records->field("evt_id")), id);
    EXPECT_EQ(numberOf([&] { records->setBookmark(bookmark + 1000); }), kNoRecord);
    records->moveNext();
    records->moveLast();
    records->moveNext();
    EXPECT_EQ(numberOf([&] { (void)records->bookmark(); }), kNoRecord);
}

TEST(RecordSetFilter, NumbersAndTextsSelectTheirRecords) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto records = file.records(kEvents);
    records->moveLast();
    const std::string name = toText(records->field("evt_name"));
    const std::string id = toText(records->field("evt_id"));
    records->setFilter("evt_id = " + id);
    EXPECT_EQ(records->recordCount(), 1);
    EXPECT_EQ(toText(records->field("evt_name")), name);
    records->setFilter("EVT_NAME = '" + name + "'");
    EXPECT_EQ(records->recordCount(), 1);
    records->moveNext();
    EXPECT_TRUE(records->eof());
    records->setFilter("evt_name = 'no such name'");
    EXPECT_EQ(records->recordCount(), 0);
    EXPECT_TRUE(records->bof() && records->eof());
    records->setFilter("");
    EXPECT_EQ(records->recordCount(), 70);
    EXPECT_EQ(numberOf([&] { records->setFilter("evt_name = 'it's'"); }), 3001);
    EXPECT_EQ(numberOf([&] { records->setFilter("evt_name"); }), 3001);
    EXPECT_EQ(numberOf([&] { records->setFilter("nothing = 1"); }), kNoItem);
}

TEST(RecordSetChanges, ReachTheFileWithUpdateOnly) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto records = file.records(kEvents);
    const std::string id = toText(records->field("evt_id"));
    const std::string query = "SELECT evt_text FROM secs_cusevent WHERE evt_id = " + id;
    const auto before = file.column(query);
    records->setField("evt_text", Value(std::string("changed")));
    EXPECT_TRUE(records->editPending());
    EXPECT_EQ(toText(records->field("evt_text")), "changed");
    EXPECT_EQ(records->storedField(0, 0), records->field(std::size_t{0}));
    EXPECT_EQ(file.column(query), before);
    records->update();
    EXPECT_FALSE(records->editPending());
    EXPECT_EQ(file.column(query), std::vector<std::string>{"changed"});
    EXPECT_EQ(toText(records->field("evt_text")), "changed");
}

TEST(RecordSetChanges, AreDroppedByCancelOneOrAll) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto records = file.records(kEvents);
    const Value before = records->field("evt_text");
    records->setField("evt_text", Value(std::string("changed")));
    records->cancelUpdate();
    EXPECT_FALSE(records->editPending());
    EXPECT_EQ(records->field("evt_text"), before);
    records->setField("evt_text", Value(std::string("changed")));
    records->cancelBatch();
    EXPECT_EQ(records->field("evt_text"), before);
    records->cancelBatch();  // nothing pending: nothing to do
    records->update();
    EXPECT_EQ(records->field("evt_text"), before);
}

TEST(RecordSetChanges, MovingAwayFromThemIsRefused) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto records = file.records(kEvents);
    const Bookmark here = records->bookmark();
    records->setField("evt_text", Value(std::string("changed")));
    EXPECT_EQ(numberOf([&] { records->moveNext(); }), kNotHere);
    EXPECT_EQ(numberOf([&] { records->setBookmark(here); }), kNotHere);
    EXPECT_EQ(numberOf([&] { records->setFilter("evt_id = 1"); }), kNotHere);
    EXPECT_EQ(numberOf([&] { records->addNew(); }), kNotHere);
    records->cancelUpdate();
    records->moveNext();
}

TEST(RecordSetChanges, WhatAColumnCannotTakeIsRefusedByItsName) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto records = file.records(kEvents);
    const auto refusal = [&](const std::string& field, const std::string& value) {
        const base::RunTimeError error = failureOf([&] { records->setField(field, Value(value)); });
        EXPECT_NE(std::string(error.what()).find("secs_cusevent." + field), std::string::npos)
            << error.what();
        return error.number();
    };
    EXPECT_EQ(refusal("evt_id", "abc"), -2147217913);
    EXPECT_EQ(refusal("evt_id", "1.5"), -2147217913);
    EXPECT_EQ(refusal("evt_id", ""), -2147217913);
    EXPECT_EQ(refusal("evt_id", "3000000000"), -2147217833);
    EXPECT_EQ(refusal("evt_name", std::string(101, 'x')), -2147217833);
    EXPECT_FALSE(records->editPending());
    records->setField("evt_id", Value(std::string(" 4711 ")));
    EXPECT_EQ(toText(records->field("evt_id")), "4711");
}

TEST(RecordSetChanges, AJoinIsReadOnly) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto records = file.records(
        "SELECT rpt.rpt_name, evt.rpt_order FROM secs_def_evt_rpt evt, secs_report rpt WHERE "
        "evt.evt_id = "
        "162 "
        "AND evt.rpt_id = rpt.rpt_id ORDER BY evt.rpt_order");
    ASSERT_EQ(records->recordCount(), 12);
    EXPECT_EQ(numberOf([&] { records->setField("rpt_name", Value(std::string("x"))); }),
              kNotUpdatable);
    EXPECT_EQ(numberOf([&] { records->addNew(); }), kNotUpdatable);
    EXPECT_EQ(numberOf([&] { records->deleteCurrent(); }), kNotUpdatable);
    records->resync();
    EXPECT_EQ(records->recordCount(), 12);
}

TEST(RecordSetChanges, AReadOnlyLockRefusesThem) {
    STELVAN_GEM_FILE("gem.mdb");
    Connection connection;
    file.open(connection);
    Recordset records;
    records.open(kEvents, connection, CursorType::Static, LockType::ReadOnly);
    EXPECT_EQ(numberOf([&] { records.addNew(); }), kNotUpdatable);
}

TEST(RecordSetAdding, TheNewRecordIsTheLastAndCounts) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto records = file.records(kEvents);
    const Bookmark first = records->bookmark();
    records->addNew();
    EXPECT_EQ(records->recordCount(), 71);
    EXPECT_EQ(records->storedCount(), 70);
    EXPECT_TRUE(records->editPending());
    EXPECT_TRUE(jet::isNull(records->field("evt_id")));
    records->setField("evt_id", Value(std::string("9001")));
    records->setField("evt_name", Value(std::string("Brand new")));
    records->setField("evt_enable", Value(std::int32_t{1}));
    records->update();
    EXPECT_EQ(records->storedCount(), 71);
    EXPECT_EQ(toText(records->field("evt_name")), "Brand new");
    EXPECT_TRUE(toFlag(records->field("evt_enable")));
    records->moveNext();
    EXPECT_TRUE(records->eof());
    records->setBookmark(first);
    EXPECT_EQ(file.column("SELECT evt_name FROM secs_cusevent WHERE evt_id = 9001"),
              std::vector<std::string>{"Brand new"});
}

TEST(RecordSetAdding, CancelBringsTheFormerRecordBack) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto records = file.records(kEvents);
    records->moveNext();
    const Bookmark before = records->bookmark();
    records->addNew();
    records->setField("evt_name", Value(std::string("never stored")));
    records->cancelUpdate();
    EXPECT_EQ(records->recordCount(), 70);
    EXPECT_EQ(records->bookmark(), before);
    records->addNew();
    records->cancelBatch(Affect::All);
    EXPECT_EQ(records->bookmark(), before);
    EXPECT_EQ(file.records(kEvents)->recordCount(), 70);
}

TEST(RecordSetAdding, InAnEmptyTableToo) {
    STELVAN_GEM_FILE("gem_empty.mdb");
    const auto records = file.records(kEvents);
    records->addNew();
    EXPECT_FALSE(records->eof());
    records->cancelUpdate();
    EXPECT_TRUE(records->eof());
    records->addNew();
    records->setField("evt_id", Value(std::string("101")));
    records->setField("evt_name", Value(std::string("first")));
    records->update();
    EXPECT_EQ(file.column("SELECT evt_name FROM secs_cusevent"), std::vector<std::string>{"first"});
}

TEST(RecordSetAdding, AnIdentifierThatExistsIsRefusedAndStaysPending) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto records = file.records(kEvents);
    const Value taken = records->field("evt_id");
    records->addNew();
    records->setField("evt_id", taken);
    records->setField("evt_name", Value(std::string("double")));
    const base::RunTimeError error = failureOf([&] { records->update(); });
    EXPECT_EQ(error.number(), -2147467259);
    EXPECT_EQ(std::string(error.what())
                  .find("The changes you requested to the table were not successful"),
              0U);
    EXPECT_TRUE(records->editPending());
    records->setField("evt_id", Value(std::string("9002")));
    records->update();
    EXPECT_EQ(file.records(kEvents)->recordCount(), 71);
}

TEST(RecordSetDeleting, TheCursorStandsOnTheGapUntilTheNextMove) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto records = file.records(kEvents);
    records->moveNext();
    const auto clone = records->clone();
    clone->moveNext();
    clone->moveNext();
    const std::string follower = toText(clone->field("evt_id"));
    records->deleteCurrent();
    EXPECT_EQ(records->recordCount(), 69);
    EXPECT_FALSE(records->bof() || records->eof());
    EXPECT_FALSE(records->onRecord());
    EXPECT_EQ(records->position(), 0);
    EXPECT_EQ(numberOf([&] { (void)records->field("evt_id"); }), kNoRecord);
    records->resync();
    records->moveNext();
    EXPECT_EQ(toText(records->field("evt_id")), follower);
    EXPECT_EQ(records->position(), 2);
    EXPECT_EQ(file.records(kEvents)->recordCount(), 69);
}

TEST(RecordSetDeleting, BehindTheLastThereIsTheEnd) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto records = file.records(kEvents);
    records->moveLast();
    records->deleteCurrent();
    records->resync();
    EXPECT_TRUE(records->eof());
    records->moveFirst();
    EXPECT_FALSE(records->eof());
}

TEST(RecordSetDeleting, EveryRowOneByOneMovingNext) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto links = file.records("SELECT * FROM secs_def_evt_rpt WHERE evt_id = 162");
    int deleted = 0;
    for (; !links->eof(); links->moveNext(), ++deleted) links->deleteCurrent();
    EXPECT_EQ(deleted, 12);
    EXPECT_TRUE(file.rows("SELECT * FROM secs_def_evt_rpt WHERE evt_id = 162").empty());
    EXPECT_EQ(file.rows("SELECT * FROM secs_def_evt_rpt").size(), 113U);
}

TEST(RecordSetConflicts, AnUpdateOverAnothersChangeIsRefused) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto mine = file.records(kEvents);
    const auto theirs = file.records(kEvents);
    (void)mine->field("evt_name");
    theirs->setField("evt_text", Value(std::string("theirs")));
    theirs->update();
    mine->setField("evt_group", Value(std::string("mine")));
    EXPECT_EQ(numberOf([&] { mine->update(); }), kRowChanged);
    EXPECT_TRUE(mine->editPending());
    mine->cancelUpdate();
    mine->resyncCurrent();
    EXPECT_EQ(toText(mine->field("evt_text")), "theirs");
    mine->setField("evt_group", Value(std::string("mine")));
    mine->update();
    const auto stored = file.records(kEvents);
    EXPECT_EQ(toText(stored->field("evt_text")), "theirs");
    EXPECT_EQ(toText(stored->field("evt_group")), "mine");
}

TEST(RecordSetConflicts, ARowDeletedByAnotherIsReportedAndLeaves) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto mine = file.records(kEvents);
    (void)mine->field("evt_name");
    file.records(kEvents)->deleteCurrent();
    mine->setField("evt_group", Value(std::string("mine")));
    EXPECT_EQ(numberOf([&] { mine->update(); }), kRowChanged);
    mine->cancelUpdate();
    EXPECT_EQ(numberOf([&] { mine->deleteCurrent(); }), kRowChanged);
    EXPECT_EQ(mine->recordCount(), 69);
    mine->moveNext();
    EXPECT_FALSE(mine->eof());
}

TEST(RecordSetConflicts, ValuesStayAsFirstLookedAtUntilResynchronised) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto mine = file.records(kEvents);
    const Value before = mine->field("evt_text");
    const auto theirs = file.records(kEvents);
    theirs->setField("evt_text", Value(std::string("theirs")));
    theirs->update();
    theirs->moveLast();
    theirs->deleteCurrent();
    EXPECT_EQ(mine->field("evt_text"), before);
    EXPECT_EQ(mine->recordCount(), 70);
    const Bookmark shown = mine->bookmark();
    mine->resync();
    EXPECT_EQ(mine->bookmark(), shown);
    EXPECT_EQ(toText(mine->field("evt_text")), "theirs");
    EXPECT_EQ(mine->recordCount(), 69);
}

TEST(RecordSetUnits, AllConnectionsTakePartAndARollbackMakesTheRecordPendingAgain) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto records = file.records(kEvents);
    const auto deleting = file.records("select * from secs_report");
    {
        UnitOfWork unit(file.path());
        file.execute("DELETE FROM secs_def_evt_rpt WHERE evt_id = 162");
        records->addNew();
        records->setField("evt_id", Value(std::string("9003")));
        records->setField("evt_name", Value(std::string("in doubt")));
        records->update();
        deleting->deleteCurrent();
        EXPECT_FALSE(records->editPending());
        EXPECT_EQ(file.column("SELECT evt_id FROM secs_cusevent WHERE evt_id = 9003").size(), 1U);
    }
    EXPECT_TRUE(records->editPending());
    EXPECT_EQ(toText(records->field("evt_name")), "in doubt");
    EXPECT_EQ(deleting->recordCount(), 60);
    EXPECT_EQ(file.records(kEvents)->recordCount(), 70);
    EXPECT_EQ(file.rows("SELECT * FROM secs_def_evt_rpt WHERE evt_id = 162").size(), 12U);
    {
        UnitOfWork unit(file.path());
        records->update();
        unit.commit();
    }
    EXPECT_FALSE(records->editPending());
    EXPECT_EQ(file.records(kEvents)->recordCount(), 71);
}

TEST(RecordSetViews, StoredValuesAreReadWithoutMovingTheCursor) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto records = file.records(kEvents);
    const Bookmark here = records->bookmark();
    const Value last = records->storedField(69, 0);
    EXPECT_EQ(records->bookmark(), here);
    records->moveLast();
    EXPECT_EQ(records->field(std::size_t{0}), last);
    EXPECT_EQ(numberOf([&] { (void)records->storedField(70, 0); }), kNoItem);
    records->setField("evt_text", Value(std::string("pending")));
    EXPECT_NE(records->storedField(69, 3), Value(std::string("pending")));
}

}  // namespace
}  // namespace stelvan::db
