#include "form/pictures.h"

#include <QPainter>
#include <functional>

#include "form/look.h"

namespace stelvan::form {
namespace {

constexpr int kLargestScale = 4;

QIcon drawn(const std::function<void(QPainter& painter, const QRectF& square)>& draw) {
    QIcon icon;
    for (int scale = 1; scale <= kLargestScale; ++scale) {
        QPixmap pixmap(kPictureSize * scale, kPictureSize * scale);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        draw(painter, pixmap.rect());
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

}  // namespace

void drawFault(QPainter& painter, const QRectF& square, const QColor& colour) {
    const bool whiteReads = contrast(Qt::white, colour) > contrast(Qt::black, colour);
    const double unit = square.width() / kPictureSize;
    const QPointF middle = square.center();
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(square.adjusted(unit, unit, -unit, -unit));
    painter.setBrush(whiteReads ? Qt::white : Qt::black);
    painter.drawRect(QRectF(middle.x() - unit, middle.y() - 4.5 * unit, 2 * unit, 5.5 * unit));
    painter.drawRect(QRectF(middle.x() - unit, middle.y() + 2.5 * unit, 2 * unit, 2 * unit));
}

QIcon faultIcon(const QColor& colour) {
    return drawn(
        [&colour](QPainter& painter, const QRectF& square) { drawFault(painter, square, colour); });
}

QIcon downArrow(const QColor& colour) {
    return drawn([&colour](QPainter& painter, const QRectF& square) {
        const double unit = square.width() / kPictureSize;
        painter.setPen(QPen(colour, 1.6 * unit, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolyline(QPolygonF(
            {QPointF(4.5 * unit, 6.5 * unit), {8 * unit, 10 * unit}, {11.5 * unit, 6.5 * unit}}));
    });
}

}  // namespace stelvan::form
