// The tab strip and what it switches: the property view of one record, and the grid of all of them.
//
// The grid has its own selection and shows stored rows only; it never moves the record set's
// cursor.
#pragma once

#include "form/window.h"

namespace stelvan::browser {

/// Tabs by number, as tspData counts them.
inline constexpr int kPropertiesTab = 1;
inline constexpr int kViewAllTab = 2;

class GridView {
public:
    /// `window` must outlive the object.
    explicit GridView(form::Window& window) : window_(window) {}

    /// Shows the view of the selected tab for the category on screen.
    void tspData_Click();

    /// Back to "Properties" as if nothing had been viewed: for a change of database and a failed
    /// load.
    void reset();

private:
    void showProperties();
    void showGrid();
    void attach();
    void detach();
    void shapeVariableColumns();
    /// The current record is the selected row, and in sight.
    void selectShown();

    form::Window& window_;
};

}  // namespace stelvan::browser
