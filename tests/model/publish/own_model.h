// Small models written in the test that needs them.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "gem/schema.h"
#include "model/core/model.h"

namespace stelvan::test {

/// A model whose tables have the columns that its rows name; what a row does not name is Null.
class OwnModel {
public:
    using Cells = std::vector<std::pair<std::string, jet::Value>>;

    OwnModel& add(model::Part part, const Cells& cells) {
        model::Table& table = whole[part];
        table.present = true;
        if (table.name.empty()) table.name = std::string(model::factsOf(part).table);
        for (const auto& [column, value] : cells) {
            if (table.find(column)) continue;
            table.columns.push_back(column);
            for (model::Row& row : table.rows) row.values.emplace_back();
        }
        model::Row row;
        row.values.resize(table.columns.size());
        for (const auto& [column, value] : cells) row.values[*table.find(column)] = value;
        table.rows.push_back(std::move(row));
        return *this;
    }

    OwnModel& variable(int id, const std::string& name) {
        return add(model::Part::CustomVariables,
                   {{"var_id", id}, {"var_name", name}, {"var_type", "SV"}, {"var_format", "U4"}});
    }
    OwnModel& event(int id, const std::string& name) {
        return add(model::Part::CustomEvents, {{"evt_id", id}, {"evt_name", name}});
    }
    OwnModel& report(int id, const std::string& name) {
        return add(model::Part::Reports, {{"rpt_id", id}, {"rpt_name", name}});
    }
    OwnModel& sends(int event, int report, int place) {
        return add(model::Part::EventReports,
                   {{"evt_id", event}, {"rpt_id", report}, {"rpt_order", place}});
    }
    OwnModel& carries(int report, int variable, int place) {
        return add(model::Part::ReportVariables,
                   {{"rpt_id", report}, {"var_id", variable}, {"var_order", place}});
    }

    model::Model whole;
};

}  // namespace stelvan::test
