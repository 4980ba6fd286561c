// The "Exception:" box below the record: two lines while there is little to say, as tall as its
// text up to six, then it scrolls.
#pragma once

#include <QPlainTextEdit>
#include <QPointer>
#include <QTimer>
#include <optional>

class QSplitter;

namespace stelvan::form {

/// Read-only; a double click on a line, or Enter where the caret stands, chooses it.
class ErrorLog : public QPlainTextEdit {
    Q_OBJECT
public:
    explicit ErrorLog(QWidget* parent = nullptr);
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    /// What its text needs, between two lines and six.
    [[nodiscard]] int wantedHeight() const;

signals:
    /// Lines are counted from 0.
    void lineChosen(int line);

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] int heightOf(int lines) const;
};

/// Gives the lowest part of a splitter the height that its log wants, and takes that back when the
/// text is gone; what the user chose by dragging stays.
class GrowWithText : public QObject {
    Q_OBJECT
public:
    /// `splitter` owns the object; `log` lies in its last part.
    GrowWithText(QSplitter& splitter, ErrorLog& log);

private:
    void fit();

    QSplitter& splitter_;
    ErrorLog& log_;
    QTimer later_;  // a list of lines comes one by one
    std::optional<int> heightBefore_;
};

}  // namespace stelvan::form
