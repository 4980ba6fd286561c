// What the browser offers to the floors above, made from the link editors and settings below it.
#pragma once

#include "browser/category_tree.h"
#include "browser/change_notice.h"
#include "browser/find_box.h"
#include "browser/grid_actions.h"
#include "browser/grid_view.h"
#include "browser/history.h"
#include "browser/record_jump.h"
#include "browser/record_keys.h"
#include "browser/record_view.h"
#include "browser/used_in.h"

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
          tree(linksBelow, records, grid),
          jump(window, records, tree, index),
          history(jump),
          find(window, jump, index),
          usedIn(window, jump, index),
          notice(window),
          gridActions(window, records),
          keys(window, records, jump, find, index) {}

    /// Connects what helps to find and to get there; once, after the tree. What others hook to
    /// lLoadData runs reset() of the notice.
    void connectAids();
    /// Another database: nothing of the old one is found, gone back to or noticed.
    void forgetAids();

    form::Window& window;
    checks::Checks& checks;
    links::LinkEditors& links;
    settings::SettingInputs& settings;
    RecordView records;
    GridView grid;
    CategoryTree tree;
    ModelIndex index;
    RecordJump jump;
    History history;
    FindBox find;
    UsedIn usedIn;
    ChangeNotice notice;
    GridActions gridActions;
    RecordKeys keys;
};

}  // namespace stelvan::browser
