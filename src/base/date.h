// Serial dates: days since 1899-12-30 00:00, in the proleptic Gregorian calendar.
//
// The absolute value of the fraction is the time of day, also before that date: -1.25 is 6 o'clock
// of the day before. Serial dates carry the noise of a binary fraction, so they are rounded when
// they become texts. Only the years 100 to 9999 have dates.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace stelvan::base {

/// Whether `serial` lies in the years 100 to 9999.
[[nodiscard]] bool isCalendarDate(double serial);

/// "YYYY-MM-DD hh:mm:ss", to the second. What is no date is the text of the number.
[[nodiscard]] std::string dateText(double serial);

/// "YYYY-MM-DDThh:mm:ss", with ".mmm" where a fraction of a second is stored. Nothing for what is
/// no date.
[[nodiscard]] std::optional<std::string> isoDateText(double serial);

/// Reads "YYYY-MM-DD hh:mm:ss", with T or a blank in the middle; nothing for any other text and for
/// what no calendar and no clock shows.
[[nodiscard]] std::optional<double> parseDate(std::string_view text);

/// Reads what people write: "YYYY-MM-DD" or "M/D/YYYY" (month first), alone or with a time of day
/// behind a blank or T: "h:mm" or "h:mm:ss", with or without AM or PM. Nothing for any other text.
[[nodiscard]] std::optional<double> parseWrittenDate(std::string_view text);

/// The time of a calendar and clock that are `moment` after 1970-01-01 00:00.
[[nodiscard]] double serialDate(std::chrono::seconds moment);

}  // namespace stelvan::base
