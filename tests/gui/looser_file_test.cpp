// The same work on files of other layouts: fractional identifiers, flags as numbers, Null parents;
// names in other letters; no column that the program does not ask for.
#include <QLabel>

#include "db/query.h"
#include "db/value_text.h"
#include "tests/gui/edit_bench.h"

namespace stelvan::app {
namespace {

class OtherLayout : public test::EditBench, public ::testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        EditBench::SetUp();
        open(GetParam());
    }
    [[nodiscard]] QStringList values(const std::string& sql) {
        QStringList found;
        db::Query query(window->window().operations, sql);
        query.forEach([&](db::Query& row) {
            found << form::toQt(db::toTextOrEmpty(row.records().field(0)));
        });
        return found;
    }
};

class LooserFile : public OtherLayout {};

TEST_P(LooserFile, AnEventKeepsItsFlagAsANumberAndItsReportsInOrder) {
    clickCategory(gem::CSTEVT);
    goTo("txtEvtID", "162");
    const form::TwoListEditor& reports = form().reports;
    ASSERT_EQ(reports.selected->rowCount(), 12);
    edit();
    check(&form()[chkEvtEnable], false);
    press(reports.orderDown);
    const QStringList wanted = columnOf(reports.selected, 1);
    save();
    expectStored();
    EXPECT_EQ(values("SELECT rpt_id FROM secs_def_evt_rpt WHERE evt_id = 162 ORDER BY rpt_order"),
              wanted);
    EXPECT_EQ(values("SELECT evt_enable FROM secs_cusevent WHERE evt_id = 162"), QStringList{"0"});
    edit();
    check(&form()[chkEvtEnable], true);
    save();
    expectStored();
    EXPECT_EQ(values("SELECT evt_enable FROM secs_cusevent WHERE evt_id = 162"), QStringList{"1"});
}

TEST_P(OtherLayout, AReportKeepsTheOrderOfItsVariables) {
    clickCategory(gem::CSTRPT);
    goTo("txtRptID", "126");
    edit();
    const QStringList wanted = columnOf(form().variables.selected, 1);
    ASSERT_EQ(wanted.size(), 14);
    save();
    expectStored();
    EXPECT_EQ(values("SELECT var_id FROM secs_rpt_var WHERE rpt_id = 126 ORDER BY var_order"),
              wanted);
}

TEST_P(OtherLayout, AListTakesAndReleasesChildren) {
    clickCategory(gem::CSTVSV);
    goTo("txtVarID", "227");
    edit();
    const form::TwoListEditor& children = form().children;
    take(children, 1, "101", children.select, children.pool);
    take(children, 2, "235", children.deselect, children.selected);
    const QStringList wanted = columnOf(children.selected, 2);
    save();
    expectStored();
    EXPECT_EQ(
        values("SELECT var_id FROM secs_cusvar WHERE var_parentkey = 227 ORDER BY var_accessid"),
        wanted);
    EXPECT_EQ(values("SELECT var_parentkey FROM secs_cusvar WHERE var_id = 235"), QStringList{"0"});
}

TEST_P(OtherLayout, AnAddedVariableIsOfferedInThePoolsAtOnce) {
    add(gem::CSTVSV);
    const QString id = form()[txtVarID].text();
    EXPECT_EQ(id, "2081") << "no fraction";
    type(form()[txtVarName], "NewVariable");
    type(form()[txtVarGroup], "Group");
    type(form()[txtVarDesc], "Description");
    type(form()[cmbVarFormat], "A");
    save();
    expectStored();
    goToNumber(1);
    clickCategory(gem::CSTVSV);
    goTo("txtVarID", "227");
    edit();
    EXPECT_TRUE(columnOf(form().children.pool, 1).contains(id));
}

TEST_P(OtherLayout, AnAlarmIsDeleted) {
    clickCategory(gem::CSTALM);
    goTo("txtAlmID", "101");
    answerYesAndDelete();
    expectStored();
    EXPECT_EQ(values("SELECT alm_id FROM secs_alarm WHERE alm_id = 101"), QStringList());
    EXPECT_EQ(place(), "1 of 89");
}

const auto kName = [](const auto& file) {
    const std::string name = file.param;
    return name.substr(0, name.find('.'));
};

INSTANTIATE_TEST_SUITE_P(Models, LooserFile, ::testing::Values("gem_int_flags.mdb"), kName);
INSTANTIATE_TEST_SUITE_P(Models, OtherLayout,
                         ::testing::Values("gem_int_flags.mdb", "gem_spellings.mdb",
                                           "gem_few_columns.mdb"),
                         kName);

}  // namespace
}  // namespace stelvan::app
