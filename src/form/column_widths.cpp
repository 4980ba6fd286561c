#include "form/column_widths.h"

#include <QHeaderView>
#include <QTableView>
#include <algorithm>
#include <vector>

#include "base/number.h"
#include "base/text.h"
#include "form/text.h"

namespace stelvan::form {
namespace {

constexpr int kRowsLookedAt = 100;
constexpr int kMostLetters = 40;
constexpr int kCellMargin = 12;

struct Column {
    int index = 0;
    int width = 0;
    int wanted = 0;  // for its longest text
    bool holdsTexts = false;
};

bool isNumberOrFlag(const QString& cell) {
    const std::string text = toUtf8(cell);
    return base::isBlank(text) || base::isNumeric(text) || base::sameWord(text, "TRUE") ||
           base::sameWord(text, "FALSE") || base::sameWord(text, "NULL");
}

Column measured(const QTableView& grid, int index) {
    const QAbstractItemModel& model = *grid.model();
    const QFontMetrics font = grid.fontMetrics();
    Column column;
    column.index = index;
    column.width = grid.horizontalHeader()->sectionSizeHint(index);
    const int most = kMostLetters * font.averageCharWidth();
    for (int row = 0; row < std::min(model.rowCount(), kRowsLookedAt); ++row) {
        const QString cell = model.index(row, index).data().toString();
        const int whole = font.horizontalAdvance(cell) + kCellMargin;
        column.width = std::max(column.width, std::min(whole, most));
        column.wanted = std::max(column.wanted, whole);
        column.holdsTexts = column.holdsTexts || !isNumberOrFlag(cell);
    }
    return column;
}

}  // namespace

void fitColumns(QTableView& grid) {
    std::vector<Column> columns;
    int room = grid.viewport()->width();
    for (int c = 0; c < grid.model()->columnCount(); ++c) {
        if (grid.isColumnHidden(c)) continue;
        columns.push_back(measured(grid, c));
        room -= columns.back().width;
    }
    // Texts that are cut come first.
    for (Column& column : columns) {
        const int more = std::clamp(column.wanted - column.width, 0, std::max(room, 0));
        column.width += more;
        room -= more;
    }
    auto texts = static_cast<int>(std::count_if(columns.begin(), columns.end(),
                                                [](const Column& c) { return c.holdsTexts; }));
    for (Column& column : columns) {
        if (column.holdsTexts && room > 0) {
            const int share = room / texts--;
            column.width += share;
            room -= share;
        }
        grid.setColumnWidth(column.index, column.width);
    }
}

}  // namespace stelvan::form
