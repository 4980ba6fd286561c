#include "model/publish/setting_meanings.h"

#include <gtest/gtest.h>

namespace stelvan::test {
namespace {

TEST(SettingMeanings, EverySettingOfTheEditorHasOne) {
    for (const gem::SettingRule& rule : gem::settingRules())
        EXPECT_NE(model::meaningOf(rule.name), nullptr) << rule.name;
    EXPECT_EQ(model::settingMeanings().size(), gem::settingRules().size());
}

TEST(SettingMeanings, SayWhatIsAccepted) {
    const auto accepted = [](std::string_view name) {
        return model::acceptedBy(*gem::ruleFor(name));
    };
    EXPECT_EQ(accepted("DeviceID"), "0 to 32767");
    EXPECT_EQ(accepted("T1Timeout"), "0.1 to 10");
    EXPECT_EQ(accepted("HSMSConnectionType"), "ACTIVE or PASSIVE");
    EXPECT_EQ(accepted("SECSDictionaryFile"), "an existing file (.xml)");
    EXPECT_EQ(accepted("PortOpened"), "");
}

TEST(SettingMeanings, APasswordIsASecret) {
    EXPECT_TRUE(model::meaningOf("AdministratorPassword")->secret);
    EXPECT_FALSE(model::meaningOf("DeviceID")->secret);
    EXPECT_EQ(model::meaningOf("deviceid"), nullptr);
}

}  // namespace
}  // namespace stelvan::test
