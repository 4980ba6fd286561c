// Who may type where: for each kind of category its inputs with their access, the list beside them,
// and which of them an edit resets or a cancelled addition blanks. The lists differ on purpose.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace stelvan::editing {

enum class Access {
    Follows,       // open while adding or editing, closed while browsing
    FollowsWhole,  // the same, and disabled while closed
    ById,          // as Follows while adding; an existing record keeps its identifier
    Closed,        // always closed
    ClosedWhole,   // always closed, and disabled
    ClosedAsIs,    // always closed, its colour left as it is
    CheckBox       // as FollowsWhole, with the colour of a locked check box while closed
};

struct InputAccess {
    std::string_view field;
    Access access;
};

struct CategoryRules {
    std::span<const InputAccess> inputs;
    std::string_view list;  // the selected list on the frame, none where empty
    bool listFollows = false;
    std::span<const std::string_view> marked;   // get the marker "0" when an edit begins
    std::span<const std::string_view> blanked;  // are emptied when an addition is given up
};

/// Empty rules for a category without inputs.
[[nodiscard]] const CategoryRules& rulesOf(std::int16_t category);

}  // namespace stelvan::editing
