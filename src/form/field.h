// One input of a property frame: a line edit, a multi-line edit, a combo box or a check box, with
// what the rules above ask of it: text, locked, enabled, colour class and exception marker.
//
// The widget belongs to its frame (Qt parent); the Field is a child object of the widget. Setting
// text or state from the program emits none of the signals: they tell what the user did.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include "form/look.h"

class QAction;
class QWidget;

namespace stelvan::form {

class FaultMark;

class Field : public QObject {
    Q_OBJECT
public:
    enum class Kind { Line, Text, Combo, Check };

    /// Wraps a LineBox, TextBox, ComboBox or QCheckBox; `widget` has its objectName already.
    explicit Field(QWidget* widget);

    [[nodiscard]] QWidget* widget() const { return widget_; }
    [[nodiscard]] Kind kind() const { return kind_; }

    /// Check boxes: "0" or "1". Multi-line texts keep CR LF and other breaks where the user left
    /// them alone; breaks typed are CR LF.
    [[nodiscard]] QString text() const;
    /// A combo box that cannot be typed into shows a text that is none of its entries as its hint
    /// only; its own text is then empty.
    void setText(const QString& text);

    [[nodiscard]] bool checked() const;
    void setChecked(bool on);

    /// Locked: shows its text, takes the focus, can be copied from, cannot be typed into. A check
    /// box has no such state: locking it disables it.
    [[nodiscard]] bool isLocked() const;
    void setLocked(bool locked);
    [[nodiscard]] bool isEnabled() const;
    void setEnabled(bool enabled);
    /// Open for input: enabled and not locked.
    [[nodiscard]] bool isOpen() const { return isEnabled() && !isLocked(); }

    [[nodiscard]] Colour colour() const { return colour_; }
    void setColour(Colour colour);

    /// The exception marker, the widget's property "Tag": a catalogue code as text, "0" when valid.
    /// While the field is open, one that is not "0" shows as a mark with the catalogue's message
    /// (or the marker itself, where it is no code).
    [[nodiscard]] QString marker() const;
    void setMarker(const QString& code);
    [[nodiscard]] bool hasException() const { return marker() != QStringLiteral("0"); }
    /// Marks the field while it is closed, too: somebody was led to it for this reason. Empty: no
    /// longer. A fault of its own comes first.
    void pointOut(const QString& why);
    /// What the mark says; empty while there is none.
    [[nodiscard]] QString faultShown() const;

    /// Limits typing and pasting only.
    void setMaxLength(int characters);

    /// Combo boxes: the list, without touching the text.
    void setEntries(const QStringList& entries);
    [[nodiscard]] QStringList entries() const;

    /// Greyed text shown while there is none: a stored text that a combo box does not offer.
    [[nodiscard]] QString hint() const;

    /// What assistive tools say of it beside its name; a fault comes before it.
    void setDescription(const QString& text);

    /// Single-line: while it is open, F4, Alt+Down and a button in it ask for a list to choose
    /// from. `what` is the button's tool tip.
    void offerChoice(const QString& what);

    [[nodiscard]] bool isVisible() const;  // as its frame would show it
    void setVisible(bool visible);
    void setFocus();

    /// The user took the focus elsewhere; called by FocusWatch.
    void leave();

signals:
    /// The user changed the text (typing, choosing, checking).
    void changed();
    /// Combo boxes: the user chose an entry, or left the box after typing into it.
    void chosen();
    /// The user took the focus to another control of the window (see FocusWatch).
    void lostFocus();
    /// The user asked for the list that offerChoice() offers.
    void choiceWanted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void connectLine();
    void connectCombo();
    void applyLook();
    void applyMark();
    void noteUserChange();
    void cleanInsertedBlanks();
    void keepLimit();
    void setComboText(const QString& text);
    [[nodiscard]] QString multiLineText() const;
    void showMultiLine(const QString& text);

    QWidget* widget_;
    FaultMark* mark_;
    QAction* choice_ = nullptr;
    Kind kind_;
    Colour colour_ = Colour::WindowBackground;
    bool locked_ = false;
    bool programmatic_ = false;
    bool typedInto_ = false;  // since the last choice or the last leaving
    int maxLength_ = 0;
    QString pointedOut_;
    QString lastLine_;  // single-line, combo: the text before the change at hand
    QString original_;  // multi-line: the text as given
    QString shown_;     // multi-line: what the widget made of it
};

}  // namespace stelvan::form
