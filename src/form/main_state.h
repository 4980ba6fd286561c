// The window's state: little, and shared by all subsystems. What can be asked of the controls or of
// the record set is asked, not stored here.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "db/current_records.h"

namespace stelvan::form {

/// Category indexes; their names are the keys of the category table. Limit has fields but no
/// category.
enum Category : std::int16_t {
    NO_CATEGORY = 0,
    GEMEVT = 1,
    GEMVDV = 2,
    GEMSDV = 3,
    GEMVEC = 4,
    CSTALM = 5,
    CSTEVT = 6,
    CSTVDV = 7,
    CSTVSV = 8,
    CSTVEC = 9,
    GEMSTT = 10,
    CSTRPT = 11,
    LIMIT = 12
};

[[nodiscard]] constexpr bool isGemVariable(std::int16_t c) {
    return c >= GEMVDV && c <= GEMVEC;
}
[[nodiscard]] constexpr bool isCustomVariable(std::int16_t c) {
    return c >= CSTVDV && c <= CSTVEC;
}
[[nodiscard]] constexpr bool isVariable(std::int16_t c) {
    return isGemVariable(c) || isCustomVariable(c);
}

/// Transitions: start-up -> Browsing; Browsing -> Editing by "&Edit"; Browsing -> Adding by "&Add
/// New"; Adding or Editing -> Browsing by "&Cancel" or a successful "&Save". 3 is not used.
enum class EditMode : std::int16_t { Adding = 1, Editing = 2, Browsing = 4 };

struct MainState {
    std::string databasePath;  // empty until a database was chosen
    std::int16_t category = NO_CATEGORY;
    db::CurrentRecords current;
    EditMode editMode = EditMode::Browsing;

    // For the return from adding or editing.
    std::int32_t savedPosition = 0;
    std::optional<db::Bookmark> savedBookmark;

    /// A save met a record that another program had changed: it is read anew before it is shown
    /// again.
    bool recordIsStale = false;

    // Names of the record being edited, as loaded; one for each kind.
    std::string loadedVariableName;
    std::string loadedAlarmName;
    std::string loadedEventName;
    std::string loadedReportName;

    /// While false no field check runs (cancelling, after a save has succeeded, closing).
    bool checksEnabled = true;

    [[nodiscard]] bool editing() const { return editMode != EditMode::Browsing; }
};

}  // namespace stelvan::form
