#include "data/builder/generated_model.h"

#include <algorithm>
#include <array>

namespace stelvan::data {
namespace {

constexpr std::size_t kFirstId = 101;

/// What a module of an imaginary tool measures or sets.
struct Quantity {
    const char* name;
    const char* type;    // var_type
    const char* format;  // var_format
    const char* low;
    const char* high;
    const char* unit;
    const char* value;
    const char* text;
};

constexpr std::array kQuantities = {
    Quantity{"Temperature", "SV", "F4", "15", "95", "degC", "22.5",
             "Temperature of the liquid, measured at the outlet"},
    Quantity{"Level", "SV", "U2", "0", "1000", "mm", "640",
             "Height of the liquid above the bottom plate"},
    Quantity{"Flow", "SV", "F4", "0", "60", "l/min", "18.4",
             "Flow of the circulation, mean of the last second"},
    Quantity{"PumpRunning", "SV", "BL", "NULL", "NULL", "NULL", "TRUE",
             "Whether the circulation pump is running"},
    Quantity{"Position", "SV", "I4", "-250000", "250000", "um", "0",
             "Position of the lift against its reference"},
    Quantity{"LotID", "DV", "A", "NULL", "NULL", "NULL", "NULL",
             "Identifier of the lot that the event speaks of"},
    Quantity{"StepCount", "DV", "U4", "0", "100000", "NULL", "12",
             "Process steps finished for this lot"},
    Quantity{"Setpoint", "EC", "F8", "15", "95", "degC", "65",
             "Temperature that the control holds"},
    Quantity{"DrainTime", "EC", "U2", "1", "3600", "s", "90",
             "Longest time that draining may take"},
    Quantity{"StatusBits", "SV", "B", "0", "255", "NULL", "5",
             "Bits of the module: 1 ready, 4 door closed"},
};

std::string moduleName(std::size_t number) {
    return "Module" + std::to_string(number);
}

Cells variableRow(std::size_t index) {
    const Quantity& what = kQuantities[index % kQuantities.size()];
    const std::string module = moduleName(index / kQuantities.size() + 1);
    return {std::to_string(kFirstId + index),
            module + what.name,
            what.type,
            module,
            std::string(what.text) + ", " + module + ".",
            what.format,
            what.low,
            what.high,
            what.unit,
            what.value,
            what.value,
            "0",
            "0",
            "0",
            "0",
            "0",
            "0",
            "1"};
}

TableRows generateEvents(std::size_t count) {
    TableRows events{
        "secs_cusevent", {"evt_id", "evt_name", "evt_group", "evt_text", "evt_enable"}, {}};
    for (std::size_t i = 0; i < count; ++i) {
        const std::string module = moduleName(i / 2 + 1);
        const char* what = i % 2 == 0 ? "AlarmSet" : "AlarmCleared";
        events.rows.push_back(
            {std::to_string(kFirstId + i), module + what, module,
             "An alarm of " + module + (i % 2 == 0 ? " was set." : " was cleared."), "1"});
    }
    return events;
}

/// Alarms use a pair of events in turn, or none where the model has fewer than two events.
TableRows generateAlarms(std::size_t count, const TableRows& events) {
    TableRows alarms{"secs_alarm",
                     {"alm_id", "alm_name", "alm_group", "alm_text", "alm_enable", "alm_set_ceid",
                      "alm_set_cename", "alm_clr_ceid", "alm_clr_cename"},
                     {}};
    const std::size_t pairs = events.rows.size() / 2;
    for (std::size_t i = 0; i < count; ++i) {
        const std::string module = moduleName(i + 1);
        Cells row = {std::to_string(kFirstId + i), module + "TemperatureHigh", module,
                     "The liquid of " + module + " is too hot.", "1"};
        for (std::size_t side = 0; side < 2; ++side) {
            const auto* event = pairs == 0 ? nullptr : &events.rows[2 * (i % pairs) + side];
            row.push_back(event == nullptr ? Cell("0") : (*event)[0]);
            row.push_back(event == nullptr ? Cell("NULL") : (*event)[1]);
        }
        alarms.rows.push_back(std::move(row));
    }
    return alarms;
}

TableRows generateReports(std::size_t count) {
    TableRows reports{"secs_report", {"rpt_id", "rpt_name", "rpt_desc", "rpt_default"}, {}};
    for (std::size_t i = 0; i < count; ++i) {
        const std::string module = moduleName(i + 1);
        reports.rows.push_back({std::to_string(kFirstId + i), module + "Report",
                                "What " + module + " tells the host.", "0"});
    }
    return reports;
}

/// `each` links for every one of `owners` to `targets` in turn, numbered 1 to `each`.
TableRows generateLinks(const char* table, const char* owner, const char* target, const char* order,
                        std::size_t owners, std::size_t targets, std::size_t each) {
    TableRows links{table, {owner, target, order}, {}};
    const std::size_t perOwner = std::min(each, targets);
    for (std::size_t i = 0; i < owners; ++i) {
        for (std::size_t k = 0; k < perOwner; ++k) {
            links.rows.push_back({std::to_string(kFirstId + i),
                                  std::to_string(kFirstId + (i * perOwner + k) % targets),
                                  std::to_string(k + 1)});
        }
    }
    return links;
}

}  // namespace

TableRows generateVariables(std::size_t first, std::size_t count) {
    TableRows variables{"secs_cusvar",
                        {"var_id", "var_name", "var_type", "var_group", "var_desc", "var_format",
                         "var_min", "var_max", "var_unit", "var_defaultval", "var_val",
                         "var_parentkey", "var_accessid", "var_allowduplicates",
                         "var_orderby_accessid", "var_linkchild", "var_loadchild", "var_canadd"},
                        {}};
    variables.rows.reserve(count);
    for (std::size_t i = first; i < first + count; ++i) variables.rows.push_back(variableRow(i));
    return variables;
}

std::vector<TableRows> generateModel(const ModelSize& size) {
    std::vector<TableRows> tables;
    tables.push_back(generateVariables(0, size.variables));
    tables.push_back(generateEvents(size.events));
    tables.push_back(generateAlarms(size.alarms, tables.back()));
    tables.push_back(generateReports(size.reports));
    tables.push_back(generateLinks("secs_rpt_var", "rpt_id", "var_id", "var_order", size.reports,
                                   size.variables, size.variablesPerReport));
    tables.push_back(generateLinks("secs_def_evt_rpt", "evt_id", "rpt_id", "rpt_order", size.events,
                                   size.reports, size.reportsPerEvent));
    return tables;
}

}  // namespace stelvan::data
