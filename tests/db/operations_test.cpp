#include "db/operations.h"

#include <gtest/gtest.h>

#include "base/error_info.h"
#include "tests/db/gem_file.h"

namespace stelvan::db {
namespace {

using test::GemFile;

/// The operations as the main window holds them, with the lines that it would show.
struct Window {
    explicit Window(const std::string& databasePath) : path(databasePath) {}

    std::string path;
    std::vector<std::string> shown;
    base::ErrorInfo errors{[this](const std::string& line) { shown.push_back(line); }};
    CurrentRecords current;
    Operations operations{path, current};

    [[nodiscard]] bool reportedOnce(const std::string& procedure, std::int32_t number) const {
        const std::string start =
            "ERROR(" + std::to_string(number) + ") [frmMain." + procedure + ".0]: ";
        return shown.size() == 1 && shown.front().find(start) == 0;
    }
};

TEST(Operations, TheConnectionTextIsExact) {
    const Window window("/data/gem.mdb");
    EXPECT_EQ(window.operations.connectionText(),
              "Provider=Microsoft.Jet.OLEDB.4.0;Persist Security Info=False; Mode=Read|Write;Data "
              "Source=/data/gem.mdb");
}

TEST(GetNextId, AnEmptyTableYields101) {
    STELVAN_GEM_FILE("gem_empty.mdb");
    Window window(file.path());
    EXPECT_EQ(window.operations.lGetNextID("var_id", "secs_cusvar"), "101");
    EXPECT_TRUE(window.shown.empty());
}

TEST(GetNextId, AHighestIdentifierOf57Yields101AndOneOf101Yields102) {
    STELVAN_GEM_FILE("gem_edges.mdb");
    Window window(file.path());
    EXPECT_EQ(window.operations.lGetNextID("var_id", "secs_cusvar"), "101");
    EXPECT_EQ(window.operations.lGetNextID("evt_id", "secs_cusevent"), "102");
}

TEST(GetNextId, AHighestIdentifierOf2147483647YieldsTheEmptyText) {
    STELVAN_GEM_FILE("gem_edges.mdb");
    Window window(file.path());
    EXPECT_EQ(window.operations.lGetNextID("alm_id", "secs_alarm"), "");
    EXPECT_TRUE(window.shown.empty());
}

TEST(GetNextId, DoubleIdentifiersAreCountedLikeWholeOnes) {
    STELVAN_GEM_FILE("gem_int_flags.mdb");
    Window window(file.path());
    EXPECT_EQ(window.operations.lGetNextID("var_id", "secs_cusvar"), "2081");
    file.execute("UPDATE secs_cusvar SET var_id = 2082.5 WHERE var_id = 2080");
    EXPECT_EQ(window.operations.lGetNextID("var_id", "secs_cusvar"), "2083");
    file.execute("UPDATE secs_cusvar SET var_id = 5000000000 WHERE var_id = 2079");
    EXPECT_EQ(window.operations.lGetNextID("var_id", "secs_cusvar"), "");
    EXPECT_TRUE(window.shown.empty());
}

TEST(GetNextId, ATextThatIsNoNumberYieldsTheEmptyText) {
    STELVAN_GEM_FILE("gem.mdb");
    Window window(file.path());
    EXPECT_EQ(window.operations.lGetNextID("evt_name", "secs_cusevent"), "");
    EXPECT_TRUE(window.shown.empty());
}

TEST(GetNextId, AFailureIsReportedUnderItsName) {
    STELVAN_GEM_FILE("gem.mdb");
    Window window(file.path());
    window.errors.handle("cmdNew_Click",
                         [&] { (void)window.operations.lGetNextID("evt_id", "no_table"); });
    EXPECT_TRUE(window.reportedOnce("lGetNextID", -2147217865));
}

TEST(CheckDuplicate, FindsIdentifiersAndQuotedTexts) {
    STELVAN_GEM_FILE("gem.mdb");
    Window window(file.path());
    const std::string name = file.column("SELECT evt_name FROM secs_cusevent").front();
    EXPECT_TRUE(window.operations.lCheckDuplicate("'" + name + "'", "evt_name", "secs_cusevent"));
    EXPECT_FALSE(window.operations.lCheckDuplicate("'no such name'", "evt_name", "secs_cusevent"));
    EXPECT_TRUE(window.operations.lCheckDuplicate("101", "var_id", "secs_cusvar"));
    EXPECT_FALSE(window.operations.lCheckDuplicate("99999", "var_id", "secs_cusvar"));
    EXPECT_TRUE(window.shown.empty());
}

TEST(CheckDuplicate, ATextValueNotWrappedInQuotesIsReported) {
    STELVAN_GEM_FILE("gem.mdb");
    Window window(file.path());
    window.errors.handle("txtEvtName_LostFocus", [&] {
        const bool found = window.operations.lCheckDuplicate("ABC", "evt_name", "secs_cusevent");
        ADD_FAILURE() << "a question that could not be asked was answered: " << found;
    });
    EXPECT_TRUE(window.reportedOnce("lCheckDuplicate", -2147217904));
}

TEST(CheckDuplicate, AQuoteInsideTheTextBreaksTheStatement) {
    STELVAN_GEM_FILE("gem.mdb");
    Window window(file.path());
    window.errors.handle("txtEvtName_LostFocus", [&] {
        const bool found =
            window.operations.lCheckDuplicate("'Operator's name'", "var_name", "secs_cusvar");
        ADD_FAILURE() << "a question that could not be asked was answered: " << found;
    });
    EXPECT_TRUE(window.reportedOnce("lCheckDuplicate", -2147217900));
}

TEST(FilterField, TheValue12FiltersNumericallyAndA1WithQuotes) {
    STELVAN_GEM_FILE("gem.mdb");
    Window window(file.path());
    const auto events = file.records("select * from secs_gemevent");
    EXPECT_EQ(&window.operations.lFilterField(*events, "evt_id", "12"), events.get());
    EXPECT_EQ(events->recordCount(), 1);
    EXPECT_EQ(toText(events->field("evt_id")), "12");
    const auto variables = file.records("select * from secs_cusvar");
    window.operations.lFilterField(*variables, "var_format", "A");
    EXPECT_GT(variables->recordCount(), 0);
    window.operations.lFilterField(*variables, "var_format", "A1");
    EXPECT_EQ(variables->recordCount(), 0);
    EXPECT_TRUE(window.shown.empty());
}

TEST(FilterField, AQuoteInTheValueIsReported) {
    STELVAN_GEM_FILE("gem.mdb");
    Window window(file.path());
    const auto events = file.records("select * from secs_gemevent");
    window.errors.handle("test",
                         [&] { window.operations.lFilterField(*events, "evt_name", "it's"); });
    EXPECT_TRUE(window.reportedOnce("lFilterField", 3001));
    EXPECT_EQ(events->recordCount(), 25);
}

TEST(LoadData, ReplacesTheCurrentRecordsAndCallsTheDisplay) {
    STELVAN_GEM_FILE("gem.mdb");
    Window window(file.path());
    int displayed = 0;
    window.operations.onLoaded = [&] { ++displayed; };
    window.operations.lLoadData("select * from secs_gemevent");
    EXPECT_EQ(window.current.position, 1);
    EXPECT_EQ(window.current.adoGEM.recordSource, "select * from secs_gemevent");
    const auto old = window.current.records;
    old->setField("evt_enable", Value(std::int32_t{0}));
    window.operations.lLoadData("select * from secs_report");
    EXPECT_EQ(old->state(), ObjectState::Closed);
    EXPECT_EQ(window.current.records->recordCount(), 60);
    EXPECT_EQ(displayed, 2);
    EXPECT_TRUE(window.shown.empty());
}

TEST(LoadData, AQueryWithoutRowsLeavesTheRecordNumberZero) {
    STELVAN_GEM_FILE("gem_empty.mdb");
    Window window(file.path());
    window.operations.lLoadData("select * from secs_report");
    EXPECT_EQ(window.current.position, 0);
    EXPECT_FALSE(window.current.onRecord());
}

TEST(LoadData, AFailureLeavesNoRecordSetAtAll) {
    STELVAN_GEM_FILE("gem.mdb");
    Window window(file.path());
    int displayed = 0;
    window.operations.onLoaded = [&] { ++displayed; };
    window.operations.lLoadData("select * from secs_gemevent");
    window.path = file.path() + ".missing";
    EXPECT_FALSE(window.errors.handle("tvwSECSItem_NodeClick", [&] {
        window.operations.lLoadData("select * from secs_report");
    }));
    EXPECT_EQ(window.current.records, nullptr);
    EXPECT_EQ(window.current.position, 0);
    EXPECT_EQ(displayed, 1);
    EXPECT_TRUE(window.reportedOnce("lLoadData", -2147467259));
    EXPECT_NE(window.shown.front().find("Could not find file '"), std::string::npos);
}

TEST(GetRecordSet, OpensAndReturnsTheRecordSetOrNothing) {
    STELVAN_GEM_FILE("gem.mdb");
    Window window(file.path());
    Connection connection;
    Recordset records;
    EXPECT_EQ(&window.operations.lGetRecordSet(connection, records,
                                               "SELECT rpt_name, rpt_id FROM secs_report"),
              &records);
    EXPECT_EQ(records.recordCount(), 60);
    records.close();
    connection.close();
    EXPECT_FALSE(window.errors.handle("lUpdateEvtRptList", [&] {
        window.operations.lGetRecordSet(connection, records, "SELECT x FROM secs_report");
    }));
    EXPECT_TRUE(window.reportedOnce("lGetRecordSet", -2147217904));
}

TEST(ExecCommand, ClosesTheConnectionFirstAndLeavesItOpen) {
    STELVAN_GEM_FILE("gem.mdb");
    Window window(file.path());
    Connection connection;
    window.operations.lExecCommand(
        connection, std::string("Delete FROM secs_def_evt_rpt ") + "WHERE evt_id = " + "162");
    EXPECT_EQ(connection.state(), ObjectState::Open);
    window.operations.lExecCommand(connection, std::string("UPDATE secs_cusvar ") +
                                                   " SET var_parentkey = 0 " +
                                                   " WHERE var_parentkey = " + "227");
    EXPECT_TRUE(window.shown.empty());
    EXPECT_TRUE(file.rows("SELECT * FROM secs_def_evt_rpt WHERE evt_id = 162").empty());
    EXPECT_TRUE(file.rows("SELECT var_id FROM secs_cusvar WHERE var_parentkey = 227").empty());
    EXPECT_EQ(file.rows("SELECT var_id FROM secs_cusvar").size(), 300U);
}

TEST(ExecCommand, AFailureIsReportedUnderItsName) {
    STELVAN_GEM_FILE("gem.mdb");
    Window window(file.path());
    Connection connection;
    window.errors.handle("cmdDelete_Click", [&] {
        window.operations.lExecCommand(connection, "UPDATE secs_cusvar SET nothing = 1");
    });
    EXPECT_TRUE(window.reportedOnce("lExecCommand", -2147217904));
}

}  // namespace
}  // namespace stelvan::db
