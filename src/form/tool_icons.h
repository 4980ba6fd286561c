// The pictures of the tool bar: drawings whose two colours come from the palette, so that they are
// seen on a light and on a dark ground.
#pragma once

#include <QIcon>
#include <QPalette>
#include <QString>

namespace stelvan::form {

/// The drawing ":/icons/tools/NAME.svg" in the colours of `palette`; a null icon where there is no
/// such drawing or nothing that can draw it.
[[nodiscard]] QIcon toolIcon(const QString& name, const QPalette& palette);

}  // namespace stelvan::form
