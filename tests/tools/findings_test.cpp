// A check from the window: what is listed, where it leads, how it ends.
#include <gmock/gmock.h>

#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <set>

#include "base/text.h"
#include "gem/kinds.h"
#include "jet/rows/value_text.h"
#include "model/core/parts.h"
#include "tests/tools/tool_bench.h"
#include "tools/findings/findings_model.h"

namespace stelvan::test {
namespace {

using tools::FindingsModel;

class Findings : public ToolBench {
protected:
    [[nodiscard]] QTreeView& list() const { return child<QTreeView>(*window, "lvwFindings"); }
    [[nodiscard]] const FindingsModel& findings() const {
        return static_cast<const FindingsModel&>(*list().model());
    }
    [[nodiscard]] QString summary() const { return child<QLabel>(*window, "lblFindings").text(); }
    [[nodiscard]] QString notice() const {
        return child<QLabel>(*window, "lblFindingsNotice").text();
    }
    [[nodiscard]] bool checking() const { return all().tools.check.running(); }
    void waitForCheck() const {
        ASSERT_TRUE(QTest::qWaitFor([this] { return !checking(); }, 60'000));
    }
    void check() {
        trigger(form::Tool::Check);
        waitForCheck();
    }
    void check(const std::string& model) {
        open(model);
        check();
    }
    /// Goes to a finding by Enter.
    void choose(const QModelIndex& index) const {
        list().setCurrentIndex(index);
        list().setFocus();
        QTest::keyClick(&list(), Qt::Key_Return);
    }
    /// Each finding with its index.
    void forEach(const std::function<void(const model::Finding&, const QModelIndex&)>& use) const {
        for (int rule = 0; rule < findings().rowCount(); ++rule) {
            const QModelIndex parent = findings().index(rule, 0);
            for (int row = 0; row < findings().rowCount(parent); ++row) {
                const QModelIndex index = findings().index(row, 0, parent);
                use(*findings().findingAt(index), index);
            }
        }
    }
    [[nodiscard]] QModelIndex indexOf(const std::string& rule,
                                      const std::string& field = {}) const {
        QModelIndex wanted;
        forEach([&](const model::Finding& finding, const QModelIndex& index) {
            if (!wanted.isValid() && finding.rule == rule &&
                (field.empty() || finding.field == field))
                wanted = index;
        });
        return wanted;
    }
    [[nodiscard]] static std::string focused() {
        const QWidget* const focus = QApplication::focusWidget();
        return focus == nullptr ? std::string() : focus->objectName().toStdString();
    }
    /// The identifier of the record on screen, a setting's name.
    [[nodiscard]] QString shownId() const {
        const auto kind = gem::kindOf(state().category);
        const gem::Control id = kind == gem::Kind::ProtocolSettings
                                    ? gem::Control::txtSttName
                                    : gem::fieldWith(kind, gem::Check::Id);
        return form()[id].text();
    }
};

TEST_F(Findings, AreWhatTheCommandLineFindsGroupedByRuleWithCounts) {
    check("gem.mdb");
    const ProgramRun run = runGemdb({"check", path(), "--json"});
    std::map<std::string, std::size_t> counts;
    for (const std::string& line : splitLines(run.out))
        ++counts[nlohmann::json::parse(line)["rule"].get<std::string>()];
    ASSERT_GT(counts.size(), 5U);
    EXPECT_EQ(findings().rowCount(), static_cast<int>(counts.size()));
    for (int rule = 0; rule < findings().rowCount(); ++rule) {
        const QModelIndex index = findings().index(rule, 0);
        const std::string name = findings().findingAt(findings().index(0, 0, index))->rule;
        EXPECT_EQ(findings().rowCount(index), static_cast<int>(counts[name])) << name;
        EXPECT_EQ(index.data().toString(),
                  QStringLiteral("%1 (%2)").arg(QString::fromStdString(name)).arg(counts[name]));
    }
    EXPECT_EQ(summary().toStdString(), splitLines(runGemdb({"check", path()}).out).back());
    EXPECT_TRUE(dialogs.texts().isEmpty());
}

TEST_F(Findings, WorstRulesComeFirst) {
    check("gem.mdb");
    int last = 2;
    for (int rule = 0; rule < findings().rowCount(); ++rule) {
        const QString weight = findings().index(rule, FindingsModel::Weight).data().toString();
        const int rank = weight == "error" ? 2 : weight == "warning" ? 1 : 0;
        EXPECT_LE(rank, last);
        last = rank;
    }
}

/// All findings of a model, of whatever kind: those of records lead to their record and the control
/// that shows the column, those of what no record shows say so.
class FindingsOf : public Findings, public ::testing::WithParamInterface<const char*> {
protected:
    /// The controls that may stand for what is at fault.
    [[nodiscard]] std::vector<std::string> controlsOf(const model::Finding& finding) const {
        const gem::Kind kind = gem::kindOf(state().category);
        std::vector<std::string> names;
        const std::string first(gem::nameOf(gem::fieldsOf(kind).front().control));
        for (const gem::FieldFacts& field : gem::fieldsOf(kind))
            if (!finding.field.empty() && base::sameWord(field.column, finding.field) &&
                form()[field.control].isVisible())
                names.emplace_back(gem::nameOf(field.control));
        // The values of some settings are not shown.
        if (names.empty() && kind == gem::Kind::ProtocolSettings) return {first};
        if (!names.empty() && !model::isLinks(*finding.part)) return names;
        const std::string list(gem::nameOf(gem::factsOf(kind).list));
        if (model::isLinks(*finding.part)) return {list};
        return {list, first};
    }
    /// The control that has the focus, or, where it cannot have it while browsing, bears the mark.
    [[nodiscard]] std::string ledTo(const model::Finding& finding) const {
        if (focused() != "lvwFindings") return focused();
        const QString text = QString::fromStdString(finding.text).trimmed();
        for (const form::Field* field : form().fields())
            if (!field->isEnabled() && field->isVisible() && field->faultShown() == text)
                return field->widget()->objectName().toStdString();
        return {};
    }
    void expectThatAllLeadToTheirFields() {
        std::set<std::string> led;
        forEach([&](const model::Finding& finding, const QModelIndex& index) {
            dialogs.messages.clear();  // Nulls in what is shown are reported
            form().statusPanel->clear();
            choose(index);
            SCOPED_TRACE(finding.rule + " " + finding.table + " " + jet::textOf(finding.id) + " " +
                         finding.field);
            if (isNowhere(finding)) {
                EXPECT_TRUE(status().startsWith("There is no record to show") ||
                            status().contains("type is unknown"))
                    << status().toStdString();
                return;
            }
            led.insert(finding.rule);
            EXPECT_EQ(shownId().toStdString(), jet::textOf(finding.id));
            EXPECT_THAT(controlsOf(finding), ::testing::Contains(ledTo(finding)));
        });
        ledRules = std::move(led);
    }
    [[nodiscard]] static bool isNowhere(const model::Finding& finding) {
        return finding.row == jet::RowId{} || finding.rule == "dangling-event" ||
               (finding.rule == "invalid-field" && finding.field == "var_type");
    }
    std::set<std::string> ledRules;
};

TEST_P(FindingsOf, LeadToTheRecordAndToTheFieldAtFault) {
    check(GetParam());
    expectThatAllLeadToTheirFields();
    EXPECT_GT(ledRules.size(), 3U);
}
INSTANTIATE_TEST_SUITE_P(, FindingsOf,
                         ::testing::Values("gem.mdb", "gem_int_flags.mdb", "gem_edges.mdb"));

using FindingsOfEveryRule = FindingsOf;

TEST_F(FindingsOfEveryRule, LeadToTheRecordAndToTheFieldAtFault) {
    open();
    for (
        const char* change : {
            "UPDATE secs_alarm SET alm_set_ceid = 9999, alm_set_cename = 'None' WHERE alm_id = 101",
            "UPDATE secs_alarm SET alm_set_ceid = 101, alm_set_cename = 'Other' WHERE alm_id = 102",
            "UPDATE secs_alarm SET alm_set_ceid = 101, alm_clr_ceid = 101 WHERE alm_id = 103",
            "DELETE FROM secs_def_evt_rpt WHERE evt_id = 21",
            "UPDATE secs_gemevent SET evt_id = 101 WHERE evt_id = 21",
            "UPDATE secs_report SET rpt_name = ' Sc1Status' WHERE rpt_id = 102",
            "UPDATE secs_cusvar SET var_parentkey = 9999 WHERE var_id = 130",
            "UPDATE secs_cusvar SET var_parentkey = 131 WHERE var_id = 132",
            "UPDATE secs_cusvar SET var_format = 'L', var_parentkey = 133 WHERE var_id = 133",
            "UPDATE secs_cusvar SET var_type = 'XX' WHERE var_id = 134",
            "INSERT INTO secs_def_evt_rpt (evt_id, rpt_id, rpt_order) VALUES (9999, 101, 1)",
            "UPDATE secs_rpt_var SET var_order = var_order + 5 WHERE rpt_id = 103",
            "INSERT INTO secs_rpt_var (rpt_id, var_id, var_order) VALUES (104, 101, 1)",
            "INSERT INTO secs_rpt_var (rpt_id, var_id, var_order) VALUES (104, 101, 1)",
            "DELETE FROM secs_setting WHERE set_field = 'DeviceID'",
        })
        changeElsewhere(change);
    check();
    expectThatAllLeadToTheirFields();
    for (const char* rule : {"alarm-event-missing", "alarm-event-mismatch", "alarm-pair",
                             "child-of-no-list",    "dangling-report",      "dangling-variable",
                             "duplicate-id",        "duplicate-link",       "duplicate-name",
                             "empty-list",          "empty-report",         "invalid-field",
                             "list-loop",           "null-field",           "order-gap",
                             "orphan-child",        "out-of-limits",        "reserved-id",
                             "setting-invalid",     "setting-unknown",      "standard-item-differs",
                             "unreported-event",    "unused-report"})
        EXPECT_TRUE(ledRules.contains(rule)) << rule;
}

TEST_F(Findings, MarkTheFieldUntilAnotherRecordIsShown) {
    check("gem.mdb");
    const QModelIndex fault = indexOf("out-of-limits", "var_val");
    ASSERT_TRUE(fault.isValid());
    choose(fault);
    EXPECT_EQ(focused(), "txtVarValue");
    const QString text = QString::fromStdString(findings().findingAt(fault)->text).trimmed();
    EXPECT_EQ(form()[txtVarValue].faultShown(), text);
    EXPECT_TRUE(form()[txtVarValue].widget()->accessibleDescription().startsWith(text));
    press(form().nav.cmdPrevious);
    EXPECT_EQ(form()[txtVarValue].faultShown(), "");
}

TEST_F(Findings, MarksEndWhenTheRecordIsEdited) {
    check("gem.mdb");
    choose(indexOf("out-of-limits", "var_val"));
    ASSERT_NE(form()[txtVarValue].faultShown(), "");
    edit();
    EXPECT_EQ(form()[txtVarValue].faultShown(), "");
}

TEST_F(Findings, OfLinksLeadToTheListOfTheirOwner) {
    check("gem.mdb");
    const QModelIndex link = indexOf("dangling-variable");
    ASSERT_TRUE(link.isValid());
    choose(link);
    EXPECT_EQ(state().category, gem::CSTRPT);
    EXPECT_EQ(focused(), "lvwVarList");
}

TEST_F(Findings, OfOneOfTwoEventsWithTheSameIdentifierLeadToThatOne) {
    open();
    changeElsewhere("DELETE FROM secs_def_evt_rpt WHERE evt_id = 21");
    changeElsewhere("UPDATE secs_gemevent SET evt_id = 101 WHERE evt_id = 21");
    const QStringList name = query("SELECT evt_name FROM secs_cusevent WHERE evt_id = 101");
    check();
    const QModelIndex twin = indexOf("duplicate-id");
    ASSERT_TRUE(twin.isValid());
    choose(twin);
    EXPECT_EQ(state().category, gem::CSTEVT);
    EXPECT_EQ(QStringList{form()[txtEvtName].text()}, name);
}

TEST_F(Findings, DoubleClickLeadsToTheRecord) {
    check("gem.mdb");
    const QModelIndex fault = indexOf("out-of-limits", "var_val");
    list().expand(fault.parent());
    list().scrollTo(fault);
    const QPoint at = list().visualRect(fault).center();
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(list().viewport(), Qt::LeftButton, {}, at);
    EXPECT_EQ(shownId().toStdString(), jet::textOf(findings().findingAt(fault)->id));
}

TEST_F(Findings, SayWhenAnotherProgramHasChangedTheFileSince) {
    check("gem.mdb");
    EXPECT_EQ(notice(), "");
    changeElsewhere("UPDATE secs_alarm SET alm_group = 'Other' WHERE alm_id = 103");
    choose(indexOf("out-of-limits", "var_val"));
    EXPECT_EQ(notice(), "The file has changed since; check again");
    EXPECT_EQ(focused(), "txtVarValue");
    check();
    EXPECT_EQ(notice(), "");
}

TEST_F(Findings, SayWhenASaveHasChangedTheFileSince) {
    check("gem.mdb");
    clickCategory(gem::CSTALM);
    edit();
    typeAndLeave("txtAlmGroup", "Other");
    EXPECT_EQ(notice(), "");
    press(form().nav.cmdSave);
    ASSERT_EQ(state().editMode, form::EditMode::Browsing) << exceptions().toStdString();
    EXPECT_EQ(notice(), "The file has changed since; check again");
}

TEST_F(Findings, SayThatTheFileHasChangedWithoutBeingAsked) {
    check("gem.mdb");
    changeElsewhere("UPDATE secs_alarm SET alm_group = 'Other' WHERE alm_id = 103");
    EXPECT_TRUE(QTest::qWaitFor([this] { return !notice().isEmpty(); }, 5000));
}

TEST_F(Findings, OfAStoppedCheckAreNone) {
    open("gem_large.mdb");
    trigger(form::Tool::Check);
    EXPECT_TRUE(checking());
    EXPECT_FALSE(action(form::Tool::Check)->isEnabled());
    press(&child<QPushButton>(*window, "cmdStopCheck"));
    waitForCheck();
    EXPECT_EQ(summary(), "The check was stopped; nothing is listed.");
    EXPECT_EQ(findings().rowCount(), 0);
    EXPECT_TRUE(action(form::Tool::Check)->isEnabled());
    EXPECT_FALSE(child<QPushButton>(*window, "cmdStopCheck").isVisible());
}

TEST_F(Findings, WindowWorksWhileACheckGoesOn) {
    open("gem_large.mdb");
    trigger(form::Tool::Check);
    clickCategory(gem::CSTALM);
    press(form().nav.cmdNext);
    EXPECT_EQ(form().nav.lblRecNumber->text(), "2 of 5000");
    waitForCheck();
    EXPECT_EQ(notice(), "");
}

TEST_F(Findings, OfAClosedWindowHarmNobody) {
    open("gem_large.mdb");
    trigger(form::Tool::Check);
    window.reset();
    QApplication::processEvents();
}

TEST_F(Findings, CannotBeChosenWhileARecordIsEdited) {
    check("gem.mdb");
    clickCategory(gem::CSTALM);
    edit();
    EXPECT_FALSE(list().isEnabled());
    EXPECT_FALSE(action(form::Tool::Check)->isEnabled());
    press(form().nav.cmdCancel);
    EXPECT_TRUE(list().isEnabled());
    EXPECT_TRUE(action(form::Tool::Check)->isEnabled());
}

TEST_F(Findings, OfADamagedFileAreThoseOfItsStructure) {
    open();
    const std::filesystem::path damaged = path();
    std::string content = bytes();
    // Somewhere in the middle a page becomes another one's twin.
    content.replace(content.size() / 2 / 4096 * 4096, 4096, content, 8 * 4096, 4096);
    std::ofstream(damaged, std::ios::binary) << content;
    check();
    EXPECT_NE(summary(), "");
    const QModelIndex fault = indexOf("structure");
    ASSERT_TRUE(fault.isValid());
    choose(fault);
    EXPECT_EQ(status(), "This is about the file, not about one record.");
}

TEST_F(Findings, OfAMissingFileAreAFailureThatIsSaid) {
    open();
    std::filesystem::remove(path());
    check();
    EXPECT_TRUE(summary().contains("no such file")) << summary().toStdString();
}

TEST_F(Findings, PanelIsReachedByF6AndClosedByEscape) {
    check("gem.mdb");
    EXPECT_EQ(focused(), "lvwFindings");
    QTest::keyClick(&list(), Qt::Key_F6);
    EXPECT_NE(focused(), "lvwFindings");
    for (int step = 0; step < 5 && focused() != "lvwFindings"; ++step)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6);
    EXPECT_EQ(focused(), "lvwFindings");
    QTest::keyClick(&list(), Qt::Key_Escape);
    EXPECT_FALSE(list().isVisible());
}

}  // namespace
}  // namespace stelvan::test
