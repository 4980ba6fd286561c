// Frames and check boxes at every scale: each edge there, and on whole pixels.
#include "form/crisp_style.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QPainter>
#include <QPlainTextEdit>
#include <QStyleFactory>
#include <QStyleOption>

namespace stelvan::form {
namespace {

/// What the style draws for a widget at a place between pixels, at a scale.
QImage drawn(QStyle::PrimitiveElement element, const QWidget& widget, double scale) {
    QImage image(QSize(200, 200), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(scale, scale);
    painter.translate(7, 5);
    QStyleOption option;
    option.initFrom(&widget);
    option.palette = QPalette(QColor("#efefef"));
    option.palette.setColor(QPalette::Base, Qt::white);
    option.rect = QRect(0, 0, 13, 13);
    option.state = QStyle::State_Enabled;
    CrispStyle style(QStyleFactory::create("Fusion"));
    style.drawPrimitive(element, &option, &painter, &widget);
    return image;
}

/// The colours met from left to right and from top to bottom through a point, white apart.
QList<QColor> coloursThrough(const QImage& image, QPoint at) {
    QList<QColor> met;
    const auto meet = [&](int x, int y) {
        const QColor colour = image.pixelColor(x, y);
        if (colour != QColor(Qt::white) && !met.contains(colour)) met << colour;
    };
    for (int i = 0; i < image.width(); ++i) {
        meet(i, at.y());
        meet(at.x(), i);
    }
    return met;
}

int linesAcross(const QImage& image, int y) {
    int lines = 0;
    bool inLine = false;
    for (int x = 0; x < image.width(); ++x) {
        const bool dark = image.pixelColor(x, y) != QColor(Qt::white);
        if (dark && !inLine) ++lines;
        inLine = dark;
    }
    return lines;
}

int linesDown(const QImage& image, int x) {
    return linesAcross(image.transformed(QTransform().rotate(90)), x);
}

TEST(CrispStyle, EveryEdgeIsThereInOneColourAtEveryScale) {
    const QPlainTextEdit text;
    const QCheckBox check;
    for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0}) {
        const QPoint middle(static_cast<int>((7 + 6.5) * scale),
                            static_cast<int>((5 + 6.5) * scale));
        for (const QImage& image : {drawn(QStyle::PE_Frame, text, scale),
                                    drawn(QStyle::PE_IndicatorCheckBox, check, scale)}) {
            EXPECT_EQ(linesAcross(image, middle.y()), 2) << scale;
            EXPECT_EQ(linesDown(image, middle.x()), 2) << scale;
            EXPECT_EQ(coloursThrough(image, middle).size(), 1) << scale;
        }
    }
}

TEST(CrispStyle, OnlyTheToolkitsOwnStyleIsDrawnOver) {
    const QPlainTextEdit text;
    const CrispStyle fusion(QStyleFactory::create("Fusion"));
    EXPECT_EQ(fusion.pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, &text), 2);
    QStyle* const windows = QStyleFactory::create("Windows");
    const int before = windows->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, &text);
    const CrispStyle other(windows);
    EXPECT_EQ(other.pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, &text), before);
}

}  // namespace
}  // namespace stelvan::form
