// Models written out in a test, and changes to them.
#pragma once

#include <algorithm>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "model/core/model.h"
#include "model/core/values.h"

namespace stelvan::test {

using Cells = std::vector<std::pair<std::string, jet::Value>>;

/// Adds a row; columns that the table does not have yet are added with Nulls.
inline model::Row& addRow(model::Model& model, model::Part part, const Cells& cells) {
    model::Table& table = model[part];
    table.present = true;
    if (table.name.empty()) table.name = model::factsOf(part).table;
    for (const auto& [column, value] : cells) {
        if (table.find(column)) continue;
        table.columns.push_back(column);
        for (model::Row& row : table.rows) row.values.emplace_back();
    }
    model::Row row;
    row.values.resize(table.columns.size());
    for (const auto& [column, value] : cells) row.values[*table.find(column)] = value;
    table.rows.push_back(std::move(row));
    model::sortRows(model);
    for (model::Row& one : table.rows) {
        const bool same = std::ranges::all_of(cells, [&](const auto& cell) {
            return model::sameValue(table.value(one, cell.first), cell.second);
        });
        if (same) return one;
    }
    throw std::logic_error("the row that was added is gone");
}

inline model::Row& rowOf(model::Model& model, model::Part part, const jet::Value& id) {
    model::Table& table = model[part];
    for (model::Row& row : table.rows)
        if (model::sameValue(table.value(row, model::factsOf(part).id), id)) return row;
    throw std::logic_error("no such item");
}

inline void set(model::Model& model, model::Part part, const jet::Value& id,
                const std::string& column, jet::Value value) {
    rowOf(model, part, id).values.at(model[part].find(column).value()) = std::move(value);
    model::sortRows(model);
}

inline void erase(model::Model& model, model::Part part, const jet::Value& id) {
    std::erase_if(model[part].rows, [&](const model::Row& row) {
        return model::sameValue(model[part].value(row, model::factsOf(part).id), id);
    });
}

/// Gives an owner a list of links in place of the one that it had; places from 1.
inline void setLinks(model::Model& model, model::Part part, int owner,
                     std::initializer_list<int> targets) {
    const model::PartFacts& facts = model::factsOf(part);
    erase(model, part, owner);
    int place = 0;
    for (const int target : targets)
        addRow(model, part,
               {{std::string(facts.id), owner},
                {std::string(facts.target), target},
                {std::string(facts.order), ++place}});
}

inline jet::Value text(std::string value) {
    return {std::move(value)};
}

}  // namespace stelvan::test
