// Changes as JSON lines.
#pragma once

#include <string>

#include "model/compare/differences.h"

namespace stelvan::gemdb {

/// One line, with its line break:
/// {"change":"changed","kind":"report","table":"secs_report","id":12,"name":"Temperatures",
///  "fields":[{"field":"rpt_desc","old":"a","new":"b"}],
///  "links":[{"change":"added","table":"secs_rpt_var","target":101,"name":"x","old":null,"new":4,
///            "fields":[]}]}
/// Old and new of a link are its places; a limit has its number as "place" behind the id.
[[nodiscard]] std::string changeJson(const model::ItemChange& change);

}  // namespace stelvan::gemdb
