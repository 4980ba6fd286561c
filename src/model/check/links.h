// Link rows at fault, as both the check and the mending see them.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "model/core/cross_reference.h"

namespace stelvan::model {

/// The link rows of one owner that is there, in their order, parted into those that stay and those
/// that say what another says already: same owner, target and order.
struct OwnersLinks {
    std::int64_t owner = 0;
    std::vector<Item> kept;
    std::vector<Item> doubled;
};

/// Whether owner and target of a link row exist.
struct LinkEnds {
    bool owner = false;
    bool target = false;
};

class LinkView {
public:
    /// `part` is one of link rows; both must outlive the object.
    LinkView(const Model& model, const CrossReference& references, Part part);

    [[nodiscard]] LinkEnds endsOf(const Item& link) const;
    /// Of all owners that exist, in their order; links whose target does not exist among them.
    [[nodiscard]] std::vector<OwnersLinks> byOwner() const;
    /// Every row, those without an owner too.
    [[nodiscard]] std::vector<Item> all() const;

private:
    Part part_;
    const Table& table_;
    const Relation &owners_, &targets_, &links_;
};

/// Whether a column of the items holds 1 to n in their order.
[[nodiscard]] bool countsFromOne(std::span<const Item> items, std::string_view column);

}  // namespace stelvan::model
