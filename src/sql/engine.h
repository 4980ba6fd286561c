// SQL over one open database: SELECT, INSERT, UPDATE and DELETE as the Access engine understands
// them.
//
// A statement sees the file at one moment (a read scope, or its unit of work) and leaves nothing
// locked. One that takes so long that writers would lose their patience goes on over a copy. Rows
// come in stored order (page, then slot), also among equal keys of an ORDER BY. Throws sql::Error
// for what is wrong with a statement, jet::Error for what is wrong with file or values.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "jet/database.h"

namespace stelvan::sql {

/// Whether the rows of one table come with their values, or are read when they are looked at.
enum class Take { Values, Places };

/// Rows that are rows of one table: their places.
struct RowPlaces {
    std::string table;
    std::vector<std::size_t> columns;  // positions in the table, in the order of the SELECT list
    std::uint64_t moment = 0;          // at which they were chosen (jet::Database::moment)
    std::vector<jet::RowId> places;
    std::vector<std::vector<jet::Value>> rows;  // one for each place, where they were asked for
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
    [[nodiscard]] Selection select(std::string_view sql, Take take = Take::Places);
    /// Those of `places` whose rows the SELECT that chose them would choose now.
    [[nodiscard]] std::vector<jet::RowId> stillChosen(std::string_view sql,
                                                      std::span<const jet::RowId> places);
    /// Runs a statement that returns no rows, in a unit of work of its own or the open one; how
    /// many rows it changed.
    std::int64_t execute(std::string_view sql);

private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace stelvan::sql
