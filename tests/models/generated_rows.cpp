#include "tests/models/generated_rows.h"

#include "data/builder/generated_model.h"

namespace stelvan::data::test {
namespace {

std::string repeated(const std::string& text, std::size_t times) {
    std::string all;
    for (std::size_t i = 0; i < times; ++i) all += text + std::to_string(i) + ' ';
    return all;
}

}  // namespace

std::vector<TableRows> largeModel() {
    return generateModel({.variables = 20'000,
                          .events = 5'000,
                          .alarms = 5'000,
                          .reports = 3'000,
                          .variablesPerReport = 20,
                          .reportsPerEvent = 2});
}

std::vector<TableRows> descendingNumbers() {
    constexpr std::size_t kRows = 512;
    constexpr std::size_t kStep = 211;  // no divisor in common with the number of rows
    TableRows table{"Falling", {"number", "name", "note"}, {}};
    for (std::size_t i = 0; i < kRows; ++i) {
        const std::string number = std::to_string(i * kStep % kRows);
        table.rows.push_back({number, "row " + number, i % 5 == 0 ? Cell() : Cell("noted")});
    }
    return {table};
}

std::vector<TableRows> longMemos() {
    std::string bytes;
    for (int i = 0; i < 9'000; ++i) bytes += "7f";
    return {{"Notes",
             {"id", "title", "first", "second", "third", "short", "picture", "kept", "written"},
             {{"1", "Three long notes", repeated("shift report ", 1'000),
               repeated("\xE5\xA0\xB1\xE5\x91\x8A ", 900), repeated("alarm ", 200), "in the row",
               bytes, "1", "2008-02-29T13:30:00"}}}};
}

std::vector<TableRows> growingRows() {
    TableRows table{"Growing", {"first", "second", "third", "fourth", "fifth"}, {}};
    for (int i = 0; i < 120; ++i) {
        const auto cell = [i](int column) {
            const std::string text = repeated("r" + std::to_string(i), 4);
            return (i + column) % 3 == 0 ? Cell() : Cell(text.substr(0, 40));
        };
        table.rows.push_back({cell(0), cell(1), cell(2), cell(3), cell(4)});
    }
    return {table};
}

}  // namespace stelvan::data::test
