// The three input widgets as the property frames need them: a line, a box of several lines, a combo
// box. They know how wide or tall they want to be in characters, so a larger font gets larger
// inputs.
#pragma once

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

namespace stelvan::form {

/// `characters` is the widest it wants to be; 0 takes all the width there is.
class LineBox : public QLineEdit {
    Q_OBJECT
public:
    explicit LineBox(int characters = 0, QWidget* parent = nullptr);
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

private:
    int characters_;
};

/// Tab leaves it, Ctrl+Enter types a line break. It wants `lines` lines and never becomes taller
/// than that: what stands beside it needs the room.
class TextBox : public QPlainTextEdit {
    Q_OBJECT
public:
    explicit TextBox(int lines, QWidget* parent = nullptr);
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

    /// Locked: shows its text, which can be selected and copied with mouse and keys, but not
    /// changed.
    void setLocked(bool locked);
    /// Limits typing and pasting; a longer text that is there already stays whole. 0: no limit.
    void setMaxLength(int characters) { maxLength_ = characters; }
    /// A text from the program, whatever its length.
    void replaceText(const QString& text);
    /// Room kept free right of the text, in pixels.
    void setRightMargin(int pixels) { setViewportMargins(0, 0, pixels, 0); }
    /// What the text measures when stored: a line break counts as two characters.
    [[nodiscard]] int storedLength() const;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void capHeight();
    [[nodiscard]] QSize sizeOf(int columns, int lines) const;
    void refuseExcess();

    int lines_;
    int maxLength_ = 0;
    int changedAt_ = 0;
    int addedCount_ = 0;
    bool refusing_ = false;
};

/// Every press of its mnemonic is a click at once; the toolkit's button swallows those that come
/// while it still shows the one before. In a narrow window it is as wide as its caption, and while
/// it is hidden its room stays.
class CommandButton : public QPushButton {
    Q_OBJECT
public:
    explicit CommandButton(const QString& caption, QWidget* parent = nullptr);
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
};

/// The wheel never changes it while its list is closed up, and a locked one offers no list at all.
class ComboBox : public QComboBox {
    Q_OBJECT
public:
    explicit ComboBox(QWidget* parent = nullptr);
    void setLocked(bool locked);
    [[nodiscard]] bool isLocked() const { return locked_; }
    void showPopup() override;

protected:
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    bool locked_ = false;
};

}  // namespace stelvan::form
