// "Duplicate": a record like the one shown.
#include <QLabel>

#include "tests/gui/aids_bench.h"

namespace stelvan::app {
namespace {

class Duplicate : public test::AidsBench {
protected:
    void SetUp() override { open(); }
    void duplicate() {
        ASSERT_TRUE(tool(form::Tool::Duplicate)->isEnabled());
        tool(form::Tool::Duplicate)->trigger();
        ASSERT_EQ(state().editMode, form::EditMode::Adding);
    }
    [[nodiscard]] QString next(const char* column, const char* table) const {
        const auto ids = query(std::string("SELECT MAX(") + column + ") FROM " + table);
        return QString::number(ids.first().toLongLong() + 1);
    }
};

TEST_F(Duplicate, TakesOverAllButTheIdentifierAndWaitsForAnotherName) {
    clickCategory(gem::CSTVSV);
    goTo("cmbVarFormat", "F4");
    QMap<QString, QString> before;
    for (const form::Field* f : form().fields()) before[f->widget()->objectName()] = f->text();
    const QString proposed = next("var_id", "secs_cusvar");
    duplicate();
    EXPECT_EQ(shown("txtVarID"), proposed);
    for (const char* name : {"txtVarName", "txtVarGroup", "txtVarDesc", "cmbVarFormat", "txtVarMin",
                             "txtVarMax", "txtVarUnit", "txtVarDefValue", "txtVarValue"})
        EXPECT_EQ(shown(name), before[name]) << name;
    auto* const name = qobject_cast<QLineEdit*>(field("txtVarName").widget());
    EXPECT_TRUE(name->hasFocus());
    EXPECT_EQ(name->selectedText(), before["txtVarName"]);
    save();
    EXPECT_EQ(state().editMode, form::EditMode::Adding);  // the name is another record's
    dialogs.messages.clear();
    typeAndLeave("txtVarName", "Another_name");
    save();
    expectStored();
    EXPECT_EQ(query("SELECT var_name, var_format FROM secs_cusvar WHERE var_id = " +
                    proposed.toStdString()),
              QStringList("Another_name|F4"));
}

TEST_F(Duplicate, OfAnEventSendsTheSameReportsInTheirOrder) {
    const QString event =
        query(
            "SELECT l.evt_id FROM secs_def_evt_rpt l, secs_cusevent e WHERE l.evt_id = e.evt_id "
            "AND l.rpt_order = 2")
            .value(0);
    ASSERT_NE(event, "");
    clickCategory(gem::CSTEVT);
    goTo("txtEvtID", event);
    const QStringList linked = columnOf(form().reports.selected, 1);
    ASSERT_GT(linked.size(), 1);
    duplicate();
    const QString id = shown("txtEvtID");
    EXPECT_EQ(columnOf(form().reports.selected, 1), linked);
    typeAndLeave("txtEvtName", "Another_event");
    save();
    expectStored();
    EXPECT_EQ(query("SELECT rpt_id FROM secs_def_evt_rpt WHERE evt_id = " + id.toStdString() +
                    " ORDER BY rpt_order"),
              linked);
}

TEST_F(Duplicate, OfAReportCarriesTheVariablesInTheOrderOfTheNumbers) {
    const QString report =
        query("SELECT rpt_id FROM secs_rpt_var WHERE var_order >= 10 AND rpt_id > 100").value(0);
    if (report.isEmpty()) GTEST_SKIP() << "no report of ten variables";
    const std::string ordered = " ORDER BY var_order";
    const auto variables =
        query("SELECT var_id FROM secs_rpt_var WHERE rpt_id = " + report.toStdString() + ordered);
    clickCategory(gem::CSTRPT);
    goTo("txtRptID", report);
    duplicate();
    const QString id = shown("txtRptID");
    typeAndLeave("txtRptName", "Another_report");
    save();
    expectStored();
    EXPECT_EQ(query("SELECT var_id FROM secs_rpt_var WHERE rpt_id = " + id.toStdString() + ordered),
              variables);
}

TEST_F(Duplicate, OfAListHasNoChildren) {
    const QString list =
        query("SELECT var_parentkey FROM secs_cusvar WHERE var_parentkey <> 0").value(0);
    const std::string children =
        "SELECT var_id FROM secs_cusvar WHERE var_parentkey = " + list.toStdString();
    const auto before = query(children);
    clickCategory(gem::CSTVSV);
    goTo("txtVarID", list);
    duplicate();
    EXPECT_EQ(shown("cmbVarFormat").toUpper(), "L");
    EXPECT_EQ(form().children.selected->rowCount(), 0);
    typeAndLeave("txtVarName", "Another_list");
    save();
    expectStored();
    EXPECT_EQ(query(children), before);
}

TEST_F(Duplicate, IsForRecordsOfTheEquipmentWhileBrowsingOnly) {
    EXPECT_FALSE(tool(form::Tool::Duplicate)->isEnabled());
    clickCategory(gem::GEMSDV);
    EXPECT_FALSE(tool(form::Tool::Duplicate)->isEnabled());
    clickCategory(gem::CSTALM);
    EXPECT_TRUE(tool(form::Tool::Duplicate)->isEnabled());
    viewAll();
    EXPECT_FALSE(tool(form::Tool::Duplicate)->isEnabled());
    form().tspData->setCurrentIndex(0);
    EXPECT_TRUE(tool(form::Tool::Duplicate)->isEnabled());
    edit();
    EXPECT_FALSE(tool(form::Tool::Duplicate)->isEnabled());
    cancel();
    EXPECT_TRUE(tool(form::Tool::Duplicate)->isEnabled());
}

TEST_F(Duplicate, CancelledLeavesTheFileAndTheRecordAsTheyWere) {
    clickCategory(gem::CSTALM);
    goToNumber(3);
    const QString id = shown("txtAlmID");
    const auto before = query("SELECT alm_id FROM secs_alarm");
    duplicate();
    cancel();
    expectBrowsing();
    EXPECT_EQ(shown("txtAlmID"), id);
    EXPECT_EQ(query("SELECT alm_id FROM secs_alarm"), before);
}

}  // namespace
}  // namespace stelvan::app
