#include "form/inputs.h"

#include <QKeyEvent>
#include <QScrollBar>
#include <QShortcutEvent>
#include <QStyle>
#include <QTextCursor>
#include <QTextDocument>
#include <QWheelEvent>
#include <algorithm>

namespace stelvan::form {

namespace {
constexpr int kLeastLineCharacters = 4;
constexpr int kLeastTextLines = 3;
constexpr int kLeastTextColumns = 20;
constexpr int kTextColumns = 50;
constexpr int kTextStretch = 100;  // its few lines come before what else could grow
constexpr int kCaptionMargin = 8;
}  // namespace

LineBox::LineBox(int characters, QWidget* parent) : QLineEdit(parent), characters_(characters) {
    setSizePolicy(characters == 0 ? QSizePolicy::Expanding : QSizePolicy::Maximum,
                  QSizePolicy::Fixed);
}

QSize LineBox::sizeHint() const {
    QSize hint = QLineEdit::sizeHint();
    if (characters_ > 0)
        hint.setWidth(minimumSizeHint().width() +
                      (characters_ - kLeastLineCharacters) * fontMetrics().averageCharWidth());
    return hint;
}

QSize LineBox::minimumSizeHint() const {
    QSize hint = QLineEdit::minimumSizeHint();
    hint.rwidth() += kLeastLineCharacters * fontMetrics().averageCharWidth();
    return hint;
}

TextBox::TextBox(int lines, QWidget* parent) : QPlainTextEdit(parent), lines_(lines) {
    setTabChangesFocus(true);
    QSizePolicy tall(QSizePolicy::Expanding, QSizePolicy::Expanding);
    tall.setVerticalStretch(kTextStretch);
    setSizePolicy(tall);
    capHeight();
    connect(document(), &QTextDocument::contentsChange, this, [this](int at, int, int added) {
        changedAt_ = at;
        addedCount_ = added;
    });
    connect(document(), &QTextDocument::contentsChanged, this, &TextBox::refuseExcess);
}

QSize TextBox::sizeOf(int columns, int lines) const {
    const auto margin = static_cast<int>(document()->documentMargin());
    const QMargins frame = contentsMargins();
    return {columns * fontMetrics().averageCharWidth() + 2 * margin + frame.left() + frame.right(),
            lines * fontMetrics().lineSpacing() + 2 * margin + frame.top() + frame.bottom()};
}

void TextBox::capHeight() {
    setMaximumHeight(sizeOf(kTextColumns, lines_).height());
}

void TextBox::changeEvent(QEvent* event) {
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) capHeight();
}

QSize TextBox::sizeHint() const {
    return sizeOf(kTextColumns, lines_);
}

QSize TextBox::minimumSizeHint() const {
    return sizeOf(kLeastTextColumns, std::min(lines_, kLeastTextLines));
}

void TextBox::setLocked(bool locked) {
    setTextInteractionFlags(locked ? Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard
                                   : Qt::TextInteractionFlags(Qt::TextEditorInteraction));
}

int TextBox::storedLength() const {
    return document()->characterCount() - 1 + document()->blockCount() -
           1;  // each break is CR and LF
}

void TextBox::replaceText(const QString& text) {
    refusing_ = true;
    setPlainText(text);
    refusing_ = false;
}

void TextBox::refuseExcess() {
    const int excess = storedLength() - maxLength_;
    if (maxLength_ == 0 || excess <= 0 || addedCount_ == 0 || refusing_) return;
    refusing_ = true;
    QTextCursor cut(document());
    cut.joinPreviousEditBlock();
    const int end = std::min(changedAt_ + addedCount_, document()->characterCount() - 1);
    cut.setPosition(end);
    cut.setPosition(std::max(changedAt_, end - excess), QTextCursor::KeepAnchor);
    cut.removeSelectedText();
    cut.endEditBlock();
    refusing_ = false;
}

void TextBox::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool editable = textInteractionFlags().testFlag(Qt::TextEditable);
    if (enter && editable && event->modifiers().testFlag(Qt::ControlModifier)) {
        insertPlainText(QStringLiteral("\n"));
        ensureCursorVisible();
        return;
    }
    QPlainTextEdit::keyPressEvent(event);
}

CommandButton::CommandButton(const QString& caption, QWidget* parent)
    : QPushButton(caption, parent) {
    QSizePolicy shrinking(QSizePolicy::Preferred, QSizePolicy::Fixed);
    shrinking.setRetainSizeWhenHidden(true);
    setSizePolicy(shrinking);
}

QSize CommandButton::minimumSizeHint() const {
    const int caption = fontMetrics().size(Qt::TextShowMnemonic, text()).width();
    const QSize whole = QPushButton::minimumSizeHint();
    return {std::min(whole.width(), caption + 2 * kCaptionMargin), whole.height()};
}

bool CommandButton::event(QEvent* event) {
    if (event->type() != QEvent::Shortcut || static_cast<QShortcutEvent*>(event)->isAmbiguous())
        return QPushButton::event(event);
    click();
    return true;
}

ComboBox::ComboBox(QWidget* parent) : QComboBox(parent) {
    setSizeAdjustPolicy(QComboBox::AdjustToContents);
    setInsertPolicy(QComboBox::NoInsert);
}

void ComboBox::setLocked(bool locked) {
    locked_ = locked;
    if (lineEdit() != nullptr) lineEdit()->setReadOnly(locked);
    if (locked) hidePopup();
}

void ComboBox::showPopup() {
    if (!locked_) QComboBox::showPopup();
}

void ComboBox::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

void ComboBox::keyPressEvent(QKeyEvent* event) {
    if (!locked_) {
        QComboBox::keyPressEvent(event);
    } else if (lineEdit() != nullptr && event->key() != Qt::Key_Up &&
               event->key() != Qt::Key_Down) {
        lineEdit()->event(event);
    } else {
        event->ignore();
    }
}

}  // namespace stelvan::form
