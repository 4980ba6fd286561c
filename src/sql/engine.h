// SQL over one open database: SELECT, INSERT, UPDATE and DELETE as the Access engine understands
// them.
//
// A statement sees the file at one moment (a read scope, or its unit of work) and leaves nothing
// locked. Rows come in stored order (page, then slot), also among equal keys of an ORDER BY. Throws
// sql::Error for what is wrong with a statement, jet::Error for what is wrong with file or values.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "jet/database.h"

namespace stelvan::sql {

/// Rows that are rows of one table: their places, to be read when they are looked at.
struct RowPlaces {
    std::string table;
    std::vector<std::size_t> columns;  // positions in the table, in the order of the SELECT list
    std::vector<jet::RowId> places;
};

/// Computed or joined rows, with their values.
struct ComputedRows {
    std::vector<std::string> columns;
    std::vector<std::vector<jet::Value>> rows;
};

using Selection = std::variant<RowPlaces, ComputedRows>;

class Engine {
public:
    /// `database` must outlive the object.
    explicit Engine(jet::Database& database);
    ~Engine();
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    /// Runs a SELECT, or a table's name alone.
    [[nodiscard]] Selection select(std::string_view sql);
    /// Runs a statement that returns no rows, in a unit of work of its own or the open one; how
    /// many rows it changed.
    std::int64_t execute(std::string_view sql);

private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace stelvan::sql
