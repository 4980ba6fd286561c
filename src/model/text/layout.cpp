#include "model/text/layout.h"

#include <algorithm>
#include <array>

namespace stelvan::model {
namespace {

constexpr std::array kVariables = {Part::StandardVariables, Part::CustomVariables};
constexpr std::array kEvents = {Part::StandardEvents, Part::CustomEvents};
constexpr std::array kAlarms = {Part::Alarms};
constexpr std::array kReports = {Part::Reports};
constexpr std::array kLimits = {Part::Limits};
constexpr std::array kSettings = {Part::Settings};

constexpr std::array<TextFile, 6> kFiles = {{
    {"variables.toml", kVariables, std::nullopt},
    {"events.toml", kEvents, Part::EventReports, "reports"},
    {"alarms.toml", kAlarms, std::nullopt},
    {"reports.toml", kReports, Part::ReportVariables, "variables"},
    {"limits.toml", kLimits, std::nullopt, {}, true},
    {"settings.toml", kSettings, std::nullopt},
}};

}  // namespace

std::span<const TextFile> textFiles() {
    return kFiles;
}

const TextFile& fileOf(Part part) {
    return *std::ranges::find_if(kFiles, [part](const TextFile& file) {
        return std::ranges::count(file.items, part) > 0 || file.links == part;
    });
}

std::string_view sectionOf(Part part) {
    return part == Part::Limits ? std::string_view("limits") : factsOf(part).table;
}

std::string linkKeyOf(const TextFile& file, const Table& items) {
    std::string key(file.linkKey);
    while (items.find(key)) key += '_';
    return key;
}

}  // namespace stelvan::model
