// The colours of inputs and lists, by meaning; they come from the palette, so a dark theme works.
// Where a palette's own colours could not be told apart or read, our own take their place.
#pragma once

#include <QColor>
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

/// How well a text reads on a ground, 1 to 21; 4.5 is the least for ordinary text.
inline constexpr double kReadable = 4.5;
[[nodiscard]] double contrast(const QColor& text, const QColor& ground);

/// `text`, made darker or lighter until it reads on `ground`.
[[nodiscard]] QColor readable(const QColor& text, const QColor& ground);

/// The ground of inputs that are open, and its text: the tool tip's, unless that cannot be told
/// from the ground of closed ones or stands out glaringly.
struct Ground {
    QBrush ground;
    QBrush text;
};
[[nodiscard]] Ground openGround(const QPalette& system);

/// What is at fault, and what is not saved yet; both read on windows and inputs.
[[nodiscard]] QColor faultColour(const QPalette& system);
[[nodiscard]] QColor unsavedColour(const QPalette& system);

/// From now on greyed texts (disabled, or the hint of an empty field) read in every window of the
/// program, whatever theme is chosen meanwhile. Needs the application; more calls change nothing.
void keepGreyedReadable();

}  // namespace stelvan::form
