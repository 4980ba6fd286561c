// What the window's command line offers, as plain facts: its --help, its manual page and what it
// takes are all made of them.
#pragma once

#include <array>
#include <string_view>

namespace stelvan::app {

inline constexpr std::string_view kSummary = "edit the SECS/GEM model of one piece of equipment";
inline constexpr std::string_view kDescription =
    "Opens a window in which the model in an Access file called gem.mdb is browsed and edited: "
    "variables, equipment constants, collection events, alarms, reports, the links between them, "
    "and the protocol settings. Without a file a dialog asks for one, or starts a new model.";
inline constexpr std::string_view kExitStatus =
    "0 where the window was closed, or no model was chosen; 2 where the command line is not "
    "understood: then standard error says why.";

struct OptionText {
    std::string_view name;  // long
    char letter;            // the same, short
    std::string_view help;
};

struct ArgumentText {
    std::string_view name;
    std::string_view help;
};

inline constexpr ArgumentText kFile = {"FILE",
                                       "The model to open; it must be called gem.mdb. Without it, "
                                       "or where it is called otherwise, a dialog asks."};
inline constexpr OptionText kHelp = {"help", 'h', "Print the options and exit."};
inline constexpr OptionText kVersion = {"version", 'v', "Print the version and exit."};
inline constexpr std::array<OptionText, 2> kOptions = {kHelp, kVersion};

}  // namespace stelvan::app
