#include "app/form/look.h"

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

}  // namespace

void applyColour(QWidget& widget, Colour colour, GroundRoles roles) {
    const QPalette system = QGuiApplication::palette();
    const GroundRoles source = sourceOf(colour);
    QPalette mine = widget.palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        mine.setBrush(group, roles.ground, system.brush(group, source.ground));
        mine.setBrush(group, roles.text, system.brush(group, source.text));
    }
    mine.setBrush(QPalette::Disabled, roles.ground, system.brush(QPalette::Disabled, QPalette::Window));
    mine.setBrush(QPalette::Disabled, roles.text, system.brush(QPalette::Disabled, QPalette::Text));
    if (mine != widget.palette()) widget.setPalette(mine);
}

}  // namespace stelvan::form
