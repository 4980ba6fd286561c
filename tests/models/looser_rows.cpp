#include "tests/models/looser_rows.h"

#include <algorithm>
#include <array>
#include <optional>
#include <stdexcept>
#include <string_view>

namespace stelvan::data::test {
namespace {

constexpr std::size_t kShortText = 255;

struct LooseCell {
    const char* table;
    const char* id;
    const char* column;
    std::optional<const char*> value;
};

constexpr std::array kLooseCells = {
    LooseCell{"secs_cusvar", "104", "var_parentkey", std::nullopt},
    LooseCell{"secs_cusvar", "105", "var_canadd", "-1"},
    LooseCell{"secs_alarm", "103", "alm_enable", std::nullopt},
    LooseCell{"secs_cusevent", "110", "evt_enable", "-1"},
};

constexpr std::array<std::string_view, 5> kOptionalColumns = {
    "var_orderby_accessid", "var_linkchild", "var_loadchild", "var_canadd", "alm_set"};

std::size_t positionOf(const TableRows& table, std::string_view column) {
    const auto found = std::ranges::find(table.columns, column);
    if (found == table.columns.end()) throw std::runtime_error("no column " + std::string(column));
    return static_cast<std::size_t>(found - table.columns.begin());
}

bool continues(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// The first characters; none of the long texts has one beyond the basic plane.
void cut(std::string& text) {
    std::size_t characters = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (!continues(text[at]) && ++characters > kShortText) return text.resize(at);
    }
}

void change(TableRows& table, const LooseCell& loose) {
    const auto row = std::ranges::find_if(
        table.rows, [&](const Cells& cells) { return cells.front() == loose.id; });
    if (row == table.rows.end()) throw std::runtime_error(std::string("no row ") + loose.id);
    (*row)[positionOf(table, loose.column)] = loose.value ? Cell(*loose.value) : Cell(std::nullopt);
}

}  // namespace

void loosen(std::vector<TableRows>& tables) {
    for (TableRows& table : tables) {
        for (Cells& row : table.rows) {
            for (Cell& cell : row) {
                if (cell) cut(*cell);
            }
        }
        for (const LooseCell& loose : kLooseCells) {
            if (table.table == loose.table) change(table, loose);
        }
    }
}

void dropOptionalColumns(std::vector<TableRows>& tables) {
    std::erase_if(tables, [](const TableRows& table) { return table.table == "var_limit"; });
    for (TableRows& table : tables) {
        for (const std::string_view name : kOptionalColumns) {
            const auto found = std::ranges::find(table.columns, name);
            if (found == table.columns.end()) continue;
            const auto position = found - table.columns.begin();
            table.columns.erase(found);
            for (Cells& row : table.rows) row.erase(row.begin() + position);
        }
    }
}

}  // namespace stelvan::data::test
