#include "browser/category_table.h"

#include "base/run_time_error.h"

namespace stelvan::browser {
namespace {

constexpr std::array<CategoryInfo, kCategories> kRows = {{
    {"GEMEVT", CategoryKind::CollectionEvent, "GEM Collection Events",
     "select * from secs_gemevent"},
    {"GEMVDV", CategoryKind::Variable, "GEM Data Variables",
     "select * from secs_gemvar where var_type = 'DV'"},
    {"GEMSDV", CategoryKind::Variable, "GEM Status Variables",
     "select * from secs_gemvar where var_type = 'SV'"},
    {"GEMVEC", CategoryKind::Variable, "GEM Equipment Constants",
     "select * from secs_gemvar where var_type = 'EC'"},
    {"CSTALM", CategoryKind::Alarm, "Custom Alarms", "select * from secs_alarm"},
    {"CSTEVT", CategoryKind::CollectionEvent, "Custom Collection Events",
     "select * from secs_cusevent"},
    {"CSTVDV", CategoryKind::Variable, "Custom Data Variables",
     "select * from secs_cusvar where var_type = 'DV'"},
    {"CSTVSV", CategoryKind::Variable, "Custom Status Variables",
     "select * from secs_cusvar where var_type = 'SV'"},
    {"CSTVEC", CategoryKind::Variable, "Custom Equipment Constants",
     "select * from secs_cusvar where var_type = 'EC'"},
    {"GEMSTT", CategoryKind::ProtocolSettings, "Protocol Settings", "select * from secs_setting"},
    {"CSTRPT", CategoryKind::Report, "Custom Reports", "select * from secs_report"},
}};

}  // namespace

void CategoryTable::lInitPropInfo() {
    for (std::size_t row = 0; row < kRows.size(); ++row) rows_[row + 1] = kRows[row];
}

const CategoryInfo& CategoryTable::at(std::int16_t index) const {
    if (index < 0 || index > kCategories) throw base::subscriptOutOfRange();
    return rows_[static_cast<std::size_t>(index)];
}

std::int16_t CategoryTable::indexOf(std::string_view key) const {
    for (std::int16_t index = 1; index <= kCategories; ++index)
        if (rows_[static_cast<std::size_t>(index)].key == key) return index;
    return 0;
}

}  // namespace stelvan::browser
