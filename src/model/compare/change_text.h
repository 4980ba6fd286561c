// Changes in words, for people: the one way in which they are printed, whatever made them.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "model/compare/differences.h"
#include "model/core/sink.h"

namespace stelvan::model {

/// "101", "DeviceID"; in quotes where it holds what a terminal would obey; "without identifier" for
/// Null.
[[nodiscard]] std::string idText(const jet::Value& id);

/// Which item it is, in words: "variable 101 ChamberPressure (secs_cusvar)".
[[nodiscard]] std::string itemText(const ItemChange& change);
[[nodiscard]] std::string itemText(Part part, const Table& table, const Row& row);
/// Where a link leads: "report 12 Temperatures".
[[nodiscard]] std::string targetText(const LinkChange& link);
/// A value as people read it: texts in quotes, all on one line, null for none.
[[nodiscard]] std::string valueText(const jet::Value& value);

/// One line: '+' added, '-' removed, '~' changed or moved, ' ' a field's content.
struct ChangeLine {
    char sign;
    std::size_t depth;  // 0: an item; 1: its fields and links; 2: what else a link holds
    std::string text;
};

/// The item, then its fields and links. Of an added item the fields that say something (no empty
/// texts, no flags that are off); of a removed one none.
[[nodiscard]] std::vector<ChangeLine> linesOf(const ItemChange& change);

/// All of it, an item's details indented below it; green, red and yellow where `coloured`.
void writeChanges(std::span<const ItemChange> changes, bool coloured, const Sink& sink);

/// "3 items added, 2 changed, 1 removed", with "would be" where nothing was done yet; "no changes".
[[nodiscard]] std::string summaryOf(std::span<const ItemChange> changes, bool would = false);

}  // namespace stelvan::model
