#include "browser/records_model.h"

#include <algorithm>
#include <compare>
#include <variant>

#include "base/number.h"
#include "db/value_text.h"
#include "form/text.h"

namespace stelvan::browser {
namespace {

/// As a flag column is read: 0 alone is clear, in whatever type the file keeps it.
bool isSet(const db::Value& value) {
    if (const bool* flag = std::get_if<bool>(&value)) return *flag;
    const std::string text = db::toTextOrEmpty(value);
    return !base::isNumeric(text) || std::is_neq(base::compareDecimals(text, "0"));
}

}  // namespace

RecordsModel::RecordsModel(std::shared_ptr<const db::Recordset> records, QObject* parent)
    : QAbstractTableModel(parent),
      records_(std::move(records)),
      rows_(records_->storedCount()),
      flags_(records_->fieldCount(), false) {}

int RecordsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

int RecordsModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(flags_.size());
}

void RecordsModel::setOrder(std::vector<std::int32_t> stored) {
    emit layoutAboutToBeChanged();
    order_ = std::move(stored);
    emit layoutChanged();
}

std::int32_t RecordsModel::recordAt(int row) const {
    return order_.empty() ? row : order_.at(static_cast<std::size_t>(row));
}

int RecordsModel::rowOf(std::int32_t record) const {
    if (order_.empty()) return record;
    return static_cast<int>(std::ranges::find(order_, record) - order_.begin());
}

QString RecordsModel::text(const QModelIndex& index) const {
    const auto column = static_cast<std::size_t>(index.column());
    return cellText(column, records_->storedField(recordAt(index.row()), column));
}

QString RecordsModel::cellText(std::size_t column, const db::Value& value) const {
    const QString stored = form::toQt(db::toTextOrEmpty(value));
    if (!flags_[column] || stored.isEmpty()) return stored;
    return isSet(value) ? QStringLiteral("TRUE") : QStringLiteral("FALSE");
}

QVariant RecordsModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole)) return {};
    try {
        return role == Qt::DisplayRole ? form::onOneLine(text(index))
                                       : form::asToolTip(text(index));
    } catch (const base::RunTimeError& failure) {
        // Painting is no place for a message box: the cell itself says what is wrong with it.
        return role == Qt::DisplayRole ? QStringLiteral("(unreadable)")
                                       : QString::fromStdString(failure.what());
    }
}

QVariant RecordsModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole) return {};
    if (orientation == Qt::Vertical) return section + 1;
    return form::toQt(records_->fieldName(static_cast<std::size_t>(section)));
}

void RecordsModel::setFlagFormat(int column) {
    flags_[static_cast<std::size_t>(column)] = true;
}

}  // namespace stelvan::browser
