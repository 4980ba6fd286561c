// The gestures between a pool and a selected list, in plain and in child-item mode.
#include "links/selection_list.h"

#include <QLineEdit>

#include "tests/links/link_bench.h"

namespace stelvan::links {
namespace {

using Texts = std::vector<QStringList>;

class Events : public test::LinkBench {
protected:
    form::TwoListEditor& editor = form.reports;

    void SetUp() override {
        LinkBench::SetUp();
        openFrame(gem::CSTEVT);
        editor.pool->setHeaders({"Name", "ID"});
        editor.selected->setHeaders({"Name", "ID"});
        editor.pool->setRows(rowsOf({{"Alpha", "101"}, {"Beta", "102"}, {"Gamma", "103"}}));
    }
};

class Children : public test::LinkBench {
protected:
    form::TwoListEditor& editor = form.children;

    void SetUp() override {
        LinkBench::SetUp();
        openFrame(gem::CSTVSV);
        editor.pool->setHeaders({"Name", "ID", "Group", "Value"});
        editor.selected->setHeaders({"Duplicate", "Name", "ID", "Group", "Value"});
        editor.pool->setRows(rowsOf({{"Alpha", "101", "G1", "1"}, {"Beta", "102", "G2", "2"}}));
    }
};

TEST_F(Events, SelectCopiesTheRowToTheEndAndLeavesThePoolAlone) {
    clickRow(editor.pool, 1, 0);
    click(editor.select);
    clickRow(editor.pool, 0, 0);
    click(editor.select);
    EXPECT_EQ(textsOf(editor.selected), (Texts{{"Beta", "102"}, {"Alpha", "101"}}));
    EXPECT_EQ(editor.pool->rowCount(), 3);
    EXPECT_EQ(editor.pool->selectedRow(), 0);
    EXPECT_EQ(editor.selected->selectedRow(), -1) << "the new row is not made the selected one";
    EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(Events, AnIdAlreadyListedIsRefusedEvenWhereTheNameDiffers) {
    editor.selected->setRows(rowsOf({{"Another name", "102"}}));
    clickRow(editor.pool, 1, 0);
    click(editor.select);
    ASSERT_EQ(dialogs.texts(), QStringList{"Item already in the selected list."});
    EXPECT_EQ(dialogs.messages[0].title, QString());
    EXPECT_EQ(dialogs.messages[0].icon, form::Icon::None);
    EXPECT_EQ(editor.selected->rowCount(), 1);
}

TEST_F(Events, IdsAreComparedExactly) {
    editor.pool->setRows(rowsOf({{"Alpha", "a1"}}));
    editor.selected->setRows(rowsOf({{"Alpha", "A1"}}));
    click(editor.select);
    EXPECT_TRUE(dialogs.messages.empty());
    EXPECT_EQ(editor.selected->rowCount(), 2);
}

TEST_F(Events, ARowOfTheSelectedListKeepsNoMoreColumnsThanThePoolHas) {
    editor.pool->setRows(rowsOf({{"Alpha", "101", "more"}}));
    click(editor.select);
    EXPECT_EQ(textsOf(editor.selected), (Texts{{"Alpha", "101"}}));
}

TEST_F(Events, ADoubleClickInThePoolSelects) {
    const QPoint at = middleOf(*editor.pool, 2, 0);
    QTest::mouseClick(editor.pool->viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(editor.pool->viewport(), Qt::LeftButton, {}, at);
    EXPECT_EQ(textsOf(editor.selected), (Texts{{"Gamma", "103"}}));
}

TEST_F(Events, DeleteInTheSelectedListDeselects) {
    editor.selected->setRows(rowsOf({{"Alpha", "101"}, {"Beta", "102"}}));
    QTest::keyClick(editor.selected, Qt::Key_Delete);
    EXPECT_EQ(textsOf(editor.selected), (Texts{{"Beta", "102"}}));
}

TEST_F(Events, DeselectSelectsTheRowThatTookThePlaceElseTheLast) {
    editor.selected->setRows(rowsOf({{"A", "1"}, {"B", "2"}, {"C", "3"}}));
    clickRow(editor.selected, 1, 0);
    click(editor.deselect);
    EXPECT_EQ(columnOf(editor.selected, 0), QStringList({"A", "C"}));
    EXPECT_EQ(editor.selected->selectedRow(), 1);
    click(editor.deselect);
    EXPECT_EQ(editor.selected->selectedRow(), 0);
    click(editor.deselect);
    EXPECT_EQ(editor.selected->rowCount(), 0);
    EXPECT_TRUE(failures.isEmpty());
}

TEST_F(Events, DeselectOnAnEmptyListDoesNothingAndShowsNothing) {
    click(editor.deselect);
    EXPECT_TRUE(failures.isEmpty());
    EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(Events, TheMovedItemStaysTheSelectedOneSoThatRepeatedClicksKeepMovingIt) {
    editor.selected->setRows(rowsOf({{"A", "1"}, {"B", "2"}, {"C", "3"}, {"D", "4"}}));
    clickRow(editor.selected, 3, 0);
    click(editor.orderUp);
    click(editor.orderUp);
    EXPECT_EQ(textsOf(editor.selected), (Texts{{"A", "1"}, {"D", "4"}, {"B", "2"}, {"C", "3"}}));
    EXPECT_EQ(editor.selected->selectedRow(), 1);
    EXPECT_TRUE(editor.selected->hasFocus());
    click(editor.orderDown);
    EXPECT_EQ(columnOf(editor.selected, 0), QStringList({"A", "B", "D", "C"}));
    EXPECT_EQ(editor.selected->selectedRow(), 2);
}

TEST_F(Events, UpOnTheFirstAndDownOnTheLastRowOnlyGiveTheListTheFocus) {
    editor.selected->setRows(rowsOf({{"A", "1"}, {"B", "2"}}));
    form[txtEvtName].widget()->setFocus();
    click(editor.orderUp);
    EXPECT_TRUE(editor.selected->hasFocus());
    clickRow(editor.selected, 1, 0);
    form[txtEvtName].widget()->setFocus();
    click(editor.orderDown);
    EXPECT_TRUE(editor.selected->hasFocus());
    EXPECT_EQ(columnOf(editor.selected, 0), QStringList({"A", "B"}));
    EXPECT_EQ(editor.selected->selectedRow(), 1);
    EXPECT_TRUE(failures.isEmpty());
}

TEST_F(Events, WithoutASelectedRowEachProcedureFailsUnderItsOwnName) {
    editor.pool->clearRows();
    editor.selected->setRows(rowsOf({{"A", "1"}, {"B", "2"}}));
    editor.selected->selectRow(-1);
    click(editor.select);
    click(editor.deselect);
    click(editor.orderUp);
    click(editor.orderDown);
    ASSERT_EQ(failures.size(), 4);
    const char* const procedures[] = {"lSelectItem", "lDeselectItem", "lOrderUp", "lOrderDown"};
    for (int i = 0; i < 4; ++i)
        EXPECT_TRUE(
            failures[i].startsWith(QStringLiteral("ERROR(91) [frmMain.%1.0]: ").arg(procedures[i])))
            << failures[i].toStdString();
    EXPECT_EQ(columnOf(editor.selected, 0), QStringList({"A", "B"}));
}

TEST_F(Events, OrderOnAnEmptyListFails) {
    click(editor.orderUp);
    ASSERT_EQ(failures.size(), 1);
    EXPECT_TRUE(failures[0].contains("frmMain.lOrderUp."));
}

TEST_F(Events, TypingNarrowsThePoolAndTheRowShownIsTheOneSelected) {
    QTest::keyClicks(editor.poolFilter, "gam");
    EXPECT_EQ(editor.pool->model()->rowCount(), 1);
    click(editor.select);
    EXPECT_EQ(textsOf(editor.selected), (Texts{{"Gamma", "103"}}));
    EXPECT_EQ(editor.pool->rowCount(), 3) << "what is hidden is not gone";
}

TEST_F(Children, ARowGoesOneColumnToTheRightAndIsNotChecked) {
    clickRow(editor.pool, 1, 0);
    click(editor.select);
    EXPECT_EQ(textsOf(editor.selected), (Texts{{"", "Beta", "102", "G2", "2"}}));
    EXPECT_FALSE(editor.selected->isChecked(0));
}

TEST_F(Children, ACheckedRowRefusesEveryFurtherItem) {
    editor.selected->setRows({{{"", "Lone", "150", "", ""}, true}});
    click(editor.select);
    EXPECT_EQ(
        dialogs.texts(),
        QStringList{"Cannot add item. Selected list already containing an item which is allowed to "
                    "duplicate."});
    EXPECT_EQ(editor.selected->rowCount(), 1);
}

TEST_F(Children, AListedIdGetsTheFirstMessageEvenBesideACheckedRow) {
    editor.selected->setRows(
        {{{"", "Lone", "150", "", ""}, true}, {{"", "Other", "101", "", ""}, false}});
    click(editor.select);
    EXPECT_EQ(dialogs.texts(), QStringList{"Item already in the selected list."});
}

TEST_F(Children, AnUncheckedListAcceptsItemsUntilADuplicateIdIsOffered) {
    for (const int row : {0, 1, 0}) {
        clickRow(editor.pool, row, 0);
        click(editor.select);
    }
    EXPECT_EQ(columnOf(editor.selected, 2), QStringList({"101", "102"}));
    EXPECT_EQ(dialogs.texts(), QStringList{"Item already in the selected list."});
}

TEST_F(Children, MovingSwapsTextsAndLeavesTheCheckMarksInPlace) {
    editor.selected->setRows({{{"", "A", "1", "g", "v"}, true}, {{"", "B", "2", "h", "w"}, false}});
    clickRow(editor.selected, 1);
    click(editor.orderUp);
    EXPECT_EQ(textsOf(editor.selected),
              (Texts{{"", "B", "2", "h", "w"}, {"", "A", "1", "g", "v"}}));
    EXPECT_TRUE(editor.selected->isChecked(0));
    EXPECT_FALSE(editor.selected->isChecked(1));
    EXPECT_TRUE(dialogs.messages.empty()) << "moving texts checks nothing";
}

TEST_F(Children, GemVariablesUseThePlainMode) {
    state.category = gem::GEMVDV;
    click(editor.select);
    EXPECT_EQ(textsOf(editor.selected), (Texts{{"Alpha", "101", "G1", "1"}}));
}

class Reports : public test::LinkBench {
protected:
    form::TwoListEditor& editor = form.variables;

    void SetUp() override {
        LinkBench::SetUp();
        openFrame(gem::CSTRPT);
        editor.pool->setHeaders({"Name", "ID", "Type", "GEM"});
        editor.selected->setHeaders({"Name", "ID", "Type", "Gem", "Order"});
        editor.pool->setRows(rowsOf({{"Clock", "1", "SV", "Y"}, {"Lot", "201", "DV", "N"}}));
    }
};

TEST_F(Reports, AnAddedVariableHasNoOrderYet) {
    click(editor.select);
    EXPECT_EQ(textsOf(editor.selected), (Texts{{"Clock", "1", "SV", "Y"}}));
}

TEST_F(Reports, AMovedRowTakesItsOrderAlong) {
    editor.selected->setRows(
        rowsOf({{"Clock", "1", "SV", "Y", "1"}, {"Lot", "201", "DV", "N", "2"}}));
    click(editor.orderDown);
    EXPECT_EQ(columnOf(editor.selected, 4), QStringList({"2", "1"}));
}

TEST_F(Reports, TheExceptionBoxFollowsTheListWhileEditing) {
    const QString empty = line("Report Variable List", "Must contain item.");
    click(editor.select);
    EXPECT_FALSE(box.text().contains(empty));
    clickRow(editor.selected, 0, 0);
    click(editor.deselect);
    EXPECT_TRUE(box.text().contains(empty));
}

TEST_F(Reports, WhileBrowsingTheListIsNotVerified) {
    state.editMode = form::EditMode::Browsing;
    click(editor.select);
    clickRow(editor.selected, 0, 0);
    click(editor.deselect);
    EXPECT_EQ(box.text(), QString());
}

}  // namespace
}  // namespace stelvan::links
