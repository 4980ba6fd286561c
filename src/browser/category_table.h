// The eleven categories in which the model is browsed: tree nodes, captions, property frames and
// queries.
//
// The order is that of the tree; the index is the category index used everywhere. The keys are
// irregular (GEMSDV beside CSTVSV) and compared as they stand. The four fixed lists stand in
// form/fixed_lists.h.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace stelvan::browser {

/// The kind of record; also the index of the property frame that shows it.
enum class CategoryKind : std::int16_t {
    None = 0,
    Variable = 1,
    Alarm = 2,
    CollectionEvent = 3,
    Limit = 4,
    ProtocolSettings = 5,
    Report = 6
};

struct CategoryInfo {
    std::string_view key;
    CategoryKind kind = CategoryKind::None;
    std::string_view caption;
    std::string_view query;
};

inline constexpr std::int16_t kCategories = 11;

class CategoryTable {
public:
    /// Fills the table; once, at start-up.
    void lInitPropInfo();

    /// Index 1 to 11; index 0 is the empty row. Throws run-time failure 9 outside.
    [[nodiscard]] const CategoryInfo& at(std::int16_t index) const;
    /// The first row with exactly this key; 0 when there is none.
    [[nodiscard]] std::int16_t indexOf(std::string_view key) const;

private:
    std::array<CategoryInfo, kCategories + 1> rows_{};
};

}  // namespace stelvan::browser
