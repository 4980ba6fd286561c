// Which buttons and inputs may be used while browsing, adding and editing, and how they are
// coloured.
//
// The facts stand in gem/; these procedures run over them.
#pragma once

#include <cstdint>

#include "form/window.h"
#include "gem/kinds.h"

namespace stelvan::editing {

class ControlAccess {
public:
    /// `window` must outlive the object.
    explicit ControlAccess(form::Window& window) : window_(window) {}

    /// Buttons, menu entry and tree for browsing (false) or for adding and editing (true).
    void lSetEditMode(std::int16_t category, bool editing);
    /// Inputs of a category: closed (true) or open as its facts say (false).
    void lSetCtrlAccess(std::int16_t category, bool locked);
    /// The marker "0" for every checked input of the current category.
    void lInitCtrlForEdit();
    /// Blanks the inputs of a category to which records can be added.
    void lClearInput(std::int16_t category);

    /// The status bar names the category again, whatever it said while the record was edited.
    void showCategory();
    /// Puts the focus where browsing goes on: "&Edit", or the tree while that is disabled.
    void focusBrowsing();

private:
    void setInput(form::Field& field, gem::Access access, bool locked);

    form::Window& window_;
};

}  // namespace stelvan::editing
