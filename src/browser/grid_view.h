// The tab strip and what it switches: the property view of one record, and the grid of all of them.
//
// The grid has its own selection and shows stored rows only; it never moves the record set's
// cursor.
#pragma once

#include <functional>

#include "base/error_info.h"
#include "db/operations.h"
#include "form/frames.h"
#include "form/main_state.h"

namespace stelvan::browser {

/// Tabs by number, as tspData counts them.
inline constexpr int kPropertiesTab = 1;
inline constexpr int kViewAllTab = 2;

class GridView {
public:
    /// All references must outlive the object.
    GridView(const form::MainForm& form, const form::MainState& state, base::ErrorInfo& errors,
             const db::DataSource& adoGEM);

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

    const form::MainForm& form_;
    const form::MainState& state_;
    base::ErrorInfo& errors_;
    const db::DataSource& adoGEM_;
};

}  // namespace stelvan::browser
