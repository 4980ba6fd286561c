// The category table, row by row.
#include "gem/categories.h"

#include <gtest/gtest.h>

#include "base/run_time_error.h"

namespace stelvan::gem {
namespace {

TEST(CategoryTable, HoldsTheElevenCategoriesInOrder) {
    struct Row {
        const char* key;
        int kind;
        const char* caption;
        const char* query;
    };
    const Row rows[] = {
        {"GEMEVT", 3, "GEM Collection Events", "select * from secs_gemevent"},
        {"GEMVDV", 1, "GEM Data Variables", "select * from secs_gemvar where var_type = 'DV'"},
        {"GEMSDV", 1, "GEM Status Variables", "select * from secs_gemvar where var_type = 'SV'"},
        {"GEMVEC", 1, "GEM Equipment Constants", "select * from secs_gemvar where var_type = 'EC'"},
        {"CSTALM", 2, "Custom Alarms", "select * from secs_alarm"},
        {"CSTEVT", 3, "Custom Collection Events", "select * from secs_cusevent"},
        {"CSTVDV", 1, "Custom Data Variables", "select * from secs_cusvar where var_type = 'DV'"},
        {"CSTVSV", 1, "Custom Status Variables", "select * from secs_cusvar where var_type = 'SV'"},
        {"CSTVEC", 1, "Custom Equipment Constants",
         "select * from secs_cusvar where var_type = 'EC'"},
        {"GEMSTT", 5, "Protocol Settings", "select * from secs_setting"},
        {"CSTRPT", 6, "Custom Reports", "select * from secs_report"}};
    std::int16_t index = 0;
    for (const Row& row : rows) {
        const CategoryInfo& category = categoryAt(++index);
        EXPECT_EQ(category.key, row.key);
        EXPECT_EQ(static_cast<int>(category.kind), row.kind);
        EXPECT_EQ(category.caption, row.caption);
        EXPECT_EQ(category.query, row.query);
    }
    EXPECT_EQ(index, kCategories);
    EXPECT_TRUE(categoryAt(0).key.empty());
}

TEST(CategoryTable, KeysAreComparedExactly) {
    EXPECT_EQ(categoryOf("GEMSDV"), 3);
    EXPECT_EQ(categoryOf("CSTVSV"), 8);
    EXPECT_EQ(categoryOf("gemsdv"), 0);
    EXPECT_EQ(categoryOf("GEMVSV"), 0);
}

TEST(CategoryTable, IndexOutsideIsABoundsFailure) {
    for (const int index : {-1, 12, 100}) {
        try {
            (void)categoryAt(static_cast<std::int16_t>(index));
            ADD_FAILURE() << index;
        } catch (const base::RunTimeError& failure) {
            EXPECT_EQ(failure.number(), 9);
        }
    }
}

}  // namespace
}  // namespace stelvan::gem
