#include "model/core/summary.h"

#include <array>

#include "gem/categories.h"
#include "gem/schema.h"

namespace stelvan::model {
namespace {

/// Identity and connection; times and files can be looked up, and the password is nobody's
/// business.
constexpr std::array kSettings = {
    "DeviceID",    "ConnectionPortType", "HSMSConnectionType", "ConnectionHost", "LocalIPAddress",
    "LocalIPPort", "RemoteIPAddress",    "RemoteIPPort",       "SerialPort",     "BaudRate"};

std::vector<Summary::Count> countsOf(const Model& model) {
    std::array<std::size_t, gem::LIMIT + 1> rows{};
    for (const PartFacts& facts : parts())
        for (const Row& row : model[facts.part].rows)
            ++rows.at(static_cast<std::size_t>(categoryOf(facts.part, model[facts.part], row)));
    std::vector<Summary::Count> counts;
    const auto categories = gem::categories();
    for (std::size_t category = 1; category < categories.size(); ++category)
        counts.push_back({std::string(categories[category].caption), rows.at(category)});
    counts.push_back({"Limits", rows.at(gem::LIMIT)});
    const std::size_t events = model[Part::EventReports].rows.size();
    const std::size_t reports = model[Part::ReportVariables].rows.size();
    counts.push_back({"Event-report links", events});
    counts.push_back({"Report-variable links", reports});
    if (const std::size_t untyped = rows.at(gem::NO_CATEGORY) - events - reports; untyped > 0)
        counts.push_back({"Variables of no category", untyped});
    return counts;
}

}  // namespace

Summary summaryOf(const Model& model) {
    Summary summary{countsOf(model), {}};
    const Table& table = model[Part::Settings];
    for (const char* name : kSettings)
        for (const Row& row : table.rows)
            if (table.text(row, gem::schema::setting::kField) == name)
                summary.settings.emplace_back(name, table.text(row, gem::schema::setting::kValue));
    return summary;
}

}  // namespace stelvan::model
