// Everything behind the controls of frmMain, built from the bottom up, floor by floor.
#pragma once

#include "editing/editing.h"
#include "tools/tools.h"

namespace stelvan::app {

struct Subsystems {
    /// Both must outlive the object; `shell` holds the controls of `window`.
    Subsystems(QMainWindow& shell, form::Window& window)
        : checks(window),
          links(checks),
          settings(checks),
          browser(links, settings),
          editing(shell, browser),
          tools(shell, browser) {}

    /// Connects controls to handlers, and what the floors call upwards. Once.
    void connectAll();

    checks::Checks checks;
    links::LinkEditors links;
    settings::SettingInputs settings;
    browser::Browser browser;
    editing::Editing editing;
    tools::Tools tools;
};

}  // namespace stelvan::app
