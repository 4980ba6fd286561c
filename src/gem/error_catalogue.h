// The catalogue of input exceptions: 66 slots, indexed by code; texts byte for byte as users know
// them.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace stelvan::gem {

struct ErrorEntry {
    std::string code;     // decimal text of the slot's index; empty in a reserved slot
    std::string key;      // NULL_STRING and so on
    std::string message;  // shown to the user; trailing blanks and misspellings belong to it
};

inline constexpr std::size_t kErrorSlots = 66;
using ErrorCatalogue = std::array<ErrorEntry, kErrorSlots>;

/// Codes of the catalogue by key.
enum ErrorCode : int {
    NO_EXCEPTION = 0,
    NULL_STRING = 1,
    SPACE_BETWEEN = 2,
    REQUIRE_NUMERIC = 3,
    REQUIRE_INTEGER = 4,
    ID_EXIST = 5,
    NAME_EXIST = 6,
    SECS_U1_INVALID_RANGE = 7,
    SECS_U2_INVALID_RANGE = 8,
    SECS_U4_INVALID_RANGE = 9,
    SECS_I1_INVALID_RANGE = 10,
    SECS_I2_INVALID_RANGE = 11,
    SECS_I4_INVALID_RANGE = 12,
    SECS_F4_INVALID_RANGE = 13,
    SECS_F8_INVALID_RANGE = 14,
    SECS_BL_INVALID_RANGE = 15,
    SECS_B_INVALID_RANGE = 16,
    NUMERIC_OVERFLOW = 17,
    ALM_ID_INVALID_RANGE = 21,
    ALM_SETNAME_EQ_CLRNAME = 22,
    ALM_SETID_EQ_CLRID = 23,
    EVT_ID_INVALID_RANGE = 26,
    RPT_ID_INVALID_RANGE = 31,
    VAR_ID_INVALID_RANGE = 36,
    VAR_INVALID_FORMAT = 37,
    VAR_MIN_GT_MAX = 38,
    VAR_NOT_IN_MINMAX = 39,
    PWD_MAXLEN = 46,
    RETRYLMT_INVALID_RANGE = 47,
    DEVICEID_INVALID_RANGE = 48,
    IPPORT_INVALID_RANGE = 49,
    IPADDR_INVALID_FORMAT = 50,
    FILE_NOT_EXIST = 51,
    DIR_NOT_EXIST = 52,
    T1_INVALID_RANGE = 53,
    T2_INVALID_RANGE = 54,
    T3_INVALID_RANGE = 55,
    T4_INVALID_RANGE = 56,
    T5_INVALID_RANGE = 57,
    T6_INVALID_RANGE = 58,
    T7_INVALID_RANGE = 59,
    T8_INVALID_RANGE = 60,
    TIMEOUT_INVALID_RANGE = 61,
    SERIAL_PORT_INVALID_NAME = 62,
    INVALID_DICT_FILE = 63
};

/// Builds the catalogue; called once at start-up.
[[nodiscard]] ErrorCatalogue lInitErrInfo();

/// The slot that an exception marker names. Throws RunTimeError 13 for a marker that is no whole
/// number, 6 for one beyond 16 bits, 9 for one beyond the catalogue.
[[nodiscard]] const ErrorEntry& entryOfMarker(const ErrorCatalogue& catalogue,
                                              std::string_view marker);

}  // namespace stelvan::gem
