#include "jet/disk/error.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace stelvan::jet {

namespace {

using Label = std::pair<ErrorKind, std::string_view>;

constexpr std::array kLabels{
    Label{ErrorKind::FileNotFound, "no such file"},
    Label{ErrorKind::NoSuchTable, "no such table"},
    Label{ErrorKind::TableExists, "a table of this name is there already"},
    Label{ErrorKind::NullInRequired, "a value is required"},
    Label{ErrorKind::ZeroLength, "an empty text is not allowed"},
    Label{ErrorKind::MissingParent, "a related row is missing"},
    Label{ErrorKind::HasChildren, "related rows are there"},
    Label{ErrorKind::RowGone, "the row is gone"},
    Label{ErrorKind::RowChanged, "the row has changed"},
};

}  // namespace

Error Error::of(ErrorKind kind, const std::string& subject) {
    const auto* label = std::ranges::find(kLabels, kind, &Label::first);
    const std::string_view text = label == kLabels.end() ? "failed" : label->second;
    return std::move(Error(kind, subject + ": " + std::string(text) + ".").about(subject));
}

}  // namespace stelvan::jet
