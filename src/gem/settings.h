// The protocol settings by name: which input serves a setting's two values, and which texts it
// accepts.
//
// One table, a few checks; no widgets. Limits are included in the range. An integer beyond 32 bits
// is not a fault but an overflow: RunTimeError 6.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "gem/error_catalogue.h"

namespace stelvan::gem {

enum class InputKind {
    Combo,   // one of a fixed list
    File,    // a text with a browse button
    Folder,  // the same, for folders
    Text,
    NameOnly  // no input: the communication service owns the value
};

/// What a setting accepts; each is checked in the order in which its members stand.
struct Anything {};
struct Password {};  // no blank inside, at most 12 characters
struct IntegerRange {
    std::int32_t lowest, highest;
    ErrorCode fault;
};
struct RealRange {
    float lowest, highest;
    ErrorCode fault;
};
struct IpAddress {};
struct SerialPort {};
struct ExistingFile {
    std::string_view mustContain;  // nothing, or ".xml"
};
struct ExistingFolder {};
struct ExistingDatabase {};  // its fault is a text, not a code
using Acceptance = std::variant<Anything, Password, IntegerRange, RealRange, IpAddress, SerialPort,
                                ExistingFile, ExistingFolder, ExistingDatabase>;

struct SettingRule {
    std::string_view name;
    InputKind input;
    std::span<const std::string_view> choices;  // of a combo, in the order in which it offers them
    Acceptance accepts;
    std::string_view unit;     // "s"; empty where it has none
    std::string_view meaning;  // one sentence for who sets it
};

/// All settings known to the editor.
[[nodiscard]] std::span<const SettingRule> settingRules();
/// Null for a name that is none of them (names are compared exactly); it gets no input and no
/// check.
[[nodiscard]] const SettingRule* ruleFor(std::string_view name);

/// What the setting accepts, with its unit, in a few words: "1 to 120 s", "an existing .xml file";
/// empty for choices, and where anything is accepted.
[[nodiscard]] std::string rangeOf(const SettingRule& rule);

/// What the marker of a missing GEM database holds in place of a code.
inline constexpr std::string_view kDatabaseMissing = "Database file does not exist.";

/// The marker for `text` as a value of the setting: a catalogue code as text, "0" when it is
/// accepted, or kDatabaseMissing.
[[nodiscard]] std::string checkSetting(std::string_view name, std::string_view text);

/// The text that is stored for a typed one: numbers, addresses and ports without outer blanks, all
/// else as it is.
[[nodiscard]] std::string storedSetting(std::string_view name, std::string_view text);

/// "COM" in any letter case and one or two digits.
[[nodiscard]] bool lCheckSerialPort(std::string_view text);
/// Four parts of digits, each at most 255, with points between them.
[[nodiscard]] bool lCheckIPAddr(std::string_view text);

enum class PathKind { File, Folder };
/// Whether the file or folder exists on this machine: links followed, relative to the current
/// directory. A drive-letter path names nothing here.
[[nodiscard]] bool lCheckFileDir(std::string_view path, PathKind kind);

}  // namespace stelvan::gem
