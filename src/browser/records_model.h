// The rows of a record set as an item model: read from the record set as they are looked at,
// without moving its cursor. A record being added and pending changes are not in it.
#pragma once

#include <QAbstractTableModel>
#include <memory>
#include <vector>

#include "db/record_set.h"

namespace stelvan::browser {

class RecordsModel : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit RecordsModel(std::shared_ptr<const db::Recordset> records, QObject* parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

    /// From now on the column reads TRUE or FALSE.
    void setFlagFormat(int column);

    /// Shows the rows in another order: `stored[n]` is the record of row n. Empty: in their own.
    void setOrder(std::vector<std::int32_t> stored);
    /// The record that a row shows, from 0, and the row that shows a record.
    [[nodiscard]] std::int32_t recordAt(int row) const;
    [[nodiscard]] int rowOf(std::int32_t record) const;
    [[nodiscard]] const db::Recordset& records() const { return *records_; }

    /// The whole text of a cell with this value.
    [[nodiscard]] QString cellText(std::size_t column, const db::Value& value) const;

private:
    [[nodiscard]] QString text(const QModelIndex& index) const;

    std::shared_ptr<const db::Recordset> records_;
    int rows_;
    std::vector<bool> flags_;
    std::vector<std::int32_t> order_;  // empty: the record set's own
};

}  // namespace stelvan::browser
