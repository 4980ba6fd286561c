// The lists of the link editors: rows of texts under column headers, an optional check box for each row, at
// most one selected row. Rows and columns are counted from 0 here.
//
// Filling, moving texts and clearing check marks from the program emit no signal.
#pragma once

#include <QStandardItemModel>
#include <QString>
#include <QStringList>
#include <QTreeView>
#include <vector>

namespace stelvan::form {

struct ListRow {
    QStringList texts;  // column 1 to n
    bool checked = false;
};

class ListView : public QTreeView {
    Q_OBJECT
public:
    explicit ListView(QWidget* parent = nullptr);

    /// Replaces the column headers; rows stay.
    void setHeaders(const QStringList& headers);
    [[nodiscard]] QStringList headers() const;

    /// Whether rows show a check box in their first column.
    void setCheckable(bool checkable);
    [[nodiscard]] bool isCheckable() const;

    void clearRows();
    void appendRow(const ListRow& row);
    /// Many rows at once; the first becomes the selected one (none when empty).
    void setRows(const std::vector<ListRow>& rows);
    [[nodiscard]] int rowCount() const;
    [[nodiscard]] ListRow row(int index) const;
    [[nodiscard]] QString text(int row, int column) const;
    void setText(int row, int column, const QString& text);
    [[nodiscard]] bool isChecked(int row) const;
    void setChecked(int row, bool checked);
    void removeRow(int row);

    /// -1 when none.
    [[nodiscard]] int selectedRow() const;
    void selectRow(int row);

    /// Closed: can be scrolled, but nothing in it selected or checked by the user.
    void setOpen(bool open);
    [[nodiscard]] bool isOpen() const { return open_; }

    /// Narrows what is shown to rows holding `text` (letter case ignored); the rows stay what they are.
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

private:
    class Rows;
    Rows* rows_;
    bool open_ = true;
    bool checkable_ = false;
};

}  // namespace stelvan::form
