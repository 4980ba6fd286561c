#include "model/core/model.h"

#include <algorithm>

#include "base/text.h"
#include "gem/schema.h"
#include "jet/index/collation.h"
#include "jet/rows/value_text.h"
#include "model/core/refusal.h"
#include "model/core/values.h"

namespace stelvan::model {
namespace {

const jet::Value kNull;

/// The first table that has the columns of a limit row.
std::optional<std::string> limitTable(jet::Database& database) {
    namespace limit = gem::schema::limit;
    for (const std::string& name : database.tableNames()) {
        const jet::TableInfo& info = database.table(name).info();
        const bool holdsLimits = std::ranges::all_of(
            std::array{limit::kId, limit::kVariableId, limit::kUpperBound, limit::kLowerBound},
            [&](const char* column) { return info.findColumn(column).has_value(); });
        if (holdsLimits) return name;
    }
    return std::nullopt;
}

Refusal noModel() {
    return Refusal("none of the tables of a GEM model is there");
}

Table readTable(jet::Table& source) {
    const jet::TableInfo info = source.info();
    Table table;
    table.present = true;
    table.name = info.name;
    table.rows.reserve(info.rows);
    for (const jet::ColumnInfo& column : info.columns) table.columns.push_back(column.name);
    const jet::ColumnSet all = jet::allColumns(info);
    for (const auto rows = source.scan(all); rows->next();)
        table.rows.push_back({rows->rowId(), jet::valuesOf(*rows, all)});
    return table;
}

/// The columns by which the rows of a part are put in order, the most important first; the others
/// decide where these leave it open, so that the order does not depend on where rows are stored.
std::vector<std::size_t> sortColumns(const PartFacts& facts, const Table& table) {
    std::vector<std::size_t> columns;
    for (const std::string_view column : {facts.id, facts.order, facts.target, facts.name}) {
        if (column.empty()) continue;
        if (const auto at = table.find(column)) columns.push_back(*at);
    }
    for (std::size_t at = 0; at < table.columns.size(); ++at)
        if (std::ranges::count(columns, at) == 0) columns.push_back(at);
    return columns;
}

}  // namespace

std::optional<std::size_t> Table::find(std::string_view column) const {
    const auto found = std::ranges::find_if(
        columns, [&](const std::string& one) { return base::sameWord(one, column); });
    if (found == columns.end()) return std::nullopt;
    return static_cast<std::size_t>(found - columns.begin());
}

const jet::Value& Table::value(const Row& row, std::string_view column) const {
    const auto at = find(column);
    return at ? row.values[*at] : kNull;
}

std::string Table::text(const Row& row, std::string_view column) const {
    return jet::textOf(value(row, column));
}

std::optional<std::int64_t> Table::number(const Row& row, std::string_view column) const {
    return wholeNumber(value(row, column));
}

std::optional<std::string> tableOf(Part part, jet::Database& database) {
    if (part == Part::Limits) return limitTable(database);
    const std::string name(factsOf(part).table);
    return database.hasTable(name) ? std::optional(name) : std::nullopt;
}

Model read(jet::Database& database) {
    const auto unchanged = database.beginRead();
    Model model;
    for (const PartFacts& facts : parts())
        if (const auto name = tableOf(facts.part, database))
            model[facts.part] = readTable(database.table(*name));
    sortRows(model);
    return model;
}

Model read(const std::filesystem::path& file) {
    jet::Database database = jet::Database::open(file, jet::Access::ReadOnly);
    return read(database);
}

void requireModel(const Model& model) {
    if (std::ranges::none_of(model.tables, &Table::present)) throw noModel();
}

void requireModel(jet::Database& database) {
    const bool any = std::ranges::any_of(
        parts(), [&](const PartFacts& facts) { return tableOf(facts.part, database).has_value(); });
    if (!any) throw noModel();
}

void sortRows(Model& model) {
    for (const PartFacts& facts : parts()) {
        Table& table = model[facts.part];
        const std::vector<std::size_t> columns = sortColumns(facts, table);
        const auto before = [&](const Row& left, const Row& right) {
            for (const std::size_t column : columns) {
                const auto order = compareValues(left.values[column], right.values[column]);
                if (std::is_neq(order)) return std::is_lt(order);
            }
            return false;
        };
        if (!std::ranges::is_sorted(table.rows, before))
            std::ranges::stable_sort(table.rows, before);
    }
}

std::int16_t categoryOf(Part part, const Table& table, const Row& row) {
    const bool typed = factsOf(part).kind == gem::Kind::Variable;
    return categoryOf(part, typed ? table.text(row, gem::schema::variable::kType) : std::string());
}

std::int16_t categoryOf(Part part, std::string_view type) {
    const PartFacts& facts = factsOf(part);
    if (facts.kind == gem::Kind::None) return gem::NO_CATEGORY;
    if (facts.kind == gem::Kind::Limit) return gem::LIMIT;
    const bool typed = facts.kind == gem::Kind::Variable;
    const bool twoTables = typed || facts.kind == gem::Kind::CollectionEvent;
    const auto categories = gem::categories();
    for (std::size_t index = 1; index < categories.size(); ++index) {
        const gem::CategoryInfo& category = categories[index];
        const bool fits = category.kind == facts.kind &&
                          (!typed || jet::equalText(category.type, type)) &&
                          (!twoTables || category.custom == facts.custom);
        if (fits) return static_cast<std::int16_t>(index);
    }
    return gem::NO_CATEGORY;
}

}  // namespace stelvan::model
