// What a side did to items that the other may have removed: it changed them, or linked to them.
#pragma once

#include <map>
#include <span>
#include <string>
#include <tuple>

#include "model/compare/differences.h"
#include "model/compare/identity.h"

namespace stelvan::model {

class Claims {
public:
    /// Of the changes from the base to a side.
    explicit Claims(std::span<const ItemChange> changes);

    /// What the side did to an item, in words ("var_max: "5" -> "7"", "event 7 Started links to
    /// it"); empty where it left it alone.
    [[nodiscard]] std::string on(Part part, const Key& id, const Key& place) const;

    /// Whether the side added a link to an identifier, or a limit for it. `links` is the part of
    /// the link rows, or of the limits.
    [[nodiscard]] bool linked(Part links, const Key& target) const;

private:
    std::map<std::tuple<Part, Key, Key>, std::string> changed_;
    std::map<std::pair<Part, Key>, std::string> linked_;
};

}  // namespace stelvan::model
