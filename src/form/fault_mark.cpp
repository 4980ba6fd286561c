#include "form/fault_mark.h"

#include <QAction>
#include <QEvent>
#include <QGuiApplication>
#include <QIcon>
#include <QPainter>

#include "form/inputs.h"
#include "form/look.h"
#include "form/pictures.h"
#include "form/text.h"

namespace stelvan::form {
namespace {

constexpr double kFrame = 2;
constexpr int kGap = 4;

QLineEdit* lineIn(QWidget& widget) {
    if (auto* combo = qobject_cast<QComboBox*>(&widget)) return combo->lineEdit();
    return qobject_cast<QLineEdit*>(&widget);
}

}  // namespace

FaultMark::FaultMark(QWidget& marked) : QWidget(&marked), marked_(marked), line_(lineIn(marked)) {
    setObjectName(QStringLiteral("faultMark"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    hide();
    marked.installEventFilter(this);
}

void FaultMark::setMessage(const QString& message) {
    if (message == message_) return;
    if (message_.isEmpty()) formerToolTip_ = marked_.toolTip();
    message_ = message;
    const bool marks = !message.isEmpty();
    marked_.setToolTip(marks ? asToolTip(message) : formerToolTip_);
    describe();
    showPicture();
    cover();
    setVisible(marks);
    raise();
}

void FaultMark::setDescription(const QString& description) {
    description_ = description;
    describe();
}

void FaultMark::describe() {
    const bool both = !message_.isEmpty() && !description_.isEmpty();
    marked_.setAccessibleDescription(message_ + (both ? QStringLiteral(" ") : QString()) +
                                     description_);
}

void FaultMark::showPicture() {
    const bool marks = !message_.isEmpty();
    if (line_ != nullptr) {
        if (picture_ == nullptr && marks) {
            picture_ = line_->addAction(QIcon(), QLineEdit::TrailingPosition);
            picture_->setObjectName(QStringLiteral("faultPicture"));
        }
        if (picture_ == nullptr) return;
        if (marks) picture_->setIcon(faultIcon(faultColour(QGuiApplication::palette())));
        picture_->setToolTip(marked_.toolTip());
        picture_->setVisible(marks);
    } else if (auto* text = qobject_cast<TextBox*>(&marked_)) {
        text->setRightMargin(marks ? kPictureSize + kGap : 0);
    }
}

void FaultMark::cover() {
    setGeometry(marked_.rect());
}

bool FaultMark::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize) cover();
    if (event->type() == QEvent::PaletteChange && !message_.isEmpty()) showPicture();
    return QWidget::eventFilter(watched, event);
}

void FaultMark::paintEvent(QPaintEvent*) {
    const QColor colour = faultColour(QGuiApplication::palette());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour, kFrame));
    constexpr double kHalf = kFrame / 2;
    painter.drawRoundedRect(QRectF(rect()).adjusted(kHalf, kHalf, -kHalf, -kHalf), 2, 2);
    if (const auto* text = qobject_cast<TextBox*>(&marked_))
        drawFault(painter,
                  QRectF(text->viewport()->geometry().right() + kGap / 2, 2 * kFrame, kPictureSize,
                         kPictureSize),
                  colour);
}

}  // namespace stelvan::form
