// The lists of the link editors: rows of texts under column headers, an optional check box for each
// row, at most one selected row. Rows and columns are counted from 0 here.
//
// Filling, moving texts and clearing check marks from the program emit no signal.
#pragma once

#include <QString>
#include <QStringList>
#include <QTreeView>
#include <vector>

#include "form/dragged_columns.h"
#include "form/look.h"

class QSortFilterProxyModel;

namespace stelvan::form {

class FaultMark;

struct ListRow {
    QStringList texts;  // column 1 to n
    bool checked = false;
};

class ListRows;

class ListView : public QTreeView {
    Q_OBJECT
public:
    explicit ListView(QWidget* parent = nullptr);

    /// Replaces the column headers; rows stay.
    void setHeaders(const QStringList& headers);
    [[nodiscard]] QStringList headers() const;

    /// How the columns share the width, until the user drags one: a positive number is a share, 0
    /// hides the column, -n gives it what its longest text needs, up to n digits (or its header).
    /// None at all: they share it alike. Columns that the user has dragged are as he left them.
    void setWidths(const std::vector<int>& widths);

    [[nodiscard]] DraggedColumns& draggedColumns() const { return *dragged_; }

    /// Whether rows show a check box in their first column.
    void setCheckable(bool checkable);
    [[nodiscard]] bool isCheckable() const;

    void clearRows();
    void appendRow(const ListRow& row);
    /// Many rows at once; the first becomes the selected one (none when empty).
    void setRows(const std::vector<ListRow>& rows);
    [[nodiscard]] const std::vector<ListRow>& rows() const;
    [[nodiscard]] int rowCount() const;
    [[nodiscard]] ListRow row(int index) const;
    /// Empty where the row has no such column.
    [[nodiscard]] QString text(int row, int column) const;
    void setText(int row, int column, const QString& text);
    [[nodiscard]] bool isChecked(int row) const;
    void setChecked(int row, bool checked);
    /// The row that takes the removed one's place becomes the selected one, else the last.
    void removeRow(int row);

    /// -1 when none.
    [[nodiscard]] int selectedRow() const;
    void selectRow(int row);

    /// Closed: can be scrolled, but nothing in it selected or checked by the user, and no fault of
    /// it shown.
    void setOpen(bool open);
    [[nodiscard]] bool isOpen() const { return open_; }

    [[nodiscard]] Colour colour() const { return colour_; }
    void setColour(Colour colour);

    /// Marks the list with what is wrong with it; empty: nothing. An open one only.
    void setFault(const QString& message);
    /// Marks a closed list: somebody was led to it for this reason. Empty: no longer.
    void pointOut(const QString& why);

    /// Narrows what is shown to rows holding `text` (letter case ignored); the rows stay what they
    /// are.
    void setNarrowing(const QString& text);

signals:
    /// The user changed a row's check box.
    void itemChecked(int row);
    /// The user double-clicked a row.
    void rowActivated(int row);
    /// The user pressed Delete.
    void deletePressed();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;

private:
    void shareWidth();
    [[nodiscard]] int neededWidth(int column, int mostDigits) const;
    void applyLook();
    void scrollByKey(QKeyEvent* event);

    ListRows* rows_;
    QSortFilterProxyModel* shown_;
    Colour colour_ = Colour::WindowBackground;
    bool open_ = true;
    std::vector<int> widths_;
    DraggedColumns* dragged_;
    FaultMark* mark_;
};

}  // namespace stelvan::form
