// The window's state: little, and shared by all subsystems. What can be asked of the controls or of
// the record set is asked, not stored here.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "db/current_records.h"
#include "gem/categories.h"

namespace stelvan::form {

/// Transitions: start-up -> Browsing; Browsing -> Editing by "&Edit"; Browsing -> Adding by "&Add
/// New"; Adding or Editing -> Browsing by "&Cancel" or a successful "&Save". 3 is not used.
enum class EditMode : std::int16_t { Adding = 1, Editing = 2, Browsing = 4 };

struct MainState {
    std::string databasePath;  // empty until a database was chosen
    std::int16_t category = gem::NO_CATEGORY;
    db::CurrentRecords current;
    EditMode editMode = EditMode::Browsing;

    // For the return from adding or editing.
    std::int32_t savedPosition = 0;
    std::optional<db::Bookmark> savedBookmark;

    /// A save met a record that another program had changed: it is read anew before it is shown
    /// again.
    bool recordIsStale = false;

    /// The name of the record being edited, as it was loaded: a record keeps its own name.
    std::string loadedName;

    /// The display of the record broke off (at a Null, say): the fields mix two records.
    bool displayBroken = false;

    /// While false no field check runs (cancelling, after a save has succeeded, closing).
    bool checksEnabled = true;

    [[nodiscard]] bool editing() const { return editMode != EditMode::Browsing; }
};

}  // namespace stelvan::form
