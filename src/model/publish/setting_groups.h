// Where documents list each protocol setting: the group in which people look for it.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "gem/settings.h"

namespace stelvan::model {

struct SettingPlace {
    std::string_view name;
    std::string_view group;
    bool secret = false;  // not for documents that are handed on
};

/// Every setting that the editor knows, those of one group together, groups and settings in the
/// order in which they are read.
[[nodiscard]] std::span<const SettingPlace> settingPlaces();
/// Null for any other name; names are compared exactly.
[[nodiscard]] const SettingPlace* placeOf(std::string_view setting);

/// What a setting accepts, in a few words: its choices, or its range with the unit; empty where it
/// takes any text.
[[nodiscard]] std::string acceptedBy(const gem::SettingRule& rule);

}  // namespace stelvan::model
