#include "tests/jet/row_text.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <stdexcept>

namespace stelvan::test {

namespace {

std::string numberText(double number) {
    if (std::fabs(number) < 9e15 && number == std::floor(number)) {
        return std::to_string(static_cast<long long>(number));
    }
    char text[64];
    std::snprintf(text, sizeof text, "%.14g", number);
    return text;
}

std::string hexText(std::span<const std::uint8_t> bytes, const char* digit) {
    std::string text;
    char buffer[3];
    for (const std::uint8_t byte : bytes) {
        std::snprintf(buffer, sizeof buffer, digit, byte);
        text += buffer;
    }
    return text;
}

// Days since 1970-01-01 to year, month, day.
void civil(long long days, int& year, unsigned& month, unsigned& day) {
    days += 719468;
    const long long era = (days >= 0 ? days : days - 146096) / 146097;
    const auto dayOfEra = static_cast<unsigned>(days - era * 146097);
    const unsigned yearOfEra =
        (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const unsigned dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const unsigned shifted = (5 * dayOfYear + 2) / 153;
    day = dayOfYear - (153 * shifted + 2) / 5 + 1;
    month = shifted < 10 ? shifted + 3 : shifted - 9;
    year = static_cast<int>(yearOfEra + static_cast<unsigned>(era * 400)) + (month <= 2 ? 1 : 0);
}

std::string dateText(double value) {
    constexpr double kAnyDate = 1e7;  // a damaged row may hold any bits
    if (!(std::fabs(value) < kAnyDate)) return "no date";
    auto day = static_cast<long long>(std::trunc(value));
    auto milliseconds =
        static_cast<long long>(std::llround(std::fabs(value - std::trunc(value)) * 86400000.0));
    if (milliseconds >= 86400000) {
        milliseconds -= 86400000;
        ++day;
    }
    int year = 0;
    unsigned month = 0;
    unsigned dayOfMonth = 0;
    civil(day - 25569, year, month, dayOfMonth);
    char text[96];
    std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02lld:%02lld:%02lld", year, month, dayOfMonth,
                  milliseconds / 3600000, milliseconds / 60000 % 60, milliseconds / 1000 % 60);
    std::string result = text;
    if (milliseconds % 1000 != 0) {
        std::snprintf(text, sizeof text, ".%03lld", milliseconds % 1000);
        result += text;
    }
    return result;
}

std::string numericText(const jet::Numeric& numeric) {
    long double magnitude = 0;
    for (const std::uint32_t word : numeric.magnitude) magnitude = magnitude * 4294967296.0L + word;
    for (int i = 0; i < numeric.scale; ++i) magnitude /= 10;
    return numberText(static_cast<double>(numeric.negative ? -magnitude : magnitude));
}

std::string guidText(const jet::Guid& guid) {
    const std::string digits = hexText(guid.bytes, "%02X");
    return "{" + digits.substr(0, 8) + "-" + digits.substr(8, 4) + "-" + digits.substr(12, 4) +
           "-" + digits.substr(16, 4) + "-" + digits.substr(20) + "}";
}

struct ValueTexts {
    std::string operator()(jet::Null) const { return "null"; }
    std::string operator()(bool value) const { return value ? "true" : "false"; }
    std::string operator()(std::int32_t value) const { return std::to_string(value); }
    std::string operator()(float value) const { return numberText(static_cast<double>(value)); }
    std::string operator()(double value) const { return numberText(value); }
    std::string operator()(jet::Money value) const {
        return numberText(static_cast<double>(value.scaled) / 10000);
    }
    std::string operator()(jet::DateTime value) const { return "'" + dateText(value.days) + "'"; }
    std::string operator()(const jet::Numeric& value) const { return numericText(value); }
    std::string operator()(const jet::Guid& value) const { return "'" + guidText(value) + "'"; }
    std::string operator()(std::string_view value) const { return "'" + std::string(value) + "'"; }
    std::string operator()(std::span<const std::uint8_t> value) const {
        return "'" + hexText(value, "%02x") + "'";
    }
};

}  // namespace

std::string valueText(jet::ColumnType, const jet::ValueView& value) {
    return std::visit(ValueTexts{}, value);
}

std::string valueText(const nlohmann::json& expected) {
    if (expected.is_null()) return "null";
    if (expected.is_boolean()) return expected.get<bool>() ? "true" : "false";
    if (expected.is_number_integer()) return numberText(expected.get<double>());
    if (expected.is_number()) return numberText(expected.get<double>());
    return "'" + expected.get<std::string>() + "'";
}

std::string rowText(const jet::TableInfo& info, jet::Cursor& row) {
    std::string text;
    for (std::size_t i = 0; i < info.columns.size(); ++i) {
        text += info.columns[i].name + "=" + valueText(info.columns[i].type, row.value(i)) + "|";
    }
    return text;
}

std::multiset<std::string> readRows(jet::Table& table) {
    const jet::TableInfo info = table.info();
    jet::ColumnSet all;
    for (std::size_t i = 0; i < info.columns.size(); ++i) all.push_back(i);
    std::multiset<std::string> rows;
    const auto cursor = table.scan(all);
    while (cursor->next()) rows.insert(rowText(info, *cursor));
    return rows;
}

RowTexts readAll(jet::Database& database, bool system) {
    RowTexts all;
    for (const std::string& name : database.tableNames(system)) {
        jet::Table& table = database.table(name);
        if (table.info().system != system) continue;
        auto rows = readRows(table);
        if (!rows.empty()) all[name] = std::move(rows);
    }
    return all;
}

std::vector<std::string> linesIn(const std::string& path) {
    const bool packed = path.ends_with(".gz");
    const std::string command = (packed ? "gzip -dc '" : "cat '") + path + "'";
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(::popen(command.c_str(), "r"),
                                                               &::pclose);
    if (pipe == nullptr) throw std::runtime_error("cannot read " + path);
    std::vector<std::string> lines;
    char* line = nullptr;
    std::size_t room = 0;
    ssize_t size = 0;
    while ((size = ::getline(&line, &room, pipe.get())) > 0) {
        lines.emplace_back(line,
                           static_cast<std::size_t>(line[size - 1] == '\n' ? size - 1 : size));
    }
    std::free(line);
    return lines;
}

RowTexts expectedRows(const std::string& path) {
    RowTexts all;
    for (const std::string& line : linesIn(path)) {
        const auto parsed = nlohmann::ordered_json::parse(line);
        std::string text;
        for (const auto& [column, value] : parsed.at("row").items()) {
            text += column + "=" + valueText(nlohmann::json(value)) + "|";
        }
        all[parsed.at("table").get<std::string>()].insert(std::move(text));
    }
    return all;
}

std::string difference(const std::multiset<std::string>& expected,
                       const std::multiset<std::string>& found) {
    if (expected == found) return {};
    std::string text;
    int shown = 0;
    for (const auto& row : expected) {
        if (found.count(row) != expected.count(row) && shown++ < 3)
            text += "\nexpected: " + row.substr(0, 2000);
    }
    shown = 0;
    for (const auto& row : found) {
        if (found.count(row) != expected.count(row) && shown++ < 3)
            text += "\nfound:    " + row.substr(0, 2000);
    }
    return text;
}

}  // namespace stelvan::test
