#include "model/publish/setting_groups.h"

#include <algorithm>

namespace stelvan::model {
namespace {

constexpr bool kSecret = true;

constexpr SettingPlace kPlaces[] = {
    {"ConnectionPortType", "Connection"},
    {"DeviceID", "Connection"},
    {"ConnectionHost", "Connection"},
    {"PortOpenAtStartUp", "Connection"},
    {"ConnectionRetryLimit", "Connection"},
    {"TimeOutRetry", "Connection"},
    {"PortOpened", "Connection"},
    {"Connected", "Connection"},
    {"HSMSConnectionType", "HSMS"},
    {"LocalIPAddress", "HSMS"},
    {"LocalIPPort", "HSMS"},
    {"RemoteIPAddress", "HSMS"},
    {"RemoteIPPort", "HSMS"},
    {"SerialPort", "SECS-I"},
    {"BaudRate", "SECS-I"},
    {"T1Timeout", "Time-outs"},
    {"T2Timeout", "Time-outs"},
    {"T3Timeout", "Time-outs"},
    {"T4Timeout", "Time-outs"},
    {"T5Timeout", "Time-outs"},
    {"T6Timeout", "Time-outs"},
    {"T7Timeout", "Time-outs"},
    {"T8Timeout", "Time-outs"},
    {"EventEnableAll", "Reporting"},
    {"AlarmEnableAll", "Reporting"},
    {"GEMDatabase", "Files"},
    {"SECSDictionaryFile", "Files"},
    {"SECSLogFile", "Files"},
    {"SECSILogPath", "Files"},
    {"AdministratorPassword", "Access", kSecret},
};

}  // namespace

std::span<const SettingPlace> settingPlaces() {
    return kPlaces;
}

const SettingPlace* placeOf(std::string_view setting) {
    const auto found = std::ranges::find(kPlaces, setting, &SettingPlace::name);
    return found == std::end(kPlaces) ? nullptr : found;
}

std::string acceptedBy(const gem::SettingRule& rule) {
    std::string text;
    for (std::size_t i = 0; i < rule.choices.size(); ++i) {
        if (i > 0) text += i + 1 == rule.choices.size() ? " or " : ", ";
        text += rule.choices[i];
    }
    return text.empty() ? gem::rangeOf(rule) : text;
}

}  // namespace stelvan::model
