#include "form/list_rows.h"

#include "form/text.h"

namespace stelvan::form {

int ListRows::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int ListRows::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(headers_.size());
}

QVariant ListRows::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const ListRow& row = rows_[static_cast<std::size_t>(index.row())];
    const QString text = row.texts.value(index.column());
    if (role == Qt::ToolTipRole) return asToolTip(text);
    if (role == Qt::DisplayRole) return onOneLine(text);
    if (role == Qt::CheckStateRole && checkable_ && index.column() == 0)
        return row.checked ? Qt::Checked : Qt::Unchecked;
    return {};
}

bool ListRows::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::CheckStateRole || !checkable_ || !open_ || index.column() != 0) return false;
    at(index.row()).checked = value.toInt() == Qt::Checked;
    emit dataChanged(index, index, {Qt::CheckStateRole});
    emit userChecked(index.row());
    return true;
}

QVariant ListRows::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole) return headers_.value(section);
    return QAbstractTableModel::headerData(section, orientation, role);
}

Qt::ItemFlags ListRows::flags(const QModelIndex& index) const {
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    if (checkable_ && open_ && index.column() == 0) flags |= Qt::ItemIsUserCheckable;
    return flags;
}

void ListRows::setHeaders(const QStringList& headers) {
    beginResetModel();
    headers_ = headers;
    endResetModel();
}

void ListRows::setCheckable(bool checkable) {
    beginResetModel();
    checkable_ = checkable;
    endResetModel();
}

void ListRows::setRows(std::vector<ListRow> rows) {
    beginResetModel();
    rows_ = std::move(rows);
    endResetModel();
}

void ListRows::appendRow(const ListRow& row) {
    beginInsertRows({}, rowCount(), rowCount());
    rows_.push_back(row);
    endInsertRows();
}

void ListRows::removeRowAt(int row) {
    beginRemoveRows({}, row, row);
    rows_.erase(rows_.begin() + row);
    endRemoveRows();
}

void ListRows::setText(int row, int column, const QString& text) {
    QStringList& texts = at(row).texts;
    while (texts.size() <= column) texts << QString();
    texts[column] = text;
    emit dataChanged(index(row, column), index(row, column));
}

void ListRows::setChecked(int row, bool checked) {
    at(row).checked = checked;
    emit dataChanged(index(row, 0), index(row, 0), {Qt::CheckStateRole});
}

}  // namespace stelvan::form
