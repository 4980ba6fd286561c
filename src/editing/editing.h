// What editing offers to the program, made from the browser below it.
#pragma once

#include "editing/control_access.h"
#include "editing/edit_commands.h"
#include "editing/focus_chain.h"
#include "editing/safety_copy.h"
#include "editing/save_record.h"
#include "editing/undo_last.h"

namespace stelvan::editing {

struct Editing {
    /// Both must outlive the object; `shell` holds the controls.
    Editing(QWidget& shell, browser::Browser& below)
        : access(below.window),
          copy(below.window),
          undo(below, copy),
          commands(below, access, copy, undo),
          save(below, access, copy, undo),
          focusChain(shell, below.window) {}

    ControlAccess access;
    SafetyCopy copy;
    UndoLast undo;
    EditCommands commands;
    SaveRecord save;
    FocusChain focusChain;
};

}  // namespace stelvan::editing
