// The parts of a model: which tables make it, and how each is called, keyed and grouped.
//
// The limits' table is named differently from file to file, so it is found by its columns.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "gem/categories.h"

namespace stelvan::model {

enum class Part : std::uint8_t {
    StandardVariables,
    CustomVariables,
    StandardEvents,
    CustomEvents,
    Alarms,
    Reports,
    Settings,
    Limits,
    EventReports,    // link rows: the reports that an event sends
    ReportVariables  // link rows: the variables that a report carries
};

inline constexpr std::size_t kParts = 10;

[[nodiscard]] constexpr std::size_t indexOf(Part part) {
    return static_cast<std::size_t>(part);
}

struct PartFacts {
    Part part;
    std::string_view table;  // by which it is found; empty for the limits
    gem::Kind kind;          // None for link rows
    bool custom;             // the equipment's own items, which can be added and removed
    std::string_view noun;   // "variable", as messages call one item
    std::string_view id;    // the column that tells items apart; of link rows and limits, the owner
    std::string_view name;  // empty where items have no name beside their id
    std::string_view target = {};  // of link rows: the column of what is linked
    std::string_view order = {};   // of link rows and limits: the place within their owner
};

/// All parts, in the order of the enum.
[[nodiscard]] std::span<const PartFacts> parts();
[[nodiscard]] const PartFacts& factsOf(Part part);

[[nodiscard]] constexpr bool isLinks(Part part) {
    return part == Part::EventReports || part == Part::ReportVariables;
}

/// Where the owners of link rows stand, and what they lead to: the parts to look in for an
/// identifier, in this order. None for a part that holds no links.
[[nodiscard]] std::span<const Part> ownersOf(Part links);
[[nodiscard]] std::span<const Part> targetsOf(Part links);

}  // namespace stelvan::model
