// A list that pops up below an input: rows to choose one of, found as one types.
//
//     +--------------------------+
//     | alarm_                   |   txtPickFind
//     | 101  Sc1AlarmSet         |   lvwPick
//     | 102  Sc1AlarmCleared     |
//     +--------------------------+
//
// Arrows and page keys move in it; Enter or a click chooses; Escape or a click elsewhere closes it.
#pragma once

#include <QFrame>
#include <vector>

#include "form/list_view.h"

class QLineEdit;

namespace stelvan::form {

class PickList : public QFrame {
    Q_OBJECT
public:
    /// `owner` is the window in which it pops up.
    explicit PickList(QWidget& owner);

    /// Headers and widths as of a ListView. `selected` counts from 0; -1: none.
    void open(const QWidget& below, const QStringList& headers, const std::vector<int>& widths,
              const std::vector<ListRow>& rows, int selected);

signals:
    void chosen(const QStringList& texts);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void place(const QWidget& below);
    void choose();

    QLineEdit* txtPickFind_;
    ListView* lvwPick_;
};

}  // namespace stelvan::form
