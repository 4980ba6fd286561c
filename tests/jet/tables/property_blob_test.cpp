#include "jet/tables/property_blob.h"

#include <gtest/gtest.h>

namespace stelvan::jet {
namespace {

TableInfo table() {
    TableInfo info;
    info.columns.resize(3);
    info.columns[0].name = "id";
    info.columns[0].type = ColumnType::Long;
    info.columns[1].name = "name";
    info.columns[2].name =
        "gr\xC3\xB6\xC3\x9F"
        "e";
    return info;
}

TEST(PropertyBlob, IsEmptyForATableWithoutProperties) {
    EXPECT_TRUE(makeProperties(table()).empty());
}

TEST(PropertyBlob, GivesBackWhatItWasMadeOf) {
    TableInfo made = table();
    made.columns[0].required = true;
    made.columns[1].allowZeroLength = false;
    made.columns[1].defaultValue = "\"x\"";
    made.columns[2].required = true;
    made.columns[2].defaultValue = "Now()";
    TableInfo read = table();
    applyProperties(makeProperties(made), read);
    for (std::size_t i = 0; i < made.columns.size(); ++i) {
        EXPECT_EQ(read.columns[i].required, made.columns[i].required);
        EXPECT_EQ(read.columns[i].allowZeroLength, made.columns[i].allowZeroLength);
        EXPECT_EQ(read.columns[i].defaultValue, made.columns[i].defaultValue);
    }
}

TEST(PropertyBlob, StandsAsTheFormatSays) {
    TableInfo made = table();
    made.columns[0].required = true;
    const Blob expected = {
        'M', 'R', '2', 0,  // magic
        24,  0,   0,   0, 0x80, 0, 16,  0, 'R', 0, 'e', 0, 'q', 0, 'u', 0,
        'i', 0,   'r', 0, 'e',  0, 'd', 0,                                  // names
        25,  0,   0,   0, 1,    0, 10,  0, 0,   0, 4,   0, 'i', 0, 'd', 0,  // column block, owner
        9,   0,   1,   1, 0,    0, 1,   0, 1};                              // Required = True
    EXPECT_EQ(makeProperties(made), expected);
}

TEST(PropertyBlob, SkipsWhatItDoesNotKnow) {
    TableInfo made = table();
    made.columns[0].required = true;
    Blob blob = makeProperties(made);
    const Blob unknown = {10, 0, 0, 0, 7, 0, 1, 2, 3, 4};
    blob.insert(blob.end(), unknown.begin(), unknown.end());
    TableInfo read = table();
    applyProperties(blob, read);
    EXPECT_TRUE(read.columns[0].required);
    applyProperties(Blob{'K', 'K', 'D', 0, 1}, read);
}

TEST(PropertyBlob, ThatIsCutIsDamaged) {
    TableInfo made = table();
    made.columns[1].defaultValue = "12345";
    const Blob blob = makeProperties(made);
    for (std::size_t size = 5; size < blob.size(); ++size) {
        TableInfo read = table();
        try {
            applyProperties(Bytes(blob).first(size), read);
            EXPECT_TRUE(read.columns[1].defaultValue.empty()) << size;
        } catch (const Error& error) {
            EXPECT_EQ(error.kind(), ErrorKind::Corrupt);
        }
    }
}

}  // namespace
}  // namespace stelvan::jet
