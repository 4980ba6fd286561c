// The mark of an input at fault: a frame around it and a picture in it, and its message as tool tip
// and as description for assistive tools. It takes no mouse and no focus.
//
//     |Sc1 Alarm                          (!)|
#pragma once

#include <QString>
#include <QWidget>

class QAction;
class QLineEdit;

namespace stelvan::form {

class FaultMark : public QWidget {
    Q_OBJECT
public:
    /// Lies on `marked`, which owns it: a line or text box, a combo box, a list.
    explicit FaultMark(QWidget& marked);

    /// Marks it; an empty message takes the mark away. Tool tip and description are then what they
    /// were before.
    void setMessage(const QString& message);
    [[nodiscard]] const QString& message() const { return message_; }
    /// What is said of the widget beside its fault.
    void setDescription(const QString& description);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void showPicture();
    void describe();
    void cover();

    QWidget& marked_;
    QLineEdit* line_;
    QAction* picture_ = nullptr;  // in a line, which keeps its text away from it
    QString message_;
    QString formerToolTip_;
    QString description_;
};

}  // namespace stelvan::form
