// The keyboard's way through the property fields: Tab and Enter go on, with Shift they go back.
//
// For controls of the table these keys are used up here, so the toolkit's own order never steps in;
// controls without a row keep it.
#pragma once

#include <QHash>
#include <QObject>
#include <span>
#include <string_view>

#include "base/error_info.h"
#include "form/frames.h"

namespace stelvan::editing {

/// One control's neighbours.
struct FocusStep {
    std::string_view control;
    std::string_view previous;
    std::string_view next;
    std::string_view insteadOfFormat = {};  // the neighbour while cmbVarFormat is disabled
    std::string_view reportedAs = {};  // where a handler reports under another name than its own
};

[[nodiscard]] std::span<const FocusStep> focusTable();

class FocusChain : public QObject {
    Q_OBJECT
public:
    FocusChain(const form::MainForm& form, base::ErrorInfo& errors);

    /// Puts the key handlers on the controls of the table; once, when all controls stand in their
    /// window.
    void install();

    static constexpr int kTab = 9;
    static constexpr int kEnter = 13;
    static constexpr int kShift = 1;
    static constexpr int kControl = 2;
    static constexpr int kAlt = 4;

    /// Moves the focus for Tab or Enter; any other key or modifier does nothing. A target that is
    /// missing, disabled or hidden is left alone.
    void lSetFocus(int key, int shift, QWidget* previous, QWidget* next);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Neighbours {
        const FocusStep* step;
        QWidget* previous;
        QWidget* next;
        QWidget* insteadOfFormat;
    };
    /// The neighbour, or the other one where that is a disabled cmbVarFormat.
    [[nodiscard]] QWidget* reachable(QWidget* neighbour, const Neighbours& around) const;
    void keyDown(const Neighbours& around, int key, int shift);

    const form::MainForm& form_;
    base::ErrorInfo& errors_;
    QHash<QObject*, Neighbours> neighbours_;
};

}  // namespace stelvan::editing
