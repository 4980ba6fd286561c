// The keyboard's way through the property fields: Tab and Enter go on, with Shift they go back.
//
// Where the way leads to nothing that can take the focus, Tab is left to the toolkit; controls
// without a place on the way keep the toolkit's order.
#pragma once

#include <QHash>
#include <QObject>

#include "form/window.h"
#include "gem/focus_order.h"

namespace stelvan::editing {

class FocusChain : public QObject {
    Q_OBJECT
public:
    /// `shell` holds the controls of `window`; both must outlive the object.
    FocusChain(QWidget& shell, form::Window& window);

    /// Puts the key handlers on the controls of the table; once, when all controls stand in their
    /// window.
    void install();

    static constexpr int kTab = 9;
    static constexpr int kEnter = 13;
    static constexpr int kShift = 1;
    static constexpr int kControl = 2;
    static constexpr int kAlt = 4;

    /// Moves the focus for Tab or Enter; any other key or modifier does nothing. A target that is
    /// missing, disabled or hidden is left alone. True when the focus was moved.
    bool lSetFocus(int key, int shift, QWidget* previous, QWidget* next);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] QWidget* widgetOf(gem::Control control) const;
    bool keyDown(const gem::FocusStep& from, int key, int shift);

    QWidget& shell_;
    form::Window& window_;
    QHash<QObject*, const gem::FocusStep*> steps_;
};

}  // namespace stelvan::editing
