// The toolkit's own style with frames and check boxes drawn on whole pixels: at 125 % or 150 % it
// would lose some edges of a frame between two pixels and blur the others.
#pragma once

#include <QProxyStyle>

namespace stelvan::form {

class CrispStyle : public QProxyStyle {
    Q_OBJECT
public:
    /// Takes the style over; null: the one that the desktop asks for. One of another make than the
    /// toolkit's is left to draw everything itself.
    explicit CrispStyle(QStyle* base = nullptr);

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option,
                                  const QWidget* widget) const override;

private:
    bool ours_;
};

}  // namespace stelvan::form
