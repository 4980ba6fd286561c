#include "browser/records_model.h"

#include "db/value_text.h"
#include "form/text.h"

namespace stelvan::browser {

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

QString RecordsModel::text(const QModelIndex& index) const {
    const auto column = static_cast<std::size_t>(index.column());
    const db::Value value = records_->storedField(index.row(), column);
    const QString stored = form::toQt(db::toTextOrEmpty(value));
    if (!flags_[column] || stored.isEmpty()) return stored;
    return db::toFlag(value) ? QStringLiteral("TRUE") : QStringLiteral("FALSE");
}

QVariant RecordsModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole)) return {};
    try {
        return role == Qt::DisplayRole ? form::onOneLine(text(index)) : text(index);
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
