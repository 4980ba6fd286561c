// Which buttons of the navigator, and which ways to other records, are open: one answer for every
// moment.
#pragma once

#include <cstdint>
#include <string>

namespace stelvan::gem {

/// What the answer depends on.
struct Situation {
    std::int16_t category = 0;
    bool editing = false;  // or adding
    bool loaded = false;   // a record set is held
    std::int32_t count = 0;
    std::int32_t position = 0;  // 1-based; 0 when no record is shown
    std::string format = {};    // of the variable shown
    std::string reportId = {};  // of the report shown
};

struct Buttons {
    bool inEdit = false;  // "&Save" and "&Cancel" are shown
    bool add = false;
    bool edit = false;
    bool remove = false;
    bool previous = false;
    bool next = false;
    bool browse = false;  // the tree, and the choice of another database

    bool operator==(const Buttons&) const = default;
};

[[nodiscard]] Buttons buttonsIn(const Situation& now);

}  // namespace stelvan::gem
