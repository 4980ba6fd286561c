#include "gem/settings.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include "base/number.h"
#include "base/text.h"

namespace stelvan::gem {

namespace {

using base::contains;
using base::hasInnerBlank;
using base::upperCase;

constexpr std::size_t kPasswordLength = 12;

// T4 and T8 raise the code of T3, and T6 and T7 that of T5: each group shares one range, hence one
// fault.
constexpr IntegerRange kT3Range = {1, 120, T3_INVALID_RANGE};
constexpr IntegerRange kT5Range = {1, 240, T5_INVALID_RANGE};
constexpr IntegerRange kPortRange = {5001, 32767, IPPORT_INVALID_RANGE};

constexpr std::string_view kBaudRates[] = {"19200", "9600", "4800", "2400", "1200", "300", "150"};
constexpr std::string_view kConnectionTypes[] = {"SECSI-RS232", "HSMS", "HSMS_SS"};
constexpr std::string_view kHsmsModes[] = {"ACTIVE", "PASSIVE"};
constexpr std::string_view kTrueFalse[] = {"TRUE", "FALSE"};

const auto& table() {
    using enum InputKind;
    static const auto rules = std::to_array<SettingRule>({
        {"AdministratorPassword",
         Text,
         {},
         Password{},
         "",
         "Opens the administration of the communication service."},
        {"AlarmEnableAll", Combo, kTrueFalse, Anything{}, "",
         "One switch over the reporting of all alarms."},
        {"BaudRate", Combo, kBaudRates, Anything{}, "bit/s",
         "Speed of the serial line, used with SECS-I."},
        {"Connected",
         NameOnly,
         {},
         Anything{},
         "",
         "Whether a host is connected; the communication service writes it."},
        {"ConnectionHost", Combo, kTrueFalse, Anything{}, "",
         "TRUE where this side is the host, FALSE where it is the equipment."},
        {"ConnectionPortType", Combo, kConnectionTypes, Anything{}, "",
         "How host and equipment talk: over the serial line or over the network."},
        {"ConnectionRetryLimit",
         Text,
         {},
         IntegerRange{0, 31, RETRYLMT_INVALID_RANGE},
         "times",
         "RTY: how often a block is sent again before the attempt is given up."},
        {"DeviceID",
         Text,
         {},
         IntegerRange{0, 32767, DEVICEID_INVALID_RANGE},
         "",
         "Number of this equipment in the header of every message."},
        {"EventEnableAll", Combo, kTrueFalse, Anything{}, "",
         "One switch over the reporting of all collection events."},
        {"GEMDatabase",
         NameOnly,
         {},
         ExistingDatabase{},
         "",
         "The model that the communication service works with; it writes this itself."},
        {"HSMSConnectionType", Combo, kHsmsModes, Anything{}, "",
         "ACTIVE calls the other side, PASSIVE waits for its call."},
        {"LocalIPAddress",
         Text,
         {},
         IpAddress{},
         "",
         "Address on which this side waits for a call."},
        {"LocalIPPort", Text, {}, kPortRange, "", "TCP port on which this side waits for a call."},
        {"PortOpenAtStartUp", Combo, kTrueFalse, Anything{}, "",
         "TRUE opens the connection as soon as the service starts."},
        {"PortOpened",
         NameOnly,
         {},
         Anything{},
         "",
         "Whether the connection is open; the communication service writes it."},
        {"RemoteIPAddress",
         Text,
         {},
         IpAddress{},
         "",
         "Address of the other side, which an ACTIVE connection calls."},
        {"RemoteIPPort",
         Text,
         {},
         kPortRange,
         "",
         "TCP port of the other side, which an ACTIVE connection calls."},
        {"SECSDictionaryFile",
         File,
         {},
         ExistingFile{".xml"},
         "",
         "Describes the messages that are understood."},
        {"SECSILogPath",
         Folder,
         {},
         ExistingFolder{},
         "",
         "Where the log of the serial line is written."},
        {"SECSLogFile",
         File,
         {},
         ExistingFile{},
         "",
         "Where messages sent and received are logged."},
        {"SerialPort", Text, {}, SerialPort{}, "", "Port of the serial line, used with SECS-I."},
        {"T1Timeout",
         Text,
         {},
         RealRange{0.1F, 10.0F, T1_INVALID_RANGE},
         "s",
         "T1, inter-character: the longest gap within a block on the serial line."},
        {"T2Timeout",
         Text,
         {},
         RealRange{0.2F, 25.0F, T2_INVALID_RANGE},
         "s",
         "T2, protocol: the longest wait for the answer to a control character."},
        {"T3Timeout",
         Text,
         {},
         kT3Range,
         "s",
         "T3, reply: the longest wait for the reply to a message."},
        {"T4Timeout",
         Text,
         {},
         kT3Range,
         "s",
         "T4, inter-block: the longest gap between the blocks of one message."},
        {"T5Timeout",
         Text,
         {},
         kT5Range,
         "s",
         "T5, connect separation: the least time between two attempts to connect."},
        {"T6Timeout",
         Text,
         {},
         kT5Range,
         "s",
         "T6, control transaction: the longest wait for the answer to a control message."},
        {"T7Timeout",
         Text,
         {},
         kT5Range,
         "s",
         "T7, not selected: how long a connection may stay without being selected."},
        {"T8Timeout",
         Text,
         {},
         kT3Range,
         "s",
         "T8, network inter-character: the longest gap within a message on the network."},
        {"TimeOutRetry",
         Text,
         {},
         IntegerRange{1, 86400, TIMEOUT_INVALID_RANGE},
         "s",
         "How long to wait before communication is tried to be established again."},
    });
    return rules;
}

/// Characters, not bytes.
std::size_t lengthOf(std::string_view utf8) {
    return static_cast<std::size_t>(
        std::count_if(utf8.begin(), utf8.end(), [](char c) { return (c & '\xC0') != '\x80'; }));
}

bool isDigits(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// The code for a text that must be a number, before its range.
ErrorCode checkNumeric(std::string_view text) {
    if (base::hasInnerBlank(text)) return SPACE_BETWEEN;
    return base::isNumeric(text) ? NO_EXCEPTION : REQUIRE_NUMERIC;
}

/// One overload for each kind of acceptance; `text` is as typed.
struct Check {
    std::string_view text;

    ErrorCode operator()(const Anything&) const { return NO_EXCEPTION; }

    ErrorCode operator()(const Password&) const {
        if (base::hasInnerBlank(text)) return SPACE_BETWEEN;
        return lengthOf(text) > kPasswordLength ? PWD_MAXLEN : NO_EXCEPTION;
    }

    ErrorCode operator()(const IntegerRange& range) const {
        if (const ErrorCode fault = checkNumeric(text); fault != NO_EXCEPTION) return fault;
        if (base::contains(text, '.')) return REQUIRE_INTEGER;
        const std::int32_t value = base::toInt32(text);
        return value < range.lowest || value > range.highest ? range.fault : NO_EXCEPTION;
    }

    ErrorCode operator()(const RealRange& range) const {
        if (const ErrorCode fault = checkNumeric(text); fault != NO_EXCEPTION) return fault;
        const float value = base::toSingle(text);
        return value < range.lowest || value > range.highest ? range.fault : NO_EXCEPTION;
    }

    ErrorCode operator()(const IpAddress&) const {
        if (base::hasInnerBlank(text)) return SPACE_BETWEEN;
        return lCheckIPAddr(base::trimBlanks(text)) ? NO_EXCEPTION : IPADDR_INVALID_FORMAT;
    }

    ErrorCode operator()(const SerialPort&) const {
        if (base::hasInnerBlank(text)) return SPACE_BETWEEN;
        return lCheckSerialPort(base::trimBlanks(text)) ? NO_EXCEPTION : SERIAL_PORT_INVALID_NAME;
    }

    ErrorCode operator()(const ExistingFile& file) const {
        if (!lCheckFileDir(text, PathKind::File)) return FILE_NOT_EXIST;
        return text.find(file.mustContain) == std::string_view::npos ? INVALID_DICT_FILE
                                                                     : NO_EXCEPTION;
    }

    ErrorCode operator()(const ExistingFolder&) const {
        return lCheckFileDir(text, PathKind::Folder) ? NO_EXCEPTION : DIR_NOT_EXIST;
    }

    ErrorCode operator()(const ExistingDatabase&) const {
        return lCheckFileDir(text, PathKind::File) ? NO_EXCEPTION : FILE_NOT_EXIST;
    }
};

/// One overload for each kind of acceptance, in words.
struct Words {
    static std::string between(const std::string& lowest, const std::string& highest) {
        return lowest + " to " + highest;
    }
    std::string operator()(const Anything&) const { return {}; }
    std::string operator()(const Password&) const {
        return "up to " + std::to_string(kPasswordLength) + " characters, no blank";
    }
    std::string operator()(const IntegerRange& range) const {
        return between(std::to_string(range.lowest), std::to_string(range.highest));
    }
    std::string operator()(const RealRange& range) const {
        return between(base::numberText(range.lowest), base::numberText(range.highest));
    }
    std::string operator()(const IpAddress&) const { return "four numbers of 0 to 255"; }
    std::string operator()(const SerialPort&) const { return "COM1 to COM99"; }
    std::string operator()(const ExistingFile& file) const {
        return file.mustContain.empty() ? "an existing file"
                                        : "an existing " + std::string(file.mustContain) + " file";
    }
    std::string operator()(const ExistingFolder&) const { return "an existing folder"; }
    std::string operator()(const ExistingDatabase&) const { return "an existing file"; }
};

bool namesDrive(std::string_view path) {
    return path.size() >= 2 && path[1] == ':' &&
           base::upperCase(path.substr(0, 1)).find_first_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ") == 0;
}

}  // namespace

std::span<const SettingRule> settingRules() {
    return table();
}

const SettingRule* ruleFor(std::string_view name) {
    const auto& rules = table();
    const auto rule = std::find_if(rules.begin(), rules.end(),
                                   [&](const SettingRule& r) { return r.name == name; });
    return rule == rules.end() ? nullptr : &*rule;
}

std::string rangeOf(const SettingRule& rule) {
    std::string words = std::visit(Words{}, rule.accepts);
    if (!words.empty() && !rule.unit.empty()) words += ' ';
    return words.append(rule.unit);
}

std::string checkSetting(std::string_view name, std::string_view text) {
    const SettingRule* const rule = ruleFor(name);
    const ErrorCode fault = rule == nullptr ? NO_EXCEPTION : std::visit(Check{text}, rule->accepts);
    if (fault != NO_EXCEPTION && std::holds_alternative<ExistingDatabase>(rule->accepts)) {
        return std::string(kDatabaseMissing);
    }
    return std::to_string(fault);
}

std::string storedSetting(std::string_view name, std::string_view text) {
    const SettingRule* const rule = ruleFor(name);
    const bool outerBlanksMeanNothing =
        rule != nullptr && (std::holds_alternative<IntegerRange>(rule->accepts) ||
                            std::holds_alternative<RealRange>(rule->accepts) ||
                            std::holds_alternative<IpAddress>(rule->accepts) ||
                            std::holds_alternative<SerialPort>(rule->accepts));
    return std::string(outerBlanksMeanNothing ? base::trimBlanks(text) : text);
}

bool lCheckSerialPort(std::string_view text) {
    if (text.size() < 4 || base::upperCase(text.substr(0, 3)) != "COM") return false;
    const std::string_view number = text.substr(3);
    return number.size() <= 2 && isDigits(number);
}

bool lCheckIPAddr(std::string_view text) {
    for (int part = 1;; ++part) {
        const std::size_t point = text.find('.');
        const std::string_view piece = text.substr(0, point);
        if (!isDigits(piece) || std::is_gt(base::compareDecimals(piece, "255"))) return false;
        if (point == std::string_view::npos) return part == 4;
        text.remove_prefix(point + 1);
    }
}

bool lCheckFileDir(std::string_view path, PathKind kind) {
    if (path.empty() || namesDrive(path)) return false;
    std::error_code ignored;
    const std::filesystem::path there(path);
    return kind == PathKind::File ? std::filesystem::is_regular_file(there, ignored)
                                  : std::filesystem::is_directory(there, ignored);
}

}  // namespace stelvan::gem
