// Which field shows which column, group by group, in the order in which they are filled.
#pragma once

#include <span>
#include <vector>

#include "form/frames.h"

namespace stelvan::browser {

struct Binding {
    form::Field* field;
    const char* column;
};

/// The bindings of a category's fields; empty for no category. Custom and GEM records share theirs.
[[nodiscard]] std::vector<Binding> bindingsOf(const form::MainForm& form, std::int16_t category);

}  // namespace stelvan::browser
