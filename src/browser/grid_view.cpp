#include "browser/grid_view.h"

#include <QHeaderView>
#include <QSignalBlocker>
#include <QTabBar>
#include <QTableView>
#include <algorithm>
#include <array>
#include <cmath>

#include "browser/records_model.h"

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
    const QString upper = caption.toUpper();
    return std::any_of(names.begin(), names.end(),
                       [&upper](const char* name) { return upper == QLatin1String(name); });
}

QString captionOf(const QAbstractItemModel& model, int column) {
    return model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
}

}  // namespace

GridView::GridView(const form::MainForm& form, const form::MainState& state,
                   base::ErrorInfo& errors, const db::DataSource& adoGEM)
    : form_(form), state_(state), errors_(errors), adoGEM_(adoGEM) {}

void GridView::tspData_Click() {
    const int tab = form_.tspData->currentIndex() + 1;
    if (tab == kPropertiesTab) {
        errors_.trap("tspData_Click", [this] { showProperties(); });
    } else if (tab == kViewAllTab) {
        if (!errors_.trap("tspData_Click", [this] { showGrid(); })) reset();
    }
}

void GridView::reset() {
    const QSignalBlocker quiet(form_.tspData);
    form_.tspData->setCurrentIndex(kPropertiesTab - 1);
    showProperties();
}

void GridView::showProperties() {
    form_.sendFrameToBack(kGridFrame);
    detach();
    form_.nav.fraDBOperation->setEnabled(true);
}

void GridView::showGrid() {
    attach();
    if (form::isVariable(state_.category)) shapeVariableColumns();
    form_.showFrame(kGridFrame);
    form_.nav.fraDBOperation->setEnabled(false);
}

void GridView::attach() {
    if (adoGEM_.recordset == nullptr) throw base::objectNotSet();
    auto model = std::make_unique<RecordsModel>(adoGEM_.recordset);
    for (int column = 0; column < model->columnCount(); ++column)
        if (isOneOf(captionOf(*model, column), kFlagColumns)) model->setFlagFormat(column);
    detach();
    QTableView& grid = *form_.DBGridGEM;
    model->setParent(&grid);
    grid.setModel(model.release());
    for (int column = 0; column < grid.model()->columnCount(); ++column) {
        grid.setColumnHidden(column, false);
        grid.setColumnWidth(column, grid.horizontalHeader()->defaultSectionSize());
    }
    if (grid.model()->rowCount() > 0) grid.selectRow(0);
}

void GridView::detach() {
    QAbstractItemModel* former = form_.DBGridGEM->model();
    form_.DBGridGEM->setModel(nullptr);
    delete former;
}

void GridView::shapeVariableColumns() {
    QTableView& grid = *form_.DBGridGEM;
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
