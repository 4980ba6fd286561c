// Which buttons and inputs may be used while browsing, adding and editing, and how they are
// coloured.
//
// The facts stand in access_rules.h; these procedures run over them. All references must outlive
// the object.
#pragma once

#include <QHash>
#include <cstdint>
#include <string_view>

#include "base/error_info.h"
#include "editing/access_rules.h"
#include "form/frames.h"
#include "form/main_state.h"
#include "links/report_variables.h"

namespace stelvan::editing {

class ControlAccess {
public:
    ControlAccess(const form::MainForm& form, form::MainState& state, base::ErrorInfo& errors,
                  links::ReportVariables& reportVariables);

    /// Buttons, menu entry and tree for browsing (false) or for adding and editing (true).
    void lSetEditMode(std::int16_t category, bool editing);
    /// Inputs of a category: closed (true) or open as its table says (false).
    void lSetCtrlAccess(std::int16_t category, bool locked);
    /// The marker "0" for every checked input of the current category.
    void lInitCtrlForEdit();
    /// Blanks the inputs of a category to which records can be added.
    void lClearInput(std::int16_t category);

    /// Puts the focus where browsing goes on: "&Edit", or the tree while that is disabled.
    void focusBrowsing();

private:
    void browse(std::int16_t category);
    [[nodiscard]] bool hasRecords() const;
    [[nodiscard]] bool canEditGem(std::int16_t category) const;
    void setInput(form::Field& field, Access access, bool locked);
    [[nodiscard]] form::Field& field(std::string_view name) const;
    [[nodiscard]] form::ListView& list(std::string_view name) const;

    const form::MainForm& form_;
    form::MainState& state_;
    base::ErrorInfo& errors_;
    links::ReportVariables& reportVariables_;
    QHash<QString, form::Field*> fields_;
};

}  // namespace stelvan::editing
