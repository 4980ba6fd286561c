// The colours of inputs and lists, by meaning; they come from the palette, so a dark theme works.
#pragma once

#include <QPalette>

class QWidget;

namespace stelvan::form {

/// System colours by number: window background (closed for input), tool-tip background (open),
/// button face (a locked check box).
enum class Colour { WindowBackground = 5, ButtonFace = 15, ToolTipBackground = 24 };

/// Which roles of its palette a kind of widget draws its ground and its text with.
struct GroundRoles {
    QPalette::ColorRole ground = QPalette::Base;
    QPalette::ColorRole text = QPalette::Text;
};

/// Gives the widget the ground and the matching text colour; greyed while it is disabled. Does
/// nothing when it has them, so that it may be called from a palette-change handler.
void applyColour(QWidget& widget, Colour colour, GroundRoles roles);

}  // namespace stelvan::form
