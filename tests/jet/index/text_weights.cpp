#include "tests/jet/index/text_weights.h"

#include <fstream>
#include <sstream>

#include "tests/support/models.h"

namespace stelvan::test {

namespace {

std::vector<std::string> splitLine(const std::string& line) {
    std::vector<std::string> fields(1);
    for (const char c : line) {
        if (c == ',') {
            fields.emplace_back();
        } else if (c != '\r') {
            fields.back() += c;
        }
    }
    return fields;
}

}  // namespace

std::vector<std::uint8_t> fromHex(const std::string& hex) {
    std::vector<std::uint8_t> bytes;
    std::string digits;
    for (const char c : hex) {
        if (c != ' ') digits += c;
        if (digits.size() == 2) {
            bytes.push_back(static_cast<std::uint8_t>(std::stoul(digits, nullptr, 16)));
            digits.clear();
        }
    }
    return bytes;
}

std::string toHex(const std::vector<std::uint8_t>& bytes) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    for (const std::uint8_t byte : bytes) {
        if (!text.empty()) text += ' ';
        text += kDigits[byte >> 4];
        text += kDigits[byte & 15];
    }
    return text;
}

std::filesystem::path TextWeights::path() {
    if (samplesDir().empty()) return {};
    const std::filesystem::path csv = samplesDir().parent_path() / "jet4-text-weights.csv";
    return std::filesystem::exists(csv) ? csv : std::filesystem::path();
}

TextWeights::TextWeights(const std::filesystem::path& csv) {
    std::ifstream file(csv);
    std::string line;
    std::getline(file, line);
    while (std::getline(file, line)) {
        const std::vector<std::string> fields = splitLine(line);
        Row row;
        row.kind = fields.at(1);
        row.primary = fromHex(fields.at(2));
        row.elements = std::stoul(fields.at(3));
        row.extra = fromHex(fields.at(4));
        if (!fields.at(5).empty()) row.modifier = std::stoi(fields[5], nullptr, 16);
        if (!fields.at(6).empty()) row.flag = std::stoi(fields[6]);
        const auto unit = static_cast<char16_t>(std::stoul(fields[0], nullptr, 16));
        rows_[unit] = row;
        listed_.push_back(unit);
    }
}

TextWeights::Row TextWeights::rowOf(char16_t unit) const {
    if (const auto found = rows_.find(unit); found != rows_.end()) return found->second;
    if (unit < 0xD800 || unit > 0xDFFF) return {};
    int number = unit - 10238;
    if (unit >= 0xDC00) {
        const int offset = unit - 0xDC00;
        number = unit - 9984;
        if (offset < 770) number = unit - 9986;
        if (offset < 516) number = unit - 9988;
        if (offset < 262) number = unit - 9990;
        if (offset < 8) number = unit - 9992;
    }
    return {
        "intl", {static_cast<std::uint8_t>(number / 256), static_cast<std::uint8_t>(number % 256)},
        1,      {0x3F},
        0,      0};
}

std::vector<std::uint8_t> TextWeights::key(std::u16string_view units) const {
    std::vector<std::uint8_t> primary;
    std::vector<std::uint8_t> secondary;
    std::vector<std::uint8_t> unprintable;
    std::string pairs;
    std::size_t position = 0;
    std::size_t shift = 0;
    const auto fill = [&] {
        while (secondary.size() < position + shift) secondary.push_back(0x02);
    };
    for (const char16_t unit : units) {
        const Row row = rowOf(unit);
        if (row.kind == "modifier") {
            fill();
            if (secondary.empty()) {
                secondary.push_back(static_cast<std::uint8_t>(row.modifier));
                shift = 1;
            } else {
                secondary.back() =
                    static_cast<std::uint8_t>((secondary.back() + row.modifier) % 256);
            }
        } else if (row.kind == "unprintable") {
            const std::size_t place = 0x8000 | (7 + 4 * position);
            unprintable.push_back(static_cast<std::uint8_t>(place / 256));
            unprintable.push_back(static_cast<std::uint8_t>(place % 256));
            unprintable.push_back(0x06);
            unprintable.push_back(row.extra.at(0));
        } else {
            primary.insert(primary.end(), row.primary.begin(), row.primary.end());
            if (!row.extra.empty()) fill();
            secondary.insert(secondary.end(), row.extra.begin(), row.extra.end());
            position += row.elements;
            if (row.flag == 1) pairs += "10";
            if (row.flag == 2) pairs += "11";
        }
    }
    while (!secondary.empty() && secondary.back() <= 2) secondary.pop_back();

    std::vector<std::uint8_t> key = primary;
    key.push_back(1);
    key.insert(key.end(), secondary.begin(), secondary.end());
    if (!pairs.empty() || !unprintable.empty()) key.insert(key.end(), {1, 1});
    if (!pairs.empty()) {
        while (pairs.ends_with("11")) pairs.resize(pairs.size() - 2);
        while (pairs.size() % 6 != 0) pairs += "00";
        for (std::size_t i = 0; i < pairs.size(); i += 6) {
            key.push_back(
                static_cast<std::uint8_t>(std::stoul("10" + pairs.substr(i, 6), nullptr, 2)));
        }
        key.insert(key.end(), {0xFF, 0x02, 0x80, 0xFF, 0x80});
        if (!unprintable.empty()) key.push_back(0xFF);
    }
    if (!unprintable.empty()) {
        key.push_back(1);
        key.insert(key.end(), unprintable.begin(), unprintable.end());
    }
    key.push_back(0);
    return key;
}

}  // namespace stelvan::test
