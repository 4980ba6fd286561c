// The children of a list variable: what may become one, their order, the duplicate rule, and what
// is kept while a format is changed to and fro.
#include "links/list_children.h"

#include <QLabel>

#include "db/query.h"
#include "db/value_text.h"
#include "tests/links/link_bench.h"

namespace stelvan::links {
namespace {

constexpr int kName = 1;
constexpr int kId = 2;

class ListChildrenTest : public test::LinkBench {
protected:
    form::TwoListEditor& editor = form.children;

    void SetUp() override {
        LinkBench::SetUp();
        useDatabase("gem.mdb");
        openFrame(gem::CSTVSV);
        editor.selected->setHeaders({"Duplicate", "Name", "ID", "Group", "Value"});
    }

    void show(const QString& variable) {
        form[txtVarID].setText(variable);
        listChildren.lUpdateVarChild(true);
    }
    QStringList valuesOf(const QString& sql) {
        QStringList found;
        db::Query query(database, sql.toStdString());
        query.forEach([&](db::Query& row) {
            found << form::toQt(db::toTextOrEmpty(row.records().field(0)));
        });
        return found;
    }
    void check(int row) {
        // A click on the box itself, at the left edge of the row.
        const QRect cell = editor.selected->visualRect(editor.selected->model()->index(row, 0));
        QTest::mouseClick(editor.selected->viewport(), Qt::LeftButton, {},
                          QPoint(cell.left() + 10, cell.center().y()));
    }
};

TEST_F(ListChildrenTest, ThePoolOffersOnlyWhatMayBecomeAChild) {
    form[txtVarID].setText("227");
    listChildren.lDispChildEditor(true);
    EXPECT_EQ(editor.pool->headers(), QStringList({"Name", "ID", "Group", "Value"}));
    EXPECT_TRUE(editor.pool->isColumnHidden(3));
    const QStringList ids = columnOf(editor.pool, 1);
    ASSERT_GT(ids.size(), 50);
    EXPECT_FALSE(ids.contains("227")) << "itself";
    for (const QString& id : ids) {
        EXPECT_EQ(valuesOf("SELECT var_type FROM secs_cusvar WHERE var_id = " + id),
                  QStringList{"SV"});
        EXPECT_NE(valuesOf("SELECT var_format FROM secs_cusvar WHERE var_id = " + id)[0].toUpper(),
                  "L");
        EXPECT_EQ(valuesOf("SELECT var_parentkey FROM secs_cusvar WHERE var_id = " + id),
                  QStringList{"0"});
    }
}

TEST_F(ListChildrenTest, ThePoolFollowsTheTypeOfTheCategory) {
    form[txtVarID].setText("2001");
    state.category = gem::CSTVEC;
    listChildren.lDispChildEditor(true);
    EXPECT_TRUE(columnOf(editor.pool, 1).contains("2002"));
    EXPECT_FALSE(columnOf(editor.pool, 1).contains("2001"));
    EXPECT_FALSE(columnOf(editor.pool, 1).contains("101"));
    state.category = gem::CSTVDV;
    listChildren.lDispChildEditor(true);
    EXPECT_FALSE(columnOf(editor.pool, 1).contains("2002"));
}

TEST_F(ListChildrenTest, WithoutANumericIdNothingIsFilledAndNothingSaid) {
    show("227");
    const int children = editor.selected->rowCount();
    ASSERT_GT(children, 0);
    for (const char* id : {"", "   ", "abc"}) {
        form[txtVarID].setText(id);
        listChildren.lDispChildEditor(true);
        EXPECT_EQ(editor.pool->rowCount(), 0) << id;
        show(id);
        EXPECT_EQ(editor.selected->rowCount(), children) << id;
    }
    EXPECT_TRUE(failures.isEmpty());
}

TEST_F(ListChildrenTest, HidingIsAllThatHidingDoes) {
    form[txtVarID].setText("227");
    listChildren.lDispChildEditor(true);
    show("227");
    const int offered = editor.pool->rowCount();
    const int children = editor.selected->rowCount();
    listChildren.lDispChildEditor(false);
    listChildren.lUpdateVarChild(false);
    EXPECT_TRUE(editor.pool->isHidden() && editor.selected->isHidden() &&
                editor.selectedLabel->isHidden());
    EXPECT_EQ(editor.pool->rowCount(), offered);
    EXPECT_EQ(editor.selected->rowCount(), children);
}

TEST_F(ListChildrenTest, ChildrenComeInTheOrderOfTheirPlacesWithTheirMarks) {
    show("227");
    EXPECT_EQ(editor.selected->headers(),
              QStringList({"Duplicate", "Name", "ID", "Group", "Value"}));
    EXPECT_EQ(
        columnOf(editor.selected, kId),
        valuesOf("SELECT var_id FROM secs_cusvar WHERE var_parentkey = 227 ORDER BY var_accessid"));
    EXPECT_EQ(columnOf(editor.selected, 0).join(QString()), QString());
    const QStringList onlyChild = valuesOf(
        "SELECT var_parentkey FROM secs_cusvar WHERE var_allowduplicates <> 0 AND var_type = 'SV'");
    ASSERT_FALSE(onlyChild.isEmpty());
    show(onlyChild[0]);
    ASSERT_EQ(editor.selected->rowCount(), 1);
    EXPECT_TRUE(editor.selected->isChecked(0));
    EXPECT_TRUE(dialogs.messages.empty()) << "filling checks nothing";
}

TEST_F(ListChildrenTest, TheOnlyChildMayBeDuplicated) {
    editor.selected->setRows({{{"", "A", "101", "", ""}, false}});
    check(0);
    EXPECT_TRUE(editor.selected->isChecked(0));
    EXPECT_TRUE(dialogs.messages.empty());
    check(0);
    EXPECT_FALSE(editor.selected->isChecked(0));
    EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(ListChildrenTest, OneOfTwoMayNotAndItsBoxIsClearedAfterTheWarning) {
    editor.selected->setRows(
        {{{"", "A", "101", "", ""}, false}, {{"", "B", "102", "", ""}, false}});
    bool checkedMeanwhile = false;
    dialogs.whileShown = [&](const QString&) { checkedMeanwhile = editor.selected->isChecked(1); };
    check(1);
    ASSERT_EQ(dialogs.texts(),
              QStringList{"Item not allowed to duplicate if the list containing other items."});
    EXPECT_EQ(dialogs.messages[0].icon, form::Icon::Exclamation);
    EXPECT_TRUE(checkedMeanwhile);
    EXPECT_FALSE(editor.selected->isChecked(1));
}

TEST_F(ListChildrenTest, UncheckingOneOfSeveralIsAccepted) {
    editor.selected->setRows({{{"", "A", "101", "", ""}, true}, {{"", "B", "102", "", ""}, false}});
    check(0);
    EXPECT_FALSE(editor.selected->isChecked(0));
    EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(ListChildrenTest, WhileBrowsingTheRuleDoesNotLook) {
    state.editMode = form::EditMode::Browsing;
    editor.selected->setRows(
        {{{"", "A", "101", "", ""}, false}, {{"", "B", "102", "", ""}, false}});
    check(1);
    EXPECT_TRUE(editor.selected->isChecked(1));
    EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(ListChildrenTest, AnEditKeepsTheRowsWhileTheFormatGoesAwayAndComesBack) {
    show("227");
    listChildren.beginEditing();
    listChildren.lUpdateVarChild(true);
    EXPECT_TRUE(listChildren.filled());
    click(editor.deselect);
    const QStringList edited = columnOf(editor.selected, kName);
    listChildren.lUpdateVarChild(false);
    EXPECT_TRUE(editor.selected->isHidden());
    listChildren.lUpdateVarChild(true);
    EXPECT_EQ(columnOf(editor.selected, kName), edited);
    listChildren.endEditing();
    listChildren.lUpdateVarChild(true);
    EXPECT_EQ(editor.selected->rowCount(), edited.size() + 1) << "afterwards the file counts again";
}

TEST_F(ListChildrenTest, AnEditOfAnotherRecordStartsWithoutTheFormerRows) {
    form[txtVarID].setText("227");
    listChildren.lDispChildEditor(true);
    show("227");
    form[txtVarID].setText("101");
    listChildren.lUpdateVarChild(false);
    listChildren.beginEditing();
    EXPECT_EQ(editor.pool->rowCount(), 0);
    EXPECT_EQ(editor.selected->rowCount(), 0);
    EXPECT_FALSE(listChildren.filled());
    listChildren.lUpdateVarChild(true);
    EXPECT_TRUE(listChildren.filled());
    EXPECT_EQ(editor.selected->rowCount(), 0);
}

TEST_F(ListChildrenTest, UnsavedRowsDoNotComeBackAfterTheyWereHidden) {
    show("227");
    const int stored = editor.selected->rowCount();
    listChildren.beginEditing();
    click(editor.deselect);
    listChildren.endEditing();
    listChildren.lUpdateVarChild(false);
    listChildren.beginEditing();
    listChildren.lUpdateVarChild(true);
    EXPECT_EQ(editor.selected->rowCount(), stored);
}

TEST_F(ListChildrenTest, AListThatCouldNotBeReadMustNotBeSaved) {
    listChildren.beginEditing();
    state.databasePath += ".gone";
    show("227");
    EXPECT_EQ(failures.size(), 1);
    EXPECT_FALSE(listChildren.filled());
}

TEST_F(ListChildrenTest, TheTwoUpdatesStoreParentPlaceAndFlag) {
    listChildren.lLinkListAndChild(227, 101, 7);
    listChildren.lVarUpdDuplicate(101, true);
    EXPECT_EQ(valuesOf("SELECT var_parentkey FROM secs_cusvar WHERE var_id = 101"),
              QStringList{"227"});
    EXPECT_EQ(valuesOf("SELECT var_accessid FROM secs_cusvar WHERE var_id = 101"),
              QStringList{"7"});
    EXPECT_EQ(
        valuesOf("SELECT var_id FROM secs_cusvar WHERE var_id = 101 AND var_allowduplicates <> 0"),
        QStringList{"101"});
    listChildren.lVarUpdDuplicate(101, false);
    EXPECT_EQ(
        valuesOf("SELECT var_id FROM secs_cusvar WHERE var_id = 101 AND var_allowduplicates <> 0"),
        QStringList{});
    EXPECT_TRUE(failures.isEmpty()) << failures.join("\n").toStdString();
}

TEST_F(ListChildrenTest, EachUpdateReportsUnderItsOwnName) {
    state.databasePath += ".gone";
    errors.handle("cmdSave_Click", [&] { listChildren.lLinkListAndChild(227, 101, 7); });
    errors.handle("cmdSave_Click", [&] { listChildren.lVarUpdDuplicate(101, true); });
    ASSERT_EQ(failures.size(), 2);
    EXPECT_TRUE(failures[0].contains("[frmMain.lLinkListAndChild.0]"));
    EXPECT_TRUE(failures[1].contains("[frmMain.lVarUpdDuplicate.0]"));
}

TEST_F(ListChildrenTest, ChildrenComeBackInTheirNewOrderWithTheirMarks) {
    show("227");
    listChildren.beginEditing();
    clickRow(editor.selected, 0);
    click(editor.orderDown);
    clickRow(editor.selected, editor.selected->rowCount() - 1);
    const QString released = editor.selected->text(editor.selected->rowCount() - 1, kId);
    click(editor.deselect);
    const QStringList wanted = columnOf(editor.selected, kId);
    listChildren.saveLinks("227");
    listChildren.endEditing();
    show("227");
    EXPECT_EQ(columnOf(editor.selected, kId), wanted);
    EXPECT_EQ(
        valuesOf(
            "SELECT var_accessid FROM secs_cusvar WHERE var_parentkey = 227 ORDER BY var_accessid")
            [0],
        "1");
    EXPECT_EQ(valuesOf("SELECT var_parentkey FROM secs_cusvar WHERE var_id = " + released),
              QStringList{"0"});
    EXPECT_EQ(valuesOf("SELECT var_accessid FROM secs_cusvar WHERE var_id = " + released),
              QStringList{"0"});
    EXPECT_TRUE(failures.isEmpty()) << failures.join("\n").toStdString();
}

TEST_F(ListChildrenTest, ReleasedChildrenKeepTheirDuplicateFlag) {
    const auto flagged = [this](const QString& child) {
        return valuesOf(
            "SELECT var_id FROM secs_cusvar WHERE var_allowduplicates <> 0 AND var_id = " + child);
    };
    show("229");
    ASSERT_TRUE(editor.selected->isChecked(0));
    const QString child = editor.selected->text(0, kId);
    listChildren.releaseChildren("229");
    EXPECT_EQ(valuesOf("SELECT var_id FROM secs_cusvar WHERE var_parentkey = 229"), QStringList{});
    EXPECT_EQ(flagged(child), QStringList{child});
}

TEST_F(ListChildrenTest, AnIdBeyondThirtyTwoBitsIsAnOverflow) {
    editor.selected->setRows({{{"", "A", "4294967296", "", ""}, false}});
    EXPECT_THROW(listChildren.saveLinks("101"), base::RunTimeError);
}

}  // namespace
}  // namespace stelvan::links
