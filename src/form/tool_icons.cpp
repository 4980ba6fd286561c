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

QByteArray drawingOf(const QString& name, const QPalette& palette) {
    QFile file(QStringLiteral(":/icons/tools/%1.svg").arg(name));
    if (!file.open(QIODevice::ReadOnly)) return {};
    const bool dark = palette.color(QPalette::Button).lightness() < 128;
    QByteArray drawing = file.readAll();
    drawing.replace(kInk, palette.color(QPalette::ButtonText).name().toLatin1());
    drawing.replace(kTone, (dark ? kToneOnDark : kToneOnLight).name().toLatin1());
    return drawing;
}

}  // namespace

QIcon toolIcon(const QString& name, const QPalette& palette) {
    QByteArray drawing = drawingOf(name, palette);
    QIcon icon;
    for (const int scale : {1, 2}) {
        QBuffer buffer(&drawing);
        QImageReader reader(&buffer, "svg");
        reader.setScaledSize(QSize(kSize, kSize) * scale);
        QPixmap picture = QPixmap::fromImageReader(&reader);
        if (picture.isNull()) continue;
        picture.setDevicePixelRatio(scale);
        icon.addPixmap(picture);
    }
    return icon;
}

}  // namespace stelvan::form
