#include "tests/models/used_rows.h"

#include "jet/rows/conversion.h"

namespace stelvan::data::test {
namespace {

constexpr std::size_t kCompletedLater = 9;  // every so many rows
constexpr std::size_t kDeleted = 7;
constexpr std::int32_t kFirstDeleted = 700'000'001;  // beyond all identifiers

using Values = std::vector<jet::ColumnValue>;

/// A row that stands between others for a while; its key is no other row's.
Values passingRow(const jet::TableInfo& table, std::size_t number) {
    const std::string text = "passing " + std::to_string(number);
    Values values;
    for (std::size_t column = 0; column < table.columns.size(); ++column) {
        const jet::ColumnInfo& info = table.columns[column];
        const bool word = info.type == jet::ColumnType::Text && info.length / 2U >= text.size();
        const bool key = column < 2 && !word && info.type != jet::ColumnType::Text;
        const auto identifier = kFirstDeleted + static_cast<std::int32_t>(number);
        if (word) values.emplace_back(column, text);
        if (key) values.emplace_back(column, jet::convertTo(info, identifier));
    }
    return values;
}

}  // namespace

void insertAsUsed(jet::Table& table, const TableRows& rows) {
    const jet::TableInfo info = table.info();
    const RowValues values(rows, info);
    std::vector<std::pair<jet::RowId, Values>> outlines;
    std::vector<jet::RowId> passing;
    for (std::size_t i = 0; i < rows.rows.size(); ++i) {
        Values whole = values.of(rows.rows[i]);
        if (i % kDeleted == kDeleted - 1) passing.push_back(table.insert(passingRow(info, i)));
        if (i % kCompletedLater == kCompletedLater - 1) {
            const jet::RowId outline = table.insert(std::span(whole).first(2));
            outlines.emplace_back(outline, std::move(whole));
        } else {
            table.insert(whole);
        }
    }
    for (const auto& [row, whole] : outlines) table.update(row, whole);
    for (const jet::RowId row : passing) table.erase(row);
}

}  // namespace stelvan::data::test
