#include "jet/index/index_keys.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "tests/jet/index/text_weights.h"

namespace stelvan::jet {
namespace {

using test::toHex;

ColumnInfo columnOf(ColumnType type) {
    ColumnInfo column;
    column.name = "c";
    column.type = type;
    return column;
}

IndexKey keyOf(ColumnType type, const Value& value, bool ascending = true) {
    const std::vector<ColumnInfo> columns = {columnOf(type)};
    const std::vector<IndexColumn> parts = {{0, ascending}};
    const ValueView view = toView(value);
    IndexKey key;
    KeyEncoder(columns, parts).encode({&view, 1}, key);
    return key;
}

struct KnownKey {
    ColumnType type;
    Value value;
    std::string ascending;
    std::string descending;
};

Guid exampleGuid() {
    return {{0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF, 0x00, 0x11, 0x22, 0x33, 0x44, 0x55,
             0x66, 0x77}};
}

const std::vector<KnownKey>& knownKeys() {
    static const std::vector<KnownKey> known = {
        {ColumnType::Long, 2, "7F 80 00 00 02", "80 7F FF FF FD"},
        {ColumnType::Long, 19, "7F 80 00 00 13", "80 7F FF FF EC"},
        {ColumnType::Long, -1, "7F 7F FF FF FF", "80 80 00 00 00"},
        {ColumnType::Integer, 1, "7F 80 01", "80 7F FE"},
        {ColumnType::Integer, -32768, "7F 00 00", "80 FF FF"},
        {ColumnType::Byte, 200, "7F C8", "80 37"},
        {ColumnType::Boolean, true, "7F 00", "80 FF"},
        {ColumnType::Boolean, false, "7F FF", "80 00"},
        {ColumnType::Money, Money{15000}, "7F 80 00 00 00 00 00 3A 98",
         "80 7F FF FF FF FF FF C5 67"},
        {ColumnType::Single, 1.0F, "7F BF 80 00 00", "80 40 7F FF FF"},
        {ColumnType::Single, -1.0F, "7F 40 7F FF FF", "80 BF 80 00 00"},
        {ColumnType::Double, 0.0, "7F 80 00 00 00 00 00 00 00", "80 7F FF FF FF FF FF FF FF"},
        {ColumnType::DateTime, DateTime{-2.0}, "7F 3F FF FF FF FF FF FF FF",
         "80 C0 00 00 00 00 00 00 00"},
        {ColumnType::Guid, exampleGuid(),
         "7F 01 23 45 67 89 AB CD EF 09 00 11 22 33 44 55 66 77 08",
         "80 FE DC BA 98 76 54 32 10 09 FF EE DD CC BB AA 99 88 F7"},
        {ColumnType::Binary, Blob{1, 2, 3}, "7F 01 02 03 00 00 00 00 00 03",
         "80 FE FD FC FF FF FF FF FF FC"},
        {ColumnType::Binary, Blob{}, "7F", "80"},
        {ColumnType::Text, std::string("abc"), "7F 4A 4C 4D 01 00", "80 B5 B3 B2 FE FF 00"},
        {ColumnType::Memo, std::string("abc"), "7F 4A 4C 4D 01 00", "80 B5 B3 B2 FE FF 00"},
    };
    return known;
}

TEST(IndexKeys, EveryTypeHasItsBytesInBothDirections) {
    for (const KnownKey& known : knownKeys()) {
        EXPECT_EQ(toHex(keyOf(known.type, known.value).bytes), known.ascending);
        EXPECT_EQ(toHex(keyOf(known.type, known.value, false).bytes), known.descending);
    }
}

TEST(IndexKeys, ANullIsOneByteAndIsReported) {
    for (const ColumnType type :
         {ColumnType::Long, ColumnType::Text, ColumnType::Numeric, ColumnType::Guid}) {
        EXPECT_EQ(toHex(keyOf(type, Null{}).bytes), "00");
        EXPECT_EQ(toHex(keyOf(type, Null{}, false).bytes), "FF");
        EXPECT_TRUE(keyOf(type, Null{}).anyNull);
        EXPECT_TRUE(keyOf(type, Null{}).allNull);
    }
}

TEST(IndexKeys, AYesNoColumnIsNeverNull) {
    const IndexKey key = keyOf(ColumnType::Boolean, Null{});
    EXPECT_EQ(toHex(key.bytes), "7F FF");
    EXPECT_FALSE(key.anyNull);
    EXPECT_FALSE(key.allNull);
}

Numeric numeric(bool negative, std::uint32_t low) {
    return {negative, 0, {0, 0, 0, low}};
}

TEST(IndexKeys, DecimalsKeepTheEnginesWayWithTheSign) {
    const std::string zeros = " 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00";
    const std::string ones = " FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF";
    EXPECT_EQ(toHex(keyOf(ColumnType::Numeric, numeric(false, 5)).bytes), "7F FF" + zeros + " 05");
    EXPECT_EQ(toHex(keyOf(ColumnType::Numeric, numeric(true, 5)).bytes), "7F 00" + ones + " FA");
    EXPECT_EQ(toHex(keyOf(ColumnType::Numeric, numeric(false, 5), false).bytes),
              "80 FF" + ones + " FA");
    EXPECT_EQ(toHex(keyOf(ColumnType::Numeric, numeric(true, 5), false).bytes),
              "80 00" + zeros + " 05");
}

template <typename T>
void expectRising(ColumnType type, const std::vector<T>& values) {
    for (std::size_t i = 1; i < values.size(); ++i) {
        EXPECT_LT(keyOf(type, values[i - 1]).bytes, keyOf(type, values[i]).bytes) << i;
        EXPECT_GT(keyOf(type, values[i - 1], false).bytes, keyOf(type, values[i], false).bytes)
            << i;
        EXPECT_LT(keyOf(type, Null{}).bytes, keyOf(type, values[i]).bytes) << "nulls come first";
        EXPECT_GT(keyOf(type, Null{}, false).bytes, keyOf(type, values[i], false).bytes)
            << "and here last";
    }
}

TEST(IndexKeys, KeysStandAsTheirValuesDo) {
    using Int = std::numeric_limits<std::int32_t>;
    using Real = std::numeric_limits<double>;
    expectRising<int>(ColumnType::Byte, {0, 1, 127, 128, 255});
    expectRising<int>(ColumnType::Integer, {-32768, -256, -1, 0, 1, 255, 256, 32767});
    expectRising<int>(ColumnType::Long, {Int::min(), -65536, -1, 0, 1, 65536, Int::max()});
    expectRising<Money>(ColumnType::Money,
                        {{-922337203685477}, {-1}, {0}, {1}, {10000}, {1LL << 40}});
    expectRising<float>(ColumnType::Single, {-1e30F, -1.5F, -1e-30F, 0.0F, 1e-30F, 1.5F, 1e30F});
    expectRising<double>(ColumnType::Double,
                         {Real::lowest(), -1.0, -Real::min(), 0.0, 0.1, 2.0, Real::max()});
    expectRising<DateTime>(ColumnType::DateTime,
                           {{-1.25}, {-1.0}, {0.0}, {0.25}, {43000.5}, {43000.75}});
    expectRising<std::string>(ColumnType::Text,
                              {"", "!", "1", "a", "ab", "b", "bé", "z", "ω", "я"});
}

TEST(IndexKeys, BinariesStandAsTheirBytesDo) {
    const std::vector<Blob> rising = {
        {0},          {0, 0},          {0, 1},          {1},
        Blob(8, 1),   Blob(9, 1),      Blob(16, 1),     Blob(17, 1),
        {1, 1, 1, 2}, {0xFF, 0, 0, 0}, Blob(100, 0xFF), Blob(101, 0xFF)};
    for (std::size_t i = 1; i < rising.size(); ++i) {
        EXPECT_LT(keyOf(ColumnType::Binary, rising[i - 1]).bytes,
                  keyOf(ColumnType::Binary, rising[i]).bytes);
    }
}

TEST(IndexKeys, SeveralColumnsFollowEachOther) {
    const std::vector<ColumnInfo> columns = {columnOf(ColumnType::Text), columnOf(ColumnType::Long),
                                             columnOf(ColumnType::Integer)};
    const std::vector<IndexColumn> parts = {{1, true}, {0, false}};
    const KeyEncoder encoder(columns, parts);
    EXPECT_EQ(encoder.partCount(), 2u);
    EXPECT_EQ(encoder.column(0), 1u);

    IndexKey key;
    const std::vector<ValueView> both = {2, std::string_view("a")};
    encoder.encode(both, key);
    EXPECT_EQ(toHex(key.bytes), "7F 80 00 00 02 80 B5 FE FF 00");
    EXPECT_FALSE(key.anyNull);

    encoder.encode(std::span(both).first(1), key);
    EXPECT_EQ(toHex(key.bytes), "7F 80 00 00 02") << "the beginning of all keys with this number";

    const std::vector<ValueView> withNull = {2, Null{}};
    encoder.encode(withNull, key);
    EXPECT_EQ(toHex(key.bytes), "7F 80 00 00 02 FF");
    EXPECT_TRUE(key.anyNull);
    EXPECT_FALSE(key.allNull);
}

TEST(IndexKeys, AnUnknownTextOrderIsRefusedButDoesNotMatterForNumbers) {
    ColumnInfo text = columnOf(ColumnType::Text);
    text.order = {0x041D, 0};
    ColumnInfo number = columnOf(ColumnType::Long);
    number.order = {0x041D, 0};
    const std::vector<ColumnInfo> columns = {text, number};
    const std::vector<IndexColumn> overText = {{1, true}, {0, true}};
    const std::vector<IndexColumn> overNumber = {{1, true}};

    EXPECT_FALSE(KeyEncoder::canEncode(columns, overText));
    EXPECT_TRUE(KeyEncoder::canEncode(columns, overNumber));
    EXPECT_NO_THROW(KeyEncoder(columns, overNumber));
    try {
        const KeyEncoder encoder(columns, overText);
        FAIL() << "an encoder for an unknown order";
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::UnsupportedOrder);
        EXPECT_EQ(error.subject(), "c");
    }
}

TEST(IndexKeys, OnlyTextsWithCharactersOfSeveralLettersHaveAVariant) {
    const std::vector<ColumnInfo> columns = {columnOf(ColumnType::Text)};
    const std::vector<IndexColumn> parts = {{0, true}};
    const KeyEncoder encoder(columns, parts);
    IndexKey key;
    const auto hasVariant = [&](std::string_view text) {
        const ValueView value = text;
        return encoder.encodeVariant({&value, 1}, key);
    };
    EXPECT_FALSE(hasVariant("Nuss-Nougat"));
    EXPECT_FALSE(hasVariant("Müller-Thurgau"));
    EXPECT_FALSE(hasVariant("groß"));
    EXPECT_TRUE(hasVariant("Nuß-Nougat"));
    EXPECT_EQ(toHex(key.bytes), "7F 62 6F 6B 6B 62 64 6F 55 4A 6D 01 01 01 01 80 13 06 82 00");
}

TEST(IndexKeys, AValueOfAnotherTypeIsRefused) {
    EXPECT_THROW(keyOf(ColumnType::Long, std::string("1")), Error);
    EXPECT_THROW(keyOf(ColumnType::Text, 1), Error);
}

}  // namespace
}  // namespace stelvan::jet
