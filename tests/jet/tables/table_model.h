// A table beside a plain map of its rows: random changes are made to both, and both must stay
// equal.
#pragma once

#include <map>
#include <random>
#include <string>
#include <vector>

#include "jet/database.h"

namespace stelvan::test {

using Random = std::mt19937;

/// A value that a column can hold; now and then Null, now and then of an awkward size.
jet::Value randomValue(const jet::ColumnInfo& column, Random& random);

std::size_t below(Random& random, std::size_t limit);

class TableModel {
public:
    using Row = std::vector<jet::Value>;
    using Rows = std::map<std::int64_t, Row>;

    explicit TableModel(jet::Table& table) : table_(&table) { rows_ = read(); }

    /// One random insert, update or erase. What the table refuses must be refusable, and what it
    /// takes allowed.
    void change(Random& random);
    /// Compares all rows, the count, and what every index gives.
    void compare();

    [[nodiscard]] const Rows& rows() const { return rows_; }
    void restore(Rows rows) { rows_ = std::move(rows); }
    void attach(jet::Table& table) { table_ = &table; }

private:
    [[nodiscard]] Rows read();
    [[nodiscard]] Row readRow(jet::Cursor& cursor) const;
    void insert(Random& random);
    void update(Random& random);
    void erase(Random& random);
    void expectRefusal(const jet::Error& error, const Row& wanted, std::int64_t self);
    [[nodiscard]] bool duplicates(const Row& wanted, std::int64_t self);
    [[nodiscard]] bool nullInKey(const Row& wanted);
    void compareIndex(std::size_t index);

    jet::Table* table_;
    Rows rows_;
};

}  // namespace stelvan::test
