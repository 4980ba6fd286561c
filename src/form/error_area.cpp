#include "form/error_area.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QSplitter>
#include <QTextBlock>
#include <algorithm>
#include <cmath>

namespace stelvan::form {
namespace {

constexpr int kLeastLines = 2;
constexpr int kMostLines = 6;

}  // namespace

ErrorLog::ErrorLog(QWidget* parent) : QPlainTextEdit(parent) {
    setReadOnly(true);
    setTabChangesFocus(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
}

int ErrorLog::heightOf(int lines) const {
    // A line is laid out a little higher than the rounded spacing of the font says.
    const double line = std::ceil(QFontMetricsF(font()).lineSpacing());
    const double margins = 2 * (document()->documentMargin() + frameWidth()) + 2;
    return static_cast<int>(lines * line + margins);
}

int ErrorLog::wantedHeight() const {
    // The layout counts lines as they are wrapped. Each message ends in a break, which leaves one
    // empty line below the last.
    const auto lines = static_cast<int>(document()->size().height());
    return heightOf(std::clamp(lines, kLeastLines, kMostLines + 1));
}

QSize ErrorLog::sizeHint() const {
    return {QPlainTextEdit::sizeHint().width(), heightOf(kLeastLines)};
}

QSize ErrorLog::minimumSizeHint() const {
    return {QPlainTextEdit::minimumSizeHint().width(), heightOf(kLeastLines)};
}

void ErrorLog::mouseDoubleClickEvent(QMouseEvent* event) {
    QPlainTextEdit::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton)
        emit lineChosen(cursorForPosition(event->position().toPoint()).blockNumber());
}

void ErrorLog::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        emit lineChosen(textCursor().blockNumber());
    } else {
        QPlainTextEdit::keyPressEvent(event);
    }
}

GrowWithText::GrowWithText(QSplitter& splitter, ErrorLog& log)
    : QObject(&splitter), splitter_(splitter), log_(log) {
    later_.setSingleShot(true);
    connect(&later_, &QTimer::timeout, this, &GrowWithText::fit);
    connect(&log_, &QPlainTextEdit::textChanged, &later_, qOverload<>(&QTimer::start));
    connect(&splitter_, &QSplitter::splitterMoved, this, [this] { heightBefore_.reset(); });
}

void GrowWithText::fit() {
    QList<int> sizes = splitter_.sizes();
    const int now = sizes.last();
    if (now == 0) return;  // not laid out yet
    const int around = splitter_.widget(splitter_.count() - 1)->height() - log_.height();
    int wanted = around + log_.wantedHeight();
    if (heightBefore_) wanted = std::max(wanted, *heightBefore_);
    if (wanted <= now && !heightBefore_) return;
    if (!heightBefore_) heightBefore_ = now;
    sizes.last() = wanted;
    sizes[sizes.size() - 2] += now - wanted;
    splitter_.setSizes(sizes);
    if (wanted == *heightBefore_) heightBefore_.reset();
}

}  // namespace stelvan::form
