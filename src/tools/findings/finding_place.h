// Where in the window a finding is: the record, and the control that shows what is at fault.
#pragma once

#include <optional>
#include <string>

#include "browser/index/model_index.h"
#include "gem/controls.h"
#include "model/check/finding.h"

namespace stelvan::tools {

/// A link leads to its owner and the list of links, a limit to its variable. `control` is what
/// holds the column of the finding, of several that take turns the first; None where the whole
/// record is meant and no list of it.
struct FindingPlace {
    std::optional<std::size_t> item;  // position in the index; nothing where no record shows it
    gem::Control control = gem::Control::None;
    std::string whyNowhere;  // what to tell the user then
};

[[nodiscard]] FindingPlace placeOf(const model::Finding& finding, const browser::ModelIndex& index);

/// What a finding is about, in words: "report 12 Temperatures", "the file".
[[nodiscard]] std::string subjectOf(const model::Finding& finding);

}  // namespace stelvan::tools
