// The four fixed lists behind the combo boxes, each in the order in which it is offered.
#pragma once

#include <array>
#include <string_view>

namespace stelvan::form {

inline constexpr std::array<std::string_view, 14> kSecsFormats = {
    "A", "B", "BL", "F4", "F8", "I1", "I2", "I4", "I8", "L", "U1", "U2", "U4", "U8"};

inline constexpr std::array<std::string_view, 7> kBaudRates = {"19200", "9600", "4800", "2400",
                                                               "1200",  "300",  "150"};

inline constexpr std::array<std::string_view, 3> kConnectionTypes = {"SECSI-RS232", "HSMS",
                                                                     "HSMS_SS"};

inline constexpr std::array<std::string_view, 2> kHsmsModes = {"ACTIVE", "PASSIVE"};

}  // namespace stelvan::form
