#include "gem/categories.h"

#include <array>

#include "base/run_time_error.h"

namespace stelvan::gem {
namespace {

constexpr bool kCustom = true;

constexpr std::array<CategoryInfo, kCategories + 1> kTable = {{
    {},
    {"GEMEVT", Kind::CollectionEvent, "GEM Collection Events", "select * from secs_gemevent"},
    {"GEMVDV", Kind::Variable, "GEM Data Variables",
     "select * from secs_gemvar where var_type = 'DV'", !kCustom, "DV"},
    {"GEMSDV", Kind::Variable, "GEM Status Variables",
     "select * from secs_gemvar where var_type = 'SV'", !kCustom, "SV"},
    {"GEMVEC", Kind::Variable, "GEM Equipment Constants",
     "select * from secs_gemvar where var_type = 'EC'", !kCustom, "EC"},
    {"CSTALM", Kind::Alarm, "Custom Alarms", "select * from secs_alarm", kCustom},
    {"CSTEVT", Kind::CollectionEvent, "Custom Collection Events", "select * from secs_cusevent",
     kCustom},
    {"CSTVDV", Kind::Variable, "Custom Data Variables",
     "select * from secs_cusvar where var_type = 'DV'", kCustom, "DV"},
    {"CSTVSV", Kind::Variable, "Custom Status Variables",
     "select * from secs_cusvar where var_type = 'SV'", kCustom, "SV"},
    {"CSTVEC", Kind::Variable, "Custom Equipment Constants",
     "select * from secs_cusvar where var_type = 'EC'", kCustom, "EC"},
    {"GEMSTT", Kind::ProtocolSettings, "Protocol Settings", "select * from secs_setting"},
    {"CSTRPT", Kind::Report, "Custom Reports", "select * from secs_report", kCustom},
}};

}  // namespace

std::span<const CategoryInfo> categories() {
    return kTable;
}

const CategoryInfo& categoryAt(std::int16_t index) {
    if (index < 0 || static_cast<std::size_t>(index) >= kTable.size())
        throw base::subscriptOutOfRange();
    return kTable[static_cast<std::size_t>(index)];
}

std::int16_t categoryOf(std::string_view key) {
    for (std::size_t index = 1; index < kTable.size(); ++index)
        if (kTable[index].key == key) return static_cast<std::int16_t>(index);
    return NO_CATEGORY;
}

Kind kindOf(std::int16_t category) {
    if (category == LIMIT) return Kind::Limit;
    const bool known = category > 0 && static_cast<std::size_t>(category) < kTable.size();
    return known ? kTable[static_cast<std::size_t>(category)].kind : Kind::None;
}

}  // namespace stelvan::gem
