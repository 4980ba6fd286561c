// The lists of the link editors.
#include "form/list_view.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QHeaderView>
#include <QSignalSpy>
#include <QTest>

namespace stelvan::form {
namespace {

class ListViewTest : public testing::Test {
protected:
    ListViewTest() {
        list.setHeaders({"Name", "ID"});
        list.resize(400, 200);
        list.show();
    }
    void fill() { list.setRows({{{"Alpha", "1"}}, {{"Beta", "2"}}, {{"Gamma", "3"}}}); }
    [[nodiscard]] QPoint cell(int row, int column = 0) const {
        return list.visualRect(list.model()->index(row, column)).center();
    }

    ListView list;
};

TEST_F(ListViewTest, FillingSelectsTheFirstRowAndAnEmptyListHasNone) {
    EXPECT_EQ(list.selectedRow(), -1);
    fill();
    EXPECT_EQ(list.selectedRow(), 0);
    list.setRows({});
    EXPECT_EQ(list.selectedRow(), -1);
}

TEST_F(ListViewTest, NarrowingLooksAtTheColumnsThatAreSeen) {
    list.setHeaders({"Name", "ID", "Group", "Value"});
    list.setWidths({3, 1, 2, 0});
    list.setRows({{{"Alpha", "1", "g", "hidden"}}, {{"Beta", "2", "g", "seen"}}});
    list.setNarrowing("hidden");
    EXPECT_EQ(list.model()->rowCount(), 0);
    list.setNarrowing("ALPHA");
    EXPECT_EQ(list.model()->rowCount(), 1);
    list.setNarrowing("");
    EXPECT_EQ(list.model()->rowCount(), 2);
}

TEST_F(ListViewTest, WithoutWidthsOfItsOwnAColumnHasTheDefault) {
    list.setWidths({2, 1});
    list.setWidths({});
    EXPECT_NEAR(list.columnWidth(0), list.columnWidth(1), 1);
}

TEST_F(ListViewTest, AppendingLeavesTheSelectionAlone) {
    fill();
    list.selectRow(1);
    list.appendRow({{"Delta", "4"}});
    EXPECT_EQ(list.rowCount(), 4);
    EXPECT_EQ(list.selectedRow(), 1);
}

TEST_F(ListViewTest, RemovingSelectsTheRowInItsPlaceElseTheLast) {
    fill();
    list.removeRow(1);
    EXPECT_EQ(list.selectedRow(), 1);
    EXPECT_EQ(list.text(1, 0), "Gamma");
    list.removeRow(1);
    EXPECT_EQ(list.selectedRow(), 0);
    list.removeRow(0);
    EXPECT_EQ(list.selectedRow(), -1);
}

TEST_F(ListViewTest, TextsMoveWhileCheckMarksStay) {
    list.setCheckable(true);
    list.setRows({{{"", "a"}, true}, {{"", "b"}, false}});
    list.setText(0, 1, "b");
    list.setText(1, 1, "a");
    EXPECT_TRUE(list.isChecked(0));
    EXPECT_EQ(list.text(0, 1), "b");
}

TEST_F(ListViewTest, CheckingByTheProgramEmitsNothingByTheUserOnce) {
    list.setCheckable(true);
    fill();
    QSignalSpy checked(&list, &ListView::itemChecked);
    list.setChecked(0, true);
    EXPECT_TRUE(checked.isEmpty());
    EXPECT_TRUE(list.isChecked(0));
    list.setFocus();
    list.selectRow(1);
    QTest::keyClick(&list, Qt::Key_Space);
    ASSERT_EQ(checked.size(), 1);
    EXPECT_EQ(checked.first().first().toInt(), 1);
    EXPECT_TRUE(list.isChecked(1));
}

TEST_F(ListViewTest, ClosedListCannotBeSelectedOrCheckedButScrolled) {
    list.setCheckable(true);
    std::vector<ListRow> rows;
    for (int i = 0; i < 100; ++i) rows.push_back({{QString::number(i), "x"}});
    list.setRows(rows);
    list.setOpen(false);
    QSignalSpy checked(&list, &ListView::itemChecked);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, cell(2, 1));
    QTest::keyClick(&list, Qt::Key_Down);
    QTest::keyClick(&list, Qt::Key_Space);
    EXPECT_EQ(list.selectedRow(), 0);
    EXPECT_TRUE(checked.isEmpty());
    QTest::keyClick(&list, Qt::Key_PageDown);
    EXPECT_LT(cell(0).y(), 0);
}

TEST_F(ListViewTest, DoubleClickTellsTheRowUnlessClosed) {
    fill();
    QSignalSpy activated(&list, &ListView::rowActivated);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, cell(2));
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, cell(2));
    ASSERT_EQ(activated.size(), 1);
    EXPECT_EQ(activated.first().first().toInt(), 2);
    list.setOpen(false);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, cell(1));
    EXPECT_EQ(activated.size(), 1);
}

TEST_F(ListViewTest, NarrowingHidesRowsWithoutRenumberingThem) {
    fill();
    list.setNarrowing("GAM");
    EXPECT_EQ(list.model()->rowCount(), 1);
    EXPECT_EQ(list.rowCount(), 3);
    EXPECT_EQ(list.selectedRow(), 2);
    list.setNarrowing("");
    EXPECT_EQ(list.model()->rowCount(), 3);
    EXPECT_EQ(list.selectedRow(), 2);
}

TEST_F(ListViewTest, WidthsAreSharedAndZeroHidesAColumn) {
    list.setHeaders({"Name", "ID", "Value"});
    list.setWidths({2, 1, 0});
    EXPECT_TRUE(list.isColumnHidden(2));
    EXPECT_NEAR(list.columnWidth(0), 2 * list.viewport()->width() / 3, 2);
    list.resize(700, 200);
    EXPECT_NEAR(list.columnWidth(0), 2 * list.viewport()->width() / 3, 2);
}

TEST_F(ListViewTest, ReplacingHeadersKeepsRowsAndSelection) {
    fill();
    list.selectRow(2);
    list.setHeaders({"Name", "ID", "Type"});
    EXPECT_EQ(list.headers(), (QStringList{"Name", "ID", "Type"}));
    EXPECT_EQ(list.rowCount(), 3);
    EXPECT_EQ(list.selectedRow(), 2);
    EXPECT_EQ(list.text(2, 2), "");
}

}  // namespace
}  // namespace stelvan::form
