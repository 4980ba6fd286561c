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

/// Whether the tables and columns are there through which links, lists and alarms lead to items.
/// Without them everything would seem to lead nowhere.
[[nodiscard]] bool canFollow(const Model& model);

/// What one end of a link row leads to: "dangling-report" is the rule where it does not exist.
struct LinkEnd {
    std::string_view rule;
    std::string_view noun;
    std::string_view column;
};

class LinkView {
public:
    /// `part` is one of link rows; both must outlive the object.
    LinkView(const Model& model, const CrossReference& references, Part part);

    /// The ends of a link row that do not exist, the owner's first.
    [[nodiscard]] std::vector<LinkEnd> missingEnds(const Item& link) const;
    [[nodiscard]] std::optional<Item> ownerOf(const Item& link) const;
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
