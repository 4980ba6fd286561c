#include "browser/grid_view.h"

#include <QHeaderView>
#include <QSignalBlocker>
#include <QTabBar>
#include <QTableView>
#include <algorithm>
#include <array>
#include <cmath>

#include "base/text.h"
#include "browser/records_model.h"
#include "form/column_widths.h"
#include "form/text.h"
#include "gem/categories.h"

namespace stelvan::browser {
namespace {

constexpr int kGridFrame = 7;
constexpr double kWidthFactor = 1.2;

constexpr std::array kFlagColumns = {"RPT_DEFAULT",   "VAR_ORDERBY_ACCESSID", "VAR_LINKCHILD",
                                     "VAR_LOADCHILD", "VAR_ALLOWDUPLICATES",  "VAR_CANADD",
                                     "EVT_ENABLE",    "ALM_ENABLE",           "ALM_SET"};

constexpr std::array kHiddenVariableColumns = {"VAR_LOADCHILD", "VAR_CANADD"};

template <class Names>
bool isOneOf(const QString& caption, const Names& names) {
    const std::string word = form::toUtf8(caption);
    return std::any_of(names.begin(), names.end(),
                       [&word](const char* name) { return base::sameWord(word, name); });
}

QString captionOf(const QAbstractItemModel& model, int column) {
    return model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
}

}  // namespace

void GridView::tspData_Click() {
    const int tab = window_.form.tspData->currentIndex() + 1;
    if (tab == kPropertiesTab) {
        window_.errors.handle("tspData_Click", [this] { showProperties(); });
    } else if (tab == kViewAllTab) {
        if (!window_.errors.handle("tspData_Click", [this] { showGrid(); })) reset();
    }
}

void GridView::reset() {
    const QSignalBlocker quiet(window_.form.tspData);
    window_.form.tspData->setCurrentIndex(kPropertiesTab - 1);
    showProperties();
}

void GridView::showProperties() {
    window_.form.sendFrameToBack(kGridFrame);
    detach();
    window_.form.nav.fraDBOperation->setEnabled(true);
}

void GridView::showGrid() {
    attach();
    if (gem::isVariable(window_.state.category)) shapeVariableColumns();
    window_.form.showFrame(kGridFrame);
    // Only now it has its width.
    if (!gem::isVariable(window_.state.category)) form::fitColumns(*window_.form.DBGridGEM);
    window_.form.gridColumns->apply();
    window_.form.nav.fraDBOperation->setEnabled(false);
    selectShown();
}

void GridView::attach() {
    if (window_.state.current.records == nullptr) throw base::objectNotSet();
    auto model = std::make_unique<RecordsModel>(window_.state.current.records);
    for (int column = 0; column < model->columnCount(); ++column)
        if (isOneOf(captionOf(*model, column), kFlagColumns)) model->setFlagFormat(column);
    detach();
    QTableView& grid = *window_.form.DBGridGEM;
    model->setParent(&grid);
    grid.setModel(model.release());
    for (int column = 0; column < grid.model()->columnCount(); ++column) {
        grid.setColumnHidden(column, false);
        grid.setColumnWidth(column, grid.horizontalHeader()->defaultSectionSize());
    }
    grid.horizontalHeader()->setSortIndicatorShown(false);
}

void GridView::selectShown() {
    const form::MainState& state = window_.state;
    QTableView& grid = *window_.form.DBGridGEM;
    const int rows = grid.model()->rowCount();
    if (rows == 0) return;
    // A record that is being added is no stored one: the one shown before it is.
    const bool adding = state.editMode == form::EditMode::Adding;
    const std::int32_t position = adding ? state.savedPosition : state.current.position;
    const int row = std::clamp(position - 1, 0, rows - 1);
    grid.selectRow(row);
    grid.scrollTo(grid.model()->index(row, 0), QAbstractItemView::PositionAtCenter);
}

void GridView::detach() {
    QAbstractItemModel* former = window_.form.DBGridGEM->model();
    window_.form.DBGridGEM->setModel(nullptr);
    delete former;
}

void GridView::shapeVariableColumns() {
    QTableView& grid = *window_.form.DBGridGEM;
    QHeaderView& header = *grid.horizontalHeader();
    for (int column = 0; column < header.count(); ++column)
        if (isOneOf(captionOf(*grid.model(), column), kHiddenVariableColumns))
            grid.setColumnHidden(column, true);
    for (int column = 0; column < header.count(); ++column) {
        if (grid.isColumnHidden(column)) continue;
        const int caption =
            header.fontMetrics().horizontalAdvance(captionOf(*grid.model(), column));
        grid.setColumnWidth(column, std::max(static_cast<int>(std::lround(caption * kWidthFactor)),
                                             header.sectionSizeHint(column)));
    }
}

}  // namespace stelvan::browser
