#include "model/publish/setting_meanings.h"

#include <algorithm>
#include <variant>

#include "base/number.h"

namespace stelvan::model {
namespace {

constexpr bool kSecret = true;

// clang-format off
constexpr SettingMeaning kMeanings[] = {
    {"ConnectionPortType", "Connection",
     "Protocol that carries the messages: SECS-I over a serial line, or HSMS over TCP/IP."},
    {"DeviceID", "Connection", "Device identifier in the header of every message."},
    {"ConnectionHost", "Connection", "Whether this side is the host; FALSE for the equipment."},
    {"PortOpenAtStartUp", "Connection",
     "Whether the port is opened as soon as the communication service starts."},
    {"ConnectionRetryLimit", "Connection",
     "How often sending is tried again before it has failed."},
    {"TimeOutRetry", "Connection",
     "Wait before another attempt to establish communication.", "s"},
    {"PortOpened", "Connection",
     "Whether the port is open now, as the communication service last wrote it."},
    {"Connected", "Connection",
     "Whether a host is connected now, as the communication service last wrote it."},
    {"HSMSConnectionType", "HSMS",
     "Who opens the connection: ACTIVE this side, PASSIVE the other one."},
    {"LocalIPAddress", "HSMS", "Address of this side."},
    {"LocalIPPort", "HSMS", "TCP port at which this side waits for a connection."},
    {"RemoteIPAddress", "HSMS", "Address of the other side."},
    {"RemoteIPPort", "HSMS", "TCP port of the other side."},
    {"SerialPort", "SECS-I", "Serial port of the line."},
    {"BaudRate", "SECS-I", "Speed of the serial line.", "baud"},
    {"T1Timeout", "Time-outs", "T1, between two characters of a block (SECS-I).", "s"},
    {"T2Timeout", "Time-outs", "T2, between two steps of the line protocol (SECS-I).", "s"},
    {"T3Timeout", "Time-outs", "T3, until the reply to a message.", "s"},
    {"T4Timeout", "Time-outs", "T4, between two blocks of a message (SECS-I).", "s"},
    {"T5Timeout", "Time-outs", "T5, between two attempts to connect (HSMS).", "s"},
    {"T6Timeout", "Time-outs", "T6, until the reply to a control message (HSMS).", "s"},
    {"T7Timeout", "Time-outs", "T7, how long a connection may be without a session (HSMS).", "s"},
    {"T8Timeout", "Time-outs", "T8, between two characters of a message (HSMS).", "s"},
    {"EventEnableAll", "Reporting", "One switch over the reporting of all events."},
    {"AlarmEnableAll", "Reporting", "One switch over the reporting of all alarms."},
    {"GEMDatabase", "Files", "The model file that the communication service reads."},
    {"SECSDictionaryFile", "Files", "Dictionary of the SECS-II messages, in XML."},
    {"SECSLogFile", "Files", "Log of the messages."},
    {"SECSILogPath", "Files", "Folder of the logs of the serial line."},
    {"AdministratorPassword", "Access", "Password of the administrator.", "", kSecret},
};
// clang-format on

std::string joined(std::span<const std::string_view> choices) {
    std::string text;
    for (std::size_t i = 0; i < choices.size(); ++i) {
        if (i > 0) text += i + 1 == choices.size() ? " or " : ", ";
        text += choices[i];
    }
    return text;
}

struct Accepted {
    std::string operator()(const gem::Anything&) const { return {}; }
    std::string operator()(const gem::Password&) const { return "at most 12 characters, no blank"; }
    std::string operator()(const gem::IntegerRange& range) const {
        return std::to_string(range.lowest) + " to " + std::to_string(range.highest);
    }
    std::string operator()(const gem::RealRange& range) const {
        return base::compactNumberText(range.lowest) + " to " +
               base::compactNumberText(range.highest);
    }
    std::string operator()(const gem::IpAddress&) const { return "an IPv4 address"; }
    std::string operator()(const gem::SerialPort&) const { return "COM and one or two digits"; }
    std::string operator()(const gem::ExistingFile& file) const {
        return "an existing file" +
               (file.mustContain.empty() ? "" : " (" + std::string(file.mustContain) + ")");
    }
    std::string operator()(const gem::ExistingFolder&) const { return "an existing folder"; }
    std::string operator()(const gem::ExistingDatabase&) const { return "an existing file"; }
};

}  // namespace

std::span<const SettingMeaning> settingMeanings() {
    return kMeanings;
}

const SettingMeaning* meaningOf(std::string_view setting) {
    const auto found = std::ranges::find(kMeanings, setting, &SettingMeaning::name);
    return found == std::end(kMeanings) ? nullptr : found;
}

std::string acceptedBy(const gem::SettingRule& rule) {
    return rule.choices.empty() ? std::visit(Accepted{}, rule.accepts) : joined(rule.choices);
}

}  // namespace stelvan::model
