#include "gem/error_catalogue.h"

#include <charconv>
#include <cstdint>
#include <limits>

#include "base/run_time_error.h"

namespace stelvan::gem {

namespace {

struct Row {
    ErrorCode code;
    const char* key;
    const char* message;
    bool upToMaximum = false;  // the largest signed 32-bit number and ". " follow the message
};

// The gaps are numbering room for each kind of record. Wrong type names, "whithin" and trailing
// blanks are what users have always seen, and what their notes and scripts look for.
constexpr Row kRows[] = {
    {NULL_STRING, "NULL_STRING", "Cannot be empty string."},
    {SPACE_BETWEEN, "SPACE_BETWEEN", "Cannot contain space in between."},
    {REQUIRE_NUMERIC, "REQUIRE_NUMERIC", "Must be numeric."},
    {REQUIRE_INTEGER, "REQUIRE_INTEGER", "Must be an integer."},
    {ID_EXIST, "ID_EXIST", "ID already exists. Please use other number."},
    {NAME_EXIST, "NAME_EXIST", "Name already exists. Please use other name. "},
    {SECS_U1_INVALID_RANGE, "SECS_U1_INVALID_RANGE", "Valid range for U1 is 0 to 255. "},
    {SECS_U2_INVALID_RANGE, "SECS_U2_INVALID_RANGE", "Valid range for U2 is 0 to 65535. "},
    {SECS_U4_INVALID_RANGE, "SECS_U4_INVALID_RANGE", "Valid range for U4 is 0 to ", true},
    {SECS_I1_INVALID_RANGE, "SECS_I1_INVALID_RANGE", "Valid range for I1 is -128 to 127. "},
    {SECS_I2_INVALID_RANGE, "SECS_I2_INVALID_RANGE", "Valid range for I1 is -32,767 to 32,767. "},
    {SECS_I4_INVALID_RANGE, "SECS_I4_INVALID_RANGE",
     "Valid range for I1 is -2,147,483,648 to 2,147,483,647. "},
    {SECS_F4_INVALID_RANGE, "SECS_F4_INVALID_RANGE", "Valid range for I1 is -3.4E+38 to 3.4E+38. "},
    {SECS_F8_INVALID_RANGE, "SECS_F8_INVALID_RANGE",
     "Valid range for I1 is -1.7E+308 to 1.7E+308. "},
    {SECS_BL_INVALID_RANGE, "SECS_BL_INVALID_RANGE", "Valid value for BOOL is 'TRUE' or 'FALSE'. "},
    {SECS_B_INVALID_RANGE, "SECS_B_INVALID_RANGE", "Valid value for BINARY is 0 or 255. "},
    {NUMERIC_OVERFLOW, "NUMERIC_OVERFLOW", "Numeric value overflow. "},
    {ALM_ID_INVALID_RANGE, "ALM_ID_INVALID_RANGE", "Valid range is 1 to ", true},
    {ALM_SETNAME_EQ_CLRNAME, "ALM_SETNAME_EQ_CLRNAME",
     "Alarm Set CEName and Alarm Clear CEName cannot be the same. "},
    {ALM_SETID_EQ_CLRID, "ALM_SETID_EQ_CLRID",
     "Alarm Set CEID and Alarm Clear CEID cannot be the same. "},
    {EVT_ID_INVALID_RANGE, "EVT_ID_INVALID_RANGE", "Valid range is 101 to ", true},
    {RPT_ID_INVALID_RANGE, "RPT_ID_INVALID_RANGE", "Valid range is 101 to ", true},
    {VAR_ID_INVALID_RANGE, "VAR_ID_INVALID_RANGE", "Valid range is 101 to ", true},
    {VAR_INVALID_FORMAT, "VAR_INVALID_FORMAT", "Invalid variable format. "},
    {VAR_MIN_GT_MAX, "VAR_MIN_GT_MAX", "Min value cannot be larger than Max value. "},
    {VAR_NOT_IN_MINMAX, "VAR_NOT_IN_MINMAX", "Value must fall whithin Min and Max. "},
    {PWD_MAXLEN, "PWD_MAXLEN", "Maximum 12 characters. "},
    {RETRYLMT_INVALID_RANGE, "RETRYLMT_INVALID_RANGE", "Valid range is 0 to 31. "},
    {DEVICEID_INVALID_RANGE, "DEVICEID_INVALID_RANGE", "Valid range is 0 to 32767. "},
    {IPPORT_INVALID_RANGE, "IPPORT_INVALID_RANGE", "Valid range is 5001 to 32767. "},
    {IPADDR_INVALID_FORMAT, "IPADDR_INVALID_FORMAT", "Invalid IP address. "},
    {FILE_NOT_EXIST, "FILE_NOT_EXIST", "File does not exist. "},
    {DIR_NOT_EXIST, "DIR_NOT_EXIST", "Path does not exist. "},
    {T1_INVALID_RANGE, "T1_INVALID_RANGE", "Valid range is 0.1 to 10. "},
    {T2_INVALID_RANGE, "T2_INVALID_RANGE", "Valid range is 0.2 to 25. "},
    {T3_INVALID_RANGE, "T3_INVALID_RANGE", "Valid range is 1 to 120. "},
    {T4_INVALID_RANGE, "T4_INVALID_RANGE", "Valid range is 1 to 120. "},
    {T5_INVALID_RANGE, "T5_INVALID_RANGE", "Valid range is 1 to 240. "},
    {T6_INVALID_RANGE, "T6_INVALID_RANGE", "Valid range is 1 to 240. "},
    {T7_INVALID_RANGE, "T7_INVALID_RANGE", "Valid range is 1 to 240. "},
    {T8_INVALID_RANGE, "T8_INVALID_RANGE", "Valid range is 1 to 120. "},
    {TIMEOUT_INVALID_RANGE, "TIMEOUT_INVALID_RANGE", "Valid range is 1 to 86400. "},
    {SERIAL_PORT_INVALID_NAME, "SERIAL_PORT_INVALID_NAME",
     "Correct format should be: COMnn, where n=1-9. "},
    {INVALID_DICT_FILE, "INVALID_DICT_FILE",
     "Invalid dictionary file. Dictionary file must be an .xml file."},
};

}  // namespace

ErrorCatalogue lInitErrInfo() {
    ErrorCatalogue catalogue;
    catalogue[NO_EXCEPTION].code = "0";
    const std::string maximum = std::to_string(std::numeric_limits<std::int32_t>::max());
    for (const Row& row : kRows) {
        ErrorEntry& entry = catalogue[static_cast<std::size_t>(row.code)];
        entry.code = std::to_string(row.code);
        entry.key = row.key;
        entry.message = row.message;
        if (row.upToMaximum) entry.message += maximum + ". ";
    }
    return catalogue;
}

const ErrorEntry& entryOfMarker(const ErrorCatalogue& catalogue, std::string_view marker) {
    std::int16_t code = 0;
    const char* const end = marker.data() + marker.size();
    const auto [stopped, error] = std::from_chars(marker.data(), end, code);
    if (stopped != end || error == std::errc::invalid_argument) throw base::typeMismatch();
    if (error == std::errc::result_out_of_range) throw base::overflow();
    if (code < 0 || static_cast<std::size_t>(code) >= catalogue.size())
        throw base::subscriptOutOfRange();
    return catalogue[static_cast<std::size_t>(code)];
}

}  // namespace stelvan::gem
