// How a model lies in text: which file holds which parts, and how sections and keys are called.
//
// A file opens with the table [columns], which lists the columns of each of its tables: a key that
// an item lacks is Null, while a column that is not listed is one that the text says nothing about.
// Then every item is a section named by its table, one key a line, a key for each column. Links
// stand in their owner, as a list under linkKeyOf(); link rows without an owner, and those without
// a place, are sections of their own behind the items.
//
//   [[secs_cusevent]]
//   evt_id = 101
//   evt_name = "WaferStarted"
//   reports = [
//     101,
//     { rpt_id = 102, rpt_order = 7 },
//   ]
//
// A number in a list is the target; its place is where it stands in the list. Links of which that
// does not say all are tables of what else they hold.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "model/core/model.h"

namespace stelvan::model {

struct TextFile {
    std::string_view name;  // "events.toml"
    std::span<const Part> items;
    std::optional<Part> links;      // those that stand in the items
    std::string_view linkKey = {};  // "reports"
    bool onlyWherePresent = false;  // left out where the model has no such table
};

/// In the order in which a stream of all of them is written.
[[nodiscard]] std::span<const TextFile> textFiles();

/// The file in which a part stands.
[[nodiscard]] const TextFile& fileOf(Part part);

/// The table in which a file lists columns.
inline constexpr std::string_view kColumnsSection = "columns";

/// The name of a part's sections: its table's, and "limits" for the limits, whose table is called
/// otherwise in every file.
[[nodiscard]] std::string_view sectionOf(Part part);

/// The key of the list of links in an item with these columns: the file's link key, with "_" behind
/// it for as long as a column has that name.
[[nodiscard]] std::string linkKeyOf(const TextFile& file, const Table& items);

/// The key of the one value in a table {escaped = "..."}: a text with halves of surrogate pairs,
/// which no TOML text can hold. Each half stands as a backslash, u and four digits, each backslash
/// as two.
inline constexpr std::string_view kEscapedKey = "escaped";

}  // namespace stelvan::model
