#include "form/list_view.h"

#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QSortFilterProxyModel>
#include <algorithm>
#include <numeric>

#include "form/fault_mark.h"
#include "form/list_rows.h"

namespace stelvan::form {
namespace {

constexpr int kColumnMargin = 2;  // digits of room around a text

/// Narrows to rows that hold a text in a column that is seen.
class ShownRows : public QSortFilterProxyModel {
public:
    explicit ShownRows(const QTreeView& view) : view_(view) {}

protected:
    [[nodiscard]] bool filterAcceptsRow(int row, const QModelIndex& parent) const override {
        for (int c = 0; c < sourceModel()->columnCount(parent); ++c) {
            const QString text = sourceModel()->index(row, c, parent).data().toString();
            if (!view_.isColumnHidden(c) && filterRegularExpression().match(text).hasMatch())
                return true;
        }
        return filterRegularExpression().pattern().isEmpty();
    }

private:
    const QTreeView& view_;
};

}  // namespace

ListView::ListView(QWidget* parent)
    : QTreeView(parent),
      rows_(new ListRows(this)),
      shown_(new ShownRows(*this)),
      dragged_(new DraggedColumns(*header())),
      mark_(new FaultMark(*this)) {
    shown_->setParent(this);
    shown_->setSourceModel(rows_);
    shown_->setFilterCaseSensitivity(Qt::CaseInsensitive);
    setModel(shown_);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    header()->setStretchLastSection(true);
    connect(rows_, &ListRows::userChecked, this, &ListView::itemChecked);
    connect(this, &QTreeView::doubleClicked, this, [this](const QModelIndex& index) {
        if (open_) emit rowActivated(shown_->mapToSource(index).row());
    });
    applyLook();
}

void ListView::setHeaders(const QStringList& headers) {
    const int selected = selectedRow();
    rows_->setHeaders(headers);
    selectRow(selected);
}

QStringList ListView::headers() const {
    return rows_->headers();
}

void ListView::setWidths(const std::vector<int>& widths) {
    widths_ = widths;
    if (widths.empty()) widths_.assign(static_cast<std::size_t>(rows_->columnCount()), 1);
    widths_.resize(static_cast<std::size_t>(rows_->columnCount()), 1);
    header()->setStretchLastSection(false);  // it would compete with the shares
    shareWidth();
    dragged_->apply();
}

int ListView::neededWidth(int column, int mostDigits) const {
    QString longest;
    for (const ListRow& row : rows_->rows())
        if (row.texts.value(column).size() > longest.size()) longest = row.texts.value(column);
    const int digit = fontMetrics().horizontalAdvance(QLatin1Char('0'));
    const int text = std::min(fontMetrics().horizontalAdvance(longest), mostDigits * digit);
    return std::max(text + kColumnMargin * digit, header()->sectionSizeHint(column));
}

void ListView::shareWidth() {
    if (widths_.empty()) return;
    const int columns = std::min(static_cast<int>(widths_.size()), rows_->columnCount());
    for (int c = 0; c < columns; ++c) setColumnHidden(c, widths_[static_cast<std::size_t>(c)] == 0);
    if (dragged_->any()) return;
    int room = viewport()->width();
    int shares = 0;
    for (int c = 0; c < columns; ++c) {
        const int share = widths_[static_cast<std::size_t>(c)];
        if (share < 0) setColumnWidth(c, neededWidth(c, -share));
        if (share < 0) room -= columnWidth(c);
        shares += std::max(share, 0);
    }
    for (int c = 0; c < columns; ++c) {
        const int share = widths_[static_cast<std::size_t>(c)];
        if (share > 0)
            setColumnWidth(c, std::max(room * share / shares, header()->sectionSizeHint(c)));
    }
}

void ListView::setCheckable(bool checkable) {
    rows_->setCheckable(checkable);
}

bool ListView::isCheckable() const {
    return rows_->isCheckable();
}

void ListView::clearRows() {
    rows_->setRows({});
}

void ListView::appendRow(const ListRow& row) {
    rows_->appendRow(row);
    shareWidth();
}

void ListView::setRows(const std::vector<ListRow>& rows) {
    rows_->setRows(rows);
    shareWidth();
    selectRow(rows.empty() ? -1 : 0);
}

const std::vector<ListRow>& ListView::rows() const {
    return rows_->rows();
}

int ListView::rowCount() const {
    return rows_->rowCount();
}

ListRow ListView::row(int index) const {
    return rows_->rows().at(static_cast<std::size_t>(index));
}

QString ListView::text(int row, int column) const {
    return rows_->rows().at(static_cast<std::size_t>(row)).texts.value(column);
}

void ListView::setText(int row, int column, const QString& text) {
    rows_->setText(row, column, text);
}

bool ListView::isChecked(int row) const {
    return rows_->rows().at(static_cast<std::size_t>(row)).checked;
}

void ListView::setChecked(int row, bool checked) {
    rows_->setChecked(row, checked);
}

void ListView::removeRow(int row) {
    rows_->removeRowAt(row);
    selectRow(std::min(row, rowCount() - 1));
}

int ListView::selectedRow() const {
    const QModelIndexList selected = selectionModel()->selectedRows();
    return selected.isEmpty() ? -1 : shown_->mapToSource(selected.first()).row();
}

void ListView::selectRow(int row) {
    const QModelIndex index = row < 0 ? QModelIndex() : shown_->mapFromSource(rows_->index(row, 0));
    if (!index.isValid()) {
        selectionModel()->clear();
        return;
    }
    selectionModel()->setCurrentIndex(
        index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(index);
}

void ListView::setOpen(bool open) {
    open_ = open;
    rows_->setOpen(open);
    if (!open) setFault({});
    applyLook();
}

void ListView::setFault(const QString& message) {
    mark_->setMessage(open_ ? message : QString());
}

void ListView::pointOut(const QString& why) {
    if (!open_) mark_->setMessage(why);
}

void ListView::setColour(Colour colour) {
    colour_ = colour;
    applyLook();
}

void ListView::applyLook() {
    applyColour(*this, colour_, {QPalette::Base, QPalette::Text});
    // A selection that cannot be moved is not worth showing.
    QPalette mine = palette();
    const QPalette system = QGuiApplication::palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        mine.setBrush(
            group, QPalette::Highlight,
            open_ ? system.brush(group, QPalette::Highlight) : mine.brush(group, QPalette::Base));
        mine.setBrush(group, QPalette::HighlightedText,
                      open_ ? system.brush(group, QPalette::HighlightedText)
                            : mine.brush(group, QPalette::Text));
    }
    if (mine != palette()) setPalette(mine);
}

void ListView::setNarrowing(const QString& text) {
    shown_->setFilterFixedString(text);
    if (selectedRow() < 0 && shown_->rowCount() > 0)
        selectRow(shown_->mapToSource(shown_->index(0, 0)).row());
}

void ListView::keyPressEvent(QKeyEvent* event) {
    if (!open_) {
        scrollByKey(event);
    } else if (event->key() == Qt::Key_Delete) {
        emit deletePressed();
    } else {
        QTreeView::keyPressEvent(event);
    }
}

void ListView::scrollByKey(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Up:
            verticalScrollBar()->triggerAction(QScrollBar::SliderSingleStepSub);
            break;
        case Qt::Key_Down:
            verticalScrollBar()->triggerAction(QScrollBar::SliderSingleStepAdd);
            break;
        case Qt::Key_PageUp:
            verticalScrollBar()->triggerAction(QScrollBar::SliderPageStepSub);
            break;
        case Qt::Key_PageDown:
            verticalScrollBar()->triggerAction(QScrollBar::SliderPageStepAdd);
            break;
        case Qt::Key_Home:
            verticalScrollBar()->triggerAction(QScrollBar::SliderToMinimum);
            break;
        case Qt::Key_End:
            verticalScrollBar()->triggerAction(QScrollBar::SliderToMaximum);
            break;
        default:
            event->ignore();
            break;
    }
}

void ListView::mouseMoveEvent(QMouseEvent* event) {
    if (open_) QTreeView::mouseMoveEvent(event);
}

QItemSelectionModel::SelectionFlags ListView::selectionCommand(const QModelIndex& index,
                                                               const QEvent* event) const {
    return open_ ? QTreeView::selectionCommand(index, event) : QItemSelectionModel::NoUpdate;
}

void ListView::resizeEvent(QResizeEvent* event) {
    shareWidth();  // first, so that no scroll bar is wanted for the widths of before
    QTreeView::resizeEvent(event);
}

void ListView::changeEvent(QEvent* event) {
    QTreeView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) applyLook();
    if (event->type() == QEvent::FontChange) shareWidth();
}

}  // namespace stelvan::form
