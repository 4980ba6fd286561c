// Decides when leaving a field counts, so that its check runs: only when the user takes the focus
// to another control of the same window, by mouse, Tab, Enter or a shortcut.
//
// It does not count when the program moves the focus or disables or hides the field, when a menu, a
// drop-down, a message box or another application comes to the front, when the window closes, on
// the way to cmdCancel (what is thrown away is not judged), nor when cmdSave is pressed, which runs
// all checks itself.
#pragma once

#include <QObject>
#include <QPointer>

#include "form/field.h"

class QPushButton;

namespace stelvan::form {

class FocusWatch : public QObject {
    Q_OBJECT
public:
    /// Watches every Field below `window`; the buttons are those of the navigator.
    FocusWatch(QWidget& window, QPushButton& cmdSave, QPushButton& cmdCancel);

    /// Moves the focus as the user's own doing: for handlers of Tab and Enter.
    static void moveFocus(QWidget& target, bool backwards);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void focusChanged(QWidget* from, QWidget* to);
    [[nodiscard]] bool counts(const QWidget& from, const QWidget* to, Qt::FocusReason reason) const;

    QWidget& window_;
    QPushButton& cmdSave_;
    QPushButton& cmdCancel_;
    QPointer<Field> leaving_;
    bool byMouse_ = false;
};

}  // namespace stelvan::form
