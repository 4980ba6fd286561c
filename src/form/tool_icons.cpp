#include "form/tool_icons.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>
#include <QPixmap>

namespace stelvan::form {
namespace {

constexpr int kSize = 20;
// What the drawings have in the places of their colours.
constexpr const char* kInk = "#ink";
constexpr const char* kTone = "#tone";
const QColor kToneOnLight(0x1f, 0x6f, 0xb5);
const QColor kToneOnDark(0x6c, 0xb6, 0xf0);

/// The drawing with its colours. Fusion and others only pale a picture that is disabled, which is
/// hardly seen on a dark ground, so it is drawn in the palette's own disabled colour.
QByteArray drawingOf(const QString& name, const QPalette& palette, QIcon::Mode mode) {
    QFile file(QStringLiteral(":/icons/tools/%1.svg").arg(name));
    if (!file.open(QIODevice::ReadOnly)) return {};
    const bool disabled = mode == QIcon::Disabled;
    const bool dark = palette.color(QPalette::Active, QPalette::Button).lightness() < 128;
    const QColor ink =
        palette.color(disabled ? QPalette::Disabled : QPalette::Active, QPalette::ButtonText);
    const QColor tone = disabled ? ink : dark ? kToneOnDark : kToneOnLight;
    QByteArray drawing = file.readAll();
    drawing.replace(kInk, ink.name().toLatin1());
    drawing.replace(kTone, tone.name().toLatin1());
    return drawing;
}

void addPictures(QIcon& icon, QByteArray drawing, QIcon::Mode mode) {
    for (const int scale : {1, 2}) {
        QBuffer buffer(&drawing);
        QImageReader reader(&buffer, "svg");
        reader.setScaledSize(QSize(kSize, kSize) * scale);
        QPixmap picture = QPixmap::fromImageReader(&reader);
        if (picture.isNull()) continue;
        picture.setDevicePixelRatio(scale);
        icon.addPixmap(picture, mode);
    }
}

}  // namespace

QIcon toolIcon(const QString& name, const QPalette& palette) {
    QIcon icon;
    for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Disabled})
        addPictures(icon, drawingOf(name, palette, mode), mode);
    return icon;
}

}  // namespace stelvan::form
