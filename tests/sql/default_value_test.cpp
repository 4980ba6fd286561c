#include "sql/default_value.h"

#include <gtest/gtest.h>

namespace stelvan::sql {
namespace {

jet::Value defaultOf(jet::ColumnType type, const std::string& expression, bool autoNumber = false) {
    jet::ColumnInfo column;
    column.name = "c";
    column.type = type;
    column.length = 100;
    column.defaultValue = expression;
    column.autoNumber = autoNumber;
    return defaultValue(column);
}

TEST(DefaultValue, ConstantsBecomeTheColumnsType) {
    EXPECT_EQ(defaultOf(jet::ColumnType::Long, "0"), jet::Value(0));
    EXPECT_EQ(defaultOf(jet::ColumnType::Double, "=1.5"), jet::Value(1.5));
    EXPECT_EQ(defaultOf(jet::ColumnType::Text, "\"say \"\"hi\"\"\""),
              jet::Value(std::string("say \"hi\"")));
    EXPECT_EQ(defaultOf(jet::ColumnType::Text, "'NULL'"), jet::Value(std::string("NULL")));
    EXPECT_EQ(defaultOf(jet::ColumnType::Boolean, "Yes"), jet::Value(true));
    EXPECT_EQ(defaultOf(jet::ColumnType::Integer, "True"), jet::Value(-1));
}

TEST(DefaultValue, WithoutOneItIsNullAndAFlagIsClear) {
    EXPECT_EQ(defaultOf(jet::ColumnType::Long, ""), jet::Value());
    EXPECT_EQ(defaultOf(jet::ColumnType::Text, "Null"), jet::Value());
    EXPECT_EQ(defaultOf(jet::ColumnType::DateTime, "Now()"), jet::Value());
    EXPECT_EQ(defaultOf(jet::ColumnType::Boolean, ""), jet::Value(false));
}

TEST(DefaultValue, AnAutoNumberIsTheFilesToGive) {
    EXPECT_EQ(defaultOf(jet::ColumnType::Long, "5", true), jet::Value());
}

}  // namespace
}  // namespace stelvan::sql
