// Looking for records by what the user knows of them: identifier, part of a name, group, words of
// the description.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "browser/index/model_index.h"

namespace stelvan::browser {

/// Why a record was found, the best reason first.
enum class Reason { Id, NameBegins, NameHolds, Group, Text };

struct Match {
    std::size_t item;  // position in ModelIndex::items()
    Reason reason;
};

/// What the user typed, made ready: outer blanks and letter case do not count.
[[nodiscard]] std::string foldedQuery(std::string_view typed);

/// The best `most` records by identifier, name and group, for a query that is not empty: by
/// reason, whole names before others, then in the order of the categories.
[[nodiscard]] std::vector<Match> search(const ModelIndex& index, const std::string& query,
                                        std::size_t most);

/// Adds records whose description holds the query and that were not found otherwise, until there
/// are `most`. False, and nothing is added, where the file is not known to be as the index has it.
/// Throws jet::Error.
[[nodiscard]] bool searchTexts(ModelIndex& index, const std::string& query, std::size_t most,
                               std::vector<Match>& found);

}  // namespace stelvan::browser
