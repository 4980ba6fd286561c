// The picture of an event beside its lists.
#include <QAbstractButton>
#include <QFrame>
#include <QToolButton>

#include "tests/tools/tool_bench.h"

namespace stelvan::test {
namespace {

class EventPicture : public ToolBench {
protected:
    void SetUp() override {
        open();
        window->resize(1500, 900);
        clickCategory(gem::CSTEVT);
        settle();
    }
    static void settle() {
        for (int turn = 0; turn < 5; ++turn) QApplication::processEvents();
    }
    [[nodiscard]] QFrame& frame() const { return child<QFrame>(*window, "fraPicture"); }
    [[nodiscard]] QToolButton& button() const { return child<QToolButton>(*window, "cmdPicture"); }
    [[nodiscard]] QList<QAbstractButton*> boxes() const {
        settle();
        QList<QAbstractButton*> found;
        for (auto* one : frame().findChildren<QAbstractButton*>(QRegularExpression("^box\\d+$")))
            found << one;
        return found;
    }
    /// What the boxes say to screen readers.
    [[nodiscard]] QStringList spoken() const {
        QStringList words;
        for (const QAbstractButton* box : boxes()) words << box->accessibleName();
        return words;
    }
    [[nodiscard]] QStringList spokenReports() const { return spoken().filter("report "); }
    [[nodiscard]] QStringList linkedReports() const {
        QStringList linked;
        for (const QString& row :
             query("SELECT r.rpt_id, r.rpt_name FROM secs_def_evt_rpt AS l "
                   "INNER JOIN secs_report AS r ON l.rpt_id = r.rpt_id "
                   "WHERE l.evt_id = " +
                   form()[txtEvtID].text().toStdString() + " ORDER BY l.rpt_order"))
            linked << "report " + QString(row).replace('|', ' ');
        return linked;
    }
    void goToEventWithReports() {
        for (int left = 60; left > 0 && linkedReports().size() < 2; --left)
            press(form().nav.cmdNext);
        ASSERT_GE(linkedReports().size(), 2);
    }
    [[nodiscard]] QAbstractButton* box(const QString& start) const {
        for (QAbstractButton* one : boxes())
            if (one->accessibleName().startsWith(start)) return one;
        return nullptr;
    }
};

TEST_F(EventPicture, ShowsTheEventItsReportsAndTheirVariables) {
    goToEventWithReports();
    EXPECT_TRUE(frame().isVisible());
    EXPECT_EQ(spoken().first(),
              "event " + form()[txtEvtID].text() + " " + form()[txtEvtName].text());
    EXPECT_EQ(spokenReports(), linkedReports());
    EXPECT_FALSE(spoken().filter("variable ").isEmpty());
}

TEST_F(EventPicture, FollowsTheRecord) {
    const QString first = spoken().first();
    press(form().nav.cmdNext);
    EXPECT_NE(spoken().first(), first);
    clickCategory(gem::GEMEVT);
    EXPECT_EQ(spoken().first(),
              "event " + form()[txtEvtID].text() + " " + form()[txtEvtName].text());
}

TEST_F(EventPicture, FollowsWhatIsChosenInTheListsWhileEditing) {
    goToEventWithReports();
    const QStringList stored = linkedReports();
    edit();
    EXPECT_EQ(spokenReports(), stored);
    form().reports.selected->selectRow(1);
    press(form().reports.orderUp);
    EXPECT_EQ(spokenReports(), (QStringList{stored[1], stored[0]} + stored.mid(2)));
    while (form().reports.selected->rowCount() > 0) press(form().reports.deselect);
    EXPECT_TRUE(spokenReports().isEmpty());
    type(form()[txtEvtName], "Typed");
    EXPECT_TRUE(spoken().first().endsWith(" Typed"));
    press(form().nav.cmdCancel);
    EXPECT_EQ(spokenReports(), stored);
}

TEST_F(EventPicture, BoxesLeadToReportsAndVariables) {
    goToEventWithReports();
    QAbstractButton* const variable = box("variable ");
    const QString name = variable->accessibleName();
    QTest::mouseClick(variable, Qt::LeftButton);
    EXPECT_EQ("variable " + form()[txtVarID].text() + " " + form()[txtVarName].text(), name);
    clickCategory(gem::CSTEVT);
    goToEventWithReports();
    QAbstractButton* const report = box("report ");
    const QString wanted = report->accessibleName();
    QTest::mouseClick(report, Qt::LeftButton);
    EXPECT_EQ("report " + form()[txtRptID].text() + " " + form()[txtRptName].text(), wanted);
}

TEST_F(EventPicture, BoxesLeadNowhereWhileEditing) {
    goToEventWithReports();
    edit();
    QTest::mouseClick(box("report "), Qt::LeftButton);
    EXPECT_EQ(state().category, gem::CSTEVT);
    EXPECT_EQ(state().editMode, form::EditMode::Editing);
}

TEST_F(EventPicture, KeysWalkFromBoxToBoxAndChoose) {
    goToEventWithReports();
    const auto all = boxes();
    all.first()->setFocus();
    ASSERT_TRUE(all.first()->hasFocus());
    QTest::keyClick(all.first(), Qt::Key_Right);
    QWidget* const report = QApplication::focusWidget();
    EXPECT_TRUE(report->accessibleName().startsWith("report "));
    QTest::keyClick(report, Qt::Key_Down);
    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), linkedReports()[1]);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left);
    EXPECT_TRUE(all.first()->hasFocus());
    int stops = 0;
    for (const QAbstractButton* one : all) stops += one->focusPolicy() == Qt::StrongFocus ? 1 : 0;
    EXPECT_EQ(stops, 1);
    QTest::keyClick(all.first(), Qt::Key_Right);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(state().category, gem::CSTRPT);
}

TEST_F(EventPicture, LinkToNothingSaysSo) {
    const QString event = form()[txtEvtID].text();
    changeElsewhere("INSERT INTO secs_def_evt_rpt (evt_id, rpt_id, rpt_order) VALUES (" +
                    event.toStdString() + ", 99999, 77)");
    clickCategory(gem::CSTEVT);
    EXPECT_TRUE(spoken().contains("report 99999 not in the model"));
    QTest::mouseClick(box("report 99999"), Qt::LeftButton);
    EXPECT_EQ(state().category, gem::CSTEVT);
}

TEST_F(EventPicture, FoldsAndStaysFolded) {
    ASSERT_TRUE(frame().isVisible());
    QTest::mouseClick(&button(), Qt::LeftButton);
    EXPECT_FALSE(frame().isVisible());
    press(form().nav.cmdNext);
    settle();
    EXPECT_FALSE(frame().isVisible());
    EXPECT_EQ(all().tools.pictures.chosen(), false);
    QTest::mouseClick(&button(), Qt::LeftButton);
    EXPECT_TRUE(frame().isVisible());
    EXPECT_FALSE(spoken().isEmpty());
}

TEST_F(EventPicture, IsFoldedInASmallWindowAndDoesNotWidenIt) {
    window->resize(800, 600);
    settle();
    EXPECT_EQ(window->width(), 800);
    EXPECT_FALSE(frame().isVisible());
    edit();
    settle();
    EXPECT_EQ(window->width(), 800);
    press(form().nav.cmdCancel);
    all().tools.pictures.choose(true);
    settle();
    EXPECT_EQ(window->width(), 800);
    edit();
    settle();
    EXPECT_EQ(window->width(), 800);
}

TEST_F(EventPicture, ChoiceIsRememberedFromOneStartToTheNext) {
    const app::UserPlaces places{form::toQt((scratch.path() / "stelvan.ini").string()), {}};
    const QString path = form::toQt(state().databasePath);
    for (const bool open : {false, true}) {
        {
            app::FrmMain first(dialogs, QString(), places);
            first.start(path);
            first.subsystems().tools.pictures.choose(open);
            first.show();
            first.close();
        }
        app::FrmMain second(dialogs, QString(), places);
        EXPECT_EQ(second.subsystems().tools.pictures.chosen(), open);
    }
}

}  // namespace
}  // namespace stelvan::test
