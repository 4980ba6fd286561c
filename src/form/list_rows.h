// The rows behind a ListView, as an item model.
#pragma once

#include <QAbstractTableModel>
#include <vector>

#include "form/list_view.h"

namespace stelvan::form {

class ListRows : public QAbstractTableModel {
    Q_OBJECT
public:
    using QAbstractTableModel::QAbstractTableModel;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

    void setHeaders(const QStringList& headers);
    [[nodiscard]] const QStringList& headers() const { return headers_; }
    void setCheckable(bool checkable);
    [[nodiscard]] bool isCheckable() const { return checkable_; }
    /// Whether the user may check rows.
    void setOpen(bool open) { open_ = open; }

    void setRows(std::vector<ListRow> rows);
    void appendRow(const ListRow& row);
    void removeRowAt(int row);
    void setText(int row, int column, const QString& text);
    void setChecked(int row, bool checked);
    [[nodiscard]] const std::vector<ListRow>& rows() const { return rows_; }

signals:
    void userChecked(int row);

private:
    [[nodiscard]] ListRow& at(int row) { return rows_.at(static_cast<std::size_t>(row)); }

    std::vector<ListRow> rows_;
    QStringList headers_;
    bool checkable_ = false;
    bool open_ = true;
};

}  // namespace stelvan::form
