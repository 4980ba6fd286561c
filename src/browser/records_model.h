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

private:
    [[nodiscard]] QString text(const QModelIndex& index) const;

    std::shared_ptr<const db::Recordset> records_;
    int rows_;
    std::vector<bool> flags_;
};

}  // namespace stelvan::browser
