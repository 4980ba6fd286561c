#include "model/publish/manual/outline.h"

#include <algorithm>
#include <array>

#include "gem/ids_and_names.h"
#include "gem/schema.h"
#include "model/publish/setting_groups.h"

namespace stelvan::model::manual {
namespace {

constexpr std::string_view kStandard = "Prescribed by the standard";
constexpr std::string_view kOwn = "Of this equipment";
constexpr std::string_view kUnknown = "Others";

using ByCategory = std::array<std::vector<Item>, gem::LIMIT + 1>;

std::vector<Chapter> emptyChapters() {
    return {
        {"about", "About this manual", Content::About, "", ""},
        {"settings", "Communication settings", Content::Settings, "setting",
         "How the equipment is connected, as its communication service is set up."},
        {"sv", "Status variables", Content::Variables, "status variable",
         "Values that the host may ask for at any time. The identifier is the SVID."},
        {"dv", "Data variables", Content::Variables, "data variable",
         "Values that hold at the moment of an event and are sent with it. The identifier is the "
         "VID."},
        {"ec", "Equipment constants", Content::Constants, "equipment constant",
         "Values that the host may read and set. The identifier is the ECID."},
        {"vo", "Variables of no known type", Content::Variables, "variable",
         "Variables whose type is none of SV, DV and EC."},
        {"events", "Collection events", Content::Events, "event",
         "What the equipment tells the host when it happens. The identifier is the CEID. The "
         "picture leads from the event to the reports that it sends and on to the variables that "
         "they carry, in the order in which they are sent."},
        {"reports", "Reports", Content::Reports, "report",
         "Variables that are sent together with an event, in this order. The identifier is the "
         "RPTID."},
        {"alarms", "Alarms", Content::Alarms, "alarm",
         "Conditions that the equipment reports when they arise and when they are over. The "
         "identifier is the ALID."},
        {"limits", "Limits", Content::Limits, "limit",
         "Limits of variables; crossing one is an event."},
    };
}

ByCategory byCategory(const Model& model) {
    ByCategory items;
    for (const PartFacts& facts : parts()) {
        if (isLinks(facts.part)) continue;
        const Table& table = model[facts.part];
        for (const Row& row : table.rows) {
            const Item item{facts.part, &table, &row};
            items[static_cast<std::size_t>(item.category())].push_back(item);
        }
    }
    return items;
}

void add(Chapter& chapter, std::string_view id, std::string_view title, std::vector<Item> items) {
    if (items.empty()) return;
    chapter.sections.push_back(
        {std::string(chapter.id) + "-" + std::string(id), title, std::move(items)});
}

/// Settings by their groups; those that nobody knows come last.
void addSettings(Chapter& chapter, std::vector<Item> items) {
    const auto settings = settingPlaces();
    const auto placeOf = [&](const Item& item) {
        return std::ranges::find(settings, item.idText(), &SettingPlace::name) - settings.begin();
    };
    std::ranges::stable_sort(items, {}, placeOf);
    std::size_t number = 0;
    for (std::size_t from = 0; from < items.size();) {
        const auto groupOf = [&](const Item& item) {
            const auto at = static_cast<std::size_t>(placeOf(item));
            return at < settings.size() ? settings[at].group : kUnknown;
        };
        const std::string_view group = groupOf(items[from]);
        std::size_t to = from;
        while (to < items.size() && groupOf(items[to]) == group) ++to;
        add(chapter, std::to_string(++number), group,
            {items.begin() + static_cast<std::ptrdiff_t>(from),
             items.begin() + static_cast<std::ptrdiff_t>(to)});
        from = to;
    }
}

void addReports(Chapter& chapter, std::vector<Item> items) {
    const auto own = std::ranges::stable_partition(
        items, [](const Item& report) { return gem::isReservedReport(report.idText()); });
    std::vector<Item> rest(own.begin(), own.end());
    items.erase(own.begin(), own.end());
    add(chapter, "standard", kStandard, std::move(items));
    add(chapter, "own", kOwn, std::move(rest));
}

}  // namespace

std::size_t Chapter::items() const {
    std::size_t count = 0;
    for (const Section& section : sections) count += section.items.size();
    return count;
}

std::vector<Chapter> outlineOf(const Model& model, bool findings) {
    ByCategory items = byCategory(model);
    std::vector<Chapter> chapters = emptyChapters();
    const auto chapter = [&](std::string_view id) -> Chapter& {
        return *std::ranges::find(chapters, id, &Chapter::id);
    };
    const auto fill = [&](std::string_view id, std::int16_t standard, std::int16_t own) {
        add(chapter(id), "standard", kStandard, std::move(items[standard]));
        add(chapter(id), "own", kOwn, std::move(items[own]));
    };
    addSettings(chapter("settings"), std::move(items[gem::GEMSTT]));
    fill("sv", gem::GEMSDV, gem::CSTVSV);
    fill("dv", gem::GEMVDV, gem::CSTVDV);
    fill("ec", gem::GEMVEC, gem::CSTVEC);
    add(chapter("vo"), "all", kUnknown, std::move(items[gem::NO_CATEGORY]));
    fill("events", gem::GEMEVT, gem::CSTEVT);
    addReports(chapter("reports"), std::move(items[gem::CSTRPT]));
    add(chapter("alarms"), "own", kOwn, std::move(items[gem::CSTALM]));
    add(chapter("limits"), "own", kOwn, std::move(items[gem::LIMIT]));
    std::erase_if(chapters, [](const Chapter& one) { return one.id == "vo" && one.items() == 0; });

    for (std::size_t i = 0; i < chapters.size(); ++i) chapters[i].number = std::to_string(i + 1);
    if (findings) {
        chapters.push_back({"findings", "Findings", Content::Findings, "finding",
                            "What a check of the model found when this manual was made."});
        chapters.back().number = "A";
    }
    return chapters;
}

}  // namespace stelvan::model::manual
