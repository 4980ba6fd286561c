#include "model/publish/setting_groups.h"

#include <gtest/gtest.h>

namespace stelvan::test {
namespace {

TEST(SettingGroups, EverySettingOfTheEditorIsInOne) {
    for (const gem::SettingRule& rule : gem::settingRules())
        EXPECT_NE(model::placeOf(rule.name), nullptr) << rule.name;
    EXPECT_EQ(model::settingPlaces().size(), gem::settingRules().size());
}

TEST(SettingGroups, SayWhatIsAccepted) {
    const auto accepted = [](std::string_view name) {
        return model::acceptedBy(*gem::ruleFor(name));
    };
    EXPECT_EQ(accepted("DeviceID"), "0 to 32767");
    EXPECT_EQ(accepted("T1Timeout"), "0.1 to 10 s");
    EXPECT_EQ(accepted("HSMSConnectionType"), "ACTIVE or PASSIVE");
    EXPECT_EQ(accepted("SECSDictionaryFile"), "an existing .xml file");
    EXPECT_EQ(accepted("PortOpened"), "");
}

TEST(SettingGroups, APasswordIsASecret) {
    EXPECT_TRUE(model::placeOf("AdministratorPassword")->secret);
    EXPECT_FALSE(model::placeOf("DeviceID")->secret);
    EXPECT_EQ(model::placeOf("deviceid"), nullptr);
}

}  // namespace
}  // namespace stelvan::test
