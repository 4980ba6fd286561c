// One input of a property frame: a line edit, a multi-line edit, a combo box or a check box, with what the
// rules above ask of it: text, locked, enabled, colour class and exception marker.
//
// The widget belongs to its frame (Qt parent); the Field is a child object of the widget. Setting text or
// state from the program emits none of the signals: they tell what the user did.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

class QWidget;
class QKeyEvent;
class QLabel;

namespace stelvan::form {

/// System colours by meaning: window background (closed for input), tool-tip background (open), button
/// face (a locked check box). They come from the palette, so a dark theme works.
enum class Colour { WindowBackground = 5, ButtonFace = 15, ToolTipBackground = 24 };

class Field : public QObject {
    Q_OBJECT
public:
    enum class Kind { Line, Text, Combo, Check };

    /// Wraps a QLineEdit, QPlainTextEdit, QComboBox or QCheckBox; `widget` has its objectName already.
    explicit Field(QWidget* widget);

    [[nodiscard]] QWidget* widget() const { return widget_; }
    [[nodiscard]] Kind kind() const { return kind_; }

    /// Check boxes: "0" or "1". Multi-line texts keep CR LF and other breaks of an unchanged text.
    [[nodiscard]] QString text() const;
    void setText(const QString& text);

    [[nodiscard]] bool checked() const;
    void setChecked(bool on);

    /// Locked: shows its text, takes the focus, can be copied from, cannot be typed into.
    [[nodiscard]] bool isLocked() const;
    void setLocked(bool locked);
    [[nodiscard]] bool isEnabled() const;
    void setEnabled(bool enabled);
    /// Open for input: enabled and not locked.
    [[nodiscard]] bool isOpen() const { return isEnabled() && !isLocked(); }

    [[nodiscard]] Colour colour() const { return colour_; }
    void setColour(Colour colour);

    /// The exception marker, the widget's property "Tag": a catalogue code as text, "0" when valid.
    [[nodiscard]] QString marker() const;
    void setMarker(const QString& code);
    [[nodiscard]] bool hasException() const { return marker() != QStringLiteral("0"); }

    /// Limits typing and pasting only.
    void setMaxLength(int characters);

    /// Combo boxes: the list, without touching the text.
    void setEntries(const QStringList& entries);
    [[nodiscard]] QStringList entries() const;

    void setFocus();

signals:
    /// The user changed the text (typing, choosing, checking).
    void changed();
    /// Combo boxes: the user chose an entry or finished typing one.
    void chosen();
    /// The user took the focus to another control of the window (see FocusWatch).
    void lostFocus();

private:
    void applyLook();
    void noteUserChange();

    QWidget* widget_;
    Kind kind_;
    Colour colour_ = Colour::WindowBackground;
    bool locked_ = false;
    bool programmatic_ = false;
    int maxLength_ = 0;
    QString original_;  // multi-line: the text as given, for writing an unchanged one back byte for byte
    QString shown_;     // multi-line: what the widget made of it
};

}  // namespace stelvan::form
