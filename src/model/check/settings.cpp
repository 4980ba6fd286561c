// The protocol settings: which are there, and whether their values are ones.
#include "gem/settings.h"

#include <algorithm>
#include <set>

#include "base/run_time_error.h"
#include "base/text.h"
#include "gem/schema.h"
#include "jet/rows/value_text.h"
#include "model/check/survey.h"

namespace stelvan::model {
namespace {

namespace setting = gem::schema::setting;

constexpr std::string_view kNoFault = "0";

/// What names a place on this machine may well be right on the equipment's.
bool isPathOfAnotherMachine(const std::string& marker) {
    return marker == gem::kDatabaseMissing || marker == std::to_string(gem::FILE_NOT_EXIST) ||
           marker == std::to_string(gem::DIR_NOT_EXIST);
}

std::string messageOf(const Survey& survey, const std::string& marker) {
    if (marker == gem::kDatabaseMissing) return marker;
    return survey.messageOf(static_cast<gem::ErrorCode>(std::stoi(marker)));
}

void checkChoice(Survey& survey, const Item& item, const gem::SettingRule& rule,
                 std::string_view column, const std::string& text) {
    if (rule.choices.empty()) return;
    if (std::ranges::any_of(rule.choices, [&](std::string_view choice) {
            return base::sameWord(choice, base::trimBlanks(text));
        }))
        return;
    std::string choices;
    for (const std::string_view choice : rule.choices)
        choices.append(choices.empty() ? "" : ", ").append(choice);
    survey.add(item,
               {Severity::Warning, "setting-invalid", column,
                "Is none of the values to choose from: " + choices + ".", "Choose one of them."});
}

void checkValue(Survey& survey, const Item& item, const gem::SettingRule& rule,
                std::string_view column) {
    if (jet::isNull(item.table->value(*item.row, column))) return;
    const std::string text = item.text(column);
    try {
        const std::string marker = gem::checkSetting(rule.name, text);
        if (marker == kNoFault) return checkChoice(survey, item, rule, column, text);
        const bool path = isPathOfAnotherMachine(marker);
        survey.add(item, {path ? Severity::Note : Severity::Error, "setting-invalid", column,
                          messageOf(survey, marker),
                          path ? "Nothing, where the equipment has it; else name one that exists."
                               : "Open the setting with \"Edit\" and correct it."});
    } catch (const base::RunTimeError& failure) {
        survey.add(item, {Severity::Error, "setting-invalid", column, failure.what(),
                          "Open the setting with \"Edit\" and correct it."});
    }
}

}  // namespace

void checkSettings(Survey& survey) {
    const Table& table = survey.model[Part::Settings];
    if (!table.present) return;
    std::set<std::string, std::less<>> names;
    for (const Row& row : table.rows) {
        const Item item{Part::Settings, &table, &row};
        const std::string name = item.idText();
        names.insert(name);
        const gem::SettingRule* const rule = gem::ruleFor(name);
        if (rule == nullptr) {
            survey.add(item, {Severity::Note, "setting-unknown", setting::kField,
                              "The editor knows no setting of this name.",
                              "Nothing, where the service knows it; letter case counts."});
            continue;
        }
        for (const char* column : {setting::kValue, setting::kDefaultValue})
            checkValue(survey, item, *rule, column);
    }
    for (const gem::SettingRule& rule : gem::settingRules())
        if (!names.contains(rule.name))
            survey.addAbsent(
                Part::Settings, std::string(rule.name), "",
                {Severity::Warning, "setting-missing", setting::kField, "The setting is not there.",
                 "Add its row, as the shipped template has it."});
}

}  // namespace stelvan::model
