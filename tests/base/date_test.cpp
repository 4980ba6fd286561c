#include "base/date.h"

#include <gtest/gtest.h>

#include <limits>

namespace stelvan::base {
namespace {

struct Row {
    double serial;
    const char* shown;
    const char* iso;
};

TEST(Date, CountsDaysFromTheEndOf1899) {
    const Row rows[] = {
        {0, "1899-12-30 00:00:00", "1899-12-30T00:00:00"},
        {1, "1899-12-31 00:00:00", "1899-12-31T00:00:00"},
        {2.5, "1900-01-01 12:00:00", "1900-01-01T12:00:00"},
        {61, "1900-03-01 00:00:00", "1900-03-01T00:00:00"},
        {36525.25, "1999-12-31 06:00:00", "1999-12-31T06:00:00"},
        {36585, "2000-02-29 00:00:00", "2000-02-29T00:00:00"},
        {-657434, "0100-01-01 00:00:00", "0100-01-01T00:00:00"},
        {2958465, "9999-12-31 00:00:00", "9999-12-31T00:00:00"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(dateText(row.serial), row.shown);
        EXPECT_EQ(isoDateText(row.serial), row.iso);
        EXPECT_EQ(parseDate(row.shown), row.serial) << row.shown;
        EXPECT_EQ(parseDate(row.iso), row.serial) << row.iso;
    }
}

TEST(Date, BeforeTheFirstDayHasTheTimeOfDayInTheSizeOfItsFraction) {
    EXPECT_EQ(dateText(-1.25), "1899-12-29 06:00:00");
    EXPECT_EQ(isoDateText(-1.25), "1899-12-29T06:00:00");
    EXPECT_EQ(parseDate("1899-12-29 06:00:00"), -1.25);
    EXPECT_EQ(dateText(-0.25), "1899-12-30 06:00:00");
    EXPECT_EQ(dateText(-657434.5), "0100-01-01 12:00:00");
    EXPECT_EQ(isoDateText(-657434.5), "0100-01-01T12:00:00");
}

TEST(Date, IsRoundedToTheSecondOrTheMillisecond) {
    EXPECT_EQ(dateText(45351.999999999), "2024-03-01 00:00:00");
    EXPECT_EQ(isoDateText(45657.9999999999), "2025-01-01T00:00:00");
    EXPECT_EQ(dateText(45658 + 1.5 / 86400), "2025-01-01 00:00:02");
    EXPECT_EQ(isoDateText(45658 + 1.5 / 86400), "2025-01-01T00:00:01.500");
    EXPECT_EQ(isoDateText(-10 - 1.007 / 86400), "1899-12-20T00:00:01.007");
}

TEST(Date, OutsideTheYears100To9999IsANumber) {
    for (const double serial :
         {-657435.0, 2958466.0, 1e12, -1e300, std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_FALSE(isCalendarDate(serial)) << serial;
        EXPECT_FALSE(isoDateText(serial)) << serial;
    }
    EXPECT_EQ(dateText(1e12), "1000000000000");
    EXPECT_TRUE(isCalendarDate(-657434.9));
    EXPECT_TRUE(isCalendarDate(2958465.9));
}

TEST(Date, IsReadOnlyWhereCalendarAndClockShowIt) {
    EXPECT_EQ(parseDate("2004-02-29T23:59:59"), 38046 + 86399.0 / 86400);
    for (const char* text :
         {"", "2004-02-29", "2004-02-29T23:59", "2003-02-29T00:00:00", "2004-13-01T00:00:00",
          "2004-00-01T00:00:00", "2004-01-00T00:00:00", "2004-01-01T24:00:00",
          "2004-01-01T00:60:00", "2004-01-01T00:00:60", "0099-12-31T00:00:00", "2004-1-1T00:00:00",
          "2004-01-01t00:00:00", " 2004-01-01T00:00:00", "2004-01-01T00:00:00Z",
          "2004/01/01T00:00:00", "+004-01-01T00:00:00"}) {
        EXPECT_FALSE(parseDate(text)) << text;
    }
}

TEST(Date, IsWrittenMonthFirstOrYearFirst) {
    for (const char* text : {"2004-02-29", "2/29/2004", "02/29/2004", " 2/29/2004 ",
                             "2004-02-29 0:00", "2/29/2004 12:00 AM", "2004-2-29T00:00:00"}) {
        EXPECT_EQ(parseWrittenDate(text), 38046) << text;
    }
    for (const char* text : {"2/29/2004 18:00", "2004-02-29 06:00:00 PM", "2004-02-29 6:00pm"})
        EXPECT_EQ(parseWrittenDate(text), 38046.75) << text;
    EXPECT_EQ(parseWrittenDate("1899-12-29 06:00"), -1.25);
}

TEST(Date, IsNotWrittenInAnyOtherWay) {
    for (const char* text : {"",
                             " ",
                             "29/2/2004",
                             "2/30/2004",
                             "2/29/04",
                             "2/2004",
                             "2/29/2004/1",
                             "2004-02-29-1",
                             "2004/02/29",
                             "02-29-2004",
                             "2/29/2004 24:00",
                             "2/29/2004 0:60",
                             "2/29/2004 12",
                             "2/29/2004 13:00 PM",
                             "2/29/2004 0:00 AM",
                             "2/29/2004 1:2:3:4",
                             "a/b/cccc",
                             "2//2004",
                             "0099-12-31",
                             "12:00",
                             "2/29/2004 PM",
                             "2004-02-29x",
                             "123456789012/1/2004"}) {
        EXPECT_FALSE(parseWrittenDate(text)) << text;
    }
}

TEST(Date, IsMadeOfTheSecondsSince1970) {
    EXPECT_EQ(serialDate(std::chrono::seconds{0}), 25569.0);
    EXPECT_EQ(serialDate(std::chrono::seconds{86400 + 43200}), 25570.5);
    EXPECT_EQ(dateText(serialDate(std::chrono::seconds{-1})), "1969-12-31 23:59:59");
}

}  // namespace
}  // namespace stelvan::base
