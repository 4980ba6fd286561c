// Draws the program's icon in the sizes that desktops ask for, from the one SVG.
//
// Usage: make_icons SVG FOLDER; writes FOLDER/16x16/apps/stelvan.png and so on.
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>

namespace {

constexpr int kSizes[] = {16, 22, 24, 32, 48, 64, 128, 256, 512};

bool draw(QSvgRenderer& icon, int size, const QString& root) {
    const QString folder = QStringLiteral("%1/%2x%2/apps").arg(root).arg(size);
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    icon.render(&painter);
    painter.end();
    return QDir().mkpath(folder) && image.save(folder + QStringLiteral("/stelvan.png"));
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    if (argc != 3) {
        std::fputs("usage: make_icons SVG FOLDER\n", stderr);
        return 2;
    }
    QSvgRenderer icon(QString::fromLocal8Bit(argv[1]));
    for (const int size : kSizes) {
        if (icon.isValid() && draw(icon, size, QString::fromLocal8Bit(argv[2]))) continue;
        std::fprintf(stderr, "make_icons: %s was not drawn at %d pixels\n", argv[1], size);
        return 1;
    }
    return 0;
}
