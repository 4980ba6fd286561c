#include "tests/readers/expected_messages.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <regex>
#include <set>

#include "jet/database.h"
#include "jet/rows/row_reader.h"
#include "jet/rows/value_text.h"

namespace stelvan::test {
namespace {

using Row = std::map<std::string, std::string>;
using Rows = std::vector<Row>;

long number(const Row& row, const std::string& column) {
    return std::atol(row.at(column).c_str());
}

bool flag(const Row& row, const std::string& column) {
    const std::string& text = row.at(column);
    return text == "True" || (text != "False" && std::atol(text.c_str()) != 0);
}

std::string lower(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return text;
}

/// In the order of one column, then another.
Rows rowsOf(jet::Database& database, const char* name, const std::string& first,
            const std::string& then = {}) {
    jet::Table& table = database.table(name);
    const jet::TableInfo info = table.info();
    const jet::ColumnSet all = jet::allColumns(info);
    Rows rows;
    for (const auto cursor = table.scan(all); cursor->next();) {
        Row row;
        for (const std::size_t column : all)
            row[lower(info.columns[column].name)] =
                jet::textOf(jet::toValue(cursor->value(column)));
        rows.push_back(row);
    }
    std::ranges::stable_sort(rows, {}, [&](const Row& row) {
        return std::pair(number(row, first), then.empty() ? 0 : number(row, then));
    });
    return rows;
}

std::string hexOf(const std::string& text) {
    std::string digits;
    for (const char c : text) {
        char two[3];
        std::snprintf(two, sizeof two, "%02x", static_cast<unsigned char>(c));
        digits += two;
    }
    return digits;
}

std::string fraction(const char* form, double value) {
    char text[64];
    std::snprintf(text, sizeof text, form, value);
    return text;
}

bool isWhole(const std::string& text) {
    return std::regex_match(text, std::regex("-?[0-9]+"));
}

/// An integer that its format holds, by the rules of the wire; whole numbers beyond a double's 53
/// bits are compared as that reader gives them.
std::string whole(const std::string& format, const std::string& text) {
    if (!isWhole(text)) return "";
    const bool isSigned = format[0] == 'I';
    const int bits = format == "B" ? 8 : 8 * (format[1] - '0');
    const long double value = std::strtold(text.c_str(), nullptr);
    const long double lowest = isSigned ? -std::exp2l(bits - 1) : 0;
    const long double highest = std::exp2l(isSigned ? bits - 1 : bits) - 1;
    if (value < lowest || value > highest) return "";
    if (format == "B") return hexOf(std::string(1, static_cast<char>(value)));
    return fraction("%.17g", std::strtod(text.c_str(), nullptr));
}

class Expectation {
public:
    explicit Expectation(jet::Database& database)
        : reports_(rowsOf(database, "secs_report", "rpt_id")),
          alarms_(rowsOf(database, "secs_alarm", "alm_id")),
          events_(rowsOf(database, "secs_gemevent", "evt_id")) {
        for (const char* table : {"secs_gemvar", "secs_cusvar"})
            for (const Row& row : rowsOf(database, table, "var_id"))
                variables_.emplace(number(row, "var_id"), row);
        for (const Row& row : rowsOf(database, "secs_cusvar", "var_accessid"))
            if (number(row, "var_parentkey") != 0)
                children_[number(row, "var_parentkey")].push_back(number(row, "var_id"));
        std::set<long> known;
        for (const Row& row : events_) known.insert(number(row, "evt_id"));
        for (const Row& row : rowsOf(database, "secs_cusevent", "evt_id"))
            if (known.insert(number(row, "evt_id")).second) events_.push_back(row);
        std::ranges::stable_sort(events_, {}, [](const Row& row) { return number(row, "evt_id"); });
        for (const Row& row : rowsOf(database, "secs_rpt_var", "var_order", "var_id"))
            if (variables_.contains(number(row, "var_id")))
                carried_[number(row, "rpt_id")].push_back(number(row, "var_id"));
        for (const Row& row : rowsOf(database, "secs_def_evt_rpt", "rpt_order", "rpt_id"))
            if (carried_.contains(number(row, "rpt_id")) && isReport(number(row, "rpt_id")))
                linked_[number(row, "evt_id")].push_back(number(row, "rpt_id"));
    }

    std::vector<std::string> messages() {
        std::string defined;
        for (const Row& row : reports_) {
            const long id = number(row, "rpt_id");
            if (carried_.contains(id)) defined += "L(" + idText(id) + idList(carried_[id]) + ")";
        }
        std::string links;
        std::string enabled;
        for (const Row& row : events_) {
            const long id = number(row, "evt_id");
            if (linked_.contains(id)) links += "L(" + idText(id) + idList(linked_[id]) + ")";
            if (flag(row, "evt_enable")) enabled += idText(id);
        }
        std::vector<std::string> all;
        if (!defined.empty()) all.push_back("S2F33 W L(U4:1 L(" + defined + "))");
        if (!links.empty()) all.push_back("S2F35 W L(U4:1 L(" + links + "))");
        if (!enabled.empty()) all.push_back("S2F37 W L(BOOLEAN:true L(" + enabled + "))");
        for (const Row& row : alarms_)
            if (flag(row, "alm_enable"))
                all.push_back("S5F3 W L(B:80 " + idText(number(row, "alm_id")) + ")");
        for (const Row& row : events_) all.push_back(sample(number(row, "evt_id")));
        return all;
    }

private:
    bool isReport(long id) const {
        return std::ranges::any_of(reports_,
                                   [&](const Row& row) { return number(row, "rpt_id") == id; });
    }
    static std::string idText(long id) { return "U4:" + std::to_string(id) + " "; }
    static std::string idList(const std::vector<long>& ids) {
        std::string text;
        for (const long id : ids) text += idText(id);
        return "L(" + text + ")";
    }

    std::string sample(long event) {
        std::string reports;
        for (const long report : linked_[event]) {
            std::string values;
            for (const long variable : carried_[report]) values += item(variable, {}) + " ";
            reports += "L(" + idText(report) + "L(" + values + "))";
        }
        return "S6F11 W L(U4:1 " + idText(event) + "L(" + reports + "))";
    }

    std::string item(long id, std::set<long> within) {
        const Row& row = variables_.at(id);
        const std::string& format = row.at("var_format");
        const std::string& stored = row.at("var_val");
        const std::string text = lower(stored) == "null" ? "" : stored;
        if (format == "A") return "A:" + hexOf(text);
        if (format == "BL")
            return "BOOLEAN:" +
                   (lower(text) == "true" || lower(text) == "false" ? lower(text) : "");
        if (format == "F4" || format == "F8") {
            char* end = nullptr;
            const double value = std::strtod(text.c_str(), &end);
            const bool fits = !text.empty() && *end == '\0';
            if (format == "F4")
                return "F4:" + (fits ? fraction("%.9g", std::strtof(text.c_str(), nullptr)) : "");
            return "F8:" + (fits ? fraction("%.17g", value) : "");
        }
        if (format != "L") return format + ":" + whole(format, text);
        within.insert(id);
        std::string items;
        for (const long child : children_[id])
            if (!within.contains(child)) items += item(child, within) + " ";
        return "L(" + items + ")";
    }

    Rows reports_, alarms_, events_;
    std::map<long, Row> variables_;
    std::map<long, std::vector<long>> children_, carried_, linked_;
};

}  // namespace

std::vector<std::string> expectedMessages(const std::filesystem::path& file) {
    jet::Database database = jet::Database::open(file, jet::Access::ReadOnly);
    return Expectation(database).messages();
}

}  // namespace stelvan::test
