#include "form/look.h"

#include <QGuiApplication>
#include <QWidget>

namespace stelvan::form {
namespace {

GroundRoles sourceOf(Colour colour) {
    switch (colour) {
        case Colour::ToolTipBackground:
            return {QPalette::ToolTipBase, QPalette::ToolTipText};
        case Colour::ButtonFace:
            return {QPalette::Button, QPalette::ButtonText};
        case Colour::WindowBackground:
            break;
    }
    return {QPalette::Base, QPalette::Text};
}

/// Fainter than an open text, yet still to be read: a closed format or flag is part of the record.
QColor greyed(const QPalette& system) {
    constexpr double kShare = 0.6;
    const QColor text = system.color(QPalette::Active, QPalette::Text);
    const QColor ground = system.color(QPalette::Active, QPalette::Base);
    const auto mix = [](int a, int b) { return static_cast<int>(kShare * a + (1 - kShare) * b); };
    return {mix(text.red(), ground.red()), mix(text.green(), ground.green()),
            mix(text.blue(), ground.blue())};
}

}  // namespace

void applyColour(QWidget& widget, Colour colour, GroundRoles roles) {
    const QPalette system = QGuiApplication::palette();
    const GroundRoles source = sourceOf(colour);
    QPalette mine = widget.palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        mine.setBrush(group, roles.ground, system.brush(group, source.ground));
        mine.setBrush(group, roles.text, system.brush(group, source.text));
    }
    mine.setBrush(QPalette::Disabled, roles.ground,
                  system.brush(QPalette::Disabled, QPalette::Window));
    mine.setColor(QPalette::Disabled, roles.text, greyed(system));
    if (mine != widget.palette()) widget.setPalette(mine);
}

}  // namespace stelvan::form
