#include "model/core/unique_rows.h"

#include <algorithm>

namespace stelvan::model {

UniqueIndex::UniqueIndex(const jet::TableInfo& table, const jet::IndexInfo& index)
    : name_(index.name), encoder_(table.columns, index.columns) {
    for (const jet::IndexColumn& part : index.columns) columns_.push_back(part.column);
}

std::vector<UniqueIndex> UniqueIndex::of(const jet::TableInfo& table) {
    std::vector<UniqueIndex> found;
    for (const jet::IndexInfo& index : table.indexes)
        if (index.unique && jet::KeyEncoder::canEncode(table.columns, index.columns))
            found.push_back(UniqueIndex(table, index));
    return found;
}

bool UniqueIndex::concerns(const std::vector<std::size_t>& changed) const {
    return std::ranges::any_of(
        columns_, [&](std::size_t column) { return std::ranges::count(changed, column) > 0; });
}

std::optional<std::string> UniqueIndex::keyOf(const Row& row) const {
    std::vector<jet::ValueView> values;
    for (const std::size_t column : columns_) values.push_back(jet::toView(row.values[column]));
    jet::IndexKey key;
    encoder_.encode(values, key);
    if (key.anyNull) return std::nullopt;
    return std::string(key.bytes.begin(), key.bytes.end());
}

std::vector<UniqueIndex::Twins> UniqueIndex::twins(const std::vector<Row>& rows) const {
    std::vector<std::pair<std::string, std::size_t>> keys;
    keys.reserve(rows.size());
    for (std::size_t at = 0; at < rows.size(); ++at)
        if (auto key = keyOf(rows[at])) keys.emplace_back(std::move(*key), at);
    std::ranges::sort(keys);
    std::vector<Twins> found;
    for (std::size_t at = 1; at < keys.size(); ++at)
        if (keys[at].first == keys[at - 1].first)
            found.emplace_back(keys[at].second, keys[at - 1].second);
    return found;
}

}  // namespace stelvan::model
