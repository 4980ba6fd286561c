// The eleven categories in which a model is browsed, and the kinds of record that they show.
//
// The order is that of the tree; the index is the category index used everywhere. The keys are
// irregular (GEMSDV beside CSTVSV) and compared as they stand.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace stelvan::gem {

/// Category indexes; their names are the keys of the table. Limits have fields but no category.
enum Category : std::int16_t {
    NO_CATEGORY = 0,
    GEMEVT = 1,
    GEMVDV = 2,
    GEMSDV = 3,
    GEMVEC = 4,
    CSTALM = 5,
    CSTEVT = 6,
    CSTVDV = 7,
    CSTVSV = 8,
    CSTVEC = 9,
    GEMSTT = 10,
    CSTRPT = 11,
    LIMIT = 12
};

/// The kind of record; also the index of the property frame that shows it.
enum class Kind : std::int16_t {
    None = 0,
    Variable = 1,
    Alarm = 2,
    CollectionEvent = 3,
    Limit = 4,
    ProtocolSettings = 5,
    Report = 6
};

inline constexpr std::int16_t kCategories = 11;

struct CategoryInfo {
    std::string_view key;
    Kind kind = Kind::None;
    std::string_view caption;
    std::string_view query;
    /// The equipment's own records: added and deleted by the user. Those of the standard are not.
    bool custom = false;
    /// What var_type holds; empty where records have no type.
    std::string_view type = {};
};

/// Rows 1 to 11, after an empty row 0.
[[nodiscard]] std::span<const CategoryInfo> categories();
/// Throws run-time failure 9 outside 0 to 11.
[[nodiscard]] const CategoryInfo& categoryAt(std::int16_t index);
/// The first row with exactly this key; NO_CATEGORY when there is none.
[[nodiscard]] std::int16_t categoryOf(std::string_view key);

/// None for NO_CATEGORY and for what is no category.
[[nodiscard]] Kind kindOf(std::int16_t category);

[[nodiscard]] constexpr bool isGemVariable(std::int16_t c) {
    return c >= GEMVDV && c <= GEMVEC;
}
[[nodiscard]] constexpr bool isCustomVariable(std::int16_t c) {
    return c >= CSTVDV && c <= CSTVEC;
}
[[nodiscard]] constexpr bool isVariable(std::int16_t c) {
    return isGemVariable(c) || isCustomVariable(c);
}
/// Records that the user adds and deletes; limits count as such.
[[nodiscard]] constexpr bool isCustom(std::int16_t c) {
    return (c >= CSTALM && c <= CSTVEC) || c == CSTRPT || c == LIMIT;
}

}  // namespace stelvan::gem
