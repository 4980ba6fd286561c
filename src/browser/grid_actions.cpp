#include "browser/grid_actions.h"

#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QTabBar>
#include <QTableView>
#include <algorithm>
#include <numeric>

#include "browser/grid/sorted_records.h"
#include "browser/grid_view.h"
#include "form/text.h"
#include "gem/categories.h"

namespace stelvan::browser {

void GridActions::connectGrid() {
    QTableView* const grid = window_.form.DBGridGEM;
    grid->installEventFilter(this);
    grid->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(grid, &QTableView::customContextMenuRequested, this, &GridActions::openMenu);
    connect(grid, &QTableView::doubleClicked, this,
            [this](const QModelIndex& index) { show(index.row()); });
    connect(grid->horizontalHeader(), &QHeaderView::sectionClicked, this, &GridActions::sortBy);
}

RecordsModel* GridActions::model() const {
    return qobject_cast<RecordsModel*>(window_.form.DBGridGEM->model());
}

bool GridActions::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && model() != nullptr) {
        const auto& pressed = static_cast<const QKeyEvent&>(*event);
        if (pressed.matches(QKeySequence::Copy)) {
            copyRows();
            return true;
        }
        if (pressed.key() == Qt::Key_Return || pressed.key() == Qt::Key_Enter) {
            show(window_.form.DBGridGEM->currentIndex().row());
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

void GridActions::show(int row) {
    if (window_.state.editing() || row < 0 || model() == nullptr) return;
    const std::int32_t record = model()->recordAt(row);
    window_.form.tspData->setCurrentIndex(kPropertiesTab - 1);
    records_.showRecord(record + 1);
}

GridActions::Sorting GridActions::following(const RecordsModel& shown, int column) const {
    if (sorted_ != &shown || column_ != column) return Sorting::Ascending;
    return sorting_ == Sorting::Ascending    ? Sorting::Descending
           : sorting_ == Sorting::Descending ? Sorting::Given
                                             : Sorting::Ascending;
}

void GridActions::sortBy(int column) {
    RecordsModel* const shown = model();
    if (shown == nullptr) return;
    window_.errors.handle("sortBy", [&] {
        const Sorting next = following(*shown, column);
        const int row = window_.form.DBGridGEM->currentIndex().row();
        const std::int32_t record = row < 0 ? -1 : shown->recordAt(row);
        std::vector<std::int32_t> order;
        if (next != Sorting::Given)
            order = sortedRecords(shown->records(), static_cast<std::size_t>(column),
                                  next == Sorting::Descending);
        // Each row of a selection would have to be followed to its new place.
        window_.form.DBGridGEM->selectionModel()->clear();
        shown->setOrder(std::move(order));
        if (record >= 0) selectRecord(*shown, record);
        QHeaderView& header = *window_.form.DBGridGEM->horizontalHeader();
        header.setSortIndicator(
            column, next == Sorting::Descending ? Qt::DescendingOrder : Qt::AscendingOrder);
        header.setSortIndicatorShown(next != Sorting::Given);
        sorted_ = shown;
        column_ = column;
        sorting_ = next;
    });
}

void GridActions::selectRecord(RecordsModel& shown, std::int32_t record) {
    QTableView& grid = *window_.form.DBGridGEM;
    const int row = shown.rowOf(record);
    grid.selectRow(row);
    grid.scrollTo(shown.index(row, 0));
}

std::vector<std::int32_t> GridActions::selectedRecords() const {
    std::vector<int> rows;
    for (const QModelIndex& index : window_.form.DBGridGEM->selectionModel()->selectedRows())
        rows.push_back(index.row());
    std::ranges::sort(rows);
    std::vector<std::int32_t> chosen;
    for (const int row : rows) chosen.push_back(model()->recordAt(row));
    return chosen;
}

void GridActions::writeRows(const std::vector<std::int32_t>& records, const TextForm& form,
                            const model::Sink& sink) const {
    const RecordsModel& shown = *model();
    RowsAsText rows{shown.records(), {}, [&shown](std::size_t field, const db::Value& value) {
                        return shown.cellText(field, value);
                    }};
    for (int column = 0; column < shown.columnCount(); ++column)
        if (!window_.form.DBGridGEM->isColumnHidden(column))
            rows.fields.push_back(static_cast<std::size_t>(column));
    rows.write(records, form, sink);
}

void GridActions::copyRows() {
    window_.errors.handle("copyRows", [&] {
        const std::vector<std::int32_t> chosen = selectedRecords();
        if (chosen.empty()) return;
        std::string text;
        writeRows(chosen, kTabSeparated, [&text](std::string_view line) { text += line; });
        QGuiApplication::clipboard()->setText(form::toQt(text));
    });
}

void GridActions::fitColumns() {
    window_.form.DBGridGEM->resizeColumnsToContents();
}

void GridActions::exportRows() {
    if (window_.state.editing() || model() == nullptr) return;
    const QString caption = form::toQt(gem::categoryAt(window_.state.category).caption);
    const QString folder = QFileInfo(form::toQt(window_.operations.path())).absolutePath();
    const QString file =
        window_.dialogs.saveFile(QStringLiteral("Export These Rows"), QStringLiteral("CSV (*.csv)"),
                                 folder + QLatin1Char('/') + caption + QStringLiteral(".csv"));
    if (file.isEmpty() || model() == nullptr) return;
    window_.errors.handle("exportRows", [&] {
        std::vector<std::int32_t> all;
        for (int row = 0; row < model()->rowCount(); ++row) all.push_back(model()->recordAt(row));
        try {
            model::writeWhole(form::toUtf8(file), [&](const model::Sink& sink) {
                writeRows(all, kCommaSeparated, sink);
            });
        } catch (const base::RunTimeError&) {
            throw;
        } catch (const std::exception& failure) {
            window_.dialogs.message(QString::fromUtf8(failure.what()), form::Icon::Exclamation);
        }
    });
}

void GridActions::openMenu(const QPoint& at) {
    if (model() == nullptr) return;
    QTableView* const grid = window_.form.DBGridGEM;
    auto* const menu = new QMenu(grid);
    menu->setObjectName(QStringLiteral("mnuGrid"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QAction* const copy = menu->addAction(QStringLiteral("&Copy"), this, &GridActions::copyRows);
    copy->setShortcut(QKeySequence::Copy);
    copy->setEnabled(grid->selectionModel()->hasSelection());
    menu->addAction(QStringLiteral("&Fit Columns"), this, &GridActions::fitColumns);
    menu->addAction(QStringLiteral("&Export These Rows as CSV..."), this, &GridActions::exportRows)
        ->setEnabled(!window_.state.editing());
    menu->popup(grid->viewport()->mapToGlobal(at));
}

}  // namespace stelvan::browser
