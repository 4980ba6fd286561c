// What editing offers to the program, made from the browser below it.
#pragma once

#include "editing/control_access.h"
#include "editing/edit_commands.h"
#include "editing/focus_chain.h"
#include "editing/save_record.h"

namespace stelvan::editing {

struct Editing {
    /// Both must outlive the object; `shell` holds the controls.
    Editing(QWidget& shell, browser::Browser& below)
        : access(below.window),
          commands(below, access),
          save(below, access),
          focusChain(shell, below.window) {}

    ControlAccess access;
    EditCommands commands;
    SaveRecord save;
    FocusChain focusChain;
};

}  // namespace stelvan::editing
