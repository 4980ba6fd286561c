// The models that many tests run over as a group; names as model() takes them.
#pragma once

#include <string>
#include <vector>

namespace stelvan::test {

/// All tables of a model, full or not.
inline const std::vector<std::string>& gemNames() {
    static const std::vector<std::string> kNames = {"gem.mdb", "gem_int_flags.mdb", "gem_empty.mdb",
                                                    "gem_edges.mdb"};
    return kNames;
}

/// Small files of one odd form each.
inline const std::vector<std::string>& shapeNames() {
    static const std::vector<std::string> kNames = {
        "shapes/compressed_text.mdb",  "shapes/deleted_columns.mdb", "shapes/deleted_rows.mdb",
        "shapes/descending_index.mdb", "shapes/index_cursor.mdb",    "shapes/long_memo.mdb",
        "shapes/no_rows.mdb",          "shapes/no_user_tables.mdb",  "shapes/numeric.mdb",
        "shapes/overflow.mdb",         "shapes/relationships.mdb",   "shapes/text_index_empty.mdb"};
    return kNames;
}

/// Both, and what stands in `more`.
inline std::vector<std::string> allNames(const std::vector<std::string>& more = {}) {
    std::vector<std::string> names = gemNames();
    names.insert(names.end(), shapeNames().begin(), shapeNames().end());
    names.insert(names.end(), more.begin(), more.end());
    return names;
}

}  // namespace stelvan::test
