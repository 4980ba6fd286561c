// The catalogue against a table of its own, letter by letter.
#include "gem/error_catalogue.h"

#include <gtest/gtest.h>

#include <set>

#include "base/run_time_error.h"

namespace stelvan::gem {
namespace {

struct Filled {
    std::size_t slot;
    const char* key;
    const char* message;
};

constexpr Filled kFilled[] = {
    {1, "NULL_STRING", "Cannot be empty string."},
    {2, "SPACE_BETWEEN", "Cannot contain space in between."},
    {3, "REQUIRE_NUMERIC", "Must be numeric."},
    {4, "REQUIRE_INTEGER", "Must be an integer."},
    {5, "ID_EXIST", "ID already exists. Please use other number."},
    {6, "NAME_EXIST", "Name already exists. Please use other name. "},
    {7, "SECS_U1_INVALID_RANGE", "Valid range for U1 is 0 to 255. "},
    {8, "SECS_U2_INVALID_RANGE", "Valid range for U2 is 0 to 65535. "},
    {9, "SECS_U4_INVALID_RANGE", "Valid range for U4 is 0 to 2147483647. "},
    {10, "SECS_I1_INVALID_RANGE", "Valid range for I1 is -128 to 127. "},
    {11, "SECS_I2_INVALID_RANGE", "Valid range for I1 is -32,767 to 32,767. "},
    {12, "SECS_I4_INVALID_RANGE", "Valid range for I1 is -2,147,483,648 to 2,147,483,647. "},
    {13, "SECS_F4_INVALID_RANGE", "Valid range for I1 is -3.4E+38 to 3.4E+38. "},
    {14, "SECS_F8_INVALID_RANGE", "Valid range for I1 is -1.7E+308 to 1.7E+308. "},
    {15, "SECS_BL_INVALID_RANGE", "Valid value for BOOL is 'TRUE' or 'FALSE'. "},
    {16, "SECS_B_INVALID_RANGE", "Valid value for BINARY is 0 or 255. "},
    {17, "NUMERIC_OVERFLOW", "Numeric value overflow. "},
    {21, "ALM_ID_INVALID_RANGE", "Valid range is 1 to 2147483647. "},
    {22, "ALM_SETNAME_EQ_CLRNAME", "Alarm Set CEName and Alarm Clear CEName cannot be the same. "},
    {23, "ALM_SETID_EQ_CLRID", "Alarm Set CEID and Alarm Clear CEID cannot be the same. "},
    {26, "EVT_ID_INVALID_RANGE", "Valid range is 101 to 2147483647. "},
    {31, "RPT_ID_INVALID_RANGE", "Valid range is 101 to 2147483647. "},
    {36, "VAR_ID_INVALID_RANGE", "Valid range is 101 to 2147483647. "},
    {37, "VAR_INVALID_FORMAT", "Invalid variable format. "},
    {38, "VAR_MIN_GT_MAX", "Min value cannot be larger than Max value. "},
    {39, "VAR_NOT_IN_MINMAX", "Value must fall whithin Min and Max. "},
    {46, "PWD_MAXLEN", "Maximum 12 characters. "},
    {47, "RETRYLMT_INVALID_RANGE", "Valid range is 0 to 31. "},
    {48, "DEVICEID_INVALID_RANGE", "Valid range is 0 to 32767. "},
    {49, "IPPORT_INVALID_RANGE", "Valid range is 5001 to 32767. "},
    {50, "IPADDR_INVALID_FORMAT", "Invalid IP address. "},
    {51, "FILE_NOT_EXIST", "File does not exist. "},
    {52, "DIR_NOT_EXIST", "Path does not exist. "},
    {53, "T1_INVALID_RANGE", "Valid range is 0.1 to 10. "},
    {54, "T2_INVALID_RANGE", "Valid range is 0.2 to 25. "},
    {55, "T3_INVALID_RANGE", "Valid range is 1 to 120. "},
    {56, "T4_INVALID_RANGE", "Valid range is 1 to 120. "},
    {57, "T5_INVALID_RANGE", "Valid range is 1 to 240. "},
    {58, "T6_INVALID_RANGE", "Valid range is 1 to 240. "},
    {59, "T7_INVALID_RANGE", "Valid range is 1 to 240. "},
    {60, "T8_INVALID_RANGE", "Valid range is 1 to 120. "},
    {61, "TIMEOUT_INVALID_RANGE", "Valid range is 1 to 86400. "},
    {62, "SERIAL_PORT_INVALID_NAME", "Correct format should be: COMnn, where n=1-9. "},
    {63, "INVALID_DICT_FILE", "Invalid dictionary file. Dictionary file must be an .xml file."},
};

TEST(ErrorCatalogue, has66Slots) {
    EXPECT_EQ(lInitErrInfo().size(), 66u);
}

TEST(ErrorCatalogue, everyFilledSlotReadsLetterByLetter) {
    const ErrorCatalogue catalogue = lInitErrInfo();
    for (const Filled& row : kFilled) {
        EXPECT_EQ(catalogue[row.slot].code, std::to_string(row.slot));
        EXPECT_EQ(catalogue[row.slot].key, row.key);
        EXPECT_EQ(catalogue[row.slot].message, row.message);
    }
}

TEST(ErrorCatalogue, slotZeroIsNoException) {
    const ErrorCatalogue catalogue = lInitErrInfo();
    EXPECT_EQ(catalogue[0].code, "0");
    EXPECT_EQ(catalogue[0].key, "");
    EXPECT_EQ(catalogue[0].message, "");
}

TEST(ErrorCatalogue, slotsBetweenTheKindsStayEmpty) {
    const ErrorCatalogue catalogue = lInitErrInfo();
    std::set<std::size_t> filled = {0};
    for (const Filled& row : kFilled) filled.insert(row.slot);
    EXPECT_EQ(filled.size(), 45u);
    for (std::size_t slot = 0; slot < catalogue.size(); ++slot) {
        if (filled.contains(slot)) continue;
        EXPECT_EQ(catalogue[slot].code, "") << slot;
        EXPECT_EQ(catalogue[slot].key, "") << slot;
        EXPECT_EQ(catalogue[slot].message, "") << slot;
    }
    EXPECT_FALSE(filled.contains(18));
    EXPECT_FALSE(filled.contains(45));
}

TEST(ErrorCatalogue, aMarkerLeadsToItsSlot) {
    const ErrorCatalogue catalogue = lInitErrInfo();
    EXPECT_EQ(entryOfMarker(catalogue, "3").message, "Must be numeric.");
    EXPECT_EQ(entryOfMarker(catalogue, "65").message, "");
}

TEST(ErrorCatalogue, aMarkerThatIsNoSlotIsARunTimeFailure) {
    const ErrorCatalogue catalogue = lInitErrInfo();
    const auto numberFor = [&](const char* marker) {
        try {
            static_cast<void>(entryOfMarker(catalogue, marker));
            return 0;
        } catch (const base::RunTimeError& failure) {
            return static_cast<int>(failure.number());
        }
    };
    EXPECT_EQ(numberFor(""), 13);
    EXPECT_EQ(numberFor("Database file does not exist."), 13);
    EXPECT_EQ(numberFor("1.5"), 13);
    EXPECT_EQ(numberFor("32768"), 6);
    EXPECT_EQ(numberFor("66"), 9);
    EXPECT_EQ(numberFor("-1"), 9);
}

}  // namespace
}  // namespace stelvan::gem
