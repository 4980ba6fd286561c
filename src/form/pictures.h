// Small pictures in a colour that the theme decides, drawn rather than kept in files.
#pragma once

#include <QIcon>

class QPainter;

namespace stelvan::form {

/// Pixels of the screen at scale 1.
inline constexpr int kPictureSize = 16;

/// A disc with an exclamation mark, as large as `square`.
void drawFault(QPainter& painter, const QRectF& square, const QColor& colour);
/// The same, crisp at every scale.
[[nodiscard]] QIcon faultIcon(const QColor& colour);

/// What opens a list below.
[[nodiscard]] QIcon downArrow(const QColor& colour);

}  // namespace stelvan::form
