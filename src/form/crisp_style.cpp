#include "form/crisp_style.h"

#include <QAbstractScrollArea>
#include <QPainter>
#include <QStyleOption>
#include <algorithm>
#include <cmath>

#include "form/mixed.h"

namespace stelvan::form {
namespace {

constexpr int kFrameWidth = 2;  // a line, and as much of the ground within it

/// A rectangle on whole pixels of the device, and the size of one such pixel.
struct Snapped {
    QRectF rect;
    double pixel = 1;
};

Snapped snapped(const QRectF& rect, const QPainter& painter) {
    const QTransform toDevice = painter.deviceTransform();
    const QRectF device = toDevice.mapRect(rect);
    const QPointF first(std::round(device.left()), std::round(device.top()));
    const QPointF last(std::round(device.right()), std::round(device.bottom()));
    return {toDevice.inverted().mapRect(QRectF(first, last)), 1 / toDevice.m11()};
}

/// Four lines, each as many whole pixels wide as comes next to one at scale 1.
void drawEdges(QPainter& painter, const Snapped& at, const QColor& colour) {
    const double line = std::max(1.0, std::floor(1 / at.pixel)) * at.pixel;
    const QRectF& r = at.rect;
    painter.fillRect(QRectF(r.left(), r.top(), r.width(), line), colour);
    painter.fillRect(QRectF(r.left(), r.bottom() - line, r.width(), line), colour);
    painter.fillRect(QRectF(r.left(), r.top(), line, r.height()), colour);
    painter.fillRect(QRectF(r.right() - line, r.top(), line, r.height()), colour);
}

/// Between text and ground.
QColor edgeColour(const QPalette& palette, QPalette::ColorGroup group, double share) {
    return mixed(palette.color(group, QPalette::WindowText), palette.color(group, QPalette::Window),
                 share);
}

void drawFrame(const QStyleOption& option, QPainter& painter) {
    constexpr double kShare = 0.28;
    const bool focused = (option.state & QStyle::State_HasFocus) != 0;
    const QColor colour = focused ? option.palette.color(QPalette::Active, QPalette::Highlight)
                                  : edgeColour(option.palette, QPalette::Active, kShare);
    painter.fillRect(option.rect, option.palette.brush(QPalette::Base));
    drawEdges(painter, snapped(option.rect, painter), colour);
}

void drawCheckBox(const QStyleOption& option, QPainter& painter) {
    constexpr double kShare = 0.7;
    const bool enabled = (option.state & QStyle::State_Enabled) != 0;
    const auto group = enabled ? QPalette::Active : QPalette::Disabled;
    const int side = std::min(option.rect.width(), option.rect.height());
    QRectF square(0, 0, side, side);
    square.moveCenter(QRectF(option.rect).center());
    const Snapped at = snapped(square, painter);
    painter.fillRect(at.rect, option.palette.brush(group, QPalette::Base));
    drawEdges(painter, at, edgeColour(option.palette, group, kShare));
    if ((option.state & QStyle::State_On) == 0) return;
    const QRectF& r = at.rect;
    const double unit = r.width() / 13;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(option.palette.color(group, QPalette::Text), 1.8 * unit, Qt::SolidLine,
                        Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(
        QPolygonF({r.topLeft() + QPointF(3.4, 6.8) * unit, r.topLeft() + QPointF(5.6, 9.2) * unit,
                   r.topLeft() + QPointF(9.8, 3.8) * unit}));
}

}  // namespace

CrispStyle::CrispStyle(QStyle* base)
    : QProxyStyle(base),
      ours_(baseStyle()->name().compare(QLatin1String("fusion"), Qt::CaseInsensitive) == 0) {}

int CrispStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                            const QWidget* widget) const {
    if (ours_ && metric == PM_DefaultFrameWidth &&
        qobject_cast<const QAbstractScrollArea*>(widget) != nullptr)
        return kFrameWidth;
    return QProxyStyle::pixelMetric(metric, option, widget);
}

void CrispStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const {
    const bool frame =
        element == PE_Frame && qobject_cast<const QAbstractScrollArea*>(widget) != nullptr;
    const bool partly = (option->state & State_NoChange) != 0;
    const bool check = element == PE_IndicatorCheckBox && !partly;
    if (!ours_ || (!frame && !check))
        return QProxyStyle::drawPrimitive(element, option, painter, widget);
    painter->save();
    if (frame) {
        drawFrame(*option, *painter);
    } else {
        drawCheckBox(*option, *painter);
    }
    painter->restore();
}

}  // namespace stelvan::form
