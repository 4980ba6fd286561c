// The SQL texts over the model: links, pools, children, identifiers, cascades. Other programs'
// traces show them as they stand here, odd blanks included.
//
// Identifiers go in as they were typed, unquoted; the caller sees to it that they are numbers where
// the text would not be one otherwise.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "gem/ids_and_names.h"

namespace stelvan::gem {

/// A link table: its columns for owner, item and the item's place, from 1.
struct LinkTable {
    std::string_view name;
    std::string_view owner;
    std::string_view item;
    std::string_view order;
};
extern const LinkTable kEventReports;
extern const LinkTable kReportVariables;

/// All link rows of an owner.
[[nodiscard]] std::string linksOf(const LinkTable& table, std::string_view owner);

/// Name and identifier of all reports; of the reports of an event, in their order.
[[nodiscard]] std::string allReports();
[[nodiscard]] std::string reportsOf(std::string_view event);

/// Whose variables: two tables with the same columns.
enum class Origin { Standard, Custom };

/// Name, identifier and type of the variables that no list holds.
[[nodiscard]] std::string topLevelVariables(Origin origin);
/// The same of a report's variables, with their order.
[[nodiscard]] std::string variablesOf(std::string_view report, Origin origin);

/// What may become a child of a list: custom variables of its type that are no list and in none.
[[nodiscard]] std::string possibleChildren(std::string_view list, std::string_view type);
/// The children of a list, in their order.
[[nodiscard]] std::string childrenOf(std::string_view list);
/// Their identifiers alone, in any order.
[[nodiscard]] std::string childIdsOf(std::string_view list);
[[nodiscard]] std::string customVariable(std::int32_t id);
[[nodiscard]] std::string setParent(std::int32_t child, std::int32_t list);
[[nodiscard]] std::string setPlace(std::int32_t child, std::int16_t place);
[[nodiscard]] std::string setDuplicates(std::int32_t child, bool allowed);

/// Identifier and name of all events of one table.
[[nodiscard]] std::string allEvents(std::string_view table);
/// The name of the event with an identifier in one table; the identifier of one with a name.
[[nodiscard]] std::string eventName(std::string_view table, std::string_view id);
[[nodiscard]] std::string eventId(std::string_view table, std::string_view name);

/// The statements that a record's deletion begins with: its links, the release of its children.
/// `format` is that of a variable.
[[nodiscard]] std::vector<std::string> cascadesOf(std::int16_t category, const std::string& id,
                                                  std::string_view format);

}  // namespace stelvan::gem
