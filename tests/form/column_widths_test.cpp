// Columns: numbers take what they need, names the rest; what the user dragged stays.
#include "form/column_widths.h"

#include <gtest/gtest.h>

#include <QHeaderView>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>

#include "form/list_view.h"

namespace stelvan::form {
namespace {

TEST(ColumnWidths, NamesTakeWhatNumbersDoNotNeed) {
    QStandardItemModel model(2, 3);
    model.setHorizontalHeaderLabels({"alm_id", "alm_name", "alm_enable"});
    const QStringList cells = {"101", "Name", "TRUE", "2147483647", "Other", "FALSE"};
    for (int i = 0; i < cells.size(); ++i) model.setItem(i / 3, i % 3, new QStandardItem(cells[i]));
    QTableView grid;
    grid.setModel(&model);
    grid.resize(900, 300);
    grid.show();
    fitColumns(grid);
    const QHeaderView& header = *grid.horizontalHeader();
    for (int c = 0; c < 3; ++c) EXPECT_GE(grid.columnWidth(c), header.sectionSizeHint(c));
    const int digits = grid.fontMetrics().horizontalAdvance("2147483647");
    EXPECT_GE(grid.columnWidth(0), digits);
    EXPECT_LE(grid.columnWidth(0), digits + 40);
    EXPECT_GT(grid.columnWidth(1), 500);
    EXPECT_EQ(header.length(), grid.viewport()->width());
}

TEST(ColumnWidths, WithoutRoomEveryHeaderAndTextIsStillWhole) {
    QStandardItemModel model(1, 12);
    QStringList headers;
    for (int c = 0; c < 12; ++c) {
        headers << QString("alm_clr_cename_%1").arg(c);
        model.setItem(0, c, new QStandardItem("SomeEventName"));
    }
    model.setHorizontalHeaderLabels(headers);
    QTableView grid;
    grid.setModel(&model);
    grid.resize(300, 200);
    grid.show();
    fitColumns(grid);
    for (int c = 0; c < 12; ++c)
        EXPECT_GE(grid.columnWidth(c), grid.horizontalHeader()->sectionSizeHint(c));
}

struct ShownList {
    ListView list;
    ShownList() {
        list.resize(400, 200);
        list.show();
        list.setHeaders({"Name", "ID", "Type"});
        list.setWidths({1, -10, -6});
        list.setRows({{{"A rather long name of a variable", "2147483647", "SV"}}});
    }
};

TEST(ColumnWidths, AListGivesItsNumbersWhatTheyNeedOnceItIsFilled) {
    ShownList shown;
    const int digit = shown.list.fontMetrics().horizontalAdvance('0');
    EXPECT_GE(shown.list.columnWidth(1), 10 * digit);
    EXPECT_LE(shown.list.columnWidth(1), 13 * digit);
    EXPECT_GE(shown.list.columnWidth(2), shown.list.header()->sectionSizeHint(2));
    EXPECT_EQ(shown.list.header()->length(), shown.list.viewport()->width());
    shown.list.setRows({{{"Short", "7", "SV"}}});
    EXPECT_LT(shown.list.columnWidth(1), 8 * digit);
    EXPECT_EQ(shown.list.header()->length(), shown.list.viewport()->width());
}

TEST(ColumnWidths, ADraggedColumnStaysForItsHeadersAlone) {
    ShownList shown;
    QHeaderView& header = *shown.list.header();
    const QPoint edge(header.sectionViewportPosition(1) - 1, header.height() / 2);
    QTest::mousePress(header.viewport(), Qt::LeftButton, {}, edge);
    header.resizeSection(0, 123);
    QTest::mouseRelease(header.viewport(), Qt::LeftButton, {}, edge);
    shown.list.resize(700, 200);
    shown.list.setRows({{{"Another", "1", "DV"}}});
    EXPECT_EQ(shown.list.columnWidth(0), 123);
    shown.list.setHeaders({"Name", "ID"});
    shown.list.setWidths({1, -10});
    EXPECT_GT(shown.list.columnWidth(0), 500);
    shown.list.setHeaders({"Name", "ID", "Type"});
    shown.list.setWidths({1, -10, -6});
    EXPECT_EQ(shown.list.columnWidth(0), 123);
}

}  // namespace
}  // namespace stelvan::form
