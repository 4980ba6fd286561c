// A table of a test's own: a number, two texts of which one is indexed, and a date.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "sql/engine.h"
#include "tests/support/scratch_dir.h"

namespace stelvan::sql {

class OwnTable {
public:
    OwnTable() : database_(jet::Database::create(scratch_.path() / "gem.mdb", {42000.5})) {
        jet::TableSpec spec{"t", std::vector<jet::ColumnInfo>(4), std::vector<jet::IndexInfo>(1)};
        const std::array names{"id", "a", "b", "made"};
        const std::array types{jet::ColumnType::Long, jet::ColumnType::Text, jet::ColumnType::Memo,
                               jet::ColumnType::DateTime};
        for (std::size_t at = 0; at < names.size(); ++at) {
            spec.columns[at].name = names[at];
            spec.columns[at].type = types[at];
        }
        spec.columns[1].length = 100;
        spec.indexes[0].name = "a";
        spec.indexes[0].columns = {{1, true}};
        database_.createTable(spec);
        engine_.emplace(database_);
    }
    void execute(const std::string& sql) { (void)engine_->execute(sql); }
    RowPlaces places(const std::string& sql) { return std::get<RowPlaces>(engine_->select(sql)); }
    /// How many of the rows that were chosen would still be.
    std::size_t stillChosen(const std::string& sql, const RowPlaces& chosen) {
        return engine_->stillChosen(sql, chosen.places).size();
    }
    /// The rows that the condition lets through, by their numbers.
    std::vector<int> where(const std::string& condition) {
        std::vector<int> found;
        const Selection selection =
            engine_->select("SELECT id FROM t WHERE " + condition, Take::Values);
        for (const auto& row : std::get<RowPlaces>(selection).rows)
            found.push_back(std::get<std::int32_t>(row.front()));
        return found;
    }
    std::vector<jet::Value> values(const std::string& sql) {
        return std::get<ComputedRows>(engine_->select(sql)).rows.front();
    }

private:
    test::ScratchDir scratch_;
    jet::Database database_;
    std::optional<Engine> engine_;
};

}  // namespace stelvan::sql
