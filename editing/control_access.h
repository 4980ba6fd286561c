// Which buttons and inputs may be used while browsing, adding and editing, and how they are coloured.
//
// The facts stand in access_rules.h; these procedures run over them. All references must outlive the object.
#pragma once

#include <cstdint>

#include "app/form/frames.h"
#include "app/form/main_state.h"
#include "links/report_variables.h"
#include "validation/reporting/error_info.h"

namespace stelvan::editing {

class ControlAccess {
public:
    ControlAccess(const form::MainForm& form, form::MainState& state, ErrorInfo& errors,
                  links::ReportVariables& reportVariables);

    /// Buttons, menu entry and tree for browsing (false) or for adding and editing (true).
    void lSetEditMode(std::int16_t category, bool editing);
    /// Inputs of a category: closed (true) or open as its table says (false).
    void lSetCtrlAccess(std::int16_t category, bool locked);
    /// The marker "0" for every checked input of the current category.
    void lInitCtrlForEdit();
    /// Blanks the inputs of a category to which records can be added.
    void lClearInput(std::int16_t category);

private:
    void setButtons(bool inEdit, bool canAdd, bool canEdit, bool canDelete);
    void browse(std::int16_t category);
    [[nodiscard]] bool editable(std::int16_t category) const;

    const form::MainForm& form_;
    form::MainState& state_;
    ErrorInfo& errors_;
    links::ReportVariables& reportVariables_;
};

}  // namespace stelvan::editing
