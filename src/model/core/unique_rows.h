// The unique indexes of a table, and rows that would meet in one.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "jet/index/index_keys.h"
#include "jet/rows/column_facts.h"
#include "model/core/model.h"

namespace stelvan::model {

class UniqueIndex {
public:
    /// Those of a table whose order can be computed; the file judges the others itself.
    [[nodiscard]] static std::vector<UniqueIndex> of(const jet::TableInfo& table);

    [[nodiscard]] const std::string& name() const { return name_; }
    [[nodiscard]] const std::vector<std::size_t>& columns() const { return columns_; }
    [[nodiscard]] bool concerns(const std::vector<std::size_t>& changed) const;

    /// The bytes that no two rows may share; nothing for rows with a Null, which never meet.
    [[nodiscard]] std::optional<std::string> keyOf(const Row& row) const;

    using Twins = std::pair<std::size_t, std::size_t>;
    /// Positions of rows with one key, the second of each and the first.
    [[nodiscard]] std::vector<Twins> twins(const std::vector<Row>& rows) const;

private:
    UniqueIndex(const jet::TableInfo& table, const jet::IndexInfo& index);

    std::string name_;
    std::vector<std::size_t> columns_;
    jet::KeyEncoder encoder_;
};

}  // namespace stelvan::model
