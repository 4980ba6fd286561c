#include "form/fault_mark.h"

#include <QAction>
#include <QEvent>
#include <QGuiApplication>
#include <QIcon>
#include <QPainter>

#include "form/inputs.h"
#include "form/look.h"
#include "form/text.h"

namespace stelvan::form {
namespace {

constexpr double kFrame = 2;
constexpr int kPicture = 16;
constexpr int kGap = 4;

QLineEdit* lineIn(QWidget& widget) {
    if (auto* combo = qobject_cast<QComboBox*>(&widget)) return combo->lineEdit();
    return qobject_cast<QLineEdit*>(&widget);
}

/// A disc with an exclamation mark.
void drawPicture(QPainter& painter, const QRectF& square, const QColor& colour) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(square.adjusted(1, 1, -1, -1));
    const double unit = square.width() / kPicture;
    const QPointF middle = square.center();
    painter.setBrush(contrast(Qt::white, colour) > contrast(Qt::black, colour) ? Qt::white
                                                                               : Qt::black);
    painter.drawRect(QRectF(middle.x() - unit, middle.y() - 4.5 * unit, 2 * unit, 5.5 * unit));
    painter.drawRect(QRectF(middle.x() - unit, middle.y() + 2.5 * unit, 2 * unit, 2 * unit));
}

QIcon pictureIn(const QColor& colour) {
    QIcon icon;
    for (int scale = 1; scale <= 4; ++scale) {
        QPixmap pixmap(kPicture * scale, kPicture * scale);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        drawPicture(painter, pixmap.rect(), colour);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
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
    if (message_.isEmpty()) {
        formerToolTip_ = marked_.toolTip();
        formerDescription_ = marked_.accessibleDescription();
    }
    message_ = message;
    const bool marks = !message.isEmpty();
    marked_.setToolTip(marks ? asToolTip(message) : formerToolTip_);
    marked_.setAccessibleDescription(marks ? message : formerDescription_);
    showPicture();
    cover();
    setVisible(marks);
    raise();
}

void FaultMark::showPicture() {
    const bool marks = !message_.isEmpty();
    if (line_ != nullptr) {
        if (picture_ == nullptr && marks) {
            picture_ = line_->addAction(QIcon(), QLineEdit::TrailingPosition);
            picture_->setObjectName(QStringLiteral("faultPicture"));
        }
        if (picture_ == nullptr) return;
        if (marks) picture_->setIcon(pictureIn(faultColour(QGuiApplication::palette())));
        picture_->setToolTip(marked_.toolTip());
        picture_->setVisible(marks);
    } else if (auto* text = qobject_cast<TextBox*>(&marked_)) {
        text->setRightMargin(marks ? kPicture + kGap : 0);
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
        drawPicture(
            painter,
            QRectF(text->viewport()->geometry().right() + kGap / 2, 2 * kFrame, kPicture, kPicture),
            colour);
}

}  // namespace stelvan::form
