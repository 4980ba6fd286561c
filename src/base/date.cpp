#include "base/date.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <vector>

#include "base/number.h"
#include "base/text.h"

namespace stelvan::base {

namespace {

using namespace std::chrono;

constexpr sys_days kOrigin{year{1899} / December / 30};
constexpr double kFirstDay = -657'434;     // 0100-01-01
constexpr double kBeyondLast = 2'958'466;  // 10000-01-01
constexpr double kSecondsADay = 86'400;

/// The moment on a calendar and clock, rounded to `Unit`.
template <typename Unit>
sys_time<Unit> momentOf(double serial) {
    const double day = std::trunc(serial);
    const double unitsADay = kSecondsADay * Unit::period::den;
    return kOrigin + days{static_cast<int>(day)} +
           Unit{std::llround(std::abs(serial - day) * unitsADay)};
}

/// A whole number with leading zeros.
std::string padded(std::int64_t number, std::size_t width) {
    const std::string digits = std::to_string(number);
    return std::string(width - std::min(width, digits.size()), '0') + digits;
}

template <typename Unit>
std::string momentText(sys_time<Unit> moment, char between) {
    const sys_days day = floor<days>(moment);
    const year_month_day date{day};
    const hh_mm_ss<Unit> time{moment - day};
    return padded(static_cast<int>(date.year()), 4) + "-" +
           padded(static_cast<unsigned>(date.month()), 2) + "-" +
           padded(static_cast<unsigned>(date.day()), 2) + between +
           padded(time.hours().count(), 2) + ":" + padded(time.minutes().count(), 2) + ":" +
           padded(time.seconds().count(), 2);
}

/// The numbers of a text that has the digits of `form` where that has a 0, and its other
/// characters.
template <std::size_t Count>
std::optional<std::array<unsigned, Count>> numbersIn(std::string_view text, std::string_view form) {
    if (text.size() != form.size()) return std::nullopt;
    std::array<unsigned, Count> numbers{};
    std::size_t number = 0;
    for (std::size_t at = 0; at < form.size(); ++at) {
        const bool wantsDigit = form[at] == '0';
        if (wantsDigit ? !isDigit(text[at]) : text[at] != form[at]) return std::nullopt;
        if (wantsDigit) {
            numbers[number] = numbers[number] * 10 + static_cast<unsigned>(text[at] - '0');
        } else {
            ++number;
        }
    }
    return numbers;
}

/// Days count from the origin, the time of day away from it.
double serialOf(sys_days day, double secondsOfDay) {
    const auto count = static_cast<double>((day - kOrigin).count());
    const double fraction = secondsOfDay / kSecondsADay;
    return count < 0 ? count - fraction : count + fraction;
}

std::optional<double> serialOf(year_month_day date, double secondsOfDay) {
    if (!date.ok()) return std::nullopt;
    const double serial = serialOf(sys_days{date}, secondsOfDay);
    return isCalendarDate(serial) ? std::optional(serial) : std::nullopt;
}

/// The numbers of at most four digits that stand between separators.
std::vector<unsigned> numbersBetween(std::string_view text, char separator) {
    constexpr std::size_t kMostDigits = 4;
    std::vector<unsigned> numbers;
    for (std::size_t at = 0; at <= text.size();) {
        const std::size_t end = std::min(text.find(separator, at), text.size());
        const std::string_view digits = text.substr(at, end - at);
        unsigned number = 0;
        const auto [stop, fault] = std::from_chars(digits.begin(), digits.end(), number);
        if (digits.size() > kMostDigits || fault != std::errc() || stop != digits.end()) return {};
        numbers.push_back(number);
        at = end + 1;
    }
    return numbers;
}

year_month_day writtenDay(std::string_view text) {
    constexpr year_month_day kNone{year::min(), month{0}, day{0}};
    const bool monthFirst = text.find('/') != std::string_view::npos;
    std::vector<unsigned> numbers = numbersBetween(text, monthFirst ? '/' : '-');
    if (numbers.size() != 3) return kNone;
    // Now the year is first; one of two digits would be of the years that have no dates.
    if (monthFirst) std::rotate(numbers.begin(), numbers.end() - 1, numbers.end());
    return {year{static_cast<int>(numbers[0])}, month{numbers[1]}, day{numbers[2]}};
}

std::optional<double> writtenSeconds(std::string_view text) {
    const bool afternoon = text.size() > 2 && sameWord(text.substr(text.size() - 2), "PM");
    const bool halves =
        afternoon || (text.size() > 2 && sameWord(text.substr(text.size() - 2), "AM"));
    if (halves) text = trimBlanks(text.substr(0, text.size() - 2));
    std::vector<unsigned> numbers = numbersBetween(text, ':');
    if (numbers.size() == 2) numbers.push_back(0);
    if (numbers.size() != 3 || numbers[0] > 23 || numbers[1] > 59 || numbers[2] > 59)
        return std::nullopt;
    if (halves && (numbers[0] == 0 || numbers[0] > 12)) return std::nullopt;
    if (halves) numbers[0] = numbers[0] % 12 + (afternoon ? 12 : 0);
    return numbers[0] * 3600.0 + numbers[1] * 60.0 + numbers[2];
}

}  // namespace

bool isCalendarDate(double serial) {
    return serial > kFirstDay - 1 && serial < kBeyondLast;
}

std::string dateText(double serial) {
    if (!isCalendarDate(serial)) return numberText(serial);
    return momentText(momentOf<seconds>(serial), ' ');
}

std::optional<std::string> isoDateText(double serial) {
    if (!isCalendarDate(serial)) return std::nullopt;
    const sys_time<milliseconds> moment = momentOf<milliseconds>(serial);
    const std::int64_t fraction = moment.time_since_epoch().count() % 1000;
    std::string text = momentText(moment, 'T');
    if (fraction != 0) text += "." + padded(fraction < 0 ? fraction + 1000 : fraction, 3);
    return text;
}

std::optional<double> parseDate(std::string_view text) {
    auto numbers = numbersIn<6>(text, "0000-00-00T00:00:00");
    if (!numbers) numbers = numbersIn<6>(text, "0000-00-00 00:00:00");
    if (!numbers) return std::nullopt;
    const auto [years, months, day, hours, minutes, secs] = *numbers;
    const year_month_day date{year{static_cast<int>(years)}, month{months}, std::chrono::day{day}};
    if (hours > 23 || minutes > 59 || secs > 59) return std::nullopt;
    return serialOf(date, hours * 3600.0 + minutes * 60.0 + secs);
}

std::optional<double> parseWrittenDate(std::string_view text) {
    text = trimBlanks(text);
    const std::size_t end = std::min(text.find_first_of(" T"), text.size());
    const bool dayAlone = end == text.size();
    const auto seconds = dayAlone ? 0.0 : writtenSeconds(trimBlanks(text.substr(end + 1)));
    return seconds ? serialOf(writtenDay(text.substr(0, end)), *seconds) : std::nullopt;
}

double serialDate(std::chrono::seconds moment) {
    const sys_seconds time{moment};
    const sys_days day = floor<days>(time);
    return serialOf(day, static_cast<double>((time - day).count()));
}

}  // namespace stelvan::base
