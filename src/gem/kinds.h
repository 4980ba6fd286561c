// The facts of every field, one row each: its control, its column, how it is shown, stored, opened,
// judged and reached by key.
//
// The rows of a kind stand in the order in which its fields are shown. The other orders differ from
// it and from one another, on purpose, and are numbers in the row. A new column is one row here,
// its control's name in controls.h, and one line in the form's layout.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "gem/categories.h"
#include "gem/controls.h"

namespace stelvan::gem {

/// What a stored text becomes on the screen. Blanks and letter case around "NULL" do not matter.
enum class Shown : std::uint8_t {
    AsStored,
    BlankForNull,        // "NULL" is no value; "0" is one
    BlankForNullOrZero,  // so is "0" here
    LimitPair            // minimum and maximum are blank when neither says more than "NULL" or "0"
};

/// What the text of a field becomes in its column; "blank" is empty after trimming.
enum class Stored : std::uint8_t {
    AsTyped,        // whatever stands there
    Flag,           // 0 or 1
    Trimmed,        // identifiers, names, groups: their checks do not see outer blanks
    TrimmedOrNull,  // the text NULL where blank
    TypedOrNull,
    TrimmedOrZero,    // the text 0 where blank
    ByFormat,         // blank: NULL for texts, booleans and lists, 0 for numbers
    DefaultByFormat,  // the same; a boolean in upper case
    BySetting         // as its protocol setting says
};

enum class Access : std::uint8_t {
    Follows,       // open while adding or editing, closed while browsing
    FollowsWhole,  // the same, and disabled while closed
    ById,          // as Follows while adding; an existing record keeps its identifier
    Closed,        // always closed
    ClosedWhole,   // always closed, and disabled
    ClosedAsIs,    // always closed, its colour left as it is
    CheckBox       // as FollowsWhole, with the colour of a locked check box while closed
};

/// Which check judges the field when it is left; None has no exception marker either.
enum class Check : std::uint8_t {
    None,
    AlwaysValid,
    Id,
    Name,
    Group,
    Text,
    Format,
    Minimum,
    Maximum,
    Content,  // value and default value
    EventId,  // of an alarm's set or clear event
    EventName,
    Setting
};

/// 1 for the first; 0 where the field has no place.
struct Places {
    std::int8_t verified = 0;  // in the list of exceptions
    std::int8_t judged = 0;    // among the checks of a save
    std::int8_t written = 0;   // among the columns of a save
};

/// Where Tab and Enter lead, and with Shift. The neighbour named last takes the place of
/// cmbVarFormat while that is disabled.
struct Neighbours {
    Control previous = Control::None;
    Control next = Control::None;
    Control insteadOfFormat = Control::None;
};

struct FieldFacts {
    Control control;
    std::string_view column;  // empty: the file has none, and the field is always blank
    Access standard;          // with the records that come with the standard
    Access custom;            // with the equipment's own
    Shown shown;
    Stored stored;
    Check check;
    Places at;
    std::string_view caption;  // in the list of exceptions
    Neighbours focus;
    std::int16_t length = 0;  // how much may be typed; 0: any length
    // Under which names its handlers report where that is not their own: readers of reports know
    // them by these.
    std::string_view lostFocusName = {};
    std::string_view changeName = {};
};

/// The fields of a kind, in the order in which they are shown; none for Kind::None.
[[nodiscard]] std::span<const FieldFacts> fieldsOf(Kind kind);
[[nodiscard]] std::span<const FieldFacts> fieldsOf(std::int16_t category);

/// Those that have a place in one of the other orders, in that order.
[[nodiscard]] std::vector<const FieldFacts*> inOrder(Kind kind, std::int8_t Places::*order);

/// The facts of one field; std::logic_error for a control that is none.
[[nodiscard]] const FieldFacts& factsOf(Control field);

/// The first field of a kind with this check, Control::None where it has none.
[[nodiscard]] Control fieldWith(Kind kind, Check check);

/// "txtAlmClrCEID_lostfocus", "txtVarGroup_Change": what the handlers of a field report under.
[[nodiscard]] std::string lostFocusNameOf(const FieldFacts& field);
[[nodiscard]] std::string changeNameOf(const FieldFacts& field);

/// How a category's records open a field.
[[nodiscard]] Access accessIn(std::int16_t category, const FieldFacts& field);

/// Whether the user can ever change the field in this category.
[[nodiscard]] bool mayChange(std::int16_t category, const FieldFacts& field);

/// What stands beside the fields: the selected list, and the procedure that verifies a record.
struct KindFacts {
    Control list;             // the links or children that the record owns; None without
    std::string_view verify;  // lVerifyVar and its like
    std::string_view table;   // of the equipment's own records; where new identifiers are looked up
    Control first;            // takes the focus when one of the equipment's own is edited or added
    Control firstOfStandard;  // when one of the standard's is edited
};
[[nodiscard]] const KindFacts& factsOf(Kind kind);

}  // namespace stelvan::gem
