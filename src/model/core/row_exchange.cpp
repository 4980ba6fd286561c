#include "model/core/row_exchange.h"

#include <algorithm>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <unordered_set>
#include <utility>

#include "model/core/refusal.h"
#include "model/core/values.h"

namespace stelvan::model {
namespace {

using jet::ColumnType;

/// Values that a column has in no row, before or after.
class SpareValues {
public:
    SpareValues(const jet::ColumnInfo& column, std::size_t position, const Table& before,
                const Table& after)
        : column_(&column) {
        for (const Table* table : {&before, &after})
            for (const Row& row : table->rows) note(row.values[position]);
    }

    [[nodiscard]] static bool possible(const jet::ColumnInfo& column) {
        switch (column.type) {
            case ColumnType::Text:
            case ColumnType::Memo:
            case ColumnType::Byte:
            case ColumnType::Integer:
            case ColumnType::Long:
            case ColumnType::Single:
            case ColumnType::Double:
            case ColumnType::Money:
                return true;
            default:
                return false;
        }
    }

    [[nodiscard]] std::optional<jet::Value> next() {
        const bool isText = jet::isText(column_->type);
        const std::int64_t last = highest();
        for (; number_ <= last; ++number_) {
            if (isText ? texts_.contains(textNow()) : numbers_.contains(number_)) continue;
            const std::string text = textNow();
            const auto whole = static_cast<std::int32_t>(number_++);
            return isText ? jet::Value(text) : jet::Value(whole);
        }
        return std::nullopt;
    }

private:
    void note(const jet::Value& value) {
        if (const auto number = wholeNumber(value)) numbers_.insert(*number);
        if (const auto* text = std::get_if<std::string>(&value)) texts_.insert(*text);
    }
    [[nodiscard]] std::string textNow() const { return "~" + std::to_string(number_); }
    [[nodiscard]] std::int64_t highest() const {
        if (column_->type == ColumnType::Byte) return std::numeric_limits<std::uint8_t>::max();
        if (column_->type == ColumnType::Integer) return std::numeric_limits<std::int16_t>::max();
        constexpr std::int64_t kExactInSingle = 1 << 24;
        if (column_->type == ColumnType::Single) return kExactInSingle;
        return std::numeric_limits<std::int32_t>::max();
    }

    const jet::ColumnInfo* column_;
    std::int64_t number_ = 1;
    std::unordered_set<std::int64_t> numbers_;
    std::unordered_set<std::string> texts_;
};

/// Changes (by position) whose row has a key that another change wants.
std::vector<std::size_t> inTheWay(const UniqueIndex& index, const Table& before, const Table& after,
                                  std::span<const WritePlan::Change> changes) {
    std::unordered_set<std::string> wanted;
    std::vector<std::pair<std::size_t, std::string>> left;
    for (std::size_t at = 0; at < changes.size(); ++at) {
        if (!index.concerns(changes[at].columns)) continue;
        auto oldKey = index.keyOf(before.rows[changes[at].before]);
        auto newKey = index.keyOf(after.rows[changes[at].after]);
        if (oldKey == newKey) continue;
        if (newKey) wanted.insert(std::move(*newKey));
        if (oldKey) left.emplace_back(at, std::move(*oldKey));
    }
    std::vector<std::size_t> found;
    for (const auto& [at, key] : left)
        if (wanted.contains(key)) found.push_back(at);
    return found;
}

}  // namespace

std::vector<ParkedRow> parkedRows(const jet::TableInfo& info, const Table& before,
                                  const Table& after, std::span<const WritePlan::Change> changes) {
    std::map<std::size_t, ParkedRow> parked;  // by change
    for (const UniqueIndex& index : UniqueIndex::of(info)) {
        const std::vector<std::size_t> rows = inTheWay(index, before, after, changes);
        if (rows.empty()) continue;
        const auto column = std::ranges::find_if(index.columns(), [&](std::size_t at) {
            return SpareValues::possible(info.columns[at]);
        });
        const std::string refusal = info.name + ": rows cannot exchange what stands in the index " +
                                    index.name() + "; give one of them another value first";
        if (column == index.columns().end()) throw Refusal(refusal);
        SpareValues spare(info.columns[*column], *column, before, after);
        for (const std::size_t at : rows) {
            auto value = spare.next();
            if (!value) throw Refusal(refusal);
            ParkedRow& row = parked[at];
            row.before = changes[at].before;
            row.values.emplace_back(*column, std::move(*value));
        }
    }
    std::vector<ParkedRow> rows;
    for (auto& [at, row] : parked) rows.push_back(std::move(row));
    return rows;
}

}  // namespace stelvan::model
