#include "model/publish/item.h"

#include <gtest/gtest.h>

#include "tests/support/models.h"

namespace stelvan::test {
namespace {

using model::secsFormat;
using model::secsValue;

TEST(SecsFormat, IsTheCodeWhateverItsCaseAndOuterBlanks) {
    EXPECT_EQ(secsFormat("U1"), "U1");
    EXPECT_EQ(secsFormat(" bl "), "BL");
    EXPECT_EQ(secsFormat("U3"), "");
    EXPECT_EQ(secsFormat(""), "");
}

TEST(SecsValue, HasOneSpelling) {
    EXPECT_EQ(secsValue(" +007 ", "U1"), "7");
    EXPECT_EQ(secsValue("-0", "I2"), "0");
    EXPECT_EQ(secsValue("tRuE", "BL"), "TRUE");
    EXPECT_EQ(secsValue(" as it is ", "A"), " as it is ");
    EXPECT_EQ(secsValue("1.50", "F8"), "1.5");
    EXPECT_EQ(secsValue("1e-10", "F4"), "0.0000000001");
    EXPECT_EQ(secsValue("3.4e38", "F4"), "339999995214436424907732413799364296704");
    EXPECT_EQ(secsValue("5e-324", "F8")->size(), 326U);
    EXPECT_EQ(secsValue("-0.0", "F4"), "0");
}

TEST(SecsValue, EndsWhereItsFormatEnds) {
    struct Range {
        const char* format;
        const char* lowest;
        const char* below;
        const char* highest;
        const char* above;
    };
    for (const Range& range :
         {Range{"B", "0", "-1", "255", "256"}, Range{"U1", "0", "-1", "255", "256"},
          Range{"U2", "0", "-1", "65535", "65536"},
          Range{"U4", "0", "-1", "4294967295", "4294967296"},
          Range{"U8", "0", "-1", "18446744073709551615", "18446744073709551616"},
          Range{"I1", "-128", "-129", "127", "128"},
          Range{"I2", "-32768", "-32769", "32767", "32768"},
          Range{"I4", "-2147483648", "-2147483649", "2147483647", "2147483648"},
          Range{"I8", "-9223372036854775808", "-9223372036854775809", "9223372036854775807",
                "9223372036854775808"}}) {
        EXPECT_EQ(secsValue(range.lowest, range.format), range.lowest);
        EXPECT_EQ(secsValue(range.highest, range.format), range.highest);
        EXPECT_FALSE(secsValue(range.below, range.format)) << range.format;
        EXPECT_FALSE(secsValue(range.above, range.format)) << range.format;
    }
}

TEST(SecsValue, IsNothingForBlanksListsAndWhatIsNoValue) {
    for (const char* format : {"B", "BL", "F4", "F8", "I8", "U1"}) {
        EXPECT_FALSE(secsValue("", format)) << format;
        EXPECT_FALSE(secsValue("  ", format)) << format;
        EXPECT_FALSE(secsValue("x", format)) << format;
        EXPECT_FALSE(secsValue("1 2", format)) << format;
    }
    EXPECT_FALSE(secsValue("1.5", "I8"));
    EXPECT_FALSE(secsValue("1", "L"));
    EXPECT_FALSE(secsValue("1", ""));
    EXPECT_EQ(secsValue("", "A"), "");
}

TEST(SecsItem, HoldsTheChildrenOfAListInTheirOrder) {
    const model::Model whole = model::read(test::model("gem.mdb"));
    const model::CrossReference references(whole);
    std::size_t lists = 0;
    for (const auto& [id, variable] : references.variables().all()) {
        const model::SecsItem item = secsItem(variable, references);
        if (item.format != "L") continue;
        const auto children = references.childrenOfList().of(id);
        lists += children.empty() ? 0 : 1;
        ASSERT_EQ(item.items.size(), children.size());
        for (std::size_t i = 0; i < children.size(); ++i)
            EXPECT_EQ(item.items[i].variable.row, children[i].item.row);
        EXPECT_FALSE(item.value);
    }
    EXPECT_GT(lists, 0U);
}

}  // namespace
}  // namespace stelvan::test
