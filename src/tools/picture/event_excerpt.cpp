#include "tools/picture/event_excerpt.h"

#include <algorithm>
#include <map>
#include <set>

#include "gem/schema.h"
#include "model/core/values.h"
#include "model/publish/event_picture.h"

namespace stelvan::tools {
namespace {

namespace event_report = gem::schema::event_report;
namespace report_variable = gem::schema::report_variable;
using model::Part;
using Ids = std::set<std::int64_t>;

jet::Value valueOf(std::int64_t number) {
    return static_cast<std::int32_t>(number);
}

/// The index that begins with a column.
std::optional<std::size_t> indexOn(const jet::TableInfo& info, std::size_t column) {
    const auto found = std::ranges::find_if(info.indexes, [&](const jet::IndexInfo& index) {
        return !index.columns.empty() && index.columns.front().column == column;
    });
    if (found == info.indexes.end()) return std::nullopt;
    return static_cast<std::size_t>(found - info.indexes.begin());
}

class Excerpt {
public:
    explicit Excerpt(jet::Database& database) : database_(database) {}

    /// Rows of a part whose key column holds one of `keys`, with these columns alone.
    void read(Part part, std::string_view key, const Ids& keys,
              const std::vector<std::string_view>& columns) {
        model::Table& table = model[part];
        table.present = true;
        table.name = std::string(model::factsOf(part).table);
        const auto name = model::tableOf(part, database_);
        if (!name) return;
        jet::Table& source = database_.table(*name);
        const jet::TableInfo info = source.info();
        jet::ColumnSet wanted;
        for (const std::string_view column : columns)
            if (const auto at = info.findColumn(column)) {
                wanted.push_back(*at);
                table.columns.push_back(info.columns[*at].name);
            }
        const auto keyColumn = info.findColumn(key);
        if (!keyColumn) return;
        if (const auto index = indexOn(info, *keyColumn)) {
            for (const std::int64_t one : keys) {
                const std::vector<jet::Value> sought = {valueOf(one)};
                take(*source.find(*index, sought, wanted), wanted, table);
            }
        } else {
            const auto rows = source.scan(wanted);
            while (rows->next()) {
                const auto id = model::wholeNumber(jet::toValue(rows->value(*keyColumn)));
                if (id && keys.contains(*id)) add(*rows, wanted, table);
            }
        }
    }

    model::Model model;

private:
    static void add(jet::Cursor& row, const jet::ColumnSet& wanted, model::Table& table) {
        table.rows.push_back({row.rowId(), jet::valuesOf(row, wanted)});
    }
    static void take(jet::Cursor& rows, const jet::ColumnSet& wanted, model::Table& table) {
        while (rows.next()) add(rows, wanted, table);
    }

    jet::Database& database_;
};

void addEvent(const ShownEvent& event, model::Model& model) {
    model::Table& table = model[event.part];
    table.present = true;
    table.columns = {gem::schema::event::kId, gem::schema::event::kName};
    table.rows.push_back({{}, {valueOf(event.id), event.name}});
}

void addLinks(const ShownEvent& event, Excerpt& excerpt) {
    const std::vector<std::string_view> columns = {event_report::kEventId, event_report::kReportId,
                                                   event_report::kOrder};
    if (!event.reports)
        return excerpt.read(Part::EventReports, event_report::kEventId, {event.id}, columns);
    model::Table& links = excerpt.model[Part::EventReports];
    links.present = true;
    links.columns.assign(columns.begin(), columns.end());
    std::int64_t place = 0;
    for (const std::int64_t report : *event.reports)
        links.rows.push_back({{}, {valueOf(event.id), valueOf(report), valueOf(++place)}});
}

/// What the links of a part lead to; of each owner the first `most`.
Ids targetsOf(Part part, const model::Model& model, std::size_t most) {
    const model::PartFacts& facts = model::factsOf(part);
    std::map<std::int64_t, std::size_t> taken;
    Ids targets;
    for (const model::Row& row : model[part].rows) {
        const auto owner = model[part].number(row, facts.id);
        const auto target = model[part].number(row, facts.target);
        if (owner && target && taken[*owner]++ < most) targets.insert(*target);
    }
    return targets;
}

}  // namespace

model::Model excerptFor(const ShownEvent& event, jet::Database& database) {
    constexpr std::size_t kAll = static_cast<std::size_t>(-1);
    const auto unchanged = database.beginRead();
    Excerpt excerpt(database);
    addEvent(event, excerpt.model);
    addLinks(event, excerpt);
    const Ids reports = targetsOf(Part::EventReports, excerpt.model, kAll);
    namespace report = gem::schema::report;
    excerpt.read(Part::Reports, report::kId, reports, {report::kId, report::kName});
    excerpt.read(
        Part::ReportVariables, report_variable::kReportId, reports,
        {report_variable::kReportId, report_variable::kVariableId, report_variable::kOrder});
    model::sortRows(excerpt.model);
    const Ids shown = targetsOf(Part::ReportVariables, excerpt.model, model::kMostVariables);
    namespace variable = gem::schema::variable;
    for (const Part part : {Part::StandardVariables, Part::CustomVariables})
        excerpt.read(part, variable::kId, shown, {variable::kId, variable::kName, variable::kType});
    model::sortRows(excerpt.model);
    return std::move(excerpt.model);
}

}  // namespace stelvan::tools
