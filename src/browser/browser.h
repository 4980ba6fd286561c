// What the browser offers to the floors above, made from the link editors and settings below it.
#pragma once

#include "browser/category_tree.h"
#include "browser/grid_view.h"
#include "browser/record_view.h"

namespace stelvan::browser {

struct Browser {
    /// Both must outlive the object.
    Browser(links::LinkEditors& linksBelow, settings::SettingInputs& settingsBelow)
        : window(linksBelow.checks.window),
          checks(linksBelow.checks),
          links(linksBelow),
          settings(settingsBelow),
          records(linksBelow, settingsBelow),
          grid(window),
          tree(linksBelow, records, grid) {}

    form::Window& window;
    checks::Checks& checks;
    links::LinkEditors& links;
    settings::SettingInputs& settings;
    RecordView records;
    GridView grid;
    CategoryTree tree;
};

}  // namespace stelvan::browser
