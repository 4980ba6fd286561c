// The two-list editors: what the buttons between a pool and a selected list do.
//
// Only the lists on the screen change; the row order of the selected list is what a save writes.
// All references must outlive the object.
#pragma once

#include <QObject>

#include "checks/checks.h"

namespace stelvan::links {

class SelectionLists : public QObject {
    Q_OBJECT
public:
    /// `checks` must outlive the object.
    explicit SelectionLists(checks::Checks& checks);

    /// Connects buttons, double clicks in pools and Delete in selected lists; once.
    void connectControls();

    /// Adds the pool's selected row at the end of `selected`; in the custom variable categories the
    /// texts go one column to the right, behind the check box.
    void lSelectItem(form::ListView& selected, form::ListView& pool);
    void lDeselectItem(form::ListView& selected);
    /// Texts move, check marks stay where they are; the moved item stays the selected one.
    void lOrderUp(form::ListView& selected);
    void lOrderDown(form::ListView& selected);

    void cmdRptSelect_Click();
    void cmdRptDeselect_Click();
    void cmdRptOrderUp_Click();
    void cmdRptOrderDown_Click();
    void cmdVarSelect_Click();
    void cmdVarDeselect_Click();
    void cmdVarOrderUp_Click();
    void cmdVarOrderDown_Click();
    void cmdSelect_Click();
    void cmdDeselect_Click();
    void cmdOrderUp_Click();
    void cmdOrderDown_Click();

private:
    using Handler = void (SelectionLists::*)();
    struct EditorHandlers {
        Handler select;
        Handler deselect;
        Handler orderUp;
        Handler orderDown;
    };
    void connectEditor(const form::TwoListEditor& editor, const EditorHandlers& handlers);
    void moveBy(form::ListView& selected, int step);
    void verifyReport();

    form::Window& window_;
    checks::RecordChecks& recordChecks_;
};

}  // namespace stelvan::links
