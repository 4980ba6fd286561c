#include "form/look.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>
#include <algorithm>
#include <cmath>

#include "form/mixed.h"

namespace stelvan::form {
namespace {

constexpr int kSteps = 20;
constexpr int kLeastDifference = 20;     // of one of red, green and blue, of 255
constexpr double kMostContrast = 2.2;    // between the grounds of open and closed inputs
constexpr double kMostSaturation = 0.6;  // of a tool tip's ground: more is glaring
// Our own: the tint of open inputs, and colours that say something, on light and on dark windows.
constexpr QRgb kTintOnLight = 0xfffff3cf;
constexpr QRgb kTintOnDark = 0xff463f22;
constexpr QRgb kFaultOnLight = 0xffb3261e;
constexpr QRgb kFaultOnDark = 0xffff8f84;
constexpr QRgb kUnsavedOnLight = 0xff8a4b00;
constexpr QRgb kUnsavedOnDark = 0xffffc266;

double luminance(const QColor& colour) {
    const auto linear = [](double c) {
        return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

QColor farFrom(const QColor& ground) {
    return contrast(Qt::black, ground) > contrast(Qt::white, ground) ? Qt::black : Qt::white;
}

bool isDark(const QPalette& system) {
    return farFrom(system.color(QPalette::Active, QPalette::Base)) == QColor(Qt::white);
}

int differenceOf(const QColor& a, const QColor& b) {
    return std::max({std::abs(a.red() - b.red()), std::abs(a.green() - b.green()),
                     std::abs(a.blue() - b.blue())});
}

bool canBeToldApart(const QColor& open, const QColor& closed) {
    const bool glaring =
        contrast(open, closed) > kMostContrast || open.hsvSaturationF() > kMostSaturation;
    return !glaring && differenceOf(open, closed) >= kLeastDifference;
}

Ground groundOf(const QPalette& system, Colour colour) {
    switch (colour) {
        case Colour::ToolTipBackground:
            return openGround(system);
        case Colour::ButtonFace:
            return {system.brush(QPalette::Active, QPalette::Button),
                    system.brush(QPalette::Active, QPalette::ButtonText)};
        case Colour::WindowBackground:
            break;
    }
    return {system.brush(QPalette::Active, QPalette::Base),
            system.brush(QPalette::Active, QPalette::Text)};
}

/// Fainter than an open text, yet still to be read: a closed format or flag is part of the record.
QColor greyed(const QPalette& system) {
    constexpr double kShare = 0.6;
    const QColor faint = mixed(system.color(QPalette::Active, QPalette::Text),
                               system.color(QPalette::Active, QPalette::Base), kShare);
    return readable(faint, system.color(QPalette::Disabled, QPalette::Window));
}

/// A greyed text may stand on any of these grounds; it is made to read on all of them.
QPalette withReadableGreys(const QPalette& system) {
    QPalette palette = system;
    const auto mend = [&palette](QPalette::ColorGroup group, QPalette::ColorRole role) {
        QColor text = palette.color(group, role);
        for (const auto ground : {QPalette::Base, QPalette::Window, QPalette::Button})
            text = readable(text, palette.color(group, ground));
        if (text != palette.color(group, role)) palette.setColor(group, role, text);
    };
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        mend(QPalette::Disabled, role);
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        mend(group, QPalette::PlaceholderText);
    const QColor highlight = palette.color(QPalette::Disabled, QPalette::Highlight);
    palette.setColor(
        QPalette::Disabled, QPalette::HighlightedText,
        readable(palette.color(QPalette::Disabled, QPalette::HighlightedText), highlight));
    return palette;
}

/// Mends the application's palette now and whenever another one is chosen.
class GreysKeeper : public QObject {
public:
    explicit GreysKeeper(QObject* application) : QObject(application) {
        application->installEventFilter(this);
        mend();
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == parent() && event->type() == QEvent::ApplicationPaletteChange) mend();
        return QObject::eventFilter(watched, event);
    }

private:
    static void mend() {
        const QPalette now = QApplication::palette();
        const QPalette mended = withReadableGreys(now);
        if (mended != now) QApplication::setPalette(mended);
    }
};

}  // namespace

double contrast(const QColor& text, const QColor& ground) {
    const double a = luminance(text);
    const double b = luminance(ground);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

QColor readable(const QColor& text, const QColor& ground) {
    // A ground that shines through a half-transparent text is part of its colour.
    const QColor opaque = mixed(text, ground, text.alphaF());
    for (int step = 0; step < kSteps; ++step) {
        const QColor tried = mixed(farFrom(ground), opaque, static_cast<double>(step) / kSteps);
        if (contrast(tried, ground) >= kReadable) return step == 0 ? opaque : tried;
    }
    return farFrom(ground);
}

Ground openGround(const QPalette& system) {
    const QColor closed = system.color(QPalette::Active, QPalette::Base);
    const QColor tip = system.color(QPalette::Active, QPalette::ToolTipBase);
    const QColor tipText = system.color(QPalette::Active, QPalette::ToolTipText);
    if (canBeToldApart(tip, closed) && contrast(tipText, tip) >= kReadable)
        return {system.brush(QPalette::Active, QPalette::ToolTipBase),
                system.brush(QPalette::Active, QPalette::ToolTipText)};
    const QColor tint(isDark(system) ? kTintOnDark : kTintOnLight);
    return {tint, readable(system.color(QPalette::Active, QPalette::Text), tint)};
}

QColor faultColour(const QPalette& system) {
    return QColor(isDark(system) ? kFaultOnDark : kFaultOnLight);
}

QColor unsavedColour(const QPalette& system) {
    return readable(QColor(isDark(system) ? kUnsavedOnDark : kUnsavedOnLight),
                    system.color(QPalette::Active, QPalette::Window));
}

void applyColour(QWidget& widget, Colour colour, GroundRoles roles) {
    const QPalette system = QGuiApplication::palette();
    const Ground ground = groundOf(system, colour);
    QPalette mine = widget.palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        mine.setBrush(group, roles.ground, ground.ground);
        mine.setBrush(group, roles.text, ground.text);
        mine.setColor(
            group, QPalette::PlaceholderText,
            readable(system.color(group, QPalette::PlaceholderText), ground.ground.color()));
    }
    mine.setBrush(QPalette::Disabled, roles.ground,
                  system.brush(QPalette::Disabled, QPalette::Window));
    mine.setColor(QPalette::Disabled, roles.text, greyed(system));
    if (mine != widget.palette()) widget.setPalette(mine);
}

void keepGreyedReadable() {
    static const auto kName = QStringLiteral("keeperOfGreys");
    if (qApp->findChild<QObject*>(kName, Qt::FindDirectChildrenOnly) != nullptr) return;
    (new GreysKeeper(qApp))->setObjectName(kName);
}

}  // namespace stelvan::form
