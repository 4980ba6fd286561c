// A colour between two others.
#pragma once

#include <QColor>
#include <cmath>

namespace stelvan::form {

/// `share` (0 to 1) of `a`, the rest of `b`; opaque.
[[nodiscard]] inline QColor mixed(const QColor& a, const QColor& b, double share) {
    const auto mix = [share](int from, int to) {
        return static_cast<int>(std::lround(share * from + (1 - share) * to));
    };
    return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

}  // namespace stelvan::form
