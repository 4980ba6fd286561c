#include "jet/tables/table_summary.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <type_traits>
#include <variant>

#include "jet/index/collation.h"
#include "jet/index/index_keys.h"
#include "jet/rows/row_reader.h"
#include "jet/tables/definition_format.h"
#include "jet/tables/table_scan.h"

namespace stelvan::jet {

namespace {

constexpr std::size_t kPagesBetweenReleases = 256;

/// Whether values that equal this one have the same key, and greater ones a greater key: not so for
/// what is no number, for the two zeros, for decimals and bytes, and for texts of more than plain
/// letters (some files hold them under another key than ours).
bool keyTellsOrder(const Value& value) {
    return std::visit(
        []<typename Stored>(const Stored& stored) {
            if constexpr (std::is_floating_point_v<Stored>) {
                return !std::isnan(stored) && std::fpclassify(stored) != FP_ZERO;
            } else if constexpr (std::is_same_v<Stored, DateTime>) {
                return !std::isnan(stored.days) && std::fpclassify(stored.days) != FP_ZERO;
            } else if constexpr (std::is_same_v<Stored, std::string>) {
                return hasPlainKey(stored);
            } else {
                return !std::is_same_v<Stored, Numeric> && !std::is_same_v<Stored, Blob>;
            }
        },
        value);
}

}  // namespace

std::uint64_t TableSummary::rows(const std::function<void()>& release) const {
    const auto indexed = entries(release);
    const std::uint32_t noted = u32At(file_.read(table_->page), definition::kRows);
    return indexed && *indexed == noted ? *indexed : countedRows(release);
}

// The entries of an index that leaves no row out; of several the one with the shortest keys would
// do best, but sizes are not known beforehand: the first is the primary one as a rule.
std::optional<std::uint64_t> TableSummary::entries(const std::function<void()>& release) const {
    const auto whole = std::ranges::find_if(
        table_->trees, [](const RealIndexDef& tree) { return !tree.ignoreNulls(); });
    if (whole == table_->trees.end()) return std::nullopt;
    std::size_t leaves = 0;
    return treeOf(static_cast<std::size_t>(whole - table_->trees.begin())).countEntries([&] {
        if (++leaves % kPagesBetweenReleases == 0) release();
    });
}

std::uint64_t TableSummary::countedRows(const std::function<void()>& release) const {
    std::uint64_t count = 0;
    TableScan scan(file_, *table_);
    const auto afterPage = [&](std::size_t pages) {
        if (pages > 0 && pages % kPagesBetweenReleases == 0) release();
    };
    while (scan.next(afterPage)) ++count;
    return count;
}

std::optional<Value> TableSummary::valueIn(RowId row, std::size_t column) const {
    const auto found = locateRow(file_, *table_, row);
    if (!found) return std::nullopt;
    RowReader reader(file_, table_, {column});
    reader.set(found->bytes, found->target.page);
    return toValue(reader.value(column));
}

std::optional<Value> TableSummary::extreme(const IndexInfo& index, Extreme which) const {
    if (!KeyEncoder::canEncode(table_->info.columns, index.columns)) return std::nullopt;
    const KeyEncoder encoder(table_->info.columns, index.columns);
    const IndexColumn& part = index.columns.front();
    const IndexTree tree = treeOf(index.tree);
    const std::array<std::uint8_t, 1> flag{encoder.valueFlag(0)};
    const std::array<std::uint8_t, 1> behind{static_cast<std::uint8_t>(flag[0] + 1)};
    TreeCursor first = tree.withPrefix(flag);
    if (!first.next()) return std::nullopt;
    RowId row = first.rowId();
    if ((which == Extreme::Greatest) == part.ascending) {
        const auto last = tree.lastBelow(behind);
        if (!last) return std::nullopt;
        row = rowOfEntry(*last);
    }

    const auto found = valueIn(row, part.column);
    if (!found || isNull(*found) || !keyTellsOrder(*found)) return std::nullopt;
    // All rows with this value, which must include the one that led here.
    IndexKey key;
    encoder.encode(std::array{toView(*found)}, key);
    TreeCursor equal = tree.withPrefix(key.bytes);
    RowId earliest = row;
    bool included = false;
    while (equal.next()) {
        included = included || equal.rowId() == row;
        earliest = std::min(earliest, equal.rowId());
        if (included && !isText(table_->info.columns[part.column].type)) break;
    }
    if (!included) return std::nullopt;
    return earliest == row ? found : valueIn(earliest, part.column);
}

}  // namespace stelvan::jet
