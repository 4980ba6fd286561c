// What each protocol setting means, in words, and the group in which people look for it.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "gem/settings.h"

namespace stelvan::model {

struct SettingMeaning {
    std::string_view name;
    std::string_view group;
    std::string_view meaning;
    std::string_view unit = {};  // empty where the value has none
    bool secret = false;         // not for documents that are handed on
};

/// Every setting that the editor knows, those of one group together, groups and settings in the
/// order in which they are read.
[[nodiscard]] std::span<const SettingMeaning> settingMeanings();
/// Null for any other name; names are compared exactly.
[[nodiscard]] const SettingMeaning* meaningOf(std::string_view setting);

/// What a setting accepts, in a few words; empty where it takes any text.
[[nodiscard]] std::string acceptedBy(const gem::SettingRule& rule);

}  // namespace stelvan::model
