#include "tests/jet/tables/table_model.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "base/utf.h"
#include "jet/index/index_keys.h"
#include "jet/rows/row_reader.h"

namespace stelvan::test {

using jet::ColumnInfo;
using jet::ColumnType;
using jet::Value;

std::size_t below(Random& random, std::size_t limit) {
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
}

namespace {

std::string randomText(Random& random, std::size_t most) {
    static const std::vector<std::string> kLetters = {"a",
                                                      "B",
                                                      "c",
                                                      " ",
                                                      "-",
                                                      "'",
                                                      "9",
                                                      "\xC3\xA4",
                                                      "\xC3\x9F",
                                                      "\xE6\x97\xA5",
                                                      "\xF0\x9F\x98\x80",
                                                      "\xD0\x96"};
    // Mostly plain ASCII, so that compressed texts are common.
    const std::size_t alphabet = below(random, 3) == 0 ? kLetters.size() : 7;
    const std::size_t size = most == 0 ? 0
                             : below(random, 4) == 0
                                 ? below(random, most + 1)
                                 : below(random, std::min<std::size_t>(most, 12) + 1);
    std::string text;
    for (std::size_t units = 0; units < size; ++units) {
        const std::string& letter = kLetters[below(random, alphabet)];
        if (letter.size() == 4 && ++units >= size) break;
        text += letter;
    }
    return text;
}

std::size_t randomLength(Random& random) {
    constexpr std::size_t kLengths[] = {0,    1,    3,    31,   32,   33,   64,   65,  500,
                                        1024, 1025, 2038, 2039, 4072, 4076, 4077, 9000};
    return below(random, 3) != 0 ? below(random, 60) : kLengths[below(random, std::size(kLengths))];
}

jet::Blob randomBytes(Random& random, std::size_t size) {
    jet::Blob bytes(size);
    for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random());
    return bytes;
}

std::string randomMemo(Random& random) {
    const std::size_t size = randomLength(random);
    std::string text = randomText(random, size);
    if (below(random, 2) == 0) text.append(size - std::min(size, base::utf16Length(text)), 'm');
    return text;
}

}  // namespace

Value randomValue(const ColumnInfo& column, Random& random) {
    const auto number = [&](int range) {
        return static_cast<std::int32_t>(below(random, static_cast<std::size_t>(range)));
    };
    if (column.type != ColumnType::Boolean && !column.required && below(random, 8) == 0)
        return jet::Null{};
    switch (column.type) {
        case ColumnType::Boolean:
            return below(random, 2) == 0;
        case ColumnType::Byte:
            return number(256);
        case ColumnType::Integer:
            return number(65536) - 32768;
        case ColumnType::Long:
            return below(random, 4) == 0 ? static_cast<std::int32_t>(random()) : number(400) - 100;
        case ColumnType::Money:
            return jet::Money{static_cast<std::int64_t>(random()) * 1000 - 77};
        case ColumnType::Single:
            return static_cast<float>(number(1000)) / 8 - 20;
        case ColumnType::Double:
            return static_cast<double>(number(1000)) / 7 - 20;
        case ColumnType::DateTime:
            return jet::DateTime{static_cast<double>(number(80000)) / 4 - 5000};
        case ColumnType::Binary:
            return randomBytes(random, below(random, column.length + 1u));
        case ColumnType::FixedBinary:
            return randomBytes(random, column.length);
        case ColumnType::Text: {
            std::string text = randomText(random, column.length / 2u);
            return text.empty() && !column.allowZeroLength ? Value(std::string("x")) : Value(text);
        }
        case ColumnType::Ole:
            return randomBytes(random, randomLength(random));
        case ColumnType::Memo: {
            std::string text = randomMemo(random);
            return text.empty() && !column.allowZeroLength ? Value(std::string("x")) : Value(text);
        }
        case ColumnType::Guid: {
            jet::Guid guid;
            for (auto& byte : guid.bytes) byte = static_cast<std::uint8_t>(random());
            return guid;
        }
        case ColumnType::Numeric: {
            jet::Numeric numeric{below(random, 2) == 0,
                                 column.scale,
                                 {0, 0, 0, static_cast<std::uint32_t>(number(100000)) + 1}};
            return numeric;
        }
    }
    return jet::Null{};
}

TableModel::Row TableModel::readRow(jet::Cursor& cursor) const {
    Row row;
    for (std::size_t i = 0; i < table_->info().columns.size(); ++i)
        row.push_back(jet::toValue(cursor.value(i)));
    return row;
}

TableModel::Rows TableModel::read() {
    Rows rows;
    const auto cursor = table_->scan(jet::allColumns(table_->info()));
    while (cursor->next()) rows[cursor->rowId().packed()] = readRow(*cursor);
    return rows;
}

void TableModel::change(Random& random) {
    const std::size_t kind = below(random, 10);
    if (rows_.empty() || kind < 5) return insert(random);
    if (kind < 8) return update(random);
    erase(random);
}

void TableModel::insert(Random& random) {
    const jet::TableInfo& info = table_->info();
    Row wanted(info.columns.size());
    std::vector<jet::ColumnValue> given;
    for (std::size_t i = 0; i < info.columns.size(); ++i) {
        if (info.columns[i].type == ColumnType::Boolean) wanted[i] = false;
        if (info.columns[i].autoNumber) continue;
        if (!info.columns[i].required && below(random, 10) == 0) continue;
        wanted[i] = randomValue(info.columns[i], random);
        given.emplace_back(i, wanted[i]);
    }
    try {
        const jet::RowId id = table_->insert(given);
        const auto stored = table_->row(id, jet::allColumns(table_->info()));
        ASSERT_NE(stored, nullptr);
        const Row row = readRow(*stored);
        for (const auto& [column, value] : given)
            ASSERT_EQ(row[column], value) << info.columns[column].name;
        ASSERT_FALSE(rows_.contains(id.packed()));
        EXPECT_FALSE(duplicates(row, id.packed()));
        rows_[id.packed()] = row;
    } catch (const jet::Error& error) {
        expectRefusal(error, wanted, -1);
    }
}

void TableModel::update(Random& random) {
    const jet::TableInfo& info = table_->info();
    auto at = rows_.begin();
    std::advance(at, static_cast<std::ptrdiff_t>(below(random, rows_.size())));
    Row wanted = at->second;
    std::vector<jet::ColumnValue> given;
    for (std::size_t i = 0; i < info.columns.size(); ++i) {
        if (info.columns[i].autoNumber || below(random, 3) != 0) continue;
        wanted[i] = randomValue(info.columns[i], random);
        given.emplace_back(i, wanted[i]);
    }
    try {
        table_->update(jet::RowId::unpack(at->first), given);
        EXPECT_FALSE(duplicates(wanted, at->first));
        at->second = wanted;
    } catch (const jet::Error& error) {
        expectRefusal(error, wanted, at->first);
    }
}

void TableModel::erase(Random& random) {
    auto at = rows_.begin();
    std::advance(at, static_cast<std::ptrdiff_t>(below(random, rows_.size())));
    table_->erase(jet::RowId::unpack(at->first));
    EXPECT_EQ(table_->row(jet::RowId::unpack(at->first), {}), nullptr);
    rows_.erase(at);
}

void TableModel::expectRefusal(const jet::Error& error, const Row& wanted, std::int64_t self) {
    switch (error.kind()) {
        case jet::ErrorKind::DuplicateKey:
            EXPECT_TRUE(duplicates(wanted, self)) << error.what();
            break;
        case jet::ErrorKind::NullInKey:
            EXPECT_TRUE(nullInKey(wanted)) << error.what();
            break;
        case jet::ErrorKind::RowTooLarge:
            EXPECT_GE(wanted.size(), 8U) << error.what();
            break;
        default:
            FAIL() << error.what();
    }
}

namespace {

std::vector<jet::IndexKey> keysOf(const jet::TableInfo& info, const jet::IndexInfo& index,
                                  const std::vector<const TableModel::Row*>& rows) {
    const jet::KeyEncoder encoder(info.columns, index.columns);
    std::vector<jet::IndexKey> keys(rows.size());
    std::vector<jet::ValueView> values;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        values.clear();
        for (const auto& part : index.columns)
            values.push_back(jet::toView((*rows[i])[part.column]));
        encoder.encode(values, keys[i]);
    }
    return keys;
}

}  // namespace

bool TableModel::duplicates(const Row& wanted, std::int64_t self) {
    const jet::TableInfo& info = table_->info();
    std::vector<const Row*> rows = {&wanted};
    for (const auto& [id, row] : rows_) {
        if (id != self) rows.push_back(&row);
    }
    return std::ranges::any_of(info.indexes, [&](const jet::IndexInfo& index) {
        if (!index.unique) return false;
        const auto keys = keysOf(info, index, rows);
        return !keys[0].anyNull && std::ranges::count(keys, keys[0]) > 1;
    });
}

bool TableModel::nullInKey(const Row& wanted) {
    return std::ranges::any_of(table_->info().indexes, [&](const jet::IndexInfo& index) {
        return (index.required || index.primary) &&
               std::ranges::any_of(index.columns, [&](const auto& part) {
                   return jet::isNull(wanted[part.column]);
               });
    });
}

void TableModel::compare() {
    EXPECT_EQ(table_->info().rows, rows_.size());
    ASSERT_EQ(read(), rows_);
    for (std::size_t i = 0; i < table_->info().indexes.size(); ++i) compareIndex(i);
}

void TableModel::compareIndex(std::size_t position) {
    const jet::TableInfo& info = table_->info();
    const jet::IndexInfo& index = info.indexes[position];
    std::vector<std::pair<std::vector<std::uint8_t>, std::int64_t>> expected;
    std::vector<const Row*> rows;
    for (const auto& [id, row] : rows_) rows.push_back(&row);
    const auto keys = keysOf(info, index, rows);
    std::size_t i = 0;
    for (const auto& [id, row] : rows_) {
        const jet::IndexKey& key = keys[i++];
        if (!(index.ignoreNulls && key.allNull)) expected.emplace_back(key.bytes, id);
    }
    std::ranges::sort(expected);
    const auto cursor = table_->inOrder(position, {});
    for (const auto& [key, id] : expected) {
        ASSERT_TRUE(cursor->next()) << index.name;
        ASSERT_EQ(cursor->rowId().packed(), id) << index.name;
    }
    ASSERT_FALSE(cursor->next()) << index.name;
}

}  // namespace stelvan::test
